// The client's foreground window as the host shows it: a top-level window
// that takes the keyboard focus and hands each keystroke it receives to the
// simulated application's SendKeys, written back in SendKeys notation
// ("%{F9}" for Alt+F9), so keys an add-in types with SendInput act on the
// simulated client as they would on the real one.
//
// Also the host's message pump: the client's message loop, which delivers
// input, posted messages and timers to whoever waits for them.
//
// Lifecycle: one per host, on its UI thread; destroyed with the host.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>

#include "client/application.h"

namespace host {

class ClientWindow {
 public:
  // Keystrokes go to application (which must outlive the window).
  explicit ClientWindow(client::Ref<client::Application> application);
  ~ClientWindow();
  ClientWindow(const ClientWindow&) = delete;
  ClientWindow& operator=(const ClientWindow&) = delete;

  HWND Handle() const { return window_; }
  // Brings the window to the foreground with the keyboard focus; false when
  // the system refused.
  bool Activate();

 private:
  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Keystroke(const std::string& keys);

  client::Ref<client::Application> application_;
  HWND window_ = nullptr;
};

// Delivers every message waiting for this thread (translating keys to
// characters, as a client's loop does) and returns how many it delivered.
int PumpWaitingMessages();

// Runs the thread's message loop until done() says so or timeoutMs passes;
// true when done() said so. done() is asked after each message and at least
// every 10 ms.
bool RunMessageLoopUntil(const std::function<bool()>& done, DWORD timeoutMs);

}  // namespace host
