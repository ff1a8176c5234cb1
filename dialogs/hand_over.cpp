// The dialogs' hand-over slot.
#include "dialogs/hand_over.h"

#include "base/variant.h"
#include "platform/screen_metrics.h"

DialogHandOver g_HandOver;

namespace dialogs {
namespace {

std::int32_t ToUnits(long pixels, double unitsPerPixel) {
  // Out of the 32-bit range only for a window no screen has: clamp it.
  const double units = static_cast<double>(pixels) * unitsPerPixel;
  if (units >= 2147483647.0) return 2147483647;
  if (units <= -2147483648.0) return -2147483647 - 1;
  return qorvane::CLng(units);
}

}  // namespace

DialogRect DialogRectFromPixels(long left, long top, long width, long height) {
  const qorvane::ScreenMetrics screen = qorvane::CurrentScreenMetrics();
  return DialogRect{ToUnits(left, screen.unitsPerPixelX), ToUnits(top, screen.unitsPerPixelY),
                    ToUnits(width, screen.unitsPerPixelX), ToUnits(height, screen.unitsPerPixelY)};
}

void BeginHandOver(std::shared_ptr<CMailProps> record, bool keepOnTop, const DialogRect& opener) {
  g_HandOver.m_MailProps = std::move(record);
  g_HandOver.m_Result = kHandOverFalse;
  g_HandOver.m_OnTop = keepOnTop;
  g_HandOver.m_OpenerRect = opener;
}

void EndHandOver() { g_HandOver.m_MailProps.reset(); }

void ConfirmHandOver() { g_HandOver.m_Result = kHandOverTrue; }

}  // namespace dialogs
