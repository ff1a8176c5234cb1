// CIgnoreList: the names of files that an attached folder's expansion skips,
// and whether system and hidden files are skipped too. It is a setting (kept
// in the per-user settings store) and the filter sending applies; the
// attachments dialog only edits it. One program-wide instance, g_IgnoreList,
// is created and loaded when the add-in starts.
//
// Names are held as LCase(Trim(name)): blanks taken off, every letter in
// lower case; each once, in the order added. Matching is on the whole name,
// without wildcards.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

class CIgnoreList {
 public:
  static constexpr const char* kDefaultList = "thumbs.db";

  bool Find(std::string_view name) const;
  // The names joined by ", ".
  std::string ToString() const;
  // Replaces the list with the comma-separated names of text.
  void FromString(std::string_view text);

  bool IgnoreSysHiden() const noexcept { return m_IgnoreSysHiden; }
  void IgnoreSysHiden(bool value) noexcept { m_IgnoreSysHiden = value; }

  // False for an empty name or one already held.
  bool Add(std::string_view name);

  // From and to the per-user settings store ("IgnoreList", "IgnoreSysHiden").
  void Load();
  void Save() const;

  const std::vector<std::string>& Names() const noexcept { return names_; }

 private:
  std::vector<std::string> names_;
  std::unordered_set<std::string> keys_;
  bool m_IgnoreSysHiden = false;
};

extern CIgnoreList g_IgnoreList;
