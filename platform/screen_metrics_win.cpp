// The primary screen's resolution from its device caps.
#include <windows.h>

#include "platform/screen_metrics.h"

namespace qorvane {

ScreenMetrics PlatformScreenMetrics() {
  ScreenMetrics metrics;
  if (HDC screen = GetDC(nullptr)) {
    const int dpiX = GetDeviceCaps(screen, LOGPIXELSX);
    const int dpiY = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    if (dpiX > 0) metrics.unitsPerPixelX = 1440.0 / dpiX;
    if (dpiY > 0) metrics.unitsPerPixelY = 1440.0 / dpiY;
  }
  const int width = GetSystemMetrics(SM_CXSCREEN);
  const int height = GetSystemMetrics(SM_CYSCREEN);
  if (width > 0) metrics.width = width * metrics.unitsPerPixelX;
  if (height > 0) metrics.height = height * metrics.unitsPerPixelY;
  return metrics;
}

}  // namespace qorvane
