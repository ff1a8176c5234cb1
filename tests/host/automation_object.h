// The simulated client's objects as automation objects: each answers
// GetIDsOfNames and Invoke for the members of its table, the way the
// client's own objects answer a late-bound caller.
//
// A table lists an interface's members in the client's order; a member's
// DISPID is its position (from 1), so two interfaces may use one DISPID for
// different members, as real ones do, and a caller that mixes up interface
// types calls the wrong member. Names are matched without case. Failures
// reach the caller as DISP_E_EXCEPTION with EXCEPINFO, numbered as
// win/com/error.h describes.
//
// Objects are reference counted; every call hands out a new object, as the
// client does. One thread.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <ocidl.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "client/client.h"
#include "win/com/com_ptr.h"
#include "win/com/dispatch_args.h"
#include "win/com/variant.h"

namespace host {

namespace com = qorvane::com;
using client::Ref;

// What callers asked of the host's objects, process-wide.
struct HostCounts {
  std::int64_t getIdsOfNames = 0;
  std::int64_t invokes = 0;
  std::int64_t objectsMade = 0;
  std::int64_t objectsLive = 0;
};
HostCounts& Counts();

class ConnectionPoint;

class AutomationObject : public IDispatch, public IConnectionPointContainer {
 public:
  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override;
  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO* info, UINT* badArgument) override;
  // IConnectionPointContainer: only objects that raise events answer it.
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

  // The simulated object behind it, when it was exposed as that type.
  virtual const void* Target(const std::type_info& type) const { return nullptr; }

 protected:
  AutomationObject();
  virtual ~AutomationObject();

  // The member's DISPID, or DISPID_UNKNOWN.
  virtual DISPID IdOf(std::string_view name) const = 0;
  // Runs the member; raises qorvane::RuntimeError for what the caller gets
  // as an exception.
  virtual com::ScopedVariant Run(DISPID id, WORD flags, const com::DispatchArgs& args) = 0;

  // Makes this object a source of the event interface; connect is told when
  // the first sink connects (true) and the last one leaves (false).
  void AddEvents(const IID& events, std::function<void(bool)> connect);
  // Raises an event at every connected sink, arguments in declared order.
  void Raise(const IID& events, DISPID id, std::vector<com::ScopedVariant> args);

 private:
  friend class ConnectionPoint;

  ULONG refs_ = 0;
  std::vector<std::unique_ptr<ConnectionPoint>> points_;
};

// A member of an interface: get runs a property get or a method; put a
// property put (only by reference, DISPATCH_PROPERTYPUTREF, when
// byReference, as an object property's Set).
template <class Target>
struct Member {
  using Getter = std::function<com::ScopedVariant(Target&, const com::DispatchArgs&)>;
  using Putter = std::function<void(Target&, const com::DispatchArgs&, const com::ScopedVariant&)>;
  Member(const char* name, Getter get, Putter put = nullptr, bool byReference = false)
      : name(name), get(std::move(get)), put(std::move(put)), byReference(byReference) {}
  const char* name;
  Getter get;
  Putter put;
  bool byReference;
};

template <class Target>
using MemberTable = std::vector<Member<Target>>;

bool EqualsNoCase(std::string_view a, std::string_view b);
// Raise 438 for a DISPID outside the table and for a get or put the member
// does not have, and 91 for a put by value of a member set by reference.
void CheckMember(DISPID id, std::size_t count);
void CheckPut(bool hasPut, bool byReference, WORD flags);
void CheckGet(bool hasGet);

// An automation object over one object of the simulated client.
template <class T>
class HostObject : public AutomationObject {
 public:
  HostObject(Ref<T> target, const MemberTable<T>& members) : target_(std::move(target)), members_(members) {}

  const Ref<T>& target() const { return target_; }
  const void* Target(const std::type_info& type) const override { return type == typeid(T) ? &target_ : nullptr; }

 protected:
  DISPID IdOf(std::string_view name) const override {
    for (std::size_t i = 0; i < members_.size(); ++i) {
      if (EqualsNoCase(members_[i].name, name)) return static_cast<DISPID>(i + 1);
    }
    return DISPID_UNKNOWN;
  }
  com::ScopedVariant Run(DISPID id, WORD flags, const com::DispatchArgs& args) override {
    CheckMember(id, members_.size());
    const Member<T>& member = members_[static_cast<std::size_t>(id - 1)];
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
      CheckPut(member.put != nullptr, member.byReference, flags);
      member.put(*target_, args, args.PutValue());
      return {};
    }
    CheckGet(member.get != nullptr);
    return member.get(*target_, args);
  }

 private:
  Ref<T> target_;
  const MemberTable<T>& members_;
};

// A new automation object of class Object over target (made with the extra
// arguments), as a VT_DISPATCH value; Nothing for a null target.
template <class Object, class Target, class... Extra>
com::ScopedVariant ExposeAs(const Ref<Target>& target, Extra&&... extra) {
  if (!target) return com::ScopedVariant::Nothing();
  return com::ScopedVariant(static_cast<IDispatch*>(new Object(target, std::forward<Extra>(extra)...)));
}

// A new automation object over target with the table's members.
template <class Target>
com::ScopedVariant Expose(const Ref<Target>& target, const MemberTable<Target>& members) {
  return ExposeAs<HostObject<Target>>(target, members);
}

// The simulated object behind an automation object of the host, exposed as
// Target; raises 91 for Nothing and 13 for any other object.
const void* TargetOf(IDispatch* object, const std::type_info& type);
template <class Target>
Ref<Target> Unwrap(IDispatch* object) {
  return *static_cast<const Ref<Target>*>(TargetOf(object, typeid(Target)));
}
template <class Target>
Ref<Target> Unwrap(const com::ScopedVariant& value) {
  return Unwrap<Target>(value.ToObject().get());
}

}  // namespace host
