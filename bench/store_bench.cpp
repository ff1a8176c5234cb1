// The store services on the simulated client: the start-up move of marked
// Inbox mails over a 10,000-item Inbox, and sending 1,000 due items. Besides
// the time, each reports the object-model calls it made per item, which is
// what costs on the real client (every call crosses into its process).
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "base/ole_date.h"
#include "infra/ignore_list.h"
#include "platform/locale.h"
#include "schedule/mail_props.h"
#include "sim/sim_client.h"
#include "store/folder.h"
#include "store/marked_mails.h"
#include "store/sending.h"

namespace qorvane::bench {
namespace {

constexpr int kInboxSize = 10000;
constexpr int kMarkedEvery = 1000;
constexpr int kDueItems = 1000;

void SpecialDoOverInbox(benchmark::State& state, const char* version) {
  SelectLocale("en-US");
  std::int64_t calls = 0;
  for (auto _ : state) {
    state.PauseTiming();
    sim::SimClient sim({.version = version});
    sim.Install();
    Main::g_ViewChecked = false;  // a new session, which checks the view again
    Main::GetQorvaneFolder(true);
    auto inbox = sim.DefaultFolder(client::olFolderInbox);
    for (int i = 0; i < kInboxSize; ++i) {
      auto mail = sim.AddMail(inbox, "mail " + std::to_string(i));
      if (i % kMarkedEvery == 0) {
        mSpecial::SpecialAdd(mail);
        mail->Save();
      }
    }
    sim.ResetCounts();
    state.ResumeTiming();

    mSpecial::SpecialDo();

    state.PauseTiming();
    calls = sim.TotalCalls();
    sim.Uninstall();
    state.ResumeTiming();
  }
  state.counters["calls"] = static_cast<double>(calls);
  state.counters["calls_per_inbox_item"] = static_cast<double>(calls) / kInboxSize;
}

void BM_SpecialDo_Inbox10000_Restrict(benchmark::State& state) { SpecialDoOverInbox(state, "16.0.17928.20114"); }
void BM_SpecialDo_Inbox10000_Walk(benchmark::State& state) { SpecialDoOverInbox(state, "11.0.6359"); }

void BM_SendMessage_1000DueItems(benchmark::State& state) {
  SelectLocale("en-US");
  g_IgnoreList.FromString(CIgnoreList::kDefaultList);
  std::int64_t calls = 0;
  for (auto _ : state) {
    state.PauseTiming();
    sim::SimClient sim;
    sim.Install();
    const double now = DateSerialRollOver(2025, 3, 3) + TimeSerial(9, 30, 0);
    sim.SetNow(now);
    auto deferred = sim.Root()->Folders()->Add("Qorvane", client::olFolderDrafts);
    std::vector<client::Ref<client::MailItem>> due;
    for (int i = 0; i < kDueItems; ++i) {
      auto mail = sim.AddMail(deferred, "due " + std::to_string(i));
      CMailProps props;
      props.m_ScheduleTime = now;
      if (i % 2 == 1) {  // every other one a weekly series, one occurrence due
        props.m_IsRecurring = true;
        props.m_RecurrenceType = 1;
        props.m_Interval = 1;
        props.m_DayOfWeekMask = 2;
        props.m_NoEndDate = true;
        props.m_StartTime = TimeSerial(9, 30, 0);
        props.m_PatternStartDate = DatePart(now);
      }
      props.WriteProps(mail);
      mail->Save();
      due.push_back(mail);
    }
    sim.ResetCounts();
    state.ResumeTiming();

    for (const auto& mail : due) Main::SendMessage(mail, now);

    state.PauseTiming();
    calls = sim.TotalCalls();
    if (sim.SendLog().size() != kDueItems) state.SkipWithError("not every due item was sent");
    sim.Uninstall();
    state.ResumeTiming();
  }
  state.counters["calls"] = static_cast<double>(calls);
  state.counters["calls_per_item"] = static_cast<double>(calls) / kDueItems;
}

BENCHMARK(BM_SpecialDo_Inbox10000_Restrict)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_SpecialDo_Inbox10000_Walk)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_SendMessage_1000DueItems)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace qorvane::bench
