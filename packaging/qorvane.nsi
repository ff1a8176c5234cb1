; Qorvane's installer: a per-user setup (no administrator rights) that puts
; the add-in DLL matching Outlook's bitness, the help, the licence and the
; readme into %LOCALAPPDATA%\Programs\Qorvane, registers the add-in for the
; current user, and adds an entry to Add/Remove Programs whose uninstaller
; takes all of it away again. The user's deferred mails live in their mailbox
; and are never touched.
;
; Built by scripts/make-installer.sh, which passes
;   /DVERSION=x.y.z     the product version (CMakeLists.txt)
;   /DOUTFILE=path      the setup program to write
;   /DDLL_X64=path      the 64-bit add-in
;   /DDLL_X86=path      the 32-bit add-in (optional: without it the setup
;                       refuses 32-bit Outlook)
;   /DHELP_CHM=path     the compiled help
;
; Command line of the setup program:
;   /S                  silent: no questions, 64-bit when no Outlook is found
;   /BITNESS=32|64      install for this Outlook bitness, without detecting it
;   /D=folder           install there (must come last; NSIS's own option)
; Exit codes: 0 done, 1 cancelled by the user, 2 bad command line, no DLL
; for that bitness or a file that could not be written, 3 the add-in could
; not be registered.
;
; Registration has ONE owner: the DLL itself (DllRegisterServer /
; DllUnregisterServer, run through the regsvr32 of the DLL's bitness). The
; class id, ProgID and Outlook's add-in keys are then defined once, in the
; C++ code; a 32-bit DLL registered by the 32-bit regsvr32 lands in the
; registry view 32-bit Outlook reads without this script knowing about
; Wow6432Node; and a developer's `regsvr32` gives exactly what users get.
; This script only reads the add-in's Outlook key afterwards, to tell the user
; when registration did not happen. What the setup itself writes is the
; Add/Remove Programs entry and the Start menu shortcut; the uninstaller
; removes those, has the DLL unregister itself, and deletes the keys the
; add-in writes while it runs (its own key and its settings).

Unicode true
Target amd64-unicode
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true
; A file that cannot be written fails the setup (Retry/Abort; silent: exit
; code 2) rather than leaving an old file behind a reported success.
AllowSkipFiles off

!ifndef VERSION | OUTFILE | DLL_X64 | HELP_CHM
  !error "VERSION, OUTFILE, DLL_X64 and HELP_CHM must be defined (scripts/make-installer.sh does)"
!endif

!define PRODUCT "Qorvane"
!define PUBLISHER "Brendix"
!define PROGID "Qorvane.Connect"
!define DLL_NAME "qorvane.dll"
!define UNINSTALLER "Uninstall.exe"
!define HELP_LINK "$SMPROGRAMS\Qorvane Help.lnk"
!define UNINST_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define ADDINS_PARENT "Software\Microsoft\Office\Outlook\Addins"
!define ADDIN_KEY "${ADDINS_PARENT}\${PROGID}"
; Written by the add-in while it runs: its own key and the runtime's
; per-user settings store.
!define VENDOR_KEY "Software\${PUBLISHER}"
!define OWN_KEY "${VENDOR_KEY}\${PRODUCT}"
!define SETTINGS_PARENT "Software\VB and VBA Program Settings"
!define SETTINGS_KEY "${SETTINGS_PARENT}\${PRODUCT}"
; Outlook's main window; present while Outlook runs with a window open.
!define OUTLOOK_WINDOW_CLASS "rctrl_renwnd32"

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

Name "${PRODUCT}"
OutFile "${OUTFILE}"
InstallDir "$LOCALAPPDATA\Programs\${PRODUCT}"
; An upgrade goes where the installed version is.
InstallDirRegKey HKCU "${UNINST_KEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "FileDescription" "${PRODUCT} Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Copyright (c) ${PUBLISHER}"

!define MUI_ICON "qorvane.ico"
!define MUI_UNICON "qorvane.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\Help.chm"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the Qorvane help"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED

!insertmacro MUI_PAGE_LICENSE "License.txt"
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipDirectoryOnUpgrade
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var Bitness          ; "64" or "32": the DLL to install
Var OldBitness       ; the installed version's, "" when none
Var DllWasInUse      ; 1 when Outlook held the old DLL during the upgrade

; ---------------------------------------------------------------- bitness

; ReadOutlookBitness VIEW: sets $0 to "64", "32" or "" from what Office 2010
; and later record under HKLM ("Bitness" of the Outlook key of a version, or
; the Click-to-Run platform), read in the registry view VIEW (32 or 64).
!macro ReadOutlookBitness VIEW
  SetRegView ${VIEW}
  StrCpy $0 ""
  ${ForEach} $1 16 14 - 1
    ${If} $0 == ""
      ReadRegStr $2 HKLM "Software\Microsoft\Office\$1.0\Outlook" "Bitness"
      ${If} $2 == "x64"
        StrCpy $0 "64"
      ${ElseIf} $2 == "x86"
        StrCpy $0 "32"
      ${EndIf}
    ${EndIf}
  ${Next}
  ${If} $0 == ""
    ReadRegStr $2 HKLM "Software\Microsoft\Office\ClickToRun\Configuration" "Platform"
    ${If} $2 == "x64"
      StrCpy $0 "64"
    ${ElseIf} $2 == "x86"
      StrCpy $0 "32"
    ${EndIf}
  ${EndIf}
  SetRegView lastused
!macroend

; Sets $Bitness from the installed Outlook, or to "" when none was found.
Function DetectOutlookBitness
  !insertmacro ReadOutlookBitness 64
  ${If} $0 == ""
    !insertmacro ReadOutlookBitness 32
  ${EndIf}
  ${If} $0 == ""
    ; Outlook 2007 and older came in 32 bits only and record no bitness.
    SetRegView 32
    ${ForEach} $1 12 9 - 1
      ${If} $0 == ""
        ClearErrors
        EnumRegKey $2 HKLM "Software\Microsoft\Office\$1.0\Outlook" 0
        ${IfNot} ${Errors}
          StrCpy $0 "32"
        ${EndIf}
      ${EndIf}
    ${Next}
    SetRegView lastused
  ${EndIf}
  StrCpy $Bitness $0
FunctionEnd

Function .onInit
  SetShellVarContext current
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/BITNESS=" $Bitness
  ${If} ${Errors}
    Call DetectOutlookBitness
    ${If} $Bitness == ""
      MessageBox MB_YESNOCANCEL|MB_ICONQUESTION \
        "No installed Outlook was found, so Qorvane cannot tell whether Outlook is 64-bit or 32-bit.$\r$\n$\r$\nInstall Qorvane for 64-bit Outlook (Yes, the usual choice) or for 32-bit Outlook (No)?" \
        /SD IDYES IDYES want64 IDNO want32
      SetErrorLevel 1
      Quit
      want32:
        StrCpy $Bitness "32"
        Goto chosen
      want64:
        StrCpy $Bitness "64"
      chosen:
    ${EndIf}
  ${EndIf}
  ${If} $Bitness != "64"
  ${AndIf} $Bitness != "32"
    MessageBox MB_OK|MB_ICONSTOP "/BITNESS= takes 32 or 64, not '$Bitness'." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  !ifndef DLL_X86
    ${If} $Bitness == "32"
      MessageBox MB_OK|MB_ICONSTOP "This setup holds Qorvane for 64-bit Outlook only; your Outlook is 32-bit." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
  !endif
  ReadRegStr $OldBitness HKCU "${UNINST_KEY}" "Bitness"
FunctionEnd

Function SkipDirectoryOnUpgrade
  ${If} $OldBitness != ""
    Abort
  ${EndIf}
FunctionEnd

; ------------------------------------------------------------ registration

; RunRegsvr32 BITNESS ARGS DLL: runs the regsvr32 of that bitness on DLL and
; leaves its exit code in $0 ("not run" when it could not be started). This
; setup is a 64-bit program, so $SYSDIR is the 64-bit system folder and the
; 32-bit regsvr32 lives in SysWOW64.
!macro RunRegsvr32 BITNESS ARGS DLL
  StrCpy $0 "not run"
  ${If} ${BITNESS} == "32"
    ExecWait '"$WINDIR\SysWOW64\regsvr32.exe" ${ARGS} "${DLL}"' $0
  ${Else}
    ExecWait '"$SYSDIR\regsvr32.exe" ${ARGS} "${DLL}"' $0
  ${EndIf}
!macroend

; ------------------------------------------------------------------ install

Section "Qorvane" SecMain
  SetOutPath "$INSTDIR"

  ; Outlook may still hold a copy renamed by an earlier upgrade; the ones it
  ; let go of can go now.
  Delete "$INSTDIR\${DLL_NAME}.*.old"

  ${If} ${FileExists} "$INSTDIR\${DLL_NAME}"
    ; Switching bitness: the old DLL takes its registration (in the other
    ; registry view) with it before it is replaced.
    ${If} $OldBitness != ""
    ${AndIf} $OldBitness != $Bitness
      DetailPrint "Unregistering the $OldBitness-bit add-in"
      !insertmacro RunRegsvr32 $OldBitness "/s /u" "$INSTDIR\${DLL_NAME}"
    ${EndIf}
    ; While Outlook runs it holds the DLL: Windows will not let a loaded DLL
    ; be overwritten or deleted, but it can be renamed. The renamed copy is
    ; deleted by the next setup or the uninstaller, once Outlook let go.
    Delete "$INSTDIR\${DLL_NAME}"
    ${If} ${FileExists} "$INSTDIR\${DLL_NAME}"
      StrCpy $1 1
      ${DoWhile} ${FileExists} "$INSTDIR\${DLL_NAME}.$1.old"
        IntOp $1 $1 + 1
      ${Loop}
      ClearErrors
      Rename "$INSTDIR\${DLL_NAME}" "$INSTDIR\${DLL_NAME}.$1.old"
      ${If} ${Errors}
        MessageBox MB_OK|MB_ICONSTOP "$INSTDIR\${DLL_NAME} is in use and cannot be replaced. Close Outlook and run this setup again." /SD IDOK
        SetErrorLevel 3
        Abort
      ${EndIf}
      StrCpy $DllWasInUse 1
    ${EndIf}
  ${EndIf}

  ${If} $Bitness == "64"
    File "/oname=${DLL_NAME}" "${DLL_X64}"
  !ifdef DLL_X86
  ${Else}
    File "/oname=${DLL_NAME}" "${DLL_X86}"
  !endif
  ${EndIf}
  File "/oname=Help.chm" "${HELP_CHM}"
  File "License.txt"
  File "Readme.txt"
  File "qorvane.ico"
  ; Qorvane.Log, the add-in's log, is left as it is: an upgrade keeps it.

  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  CreateShortcut "${HELP_LINK}" "$INSTDIR\Help.chm"

  DetailPrint "Registering the $Bitness-bit add-in for Outlook"
  !insertmacro RunRegsvr32 $Bitness "/s" "$INSTDIR\${DLL_NAME}"
  ; regsvr32 reports failure by its exit code; the key check also catches a
  ; regsvr32 that could not run the DLL at all.
  ClearErrors
  ReadRegDWORD $1 HKCU "${ADDIN_KEY}" "LoadBehavior"
  ${If} $0 != 0
  ${OrIf} ${Errors}
    Call WriteUninstallEntry
    MessageBox MB_OK|MB_ICONSTOP "Qorvane was copied to $INSTDIR but could not be registered with Outlook (regsvr32: $0). Outlook will not load it." /SD IDOK
    SetErrorLevel 3
    Abort
  ${EndIf}

  Call WriteUninstallEntry

  FindWindow $1 "${OUTLOOK_WINDOW_CLASS}"
  ${If} $1 <> 0
  ${OrIf} $DllWasInUse == 1
    DetailPrint "Outlook is running: restart it to load Qorvane ${VERSION}"
    MessageBox MB_OK|MB_ICONINFORMATION "Outlook is running. Close Outlook and start it again to use Qorvane ${VERSION}." /SD IDOK
  ${EndIf}
SectionEnd

; The Add/Remove Programs entry. Also written when registration failed, so
; that what was copied can be removed the usual way.
Function WriteUninstallEntry
  WriteRegStr HKCU "${UNINST_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKCU "${UNINST_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINST_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKCU "${UNINST_KEY}" "DisplayIcon" "$INSTDIR\qorvane.ico"
  WriteRegStr HKCU "${UNINST_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINST_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKCU "${UNINST_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKCU "${UNINST_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINST_KEY}" "NoRepair" 1
  ; Which regsvr32 the uninstaller (and a later upgrade) must use.
  WriteRegStr HKCU "${UNINST_KEY}" "Bitness" "$Bitness"
  ${GetSize} "$INSTDIR" "/S=0K" $1 $2 $3
  IntFmt $1 "0x%08X" $1
  WriteRegDWORD HKCU "${UNINST_KEY}" "EstimatedSize" $1
FunctionEnd

; ---------------------------------------------------------------- uninstall

Function un.onInit
  SetShellVarContext current
FunctionEnd

Section "Uninstall"
  ReadRegStr $Bitness HKCU "${UNINST_KEY}" "Bitness"
  ${If} $Bitness == ""
    StrCpy $Bitness "64"
  ${EndIf}

  ${If} ${FileExists} "$INSTDIR\${DLL_NAME}"
    DetailPrint "Unregistering the $Bitness-bit add-in"
    !insertmacro RunRegsvr32 $Bitness "/s /u" "$INSTDIR\${DLL_NAME}"
    ${If} $0 != 0
      DetailPrint "regsvr32 /u failed ($0): Outlook may list Qorvane as not loaded"
    ${EndIf}
  ${EndIf}

  ; Outlook holds the DLL while it runs (a per-user uninstaller cannot
  ; schedule a delete for the next restart).
  Delete "$INSTDIR\${DLL_NAME}.*.old"
  Delete "$INSTDIR\${DLL_NAME}"
  ${DoWhile} ${FileExists} "$INSTDIR\${DLL_NAME}"
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
      "Outlook is using Qorvane. Close Outlook, then press Retry.$\r$\nCancel leaves $INSTDIR\${DLL_NAME} behind, to be deleted by hand." \
      /SD IDCANCEL IDCANCEL leave_dll
    Delete "$INSTDIR\${DLL_NAME}.*.old"
    Delete "$INSTDIR\${DLL_NAME}"
  ${Loop}
  leave_dll:

  Delete "$INSTDIR\Help.chm"
  Delete "$INSTDIR\License.txt"
  Delete "$INSTDIR\Readme.txt"
  Delete "$INSTDIR\qorvane.ico"
  Delete "$INSTDIR\Qorvane.Log"
  Delete "$INSTDIR\${UNINSTALLER}"
  ; Not /r: whatever the user put into the folder stays, and so does it.
  RMDir "$INSTDIR"
  ; The setup made it when this was the first program installed per user.
  RMDir "$LOCALAPPDATA\Programs"
  Delete "${HELP_LINK}"

  ; Registering the add-in made Outlook's per-user add-in list when it was
  ; not there yet; an empty one goes with it.
  DeleteRegKey /ifempty HKCU "${ADDINS_PARENT}"
  DeleteRegKey /ifempty HKCU "Software\Microsoft\Office\Outlook"
  DeleteRegKey /ifempty HKCU "Software\Microsoft\Office"
  DeleteRegKey HKCU "${UNINST_KEY}"
  DeleteRegKey HKCU "${OWN_KEY}"
  DeleteRegKey /ifempty HKCU "${VENDOR_KEY}"
  DeleteRegKey HKCU "${SETTINGS_KEY}"
  DeleteRegKey /ifempty HKCU "${SETTINGS_PARENT}"
SectionEnd
