// Runtime error numbers, their standard texts, and the process-wide Err.
#include "base/runtime_error.h"

#include <utility>

namespace qorvane {

ErrorState Err;

std::string StandardDescription(std::int32_t number) {
  switch (number) {
    case err::kInvalidCall: return "Invalid procedure call or argument";
    case err::kOverflow: return "Overflow";
    case err::kOutOfMemory: return "Out of memory";
    case err::kSubscriptOutOfRange: return "Subscript out of range";
    case err::kDivisionByZero: return "Division by zero";
    case err::kTypeMismatch: return "Type mismatch";
    case err::kInternal: return "Internal error";
    case err::kFileNotFound: return "File not found";
    case err::kPathFileAccess: return "Path/File access error";
    case err::kObjectNotSet: return "Object variable or With block variable not set";
    case err::kCannotCreateObject: return "ActiveX component can't create object";
    case err::kObjectDoesntSupport: return "Object doesn't support this property or method";
    case err::kArgumentNotOptional: return "Argument not optional";
    case err::kWrongArgumentCount: return "Wrong number of arguments or invalid property assignment";
    default: return "Application-defined or object-defined error";
  }
}

RuntimeError::RuntimeError(std::int32_t number) : RuntimeError(number, StandardDescription(number)) {}

RuntimeError::RuntimeError(std::int32_t number, std::string description)
    : std::runtime_error(description), number_(number), description_(std::move(description)) {}

void Raise(std::int32_t number) { throw RuntimeError(number); }
void Raise(std::int32_t number, std::string description) { throw RuntimeError(number, std::move(description)); }

void ErrorState::Set(std::int32_t number, std::string description) {
  Number = number;
  Description = std::move(description);
}

void ErrorState::Clear() noexcept {
  Number = 0;
  Description.clear();
}

}  // namespace qorvane
