// qorvane demo: the add-in loaded into the simulated mail client with a
// virtual clock, playing a person's week (or a story of one's own) in a few
// seconds, with a readable timeline and a summary of where things stand.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <random>
#include <sstream>

#include "infra/cdebug.h"
#include "infra/settings.h"
#include "platform/addin_folder.h"
#include "scenario/client_picture.h"
#include "scenario/clock_text.h"
#include "scenario/player.h"
#include "scenario/script.h"
#include "scenario/timeline.h"
#include "tools/arg_parser.h"
#include "tools/commands.h"
#include "tools/private_registry.h"

namespace qorvane::tool {

namespace {

namespace fs = std::filesystem;

// The week the demo plays: scenario/scripts/week.script, built in.
const char* const kWeekScript =
#include "tools/week_script.inc"
    ;

const char* const kHelp =
    "Usage: qorvane demo [--days N] [--quiet] [--script FILE]\n"
    "\n"
    "Loads the add-in into a simulated mail client with a virtual clock and\n"
    "plays a person's week in a few seconds: three mails written to go later\n"
    "(once, every Monday and Friday with a file and a folder attached, on the\n"
    "last Friday of the month), the ticks that send them, the client closed for\n"
    "three days and catching up, two waiting mails given one schedule at once,\n"
    "a send-and-exit run. It prints a timeline (virtual time, what happened),\n"
    "then the deferred folder as its view shows it, the registry's\n"
    "NextOccurence and the add-in's log.\n"
    "\n"
    "Nothing of the user's is touched: the mail client is simulated, the\n"
    "registry is a private one, the story's files live in a temporary folder\n"
    "that is removed at the end, and the add-in's log goes to a temporary\n"
    "add-in folder whose path is printed.\n"
    "\n"
    "  --days N       play N days of virtual time from the story's first clock\n"
    "                 reading (1..3660): a longer story is cut there, a shorter\n"
    "                 one runs on with the client's timers; default: the story\n"
    "  --quiet        print only the summary\n"
    "  --script FILE  play the story in FILE instead of the built-in week\n"
    "  --locale NAME  (global) the add-in's dates in that locale's format\n"
    "\n"
    "Exit status: 0 the story ran and its expectations held, 1 an expectation\n"
    "failed or a line could not be carried out, 2 a bad option or script.\n"
    "\n";

std::string ReadFile(const std::string& path) {
  std::ifstream file(fs::path(std::u8string(reinterpret_cast<const char8_t*>(path.data()), path.size())),
                     std::ios::binary);
  if (!file) throw UsageError("cannot read the script '" + path + "'");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

// A fresh folder in the temporary folder, "qorvane-demo-<n><suffix>".
fs::path MakeTemporaryFolder(const std::string& stem, const char* suffix) {
  const fs::path folder = fs::temp_directory_path() / (stem + suffix);
  fs::create_directories(folder);
  return folder;
}

// The first clock reading of the story: its opening "clock" line, if any.
double StoryStart(const scenario::Script& script, double clientStart) {
  for (const scenario::ScriptStep& step : script.steps) {
    if (const auto* clock = std::get_if<scenario::ClockStep>(&step.action)) return clock->at;
    if (!std::holds_alternative<scenario::FileStep>(step.action) &&
        !std::holds_alternative<scenario::RegistryStep>(step.action))
      break;
  }
  return clientStart;
}

std::string Duration(double days) {
  const long long minutes = std::llround(days * 1440.0);
  std::ostringstream text;
  if (minutes >= 1440) text << minutes / 1440 << " d ";
  text << minutes % 1440 / 60 << " h " << minutes % 60 << " min";
  return text.str();
}

// "1 dialog", "2 dialogs".
std::string Counted(std::size_t n, const std::string& one, const std::string& many = "") {
  return std::to_string(n) + " " + (n == 1 ? one : many.empty() ? one + "s" : many);
}

std::string Padded(std::string text, std::size_t width) {
  if (text.size() < width) text.resize(width, ' ');
  return text;
}

void PrintFolder(scenario::Session& session, std::ostream& out) {
  const auto view = scenario::DeferredFolderView(session);
  if (!view) {
    out << "  The deferred folder \"Qorvane\" does not exist.\n";
    return;
  }
  out << "  The deferred folder \"Qorvane\"";
  if (!view->name.empty()) {
    out << " in its view \"" << view->name << "\" (";
    for (std::size_t i = 0; i < view->headings.size(); ++i) out << (i ? ", " : "") << view->headings[i];
    out << ")";
  }
  out << ": " << view->rows.size() << (view->rows.size() == 1 ? " mail" : " mails") << "\n";
  if (view->rows.empty()) return;
  const char* const headings[] = {"To", "Subject", "Next Occurrence"};
  std::size_t widths[3] = {2, 7, 15};
  for (const auto& row : view->rows) {
    for (std::size_t i = 0; i < 3; ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  out << "    " << Padded(headings[0], widths[0] + 2) << Padded(headings[1], widths[1] + 2) << headings[2] << "\n";
  for (const auto& row : view->rows)
    out << "    " << Padded(row[0], widths[0] + 2) << Padded(row[1], widths[1] + 2) << row[2] << "\n";
}

}  // namespace

int RunDemo(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args)) {
    out << kHelp << scenario::kScriptFormatHelp;
    return 0;
  }
  const OptionDef options[] = {{"days"}, {"quiet", false}, {"script"}};
  const ParsedArgs parsed = ParsedArgs::Parse(args, options, 0);
  const std::optional<std::string> scriptFile = parsed.Value("script");
  const std::string text = scriptFile ? ReadFile(*scriptFile) : std::string(kWeekScript);
  const std::string scriptName = scriptFile ? *scriptFile : "the built-in week";
  scenario::ParsedScript read = scenario::ParseScript(text);
  if (!read.script) throw UsageError(scriptName + ", " + read.error.Text());
  std::optional<int> days;
  if (const auto value = parsed.Value("days")) days = ParseInteger("days", *value, 1, 3660);
  const bool quiet = parsed.Has("quiet");

  std::random_device random;
  const std::string stem = "qorvane-demo-" + std::to_string(random() % 100000000u);
  const fs::path addinFolder = MakeTemporaryFolder(stem, "");
  const fs::path filesFolder = MakeTemporaryFolder(stem, "-files");
  struct RemoveFiles {
    fs::path folder;
    ~RemoveFiles() {
      std::error_code ignored;
      fs::remove_all(folder, ignored);
    }
  } removeFiles{filesFolder};
  const PrivateRegistry registry(Utf8(addinFolder));
  if (!registry.ok()) {
    err << "qorvane demo: the demo's private registry could not be made; nothing was played\n";
    return 1;
  }
  // The log goes to the demo's own folder; the caller's (a test's) comes back.
  struct RestoreAddinFolder {
    std::string before = AddinFolder();
    ~RestoreAddinFolder() {
      g_debug.Release();
      SetAddinFolder(before);
    }
  } restoreAddinFolder;
  SetAddinFolder(Utf8(addinFolder));
  g_debug.Release();

  scenario::Session session;
  scenario::PlayOptions play;
  play.filesFolder = Utf8(filesFolder);
  const double start = StoryStart(*read.script, session.Client().Now());
  if (days) play.endAt = start + *days;
  scenario::Player player(session, play);
  if (const auto problem = player.Check(*read.script)) throw UsageError(scriptName + ", " + problem->Text());

  if (!quiet) {
    out << "Qorvane demo: " << (scriptFile ? "the story in " + *scriptFile : std::string("a person's week"))
        << ", with the add-in in a simulated mail client.\n"
        << "The clock is virtual; the story's files are in " << play.filesFolder << " (removed at the end).\n\n";
  }
  scenario::Timeline timeline(session, out);
  if (!quiet) player.SetObserver(&timeline);
  const auto began = std::chrono::steady_clock::now();
  const scenario::PlayResult result = player.Play(*read.script);
  const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
  const double end = session.Client().Now();

  sim::SimClient& client = session.Client();
  const std::vector<std::string> log = scenario::LogLines();
  out << (quiet ? "" : "\n") << "Summary\n";
  out << "  Virtual time " << scenario::DayClockText(start) << " to " << scenario::DayClockText(end) << " ("
      << Duration(end - start) << (result.cut ? ", the story cut there" : "") << "), played in " << std::fixed
      << std::setprecision(2) << wall << " s of wall time.\n";
  out << "  " << Counted(result.ticks, "timer tick") << ", " << Counted(client.SendLog().size(), "copy sent", "copies sent")
      << ", " << Counted(static_cast<std::size_t>(client.SyncStarts()), "Send/Receive run") << ", "
      << Counted(client.MessageBoxes().size(), "message box", "message boxes") << ", "
      << Counted(session.User().Shown().size(), "dialog") << ".\n";
  PrintFolder(session, out);
  out << "  NextOccurence in the registry: \""
      << settings::ReadOwnString(settings::kNextOccurence) << "\"\n";
  out << "  The add-in's log: " << log.size() << (log.size() == 1 ? " line" : " lines") << " in "
      << g_debug.LogFilePath() << "\n";
  out << "  " << result.expectationsChecked << " expectations checked; ";
  if (result.Passed()) {
    out << "all held.\n";
    return 0;
  }
  out << result.failures.size() << (result.failures.size() == 1 ? " failure" : " failures") << ":\n";
  for (const std::string& failure : result.failures) out << "    " << failure << "\n";
  return 1;
}

}  // namespace qorvane::tool
