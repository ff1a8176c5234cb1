// The screen as the add-in's dialogs measure it: in twips (1440 to the inch),
// the unit of the dialogs' placement rectangles. The mail client reports its
// windows in pixels; an opener multiplies them by the units per pixel.
//
// Windows: from the screen's device caps (LOGPIXELSX/Y) and system metrics.
// POSIX: a fixed 96-dpi screen of 1920 x 1080 pixels.
//
// Lifecycle: the platform's metrics are current unless SetScreenMetrics
// installs others (tests pinning a screen); nullptr restores them. UI thread.
#pragma once

namespace qorvane {

struct ScreenMetrics {
  double unitsPerPixelX = 15.0;  // Screen.TwipsPerPixelX
  double unitsPerPixelY = 15.0;
  double width = 28800.0;        // Screen.Width, in units
  double height = 16200.0;
};

ScreenMetrics PlatformScreenMetrics();
ScreenMetrics CurrentScreenMetrics();
void SetScreenMetrics(const ScreenMetrics* metrics);

}  // namespace qorvane
