// Windows console: the wide command line converted to UTF-8, and stdout and
// stderr in binary mode so that "\n" stays one byte, as on Linux; scripts
// comparing the tool's output then need no platform case.
#include "tools/console.h"

#include <windows.h>
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include "platform/win_text.h"

#include <cstdio>

namespace qorvane::tool {


void PrepareConsole() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
}

std::vector<std::string> CommandLineArguments(int argc, char** argv) {
  int count = 0;
  LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) return std::vector<std::string>(argv + 1, argv + argc);
  std::vector<std::string> args;
  for (int i = 1; i < count; ++i) args.push_back(Utf8FromWide(wide[i]));
  LocalFree(wide);
  return args;
}

}  // namespace qorvane::tool
