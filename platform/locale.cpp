// Hands the current locale's separators to base's number conversions.
#include "base/variant.h"
#include "platform/locale.h"

namespace qorvane {
namespace {

NumberSeparators SeparatorsOfCurrentLocale() {
  const Locale& locale = CurrentLocale();
  return {locale.DecimalSeparator(), locale.ThousandSeparator()};
}

}  // namespace

bool FollowLocaleInNumberConversions() {
  SetNumberSeparatorsSource(&SeparatorsOfCurrentLocale);
  return true;
}

}  // namespace qorvane
