// Command bars, their controls, FindControl and clicks.
#include "sim/sim_command_bars.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_sync.h"
#include "sim/sim_windows.h"
#include "sim/world.h"

namespace sim {
namespace {

// Office gives every control an add-in creates the id 1.
constexpr long kCustomControlId = 1;
constexpr long kHelpMenuId = 30010;
constexpr long kSendReceiveId = 5577;
constexpr long kSpellingId = 2;

bool Matches(const SimCommandBarControl& control, long type, long id, const std::string& tag) {
  return (type == 0 || control.type == type) && (id == 0 || control.id == id) && (tag.empty() || control.tag == tag);
}

// Depth first, in the order the controls stand, pop-ups' own bars included.
std::shared_ptr<SimCommandBarControl> FindIn(const SimCommandBar& bar, long type, long id, const std::string& tag) {
  for (const auto& control : bar.controls) {
    if (Matches(*control, type, id, tag)) return control;
    if (control->popup) {
      if (auto found = FindIn(*control->popup, type, id, tag)) return found;
    }
  }
  return nullptr;
}

std::shared_ptr<SimCommandBarControl> AddPopup(SimCommandBar& bar, long id, const std::string& caption,
                                               const std::vector<std::pair<long, std::string>>& entries) {
  auto popup = bar.Append(client::msoControlPopup, id, caption);
  for (const auto& [entryId, entryCaption] : entries)
    popup->popup->Append(client::msoControlButton, entryId, entryCaption);
  return popup;
}

void CollectTagged(const SimCommandBar& bar, const std::string& tag,
                   std::vector<std::shared_ptr<SimCommandBarControl>>& found) {
  for (const auto& control : bar.controls) {
    if (control->tag == tag) found.push_back(control);
    if (control->popup) CollectTagged(*control->popup, tag, found);
  }
}

// Office raises a button's Click for every control that carries the clicked
// one's tag, in any window: a sink bound to one of them hears them all.
std::vector<std::shared_ptr<SimCommandBarControl>> ClickTargets(World& world, SimCommandBarControl& clicked) {
  std::vector<std::shared_ptr<SimCommandBarControl>> found;
  if (!clicked.tag.empty()) {
    const auto collect = [&](const CommandBarSet& set) {
      for (const auto& bar : set.bars) CollectTagged(*bar, clicked.tag, found);
    };
    for (const auto& explorer : world.explorers) collect(*explorer->Bars());
    for (const auto& inspector : world.inspectors) collect(*inspector->Bars());
  }
  std::erase_if(found, [&](const auto& control) { return control.get() == &clicked; });
  found.insert(found.begin(), clicked.shared_from_this());
  return found;
}

[[noreturn]] void ControlDeleted() { qorvane::Raise(fault::kUnspecified, "The control has been deleted."); }

}  // namespace

std::string SimCommandBar::Name() {
  world.Enter("CommandBar", "Name");
  return name;
}

bool SimCommandBar::Visible() {
  world.Enter("CommandBar", "Visible");
  return visible;
}

void SimCommandBar::Visible(bool value) {
  world.Enter("CommandBar", "Visible");
  visible = value;
}

client::Ref<client::CommandBarControls> SimCommandBar::Controls() {
  world.Enter("CommandBar", "Controls");
  return world.Hand(std::make_shared<SimCommandBarControls>(world, shared_from_this()));
}

client::Ref<client::CommandBarControl> SimCommandBar::FindControl(long type, long id, const std::string& tag) {
  world.Enter("CommandBar", "FindControl");
  return world.Hand(FindIn(*this, type, id, tag));
}

std::shared_ptr<SimCommandBarControl> SimCommandBar::Append(long type, long id, const std::string& controlCaption) {
  auto control = std::make_shared<SimCommandBarControl>(world, type, id, this);
  control->caption = controlCaption;
  controls.push_back(control);
  return control;
}

SimCommandBarControl::SimCommandBarControl(World& world, long type, long id, SimCommandBar* parent)
    : world(world), type(type), id(id), parent(parent) {
  if (type == client::msoControlPopup) popup = std::make_shared<SimCommandBar>(world, "");
}

void SimCommandBarControl::Use(const char* member) {
  world.Enter("CommandBarControl", member);
  if (deleted) ControlDeleted();
}

long SimCommandBarControl::Type() { return Use("Type"), type; }
long SimCommandBarControl::Id() { return Use("Id"), id; }
std::string SimCommandBarControl::Caption() { return Use("Caption"), caption; }
void SimCommandBarControl::Caption(const std::string& value) { Use("Caption"), caption = value; }
std::string SimCommandBarControl::Tag() { return Use("Tag"), tag; }
void SimCommandBarControl::Tag(const std::string& value) { Use("Tag"), tag = value; }
long SimCommandBarControl::Style() { return Use("Style"), style; }
void SimCommandBarControl::Style(long value) { Use("Style"), style = value; }
bool SimCommandBarControl::BeginGroup() { return Use("BeginGroup"), beginGroup; }
void SimCommandBarControl::BeginGroup(bool value) { Use("BeginGroup"), beginGroup = value; }
bool SimCommandBarControl::Visible() { return Use("Visible"), visible; }
void SimCommandBarControl::Visible(bool value) { Use("Visible"), visible = value; }

void SimCommandBarControl::Execute() {
  Use("Execute");
  Click();
}

void SimCommandBarControl::Delete() {
  Use("Delete");
  deleted = true;
  auto& siblings = parent->controls;
  siblings.erase(std::remove(siblings.begin(), siblings.end(), shared_from_this()), siblings.end());
}

long SimCommandBarControl::Index() {
  Use("Index");
  const auto& siblings = parent->controls;
  const auto at = std::find(siblings.begin(), siblings.end(), shared_from_this());
  return static_cast<long>(at - siblings.begin()) + 1;
}

long SimCommandBarControl::FaceId() { return Use("FaceId"), faceId; }
void SimCommandBarControl::FaceId(long value) { Use("FaceId"), faceId = value; }

client::Ref<client::CommandBar> SimCommandBarControl::CommandBar() {
  Use("CommandBar");
  return world.Hand(popup);
}

client::Ref<client::EventSubscription> SimCommandBarControl::Advise(client::CommandBarButtonEvents* sink) {
  Use("Advise");
  return world.Hand(clicks.Advise(sink));
}

void SimCommandBarControl::Click() {
  if (deleted) ControlDeleted();
  bool cancelDefault = false;
  const client::Ref<client::CommandBarControl> self = world.Hand(shared_from_this());
  for (const auto& target : ClickTargets(world, *this))
    target->clicks.Raise([&](client::CommandBarButtonEvents& sink) { sink.Click(self, cancelDefault); });
  if (!cancelDefault && action) action();
}

std::shared_ptr<CommandBarSet> NewExplorerBars(World& world) {
  auto set = std::make_shared<CommandBarSet>();
  auto menu = std::make_shared<SimCommandBar>(world, "Menu Bar");
  AddPopup(*menu, 30002, "&File", {{18, "&New"}, {106, "&Close"}});
  AddPopup(*menu, 30003, "&Edit", {{21, "Cu&t"}, {19, "&Copy"}});
  AddPopup(*menu, 30007, "&Tools", {{522, "&Options..."}});
  AddPopup(*menu, kHelpMenuId, "&Help", {{984, "&Help Topics"}, {927, "&About"}});
  auto standard = std::make_shared<SimCommandBar>(world, "Standard");
  standard->Append(client::msoControlButton, 1874, "&New");
  auto sendReceive = standard->Append(client::msoControlButton, kSendReceiveId, "Send/Re&ceive");
  sendReceive->action = [&world] { world.syncObject->Begin(); };
  standard->Append(client::msoControlButton, 4, "&Print");
  set->bars = {menu, standard};
  return set;
}

std::shared_ptr<CommandBarSet> NewInspectorBars(World& world, bool sendOnStandard) {
  auto set = std::make_shared<CommandBarSet>();
  auto menu = std::make_shared<SimCommandBar>(world, "Menu Bar");
  AddPopup(*menu, 30002, "&File", {{3, "&Save"}, {106, "&Close"}});
  auto tools = AddPopup(*menu, 30007, "&Tools", {{kSpellingId, "&Spelling..."}});
  tools->popup->controls.front()->action = [&world] { ++world.spellChecks; };
  AddPopup(*menu, kHelpMenuId, "&Help", {{984, "&Help Topics"}});
  auto standard = std::make_shared<SimCommandBar>(world, "Standard");
  if (sendOnStandard) standard->Append(client::msoControlButton, 2617, "&Send");
  standard->Append(client::msoControlButton, 3, "&Save");
  standard->Append(client::msoControlButton, 1079, "&Insert File...");
  set->bars = {menu, standard};
  return set;
}

long SimCommandBars::Count() {
  world_.Enter("CommandBars", "Count");
  return static_cast<long>(set_->bars.size());
}

client::Ref<client::CommandBar> SimCommandBars::Item(const std::string& name) {
  world_.Enter("CommandBars", "Item");
  for (const auto& bar : set_->bars) {
    if (qorvane::EqualsIgnoringCase(bar->name, name)) return world_.Hand(bar);
  }
  return nullptr;
}

client::Ref<client::CommandBar> SimCommandBars::Add(const std::string& name, long position, bool temporary) {
  world_.Enter("CommandBars", "Add");
  for (const auto& bar : set_->bars) {
    if (qorvane::EqualsIgnoringCase(bar->name, name)) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  }
  if (position < 0 || position > 6) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  set_->bars.push_back(std::make_shared<SimCommandBar>(world_, name));
  return world_.Hand(set_->bars.back());
}

client::Ref<client::CommandBarControl> SimCommandBars::FindControl(long type, long id, const std::string& tag) {
  world_.Enter("CommandBars", "FindControl");
  for (const auto& bar : set_->bars) {
    if (auto found = FindIn(*bar, type, id, tag)) return world_.Hand(found);
  }
  return nullptr;
}

long SimCommandBarControls::Count() {
  world_.Enter("CommandBarControls", "Count");
  return static_cast<long>(bar_->controls.size());
}

client::Ref<client::CommandBarControl> SimCommandBarControls::Item(long index) {
  world_.Enter("CommandBarControls", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > bar_->controls.size()) fault::OutOfBounds();
  return world_.Hand(bar_->controls[static_cast<std::size_t>(index - 1)]);
}

client::Ref<client::CommandBarControl> SimCommandBarControls::Add(long type, long before, bool temporary) {
  world_.Enter("CommandBarControls", "Add");
  if (type != client::msoControlButton && type != client::msoControlPopup)
    qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  auto& controls = bar_->controls;
  if (before < 0 || static_cast<std::size_t>(before) > controls.size() + 1)
    qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  auto control = std::make_shared<SimCommandBarControl>(world_, type, kCustomControlId, bar_.get());
  const std::size_t at = before == 0 ? controls.size() : static_cast<std::size_t>(before - 1);
  controls.insert(controls.begin() + static_cast<std::ptrdiff_t>(at), control);
  return world_.Hand(control);
}

}  // namespace sim
