// The conformance suite's fixture for the simulated client, and the list of
// fixtures the typed tests run over.
#pragma once

#include <gtest/gtest.h>

#include "sim/sim_client.h"
#include "tests/client/client_fixture.h"

namespace client_conformance {

// The simulated client offers the fixture's members under the same names;
// AddMail is forwarded so that the typed tests cannot lean on its default To.
class SimFixture : sim::SimClient {
 public:
  SimFixture() { Install(); }
  ~SimFixture() { Uninstall(); }

  Ref<client::Application> App() { return Application(); }
  Ref<client::MailItem> AddMail(const Ref<client::MAPIFolder>& folder, const std::string& subject,
                                const std::string& to) {
    return SimClient::AddMail(folder, subject, to);
  }
  using SimClient::Click;
  using SimClient::CloseExplorer;
  using SimClient::CloseInspector;
  using SimClient::MarkUnresolvable;
  using SimClient::OpenExplorer;
  using SimClient::OpenInspector;
  using SimClient::Select;
  using SimClient::SetSafeMailInstalled;
};

static_assert(ClientFixture<SimFixture>);

using ClientFixtures = ::testing::Types<SimFixture>;

}  // namespace client_conformance
