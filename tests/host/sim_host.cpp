// The simulated client's host: its application object and safe-mail class.
#include "tests/host/sim_host.h"

#include "sim/sim_safe_mail.h"
#include "sim/world.h"
#include "tests/host/host_objects.h"

namespace host {

SimHost::SimHost(sim::SimClient& client) : client_(client), safeMail_(*client.GetWorld().safeMail) {
  HostedApplication() = client_.Application();
  SetSafeMailInstalled(client_.GetWorld().safeMailInstalled);
}

SimHost::~SimHost() {
  safeMail_.Unregister();
  HostedApplication() = nullptr;
}

com::ComPtr<IDispatch> SimHost::Application() { return ExposeApplication(client_.Application()).ToObject(); }

com::ComPtr<IDispatch> SimHost::Expose(const Ref<client::Item>& item) { return ExposeItem(item).ToObject(); }
com::ComPtr<IDispatch> SimHost::Expose(const Ref<client::Explorer>& explorer) {
  return ExposeExplorer(explorer).ToObject();
}
com::ComPtr<IDispatch> SimHost::Expose(const Ref<client::Inspector>& inspector) {
  return ExposeInspector(inspector).ToObject();
}

void SimHost::SetSafeMailInstalled(bool installed) {
  client_.SetSafeMailInstalled(installed);
  installed ? safeMail_.Register() : safeMail_.Unregister();
}

void SimHost::ResetCalls() {
  Counts().getIdsOfNames = 0;
  Counts().invokes = 0;
  Counts().objectsMade = 0;
}

}  // namespace host
