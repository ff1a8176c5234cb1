// Timers on a virtual clock.
#include "platform/virtual_timers.h"

#include <cmath>
#include <map>

namespace qorvane {

namespace {
constexpr double kMsPerDay = 86400000.0;
}  // namespace

std::int64_t OleDateToMs(double date) noexcept { return std::llround(date * kMsPerDay); }
double MsToOleDate(std::int64_t ms) noexcept { return static_cast<double>(ms) / kMsPerDay; }

struct VirtualTimers::State {
  struct Entry {
    std::function<void()> onTick;
    std::int64_t dueMs = 0;
    std::uint32_t intervalMs = 0;
    std::uint64_t armedOrder = 0;
    bool running = false;
  };

  const Clock* clock = nullptr;
  std::map<std::uint64_t, Entry> entries;
  std::uint64_t nextId = 0;
  std::uint64_t nextArming = 0;

  std::int64_t NowMs() const { return OleDateToMs((clock ? *clock : CurrentClock()).Now()); }

  void Arm(Entry& entry, std::int64_t dueMs) {
    entry.dueMs = dueMs;
    entry.armedOrder = ++nextArming;
    entry.running = true;
  }

  Entry* Earliest() {
    Entry* earliest = nullptr;
    for (auto& [id, entry] : entries) {
      if (!entry.running) continue;
      if (!earliest || entry.dueMs < earliest->dueMs ||
          (entry.dueMs == earliest->dueMs && entry.armedOrder < earliest->armedOrder))
        earliest = &entry;
    }
    return earliest;
  }
};

namespace {

class VirtualTimer final : public Timer {
 public:
  VirtualTimer(std::weak_ptr<VirtualTimers::State> state, std::uint64_t id) : state_(std::move(state)), id_(id) {}
  ~VirtualTimer() override {
    if (const auto state = state_.lock()) state->entries.erase(id_);
  }

  void Start(std::uint32_t intervalMs) override {
    const auto state = state_.lock();
    if (!state) return;
    auto& entry = state->entries[id_];
    entry.intervalMs = intervalMs < 1 ? 1 : intervalMs;
    state->Arm(entry, state->NowMs() + entry.intervalMs);
  }

  void Stop() override {
    if (const auto state = state_.lock()) state->entries[id_].running = false;
  }

  bool Running() const override {
    const auto state = state_.lock();
    if (!state) return false;
    const auto found = state->entries.find(id_);
    return found != state->entries.end() && found->second.running;
  }

 private:
  std::weak_ptr<VirtualTimers::State> state_;
  std::uint64_t id_;
};

}  // namespace

VirtualTimers::VirtualTimers(const Clock* clock) : state_(std::make_shared<State>()) { state_->clock = clock; }

VirtualTimers::~VirtualTimers() = default;

std::unique_ptr<Timer> VirtualTimers::CreateTimer(std::function<void()> onTick) {
  const std::uint64_t id = ++state_->nextId;
  state_->entries[id].onTick = std::move(onTick);
  return std::make_unique<VirtualTimer>(state_, id);
}

std::optional<double> VirtualTimers::NextDue() const {
  const State::Entry* earliest = state_->Earliest();
  if (!earliest) return std::nullopt;
  return MsToOleDate(earliest->dueMs);
}

std::size_t VirtualTimers::RunningCount() const {
  std::size_t running = 0;
  for (const auto& [id, entry] : state_->entries) running += entry.running ? 1 : 0;
  return running;
}

std::size_t VirtualTimers::RunUntil(double until, const std::function<void(double)>& moveClockTo) {
  const std::int64_t untilMs = OleDateToMs(until);
  std::size_t ticks = 0;
  for (;;) {
    State::Entry* entry = state_->Earliest();
    if (!entry || entry->dueMs > untilMs) break;
    const std::int64_t dueMs = entry->dueMs;
    moveClockTo(MsToOleDate(dueMs));
    // The driver's callback may have stopped or destroyed timers.
    entry = state_->Earliest();
    if (!entry || entry->dueMs != dueMs) continue;
    const std::int64_t nowMs = state_->NowMs();
    if (nowMs < dueMs) break;  // a tick must never come early
    // Re-armed before the tick, so that a Stop or Start inside it wins.
    const std::int64_t next = dueMs + entry->intervalMs;
    state_->Arm(*entry, next > nowMs ? next : nowMs + entry->intervalMs);
    // A copy: the tick may destroy its own timer, and with it the original.
    const std::function<void()> onTick = entry->onTick;
    ++ticks;
    try {
      if (onTick) onTick();
    } catch (...) {
      // A tick's failure stays with the tick; the other timers go on.
    }
  }
  return ticks;
}

}  // namespace qorvane
