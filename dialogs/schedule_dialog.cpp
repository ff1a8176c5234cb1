// Shared pieces of the schedule dialogs.
#include "dialogs/schedule_dialog.h"

#include <string>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "base/variant.h"
#include "platform/screen_metrics.h"
#include "schedule/m_locale.h"

namespace dialogs {
namespace {

// One axis: centred over the opener, then pushed back onto the screen.
long Place(std::int32_t openerStart, std::int32_t openerLength, long length, double screenLength) {
  double start = openerStart + (static_cast<double>(openerLength) - length) / 2.0;
  if (start + length > screenLength) start = screenLength - length;
  if (start < 0) start = 0;
  return qorvane::CLng(start);
}

}  // namespace

CMailProps& EditedRecord() {
  if (!g_HandOver.m_MailProps) qorvane::Raise(qorvane::err::kObjectNotSet);
  return *g_HandOver.m_MailProps;
}

qorvane::forms::FormRect CentredOver(const DialogRect& opener, long width, long height, double screenWidth,
                                     double screenHeight) {
  return {Place(opener.Left, opener.Width, width, screenWidth), Place(opener.Top, opener.Height, height, screenHeight),
          width, height};
}

void PlaceOverOpener(qorvane::forms::Form& form) {
  const qorvane::ScreenMetrics screen = qorvane::CurrentScreenMetrics();
  form.rect = CentredOver(g_HandOver.m_OpenerRect, form.rect.width, form.rect.height, screen.width, screen.height);
  if (g_HandOver.m_OnTop) form.topmost = true;
}

void ShowTimeWithoutSeconds(qorvane::forms::Control& timePicker) {
  std::string format;
  if (!mLocale::GetTimeFormat(format)) return;
  timePicker.customFormat = format;
  timePicker.upDown = true;
}

double PickedTime(double date, double time) {
  const qorvane::CivilDate day = qorvane::ToCivil(date);
  const qorvane::TimeOfDay clock = qorvane::ToTimeOfDay(time);
  const double midnight = qorvane::DateSerialRollOver(day.year, day.month, day.day);
  return qorvane::ComposeDate(qorvane::SerialDay(midnight), qorvane::TimeSerial(clock.hour, clock.minute, 0));
}

}  // namespace dialogs
