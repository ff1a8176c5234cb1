// The registry as a tree of keys and values, and its .reg export text.
//
// The POSIX registry keeps its hives in one file written in the text that
// regedit exports ("Windows Registry Editor Version 5.00", [key] sections,
// "name"=data lines), so a person can read and diff it. This half only turns
// text into a tree and back; the file, its lock and the handles live in
// registry_posix.cpp. It is portable so the format is tested on both builds.
//
// Names compare the way the registry compares them: case-insensitively, in
// the order wine enumerates (each character folded to lower case, then by
// UTF-16 code unit, a shorter name first). A key or value keeps the case it
// was created with.
//
// A tree is never deeper than Windows allows (MaxKeyDepth): ParseRegText
// refuses deeper keys and the registry refuses to create them, so walking a
// tree recursively, copying and destroying it stay within a few hundred
// frames whatever the file held.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"

namespace qorvane::registry {

// < 0, 0 or > 0 as a sorts before, equal to or after b. Names are UTF-8;
// bytes that are not UTF-8 still compare, each as its own character.
int CompareNames(std::string_view a, std::string_view b) noexcept;

// Windows' limits: 255 characters to a key name, 16383 to a value name
// (counted in UTF-16 units), and 512 levels to a key, counted from the
// registry's own root above the hives.
inline constexpr std::size_t kMaxKeyNameLength = 255;
inline constexpr std::size_t kMaxValueNameLength = 16383;
inline constexpr std::size_t kMaxKeyLevels = 512;
// The most names a key's path below hive may have: the hives themselves sit
// at levels 4 (HKEY_CLASSES_ROOT, under HKLM\SOFTWARE), 3 (HKEY_CURRENT_USER,
// under HKEY_USERS) and 2 (HKEY_LOCAL_MACHINE), so 508, 509 and 510.
std::size_t MaxKeyDepth(int hive) noexcept;

struct RegValue {
  std::string name;  // "" is the key's default value ("@" in the text)
  std::uint32_t type = kRegNone;
  std::vector<std::uint8_t> data;  // exactly the bytes stored, terminator included if given

  bool operator==(const RegValue&) const = default;
};

struct RegKey {
  std::string name;
  std::vector<RegValue> values;  // in CompareNames order
  std::vector<RegKey> subkeys;   // in CompareNames order

  RegValue* FindValue(std::string_view valueName);
  const RegValue* FindValue(std::string_view valueName) const;
  RegKey* FindSubkey(std::string_view keyName);
  const RegKey* FindSubkey(std::string_view keyName) const;
  // Stores the data under valueName, keeping the name's old case when the
  // value exists. True when anything changed.
  bool SetValue(std::string_view valueName, std::uint32_t type, std::vector<std::uint8_t> data);
  bool RemoveValue(std::string_view valueName);
  // The sub-key, added when missing (created then tells which).
  RegKey& AddSubkey(std::string_view keyName, bool* created = nullptr);
  bool RemoveSubkey(std::string_view keyName);

  bool operator==(const RegKey&) const = default;
};

inline constexpr int kHiveCount = 3;

// The three hives in the order of their handles (kClassesRoot first).
struct RegTree {
  RegTree();
  RegKey hives[kHiveCount];

  bool operator==(const RegTree&) const = default;
};

// The hive's full name, e.g. "HKEY_CURRENT_USER"; index as in RegTree.
const char* HiveName(int hive) noexcept;

// Reads .reg text into tree (which starts empty), in time linear in the text
// whatever order its sections come in. Sections and values that name the
// same key or value in another case merge into one, the first spelling kept,
// the last data kept. False with a reason naming the line when the text is
// not a whole export (cut off, unknown syntax, bad escapes) or holds what
// Windows would not: a name too long, a key nested too deep.
bool ParseRegText(std::string_view text, RegTree& tree, std::string& reason);

// The tree as .reg text, UTF-8, keys and values in CompareNames order. Each
// key that holds values, or holds nothing at all, has its section; a key that
// only holds sub-keys is made by theirs when the text is read, which keeps a
// deep tree's text as long as its paths, not as their square. Hive roots get
// a section only for their values. Strings that are text with one terminator
// are written as "text"; any other string data is kept byte for byte as
// hex(1):.. so it reads back the same.
std::string FormatRegText(const RegTree& tree);

}  // namespace qorvane::registry
