// The base of every wrapper: one client object, called by name, with the
// names cached under the wrapper's interface type. Also the factories the
// wrappers use to hand out each other, so that no file needs another's
// classes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "win/binding/binding.h"
#include "win/com/dispatch.h"

namespace binding {

namespace com = qorvane::com;
using client::Ref;

class Bound : public BoundObject {
 public:
  Bound(com::ComPtr<IDispatch> object, com::DispatchType& type) : self_(std::move(object), type) {}
  IDispatch* Object() const override { return self_.get(); }

 protected:
  const com::Dispatch& Self() const { return self_; }
  com::ScopedVariant Get(std::string_view member, com::Args args = {}) const { return self_.Get(member, args); }
  void Call(std::string_view member, com::Args args = {}) const { self_.Call(member, args); }
  void Put(std::string_view member, const com::ScopedVariant& value) const { self_.Put(member, value); }

  std::string Text(std::string_view member) const { return Get(member).ToText(); }
  long Long(std::string_view member) const { return Get(member).ToLong(); }
  bool Bool(std::string_view member) const { return Get(member).ToBool(); }
  double Double(std::string_view member) const { return Get(member).ToDouble(); }
  // A date-time property, sent back as a date (VT_DATE), not a number.
  void PutDate(std::string_view member, double value) const { Put(member, qorvane::DateValue{value}); }

 private:
  com::Dispatch self_;
};

// A new wrapper of the object held, or null for Nothing and Empty.
template <class Wrapper>
std::shared_ptr<Wrapper> MakeBound(const com::ScopedVariant& object) {
  auto dispatch = object.ToObject();
  if (!dispatch) return nullptr;
  return std::make_shared<Wrapper>(std::move(dispatch));
}

// A wrapper for each kind of object, null for Nothing (and for Empty, which
// some calls return instead).
Ref<client::NameSpace> BindNameSpace(const com::ScopedVariant& object);
Ref<client::MAPIFolder> BindFolder(const com::ScopedVariant& object);
Ref<client::Folders> BindFolders(const com::ScopedVariant& object);
Ref<client::Items> BindItems(const com::ScopedVariant& object);
Ref<client::Views> BindViews(const com::ScopedVariant& object);
Ref<client::Item> BindItem(const com::ScopedVariant& object);
Ref<client::Explorers> BindExplorers(const com::ScopedVariant& object);
Ref<client::Explorer> BindExplorer(const com::ScopedVariant& object);
Ref<client::Inspectors> BindInspectors(const com::ScopedVariant& object);
Ref<client::Inspector> BindInspector(const com::ScopedVariant& object);
Ref<client::CommandBars> BindCommandBars(const com::ScopedVariant& object);
Ref<client::CommandBarControl> BindControl(const com::ScopedVariant& object);
Ref<client::SyncObjects> BindSyncObjects(const com::ScopedVariant& object);
Ref<client::COMAddIns> BindAddIns(const com::ScopedVariant& object);
Ref<client::COMAddIn> BindAddIn(const com::ScopedVariant& object);

// The client's argument for an object it gets back from us; raises 91 for
// null and 13 for an object of another implementation.
template <class T>
com::ScopedVariant ArgumentOf(const Ref<T>& object) {
  return com::ScopedVariant(DispatchOf(object));
}

}  // namespace binding
