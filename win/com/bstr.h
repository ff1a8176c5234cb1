// Owns one BSTR, made from and read back as the UTF-8 text the add-in keeps.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <string_view>
#include <utility>

namespace qorvane::com {

class Bstr {
 public:
  Bstr() = default;
  // Raises 7 (out of memory) when the string cannot be allocated.
  explicit Bstr(std::string_view utf8);
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  Bstr(Bstr&& other) noexcept : b_(std::exchange(other.b_, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(b_, other.b_);
    return *this;
  }
  ~Bstr() { SysFreeString(b_); }

  // Adopts a BSTR the caller owns.
  static Bstr Adopt(BSTR b) {
    Bstr result;
    result.b_ = b;
    return result;
  }

  BSTR get() const { return b_; }
  // For out-parameters: frees what is held first.
  BSTR* put() {
    SysFreeString(std::exchange(b_, nullptr));
    return &b_;
  }
  // Gives the string up to the caller (an out-parameter being filled).
  BSTR Detach() { return std::exchange(b_, nullptr); }

  // A null BSTR reads as "", as COM defines it.
  std::string Utf8() const { return Utf8Of(b_); }
  static std::string Utf8Of(BSTR b);

 private:
  BSTR b_ = nullptr;
};

}  // namespace qorvane::com
