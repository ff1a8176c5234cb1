// What only the simulated client does: its send log (the attachments in it
// are left to the store tests); counting every interface call under
// "<Interface>.<Member>"; failing the nth call of an operation once, or
// from the nth call on for a while; calls the harness makes offstage; queued
// message-box answers; and staying fast on a big folder.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <map>
#include <tuple>

#include "base/runtime_error.h"
#include "platform/message_box.h"
#include "sim/sim_client.h"
#include "tests/client/client_fixture.h"

namespace sim {
namespace {

class SimClientTest : public ::testing::Test {
 protected:
  SimClientTest() { sim.Install(); }
  ~SimClientTest() override { sim.Uninstall(); }

  Ref<client::MAPIFolder> Folder(long folderType) { return sim.DefaultFolder(folderType); }
  void Send(const Ref<client::MailItem>& mail) {
    auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
    safe->Item(mail);
    safe->Send();
  }

  SimClient sim;
};

TEST_F(SimClientTest, SendLogRecordsWhatWentOutAndWhen) {
  const auto mail = sim.AddMail(Folder(client::olFolderOutbox), "Report", "a@example.com; b@example.com");
  const auto properties = mail->UserProperties();
  properties->Add("Note", client::olText)->Value("kept");
  properties->Add("Count", client::olNumber)->Value(2.5);
  properties->Add("When", client::olDateTime)->Value(qorvane::DateValue{45719.395833333336});
  properties->Add("Flag", client::olYesNo)->Value(true);
  sim.SetNow(45720.5);
  Send(mail);
  ASSERT_EQ(sim.SendLog().size(), 1u);
  const SentMail& sent = sim.SendLog()[0];
  EXPECT_EQ(sent.time, 45720.5);
  EXPECT_EQ(sent.subject + " to " + sent.to, "Report to a@example.com; b@example.com");
  const std::map<std::string, std::string> expected = {
      {"Note", "kept"}, {"Count", "2.5"}, {"When", "3/3/2025 9:30:00 AM"}, {"Flag", "True"}};
  EXPECT_EQ(sent.userProperties, expected);
}

TEST_F(SimClientTest, EveryCallCountsUnderItsOperationButHelpersDoNot) {
  const auto mail = sim.AddMail(Folder(client::olFolderInbox), "counted");
  sim.OpenInspector(mail);
  sim.AddOtherItem(Folder(client::olFolderInbox), 53, "Meeting request");
  EXPECT_EQ(sim.TotalCalls(), 0) << "the test's own helpers do not count";
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"MailItem.Subject", [&] { mail->Subject("set"); }},
      {"NameSpace.GetDefaultFolder", [&] { sim.Application()->Session()->GetDefaultFolder(6); }},
      {"Items.Restrict", [&] { Folder(client::olFolderInbox)->Items()->Restrict("[Subject] = 'x'"); }}};
  for (const auto& [operation, call] : cases) {
    const std::int64_t before = sim.CallCount(operation);
    const std::int64_t total = sim.TotalCalls();
    call();
    EXPECT_EQ(sim.CallCount(operation), before + 1) << operation;
    EXPECT_GE(sim.TotalCalls(), total + 1) << operation;
  }
  mail->Subject();
  EXPECT_EQ(sim.CallCounts().at("MailItem.Subject"), 2) << "getter and setter count together";
  sim.ResetCounts();
  EXPECT_EQ(sim.TotalCalls(), 0);
  EXPECT_TRUE(sim.CallCounts().empty());
}

TEST_F(SimClientTest, ArmedFaultFailsTheNthCallOnce) {
  const auto mail = sim.AddMail(Folder(client::olFolderOutbox), "faulty", "a@example.com");
  sim.FailCall("MailItem.Subject", 1);
  sim.FailCall("MailItem.Subject", 0);
  EXPECT_NO_THROW(mail->Subject()) << "n = 0 disarms";
  sim.FailCall("MailItem.To", 1);
  sim.ClearFaults();
  EXPECT_NO_THROW(mail->To()) << "so does ClearFaults";
  sim.FailCall("MailItem.To", 1);
  EXPECT_EQ(client_conformance::ErrorOf([&] { mail->To(); }), -2147467259) << "by default E_FAIL";

  const std::map<std::string, std::function<void()>> calls = {
      {"MailItem.Subject", [&] { mail->Subject(); }},
      {"UserProperties.Find", [&] { mail->UserProperties()->Find("x"); }},
      {"SafeMailItem.Send", [&] { Send(mail); }}};
  // The operation, which call fails, and the error.
  const std::tuple<const char*, std::int64_t, std::int32_t> cases[] = {
      {"MailItem.Subject", 3, 440}, {"UserProperties.Find", 1, -2147221233}, {"SafeMailItem.Send", 1, -2147352567}};
  for (const auto& [operation, n, error] : cases) {
    SCOPED_TRACE(operation);
    const auto& call = calls.at(operation);
    sim.FailCall(operation, n, error, "injected");
    for (std::int64_t i = 1; i < n; ++i) EXPECT_NO_THROW(call()) << "call " << i;
    const std::int64_t counted = sim.CallCount(operation);
    try {
      call();
      ADD_FAILURE() << "the armed call did not fail";
    } catch (const qorvane::RuntimeError& raised) {
      EXPECT_EQ(raised.Number(), error);
      EXPECT_EQ(raised.Description(), "injected");
    }
    EXPECT_EQ(sim.CallCount(operation), counted + 1) << "the failing call counts too";
    EXPECT_TRUE(sim.SendLog().empty()) << "a failed send sends nothing";
    EXPECT_NO_THROW(call()) << "a fault fires once";
  }
}

TEST_F(SimClientTest, APersistentFaultFailsEveryCallUntilTheClientRecovers) {
  const auto mail = sim.AddMail(Folder(client::olFolderOutbox), "broken", "a@example.com");
  const double start = sim.Now();
  sim.FailCallsFrom("MailItem.Subject", 2, 10.0 / 1440);
  const std::int64_t firedBefore = sim.FaultsFired();
  // Minutes after the start, and whether the call then fails.
  const std::pair<int, bool> calls[] = {{0, false}, {1, true}, {5, true}, {10, true}, {11, false}, {12, false}};
  for (const auto& [minutes, fails] : calls) {
    sim.SetNow(start + minutes / 1440.0);
    EXPECT_EQ(client_conformance::ErrorOf([&] { mail->Subject(); }) != 0, fails) << "minute " << minutes;
  }
  EXPECT_EQ(sim.FaultsFired(), firedBefore + 3) << "each failure thrown counts as fired";
  EXPECT_NO_THROW(mail->To()) << "only its own operation is broken";
}

TEST_F(SimClientTest, OffstageCallsAreNeitherCountedNorFailed) {
  const auto mail = sim.AddMail(Folder(client::olFolderOutbox), "looked at", "a@example.com");
  sim.FailCall("MailItem.Subject", 1);
  {
    const SimClient::Offstage offstage(sim);
    EXPECT_EQ(mail->Subject(), "looked at");
  }
  EXPECT_EQ(sim.CallCount("MailItem.Subject"), 0);
  EXPECT_NE(client_conformance::ErrorOf([&] { mail->Subject(); }), 0) << "the fault waited for the add-in's call";
  EXPECT_EQ(sim.FaultsFired(), 1);
}

TEST_F(SimClientTest, QueuedMessageBoxAnswersGoFirstThenTheStandingOne) {
  sim.SetMessageBoxAnswer(qorvane::vbNo);
  sim.QueueMessageBoxAnswer(qorvane::vbCancel);
  sim.QueueMessageBoxAnswer(qorvane::vbYes);
  EXPECT_EQ(sim.PendingMessageBoxAnswers(), 2u);
  std::vector<long> answers;
  for (int i = 0; i < 3; ++i) answers.push_back(qorvane::MsgBox("?", qorvane::vbYesNoCancel));
  EXPECT_EQ(answers, (std::vector<long>{qorvane::vbCancel, qorvane::vbYes, qorvane::vbNo}));
  EXPECT_EQ(sim.PendingMessageBoxAnswers(), 0u);
}

TEST_F(SimClientTest, BigFolderRestrictsInOneCallAndMovesItemsOutInOrderFast) {
  const auto inbox = Folder(client::olFolderInbox);
  const auto drafts = Folder(client::olFolderDrafts);
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
  EXPECT_EQ(sim.TotalCalls(), 1);
  EXPECT_EQ(marked->Count(), 100);
  // Moving many from the front compacts the folder's list; walking from the
  // end while moving, the index stays valid.
  for (int i = 0; i < 6000; ++i) items->Item(1)->Move(drafts);
  for (long i = items->Count(); i >= 1; i -= 2) items->Item(i)->Move(drafts);
  EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(1)) << "linear, not quadratic";
  ASSERT_EQ(items->Count(), 2000);
  for (long i = 1; i <= 2000; ++i) ASSERT_EQ(items->Item(i)->Subject(), "m" + std::to_string(6000 + 2 * (i - 1))) << i;
  EXPECT_EQ(drafts->Items()->Count(), 8000);
}

}  // namespace
}  // namespace sim
