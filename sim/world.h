// The simulated client's state: the store's folders and items, the windows,
// the navigation bar, the Send/Receive group, the send log, the clock, the
// recorded message boxes and the call counter. Interface objects (sim_*.h)
// are views onto this state; they enter the counter and then act here.
//
// Item lifecycle operations below do not count: the interface call that
// leads to them has already been counted.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "client/client.h"
#include "sim/call_counter.h"
#include "sim/event_sinks.h"
#include "sim/item_data.h"
#include "sim/live_handles.h"
#include "sim/recorded_message_box.h"
#include "sim/sim_client.h"
#include "sim/virtual_clock.h"
#include "platform/time_zone.h"
#include "platform/virtual_timers.h"

namespace sim {

class SimFolder;
class SimExplorer;
class SimInspector;
class SimShortcutGroup;
class SimSyncObject;
class SimSafeMailFactory;
class SimCOMAddIn;

// Errors the simulated client raises the way the real one does.
namespace fault {
using client::kDispatchException;
using client::kFileNotFound;
using client::kInvalidArgument;
using client::kMovedOrDeleted;
using client::kUnspecified;
[[noreturn]] void MovedOrDeleted();
[[noreturn]] void OutOfBounds();
}  // namespace fault

using client::olFolderSentMail;

class World {
 public:
  explicit World(const SimOptions& options);
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  void Enter(std::string_view interfaceName, std::string_view member) { counter.Enter(interfaceName, member); }

  // Every interface object handed across the interface goes out through here
  // (see live_handles.h).
  template <class T>
  client::Ref<T> Hand(std::shared_ptr<T> object) const {
    return handles.Hand(std::move(object));
  }

  // --- the store --------------------------------------------------------------
  std::shared_ptr<SimFolder> DefaultFolder(long folderType);  // raises for an unknown number
  std::string NewEntryId();

  ItemPtr NewItem(long itemClass, SimFolder& home);
  void Save(const ItemPtr& item);
  ItemPtr Copy(const ItemPtr& item);
  // The item leaves its folder for `to`; objects taken before stop working.
  void Move(const ItemPtr& item, SimFolder& to);
  void Delete(const ItemPtr& item);
  // A new interface object for the item as it is now.
  client::Ref<client::Item> Wrap(const ItemPtr& item);
  // What a send does in the client: log it, mark it sent, file it in Sent Items.
  void Send(const ItemPtr& item);
  // The ';'-separated non-empty names of the item's To.
  static std::vector<std::string> Recipients(const ItemData& item);
  bool Resolves(const std::string& recipient) const;

  // --- windows ----------------------------------------------------------------
  std::shared_ptr<SimExplorer> OpenExplorer(const std::shared_ptr<SimFolder>& folder);
  void CloseExplorer(SimExplorer& explorer);
  std::shared_ptr<SimInspector> OpenInspector(const ItemPtr& item, bool sendOnStandard = true);
  void CloseInspector(SimInspector& inspector, long saveMode);

  SimOptions options;
  VirtualClock clock;
  CallCounter counter{clock};
  qorvane::VirtualTimers timers{&clock};
  qorvane::FixedOffsetTimeZone timeZone;
  LiveHandles handles;
  RecordedMessageBox messageBox;
  std::unique_ptr<SimSafeMailFactory> safeMail;
  bool safeMailInstalled = true;
  std::vector<std::string> unresolvable;  // lower case
  std::vector<SentMail> sendLog;

  std::shared_ptr<SimFolder> root;
  std::vector<std::pair<long, std::shared_ptr<SimFolder>>> defaultFolders;

  std::vector<std::shared_ptr<SimExplorer>> explorers;    // open, oldest first
  std::vector<std::shared_ptr<SimInspector>> inspectors;  // open, oldest first
  EventSinks<client::ApplicationEvents> applicationEvents;
  EventSinks<client::ExplorersEvents> explorersEvents;
  EventSinks<client::InspectorsEvents> inspectorsEvents;

  std::vector<std::shared_ptr<SimShortcutGroup>> shortcutGroups;  // shared by every explorer's bar
  std::shared_ptr<SimSyncObject> syncObject;

  std::vector<std::string> keystrokes;  // SendKeys, in order
  int spellChecks = 0;                  // runs of a compose window's spelling command
  std::vector<std::shared_ptr<SimCOMAddIn>> addIns;

 private:
  std::uint64_t nextId_ = 0;
};

}  // namespace sim
