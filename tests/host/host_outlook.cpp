// The host program's client: loading, starting, running and stopping the
// registered add-ins over the simulated client behind IDispatch.
#include "tests/host/host_outlook.h"

#include <chrono>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "tests/host/com_addin.h"
#include "tests/host/host_objects.h"
#include "win/addin/office_interfaces.h"
#include "win/com/bstr.h"
#include "win/com/dispatch.h"
#include "win/com/error.h"
#include "win/com/wide_text.h"

namespace host {
namespace {

namespace com = qorvane::com;

constexpr DWORD kLoadAtStartup = 3;
constexpr const char* kExplorerRibbon = "Microsoft.Outlook.Explorer";
constexpr const char* kComposeRibbon = "Microsoft.Outlook.Mail.Compose";

// The ribbon's view of a control it calls back about.
struct RibbonControl {
  std::string id;
  com::ComPtr<IDispatch> context;
  std::string tag;
};

// IRibbonControl: Id (1), Context (2), Tag (3).
const MemberTable<RibbonControl> kRibbonControl = {
    {"Id", [](RibbonControl& c, const com::DispatchArgs&) { return com::ScopedVariant(c.id); }},
    {"Context", [](RibbonControl& c, const com::DispatchArgs&) { return com::ScopedVariant(c.context); }},
    {"Tag", [](RibbonControl& c, const com::DispatchArgs&) { return com::ScopedVariant(c.tag); }},
};

// The value of attribute name in the element that carries id="elementId";
// "" when there is none.
std::string AttributeOf(const std::string& markup, const std::string& elementId, const std::string& name) {
  const std::size_t idAt = markup.find("id=\"" + elementId + "\"");
  if (idAt == std::string::npos) return {};
  const std::size_t start = markup.rfind('<', idAt);
  const std::size_t end = markup.find('>', idAt);
  if (start == std::string::npos || end == std::string::npos) return {};
  const std::string element = markup.substr(start, end - start);
  const std::size_t at = element.find(" " + name + "=\"");
  if (at == std::string::npos) return {};
  const std::size_t valueAt = at + name.size() + 3;
  return element.substr(valueAt, element.find('"', valueAt) - valueAt);
}

double LocalNow() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return qorvane::DateSerialRollOver(now.wYear, now.wMonth, now.wDay) +
         qorvane::TimeSerial(now.wHour, now.wMinute, now.wSecond);
}

int MinutesEastOfUtc() {
  TIME_ZONE_INFORMATION zone;
  const DWORD which = GetTimeZoneInformation(&zone);
  const LONG bias = zone.Bias + (which == TIME_ZONE_ID_DAYLIGHT ? zone.DaylightBias : 0);
  return -static_cast<int>(bias);
}

}  // namespace

sim::SimOptions HostOptions::ClientOnThisMachine() {
  sim::SimOptions options;
  options.now = LocalNow();
  options.utcOffsetMinutes = MinutesEastOfUtc();
  return options;
}

HostOutlook::HostOutlook(HostOptions options) : options_(std::move(options)), client_(options_.client) {
  objectsBefore_ = SimHost::Calls().objectsLive;
}

HostOutlook::~HostOutlook() {
  if (running_) Stop();
}

void HostOutlook::Start() {
  window_ = std::make_unique<ClientWindow>(client_.Application());
  window_->Activate();
  if (options_.mainWindow) client_.OpenExplorer(client_.DefaultFolder(client::olFolderInbox));
  running_ = true;

  // Loading and creating come first, so that what is timed and counted is
  // the add-ins' own start-up: from the first OnConnection to the end of
  // OnStartupComplete.
  const auto loadBegin = std::chrono::steady_clock::now();
  for (const AddInEntry& entry : RegisteredAddIns()) {
    if (entry.loadBehavior != kLoadAtStartup) continue;
    const auto found = FindClass(entry.progId);
    if (!found) qorvane::Raise(qorvane::err::kCannotCreateObject, "no class for " + qorvane::Utf8FromWide(entry.progId.c_str()));
    LoadedAddIn addIn{entry.progId, qorvane::Utf8FromWide(entry.description.c_str()),
                      std::make_unique<AddInModule>(*found), nullptr, {}};
    addIn.object = addIn.module->CreateObject();
    addIns_.push_back(std::move(addIn));
  }
  const auto begin = std::chrono::steady_clock::now();
  startup_.loadMilliseconds = std::chrono::duration<double, std::milli>(begin - loadBegin).count();
  SimHost::ResetCalls();
  for (LoadedAddIn& addIn : addIns_) {
    client_.ConnectAddIn(qorvane::Utf8FromWide(addIn.progId.c_str()), addIn.description,
                         std::make_shared<ComAddIn>(addIn.object));
    if (options_.askForRibbon) AskForRibbon(addIn, kExplorerRibbon);
  }
  client_.CompleteStartup();
  const auto end = std::chrono::steady_clock::now();
  startup_.milliseconds = std::chrono::duration<double, std::milli>(end - begin).count();
  startup_.invokes = SimHost::Calls().invokes;
  startup_.getIdsOfNames = SimHost::Calls().getIdsOfNames;
}

void HostOutlook::Stop() {
  if (!running_) return;
  running_ = false;
  client_.ShutDown();
  PumpWaitingMessages();
  allUnloadable_ = true;
  for (LoadedAddIn& addIn : addIns_) addIn.object.Reset();
  for (LoadedAddIn& addIn : addIns_) {
    const bool canUnload = addIn.module->CanUnloadNow();
    allUnloadable_ = allUnloadable_ && canUnload;
    // A DLL that still has objects out must stay: its code would be gone.
    if (canUnload) addIn.module->Free();
  }
  window_.reset();
}

std::vector<std::wstring> HostOutlook::LoadedAddIns() const {
  std::vector<std::wstring> names;
  for (const LoadedAddIn& addIn : addIns_) names.push_back(addIn.progId);
  return names;
}

IDispatch* HostOutlook::AddInObject(const std::wstring& progId) const {
  for (const LoadedAddIn& addIn : addIns_) {
    if (addIn.progId == progId) return addIn.object.get();
  }
  return nullptr;
}

HostOutlook::Composed HostOutlook::ComposeMail(const std::string& subject, const std::string& to) {
  auto mail = client_.AddMail(client_.DefaultFolder(client::olFolderDrafts), subject, to);
  auto window = client_.OpenInspector(mail);
  // The compose window's ribbon is asked for when the first one shows,
  // after the window's NewInspector.
  if (options_.askForRibbon && !askedCompose_) {
    askedCompose_ = true;
    for (LoadedAddIn& addIn : addIns_) AskForRibbon(addIn, kComposeRibbon);
  }
  return {std::move(mail), std::move(window)};
}

void HostOutlook::AskForRibbon(LoadedAddIn& addIn, const std::string& ribbonId) {
  const auto ribbon = addIn.object.As<office::IRibbonExtensibility>(office::IID_IRibbonExtensibility);
  if (!ribbon) return;
  const com::Bstr id(ribbonId);
  com::Bstr xml;
  com::CheckHresult(ribbon->GetCustomUI(id.get(), xml.put()));
  addIn.ribbons[ribbonId] = xml.Utf8();
}

std::string HostOutlook::RibbonXml(const std::wstring& progId, const std::string& ribbonId) const {
  for (const LoadedAddIn& addIn : addIns_) {
    if (addIn.progId != progId) continue;
    const auto found = addIn.ribbons.find(ribbonId);
    return found == addIn.ribbons.end() ? std::string() : found->second;
  }
  return {};
}

void HostOutlook::ClickRibbonButton(const std::wstring& progId, const std::string& ribbonId,
                                    const std::string& buttonId, IDispatch* context) {
  const std::string callback = AttributeOf(RibbonXml(progId, ribbonId), buttonId, "onAction");
  IDispatch* object = AddInObject(progId);
  if (callback.empty() || !object) qorvane::Raise(qorvane::err::kInvalidCall, "no button " + buttonId);
  // As the ribbon does: the callback's name on the object it got the markup
  // from, the add-in's IRibbonExtensibility (an IDispatch of its own).
  const auto ribbon = com::ComPtr<IDispatch>(object).As<office::IRibbonExtensibility>(office::IID_IRibbonExtensibility);
  if (!ribbon) qorvane::Raise(qorvane::err::kInvalidCall, "no ribbon");
  com::DispatchType type("(ribbon callbacks)", false);
  const com::Dispatch addIn(com::ComPtr<IDispatch>(ribbon.get()), type);
  const auto control =
      Expose(std::make_shared<RibbonControl>(RibbonControl{buttonId, com::ComPtr<IDispatch>(context), ""}),
             kRibbonControl);
  addIn.Call(callback, {control});
}

bool HostOutlook::RunUntil(const std::function<bool()>& done, DWORD timeoutMs) {
  return RunMessageLoopUntil(done, timeoutMs);
}

std::int64_t HostOutlook::ObjectsStillHeld() const { return SimHost::Calls().objectsLive - objectsBefore_; }

}  // namespace host
