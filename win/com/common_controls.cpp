// Activation contexts from a module's manifest, and comctl32 loaded under one.
#include "win/com/common_controls.h"

#include <commctrl.h>

namespace qorvane::com {

HMODULE ModuleOfAddress(const void* address) noexcept {
  HMODULE module = nullptr;
  if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                          static_cast<LPCWSTR>(address), &module)) {
    return nullptr;
  }
  return module;
}

UniqueActivationContext ContextFromManifest(HMODULE module, WORD resourceId) noexcept {
  if (!module || !FindResourceW(module, MAKEINTRESOURCEW(resourceId), MAKEINTRESOURCEW(24) /* RT_MANIFEST */)) {
    return UniqueActivationContext(INVALID_HANDLE_VALUE);
  }
  // Windows wants the module's path even with the module handle given.
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return UniqueActivationContext(INVALID_HANDLE_VALUE);
  ACTCTXW request = {};
  request.cbSize = sizeof(request);
  request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  request.lpSource = path;
  request.hModule = module;
  request.lpResourceName = MAKEINTRESOURCEW(resourceId);
  return UniqueActivationContext(CreateActCtxW(&request));
}

namespace {

// comctl32 as the active context resolves it, loaded once and never let go
// (its window classes must stay registered while any of its windows lives),
// with the classes the dialogs use registered.
void RegisterDialogControls() noexcept {
  HMODULE library = LoadLibraryW(L"comctl32.dll");
  if (!library) return;
  using InitCommonControlsExFn = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
  const auto init = reinterpret_cast<InitCommonControlsExFn>(
      reinterpret_cast<void*>(GetProcAddress(library, "InitCommonControlsEx")));
  if (init) {
    INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_STANDARD_CLASSES | ICC_DATE_CLASSES | ICC_LISTVIEW_CLASSES |
                                                         ICC_UPDOWN_CLASS | ICC_LINK_CLASS};
    init(&classes);
  }
  HMODULE pinned = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<LPCWSTR>(library), &pinned);
  FreeLibrary(library);
}

}  // namespace

CommonControlsScope::CommonControlsScope(HMODULE module) noexcept
    : context_(ContextFromManifest(module, kModuleManifestResource)), activation_(context_.get()) {
  RegisterDialogControls();
}

}  // namespace qorvane::com
