// Late-bound calls on automation objects: members by name, arguments in the
// order the object model documents them.
//
// Member names are resolved once per interface type, not per object: the
// client hands out thousands of objects of one type (every item of a folder)
// and all of them share one DispatchType and so one GetIDsOfNames per name.
// A type must therefore name one interface: objects whose DISPIDs may differ
// (a mail item and an appointment, a button and a pop-up) get a type each.
//
// Failures raise qorvane::RuntimeError as com/error.h describes; calls on a
// Dispatch that holds no object raise 91, a name the object does not know
// raises 438. One thread (the client's UI thread), no locks.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "win/com/com_ptr.h"
#include "win/com/variant.h"

namespace qorvane::com {

// How often names were asked for and how often GetIDsOfNames had to be
// called, process-wide (for measuring the cache).
struct NameLookupCounts {
  std::int64_t asked = 0;
  std::int64_t resolved = 0;
};
NameLookupCounts& NameLookups();

class DispatchType {
 public:
  explicit DispatchType(std::string name, bool cached = true) : name_(std::move(name)), cached_(cached) {}
  // For objects whose interface is not known before asking them (a
  // folder's parent may be a folder or the session): names are resolved
  // on every call, never cached.
  static DispatchType& Unknown();

  DispatchType(const DispatchType&) = delete;
  DispatchType& operator=(const DispatchType&) = delete;

  const std::string& Name() const { return name_; }
  // The member's DISPID, asking object only the first time.
  DISPID IdOf(IDispatch* object, std::string_view member);

 private:
  std::string name_;
  bool cached_;
  std::map<std::string, DISPID, std::less<>> ids_;
};

using Args = std::initializer_list<ScopedVariant>;

// One IDispatch::Invoke by DISPID, the arguments in declared order (they
// go last first); value, when given, is a put's value. The result is asked
// for only with wantResult. Raises as above.
ScopedVariant InvokeById(IDispatch* object, DISPID id, WORD flags, std::span<const ScopedVariant> args,
                         const ScopedVariant* value = nullptr, bool wantResult = true);

class Dispatch {
 public:
  Dispatch() = default;
  Dispatch(ComPtr<IDispatch> object, DispatchType& type) : object_(std::move(object)), type_(&type) {}

  // A property's value or a method's result (arguments as documented),
  // asked as the runtime asks for any value: DISPATCH_METHOD together
  // with DISPATCH_PROPERTYGET, since the object model has both kinds.
  ScopedVariant Get(std::string_view member, Args args = {}) const;
  // A method called for its effect (DISPATCH_METHOD, no result asked).
  void Call(std::string_view member, Args args = {}) const;
  // Sets a property (DISPATCH_PROPERTYPUT), with index arguments if it has any.
  void Put(std::string_view member, const ScopedVariant& value, Args args = {}) const;
  // Sets an object property by reference (DISPATCH_PROPERTYPUTREF).
  void PutRef(std::string_view member, IDispatch* object, Args args = {}) const;

  // The same object with its names resolved as another interface type.
  Dispatch As(DispatchType& type) const { return Dispatch(object_, type); }

  IDispatch* get() const { return object_.get(); }
  const ComPtr<IDispatch>& Object() const { return object_; }
  explicit operator bool() const { return static_cast<bool>(object_); }

 private:
  ScopedVariant Invoke(std::string_view member, WORD flags, const ScopedVariant* value, Args args,
                       bool wantResult) const;

  ComPtr<IDispatch> object_;
  DispatchType* type_ = nullptr;
};

}  // namespace qorvane::com
