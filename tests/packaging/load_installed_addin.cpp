// Loads the add-in the setup installed, the way Outlook does at start-up:
// from the user's add-in list and the per-user class registration (the host
// program, tests/host), then connects it, starts it, shuts the client down
// and checks that the DLL let go.
//
//   load_installed_addin EXPECTED_DLL
//
// Exit code 0 when "Qorvane.Connect" resolved per user to EXPECTED_DLL, was
// loaded and connected, showed no dialog, and its DLL was unloaded after the
// client stopped; 1 otherwise, with the reason on stderr; 2 bad arguments.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <string>

#include "tests/host/addin_loader.h"
#include "tests/host/dialog_driver.h"
#include "tests/host/host_outlook.h"
#include "win/com/apartment.h"
#include "win/com/wide_text.h"

namespace {

constexpr wchar_t kProgId[] = L"Qorvane.Connect";

int Fail(const std::string& why) {
  std::fprintf(stderr, "load_installed_addin: %s\n", why.c_str());
  return 1;
}

std::string Narrow(const std::wstring& text) { return qorvane::Utf8FromWide(text.c_str()); }

int LoadAndStop(const std::wstring& expectedDll) {
  const auto entry = host::FindClass(kProgId);
  if (!entry) return Fail("Qorvane.Connect has no class registered");
  if (!entry->perUser) return Fail("the class is registered for the machine, not for the user");
  if (CompareStringOrdinal(entry->server.c_str(), -1, expectedDll.c_str(), -1, TRUE) != CSTR_EQUAL)
    return Fail("the class names " + Narrow(entry->server) + ", not " + Narrow(expectedDll));

  // A dialog at start-up would stop a real Outlook: close it, and fail.
  host::DialogDriver dialogs([](HWND dialog, const host::SeenDialog&) {
    host::DialogDriver::Press(dialog, GetDlgItem(dialog, IDCANCEL) ? IDCANCEL : IDOK);
  });
  {
    host::HostOutlook outlook;
    outlook.Start();
    if (!outlook.AddInObject(kProgId)) return Fail("the client did not load Qorvane.Connect");
    outlook.Stop();
  }
  if (!dialogs.Seen().empty())
    return Fail("a dialog came up: " + dialogs.Seen().front().title + ": " + dialogs.Seen().front().text);
  if (GetModuleHandleW(expectedDll.c_str())) return Fail("the DLL is still loaded after the client stopped");
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: load_installed_addin EXPECTED_DLL\n");
    return 2;
  }
  qorvane::com::ComApartment apartment;
  try {
    return LoadAndStop(argv[1]);
  } catch (const std::exception& error) {
    return Fail(std::string("the host raised: ") + error.what());
  }
}
