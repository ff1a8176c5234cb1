// COM add-ins of the simulated client.
#include "sim/sim_addins.h"

#include "sim/world.h"

namespace sim {

std::string SimCOMAddIn::ProgId() {
  world_.Enter("COMAddIn", "ProgId");
  return progId;
}

std::string SimCOMAddIn::Description() {
  world_.Enter("COMAddIn", "Description");
  return description;
}

bool SimCOMAddIn::Connect() {
  world_.Enter("COMAddIn", "Connect");
  return connected;
}

client::Ref<client::AddInConnection> SimCOMAddIn::Object() {
  world_.Enter("COMAddIn", "Object");
  return object;
}

void SimCOMAddIn::Object(const client::Ref<client::AddInConnection>& value) {
  world_.Enter("COMAddIn", "Object");
  object = value;
}

long SimCOMAddIns::Count() {
  world_.Enter("COMAddIns", "Count");
  return static_cast<long>(world_.addIns.size());
}

client::Ref<client::COMAddIn> SimCOMAddIns::Item(long index) {
  world_.Enter("COMAddIns", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > world_.addIns.size()) fault::OutOfBounds();
  return world_.Hand(world_.addIns[static_cast<std::size_t>(index - 1)]);
}

}  // namespace sim
