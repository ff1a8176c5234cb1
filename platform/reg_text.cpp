// The registry tree, its name order and the .reg export text it is kept in.
#include "platform/reg_text.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace qorvane::registry {
namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";
constexpr const char* kHiveNames[kHiveCount] = {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"};

// ---------------------------------------------------------------------------
// Names

// Decodes one UTF-8 character at pos and advances past it. A byte that does
// not start a well-formed sequence stands for itself as U+DC00+byte, so two
// different malformed names never compare equal. valid tells which it was.
char32_t NextCodePoint(std::string_view text, std::size_t& pos, bool& valid) noexcept {
  const auto lead = static_cast<unsigned char>(text[pos]);
  valid = true;
  if (lead < 0x80) {
    ++pos;
    return lead;
  }
  std::size_t length = 0;
  char32_t cp = 0;
  char32_t minimum = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2, cp = lead & 0x1F, minimum = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, cp = lead & 0x0F, minimum = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, cp = lead & 0x07, minimum = 0x10000;
  }
  if (length != 0 && pos + length <= text.size()) {
    bool ok = true;
    for (std::size_t i = 1; i < length && ok; ++i) {
      const auto next = static_cast<unsigned char>(text[pos + i]);
      ok = (next & 0xC0) == 0x80;
      cp = (cp << 6) | (next & 0x3F);
    }
    if (ok && cp >= minimum && cp <= 0x10FFFF && (cp < 0xD800 || cp > 0xDFFF)) {
      pos += length;
      return cp;
    }
  }
  valid = false;
  ++pos;
  return 0xDC00 + lead;
}

// Lower case for the alphabets settings names are written in: Latin with its
// accented letters, Greek and Cyrillic. Wine folds names to lower case before
// it compares them, so "_" (0x5F) sorts before "a" and "A" alike.
char32_t FoldCase(char32_t c) noexcept {
  if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 0x20 : c;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 0x20;
  if (c == 0x130) return 'i';
  if (c == 0x178) return 0xFF;
  if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) return c | 1;
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c & 1) ? c + 1 : c;
  if (c == 0x386) return 0x3AC;
  if (c >= 0x388 && c <= 0x38A) return c + 0x25;
  if (c == 0x38C) return 0x3CC;
  if (c == 0x38E || c == 0x38F) return c + 0x3F;
  if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return c + 0x20;
  if (c >= 0x400 && c <= 0x40F) return c + 0x50;
  if (c >= 0x410 && c <= 0x42F) return c + 0x20;
  return c;
}

// The folded UTF-16 code units of a name, one at a time.
class FoldedUnits {
 public:
  explicit FoldedUnits(std::string_view text) : text_(text) {}

  bool Next(char16_t& unit) noexcept {
    if (pending_ != 0) {
      unit = std::exchange(pending_, 0);
      return true;
    }
    if (pos_ >= text_.size()) return false;
    bool valid = false;
    const char32_t cp = FoldCase(NextCodePoint(text_, pos_, valid));
    if (cp < 0x10000) {
      unit = static_cast<char16_t>(cp);
    } else {
      unit = static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10));
      pending_ = static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF));
    }
    return true;
  }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
  char16_t pending_ = 0;
};

template <typename Item>
auto LowerBound(std::vector<Item>& items, std::string_view name) {
  return std::lower_bound(items.begin(), items.end(), name,
                          [](const Item& item, std::string_view n) { return CompareNames(item.name, n) < 0; });
}

template <typename Item>
Item* Find(std::vector<Item>& items, std::string_view name) {
  const auto it = LowerBound(items, name);
  return it != items.end() && CompareNames(it->name, name) == 0 ? &*it : nullptr;
}

template <typename Item>
bool Remove(std::vector<Item>& items, std::string_view name) {
  const auto it = LowerBound(items, name);
  if (it == items.end() || CompareNames(it->name, name) != 0) return false;
  items.erase(it);
  return true;
}

// ---------------------------------------------------------------------------
// Writing

bool IsUtf8(std::string_view text) noexcept {
  for (std::size_t pos = 0; pos < text.size();) {
    bool valid = false;
    NextCodePoint(text, pos, valid);
    if (!valid) return false;
  }
  return true;
}

// Whether string data can be written as "text": one terminator at the end and
// nowhere else, and nothing that would break the line or the UTF-8 file.
bool IsPlainText(const std::vector<std::uint8_t>& data) {
  if (data.empty() || data.back() != 0) return false;
  for (std::size_t i = 0; i + 1 < data.size(); ++i) {
    if (data[i] < 0x20 && data[i] != '\t') return false;
  }
  return IsUtf8(std::string_view(reinterpret_cast<const char*>(data.data()), data.size() - 1));
}

void AppendQuoted(std::string& out, std::string_view text) {
  out += '"';
  for (const char c : text) {
    if (c == '\\' || c == '"') out += '\\';
    out += c;
  }
  out += '"';
}

constexpr char kHexDigits[] = "0123456789abcdef";

// Bytes as regedit writes them: "xx,xx,..", wrapped before column 80 with a
// ",\" line end and a two-space indent on the next line.
void AppendHexBytes(std::string& out, const std::vector<std::uint8_t>& data, std::size_t column) {
  for (std::size_t i = 0; i < data.size(); ++i) {
    if (i > 0) {
      out += ',';
      ++column;
      if (column + 3 > 79) {
        out += "\\\n  ";
        column = 2;
      }
    }
    out += kHexDigits[data[i] >> 4];
    out += kHexDigits[data[i] & 0xF];
    column += 2;
  }
}

void AppendValue(std::string& out, const RegValue& value) {
  const std::size_t lineStart = out.size();
  if (value.name.empty()) {
    out += '@';
  } else {
    AppendQuoted(out, value.name);
  }
  out += '=';
  if (value.type == kRegSz && IsPlainText(value.data)) {
    AppendQuoted(out, std::string_view(reinterpret_cast<const char*>(value.data.data()), value.data.size() - 1));
  } else if (value.type == kRegDword && value.data.size() == 4) {
    const std::uint32_t number = value.data[0] | (value.data[1] << 8) | (value.data[2] << 16) |
                                 (static_cast<std::uint32_t>(value.data[3]) << 24);
    char digits[16];
    std::snprintf(digits, sizeof digits, "%08x", static_cast<unsigned>(number));
    out += "dword:";
    out += digits;
  } else {
    if (value.type == kRegBinary) {
      out += "hex:";
    } else {
      char prefix[24];
      std::snprintf(prefix, sizeof prefix, "hex(%x):", static_cast<unsigned>(value.type));
      out += prefix;
    }
    AppendHexBytes(out, value.data, out.size() - lineStart);
  }
  out += '\n';
}

void AppendKey(std::string& out, const RegKey& key, const std::string& path, bool hiveRoot) {
  if (!hiveRoot || !key.values.empty()) {
    out += '[';
    out += path;
    out += "]\n";
    for (const RegValue& value : key.values) AppendValue(out, value);
    out += '\n';
  }
  for (const RegKey& sub : key.subkeys) AppendKey(out, sub, path + '\\' + sub.name, false);
}

// ---------------------------------------------------------------------------
// Reading

bool IsBlank(char c) noexcept { return c == ' ' || c == '\t'; }

std::string_view TrimLeft(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) noexcept {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return FoldCase(static_cast<unsigned char>(x)) == FoldCase(static_cast<unsigned char>(y));
         });
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) noexcept {
  return text.size() >= prefix.size() && EqualsIgnoringAsciiCase(text.substr(0, prefix.size()), prefix);
}

int HexDigit(char c) noexcept {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

class Parser {
 public:
  Parser(std::string_view text, RegTree& tree) : text_(text), tree_(tree) {}

  bool Run(std::string& reason) {
    if (text_.substr(0, kUtf8Bom.size()) == kUtf8Bom) text_.remove_prefix(kUtf8Bom.size());
    if (text_.empty()) return Reject(reason, "the file is empty");
    // Our writer always ends the file with a line end; a last line without
    // one is what a write cut short leaves behind.
    if (text_.back() != '\n') return FailAt(reason, CountLines(), "the last line is cut off (no line end)");
    SplitLines();
    if (TrimRight(lines_[0]) != kHeader) return FailAt(reason, 1, "the first line is not \"" + std::string(kHeader) + "\"");
    for (line_ = 1; line_ < lines_.size(); ++line_) {
      const std::string_view line = TrimLeft(lines_[line_]);
      if (line.empty() || line.front() == ';') continue;
      std::string error;
      bool ok = false;
      if (line.front() == '[') {
        ok = ParseSection(TrimRight(line), error);
      } else if (line.front() == '"' || line.front() == '@') {
        ok = section_ ? ParseValue(line, error) : Reject(error, "a value before the first [key] section");
      } else {
        error = "unexpected text";
      }
      if (!ok) return FailAt(reason, line_ + 1, error);
    }
    return true;
  }

 private:
  static bool Reject(std::string& error, std::string what) {
    error = std::move(what);
    return false;
  }

  static bool FailAt(std::string& reason, std::size_t line, const std::string& what) {
    return Reject(reason, "line " + std::to_string(line) + ": " + what);
  }

  std::size_t CountLines() const { return static_cast<std::size_t>(std::count(text_.begin(), text_.end(), '\n')) + 1; }

  void SplitLines() {
    for (std::size_t start = 0; start < text_.size();) {
      const std::size_t end = text_.find('\n', start);
      std::string_view line = text_.substr(start, end - start);
      if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
      lines_.push_back(line);
      start = end + 1;
    }
  }

  bool ParseSection(std::string_view line, std::string& error) {
    if (line.size() < 2 || line.back() != ']') return Reject(error, "a [key] line without its closing ]");
    const std::string_view inner = line.substr(1, line.size() - 2);
    if (!inner.empty() && inner.front() == '-') return Reject(error, "key removal ([-key]) has no place in this file");
    const std::size_t slash = inner.find('\\');
    const std::string_view hiveName = inner.substr(0, slash);
    RegKey* key = nullptr;
    for (int hive = 0; hive < kHiveCount; ++hive) {
      if (EqualsIgnoringAsciiCase(hiveName, kHiveNames[hive])) key = &tree_.hives[hive];
    }
    if (!key) return Reject(error, "unknown hive \"" + std::string(hiveName) + "\"");
    if (slash != std::string_view::npos) {
      std::string_view rest = inner.substr(slash + 1);
      for (;;) {
        const std::size_t next = rest.find('\\');
        const std::string_view name = rest.substr(0, next);
        if (name.empty()) return Reject(error, "an empty key name in the path");
        key = &key->AddSubkey(name);
        if (next == std::string_view::npos) break;
        rest.remove_prefix(next + 1);
      }
    }
    section_ = key;
    return true;
  }

  // A quoted string with \\ and \" escapes; rest moves past the closing quote.
  static bool ParseQuoted(std::string_view& rest, std::string& out, std::string& error) {
    for (std::size_t i = 1; i < rest.size(); ++i) {
      const char c = rest[i];
      if (c == '"') {
        rest.remove_prefix(i + 1);
        return true;
      }
      if (c == '\\') {
        if (++i == rest.size()) break;
        if (rest[i] != '\\' && rest[i] != '"') return Reject(error, std::string("unknown escape \\") + rest[i]);
      }
      out += rest[i];
    }
    error = "a quoted string without its closing quote";
    return false;
  }

  bool ParseValue(std::string_view rest, std::string& error) {
    std::string name;
    if (rest.front() == '@') {
      rest.remove_prefix(1);
    } else if (!ParseQuoted(rest, name, error)) {
      return false;
    }
    rest = TrimLeft(rest);
    if (rest.empty() || rest.front() != '=') return Reject(error, "no '=' after the value name");
    rest = TrimLeft(rest.substr(1));

    std::uint32_t type = kRegBinary;
    std::vector<std::uint8_t> data;
    if (!rest.empty() && rest.front() == '"') {
      std::string text;
      if (!ParseQuoted(rest, text, error)) return false;
      type = kRegSz;
      data.assign(text.begin(), text.end());
      data.push_back(0);
    } else if (StartsWithIgnoringCase(rest, "dword:")) {
      rest.remove_prefix(6);
      std::uint32_t number = 0;
      for (int i = 0; i < 8; ++i) {
        const int digit = i < static_cast<int>(rest.size()) ? HexDigit(rest[i]) : -1;
        if (digit < 0) return Reject(error, "dword: needs eight hex digits");
        number = (number << 4) | static_cast<std::uint32_t>(digit);
      }
      rest.remove_prefix(8);
      type = kRegDword;
      data = {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8),
              static_cast<std::uint8_t>(number >> 16), static_cast<std::uint8_t>(number >> 24)};
    } else if (StartsWithIgnoringCase(rest, "hex")) {
      rest.remove_prefix(3);
      if (!rest.empty() && rest.front() == '(') {
        const std::size_t close = rest.find(')');
        if (close == std::string_view::npos || close < 2 || close > 9) return Reject(error, "a bad hex(type)");
        type = 0;
        for (const char c : rest.substr(1, close - 1)) {
          const int digit = HexDigit(c);
          if (digit < 0) return Reject(error, "a bad hex(type)");
          type = (type << 4) | static_cast<std::uint32_t>(digit);
        }
        rest.remove_prefix(close + 1);
      }
      if (rest.empty() || rest.front() != ':') return Reject(error, "no ':' after hex");
      rest.remove_prefix(1);
      if (!ParseHexBytes(rest, data, error)) return false;
    } else if (!rest.empty() && rest.front() == '-') {
      return Reject(error, "value removal (=-) has no place in this file");
    } else {
      return Reject(error, "unknown value data");
    }
    if (!TrimLeft(rest).empty()) return Reject(error, "text after the value");
    section_->SetValue(name, type, std::move(data));
    return true;
  }

  // "xx,xx,...", where a "\" after a comma carries the list to the next line.
  bool ParseHexBytes(std::string_view& rest, std::vector<std::uint8_t>& data, std::string& error) {
    rest = TrimLeft(rest);
    if (rest.empty()) return true;
    for (;;) {
      const int high = rest.size() >= 2 ? HexDigit(rest[0]) : -1;
      const int low = rest.size() >= 2 ? HexDigit(rest[1]) : -1;
      if (high < 0 || low < 0) return Reject(error, "a bad hex byte");
      data.push_back(static_cast<std::uint8_t>(high << 4 | low));
      rest = TrimLeft(rest.substr(2));
      if (rest.empty()) return true;
      if (rest.front() != ',') return Reject(error, "a bad hex byte");
      rest = TrimLeft(rest.substr(1));
      if (TrimRight(rest) == "\\") {
        if (line_ + 1 >= lines_.size()) return Reject(error, "hex data continues past the end of the file");
        rest = TrimLeft(lines_[++line_]);
      }
      if (rest.empty()) return Reject(error, "hex data ends with a comma");
    }
  }

  std::string_view text_;
  RegTree& tree_;
  std::vector<std::string_view> lines_;
  std::size_t line_ = 0;
  RegKey* section_ = nullptr;
};

}  // namespace

int CompareNames(std::string_view a, std::string_view b) noexcept {
  FoldedUnits left(a);
  FoldedUnits right(b);
  for (;;) {
    char16_t x = 0;
    char16_t y = 0;
    const bool hasX = left.Next(x);
    const bool hasY = right.Next(y);
    if (!hasX || !hasY) return static_cast<int>(hasX) - static_cast<int>(hasY);
    if (x != y) return x < y ? -1 : 1;
  }
}

RegValue* RegKey::FindValue(std::string_view valueName) { return Find(values, valueName); }
const RegValue* RegKey::FindValue(std::string_view valueName) const {
  return const_cast<RegKey*>(this)->FindValue(valueName);
}
RegKey* RegKey::FindSubkey(std::string_view keyName) { return Find(subkeys, keyName); }
const RegKey* RegKey::FindSubkey(std::string_view keyName) const {
  return const_cast<RegKey*>(this)->FindSubkey(keyName);
}

bool RegKey::SetValue(std::string_view valueName, std::uint32_t type, std::vector<std::uint8_t> data) {
  const auto it = LowerBound(values, valueName);
  if (it != values.end() && CompareNames(it->name, valueName) == 0) {
    if (it->type == type && it->data == data) return false;
    it->type = type;
    it->data = std::move(data);
    return true;
  }
  values.insert(it, RegValue{std::string(valueName), type, std::move(data)});
  return true;
}

bool RegKey::RemoveValue(std::string_view valueName) { return Remove(values, valueName); }

RegKey& RegKey::AddSubkey(std::string_view keyName, bool* created) {
  auto it = LowerBound(subkeys, keyName);
  const bool missing = it == subkeys.end() || CompareNames(it->name, keyName) != 0;
  if (missing) it = subkeys.insert(it, RegKey{std::string(keyName), {}, {}});
  if (created) *created = missing;
  return *it;
}

bool RegKey::RemoveSubkey(std::string_view keyName) { return Remove(subkeys, keyName); }

RegTree::RegTree() {
  for (int hive = 0; hive < kHiveCount; ++hive) hives[hive].name = kHiveNames[hive];
}

const char* HiveName(int hive) noexcept { return hive >= 0 && hive < kHiveCount ? kHiveNames[hive] : ""; }

bool ParseRegText(std::string_view text, RegTree& tree, std::string& reason) {
  return Parser(text, tree).Run(reason);
}

std::string FormatRegText(const RegTree& tree) {
  std::string out(kHeader);
  out += "\n\n";
  for (const RegKey& hive : tree.hives) AppendKey(out, hive, hive.name, true);
  return out;
}

}  // namespace qorvane::registry
