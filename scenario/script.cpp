// Reading a story script: lines into words, words into steps.
#include "scenario/script.h"

#include <charconv>
#include <cmath>

#include "base/ole_date.h"
#include "platform/message_box.h"

namespace scenario {
namespace {

struct Word {
  std::string text;
  bool quoted = false;
};

struct Failure {
  std::string message;
};

[[noreturn]] void Fail(std::string message) { throw Failure{std::move(message)}; }

// The line without its comment: a '#' outside quotes starts one.
std::string_view WithoutComment(std::string_view line) {
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (quoted && line[i] == '\\') {
      ++i;
    } else if (line[i] == '"') {
      quoted = !quoted;
    } else if (!quoted && line[i] == '#') {
      return line.substr(0, i);
    }
  }
  return line;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

std::vector<Word> SplitWords(std::string_view line) {
  std::vector<Word> words;
  std::size_t i = 0;
  while (i < line.size()) {
    if (line[i] == ' ' || line[i] == '\t') {
      ++i;
      continue;
    }
    Word word;
    if (line[i] == '"') {
      word.quoted = true;
      for (++i;; ++i) {
        if (i >= line.size()) Fail("a quoted text is not closed");
        if (line[i] == '"') break;
        if (line[i] != '\\') {
          word.text += line[i];
          continue;
        }
        if (++i >= line.size()) Fail("a quoted text is not closed");
        switch (line[i]) {
          case 'n': word.text += '\n'; break;
          case 'r': word.text += '\r'; break;
          case 't': word.text += '\t'; break;
          case '"':
          case '\\': word.text += line[i]; break;
          default: Fail(std::string("unknown escape \\") + line[i] + " in a quoted text (\\\" \\\\ \\n \\r \\t)");
        }
      }
      ++i;
      if (i < line.size() && line[i] != ' ' && line[i] != '\t') Fail("a quoted text must be followed by a blank");
    } else {
      while (i < line.size() && line[i] != ' ' && line[i] != '\t') word.text += line[i++];
    }
    words.push_back(std::move(word));
  }
  return words;
}

std::optional<long> NumberOf(std::string_view text) {
  long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<double> DateOf(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto year = NumberOf(text.substr(0, 4));
  const auto month = NumberOf(text.substr(5, 2));
  const auto day = NumberOf(text.substr(8, 2));
  if (!year || !month || !day || *year < 100 || *month < 1 || *month > 12 || *day < 1 ||
      *day > qorvane::DaysInMonth(static_cast<int>(*year), static_cast<int>(*month)))
    return std::nullopt;
  return qorvane::DateSerialRollOver(static_cast<int>(*year), static_cast<int>(*month), static_cast<int>(*day));
}

// "9:30", "09:30" or "09:30:15"; seconds tells whether they were written.
std::optional<double> ClockOf(std::string_view text, bool& seconds) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view rest = text.substr(colon + 1);
  const std::size_t second = rest.find(':');
  const auto hour = NumberOf(text.substr(0, colon));
  const auto minute = NumberOf(rest.substr(0, second));
  const auto sec = second == std::string_view::npos ? std::optional<long>(0) : NumberOf(rest.substr(second + 1));
  if (!hour || !minute || !sec || colon > 2 || rest.substr(0, second).size() != 2 || *hour > 23 || *hour < 0 ||
      *minute > 59 || *minute < 0 || *sec > 59 || *sec < 0)
    return std::nullopt;
  seconds = second != std::string_view::npos;
  return qorvane::TimeSerial(static_cast<int>(*hour), static_cast<int>(*minute), static_cast<int>(*sec));
}

// "+10m", "+1d12h": days, hours, minutes, seconds and weeks in any order.
std::optional<double> OffsetOf(std::string_view text) {
  if (text.size() < 3 || text.front() != '+') return std::nullopt;
  text.remove_prefix(1);
  double days = 0.0;
  while (!text.empty()) {
    std::size_t digits = 0;
    while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9') ++digits;
    const auto amount = NumberOf(text.substr(0, digits));
    if (!amount || digits == text.size() || *amount > 100000) return std::nullopt;
    switch (text[digits]) {
      case 'w': days += *amount * 7.0; break;
      case 'd': days += *amount; break;
      case 'h': days += *amount / 24.0; break;
      case 'm': days += *amount / 1440.0; break;
      case 's': days += *amount / 86400.0; break;
      default: return std::nullopt;
    }
    text.remove_prefix(digits + 1);
  }
  return days;
}

constexpr const char* kTimeForms = "a time: YYYY-MM-DD [HH:MM[:SS]] or +N followed by w, d, h, m or s";

// The words of one line, read front to back.
class Words {
 public:
  explicit Words(std::vector<Word> words) : words_(std::move(words)) {}

  bool AtEnd() const { return next_ == words_.size(); }
  std::size_t Left() const { return words_.size() - next_; }
  // Takes the bare word when it is next.
  bool Take(std::string_view word) {
    if (AtEnd() || words_[next_].quoted || words_[next_].text != word) return false;
    ++next_;
    return true;
  }
  void Expect(std::string_view word) {
    if (!Take(word)) Fail("expected \"" + std::string(word) + "\"" + Found());
  }
  std::string Bare(const char* what) {
    if (AtEnd() || words_[next_].quoted) Fail(std::string("expected ") + what + Found());
    return words_[next_++].text;
  }
  std::string Quoted(const char* what) {
    if (AtEnd() || !words_[next_].quoted) Fail(std::string("expected ") + what + " in double quotes" + Found());
    return words_[next_++].text;
  }
  // A word, quoted or not (paths, addresses).
  std::string Any(const char* what) {
    if (AtEnd()) Fail(std::string("expected ") + what);
    return words_[next_++].text;
  }
  bool NextIsQuoted() const { return !AtEnd() && words_[next_].quoted; }
  long Number(const char* what, long low, long high) {
    const std::string word = Bare(what);
    const auto number = NumberOf(word);
    if (!number || *number < low || *number > high)
      Fail(std::string("expected ") + what + " (" + std::to_string(low) + " to " + std::to_string(high) +
           "), found \"" + word + "\"");
    return *number;
  }
  ScriptTime Time() {
    ScriptTime time;
    const std::string first = Bare(kTimeForms);
    if (const auto offset = OffsetOf(first)) {
      time.offsetDays = *offset;
      return time;
    }
    const auto date = DateOf(first);
    if (!date) Fail(std::string("expected ") + kTimeForms + ", found \"" + first + "\"");
    time.at = *date;
    if (!AtEnd() && !words_[next_].quoted) {
      bool seconds = false;
      if (const auto clock = ClockOf(words_[next_].text, seconds)) {
        ++next_;
        time.at = *date + *clock;
        time.secondsGiven = seconds;
      } else if (words_[next_].text.find(':') != std::string::npos) {
        Fail("expected a time of day HH:MM or HH:MM:SS, found \"" + words_[next_].text + "\"");
      }
    }
    return time;
  }
  void End() {
    if (!AtEnd()) Fail("unexpected \"" + words_[next_].text + "\" at the end of the line");
  }
  std::string Found() const { return AtEnd() ? ", found the end of the line" : ", found \"" + words_[next_].text + "\""; }

 private:
  std::vector<Word> words_;
  std::size_t next_ = 0;
};

long ButtonOf(const std::string& word) {
  const std::pair<const char*, long> buttons[] = {
      {"ok", qorvane::vbOK},       {"cancel", qorvane::vbCancel}, {"abort", 3}, {"retry", 4},
      {"ignore", 5},               {"yes", qorvane::vbYes},       {"no", qorvane::vbNo}};
  std::string lower = word;
  for (char& c : lower) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  for (const auto& [name, button] : buttons) {
    if (lower == name) return button;
  }
  Fail("expected a button: OK, Cancel, Yes, No, Abort, Retry or Ignore, found \"" + word + "\"");
}

ExpectStep ParseExpect(Words& w) {
  using What = ExpectStep::What;
  ExpectStep e;
  const std::string kind = w.Bare("what to expect (sent, attachments, folder, next, in, registry, log, message, "
                                  "dialogs, window, state, timer, sendreceive)");
  if (kind == "sent") {
    if (w.NextIsQuoted()) {
      e.subject = w.Quoted("a subject");
      if (w.Take("at")) {
        e.what = What::SentAt;
        e.time = w.Time();
      } else {
        e.what = What::SentSubject;
        e.number = w.Number("a number of copies", 0, 1000000);
      }
    } else {
      e.what = What::SentCount;
      e.number = w.Number("a number of copies or a quoted subject", 0, 1000000);
    }
  } else if (kind == "attachments") {
    e.what = What::Attachments;
    e.subject = w.Quoted("a subject");
    while (!w.AtEnd()) e.list.push_back(w.Any("a file name"));
  } else if (kind == "folder") {
    e.what = What::FolderCount;
    e.number = w.Number("a number of mails", 0, 1000000);
  } else if (kind == "next") {
    e.what = What::NextSend;
    e.subject = w.Quoted("a subject");
    e.time = w.Time();
  } else if (kind == "in") {
    e.what = What::InFolder;
    e.subject = w.Any("a folder name");
    while (!w.AtEnd()) e.list.push_back(w.Quoted("a subject"));
  } else if (kind == "registry") {
    e.what = What::Registry;
    e.subject = w.Bare("a value name");
    e.text = w.Quoted("the value's text");
  } else if (kind == "log") {
    if (w.Take("clean")) {
      e.what = What::LogClean;
    } else {
      w.Expect("contains");
      e.what = What::LogContains;
      e.text = w.Quoted("the text");
    }
  } else if (kind == "message") {
    e.what = What::Message;
    e.text = w.Quoted("the message's text");
  } else if (kind == "no") {
    if (w.Take("message")) {
      e.what = What::NoMessage;
    } else {
      w.Expect("window");
      e.what = What::NoWindow;
      e.subject = w.Quoted("a subject");
    }
  } else if (kind == "dialogs") {
    e.what = What::Dialogs;
    if (!w.Take("none")) {
      do {
        e.list.push_back(w.Bare("a form name (frmOnce, frmRecurrence, frmAbout) or none"));
      } while (!w.AtEnd());
    }
  } else if (kind == "window") {
    e.what = What::Window;
    e.subject = w.Quoted("a subject");
  } else if (kind == "state") {
    e.what = What::State;
    e.subject = w.Bare("a state: attached, waiting, detached, closed or stopped");
    if (e.subject != "attached" && e.subject != "waiting" && e.subject != "detached" && e.subject != "closed" &&
        e.subject != "stopped")
      Fail("expected a state: attached, waiting, detached, closed or stopped, found \"" + e.subject + "\"");
  } else if (kind == "timer") {
    e.what = What::Timer;
    if (w.Take("running")) {
      e.flag = true;
    } else {
      w.Expect("stopped");
    }
  } else if (kind == "sendreceive") {
    e.what = What::SendReceive;
    e.number = w.Number("a number of Send/Receive runs", 0, 1000000);
  } else {
    Fail("unknown expectation \"" + kind + "\"");
  }
  w.End();
  return e;
}

Action ParseAction(const std::string& verb, Words& w, std::string_view rest) {
  if (verb == "dialog") {
    // Handed on to the scripted user exactly as written.
    if (rest.empty()) Fail("expected the dialog's answer after \"dialog\"");
    return DialogStep{std::string(rest)};
  }
  if (verb == "expect") return ParseExpect(w);
  Action action;
  if (verb == "clock") {
    const ScriptTime time = w.Time();
    if (!time.at) Fail("clock needs a date and time, not an offset");
    action = ClockStep{*time.at};
  } else if (verb == "file") {
    FileStep file;
    file.path = w.Any("a file's path");
    file.content = w.Quoted("the file's content");
    action = file;
  } else if (verb == "touch") {
    TouchStep touch;
    touch.path = w.Any("a file's path");
    if (!w.AtEnd()) touch.when = w.Time();
    action = touch;
  } else if (verb == "registry") {
    RegistryStep value;
    value.name = w.Bare("a value name");
    value.value = w.Quoted("the value's text");
    action = value;
  } else if (verb == "unresolvable") {
    action = UnresolvableStep{w.Any("an address")};
  } else if (verb == "sync") {
    if (w.Take("hold")) {
      action = SyncStep{true};
    } else {
      w.Expect("finish");
      action = SyncStep{false};
    }
  } else if (verb == "start") {
    StartStep start;
    if (w.Take("without")) {
      w.Expect("main");
      w.Expect("window");
      start.mainWindow = false;
    }
    action = start;
  } else if (verb == "quit") {
    action = QuitStep{};
  } else if (verb == "open" || verb == "close") {
    if (w.Take("main")) {
      w.Expect("window");
      action = MainWindowStep{verb == "open"};
    } else {
      action = WindowStep{w.Quoted("a subject or \"main window\""), verb == "open"};
    }
  } else if (verb == "wait") {
    WaitStep wait;
    if (w.Take("until")) {
      wait.until = w.Time();
    } else {
      wait.until = w.Time();
      if (wait.until.at) Fail("wait takes an offset (+10m) or \"until\" and a time");
    }
    action = wait;
  } else if (verb == "compose") {
    ComposeStep compose;
    compose.subject = w.Quoted("the subject");
    compose.to = "someone@example.com";
    while (!w.AtEnd()) {
      if (w.Take("to")) {
        compose.to = w.Quoted("the recipients");
      } else if (w.Take("body")) {
        compose.body = w.Quoted("the text");
      } else if (w.Take("without")) {
        w.Expect("send");
        compose.withoutSend = true;
      } else {
        Fail("expected to \"...\", body \"...\" or \"without send\"" + w.Found());
      }
    }
    action = compose;
  } else if (verb == "edit") {
    EditStep edit;
    edit.subject = w.Quoted("a subject");
    edit.field = w.Bare("what to change: to, subject or body");
    if (edit.field != "to" && edit.field != "subject" && edit.field != "body")
      Fail("expected to, subject or body, found \"" + edit.field + "\"");
    edit.value = w.Quoted("the new text");
    action = edit;
  } else if (verb == "press") {
    w.Expect("Qorvane");
    PressStep press;
    if (w.Take("in")) press.subject = w.Quoted("a subject");
    action = press;
  } else if (verb == "attach") {
    AttachStep attach;
    do {
      attach.paths.push_back(w.Any("a file or a folder"));
    } while (!w.AtEnd());
    action = attach;
  } else if (verb == "answer") {
    const std::string word = w.Bare("a button");
    action = AnswerStep{ButtonOf(word), word};
  } else if (verb == "select") {
    SelectStep select;
    while (!w.AtEnd()) select.subjects.push_back(w.Quoted("a subject"));
    action = select;
  } else if (verb == "click") {
    const std::string entry = w.Bare("options or about");
    if (entry != "options" && entry != "about") Fail("expected options or about, found \"" + entry + "\"");
    action = ClickStep{entry};
  } else {
    Fail("unknown action \"" + verb + "\"");
  }
  w.End();
  return action;
}

}  // namespace

std::string ScriptError::Text() const { return "line " + std::to_string(line) + ": " + message; }

ParsedScript ParseScript(std::string_view text) {
  ParsedScript parsed;
  Script script;
  int number = 0;
  for (std::size_t start = 0; start <= text.size();) {
    ++number;
    const std::size_t end = text.find('\n', start);
    const std::string_view line = text.substr(start, end == std::string_view::npos ? text.size() - start : end - start);
    start = end == std::string_view::npos ? text.size() + 1 : end + 1;
    try {
      if (line.find('\0') != std::string_view::npos) Fail("the line holds a NUL character");
      const std::string_view source = Trim(WithoutComment(line));
      if (source.empty()) continue;
      const std::string verb(source.substr(0, source.find_first_of(" \t")));
      if (verb.front() == '"') Fail("a line starts with an action, not with a quoted text");
      const std::string_view rest = Trim(source.substr(verb.size()));
      // A dialog's answer is not split: it goes on as written.
      Words words(verb == "dialog" ? std::vector<Word>() : SplitWords(rest));
      script.steps.push_back(ScriptStep{number, std::string(source), ParseAction(verb, words, rest)});
    } catch (const Failure& failure) {
      parsed.error = ScriptError{number, failure.message};
      return parsed;
    }
  }
  parsed.script = std::move(script);
  return parsed;
}

}  // namespace scenario
