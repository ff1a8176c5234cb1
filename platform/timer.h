// Timers that call back on the user-interface thread, the way the form
// runtime's Timer control does: once started with an interval, a timer fires
// every interval until it is stopped or started again (which restarts its
// countdown). Ticks never overlap and never arrive on another thread.
//
// Windows: SetTimer on a hidden message-only window; the client's message
// loop delivers the ticks (also inside a modal loop such as a message box).
// POSIX, and the simulated client on both platforms: virtual timers
// (platform/virtual_timers.h) that fire when whoever drives them moves time
// forward, so that a simulated week passes in milliseconds.
//
// Lifecycle: the platform's service is current unless SetTimerService
// installs another (which must outlive its use); SetTimerService(nullptr)
// restores it. A Timer is owned by whoever created it; destroying it stops
// it. A tick may stop, restart or destroy its own timer or any other one.
// An exception thrown by a tick is dropped by the service: it never reaches
// the message loop. UI thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace qorvane {

class Timer {
 public:
  virtual ~Timer() = default;
  // Arms the timer: the first tick comes intervalMs (at least 1) from now,
  // then one every intervalMs. Starting a running timer restarts it.
  virtual void Start(std::uint32_t intervalMs) = 0;
  virtual void Stop() = 0;
  virtual bool Running() const = 0;
};

class TimerService {
 public:
  virtual ~TimerService() = default;
  // A stopped timer whose ticks call onTick.
  virtual std::unique_ptr<Timer> CreateTimer(std::function<void()> onTick) = 0;
};

TimerService& PlatformTimerService();
TimerService& CurrentTimerService();
void SetTimerService(TimerService* service);

// For a module about to be unloaded (the add-in DLL once its last object is
// gone): the platform's timers let go of what would outlive the module's
// code (on Windows the hidden window and its class) once no timer exists;
// a timer made later brings them back. Nothing to do elsewhere.
void ReleasePlatformTimers();

}  // namespace qorvane
