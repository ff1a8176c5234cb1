// Test helper: makes a locale current for one scope and puts the previous one
// back, so tests never depend on, or leak into, the machine's settings.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/locale.h"

namespace qorvane::testing {

class LocalePin {
 public:
  explicit LocalePin(std::string_view name) : saved_(CurrentLocale().Name()) {
    EXPECT_TRUE(SelectLocale(name)) << name;
  }
  ~LocalePin() {
    if (!SelectLocale(saved_)) SelectUserLocale();
  }
  LocalePin(const LocalePin&) = delete;
  LocalePin& operator=(const LocalePin&) = delete;

 private:
  std::string saved_;
};

}  // namespace qorvane::testing
