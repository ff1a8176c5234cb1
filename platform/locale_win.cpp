// The current locale on Windows: the OLE Automation conversions and NLS of an
// LCID, so that text reads and writes exactly as the runtime's CStr and CDate.
#include <windows.h>
#include <oleauto.h>

#include <memory>
#include <string>

#include "platform/locale.h"
#include "platform/pattern_locale.h"
#include "platform/win_text.h"
#include "win/com/bstr.h"

namespace qorvane {

namespace {

class WindowsLocale final : public Locale {
 public:
  WindowsLocale(LCID lcid, std::string name) : lcid_(lcid), name_(std::move(name)) {}

  std::string Name() const override { return name_; }

  std::string FormatGeneralDate(double date) const override {
    com::Bstr text;
    if (FAILED(VarBstrFromDate(date, lcid_, 0, text.put()))) return {};
    return text.Utf8();
  }

  std::optional<double> ParseDate(std::string_view text) const override {
    std::wstring wide = WideFromUtf8(text);
    DATE date = 0;
    if (FAILED(VarDateFromStr(wide.data(), lcid_, 0, &date))) return std::nullopt;
    return date;
  }

  std::string TimeFormat() const override { return Info(LOCALE_STIMEFORMAT); }
  std::string ShortDateFormat() const override { return Info(LOCALE_SSHORTDATE); }
  std::string TimeSeparator() const override { return Info(LOCALE_STIME); }

  int FirstDayOfWeek() const override {
    // NLS counts 0 = Monday .. 6 = Sunday; we count 1 = Sunday .. 7 = Saturday.
    const std::string value = Info(LOCALE_IFIRSTDAYOFWEEK);
    if (value.size() != 1 || value[0] < '0' || value[0] > '6') return 1;
    return (value[0] - '0' + 1) % 7 + 1;
  }

  std::string DecimalSeparator() const override { return Info(LOCALE_SDECIMAL); }
  std::string ThousandSeparator() const override { return Info(LOCALE_STHOUSAND); }

 private:
  std::string Info(LCTYPE type) const {
    wchar_t buffer[128] = {};
    const int length = GetLocaleInfoW(lcid_, type, buffer, 128);
    return length > 0 ? Utf8FromWide(buffer, length - 1) : std::string();
  }

  LCID lcid_;
  std::string name_;
};

std::unique_ptr<WindowsLocale> g_current;

[[maybe_unused]] const bool kNumbersFollowLocale = FollowLocaleInNumberConversions();

}  // namespace

const Locale& CurrentLocale() {
  if (!g_current) SelectUserLocale();
  return *g_current;
}

bool SelectLocale(std::string_view name) {
  std::string normalised = NormaliseLocaleName(name);
  if (normalised.empty()) return false;
  // The POSIX default locale is en-US here too, so a --locale C means the same.
  if (normalised == "C" || normalised == "POSIX") normalised = "en-US";
  const LCID lcid = LocaleNameToLCID(WideFromUtf8(normalised).c_str(), 0);
  if (lcid == 0) return false;
  g_current = std::make_unique<WindowsLocale>(lcid, normalised);
  return true;
}

void SelectUserLocale() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
  const int length = LCIDToLocaleName(LOCALE_USER_DEFAULT, name, LOCALE_NAME_MAX_LENGTH, 0);
  g_current = std::make_unique<WindowsLocale>(LOCALE_USER_DEFAULT, length > 0 ? Utf8FromWide(name, length - 1) : "en-US");
}

}  // namespace qorvane
