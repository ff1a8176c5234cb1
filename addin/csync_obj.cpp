// Send/Receive after a scheduler pass.
#include "addin/csync_obj.h"

#include <string>

#include "addin/connect.h"
#include "base/runtime_error.h"
#include "client/application.h"
#include "client/command_bars.h"
#include "client/windows.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "infra/settings.h"

namespace {

constexpr long kSendReceiveControlId = 5577;
constexpr long kSendReceiveControlIdOld = 5488;

client::Ref<client::Application> ConnectedApplication() {
  if (!g_Connect || !g_Connect->m_app()) qorvane::Raise(qorvane::err::kObjectNotSet);
  return g_Connect->m_app();
}

std::string SyncStateName(long state) {
  switch (state) {
    case 1: return "olSyncStarted";
    case 0: return "olSyncStopped";
    default: return std::to_string(state);
  }
}

client::Ref<client::CommandBars> Bars(const client::Ref<client::Application>& app) {
  return client::Require(client::Require(app->ActiveExplorer())->CommandBars());
}

// The oldest generation has no Send/Receive groups: its command is run, or
// its shortcut typed. Each step goes on past a failure of the one before.
void SendWithCommand(const client::Ref<client::Application>& app) {
  client::Ref<client::CommandBarControl> control;
  qorvane::IgnoreErrors([&] {
    control = Bars(app)->FindControl(client::msoControlButton, kSendReceiveControlId, "");
  });
  if (!control) {
    qorvane::IgnoreErrors([&] {
      control = Bars(app)->FindControl(client::msoControlButton, kSendReceiveControlIdOld, "");
    });
  }
  if (!control) {
    qorvane::IgnoreErrors([&] { app->SendKeys("%{F5}"); });
  } else {
    qorvane::IgnoreErrors([&] { control->Execute(); });
  }
  qorvane::Err.Clear();
}

}  // namespace

void CSyncObj::SendNow(bool bExit) {
  const auto self = weak_from_this().lock();  // kept alive while it runs
  qorvane::GuardEntry("CSyncObj.SendNow", [&] {
    const auto app = ConnectedApplication();
    if (qorvane::settings::ClientMajorVersion(app->Version()) == "9") {
      SendWithCommand(app);
      return;
    }
    const auto groups = client::Require(client::Require(app->Session())->SyncObjects());
    const auto group = groups->Count() >= 1 ? groups->Item(1) : nullptr;
    if (!group) {
      app->SendKeys("%{F9}");
      return;
    }
    // An unwatched run is started without listening to it at all: a run
    // that ends while Start is still running must not close the client.
    if (!bExit) {
      group->Start();
      return;
    }
    m_sync.Set(group);
    group->Start();
  });
}

void CSyncObj::m_sync_SyncStart() {
  qorvane::IgnoreErrors([] { g_debug.Out("CSyncObject.SyncStart"); });
}

void CSyncObj::m_sync_Progress(long state, const std::string& description, long value, long max) {
  qorvane::IgnoreErrors([&] {
    g_debug.Out("CSyncObject.Progress : " + SyncStateName(state) + ", " + description + " " + std::to_string(value) +
                " of " + std::to_string(max));
  });
}

void CSyncObj::m_sync_OnError(long code, const std::string& description) {
  qorvane::IgnoreErrors(
      [&] { g_debug.OutCustomError("CSyncObject.OnError", std::to_string(code) + ", " + description); });
}

void CSyncObj::m_sync_SyncEnd() {
  const auto self = weak_from_this().lock();  // kept alive while it runs
  qorvane::IgnoreErrors([&] {
    g_debug.Out("CSyncObject.SyncEnd");
    m_sync.Reset();
    if (listener_) listener_->SyncEnd();
  });
}
