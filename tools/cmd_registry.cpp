// qorvane registry: look at and change what the add-in keeps in the current
// user's registry (on Linux, the registry file the add-in uses there), for
// scripts and for support. Only HKEY_CURRENT_USER is reachable: the add-in
// keeps nothing elsewhere.
#include <cstdint>
#include <optional>
#include <string>

#include "infra/cwinreg.h"
#include "tools/arg_parser.h"
#include "tools/commands.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane registry get KEY NAME\n"
    "       qorvane registry set KEY NAME TEXT\n"
    "       qorvane registry set-dword KEY NAME NUMBER\n"
    "       qorvane registry delete KEY NAME\n"
    "       qorvane registry delete-key KEY\n"
    "       qorvane registry list KEY\n"
    "\n"
    "Works on HKEY_CURRENT_USER. KEY is a path such as Software\\Brendix\\Qorvane\n"
    "(an HKCU\\ or HKEY_CURRENT_USER\\ prefix is allowed). 'get' prints a text value\n"
    "as it is and a DWORD in decimal; 'list' prints one 'name=value' line per value\n"
    "and one 'name\\' line per sub-key. 'delete-key' removes the key with everything\n"
    "below it. A missing key or value gives exit code 1.\n";

// The longest text the add-in can read back (its buffer holds 256 bytes with
// the terminator).
constexpr std::size_t kMaxText = CWinReg::kReadBufferSize - 1;

std::string SubKeyOf(const std::string& key) {
  std::string path = key;
  const std::size_t slash = path.find('\\');
  const std::string first = path.substr(0, slash);
  std::string upper;
  for (char c : first) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (upper == "HKCU" || upper == "HKEY_CURRENT_USER") {
    path = slash == std::string::npos ? "" : path.substr(slash + 1);
  } else if (upper.rfind("HK", 0) == 0) {
    throw UsageError("unknown hive '" + first + "': only HKCU (HKEY_CURRENT_USER) is supported");
  }
  while (!path.empty() && path.back() == '\\') path.pop_back();
  if (path.empty()) throw UsageError("KEY must name a key below HKEY_CURRENT_USER");
  return path;
}

std::string ValueText(CWinReg& key, const std::string& name) {
  const std::optional<std::uint32_t> type = key.ValueType(name);
  if (type == registry::kRegDword) return std::to_string(key.ReadLong(name, 0));
  return key.ReadString(name);
}

void ExpectCount(const ParsedArgs& parsed, std::size_t count, const char* usage) {
  if (parsed.Positional().size() != count) throw UsageError(std::string("usage: qorvane registry ") + usage);
}

}  // namespace

int RunRegistry(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args) || args.empty()) {
    if (args.empty()) throw UsageError("a registry action is missing; try 'qorvane registry --help'");
    out << kHelp;
    return 0;
  }
  const std::string action = args.front();
  const ParsedArgs parsed = ParsedArgs::Parse(args.subspan(1), {}, 3);
  const auto& pos = parsed.Positional();
  if (pos.empty()) throw UsageError("KEY is missing");
  const std::string subKey = SubKeyOf(pos[0]);
  CWinReg key;

  if (action == "get") {
    ExpectCount(parsed, 2, "get KEY NAME");
    if (!key.InitForRead(CWinReg::HKEY_CURRENT_USER, subKey) || !key.ValueType(pos[1])) {
      err << "qorvane registry: " << pos[0] << "\\" << pos[1] << " does not exist\n";
      return 1;
    }
    out << ValueText(key, pos[1]) << '\n';
    return 0;
  }
  if (action == "set" || action == "set-dword") {
    ExpectCount(parsed, 3, action == "set" ? "set KEY NAME TEXT" : "set-dword KEY NAME NUMBER");
    if (pos[1].empty()) throw UsageError("NAME must not be empty");
    std::int64_t number = 0;
    if (action == "set") {
      if (pos[2].size() > kMaxText)
        throw UsageError("TEXT is " + std::to_string(pos[2].size()) + " characters; at most " +
                         std::to_string(kMaxText) + " can be read back");
    } else {
      number = ParseIntegerArgument("NUMBER", pos[2], INT32_MIN, INT32_MAX);
    }
    if (!key.InitForWrite(CWinReg::HKEY_CURRENT_USER, subKey, true)) {
      err << "qorvane registry: cannot open or create " << pos[0] << '\n';
      return 1;
    }
    const bool written = action == "set" ? key.WriteString(pos[1], pos[2])
                                         : key.WriteLong(pos[1], static_cast<std::int32_t>(number));
    if (!written) {
      err << "qorvane registry: cannot write " << pos[1] << '\n';
      return 1;
    }
    return 0;
  }
  if (action == "delete") {
    ExpectCount(parsed, 2, "delete KEY NAME");
    if (!key.InitForWrite(CWinReg::HKEY_CURRENT_USER, subKey, false) || !key.DeleteValue(pos[1])) {
      err << "qorvane registry: " << pos[0] << "\\" << pos[1] << " does not exist\n";
      return 1;
    }
    return 0;
  }
  if (action == "delete-key") {
    ExpectCount(parsed, 1, "delete-key KEY");
    const std::size_t slash = subKey.rfind('\\');
    const std::string parent = slash == std::string::npos ? "" : subKey.substr(0, slash);
    const std::string leaf = slash == std::string::npos ? subKey : subKey.substr(slash + 1);
    if (!key.InitForAllAccess(CWinReg::HKEY_CURRENT_USER, parent, false) || !key.DeleteKeyRec(leaf)) {
      err << "qorvane registry: " << pos[0] << " does not exist\n";
      return 1;
    }
    return 0;
  }
  if (action == "list") {
    ExpectCount(parsed, 1, "list KEY");
    if (!key.InitForRead(CWinReg::HKEY_CURRENT_USER, subKey)) {
      err << "qorvane registry: " << pos[0] << " does not exist\n";
      return 1;
    }
    for (std::uint32_t i = 0;; ++i) {
      const std::string name = key.Values(i);
      if (name.empty()) break;
      out << name << '=' << ValueText(key, name) << '\n';
    }
    for (std::uint32_t i = 0;; ++i) {
      const std::string name = key.Keys(i);
      if (name.empty()) break;
      out << name << "\\\n";
    }
    return 0;
  }
  throw UsageError("unknown registry action '" + action + "'; try 'qorvane registry --help'");
}

}  // namespace qorvane::tool
