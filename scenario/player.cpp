// Playing a story: each kind of line, and time passing.
#include "scenario/player.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <type_traits>

#include "base/runtime_error.h"
#include "infra/settings.h"
#include "scenario/clock_text.h"

namespace scenario {
namespace {

namespace fs = std::filesystem;

// A virtual time as a file's last-write time. Only the order of the times
// matters to the add-in (the newest file of a folder), so the virtual local
// time is taken as UTC.
fs::file_time_type FileTime(double date) {
  const auto seconds = std::chrono::seconds(static_cast<long long>((date - 25569.0) * 86400.0 + 0.5));
  return std::chrono::file_clock::from_sys(std::chrono::sys_seconds(seconds));
}

std::string Quote(const std::string& text) { return "\"" + text + "\""; }

// A UTF-8 path as the file system takes it on every platform.
fs::path PathOf(const std::string& utf8) {
  return fs::path(std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size()));
}

}  // namespace

Player::Player(Session& session, PlayOptions options) : session_(session), options_(std::move(options)) {}

std::string Player::Expand(const std::string& written) const {
  std::string text = written;
  static const std::string kFiles = "{files}";
  for (std::size_t at = text.find(kFiles); at != std::string::npos; at = text.find(kFiles, at + options_.filesFolder.size()))
    text.replace(at, kFiles.size(), options_.filesFolder);
  return text;
}

std::string Player::Path(const std::string& written) const {
  std::string path = Expand(written);
  // A relative path is in the story's own folder, never the working folder.
  if (!options_.filesFolder.empty() && PathOf(path).is_relative()) path = options_.filesFolder + "/" + path;
#ifdef _WIN32
  for (char& c : path) {
    if (c == '/') c = '\\';
  }
#endif
  return path;
}

std::optional<ScriptError> Player::Check(const Script& script) const {
  for (const ScriptStep& step : script.steps) {
    const auto* dialog = std::get_if<DialogStep>(&step.action);
    if (!dialog) continue;
    // A scratch user only reads the answer; nothing is shown.
    ScriptedUser reader;
    std::string error;
    if (!reader.Queue(Expand(dialog->text), &error)) return ScriptError{step.line, "dialog: " + error};
  }
  return std::nullopt;
}

bool Player::Running() const { return session_.AddIn() != nullptr; }

PlayResult Player::Play(const Script& script) {
  result_ = PlayResult{};
  for (const ScriptStep& step : script.steps) {
    if (options_.endAt && session_.Client().Now() >= *options_.endAt) {
      result_.cut = true;
      break;
    }
    if (observer_) observer_->BeforeStep(step);
    try {
      std::visit([&](const auto& action) { Do(step, action); }, step.action);
    } catch (const qorvane::RuntimeError& error) {
      Fail(step.line, "the client raised error " + std::to_string(error.Number()) + ": " + error.Description());
    } catch (const std::exception& error) {
      Fail(step.line, error.what());
    }
    ExitWhenNoWindowIsLeft();
    ++result_.stepsPlayed;
    if (observer_) observer_->AfterStep(step);
  }
  if (options_.endAt && session_.Client().Now() < *options_.endAt) RunTimersUntil(*options_.endAt);
  if (const std::size_t left = session_.User().Pending())
    Fail(0, std::to_string(left) + " dialog answer(s) were never used: no dialog asked for them");
  if (const std::size_t left = session_.Client().PendingMessageBoxAnswers())
    Fail(0, std::to_string(left) + " message box answer(s) were never used");
  if (picker_.Pending() != 0) Fail(0, "the attachments picked were never added: no schedule dialog was confirmed");
  return result_;
}

void Player::Fail(int line, const std::string& what) {
  result_.failures.push_back((line > 0 ? "line " + std::to_string(line) : std::string("at the end")) + ": " + what);
  if (observer_) observer_->Failed(line, what);
}

void Player::NeedRunning(const char* what) const {
  if (!Running()) throw std::runtime_error(std::string(what) + " needs the client running; it is closed");
}

void Player::RunTimersUntil(double until) {
  sim::SimClient& client = session_.Client();
  for (;;) {
    const std::optional<double> due = client.NextTimerDue();
    if (!due || *due > until) break;
    if (observer_) observer_->BeforeTick(*due);
    const std::size_t delivered = client.RunUntil(*due);
    result_.ticks += delivered;
    ExitWhenNoWindowIsLeft();
    if (observer_) observer_->AfterTick();
    if (delivered == 0) break;  // a timer that cannot fire would spin here
  }
  if (until > client.Now()) client.RunUntil(until);
}

void Player::ExitWhenNoWindowIsLeft() {
  if (!Running() || !hadMainWindow_) return;
  sim::SimClient& client = session_.Client();
  {
    const sim::SimClient::Offstage offstage(client);
    const auto app = client.Application();
    if (app->Explorers()->Count() != 0 || app->Inspectors()->Count() != 0) return;
  }
  hadMainWindow_ = false;
  session_.Stop();
}

client::Ref<client::Explorer> Player::ActiveMainWindow() {
  const sim::SimClient::Offstage offstage(session_.Client());
  auto window = session_.Client().Application()->ActiveExplorer();
  if (!window) throw std::runtime_error("no main window is open");
  return window;
}

// --- setting the scene --------------------------------------------------------

void Player::Do(const ScriptStep&, const ClockStep& clock) {
  if (Running()) throw std::runtime_error("the clock can be set only while the client is closed; use wait");
  session_.Client().SetNow(clock.at);
}

void Player::Do(const ScriptStep&, const FileStep& file) {
  const fs::path path = PathOf(Path(file.path));
  if (path.has_parent_path()) fs::create_directories(path.parent_path());
  {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << file.content;
    if (!out) throw std::runtime_error("cannot write the file " + Quote(file.path));
  }
  fs::last_write_time(path, FileTime(session_.Client().Now()));
}

void Player::Do(const ScriptStep&, const TouchStep& touch) {
  const fs::path path = PathOf(Path(touch.path));
  if (!fs::exists(path)) throw std::runtime_error("there is no file " + Quote(touch.path) + " to touch");
  const double now = session_.Client().Now();
  fs::last_write_time(path, FileTime(touch.when ? touch.when->Resolve(now) : now));
}

void Player::Do(const ScriptStep&, const RegistryStep& value) {
  if (!qorvane::settings::WriteOwnString(value.name.c_str(), value.value))
    throw std::runtime_error("the registry value " + value.name + " could not be written");
}

void Player::Do(const ScriptStep&, const UnresolvableStep& address) { session_.Client().MarkUnresolvable(address.address); }

void Player::Do(const ScriptStep&, const SyncStep& sync) {
  session_.Client().SetSyncFinishesLater(sync.hold);
  if (!sync.hold && session_.Client().SyncRunning()) session_.Client().FinishSync();
}

// --- the client --------------------------------------------------------------

void Player::Do(const ScriptStep&, const StartStep& start) {
  if (Running()) throw std::runtime_error("the client is already running");
  if (start.mainWindow) session_.OpenMainWindow();
  hadMainWindow_ = start.mainWindow;
  session_.Start();
}

void Player::Do(const ScriptStep&, const QuitStep&) {
  NeedRunning("quit");
  sim::SimClient& client = session_.Client();
  std::vector<client::Ref<client::Inspector>> windows;
  {
    const sim::SimClient::Offstage offstage(client);
    const auto inspectors = client.Application()->Inspectors();
    for (long i = 1, count = inspectors->Count(); i <= count; ++i) windows.push_back(inspectors->Item(i));
  }
  for (const auto& window : windows) client.CloseInspector(window);
  hadMainWindow_ = false;
  session_.Stop();
}

void Player::Do(const ScriptStep&, const MainWindowStep& window) {
  NeedRunning(window.open ? "open main window" : "close main window");
  if (window.open) {
    session_.OpenMainWindow();
    hadMainWindow_ = true;
  } else {
    session_.Client().CloseExplorer(ActiveMainWindow());
  }
}

void Player::Do(const ScriptStep&, const WaitStep& wait) {
  const double now = session_.Client().Now();
  double until = wait.until.Resolve(now);
  if (until < now) throw std::runtime_error("that time has passed: the clock reads " + ClockText(now));
  if (options_.endAt && until > *options_.endAt) {
    until = *options_.endAt;
    result_.cut = true;
  }
  RunTimersUntil(until);
}

// --- the person ----------------------------------------------------------------

void Player::Do(const ScriptStep&, const ComposeStep& compose) {
  NeedRunning("compose");
  session_.ComposeMail(compose.subject, compose.to, compose.body, !compose.withoutSend);
  lastWindowSubject_ = compose.subject;
}

void Player::Do(const ScriptStep&, const EditStep& edit) {
  const auto window = session_.WindowOf(edit.subject);
  if (!window) throw std::runtime_error("no window shows the mail " + Quote(edit.subject));
  const sim::SimClient::Offstage offstage(session_.Client());
  const auto mail = window->CurrentItem()->AsMailItem();
  if (edit.field == "to") {
    mail->To(edit.value);
  } else if (edit.field == "body") {
    mail->Body(edit.value);
  } else {
    mail->Subject(edit.value);
    if (lastWindowSubject_ == edit.subject) lastWindowSubject_ = edit.value;
  }
}

void Player::Do(const ScriptStep&, const WindowStep& window) {
  if (!window.open) {
    const auto shown = session_.WindowOf(window.subject);
    if (!shown) throw std::runtime_error("no window shows the mail " + Quote(window.subject));
    session_.Client().CloseInspector(shown);
    return;
  }
  NeedRunning("open");
  const auto mail = session_.FindMail(window.subject);
  if (!mail) throw std::runtime_error("there is no mail " + Quote(window.subject) + " to open");
  session_.Client().OpenInspector(mail);
  lastWindowSubject_ = window.subject;
}

void Player::DropLeftovers(const ScriptStep& step, std::size_t dialogsBefore) {
  const std::size_t answers = session_.User().Pending();
  const bool noDialog = session_.User().Shown().size() == dialogsBefore;
  session_.User().DropPending();
  picker_.Drop();
  if (answers != 0 && noDialog)
    Fail(step.line, std::to_string(answers) + " dialog answer(s) dropped: no dialog opened for them");
}

void Player::Do(const ScriptStep& step, const PressStep& press) {
  const std::string subject = press.subject.value_or(lastWindowSubject_);
  const std::size_t dialogsBefore = session_.User().Shown().size();
  const auto window = session_.WindowOf(subject);
  const bool pressed = window && session_.PressQorvane(window);
  DropLeftovers(step, dialogsBefore);
  if (!window) throw std::runtime_error("no window shows the mail " + Quote(subject));
  if (!pressed) throw std::runtime_error("the window of " + Quote(subject) + " has no \"Qorvane\" button");
}

void Player::Do(const ScriptStep&, const AttachStep& attach) {
  std::vector<std::string> references;
  for (const std::string& path : attach.paths) references.push_back(Path(path));
  picker_.Pick(std::move(references));
}

void Player::Do(const ScriptStep&, const DialogStep& dialog) {
  std::string error;
  if (!session_.User().Queue(Expand(dialog.text), &error)) throw std::runtime_error("dialog: " + error);
}

void Player::Do(const ScriptStep&, const AnswerStep& answer) { session_.Client().QueueMessageBoxAnswer(answer.button); }

void Player::Do(const ScriptStep&, const SelectStep& select) {
  const auto window = ActiveMainWindow();
  std::vector<client::Ref<client::Item>> items;
  {
    const sim::SimClient::Offstage offstage(session_.Client());
    const auto folder = window->CurrentFolder();
    const auto shown = folder->Items();
    for (const std::string& subject : select.subjects) {
      client::Ref<client::Item> found;
      for (long i = 1, count = shown->Count(); i <= count && !found; ++i) {
        auto item = shown->Item(i);
        if (item->Subject() == subject) found = std::move(item);
      }
      if (!found)
        throw std::runtime_error("the main window shows the folder " + Quote(folder->Name()) + ", which has no mail " +
                                 Quote(subject));
      items.push_back(std::move(found));
    }
  }
  session_.Client().Select(window, items);
}

void Player::Do(const ScriptStep& step, const ClickStep& click) {
  const char* tag = click.entry == "options" ? "KelmoraQorvaneOptions" : "KelmoraQorvaneAbout";
  const std::size_t dialogsBefore = session_.User().Shown().size();
  const bool clicked = session_.PressMenuEntry(ActiveMainWindow(), tag);
  // The first options click only shows the folder: answers written before it
  // wait for the next one.
  if (session_.User().Shown().size() != dialogsBefore || !clicked) DropLeftovers(step, dialogsBefore);
  if (!clicked) throw std::runtime_error("the main window's Help menu has no " + click.entry + " entry of the add-in");
}

void Player::Do(const ScriptStep& step, const ExpectStep& expect) {
  ++result_.expectationsChecked;
  const std::string failure = Check(expect);
  if (!failure.empty()) Fail(step.line, failure);
}

}  // namespace scenario
