// The conformance suite's fixture for the simulated client, and the list of
// fixtures the typed tests run over: on Windows builds also the COM binding
// over the simulated client behind IDispatch.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "sim/sim_client.h"
#include "tests/client/client_fixture.h"
#ifdef _WIN32
#include "tests/client/com_fixture.h"
#endif

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
  using SimClient::RaiseSyncError;
  using SimClient::SendFromUser;
  using SimClient::CloseExplorer;
  using SimClient::CloseInspector;
  using SimClient::MarkUnresolvable;
  using SimClient::OpenExplorer;
  using SimClient::OpenInspector;
  using SimClient::Select;
  using SimClient::SetSafeMailInstalled;
  using SimClient::ListAddIn;
  void ConnectAddIn(const std::string& progId, const std::string& description,
                    const Ref<client::AddInConnection>& connection) {
    SimClient::ConnectAddIn(progId, description, connection);
  }
  // Keystrokes act at once on the simulated client.
  void Idle() {}
};

static_assert(ClientFixture<SimFixture>);

#ifdef _WIN32
static_assert(ClientFixture<ComFixture>);
using ClientFixtures = ::testing::Types<SimFixture, ComFixture>;
#else
using ClientFixtures = ::testing::Types<SimFixture>;
#endif

// Names the typed tests after their fixture: FoldersTest/Sim.X, .../Com.X.
struct FixtureNames {
  template <class F>
  static std::string GetName(int) {
    return std::is_same_v<F, SimFixture> ? "Sim" : "Com";
  }
};

}  // namespace client_conformance
