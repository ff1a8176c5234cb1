// Need(object): the object itself when it is there; a null handle where an
// object was expected is the runtime's error 91, "object not set", rather
// than a crash. Returned by value, so that an object handed out for one call
// stays alive while the caller uses it.
#pragma once

#include <memory>

#include "base/runtime_error.h"

namespace qorvane {

template <class T>
std::shared_ptr<T> Need(std::shared_ptr<T> object) {
  if (!object) Raise(err::kObjectNotSet);
  return object;
}

}  // namespace qorvane
