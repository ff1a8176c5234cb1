// Stands in for a running Outlook while the installer test upgrades: holds
// the add-in DLL loaded (so that Windows refuses to overwrite or delete it)
// and shows a main window of Outlook's window class, until told to stop.
//
//   outlook_stand_in DLL READY_FILE STOP_FILE
//
// Creates READY_FILE once the DLL is loaded, then waits (at most five
// minutes) for STOP_FILE to appear. Exit codes: 0 stopped, 1 the DLL could
// not be loaded, 2 bad arguments, 3 gave up waiting.
#include <windows.h>

#include <cstdio>

namespace {

bool Exists(const wchar_t* path) { return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES; }

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: outlook_stand_in DLL READY_FILE STOP_FILE\n");
    return 2;
  }
  HMODULE addIn = LoadLibraryW(argv[1]);
  if (!addIn) {
    std::fprintf(stderr, "outlook_stand_in: cannot load the DLL (error %lu)\n", GetLastError());
    return 1;
  }
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = DefWindowProcW;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = L"rctrl_renwnd32";
  RegisterClassW(&windowClass);
  HWND window = CreateWindowW(L"rctrl_renwnd32", L"Inbox - Outlook", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr,
                              nullptr, windowClass.hInstance, nullptr);

  HANDLE ready = CreateFileW(argv[2], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (ready != INVALID_HANDLE_VALUE) CloseHandle(ready);

  int result = 3;
  for (int waited = 0; waited < 5 * 60 * 10; ++waited) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    if (Exists(argv[3])) {
      result = 0;
      break;
    }
    Sleep(100);
  }
  if (window) DestroyWindow(window);
  FreeLibrary(addIn);
  return result;
}
