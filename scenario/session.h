// A simulated mail client with the add-in loaded and a scripted user at its
// dialogs: the stage for scenario tests and the demo. The client's clock and
// timers are virtual (Client().Advance / RunUntil run the scheduler).
//
// A Session is a client process: it installs the simulated client, starts
// with a fresh folder session, and on destruction closes the client if the
// add-in is still loaded and puts back the process-wide state the add-in
// changes (the recorded client version, the first day of the week, the
// ignore list, the dialog hand-over, the form view). The add-in's log
// folder and registry are the caller's to choose.
//
// Lifecycle: one at a time per process, on one thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "addin/connect.h"
#include "dialogs/hand_over.h"
#include "infra/ignore_list.h"
#include "scenario/scripted_user.h"
#include "sim/sim_client.h"

namespace scenario {

inline constexpr const char* kProgId = "Qorvane.Connect";
inline constexpr const char* kDescription = "Qorvane: send mail later, once or on a recurrence";

class Session {
 public:
  explicit Session(sim::SimOptions options = {});
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  sim::SimClient& Client() noexcept { return client_; }
  ScriptedUser& User() noexcept { return user_; }
  // The loaded add-in; null before Start and after Stop or Disconnect.
  const std::shared_ptr<Connect>& AddIn() const noexcept { return addIn_; }

  // A main window on the Inbox, as the user opens one.
  client::Ref<client::Explorer> OpenMainWindow();
  // The client loads the add-in (OnConnection) and completes its start-up.
  void Start();
  // The client closes: its main windows, then the add-in.
  void Stop();
  // The add-in alone is disconnected; the client keeps running.
  void Disconnect();

  struct Composed {
    client::Ref<client::MailItem> mail;
    client::Ref<client::Inspector> window;
  };
  // A new mail in Drafts, shown in a compose window (whose "Standard" bar
  // may lack the Send control: the add-in then puts its button on a bar of
  // its own).
  Composed ComposeMail(const std::string& subject, const std::string& to = "someone@example.com",
                       const std::string& body = "", bool sendOnStandard = true);
  // The user presses the window's "Qorvane" button (on "Standard", or on the
  // add-in's own bar); false when the window has none.
  bool PressQorvane(const client::Ref<client::Inspector>& window);
  // The main window's Help menu entry with that tag ("KelmoraQorvaneOptions",
  // "KelmoraQorvaneAbout"); false when there is none.
  bool PressMenuEntry(const client::Ref<client::Explorer>& window, const std::string& tag);

  // What the person sees, looked at offstage (sim_client.h): these calls
  // are neither counted nor failed.
  // The deferred folder, or null while there is none.
  client::Ref<client::MAPIFolder> DeferredFolder();
  // The subjects of a folder's items, in its order.
  std::vector<std::string> Subjects(const client::Ref<client::MAPIFolder>& folder);
  // The open compose or read window showing a mail with that subject, the
  // most recently opened first; null when none.
  client::Ref<client::Inspector> WindowOf(const std::string& subject);
  // A mail with that subject in the deferred folder, else in the Drafts,
  // Inbox, Outbox or Sent Items; null when none.
  client::Ref<client::Item> FindMail(const std::string& subject);
  // A folder of the store's root by name ("Qorvane", "Drafts", ...), or null.
  client::Ref<client::MAPIFolder> FolderNamed(const std::string& name);

 private:
  sim::SimClient client_;
  ScriptedUser user_;
  ScopedFormView view_{user_};
  std::shared_ptr<Connect> addIn_;
  std::string savedVersion_;
  CIgnoreList savedIgnoreList_;
  DialogHandOver savedHandOver_;
};

}  // namespace scenario
