// The .reg text the POSIX registry keeps its hives in: what each kind of
// value looks like, that everything written reads back the same, how other
// spellings merge, and that damaged text is refused with a reason.
#include "platform/reg_text.h"

#include <gtest/gtest.h>

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

TEST(CompareNames, FoldsCaseThenOrdersByCodeUnit) {
  const struct {
    const char* a;
    const char* b;
    int sign;
  } cases[] = {
      {"a", "A", 0},   {"Settings", "SETTINGS", 0}, {"a", "B", -1},  {"B", "a", 1},   {"a", "ab", -1},
      {"_", "a", -1},  {"_", "A", -1},              {"[", "a", -1},  {"~", "Z", 1},   {"", "a", -1},
      {"", "", 0},     {"Grüße", "GRÜSSE", 1},      {"ü", "Ü", 0},   {"é", "É", 0},   {"Жук", "жУК", 0},
      {"Σ", "σ", 0},   {"ÿ", "Ÿ", 0},              {"z", "é", -1},  {"Ŀ", "ŀ", 0},   {"\xff", "\xfe", 1},
      {"\xff", "ÿ", 1}, {"😀", "\uFFFD", -1},
  };
  for (const auto& c : cases) {
    const int result = CompareNames(c.a, c.b);
    EXPECT_EQ((result > 0) - (result < 0), c.sign) << c.a << " vs " << c.b;
  }
}

TEST(RegText, EachKindOfValueHasItsLineAndReadsBack) {
  const struct {
    const char* what;
    std::string name;
    std::uint32_t type;
    std::string data;
    std::string line;
  } cases[] = {
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
    EXPECT_EQ(text, kTop + "[HKEY_CURRENT_USER\\Software]\n\n[HKEY_CURRENT_USER\\Software\\Q]\n" + c.line + "\n\n");
    EXPECT_EQ(Parsed(text), tree);
  }
}

TEST(RegText, LongHexWrapsBeforeColumn80AndReadsBack) {
  std::string data;
  for (int i = 0; i < 300; ++i) data += static_cast<char>(i);
  const RegTree tree = OneValue("blob", kRegBinary, data);
  const std::string text = FormatRegText(tree);
  std::size_t carried = 0;
  for (std::size_t start = 0, end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
    const std::string line = text.substr(start, end - start);
    EXPECT_LE(line.size(), 80u) << line;
    if (line.size() > 2 && line.front() == ' ') {
      EXPECT_EQ(line.substr(0, 2), "  ");
    }
    if (line.back() == '\\') {
      EXPECT_EQ(line[line.size() - 2], ',') << line;
      ++carried;
    }
  }
  EXPECT_EQ(carried, 12u) << "25 bytes to a full line";
  EXPECT_EQ(Parsed(text), tree);
}

TEST(RegText, KeysAreWrittenInNameOrderWithEmptyOnesKept) {
  RegTree tree;
  tree.hives[1].SetValue("Root", kRegDword, Bytes("\1\0\0\0"s));
  RegKey& app = tree.hives[1].AddSubkey("Software").AddSubkey("App");
  app.AddSubkey("zeta");
  app.AddSubkey("Alpha]Beta").SetValue("b", kRegSz, Bytes("2\0"s));
  app.AddSubkey("_under");
  app.SetValue("b", kRegSz, Bytes("B\0"s));
  app.SetValue("A", kRegSz, Bytes("a\0"s));
  tree.hives[2].AddSubkey("Software");
  tree.hives[0].AddSubkey(".reg");
  const std::string expected = kTop +
                               "[HKEY_CLASSES_ROOT\\.reg]\n\n"
                               "[HKEY_CURRENT_USER]\n\"Root\"=dword:00000001\n\n"
                               "[HKEY_CURRENT_USER\\Software]\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App]\n\"A\"=\"a\"\n\"b\"=\"B\"\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App\\_under]\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App\\Alpha]Beta]\n\"b\"=\"2\"\n\n"
                               "[HKEY_CURRENT_USER\\Software\\App\\zeta]\n\n"
                               "[HKEY_LOCAL_MACHINE\\Software]\n\n";
  EXPECT_EQ(FormatRegText(tree), expected);
  EXPECT_EQ(Parsed(expected), tree);
  EXPECT_EQ(FormatRegText(RegTree()), kTop);
  EXPECT_EQ(Parsed(kTop), RegTree());
}

TEST(RegText, OtherSpellingsMergeIntoTheFirst) {
  const RegTree tree = Parsed(kTop +
                              "[HKEY_CURRENT_USER\\Software\\App]\n\"Name\"=\"one\"\n\n"
                              "[hkey_current_user\\SOFTWARE\\app\\Sub]\n\n"
                              "[HKEY_CURRENT_USER\\software\\APP]\n\"NAME\"=\"two\"\n\"name2\"=dword:00000002\n");
  RegTree expected;
  RegKey& app = expected.hives[1].AddSubkey("Software").AddSubkey("App");
  app.SetValue("Name", kRegSz, Bytes("two\0"s));
  app.SetValue("name2", kRegDword, Bytes("\2\0\0\0"s));
  app.AddSubkey("Sub");
  EXPECT_EQ(tree, expected);
}

TEST(RegText, HandWrittenVariantsReadTheSame) {
  const RegTree expected = [] {
    RegTree tree = OneValue("n", kRegDword, "\x0a\0\0\0"s);
    tree.hives[1].FindSubkey("Software")->FindSubkey("Q")->SetValue("b", kRegBinary, Bytes("\1\2\3"));
    return tree;
  }();
  const std::string body = "[HKEY_CURRENT_USER\\Software\\Q]\n\"n\"=dword:0000000a\n\"b\"=hex:01,02,03\n";
  const struct {
    const char* what;
    std::string text;
  } cases[] = {
      {"canonical", kTop + body},
      {"CR LF line ends", "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\Q]\r\n"
                          "\"n\"=dword:0000000a\r\n\"b\"=hex:01,02,03\r\n"},
      {"byte order mark", "\xEF\xBB\xBF" + kTop + body},
      {"comments and blank lines", kTop + "; settings\n\n" + body + "\n\n; end\n"},
      {"spaces around =", kTop + "[HKEY_CURRENT_USER\\Software\\Q]\n\"n\" = dword:0000000A\n  \"b\" =hex: 01, 02 ,03\n"},
      {"upper case prefixes and hive", kTop + "[hkey_current_user\\Software\\Q]\n\"n\"=DWORD:0000000a\n\"b\"=HEX:01,02,03\n"},
      {"hex carried over lines", kTop + "[HKEY_CURRENT_USER\\Software\\Q]\n\"n\"=dword:0000000a\n\"b\"=hex:01,\\\n    02,\\\n\t03\n"},
      {"hex(3) for binary", kTop + "[HKEY_CURRENT_USER\\Software\\Q]\n\"n\"=hex(4):0a,00,00,00\n\"b\"=hex(3):01,02,03\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(Parsed(c.text), expected);
  }
}

TEST(RegText, DamagedTextIsRefusedWithAReason) {
  const std::string section = "[HKEY_CURRENT_USER\\Software\\Q]\n";
  const struct {
    const char* what;
    std::string text;
    const char* reason;
  } cases[] = {
      {"empty file", "", "the file is empty"},
      {"no header", section, "line 1: the first line"},
      {"older header", "REGEDIT4\n\n" + section, "line 1: the first line"},
      {"cut inside the header", "Windows Registry Ed", "line 1: the last line is cut off"},
      {"no final line end", kTop + section + "\"a\"=\"b\"", "line 4: the last line is cut off"},
      {"section not closed", kTop + "[HKEY_CURRENT_USER\\Soft\n", "line 3: a [key] line without its closing ]"},
      {"unknown hive", kTop + "[HKEY_USERS\\x]\n", "line 3: unknown hive \"HKEY_USERS\""},
      {"empty key name", kTop + "[HKEY_CURRENT_USER\\a\\\\b]\n", "line 3: an empty key name"},
      {"key removal", kTop + "[-HKEY_CURRENT_USER\\a]\n", "line 3: key removal"},
      {"value before any section", kTop + "\"a\"=\"b\"\n", "line 3: a value before the first [key]"},
      {"name not closed", kTop + section + "\"a=\"b\n", "line 4: no '=' after the value name"},
      {"text not closed", kTop + section + "\"a\"=\"b\n", "line 4: a quoted string without its closing quote"},
      {"unknown escape", kTop + section + "\"a\"=\"b\\n\"\n", "line 4: unknown escape \\n"},
      {"no =", kTop + section + "\"a\" \"b\"\n", "line 4: no '=' after"},
      {"short dword", kTop + section + "\"a\"=dword:0000\n", "line 4: dword: needs eight hex digits"},
      {"dword not hex", kTop + section + "\"a\"=dword:0000000g\n", "line 4: dword: needs eight hex digits"},
      {"long dword", kTop + section + "\"a\"=dword:000000001\n", "line 4: text after the value"},
      {"half a hex byte", kTop + section + "\"a\"=hex:01,0\n", "line 4: a bad hex byte"},
      {"hex ends with a comma", kTop + section + "\"a\"=hex:01,\n", "line 4: hex data ends with a comma"},
      {"hex carried past the end", kTop + section + "\"a\"=hex:01,\\\n", "line 4: hex data continues past the end"},
      {"bad hex type", kTop + section + "\"a\"=hex(z):01\n", "line 4: a bad hex(type)"},
      {"unknown data", kTop + section + "\"a\"=word:1\n", "line 4: unknown value data"},
      {"value removal", kTop + section + "\"a\"=-\n", "line 4: value removal"},
      {"text after a string", kTop + section + "\"a\"=\"b\" x\n", "line 4: text after the value"},
      {"stray text", kTop + section + "garbage\n", "line 4: unexpected text"},
      {"binary junk", kTop + "\x01\x02\x03\n", "line 3: unexpected text"},
  };
  for (const auto& c : cases) {
    RegTree tree;
    std::string reason;
    EXPECT_FALSE(ParseRegText(c.text, tree, reason)) << c.what;
    EXPECT_EQ(reason.rfind(c.reason, 0), 0u) << c.what << ": " << reason;
  }
}

// Writes are whole or absent, but a file cut short by anything else must not
// pass for a smaller registry whenever the cut is detectable at all: every
// cut that does not fall on a line end is refused.
TEST(RegText, EveryCutInsideALineIsRefused) {
  RegTree tree = OneValue("text", kRegSz, "some text\0"s);
  RegKey& q = *tree.hives[1].FindSubkey("Software")->FindSubkey("Q");
  q.SetValue("n", kRegDword, Bytes("\1\2\3\4"));
  q.SetValue("blob", kRegBinary, Bytes(std::string(60, 'Z')));
  q.AddSubkey("Sub]Key");
  const std::string text = FormatRegText(tree);
  for (std::size_t length = 0; length < text.size(); ++length) {
    RegTree cut;
    std::string reason;
    const bool accepted = ParseRegText(text.substr(0, length), cut, reason);
    if (length == 0 || text[length - 1] != '\n') {
      EXPECT_FALSE(accepted) << "cut at " << length;
    }
  }
}

}  // namespace
}  // namespace qorvane::registry
