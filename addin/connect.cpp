// Connect: connecting, attaching to a main window, windows coming and going,
// and letting go of the client.
#include "addin/connect.h"

#include "addin/frm_timer.h"
#include "base/runtime_error.h"
#include "infra/ignore_list.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "infra/settings.h"
#include "platform/message_box.h"
#include "store/folder.h"
#include "store/main_options.h"
#include "store/marked_mails.h"

Connect* g_Connect = nullptr;

using client::Require;

namespace {

// The scheduler's first tick comes one second after attaching.
constexpr long kFirstTickMs = 1000;
// While there is no main window, compose windows are looked for every second.
constexpr long kInspectorPollMs = 1000;

}  // namespace

std::shared_ptr<Connect> Connect::Create() { return std::shared_ptr<Connect>(new Connect()); }

Connect::Connect() = default;

Connect::~Connect() { Terminate(); }

void Connect::m_app(client::Ref<client::Application> application) { m_app_.Set(std::move(application)); }

bool Connect::SendAll() {
  qorvane::GuardEntry("Connect.SendAll", [] { qorvane::MsgBox("SendAll"); });
  return true;
}

ConnectionState Connect::State() const noexcept {
  if (closed_) return ConnectionState::Closed;
  if (!connected_) return ConnectionState::Created;
  if (m_Explorer) return ConnectionState::Attached;
  if (attached_) return ConnectionState::Detached;
  if (m_NoExplorer) return ConnectionState::WaitingForMainWindow;
  return ConnectionState::Connected;
}

void Connect::OnConnection(const client::Ref<client::Application>& application, long connectMode,
                           const client::Ref<client::COMAddIn>& addInInst) {
  qorvane::GuardEntry("Connect.AddinInstance_OnConnection", [&] {
    closed_ = false;
    attached_ = false;
    connected_ = true;
    g_debug.Out("->OnConnection");
    Require(addInInst)->Object(shared_from_this());
    m_SyncObj = std::make_shared<CSyncObj>();
    m_SyncObj->SetListener(&syncSink_);
    g_Connect = this;
    m_app(Require(application));
    // The store services reach the client through the current application.
    client::SetCurrentApplication(application);
    g_IgnoreList = CIgnoreList();
    g_IgnoreList.Load();
    DetectOutlookVersion();
    // Weekly patterns count their weeks from the client's first day of the
    // week, which is read with the version just recorded.
    Main::ApplyClientFirstDOW();
  });
}

void Connect::OnStartupComplete() {
  qorvane::GuardEntry("AddinInstance_OnStartupComplete", [&] {
    g_debug.Out("->OnStartupComplete");
    const auto app = Require(m_app());
    m_Inspectors.Set(app->Inspectors());
    if (app->Explorers()->Count() != 0) {
      InitExplorer(app->ActiveExplorer());
      return;
    }
    m_Explorers.Set(app->Explorers());
    g_debug.Out("m_NoExplorer = True");
    m_NoExplorer = true;
    frmTimer& form = TimerForm();
    form.ctlInspectorTimer.Interval(kInspectorPollMs);
    form.ctlInspectorTimer.Enabled(true);
  });
}

void Connect::OnBeginShutdown() {
  qorvane::GuardEntry("Connect.AddinInstance_OnBeginShutdown", [] { g_debug.Out("->OnBeginShutdown"); });
}

void Connect::OnDisconnection(long removeMode) {
  qorvane::IgnoreErrors([] { g_debug.Out("->OnDisconnection"); });
  CloseHandlers();
  g_debug.Release();
}

void Connect::Terminate() noexcept {
  qorvane::IgnoreErrors([] { g_debug.Out("AddinInstance_Terminate"); });
  // The timer form is the process's; a connection made since owns it now.
  if (g_Connect == this || g_Connect == nullptr) {
    qorvane::IgnoreErrors([] {
      if (TimerFormLoaded()) TimerForm().ctlTimer.Enabled(false);
    });
    qorvane::IgnoreErrors([] { UnloadTimerForm(); });
  }
  m_btnQorvane.Reset();
  m_btnQorvane2.Reset();
  m_Inspectors.Reset();
  m_btnOptions.Reset();
  m_btnMenuAbout.Reset();
  m_app_.Reset();
  // Only this connection's own reference: another may have connected since.
  if (g_Connect == this) g_Connect = nullptr;
  g_debug.Release();
}

void Connect::CloseHandlers() {
  qorvane::IgnoreErrors([] { g_debug.Out("->CloseHandlers"); });
  qorvane::IgnoreErrors([] {
    if (TimerFormLoaded()) TimerForm().KillTimers();
  });
  qorvane::IgnoreErrors([] { UnloadTimerForm(); });
  ReleaseSyncObj();
  qorvane::IgnoreErrors([] { g_IgnoreList = CIgnoreList(); });
  m_Explorer.Reset();
  m_Explorers.Reset();
  m_Inspectors.Reset();
  if (m_app_) client::SetCurrentApplication(nullptr);
  m_app_.Reset();
  if (g_Connect == this) g_Connect = nullptr;
  ReleaseButtons();
  if (connected_) closed_ = true;
  qorvane::Err.Clear();
}

void Connect::ReleaseSyncObj() noexcept {
  if (m_SyncObj) m_SyncObj->SetListener(nullptr);
  m_SyncObj.reset();
}

void Connect::ReleaseButtons() noexcept {
  m_btnQorvane.Reset();
  m_btnQorvane2.Reset();
  m_btnOptions.Reset();
  m_btnMenuAbout.Reset();
}

void Connect::InitExplorer(const client::Ref<client::Explorer>& explorer) {
  // Each step goes on past a failure of the ones before.
  qorvane::IgnoreErrors([&] { m_bSendAndExit = !qorvane::settings::TakeSendAndExitRequest().empty(); });
  m_NoExplorer = false;
  attached_ = true;
  qorvane::IgnoreErrors([&] { m_Explorer.Set(explorer); });
  m_Explorers.Reset();
  qorvane::IgnoreErrors([] { mSpecial::SpecialDo(); });
  qorvane::IgnoreErrors([&] { AddAboutMenu(explorer); });
  qorvane::IgnoreErrors([] { Main::AddShortcutFolder(Main::GetQorvaneFolder(true)); });
  qorvane::IgnoreErrors([] {
    frmTimer& form = TimerForm();
    form.ctlInspectorTimer.Enabled(false);
    form.ctlTimer.Interval(kFirstTickMs);
    form.ctlTimer.Enabled(true);
  });
  qorvane::Err.Clear();
}

void Connect::DetectOutlookVersion() {
  g_OutlookVersion = qorvane::settings::RecordedClientVersion(Require(m_app())->Version());
  g_debug.Out("Outlook version = ", g_OutlookVersion);
}

std::string Connect::GetOutlookMajorVersion() {
  return qorvane::settings::ClientMajorVersion(Require(m_app())->Version());
}

void Connect::m_Explorers_NewExplorer(const client::Ref<client::Explorer>& explorer) {
  qorvane::GuardEntry("Connect.m_Explorers_NewExplorer", [&] {
    if (m_NoExplorer) InitExplorer(explorer);
  });
}

void Connect::m_Explorer_Close() {
  long count = 0;
  qorvane::IgnoreErrors([&] { count = Require(m_app())->Explorers()->Count(); });
  qorvane::IgnoreErrors(
      [&] { g_debug.Out("->On Explorer.Close (m_app.Explorers.Count = " + std::to_string(count) + ")"); });
  // The closing window still counts while its Close event runs: one left
  // means it was the last, and the add-in lets go of everything at once, or
  // the client could not shut down while the add-in holds its objects.
  if (count <= 1) {
    CloseHandlers();
  } else {
    // Deliberately no following of another main window once ours closed.
    m_Explorer.Reset();
  }
  qorvane::Err.Clear();
}

Connect::SchedulerPause::SchedulerPause(Connect& connect, long restartInterval)
    : connect_(connect), restartInterval_(restartInterval) {
  if (connect_.closed_) return;
  frmTimer& form = TimerForm();
  wasEnabled_ = form.ctlTimer.Enabled();
  form.ctlTimer.Enabled(false);
}

Connect::SchedulerPause::~SchedulerPause() {
  // A connection closed meanwhile (its last main window went) stays stopped.
  if (!wasEnabled_ || connect_.closed_) return;
  qorvane::IgnoreErrors([&] {
    frmTimer& form = TimerForm();
    if (restartInterval_ > 0) form.ctlTimer.Interval(restartInterval_);
    form.ctlTimer.Enabled(true);
  });
}
