// A simulated mail client that behaves like the real one where the add-in can
// tell: an in-memory store (root, Inbox, Outbox, Drafts, Sent Items, Calendar),
// items with user properties and attachments, folder views with their XML,
// the navigation bar, explorers and inspectors with command bars, Send/Receive
// groups, the safe-mail library with a send log, a virtual clock, recorded
// message boxes, per-operation call counts and fault injection.
//
// Lifecycle: a test (or `qorvane demo`) creates one SimClient and calls
// Install(), which makes it the add-in's current application, safe-mail
// factory, clock and message box; Uninstall() (or destroying an installed
// client) puts back the four it found (usually: none connected, the system
// clock and the platform's message box). Objects handed out stay valid while
// the SimClient lives.
// Single-threaded, like the real client.
//
// Operation names used for counting and faults are "<Interface>.<Member>",
// e.g. "Items.Item", "MailItem.Move", "UserProperties.Find",
// "SafeMailItem.Send", "Attachments.Add", "Views.Add", "View.XML". Items
// count under their kind: "MailItem.*", "AppointmentItem.*", and "Item.*" for
// any other class; the safe-mail factory under "SafeMailFactory.*".
//
// Where the add-in could tell: an item keeps its EntryID when moved within
// the store, but the object Move was called on (and anything taken from it)
// raises -2147221233 from then on; a safe-mail Send without recipients raises
// and leaves the mail where it was; Restrict and Find are one call each.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <memory>
#include <string>
#include <vector>

#include "client/client.h"
#include "platform/clock.h"
#include "platform/message_box.h"
#include "platform/time_zone.h"
#include "platform/timer.h"

namespace sim {

using client::Ref;

struct SentMail {
  double time = 0.0;  // the virtual clock when Send was called
  std::string subject;
  std::string to;
  std::vector<std::string> attachmentNames;    // display names, in order
  std::vector<std::string> attachmentSources;  // source paths, in order
  std::map<std::string, std::string> userProperties;  // name -> value as text
};

struct MessageBoxCall {
  std::string prompt;
  long buttons = 0;
  std::string title;
  long answer = 0;  // the button the box gave back
};

struct SimOptions {
  std::string version = "16.0.17928.20114";
  bool safeMailInstalled = true;
  double now = 45719.375;  // 2025-03-03 09:00
  // The client's time zone (no daylight saving time), for DASL filters.
  int utcOffsetMinutes = 60;
};

class World;  // the simulated client's state, private to sim/

class SimClient {
 public:
  explicit SimClient(SimOptions options = {});
  ~SimClient();
  SimClient(const SimClient&) = delete;
  SimClient& operator=(const SimClient&) = delete;

  // Make this the add-in's client (application, safe-mail factory, clock,
  // message box), and put back what was there.
  void Install();
  void Uninstall();

  Ref<client::Application> Application();
  Ref<client::MAPIFolder> DefaultFolder(long folderType);
  // The default store's root folder (parent of the Inbox).
  Ref<client::MAPIFolder> Root();

  // A new mail saved in the folder.
  Ref<client::MailItem> AddMail(const Ref<client::MAPIFolder>& folder, const std::string& subject,
                                const std::string& to = "someone@example.com");
  // Any non-mail item (e.g. a meeting request) with that class, saved in the folder.
  Ref<client::Item> AddOtherItem(const Ref<client::MAPIFolder>& folder, long itemClass, const std::string& subject);

  // --- the clock -----------------------------------------------------------
  // The clock and the timers on it. SetNow jumps the clock without running
  // any timer (the machine slept, or the client was closed); Advance and
  // RunUntil move it forward, stepping to each timer's due time in order and
  // firing the timer there, so that a simulated week passes in milliseconds.
  const qorvane::Clock& Clock() const;
  double Now() const;
  void SetNow(double now);
  void Advance(double days);
  // Returns the number of timer ticks delivered.
  std::size_t RunUntil(double when);
  std::size_t RunningTimers() const;
  // When the next timer is due, if one runs.
  std::optional<double> NextTimerDue() const;

  // --- windows -------------------------------------------------------------
  Ref<client::Explorer> OpenExplorer(const Ref<client::MAPIFolder>& folder);
  void CloseExplorer(const Ref<client::Explorer>& explorer);  // raises its Close event
  // sendOnStandard false: the window's "Standard" bar has no Send control,
  // as on clients whose mail editor shows its own.
  Ref<client::Inspector> OpenInspector(const Ref<client::Item>& item, bool sendOnStandard = true);
  void CloseInspector(const Ref<client::Inspector>& inspector);
  // What the user selected in the explorer (its Selection from now on).
  void Select(const Ref<client::Explorer>& explorer, const std::vector<Ref<client::Item>>& items);
  // The user clicks the control, in its window, which becomes the active one:
  // the sinks of every control with its tag hear Click (as Office raises it),
  // then, unless one of them cancels, a built-in control does its own action.
  void Click(const Ref<client::CommandBarControl>& control);

  // --- folders -------------------------------------------------------------
  // The user renames the folder in the folder list (refused, as the client
  // refuses it, when a sibling has that name in any case).
  void RenameFolder(const Ref<client::MAPIFolder>& folder, const std::string& name);
  // How often the view was applied and saved through the object model.
  int AppliedCount(const Ref<client::View>& view) const;
  int SavedCount(const Ref<client::View>& view) const;

  // --- sending -------------------------------------------------------------
  void SetSafeMailInstalled(bool installed);
  // Recipients resolve when they contain '@' and are not marked here.
  void MarkUnresolvable(const std::string& recipient);
  const std::vector<SentMail>& SendLog() const;
  const std::vector<MessageBoxCall>& MessageBoxes() const;
  // The answer the next message boxes give (default: the first button).
  void SetMessageBoxAnswer(long answer);
  // The answer of the next box not yet answered; queued answers go before
  // the standing one.
  void QueueMessageBoxAnswer(long answer);
  std::size_t PendingMessageBoxAnswers() const;
  // The user sends the mail from its window: ItemSend is raised and, unless
  // a handler cancels, the mail is logged and filed like a safe-mail send.
  // Returns whether it was sent.
  bool SendFromUser(const Ref<client::MailItem>& mail);
  // Send/Receive runs started with SyncObject.Start.
  int SyncStarts() const;
  // With `later`, a run started from now on stays open until FinishSync.
  void SetSyncFinishesLater(bool later);
  // Whether a run is open (held with SetSyncFinishesLater).
  bool SyncRunning() const;
  void FinishSync();
  // The running Send/Receive reports an error through OnError.
  void RaiseSyncError(long code, const std::string& description);

  // --- counting and faults ---------------------------------------------------
  // Calls of one operation since the last ResetCounts, and of all of them.
  std::int64_t CallCount(const std::string& operation) const;
  std::int64_t TotalCalls() const;
  std::map<std::string, std::int64_t> CallCounts() const;
  void ResetCounts();
  // The nth call (1-based, counted from now) of the operation raises the
  // runtime error; 0 or a negative n clears the fault.
  void FailCall(const std::string& operation, std::int64_t n, std::int32_t error = client::kUnspecified,
                const std::string& description = "Unspecified error");
  // The client breaks at the nth call of the operation and stays broken: every
  // later call of it raises too, until `days` of the clock have passed since
  // the first failure; then it works again.
  void FailCallsFrom(const std::string& operation, std::int64_t n, double days, std::int32_t error = -2147467259,
                     const std::string& description = "Unspecified error");
  void ClearFaults();
  // Failures the armed faults have thrown since the client was created.
  std::int64_t FaultsFired() const;

  // While one lives, calls into the client are neither counted nor failed:
  // the harness looks at the client (or sets it up) without taking part in
  // what a campaign measures. Never hold one across a call into the add-in.
  class Offstage {
   public:
    explicit Offstage(SimClient& client);
    ~Offstage();
    Offstage(const Offstage&) = delete;
    Offstage& operator=(const Offstage&) = delete;

   private:
    SimClient& client_;
  };
  // Operations whose calls were counted since the client was created (for a
  // campaign over all of them); ResetCounts does not forget them.
  std::vector<std::string> Operations() const;

  // --- add-ins -----------------------------------------------------------------
  // Listed in COMAddIns but not loaded.
  void ListAddIn(const std::string& progId, const std::string& description);
  // Loads an add-in as the client does: lists it, calls OnConnection with
  // the application and its COMAddIn entry. The client holds the connection
  // object until it disconnects the add-in.
  void ConnectAddIn(const std::string& progId, const std::string& description, Ref<client::AddInConnection> addIn,
                    long connectMode = client::ext_cm_Startup);
  // OnStartupComplete for every loaded add-in.
  void CompleteStartup();
  // OnBeginShutdown (when the client is shutting down) and OnDisconnection;
  // then the client releases the add-in's object and its connection object.
  void DisconnectAddIn(const std::string& progId, long removeMode = client::ext_dm_UserClosed);
  // The client closes: every add-in is disconnected, every main window closed.
  void ShutDown();

  // --- what the add-in left behind --------------------------------------------
  // Interface objects handed out and still held by anyone outside the client
  // (the add-in, the test): each call that returns an object adds one until
  // that object is released.
  long LiveObjects() const;
  // SendKeys, in order; the Send/Receive shortcut ("%{F9}", "%{F5}" on
  // version 9) also starts a run.
  const std::vector<std::string>& Keystrokes() const;
  // How often a compose window's spelling command ran.
  int SpellChecks() const;

  World& GetWorld();

 private:
  // What Install found, for Uninstall to put back.
  struct Replaced {
    Ref<client::Application> application;
    client::SafeMailFactory* safeMail = nullptr;
    const qorvane::Clock* clock = nullptr;
    qorvane::MessageBoxService* messageBox = nullptr;
    qorvane::TimerService* timers = nullptr;
    const qorvane::TimeZone* timeZone = nullptr;
  };

  std::unique_ptr<World> world_;
  Ref<client::Application> application_;
  bool installed_ = false;
  Replaced replaced_;
};

}  // namespace sim
