// Timers on Windows: SetTimer on a hidden message-only window (HWND_MESSAGE)
// made on the thread that creates the first timer, the client's UI thread.
// WM_TIMER comes through the client's message loop, also inside a modal loop,
// so ticks arrive on that thread one at a time.
#include <windows.h>

#include <map>
#include <memory>

#include "platform/timer.h"

namespace qorvane {
namespace {

constexpr wchar_t kWindowClass[] = L"QorvaneTimerWindow";

HINSTANCE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&ThisModule), &module);
  return module;
}

class MessageWindowTimers final : public TimerService {
 public:
  std::unique_ptr<Timer> CreateTimer(std::function<void()> onTick) override;

  void Start(UINT_PTR id, std::uint32_t intervalMs) {
    if (!EnsureWindow()) return;
    if (SetTimer(window_, id, intervalMs < 1 ? 1 : intervalMs, nullptr) != 0) running_[id] = true;
  }
  void Stop(UINT_PTR id) {
    if (window_) KillTimer(window_, id);
    running_[id] = false;
  }
  bool Running(UINT_PTR id) const {
    const auto found = running_.find(id);
    return found != running_.end() && found->second;
  }
  void Destroy(UINT_PTR id) {
    Stop(id);
    running_.erase(id);
    ticks_.erase(id);
  }
  // A window class registered by a DLL stays registered after the DLL is
  // gone, with a window procedure that no longer exists: both go here.
  void ReleaseWindow() {
    if (!ticks_.empty()) return;
    if (window_) DestroyWindow(window_);
    window_ = nullptr;
    UnregisterClassW(kWindowClass, ThisModule());
  }

 private:
  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER) {
      auto* self = reinterpret_cast<MessageWindowTimers*>(GetWindowLongPtrW(window, GWLP_USERDATA));
      if (self) self->Tick(static_cast<UINT_PTR>(wParam));
      return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
  }

  void Tick(UINT_PTR id) {
    const auto found = ticks_.find(id);
    if (found == ticks_.end() || !Running(id)) return;
    // A copy: the tick may destroy its own timer.
    const std::function<void()> onTick = found->second;
    try {
      if (onTick) onTick();
    } catch (...) {
      // Nothing may unwind into the message loop.
    }
  }

  bool EnsureWindow() {
    if (window_) return true;
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = &WindowProc;
    windowClass.hInstance = ThisModule();
    windowClass.lpszClassName = kWindowClass;
    RegisterClassExW(&windowClass);  // fails harmlessly when already registered
    window_ = CreateWindowExW(0, kWindowClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ThisModule(), nullptr);
    if (!window_) return false;
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return true;
  }

  HWND window_ = nullptr;
  UINT_PTR nextId_ = 0;
  std::map<UINT_PTR, std::function<void()>> ticks_;
  std::map<UINT_PTR, bool> running_;
};

class WindowsTimer final : public Timer {
 public:
  WindowsTimer(MessageWindowTimers& service, UINT_PTR id) : service_(service), id_(id) {}
  ~WindowsTimer() override { service_.Destroy(id_); }
  void Start(std::uint32_t intervalMs) override { service_.Start(id_, intervalMs); }
  void Stop() override { service_.Stop(id_); }
  bool Running() const override { return service_.Running(id_); }

 private:
  MessageWindowTimers& service_;
  UINT_PTR id_;
};

std::unique_ptr<Timer> MessageWindowTimers::CreateTimer(std::function<void()> onTick) {
  const UINT_PTR id = ++nextId_;
  ticks_[id] = std::move(onTick);
  running_[id] = false;
  return std::make_unique<WindowsTimer>(*this, id);
}

MessageWindowTimers& Timers() {
  // Never destroyed: timers may be released during process shutdown.
  static auto* timers = new MessageWindowTimers();
  return *timers;
}

}  // namespace

TimerService& PlatformTimerService() { return Timers(); }

void ReleasePlatformTimers() { Timers().ReleaseWindow(); }

}  // namespace qorvane
