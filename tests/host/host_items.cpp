// Items of every kind, their recurrence pattern, user properties and
// attachments. Every kind lists the members all items share first, so those
// keep one DISPID across kinds, as in the client's type library; the members
// of one kind follow and clash in number with another kind's.
#include "base/runtime_error.h"
#include "tests/host/host_objects.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
using V = com::ScopedVariant;
using Item = client::Item;

client::MailItem& Mail(Item& item) { return dynamic_cast<client::MailItem&>(item); }
client::AppointmentItem& Appointment(Item& item) { return dynamic_cast<client::AppointmentItem&>(item); }

const MemberTable<client::RecurrencePattern> kPattern = [] {
  using P = client::RecurrencePattern;
  using Get = long (P::*)();
  using Set = void (P::*)(long);
  const std::tuple<const char*, Get, Set> longs[] = {
      {"RecurrenceType", &P::RecurrenceType, &P::RecurrenceType}, {"DayOfWeekMask", &P::DayOfWeekMask, &P::DayOfWeekMask},
      {"DayOfMonth", &P::DayOfMonth, &P::DayOfMonth},             {"MonthOfYear", &P::MonthOfYear, &P::MonthOfYear},
      {"Instance", &P::Instance, &P::Instance},                   {"Interval", &P::Interval, &P::Interval},
      {"Occurrences", &P::Occurrences, &P::Occurrences}};
  MemberTable<P> table;
  for (const auto& [name, get, set] : longs) {
    table.push_back({name, [get = get](P& p, const Args&) { return V((p.*get)()); },
                     [set = set](P& p, const Args&, const V& value) { (p.*set)(value.ToLong()); }});
  }
  table.push_back({"PatternStartDate", [](P& p, const Args&) { return V(qorvane::DateValue{p.PatternStartDate()}); },
                   [](P& p, const Args&, const V& value) { p.PatternStartDate(value.ToDouble()); }});
  table.push_back({"PatternEndDate", [](P& p, const Args&) { return V(qorvane::DateValue{p.PatternEndDate()}); },
                   [](P& p, const Args&, const V& value) { p.PatternEndDate(value.ToDouble()); }});
  return table;
}();

const MemberTable<client::UserProperty> kUserProperty = {
    {"Name", [](client::UserProperty& p, const Args&) { return V(p.Name()); }},
    {"Type", [](client::UserProperty& p, const Args&) { return V(p.Type()); }},
    {"Value", [](client::UserProperty& p, const Args&) { return V(p.Value()); },
     [](client::UserProperty& p, const Args&, const V& value) { p.Value(value.ToValue()); }},
    {"Delete", [](client::UserProperty& p, const Args&) { return p.Delete(), NoValue(); }},
};

const MemberTable<client::UserProperties> kUserProperties = {
    {"Count", [](client::UserProperties& p, const Args&) { return V(p.Count()); }},
    {"Item", [](client::UserProperties& p, const Args& a) { return Expose(p.Item(a.Long(0)), kUserProperty); }},
    {"Find", [](client::UserProperties& p, const Args& a) { return Expose(p.Find(a.Text(0)), kUserProperty); }},
    {"Add", [](client::UserProperties& p, const Args& a) {
       return Expose(p.Add(a.Text(0), a.Has(1) ? a.Long(1) : client::olText), kUserProperty);
     }},
};

const MemberTable<client::Attachment> kAttachment = {
    {"FileName", [](client::Attachment& a, const Args&) { return V(a.FileName()); }},
    {"DisplayName", [](client::Attachment& a, const Args&) { return V(a.DisplayName()); }},
};

// Add(Source, Type, Position, DisplayName)
const MemberTable<client::Attachments> kAttachments = {
    {"Count", [](client::Attachments& a, const Args&) { return V(a.Count()); }},
    {"Item", [](client::Attachments& a, const Args& args) { return Expose(a.Item(args.Long(0)), kAttachment); }},
    {"Add", [](client::Attachments& a, const Args& args) {
       return Expose(a.Add(args.Text(0), args.Has(3) ? args.Text(3) : std::string()), kAttachment);
     }},
};

const MemberTable<Item> kCommon = {
    {"Class", [](Item& i, const Args&) { return V(i.Class()); }},
    {"EntryID", [](Item& i, const Args&) { return V(i.EntryID()); }},
    {"Subject", [](Item& i, const Args&) { return V(i.Subject()); },
     [](Item& i, const Args&, const V& value) { i.Subject(value.ToText()); }},
    {"UserProperties", [](Item& i, const Args&) { return Expose(i.UserProperties(), kUserProperties); }},
    {"Parent", [](Item& i, const Args&) { return ExposeFolder(i.Parent()); }},
    {"Save", [](Item& i, const Args&) { return i.Save(), NoValue(); }},
    {"Delete", [](Item& i, const Args&) { return i.Delete(), NoValue(); }},
    {"Copy", [](Item& i, const Args&) { return ExposeItem(i.Copy()); }},
    {"Move", [](Item& i, const Args& a) { return ExposeItem(i.Move(Unwrap<client::MAPIFolder>(a.At(0)))); }},
};

MemberTable<Item> CommonAnd(MemberTable<Item> own) {
  MemberTable<Item> table = kCommon;
  table.insert(table.end(), own.begin(), own.end());
  return table;
}

const MemberTable<Item> kMail = CommonAnd({
    {"Body", [](Item& i, const Args&) { return V(Mail(i).Body()); },
     [](Item& i, const Args&, const V& value) { Mail(i).Body(value.ToText()); }},
    {"To", [](Item& i, const Args&) { return V(Mail(i).To()); },
     [](Item& i, const Args&, const V& value) { Mail(i).To(value.ToText()); }},
    {"Sent", [](Item& i, const Args&) { return V(Mail(i).Sent()); }},
    {"Attachments", [](Item& i, const Args&) { return Expose(Mail(i).Attachments(), kAttachments); }},
    {"Display", [](Item& i, const Args&) { return Mail(i).Display(), NoValue(); }},
    {"Close", [](Item& i, const Args& a) { return Mail(i).Close(a.Long(0)), NoValue(); }},
});

const MemberTable<Item> kAppointment = CommonAnd({
    {"Start", [](Item& i, const Args&) { return V(qorvane::DateValue{Appointment(i).Start()}); },
     [](Item& i, const Args&, const V& value) { Appointment(i).Start(value.ToDouble()); }},
    {"End", [](Item& i, const Args&) { return V(qorvane::DateValue{Appointment(i).End()}); },
     [](Item& i, const Args&, const V& value) { Appointment(i).End(value.ToDouble()); }},
    {"ReminderSet", [](Item& i, const Args&) { return V(Appointment(i).ReminderSet()); },
     [](Item& i, const Args&, const V& value) { Appointment(i).ReminderSet(value.ToBool()); }},
    {"GetRecurrencePattern",
     [](Item& i, const Args&) { return Expose(Appointment(i).GetRecurrencePattern(), kPattern); }},
});

}  // namespace

com::ScopedVariant ExposeItem(const Ref<client::Item>& item) {
  if (dynamic_cast<client::MailItem*>(item.get())) return Expose(item, kMail);
  if (dynamic_cast<client::AppointmentItem*>(item.get())) return Expose(item, kAppointment);
  return Expose(item, kCommon);
}

}  // namespace host
