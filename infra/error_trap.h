// The error trap every procedure that can fail runs its body under.
//
//   bool done = qorvane::Trap("Main.SendMessage", [&] { ...body... });
//
// A RuntimeError (or any other exception, mapped to a runtime number) thrown
// by the body is copied into qorvane::Err and written to the log with the
// label through g_debug.OutError; Trap then returns false and the procedure
// returns its result as far as it was set. A failure of the log itself is not
// swallowed here: it travels to the caller's trap, as in the runtime, until
// an entry point (GuardEntry) stops it.
//
// GuardEntry is for every entry from the mail client, a timer or a window:
// it traps like Trap and additionally swallows anything the logging throws,
// so no error ever crosses back into the client.
#pragma once

#include <string_view>
#include <utility>

namespace qorvane {

// Copies the exception in flight into Err. Call only inside a catch block.
void CaptureCurrentException() noexcept;

// Logs Err under the label (g_debug.OutError).
void LogTrappedError(std::string_view label);

template <class Body>
bool Trap(std::string_view label, Body&& body) {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    CaptureCurrentException();
  }
  LogTrappedError(label);
  return false;
}

// Runs one step with errors ignored ("On Error Resume Next" for one
// statement): any failure is dropped and Err keeps it for a later check.
template <class Body>
bool IgnoreErrors(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    CaptureCurrentException();
    return false;
  }
}

template <class Body>
bool GuardEntry(std::string_view label, Body&& body) noexcept {
  try {
    return Trap(label, std::forward<Body>(body));
  } catch (...) {
    CaptureCurrentException();
    return false;
  }
}

}  // namespace qorvane
