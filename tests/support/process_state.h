// The process-wide state of the add-in, in one list, with one scoped guard per
// piece: a test that changes a piece holds its guard, which puts the value it
// found back when the test ends, however it ends.
//
//   piece                              lives in                        guard
//   the current error, Err             base/runtime_error.h            ScopedErr
//   the log g_debug (indent, timers,   infra/cdebug.h                  ScopedDebugLog
//     target, level, failure handler)
//   the ignore list g_IgnoreList       infra/ignore_list.h             ScopedIgnoreList
//   the current application            client/application.h           ScopedCurrentApplication
//   the safe-mail factory              client/safe_mail.h              ScopedSafeMailFactory
//   the clock                          platform/clock.h                ScopedClock
//   the locale                         platform/locale.h               ScopedLocale
//   the engine's first day of the week schedule/first_dow.h            ScopedFirstDOW
//   the client's version g_OutlookVersion  store/main_options.h        ScopedClientVersion
//   the add-in folder (and the log's)  platform/addin_folder.h         ScopedAddinFolder
//   the message box service            platform/message_box.h          ScopedMessageBox
//   the registry corruption reporter   platform/registry.h             ScopedCorruptionReporter
//   the folder session g_ViewChecked,  store/folder.h                  ScopedFolderSession
//     g_BlockerReported
//   the timer service, the time zone   platform/timer.h, time_zone.h   SimClient::Install/Uninstall
//   the form view                      platform/form.h                 SetFormView back to what it found
//   environment variables the platform platform/*_posix.cpp            ScopedEnvironmentVariable
//     reads (QORVANE_HOME, QORVANE_REGISTRY_FILE, XDG_CONFIG_HOME,
//     HOME, LC_ALL, LC_TIME, LANG)
//
// Outside the list, because no test can change them: the simulated client's
// installation (SimClient::Install/Uninstall save and restore the pieces it
// sets), the POSIX registry's handle table and file cache (per registry
// file; tests keep to their own file, tests/support/registry_sandbox.h), and
// COM's initialisation of the UI thread on Windows (once per process).
//
// process_state_check.h snapshots every piece around each test and fails a
// test that leaves one changed; every test executable runs with it.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "base/runtime_error.h"
#include "client/application.h"
#include "client/safe_mail.h"
#include "infra/cdebug.h"
#include "platform/addin_folder.h"
#include "platform/clock.h"
#include "platform/form.h"
#include "platform/locale.h"
#include "platform/message_box.h"
#include "platform/registry.h"
#include "platform/time_zone.h"
#include "platform/timer.h"
#include "schedule/first_dow.h"
#include "store/folder.h"
#include "store/main_options.h"
#include "infra/ignore_list.h"

namespace qorvane::testing {

// Guards are neither copied nor moved: each restores exactly once.
class ScopedState {
 public:
  ScopedState() = default;
  ScopedState(const ScopedState&) = delete;
  ScopedState& operator=(const ScopedState&) = delete;
};

class ScopedErr : ScopedState {
 public:
  ScopedErr() : saved_(Err) {}
  ~ScopedErr() { Err = saved_; }

 private:
  ErrorState saved_;
};

// The whole log object: indentation, timers, target, level and the handler
// of failed writes (the add-in folder, and so the file, is ScopedAddinFolder).
class ScopedDebugLog : ScopedState {
 public:
  ScopedDebugLog() : saved_(g_debug) {}
  ~ScopedDebugLog() { g_debug = saved_; }

 private:
  CDebug saved_;
};

class ScopedIgnoreList : ScopedState {
 public:
  ScopedIgnoreList() : saved_(g_IgnoreList) {}
  // Starts from the list as text (and the hidden-file rule).
  explicit ScopedIgnoreList(const std::string& names, bool ignoreSysHiden = true) : ScopedIgnoreList() {
    g_IgnoreList.FromString(names);
    g_IgnoreList.IgnoreSysHiden(ignoreSysHiden);
  }
  ~ScopedIgnoreList() { g_IgnoreList = saved_; }

 private:
  CIgnoreList saved_;
};

// The current application, null when none is connected.
inline client::Ref<client::Application> PeekCurrentApplication() {
  try {
    return client::CurrentApplication();
  } catch (const RuntimeError&) {
    return nullptr;
  }
}

class ScopedCurrentApplication : ScopedState {
 public:
  explicit ScopedCurrentApplication(client::Ref<client::Application> application)
      : saved_(PeekCurrentApplication()) {
    client::SetCurrentApplication(std::move(application));
  }
  ~ScopedCurrentApplication() { client::SetCurrentApplication(std::move(saved_)); }

 private:
  client::Ref<client::Application> saved_;
};

class ScopedSafeMailFactory : ScopedState {
 public:
  explicit ScopedSafeMailFactory(client::SafeMailFactory* factory) : saved_(&client::CurrentSafeMailFactory()) {
    client::SetSafeMailFactory(factory);
  }
  ~ScopedSafeMailFactory() { client::SetSafeMailFactory(saved_); }

 private:
  client::SafeMailFactory* saved_;
};

// A fixed clock standing at `now` until Set moves it.
class ScopedClock : ScopedState {
 public:
  explicit ScopedClock(double now) : clock_(now), saved_(&CurrentClock()) { SetClock(&clock_); }
  ~ScopedClock() { SetClock(saved_ == &SystemClock() ? nullptr : saved_); }
  void Set(double now) { clock_.Set(now); }

 private:
  FixedClock clock_;
  const Clock* saved_;
};

// Selects a locale by name ("en-US"); ok() tells whether the name was known.
class ScopedLocale : ScopedState {
 public:
  explicit ScopedLocale(const char* name) : saved_(CurrentLocale().Name()) { ok_ = SelectLocale(name); }
  ~ScopedLocale() {
    if (!SelectLocale(saved_)) SelectUserLocale();
  }
  bool ok() const { return ok_; }

 private:
  std::string saved_;
  bool ok_ = false;
};

class ScopedFirstDOW : ScopedState {
 public:
  explicit ScopedFirstDOW(int firstDayOfWeek) : saved_(FirstDOW()) { SetFirstDOW(firstDayOfWeek); }
  ~ScopedFirstDOW() { SetFirstDOW(saved_); }

 private:
  int saved_;
};

class ScopedClientVersion : ScopedState {
 public:
  explicit ScopedClientVersion(std::string version) : saved_(g_OutlookVersion) {
    g_OutlookVersion = std::move(version);
  }
  ~ScopedClientVersion() { g_OutlookVersion = saved_; }

 private:
  std::string saved_;
};

// An empty folder puts the platform's default back for the guard's life.
class ScopedAddinFolder : ScopedState {
 public:
  explicit ScopedAddinFolder(std::string folder) : saved_(AddinFolderOverride()) {
    SetAddinFolder(std::move(folder));
  }
  ~ScopedAddinFolder() { SetAddinFolder(saved_); }

 private:
  std::string saved_;
};

class ScopedMessageBox : ScopedState {
 public:
  explicit ScopedMessageBox(MessageBoxService* service) : saved_(&CurrentMessageBox()) { SetMessageBox(service); }
  ~ScopedMessageBox() { SetMessageBox(saved_ == &PlatformMessageBox() ? nullptr : saved_); }

 private:
  MessageBoxService* saved_;
};

class ScopedCorruptionReporter : ScopedState {
 public:
  explicit ScopedCorruptionReporter(registry::CorruptionReporter reporter)
      : saved_(registry::SetCorruptionReporter(reporter)) {}
  ~ScopedCorruptionReporter() { registry::SetCorruptionReporter(saved_); }

 private:
  registry::CorruptionReporter saved_;
};

// Starts a new session of the deferred folder (its view not looked at yet).
class ScopedFolderSession : ScopedState {
 public:
  ScopedFolderSession() : viewChecked_(Main::g_ViewChecked), blockerReported_(Main::g_BlockerReported) {
    Main::ResetFolderSessionForTesting();
  }
  ~ScopedFolderSession() {
    Main::g_ViewChecked = viewChecked_;
    Main::g_BlockerReported = blockerReported_;
  }

 private:
  bool viewChecked_;
  bool blockerReported_;
};

// The variable's value, nothing when it is not set.
inline std::optional<std::string> EnvironmentVariable(const char* name) {
  const char* value = std::getenv(name);
  return value ? std::optional<std::string>(value) : std::nullopt;
}

inline void SetEnvironmentVariable(const char* name, const std::optional<std::string>& value) {
#ifdef _WIN32
  _putenv_s(name, value ? value->c_str() : "");
#else
  if (value) {
    setenv(name, value->c_str(), 1);
  } else {
    unsetenv(name);
  }
#endif
}

// Sets (or, with nothing, removes) the variable.
class ScopedEnvironmentVariable : ScopedState {
 public:
  ScopedEnvironmentVariable(const char* name, const std::optional<std::string>& value)
      : name_(name), saved_(EnvironmentVariable(name)) {
    SetEnvironmentVariable(name, value);
  }
  ~ScopedEnvironmentVariable() { SetEnvironmentVariable(name_, saved_); }

 private:
  const char* name_;
  std::optional<std::string> saved_;
};

}  // namespace qorvane::testing
