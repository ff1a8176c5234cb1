// Windows timers through a real message loop: ticks come on the thread that
// pumps messages, every interval, until stopped; a tick may end its timer.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>

#include "platform/timer.h"

namespace qorvane {
namespace {

// Pumps this thread's messages until done() or the time is up.
template <class Done>
bool PumpUntil(Done&& done, DWORD milliseconds) {
  const ULONGLONG until = GetTickCount64() + milliseconds;
  while (!done()) {
    if (GetTickCount64() > until) return false;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
  return true;
}

TEST(WindowsTimer, TicksComeThroughTheMessageLoopOnThisThreadUntilStopped) {
  int ticks = 0;
  DWORD tickThread = 0;
  auto timer = PlatformTimerService().CreateTimer([&] {
    ++ticks;
    tickThread = GetCurrentThreadId();
  });
  timer->Start(30);
  EXPECT_TRUE(timer->Running());
  ASSERT_TRUE(PumpUntil([&] { return ticks >= 3; }, 5000));
  EXPECT_EQ(tickThread, GetCurrentThreadId());
  timer->Stop();
  EXPECT_FALSE(timer->Running());
  const int stoppedAt = ticks;
  PumpUntil([] { return false; }, 150);
  EXPECT_EQ(ticks, stoppedAt);
}

TEST(WindowsTimer, ATickMayDestroyItsOwnTimerAndOthersGoOn) {
  std::unique_ptr<Timer> self;
  int selfTicks = 0;
  int otherTicks = 0;
  self = PlatformTimerService().CreateTimer([&] {
    ++selfTicks;
    self.reset();
  });
  auto other = PlatformTimerService().CreateTimer([&] {
    ++otherTicks;
    throw 42;  // dropped by the service, never seen by the loop
  });
  self->Start(20);
  other->Start(25);
  ASSERT_TRUE(PumpUntil([&] { return otherTicks >= 3; }, 5000));
  EXPECT_EQ(selfTicks, 1);
}

// What an unloading DLL relies on: with no timer left the hidden window and
// its class go, and a timer made afterwards brings them back.
TEST(WindowsTimer, ReleasingTheWindowWaitsForTheLastTimerAndTimersComeBackAfter) {
  const auto windowExists = [] { return FindWindowExW(HWND_MESSAGE, nullptr, L"QorvaneTimerWindow", nullptr) != nullptr; };
  int ticks = 0;
  auto timer = PlatformTimerService().CreateTimer([&] { ++ticks; });
  timer->Start(20);
  ReleasePlatformTimers();
  EXPECT_TRUE(windowExists()) << "a timer still exists";
  ASSERT_TRUE(PumpUntil([&] { return ticks >= 1; }, 5000));
  timer.reset();
  ReleasePlatformTimers();
  EXPECT_FALSE(windowExists());
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&PlatformTimerService), &module);
  EXPECT_FALSE(GetClassInfoExW(module, L"QorvaneTimerWindow", &windowClass)) << "the class is unregistered";
  ticks = 0;
  timer = PlatformTimerService().CreateTimer([&] { ++ticks; });
  timer->Start(20);
  EXPECT_TRUE(PumpUntil([&] { return ticks >= 2; }, 5000));
}

}  // namespace
}  // namespace qorvane
