// The common controls of version 6 (themed buttons, date and time pickers,
// list views) for the windows a module creates, whatever its process asked
// for. A host process may run with version 5 of comctl32; a DLL gets
// version 6 only through its own manifest (resource 2, RT_MANIFEST) made the
// active activation context while its windows are created and while they
// run. Version 5 answers DllGetVersion with 5.81 even inside such a context,
// so ask a button for BCM_GETIDEALSIZE to tell which one a window got.
//
// UI thread; scopes nest (each one is deactivated in reverse order).
#pragma once

#include <windows.h>

#include "win/com/unique_handle.h"

namespace qorvane::com {

// The manifest resource a DLL keeps for its own use
// (ISOLATIONAWARE_MANIFEST_RESOURCE_ID).
inline constexpr WORD kModuleManifestResource = 2;

// The module (EXE or DLL) whose image holds the address; null for none.
// The count of references to the module is left as it was.
HMODULE ModuleOfAddress(const void* address) noexcept;

// An activation context from the manifest among a module's resources;
// invalid when the module has none or the manifest does not parse.
UniqueActivationContext ContextFromManifest(HMODULE module, WORD resourceId) noexcept;

// For the scope: the module's manifest is the active activation context and
// comctl32 as that context names it is loaded (and kept loaded: windows of
// its classes may outlive any one scope) with the classes of the dialogs
// registered. Without a manifest the process's own controls are used.
class CommonControlsScope {
 public:
  explicit CommonControlsScope(HMODULE module) noexcept;
  CommonControlsScope(const CommonControlsScope&) = delete;
  CommonControlsScope& operator=(const CommonControlsScope&) = delete;

  // True when the module's manifest is the active context.
  bool Active() const noexcept { return activation_.Active(); }

 private:
  UniqueActivationContext context_;
  ActivationScope activation_;
};

}  // namespace qorvane::com
