// Handles and shared pieces of the mail client's object model as the add-in
// sees it.
//
// Lifecycle contract for every client/ interface: objects are held through
// Ref (reference counted); an object stays usable while a Ref to it is held,
// and letting go of the client "in a fixed order" means resetting those Refs
// in that order. Every call comes on the client's UI thread. A failing call
// throws qorvane::RuntimeError with the runtime's number (91 object not set,
// 429 cannot create object, 440 automation error, or the COM HRESULT).
// Implementations: sim/ (simulated client, tests and demo) and win/ (the
// real client through IDispatch).
#pragma once

#include <cstdint>
#include <string>

#include "base/variant.h"
#include "client/fwd.h"

namespace client {

using qorvane::Variant;

// Item classes (the object model's OlObjectClass values the add-in tests).
inline constexpr long olFolder = 2;
inline constexpr long olAppointment = 26;
inline constexpr long olMail = 43;
inline constexpr long olOutlookBarPane = 63;
inline constexpr long olOutlookBarGroup = 66;
inline constexpr long olOutlookBarShortcut = 68;

// Default folders.
inline constexpr long olFolderOutbox = 4;
inline constexpr long olFolderSentMail = 5;
inline constexpr long olFolderInbox = 6;
inline constexpr long olFolderCalendar = 9;
inline constexpr long olFolderDrafts = 16;

// Item types for CreateItem.
inline constexpr long olMailItem = 0;
inline constexpr long olAppointmentItem = 1;

// User property types.
inline constexpr long olText = 1;
inline constexpr long olNumber = 3;
inline constexpr long olDateTime = 5;
inline constexpr long olYesNo = 6;

// Views, saving, editors, recurrence types.
inline constexpr long olTableView = 0;
inline constexpr long olViewSaveOptionAllFoldersOfType = 2;
inline constexpr long olViewSaveOptionThisFolderEveryone = 0;
inline constexpr long olSave = 0;
inline constexpr long olDiscard = 1;
inline constexpr long olEditorWord = 4;

// Office command bars.
inline constexpr long msoControlButton = 1;
inline constexpr long msoControlPopup = 10;
inline constexpr long msoButtonIconAndCaption = 3;
inline constexpr long msoBarTop = 1;

// Error 438, "Object doesn't support this property or method": what a client
// raises for a member it does not have. Members added to the interfaces
// after a binding was written default to it.
[[noreturn]] void RaiseNotSupported();

// The object itself, or error 91 (object not set) for a Nothing: what the
// client returns empty is an error to trap, never a crash. Returned by value,
// so that an object handed out only for this call stays alive while in use.
[[noreturn]] void RaiseObjectNotSet();
template <class T>
Ref<T> Require(Ref<T> object) {
  if (!object) RaiseObjectNotSet();
  return object;
}

// Connection of an event sink; the sink is called until this is released.
class EventSubscription {
 public:
  virtual ~EventSubscription() = default;
};

}  // namespace client
