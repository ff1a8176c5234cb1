// Owners of the Win32 handles the Windows code keeps: a registry key, a
// window, a GDI object, an activation context and its activation. Each
// closes what it holds when destroyed; none is copyable.
#pragma once

#include <windows.h>

#include <utility>

namespace qorvane::com {

// Closer: a callable that releases a valid handle.
template <class Handle, class Closer>
class UniqueHandle {
 public:
  UniqueHandle() = default;
  explicit UniqueHandle(Handle handle) : handle_(handle) {}
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) Reset(std::exchange(other.handle_, Handle{}));
    return *this;
  }
  ~UniqueHandle() { Reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != Handle{} && handle_ != Closer::kInvalid; }
  // For out-parameters: closes what is held first.
  Handle* put() {
    Reset();
    return &handle_;
  }
  Handle Release() { return std::exchange(handle_, Handle{}); }
  void Reset(Handle handle = Handle{}) {
    const Handle old = std::exchange(handle_, handle);
    if (old != Handle{} && old != Closer::kInvalid) Closer()(old);
  }

 private:
  Handle handle_{};
};

struct RegistryKeyCloser {
  static inline const HKEY kInvalid = nullptr;
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using UniqueHkey = UniqueHandle<HKEY, RegistryKeyCloser>;

struct WindowDestroyer {
  static inline const HWND kInvalid = nullptr;
  void operator()(HWND window) const { DestroyWindow(window); }
};
using UniqueWindow = UniqueHandle<HWND, WindowDestroyer>;

// A font, brush or pen made by the code (not one of the stock objects).
struct GdiObjectDeleter {
  static inline const HGDIOBJ kInvalid = nullptr;
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using UniqueGdiObject = UniqueHandle<HGDIOBJ, GdiObjectDeleter>;

struct ActivationContextReleaser {
  static inline const HANDLE kInvalid = INVALID_HANDLE_VALUE;
  void operator()(HANDLE context) const { ReleaseActCtx(context); }
};
// What CreateActCtx made (INVALID_HANDLE_VALUE when it failed).
using UniqueActivationContext = UniqueHandle<HANDLE, ActivationContextReleaser>;

// Makes an activation context current for the scope, so that windows made
// inside it (a dialog of the add-in) use the controls its manifest asks for;
// an invalid context leaves the current one as it is.
class ActivationScope {
 public:
  explicit ActivationScope(HANDLE context) {
    if (context && context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie_)) active_ = true;
  }
  ActivationScope(const ActivationScope&) = delete;
  ActivationScope& operator=(const ActivationScope&) = delete;
  ~ActivationScope() {
    if (active_) DeactivateActCtx(0, cookie_);
  }
  bool Active() const { return active_; }

 private:
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace qorvane::com
