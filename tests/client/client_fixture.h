// What the conformance suite needs from a client under test, and the base
// of its typed tests.
//
// A fixture type F is default-constructible; while an F lives, its client is
// the add-in's current one (CurrentApplication and CurrentSafeMailFactory)
// and starts out as a fresh profile: an empty default store "Mailbox" with
// Inbox, Outbox, Drafts, Sent Items and Calendar, no windows open. Besides
// App(), F offers only what the object model cannot do by itself, i.e. what
// a user or the machine does:
//   AddMail(folder, subject, to)       a saved mail in the folder (delivery)
//   OpenExplorer(folder) / CloseExplorer(explorer)
//   OpenInspector(item) / CloseInspector(inspector)   without saving
//   Select(explorer, items)            the user's selection
//   Click(control)                     the user clicks a command bar control
//   SendFromUser(mail)                 the user presses Send (ItemSend, then
//                                      sent unless a handler cancels)
//   RaiseSyncError(code, description)  the running Send/Receive reports an error
//   SetSafeMailInstalled(bool)         the safe-mail library (un)installed
//   MarkUnresolvable(recipient)        the address book does not know it
//   ListAddIn(progId, description)     an add-in registered but not loaded
//   ConnectAddIn(progId, description, connection)
//                                      the client loads a C++ add-in of its
//                                      own world (OnConnection with its objects)
//   Idle()                             the client's message loop runs until
//                                      nothing waits (keystrokes typed with
//                                      SendKeys arrive)
// The simulated client's fixture is sim_fixture.h, the COM binding's
// com_fixture.h; both are in ClientFixtures.
#pragma once

#include <gtest/gtest.h>

#include <concepts>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "client/client.h"

namespace client_conformance {

using client::Ref;

template <class F>
concept ClientFixture =
    std::default_initializable<F> &&
    requires(F& f, const Ref<client::MAPIFolder>& folder, const Ref<client::Item>& item,
             const Ref<client::Explorer>& explorer, const Ref<client::Inspector>& inspector,
             const Ref<client::CommandBarControl>& control, const std::vector<Ref<client::Item>>& items,
             const Ref<client::MailItem>& mail, const std::string& text,
             const Ref<client::AddInConnection>& connection) {
      { f.App() } -> std::same_as<Ref<client::Application>>;
      { f.AddMail(folder, text, text) } -> std::same_as<Ref<client::MailItem>>;
      { f.OpenExplorer(folder) } -> std::same_as<Ref<client::Explorer>>;
      f.CloseExplorer(explorer);
      { f.OpenInspector(item) } -> std::same_as<Ref<client::Inspector>>;
      f.CloseInspector(inspector);
      f.Select(explorer, items);
      f.Click(control);
      { f.SendFromUser(mail) } -> std::same_as<bool>;
      f.RaiseSyncError(1L, text);
      f.SetSafeMailInstalled(true);
      f.MarkUnresolvable(text);
      f.ListAddIn(text, text);
      f.ConnectAddIn(text, text, connection);
      f.Idle();
    };

// Runs a call expected to fail and gives the runtime error number it raised
// (0 when it did not raise).
template <class Call>
std::int32_t ErrorOf(Call&& call) {
  try {
    call();
  } catch (const qorvane::RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

inline constexpr std::int32_t kMovedOrDeleted = -2147221233;
inline constexpr std::int32_t kDispatchException = -2147352567;
inline constexpr std::int32_t kFileNotFound = -2147024894;
inline constexpr long olFolderSentMail = 5;

template <ClientFixture F>
class ClientTest : public ::testing::Test {
 protected:
  Ref<client::MAPIFolder> Folder(long folderType) { return session->GetDefaultFolder(folderType); }
  Ref<client::MAPIFolder> Inbox() { return Folder(client::olFolderInbox); }
  Ref<client::MAPIFolder> Root() { return Inbox()->Parent(); }

  // The subjects of a collection (Items, Selection), in its order.
  template <class Collection>
  static std::vector<std::string> Subjects(const Ref<Collection>& items) {
    std::vector<std::string> subjects;
    for (long i = 1, count = items->Count(); i <= count; ++i) subjects.push_back(items->Item(i)->Subject());
    return subjects;
  }

  F fixture;
  Ref<client::Application> app = fixture.App();
  Ref<client::NameSpace> session = app->GetNamespace("MAPI");
};

}  // namespace client_conformance
