// The simulated client's call counting and fault injection: every interface
// call is counted under "<Interface>.<Member>", and an armed fault fails the
// nth call of its operation once.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "base/runtime_error.h"
#include "sim/sim_client.h"

namespace sim {
namespace {

class SimFaultsTest : public ::testing::Test {
 protected:
  SimFaultsTest() { sim.Install(); }
  ~SimFaultsTest() override { sim.Uninstall(); }

  Ref<client::MAPIFolder> Inbox() { return sim.DefaultFolder(client::olFolderInbox); }

  SimClient sim;
};

TEST_F(SimFaultsTest, EveryCallCountsUnderItsOperation) {
  const auto mail = sim.AddMail(Inbox(), "counted");
  sim.ResetCounts();
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"MailItem.Subject", [&] { mail->Subject(); }},
      {"MailItem.Subject", [&] { mail->Subject("set"); }},
      {"MailItem.UserProperties", [&] { mail->UserProperties(); }},
      {"UserProperties.Find", [&] { mail->UserProperties()->Find("x"); }},
      {"Application.GetNamespace", [&] { sim.Application()->GetNamespace("MAPI"); }},
      {"NameSpace.GetDefaultFolder", [&] { sim.Application()->Session()->GetDefaultFolder(6); }},
      {"MAPIFolder.Items", [&] { Inbox()->Items(); }},
      {"Items.Restrict", [&] { Inbox()->Items()->Restrict("[Subject] = 'x'"); }},
  };
  for (const auto& [operation, call] : cases) {
    SCOPED_TRACE(operation);
    const std::int64_t before = sim.CallCount(operation);
    const std::int64_t total = sim.TotalCalls();
    call();
    EXPECT_EQ(sim.CallCount(operation), before + 1);
    EXPECT_GE(sim.TotalCalls(), total + 1);
  }
  EXPECT_EQ(sim.CallCounts().at("MailItem.Subject"), 2);
  sim.ResetCounts();
  EXPECT_EQ(sim.TotalCalls(), 0);
  EXPECT_EQ(sim.CallCount("MailItem.Subject"), 0);
  EXPECT_TRUE(sim.CallCounts().empty());
  const auto operations = sim.Operations();
  EXPECT_NE(std::find(operations.begin(), operations.end(), "Items.Restrict"), operations.end())
      << "operations are remembered across resets";
}

TEST_F(SimFaultsTest, HelpersDoNotCount) {
  const auto mail = sim.AddMail(Inbox(), "helper");
  sim.OpenInspector(mail);
  sim.SetNow(45720.0);
  sim.AddOtherItem(Inbox(), 53, "other");
  EXPECT_EQ(sim.TotalCalls(), 0);
}

TEST_F(SimFaultsTest, RestrictIsOneCallWhateverTheFolderHolds) {
  const auto inbox = Inbox();
  for (int i = 0; i < 10000; ++i) {
    const auto mail = sim.AddMail(inbox, "m" + std::to_string(i));
    if (i % 100 == 0) mail->UserProperties()->Add("MoveToQorvane", client::olText);
  }
  const auto items = inbox->Items();
  sim.ResetCounts();
  const auto started = std::chrono::steady_clock::now();
  const auto marked = items->Restrict(
      "@SQL=\"http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/MoveToQorvane\" IS NOT "
      "NULL");
  const auto elapsed = std::chrono::steady_clock::now() - started;
  EXPECT_EQ(sim.TotalCalls(), 1);
  EXPECT_EQ(marked->Count(), 100);
  EXPECT_LT(elapsed, std::chrono::milliseconds(200)) << "a generous bound: linear, not quadratic";
}

TEST_F(SimFaultsTest, MovingManyItemsOutOfABigFolderStaysFast) {
  const auto inbox = Inbox();
  const auto drafts = sim.DefaultFolder(client::olFolderDrafts);
  for (int i = 0; i < 10000; ++i) sim.AddMail(inbox, "m" + std::to_string(i));
  const auto items = inbox->Items();
  const auto started = std::chrono::steady_clock::now();
  // Walking from the end while moving, the index stays valid.
  for (long i = items->Count(); i >= 1; i -= 2) items->Item(i)->Move(drafts);
  const auto elapsed = std::chrono::steady_clock::now() - started;
  EXPECT_EQ(items->Count(), 5000);
  EXPECT_EQ(items->Item(1)->Subject(), "m0");
  EXPECT_EQ(items->Item(5000)->Subject(), "m9998");
  EXPECT_EQ(drafts->Items()->Count(), 5000);
  EXPECT_LT(elapsed, std::chrono::seconds(1));
}

struct FaultCase {
  const char* operation;
  std::int64_t n;
  std::int32_t error;
};

TEST_F(SimFaultsTest, ArmedFaultFailsTheNthCallOnce) {
  const FaultCase cases[] = {
      {"MailItem.Subject", 1, -2147467259},
      {"MailItem.Subject", 3, 440},
      {"UserProperties.Find", 2, -2147221233},
      {"Items.Restrict", 1, -2147352567},
  };
  const auto mail = sim.AddMail(Inbox(), "faulty");
  const std::map<std::string, std::function<void()>> calls = {
      {"MailItem.Subject", [&] { mail->Subject(); }},
      {"UserProperties.Find", [&] { mail->UserProperties()->Find("x"); }},
      {"Items.Restrict", [&] { Inbox()->Items()->Restrict("[Subject] = 'x'"); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.operation) + " #" + std::to_string(c.n));
    sim.FailCall(c.operation, c.n, c.error, "injected");
    const auto& call = calls.at(c.operation);
    for (std::int64_t i = 1; i < c.n; ++i) EXPECT_NO_THROW(call()) << "call " << i;
    const std::int64_t counted = sim.CallCount(c.operation);
    try {
      call();
      ADD_FAILURE() << "the armed call did not fail";
    } catch (const qorvane::RuntimeError& error) {
      EXPECT_EQ(error.Number(), c.error);
      EXPECT_EQ(error.Description(), "injected");
    }
    EXPECT_EQ(sim.CallCount(c.operation), counted + 1) << "the failing call counts too";
    EXPECT_NO_THROW(call()) << "a fault fires once";
  }
}

TEST_F(SimFaultsTest, DisarmedFaultsDoNotFire) {
  const auto mail = sim.AddMail(Inbox(), "calm");
  sim.FailCall("MailItem.Subject", 1);
  sim.FailCall("MailItem.Subject", 0);
  EXPECT_NO_THROW(mail->Subject());
  sim.FailCall("MailItem.Subject", 1);
  sim.FailCall("MailItem.To", 1);
  sim.ClearFaults();
  EXPECT_NO_THROW(mail->Subject());
  EXPECT_NO_THROW(mail->To());
}

TEST_F(SimFaultsTest, DefaultFaultIsAnUnspecifiedError) {
  sim.FailCall("SafeMailItem.Send", 1);
  auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
  safe->Item(sim.AddMail(sim.DefaultFolder(client::olFolderOutbox), "s", "a@example.com"));
  try {
    safe->Send();
    FAIL() << "Send did not fail";
  } catch (const qorvane::RuntimeError& error) {
    EXPECT_EQ(error.Number(), -2147467259);
  }
  EXPECT_TRUE(sim.SendLog().empty()) << "a failed send sends nothing";
  EXPECT_EQ(sim.DefaultFolder(client::olFolderOutbox)->Items()->Count(), 1);
}

}  // namespace
}  // namespace sim
