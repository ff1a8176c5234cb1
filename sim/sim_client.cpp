// The simulated client's public face: installation, the setup helpers of
// tests and the demo, and the records they read back.
#include "sim/sim_client.h"

#include <cmath>

#include "base/runtime_error.h"
#include "platform/time_zone.h"
#include "platform/timer.h"
#include "base/runtime_text.h"
#include "sim/sim_addins.h"
#include "sim/sim_application.h"
#include "sim/sim_command_bars.h"
#include "sim/sim_folder.h"
#include "sim/sim_item.h"
#include "sim/sim_safe_mail.h"
#include "sim/sim_sync.h"
#include "sim/sim_views.h"
#include "sim/sim_windows.h"
#include "sim/world.h"

namespace sim {
namespace {

template <class Sim, class Interface>
Sim& Own(const Ref<Interface>& object) {
  auto* own = dynamic_cast<Sim*>(object.get());
  if (!own) qorvane::Raise(object ? qorvane::err::kTypeMismatch : qorvane::err::kObjectNotSet);
  return *own;
}

std::shared_ptr<SimFolder> OwnFolder(const Ref<client::MAPIFolder>& folder) {
  return Own<SimFolder>(folder).shared_from_this();
}

}  // namespace

SimClient::SimClient(SimOptions options) : world_(std::make_unique<World>(options)) {}

SimClient::~SimClient() {
  if (installed_) Uninstall();
}

void SimClient::Install() {
  if (installed_) return;
  if (!application_) application_ = std::make_shared<SimApplication>(*world_);
  try {
    replaced_.application = client::CurrentApplication();
  } catch (const qorvane::RuntimeError&) {
    replaced_.application = nullptr;  // none connected
  }
  replaced_.safeMail = &client::CurrentSafeMailFactory();
  replaced_.clock = &qorvane::CurrentClock();
  replaced_.messageBox = &qorvane::CurrentMessageBox();
  replaced_.timers = &qorvane::CurrentTimerService();
  replaced_.timeZone = &qorvane::CurrentTimeZone();
  // The client's own object, not a counted handle: the installation is the
  // harness's wiring, not something an add-in holds.
  client::SetCurrentApplication(application_);
  client::SetSafeMailFactory(world_->safeMail.get());
  qorvane::SetClock(&world_->clock);
  qorvane::SetMessageBox(&world_->messageBox);
  qorvane::SetTimerService(&world_->timers);
  qorvane::SetTimeZone(&world_->timeZone);
  installed_ = true;
}

void SimClient::Uninstall() {
  if (!installed_) return;
  client::SetCurrentApplication(std::move(replaced_.application));
  client::SetSafeMailFactory(replaced_.safeMail);
  qorvane::SetClock(replaced_.clock == &qorvane::SystemClock() ? nullptr : replaced_.clock);
  qorvane::SetMessageBox(replaced_.messageBox == &qorvane::PlatformMessageBox() ? nullptr : replaced_.messageBox);
  qorvane::SetTimerService(replaced_.timers == &qorvane::PlatformTimerService() ? nullptr : replaced_.timers);
  qorvane::SetTimeZone(replaced_.timeZone == &qorvane::SystemTimeZone() ? nullptr : replaced_.timeZone);
  replaced_ = {};
  installed_ = false;
}

Ref<client::Application> SimClient::Application() {
  if (!application_) application_ = std::make_shared<SimApplication>(*world_);
  return world_->Hand(application_);
}

Ref<client::MAPIFolder> SimClient::DefaultFolder(long folderType) {
  return world_->Hand(world_->DefaultFolder(folderType));
}

Ref<client::MAPIFolder> SimClient::Root() { return world_->Hand(world_->root); }

Ref<client::MailItem> SimClient::AddMail(const Ref<client::MAPIFolder>& folder, const std::string& subject,
                                         const std::string& to) {
  ItemPtr item = world_->NewItem(client::olMail, *OwnFolder(folder));
  item->subject = subject;
  item->to = to;
  world_->Save(item);
  return world_->Hand(std::make_shared<SimMailItem>(*world_, item));
}

Ref<client::Item> SimClient::AddOtherItem(const Ref<client::MAPIFolder>& folder, long itemClass,
                                          const std::string& subject) {
  ItemPtr item = world_->NewItem(itemClass, *OwnFolder(folder));
  item->subject = subject;
  world_->Save(item);
  return world_->Wrap(item);
}

const qorvane::Clock& SimClient::Clock() const { return world_->clock; }
double SimClient::Now() const { return world_->clock.Now(); }
void SimClient::SetNow(double now) { world_->clock.Set(now); }
void SimClient::Advance(double days) { RunUntil(world_->clock.Now() + days); }

std::size_t SimClient::RunUntil(double when) {
  VirtualClock& clock = world_->clock;
  const std::size_t ticks = world_->timers.RunUntil(when, [&clock](double due) {
    // The clock shows whole seconds: a tick due within a second waits for it.
    const double reading = std::ceil(due * 86400.0 - 1e-6) / 86400.0;
    if (reading > clock.Now()) clock.Set(reading);
  });
  if (when > clock.Now()) clock.Set(when);
  return ticks;
}

std::size_t SimClient::RunningTimers() const { return world_->timers.RunningCount(); }
std::optional<double> SimClient::NextTimerDue() const { return world_->timers.NextDue(); }

Ref<client::Explorer> SimClient::OpenExplorer(const Ref<client::MAPIFolder>& folder) {
  return world_->Hand(world_->OpenExplorer(OwnFolder(folder)));
}

void SimClient::CloseExplorer(const Ref<client::Explorer>& explorer) {
  world_->CloseExplorer(Own<SimExplorer>(explorer));
}

Ref<client::Inspector> SimClient::OpenInspector(const Ref<client::Item>& item, bool sendOnStandard) {
  return world_->Hand(world_->OpenInspector(ItemOf(item), sendOnStandard));
}

void SimClient::CloseInspector(const Ref<client::Inspector>& inspector) {
  world_->CloseInspector(Own<SimInspector>(inspector), client::olDiscard);
}

void SimClient::Select(const Ref<client::Explorer>& explorer, const std::vector<Ref<client::Item>>& items) {
  std::vector<ItemPtr> selected;
  for (const auto& item : items) selected.push_back(ItemOf(item));
  Own<SimExplorer>(explorer).Select(std::move(selected));
}

void SimClient::Click(const Ref<client::CommandBarControl>& control) {
  auto& clicked = Own<SimCommandBarControl>(control);
  // The window the user clicks in becomes the active one.
  const auto holds = [&](const CommandBarSet& set) {
    for (const auto& bar : set.bars) {
      if (bar.get() == clicked.parent) return true;
      for (const auto& popup : bar->controls) {
        if (popup->popup && popup->popup.get() == clicked.parent) return true;
      }
    }
    return false;
  };
  const auto activate = [&](auto& windows) {
    for (std::size_t i = 0; i < windows.size(); ++i) {
      if (!holds(*windows[i]->Bars())) continue;
      auto window = windows[i];
      windows.erase(windows.begin() + static_cast<std::ptrdiff_t>(i));
      windows.push_back(std::move(window));
      return;
    }
  };
  activate(world_->inspectors);
  activate(world_->explorers);
  clicked.Click();
}

void SimClient::RenameFolder(const Ref<client::MAPIFolder>& folder, const std::string& name) {
  OwnFolder(folder)->Rename(name);
}

int SimClient::AppliedCount(const Ref<client::View>& view) const { return Own<SimView>(view).Applied(); }
int SimClient::SavedCount(const Ref<client::View>& view) const { return Own<SimView>(view).Saved(); }

void SimClient::SetSafeMailInstalled(bool installed) { world_->safeMailInstalled = installed; }

void SimClient::MarkUnresolvable(const std::string& recipient) {
  world_->unresolvable.push_back(qorvane::LCase(recipient));
}

const std::vector<SentMail>& SimClient::SendLog() const { return world_->sendLog; }
const std::vector<MessageBoxCall>& SimClient::MessageBoxes() const { return world_->messageBox.Calls(); }
void SimClient::SetMessageBoxAnswer(long answer) { world_->messageBox.SetAnswer(answer); }
void SimClient::QueueMessageBoxAnswer(long answer) { world_->messageBox.QueueAnswer(answer); }
std::size_t SimClient::PendingMessageBoxAnswers() const { return world_->messageBox.PendingAnswers(); }

bool SimClient::SendFromUser(const Ref<client::MailItem>& mail) {
  const ItemPtr item = ItemOf(mail);
  bool cancel = false;
  const Ref<client::Item> sending = world_->Wrap(item);
  world_->applicationEvents.Raise([&](client::ApplicationEvents& sink) { sink.ItemSend(sending, cancel); });
  if (cancel) return false;
  world_->Send(item);
  return true;
}

int SimClient::SyncStarts() const { return world_->syncObject->starts; }
void SimClient::SetSyncFinishesLater(bool later) { world_->syncObject->finishLater = later; }
bool SimClient::SyncRunning() const { return world_->syncObject->running; }
void SimClient::FinishSync() { world_->syncObject->Finish(); }
void SimClient::RaiseSyncError(long code, const std::string& description) {
  world_->syncObject->Fail(code, description);
}

std::int64_t SimClient::CallCount(const std::string& operation) const { return world_->counter.Count(operation); }
std::int64_t SimClient::TotalCalls() const { return world_->counter.Total(); }
std::map<std::string, std::int64_t> SimClient::CallCounts() const { return world_->counter.Counts(); }
void SimClient::ResetCounts() { world_->counter.Reset(); }

void SimClient::FailCall(const std::string& operation, std::int64_t n, std::int32_t error,
                         const std::string& description) {
  world_->counter.Arm(operation, n, error, description);
}

void SimClient::FailCallsFrom(const std::string& operation, std::int64_t n, double days, std::int32_t error,
                              const std::string& description) {
  world_->counter.Arm(operation, n, error, description, days);
}

void SimClient::ClearFaults() { world_->counter.ClearFaults(); }
std::int64_t SimClient::FaultsFired() const { return world_->counter.FaultsFired(); }

SimClient::Offstage::Offstage(SimClient& client) : client_(client) { client_.world_->counter.Pause(); }
SimClient::Offstage::~Offstage() { client_.world_->counter.Resume(); }
std::vector<std::string> SimClient::Operations() const { return world_->counter.Seen(); }

long SimClient::LiveObjects() const { return world_->handles.Count(); }

const std::vector<std::string>& SimClient::Keystrokes() const { return world_->keystrokes; }
int SimClient::SpellChecks() const { return world_->spellChecks; }

void SimClient::ListAddIn(const std::string& progId, const std::string& description) {
  world_->addIns.push_back(std::make_shared<SimCOMAddIn>(*world_, progId, description));
}

void SimClient::ConnectAddIn(const std::string& progId, const std::string& description,
                             Ref<client::AddInConnection> addIn, long connectMode) {
  auto entry = std::make_shared<SimCOMAddIn>(*world_, progId, description);
  entry->connection = std::move(addIn);
  entry->connected = true;
  world_->addIns.push_back(entry);
  const auto connection = entry->connection;
  connection->OnConnection(Application(), connectMode, world_->Hand(entry));
}

void SimClient::CompleteStartup() {
  for (const auto& entry : std::vector(world_->addIns)) {
    if (entry->connected) entry->connection->OnStartupComplete();
  }
}

void SimClient::DisconnectAddIn(const std::string& progId, long removeMode) {
  for (const auto& entry : std::vector(world_->addIns)) {
    if (!entry->connected || entry->progId != progId) continue;
    if (removeMode == client::ext_dm_HostShutdown) entry->connection->OnBeginShutdown();
    entry->connection->OnDisconnection(removeMode);
    entry->connected = false;
    // The client lets go of the add-in: its published object and the
    // connection object itself, whose destruction the add-in sees last.
    entry->object.reset();
    entry->connection.reset();
  }
}

void SimClient::ShutDown() {
  // The windows close first (their Close events come while the add-ins are
  // still loaded), then the add-ins are let go.
  for (const auto& explorer : std::vector(world_->explorers)) world_->CloseExplorer(*explorer);
  for (const auto& entry : std::vector(world_->addIns)) {
    if (entry->connected) DisconnectAddIn(entry->progId, client::ext_dm_HostShutdown);
  }
}

World& SimClient::GetWorld() { return *world_; }

}  // namespace sim
