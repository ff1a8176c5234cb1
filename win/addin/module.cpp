// The module's handle, object count and activation context.
#include "win/addin/module.h"

#include "platform/timer.h"
#include "win/com/unique_handle.h"

namespace addin_module {
namespace {

HINSTANCE g_module = nullptr;
long g_objects = 0;
long g_locks = 0;

qorvane::com::UniqueActivationContext& Context() {
  static qorvane::com::UniqueActivationContext context;
  return context;
}

}  // namespace

void SetHandle(HINSTANCE module) noexcept { g_module = module; }
HINSTANCE Handle() noexcept { return g_module; }

std::wstring Path() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(g_module, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);  // a long path was cut
  }
}

void ObjectCreated() noexcept { ++g_objects; }

void ObjectDestroyed() noexcept {
  if (--g_objects > 0) return;
  // The last object: the window and the context would otherwise outlive the
  // code that owns them once the client frees the DLL.
  qorvane::ReleasePlatformTimers();
  Context().Reset();
}

void Lock(bool lock) noexcept { lock ? ++g_locks : --g_locks; }

bool CanUnload() noexcept { return g_objects == 0 && g_locks == 0; }

HANDLE ActivationContext() noexcept {
  auto& context = Context();
  if (!context.get()) {
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = g_module;
    request.lpResourceName = MAKEINTRESOURCEW(2);  // ISOLATIONAWARE_MANIFEST_RESOURCE_ID
    context.Reset(CreateActCtxW(&request));
  }
  return context.get() ? context.get() : INVALID_HANDLE_VALUE;
}

}  // namespace addin_module
