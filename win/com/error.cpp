// Translations between HRESULTs and runtime errors.
#include "win/com/error.h"

#include <cstdio>

#include "win/com/bstr.h"
#include "win/com/wide_text.h"

namespace qorvane::com {
namespace {

bool IsControlCode(HRESULT hr) { return HRESULT_FACILITY(hr) == FACILITY_CONTROL && FAILED(hr); }

// What the system says about an HRESULT, without the trailing line break.
std::string SystemMessage(HRESULT hr) {
  wchar_t* text = nullptr;
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, static_cast<DWORD>(hr), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::string message = length > 0 ? Utf8FromWide(text, static_cast<int>(length)) : std::string();
  LocalFree(text);
  while (!message.empty() && (message.back() == '\n' || message.back() == '\r' || message.back() == ' '))
    message.pop_back();
  return message;
}

std::string DescriptionOf(HRESULT hr, std::int32_t number) {
  if (number != static_cast<std::int32_t>(hr)) return StandardDescription(number);
  char code[32];
  std::snprintf(code, sizeof code, "0x%08lX", static_cast<unsigned long>(hr));
  const std::string message = SystemMessage(hr);
  return "Automation error " + std::string(code) + (message.empty() ? "" : ": " + message);
}

}  // namespace

std::int32_t RuntimeNumberOf(HRESULT hr) {
  if (IsControlCode(hr)) return HRESULT_CODE(hr);
  switch (hr) {
    case E_INVALIDARG: return err::kInvalidCall;
    case DISP_E_OVERFLOW: return err::kOverflow;
    case E_OUTOFMEMORY: return err::kOutOfMemory;
    case DISP_E_BADINDEX: return err::kSubscriptOutOfRange;
    case DISP_E_DIVBYZERO: return err::kDivisionByZero;
    case DISP_E_TYPEMISMATCH: return err::kTypeMismatch;
    case CO_E_CLASSSTRING:
    case REGDB_E_CLASSNOTREG: return err::kCannotCreateObject;
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME: return err::kObjectDoesntSupport;
    case DISP_E_PARAMNOTOPTIONAL: return err::kArgumentNotOptional;
    case DISP_E_BADPARAMCOUNT: return err::kWrongArgumentCount;
    default: return static_cast<std::int32_t>(hr);
  }
}

void RaiseHresult(HRESULT hr, std::string description) {
  const std::int32_t number = RuntimeNumberOf(hr);
  if (description.empty()) description = DescriptionOf(hr, number);
  throw RuntimeError(number, std::move(description));
}

void RaiseException(EXCEPINFO& info) {
  if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
  const Bstr source = Bstr::Adopt(info.bstrSource);
  const Bstr description = Bstr::Adopt(info.bstrDescription);
  const Bstr helpFile = Bstr::Adopt(info.bstrHelpFile);
  info.bstrSource = info.bstrDescription = info.bstrHelpFile = nullptr;
  // A callee reports either a 16-bit code of its own or an SCODE; only the
  // runtime's own codes (FACILITY_CONTROL) are translated from an SCODE,
  // so the client's errors keep the numbers its documentation gives.
  const HRESULT hr = info.wCode != 0 ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, info.wCode)
                     : FAILED(info.scode) ? info.scode
                                          : DISP_E_EXCEPTION;
  const std::int32_t number = IsControlCode(hr) ? HRESULT_CODE(hr) : static_cast<std::int32_t>(hr);
  std::string text = description.Utf8();
  if (text.empty()) text = DescriptionOf(hr, number);
  throw RuntimeError(number, std::move(text));
}

HRESULT HresultOf(std::int32_t number) {
  if (number > 0 && number <= 0xFFFF) return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
  return static_cast<HRESULT>(number);
}

HRESULT ReportError(const RuntimeError& error, EXCEPINFO* info, const char* source) {
  const HRESULT hr = HresultOf(error.Number());
  if (!info) return FAILED(hr) ? hr : E_FAIL;
  *info = EXCEPINFO{};
  info->scode = FAILED(hr) ? hr : E_FAIL;
  info->bstrSource = Bstr(source).Detach();
  info->bstrDescription = Bstr(error.Description()).Detach();
  return DISP_E_EXCEPTION;
}

}  // namespace qorvane::com
