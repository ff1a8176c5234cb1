// How fast the recurrence engine lists a schedule's sends, measured against
// libical listing the equivalent RFC 5545 rule: BM_Occurrences_Qorvane/<case>
// and BM_Occurrences_Libical/<case>, 1000 occurrences each. The engine runs
// on every reminder tick and every dialog redraw, so it is meant to stay at
// least ten times cheaper than a general-purpose rule iterator.
//
// Before timing anything, both sides must list the same 1000 send times for
// every case; otherwise the rule is not the engine's pattern and the numbers
// would compare different work, so the program stops.
//
// After the runs it prints one table of ns per listing and the ratio (with the
// console format; json and csv output stays the library's alone). It exits 3
// when a case misses the target, whatever the format.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "base/iso_date_text.h"
#include "base/ole_date.h"
#include "base/variant.h"
#include "bench/libical_listing.h"
#include "schedule/first_dow.h"
#include "schedule/mail_props.h"

namespace qorvane::bench {
namespace {

constexpr int kListing = 1000;
constexpr double kTargetRatio = 10.0;

struct Case {
  const char* name;
  std::int32_t type, interval, mask, day_of_month, month, instance;
  int year, mon, day;  // pattern start
  int first_dow;
  const char* rrule;
  // Years libical's start lies before the engine's (see below).
  int ical_years_earlier = 0;
};

// A thousand yearly sends do not fit libical's range: its iterator stops
// after the year 2582 and counts weekdays differently before 1583. The
// Gregorian calendar repeats exactly every 400 years (146097 days, whole
// weeks), so libical lists the yearly rules from 1583 and the engine the
// same pattern from 1983 (its dates before 1900 carry the runtime's
// negative-date rules, which no schedule meets); the listings must then
// agree date for date, 400 years apart.
const Case kCases[] = {
    {"daily_every_3_days", kRecursDaily, 3, 0, 0, 0, 0, 2025, 3, 3, 1, "FREQ=DAILY;INTERVAL=3"},
    {"weekly_mon_fri_every_2_weeks", kRecursWeekly, 2, 2 | 32, 0, 0, 0, 2025, 3, 3, 1,
     "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,FR;WKST=SU"},
    // The engine moves day 31 to the last day of shorter months.
    {"monthly_day_31", kRecursMonthly, 1, 0, 31, 0, 0, 2025, 1, 31, 1,
     "FREQ=MONTHLY;BYMONTHDAY=28,29,30,31;BYSETPOS=-1"},
    {"monthly_last_friday", kRecursMonthNth, 1, 32, 0, 0, kInstanceLast, 2025, 1, 31, 1,
     "FREQ=MONTHLY;BYDAY=-1FR"},
    // Day 29 of February, started in February: 28 February in common years.
    {"yearly_feb_29", kRecursYearly, 1, 0, 29, 2, 0, 1983, 2, 28, 1,
     "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=28,29;BYSETPOS=-1", 400},
    {"yearly_2nd_tuesday_of_march", kRecursYearNth, 1, 4, 0, 3, 2, 1983, 3, 8, 1,
     "FREQ=YEARLY;BYMONTH=3;BYDAY=2TU", 400},
};

constexpr int kHour = 9, kMinute = 30;

CMailProps Pattern(const Case& c) {
  CMailProps p;
  p.m_IsRecurring = true;
  p.m_RecurrenceType = c.type;
  p.m_Interval = c.interval;
  p.m_DayOfWeekMask = c.mask;
  p.m_DayOfMonth = c.day_of_month;
  p.m_MonthOfYear = c.month;
  p.m_Instance = c.instance;
  p.m_NoEndDate = true;
  p.m_PatternStartDate = DateSerialRollOver(c.year, c.mon, c.day);
  p.m_StartTime = TimeSerial(kHour, kMinute, 0);
  return p;
}

std::string DtStart(const Case& c) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%04d%02d%02dT%02d%02d00", c.year - c.ical_years_earlier, c.mon, c.day,
                kHour, kMinute);
  return buffer;
}

std::string Text(double date, int years_earlier) {
  CivilDate civil;
  TimeOfDay time;
  SplitRounded(date, civil, time);
  civil.year -= years_earlier;
  return IsoMinuteText(civil, time);
}

// Both sides must agree date for date; the first difference is reported.
bool SameListings(const Case& c) {
  SetFirstDOW(c.first_dow);
  CMailProps p = Pattern(c);
  const auto engine = p.GetOccurrences(Variant(kListing));
  const auto reference = IcalRule(c.rrule, DtStart(c)).ListText(kListing);
  if (!engine) {
    std::fprintf(stderr, "%s: the engine listed nothing (see Qorvane.Log)\n", c.name);
    return false;
  }
  if (engine->size() != kListing || reference.size() != kListing) {
    std::fprintf(stderr, "%s: listing sizes differ from %d: engine %zu, libical %zu\n", c.name, kListing,
                 engine->size(), reference.size());
    return false;
  }
  for (int i = 0; i < kListing; ++i) {
    const std::string mine = Text((*engine)[static_cast<std::size_t>(i)], c.ical_years_earlier);
    if (mine != reference[static_cast<std::size_t>(i)]) {
      std::fprintf(stderr, "%s: occurrence %d differs: engine %s (%d years on), libical %s (RRULE:%s)\n", c.name,
                   i + 1, mine.c_str(), c.ical_years_earlier, reference[static_cast<std::size_t>(i)].c_str(), c.rrule);
      return false;
    }
  }
  return true;
}

void BM_Qorvane(benchmark::State& state, const Case* c) {
  SetFirstDOW(c->first_dow);
  CMailProps p = Pattern(*c);
  const Variant limit(kListing);
  for (auto _ : state) {
    auto list = p.GetOccurrences(limit);
    benchmark::DoNotOptimize(list);
  }
  state.SetItemsProcessed(state.iterations() * kListing);
}

void BM_Libical(benchmark::State& state, const Case* c) {
  const IcalRule rule(c->rrule, DtStart(*c));
  std::vector<double> list;
  list.reserve(kListing);
  for (auto _ : state) {
    rule.List(kListing, list);
    benchmark::DoNotOptimize(list.data());
  }
  state.SetItemsProcessed(state.iterations() * kListing);
}

// Passes every report on to the reporter the library's own flags chose
// (--benchmark_format=console|json|csv, --benchmark_color) and keeps the
// mean ns per listing of every run, keyed by its name, for the ratios.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  explicit RatioReporter(benchmark::BenchmarkReporter* display) : display_(display) {}

  bool ReportContext(const Context& context) override { return display_->ReportContext(context); }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.iterations == 0 || run.error_occurred) continue;
      auto& [total, n] = ns_[run.benchmark_name()];
      total += run.real_accumulated_time * 1e9 / static_cast<double>(run.iterations);
      ++n;
    }
    display_->ReportRuns(runs);
  }
  void Finalize() override { display_->Finalize(); }

  // The closing table belongs to the console format; json and csv output is
  // read by programs and stays exactly the library's.
  bool IsConsole() const { return dynamic_cast<benchmark::ConsoleReporter*>(display_) != nullptr; }

  // False when a case of which both sides ran misses the target; with
  // `print`, also the table of both sides and their ratio.
  bool RatiosMet(bool print) const {
    bool all_met = true;
    bool header = false;
    for (const Case& c : kCases) {
      const double mine = Mean("BM_Occurrences_Qorvane/" + std::string(c.name));
      const double theirs = Mean("BM_Occurrences_Libical/" + std::string(c.name));
      if (mine <= 0 || theirs <= 0) continue;
      const double ratio = theirs / mine;
      all_met = all_met && ratio >= kTargetRatio;
      if (!print) continue;
      if (!header) {
        std::printf("\n%-30s %14s %14s %8s\n", "case (ns per 1000-listing)", "qorvane", "libical", "ratio");
        header = true;
      }
      std::printf("%-30s %14.0f %14.0f %7.1fx%s\n", c.name, mine, theirs, ratio,
                  ratio >= kTargetRatio ? "" : "  below target");
    }
    if (header) std::printf("target: the engine at least %.0fx faster on every case\n", kTargetRatio);
    return all_met;
  }

 private:
  double Mean(const std::string& name) const {
    auto it = ns_.find(name);
    return it == ns_.end() || it->second.second == 0 ? 0.0 : it->second.first / it->second.second;
  }
  benchmark::BenchmarkReporter* display_;  // the library's, which keeps it
  std::map<std::string, std::pair<double, int>> ns_;
};

}  // namespace
}  // namespace qorvane::bench

int main(int argc, char** argv) {
  using namespace qorvane::bench;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  RatioReporter reporter(benchmark::CreateDefaultDisplayReporter());
  // Anything but the library's own output goes to stderr when a program
  // reads stdout.
  std::FILE* notes = reporter.IsConsole() ? stdout : stderr;

  for (const Case& c : kCases) {
    if (!SameListings(c)) {
      std::fprintf(stderr, "qorvane_bench: the two listings of %s differ; no timing is meaningful.\n", c.name);
      return 1;
    }
  }
  std::fprintf(notes, "qorvane_bench: both sides list the same %d send times for all %zu cases\n", kListing,
               std::size(kCases));
  std::fflush(notes);
  for (const Case& c : kCases) {
    benchmark::RegisterBenchmark(("BM_Occurrences_Qorvane/" + std::string(c.name)).c_str(), BM_Qorvane, &c);
    benchmark::RegisterBenchmark(("BM_Occurrences_Libical/" + std::string(c.name)).c_str(), BM_Libical, &c);
  }
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const bool met = reporter.RatiosMet(reporter.IsConsole());
  if (!met && !reporter.IsConsole()) {
    std::fprintf(stderr, "qorvane_bench: a case is below the target of %.0fx faster than libical\n", kTargetRatio);
  }
  benchmark::Shutdown();
  return met ? 0 : 3;
}
