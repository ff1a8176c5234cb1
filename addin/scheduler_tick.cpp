// Connect: the scheduler tick. Once a minute, just after the minute turns,
// every due item of the deferred folder goes to the sending pipeline, the
// earliest remaining send time is published for programs outside the
// add-in ("NextOccurence"), and Send/Receive is started when anything was
// sent. In send-and-exit mode the client is closed afterwards.
#include <vector>

#include "addin/connect.h"
#include "addin/frm_timer.h"
#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "infra/cwinreg.h"
#include "infra/error_trap.h"
#include "infra/settings.h"
#include "platform/clock.h"
#include "platform/locale.h"
#include "store/folder.h"
#include "store/sending.h"

namespace {

// How long send-and-exit waits before closing the main window.
constexpr long kExitDelayMs = 10000;

// From a pass that began at t0 to the first second of the next minute.
long NextTickInterval(double t0) {
  const long interval = (60 - qorvane::ToTimeOfDay(t0).second) * 1000L;
  return interval == 0 ? 1000 : interval;
}

}  // namespace

void Connect::OnTimer() {
  qorvane::GuardEntry("Connect.OnTimer", [&] {
    if (closed_) return;
    frmTimer& form = TimerForm();
    // The only guard against a second pass: none can start while this one
    // runs, even if it pumps messages.
    form.ctlTimer.Enabled(false);
    const double t0 = qorvane::Now();
    OnTimer1();
    // The pass may have ended the connection (send and exit).
    if (closed_) return;
    form.ctlTimer.Interval(NextTickInterval(t0));
    form.ctlTimer.Enabled(true);
    if (!m_bSendAndExit) return;
    if (m_SyncObj && m_SyncObj->HasObject()) {
      // The end of that Send/Receive closes the client; no tick meanwhile.
      form.ctlTimer.Enabled(false);
    } else {
      // Setting the interval restarts a running exit timer for a full delay.
      form.tmrExit.Interval(kExitDelayMs);
      form.tmrExit.Enabled(true);
    }
  });
}

void Connect::OnTimer1() {
  qorvane::Trap("Connect.OnTimer1", [&] {
    const double now = qorvane::Now();
    const auto folder = Main::GetQorvaneFolder(true);
    g_debug.Out("On Timer");
    std::vector<client::Ref<client::MailItem>> due = scan_.DueItems(folder, now, "Connect.OnTimer1");
    const bool sentAny = !due.empty();
    for (const auto& item : due) Main::SendMessage(item, now);
    due.clear();
    // Published before Send/Receive starts: a run that ends at once may close
    // the client in send-and-exit mode, and outside readers need the value.
    SaveNextOccurence();
    if (!sentAny) return;
    // Held for the call: its end may release it through CloseHandlers.
    const std::shared_ptr<CSyncObj> sync = m_SyncObj;
    if (sync) sync->SendNow(m_bSendAndExit);
  });
}

void Connect::SaveNextOccurence() {
  qorvane::Trap("SaveNextOccurence", [&] {
    const auto folder = Main::GetQorvaneFolder(true);
    const std::optional<double> earliest = scan_.Earliest(folder, "SaveNextOccurence");
    const std::string text = earliest ? qorvane::CurrentLocale().FormatGeneralDate(*earliest) : "";
    // Written only when it differs: the value stays exactly what every pass
    // publishes, without a durable write of the same text twice a minute.
    CWinReg reg;
    if (!reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, qorvane::settings::kOwnKey, true)) return;
    if (!reg.ValueType(qorvane::settings::kNextOccurence) || reg.ReadString(qorvane::settings::kNextOccurence) != text)
      reg.WriteString(qorvane::settings::kNextOccurence, text);
  });
}

void Connect::OnExitTimer() {
  qorvane::IgnoreErrors([] {
    if (TimerFormLoaded()) TimerForm().tmrExit.Enabled(false);
  });
  qorvane::IgnoreErrors([&] { client::Require(client::Require(m_app())->ActiveExplorer())->Close(); });
  qorvane::Err.Clear();
}

void Connect::m_SyncObj_SyncEnd() {
  qorvane::IgnoreErrors([&] { client::Require(client::Require(m_app())->ActiveExplorer())->Close(); });
  qorvane::Err.Clear();
}
