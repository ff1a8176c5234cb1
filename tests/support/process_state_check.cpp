// A GoogleTest listener that snapshots every piece of process-wide state
// (process_state.h) before each test and fails the test that leaves one
// changed, naming the piece and the guard to use. It then puts the state
// back, so that one leak fails one test and not every test after it.
#include "tests/support/process_state_check.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/process_state.h"

namespace qorvane::testing {
namespace {

std::string Address(const void* object) {
  char text[32];
  std::snprintf(text, sizeof text, "%p", object);
  return text;
}

std::string Text(const std::optional<std::string>& value) { return value ? "\"" + *value + "\"" : "(unset)"; }

const char* const kEnvironment[] = {"QORVANE_HOME", "QORVANE_REGISTRY_FILE", "XDG_CONFIG_HOME", "HOME",
                                    "LC_ALL",       "LC_TIME",               "LANG"};

struct Piece {
  std::string name;
  std::string guard;
  std::string value;
};

registry::CorruptionReporter CurrentCorruptionReporter() {
  const registry::CorruptionReporter reporter = registry::SetCorruptionReporter(nullptr);
  registry::SetCorruptionReporter(reporter);
  return reporter;
}

// Reading a piece must not change it: the log is read without creating it,
// its failure handler taken out and put straight back.
std::vector<Piece> Snapshot() {
  std::vector<Piece> pieces;
  const auto add = [&](std::string name, std::string guard, std::string value) {
    pieces.push_back({std::move(name), std::move(guard), std::move(value)});
  };
  add("Err", "ScopedErr", std::to_string(Err.Number) + " " + Err.Description);
  auto handler = g_debug.SetWriteFailureHandler(nullptr);
  add("g_debug", "ScopedDebugLog",
      "indent " + std::to_string(g_debug.IndentCount()) + ", timers " + std::to_string(g_debug.TimerCount()) +
          (handler ? ", a write-failure handler" : ""));
  g_debug.SetWriteFailureHandler(std::move(handler));
  add("g_IgnoreList", "ScopedIgnoreList",
      "\"" + g_IgnoreList.ToString() + "\", hidden " + (g_IgnoreList.IgnoreSysHiden() ? "yes" : "no"));
  add("the current application", "ScopedCurrentApplication", Address(PeekCurrentApplication().get()));
  add("the safe-mail factory", "ScopedSafeMailFactory", Address(&client::CurrentSafeMailFactory()));
  add("the clock", "ScopedClock", Address(&CurrentClock()));
  add("the locale", "ScopedLocale", CurrentLocale().Name());
  add("the first day of the week", "ScopedFirstDOW", std::to_string(FirstDOW()));
  add("g_OutlookVersion", "ScopedClientVersion", "\"" + g_OutlookVersion + "\"");
  add("the add-in folder", "ScopedAddinFolder", "\"" + AddinFolderOverride() + "\"");
  add("the message box service", "ScopedMessageBox", Address(&CurrentMessageBox()));
  add("the registry corruption reporter", "ScopedCorruptionReporter",
      Address(reinterpret_cast<const void*>(CurrentCorruptionReporter())));
  add("Main::g_ViewChecked", "ScopedFolderSession", Main::g_ViewChecked ? "true" : "false");
  add("Main::g_BlockerReported", "ScopedFolderSession", Main::g_BlockerReported ? "true" : "false");
  add("the timer service", "SimClient::Install/Uninstall", Address(&CurrentTimerService()));
  add("the time zone", "SimClient::Install/Uninstall", Address(&CurrentTimeZone()));
  add("the form view", "SetFormView back to what it found", Address(&forms::CurrentFormView()));
  for (const char* variable : kEnvironment) {
    add(std::string("$") + variable, "ScopedEnvironmentVariable", Text(EnvironmentVariable(variable)));
  }
  return pieces;
}

// Every guard at once, each holding the value it found, so that destroying
// it puts the state back as it was before the test.
struct Restorer {
  ScopedErr err;
  ScopedDebugLog log;
  ScopedIgnoreList ignoreList;
  ScopedCurrentApplication application{PeekCurrentApplication()};
  ScopedSafeMailFactory safeMail{&client::CurrentSafeMailFactory()};
  ScopedLocale locale{CurrentLocale().Name().c_str()};
  ScopedFirstDOW firstDow{FirstDOW()};
  ScopedClientVersion version{g_OutlookVersion};
  ScopedAddinFolder folder{AddinFolderOverride()};
  ScopedMessageBox messageBox{&CurrentMessageBox()};
  ScopedCorruptionReporter reporter{CurrentCorruptionReporter()};
  const bool viewChecked = Main::g_ViewChecked;
  const bool blockerReported = Main::g_BlockerReported;
  TimerService* const timers = &CurrentTimerService();
  const TimeZone* const timeZone = &CurrentTimeZone();
  forms::FormView* const formView = &forms::CurrentFormView();
  const Clock* const clock = &CurrentClock();
  std::vector<std::unique_ptr<ScopedEnvironmentVariable>> environment;

  Restorer() {
    for (const char* variable : kEnvironment) {
      environment.push_back(std::make_unique<ScopedEnvironmentVariable>(variable, EnvironmentVariable(variable)));
    }
  }
  ~Restorer() {
    Main::g_ViewChecked = viewChecked;
    Main::g_BlockerReported = blockerReported;
    SetTimerService(timers == &PlatformTimerService() ? nullptr : timers);
    SetTimeZone(timeZone == &SystemTimeZone() ? nullptr : timeZone);
    forms::SetFormView(formView == &forms::PlatformFormView() ? nullptr : formView);
    SetClock(clock == &SystemClock() ? nullptr : clock);
  }
};

class ProcessStateCheck : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo&) override {
    before_ = Snapshot();
    restorer_ = std::make_unique<Restorer>();
  }

  void OnTestEnd(const ::testing::TestInfo&) override {
    const std::vector<Piece> after = Snapshot();
    for (std::size_t i = 0; i < after.size() && i < before_.size(); ++i) {
      if (after[i].value == before_[i].value) continue;
      ADD_FAILURE() << "the test left " << after[i].name << " changed (" << before_[i].value << " -> "
                    << after[i].value << "); hold a " << after[i].guard << " (tests/support/process_state.h)";
    }
    restorer_.reset();
  }

  std::vector<Piece> before_;
  std::unique_ptr<Restorer> restorer_;
};

}  // namespace

void InstallProcessStateCheck() {
  ::testing::UnitTest::GetInstance()->listeners().Append(new ProcessStateCheck);
}

}  // namespace qorvane::testing
