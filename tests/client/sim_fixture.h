// The conformance suite's fixture for the simulated client, and the list of
// fixtures the typed tests run over.
#pragma once

#include <gtest/gtest.h>

#include "sim/sim_client.h"
#include "tests/client/client_fixture.h"

namespace client_conformance {

class SimFixture {
 public:
  SimFixture() { sim_.Install(); }
  ~SimFixture() { sim_.Uninstall(); }
  SimFixture(const SimFixture&) = delete;
  SimFixture& operator=(const SimFixture&) = delete;

  Ref<client::Application> App() { return sim_.Application(); }
  Ref<client::MailItem> AddMail(const Ref<client::MAPIFolder>& folder, const std::string& subject,
                                const std::string& to) {
    return sim_.AddMail(folder, subject, to);
  }
  Ref<client::Explorer> OpenExplorer(const Ref<client::MAPIFolder>& folder) { return sim_.OpenExplorer(folder); }
  void CloseExplorer(const Ref<client::Explorer>& explorer) { sim_.CloseExplorer(explorer); }
  Ref<client::Inspector> OpenInspector(const Ref<client::Item>& item) { return sim_.OpenInspector(item); }
  void CloseInspector(const Ref<client::Inspector>& inspector) { sim_.CloseInspector(inspector); }
  void Select(const Ref<client::Explorer>& explorer, const std::vector<Ref<client::Item>>& items) {
    sim_.Select(explorer, items);
  }
  void Click(const Ref<client::CommandBarControl>& control) { sim_.Click(control); }
  void SetSafeMailInstalled(bool installed) { sim_.SetSafeMailInstalled(installed); }
  void MarkUnresolvable(const std::string& recipient) { sim_.MarkUnresolvable(recipient); }

 private:
  sim::SimClient sim_;
};

static_assert(ClientFixture<SimFixture>);

using ClientFixtures = ::testing::Types<SimFixture>;

}  // namespace client_conformance
