// What the qorvane tool needs from the console, per platform: the arguments
// as UTF-8 (Windows hands main() the ANSI code page, which loses attachment
// names outside it) and output bytes written as they are (no "\r\n" for
// "\n"), so the tool prints the same bytes on every platform.
#pragma once

#include <string>
#include <vector>

namespace qorvane::tool {

void PrepareConsole();
std::vector<std::string> CommandLineArguments(int argc, char** argv);

}  // namespace qorvane::tool
