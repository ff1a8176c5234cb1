// The event interfaces of the client and of Office's command bars: their
// DIIDs and the DISPIDs of the events the add-in handles.
#pragma once

#include <windows.h>
#include <oaidl.h>

namespace binding::events {

// ApplicationEvents_11: ItemSend(Item, Cancel byref)
inline constexpr IID kApplication = {0x0006302C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kItemSend = 0xF002;
// InspectorsEvents: NewInspector(Inspector)
inline constexpr IID kInspectors = {0x00063079, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kNewInspector = 0xF001;
// ExplorersEvents: NewExplorer(Explorer)
inline constexpr IID kExplorers = {0x00063078, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kNewExplorer = 0xF001;
// ExplorerEvents_10: Close()
inline constexpr IID kExplorer = {0x0006300F, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kExplorerClose = 0xF008;
// SyncObjectEvents: SyncStart(), Progress(State, Description, Value, Max),
// OnError(Code, Description), SyncEnd()
inline constexpr IID kSyncObject = {0x00063085, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kSyncStart = 0xF001;
inline constexpr DISPID kSyncProgress = 0xF002;
inline constexpr DISPID kSyncError = 0xF003;
inline constexpr DISPID kSyncEnd = 0xF004;
// _CommandBarButtonEvents: Click(Ctrl, CancelDefault byref)
inline constexpr IID kCommandBarButton = {0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kClick = 1;

}  // namespace binding::events
