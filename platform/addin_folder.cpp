// The add-in folder override; the default comes from the platform half.
#include "platform/addin_folder.h"

#include <string_view>
#include <utility>

#include "platform/addin_folder_default.h"

namespace qorvane {

namespace {

std::string g_override;

// Either separator is stripped: a folder typed on Windows may use '/'.
bool IsSeparator(char c) { return c == '/' || c == '\\' || c == PathSeparator()[0]; }

}  // namespace

std::string AddinFolder() {
  if (!g_override.empty()) return g_override;
  return detail::DefaultAddinFolder();
}

std::string AddinFolderOverride() { return g_override; }

void SetAddinFolder(std::string folder) {
  // A root folder keeps its one separator: "/" must not become "".
  while (folder.size() > 1 && IsSeparator(folder.back())) folder.pop_back();
  g_override = std::move(folder);
}

}  // namespace qorvane
