// Per-monitor DPI awareness for the windows a thread creates in a scope, so
// that a dialog is laid out for the monitor it opens on and scaled when it
// moves to another, whatever awareness the host process runs with.
//
// The thread call exists from Windows 10 1607 on and is looked up at run
// time (an older system, or wine without it, keeps the process's awareness
// and the scope does nothing). Version 2 of per-monitor awareness (1703 on)
// also scales the dialog's frame and its template; version 1 is the
// fallback. UI thread; scopes nest.
#pragma once

#include <windows.h>

namespace qorvane::com {

class PerMonitorDpiScope {
 public:
  PerMonitorDpiScope() noexcept;
  ~PerMonitorDpiScope();
  PerMonitorDpiScope(const PerMonitorDpiScope&) = delete;
  PerMonitorDpiScope& operator=(const PerMonitorDpiScope&) = delete;

  // True when the thread's awareness was changed (and will be restored).
  bool Active() const noexcept { return previous_ != nullptr; }

 private:
  HANDLE previous_ = nullptr;  // DPI_AWARENESS_CONTEXT
};

}  // namespace qorvane::com
