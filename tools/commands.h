// The qorvane tool's commands. Each takes the arguments after its name and
// writes to the given streams, so tests can run a command in-process; each
// returns the exit code (0 done, 1 the input could not be read, 2 usage).
// UsageError escapes to RunTool, which reports it.
#pragma once

#include <ostream>
#include <span>
#include <string>

namespace qorvane::tool {

using Args = std::span<const std::string>;

int RunOccurrences(Args args, std::ostream& out, std::ostream& err);
int RunDescribe(Args args, std::ostream& out, std::ostream& err);
int RunEncode(Args args, std::ostream& out, std::ostream& err);
int RunDecode(Args args, std::ostream& out, std::ostream& err);
int RunRegistry(Args args, std::ostream& out, std::ostream& err);
int RunIgnoreList(Args args, std::ostream& out, std::ostream& err);
int RunDemo(Args args, std::ostream& out, std::ostream& err);
int RunSelfCheck(Args args, std::ostream& out, std::ostream& err);

// The whole tool: global options, dispatch, error reporting. A run leaves
// the process's locale, first day of the week, client version and log
// handling as it found them, so it may run in-process again and again.
int RunTool(Args args, std::ostream& out, std::ostream& err);

// True when --help appears among the arguments (before any parsing, so that
// "--help" works even next to a mistake).
bool WantsHelp(Args args);

}  // namespace qorvane::tool
