// COM failures as the runtime reports them, and runtime errors as a COM
// caller sees them.
//
// A failed call raises qorvane::RuntimeError. Its number is the one the
// runtime's Err.Number would show: the runtime's own number for the failures
// it translates (13 for DISP_E_TYPEMISMATCH, 438 for an unknown member, the
// low word of a FACILITY_CONTROL code such as 0x800A005B = 91), else the
// HRESULT itself (0x8004010F reads as -2147221233). The description is the
// callee's EXCEPINFO text when it gave one, else the runtime's text.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <cstdint>
#include <string>

#include "base/runtime_error.h"

namespace qorvane::com {

// The runtime's number for an HRESULT returned by a call.
std::int32_t RuntimeNumberOf(HRESULT hr);

// Raises the HRESULT of a failed call; an empty description takes the
// runtime's text for the number (or the system's message for the HRESULT).
[[noreturn]] void RaiseHresult(HRESULT hr, std::string description = {});
inline void CheckHresult(HRESULT hr) {
  if (FAILED(hr)) RaiseHresult(hr);
}
// Raises what an Invoke that returned DISP_E_EXCEPTION reported in info, and
// frees info's strings.
[[noreturn]] void RaiseException(EXCEPINFO& info);

// For objects the add-in implements: the HRESULT that carries a runtime
// error to a COM caller (a runtime number n as 0x800A0000 | n).
HRESULT HresultOf(std::int32_t number);
// Reports error in info (when the caller gave one) and returns what Invoke
// returns for it: DISP_E_EXCEPTION with info, else the error's HRESULT.
HRESULT ReportError(const RuntimeError& error, EXCEPINFO* info, const char* source);

}  // namespace qorvane::com
