// Connect: the add-in's connection object. The mail client creates it, calls
// OnConnection with its Application, OnStartupComplete when its windows are
// up and OnDisconnection when it lets the add-in go; in between the
// connection hooks every compose window (the "Qorvane" button), attaches to
// one main window (the Help-menu entries, the deferred folder, the
// scheduler) and owns every reference the add-in holds into the client.
//
// The members of this class are spread over files by concern:
//   connect.cpp               start, attachment, windows coming and going, stop
//   scheduler_tick.cpp        the scheduler tick, send-and-exit
//   compose_commands.cpp      the compose-window buttons and the scheduling command
//   main_window_commands.cpp  the Help-menu entries, editing schedules, ItemSend
//
// States: Connected (OnConnection) -> WaitingForMainWindow (started without
// one; the compose-window poll runs) or Attached (the scheduler runs) ->
// Detached (the attached main window closed while others stay; the scheduler
// goes on) -> Closed (the last main window closed, or OnDisconnection: every
// timer stopped, every reference released, g_Connect cleared). CloseHandlers
// may run twice; a timer event after it does nothing.
//
// Every entry from the client (host events, client events, clicks, timers)
// traps and logs under its own label; nothing ever raises into the client.
//
// Lifecycle: created with Create() and held by the client until it
// disconnects the add-in; its destruction runs Terminate. The client's
// UI thread only.
#pragma once

#include <memory>
#include <string>

#include "addin/csync_obj.h"
#include "addin/due_items.h"
#include "addin/with_events.h"
#include "client/client.h"
#include "schedule/mail_props.h"

class Connect;

// The connected instance, through which the timer form reaches it; null
// before OnConnection and after CloseHandlers.
extern Connect* g_Connect;

enum class ConnectionState { Created, Connected, WaitingForMainWindow, Attached, Detached, Closed };

class Connect final : public client::AddInConnection, public std::enable_shared_from_this<Connect> {
 public:
  static std::shared_ptr<Connect> Create();
  ~Connect() override;
  Connect(const Connect&) = delete;
  Connect& operator=(const Connect&) = delete;

  // --- what the add-in publishes (its dispatch interface, in that order) ----
  // True while the client runs without a main window.
  bool m_NoExplorer = false;
  // The one-shot send-and-exit mode of this run.
  bool m_bSendAndExit = false;
  const client::Ref<client::Application>& m_app() const noexcept { return m_app_.get(); }
  void m_app(client::Ref<client::Application> application);
  // Kept for callers of earlier versions: shows "SendAll" and returns true.
  bool SendAll();
  // The timer form's entry points.
  void OnInspectorTimer();
  void OnTimer();
  void OnExitTimer();

  // --- the client's calls (client::AddInConnection) --------------------------
  void OnConnection(const client::Ref<client::Application>& application, long connectMode,
                    const client::Ref<client::COMAddIn>& addInInst) override;
  void OnDisconnection(long removeMode) override;
  void OnAddInsUpdate() override {}
  void OnStartupComplete() override;
  void OnBeginShutdown() override;

  // --- editing schedules (the main window's options entry uses them) --------
  // Shows the schedule dialog for record over the window; on OK the record is
  // placed on its first occurrence. True when confirmed.
  bool EditQorvaneProps(const std::shared_ptr<CMailProps>& record, const client::Ref<client::Explorer>& window);
  // Writes the record onto the item, saves it, and moves it into the deferred
  // folder when it lies elsewhere; each step runs even if one before failed.
  void QorvanePropsApply(CMailProps& record, const client::Ref<client::Item>& item);

  // --- the ribbon (version 14 on), beside the command bars --------------------
  // The client took the add-in's ribbon: it shows the commands there, so no
  // window gets command-bar entries from now on (the client would show them
  // a second time, on its "Add-ins" tab). Before that, and on clients that
  // never ask for a ribbon, the command bars are the add-in's only commands.
  void UseRibbon() noexcept { m_UseRibbon = true; }
  bool RibbonInUse() const noexcept { return m_UseRibbon; }
  // The ribbon's buttons: the same commands as the compose window's
  // "Qorvane" button and the Help-menu's options and about entries.
  void RibbonQorvane_Click();
  void RibbonOptions_Click();
  void RibbonAbout_Click();

  // The first field of the client's version ("11" for "11.0.6359").
  std::string GetOutlookMajorVersion();
  // Stops the timers, unloads the timer form and lets go of the client.
  void CloseHandlers();

  ConnectionState State() const noexcept;

 private:
  Connect();

  // Event sinks: each forwards to the handler of the same name below.
  struct ApplicationSink final : client::ApplicationEvents {
    explicit ApplicationSink(Connect& c) : connect(c) {}
    void ItemSend(const client::Ref<client::Item>& item, bool& cancel) override { connect.m_app_ItemSend(item, cancel); }
    Connect& connect;
  };
  struct InspectorsSink final : client::InspectorsEvents {
    explicit InspectorsSink(Connect& c) : connect(c) {}
    void NewInspector(const client::Ref<client::Inspector>& inspector) override {
      connect.m_Inspectors_NewInspector(inspector);
    }
    Connect& connect;
  };
  struct ExplorersSink final : client::ExplorersEvents {
    explicit ExplorersSink(Connect& c) : connect(c) {}
    void NewExplorer(const client::Ref<client::Explorer>& explorer) override {
      connect.m_Explorers_NewExplorer(explorer);
    }
    Connect& connect;
  };
  struct ExplorerSink final : client::ExplorerEvents {
    explicit ExplorerSink(Connect& c) : connect(c) {}
    void Close() override { connect.m_Explorer_Close(); }
    Connect& connect;
  };
  struct ButtonSink final : client::CommandBarButtonEvents {
    ButtonSink(Connect& c, void (Connect::*handler)()) : connect(c), onClick(handler) {}
    void Click(const client::Ref<client::CommandBarControl>&, bool&) override { (connect.*onClick)(); }
    Connect& connect;
    void (Connect::*onClick)();
  };
  struct SyncSink final : CSyncObjEvents {
    explicit SyncSink(Connect& c) : connect(c) {}
    void SyncEnd() override { connect.m_SyncObj_SyncEnd(); }
    Connect& connect;
  };

  // Pauses the scheduler for the length of a command that edits schedules;
  // gives it back at the end however the command ended.
  class SchedulerPause {
   public:
    // restartInterval > 0 re-arms with that interval instead of just enabling.
    SchedulerPause(Connect& connect, long restartInterval);
    ~SchedulerPause();
    SchedulerPause(const SchedulerPause&) = delete;
    SchedulerPause& operator=(const SchedulerPause&) = delete;

   private:
    Connect& connect_;
    long restartInterval_;
    bool wasEnabled_ = false;
  };

  // connect.cpp
  void Terminate() noexcept;
  void InitExplorer(const client::Ref<client::Explorer>& explorer);
  void DetectOutlookVersion();
  void m_Explorers_NewExplorer(const client::Ref<client::Explorer>& explorer);
  void m_Explorer_Close();
  void ReleaseSyncObj() noexcept;
  void ReleaseButtons() noexcept;

  // scheduler_tick.cpp
  void OnTimer1();
  void SaveNextOccurence();
  void m_SyncObj_SyncEnd();

  // compose_commands.cpp
  void m_Inspectors_NewInspector(const client::Ref<client::Inspector>& inspector);
  void AddComposeButtons(const client::Ref<client::Inspector>& inspector, const client::Ref<client::Item>& item);
  void m_btnQorvane_Click();
  void m_btnQorvane2_Click();
  void QorvaneClick(bool keepOnTop);

  // main_window_commands.cpp
  void AddAboutMenu(const client::Ref<client::Explorer>& explorer);
  void m_btnMenuAbout_Click();
  void m_btnOptions_Click();
  void EditOneItem(const client::Ref<client::Item>& item, const client::Ref<client::Explorer>& window);
  void m_app_ItemSend(const client::Ref<client::Item>& item, bool& cancel);

  ApplicationSink applicationSink_{*this};
  InspectorsSink inspectorsSink_{*this};
  ExplorersSink explorersSink_{*this};
  ExplorerSink explorerSink_{*this};
  ButtonSink qorvaneSink_{*this, &Connect::m_btnQorvane_Click};
  ButtonSink qorvane2Sink_{*this, &Connect::m_btnQorvane2_Click};
  ButtonSink aboutSink_{*this, &Connect::m_btnMenuAbout_Click};
  ButtonSink optionsSink_{*this, &Connect::m_btnOptions_Click};
  SyncSink syncSink_{*this};

  WithEvents<client::Application, client::ApplicationEvents> m_app_{&applicationSink_};
  WithEvents<client::Inspectors, client::InspectorsEvents> m_Inspectors{&inspectorsSink_};
  WithEvents<client::Explorers, client::ExplorersEvents> m_Explorers{&explorersSink_};
  WithEvents<client::Explorer, client::ExplorerEvents> m_Explorer{&explorerSink_};
  std::shared_ptr<CSyncObj> m_SyncObj;
  WithEvents<client::CommandBarControl, client::CommandBarButtonEvents> m_btnQorvane{&qorvaneSink_};
  WithEvents<client::CommandBarControl, client::CommandBarButtonEvents> m_btnQorvane2{&qorvane2Sink_};
  WithEvents<client::CommandBarControl, client::CommandBarButtonEvents> m_btnOptions{&optionsSink_};
  WithEvents<client::CommandBarControl, client::CommandBarButtonEvents> m_btnMenuAbout{&aboutSink_};

  DeferredFolderScan scan_;
  bool m_UseRibbon = false;
  bool connected_ = false;  // OnConnection ran
  bool attached_ = false;   // InitExplorer ran
  bool closed_ = false;     // CloseHandlers ran
};
