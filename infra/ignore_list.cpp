// CIgnoreList and its settings.
#include "infra/ignore_list.h"

#include "base/runtime_text.h"
#include "infra/error_trap.h"
#include "infra/settings.h"

CIgnoreList g_IgnoreList;

namespace {

// How a name is held and looked up: LCase(Trim(name)), as the runtime does.
std::string Normalised(std::string_view name) { return qorvane::LCase(qorvane::Trim(name)); }

}  // namespace

bool CIgnoreList::Find(std::string_view name) const { return keys_.count(Normalised(name)) != 0; }

std::string CIgnoreList::ToString() const {
  std::string text;
  for (const std::string& name : names_) {
    if (!text.empty()) text += ", ";
    text += name;
  }
  return text;
}

void CIgnoreList::FromString(std::string_view text) {
  names_.clear();
  keys_.clear();
  for (;;) {
    const std::size_t comma = text.find(',');
    Add(text.substr(0, comma));
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
}

bool CIgnoreList::Add(std::string_view name) {
  std::string key = Normalised(name);
  if (key.empty() || keys_.count(key)) return false;
  keys_.insert(key);
  names_.push_back(std::move(key));
  return true;
}

void CIgnoreList::Load() {
  using namespace qorvane::settings;
  qorvane::Trap("CIgnoreList.Load", [&] {
    FromString(GetSetting(kAppName, kSettingsSection, kIgnoreList, kDefaultList));
    m_IgnoreSysHiden = GetSetting(kAppName, kSettingsSection, kIgnoreSysHiden, "1") == "1";
  });
}

void CIgnoreList::Save() const {
  using namespace qorvane::settings;
  qorvane::Trap("CIgnoreList.Save", [&] {
    SaveSetting(kAppName, kSettingsSection, kIgnoreList, ToString());
    SaveSetting(kAppName, kSettingsSection, kIgnoreSysHiden, m_IgnoreSysHiden ? "1" : "0");
  });
}
