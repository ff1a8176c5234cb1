// The COM binding's fixture: a simulated client, its host behind IDispatch,
// and the binding over the host's Application as the current client.
#include "tests/client/com_fixture.h"

#include <gtest/gtest.h>

#include "sim/sim_client.h"
#include "tests/host/client_window.h"
#include "tests/host/sim_host.h"
#include "win/binding/binding.h"
#include "win/com/apartment.h"

namespace client_conformance {

using client::Ref;

struct ComFixture::Parts {
  qorvane::com::ComApartment apartment;
  const std::int64_t liveBefore = host::SimHost::Calls().objectsLive;
  sim::SimClient sim;
  host::SimHost host{sim};
  binding::ComSafeMailFactory safeMail;
  Ref<client::Application> app = binding::WrapApplication(host.Application().get());
  // The client's window, where keys typed with SendKeys arrive.
  host::ClientWindow window{sim.Application()};

  // The simulated object behind a bound one.
  template <class Target, class Bound>
  static Ref<Target> SimOf(const Ref<Bound>& bound) {
    return host::SimHost::SimObjectOf<Target>(binding::DispatchOf(bound).get());
  }
};

ComFixture::ComFixture() : parts_(std::make_unique<Parts>()) {
  // The simulated client provides the clock and message box; the binding
  // is the application and the safe-mail library the add-in sees.
  parts_->sim.Install();
  client::SetCurrentApplication(parts_->app);
  client::SetSafeMailFactory(&parts_->safeMail);
  parts_->window.Activate();
}

ComFixture::~ComFixture() {
  client::SetCurrentApplication(nullptr);
  client::SetSafeMailFactory(nullptr);
  parts_->app.reset();
  // The test's own references went before the fixture: whatever the host
  // still has alive now was leaked by the binding.
  EXPECT_EQ(host::SimHost::Calls().objectsLive, parts_->liveBefore) << "automation objects still alive";
  parts_->sim.Uninstall();
}

Ref<client::Application> ComFixture::App() { return parts_->app; }

Ref<client::MailItem> ComFixture::AddMail(const Ref<client::MAPIFolder>& folder, const std::string& subject,
                                          const std::string& to) {
  const auto mail = parts_->sim.AddMail(Parts::SimOf<client::MAPIFolder>(folder), subject, to);
  return binding::WrapItem(parts_->host.Expose(Ref<client::Item>(mail)).get())->AsMailItem();
}

Ref<client::Explorer> ComFixture::OpenExplorer(const Ref<client::MAPIFolder>& folder) {
  return binding::WrapExplorer(
      parts_->host.Expose(parts_->sim.OpenExplorer(Parts::SimOf<client::MAPIFolder>(folder))).get());
}

void ComFixture::CloseExplorer(const Ref<client::Explorer>& explorer) {
  parts_->sim.CloseExplorer(Parts::SimOf<client::Explorer>(explorer));
}

Ref<client::Inspector> ComFixture::OpenInspector(const Ref<client::Item>& item) {
  return binding::WrapInspector(
      parts_->host.Expose(parts_->sim.OpenInspector(Parts::SimOf<client::Item>(item))).get());
}

void ComFixture::CloseInspector(const Ref<client::Inspector>& inspector) {
  parts_->sim.CloseInspector(Parts::SimOf<client::Inspector>(inspector));
}

void ComFixture::Select(const Ref<client::Explorer>& explorer, const std::vector<Ref<client::Item>>& items) {
  std::vector<Ref<client::Item>> simItems;
  for (const auto& item : items) simItems.push_back(Parts::SimOf<client::Item>(item));
  parts_->sim.Select(Parts::SimOf<client::Explorer>(explorer), simItems);
}

void ComFixture::Click(const Ref<client::CommandBarControl>& control) {
  parts_->sim.Click(Parts::SimOf<client::CommandBarControl>(control));
}

bool ComFixture::SendFromUser(const Ref<client::MailItem>& mail) {
  return parts_->sim.SendFromUser(std::dynamic_pointer_cast<client::MailItem>(Parts::SimOf<client::Item>(mail)));
}

void ComFixture::RaiseSyncError(long code, const std::string& description) {
  parts_->sim.RaiseSyncError(code, description);
}

void ComFixture::SetSafeMailInstalled(bool installed) { parts_->host.SetSafeMailInstalled(installed); }

void ComFixture::MarkUnresolvable(const std::string& recipient) { parts_->sim.MarkUnresolvable(recipient); }

}  // namespace client_conformance

namespace client_conformance {

void ComFixture::ListAddIn(const std::string& progId, const std::string& description) {
  parts_->sim.ListAddIn(progId, description);
}

void ComFixture::ConnectAddIn(const std::string& progId, const std::string& description,
                              const Ref<client::AddInConnection>& connection) {
  parts_->sim.ConnectAddIn(progId, description, connection);
}

void ComFixture::Idle() {
  // Input typed with SendInput reaches the queue at once; a second round
  // delivers what the first one's handlers posted.
  while (host::PumpWaitingMessages() > 0) {
  }
}

}  // namespace client_conformance
