// The tool's command-line checks: every malformed number, date and time must
// be refused before it reaches the engine, and every well-formed one taken
// at face value.
#include "tools/arg_parser.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace qorvane::tool {
namespace {

// What the parser makes of the text: the parts with '-' and ':' between
// them, or "refused". Kinds: n a number in 0..10, N any int32, d a day,
// t a time of day, T both.
std::string Parsed(char kind, const std::string& text) {
  constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  const auto day = [](const DateParts& d) {
    return std::to_string(d.year) + "-" + std::to_string(d.month) + "-" + std::to_string(d.day);
  };
  const auto time = [](const ClockParts& t) { return std::to_string(t.hour) + ":" + std::to_string(t.minute); };
  try {
    switch (kind) {
      case 'n': return std::to_string(ParseInteger("n", text, 0, 10));
      case 'N': return std::to_string(ParseInteger("n", text, kMin, kMax));
      case 'd': return day(ParseIsoDate("d", text));
      case 't': return time(ParseClockTime("t", text));
      default: {
        const auto [d, t] = ParseIsoDateTime("T", text);
        return day(d) + " " + time(t);
      }
    }
  } catch (const UsageError&) {
    return "refused";
  }
}

TEST(ArgParser, TakesWellFormedValuesAtFaceValueAndRefusesTheRest) {
  const char* const no = "refused";
  const struct {
    char kind;
    const char* text;
    const char* parsed;
  } cases[] = {
      {'n', "0", "0"}, {'n', "10", "10"}, {'n', "007", "7"}, {'N', "-3", "-3"},
      {'N', "2147483647", "2147483647"}, {'N', "-2147483648", "-2147483648"},
      {'N', "2147483648", no}, {'N', "99999999999999999999", no}, {'n', "11", no}, {'n', "-1", no},
      {'n', "", no}, {'n', "-", no}, {'n', "+3", no}, {'n', " 3", no}, {'n', "3 ", no}, {'n', "3.0", no},
      {'n', "0x3", no},
      {'d', "2025-03-03", "2025-3-3"}, {'d', "2024-02-29", "2024-2-29"}, {'d', "2000-02-29", "2000-2-29"},
      {'d', "0100-01-01", "100-1-1"}, {'d', "9999-12-31", "9999-12-31"},  // the years the dates support
      {'d', "1900-02-29", no}, {'d', "2025-02-29", no}, {'d', "2025-04-31", no}, {'d', "2025-13-01", no},
      {'d', "2025-00-10", no}, {'d', "2025-01-00", no}, {'d', "0099-12-31", no}, {'d', "2025-3-3", no},
      {'d', "2025/03/03", no}, {'d', "2025-03-03 09:30", no}, {'d', "2025-0a-03", no}, {'d', "", no},
      {'t', "09:30", "9:30"}, {'t', "9:30", "9:30"}, {'t', "00:00", "0:0"}, {'t', "23:59", "23:59"},
      {'t', "24:00", no}, {'t', "12:60", no}, {'t', "9:5", no}, {'t', "093", no}, {'t', "09:30:00", no},
      {'t', ":30", no}, {'t', "123:00", no}, {'t', "9.30", no}, {'t', "", no},
      {'T', "2025-03-03 09:30", "2025-3-3 9:30"}, {'T', "2025-03-03T09:30", "2025-3-3 9:30"},
      {'T', "2025-03-03", no}, {'T', "2025-03-03  09:30", no}, {'T', "2025-03-03_09:30", no},
  };
  for (const auto& c : cases) EXPECT_EQ(Parsed(c.kind, c.text), c.parsed) << c.kind << " '" << c.text << "'";
}

const OptionDef kOptions[] = {{"count"}, {"flag", false}, {"attach", true, true}};

ParsedArgs ParseList(std::vector<std::string> args) { return ParsedArgs::Parse(args, kOptions, 1); }

TEST(ParsedArgs, ReadsValuesFlagsRepeatsAndPositionals) {
  ParsedArgs p = ParseList({"--count", "3", "LINE", "--flag", "--attach", "a", "--attach=b;c", "--attach", "-x"});
  EXPECT_EQ(p.Value("count"), "3");
  EXPECT_TRUE(p.Has("flag"));
  EXPECT_EQ(p.Values("attach"), (std::vector<std::string>{"a", "b;c", "-x"}));
  EXPECT_EQ(p.Positional(), std::vector<std::string>{"LINE"});
  EXPECT_FALSE(p.Value("missing").has_value());
  EXPECT_THROW(p.Required("missing"), UsageError);
  EXPECT_EQ(ParseList({"--count=--5"}).Value("count"), "--5") << "an attached value may start with dashes";
  EXPECT_EQ(ParseList({"--count="}).Value("count"), "");
}

TEST(ParsedArgs, RefusesMalformedLines) {
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"--bogus"}, {"--count"}, {"--count", "--flag"}, {"--count", "1", "--count", "2"}, {"--flag=1"},
           {"one", "two"}, {"--"}}) {
    EXPECT_THROW(ParseList(args), UsageError) << args.front();
  }
}

}  // namespace
}  // namespace qorvane::tool
