// The registry tree, its name order and the .reg export text it is kept in.
#include "platform/reg_text.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <utility>

#include "base/runtime_text.h"
#include "base/utf8_text.h"

namespace qorvane::registry {
namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";
constexpr const char* kHiveNames[kHiveCount] = {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"};
// The level of each hive's root, counted from the registry's own root.
constexpr std::size_t kHiveLevels[kHiveCount] = {4, 3, 2};

// ---------------------------------------------------------------------------
// Names

// The folded UTF-16 code units of a name, one at a time. Wine folds names to
// lower case before it compares them, so "_" (0x5F) sorts before "a" and "A"
// alike. A byte that is not UTF-8 stands for itself (as U+DC00 + byte), so
// two different malformed names never compare equal.
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
    const char32_t decoded = DecodeUtf8(text_, pos_, valid);
    const char32_t cp = valid ? LowerCase(decoded) : decoded;
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
    DecodeUtf8(text, pos, valid);
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

// path holds the key's full path on entry and again on return; the sub-keys
// extend it in place rather than each getting a copy.
void AppendKey(std::string& out, const RegKey& key, std::string& path, bool hiveRoot) {
  if (!key.values.empty() || (!hiveRoot && key.subkeys.empty())) {
    out += '[';
    out += path;
    out += "]\n";
    for (const RegValue& value : key.values) AppendValue(out, value);
    out += '\n';
  }
  const std::size_t length = path.size();
  for (const RegKey& sub : key.subkeys) {
    path += '\\';
    path += sub.name;
    AppendKey(out, sub, path, false);
    path.resize(length);
  }
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

bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) noexcept {
  return text.size() >= prefix.size() && EqualsIgnoringCase(text.substr(0, prefix.size()), prefix);
}

int HexDigit(char c) noexcept {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The name a key or value is merged under: its owner, then its folded code
// units, so that two names share a key exactly when CompareNames finds them
// equal.
std::string MergeKey(std::uint32_t owner, std::string_view name) {
  std::string key(reinterpret_cast<const char*>(&owner), sizeof owner);
  FoldedUnits units(name);
  for (char16_t unit = 0; units.Next(unit);) {
    key += static_cast<char>(unit & 0xFF);
    key += static_cast<char>(unit >> 8);
  }
  return key;
}

// Sections may come in any order (a hand-edited or reversed file), so keys
// and values are first collected unsorted and put in name order once at the
// end: sorting each key's children once keeps the whole read at n log n
// where inserting each in place would be quadratic. A key named again is
// found through a hash table, and the path of the section before is kept,
// since the next section mostly shares all but its last name. Values named
// again merge when they are sorted.
class Parser {
 public:
  Parser(std::string_view text, RegTree& tree) : text_(text), tree_(tree) {
    for (int hive = 0; hive < kHiveCount; ++hive) keys_.push_back(PendingKey{kHiveNames[hive], {}, {}});
  }

  bool Run(std::string& reason) {
    if (text_.substr(0, kUtf8Bom.size()) == kUtf8Bom) text_.remove_prefix(kUtf8Bom.size());
    if (text_.empty()) return Reject(reason, "the file is empty");
    // Our writer always ends the file with a line end; a last line without
    // one is what a write cut short leaves behind.
    if (text_.back() != '\n') return FailAt(reason, CountLines(), "the last line is cut off (no line end)");
    SplitLines();
    childIndex_.reserve(lines_.size() / 2);
    if (TrimRight(lines_[0]) != kHeader) return FailAt(reason, 1, "the first line is not \"" + std::string(kHeader) + "\"");
    for (line_ = 1; line_ < lines_.size(); ++line_) {
      const std::string_view line = TrimLeft(lines_[line_]);
      if (line.empty() || line.front() == ';') continue;
      std::string error;
      bool ok = false;
      if (line.front() == '[') {
        ok = ParseSection(TrimRight(line), error);
      } else if (line.front() == '"' || line.front() == '@') {
        ok = section_ != kNoSection ? ParseValue(line, error) : Reject(error, "a value before the first [key] section");
      } else {
        error = "unexpected text";
      }
      if (!ok) return FailAt(reason, line_ + 1, error);
    }
    BuildTree();
    return true;
  }

 private:
  static constexpr std::uint32_t kNoSection = UINT32_MAX;

  struct PendingKey {
    std::string name;
    std::vector<RegValue> values;         // in the order read, repeats included
    std::vector<std::uint32_t> children;  // indexes into keys_, in the order first seen
  };

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

  // The child of parent with that name, added when missing.
  std::uint32_t ChildOf(std::uint32_t parent, std::string_view name) {
    const auto [it, added] = childIndex_.try_emplace(MergeKey(parent, name), static_cast<std::uint32_t>(keys_.size()));
    if (added) {
      keys_.push_back(PendingKey{std::string(name), {}, {}});
      keys_[parent].children.push_back(it->second);
    }
    return it->second;
  }

  bool ParseSection(std::string_view line, std::string& error) {
    if (line.size() < 2 || line.back() != ']') return Reject(error, "a [key] line without its closing ]");
    const std::string_view inner = line.substr(1, line.size() - 2);
    if (!inner.empty() && inner.front() == '-') return Reject(error, "key removal ([-key]) has no place in this file");
    const std::size_t slash = inner.find('\\');
    const std::string_view hiveName = inner.substr(0, slash);
    int hive = -1;
    for (int h = 0; h < kHiveCount; ++h) {
      if (EqualsIgnoringCase(hiveName, kHiveNames[h])) hive = h;
    }
    if (hive < 0) return Reject(error, "unknown hive \"" + std::string(hiveName) + "\"");
    auto key = static_cast<std::uint32_t>(hive);
    if (hive != lastHive_) lastPath_.clear();
    lastHive_ = hive;
    std::size_t level = 0;
    const auto follow = [&](std::string_view name) {
      if (level < lastPath_.size() && lastPath_[level].first == name) {
        key = lastPath_[level].second;
      } else {
        lastPath_.resize(level);
        key = ChildOf(key, name);
        lastPath_.emplace_back(name, key);
      }
      ++level;
    };
    if (slash != std::string_view::npos) {
      std::string_view rest = inner.substr(slash + 1);
      // Checked before any key is made, so a path a million levels deep costs
      // one scan of its line.
      const auto depth = static_cast<std::size_t>(std::count(rest.begin(), rest.end(), '\\')) + 1;
      if (depth > MaxKeyDepth(hive)) {
        return Reject(error, "a key nested " + std::to_string(depth) + " levels below " + kHiveNames[hive] +
                                 ", deeper than Windows allows (" + std::to_string(MaxKeyDepth(hive)) + ")");
      }
      for (;;) {
        const std::size_t next = rest.find('\\');
        const std::string_view name = rest.substr(0, next);
        if (name.empty()) return Reject(error, "an empty key name in the path");
        if (TextLength(name) > kMaxKeyNameLength) {
          return Reject(error, "a key name longer than " + std::to_string(kMaxKeyNameLength) + " characters");
        }
        follow(name);
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
    if (TextLength(name) > kMaxValueNameLength) {
      return Reject(error, "a value name longer than " + std::to_string(kMaxValueNameLength) + " characters");
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
    keys_[section_].values.push_back(RegValue{std::move(name), type, std::move(data)});
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

  // Values in name order, each name once: the first spelling read, with the
  // data read last.
  static std::vector<RegValue> MergedValues(std::vector<RegValue> values) {
    const auto byName = [](const RegValue& a, const RegValue& b) { return CompareNames(a.name, b.name) < 0; };
    // Files we wrote are in order already; checking is cheaper than sorting.
    if (!std::is_sorted(values.begin(), values.end(), byName)) std::stable_sort(values.begin(), values.end(), byName);
    std::vector<RegValue> merged;
    merged.reserve(values.size());
    for (RegValue& value : values) {
      if (!merged.empty() && CompareNames(merged.back().name, value.name) == 0) {
        merged.back().type = value.type;
        merged.back().data = std::move(value.data);
      } else {
        merged.push_back(std::move(value));
      }
    }
    return merged;
  }

  // Puts every key's children and values in name order and moves the keys
  // into the tree. A child is always collected after its parent, so going
  // from the last key to the first finishes every child before its parent.
  void BuildTree() {
    const auto byName = [](const RegKey& a, const RegKey& b) { return CompareNames(a.name, b.name) < 0; };
    std::vector<RegKey> built(keys_.size());
    for (std::size_t i = keys_.size(); i-- > 0;) {
      PendingKey& pending = keys_[i];
      RegKey& key = built[i];
      key.name = std::move(pending.name);
      key.values = MergedValues(std::move(pending.values));
      key.subkeys.reserve(pending.children.size());
      for (const std::uint32_t child : pending.children) key.subkeys.push_back(std::move(built[child]));
      if (!std::is_sorted(key.subkeys.begin(), key.subkeys.end(), byName)) {
        std::sort(key.subkeys.begin(), key.subkeys.end(), byName);
      }
    }
    for (int hive = 0; hive < kHiveCount; ++hive) tree_.hives[hive] = std::move(built[hive]);
  }

  std::string_view text_;
  RegTree& tree_;
  std::vector<std::string_view> lines_;
  std::size_t line_ = 0;
  std::vector<PendingKey> keys_;  // the three hives first
  std::unordered_map<std::string, std::uint32_t> childIndex_;
  // The last section's hive, the names of its path below and their keys.
  int lastHive_ = -1;
  std::vector<std::pair<std::string_view, std::uint32_t>> lastPath_;
  std::uint32_t section_ = kNoSection;
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

std::size_t MaxKeyDepth(int hive) noexcept {
  return hive >= 0 && hive < kHiveCount ? kMaxKeyLevels - kHiveLevels[hive] : 0;
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
  for (const RegKey& hive : tree.hives) {
    std::string path = hive.name;
    AppendKey(out, hive, path, true);
  }
  return out;
}

}  // namespace qorvane::registry
