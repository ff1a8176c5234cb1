// The common open-file dialog (GetOpenFileNameW) and the shell's folder
// browser (SHBrowseForFolderW), owned by the active window.
#include <windows.h>
#include <commdlg.h>
#include <shlobj.h>

#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "platform/file_picker.h"
#include "platform/win_text.h"

namespace qorvane {
namespace {

// The text up to its first terminator.
std::string Utf8UpToNull(const std::vector<wchar_t>& buffer) { return Utf8FromWide(buffer.data()); }

class WindowsPicker final : public FilePickerService {
 public:
  std::string OpenFile(const OpenFileRequest& request) override {
    std::vector<wchar_t> path(request.bufferChars + 1, L'\0');
    // The filter is pairs of texts, each ending with a null, and one more
    // null after the last pair.
    std::wstring filter = WideFromUtf8(request.filterName);
    filter.push_back(L'\0');
    filter += WideFromUtf8(request.filterPattern);
    filter.push_back(L'\0');
    const std::wstring title = WideFromUtf8(request.title);

    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = GetActiveWindow();
    dialog.lpstrFilter = filter.c_str();
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(request.bufferChars);
    dialog.lpstrTitle = title.c_str();
    if (GetOpenFileNameW(&dialog)) return Utf8UpToNull(path);
    // Zero: the user cancelled; anything else is the dialog's own failure
    // (FNERR_BUFFERTOOSMALL for a path longer than the buffer).
    if (const DWORD error = CommDlgExtendedError())
      Raise(err::kInvalidCall, "The open-file dialog failed (common dialog error " + std::to_string(error) + ")");
    return {};
  }

  std::string OpenFolder(std::size_t bufferChars) override {
    BROWSEINFOW browse{};
    browse.hwndOwner = GetActiveWindow();
    browse.ulFlags = BIF_RETURNONLYFSDIRS;
    PIDLIST_ABSOLUTE items = SHBrowseForFolderW(&browse);
    if (!items) return {};
    // SHGetPathFromIDListW writes at most MAX_PATH characters.
    std::vector<wchar_t> path(bufferChars < MAX_PATH ? MAX_PATH : bufferChars, L'\0');
    const BOOL found = SHGetPathFromIDListW(items, path.data());
    CoTaskMemFree(items);
    return found ? Utf8UpToNull(path) : std::string();
  }
};

}  // namespace

FilePickerService& PlatformFilePicker() {
  static WindowsPicker picker;
  return picker;
}

}  // namespace qorvane
