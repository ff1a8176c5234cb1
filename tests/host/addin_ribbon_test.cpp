// qorvane.dll's ribbon under wine: the ribbon of a client of version 14 on
// (asked for, clicked through its callbacks by name) and the command bars of
// older clients.
#include <tuple>

#include "platform/xml_dom.h"
#include "tests/host/addin_dll_fixture.h"
#include "win/com/apartment.h"

namespace host_testing {
namespace {

namespace com = qorvane::com;

constexpr wchar_t kProgId[] = L"Qorvane.Connect";
constexpr const char* kExplorerRibbon = "Microsoft.Outlook.Explorer";
constexpr const char* kComposeRibbon = "Microsoft.Outlook.Mail.Compose";

class AddInRibbon : public AddInDllTest {
 protected:
  com::ComApartment apartment_;
};

// Whether the markup parses (MSXML, as the client parses it) with customUI
// at its root.
bool ParsesAsCustomUI(const std::string& markup) {
  const auto document = qorvane::xml::CreateDocument();
  if (!document->LoadXml(markup)) return false;
  const auto root = document->DocumentElement();
  return root && root->Name() == "customUI";
}

host::HostOptions RibbonClient(const char* version) {
  host::HostOptions options;
  options.client.version = version;
  options.askForRibbon = true;
  return options;
}

TEST_F(AddInRibbon, AClientWithARibbonGetsOneForEachWindowAndNoCommandBars) {
  host::HostOutlook outlook(RibbonClient("16.0.17928.20114"));
  outlook.Start();
  const std::string main = outlook.RibbonXml(kProgId, kExplorerRibbon);
  EXPECT_TRUE(ParsesAsCustomUI(main)) << main;
  for (const char* part : {"idMso=\"TabMail\"", "id=\"QorvaneOptions\"", "id=\"QorvaneAbout\"", "label=\"Qorvane\""})
    EXPECT_NE(main.find(part), std::string::npos) << part;
  const auto explorer = outlook.Client().Application()->ActiveExplorer();
  EXPECT_FALSE(explorer->CommandBars()->FindControl(0, 0, "KelmoraQorvaneOptions")) << "no second entry on Add-ins";

  const auto composed = outlook.ComposeMail("Weekly report");
  const std::string compose = outlook.RibbonXml(kProgId, kComposeRibbon);
  EXPECT_TRUE(ParsesAsCustomUI(compose)) << compose;
  for (const char* part : {"idMso=\"TabNewMailMessage\"", "id=\"QorvaneCompose\"", "insertBeforeMso=\"GroupClipboard\""})
    EXPECT_NE(compose.find(part), std::string::npos) << part;
  EXPECT_FALSE(composed.window->CommandBars()->FindControl(0, 0, "KelmoraQorvane"));
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
  EXPECT_TRUE(outlook.AllModulesUnloadable());
}

TEST_F(AddInRibbon, ItsButtonsRunTheSameCommandsAsTheCommandBars) {
  host::HostOutlook outlook(RibbonClient("16.0.17928.20114"));
  outlook.Start();
  const auto composed = outlook.ComposeMail("Weekly report");
  const auto explorer = outlook.Client().Application()->ActiveExplorer();
  const auto window = [&](const auto& object) { return outlook.Host().Expose(object); };

  outlook.ClickRibbonButton(kProgId, kComposeRibbon, "QorvaneCompose", window(composed.window).get());
  ASSERT_EQ(dialogs_.Seen().size(), 1u) << "the compose command shows the schedule dialog";
  EXPECT_EQ(dialogs_.Seen()[0].title, "Qorvane");

  EXPECT_NE(explorer->CurrentFolder()->Name(), "Qorvane");
  outlook.ClickRibbonButton(kProgId, kExplorerRibbon, "QorvaneOptions", window(explorer).get());
  EXPECT_EQ(explorer->CurrentFolder()->Name(), "Qorvane") << "the options command's first press";

  outlook.ClickRibbonButton(kProgId, kExplorerRibbon, "QorvaneAbout", window(explorer).get());
  ASSERT_EQ(dialogs_.Seen().size(), 2u) << "the about command shows the about box";
  EXPECT_EQ(dialogs_.Seen()[1].title.rfind("About Qorvane", 0), 0u) << dialogs_.Seen()[1].title;
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
}

TEST_F(AddInRibbon, OlderClientsGetNoRibbonAndKeepTheCommandBars) {
  // Version, and whether it shows the add-in's ribbon.
  const std::tuple<const char*, bool> cases[] = {{"12.0.6606", false}, {"11.0.6359", false}, {"14.0.7268", true}};
  for (const auto& [version, ribbon] : cases) {
    host::HostOutlook outlook(RibbonClient(version));
    outlook.Start();
    const auto composed = outlook.ComposeMail("m");
    EXPECT_EQ(!outlook.RibbonXml(kProgId, kExplorerRibbon).empty(), ribbon) << version;
    EXPECT_EQ(!outlook.RibbonXml(kProgId, kComposeRibbon).empty(), ribbon) << version;
    const auto explorer = outlook.Client().Application()->ActiveExplorer();
    EXPECT_EQ(explorer->CommandBars()->FindControl(0, 0, "KelmoraQorvaneOptions") == nullptr, ribbon) << version;
    EXPECT_EQ(composed.window->CommandBars()->FindControl(0, 0, "KelmoraQorvane") == nullptr, ribbon) << version;
    outlook.Stop();
    EXPECT_EQ(outlook.ObjectsStillHeld(), 0) << version;
  }
}

}  // namespace
}  // namespace host_testing
