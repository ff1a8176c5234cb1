// A story for the simulated client as a small line-based text: one action
// or expectation per line, read completely (and refused with the line and
// the reason) before anything is played. The player (player.h) plays it; the
// full description of the format is kScriptFormatHelp below, which
// `qorvane demo --help` prints.
//
//   clock 2025-03-24 08:55
//   start
//   compose "Call me back" to "anna@example.com"
//   dialog once at 2025-03-24 09:15, OK
//   press Qorvane
//   wait until 2025-03-24 09:20
//   expect sent "Call me back" at 2025-03-24 09:15
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace scenario {

// A time as a person writes it: a clock reading ("2025-03-03 09:00", the
// date alone meaning midnight) or an offset from the clock's reading when
// the line is played ("+10m", "+1d12h").
struct ScriptTime {
  std::optional<double> at;
  double offsetDays = 0.0;
  bool secondsGiven = false;  // "09:00:30": an expectation compares to the second

  double Resolve(double now) const { return at ? *at : now + offsetDays; }
};

// Setting the scene -------------------------------------------------------
struct ClockStep { double at = 0.0; };                      // clock TIME
struct FileStep { std::string path, content; };             // file PATH "CONTENT"
struct TouchStep { std::string path; std::optional<ScriptTime> when; };  // touch PATH [TIME]
struct RegistryStep { std::string name, value; };           // registry NAME "VALUE"
struct UnresolvableStep { std::string address; };           // unresolvable ADDRESS
struct SyncStep { bool hold = false; };                     // sync hold | sync finish

// The client ----------------------------------------------------------------
struct StartStep { bool mainWindow = true; };               // start [without main window]
struct QuitStep {};                                         // quit
struct MainWindowStep { bool open = true; };                // open main window | close main window
struct WaitStep { ScriptTime until; };                      // wait +10m | wait until TIME

// The person ----------------------------------------------------------------
struct ComposeStep {                                        // compose "SUBJECT" [to ..] [body ..] [without send]
  std::string subject, to, body;
  bool withoutSend = false;
};
struct EditStep { std::string subject, field, value; };     // edit "SUBJECT" to|subject|body "TEXT"
struct WindowStep { std::string subject; bool open = true; };  // open "SUBJECT" | close "SUBJECT"
struct PressStep { std::optional<std::string> subject; };   // press Qorvane [in "SUBJECT"]
struct AttachStep { std::vector<std::string> paths; };      // attach PATH...
struct DialogStep { std::string text; };                    // dialog ANSWER (handed on as written)
struct AnswerStep { long button = 0; std::string word; };   // answer Yes|No|Cancel|OK|...
struct SelectStep { std::vector<std::string> subjects; };   // select "SUBJECT"...
struct ClickStep { std::string entry; };                    // click options | click about

// Expectations ----------------------------------------------------------------
struct ExpectStep {
  enum class What {
    SentCount,       // expect sent N
    SentSubject,     // expect sent "SUBJECT" N
    SentAt,          // expect sent "SUBJECT" at TIME
    Attachments,     // expect attachments "SUBJECT" NAME...
    FolderCount,     // expect folder N
    NextSend,        // expect next "SUBJECT" TIME
    InFolder,        // expect in FOLDER "SUBJECT"...
    Registry,        // expect registry NAME "TEXT"
    LogContains,     // expect log contains "TEXT"
    LogClean,        // expect log clean
    Message,         // expect message "TEXT"
    NoMessage,       // expect no message
    Dialogs,         // expect dialogs FORM... | expect dialogs none
    Window,          // expect window "SUBJECT"
    NoWindow,        // expect no window "SUBJECT"
    State,           // expect state attached|waiting|detached|closed|stopped
    Timer,           // expect timer running | expect timer stopped
    SendReceive,     // expect sendreceive N
  };
  What what = What::SentCount;
  std::string subject;            // or folder, registry name, state
  std::string text;               // or time text as written
  std::vector<std::string> list;  // names, subjects, forms
  long number = 0;
  ScriptTime time;
  bool flag = false;
};

using Action = std::variant<ClockStep, FileStep, TouchStep, RegistryStep, UnresolvableStep, SyncStep, StartStep,
                            QuitStep, MainWindowStep, WaitStep, ComposeStep, EditStep, WindowStep, PressStep,
                            AttachStep, DialogStep, AnswerStep, SelectStep, ClickStep, ExpectStep>;

struct ScriptStep {
  int line = 0;
  std::string source;  // the line as written, comment and blanks taken off
  Action action;
};

struct Script {
  std::vector<ScriptStep> steps;
};

struct ScriptError {
  int line = 0;
  std::string message;
  // "line 7: ..." as a person reads it.
  std::string Text() const;
};

struct ParsedScript {
  std::optional<Script> script;
  ScriptError error;  // when script is empty
};

ParsedScript ParseScript(std::string_view text);

// The format, as `qorvane demo --help` documents it.
extern const char* const kScriptFormatHelp;

}  // namespace scenario
