// frmTimer: the hidden form whose three timers drive the add-in's periodic
// work, calling back into the connection through g_Connect:
//   ctlTimer           -> Connect::OnTimer           the scheduler tick
//   ctlInspectorTimer  -> Connect::OnInspectorTimer  compose windows while no main window
//   tmrExit            -> Connect::OnExitTimer       closes the main window (send and exit)
// A timer event that comes while there is no connection does nothing.
//
// TimerControl behaves as the form runtime's Timer control: it fires every
// Interval milliseconds while Enabled and Interval > 0; setting Interval
// restarts the countdown; enabling an enabled timer changes nothing.
//
// Lifecycle: the form is created on first reference (TimerForm(), which
// takes its timers from the current timer service, platform/timer.h) and
// destroyed by UnloadTimerForm, whose unload stops every timer. A timer
// event may unload the form. UI thread only.
#pragma once

#include <functional>
#include <memory>

#include "platform/timer.h"

class TimerControl {
 public:
  explicit TimerControl(std::function<void()> onTimer);
  TimerControl(const TimerControl&) = delete;
  TimerControl& operator=(const TimerControl&) = delete;

  long Interval() const noexcept { return interval_; }
  void Interval(long milliseconds);
  bool Enabled() const noexcept { return enabled_; }
  void Enabled(bool value);

 private:
  void Restart();

  std::unique_ptr<qorvane::Timer> timer_;
  long interval_ = 0;
  bool enabled_ = false;
};

class frmTimer {
 public:
  frmTimer();
  ~frmTimer();  // the form's unload
  frmTimer(const frmTimer&) = delete;
  frmTimer& operator=(const frmTimer&) = delete;

  TimerControl ctlTimer;
  TimerControl ctlInspectorTimer;
  TimerControl tmrExit;

  // Disables ctlInspectorTimer, ctlTimer and tmrExit, in that order.
  void KillTimers();
};

frmTimer& TimerForm();
bool TimerFormLoaded() noexcept;
// Unloading a form that is not loaded does nothing.
void UnloadTimerForm();
