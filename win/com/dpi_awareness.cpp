// The thread's DPI awareness through user32, looked up at run time.
#include "win/com/dpi_awareness.h"

namespace qorvane::com {
namespace {

using SetContextFn = HANDLE(WINAPI*)(HANDLE);

SetContextFn ThreadContextSetter() noexcept {
  static const SetContextFn setter = [] {
    HMODULE user32 = GetModuleHandleW(L"user32.dll");
    return user32 ? reinterpret_cast<SetContextFn>(
                        reinterpret_cast<void*>(GetProcAddress(user32, "SetThreadDpiAwarenessContext")))
                  : nullptr;
  }();
  return setter;
}

// DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2 and _PER_MONITOR_AWARE.
const HANDLE kPerMonitorV2 = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-4));
const HANDLE kPerMonitorV1 = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-3));

}  // namespace

PerMonitorDpiScope::PerMonitorDpiScope() noexcept {
  const SetContextFn set = ThreadContextSetter();
  if (!set) return;
  previous_ = set(kPerMonitorV2);
  if (!previous_) previous_ = set(kPerMonitorV1);
}

PerMonitorDpiScope::~PerMonitorDpiScope() {
  if (previous_) ThreadContextSetter()(previous_);
}

}  // namespace qorvane::com
