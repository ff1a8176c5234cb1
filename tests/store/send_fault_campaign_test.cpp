// Fault campaign over the sending pipeline: every object-model call that a
// pass makes is failed in turn, at each of its call indexes, and the outcome
// is checked against what must never happen: a deferred mail lost without a
// trace, an occurrence sent twice, a failure that leaves no line in the log.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>

#include "store/item_props.h"
#include "store/sending.h"
#include "tests/schedule/schedule_test_util.h"
#include "sim/sim_client.h"
#include "tests/store/store_fixture.h"
#include "tests/support/test_env.h"

namespace qorvane {
namespace {

using testing::At;

// The most sends each mail may see: A once, B three overdue weeks, C its last.
const std::map<std::string, int> kDueSends = {{"A", 1}, {"B", 3}, {"C", 1}};

struct Outcome {
  std::map<std::string, int> sends;
  std::map<std::string, int> whereabouts;  // deferred + outbox + sent, per subject
  bool operator==(const Outcome&) const = default;
};

// Files the scheduled mails attach: one by name, one as "newest of a folder".
struct Files {
  Files() {
    std::filesystem::create_directories(folder / "drop");
    std::ofstream(folder / "fixed.txt") << "fixed";
    std::ofstream(folder / "drop" / "latest.txt") << "latest";
  }
  ~Files() {
    std::error_code ec;
    std::filesystem::remove_all(folder, ec);
  }
  std::filesystem::path folder = std::filesystem::temp_directory_path() / "qorvane-campaign-files";
};

class Pass {
 public:
  explicit Pass(const Files& files) : files_(files) {
    sim_.Install();
    sim_.SetNow(At("2025-03-17 12:00"));
    deferred_ = sim_.Root()->Folders()->Add("Qorvane", client::olFolderDrafts);
    CMailProps a = OneTime();
    a.m_collAttachments = {(files_.folder / "fixed.txt").string()};
    Schedule("A", a);
    CMailProps b = Weekly("2025-03-03", 0, true);
    b.m_collAttachments = {(files_.folder / "drop").string() + "\\"};
    Schedule("B", b);
    Schedule("C", Weekly("2025-03-17", 1, false));
  }
  ~Pass() { sim_.Uninstall(); }

  sim::SimClient& Sim() { return sim_; }

  // One scheduler pass: the due items are collected first, then sent.
  void Run() {
    std::vector<client::Ref<client::MailItem>> due;
    auto items = deferred_->Items();
    for (long i = 1; i <= items->Count(); ++i) {
      auto item = items->Item(i);
      double when = 0;
      if (item->Class() == client::olMail && Main::GetUserProp(item, when) && sim_.Now() >= when)
        due.push_back(item->AsMailItem());
    }
    sim_.ResetCounts();
    if (fault_) sim_.FailCall(fault_->first, fault_->second);
    for (const auto& item : due) Main::SendMessage(item, sim_.Now());
    sim_.ClearFaults();
  }

  void Inject(const std::string& operation, std::int64_t n) { fault_ = {operation, n}; }
  void Clear() { fault_.reset(); }

  Outcome Result() {
    Outcome outcome;
    for (const auto& sent : sim_.SendLog()) {
      ++outcome.sends[sent.subject];
      ++outcome.whereabouts[sent.subject];
    }
    for (const auto& folder : {deferred_, sim_.DefaultFolder(client::olFolderOutbox)}) {
      auto items = folder->Items();
      for (long i = 1; i <= items->Count(); ++i) ++outcome.whereabouts[items->Item(i)->Subject()];
    }
    return outcome;
  }

 private:
  static CMailProps OneTime() {
    CMailProps props;
    props.m_ScheduleTime = At("2025-03-17 09:00");
    return props;
  }
  static CMailProps Weekly(const char* first, std::int32_t occurrences, bool noEnd) {
    CMailProps props = testing::Record({.type = 1, .interval = 1, .mask = 2, .start = first});
    props.m_Occurrences = occurrences;
    props.m_NoEndDate = noEnd;
    props.SetFirstOccurrence();
    return props;
  }
  void Schedule(const std::string& subject, CMailProps props) {
    auto mail = sim_.AddMail(deferred_, subject);
    props.WriteProps(mail);
    mail->Save();
  }

  const Files& files_;
  testing::ScopedUnsentNotices notices_;
  sim::SimClient sim_;
  client::Ref<client::MAPIFolder> deferred_;
  std::optional<std::pair<std::string, std::int64_t>> fault_;
};

TEST(SendFaultCampaign, NoMailLostNoOccurrenceTwiceEveryFailureLogged) {
  testing::ScopedLocale locale("en-US");
  const Files files;
  Outcome clean;
  std::map<std::string, std::int64_t> calls;
  {
    testing::ScopedLogFolder log;
    Pass pass(files);
    pass.Run();
    calls = pass.Sim().CallCounts();
    clean = pass.Result();
    ASSERT_EQ(clean.sends, kDueSends);
    ASSERT_EQ(pass.Sim().SendLog().front().attachmentNames, std::vector<std::string>{"fixed.txt"});
    ASSERT_TRUE(log.LogText().empty()) << log.LogText();
  }

  int injected = 0, unchanged = 0, degradedAndLogged = 0;
  for (const auto& [operation, count] : calls) {
    for (std::int64_t n = 1; n <= count; ++n) {
      testing::ScopedLogFolder log;
      Pass pass(files);
      pass.Inject(operation, n);
      pass.Run();
      pass.Clear();
      pass.Run();  // the next tick, with the client healthy again
      ++injected;
      const Outcome outcome = pass.Result();
      const std::string where = operation + " #" + std::to_string(n);
      for (const auto& [subject, most] : kDueSends) {
        EXPECT_LE(outcome.sends.count(subject) ? outcome.sends.at(subject) : 0, most) << where << ": " << subject;
        EXPECT_GE(outcome.whereabouts.count(subject) ? outcome.whereabouts.at(subject) : 0, 1)
            << where << ": " << subject << " vanished";
      }
      if (outcome == clean) {
        ++unchanged;
      } else {
        ++degradedAndLogged;
        EXPECT_TRUE(log.LogContains("Error(")) << where << " changed the outcome without a log line";
      }
    }
  }
  std::cout << "fault campaign: " << calls.size() << " operations, " << injected << " faults injected, " << unchanged
            << " without effect after the retry, " << degradedAndLogged << " degraded and logged\n";
  RecordProperty("faults_injected", injected);
  EXPECT_GT(injected, 50);
}

}  // namespace
}  // namespace qorvane
