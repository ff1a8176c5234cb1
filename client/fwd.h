// The mail client's object model by name only: the classes and the Ref handle
// that holds them, for headers that pass objects along without calling them.
// Everything else about them is in client/ref.h and the headers beside it.
#pragma once

#include <memory>

namespace client {

template <class T>
using Ref = std::shared_ptr<T>;

class Application;
class NameSpace;
class MAPIFolder;
class Folders;
class Items;
class Item;
class MailItem;
class AppointmentItem;
class RecurrencePattern;
class UserProperties;
class UserProperty;
class Attachments;
class Attachment;
class Views;
class View;
class Explorers;
class Explorer;
class Selection;
class Inspectors;
class Inspector;
class Panes;
class OutlookBarPane;
class OutlookBarGroups;
class OutlookBarGroup;
class OutlookBarShortcuts;
class OutlookBarShortcut;
class CommandBars;
class CommandBar;
class CommandBarControls;
class CommandBarControl;
class SyncObjects;
class SyncObject;
class SafeMailItem;
class SafeRecipients;
class AddInConnection;
class COMAddIn;
class COMAddIns;
class UserDefinedProperties;
class UserDefinedProperty;

}  // namespace client
