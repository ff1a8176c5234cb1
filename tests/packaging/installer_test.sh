#!/usr/bin/env bash
# The setup program under wine, as a user and an administrator meet it: in a
# prefix of its own (so that no other test's registration gets in the way),
#   1. the Outlook bitness read from the registry picks the DLL, and a setup
#      without the 32-bit DLL refuses 32-bit Outlook without leaving a trace;
#   2. an older version installs silently: files, Add/Remove Programs entry,
#      the add-in's registration pointing at the installed DLL, the help
#      shortcut; the host program loads the add-in through that registration;
#   3. the current version installs over it while a stand-in for Outlook
#      holds the old DLL, then over itself, keeping the user's log and
#      settings, and the host loads the new DLL;
#   4. the silent uninstaller (it returns at once and finishes from a copy in
#      %TEMP%, so it is polled) leaves the registry and the user's folders as
#      they were before the first install.
#
#   tests/packaging/installer_test.sh SOURCE_ROOT VERSION DLL_X64 WORK_DIR STAND_IN [HOST_EXE]
#
# STAND_IN is outlook_stand_in.exe (outlook_stand_in.cpp), which holds the DLL
# loaded during an upgrade as a running Outlook does.
# HOST_EXE, when given, is load_installed_addin.exe: it is run as
# `HOST_EXE INSTALLED_DLL` and must exit 0 once it has loaded, connected and
# stopped the add-in through the per-user registration.
set -uo pipefail

root=${1:?usage: $0 SOURCE_ROOT VERSION DLL_X64 WORK_DIR STAND_IN [HOST_EXE]}
version=${2:?} dll_x64=${3:?} work=${4:?} stand_in=${5:?} host=${6:-}
started=$SECONDS

failures=0
fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}
phase() { echo "installer_test: $* (at $((SECONDS - started)) s)"; }
die() {
  echo "FAIL: $*"
  exit 1
}

rm -rf "$work"
mkdir -p "$work"
export WINEPREFIX=$work/wineprefix WINEDEBUG=-all
# No .NET or HTML engine prompts, and no menu entries on the machine running
# the test for the shortcut the setup makes.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
trap 'wineserver -k >/dev/null 2>&1' EXIT

old_version=0.9.0
old_setup=$work/Qorvane-Setup-$old_version.exe
new_setup=$work/Qorvane-Setup-$version.exe
# The "older" DLL: the same code with a few bytes appended after its image
# (Windows ignores them), so that an upgrade can be seen to replace it.
old_dll=$work/old/qorvane.dll
mkdir -p "$work/old"
{ cat "$dll_x64"; printf 'older version'; } >"$old_dll"
# The prefix is made (the slow part) while the two setups are built.
wineboot -i >/dev/null 2>&1 &
wineboot_pid=$!
bash "$root/scripts/make-installer.sh" "$old_setup" "$old_version" "$old_dll" >/dev/null || die "building the $old_version setup"
bash "$root/scripts/make-installer.sh" "$new_setup" "$version" "$dll_x64" >/dev/null || die "building the $version setup"
wait "$wineboot_pid" || die "wineboot"
# One server for the whole run: each wine start then costs a fraction of a second.
wineserver -p

# wine names the profile folder after the Unix user.
users=$WINEPREFIX/drive_c/users/$(id -un)
[[ -d $users ]] || die "no profile folder $users"
install_dir=$users/AppData/Local/Programs/Qorvane
install_dir_win='C:\users\'"$(basename "$users")"'\AppData\Local\Programs\Qorvane'
help_link=$users/AppData/Roaming/Microsoft/Windows/Start\ Menu/Programs/Qorvane\ Help.lnk
uninst_key='HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Qorvane'
addin_key='HKEY_CURRENT_USER\Software\Microsoft\Office\Outlook\Addins\Qorvane.Connect'
progid_key='HKEY_CURRENT_USER\Software\Classes\Qorvane.Connect'

# --- the registry, read from one export per look (much faster than a
# `wine reg query` per value)

hkcu=$work/hkcu.txt
export_hkcu() {
  wine reg export HKCU 'C:\hkcu.reg' /y >/dev/null 2>&1 || die "reg export"
  iconv -f UTF-16 -t UTF-8 "$WINEPREFIX/drive_c/hkcu.reg" | tr -d '\r' >"$hkcu"
}

# reg_value KEY NAME: the value as the export writes it ("text" with doubled
# backslashes, dword:0000000a), "@" for the default; fails when absent.
reg_value() {
  awk -v key="[$1]" -v name="$2" '
    $0 == key { inside = 1; next }
    /^\[/ { inside = 0 }
    inside {
      prefix = (name == "@") ? "@=" : "\"" name "\"="
      if (index($0, prefix) == 1) { print substr($0, length(prefix) + 1); found = 1; exit }
    }
    END { exit !found }' "$hkcu"
}
has_key() { grep -qxF "[$1]" "$hkcu"; }
# reg_text TEXT: TEXT as the export writes a string value.
reg_text() {
  local text=${1//\\/\\\\}
  printf '"%s"' "${text//\"/\\\"}"
}

expect_value() {
  local key=$1 name=$2 want=$3 got
  got=$(reg_value "$key" "$name") || { fail "$key has no value $name"; return; }
  [[ $got == "$want" ]] || fail "$key $name is $got, not $want"
}

# The user's own folders and keys, to compare before and after: Temp holds
# the uninstaller's copy, which Windows removes at the next restart.
snapshot() {
  export_hkcu
  grep -v '^"\?\(MRU\|Time\)' "$hkcu" >"$work/$1.reg"
  (cd "$users" && find . ! -path './Temp*' | sort) >"$work/$1.files"
}

run_setup() { wine "$@" >/dev/null 2>&1; }

# --- 1. bitness: a setup without the 32-bit DLL must refuse 32-bit Outlook
# as Office records it in each of these places, and install nothing.

phase "bitness detection"

# Keys every Windows has, which the setup must leave in place.
for key in 'HKCU\Software\Classes\CLSID' 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall'; do
  wine reg add "$key" /f >/dev/null 2>&1 || die "reg add $key"
done
snapshot before

office_cases=(
  "64-bit view, Office 2016|HKLM\\Software\\Microsoft\\Office\\16.0\\Outlook|Bitness|x86|64"
  "32-bit view, Office 2013|HKLM\\Software\\Microsoft\\Office\\15.0\\Outlook|Bitness|x86|32"
  "Click-to-Run|HKLM\\Software\\Microsoft\\Office\\ClickToRun\\Configuration|Platform|x86|64"
  "Outlook 2007|HKLM\\Software\\Microsoft\\Office\\12.0\\Outlook\\Setup|Path|C:\\Office12|32"
)
for office_case in "${office_cases[@]}"; do
  IFS='|' read -r name key value data view <<<"$office_case"
  wine reg add "$key" /v "$value" /d "$data" /reg:"$view" /f >/dev/null 2>&1 || die "$name: reg add"
  run_setup "$new_setup" /S
  status=$?
  ((status == 2)) || fail "$name: a 32-bit Outlook gave exit code $status, not 2 (no 32-bit DLL in this setup)"
  [[ ! -e $install_dir ]] || fail "$name: the refused setup created $install_dir"
  wine reg delete "${key%\\Setup}" /reg:"$view" /f >/dev/null 2>&1
done
run_setup "$new_setup" /S /BITNESS=48
status=$?
((status == 2)) || fail "/BITNESS=48 gave exit code $status, not 2"
export_hkcu
has_key "$uninst_key" && fail "a refused setup wrote $uninst_key"

# 64-bit Outlook is found, and nothing asks (silent) when none is.
wine reg add 'HKLM\Software\Microsoft\Office\16.0\Outlook' /v Bitness /d x64 /reg:64 /f >/dev/null 2>&1

# --- 2. install the older version

phase "install $old_version"

run_setup "$old_setup" /S || fail "installing $old_version: exit code $?"
export_hkcu
for file in qorvane.dll Help.chm License.txt Readme.txt qorvane.ico Uninstall.exe; do
  [[ -s $install_dir/$file ]] || fail "$file was not installed"
done
cmp -s "$install_dir/qorvane.dll" "$old_dll" || fail "the installed DLL is not the one of $old_version"
bash "$root/scripts/check-help.sh" "$install_dir/Help.chm" >"$work/check-help.log" 2>&1 ||
  { fail "the installed Help.chm does not hold the help of packaging/help:"; sed 's/^/  /' "$work/check-help.log"; }
[[ -f $help_link ]] || fail "no Start menu shortcut to the help"

expect_value "$uninst_key" DisplayName '"Qorvane"'
expect_value "$uninst_key" DisplayVersion "\"$old_version\""
expect_value "$uninst_key" Publisher '"Brendix"'
expect_value "$uninst_key" DisplayIcon "$(reg_text "$install_dir_win\\qorvane.ico")"
expect_value "$uninst_key" InstallLocation "$(reg_text "$install_dir_win")"
expect_value "$uninst_key" UninstallString "$(reg_text "\"$install_dir_win\\Uninstall.exe\"")"
expect_value "$uninst_key" QuietUninstallString "$(reg_text "\"$install_dir_win\\Uninstall.exe\" /S")"
expect_value "$uninst_key" Bitness '"64"'
size=$(reg_value "$uninst_key" EstimatedSize) || fail "no EstimatedSize"
kib=$((16#${size#dword:}))
actual_kib=$(du -sk "$install_dir" | cut -f1)
((kib > 0 && kib >= actual_kib / 2 && kib <= actual_kib * 2)) ||
  fail "EstimatedSize is $kib KiB, the folder holds $actual_kib KiB"

# The registration is the DLL's own; here only that it names the installed
# DLL and tells Outlook to load it at start-up.
expect_value "$addin_key" LoadBehavior dword:00000003
clsid=$(reg_value "$progid_key\\CLSID" @) || fail "$progid_key has no CLSID"
clsid=${clsid//\"/}
expect_value "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\$clsid\\InprocServer32" @ \
  "$(reg_text "$install_dir_win\\qorvane.dll")"

# load_with_host WHEN: the host program creates the add-in the way Outlook
# does, from the per-user registration, and connects it.
load_with_host() {
  [[ -n $host ]] || return 0
  wine "$host" "$install_dir_win\\qorvane.dll" >"$work/host.log" 2>&1 ||
    { fail "$1: the host could not load the installed add-in:"; sed 's/^/  /' "$work/host.log"; }
}
load_with_host "version $old_version"

# --- 3. upgrade, keeping what the user made

phase "upgrade to $version"

# What the user made, laid down before each upgrade: the add-in started by
# the host consumes SendAndExit, and adds its own lines to the log.
user_state() {
  printf 'a line of the user log\r\n' >"$install_dir/Qorvane.Log"
  wine reg add 'HKCU\Software\Brendix\Qorvane' /v SendAndExit /d yes /f >/dev/null 2>&1
  wine reg add 'HKCU\Software\VB and VBA Program Settings\Qorvane\Settings' /v IgnoreList /d 'thumbs.db' /f >/dev/null 2>&1
}

# A stand-in for Outlook holds the old DLL during the first upgrade, as
# Outlook does while it runs: the setup must rename it rather than fail, and
# the next setup must clean the renamed copy up once it is free.
stop_file=$work/stand-in.stop ready_file=$work/stand-in.ready
windows_path() { local path=${1//\//\\}; echo "Z:$path"; }
wine "$stand_in" "$install_dir_win\qorvane.dll" "$(windows_path "$ready_file")" "$(windows_path "$stop_file")" \
  >"$work/stand-in.log" 2>&1 &
stand_in_pid=$!
deadline=$((SECONDS + 60))
while [[ ! -e $ready_file ]] && ((SECONDS < deadline)); do sleep 0.1; done
[[ -e $ready_file ]] || die "the Outlook stand-in did not start: $(cat "$work/stand-in.log")"

kept=(qorvane.dll Help.chm License.txt Readme.txt qorvane.ico Uninstall.exe Qorvane.Log)
upgrade_cases=(
  "over $old_version while Outlook holds the DLL|qorvane.dll.1.old"
  "over itself once Outlook let go|"
)
for upgrade_case in "${upgrade_cases[@]}"; do
  IFS='|' read -r round renamed <<<"$upgrade_case"
  user_state
  run_setup "$new_setup" /S || fail "installing $version $round: exit code $?"
  export_hkcu
  expect_value "$uninst_key" DisplayVersion "\"$version\""
  cmp -s "$install_dir/qorvane.dll" "$dll_x64" || fail "$round: the installed DLL is not the new one"
  if [[ -n $renamed ]]; then
    cmp -s "$install_dir/$renamed" "$old_dll" || fail "$round: the DLL in use was not renamed to $renamed"
  fi
  [[ $(cat "$install_dir/Qorvane.Log" 2>/dev/null) == $'a line of the user log\r' ]] || fail "$round: the user's log was lost"
  expect_value 'HKEY_CURRENT_USER\Software\Brendix\Qorvane' SendAndExit '"yes"'
  expect_value 'HKEY_CURRENT_USER\Software\VB and VBA Program Settings\Qorvane\Settings' IgnoreList '"thumbs.db"'
  expect_value "$addin_key" LoadBehavior dword:00000003
  expect_value "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\$clsid\\InprocServer32" @ \
    "$(reg_text "$install_dir_win\\qorvane.dll")"
  leftovers=$(cd "$install_dir" && ls -A | grep -vxF "$(printf '%s\n' "${kept[@]}" $renamed)")
  [[ -z $leftovers ]] || fail "$round: unexpected files in the install folder: $leftovers"
  load_with_host "$version $round"

  if [[ -n $renamed ]]; then
    touch "$stop_file"
    wait "$stand_in_pid" || fail "the Outlook stand-in exited $?: $(cat "$work/stand-in.log")"
  fi
done

# --- 4. uninstall, the way Add/Remove Programs does it silently

phase "uninstall"

run_setup "$install_dir/Uninstall.exe" /S || fail "the uninstaller exited $?"
deadline=$((SECONDS + 60))
while [[ -e $install_dir ]] && ((SECONDS < deadline)); do sleep 0.2; done
[[ ! -e $install_dir ]] || fail "the uninstaller left $install_dir: $(ls -A "$install_dir" | tr '\n' ' ')"
wine reg delete 'HKLM\Software\Microsoft\Office\16.0' /reg:64 /f >/dev/null 2>&1

snapshot after
if ! diff -u "$work/before.reg" "$work/after.reg" >"$work/registry.diff"; then
  fail "the registry differs from before the first install:"
  grep '^[-+][^-+]' "$work/registry.diff" | head -n 40 | sed 's/^/  /'
fi
if ! diff -u "$work/before.files" "$work/after.files" >"$work/files.diff"; then
  fail "the user's folders differ from before the first install:"
  grep '^[-+][^-+]' "$work/files.diff" | head -n 40 | sed 's/^/  /'
fi

echo "installer_test: $((SECONDS - started)) s, $failures failure(s)"
((failures == 0))
