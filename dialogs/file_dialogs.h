// mFileDialogs: the pickers the attachments dialog offers, through the
// platform's file picker service (platform/file_picker.h). Each returns ""
// when the user cancels; a failure is logged under its own label and also
// gives "".
#pragma once

#include <string>

namespace mFileDialogs {

// The open-file dialog: title "Open File", the one filter "All Files (*.*)"
// on "*.*", room for a path of 255 characters.
std::string OpenFileDialog();

// The folder browser, restricted to file-system folders; the path is cut at
// its terminator (room for 260 characters).
std::string OpenFolderDialog();

}  // namespace mFileDialogs
