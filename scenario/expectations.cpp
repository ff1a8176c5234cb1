// The player's expectations: what the story says must hold at that line,
// checked against the client, the registry and the add-in's log, each with a
// message saying what was found instead.
#include <cmath>
#include <fstream>
#include <sstream>

#include "addin/frm_timer.h"
#include "infra/cdebug.h"
#include "infra/settings.h"
#include "scenario/client_picture.h"
#include "scenario/clock_text.h"
#include "scenario/player.h"
#include "store/item_props.h"

namespace scenario {
namespace {

using What = ExpectStep::What;

std::string Quote(const std::string& text) { return "\"" + text + "\""; }

std::string Joined(const std::vector<std::string>& words, const char* none = "none") {
  if (words.empty()) return none;
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

long long Seconds(double date) { return std::llround(date * 86400.0); }

// Within the same minute, or the same second when the script gave seconds.
bool SameTime(double actual, double expected, bool secondsGiven) {
  return secondsGiven ? Seconds(actual) == Seconds(expected) : Seconds(actual) / 60 == Seconds(expected) / 60;
}

std::string LogText() {
  std::ifstream file(g_debug.LogFilePath(), std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

std::string Player::Check(const ExpectStep& e) {
  sim::SimClient& client = session_.Client();
  const double now = client.Now();
  const std::vector<sim::SentMail>& sent = client.SendLog();
  std::vector<const sim::SentMail*> copies;
  for (const auto& mail : sent) {
    if (mail.subject == e.subject) copies.push_back(&mail);
  }
  switch (e.what) {
    case What::SentCount:
      if (static_cast<long>(sent.size()) == e.number) return {};
      return "expected " + std::to_string(e.number) + " sent in all, found " + std::to_string(sent.size());
    case What::SentSubject:
      if (static_cast<long>(copies.size()) == e.number) return {};
      return "expected " + Quote(e.subject) + " sent " + std::to_string(e.number) + " time(s), found " +
             std::to_string(copies.size());
    case What::SentAt: {
      const double at = e.time.Resolve(now);
      std::vector<std::string> times;
      for (const auto* copy : copies) {
        if (SameTime(copy->time, at, e.time.secondsGiven)) return {};
        times.push_back(ClockText(copy->time));
      }
      return "expected " + Quote(e.subject) + " sent at " + ClockText(at) + ", found it sent at " +
             Joined(times, "no time: it was never sent");
    }
    case What::Attachments: {
      if (copies.empty()) return "expected " + Quote(e.subject) + " sent, found it never sent";
      const auto& names = copies.back()->attachmentNames;
      if (names == e.list) return {};
      return "expected the last copy of " + Quote(e.subject) + " to carry " + Joined(e.list) + ", found " +
             Joined(names);
    }
    case What::FolderCount: {
      const std::size_t waiting = session_.Subjects(session_.DeferredFolder()).size();
      if (static_cast<long>(waiting) == e.number) return {};
      return "expected " + std::to_string(e.number) + " mail(s) in the deferred folder, found " +
             std::to_string(waiting);
    }
    case What::NextSend: {
      const auto folder = session_.DeferredFolder();
      if (!folder) return "expected " + Quote(e.subject) + " in the deferred folder, found no deferred folder";
      const double at = e.time.Resolve(now);
      const sim::SimClient::Offstage offstage(client);
      const auto items = folder->Items();
      std::vector<std::string> found;
      for (long i = 1, count = items->Count(); i <= count; ++i) {
        const auto item = items->Item(i);
        if (item->Subject() != e.subject) continue;
        double next = 0.0;
        if (!Main::GetUserProp(item, next)) {
          found.push_back("no send time");
          continue;
        }
        if (SameTime(next, at, e.time.secondsGiven)) return {};
        found.push_back(ClockText(next));
      }
      return "expected " + Quote(e.subject) + " waiting for " + ClockText(at) + ", found " +
             Joined(found, "no such mail in the deferred folder");
    }
    case What::InFolder: {
      const auto folder = session_.FolderNamed(e.subject);
      if (!folder) return "there is no folder " + Quote(e.subject);
      const std::vector<std::string> subjects = session_.Subjects(folder);
      if (subjects == e.list) return {};
      return "expected in " + Quote(e.subject) + ": " + Joined(e.list) + "; found " + Joined(subjects);
    }
    case What::Registry: {
      const std::string value = qorvane::settings::ReadOwnString(e.subject.c_str());
      if (value == Expand(e.text)) return {};
      return "expected the registry value " + e.subject + " " + Quote(Expand(e.text)) + ", found " + Quote(value);
    }
    case What::LogContains:
      if (LogText().find(Expand(e.text)) != std::string::npos) return {};
      return "expected the log to contain " + Quote(Expand(e.text)) + "; it does not";
    case What::LogClean: {
      const std::string log = LogText();
      const std::size_t error = log.find("Error(");
      if (error == std::string::npos) return {};
      const std::size_t lineStart = log.rfind('\n', error);
      const std::size_t start = lineStart == std::string::npos ? 0 : lineStart + 1;
      return "expected no error in the log, found: " + log.substr(start, log.find_first_of("\r\n", error) - start);
    }
    case What::Message:
    case What::NoMessage: {
      const auto& boxes = client.MessageBoxes();
      std::vector<std::string> shown;
      for (std::size_t i = messagesChecked_; i < boxes.size(); ++i) shown.push_back(Quote(boxes[i].prompt));
      messagesChecked_ = boxes.size();
      if (e.what == What::NoMessage) return shown.empty() ? std::string() : "expected no message, found " + Joined(shown);
      for (const std::string& prompt : shown) {
        if (prompt.find(e.text) != std::string::npos) return {};
      }
      return "expected a message " + Quote(e.text) + ", found " + Joined(shown);
    }
    case What::Dialogs: {
      const auto& dialogs = session_.User().Shown();
      std::vector<std::string> forms;
      for (std::size_t i = dialogsChecked_; i < dialogs.size(); ++i) forms.push_back(dialogs[i].form);
      dialogsChecked_ = dialogs.size();
      if (forms == e.list) return {};
      return "expected the dialogs " + Joined(e.list) + ", found " + Joined(forms);
    }
    case What::Window:
      if (session_.WindowOf(e.subject)) return {};
      return "expected a window showing " + Quote(e.subject) + ", found none";
    case What::NoWindow:
      if (!session_.WindowOf(e.subject)) return {};
      return "expected no window showing " + Quote(e.subject) + ", found one open";
    case What::State: {
      const std::string state = StateName(session_);
      if (state == e.subject) return {};
      return "expected the add-in " + e.subject + ", found it " + state;
    }
    case What::Timer: {
      const bool running = TimerFormLoaded() && TimerForm().ctlTimer.Enabled();
      if (running == e.flag) return {};
      return std::string("expected the scheduler's timer ") + (e.flag ? "running" : "stopped") + ", found it " +
             (running ? "running" : "stopped");
    }
    case What::SendReceive:
      if (client.SyncStarts() == e.number) return {};
      return "expected " + std::to_string(e.number) + " Send/Receive run(s), found " +
             std::to_string(client.SyncStarts());
  }
  return "unknown expectation";
}

}  // namespace scenario
