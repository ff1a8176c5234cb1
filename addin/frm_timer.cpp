// The timer form and its timer controls.
#include "addin/frm_timer.h"

#include "addin/connect.h"

namespace {

std::unique_ptr<frmTimer>& Instance() {
  static std::unique_ptr<frmTimer> form;
  return form;
}

// The timer events reach the connection only through g_Connect; each entry
// point traps its own errors.
void ctlTimer_Timer() {
  if (g_Connect) g_Connect->OnTimer();
}
void ctlInspectorTimer_Timer() {
  if (g_Connect) g_Connect->OnInspectorTimer();
}
void tmrExit_Timer() {
  if (g_Connect) g_Connect->OnExitTimer();
}

}  // namespace

TimerControl::TimerControl(std::function<void()> onTimer)
    : timer_(qorvane::CurrentTimerService().CreateTimer(std::move(onTimer))) {}

void TimerControl::Interval(long milliseconds) {
  interval_ = milliseconds < 0 ? 0 : milliseconds;
  Restart();
}

void TimerControl::Enabled(bool value) {
  if (value == enabled_) return;
  enabled_ = value;
  Restart();
}

void TimerControl::Restart() {
  if (enabled_ && interval_ > 0) {
    timer_->Start(static_cast<std::uint32_t>(interval_));
  } else {
    timer_->Stop();
  }
}

frmTimer::frmTimer()
    : ctlTimer(&ctlTimer_Timer), ctlInspectorTimer(&ctlInspectorTimer_Timer), tmrExit(&tmrExit_Timer) {}

frmTimer::~frmTimer() { KillTimers(); }

void frmTimer::KillTimers() {
  ctlInspectorTimer.Enabled(false);
  ctlTimer.Enabled(false);
  tmrExit.Enabled(false);
}

frmTimer& TimerForm() {
  auto& form = Instance();
  if (!form) form = std::make_unique<frmTimer>();
  return *form;
}

bool TimerFormLoaded() noexcept { return static_cast<bool>(Instance()); }

void UnloadTimerForm() {
  // Moved out first, so that the form is already gone when its unload runs.
  std::unique_ptr<frmTimer> form = std::move(Instance());
}
