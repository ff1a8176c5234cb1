// Runs the qorvane tool in-process and keeps what it printed.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tools/commands.h"

namespace qorvane::tool::testing {

struct Result {
  int code;
  std::string out;
  std::string err;
};

inline Result Invoke(std::vector<std::string> args) {
  std::ostringstream out, err;
  const int code = RunTool(args, out, err);
  return {code, out.str(), err.str()};
}

}  // namespace qorvane::tool::testing
