// A simulated client installed as the add-in's client, with the log, locale
// and ignore list pinned, for the store services' tests.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "infra/ignore_list.h"
#include "schedule/mail_props.h"
#include "sim/sim_client.h"
#include "store/sending_notices.h"
#include "tests/support/test_env.h"

namespace qorvane::testing {

// The session's memory of mails that could not be sent: empty for the test,
// and emptied again after it.
class ScopedUnsentNotices {
 public:
  ScopedUnsentNotices() { Main::ResetUnsentNoticesForTesting(); }
  ~ScopedUnsentNotices() { Main::ResetUnsentNoticesForTesting(); }
  ScopedUnsentNotices(const ScopedUnsentNotices&) = delete;
  ScopedUnsentNotices& operator=(const ScopedUnsentNotices&) = delete;
};

class StoreTest : public ::testing::Test {
 protected:
  StoreTest() { sim_.Install(); }
  ~StoreTest() override { sim_.Uninstall(); }

  client::Ref<client::MAPIFolder> Deferred() {
    if (!deferred_) deferred_ = sim_.Root()->Folders()->Add("Qorvane", client::olFolderDrafts);
    return deferred_;
  }

  // A mail in the deferred folder carrying the schedule.
  client::Ref<client::MailItem> Schedule(const std::string& subject, CMailProps props) {
    auto mail = sim_.AddMail(Deferred(), subject);
    props.WriteProps(mail);
    mail->Save();
    return mail;
  }

  long CountIn(long folderType) { return sim_.DefaultFolder(folderType)->Items()->Count(); }

  // A file of the test's own, with a chosen age in days.
  std::string MakeFile(const std::string& relative, int ageDays = 0) {
    const std::filesystem::path path = (log_.Folder() / "files" / relative).make_preferred();
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << relative;
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * ageDays));
    return path.string();
  }
  std::string FilesFolder(const std::string& relative = "") const {
    return (log_.Folder() / "files" / relative).make_preferred().string();
  }

  ScopedLocale locale_{"en-US"};
  ScopedLogFolder log_;
  ScopedUnsentNotices notices_;
  ScopedIgnoreList ignoreList_{CIgnoreList::kDefaultList, true};
  sim::SimClient sim_;
  client::Ref<client::MAPIFolder> deferred_;
};

}  // namespace qorvane::testing
