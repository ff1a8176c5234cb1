// The qorvane tool's commands run in-process, as a user would call them:
// the stored line against the form earlier versions wrote, a few listings
// against dates worked out by hand from a calendar, bad input against exit
// code 2 with one message, and the registry and ignore-list commands. The
// engine's own patterns, descriptions and lines are tested in tests/schedule.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "infra/cwinreg.h"
#include "infra/settings.h"
#include "platform/addin_folder.h"
#include "platform/locale.h"
#include "schedule/first_dow.h"
#include "store/main_options.h"
#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"
#include "tests/tools/tool_invoke.h"
#include "tools/commands.h"

namespace qorvane::tool {
namespace {

using testing::Invoke;
using testing::Result;
using Args = std::vector<std::string>;

class ToolTest : public ::testing::Test {
 protected:
  // The tool's test key, the add-in's settings and the client's options of
  // two versions, none stored: weekly patterns count weeks from the locale's
  // first day unless told otherwise.
  qorvane::testing::ScopedRegistryKeys registry_{
      {"Software\\QorvaneToolTest", "Software\\VB and VBA Program Settings\\Qorvane",
       "Software\\Microsoft\\Office\\16.0", "Software\\Microsoft\\Office\\77.0"}};
  qorvane::testing::ScopedLogFolder log_;
  qorvane::testing::ScopedLocale locale_{"en-US"};
};

int Lines(const std::string& text) { return static_cast<int>(std::count(text.begin(), text.end(), '\n')); }

const char* const kWorkedLine =
    "1;1;0;0;0;34;1;10;0;C:\\Reports\\summary.pdf;C:\\Reports\\Weekly\\;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM";

// Each run on its own; on failure nothing but one line on stderr that holds `err`.
TEST_F(ToolTest, CommandsPrintExactly) {
  const Args describe = {"describe", "--type", "1", "--mask", "34", "--start", "2025-03-03", "--time", "09:30",
                         "--occurrences", "10", "--schedule-time", "2025-03-03 09:30"};
  const std::string described = "Occurs every 1 week(s) on monday And friday effective 3/3/2025 9:30:00 AM";
  const struct {
    Args args;
    int code;
    std::string out;
    const char* err = "";
  } cases[] = {
      {{"--locale", "en-US", "encode", "--type", "1", "--interval", "1", "--mask", "34", "--occurrences", "10",
        "--start", "2025-03-03", "--time", "09:30", "--attach", "C:\\Reports\\summary.pdf", "--attach",
        "C:\\Reports\\Weekly\\"},
       0, std::string(kWorkedLine) + "\n"},
      {{"decode", kWorkedLine, "--locale=en-US"}, 0,
       "ScheduleTime=1899-12-30 00:00:00\nattachment=C:\\Reports\\summary.pdf\nattachment=C:\\Reports\\Weekly\\\n"
       "IsRecurring=1\nRecurrenceType=1\nDayOfMonth=0\nMonthOfYear=0\nInstance=0\nDayOfWeekMask=34\nInterval=1\n"
       "Occurrences=10\nNoEndDate=0\nStartTime=1899-12-30 09:30:00\nPatternStartDate=2025-03-03 00:00:00\n"
       "PatternEndDate=1899-12-30 00:00:00\n"},
      {{"encode", "--type", "0", "--start", "2025-03-03", "--time", "18:05", "--no-end"}, 0,
       "1;0;0;0;0;0;1;0;1;#10;6:05:00 PM#8;3/3/2025#11;12:00:00 AM\n"},
      {{"encode", "--type", "0", "--start", "2025-03-03", "--time", "18:05", "--end-date", "2025-12-24", "--one-time"},
       0, "0;0;0;0;0;0;1;0;0;#10;6:05:00 PM#8;3/3/2025#10;12/24/2025\n"},
      // The tenth send on Mondays and Fridays from Monday 3 March is on 4 April.
      {describe, 0, described + "\n"},
      {[&] { auto a = describe; a.push_back("--last"); return a; }(), 0, described + " until 4/4/2025 9:30:00 AM\n"},
      {[&] { auto a = describe; a.push_back("--one-time"); return a; }(), 0, "none\n"},
      {{"occurrences", "--type", "0", "--interval", "3", "--start", "2025-03-03", "--time", "09:30", "--count", "4"},
       0, "2025-03-03 09:30\n2025-03-06 09:30\n2025-03-09 09:30\n2025-03-12 09:30\n"},
      {{"occurrences", "--type", "0", "--start", "2025-03-03", "--time", "00:00", "--until", "2025-03-05"}, 0,
       "2025-03-03 00:00\n2025-03-04 00:00\n2025-03-05 00:00\n"},
      // From a Wednesday: the first week keeps only its Friday, the next is skipped.
      {{"occurrences", "--type", "1", "--interval", "2", "--mask", "34", "--start", "2025-03-05", "--time", "09:30",
        "--count", "5"},
       0, "2025-03-07 09:30\n2025-03-17 09:30\n2025-03-21 09:30\n2025-03-31 09:30\n2025-04-04 09:30\n"},
      {{"occurrences", "--type", "2", "--day-of-month", "31", "--start", "2025-01-31", "--time", "17:00", "--count",
        "3"},
       0, "2025-01-31 17:00\n2025-02-28 17:00\n2025-03-31 17:00\n"},
      {{"occurrences", "--type", "3", "--instance", "5", "--mask", "32", "--start", "2025-01-01", "--time", "16:30",
        "--count", "3"},
       0, "2025-01-31 16:30\n2025-02-28 16:30\n2025-03-28 16:30\n"},
      {{"occurrences", "--type", "6", "--instance", "2", "--mask", "4", "--month", "3", "--start", "2025-01-01",
        "--time", "09:00", "--count", "3"},
       0, "2025-03-11 09:00\n2026-03-10 09:00\n2027-03-09 09:00\n"},
      {{"occurrences", "--type", "9", "--start", "2025-03-03", "--time", "09:30", "--until", "2025-12-31"}, 0, ""},
      // A count listing looks up to 1000 years ahead, past the last valid year.
      {{"occurrences", "--type", "0", "--start", "9500-01-01", "--time", "09:00", "--count", "2"}, 1, "",
       "see the log"},
  };
  for (const auto& c : cases) {
    const Result r = Invoke(c.args);
    EXPECT_EQ(r.code, c.code) << ::testing::PrintToString(c.args) << ": " << r.err;
    EXPECT_EQ(r.out, c.out) << ::testing::PrintToString(c.args);
    EXPECT_EQ(Lines(r.err), c.code ? 1 : 0) << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << r.err;
  }
}

TEST_F(ToolTest, DecodeReadsWhatEncodeWroteInEveryLocale) {
  for (const char* locale : {"en-US", "en-GB", "de-DE", "fr-FR"}) {
    Result line = Invoke({"--locale", locale, "encode", "--type", "6", "--instance", "5", "--mask", "65", "--month",
                          "11", "--interval", "3", "--start", "2031-11-02", "--time", "21:45", "--end-date",
                          "2040-01-31", "--attach", "/home/ann/notes.txt", "--attach", "Überblick.pdf"});
    ASSERT_EQ(line.code, 0) << locale << ": " << line.err;
    line.out.pop_back();
    const Result fields = Invoke({"--locale", locale, "decode", line.out});
    EXPECT_EQ(fields.code, 0) << locale << ": " << fields.err;
    EXPECT_EQ(fields.out,
              "ScheduleTime=1899-12-30 00:00:00\nattachment=/home/ann/notes.txt\nattachment=Überblick.pdf\n"
              "IsRecurring=1\nRecurrenceType=6\nDayOfMonth=0\nMonthOfYear=11\nInstance=5\n"
              "DayOfWeekMask=65\nInterval=3\nOccurrences=0\nNoEndDate=0\nStartTime=1899-12-30 21:45:00\n"
              "PatternStartDate=2031-11-02 00:00:00\nPatternEndDate=2040-01-31 00:00:00\n")
        << locale;
  }
}

TEST_F(ToolTest, DecodeFailurePrintsWhatWasReadExplainsAndLogs) {
  for (const auto& [line, printed] : {
           std::pair{"1;1;0;0;0;34;1;10;0", "RecurrenceType=0"},  // no date section
           {"1;1;x;0;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "RecurrenceType=1"},
           {"1;2;31;0;0;0;1;0;1;#10;9:30:00 AM#8;3/3/2025#11;not a date!", "PatternStartDate=2025-03-03 00:00:00"},
       }) {
    const Result r = Invoke({"--locale", "en-US", "decode", line});
    EXPECT_EQ(r.code, 1) << line;
    EXPECT_NE(r.out.find(printed), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("PatternEndDate="), std::string::npos) << "every field is printed";
    EXPECT_NE(r.err.find("could not be read: error "), std::string::npos) << r.err;
    EXPECT_EQ(Lines(r.err), 1) << r.err;
  }
  EXPECT_TRUE(log_.LogContains("CMailProps.ReadFromString(")) << log_.LogText();
}

TEST_F(ToolTest, UsageErrorsExitWith2AndOneMessageAndChangeNothing) {
  const Args pattern = {"--type", "0", "--start", "2025-03-03", "--time", "09:30"};
  const auto with = [&](Args args, const Args& more = {"--count", "1"}) {
    args.insert(args.end(), pattern.begin(), pattern.end());
    args.insert(args.end(), more.begin(), more.end());
    return args;
  };
  const std::string key = "Software\\QorvaneToolTest";
  const std::pair<Args, const char*> cases[] = {
      {{}, "command"},
      {{"list"}, "list"},
      {{"--locale", "xx-YY", "decode", "1"}, "xx-YY"},
      {{"decode", "1", "--locale"}, "--locale"},
      {{"--locale", "en-US", "--locale", "de-DE", "decode", "1"}, "--locale"},
      {{"occurrences", "--start", "2025-02-30", "--type", "0", "--time", "09:30", "--count", "1"}, "--start"},
      {{"occurrences", "--type", "0", "--start", "2025-03-03", "--time", "24:00", "--count", "1"}, "--time"},
      {with({"occurrences"}, {}), "--count"},
      {with({"occurrences"}, {"--count", "100001"}), "--count"},
      {with({"occurrences", "--mask", "128"}), "--mask"},
      {with({"occurrences", "--attach", "x"}), "--attach"},  // an option of another command
      {with({"encode", "--occurrences", "3", "--no-end"}, {}), "exclude"},
      {with({"encode", "--end-date", "2025-12-24", "--no-end"}, {}), "exclude"},
      {with({"describe"}, {}), "--schedule-time"},
      {{"decode"}, "LINE"},
      {{"registry"}, "action"},
      {{"registry", "fetch", key}, "fetch"},
      {{"registry", "set", "HKEY_LOCAL_MACHINE\\" + key, "x", "y"}, "HKEY_LOCAL_MACHINE"},
      {{"registry", "set", "HKCU", "x", "y"}, "KEY"},
      {{"registry", "set", key, "x"}, "usage"},
      {{"registry", "set", key, "x", std::string(256, 'v')}, "256"},
      {{"registry", "set-dword", key, "x", "4294967296"}, "qorvane registry: NUMBER: 4294967296 is outside"},
      {{"registry", "set-dword", key, "x", "12ab"}, "qorvane registry: NUMBER: '12ab' is not a whole number"},
      {{"registry", "set", key, "", "y"}, "NAME"},
      {{"ignore-list", "hidden", "maybe"}, "maybe"},
  };
  for (const auto& [args, mentions] : cases) {
    const Result r = Invoke(args);
    EXPECT_EQ(r.code, 2) << mentions;
    EXPECT_EQ(r.out, "") << mentions;
    EXPECT_EQ(Lines(r.err), 1) << r.err;
    EXPECT_NE(r.err.find(mentions), std::string::npos) << r.err;
  }
  CWinReg probe;
  EXPECT_FALSE(probe.InitForRead(CWinReg::HKEY_CURRENT_USER, key));
  EXPECT_EQ(Invoke({"ignore-list"}).out, "ignore=thumbs.db\nhidden=yes\n");
}

// A pattern must name every field its type reads; left out, the engine would
// list something else (day 0 is the month's eve, no weekday lists nothing).
TEST_F(ToolTest, APatternMissingAFieldItsTypeReadsNamesTheOption) {
  const struct {
    Args pattern;
    const char* message;
  } cases[] = {
      {{"--type", "1"}, "--type 1 (weekly) needs --mask"},
      {{"--type", "1", "--mask", "0"}, "--type 1 (weekly) needs a --mask with at least one weekday"},
      {{"--type", "0", "--interval", "0"}, "--type 0 (daily on weekdays) needs --mask"},
      {{"--type", "2"}, "--type 2 (monthly on a day) needs --day-of-month"},
      {{"--type", "3", "--mask", "32"}, "--type 3 (monthly on the nth weekday) needs --instance"},
      {{"--type", "3"}, "--type 3 (monthly on the nth weekday) needs --instance and --mask"},
      {{"--type", "5", "--day-of-month", "29"}, "--type 5 (yearly on a day) needs --month"},
      {{"--type", "6", "--mask", "4"}, "--type 6 (yearly on the nth weekday) needs --instance and --month"},
      {{"--type", "6"}, "--type 6 (yearly on the nth weekday) needs --instance, --mask and --month"},
      {{"--type", "2", "--day-of-month", "5", "--interval", "0"},
       "--type 2 (monthly on a day) needs an --interval of 1 or more"},
      {{"--type", "1", "--mask", "2", "--interval", "0"}, "--type 1 (weekly) needs an --interval of 1 or more"},
  };
  for (const char* command : {"occurrences", "describe", "encode"}) {
    for (const auto& c : cases) {
      Args args = {command, "--start", "2025-01-01", "--time", "09:00"};
      args.insert(args.end(), c.pattern.begin(), c.pattern.end());
      if (std::string(command) == "occurrences") args.insert(args.end(), {"--count", "3"});
      if (std::string(command) == "describe") args.insert(args.end(), {"--schedule-time", "2025-01-01 09:00"});
      const Result r = Invoke(args);
      EXPECT_EQ(r.code, 2) << command << " " << c.message;
      EXPECT_EQ(r.out, "") << command << " " << c.message;
      EXPECT_EQ(r.err, std::string("qorvane ") + command + ": " + c.message + "\n");
    }
  }
  EXPECT_EQ(Invoke({"occurrences", "--type", "0", "--interval", "2", "--start", "2025-01-01", "--time", "09:00",
                    "--count", "1"})
                .out,
            "2025-01-01 09:00\n")
      << "a daily pattern with an interval needs nothing more";
}

// The recurrence dialog stores both an end date and the sends it counts.
TEST_F(ToolTest, EncodeKeepsOccurrencesAndEndDateTogether) {
  const Result r = Invoke({"--locale", "en-US", "encode", "--type", "0", "--start", "2025-03-03", "--time", "18:05",
                           "--occurrences", "5", "--end-date", "2025-03-07"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, "1;0;0;0;0;0;1;5;0;#10;6:05:00 PM#8;3/3/2025#8;3/7/2025\n");
}

// A tool must not fail because its log cannot be written: the log is said
// to be unwritable once, and the command answers as it would otherwise.
TEST_F(ToolTest, ALogThatCannotBeWrittenIsSaidOnceAndTheRunGoesOn) {
  qorvane::SetAddinFolder((log_.Folder() / "no" / "such" / "folder").string());
  const Result bad = Invoke({"--locale", "en-US", "decode", "1;1;x;0;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025"});
  EXPECT_EQ(bad.code, 1);
  EXPECT_EQ(bad.err.rfind("qorvane: cannot write the log ", 0), 0u) << bad.err;
  EXPECT_NE(bad.err.find("could not be read: error 13"), std::string::npos) << bad.err;
  EXPECT_EQ(Lines(bad.err), 2) << bad.err;

  // The engine logs twice on the way (the listing's error and its caller's).
  const Result far = Invoke({"occurrences", "--type", "0", "--start", "9500-01-01", "--time", "09:00", "--count", "2"});
  EXPECT_EQ(far.code, 1);
  EXPECT_EQ(far.err.find("error 75"), std::string::npos) << far.err;
  EXPECT_NE(far.err.find("yields no listing"), std::string::npos) << far.err;
  EXPECT_EQ(Lines(far.err), 2) << "the log's trouble said once: " << far.err;

  const Result fine = Invoke({"occurrences", "--type", "0", "--start", "2025-03-03", "--time", "09:00", "--count", "1"});
  EXPECT_EQ(fine.code, 0);
  EXPECT_EQ(fine.err, "") << "nothing to log, nothing said";
  EXPECT_THROW(g_debug.OutWarning("ToolTest", "after the run"), qorvane::RuntimeError)
      << "the add-in's own logging still raises";
}

// The tool runs in-process in tests and the fuzzer: each run leaves the
// locale, the first day of the week and the client version as it found them.
TEST_F(ToolTest, ARunLeavesTheProcessAsItFoundIt) {
  const auto state = [] {
    return qorvane::CurrentLocale().Name() + "|" + std::to_string(qorvane::FirstDOW()) + "|" + g_OutlookVersion;
  };
  const std::string before = state();
  for (const Args& args : {Args{"--locale", "de-DE", "occurrences", "--type", "1", "--mask", "2", "--first-dow", "3",
                                "--start", "2025-03-03", "--time", "09:00", "--count", "1"},
                           Args{"describe", "--type", "0", "--outlook-version", "11.0.6359", "--start", "2025-03-03",
                                "--time", "09:00", "--schedule-time", "2025-03-03 09:00"},
                           Args{"--locale", "fr-FR", "occurrences", "--first-dow", "2", "--bogus"}}) {
    Invoke(args);
    EXPECT_EQ(state(), before) << ::testing::PrintToString(args);
  }
}

TEST_F(ToolTest, HelpWinsOverMistakesAndGoesToStdout) {
  for (const Args& args : {Args{"--help"}, Args{"describe", "--bogus", "--help"}, Args{"registry", "--help"},
                           Args{"--locale", "de-DE", "decode", "--help"}}) {
    const Result r = Invoke(args);
    EXPECT_EQ(r.code, 0) << args.front();
    EXPECT_EQ(r.out.rfind("Usage: qorvane", 0), 0u) << r.out;
    EXPECT_EQ(r.err, "");
  }
}

// Steps of one session: each command with its exit code and exact output.
struct Step {
  Args args;
  int code;
  std::string out;
};

TEST_F(ToolTest, RegistryValuesCanBeSetReadListedAndDeleted) {
  const std::string key = "Software\\QorvaneToolTest\\Sub";
  const Step steps[] = {
      {{"registry", "get", key, "NextOccurence"}, 1, ""},
      {{"registry", "set", key, "NextOccurence", "3/3/2025 9:30:00 AM"}, 0, ""},
      {{"registry", "set-dword", key, "FirstDOW", "-1"}, 0, ""},
      {{"registry", "get", "HKCU\\" + key, "nextoccurence"}, 0, "3/3/2025 9:30:00 AM\n"},
      {{"registry", "get", key, "FirstDOW"}, 0, "-1\n"},
      {{"registry", "set", key + "\\Deeper", "x", ""}, 0, ""},
      {{"registry", "list", key}, 0, "FirstDOW=-1\nNextOccurence=3/3/2025 9:30:00 AM\nDeeper\\\n"},
      {{"registry", "delete", key, "FirstDOW"}, 0, ""},
      {{"registry", "delete", key, "FirstDOW"}, 1, ""},
      {{"registry", "delete-key", "HKEY_CURRENT_USER\\" + key}, 0, ""},
      {{"registry", "list", key}, 1, ""},
  };
  for (const auto& step : steps) {
    const Result r = Invoke(step.args);
    EXPECT_EQ(r.code, step.code) << step.args[1] << " " << r.err;
    EXPECT_EQ(r.out, step.out) << step.args[1];
  }
}

TEST_F(ToolTest, IgnoreListCommandsKeepTheSettings) {
  const std::string three = "ignore=thumbs.db, desktop.ini, notes.txt\n";
  const Step steps[] = {
      {{"ignore-list"}, 0, "ignore=thumbs.db\nhidden=yes\n"},
      {{"ignore-list", "set", "Thumbs.DB,  desktop.ini,thumbs.db"}, 0, "ignore=thumbs.db, desktop.ini\nhidden=yes\n"},
      {{"ignore-list", "add", " Notes.TXT "}, 0, three + "hidden=yes\n"},
      {{"ignore-list", "add", "notes.txt"}, 0, three + "hidden=yes\n"},
      {{"ignore-list", "hidden", "no"}, 0, three + "hidden=no\n"},
      {{"ignore-list", "add"}, 2, ""},
      {{"ignore-list", "drop", "x"}, 2, ""},
      {{"ignore-list", "show"}, 0, three + "hidden=no\n"},
  };
  for (const auto& step : steps) {
    const Result r = Invoke(step.args);
    EXPECT_EQ(r.code, step.code) << r.err;
    EXPECT_EQ(r.out, step.out);
  }
  using namespace qorvane::settings;
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreList), "thumbs.db, desktop.ini, notes.txt");
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreSysHiden), "0");
}

TEST_F(ToolTest, WeeklyListingsCountWeeksFromTheClientOption) {
  // Every other week on Saturday and Sunday from Saturday 1 March 2025: with
  // Sunday first the start Saturday ends its week; with Monday first the
  // next day is still in it.
  const std::string fromSunday = "2025-03-01 10:00\n2025-03-09 10:00\n2025-03-15 10:00\n2025-03-23 10:00\n";
  const std::string fromMonday = "2025-03-01 10:00\n2025-03-02 10:00\n2025-03-15 10:00\n2025-03-16 10:00\n";
  const struct {
    bool clientSaysMonday;
    Args more;
    const std::string& expected;
  } cases[] = {
      {false, {"--locale", "en-US"}, fromSunday},
      {false, {"--locale", "de-DE"}, fromMonday},  // no client option: the locale's first day
      {false, {"--locale", "de-DE", "--first-dow", "0"}, fromMonday},
      {false, {"--locale", "en-US", "--first-dow", "2"}, fromMonday},
      {true, {"--locale", "en-US"}, fromMonday},
      {true, {"--locale", "en-US", "--outlook-version", "77.0.1234"}, fromSunday},  // another version's: none
      {true, {"--locale", "de-DE", "--first-dow", "1"}, fromSunday},  // --first-dow wins
  };
  for (const auto& c : cases) {
    if (c.clientSaysMonday) {
      ASSERT_EQ(Invoke({"registry", "set-dword", settings::CalendarOptionsKey("16.0"), "FirstDOW", "1"}).code, 0);
    }
    Args args = {"occurrences", "--type", "1", "--interval", "2", "--mask", "65", "--start", "2025-03-01",
                 "--time", "10:00", "--count", "4"};
    args.insert(args.end(), c.more.begin(), c.more.end());
    EXPECT_EQ(Invoke(args).out, c.expected) << c.clientSaysMonday << " " << c.more.back();
  }
}

}  // namespace
}  // namespace qorvane::tool
