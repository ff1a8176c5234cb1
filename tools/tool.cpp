// The qorvane tool's front door: the global options (--locale, --help),
// choosing the command, and turning every failure into one line on stderr
// with a distinct exit code, so scripts can tell a typo (2) from a line the
// add-in could not read (1).
#include <algorithm>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "platform/locale.h"
#include "schedule/first_dow.h"
#include "store/main_options.h"
#include "tools/arg_parser.h"
#include "tools/commands.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane [--locale NAME] COMMAND [OPTIONS]\n"
    "       qorvane COMMAND --help\n"
    "\n"
    "Works with Qorvane send schedules outside the mail client.\n"
    "\n"
    "Commands:\n"
    "  demo         play a person's week with the add-in in a simulated mail client\n"
    "  occurrences  list the send times of a recurrence pattern\n"
    "  describe     print the sentence the add-in shows for a schedule\n"
    "  encode       print the line a schedule is stored as on a mail\n"
    "  decode       read such a line and print its fields (named without m_)\n"
    "  registry     look at or change the add-in's registry values (HKCU)\n"
    "  ignore-list  show or change the names attached folders skip\n"
    "  selfcheck    compare the engine's send times with a mail client's calendar\n"
    "\n"
    "Global options (anywhere on the line):\n"
    "  --locale NAME  read and write the add-in's dates as in NAME: en-US, en-GB,\n"
    "                 de-DE, fr-FR, ...; default: the user's locale settings\n"
    "  --help         this text; after a command, that command's help\n"
    "\n"
    "Exit status: 0 done, 1 the line could not be read or the pattern not\n"
    "listed, 2 a missing or malformed argument. Errors are logged to\n"
    "Qorvane.Log in the add-in folder: the folder of this program (on Linux\n"
    "$QORVANE_HOME when set).\n";

struct Command {
  std::string_view name;
  int (*run)(Args, std::ostream&, std::ostream&);
};

constexpr Command kCommands[] = {
    {"demo", RunDemo},
    {"occurrences", RunOccurrences},
    {"describe", RunDescribe},
    {"encode", RunEncode},
    {"decode", RunDecode},
    {"registry", RunRegistry},
    {"ignore-list", RunIgnoreList},
    {"selfcheck", RunSelfCheck},
};

// Takes --locale out of the arguments wherever it stands; the name, if given.
std::optional<std::string> ExtractLocale(std::vector<std::string>& args) {
  std::optional<std::string> name;
  std::vector<std::string> rest;
  for (std::size_t i = 0; i < args.size(); ++i) {
    std::string_view arg = args[i];
    std::optional<std::string> value;
    if (arg == "--locale") {
      if (i + 1 >= args.size() || args[i + 1].rfind("--", 0) == 0) {
        throw UsageError("--locale needs a value");
      }
      value = args[++i];
    } else if (arg.rfind("--locale=", 0) == 0) {
      value = std::string(arg.substr(9));
    } else {
      rest.push_back(args[i]);
      continue;
    }
    if (name) throw UsageError("--locale is given more than once");
    name = std::move(value);
  }
  args = std::move(rest);
  return name;
}

// What one run changes in the process, put back when it ends, so that the
// tool can run in-process (tests, the fuzzer) as often as wanted: the locale
// (--locale), the engine's first day of the week and the client version (the
// pattern options), and what a failed write of the log does. A log that
// cannot be written is said once on stderr and the run goes on: the tool's
// answer matters more than its log.
class RunScope {
 public:
  explicit RunScope(std::ostream& err)
      : locale_(CurrentLocale().Name()), first_dow_(FirstDOW()), client_version_(g_OutlookVersion) {
    previous_handler_ = g_debug.SetWriteFailureHandler([this, &err](const std::string& path) {
      if (log_failure_said_) return;
      log_failure_said_ = true;
      err << "qorvane: cannot write the log " << path << "; going on without it\n";
    });
  }
  ~RunScope() {
    g_debug.SetWriteFailureHandler(std::move(previous_handler_));
    g_OutlookVersion = client_version_;
    SetFirstDOW(first_dow_);
    if (!SelectLocale(locale_)) SelectUserLocale();
  }
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;

 private:
  std::string locale_;
  int first_dow_;
  std::string client_version_;
  CDebug::WriteFailureHandler previous_handler_;
  bool log_failure_said_ = false;
};

}  // namespace

bool WantsHelp(Args args) {
  return std::find(args.begin(), args.end(), "--help") != args.end();
}

int RunTool(Args all, std::ostream& out, std::ostream& err) {
  const RunScope scope(err);
  std::string_view command_name;
  try {
    std::vector<std::string> args(all.begin(), all.end());
    if (auto locale = ExtractLocale(args)) {
      if (!SelectLocale(*locale)) throw UsageError("unknown locale '" + *locale + "'");
    }
    if (args.empty()) throw UsageError("a command is missing; try 'qorvane --help'");
    if (args.front() == "--help" || args.front() == "help") {
      out << kHelp;
      return 0;
    }
    auto command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                [&](const Command& c) { return c.name == args.front(); });
    if (command == std::end(kCommands)) {
      throw UsageError("unknown command '" + args.front() + "'; try 'qorvane --help'");
    }
    command_name = command->name;
    return command->run(Args(args).subspan(1), out, err);
  } catch (const UsageError& e) {
    err << "qorvane" << (command_name.empty() ? "" : " ") << command_name << ": " << e.what() << '\n';
    return 2;
  } catch (const RuntimeError& e) {
    err << "qorvane: error " << e.Number() << ": " << e.Description() << '\n';
    return 1;
  } catch (const std::exception& e) {
    err << "qorvane: " << e.what() << '\n';
    return 1;
  }
}

}  // namespace qorvane::tool
