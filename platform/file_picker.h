// The platform's pickers for a file and a folder, which the attachments
// dialog offers through mFileDialogs (dialogs/file_dialogs.h).
//
// Windows: the common open-file dialog and the shell's folder browser,
// owned by the active window. POSIX: no desktop to show them on; both
// return "" as a cancelled picker does.
//
// Lifecycle: the platform's pickers are current until SetFilePicker installs
// others (tests answer with paths); nullptr restores them. UI thread only.
#pragma once

#include <cstddef>
#include <string>

namespace qorvane {

struct OpenFileRequest {
  std::string title;          // the dialog's caption
  std::string filterName;     // "All Files (*.*)"
  std::string filterPattern;  // "*.*"
  std::size_t bufferChars = 0;  // room for the chosen path, terminator included
};

class FilePickerService {
 public:
  virtual ~FilePickerService() = default;
  // The chosen file's full path; "" when the user cancels. Raises a
  // RuntimeError when the dialog itself fails.
  virtual std::string OpenFile(const OpenFileRequest& request) = 0;
  // The chosen file-system folder, cut at its terminator; "" on cancel.
  virtual std::string OpenFolder(std::size_t bufferChars) = 0;
};

FilePickerService& PlatformFilePicker();
FilePickerService& CurrentFilePicker();
void SetFilePicker(FilePickerService* picker);

}  // namespace qorvane
