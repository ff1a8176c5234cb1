// The Windows shell: ShellExecuteW "open", and HTML Help for help pages.
#include <windows.h>
#include <shellapi.h>

#include <string>

#include "platform/shell.h"
#include "platform/win_text.h"

namespace qorvane {
namespace {

// HtmlHelpW's command that shows one topic ("file.chm::/page.html").
constexpr UINT kHhDisplayTopic = 0;
using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

// hhctrl.ocx is loaded on first use and kept: the help window it opens lives
// on after the call returns. Missing (no help viewer installed): null.
HtmlHelpFunction HtmlHelp() {
  static const HtmlHelpFunction function = [] {
    HMODULE module = LoadLibraryW(L"hhctrl.ocx");
    return module ? reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(GetProcAddress(module, "HtmlHelpW")))
                  : nullptr;
  }();
  return function;
}

bool ShellOpen(const std::wstring& target) {
  const auto result = reinterpret_cast<INT_PTR>(
      ShellExecuteW(GetActiveWindow(), L"open", target.c_str(), nullptr, L"C:\\", SW_SHOWNORMAL));
  // ShellExecute reports success as a value above 32.
  return result > 32;
}

class WindowsShell final : public ShellService {
 public:
  bool Open(const std::string& target) override { return ShellOpen(WideFromUtf8(target)); }

  bool ShowHelpTopic(const std::string& helpFile, const std::string& page) override {
    const std::wstring file = WideFromUtf8(helpFile);
    if (const HtmlHelpFunction htmlHelp = HtmlHelp()) {
      const std::wstring topic = file + L"::/" + WideFromUtf8(page);
      if (htmlHelp(GetActiveWindow(), topic.c_str(), kHhDisplayTopic, 0)) return true;
    }
    return ShellOpen(file);
  }
};

}  // namespace

ShellService& PlatformShell() {
  static WindowsShell shell;
  return shell;
}

}  // namespace qorvane
