// CDebug: the add-in's one diagnostic log, "Qorvane.Log" in the add-in's
// folder. Only errors, warnings and explicit call traces are written; the
// trace operations Out, Out1 and Out2 are kept at their call sites but write
// nothing, so the hot paths pay nothing for them.
//
// Lifecycle: the single instance g_debug comes into being on first use (the
// first call of any operation sets the defaults and deletes a log grown past
// 512000 bytes) and lives until the add-in is unloaded. Every entry opens the
// file, appends one line and closes it, so an abrupt end loses nothing.
// UI thread only. A failure to write the file is raised as a RuntimeError
// into the procedure that was logging, unless a write-failure handler is set.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include "base/variant.h"

class CDebug {
 public:
  static constexpr const char* kLogFileName = "Qorvane.Log";
  static constexpr std::uintmax_t kTrimSize = 512000;
  static constexpr int kMaxTimers = 10;

  void PushTab();
  void PopTab();

  std::int32_t DebugTarget();
  void DebugTarget(std::int32_t value);
  std::int32_t DebugLevel();
  void DebugLevel(std::int32_t value);

  // Silent trace points.
  template <class... Values>
  void Out(const Values&...) noexcept {}
  template <class... Values>
  void Out1(const Values&...) noexcept {}
  template <class... Values>
  void Out2(const Values&...) noexcept {}

  void OutCustomError(std::string_view where, std::string_view message);
  // Writes the current error of qorvane::Err and clears it.
  void OutError(std::string_view where);
  void OutWarning(std::string_view where, std::string_view message);

  void StartTimer();
  void EndTimer(std::string_view name);

  // "Call name(arg, 'text')": the first value names the procedure. With no
  // values at all it raises error 9, as the runtime would.
  template <class... Values>
  void OutCall(const Values&... values) {
    OutCallValues({qorvane::Variant(values)...});
  }
  void OutCallValues(std::initializer_list<qorvane::Variant> values);

  // Writes the custom error and raises 13 with "where, assert failed - message".
  void Assert(bool condition, std::string_view where, std::string_view message);

  // True only inside a development environment; a built add-in has none.
  bool VbDebug() const noexcept { return false; }

  // Lets go of the instance, as setting g_debug to Nothing did: the next use
  // creates a fresh one (defaults, start-up trimming).
  void Release() noexcept;

  // Full path of the log file in the current add-in folder.
  std::string LogFilePath() const;

  // Told the log's path when an entry cannot be written, instead of raising
  // error 75 into the procedure that was logging. The add-in keeps the
  // runtime's way (none set); a command-line tool must not fail because its
  // log cannot be written. Returns the handler set before; an empty one
  // restores raising.
  using WriteFailureHandler = std::function<void(const std::string& logPath)>;
  WriteFailureHandler SetWriteFailureHandler(WriteFailureHandler handler);

  // Test support: the state of a freshly created instance, as after an unload
  // and reload of the add-in (the start-up trimming runs again on next use).
  void ResetForTesting();
  std::int32_t IndentCount() const noexcept { return indent_count_; }
  std::int32_t TimerCount() const noexcept { return m_TimerCount; }

  ~CDebug();

 private:
  void EnsureCreated();
  void BuildTab();
  void WriteLogLine(std::string_view text);
  void AppendToFile(const std::string& line);

  bool created_ = false;
  std::int32_t debug_level_ = 2;
  std::int32_t debug_target_ = 2;
  std::int32_t indent_count_ = 0;
  std::string indent_;
  std::int32_t m_TimerCount = 0;
  std::array<float, kMaxTimers> timer_stack_{};
  WriteFailureHandler write_failure_handler_;
};

extern CDebug g_debug;
