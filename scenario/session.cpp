// A simulated client with the add-in and a scripted user.
#include "scenario/session.h"

#include "schedule/first_dow.h"
#include "store/folder.h"
#include "store/main_options.h"

namespace scenario {

Session::Session(sim::SimOptions options)
    : client_(options), savedVersion_(g_OutlookVersion), savedIgnoreList_(g_IgnoreList), savedHandOver_(g_HandOver) {
  client_.Install();
  Main::ResetFolderSessionForTesting();
}

Session::~Session() {
  if (addIn_) Stop();
  client_.Uninstall();
  g_OutlookVersion = savedVersion_;
  g_IgnoreList = savedIgnoreList_;
  g_HandOver = savedHandOver_;
  qorvane::SetFirstDOW(0);
  Main::ResetFolderSessionForTesting();
}

client::Ref<client::Explorer> Session::OpenMainWindow() {
  return client_.OpenExplorer(client_.DefaultFolder(client::olFolderInbox));
}

void Session::Start() {
  addIn_ = Connect::Create();
  client_.ConnectAddIn(kProgId, kDescription, addIn_);
  client_.CompleteStartup();
}

void Session::Stop() {
  client_.ShutDown();
  addIn_.reset();
  // The client is gone; what a test does next runs without it.
  client_.Install();
}

void Session::Disconnect() {
  client_.DisconnectAddIn(kProgId);
  addIn_.reset();
  client_.Install();
}

Session::Composed Session::ComposeMail(const std::string& subject, const std::string& to, const std::string& body,
                                       bool sendOnStandard) {
  auto mail = client_.AddMail(client_.DefaultFolder(client::olFolderDrafts), subject, to);
  if (!body.empty()) {
    const sim::SimClient::Offstage offstage(client_);
    mail->Body(body);
  }
  auto window = client_.OpenInspector(mail, sendOnStandard);
  return {std::move(mail), std::move(window)};
}

bool Session::PressQorvane(const client::Ref<client::Inspector>& window) {
  client::Ref<client::CommandBarControl> button;
  {
    const sim::SimClient::Offstage offstage(client_);
    const auto bars = window->CommandBars();
    for (const char* tag : {"KelmoraQorvane", "KelmoraQorvane2"}) {
      if ((button = bars->FindControl(0, 0, tag))) break;
    }
  }
  if (!button) return false;
  client_.Click(button);
  return true;
}

bool Session::PressMenuEntry(const client::Ref<client::Explorer>& window, const std::string& tag) {
  client::Ref<client::CommandBarControl> entry;
  {
    const sim::SimClient::Offstage offstage(client_);
    entry = window->CommandBars()->FindControl(0, 0, tag);
  }
  if (!entry) return false;
  client_.Click(entry);
  return true;
}

client::Ref<client::MAPIFolder> Session::DeferredFolder() { return FolderNamed(Main::kQorvaneFolderName); }

client::Ref<client::MAPIFolder> Session::FolderNamed(const std::string& name) {
  const sim::SimClient::Offstage offstage(client_);
  const auto folders = client_.Root()->Folders();
  for (long i = 1, count = folders->Count(); i <= count; ++i) {
    auto folder = folders->Item(i);
    if (folder->Name() == name) return folder;
  }
  return nullptr;
}

std::vector<std::string> Session::Subjects(const client::Ref<client::MAPIFolder>& folder) {
  const sim::SimClient::Offstage offstage(client_);
  std::vector<std::string> subjects;
  if (!folder) return subjects;
  const auto items = folder->Items();
  for (long i = 1, count = items->Count(); i <= count; ++i) subjects.push_back(items->Item(i)->Subject());
  return subjects;
}

client::Ref<client::Inspector> Session::WindowOf(const std::string& subject) {
  const sim::SimClient::Offstage offstage(client_);
  const auto windows = client_.Application()->Inspectors();
  for (long i = windows->Count(); i >= 1; --i) {
    auto window = windows->Item(i);
    const auto item = window->CurrentItem();
    if (item && item->Subject() == subject) return window;
  }
  return nullptr;
}

client::Ref<client::Item> Session::FindMail(const std::string& subject) {
  std::vector<client::Ref<client::MAPIFolder>> folders;
  if (auto deferred = DeferredFolder()) folders.push_back(std::move(deferred));
  const sim::SimClient::Offstage offstage(client_);
  for (const long type : {client::olFolderDrafts, client::olFolderInbox, client::olFolderOutbox, client::olFolderSentMail})
    folders.push_back(client_.DefaultFolder(type));
  for (const auto& folder : folders) {
    const auto items = folder->Items();
    for (long i = 1, count = items->Count(); i <= count; ++i) {
      auto item = items->Item(i);
      if (item->Subject() == subject) return item;
    }
  }
  return nullptr;
}

}  // namespace scenario
