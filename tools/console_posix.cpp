// POSIX console: arguments are already the bytes the user typed (UTF-8 in
// any sane locale) and output is never translated.
#include "tools/console.h"

namespace qorvane::tool {

void PrepareConsole() {}

std::vector<std::string> CommandLineArguments(int argc, char** argv) {
  return std::vector<std::string>(argv + 1, argv + argc);
}

}  // namespace qorvane::tool
