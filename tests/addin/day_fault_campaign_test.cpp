// Fault campaign over a day of the add-in on the simulated client, with the
// real timers and ticks: a person schedules mails on a Friday, the client is
// closed over the weekend with two damaged schedule lines left in the
// deferred folder, and on Monday it catches up, the person schedules more and
// edits two mails at once, and the ticks send them until the evening.
//
// The day is played once cleanly to learn every object-model operation and
// how often it is called, then again with a fault at a call of one operation:
// once (the call fails), persistent (the client stays broken from that call
// for an hour, then recovers), and with the safe-mail library missing. After
// each run: no mail lost (each is sent or still waits where the user finds
// it), no occurrence sent twice, the scheduler's timer running, and a changed
// outcome explained by an error in the log. An error reaching the client
// would end the process: the add-in's entries are noexcept.
#include <cstdio>
#include <functional>
#include <map>
#include <set>

#include "addin/frm_timer.h"
#include "scenario/client_picture.h"
#include "scenario/player.h"
#include "store/item_props.h"
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

constexpr const char* kFriday = R"(
clock 2025-03-14 17:00
file fixed.txt "fixed"
file drop/latest.txt "latest"
start
compose "Daily" to "team@example.com"
dialog daily every 1 day at 8:00 from 2025-03-15, no end, OK
attach {files}/drop/
press Qorvane
compose "Mondays" to "anna@example.com"
dialog weekly every 1 week on Monday at 9:00 from 2025-03-17, 1 times, OK
press Qorvane
quit
)";

constexpr const char* kMonday = R"(
clock 2025-03-17 08:30
start
wait +10m
compose "Once" to "boss@example.com"
dialog once at 2025-03-17 10:00, OK
attach {files}/fixed.txt
press Qorvane
compose "Lunch" to "team@example.com"
dialog once at 2025-03-17 14:00, OK
press Qorvane
compose "Parking" to "facilities@example.com"
dialog once at 2025-03-17 15:00, OK
press Qorvane
click options
select "Lunch" "Parking"
answer No
dialog once at 2025-03-17 12:30, OK
click options
wait until 2025-03-17 20:00
)";

// The copies of a clean day: the daily one catches up Saturday to Monday;
// the Monday one is the last of its series, so the mail itself goes.
const std::map<std::string, int> kCleanSends = {
    {"Daily", 3}, {"Mondays", 1}, {"Once", 1}, {"Lunch", 1}, {"Parking", 1}};
// Mails that must still wait at the end of any day: occurrences are left, or
// their schedule line cannot be read.
const std::set<std::string> kStillWaiting = {"Daily", "Bad pattern", "Bad line"};

struct Outcome {
  std::map<std::string, int> sends;
  std::map<std::string, int> items;  // in the deferred folder, Drafts, Outbox or Sent Items
  bool operator==(const Outcome&) const = default;
};

class DayCampaign : public AddInTest {
 protected:
  // Plays the day on a fresh client; the fault, if any, is armed before the
  // first call.
  void PlayDay(const std::function<void(sim::SimClient&)>& arm, sim::SimOptions options = {}) {
    NewSession(options);
    Client().ResetCounts();
    if (arm) arm(Client());
    scenario::PlayOptions play;
    play.filesFolder = (log_.Folder() / "files").string();
    Play(kFriday, play);
    LeaveDamagedLines();
    Play(kMonday, play);
  }

  Outcome Result() {
    Outcome outcome;
    for (const auto& sent : Client().SendLog()) ++outcome.sends[sent.subject];
    std::vector<client::Ref<client::MAPIFolder>> folders = {S().DeferredFolder()};
    for (const long type : {client::olFolderDrafts, client::olFolderOutbox, client::olFolderSentMail})
      folders.push_back(Client().DefaultFolder(type));
    for (const auto& folder : folders) {
      for (const std::string& subject : S().Subjects(folder)) ++outcome.items[subject];
    }
    return outcome;
  }

  // What must never happen, as messages naming the fault.
  void CheckNothingLostNorDoubled(const Outcome& outcome, const std::string& where) {
    for (const auto& [subject, clean] : kCleanSends) {
      const int sends = outcome.sends.count(subject) ? outcome.sends.at(subject) : 0;
      const int items = outcome.items.count(subject) ? outcome.items.at(subject) : 0;
      EXPECT_LE(sends, clean) << where << ": \"" << subject << "\" sent twice";
      EXPECT_GE(sends + items, 1) << where << ": \"" << subject << "\" vanished";
    }
    for (const std::string& subject : kStillWaiting)
      EXPECT_GE(outcome.items.count(subject) ? outcome.items.at(subject) : 0, 1) << where << ": \"" << subject
                                                                                  << "\" no longer waits";
    // A start-up that failed before attaching stays loaded with what it set
    // up, without a tick; once attached, the tick always runs.
    const std::string state = scenario::StateName(S());
    if (state == "attached" || state == "detached") {
      EXPECT_TRUE(TimerFormLoaded() && TimerForm().ctlTimer.Enabled()) << where << ": the tick is not armed";
    }
  }

 private:
  void Play(const char* story, const scenario::PlayOptions& options) {
    const scenario::ParsedScript parsed = scenario::ParseScript(story);
    ASSERT_TRUE(parsed.script) << parsed.error.Text();
    scenario::Player player(S(), options);
    failures_ = player.Play(*parsed.script).failures;
  }

  // Left over the weekend: a pattern with a letter for its end, and a line
  // that is not a schedule at all; both were due on Monday morning.
  void LeaveDamagedLines() {
    const sim::SimClient::Offstage offstage(Client());
    const std::pair<const char*, const char*> damaged[] = {
        {"Bad pattern", "1;1;0;0;0;2;x;0;1;#10;9:30:00 AM#9;3/10/2025#"}, {"Bad line", "\x01;;;;#"}};
    for (const auto& [subject, line] : damaged) {
      const auto mail = Client().AddMail(Deferred(), subject, "someone@example.com");
      Main::SetUserProp(mail, At(2025, 3, 17, 9, 30));
      mail->UserProperties()->Add(Main::kRecurrenceProperty, client::olText)->Value(line);
      mail->Save();
    }
  }

 protected:
  std::vector<std::string> failures_;
};

std::size_t ErrorLinesIn(const std::vector<std::string>& lines) {
  std::size_t count = 0;
  for (const std::string& line : lines) count += line.find("Error(") != std::string::npos ? 1 : 0;
  return count;
}

// The call indexes tried for an operation called `count` times in the clean
// day: every one of the first few, then spread evenly up to the last, so
// that a tick's operation is failed early, late and in between.
std::vector<std::int64_t> CallIndexes(std::int64_t count, std::int64_t most) {
  std::vector<std::int64_t> indexes;
  for (std::int64_t n = 1; n <= count && n <= most / 2; ++n) indexes.push_back(n);
  const std::int64_t spread = most - static_cast<std::int64_t>(indexes.size());
  for (std::int64_t i = 1; i <= spread && count > most / 2; ++i) {
    const std::int64_t n = most / 2 + (count - most / 2) * i / spread;
    if (n > indexes.back()) indexes.push_back(n);
  }
  return indexes;
}

TEST(DayCampaignIndexes, CoverTheFirstCallsThenSpreadToTheLast) {
  EXPECT_EQ(CallIndexes(3, 8), (std::vector<std::int64_t>{1, 2, 3}));
  EXPECT_EQ(CallIndexes(8, 8), (std::vector<std::int64_t>{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(CallIndexes(2880, 8), (std::vector<std::int64_t>{1, 2, 3, 4, 723, 1442, 2161, 2880}));
  EXPECT_EQ(CallIndexes(1, 2), (std::vector<std::int64_t>{1}));
  EXPECT_EQ(CallIndexes(90, 2), (std::vector<std::int64_t>{1, 90}));
}

// Call indexes tried per operation: a day makes thousands of calls of the
// tick's operations, and one run of the day takes a few tens of milliseconds.
constexpr std::int64_t kOnceIndexes = 6;
constexpr std::int64_t kBrokenIndexes = 2;

TEST_F(DayCampaign, NoMailLostNoOccurrenceTwiceTheTickKeptAndFailuresLogged) {
  PlayDay(nullptr);
  ASSERT_TRUE(failures_.empty()) << ::testing::PrintToString(failures_);
  const Outcome clean = Result();
  ASSERT_EQ(clean.sends, kCleanSends);
  ASSERT_EQ(Client().SendLog().front().attachmentNames, std::vector<std::string>{"latest.txt"});
  CheckNothingLostNorDoubled(clean, "clean");
  const std::size_t cleanErrors = ErrorLinesIn(log_.LogLines());
  const std::map<std::string, std::int64_t> calls = Client().CallCounts();
  ASSERT_GT(calls.size(), 40u);

  struct Counts {
    int runs = 0, fired = 0, unchanged = 0, degradedAndLogged = 0, noTick = 0;
    std::int64_t mailsSent = 0;
  };
  std::map<std::string, Counts> counts;
  const auto check = [&](const char* kind, const std::string& where) {
    Counts& c = counts[kind];
    ++c.runs;
    c.fired += Client().FaultsFired() > 0 ? 1 : 0;
    c.mailsSent += static_cast<std::int64_t>(Client().SendLog().size());
    const std::string state = scenario::StateName(S());
    c.noTick += state != "attached" && state != "detached" ? 1 : 0;
    const Outcome outcome = Result();
    CheckNothingLostNorDoubled(outcome, where);
    if (outcome == clean) {
      ++c.unchanged;
    } else {
      ++c.degradedAndLogged;
      EXPECT_GT(ErrorLinesIn(log_.LogLines()), cleanErrors) << where << " changed the day without an error logged";
    }
  };

  for (const auto& call : calls) {
    // Named apart from the loop: the lambdas below capture it (clang 14).
    const std::string& operation = call.first;
    const std::int64_t count = call.second;
    for (const std::int64_t n : CallIndexes(count, kOnceIndexes)) {
      PlayDay([&](sim::SimClient& client) { client.FailCall(operation, n); });
      check("once", operation + " #" + std::to_string(n) + " once");
    }
    for (const std::int64_t n : CallIndexes(count, kBrokenIndexes)) {
      PlayDay([&](sim::SimClient& client) { client.FailCallsFrom(operation, n, 1.0 / 24); });
      check("broken for an hour", operation + " from #" + std::to_string(n));
    }
  }
  sim::SimOptions withoutSafeMail;
  withoutSafeMail.safeMailInstalled = false;
  PlayDay(nullptr, withoutSafeMail);
  check("no safe-mail library", "without the safe-mail library");

  for (const auto& [kind, c] : counts) {
    std::printf("day fault campaign, %s: %d runs, %d with a fault fired, %lld copies sent, %d as clean, %d degraded "
                "and logged (%d ended without a tick: start-up failed before attaching); none lost or sent twice\n",
                kind.c_str(), c.runs, c.fired, static_cast<long long>(c.mailsSent), c.unchanged,
                c.degradedAndLogged, c.noTick);
  }
  std::printf("day fault campaign: %zu operations\n", calls.size());
  RecordProperty("operations", static_cast<int>(calls.size()));
  EXPECT_GT(counts["once"].fired, static_cast<int>(calls.size()));
}

}  // namespace
}  // namespace qorvane::testing
