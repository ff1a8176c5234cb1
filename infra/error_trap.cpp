// Turning whatever a trapped body threw into the runtime's error state.
#include "infra/error_trap.h"

#include <exception>
#include <new>
#include <stdexcept>

#include "base/runtime_error.h"
#include "infra/cdebug.h"

namespace qorvane {

void CaptureCurrentException() noexcept {
  try {
    throw;
  } catch (const RuntimeError& e) {
    Err.Set(e.Number(), e.Description());
  } catch (const std::bad_alloc&) {
    Err.Set(err::kOutOfMemory, StandardDescription(err::kOutOfMemory));
  } catch (const std::out_of_range& e) {
    Err.Set(err::kSubscriptOutOfRange, StandardDescription(err::kSubscriptOutOfRange));
  } catch (const std::exception& e) {
    Err.Set(err::kInternal, e.what());
  } catch (...) {
    Err.Set(err::kInternal, StandardDescription(err::kInternal));
  }
}

void LogTrappedError(std::string_view label) { g_debug.OutError(label); }

}  // namespace qorvane
