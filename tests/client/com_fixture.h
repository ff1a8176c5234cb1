// The conformance suite's fixture for the COM binding: the simulated client
// behind IDispatch (tests/host), reached through win/binding, so every typed
// test runs through GetIDsOfNames, Invoke and connection points as it would
// against the real client. Windows builds only. No Windows header here: the
// typed tests see only client/ interfaces.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "client/client.h"

namespace client_conformance {

class ComFixture {
 public:
  ComFixture();
  ~ComFixture();
  ComFixture(const ComFixture&) = delete;
  ComFixture& operator=(const ComFixture&) = delete;

  client::Ref<client::Application> App();
  client::Ref<client::MailItem> AddMail(const client::Ref<client::MAPIFolder>& folder, const std::string& subject,
                                        const std::string& to);
  client::Ref<client::Explorer> OpenExplorer(const client::Ref<client::MAPIFolder>& folder);
  void CloseExplorer(const client::Ref<client::Explorer>& explorer);
  client::Ref<client::Inspector> OpenInspector(const client::Ref<client::Item>& item);
  void CloseInspector(const client::Ref<client::Inspector>& inspector);
  void Select(const client::Ref<client::Explorer>& explorer, const std::vector<client::Ref<client::Item>>& items);
  void Click(const client::Ref<client::CommandBarControl>& control);
  bool SendFromUser(const client::Ref<client::MailItem>& mail);
  void RaiseSyncError(long code, const std::string& description);
  void SetSafeMailInstalled(bool installed);
  void MarkUnresolvable(const std::string& recipient);
  void ListAddIn(const std::string& progId, const std::string& description);
  void ConnectAddIn(const std::string& progId, const std::string& description,
                    const client::Ref<client::AddInConnection>& connection);
  void Idle();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace client_conformance
