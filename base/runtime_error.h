// Errors as the add-in's runtime knows them: a number and a description.
//
// Low-level code throws RuntimeError; the error traps of infra/error_trap.h
// catch it, copy it into the process-wide state `Err` and log it. Numbers are
// the runtime's own (13 type mismatch, 9 subscript out of range, 5 invalid
// procedure call, 91 object not set, 429 cannot create object) or a COM
// failure's HRESULT, so that a log line reads the same whatever raised it.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace qorvane {

namespace err {
inline constexpr std::int32_t kInvalidCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kSubscriptOutOfRange = 9;
inline constexpr std::int32_t kDivisionByZero = 11;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kInternal = 51;
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kPathFileAccess = 75;
inline constexpr std::int32_t kObjectNotSet = 91;
inline constexpr std::int32_t kCannotCreateObject = 429;
inline constexpr std::int32_t kObjectDoesntSupport = 438;
inline constexpr std::int32_t kArgumentNotOptional = 449;
inline constexpr std::int32_t kWrongArgumentCount = 450;
}  // namespace err

// The runtime's standard description of a number ("Type mismatch" for 13);
// "Application-defined or object-defined error" for numbers it doesn't know.
std::string StandardDescription(std::int32_t number);

class RuntimeError : public std::runtime_error {
 public:
  explicit RuntimeError(std::int32_t number);
  RuntimeError(std::int32_t number, std::string description);

  std::int32_t Number() const noexcept { return number_; }
  const std::string& Description() const noexcept { return description_; }

 private:
  std::int32_t number_;
  std::string description_;
};

[[noreturn]] void Raise(std::int32_t number);
[[noreturn]] void Raise(std::int32_t number, std::string description);

// The process-wide current error, the runtime's `Err`. Set by the traps when
// they catch, read and cleared by CDebug::OutError. One UI thread, no locks.
struct ErrorState {
  std::int32_t Number = 0;
  std::string Description;

  void Set(std::int32_t number, std::string description);
  void Clear() noexcept;
};

extern ErrorState Err;

}  // namespace qorvane
