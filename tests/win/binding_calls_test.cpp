// What the COM binding costs the client: IDispatch calls per typical
// operation once names are known, how rarely names are looked up, and that
// every object handed out is given back when the add-in lets go. Runs the
// binding over the simulated client behind IDispatch.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <tuple>

#include "base/runtime_error.h"
#include "sim/sim_client.h"
#include "tests/host/sim_host.h"
#include "win/binding/binding.h"
#include "win/com/apartment.h"
#include "win/com/dispatch.h"

namespace {

using client::Ref;
namespace com = qorvane::com;

const std::string kMarked =
    "@SQL=\"http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/MoveToQorvane\" IS NOT "
    "NULL";

class BindingCallsTest : public ::testing::Test {
 protected:
  BindingCallsTest() {
    const auto inbox = sim.DefaultFolder(client::olFolderInbox);
    for (int i = 0; i < kMails; ++i) {
      const auto mail = sim.AddMail(inbox, "m" + std::to_string(i));
      if (i % 10 == 0) mail->UserProperties()->Add("MoveToQorvane", client::olText);
    }
  }

  static constexpr int kMails = 200;
  com::ComApartment apartment;
  sim::SimClient sim;
  host::SimHost host{sim};
  Ref<client::Application> app = binding::WrapApplication(host.Application().get());
};

TEST_F(BindingCallsTest, TypicalOperationsCostAFixedNumberOfCallsAndNoLookups) {
  const auto inbox = app->Session()->GetDefaultFolder(client::olFolderInbox);
  const auto items = inbox->Items();
  // The operation and the Invoke calls it costs.
  const std::tuple<const char*, std::function<void()>, std::int64_t> cases[] = {
      {"Items.Item(i).Class", [&] { items->Item(5)->Class(); }, 2},
      {"Items.Restrict(DASL)", [&] { items->Restrict(kMarked); }, 1},
      {"Items.Restrict(DASL).Count", [&] { items->Restrict(kMarked)->Count(); }, 2},
      {"Session.GetDefaultFolder(6).Items.Count",
       [&] { app->Session()->GetDefaultFolder(client::olFolderInbox)->Items()->Count(); }, 4},
      {"item.UserProperties.Find(name).Value",
       [&] { items->Item(1)->UserProperties()->Find("MoveToQorvane")->Value(); }, 4},
      {"AsMailItem().To", [&] { items->Item(1)->AsMailItem()->To(); }, 3},
      {"walk of 200 items: Class", [&] {
         for (long i = 1, n = items->Count(); i <= n; ++i) items->Item(i)->Class();
       }, 1 + 2 * kMails},
  };
  for (const auto& [name, call, invokes] : cases) call();  // names known from here on
  for (const auto& [name, call, invokes] : cases) {
    host::SimHost::ResetCalls();
    const com::NameLookupCounts before = com::NameLookups();
    call();
    EXPECT_EQ(host::SimHost::Calls().invokes, invokes) << name;
    EXPECT_EQ(host::SimHost::Calls().getIdsOfNames, 0) << name;
    EXPECT_EQ(com::NameLookups().resolved, before.resolved) << name;
    std::printf("[ calls    ] %-42s %4lld Invoke, %lld GetIDsOfNames\n", name,
                static_cast<long long>(host::SimHost::Calls().invokes),
                static_cast<long long>(host::SimHost::Calls().getIdsOfNames));
  }
  const com::NameLookupCounts& lookups = com::NameLookups();
  std::printf("[ calls    ] names asked %lld, looked up %lld: cache hit rate %.2f%%\n",
              static_cast<long long>(lookups.asked), static_cast<long long>(lookups.resolved),
              100.0 * static_cast<double>(lookups.asked - lookups.resolved) / static_cast<double>(lookups.asked));
  EXPECT_LT(lookups.resolved * 50, lookups.asked) << "names are looked up once per type, not per object";
}

TEST_F(BindingCallsTest, EveryObjectHandedOutIsGivenBackWhenTheAddInLetsGo) {
  struct Handler : client::InspectorsEvents, client::ApplicationEvents {
    void NewInspector(const Ref<client::Inspector>& inspector) override { kept.push_back(inspector->CurrentItem()); }
    std::vector<Ref<client::Item>> kept;
  };
  const std::int64_t before = host::SimHost::Calls().objectsLive;
  {
    Handler handler;
    const auto inspectors = app->Inspectors();
    const auto subscriptions = {inspectors->Advise(&handler), app->Advise(&handler)};
    const auto inbox = app->GetNamespace("MAPI")->GetDefaultFolder(client::olFolderInbox);
    for (const auto& item : {inbox->Items()->Item(1), inbox->Items()->Restrict(kMarked)->Item(2)}) {
      item->AsMailItem()->Display();
    }
    EXPECT_EQ(handler.kept.size(), 2u);
    EXPECT_GT(host::SimHost::Calls().objectsLive, before);
  }
  EXPECT_EQ(host::SimHost::Calls().objectsLive, before) << "nothing held after the last reference went";
}

TEST_F(BindingCallsTest, WrappersComeOnlyFromTheBinding) {
  EXPECT_EQ(binding::WrapApplication(nullptr), nullptr);
  const Ref<client::Item> foreign = sim.AddMail(sim.DefaultFolder(client::olFolderInbox), "sim's own");
  // What DispatchOf raises for a null object and for another implementation's.
  const std::tuple<const char*, Ref<client::Item>, std::int32_t> cases[] = {
      {"null", nullptr, qorvane::err::kObjectNotSet}, {"simulated", foreign, qorvane::err::kTypeMismatch}};
  for (const auto& [name, item, number] : cases) {
    try {
      binding::DispatchOf(item);
      ADD_FAILURE() << name;
    } catch (const qorvane::RuntimeError& error) {
      EXPECT_EQ(error.Number(), number) << name;
    }
  }
}

}  // namespace
