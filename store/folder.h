// The deferred folder "Qorvane" beside the Inbox, its table view
// "Qorvane View" (recipients and next send time instead of the sender), its
// shortcut in the navigation bar, and a folder's path of names.
//
// The view of an existing folder is brought up to date once per session: the
// first GetQorvaneFolder that finds (or fails to find) the folder sets the
// session flag, and later calls leave the view alone. The view work happens
// only on clients of version 10 and later (version text starting with "1").
// Every procedure logs its own failures under "Main.<name>" and returns what
// it had (Nothing, "" or false). UI thread only.
#pragma once

#include <string>

#include "client/folders.h"

namespace Main {

inline constexpr const char* kQorvaneFolderName = "Qorvane";
inline constexpr const char* kQorvaneViewName = "Qorvane View";

// The deferred folder, created (with Drafts' item type and the view) when
// missing and create is true; null when missing, or when something is in the
// way: a non-folder object of that name (the user is told each time), or a
// folder whose name differs only in case, which the client would not let us
// add beside it (with create, the user is told once a session which folder
// to rename; each call looks again, so a renamed folder no longer blocks).
client::Ref<client::MAPIFolder> GetQorvaneFolder(bool create);

// Brings an existing "Qorvane View" up to date, then makes it if missing.
bool UpdateView(const client::Ref<client::MAPIFolder>& folder);

// Makes "Qorvane View" on the folder; fails (logged) when it already exists.
bool CustomizeView(const client::Ref<client::MAPIFolder>& folder);

// Puts exactly one shortcut to the folder into the navigation bar's
// "Shortcuts" group of the active main window; nothing without one.
bool AddShortcutFolder(const client::Ref<client::MAPIFolder>& folder);

// "Store root\Folder\Sub-folder": the names from the store root down to the
// folder, without a leading separator.
std::string GetFolderPath(const client::Ref<client::MAPIFolder>& folder);

// What this session has done once: looked at the view of an existing folder
// (false makes the next GetQorvaneFolder check it), and told the user about a
// folder in the way of ours.
extern bool g_ViewChecked;
extern bool g_BlockerReported;

// Test support: a new session, whose first GetQorvaneFolder checks the view
// and which has told the user nothing yet.
void ResetFolderSessionForTesting();

}  // namespace Main
