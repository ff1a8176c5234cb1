// Explorers, inspectors and their collections.
#include "sim/sim_windows.h"

#include "base/runtime_error.h"
#include "sim/sim_command_bars.h"
#include "sim/sim_folder.h"
#include "sim/sim_navigation_bar.h"
#include "sim/world.h"

namespace sim {
namespace {

[[noreturn]] void WindowClosed() {
  qorvane::Raise(fault::kUnspecified, "The window has been closed and cannot be used for further operations.");
}

}  // namespace

SimExplorer::SimExplorer(World& world, std::shared_ptr<SimFolder> folder)
    : world_(world), folder_(std::move(folder)), bars_(NewExplorerBars(world)) {}

void SimExplorer::Use(const char* member) {
  world_.Enter("Explorer", member);
  if (!open) WindowClosed();
}

client::Ref<client::CommandBars> SimExplorer::CommandBars() {
  Use("CommandBars");
  return world_.Hand(std::make_shared<SimCommandBars>(world_, bars_));
}

client::Ref<client::MAPIFolder> SimExplorer::CurrentFolder() {
  Use("CurrentFolder");
  return world_.Hand(folder_);
}

void SimExplorer::CurrentFolder(const client::Ref<client::MAPIFolder>& folder) {
  Use("CurrentFolder");
  auto* own = dynamic_cast<SimFolder*>(folder.get());
  if (!own) qorvane::Raise(folder ? qorvane::err::kTypeMismatch : qorvane::err::kObjectNotSet);
  // The folder's own pointer, not the caller's handle: the window keeps state.
  auto target = own->shared_from_this();
  if (target != folder_) selection_.clear();  // another folder shows nothing selected yet
  folder_ = std::move(target);
}

client::Ref<client::Selection> SimExplorer::Selection() {
  Use("Selection");
  return world_.Hand(std::make_shared<SimSelection>(world_, selection_));
}

client::Ref<client::Panes> SimExplorer::Panes() {
  Use("Panes");
  return world_.Hand(std::make_shared<SimPanes>(world_));
}

client::WindowRect SimExplorer::Rect() {
  Use("Rect");
  return client::WindowRect{0, 0, 1280, 800};
}

void SimExplorer::Close() {
  Use("Close");
  world_.CloseExplorer(*this);
}

client::Ref<client::EventSubscription> SimExplorer::Advise(client::ExplorerEvents* sink) {
  Use("Advise");
  return world_.Hand(events.Advise(sink));
}

long SimSelection::Count() {
  world_.Enter("Selection", "Count");
  return static_cast<long>(items_.size());
}

client::Ref<client::Item> SimSelection::Item(long index) {
  world_.Enter("Selection", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > items_.size()) fault::OutOfBounds();
  return world_.Wrap(items_[static_cast<std::size_t>(index - 1)]);
}

long SimExplorers::Count() {
  world_.Enter("Explorers", "Count");
  return static_cast<long>(world_.explorers.size());
}

client::Ref<client::Explorer> SimExplorers::Item(long index) {
  world_.Enter("Explorers", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > world_.explorers.size()) fault::OutOfBounds();
  return world_.Hand(world_.explorers[static_cast<std::size_t>(index - 1)]);
}

client::Ref<client::EventSubscription> SimExplorers::Advise(client::ExplorersEvents* sink) {
  world_.Enter("Explorers", "Advise");
  return world_.Hand(world_.explorersEvents.Advise(sink));
}

SimInspector::SimInspector(World& world, ItemPtr item, bool sendOnStandard)
    : world_(world), item_(std::move(item)), bars_(NewInspectorBars(world, sendOnStandard)) {}

void SimInspector::Use(const char* member) {
  world_.Enter("Inspector", member);
  if (!open) WindowClosed();
}

client::Ref<client::Item> SimInspector::CurrentItem() {
  Use("CurrentItem");
  return world_.Wrap(item_);
}

client::Ref<client::CommandBars> SimInspector::CommandBars() {
  Use("CommandBars");
  return world_.Hand(std::make_shared<SimCommandBars>(world_, bars_));
}

long SimInspector::EditorType() {
  Use("EditorType");
  return client::olEditorWord;
}

bool SimInspector::IsWordMail() {
  Use("IsWordMail");
  return false;
}

client::WindowRect SimInspector::Rect() {
  Use("Rect");
  return client::WindowRect{160, 120, 900, 640};
}

void SimInspector::Close(long saveMode) {
  Use("Close");
  if (saveMode != client::olSave && saveMode != client::olDiscard && saveMode != 2)
    qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  world_.CloseInspector(*this, saveMode);
}

long SimInspectors::Count() {
  world_.Enter("Inspectors", "Count");
  return static_cast<long>(world_.inspectors.size());
}

client::Ref<client::Inspector> SimInspectors::Item(long index) {
  world_.Enter("Inspectors", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > world_.inspectors.size()) fault::OutOfBounds();
  return world_.Hand(world_.inspectors[static_cast<std::size_t>(index - 1)]);
}

client::Ref<client::EventSubscription> SimInspectors::Advise(client::InspectorsEvents* sink) {
  world_.Enter("Inspectors", "Advise");
  return world_.Hand(world_.inspectorsEvents.Advise(sink));
}

}  // namespace sim
