// Office command bars of a window and their controls. See client/ref.h for
// the lifecycle contract.
#pragma once

#include <string>

#include "client/ref.h"

namespace client {

class CommandBarButtonEvents {
 public:
  virtual ~CommandBarButtonEvents() = default;
  virtual void Click(const Ref<CommandBarControl>& ctrl, bool& cancelDefault) {}
};

class CommandBars {
 public:
  virtual ~CommandBars() = default;
  virtual long Count() = 0;
  // Null when there is no bar of that name.
  virtual Ref<CommandBar> Item(const std::string& name) = 0;
  virtual Ref<CommandBar> Add(const std::string& name, long position, bool temporary) = 0;
  // type 0 and id 0 and tag "" mean "any"; null when nothing matches.
  virtual Ref<CommandBarControl> FindControl(long type, long id, const std::string& tag) = 0;
};

class CommandBar {
 public:
  virtual ~CommandBar() = default;
  virtual std::string Name() = 0;
  virtual bool Visible() = 0;
  virtual void Visible(bool value) = 0;
  virtual Ref<CommandBarControls> Controls() = 0;
  virtual Ref<CommandBarControl> FindControl(long type, long id, const std::string& tag) = 0;
};

class CommandBarControls {
 public:
  virtual ~CommandBarControls() = default;
  virtual long Count() = 0;
  virtual Ref<CommandBarControl> Item(long index) = 0;
  // before = 0 appends.
  virtual Ref<CommandBarControl> Add(long type, long before, bool temporary) = 0;
};

class CommandBarControl {
 public:
  virtual ~CommandBarControl() = default;
  virtual long Type() = 0;
  virtual long Id() = 0;
  virtual std::string Caption() = 0;
  virtual void Caption(const std::string& value) = 0;
  virtual std::string Tag() = 0;
  virtual void Tag(const std::string& value) = 0;
  virtual long Style() = 0;
  virtual void Style(long value) = 0;
  virtual bool BeginGroup() = 0;
  virtual void BeginGroup(bool value) = 0;
  virtual bool Visible() = 0;
  virtual void Visible(bool value) = 0;
  virtual void Execute() = 0;
  virtual void Delete() = 0;
  // 1-based position on its bar.
  virtual long Index() { RaiseNotSupported(); }
  // The icon of a button: the face of the built-in command with that id.
  virtual long FaceId() { RaiseNotSupported(); }
  virtual void FaceId(long value) { RaiseNotSupported(); }
  // The bar of a popup control; null for other controls.
  virtual Ref<client::CommandBar> CommandBar() = 0;
  virtual Ref<EventSubscription> Advise(CommandBarButtonEvents* sink) = 0;
};

}  // namespace client
