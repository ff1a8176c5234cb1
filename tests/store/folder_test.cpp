// The deferred folder, its view and shortcut, and folder paths, against the
// simulated client: what is created, what is left alone, which calls the
// client sees, and what a failure logs. The view's columns are edited by
// module Xml over whichever XML DOM the build has (pugixml natively, MSXML
// under wine), so texts are checked by their structure and by the compact
// column markup both write, never by the bytes either writes for the rest.
#include "store/folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "client/client.h"
#include "infra/error_trap.h"
#include "platform/message_box.h"
#include "platform/xml_dom.h"
#include "sim/sim_client.h"
#include "store/xml.h"
#include "tests/support/test_env.h"

namespace {

using client::Ref;
using Props = std::vector<std::string>;

const std::string kHref = "DAV:href";
const std::string kSubject = "urn:schemas:httpmail:subject";
const std::string kToProp = "urn:schemas:httpmail:displayto";
const std::string kFromProp = "urn:schemas:httpmail:fromname";
const std::string kNextProp =
    "http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/ScheduleTime";
// The client's new table view with the recipients in the sender's place and
// the next send time added at the end.
const Props kCustomized = {kHref, "urn:schemas:httpmail:importance", kToProp, kSubject,
                           "urn:schemas:httpmail:datereceived", kNextProp};

// The prop texts of the view's columns, in order; empty when the text doesn't parse.
Props ColumnProps(const std::string& text) {
  auto doc = qorvane::xml::CreateDocument();
  Props props;
  if (!doc->LoadXml(text)) return props;
  for (const auto& column : doc->DocumentElement()->SelectNodes("column")) {
    const auto prop = column->SelectSingleNode("prop");
    props.push_back(prop ? prop->Text() : "<no prop>");
  }
  return props;
}

// No declaration, no whitespace between tags, empty elements in full (MSXML
// indents what it writes, pugixml does not; each writes empty elements its way).
std::string Canonical(const std::string& text) {
  std::string canonical = std::regex_replace(text, std::regex(R"(<\?xml[^>]*\?>)"), "");
  canonical = std::regex_replace(canonical, std::regex(R"(>\s+<)"), "><");
  canonical = std::regex_replace(canonical, std::regex(R"(<([A-Za-z_:][-A-Za-z0-9_:.]*)\s*/>)"), "<$1></$1>");
  return std::regex_replace(canonical, std::regex(R"(^\s+|\s+$)"), "");
}

// Everything but the columns: what column edits must leave as they found it.
std::string AllButColumns(const std::string& text) {
  return std::regex_replace(Canonical(text), std::regex(R"(<column>.*?</column>)"), "");
}

// A table view definition with the given columns, headed by their places.
std::string ViewWith(const Props& props) {
  std::string xml = "<?xml version=\"1.0\"?>\n<view type=\"table\"><viewname>Qorvane View</viewname>"
                    "<viewstyle>width:100%</viewstyle><arrangement><collapseclient/></arrangement>";
  for (std::size_t i = 0; i < props.size(); ++i) {
    xml += "<column><heading>" + std::to_string(i) + "</heading><prop>" + props[i] + "</prop></column>";
  }
  return xml + "<orderby><order><prop>" + kFromProp + "</prop></order></orderby></view>";
}

// A simulated client made the add-in's client, with a fresh log and a new
// session of the folder module.
struct Session {
  explicit Session(sim::SimOptions options = {}) : sim(std::move(options)) { sim.Install(); }
  ~Session() { sim.Uninstall(); }
  long Folders() { return sim.Root()->Folders()->Count(); }
  Ref<client::View> View(const Ref<client::MAPIFolder>& folder) {
    Ref<client::View> view;
    qorvane::IgnoreErrors([&] { view = folder->Views()->Item(Main::kQorvaneViewName); });
    qorvane::Err.Clear();
    return view;
  }
  // The folder as an earlier session left it, with a view of that definition
  // (none for nullptr).
  Ref<client::MAPIFolder> Existing(const char* viewXml) {
    const auto folder = sim.Root()->Folders()->Add(Main::kQorvaneFolderName, client::olFolderDrafts);
    if (viewXml) folder->Views()->Add(Main::kQorvaneViewName, client::olTableView, 0)->XML(viewXml);
    sim.ResetCounts();
    return folder;
  }
  Ref<client::View> ViewOf(const std::string& xml) { return View(Existing(xml.c_str())); }

  qorvane::testing::ScopedLocale locale{"en-US"};
  qorvane::testing::ScopedLogFolder log;
  qorvane::testing::ScopedFolderSession session;
  sim::SimClient sim;
};

const std::string kOutdated = ViewWith({kHref, kFromProp, kSubject});

// --- Module Xml: one column edit at a time ----------------------------------

TEST(XmlAddTableViewUserColumn, PlacesTheColumnBeforeAnExactlyNamedColumnOrAtTheEnd) {
  const struct {
    std::string xml, insertBefore;
    Props expected;
  } cases[] = {
      {kOutdated, kFromProp, {kHref, kToProp, kFromProp, kSubject}},
      {kOutdated, kHref, {kToProp, kHref, kFromProp, kSubject}},
      {kOutdated, "urn:schemas:httpmail:nothing", {kHref, kFromProp, kSubject, kToProp}},
      {kOutdated, "URN:schemas:httpmail:fromname", {kHref, kFromProp, kSubject, kToProp}},  // no match
      {kOutdated, "0", {kHref, kFromProp, kSubject, kToProp}},  // a heading is no prop
      {"", "", {}},  // a definition that doesn't parse is left as it is, quietly
      {"<view><column></view>", "", {}},
  };
  for (const auto& c : cases) {
    Session s;
    const auto view = s.ViewOf(c.xml);
    EXPECT_TRUE(Xml::AddTableViewUserColumn(view, "To", kToProp, "string", "", c.insertBefore, 0)) << c.insertBefore;
    EXPECT_EQ(ColumnProps(view->XML()), c.expected) << c.insertBefore;
    EXPECT_EQ(s.sim.CallCount("View.Save"), c.expected.empty() ? 0 : 1) << c.insertBefore;
    EXPECT_EQ(s.sim.CallCount("View.Apply"), 0) << "applying is the caller's business";
    EXPECT_EQ(AllButColumns(view->XML()), AllButColumns(c.xml)) << c.insertBefore;
    EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
  }
}

TEST(XmlRemoveColumn, RemovesTheFirstExactMatchOnly) {
  const std::string twoFroms = ViewWith({kHref, kFromProp, kSubject, kFromProp});
  const struct {
    std::string xml, prop;
    Props expected;
  } cases[] = {
      {kOutdated, kFromProp, {kHref, kSubject}},
      {kOutdated, "URN:SCHEMAS:HTTPMAIL:FROMNAME", {kHref, kFromProp, kSubject}},
      {ViewWith({kHref, kSubject}), kFromProp, {kHref, kSubject}},  // only in the order: no column
      {twoFroms, kFromProp, {kHref, kSubject, kFromProp}},
  };
  for (const auto& c : cases) {
    Session s;
    const auto view = s.ViewOf(c.xml);
    EXPECT_TRUE(Xml::RemoveColumn(view, c.prop)) << c.prop;
    EXPECT_EQ(ColumnProps(view->XML()), c.expected) << c.prop;
    const bool removed = ColumnProps(c.xml).size() != c.expected.size();
    EXPECT_EQ(s.sim.CallCount("View.Save"), removed ? 1 : 0) << c.prop;
    EXPECT_TRUE(removed || view->XML() == c.xml) << c.prop << ": not rewritten";
    EXPECT_EQ(AllButColumns(view->XML()), AllButColumns(c.xml)) << c.prop;
    EXPECT_TRUE(c.xml != twoFroms || Canonical(view->XML()).find("<heading>1</heading>") == std::string::npos);
  }
}

TEST(XmlColumnExists, ComparesThePropTextOfColumnsExactly) {
  const struct {
    std::string xml, prop;
    bool expected;
  } cases[] = {
      {kOutdated, kFromProp, true},
      {kOutdated, "URN:schemas:httpmail:fromname", false},
      {kOutdated, "urn:schemas:httpmail:fromnam", false},
      {kOutdated, "1", false},  // a heading
      {ViewWith({kHref}), kFromProp, false},  // only in the order
  };
  for (const auto& c : cases) {
    Session s;
    const auto view = s.ViewOf(c.xml);
    EXPECT_EQ(Xml::ColumnExists(view, c.prop), c.expected) << c.prop;
    EXPECT_EQ(s.sim.CallCount("View.Save"), 0) << "asking changes nothing";
    EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
  }
}

// A prop nested ever deeper, holding one text at the bottom.
std::string DeepProp(int depth) {
  std::string xml = "<view><column><prop>";
  for (int i = 0; i < depth; ++i) xml += "<b>";
  xml += kFromProp;
  for (int i = 0; i < depth; ++i) xml += "</b>";
  return xml + "</prop></column></view>";
}

// A hostile definition is refused whole rather than walked: nesting deeper
// than MSXML 6 loads (256 elements) does not load on either DOM, and one
// beyond 1 MiB is not even parsed. Nothing crashes, the view stays as it
// was, and the log says why.
TEST(XmlHostileViews, AreRefusedNotWalked) {
  for (const int depth : {200, 300, 100000}) {
    auto doc = qorvane::xml::CreateDocument();
    EXPECT_EQ(doc->LoadXml(DeepProp(depth)), depth == 200) << depth;
    if (depth == 200) {
      EXPECT_EQ(doc->DocumentElement()->SelectSingleNode("column")->SelectSingleNode("prop")->Text(), kFromProp);
    }
  }
  std::string huge = kOutdated;
  huge.insert(huge.find("</view>"), "<pad>" + std::string(std::size_t{1} << 20, 'x') + "</pad>");
  const struct {
    std::string xml;
    const char* logged;
  } cases[] = {
      {DeepProp(100000), "Error(91) : Xml.ColumnExists"},
      {huge, "Error(7) : Xml.ColumnExists\tThe view's XML definition is"},
  };
  for (const auto& c : cases) {
    Session s;
    const auto view = s.ViewOf(c.xml);
    EXPECT_FALSE(Xml::ColumnExists(view, kFromProp));
    EXPECT_TRUE(Xml::AddTableViewUserColumn(view, "To", kToProp, "string", "", "", 0) == (c.xml != huge));
    EXPECT_FALSE(Xml::RemoveColumn(view, kFromProp));
    EXPECT_EQ(view->XML(), c.xml) << "left alone";
    EXPECT_EQ(s.sim.CallCount("View.Save"), 0);
    EXPECT_TRUE(s.log.LogContains(c.logged)) << s.log.LogText().substr(0, 300);
  }
}

// --- The folder and its view -------------------------------------------------

TEST(GetQorvaneFolder, CreatesTheFolderBesideTheInboxWithItsView) {
  Session s;
  const auto folder = Main::GetQorvaneFolder(true);
  ASSERT_TRUE(folder);
  EXPECT_EQ(folder->Name(), "Qorvane");
  EXPECT_EQ(folder->DefaultItemType(), s.sim.DefaultFolder(client::olFolderDrafts)->DefaultItemType());
  EXPECT_EQ(folder->Parent()->EntryID(), s.sim.Root()->EntryID());
  const auto view = s.View(folder);
  ASSERT_TRUE(view);
  EXPECT_EQ(ColumnProps(view->XML()), kCustomized);
  // The children in the order the client writes them.
  for (const std::string& markup :
       {"<column><Heading>To</Heading><prop>" + kToProp + "</prop><width>0</width><type>string</type></column>",
        "<column><Heading>ScheduleTime</Heading><prop>" + kNextProp +
            "</prop><width>100</width><type>datetime</type><userheading>Next Occurrence</userheading></column>"}) {
    EXPECT_NE(Canonical(view->XML()).find(markup), std::string::npos) << markup << "\n" << view->XML();
  }
  EXPECT_EQ(s.sim.CallCount("View.Save"), 3) << "one per column edit";
  EXPECT_EQ(s.sim.CallCount("View.Apply"), 1);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();

  s.sim.ResetCounts();
  ASSERT_EQ(Main::GetQorvaneFolder(true)->EntryID(), folder->EntryID());
  EXPECT_EQ(s.sim.CallCount("Folders.Add") + s.sim.CallCount("Views.Item") + s.sim.CallCount("Views.Add"), 0)
      << "a folder made in this session needs no check of its view";
}

// Sub-folder names are unique regardless of case, so a "qorvane" of the
// user's keeps ours from being made. It is not taken for ours nor changed;
// instead of failing (and logging) at every call, the user is told once a
// session which folder to rename, and a renamed folder no longer blocks.
TEST(GetQorvaneFolder, AFolderNamedInAnotherCaseIsReportedOnceASession) {
  for (const char* name : {"qorvane", "QORVANE", "qorv\xC3\x81ne"}) {
    SCOPED_TRACE(name);
    Session s;
    const auto stranger = s.sim.Root()->Folders()->Add(name, client::olFolderDrafts);
    const bool blocks = std::string(name) != "qorv\xC3\x81ne";  // Á is no A in any case
    s.sim.ResetCounts();
    EXPECT_FALSE(Main::GetQorvaneFolder(false));
    EXPECT_TRUE(s.sim.MessageBoxes().empty()) << "nothing to tell while nothing is to be made";
    for (int call = 0; call < 3; ++call) {
      const auto folder = Main::GetQorvaneFolder(true);
      EXPECT_EQ(!folder, blocks);
      EXPECT_TRUE(!folder || folder->EntryID() != stranger->EntryID());
    }
    EXPECT_FALSE(s.View(stranger));
    if (!blocks) {
      EXPECT_TRUE(s.sim.MessageBoxes().empty());
      continue;
    }
    EXPECT_EQ(s.sim.CallCount("Folders.Add"), 0) << "no attempt that can only fail";
    const std::string path = Main::GetFolderPath(stranger);
    ASSERT_EQ(s.sim.MessageBoxes().size(), 1u);
    EXPECT_EQ(s.sim.MessageBoxes()[0].prompt,
              "Qorvane cannot create its folder \"Qorvane\", because the folder \"" + path +
                  "\" is in the way: Outlook does not allow two folders side by side whose names differ only in "
                  "upper and lower case.\n\nPlease rename the folder \"" + name + "\" (for example to \"" + name +
                  " old\"), then restart Outlook. Until then Qorvane cannot keep mails to send later.");
    EXPECT_EQ(s.sim.MessageBoxes()[0].buttons, qorvane::vbOKOnly | qorvane::vbExclamation);
    const auto lines = s.log.LogLines();
    ASSERT_EQ(lines.size(), 1u) << s.log.LogText();
    EXPECT_NE(lines[0].find("Warning : Main.GetQorvaneFolder\tthe folder \"" + path + "\" keeps"), std::string::npos)
        << lines[0];

    Main::ResetFolderSessionForTesting();  // the next session looks again and tells again
    EXPECT_FALSE(Main::GetQorvaneFolder(true));
    EXPECT_EQ(s.sim.MessageBoxes().size(), 2u);

    s.sim.RenameFolder(stranger, std::string(name) + " old");
    Main::ResetFolderSessionForTesting();
    const auto folder = Main::GetQorvaneFolder(true);
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->Name(), "Qorvane");
    EXPECT_EQ(s.sim.MessageBoxes().size(), 2u);
  }
}

TEST(GetQorvaneFolder, WithoutCreateAMissingFolderStaysMissing) {
  Session s;
  const long before = s.Folders();
  EXPECT_FALSE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(s.Folders(), before);
  EXPECT_EQ(s.sim.CallCount("Folders.Add") + s.sim.CallCount("Views.Add"), 0);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(GetQorvaneFolder, ChecksTheViewOfAnExistingFolderOncePerSession) {
  Session s;
  const auto view = s.ViewOf(kOutdated);
  ASSERT_TRUE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(ColumnProps(view->XML()), (Props{kHref, kToProp, kSubject, kNextProp}));

  view->XML(kOutdated);  // put back as it was: the rest of the session must not notice
  s.sim.ResetCounts();
  ASSERT_TRUE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(s.sim.CallCount("Views.Item") + s.sim.CallCount("View.XML") + s.sim.CallCount("View.Apply"), 0);
  EXPECT_EQ(view->XML(), kOutdated);
}

TEST(UpdateView, AddsWhatIsMissingAndDropsTheSender) {
  const struct {
    Props before, after;
    int saves;
  } cases[] = {
      {{kHref, kSubject}, {kHref, kSubject, kToProp, kNextProp}, 2},
      {{kHref, kFromProp, kSubject}, {kHref, kToProp, kSubject, kNextProp}, 3},
      {{kHref, kFromProp, kSubject, kToProp, kNextProp}, {kHref, kSubject, kToProp, kNextProp}, 1},
      {{kHref, kSubject, kToProp, kNextProp}, {kHref, kSubject, kToProp, kNextProp}, 0},
  };
  for (const auto& c : cases) {
    Session s;
    const std::string before = ViewWith(c.before);
    const auto folder = s.Existing(before.c_str());
    const auto view = s.View(folder);
    EXPECT_TRUE(Main::UpdateView(folder)) << before;
    EXPECT_EQ(ColumnProps(view->XML()), c.after) << before;
    EXPECT_EQ(s.sim.CallCount("View.Save"), c.saves) << before;
    EXPECT_EQ(s.sim.CallCount("View.Apply"), c.saves > 0 ? 1 : 0) << before;
    EXPECT_TRUE(c.saves > 0 || view->XML() == before) << "a complete view is not rewritten";
    // Only the closing attempt to make the view, which meets this one, is logged.
    const auto lines = s.log.LogLines();
    ASSERT_EQ(lines.size(), 1u) << before << "\n" << s.log.LogText();
    EXPECT_NE(lines[0].find(") : Main.CustomizeView\t"), std::string::npos) << lines[0];
  }
  Session s;  // the user deleted the view: it is made again
  const auto folder = s.Existing(nullptr);
  EXPECT_TRUE(Main::UpdateView(folder));
  ASSERT_TRUE(s.View(folder));
  EXPECT_EQ(ColumnProps(s.View(folder)->XML()), kCustomized);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(UpdateView, ViewsAreMadeOnlyFromVersionTen) {
  for (const auto& [version, views] :
       {std::pair{"9.0.0.2711", false}, {"", false}, {"10.0.6626", true}, {"16.0.17928.20114", true}}) {
    sim::SimOptions options;
    options.version = version;
    {
      Session s(options);
      const auto folder = Main::GetQorvaneFolder(true);
      ASSERT_TRUE(folder) << version << ": the folder is made on every version";
      EXPECT_EQ(static_cast<bool>(s.View(folder)), views) << version;
    }
    Session s(options);
    const auto view = s.ViewOf(kOutdated);
    ASSERT_TRUE(Main::GetQorvaneFolder(false)) << version;
    EXPECT_EQ(view->XML() == kOutdated, !views) << version << ": an existing folder's view";
  }
}

// A client whose store root lists nothing but something named "Qorvane"
// that is not a folder (its class is a mail's): its Inbox leads there.
class OneFolder final : public client::Folders {
 public:
  explicit OneFolder(Ref<client::MAPIFolder> folder) : folder_(std::move(folder)) {}
  long Count() override { return 1; }
  Ref<client::MAPIFolder> Item(long index) override { return index == 1 ? folder_ : nullptr; }
  Ref<client::MAPIFolder> Add(const std::string&, long) override {
    ADD_FAILURE() << "a folder was added beside the intruder";
    return nullptr;
  }

 private:
  Ref<client::MAPIFolder> folder_;
};

class FakeFolder final : public client::MAPIFolder {
 public:
  enum Role { kInbox, kRoot, kIntruder };
  explicit FakeFolder(Role role) : role_(role) {}
  std::string Name() override { return role_ == kIntruder ? Main::kQorvaneFolderName : "Folder"; }
  long Class() override { return role_ == kIntruder ? client::olMail : client::olFolder; }
  std::string EntryID() override { return std::to_string(role_); }
  std::string FolderPath() override { return Name(); }
  long DefaultItemType() override { return client::olMailItem; }
  Ref<client::MAPIFolder> Parent() override { return std::make_shared<FakeFolder>(kRoot); }
  Ref<client::Folders> Folders() override {
    return std::make_shared<OneFolder>(role_ == kRoot ? std::make_shared<FakeFolder>(kIntruder) : nullptr);
  }
  Ref<client::Items> Items() override { return nullptr; }
  Ref<client::Views> Views() override { return nullptr; }

 private:
  Role role_;
};

// The application is its own MAPI namespace here.
class FakeApplication final : public client::Application,
                              public client::NameSpace,
                              public std::enable_shared_from_this<FakeApplication> {
 public:
  std::string Version() override { return "16.0.17928.20114"; }
  Ref<client::NameSpace> GetNamespace(const std::string&) override {
    return Ref<client::NameSpace>(shared_from_this(), this);
  }
  Ref<client::NameSpace> Session() override { return GetNamespace("MAPI"); }
  Ref<client::Explorers> Explorers() override { return nullptr; }
  Ref<client::Inspectors> Inspectors() override { return nullptr; }
  Ref<client::Explorer> ActiveExplorer() override { return nullptr; }
  Ref<client::Inspector> ActiveInspector() override { return nullptr; }
  Ref<client::Item> CreateItem(long) override { return nullptr; }
  Ref<client::EventSubscription> Advise(client::ApplicationEvents*) override { return nullptr; }
  Ref<client::MAPIFolder> GetDefaultFolder(long) override { return std::make_shared<FakeFolder>(FakeFolder::kInbox); }
  Ref<client::SyncObjects> SyncObjects() override { return nullptr; }
};

TEST(GetQorvaneFolder, SomethingNamedQorvaneThatIsNoFolderIsReportedNotReplaced) {
  Session s;  // for its message box
  const qorvane::testing::ScopedCurrentApplication fake(std::make_shared<FakeApplication>());
  EXPECT_FALSE(Main::GetQorvaneFolder(true));
  ASSERT_EQ(s.sim.MessageBoxes().size(), 1u);
  EXPECT_EQ(s.sim.MessageBoxes()[0].prompt,
            "Qorvane has encountered an error. Qorvane folder already exists and it is not compatible with mail "
            "items.");
  EXPECT_EQ(s.sim.MessageBoxes()[0].buttons, qorvane::vbOKOnly);
  EXPECT_FALSE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(s.sim.MessageBoxes().size(), 2u) << "told every time it is asked";
}

TEST(FolderAndView, FailuresAreLoggedUnderTheirLabels) {
  const struct {
    const char* logged;
    bool result;  // what the call gives, in a new session
    std::function<bool(Session&)> run;
  } cases[] = {
      {"Error(-2147467259) : Main.GetQorvaneFolder\tUnspecified error", false,
       [](Session& s) {
         s.sim.FailCall("Folders.Add", 1);
         return Main::GetQorvaneFolder(true) != nullptr;
       }},
      {"Error(91) : Main.GetFolderPath", false, [](Session&) { return !Main::GetFolderPath(nullptr).empty(); }},
      {"Error(91) : Xml.AddTableViewUserColumn", false,
       [](Session&) { return Xml::AddTableViewUserColumn(nullptr, "To", kToProp, "string", "", "", 0); }},
      {"Error(-2147467259) : Xml.AddTableViewUserColumn\tUnspecified error", false,
       [](Session& s) {
         const auto view = s.ViewOf(kOutdated);
         s.sim.FailCall("View.XML", 2);  // the write, after the read: the view stays as it was
         return Xml::AddTableViewUserColumn(view, "To", kToProp, "string", "", "", 0) || view->XML() != kOutdated;
       }},
      {"Error(91) : Xml.RemoveColumn", false, [](Session& s) { return Xml::RemoveColumn(s.ViewOf("<v>"), kHref); }},
      {"Error(-2147467259) : Xml.RemoveColumn", false,
       [](Session& s) {
         const auto view = s.ViewOf(kOutdated);
         s.sim.FailCall("View.Save", 1);
         return Xml::RemoveColumn(view, kFromProp);
       }},
      {"Error(91) : Xml.ColumnExists", false, [](Session& s) { return Xml::ColumnExists(s.ViewOf("<v"), kHref); }},
      {"Error(-2147467259) : Xml.AddTableViewUserColumn\tUnspecified error", true,
       [](Session& s) {  // the "To" column's write fails; the rest of the new view is made
         const auto folder = s.Existing(nullptr);
         s.sim.FailCall("View.XML", 2);
         auto expected = kCustomized;
         std::erase(expected, kToProp);
         return Main::CustomizeView(folder) && ColumnProps(s.View(folder)->XML()) == expected;
       }},
  };
  for (const auto& c : cases) {
    Session s;
    EXPECT_EQ(c.run(s), c.result) << c.logged;
    EXPECT_TRUE(s.log.LogContains(c.logged)) << c.logged << " not in:\n" << s.log.LogText();
  }
}

// --- The shortcut and folder paths ----------------------------------------------

TEST(AddShortcutFolder, LeavesExactlyOneShortcutToTheFolder) {
  Session s;
  const auto folder = s.Existing(nullptr);
  const auto explorer = s.sim.OpenExplorer(s.sim.DefaultFolder(client::olFolderInbox));
  const auto shortcuts = explorer->Panes()->Item("OutlookBar")->Groups()->Item("Shortcuts")->Shortcuts();
  // The shortcuts' names, with "*" after each that opens the folder.
  const auto listed = [&] {
    Props names;
    for (long i = 1; i <= shortcuts->Count(); ++i) {
      const auto target = shortcuts->Item(i)->Target();
      names.push_back(shortcuts->Item(i)->Name() + (target && target->EntryID() == folder->EntryID() ? "*" : ""));
    }
    return names;
  };
  auto expected = listed();
  expected.push_back("Qorvane*");
  ASSERT_TRUE(Main::AddShortcutFolder(folder));
  ASSERT_TRUE(Main::AddShortcutFolder(folder));
  EXPECT_EQ(listed(), expected) << "a second run replaces, not adds";

  // Stale shortcuts of that name side by side, as an earlier version or the
  // user may have left them, all go: also one that moves up into the place
  // of one just removed.
  for (const char* name : {"Qorvane", "Qorvane", "Outbox copy", "Qorvane"}) {
    shortcuts->Add(s.sim.DefaultFolder(client::olFolderOutbox), name);
  }
  ASSERT_TRUE(Main::AddShortcutFolder(folder));
  expected.insert(expected.end() - 1, "Outbox copy");
  EXPECT_EQ(listed(), expected);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(GetFolderPath, NamesEveryFolderFromTheStoreRootDown) {
  Session s;
  const auto inbox = s.sim.DefaultFolder(client::olFolderInbox);
  const auto projects = inbox->Folders()->Add("Projects", client::olFolderInbox);
  const auto nested = projects->Folders()->Add("2025 Q1", client::olFolderInbox);
  const std::string top = s.sim.Root()->Name();
  ASSERT_FALSE(top.empty());
  EXPECT_EQ(Main::GetFolderPath(s.sim.Root()), top);
  EXPECT_EQ(Main::GetFolderPath(nested), top + "\\" + inbox->Name() + "\\Projects\\2025 Q1");
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

}  // namespace
