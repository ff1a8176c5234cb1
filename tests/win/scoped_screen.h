// A screen of 96 dots per inch (15 twips a pixel) for the dialog tests, so
// that placements in twips are exact pixels; the platform's screen comes
// back at the end of the scope.
#pragma once

#include "platform/screen_metrics.h"

namespace qorvane::testing {

class ScopedScreen {
 public:
  ScopedScreen() {
    metrics_ = PlatformScreenMetrics();
    metrics_.unitsPerPixelX = metrics_.unitsPerPixelY = 15.0;
    SetScreenMetrics(&metrics_);
  }
  ~ScopedScreen() { SetScreenMetrics(nullptr); }
  ScopedScreen(const ScopedScreen&) = delete;
  ScopedScreen& operator=(const ScopedScreen&) = delete;

 private:
  ScreenMetrics metrics_;
};

}  // namespace qorvane::testing
