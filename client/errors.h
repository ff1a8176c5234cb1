// The error numbers (COM HRESULTs) by which the mail client reports the
// failures that its callers tell apart. Both bindings raise them the same
// way, which the conformance tests hold them to.
#pragma once

#include <cstdint>

namespace client {

// The item has been moved or deleted (MAPI_E_NOT_FOUND): the object that was
// moved, and anything taken from it, answers this from then on.
inline constexpr std::int32_t kMovedOrDeleted = -2147221233;
// The client refused the call with a message of its own (DISP_E_EXCEPTION):
// an unknown name, an index out of bounds, a duplicate, a filter it cannot
// parse.
inline constexpr std::int32_t kDispatchException = -2147352567;
inline constexpr std::int32_t kUnspecified = -2147467259;      // E_FAIL
inline constexpr std::int32_t kInvalidArgument = -2147024809;  // E_INVALIDARG
inline constexpr std::int32_t kFileNotFound = -2147024894;     // ERROR_FILE_NOT_FOUND as an HRESULT

}  // namespace client
