// The simulated client's public face: installation, the setup helpers of
// tests and the demo, and the records they read back.
#include "sim/sim_client.h"

#include "base/runtime_error.h"
#include "sim/ascii_text.h"
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
  client::SetCurrentApplication(application_);
  client::SetSafeMailFactory(world_->safeMail.get());
  qorvane::SetClock(&world_->clock);
  qorvane::SetMessageBox(&world_->messageBox);
  installed_ = true;
}

void SimClient::Uninstall() {
  if (!installed_) return;
  client::SetCurrentApplication(std::move(replaced_.application));
  client::SetSafeMailFactory(replaced_.safeMail);
  qorvane::SetClock(replaced_.clock == &qorvane::SystemClock() ? nullptr : replaced_.clock);
  qorvane::SetMessageBox(replaced_.messageBox == &qorvane::PlatformMessageBox() ? nullptr : replaced_.messageBox);
  replaced_ = {};
  installed_ = false;
}

Ref<client::Application> SimClient::Application() {
  if (!application_) application_ = std::make_shared<SimApplication>(*world_);
  return application_;
}

Ref<client::MAPIFolder> SimClient::DefaultFolder(long folderType) { return world_->DefaultFolder(folderType); }

Ref<client::MAPIFolder> SimClient::Root() { return world_->root; }

Ref<client::MailItem> SimClient::AddMail(const Ref<client::MAPIFolder>& folder, const std::string& subject,
                                         const std::string& to) {
  ItemPtr item = world_->NewItem(client::olMail, *OwnFolder(folder));
  item->subject = subject;
  item->to = to;
  world_->Save(item);
  return std::make_shared<SimMailItem>(*world_, item);
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
void SimClient::Advance(double days) { world_->clock.Advance(days); }

Ref<client::Explorer> SimClient::OpenExplorer(const Ref<client::MAPIFolder>& folder) {
  return world_->OpenExplorer(OwnFolder(folder));
}

void SimClient::CloseExplorer(const Ref<client::Explorer>& explorer) {
  world_->CloseExplorer(Own<SimExplorer>(explorer));
}

Ref<client::Inspector> SimClient::OpenInspector(const Ref<client::Item>& item) {
  return world_->OpenInspector(ItemOf(item));
}

void SimClient::CloseInspector(const Ref<client::Inspector>& inspector) {
  world_->CloseInspector(Own<SimInspector>(inspector), client::olDiscard);
}

void SimClient::Select(const Ref<client::Explorer>& explorer, const std::vector<Ref<client::Item>>& items) {
  std::vector<ItemPtr> selected;
  for (const auto& item : items) selected.push_back(ItemOf(item));
  Own<SimExplorer>(explorer).Select(std::move(selected));
}

void SimClient::Click(const Ref<client::CommandBarControl>& control) { Own<SimCommandBarControl>(control).Click(); }

int SimClient::AppliedCount(const Ref<client::View>& view) const { return Own<SimView>(view).Applied(); }
int SimClient::SavedCount(const Ref<client::View>& view) const { return Own<SimView>(view).Saved(); }

void SimClient::SetSafeMailInstalled(bool installed) { world_->safeMailInstalled = installed; }

void SimClient::MarkUnresolvable(const std::string& recipient) {
  world_->unresolvable.push_back(LowerAscii(recipient));
}

const std::vector<SentMail>& SimClient::SendLog() const { return world_->sendLog; }
const std::vector<MessageBoxCall>& SimClient::MessageBoxes() const { return world_->messageBox.Calls(); }
void SimClient::SetMessageBoxAnswer(long answer) { world_->messageBox.SetAnswer(answer); }

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

void SimClient::ClearFaults() { world_->counter.ClearFaults(); }
std::vector<std::string> SimClient::Operations() const { return world_->counter.Seen(); }

World& SimClient::GetWorld() { return *world_; }

}  // namespace sim
