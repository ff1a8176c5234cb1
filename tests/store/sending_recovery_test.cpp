// Mails whose schedule is not what the add-in last wrote: a next send time
// the user edited in the folder's view, a line written under another locale,
// a line damaged in places, a pattern that goes nowhere. Ticks run over days
// of virtual time; what is sent, when, what stays and what is logged.
#include <gtest/gtest.h>

#include "base/ole_date.h"
#include "infra/variant_text.h"
#include "schedule/first_dow.h"
#include "store/item_props.h"
#include "store/sending.h"
#include "store/sending_notices.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/store/store_fixture.h"

namespace qorvane {
namespace {

using testing::At;
using testing::Text;
using testing::Texts;

class SendingRecoveryTest : public testing::StoreTest {
 protected:
  SendingRecoveryTest() { SetFirstDOW(1); }
  ~SendingRecoveryTest() override { SetFirstDOW(0); }

  // A mail carrying exactly this send time and this recurrence line.
  client::Ref<client::MailItem> ScheduleLine(const std::string& subject, double sendTime, const std::string& line) {
    auto mail = sim_.AddMail(Deferred(), subject);
    Main::SetUserProp(mail, sendTime);
    mail->UserProperties()->Add(Main::kRecurrenceProperty, client::olText)->Value(line);
    mail->Save();
    return mail;
  }

  // One scheduler pass at the clock's time: every due item of the folder.
  void Tick() {
    std::vector<client::Ref<client::MailItem>> due;
    auto items = Deferred()->Items();
    for (long i = 1; i <= items->Count(); ++i) {
      double when = 0;
      auto item = items->Item(i);
      if (Main::GetUserProp(item, when) && sim_.Now() >= when) due.push_back(item->AsMailItem());
    }
    for (const auto& item : due) Main::SendMessage(item, sim_.Now());
  }

  // Ticks every half hour from `from` to `to`; the clock times of the sends.
  std::vector<std::string> TickThrough(const char* from, const char* to) {
    const std::size_t before = sim_.SendLog().size();
    for (double now = At(from); now <= At(to); now += 1.0 / 48) {
      sim_.SetNow(now);
      Tick();
    }
    std::vector<double> times;
    for (std::size_t i = before; i < sim_.SendLog().size(); ++i) times.push_back(sim_.SendLog()[i].time);
    return Texts(times);
  }

  std::string LineOf(const client::Ref<client::MailItem>& mail) {
    auto property = mail->UserProperties()->Find(Main::kRecurrenceProperty);
    return property ? CStr(property->Value()) : "";
  }

  int LogLinesWith(const std::string& part) {
    int count = 0;
    for (const std::string& line : log_.LogLines()) count += line.find(part) != std::string::npos;
    return count;
  }
};

// Every Monday at 9:30, no end; the pattern start is the pending 10 March.
constexpr const char* kMondays = "1;1;0;0;0;2;1;0;1;#10;9:30:00 AM#9;3/10/2025#11;12:00:00 AM";

struct EditCase {
  const char* name;
  const char* editedTo;  // the "Next Occurrence" the user typed
  const char* from;      // ticks run from here for two weeks
  std::vector<std::string> sends;
};

class EditedNextOccurrence : public SendingRecoveryTest, public ::testing::WithParamInterface<EditCase> {};

TEST_P(EditedNextOccurrence, SendsTheEditedTimeOnceAndGoesOnWithThePattern) {
  const EditCase& c = GetParam();
  ScheduleLine("weekly", At(c.editedTo), kMondays);
  EXPECT_EQ(TickThrough(c.from, "2025-03-25 00:00"), c.sends);
  EXPECT_EQ(LogLinesWith("Error"), 0) << log_.LogText();
}

const EditCase kEdits[] = {
    {"not_edited", "2025-03-10 09:30", "2025-03-09 00:00", {"2025-03-10 09:30", "2025-03-17 09:30", "2025-03-24 09:30"}},
    // A date the pattern doesn't have: sent then, and the Mondays after it.
    {"to_a_wednesday", "2025-03-12 10:00", "2025-03-09 00:00",
     {"2025-03-12 10:00", "2025-03-17 09:30", "2025-03-24 09:30"}},
    // Earlier the same day: that Monday's send, moved; not a second one.
    {"to_an_earlier_time", "2025-03-10 07:00", "2025-03-09 00:00",
     {"2025-03-10 07:00", "2025-03-17 09:30", "2025-03-24 09:30"}},
    // Back before Monday 3 March, which was sent already: sent once at the
    // next tick, and no Monday before the pattern start is sent again.
    {"to_before_the_last_send", "2025-03-01 08:00", "2025-03-05 12:00",
     {"2025-03-05 12:00", "2025-03-17 09:30", "2025-03-24 09:30"}},
};

INSTANTIATE_TEST_SUITE_P(Sending, EditedNextOccurrence, ::testing::ValuesIn(kEdits),
                         [](const auto& info) { return std::string(info.param.name); });

struct LineCase {
  const char* name;
  const char* line;
};

class ForeignOrDamagedDates : public SendingRecoveryTest, public ::testing::WithParamInterface<LineCase> {};

// The send time is the authority when the line's dates can't be trusted:
// the series runs on from it, and the line is written afresh.
TEST_P(ForeignOrDamagedDates, SendOnTimeAndHealTheLine) {
  const LineCase& c = GetParam();
  auto mail = ScheduleLine("weekly", At("2025-03-10 09:30"), c.line);
  EXPECT_EQ(TickThrough("2025-03-09 00:00", "2025-03-25 00:00"),
            (std::vector<std::string>{"2025-03-10 09:30", "2025-03-17 09:30", "2025-03-24 09:30"}));
  EXPECT_EQ(LogLinesWith("Error"), 0) << log_.LogText();
  CMailProps kept;
  ASSERT_TRUE(kept.ReadProps(Deferred()->Items()->Item(1))) << "the line reads whole again";
  EXPECT_EQ(Text(kept.m_ScheduleTime), "2025-03-31 09:30");
  EXPECT_EQ(kept.m_PatternStartDate, At("2025-03-31"));
  EXPECT_EQ(Text(kept.m_StartTime), "1899-12-30 09:30");
}

const LineCase kLines[] = {
    // Written under en-GB; read here (en-US) 10/03/2025 is 3 October.
    {"written_day_first", "1;1;0;0;0;2;1;0;1;#8;09:30:00#10;10/03/2025#8;00:00:00"},
    {"written_under_german", "1;1;0;0;0;2;1;0;1;#8;09:30:00#9;10.3.2025#8;00:00:00"},
    {"dates_unreadable", "1;1;0;0;0;2;1;0;1;#5;later#4;soon#11;12:00:00 AM"},
    {"pattern_start_unreadable", "1;1;0;0;0;2;1;0;1;#10;9:30:00 AM#9;3/x0/2025#11;12:00:00 AM"},
    {"end_date_unreadable", "1;1;0;0;0;2;1;0;1;#10;9:30:00 AM#9;3/10/2025#7;someday"},
    {"end_date_cut_off", "1;1;0;0;0;2;1;0;1;#10;9:30:00 AM#9;3/10/2025#"},
};

INSTANTIATE_TEST_SUITE_P(Sending, ForeignOrDamagedDates, ::testing::ValuesIn(kLines),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SendingRecoveryTest, AOneTimeMailNeedsNoDateOfItsLine) {
  auto mail = ScheduleLine("once", At("2025-03-10 09:30"), "0;x;;;;;;;;C:\\missing.txt;#3;abc#1;#");
  EXPECT_EQ(TickThrough("2025-03-10 09:00", "2025-03-10 12:00"), (std::vector<std::string>{"2025-03-10 09:30"}));
  EXPECT_EQ(Deferred()->Items()->Count(), 0);
  EXPECT_EQ(LogLinesWith("Error"), 0) << log_.LogText();
}

struct HeldCase {
  const char* name;
  const char* sendTime;
  const char* line;
  const char* logged;
};

class HeldBack : public SendingRecoveryTest, public ::testing::WithParamInterface<HeldCase> {};

// What can't be sent stays in the folder untouched, and the log says so once
// for the whole session, not at every tick.
TEST_P(HeldBack, StaysAndIsLoggedOnce) {
  const HeldCase& c = GetParam();
  auto mail = ScheduleLine("held", At(c.sendTime), c.line);
  EXPECT_EQ(TickThrough(c.sendTime, "2025-04-02 00:00"), std::vector<std::string>{});
  EXPECT_EQ(Deferred()->Items()->Count(), 1);
  EXPECT_EQ(LineOf(mail), c.line);
  double kept = 0;
  ASSERT_TRUE(Main::GetUserProp(mail, kept));
  EXPECT_EQ(kept, At(c.sendTime));
  EXPECT_EQ(log_.LogLines().size(), 1u) << log_.LogText();
  EXPECT_EQ(LogLinesWith(std::string("Main.SendMessage\t'held' is not sent: ") + c.logged), 1) << log_.LogText();
}

const HeldCase kHeld[] = {
    {"attachments_unknown", "2025-03-10 09:30", "0;0;0;0;0;#10;9:30:00 AM#9;3/10/2025#11;12:00:00 AM",
     "its schedule line cannot be read"},
    {"no_hash", "2025-03-10 09:30", "1;1;0;0;0;2;1;0;1;C:\\a.txt", "its schedule line cannot be read"},
    {"pattern_number_unreadable", "2025-03-10 09:30", "1;1;0;0;0;2;x;0;1;#10;9:30:00 AM#9;3/10/2025#11;12:00:00 AM",
     "its recurrence pattern cannot be read (Interval: Type mismatch)"},
    // Day 0 of every month is 31 March, again and again: one date only.
    {"monthly_day_0", "2025-03-31 08:15", "1;2;0;0;0;0;1;5;0;#10;8:15:00 AM#9;3/31/2025#11;12:00:00 AM",
     "its pattern has no occurrence after 3/31/2025 8:15:00 AM"},
    {"monthly_day_0_without_end", "2025-03-31 08:15", "1;2;0;0;0;0;1;5;1;#10;8:15:00 AM#9;3/31/2025#11;12:00:00 AM",
     "its pattern has no occurrence after"},
    {"monthly_interval_0", "2025-03-10 09:30", "1;2;10;0;0;0;0;2147483647;0;#10;9:30:00 AM#9;3/10/2025#11;12:00:00 AM",
     "its pattern has no occurrence after 3/10/2025 9:30:00 AM"},
    {"weekly_interval_1000000000_without_end", "2025-03-03 09:30",
     "1;1;0;0;0;2;1000000000;1;1;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "its pattern has no occurrence after"},
    {"yearly_day_minus_2147483648_without_end", "2025-03-03 09:30",
     "1;5;-2147483648;3;0;0;1;1;1;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM",
     "its pattern has no occurrence after 3/3/2025 9:30:00 AM (Invalid procedure call or argument)"},
    {"type_4", "2025-03-03 09:30", "1;4;0;0;0;0;1;1;1;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM",
     "its pattern has no occurrence after"},
};

INSTANTIATE_TEST_SUITE_P(Sending, HeldBack, ::testing::ValuesIn(kHeld),
                         [](const auto& info) { return std::string(info.param.name); });

// The lines of a bug report, each with the send time that SetFirstOccurrence
// gives it (or the pattern start where it gives none): one send as the last
// of its series where one is left, otherwise held.
TEST_F(SendingRecoveryTest, ExtremeLinesWithOneSendLeftGoOutOnceAsTheLast) {
  const char* lines[] = {
      "1;1;0;0;0;2;1000000000;1;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM",
      "1;5;-2147483648;3;0;0;1;1;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM",
      "1;5;1;-2147483648;0;0;1;1;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM",
  };
  for (const char* line : lines) ScheduleLine(line, At("2025-03-03 09:30"), line);
  EXPECT_EQ(TickThrough("2025-03-03 09:00", "2025-03-10 00:00"),
            (std::vector<std::string>{"2025-03-03 09:30", "2025-03-03 09:30", "2025-03-03 09:30"}));
  EXPECT_EQ(Deferred()->Items()->Count(), 0);
  EXPECT_EQ(LogLinesWith("Error"), 0) << log_.LogText();
}

TEST_F(SendingRecoveryTest, AMailHeldBackIsReportedAgainAfterItWasSent) {
  auto mail = ScheduleLine("fixed", At("2025-03-10 09:30"), "1;1;0;0;0;2;x;0;1;#10;9:30:00 AM#9;3/10/2025#");
  TickThrough("2025-03-10 09:30", "2025-03-10 12:00");
  // The user repairs the pattern; the mail goes out and on.
  mail->UserProperties()->Find(Main::kRecurrenceProperty)->Value(kMondays);
  mail->Save();
  EXPECT_EQ(TickThrough("2025-03-10 12:30", "2025-03-11 00:00"), (std::vector<std::string>{"2025-03-10 12:30"}));
  // Broken again: news again.
  mail = Deferred()->Items()->Item(1)->AsMailItem();
  mail->UserProperties()->Find(Main::kRecurrenceProperty)->Value("1;1;0;0;0;2;x;0;1;#10;9:30:00 AM#9;3/17/2025#");
  mail->Save();
  TickThrough("2025-03-17 09:30", "2025-03-17 12:00");
  EXPECT_EQ(LogLinesWith("is not sent"), 2) << log_.LogText();
}

TEST_F(SendingRecoveryTest, AFailedSavePutsTheDamagedLineBackAsItWas) {
  const std::string line = "1;1;0;0;0;2;1;0;1;#10;9:30:00 AM#9;3/10/2025#7;someday";
  auto mail = ScheduleLine("restored", At("2025-03-10 09:30"), line);
  sim_.SetNow(At("2025-03-10 09:30"));
  sim_.FailCall("MailItem.Save", 1);
  Tick();
  sim_.ClearFaults();
  EXPECT_TRUE(sim_.SendLog().empty());
  EXPECT_EQ(LineOf(mail), line);
  EXPECT_TRUE(log_.LogContains("the next send time could not be saved")) << log_.LogText();
  Tick();
  EXPECT_EQ(sim_.SendLog().size(), 1u);
}

TEST(UnsentNotices, OncePerMailAndCauseUntilTheMailIsSent) {
  testing::ScopedUnsentNotices notices;
  EXPECT_TRUE(Main::FirstNoticeOfUnsent("A", "line"));
  EXPECT_FALSE(Main::FirstNoticeOfUnsent("A", "line"));
  EXPECT_TRUE(Main::HasNoticeOfUnsent("A", "line"));
  EXPECT_TRUE(Main::FirstNoticeOfUnsent("A", "pattern"));
  EXPECT_TRUE(Main::FirstNoticeOfUnsent("B", "line"));
  Main::ForgetUnsent("A");
  EXPECT_TRUE(Main::FirstNoticeOfUnsent("A", "line"));
  EXPECT_FALSE(Main::FirstNoticeOfUnsent("B", "line"));
  // The memory stays small: the oldest notice gives way.
  for (int i = 0; i < 1000; ++i) Main::FirstNoticeOfUnsent("many" + std::to_string(i), "line");
  EXPECT_FALSE(Main::HasNoticeOfUnsent("B", "line"));
  EXPECT_TRUE(Main::HasNoticeOfUnsent("many999", "line"));
}

}  // namespace
}  // namespace qorvane
