// A fixed screen: 96 dpi (15 twips per pixel), 1920 x 1080 pixels.
#include "platform/screen_metrics.h"

namespace qorvane {

ScreenMetrics PlatformScreenMetrics() {
  constexpr double kTwipsPerPixel = 1440.0 / 96.0;
  return ScreenMetrics{kTwipsPerPixel, kTwipsPerPixel, 1920 * kTwipsPerPixel, 1080 * kTwipsPerPixel};
}

}  // namespace qorvane
