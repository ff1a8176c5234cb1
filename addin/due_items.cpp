// Finding due items and the earliest send time in the deferred folder.
#include "addin/due_items.h"

#include <cctype>
#include <cstdlib>

#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/locale.h"
#include "platform/time_zone.h"
#include "platform/virtual_timers.h"
#include "store/item_props.h"
#include "store/main_options.h"
#include "store/named_property.h"

namespace {

constexpr std::int64_t kMsPerMinute = 60000;

// Version 12 is the first whose Restrict takes DASL filters.
bool ClientFiltersItems() { return std::atoi(g_OutlookVersion.c_str()) >= 12; }

std::string ScheduleTimeUrl() { return Main::NamedPropertyUrl(Main::kScheduleTimeProperty); }

// The exact test: a mail item with a date-time "ScheduleTime".
std::optional<double> ScheduleTimeOf(const client::Ref<client::Item>& item) {
  if (item->Class() != client::olMail) return std::nullopt;
  double time = 0.0;
  if (!Main::GetUserProp(item, time)) return std::nullopt;
  return time;
}

// Visits items 1..Count, each under its own trap.
template <class Visit>
void ForEachItem(const client::Ref<client::Items>& items, std::string_view label, Visit&& visit) {
  const long count = items->Count();
  for (long i = 1; i <= count; ++i) {
    bool done = false;
    qorvane::Trap(label, [&] { done = visit(items->Item(i)); });
    if (done) return;
  }
}

// The seconds field of a general date, taken off: the last run of zeros after
// a time separator that no digit follows ("10:00:00 AM" -> "10:00 AM").
std::string WithoutSeconds(std::string text, const std::string& separator) {
  for (const std::string& zeros : {separator + "00", separator + "0"}) {
    std::size_t at = text.rfind(zeros);
    while (at != std::string::npos) {
      const std::size_t end = at + zeros.size();
      if (end == text.size() || !std::isdigit(static_cast<unsigned char>(text[end]))) return text.erase(at, zeros.size());
      if (at == 0) break;
      at = text.rfind(zeros, at - 1);
    }
  }
  return text;
}

}  // namespace

std::string DeferredFolderScan::FilterDateText(double minute) {
  const qorvane::Locale& locale = qorvane::CurrentLocale();
  return WithoutSeconds(locale.FormatGeneralDate(minute), locale.TimeSeparator());
}

std::string DeferredFolderScan::DueFilter(double now) {
  const std::int64_t utcMs = qorvane::OleDateToMs(qorvane::CurrentTimeZone().LocalToUtc(now));
  // Rounded up: the client reads the bound without seconds, and a bound
  // below now would miss an item due within this minute.
  const std::int64_t minutes = utcMs >= 0 ? (utcMs + kMsPerMinute - 1) / kMsPerMinute : utcMs / kMsPerMinute;
  return "@SQL=\"" + ScheduleTimeUrl() + "\" <= '" + FilterDateText(qorvane::MsToOleDate(minutes * kMsPerMinute)) +
         "'";
}

std::vector<client::Ref<client::MailItem>> DeferredFolderScan::DueItems(const client::Ref<client::MAPIFolder>& folder,
                                                                       double now, std::string_view label) {
  if (!folder) qorvane::Raise(qorvane::err::kObjectNotSet);
  earliestOfThisPass_.reset();
  const auto items = folder->Items();
  client::Ref<client::Items> candidates;
  if (ClientFiltersItems() && !filterRefused_) {
    const std::string filter = DueFilter(now);
    bool trusted = qorvane::Trap(label, [&] { candidates = items->Restrict(filter); });
    // A client that reads the bound's date differently finds nothing rather
    // than failing; nothing found while the earliest send time has come
    // means the filter cannot be trusted.
    if (trusted && candidates->Count() == 0) {
      const std::optional<double> earliest = Earliest(folder, label);
      trusted = !earliest || *earliest > now;
      // Nothing will be sent this pass, so the earliest stays what it is.
      if (trusted) earliestOfThisPass_ = earliest;
    }
    if (!trusted) {
      g_debug.OutWarning(label, "the client does not answer the filter " + filter + "; walking the folder from now on");
      filterRefused_ = true;
      candidates = nullptr;
    }
  }
  std::vector<client::Ref<client::MailItem>> due;
  // Collected first, sent afterwards: sending moves items out of the folder.
  ForEachItem(candidates ? candidates : items, label, [&](const client::Ref<client::Item>& item) {
    const std::optional<double> time = ScheduleTimeOf(item);
    if (time && now >= *time) due.push_back(item->AsMailItem());
    return false;
  });
  return due;
}

std::optional<double> DeferredFolderScan::Earliest(const client::Ref<client::MAPIFolder>& folder,
                                                   std::string_view label) {
  if (!folder) qorvane::Raise(qorvane::err::kObjectNotSet);
  if (earliestOfThisPass_) {
    const std::optional<double> known = *earliestOfThisPass_;
    earliestOfThisPass_.reset();
    return known;
  }
  client::Ref<client::Items> sorted;
  if (ClientFiltersItems() && !sortRefused_) {
    const bool done = qorvane::Trap(label, [&] {
      const auto fields = folder->UserDefinedProperties();
      auto field = fields->Find(Main::kScheduleTimeProperty);
      if (!field) field = fields->Add(Main::kScheduleTimeProperty, client::olDateTime);
      // A field of another type would sort by that type's order.
      if (field->Type() != client::olDateTime)
        qorvane::Raise(qorvane::err::kTypeMismatch, "the folder's field ScheduleTime is not a date-time");
      const auto scheduled = folder->Items()->Restrict("@SQL=\"" + ScheduleTimeUrl() + "\" IS NOT NULL");
      scheduled->Sort(std::string("[") + Main::kScheduleTimeProperty + "]", false);
      sorted = scheduled;
    });
    if (!done) {
      g_debug.OutWarning(label, "the client can't sort on ScheduleTime; walking the folder from now on");
      sortRefused_ = true;
    }
  }
  std::optional<double> earliest;
  if (sorted) {
    ForEachItem(sorted, label, [&](const client::Ref<client::Item>& item) {
      earliest = ScheduleTimeOf(item);
      return earliest.has_value();
    });
    return earliest;
  }
  ForEachItem(folder->Items(), label, [&](const client::Ref<client::Item>& item) {
    const std::optional<double> time = ScheduleTimeOf(item);
    if (time && (!earliest || *time <= *earliest)) earliest = time;
    return false;
  });
  return earliest;
}
