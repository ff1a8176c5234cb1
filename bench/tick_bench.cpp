// One scheduler tick over a deferred folder of 10,000 waiting mails of which
// 10 are due, on the simulated client: with the client filtering (version 16:
// a restriction finds the due mails, a sorted one the earliest) and walked
// (version 11: every mail is asked). Each reports the object-model calls of
// the tick (what costs on the real client, where every call crosses into its
// process), the calls of an idle tick before it, and the calls per due mail.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include "base/ole_date.h"
#include "platform/addin_folder.h"
#include "platform/locale.h"
#include "scenario/session.h"
#include "schedule/mail_props.h"

namespace qorvane::bench {
namespace {

constexpr int kFolderSize = 10000;
constexpr int kDue = 10;

// The add-in's log and registry go to a folder of their own, not the user's.
void UsePrivateFolder() {
  static const std::string folder = [] {
    const auto path = std::filesystem::temp_directory_path() / ("qorvane-bench-" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(path);
    return path.string();
  }();
  SetAddinFolder(folder);
#ifndef _WIN32
  setenv("QORVANE_REGISTRY_FILE", (folder + "/registry.reg").c_str(), 1);
#endif
}

void Schedule(sim::SimClient& client, const client::Ref<client::MAPIFolder>& folder, const std::string& subject,
              double when) {
  const auto mail = client.AddMail(folder, subject);
  CMailProps props;
  props.m_ScheduleTime = when;
  props.WriteProps(mail);
  mail->Save();
}

void OneTick(benchmark::State& state, const char* version) {
  UsePrivateFolder();
  SelectLocale("en-US");
  std::int64_t calls = 0;
  std::int64_t idleCalls = 0;
  for (auto _ : state) {
    scenario::Session session({.version = version});
    sim::SimClient& client = session.Client();
    session.OpenMainWindow();
    const auto deferred = client.Root()->Folders()->Add("Qorvane", client::olFolderDrafts);
    for (int i = 0; i < kFolderSize - kDue; ++i) Schedule(client, deferred, "waiting " + std::to_string(i), client.Now() + 7);
    session.Start();
    client.RunUntil(*client.NextTimerDue());  // the first tick after attaching
    client.ResetCounts();
    client.RunUntil(*client.NextTimerDue());  // an idle tick
    idleCalls = client.TotalCalls();
    for (int i = 0; i < kDue; ++i) Schedule(client, deferred, "due " + std::to_string(i), client.Now());
    const double tick = *client.NextTimerDue();
    client.ResetCounts();
    const auto begin = std::chrono::steady_clock::now();
    client.RunUntil(tick);
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    calls = client.TotalCalls();
    if (client.SendLog().size() != kDue) state.SkipWithError("not every due mail was sent");
    session.Stop();
  }
  state.counters["calls"] = static_cast<double>(calls);
  state.counters["calls_idle_tick"] = static_cast<double>(idleCalls);
  state.counters["calls_per_due_mail"] = static_cast<double>(calls - idleCalls) / kDue;
}

void BM_Tick_Folder10000_Due10_Filtered(benchmark::State& state) { OneTick(state, "16.0.17928.20114"); }
void BM_Tick_Folder10000_Due10_Walked(benchmark::State& state) { OneTick(state, "11.0.6359"); }

// Timed by hand: only the tick counts, not building the folder around it.
BENCHMARK(BM_Tick_Folder10000_Due10_Filtered)->Unit(benchmark::kMillisecond)->Iterations(5)->UseManualTime();
BENCHMARK(BM_Tick_Folder10000_Due10_Walked)->Unit(benchmark::kMillisecond)->Iterations(5)->UseManualTime();

}  // namespace
}  // namespace qorvane::bench
