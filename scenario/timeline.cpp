// Printing the timeline of a story.
#include "scenario/timeline.h"

#include <algorithm>
#include <map>

#include "scenario/clock_text.h"
#include "scenario/form_picture.h"
#include "store/folder.h"

namespace scenario {
namespace {

// The head line's time takes this many characters ("Mon 2025-03-24 09:15:01").
constexpr std::size_t kTimeWidth = 23;
const std::string kIndent(kTimeWidth + 4, ' ');

std::string Quote(const std::string& text) { return "\"" + text + "\""; }

std::string Joined(const std::vector<std::string>& words, const char* separator = ", ") {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
  return text;
}

// A message box's text on one line.
std::string OneLine(std::string text) {
  for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) text.replace(at, 2, " / ");
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

std::string ButtonName(long button) {
  switch (button) {
    case 1: return "OK";
    case 2: return "Cancel";
    case 3: return "Abort";
    case 4: return "Retry";
    case 5: return "Ignore";
    case 6: return "Yes";
    case 7: return "No";
    default: return std::to_string(button);
  }
}

std::string NextText(const std::optional<double>& next) {
  return next ? ClockText(*next) : std::string("no send time");
}

std::string StateChange(const std::string& state, Session& session) {
  if (state == "attached") return "the add-in attaches to the main window: " + AttachmentSummary(session);
  if (state == "waiting") return "the add-in waits for a main window; it looks for compose windows every second";
  if (state == "detached") return "the add-in's main window closed; the scheduler goes on";
  if (state == "closed") return "the add-in lets go of the client";
  if (state == "stopped") return "the client has closed and unloaded the add-in";
  return {};
}

}  // namespace

Timeline::Timeline(Session& session, std::ostream& out) : session_(session), out_(out) {
  before_ = TakePicture(session_);
  session_.User().SetObserver(
      [this](const qorvane::forms::Form& form, const std::string& event) { OnDialog(form, event); });
}

Timeline::~Timeline() { session_.User().SetObserver(nullptr); }

void Timeline::OnDialog(const qorvane::forms::Form& form, const std::string& event) {
  if (event == "shown") {
    FlushDialogSteps();
    std::string picture = Picture(form);
    for (std::size_t start = 0; start < picture.size();) {
      const std::size_t end = picture.find('\n', start);
      const std::string line = picture.substr(start, end == std::string::npos ? std::string::npos : end - start);
      dialogLines_.push_back((start == 0 ? "dialog " : "  ") + line);
      start = end == std::string::npos ? picture.size() : end + 1;
    }
  } else if (event == "closed") {
    FlushDialogSteps();
  } else {
    dialogSteps_.push_back(event);
  }
}

void Timeline::FlushDialogSteps() {
  if (dialogSteps_.empty()) return;
  dialogLines_.push_back("  the person: " + Joined(dialogSteps_, "; "));
  dialogSteps_.clear();
}

std::string Timeline::Describe(const ScriptStep& step) {
  struct Describer {
    std::string operator()(const ClockStep&) const { return {}; }
    std::string operator()(const FileStep& f) const { return "The file " + Quote(f.path) + " is written."; }
    std::string operator()(const TouchStep& t) const { return "The file " + Quote(t.path) + " gets a new time."; }
    std::string operator()(const RegistryStep& r) const {
      return "The registry value " + r.name + " is set to " + Quote(r.value) + ".";
    }
    std::string operator()(const UnresolvableStep& u) const {
      return "The address " + u.address + " no longer resolves.";
    }
    std::string operator()(const SyncStep& s) const {
      return s.hold ? "Send/Receive will stay open until it is finished." : "Send/Receive finishes.";
    }
    std::string operator()(const StartStep& s) const {
      return s.mainWindow ? "The client starts with its main window." : "The client starts without a main window.";
    }
    std::string operator()(const QuitStep&) const { return "The person closes the client."; }
    std::string operator()(const MainWindowStep& m) const {
      return m.open ? "The person opens a main window." : "The person closes the main window.";
    }
    std::string operator()(const WaitStep&) const { return {}; }
    std::string operator()(const ComposeStep& c) const {
      return "The person writes " + Quote(c.subject) + (c.to.empty() ? " without recipients" : " to " + c.to) + ".";
    }
    std::string operator()(const EditStep& e) const {
      return "The person changes the " + (e.field == "to" ? std::string("To") : e.field) + " of " + Quote(e.subject) +
             " to " + Quote(e.value) + ".";
    }
    std::string operator()(const WindowStep& w) const {
      return w.open ? "The person opens " + Quote(w.subject) + " in a window."
                    : "The person closes the window of " + Quote(w.subject) + ".";
    }
    std::string operator()(const PressStep& p) const {
      return "The person presses \"Qorvane\"" + (p.subject ? " in the window of " + Quote(*p.subject) : std::string()) +
             ".";
    }
    std::string operator()(const AttachStep&) const { return {}; }
    std::string operator()(const DialogStep&) const { return {}; }
    std::string operator()(const AnswerStep&) const { return {}; }
    std::string operator()(const SelectStep& s) const {
      std::vector<std::string> quoted;
      for (const std::string& subject : s.subjects) quoted.push_back(Quote(subject));
      return "The person selects " + Joined(quoted) + " in the main window.";
    }
    std::string operator()(const ClickStep& c) const {
      return c.entry == "options" ? "The person clicks Help > \"Qorvane\"."
                                  : "The person clicks Help > \"About Qorvane...\".";
    }
    std::string operator()(const ExpectStep&) const { return {}; }
  };
  return std::visit(Describer{}, step.action);
}

void Timeline::BeforeStep(const ScriptStep&) { before_ = TakePicture(session_); }

void Timeline::AfterStep(const ScriptStep& step) {
  if (const auto* dialog = std::get_if<DialogStep>(&step.action)) {
    prepared_.push_back("the next dialog is answered: " + dialog->text);
  } else if (const auto* answer = std::get_if<AnswerStep>(&step.action)) {
    prepared_.push_back("the next message box is answered " + answer->word);
  } else if (const auto* attach = std::get_if<AttachStep>(&step.action)) {
    prepared_.push_back("picked as attachments in the next schedule dialog: " + Joined(attach->paths));
  }
  const std::string head = Describe(step);
  Report(head, !head.empty());
  if (std::holds_alternative<StartStep>(step.action)) firstTickPending_ = true;
}

void Timeline::BeforeTick(double) {}

void Timeline::AfterTick() {
  const bool first = firstTickPending_ && session_.AddIn() != nullptr;
  Report(first ? "First tick." : "Tick.", first);
  firstTickPending_ = firstTickPending_ && !first && session_.AddIn() != nullptr;
}

void Timeline::Failed(int line, const std::string& what) {
  failures_.push_back("FAILED " + (line > 0 ? "line " + std::to_string(line) : std::string("at the end")) + ": " + what);
  if (line == 0) {
    for (const std::string& failure : failures_) out_ << failure << '\n';
    failures_.clear();
  }
}

void Timeline::Report(const std::string& head, bool force) {
  const ClientPicture after = TakePicture(session_);
  const ClientPicture& before = before_;
  std::vector<std::string> lines;
  const bool action = force && !head.empty() && head != "First tick.";
  if (action) {
    lines = prepared_;
    prepared_.clear();
  }
  const auto& shown = session_.User().Shown();
  FlushDialogSteps();
  if (!dialogLines_.empty()) {
    lines.insert(lines.end(), dialogLines_.begin(), dialogLines_.end());
    dialogLines_.clear();
  } else if (after.dialogs > before.dialogs) {
    std::vector<std::string> forms;
    for (std::size_t i = before.dialogs; i < after.dialogs && i < shown.size(); ++i) forms.push_back(shown[i].form);
    lines.push_back("dialog " + Joined(forms, ", then "));
  }
  const auto& boxes = session_.Client().MessageBoxes();
  for (std::size_t i = before.messages; i < after.messages && i < boxes.size(); ++i)
    lines.push_back("message " + Quote(OneLine(boxes[i].prompt)) + ", answered " + ButtonName(boxes[i].answer));
  if (after.mainWindows < before.mainWindows) lines.push_back("the main window closes");
  std::vector<std::string> open = after.windows;
  for (const std::string& subject : before.windows) {
    const auto still = std::find(open.begin(), open.end(), subject);
    if (still != open.end()) {
      open.erase(still);
    } else {
      lines.push_back("the window of " + Quote(subject) + " closes");
    }
  }
  const std::string folder = std::string(" \"") + Main::kQorvaneFolderName + "\"";
  std::map<std::string, const WaitingMail*> was;
  for (const WaitingMail& mail : before.waiting) was[mail.entryId] = &mail;
  for (const WaitingMail& mail : after.waiting) {
    const auto old = was.find(mail.entryId);
    if (old == was.end()) {
      lines.push_back(Quote(mail.subject) + " waits in" + folder + " for " + NextText(mail.next) + " (to " + mail.to +
                      ")");
      continue;
    }
    if (old->second->next != mail.next) lines.push_back(Quote(mail.subject) + " now waits for " + NextText(mail.next));
    was.erase(old);
  }
  const auto& sent = session_.Client().SendLog();
  for (std::size_t i = before.sent; i < after.sent && i < sent.size(); ++i) {
    const std::string attached = sent[i].attachmentNames.empty() ? "no attachment"
                                                                 : "attached " + Joined(sent[i].attachmentNames);
    lines.push_back("sent " + Quote(sent[i].subject) + " to " + sent[i].to + ", " + attached);
  }
  for (const auto& [entryId, mail] : was) lines.push_back(Quote(mail->subject) + " leaves" + folder);
  if (after.sendReceiveRuns > before.sendReceiveRuns) {
    lines.push_back(after.sendReceiveOpen ? "Send/Receive starts and stays open" : "Send/Receive runs");
  } else if (before.sendReceiveOpen && !after.sendReceiveOpen) {
    lines.push_back("Send/Receive ends");
  }
  if (after.state != before.state) {
    const std::string change = StateChange(after.state, session_);
    if (!change.empty()) lines.push_back(change);
  }
  if (after.nextOccurence != before.nextOccurence) lines.push_back("NextOccurence = " + Quote(after.nextOccurence));
  const std::size_t oldLines = after.log.size() >= before.log.size() ? before.log.size() : 0;
  for (std::size_t i = oldLines; i < after.log.size(); ++i) lines.push_back("log: " + after.log[i]);
  if (force && lines.empty() && head == "First tick.") lines.push_back("nothing due");
  lines.insert(lines.end(), failures_.begin(), failures_.end());
  failures_.clear();
  before_ = after;
  if (lines.empty() && !force) return;
  std::string time = DayClockText(session_.Client().Now());
  time.resize(kTimeWidth, ' ');
  out_ << time << "  " << (head.empty() ? "..." : head) << '\n';
  for (const std::string& line : lines) out_ << kIndent << line << '\n';
}

}  // namespace scenario
