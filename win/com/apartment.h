// COM on the current thread: a scoped single-threaded apartment for hosts
// and tests, and a once-per-thread initialisation for services that may be
// the first to use COM on a thread.
#pragma once

#include <windows.h>
#include <objbase.h>

namespace qorvane::com {

// Enters a single-threaded apartment for the scope. When the thread already
// is in one (S_FALSE) the matching CoUninitialize still follows; when it is
// in another apartment (RPC_E_CHANGED_MODE) COM is left as it was.
class ComApartment {
 public:
  ComApartment() : hr_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() {
    if (SUCCEEDED(hr_)) CoUninitialize();
  }
  HRESULT Result() const { return hr_; }

 private:
  HRESULT hr_;
};

// The client has normally initialised COM on its UI thread already; a tool
// or test thread may not have. Either answer (including an apartment chosen
// by somebody else) leaves COM usable for in-process objects, so the result
// is not checked, and the initialisation is kept for the thread's life.
inline void EnsureComOnThisThread() {
  thread_local bool initialised = false;
  if (initialised) return;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  initialised = true;
}

}  // namespace qorvane::com
