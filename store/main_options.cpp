// Main: version text and first day of the week.
#include "store/main_options.h"

#include "infra/cwinreg.h"
#include "infra/error_trap.h"
#include "infra/settings.h"
#include "schedule/first_dow.h"
#include "store/version.h"

std::string g_OutlookVersion;

namespace Main {

std::string GetAppVersion() {
  return std::to_string(qorvane::kVersionMajor) + "." + std::to_string(qorvane::kVersionMinor) + "." +
         std::to_string(qorvane::kVersionRevision);
}

int LoadFirstDOW() {
  int firstDow = 0;
  qorvane::Trap("LoadFirstDOW", [&] {
    CWinReg reg;
    if (!reg.InitForRead(CWinReg::HKEY_CURRENT_USER, qorvane::settings::CalendarOptionsKey(g_OutlookVersion))) return;
    // The client counts from 0 = Sunday; the engine from 1 = Sunday.
    const std::int32_t value = reg.ReadLong("FirstDOW", 0) + 1;
    firstDow = value >= 1 && value <= 7 ? value : 0;
  });
  return firstDow;
}

void ApplyClientFirstDOW() { qorvane::SetFirstDOW(LoadFirstDOW()); }

}  // namespace Main
