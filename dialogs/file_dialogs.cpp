// The attachments dialog's pickers.
#include "dialogs/file_dialogs.h"

#include "infra/error_trap.h"
#include "platform/file_picker.h"

namespace mFileDialogs {
namespace {
constexpr std::size_t kFileNameChars = 255;
constexpr std::size_t kFolderPathChars = 260;
}  // namespace

std::string OpenFileDialog() {
  std::string path;
  qorvane::Trap("mFileDialogs.OpenFileDialog", [&] {
    path = qorvane::CurrentFilePicker().OpenFile({"Open File", "All Files (*.*)", "*.*", kFileNameChars});
  });
  return path;
}

std::string OpenFolderDialog() {
  std::string path;
  qorvane::Trap("mFileDialogs.OpenFolderDialog",
                [&] { path = qorvane::CurrentFilePicker().OpenFolder(kFolderPathChars); });
  return path;
}

}  // namespace mFileDialogs
