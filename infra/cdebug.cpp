// The diagnostic log. Each entry opens the file, appends one CR LF line and
// closes it again; nothing is buffered between entries.
#include "infra/cdebug.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "base/runtime_error.h"
#include "infra/variant_text.h"
#include "platform/addin_folder.h"
#include "platform/clock.h"
#include "platform/locale.h"

CDebug g_debug;

namespace {

bool IsNumericValue(const qorvane::Variant& value) {
  using Kind = qorvane::Variant::Kind;
  switch (value.GetKind()) {
    case Kind::Long:
    case Kind::Double:
      return true;
    case Kind::String:
      return qorvane::ParseNumber(value.AsString()).has_value();
    default:
      return false;
  }
}

}  // namespace

CDebug::~CDebug() {
  if (m_TimerCount != 0) Out("Warning - g_debug.m_TimerCount <> 0!");
}

void CDebug::EnsureCreated() {
  if (created_) return;
  created_ = true;
  debug_level_ = 2;
  debug_target_ = 2;
  indent_count_ = 0;
  indent_.clear();
  m_TimerCount = 0;
  // A log that has grown too large is dropped whole at start-up; errors here
  // are ignored because a log that cannot be measured is simply kept.
  std::error_code ec;
  const std::uintmax_t size = std::filesystem::file_size(LogFilePath(), ec);
  if (!ec && size > kTrimSize) std::filesystem::remove(LogFilePath(), ec);
}

void CDebug::Release() noexcept { ResetForTesting(); }

void CDebug::ResetForTesting() {
  created_ = false;
  m_TimerCount = 0;
  indent_count_ = 0;
  indent_.clear();
}

std::string CDebug::LogFilePath() const {
  return qorvane::AddinFolder() + qorvane::PathSeparator() + kLogFileName;
}

void CDebug::PushTab() {
  EnsureCreated();
  indent_count_ += 4;
  BuildTab();
}

void CDebug::PopTab() {
  EnsureCreated();
  indent_count_ -= 4;
  if (indent_count_ < 0) indent_count_ = 0;
  BuildTab();
}

void CDebug::BuildTab() { indent_.assign(static_cast<std::size_t>(indent_count_), ' '); }

std::int32_t CDebug::DebugTarget() {
  EnsureCreated();
  return debug_target_;
}
void CDebug::DebugTarget(std::int32_t value) {
  EnsureCreated();
  debug_target_ = value;
}
std::int32_t CDebug::DebugLevel() {
  EnsureCreated();
  return debug_level_;
}
void CDebug::DebugLevel(std::int32_t value) {
  EnsureCreated();
  debug_level_ = value;
}

void CDebug::OutCustomError(std::string_view where, std::string_view message) {
  WriteLogLine("Error(custom) : " + std::string(where) + "\t" + std::string(message));
}

void CDebug::OutError(std::string_view where) {
  const std::string text = "Error(" + std::to_string(qorvane::Err.Number) + ") : " + std::string(where) + "\t" +
                           qorvane::Err.Description;
  // Cleared before writing: a caller that logs and goes on starts clean even
  // when the write itself fails.
  qorvane::Err.Clear();
  WriteLogLine(text);
}

void CDebug::OutWarning(std::string_view where, std::string_view message) {
  WriteLogLine("Warning : " + std::string(where) + "\t" + std::string(message));
}

void CDebug::StartTimer() {
  EnsureCreated();
  if (m_TimerCount >= kMaxTimers) {
    Out("Warning CDebug.StartTimer cant run");
    return;
  }
  timer_stack_[static_cast<std::size_t>(m_TimerCount)] = qorvane::CurrentClock().SecondsSinceMidnight();
  ++m_TimerCount;
}

void CDebug::EndTimer(std::string_view name) {
  EnsureCreated();
  if (m_TimerCount < 1) {
    Out("Warning: CDebug::EndTimer cant run");
    return;
  }
  const float elapsed =
      qorvane::CurrentClock().SecondsSinceMidnight() - timer_stack_[static_cast<std::size_t>(m_TimerCount - 1)];
  Out2("  " + std::string(name) + " timing : " + qorvane::NumberText(elapsed));
  --m_TimerCount;
}

void CDebug::OutCallValues(std::initializer_list<qorvane::Variant> values) {
  if (values.size() == 0) qorvane::Raise(qorvane::err::kSubscriptOutOfRange);
  auto it = values.begin();
  std::string text = "Call " + qorvane::CStr(*it) + "(";
  bool first = true;
  for (++it; it != values.end(); ++it) {
    if (!first) text += ", ";
    first = false;
    text += IsNumericValue(*it) ? qorvane::CStr(*it) : "'" + qorvane::CStr(*it) + "'";
  }
  text += ")";
  WriteLogLine(text);
}

void CDebug::Assert(bool condition, std::string_view where, std::string_view message) {
  if (condition) return;
  const std::string failedWhere = std::string(where) + ", assert failed";
  g_debug.OutCustomError(failedWhere, message);
  qorvane::Raise(qorvane::err::kTypeMismatch, failedWhere + " - " + std::string(message));
}

void CDebug::WriteLogLine(std::string_view text) {
  EnsureCreated();
  const std::string stamp = qorvane::CurrentLocale().FormatGeneralDate(qorvane::Now());
  AppendToFile(stamp + " " + indent_ + std::string(text));
}

CDebug::WriteFailureHandler CDebug::SetWriteFailureHandler(WriteFailureHandler handler) {
  std::swap(handler, write_failure_handler_);
  return handler;
}

void CDebug::AppendToFile(const std::string& line) {
  if ((debug_target_ & 2) == 0) return;
  const std::string path = LogFilePath();
  std::ofstream file(path, std::ios::binary | std::ios::app);
  if (file) {
    file << line << "\r\n";
    file.close();
    if (!file.fail()) return;
  }
  if (!write_failure_handler_) qorvane::Raise(qorvane::err::kPathFileAccess);
  write_failure_handler_(path);
}
