// Entry point of the qorvane command-line tool; everything it does lives in
// the qorvane_tool library so that tests can run it in-process.
#include <iostream>

#include "tools/commands.h"
#include "tools/console.h"

int main(int argc, char** argv) {
  qorvane::tool::PrepareConsole();
  const auto args = qorvane::tool::CommandLineArguments(argc, argv);
  const int code = qorvane::tool::RunTool(args, std::cout, std::cerr);
  std::cout.flush();
  return code;
}
