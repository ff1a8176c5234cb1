// Items: any item, mail items, appointments with their recurrence, and what
// items carry (user properties, attachments).
//
// The members every kind of item has (Class, EntryID, Subject, Save, Move,
// ...) carry the same DISPIDs on every kind, as the client's type library
// gives them, so an item of a folder is called through one "Item" type
// before anyone knows its kind. Members of one kind (a mail's Body, an
// appointment's Start) are reached only after Class said which kind it is.
#include "base/runtime_error.h"
#include "win/binding/bound_object.h"

namespace binding {
namespace {

com::DispatchType kItemType("Item");
com::DispatchType kMailItemType("MailItem");
com::DispatchType kAppointmentItemType("AppointmentItem");
com::DispatchType kPatternType("RecurrencePattern");
com::DispatchType kUserPropertiesType("UserProperties");
com::DispatchType kUserPropertyType("UserProperty");
com::DispatchType kAttachmentsType("Attachments");
com::DispatchType kAttachmentType("Attachment");

Ref<client::UserProperties> BindUserProperties(const com::ScopedVariant& object);
Ref<client::Attachments> BindAttachments(const com::ScopedVariant& object);
Ref<client::RecurrencePattern> BindPattern(const com::ScopedVariant& object);

template <class Interface>
class ItemObject : public Interface, public Bound {
 public:
  ItemObject(com::ComPtr<IDispatch> object, com::DispatchType& type) : Bound(std::move(object), type) {}

  long Class() override { return Long("Class"); }
  std::string EntryID() override { return Text("EntryID"); }
  std::string Subject() override { return Text("Subject"); }
  void Subject(const std::string& value) override { Put("Subject", value); }
  Ref<client::UserProperties> UserProperties() override { return BindUserProperties(Get("UserProperties")); }
  Ref<client::MAPIFolder> Parent() override { return BindFolder(Get("Parent")); }
  void Save() override { Call("Save"); }
  void Delete() override { Call("Delete"); }
  Ref<client::Item> Copy() override { return BindItem(Get("Copy")); }
  Ref<client::Item> Move(const Ref<client::MAPIFolder>& folder) override {
    return BindItem(Get("Move", {ArgumentOf(folder)}));
  }
  Ref<client::MailItem> AsMailItem() override;
  Ref<client::AppointmentItem> AsAppointmentItem() override;
};

class BoundMailItem final : public ItemObject<client::MailItem> {
 public:
  explicit BoundMailItem(com::ComPtr<IDispatch> object) : ItemObject(std::move(object), kMailItemType) {}
  std::string Body() override { return Text("Body"); }
  void Body(const std::string& value) override { Put("Body", value); }
  std::string To() override { return Text("To"); }
  void To(const std::string& value) override { Put("To", value); }
  bool Sent() override { return Bool("Sent"); }
  Ref<client::Attachments> Attachments() override { return BindAttachments(Get("Attachments")); }
  void Display() override { Call("Display"); }
  void Close(long saveMode) override { Call("Close", {saveMode}); }
};

class BoundAppointmentItem final : public ItemObject<client::AppointmentItem> {
 public:
  explicit BoundAppointmentItem(com::ComPtr<IDispatch> object)
      : ItemObject(std::move(object), kAppointmentItemType) {}
  double Start() override { return Double("Start"); }
  void Start(double value) override { PutDate("Start", value); }
  double End() override { return Double("End"); }
  void End(double value) override { PutDate("End", value); }
  bool ReminderSet() override { return Bool("ReminderSet"); }
  void ReminderSet(bool value) override { Put("ReminderSet", value); }
  Ref<client::RecurrencePattern> GetRecurrencePattern() override { return BindPattern(Get("GetRecurrencePattern")); }
};

class BoundOtherItem final : public ItemObject<client::Item> {
 public:
  explicit BoundOtherItem(com::ComPtr<IDispatch> object) : ItemObject(std::move(object), kItemType) {}
};

template <class Interface>
Ref<client::MailItem> ItemObject<Interface>::AsMailItem() {
  if (Class() != client::olMail) return nullptr;
  return std::make_shared<BoundMailItem>(com::ComPtr<IDispatch>(Object()));
}

template <class Interface>
Ref<client::AppointmentItem> ItemObject<Interface>::AsAppointmentItem() {
  if (Class() != client::olAppointment) return nullptr;
  return std::make_shared<BoundAppointmentItem>(com::ComPtr<IDispatch>(Object()));
}

class BoundPattern final : public client::RecurrencePattern, public Bound {
 public:
  explicit BoundPattern(com::ComPtr<IDispatch> object) : Bound(std::move(object), kPatternType) {}
  long RecurrenceType() override { return Long("RecurrenceType"); }
  void RecurrenceType(long value) override { Put("RecurrenceType", value); }
  long DayOfWeekMask() override { return Long("DayOfWeekMask"); }
  void DayOfWeekMask(long value) override { Put("DayOfWeekMask", value); }
  long DayOfMonth() override { return Long("DayOfMonth"); }
  void DayOfMonth(long value) override { Put("DayOfMonth", value); }
  long MonthOfYear() override { return Long("MonthOfYear"); }
  void MonthOfYear(long value) override { Put("MonthOfYear", value); }
  long Instance() override { return Long("Instance"); }
  void Instance(long value) override { Put("Instance", value); }
  long Interval() override { return Long("Interval"); }
  void Interval(long value) override { Put("Interval", value); }
  long Occurrences() override { return Long("Occurrences"); }
  void Occurrences(long value) override { Put("Occurrences", value); }
  double PatternStartDate() override { return Double("PatternStartDate"); }
  void PatternStartDate(double value) override { PutDate("PatternStartDate", value); }
  double PatternEndDate() override { return Double("PatternEndDate"); }
  void PatternEndDate(double value) override { PutDate("PatternEndDate", value); }
};

class BoundUserProperty final : public client::UserProperty, public Bound {
 public:
  explicit BoundUserProperty(com::ComPtr<IDispatch> object) : Bound(std::move(object), kUserPropertyType) {}
  std::string Name() override { return Text("Name"); }
  long Type() override { return Long("Type"); }
  qorvane::Variant Value() override { return Get("Value").ToValue(); }
  void Value(const qorvane::Variant& value) override { Put("Value", value); }
  void Delete() override { Call("Delete"); }
};

class BoundUserProperties final : public client::UserProperties, public Bound {
 public:
  explicit BoundUserProperties(com::ComPtr<IDispatch> object) : Bound(std::move(object), kUserPropertiesType) {}
  long Count() override { return Long("Count"); }
  Ref<client::UserProperty> Item(long index) override { return MakeBound<BoundUserProperty>(Get("Item", {index})); }
  Ref<client::UserProperty> Find(const std::string& name) override {
    return MakeBound<BoundUserProperty>(Get("Find", {name}));
  }
  Ref<client::UserProperty> Add(const std::string& name, long type) override {
    return MakeBound<BoundUserProperty>(Get("Add", {name, type}));
  }
};

class BoundAttachment final : public client::Attachment, public Bound {
 public:
  explicit BoundAttachment(com::ComPtr<IDispatch> object) : Bound(std::move(object), kAttachmentType) {}
  std::string FileName() override { return Text("FileName"); }
  std::string DisplayName() override { return Text("DisplayName"); }
};

class BoundAttachments final : public client::Attachments, public Bound {
 public:
  explicit BoundAttachments(com::ComPtr<IDispatch> object) : Bound(std::move(object), kAttachmentsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::Attachment> Item(long index) override { return MakeBound<BoundAttachment>(Get("Item", {index})); }
  // Add(Source, Type, Position, DisplayName); without a display name the
  // client shows the file's name.
  Ref<client::Attachment> Add(const std::string& source, const std::string& displayName) override {
    const auto missing = com::ScopedVariant::Missing();
    return MakeBound<BoundAttachment>(
        Get("Add", {source, missing, missing, displayName.empty() ? missing : com::ScopedVariant(displayName)}));
  }
};

Ref<client::UserProperties> BindUserProperties(const com::ScopedVariant& object) {
  return MakeBound<BoundUserProperties>(object);
}
Ref<client::Attachments> BindAttachments(const com::ScopedVariant& object) {
  return MakeBound<BoundAttachments>(object);
}
Ref<client::RecurrencePattern> BindPattern(const com::ScopedVariant& object) { return MakeBound<BoundPattern>(object); }

}  // namespace

Ref<client::Item> BindItem(const com::ScopedVariant& object) { return MakeBound<BoundOtherItem>(object); }

}  // namespace binding
