// Office command bars of the simulated windows: each explorer has a
// "Menu Bar" whose "Help" pop-up (id 30010) holds the client's help entries,
// and a "Standard" bar with Send/Receive (id 5577); each inspector has a
// "Menu Bar" with the spelling command (id 2) in its Tools pop-up and a
// "Standard" bar with Send (id 2617). Controls the add-in adds are
// buttons (id 1) or pop-ups; FindControl looks into pop-ups too. A button's
// click reaches the sinks advised on that control object.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "client/command_bars.h"
#include "sim/event_sinks.h"

namespace sim {

class World;
class SimCommandBarControl;

class SimCommandBar final : public client::CommandBar, public std::enable_shared_from_this<SimCommandBar> {
 public:
  SimCommandBar(World& world, std::string name) : world(world), name(std::move(name)) {}
  std::string Name() override;
  bool Visible() override;
  void Visible(bool value) override;
  client::Ref<client::CommandBarControls> Controls() override;
  client::Ref<client::CommandBarControl> FindControl(long type, long id, const std::string& tag) override;

  std::shared_ptr<SimCommandBarControl> Append(long type, long id, const std::string& caption);

  World& world;
  const std::string name;
  bool visible = true;
  std::vector<std::shared_ptr<SimCommandBarControl>> controls;
};

class SimCommandBarControl final : public client::CommandBarControl,
                                   public std::enable_shared_from_this<SimCommandBarControl> {
 public:
  SimCommandBarControl(World& world, long type, long id, SimCommandBar* parent);

  long Type() override;
  long Id() override;
  std::string Caption() override;
  void Caption(const std::string& value) override;
  std::string Tag() override;
  void Tag(const std::string& value) override;
  long Style() override;
  void Style(long value) override;
  bool BeginGroup() override;
  void BeginGroup(bool value) override;
  bool Visible() override;
  void Visible(bool value) override;
  void Execute() override;
  void Delete() override;
  long Index() override;
  long FaceId() override;
  void FaceId(long value) override;
  client::Ref<client::CommandBar> CommandBar() override;
  client::Ref<client::EventSubscription> Advise(client::CommandBarButtonEvents* sink) override;

  // A click as the user makes it: the sinks hear it; unless one of them
  // cancels, the control's own action runs.
  void Click();

  World& world;
  const long type;
  const long id;
  SimCommandBar* parent;
  std::string caption;
  std::string tag;
  long style = 0;
  long faceId = 0;
  bool beginGroup = false;
  bool visible = true;
  bool deleted = false;
  std::shared_ptr<SimCommandBar> popup;  // the bar of a pop-up control
  std::function<void()> action;          // what a built-in control does
  EventSinks<client::CommandBarButtonEvents> clicks;

 private:
  void Use(const char* member);
};

// The bars of one window.
struct CommandBarSet {
  std::vector<std::shared_ptr<SimCommandBar>> bars;
};

std::shared_ptr<CommandBarSet> NewExplorerBars(World& world);
std::shared_ptr<CommandBarSet> NewInspectorBars(World& world, bool sendOnStandard = true);

class SimCommandBars final : public client::CommandBars {
 public:
  SimCommandBars(World& world, std::shared_ptr<CommandBarSet> set) : world_(world), set_(std::move(set)) {}
  long Count() override;
  client::Ref<client::CommandBar> Item(const std::string& name) override;
  client::Ref<client::CommandBar> Add(const std::string& name, long position, bool temporary) override;
  client::Ref<client::CommandBarControl> FindControl(long type, long id, const std::string& tag) override;

 private:
  World& world_;
  std::shared_ptr<CommandBarSet> set_;
};

class SimCommandBarControls final : public client::CommandBarControls {
 public:
  SimCommandBarControls(World& world, std::shared_ptr<SimCommandBar> bar) : world_(world), bar_(std::move(bar)) {}
  long Count() override;
  client::Ref<client::CommandBarControl> Item(long index) override;
  client::Ref<client::CommandBarControl> Add(long type, long before, bool temporary) override;

 private:
  World& world_;
  std::shared_ptr<SimCommandBar> bar_;
};

}  // namespace sim
