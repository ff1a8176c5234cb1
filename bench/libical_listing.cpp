// libical side of the occurrence benchmark; see libical_listing.h.
#include "bench/libical_listing.h"

#include <libical/ical.h>

#include <stdexcept>

#include "base/iso_date_text.h"
#include "base/ole_date.h"

namespace qorvane::bench {

struct IcalRule::Impl {
  icalrecurrencetype rule;
  icaltimetype start;
};

IcalRule::IcalRule(const std::string& rrule, const std::string& dtstart) : impl_(new Impl) {
  impl_->rule = icalrecurrencetype_from_string(rrule.c_str());
  impl_->start = icaltime_from_string(dtstart.c_str());
  if (impl_->rule.freq == ICAL_NO_RECURRENCE || icaltime_is_null_time(impl_->start)) {
    delete impl_;
    throw std::runtime_error("libical refuses RRULE:" + rrule + " DTSTART:" + dtstart);
  }
}

IcalRule::~IcalRule() { delete impl_; }

namespace {

template <class Emit>
void Walk(const icalrecurrencetype& rule, const icaltimetype& start, int count, Emit&& emit) {
  icalrecur_iterator* it = icalrecur_iterator_new(rule, start);
  if (it == nullptr) throw std::runtime_error("icalrecur_iterator_new failed");
  for (int i = 0; i < count; ++i) {
    const icaltimetype t = icalrecur_iterator_next(it);
    if (icaltime_is_null_time(t)) break;
    emit(t);
  }
  icalrecur_iterator_free(it);
}

}  // namespace

void IcalRule::List(int count, std::vector<double>& out) const {
  out.clear();
  Walk(impl_->rule, impl_->start, count, [&](const icaltimetype& t) {
    out.push_back(static_cast<double>(DaysFromCivil(t.year, t.month, t.day) + kOleEpochOffset) +
                  TimeSerial(t.hour, t.minute, t.second));
  });
}

std::vector<std::string> IcalRule::ListText(int count) const {
  std::vector<std::string> lines;
  Walk(impl_->rule, impl_->start, count, [&](const icaltimetype& t) {
    lines.push_back(IsoMinuteText(CivilDate{t.year, t.month, t.day}, TimeOfDay{t.hour, t.minute, 0}));
  });
  return lines;
}

}  // namespace qorvane::bench
