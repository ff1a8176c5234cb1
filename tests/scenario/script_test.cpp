// Story scripts read from their text: what each kind of line means, and for
// each kind of bad line the line number and the reason a person is shown.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "base/ole_date.h"
#include "scenario/script.h"

namespace scenario {
namespace {

std::string TimeText(const ScriptTime& time) {
  std::ostringstream text;
  if (!time.at) {
    text << "+" << std::llround(time.offsetDays * 1440.0) << "min";
    return text.str();
  }
  const qorvane::CivilDate d = qorvane::ToCivil(*time.at);
  const qorvane::TimeOfDay t = qorvane::ToTimeOfDay(*time.at);
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d%s", d.year, d.month, d.day, t.hour, t.minute,
                t.second, time.secondsGiven ? "s" : "");
  return buffer;
}

std::string List(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += "|" + word;
  return text;
}

// One step as one comparable line: its kind and the fields it carries.
struct Summary {
  std::string operator()(const ClockStep& s) const { return "clock " + TimeText({s.at}); }
  std::string operator()(const FileStep& s) const { return "file " + s.path + "|" + s.content; }
  std::string operator()(const TouchStep& s) const { return "touch " + s.path + (s.when ? " " + TimeText(*s.when) : ""); }
  std::string operator()(const RegistryStep& s) const { return "registry " + s.name + "=" + s.value; }
  std::string operator()(const UnresolvableStep& s) const { return "unresolvable " + s.address; }
  std::string operator()(const SyncStep& s) const { return s.hold ? "sync hold" : "sync finish"; }
  std::string operator()(const StartStep& s) const { return s.mainWindow ? "start" : "start bare"; }
  std::string operator()(const QuitStep&) const { return "quit"; }
  std::string operator()(const MainWindowStep& s) const { return s.open ? "main open" : "main close"; }
  std::string operator()(const WaitStep& s) const { return "wait " + TimeText(s.until); }
  std::string operator()(const ComposeStep& s) const {
    return "compose " + s.subject + "|" + s.to + "|" + s.body + (s.withoutSend ? "|no send" : "");
  }
  std::string operator()(const EditStep& s) const { return "edit " + s.subject + "|" + s.field + "|" + s.value; }
  std::string operator()(const WindowStep& s) const { return (s.open ? "open " : "close ") + s.subject; }
  std::string operator()(const PressStep& s) const { return "press" + (s.subject ? " " + *s.subject : ""); }
  std::string operator()(const AttachStep& s) const { return "attach" + List(s.paths); }
  std::string operator()(const DialogStep& s) const { return "dialog " + s.text; }
  std::string operator()(const AnswerStep& s) const { return "answer " + std::to_string(s.button); }
  std::string operator()(const SelectStep& s) const { return "select" + List(s.subjects); }
  std::string operator()(const ClickStep& s) const { return "click " + s.entry; }
  std::string operator()(const ExpectStep& s) const {
    return "expect " + std::to_string(static_cast<int>(s.what)) + " " + s.subject + "|" + s.text + List(s.list) +
           "|" + std::to_string(s.number) + (s.time.at || s.time.offsetDays != 0 ? " " + TimeText(s.time) : "") +
           (s.flag ? " on" : "");
  }
};

struct GoodLine {
  const char* line;
  std::string meaning;
};

class ScriptReadsALine : public ::testing::TestWithParam<GoodLine> {};

TEST_P(ScriptReadsALine, IntoTheStepItMeans) {
  const ParsedScript parsed = ParseScript(GetParam().line);
  ASSERT_TRUE(parsed.script) << parsed.error.Text();
  ASSERT_EQ(parsed.script->steps.size(), 1u);
  EXPECT_EQ(std::visit(Summary{}, parsed.script->steps[0].action), GetParam().meaning);
}

using What = ExpectStep::What;
#define EXPECT_KIND(what) std::to_string(static_cast<int>(What::what))

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptReadsALine,
    ::testing::Values(
        GoodLine{"clock 2025-03-24 08:50", "clock 2025-03-24 08:50:00"},
        GoodLine{"clock 2024-02-29", "clock 2024-02-29 00:00:00"},
        GoodLine{"  clock\t2025-03-24 9:05:30   # leading blanks, tabs, seconds, a comment",
                 "clock 2025-03-24 09:05:30"},
        GoodLine{"file reports/summary.txt \"Board \\\"summary\\\"\\n# not a comment\"",
                 "file reports/summary.txt|Board \"summary\"\n# not a comment"},
        GoodLine{"file \"with blank/a b.txt\" \"\"", "file with blank/a b.txt|"},
        GoodLine{"touch a.txt", "touch a.txt"},
        GoodLine{"touch a.txt +1d12h", "touch a.txt +2160min"},
        GoodLine{"registry SendAndExit \"yes\"", "registry SendAndExit=yes"},
        GoodLine{"unresolvable board", "unresolvable board"},
        GoodLine{"sync hold", "sync hold"},
        GoodLine{"sync finish", "sync finish"},
        GoodLine{"start", "start"},
        GoodLine{"start without main window", "start bare"},
        GoodLine{"quit", "quit"},
        GoodLine{"open main window", "main open"},
        GoodLine{"close main window", "main close"},
        GoodLine{"wait +10m", "wait +10min"},
        GoodLine{"wait +1w2d3h4m", "wait +13144min"},
        GoodLine{"wait until 2025-03-24 10:00", "wait 2025-03-24 10:00:00"},
        GoodLine{"compose \"Call me\"", "compose Call me|someone@example.com|"},
        GoodLine{"compose \"Call me\" body \"Hi\" to \"\" without send", "compose Call me||Hi|no send"},
        GoodLine{"edit \"Call me\" to \"anna@example.com\"", "edit Call me|to|anna@example.com"},
        GoodLine{"open \"Call me\"", "open Call me"},
        GoodLine{"close \"Call me\"", "close Call me"},
        GoodLine{"press Qorvane", "press"},
        GoodLine{"press Qorvane in \"Call me\"", "press Call me"},
        GoodLine{"attach {files}/a.txt \"{files}/my folder/\"", "attach|{files}/a.txt|{files}/my folder/"},
        GoodLine{"dialog   weekly every 1 week on Monday at 9:30, 10 times, OK  ",
                 "dialog weekly every 1 week on Monday at 9:30, 10 times, OK"},
        GoodLine{"answer no", "answer 7"},
        GoodLine{"answer Cancel", "answer 2"},
        GoodLine{"select \"A\" \"B\"", "select|A|B"},
        GoodLine{"click options", "click options"},
        GoodLine{"click about", "click about"},
        GoodLine{"expect sent 3", "expect " + EXPECT_KIND(SentCount) + " ||3"},
        GoodLine{"expect sent \"A\" 2", "expect " + EXPECT_KIND(SentSubject) + " A||2"},
        GoodLine{"expect sent \"A\" at 2025-03-24 09:12:05",
                 "expect " + EXPECT_KIND(SentAt) + " A||0 2025-03-24 09:12:05s"},
        GoodLine{"expect attachments \"A\" a.txt b.txt", "expect " + EXPECT_KIND(Attachments) + " A||a.txt|b.txt|0"},
        GoodLine{"expect folder 2", "expect " + EXPECT_KIND(FolderCount) + " ||2"},
        GoodLine{"expect next \"A\" +1h", "expect " + EXPECT_KIND(NextSend) + " A||0 +60min"},
        GoodLine{"expect in Drafts \"A\" \"B\"", "expect " + EXPECT_KIND(InFolder) + " Drafts||A|B|0"},
        GoodLine{"expect registry NextOccurence \"\"", "expect " + EXPECT_KIND(Registry) + " NextOccurence||0"},
        GoodLine{"expect log contains \"Error(\"", "expect " + EXPECT_KIND(LogContains) + " |Error(|0"},
        GoodLine{"expect log clean", "expect " + EXPECT_KIND(LogClean) + " ||0"},
        GoodLine{"expect message \"can't\"", "expect " + EXPECT_KIND(Message) + " |can't|0"},
        GoodLine{"expect no message", "expect " + EXPECT_KIND(NoMessage) + " ||0"},
        GoodLine{"expect no window \"A\"", "expect " + EXPECT_KIND(NoWindow) + " A||0"},
        GoodLine{"expect window \"A\"", "expect " + EXPECT_KIND(Window) + " A||0"},
        GoodLine{"expect dialogs frmOnce frmRecurrence",
                 "expect " + EXPECT_KIND(Dialogs) + " ||frmOnce|frmRecurrence|0"},
        GoodLine{"expect dialogs none", "expect " + EXPECT_KIND(Dialogs) + " ||0"},
        GoodLine{"expect state waiting", "expect " + EXPECT_KIND(State) + " waiting||0"},
        GoodLine{"expect timer running", "expect " + EXPECT_KIND(Timer) + " ||0 on"},
        GoodLine{"expect sendreceive 4", "expect " + EXPECT_KIND(SendReceive) + " ||4"}));

struct BadScript {
  std::string text;
  int line;
  const char* message;
};

class ScriptRefusesABadLine : public ::testing::TestWithParam<BadScript> {};

TEST_P(ScriptRefusesABadLine, NamingTheLineAndTheReason) {
  const ParsedScript parsed = ParseScript(GetParam().text);
  ASSERT_FALSE(parsed.script) << "read a script that should not read";
  EXPECT_EQ(parsed.error.Text(), "line " + std::to_string(GetParam().line) + ": " + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptRefusesABadLine,
    ::testing::Values(
        BadScript{"start\n\n# comment\nfly away", 4, "unknown action \"fly\""},
        BadScript{"start\r\nquit\r\nquit now\r\n", 3, "unexpected \"now\" at the end of the line"},
        BadScript{"\"start\"", 1, "a line starts with an action, not with a quoted text"},
        BadScript{"compose \"unclosed", 1, "a quoted text is not closed"},
        BadScript{"compose \"ends in a backslash\\", 1, "a quoted text is not closed"},
        BadScript{"compose \"a\\q\"", 1, "unknown escape \\q in a quoted text (\\\" \\\\ \\n \\r \\t)"},
        BadScript{"compose \"a\"b", 1, "a quoted text must be followed by a blank"},
        BadScript{"compose Subject", 1, "expected the subject in double quotes, found \"Subject\""},
        BadScript{"compose \"a\" cc \"b\"", 1, "expected to \"...\", body \"...\" or \"without send\", found \"cc\""},
        BadScript{"compose \"a\" without", 1, "expected \"send\", found the end of the line"},
        BadScript{"clock +10m", 1, "clock needs a date and time, not an offset"},
        BadScript{"clock 2025-02-29 10:00", 1,
                  "expected a time: YYYY-MM-DD [HH:MM[:SS]] or +N followed by w, d, h, m or s, found \"2025-02-29\""},
        BadScript{"clock 2025-03-03 24:00", 1, "expected a time of day HH:MM or HH:MM:SS, found \"24:00\""},
        BadScript{"clock 2025-03-03 9:5", 1, "expected a time of day HH:MM or HH:MM:SS, found \"9:5\""},
        BadScript{"clock", 1,
                  "expected a time: YYYY-MM-DD [HH:MM[:SS]] or +N followed by w, d, h, m or s, found the end of the line"},
        BadScript{"wait 2025-03-03 10:00", 1, "wait takes an offset (+10m) or \"until\" and a time"},
        BadScript{"wait +10x", 1,
                  "expected a time: YYYY-MM-DD [HH:MM[:SS]] or +N followed by w, d, h, m or s, found \"+10x\""},
        BadScript{"wait +999999d", 1,
                  "expected a time: YYYY-MM-DD [HH:MM[:SS]] or +N followed by w, d, h, m or s, found \"+999999d\""},
        BadScript{"start with main window", 1, "unexpected \"with\" at the end of the line"},
        BadScript{"start without window", 1, "expected \"main\", found \"window\""},
        BadScript{"sync later", 1, "expected \"finish\", found \"later\""},
        BadScript{"open \"\"\nclose main door", 2, "expected \"window\", found \"door\""},
        BadScript{"edit \"a\" cc \"b\"", 1, "expected to, subject or body, found \"cc\""},
        BadScript{"press Send", 1, "expected \"Qorvane\", found \"Send\""},
        BadScript{"attach", 1, "expected a file or a folder"},
        BadScript{"dialog", 1, "expected the dialog's answer after \"dialog\""},
        BadScript{"answer Maybe", 1, "expected a button: OK, Cancel, Yes, No, Abort, Retry or Ignore, found \"Maybe\""},
        BadScript{"select A", 1, "expected a subject in double quotes, found \"A\""},
        BadScript{"click help", 1, "expected options or about, found \"help\""},
        BadScript{"registry SendAndExit yes", 1, "expected the value's text in double quotes, found \"yes\""},
        BadScript{"expect", 1,
                  "expected what to expect (sent, attachments, folder, next, in, registry, log, message, dialogs, "
                  "window, state, timer, sendreceive), found the end of the line"},
        BadScript{"expect weather \"fine\"", 1, "unknown expectation \"weather\""},
        BadScript{"expect sent -1", 1, "expected a number of copies or a quoted subject (0 to 1000000), found \"-1\""},
        BadScript{"expect sent \"A\" twice", 1, "expected a number of copies (0 to 1000000), found \"twice\""},
        BadScript{"expect state asleep", 1,
                  "expected a state: attached, waiting, detached, closed or stopped, found \"asleep\""},
        BadScript{"expect timer paused", 1, "expected \"stopped\", found \"paused\""},
        BadScript{"expect log dirty", 1, "expected \"contains\", found \"dirty\""},
        BadScript{"expect no mail", 1, "expected \"window\", found \"mail\""},
        BadScript{"expect folder 2 mails", 1, "unexpected \"mails\" at the end of the line"},
        BadScript{std::string("start\nquit\0now", 14), 2, "the line holds a NUL character"}));

TEST(Script, KeepsLineNumbersAndSourcesAndSkipsCommentsAndBlanks) {
  const ParsedScript parsed = ParseScript("# a story\n\nstart   # the client\n\n  wait +1m\nquit");
  ASSERT_TRUE(parsed.script) << parsed.error.Text();
  std::vector<std::pair<int, std::string>> steps;
  for (const ScriptStep& step : parsed.script->steps) steps.emplace_back(step.line, step.source);
  EXPECT_EQ(steps, (std::vector<std::pair<int, std::string>>{{3, "start"}, {5, "wait +1m"}, {6, "quit"}}));
}

TEST(Script, AnEmptyTextIsAnEmptyStory) {
  for (const char* text : {"", "\n\n", "# only a comment\n   \t\n"}) {
    const ParsedScript parsed = ParseScript(text);
    ASSERT_TRUE(parsed.script) << parsed.error.Text();
    EXPECT_TRUE(parsed.script->steps.empty()) << text;
  }
}

}  // namespace
}  // namespace scenario
