// Owns one reference of a COM interface: the only place besides the toolkit's
// own objects that calls AddRef and Release.
#pragma once

#include <windows.h>
#include <objbase.h>

#include <type_traits>
#include <utility>

namespace qorvane::com {

template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  // Takes a new reference of p.
  explicit ComPtr(T* p) : p_(p) {
    if (p_) p_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.p_) {}
  // From a pointer to a derived implementation class.
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  ComPtr(const ComPtr<U>& other) : ComPtr(static_cast<T*>(other.get())) {}
  ComPtr(ComPtr&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(p_, other.p_);
    return *this;
  }
  ~ComPtr() { Reset(); }

  // Adopts a reference the caller already owns (an out-parameter's result).
  static ComPtr Adopt(T* p) {
    ComPtr result;
    result.p_ = p;
    return result;
  }

  T* get() const { return p_; }
  T* operator->() const { return p_; }
  explicit operator bool() const { return p_ != nullptr; }
  bool operator==(const ComPtr& other) const { return p_ == other.p_; }

  void Reset() {
    if (p_) std::exchange(p_, nullptr)->Release();
  }
  // For out-parameters: releases what is held first.
  T** put() {
    Reset();
    return &p_;
  }
  // Gives up the reference to the caller (an out-parameter being filled).
  T* Detach() { return std::exchange(p_, nullptr); }

  // QueryInterface; null when the object does not answer U.
  template <class U>
  ComPtr<U> As(const IID& iid) const {
    ComPtr<U> result;
    if (p_) p_->QueryInterface(iid, reinterpret_cast<void**>(result.put()));
    return result;
  }

 private:
  T* p_ = nullptr;
};

}  // namespace qorvane::com
