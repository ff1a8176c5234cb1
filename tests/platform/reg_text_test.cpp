// The .reg text the POSIX registry keeps its hives in: what each kind of
// value looks like, that everything written reads back the same, how other
// spellings merge, and that damaged text is refused with a reason.
#include "platform/reg_text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace qorvane::registry {
namespace {

using namespace std::string_literals;

const std::string kTop = "Windows Registry Editor Version 5.00\n\n";

std::vector<std::uint8_t> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

// A tree whose only value sits in HKEY_CURRENT_USER\Software\Q.
RegTree OneValue(const std::string& name, std::uint32_t type, const std::string& data) {
  RegTree tree;
  tree.hives[1].AddSubkey("Software").AddSubkey("Q").SetValue(name, type, Bytes(data));
  return tree;
}

RegTree Parsed(const std::string& text) {
  RegTree tree;
  std::string reason;
  EXPECT_TRUE(ParseRegText(text, tree, reason)) << reason << "\n" << text;
  return tree;
}

// Case folds to lower case (so "_" sorts before "A"), then UTF-16 code units.
TEST(CompareNames, FoldsCaseThenOrdersByCodeUnit) {
  const struct { const char* a; const char* b; int sign; } cases[] = {
      {"a", "A", 0},     {"B", "a", 1},       {"a", "ab", -1},  {"_", "A", -1},  {"[", "a", -1},
      {"", "a", -1},     {"", "", 0},         {"ü", "Ü", 0},    {"Жук", "жУК", 0}, {"Σ", "σ", 0},
      {"ÿ", "Ÿ", 0},     {"Ŀ", "ŀ", 0},       {"z", "é", -1},   {"Grüße", "GRÜSSE", 1},
      {"\xff", "\xfe", 1}, {"\xff", "ÿ", 1},  {"😀", "\uFFFD", -1},
  };
  for (const auto& c : cases) {
    const int result = CompareNames(c.a, c.b);
    EXPECT_EQ((result > 0) - (result < 0), c.sign) << c.a << " vs " << c.b;
  }
}

TEST(RegText, EachKindOfValueHasItsLineAndReadsBack) {
  const struct { const char* what; std::string name; std::uint32_t type; std::string data, line; } cases[] = {
      {"text", "plain", kRegSz, "text\0"s, R"("plain"="text")"},
      {"quotes and backslashes", R"(a"b\c)", kRegSz, "x\\y\"z\0"s, R"("a\"b\\c"="x\\y\"z")"},
      {"= in the name", "a=b", kRegSz, "=\0"s, R"("a=b"="=")"},
      {"empty text", "e", kRegSz, "\0"s, R"("e"="")"},
      {"unicode", "Grüße ✓", kRegSz, "Schöne Grüße ✓\0"s, R"("Grüße ✓"="Schöne Grüße ✓")"},
      {"default value", "", kRegSz, "def\0"s, R"(@="def")"},
      {"a value named @", "@", kRegSz, "x\0"s, R"("@"="x")"},
      {"dword", "n", kRegDword, "\x0a\0\0\0"s, R"("n"=dword:0000000a)"},
      {"dword, all bits", "n", kRegDword, "\xff\xff\xff\xff"s, R"("n"=dword:ffffffff)"},
      {"dword of two bytes", "n", kRegDword, "\x0a\0"s, R"("n"=hex(4):0a,00)"},
      {"binary", "b", kRegBinary, "\0\xff\x10"s, R"("b"=hex:00,ff,10)"},
      {"empty binary", "b", kRegBinary, "", R"("b"=hex:)"},
      {"expandable string", "x", kRegExpandSz, "a%b\0"s, R"("x"=hex(2):61,25,62,00)"},
      {"qword", "q", 11, "12345678", R"("q"=hex(b):31,32,33,34,35,36,37,38)"},
      {"string without terminator", "s", kRegSz, "abc", R"("s"=hex(1):61,62,63)"},
      {"string of no bytes", "s", kRegSz, "", R"("s"=hex(1):)"},
      {"two terminators", "s", kRegSz, "a\0\0"s, R"("s"=hex(1):61,00,00)"},
      {"line break in the text", "s", kRegSz, "a\nb\0"s, R"("s"=hex(1):61,0a,62,00)"},
      {"not UTF-8", "s", kRegSz, "\xe9t\xe9\0"s, R"("s"=hex(1):e9,74,e9,00)"},
      {"tab stays text", "s", kRegSz, "a\tb\0"s, "\"s\"=\"a\tb\""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const RegTree tree = OneValue(c.name, c.type, c.data);
    const std::string text = FormatRegText(tree);
    EXPECT_EQ(text, kTop + "[HKEY_CURRENT_USER\\Software\\Q]\n" + c.line + "\n\n");
    EXPECT_EQ(Parsed(text), tree);
  }
}

// Keys and values come out in name order, empty keys kept, a key that only
// holds keys made by their sections; other spellings of a key or value merge
// into the first, the last data winning. Files written with a section for
// every key, as earlier versions wrote them, read the same.
TEST(RegText, WritesInNameOrderAndMergesSpellings) {
  const std::string canonical = kTop +
                                "[HKEY_CLASSES_ROOT\\.reg]\n\n"
                                "[HKEY_CURRENT_USER]\n\"Root\"=dword:00000001\n\n"
                                "[HKEY_CURRENT_USER\\Software\\App]\n\"A\"=\"a\"\n\"b\"=\"B\"\n\"Name\"=\"two\"\n\n"
                                "[HKEY_CURRENT_USER\\Software\\App\\_under]\n\n"
                                "[HKEY_CURRENT_USER\\Software\\App\\Alpha]Beta]\n\"b\"=\"2\"\n\n"
                                "[HKEY_CURRENT_USER\\Software\\App\\zeta]\n\n"
                                "[HKEY_LOCAL_MACHINE\\Software]\n\n";
  const std::string everyKey = kTop +
                               "[HKEY_CLASSES_ROOT\\.reg]\n\n"
                               "[HKEY_CURRENT_USER]\n\"Root\"=dword:00000001\n\n"
                               "[HKEY_CURRENT_USER\\Software]\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App]\n\"A\"=\"a\"\n\"b\"=\"B\"\n\"Name\"=\"two\"\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App\\_under]\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App\\Alpha]Beta]\n\"b\"=\"2\"\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App\\zeta]\n\n"
                               "[HKEY_LOCAL_MACHINE\\Software]\n\n";
  const RegTree messy = Parsed(kTop + "[HKEY_LOCAL_MACHINE\\Software]\n[HKEY_CURRENT_USER\\Software\\App\\zeta]\n"
                                      "[HKEY_CURRENT_USER\\Software\\App]\n\"b\"=\"B\"\n\"Name\"=\"one\"\n"
                                      "[hkey_current_user\\SOFTWARE\\app\\Alpha]Beta]\n\"b\"=\"2\"\n"
                                      "[HKEY_CURRENT_USER\\Software\\App\\_under]\n"
                                      "[HKEY_CURRENT_USER]\n\"Root\"=dword:00000001\n[HKEY_CLASSES_ROOT\\.reg]\n"
                                      "[HKEY_CURRENT_USER\\software\\APP]\n\"NAME\"=\"two\"\n\"A\"=\"a\"\n");
  EXPECT_EQ(FormatRegText(messy), canonical);
  EXPECT_EQ(Parsed(canonical), messy);
  EXPECT_EQ(Parsed(everyKey), messy);
  EXPECT_EQ(FormatRegText(RegTree()), kTop);
  EXPECT_EQ(Parsed(kTop), RegTree());
}

TEST(RegText, DamagedTextIsRefusedWithAReason) {
  const std::string key = kTop + "[HKEY_CURRENT_USER\\Software\\Q]\n";
  const struct { std::string text; const char* reason; } cases[] = {
      {"", "the file is empty"},                          {"Windows Registry Ed", "line 1: the last line is cut off"},
      {"REGEDIT4\n\n" + key, "line 1: the first line"},  {key + "\"a\"=\"b\"", "line 4: the last line is cut off"},
      {kTop + "[HKEY_CURRENT_USER\\Soft\n", "line 3: a [key] line without its closing ]"},
      {kTop + "[HKEY_USERS\\x]\n", "line 3: unknown hive \"HKEY_USERS\""},
      {kTop + "[HKEY_CURRENT_USER\\a\\\\b]\n", "line 3: an empty key name"},
      {kTop + "[-HKEY_CURRENT_USER\\a]\n", "line 3: key removal"},
      {kTop + "\"a\"=\"b\"\n", "line 3: a value before the first [key]"},
      {kTop + "\x01\x02\x03\n", "line 3: unexpected text"},
      {key + "\"a=\"b\n", "line 4: no '=' after the value name"},   {key + "\"a\" \"b\"\n", "line 4: no '=' after"},
      {key + "\"a\"=\"b\n", "line 4: a quoted string without its closing quote"},
      {key + "\"a\"=\"b\\n\"\n", "line 4: unknown escape \\n"},
      {key + "\"a\"=dword:0000\n", "line 4: dword: needs eight hex digits"},
      {key + "\"a\"=dword:0000000g\n", "line 4: dword: needs eight hex digits"},
      {key + "\"a\"=dword:000000001\n", "line 4: text after the value"},
      {key + "\"a\"=\"b\" x\n", "line 4: text after the value"},
      {key + "\"a\"=hex:01,0\n", "line 4: a bad hex byte"},  {key + "\"a\"=hex(z):01\n", "line 4: a bad hex(type)"},
      {key + "\"a\"=hex:01,\n", "line 4: hex data ends with a comma"},
      {key + "\"a\"=hex:01,\\\n", "line 4: hex data continues past the end"},
      {key + "\"a\"=word:1\n", "line 4: unknown value data"},     {key + "\"a\"=-\n", "line 4: value removal"},
  };
  for (const auto& c : cases) {
    RegTree tree;
    std::string reason;
    EXPECT_FALSE(ParseRegText(c.text, tree, reason)) << c.text;
    EXPECT_EQ(reason.rfind(c.reason, 0), 0u) << c.text << ": " << reason;
  }
}

// The path of a key nested depth levels below the hive, one-letter names.
std::string DeepPath(std::size_t depth) {
  std::string path;
  path.reserve(2 * depth);
  for (std::size_t i = 0; i < depth; ++i) path += i == 0 ? "k" : "\\k";
  return path;
}

// Windows counts 512 levels from above the hives, which sit at different
// levels; a path beyond that is refused with its line, however deep (a
// million levels must neither crash nor take long), and so are names longer
// than Windows takes.
TEST(RegText, KeysDeeperAndNamesLongerThanWindowsAllowsAreRefused) {
  const struct {
    const char* hive;
    std::size_t deepest;
  } hives[] = {{"HKEY_CLASSES_ROOT", 508}, {"HKEY_CURRENT_USER", 509}, {"HKEY_LOCAL_MACHINE", 510}};
  for (const auto& c : hives) {
    for (const std::size_t depth : {c.deepest, c.deepest + 1, std::size_t{1000000}}) {
      RegTree tree;
      std::string reason;
      const std::string text = kTop + "[" + c.hive + "\\" + DeepPath(depth) + "]\n\"v\"=\"x\"\n";
      EXPECT_EQ(ParseRegText(text, tree, reason), depth == c.deepest) << c.hive << " " << depth;
      if (depth > c.deepest) {
        EXPECT_EQ(reason, "line 3: a key nested " + std::to_string(depth) + " levels below " + c.hive +
                              ", deeper than Windows allows (" + std::to_string(c.deepest) + ")");
      }
    }
  }
  const struct {
    std::string text;
    const char* reason;
  } names[] = {
      {kTop + "[HKEY_CURRENT_USER\\" + std::string(255, 'k') + "]\n", nullptr},
      {kTop + "[HKEY_CURRENT_USER\\" + std::string(256, 'k') + "]\n", "line 3: a key name longer than 255 characters"},
      {kTop + "[HKEY_CURRENT_USER\\" + std::string(255, 'k') + "\xC3\xA4]\n", "line 3: a key name longer than 255"},
      {kTop + "[HKEY_CURRENT_USER\\k]\n\"" + std::string(16383, 'v') + "\"=\"x\"\n", nullptr},
      {kTop + "[HKEY_CURRENT_USER\\k]\n\"" + std::string(16384, 'v') + "\"=\"x\"\n",
       "line 4: a value name longer than 16383 characters"},
  };
  for (const auto& c : names) {
    RegTree tree;
    std::string reason;
    EXPECT_EQ(ParseRegText(c.text, tree, reason), c.reason == nullptr) << c.text.size();
    if (c.reason) {
      EXPECT_EQ(reason.rfind(c.reason, 0), 0u) << reason;
    }
  }
}

// Sections in reverse name order read as fast as sorted ones (inserting each
// key in place made this quadratic: a minute for 100,000 keys), and a deep
// key without values costs one section, not one per level.
TEST(RegText, ReadingAndWritingStayLinear) {
  constexpr int kKeys = 20000;
  std::string sorted = kTop;
  std::string reversed = kTop;
  for (int i = 0; i < kKeys; ++i) {
    sorted += "[HKEY_CURRENT_USER\\Bulk\\k" + std::to_string(100000 + i) + "]\n\"v\"=dword:00000001\n\n";
    reversed += "[HKEY_CURRENT_USER\\Bulk\\k" + std::to_string(100000 + kKeys - 1 - i) + "]\n\"v\"=dword:00000001\n\n";
  }
  using Clock = std::chrono::steady_clock;
  const auto timeParse = [](const std::string& text, RegTree& tree) {
    const auto start = Clock::now();
    std::string reason;
    EXPECT_TRUE(ParseRegText(text, tree, reason)) << reason;
    return Clock::now() - start;
  };
  RegTree fromSorted;
  RegTree fromReversed;
  const auto sortedTime = timeParse(sorted, fromSorted);
  const auto reversedTime = timeParse(reversed, fromReversed);
  EXPECT_EQ(fromReversed, fromSorted);
  EXPECT_EQ(FormatRegText(fromReversed), sorted);
  EXPECT_LT(reversedTime, 4 * sortedTime + std::chrono::milliseconds(200));

  RegTree deep;
  RegKey* key = &deep.hives[1];
  for (int level = 0; level < 500; ++level) key = &key->AddSubkey("k");
  const std::string text = FormatRegText(deep);
  EXPECT_EQ(text, kTop + "[HKEY_CURRENT_USER\\" + DeepPath(500) + "]\n\n");
  EXPECT_EQ(Parsed(text), deep);
}

// A file cut short must not pass for a smaller registry whenever the cut is
// detectable at all: every cut that does not fall on a line end is refused.
TEST(RegText, EveryCutInsideALineIsRefused) {
  RegTree tree = OneValue("blob", kRegBinary, std::string(60, 'Z'));  // over three lines
  tree.hives[1].AddSubkey("Sub]Key").SetValue("n", kRegDword, Bytes("\1\2\3\4"));
  tree.hives[2].SetValue("text", kRegSz, Bytes("some text\0"s));
  const std::string text = FormatRegText(tree);
  for (std::size_t length = 0; length < text.size(); ++length) {
    RegTree cut;
    std::string reason;
    const bool atLineEnd = length > 0 && text[length - 1] == '\n';
    EXPECT_FALSE(ParseRegText(text.substr(0, length), cut, reason) && !atLineEnd) << "cut at " << length;
  }
}

}  // namespace
}  // namespace qorvane::registry
