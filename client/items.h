// Items of a folder: any item, the mail item, the appointment with its
// recurrence pattern, and what items carry (user properties, attachments).
// See client/ref.h for the lifecycle contract.
#pragma once

#include <string>

#include "client/ref.h"

namespace client {

// Any item of a folder. Class() tells the kind (olMail, olAppointment, ...);
// AsMailItem / AsAppointmentItem give the typed view or null.
class Item {
 public:
  virtual ~Item() = default;
  virtual long Class() = 0;
  // Empty until the item has been saved.
  virtual std::string EntryID() = 0;
  virtual std::string Subject() = 0;
  virtual void Subject(const std::string& value) = 0;
  virtual Ref<client::UserProperties> UserProperties() = 0;
  // The folder that holds the item.
  virtual Ref<MAPIFolder> Parent() = 0;
  virtual void Save() = 0;
  virtual void Delete() = 0;
  // A new item of the same kind in the same folder.
  virtual Ref<Item> Copy() = 0;
  // Returns the moved item; the object it was called on must not be used
  // afterwards.
  virtual Ref<Item> Move(const Ref<MAPIFolder>& folder) = 0;

  virtual Ref<MailItem> AsMailItem() = 0;
  virtual Ref<AppointmentItem> AsAppointmentItem() = 0;
};

class MailItem : public Item {
 public:
  virtual std::string Body() = 0;
  virtual void Body(const std::string& value) = 0;
  // Display names of the To recipients, "; "-separated.
  virtual std::string To() = 0;
  virtual void To(const std::string& value) = 0;
  virtual bool Sent() = 0;
  virtual Ref<client::Attachments> Attachments() = 0;
  virtual void Display() = 0;
  virtual void Close(long saveMode) = 0;
};

class AppointmentItem : public Item {
 public:
  virtual double Start() = 0;
  virtual void Start(double value) = 0;
  virtual double End() = 0;
  virtual void End(double value) = 0;
  virtual bool ReminderSet() = 0;
  virtual void ReminderSet(bool value) = 0;
  virtual Ref<client::RecurrencePattern> GetRecurrencePattern() = 0;
};

class RecurrencePattern {
 public:
  virtual ~RecurrencePattern() = default;
  virtual long RecurrenceType() = 0;
  virtual void RecurrenceType(long value) = 0;
  virtual long DayOfWeekMask() = 0;
  virtual void DayOfWeekMask(long value) = 0;
  virtual long DayOfMonth() = 0;
  virtual void DayOfMonth(long value) = 0;
  virtual long MonthOfYear() = 0;
  virtual void MonthOfYear(long value) = 0;
  virtual long Instance() = 0;
  virtual void Instance(long value) = 0;
  virtual long Interval() = 0;
  virtual void Interval(long value) = 0;
  virtual long Occurrences() = 0;
  virtual void Occurrences(long value) = 0;
  virtual double PatternStartDate() = 0;
  virtual void PatternStartDate(double value) = 0;
  virtual double PatternEndDate() = 0;
  virtual void PatternEndDate(double value) = 0;
};

class UserProperties {
 public:
  virtual ~UserProperties() = default;
  virtual long Count() = 0;
  // 1-based.
  virtual Ref<UserProperty> Item(long index) = 0;
  // Null when the item has no property of that name (names match without case).
  virtual Ref<UserProperty> Find(const std::string& name) = 0;
  virtual Ref<UserProperty> Add(const std::string& name, long type) = 0;
};

class UserProperty {
 public:
  virtual ~UserProperty() = default;
  virtual std::string Name() = 0;
  virtual long Type() = 0;
  virtual Variant Value() = 0;
  // Converted to the property's type; raises 13 when it does not convert.
  virtual void Value(const Variant& value) = 0;
  virtual void Delete() = 0;
};

class Attachments {
 public:
  virtual ~Attachments() = default;
  virtual long Count() = 0;
  virtual Ref<Attachment> Item(long index) = 0;
  // Attaches a copy of the file at source (raises when it can't be read).
  virtual Ref<Attachment> Add(const std::string& source, const std::string& displayName) = 0;
};

class Attachment {
 public:
  virtual ~Attachment() = default;
  virtual std::string FileName() = 0;
  virtual std::string DisplayName() = 0;
};

}  // namespace client
