// Stories played on the simulated client with the add-in loaded: what a
// passing story does to the client, each failed line reported with its
// number while the story goes on, the end time cutting a story, dialog lines
// checked before anything is played, and files kept in the story's folder.
#include <gtest/gtest.h>

#include <filesystem>

#include "scenario/player.h"
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

class StoryTest : public AddInTest {
 protected:
  StoryTest() {
    files_ = log_.Folder() / "files";
    std::filesystem::create_directories(files_);
  }

  scenario::PlayResult Play(const std::string& text, std::optional<double> endAt = std::nullopt) {
    const scenario::ParsedScript parsed = scenario::ParseScript(text);
    EXPECT_TRUE(parsed.script) << parsed.error.Text();
    if (!parsed.script) return {};
    scenario::PlayOptions options;
    options.filesFolder = files_.string();
    options.endAt = endAt;
    scenario::Player player(S(), options);
    return player.Play(*parsed.script);
  }

  std::filesystem::path files_;
};

TEST_F(StoryTest, AStoryComposesSchedulesAndSendsWithTheRealTick) {
  const scenario::PlayResult result = Play(R"(
clock 2025-03-03 08:55
file drop/latest.txt "v1"
start
compose "Report" to "boss@example.com"
dialog weekly every 1 week on Monday and Friday at 9:30 from 2025-03-03, 3 times, OK
attach {files}/drop/
press Qorvane
expect dialogs frmOnce frmRecurrence
expect no window "Report"
expect next "Report" 2025-03-03 09:30
wait until 2025-03-05 12:00
file drop/newer.txt "v2"
wait until 2025-03-10 10:00
expect sent "Report" 3
expect sent "Report" at 2025-03-07 09:30
expect attachments "Report" newer.txt
expect folder 0
expect registry NextOccurence ""
expect log clean
quit
expect state stopped
)");
  EXPECT_TRUE(result.Passed()) << ::testing::PrintToString(result.failures);
  EXPECT_EQ(result.expectationsChecked, 10u);
  EXPECT_GT(result.ticks, 0u);
  EXPECT_EQ(Sent(), (std::vector<std::string>{"Report at 3/3/2025 9:30:00 AM", "Report at 3/7/2025 9:30:00 AM",
                                              "Report at 3/10/2025 9:30:00 AM"}));
  EXPECT_FALSE(std::filesystem::exists("drop")) << "a relative path went to the working folder";
}

TEST_F(StoryTest, EachFailureNamesItsLineAndTheStoryGoesOn) {
  const scenario::PlayResult result = Play(
      "clock 2025-03-03 09:00\n"      // 1
      "start\n"                       // 2
      "press Qorvane in \"None\"\n"   // 3: no such window
      "expect sent 1\n"               // 4: nothing sent
      "clock 2025-03-04 09:00\n"      // 5: the client runs
      "wait +1m\n"                    // 6
      "dialog Cancel\n"               // 7: never used
      "expect state attached\n");     // 8: holds
  EXPECT_EQ(result.failures,
            (std::vector<std::string>{
                "line 3: no window shows the mail \"None\"",
                "line 4: expected 1 sent in all, found 0",
                "line 5: the clock can be set only while the client is closed; use wait",
                "at the end: 1 dialog answer(s) were never used: no dialog asked for them"}));
  EXPECT_EQ(result.stepsPlayed, 8u) << "every line was played";
  EXPECT_EQ(result.expectationsChecked, 2u);
}

TEST_F(StoryTest, AnswersNoDialogTookAreDroppedNotGivenToTheNextMail) {
  const scenario::PlayResult result = Play(
      "clock 2025-03-03 09:00\n"
      "start\n"
      "compose \"First\" to \"nobody\"\n"                 // the recipients check refuses it
      "dialog daily every 1 day at 8:00, no end, OK\n"
      "attach {files}/a.txt\n"
      "press Qorvane\n"                                      // line 6
      "compose \"Second\"\n"
      "dialog once at 2025-03-03 10:00, OK\n"
      "press Qorvane\n"
      "expect next \"Second\" 2025-03-03 10:00\n");
  EXPECT_EQ(result.failures,
            std::vector<std::string>{"line 6: 1 dialog answer(s) dropped: no dialog opened for them"});
  EXPECT_EQ(User().Shown().size(), 1u);
  EXPECT_TRUE(User().Shown()[0].form == "frmOnce");
  const auto second = S().FindMail("Second");
  ASSERT_TRUE(second);
  CMailProps props;
  ASSERT_TRUE(props.ReadProps(second));
  EXPECT_TRUE(props.m_collAttachments.empty()) << "the first mail's pick went with it";
}

TEST_F(StoryTest, AnEndTimeCutsTheStoryAndTimeRunsOnToIt) {
  const double end = At(2025, 3, 3, 12, 0);
  const scenario::PlayResult result = Play(
      "clock 2025-03-03 09:00\nstart\nwait until 2025-03-04 09:00\nexpect sent 0\n", end);
  EXPECT_TRUE(result.cut);
  EXPECT_EQ(result.stepsPlayed, 2u + 1u) << "the wait is played up to the end, the expectation is not";
  EXPECT_EQ(result.expectationsChecked, 0u);
  EXPECT_EQ(Client().Now(), end);
}

TEST_F(StoryTest, ADialogLineTheUserCannotReadIsRefusedBeforeAnythingIsPlayed) {
  const scenario::ParsedScript parsed =
      scenario::ParseScript("clock 2025-03-03 09:00\nstart\n\ndialog fortnightly at 9:30, OK\n");
  ASSERT_TRUE(parsed.script);
  scenario::Player player(S(), {});
  const auto problem = player.Check(*parsed.script);
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->line, 4);
  EXPECT_EQ(problem->Text().rfind("line 4: dialog: ", 0), 0u) << problem->Text();
  EXPECT_EQ(AddIn(), nullptr) << "nothing was played";
}

TEST_F(StoryTest, SendAndExitClosesTheClientOnceSendReceiveHasFinished) {
  const scenario::PlayResult result = Play(R"(
clock 2025-03-03 08:00
start
compose "Early"
dialog once at 2025-03-03 08:30, OK
press Qorvane
quit
registry SendAndExit "yes"
clock 2025-03-03 09:00
sync hold
start
wait +1m
expect sent "Early" 1
expect registry SendAndExit ""
expect state attached
sync finish
expect state stopped
)");
  EXPECT_TRUE(result.Passed()) << ::testing::PrintToString(result.failures);
}

}  // namespace
}  // namespace qorvane::testing
