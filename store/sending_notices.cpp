// Main: the session's memory of mails the scheduler could not send.
#include "store/sending_notices.h"

#include <algorithm>
#include <deque>
#include <utility>

namespace Main {
namespace {

// More mails than anyone keeps deferred; past this the oldest notice is
// dropped, so at worst a mail is reported again, and the memory stays small.
constexpr std::size_t kMostNotices = 1000;

std::deque<std::pair<std::string, std::string>>& Notices() {
  static std::deque<std::pair<std::string, std::string>> notices;
  return notices;
}

}  // namespace

bool HasNoticeOfUnsent(const std::string& entryId, const std::string& cause) {
  const auto& notices = Notices();
  return std::find(notices.begin(), notices.end(), std::make_pair(entryId, cause)) != notices.end();
}

bool FirstNoticeOfUnsent(const std::string& entryId, const std::string& cause) {
  if (HasNoticeOfUnsent(entryId, cause)) return false;
  auto& notices = Notices();
  const auto notice = std::make_pair(entryId, cause);
  if (notices.size() >= kMostNotices) notices.pop_front();
  notices.push_back(notice);
  return true;
}

void ForgetUnsent(const std::string& entryId) {
  auto& notices = Notices();
  notices.erase(std::remove_if(notices.begin(), notices.end(), [&](const auto& n) { return n.first == entryId; }),
                notices.end());
}

void ResetUnsentNoticesForTesting() { Notices().clear(); }

}  // namespace Main
