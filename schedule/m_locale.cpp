// mLocale: the time format without seconds.
#include "schedule/m_locale.h"

#include "infra/error_trap.h"
#include "platform/locale.h"

namespace mLocale {
namespace {

bool RemoveFirst(std::string& text, const std::string& part) {
  const std::size_t pos = text.find(part);
  if (pos == std::string::npos) return false;
  text.erase(pos, part.size());
  return true;
}

}  // namespace

bool GetTimeFormat(std::string& fmt) {
  bool done = false;
  qorvane::Trap("mLocale.GetTimeFormat", [&] {
    const qorvane::Locale& locale = qorvane::CurrentLocale();
    std::string format = locale.TimeFormat();
    std::string seconds = locale.TimeSeparator() + "ss";
    // A locale that writes a single "s" loses the separator and that "s".
    if (!RemoveFirst(format, seconds)) {
      seconds.pop_back();
      RemoveFirst(format, seconds);
    }
    fmt = std::move(format);
    done = true;
  });
  return done;
}

}  // namespace mLocale
