// BSTR ownership and conversion.
#include "win/com/bstr.h"

#include "base/runtime_error.h"
#include "win/com/wide_text.h"

namespace qorvane::com {

Bstr::Bstr(std::string_view utf8) {
  const std::wstring wide = WideFromUtf8(utf8);
  b_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!b_) Raise(err::kOutOfMemory);
}

std::string Bstr::Utf8Of(BSTR b) { return Utf8FromWide(b, static_cast<int>(SysStringLen(b))); }

}  // namespace qorvane::com
