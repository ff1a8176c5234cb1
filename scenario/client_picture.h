// What a person could see of the simulated client at one moment: whether it
// runs and what the add-in is doing, the mails waiting in the deferred
// folder, the open windows, what went out, the message boxes and dialogs
// shown, the Send/Receive runs, the registry's "NextOccurence" and the
// add-in's log. The timeline compares two pictures to tell what happened.
//
// Taken offstage (sim_client.h): looking changes no call count.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "scenario/session.h"

namespace scenario {

struct WaitingMail {
  std::string entryId;
  std::string subject;
  std::string to;
  std::optional<double> next;  // its "ScheduleTime"
};

struct ClientPicture {
  std::string state;  // "stopped", "attached", "waiting", "detached", "closed", "connected"
  bool deferredFolder = false;
  std::vector<WaitingMail> waiting;  // in folder order
  std::vector<std::string> windows;  // subjects shown in compose and read windows
  long mainWindows = 0;
  std::size_t sent = 0;
  std::size_t messages = 0;
  std::size_t dialogs = 0;
  int sendReceiveRuns = 0;
  bool sendReceiveOpen = false;
  std::string nextOccurence;
  std::vector<std::string> log;  // the add-in's log, line by line
};

ClientPicture TakePicture(Session& session);

// The add-in's state as one word (see ClientPicture::state).
std::string StateName(const Session& session);

// The log's lines without their line breaks; none when there is no log.
std::vector<std::string> LogLines();

// How the deferred folder's view shows it: the headings of its view
// "Qorvane View" and, for each waiting mail, its To, Subject and Next
// Occurrence (the client's date format); empty without the folder.
struct FolderView {
  std::string name;
  std::vector<std::string> headings;
  std::vector<std::vector<std::string>> rows;  // To, Subject, Next Occurrence
};
std::optional<FolderView> DeferredFolderView(Session& session);

// What the add-in set up when it attached to the main window, as a sentence:
// the folder, its view, the shortcut, the Help-menu entries.
std::string AttachmentSummary(Session& session);

}  // namespace scenario
