// The add-in's own folder, where "Qorvane.Log" and "Help.chm" live.
//
// Windows: the folder of the module that holds the add-in code (the DLL, or
// the executable in tests). POSIX: the folder of the executable, or
// $QORVANE_HOME when set. A folder given with SetAddinFolder wins over both
// (the host passes it at start-up; tests point it at a temporary folder).
// The result never ends with a separator.
#pragma once

#include <string>

namespace qorvane {

std::string AddinFolder();
// An empty folder clears the override.
void SetAddinFolder(std::string folder);
// The folder SetAddinFolder gave, "" when none.
std::string AddinFolderOverride();

// The platform's path separator as text ("\\" on Windows, "/" elsewhere).
const char* PathSeparator() noexcept;

}  // namespace qorvane
