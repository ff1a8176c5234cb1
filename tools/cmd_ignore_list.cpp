// qorvane ignore-list: the names that attached folders skip when they are
// resolved, and whether system and hidden files are skipped too, as the
// attachments dialog keeps them in the settings store.
#include "infra/ignore_list.h"
#include "tools/arg_parser.h"
#include "tools/commands.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane ignore-list [show]\n"
    "       qorvane ignore-list set \"NAME, NAME, ...\"\n"
    "       qorvane ignore-list add NAME\n"
    "       qorvane ignore-list hidden yes|no\n"
    "\n"
    "Names are whole file names, matched without case and without wildcards.\n"
    "'show' prints 'ignore=' with the list and 'hidden=' with yes or no;\n"
    "every other action saves the change and then shows the result.\n";

void Show(const CIgnoreList& list, std::ostream& out) {
  out << "ignore=" << list.ToString() << '\n' << "hidden=" << (list.IgnoreSysHiden() ? "yes" : "no") << '\n';
}

}  // namespace

int RunIgnoreList(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args)) {
    out << kHelp;
    return 0;
  }
  const ParsedArgs parsed = ParsedArgs::Parse(args, {}, 2);
  const auto& pos = parsed.Positional();
  const std::string action = pos.empty() ? "show" : pos[0];
  auto argument = [&](const char* usage) -> const std::string& {
    if (pos.size() != 2) throw UsageError(std::string("usage: qorvane ignore-list ") + usage);
    return pos[1];
  };

  CIgnoreList list;
  list.Load();
  if (action == "show") {
    if (pos.size() > 1) throw UsageError("usage: qorvane ignore-list show");
  } else if (action == "set") {
    list.FromString(argument("set \"NAME, NAME, ...\""));
    list.Save();
  } else if (action == "add") {
    if (!list.Add(argument("add NAME"))) err << "qorvane ignore-list: already in the list or empty; nothing added\n";
    list.Save();
  } else if (action == "hidden") {
    const std::string& flag = argument("hidden yes|no");
    if (flag != "yes" && flag != "no") throw UsageError("hidden takes yes or no, not '" + flag + "'");
    list.IgnoreSysHiden(flag == "yes");
    list.Save();
  } else {
    throw UsageError("unknown ignore-list action '" + action + "'; try 'qorvane ignore-list --help'");
  }
  Show(list, out);
  return 0;
}

}  // namespace qorvane::tool
