// The application object and the session.
#include "sim/sim_application.h"

#include <cmath>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_addins.h"
#include "sim/sim_folder.h"
#include "sim/sim_sync.h"
#include "sim/sim_windows.h"
#include "sim/world.h"

namespace sim {

std::string SimApplication::Version() {
  world_.Enter("Application", "Version");
  return world_.options.version;
}

client::Ref<client::NameSpace> SimApplication::GetNamespace(const std::string& type) {
  world_.Enter("Application", "GetNamespace");
  if (!qorvane::EqualsIgnoringCase(type, "MAPI")) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  return world_.Hand(std::make_shared<SimNameSpace>(world_));
}

client::Ref<client::NameSpace> SimApplication::Session() {
  world_.Enter("Application", "Session");
  return world_.Hand(std::make_shared<SimNameSpace>(world_));
}

client::Ref<client::Explorers> SimApplication::Explorers() {
  world_.Enter("Application", "Explorers");
  return world_.Hand(std::make_shared<SimExplorers>(world_));
}

client::Ref<client::Inspectors> SimApplication::Inspectors() {
  world_.Enter("Application", "Inspectors");
  return world_.Hand(std::make_shared<SimInspectors>(world_));
}

client::Ref<client::Explorer> SimApplication::ActiveExplorer() {
  world_.Enter("Application", "ActiveExplorer");
  if (world_.explorers.empty()) return nullptr;
  return world_.Hand(world_.explorers.back());
}

client::Ref<client::Inspector> SimApplication::ActiveInspector() {
  world_.Enter("Application", "ActiveInspector");
  if (world_.inspectors.empty()) return nullptr;
  return world_.Hand(world_.inspectors.back());
}

client::Ref<client::Item> SimApplication::CreateItem(long itemType) {
  world_.Enter("Application", "CreateItem");
  switch (itemType) {
    case client::olMailItem:
      return world_.Wrap(world_.NewItem(client::olMail, *world_.DefaultFolder(client::olFolderDrafts)));
    case client::olAppointmentItem: {
      ItemPtr item = world_.NewItem(client::olAppointment, *world_.DefaultFolder(client::olFolderCalendar));
      // A new appointment starts at the next half hour and lasts half an hour.
      const double halfHours = std::ceil(world_.clock.Now() * 48.0 - 1e-6);
      item->start = halfHours / 48.0;
      item->end = (halfHours + 1.0) / 48.0;
      return world_.Wrap(item);
    }
    default:
      qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  }
}

client::Ref<client::EventSubscription> SimApplication::Advise(client::ApplicationEvents* sink) {
  world_.Enter("Application", "Advise");
  return world_.Hand(world_.applicationEvents.Advise(sink));
}

client::Ref<client::COMAddIns> SimApplication::COMAddIns() {
  world_.Enter("Application", "COMAddIns");
  return world_.Hand(std::make_shared<SimCOMAddIns>(world_));
}

void SimApplication::SendKeys(const std::string& keys) {
  world_.Enter("Application", "SendKeys");
  world_.keystrokes.push_back(keys);
  // Alt+F5 was Send/Receive on the oldest generation, Alt+F9 on later ones.
  const bool oldest = world_.options.version.rfind("9.", 0) == 0 || world_.options.version == "9";
  if (keys == (oldest ? "%{F5}" : "%{F9}")) world_.syncObject->Begin();
}

client::Ref<client::MAPIFolder> SimNameSpace::GetDefaultFolder(long folderType) {
  world_.Enter("NameSpace", "GetDefaultFolder");
  return world_.Hand(world_.DefaultFolder(folderType));
}

client::Ref<client::SyncObjects> SimNameSpace::SyncObjects() {
  world_.Enter("NameSpace", "SyncObjects");
  return world_.Hand(std::make_shared<SimSyncObjects>(world_));
}

}  // namespace sim
