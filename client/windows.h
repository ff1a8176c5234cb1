// The client's windows: main windows (explorers) with their navigation bar,
// compose and read windows (inspectors). See client/ref.h for the lifecycle
// contract.
#pragma once

#include <string>

#include "client/ref.h"

namespace client {

class ExplorersEvents {
 public:
  virtual ~ExplorersEvents() = default;
  virtual void NewExplorer(const Ref<Explorer>& explorer) {}
};

class ExplorerEvents {
 public:
  virtual ~ExplorerEvents() = default;
  virtual void Close() {}
};

class InspectorsEvents {
 public:
  virtual ~InspectorsEvents() = default;
  virtual void NewInspector(const Ref<Inspector>& inspector) {}
};

// A window's rectangle in the client's units.
struct WindowRect {
  long Left = 0;
  long Top = 0;
  long Width = 0;
  long Height = 0;
};

class Explorers {
 public:
  virtual ~Explorers() = default;
  virtual long Count() = 0;
  virtual Ref<Explorer> Item(long index) = 0;
  virtual Ref<EventSubscription> Advise(ExplorersEvents* sink) = 0;
};

class Explorer {
 public:
  virtual ~Explorer() = default;
  virtual Ref<client::CommandBars> CommandBars() = 0;
  virtual Ref<MAPIFolder> CurrentFolder() = 0;
  virtual void CurrentFolder(const Ref<MAPIFolder>& folder) = 0;
  virtual Ref<client::Selection> Selection() = 0;
  virtual Ref<client::Panes> Panes() = 0;
  virtual WindowRect Rect() = 0;
  virtual void Close() = 0;
  virtual Ref<EventSubscription> Advise(ExplorerEvents* sink) = 0;
};

class Selection {
 public:
  virtual ~Selection() = default;
  virtual long Count() = 0;
  virtual Ref<client::Item> Item(long index) = 0;
};

class Inspectors {
 public:
  virtual ~Inspectors() = default;
  virtual long Count() = 0;
  virtual Ref<Inspector> Item(long index) = 0;
  virtual Ref<EventSubscription> Advise(InspectorsEvents* sink) = 0;
};

class Inspector {
 public:
  virtual ~Inspector() = default;
  virtual Ref<client::Item> CurrentItem() = 0;
  virtual Ref<client::CommandBars> CommandBars() = 0;
  virtual long EditorType() = 0;
  virtual bool IsWordMail() = 0;
  virtual WindowRect Rect() = 0;
  // olSave or olDiscard.
  virtual void Close(long saveMode) = 0;
};

// The navigation bar: Panes("OutlookBar") is the pane (class 63); its
// Contents.Groups hold groups (class 66) of shortcuts (class 68).
class Panes {
 public:
  virtual ~Panes() = default;
  virtual long Count() = 0;
  // Null when there is no pane of that name.
  virtual Ref<OutlookBarPane> Item(const std::string& name) = 0;
};

class OutlookBarPane {
 public:
  virtual ~OutlookBarPane() = default;
  virtual long Class() = 0;
  virtual Ref<OutlookBarGroups> Groups() = 0;
};

class OutlookBarGroups {
 public:
  virtual ~OutlookBarGroups() = default;
  virtual long Count() = 0;
  virtual Ref<OutlookBarGroup> Item(long index) = 0;
  // Null when there is no group of that name.
  virtual Ref<OutlookBarGroup> Item(const std::string& name) = 0;
};

class OutlookBarGroup {
 public:
  virtual ~OutlookBarGroup() = default;
  virtual long Class() = 0;
  virtual std::string Name() = 0;
  virtual Ref<OutlookBarShortcuts> Shortcuts() = 0;
};

class OutlookBarShortcuts {
 public:
  virtual ~OutlookBarShortcuts() = default;
  virtual long Count() = 0;
  virtual Ref<OutlookBarShortcut> Item(long index) = 0;
  virtual void Remove(long index) = 0;
  virtual Ref<OutlookBarShortcut> Add(const Ref<MAPIFolder>& target, const std::string& name) = 0;
};

class OutlookBarShortcut {
 public:
  virtual ~OutlookBarShortcut() = default;
  virtual long Class() = 0;
  virtual std::string Name() = 0;
  // The folder it opens, or null.
  virtual Ref<MAPIFolder> Target() = 0;
};

}  // namespace client
