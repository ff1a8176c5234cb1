// Item objects: mail items, appointments and other items.
#include "sim/sim_item.h"

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "sim/sim_attachments.h"
#include "sim/sim_folder.h"
#include "sim/sim_recurrence_pattern.h"
#include "sim/sim_user_properties.h"
#include "sim/sim_windows.h"
#include "sim/world.h"

namespace sim {

template <class Interface>
ItemObject<Interface>::ItemObject(World& world, ItemPtr data, std::string_view interfaceName)
    : world_(world), data_(std::move(data)), generation_(data_->generation), interfaceName_(interfaceName) {}

template <class Interface>
ItemData& ItemObject<Interface>::Use(std::string_view member) {
  world_.Enter(interfaceName_, member);
  if (!Live()) fault::MovedOrDeleted();
  return *data_;
}

template <class Interface>
long ItemObject<Interface>::Class() {
  return Use("Class").itemClass;
}

template <class Interface>
std::string ItemObject<Interface>::EntryID() {
  return Use("EntryID").entryId;
}

template <class Interface>
std::string ItemObject<Interface>::Subject() {
  return Use("Subject").subject;
}

template <class Interface>
void ItemObject<Interface>::Subject(const std::string& value) {
  Use("Subject").subject = value;
}

template <class Interface>
client::Ref<client::UserProperties> ItemObject<Interface>::UserProperties() {
  Use("UserProperties");
  return world_.Hand(std::make_shared<SimUserProperties>(world_, data_));
}

template <class Interface>
client::Ref<client::MAPIFolder> ItemObject<Interface>::Parent() {
  return world_.Hand(Use("Parent").folder->shared_from_this());
}

template <class Interface>
void ItemObject<Interface>::Save() {
  Use("Save");
  world_.Save(data_);
}

template <class Interface>
void ItemObject<Interface>::Delete() {
  Use("Delete");
  world_.Delete(data_);
}

template <class Interface>
client::Ref<client::Item> ItemObject<Interface>::Copy() {
  Use("Copy");
  return world_.Wrap(world_.Copy(data_));
}

template <class Interface>
client::Ref<client::Item> ItemObject<Interface>::Move(const client::Ref<client::MAPIFolder>& folder) {
  Use("Move");
  if (!folder) qorvane::Raise(qorvane::err::kObjectNotSet);
  auto* target = dynamic_cast<SimFolder*>(folder.get());
  if (!target) qorvane::Raise(qorvane::err::kTypeMismatch);
  world_.Move(data_, *target);
  return world_.Wrap(data_);
}

template <class Interface>
client::Ref<client::MailItem> ItemObject<Interface>::AsMailItem() {
  if (Use("AsMailItem").itemClass != client::olMail) return nullptr;
  return world_.Hand(std::make_shared<SimMailItem>(world_, data_));
}

template <class Interface>
client::Ref<client::AppointmentItem> ItemObject<Interface>::AsAppointmentItem() {
  if (Use("AsAppointmentItem").itemClass != client::olAppointment) return nullptr;
  return world_.Hand(std::make_shared<SimAppointmentItem>(world_, data_));
}

template class ItemObject<client::MailItem>;
template class ItemObject<client::AppointmentItem>;
template class ItemObject<client::Item>;

std::string SimMailItem::Body() { return Use("Body").body; }
void SimMailItem::Body(const std::string& value) { Use("Body").body = value; }
std::string SimMailItem::To() { return Use("To").to; }
void SimMailItem::To(const std::string& value) { Use("To").to = value; }
bool SimMailItem::Sent() { return Use("Sent").sent; }

client::Ref<client::Attachments> SimMailItem::Attachments() {
  Use("Attachments");
  return world_.Hand(std::make_shared<SimAttachments>(world_, data_));
}

void SimMailItem::Display() {
  Use("Display");
  world_.OpenInspector(data_);
}

void SimMailItem::Close(long saveMode) {
  Use("Close");
  if (saveMode != client::olSave && saveMode != client::olDiscard && saveMode != 2)
    qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  for (const auto& inspector : std::vector(world_.inspectors)) {
    if (inspector->Data() == data_) world_.CloseInspector(*inspector, client::olDiscard);
  }
  if (saveMode == client::olSave) world_.Save(data_);
}

double SimAppointmentItem::Start() { return Use("Start").start; }

void SimAppointmentItem::Start(double value) {
  // Moving the start keeps the appointment's length, as in the client.
  ItemData& item = Use("Start");
  item.end = value + (item.end - item.start);
  item.start = value;
}

double SimAppointmentItem::End() { return Use("End").end; }
void SimAppointmentItem::End(double value) { Use("End").end = value; }
bool SimAppointmentItem::ReminderSet() { return Use("ReminderSet").reminderSet; }
void SimAppointmentItem::ReminderSet(bool value) { Use("ReminderSet").reminderSet = value; }

client::Ref<client::RecurrencePattern> SimAppointmentItem::GetRecurrencePattern() {
  ItemData& item = Use("GetRecurrencePattern");
  if (!item.pattern) {
    // Asking for the pattern makes the appointment recur: weekly on its day.
    PatternData pattern;
    const std::int64_t day = qorvane::SerialDay(item.start);
    pattern.dayOfWeekMask = 1L << qorvane::WeekdayIndexSunday0(day);
    pattern.dayOfMonth = qorvane::Day(item.start);
    pattern.monthOfYear = qorvane::Month(item.start);
    pattern.patternStartDate = qorvane::DatePart(item.start);
    item.pattern = pattern;
  }
  return world_.Hand(std::make_shared<SimRecurrencePattern>(world_, data_));
}

ItemPtr ItemOf(const client::Ref<client::Item>& item) {
  if (!item) qorvane::Raise(qorvane::err::kObjectNotSet);
  const auto check = [](const auto* object) -> ItemPtr {
    if (!object->Live()) fault::MovedOrDeleted();
    return object->Data();
  };
  if (const auto* mail = dynamic_cast<const SimMailItem*>(item.get())) return check(mail);
  if (const auto* appointment = dynamic_cast<const SimAppointmentItem*>(item.get())) return check(appointment);
  if (const auto* other = dynamic_cast<const SimOtherItem*>(item.get())) return check(other);
  qorvane::Raise(qorvane::err::kTypeMismatch);
}

}  // namespace sim
