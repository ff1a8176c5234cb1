// Fuzz target: the qorvane tool's command line, run in-process. The input is
// the argument list, one argument a line.
//
// Whatever the arguments, the tool must not crash or hang, must exit 0, 1 or
// 2, and must leave the process as it found it (locale, first day of the
// week, client version, log target), as a test or script host relies on.
// Each run starts from an empty registry file of its own.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "infra/cdebug.h"
#include "platform/locale.h"
#include "schedule/first_dow.h"
#include "store/main_options.h"
#include "tools/commands.h"

using qorvane::fuzz::Check;

namespace {

std::string State() {
  return qorvane::CurrentLocale().Name() + "|" + std::to_string(qorvane::FirstDOW()) + "|" + g_OutlookVersion +
         "|" + std::to_string(g_debug.DebugTarget());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qorvane::fuzz::QuietLog();
  qorvane::fuzz::UseScratchRegistry();
  qorvane::SelectLocale("en-US");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> args;
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  for (std::string line; std::getline(lines, line);) args.push_back(line);

  qorvane::fuzz::RemoveScratchRegistry();
  const std::string state = State();
  std::ostringstream out, err;
  const int code = qorvane::tool::RunTool(args, out, err);
  Check(code == 0 || code == 1 || code == 2, "exit code " + std::to_string(code));
  Check(State() == state, "the tool changed the process's state: " + state + " -> " + State());
  return 0;
}
