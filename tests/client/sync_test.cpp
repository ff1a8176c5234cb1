// Conformance: the Send/Receive group and its events.
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class SyncTest : public ClientTest<F> {};
TYPED_TEST_SUITE(SyncTest, ClientFixtures);

struct SyncLog : client::SyncObjectEvents {
  void SyncStart() override { events.push_back("start"); }
  void SyncEnd() override { events.push_back("end"); }
  std::vector<std::string> events;
};

TYPED_TEST(SyncTest, StartRunsOneSendReceiveFromStartToEnd) {
  const auto groups = this->session->SyncObjects();
  ASSERT_GE(groups->Count(), 1);
  const auto group = groups->Item(1);
  EXPECT_NE(group->Name(), "");
  SyncLog log;
  auto subscription = group->Advise(&log);
  group->Start();
  EXPECT_EQ(log.events, (std::vector<std::string>{"start", "end"}));
  subscription.reset();
  group->Start();
  EXPECT_EQ(log.events.size(), 2u);
}

}  // namespace
}  // namespace client_conformance
