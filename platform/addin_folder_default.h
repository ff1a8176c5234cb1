// Internal to the platform library: the folder the add-in lives in when no
// override is set, provided by addin_folder_posix.cpp / addin_folder_win.cpp.
#pragma once

#include <string>

namespace qorvane::detail {

// Never ends with a separator; empty when the system cannot tell.
std::string DefaultAddinFolder();

}  // namespace qorvane::detail
