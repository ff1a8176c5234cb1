// QueryInterface for the COM objects the code implements: the object lists
// which interface pointer answers which IID, this does the rest.
#pragma once

#include <windows.h>
#include <objbase.h>

#include <initializer_list>
#include <utility>

namespace qorvane::com {

// Gives out (with a new reference) the pointer of the first entry whose IID
// is iid; E_NOINTERFACE and null when none is. A null IID pointer in an
// entry never matches.
inline HRESULT QueryInterfaceFrom(REFIID iid, void** object,
                                  std::initializer_list<std::pair<const IID*, IUnknown*>> answers) {
  if (!object) return E_POINTER;
  for (const auto& [answered, pointer] : answers) {
    if (answered && IsEqualIID(iid, *answered)) {
      pointer->AddRef();
      *object = pointer;
      return S_OK;
    }
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

}  // namespace qorvane::com
