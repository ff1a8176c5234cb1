// The deferred folder, its view and shortcut, and folder paths, against the
// simulated client: what is created, what is left alone, and which calls the
// client sees.
#include "store/folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "client/client.h"
#include "infra/error_trap.h"
#include "platform/message_box.h"
#include "sim/sim_client.h"
#include "tests/store/view_columns.h"
#include "tests/support/test_env.h"

namespace {

using client::Ref;
using qorvane::testing::ColumnChildren;
using qorvane::testing::ColumnProps;
using qorvane::testing::kFromProp;
using qorvane::testing::kNextProp;
using qorvane::testing::kToProp;

const std::string kHref = "DAV:href";
const std::string kSubject = "urn:schemas:httpmail:subject";

// A simulated client made the add-in's client, with a fresh log and a new
// session of the folder module.
class Session {
 public:
  explicit Session(sim::SimOptions options = {}) : sim(std::move(options)) {
    sim.Install();
    Main::ResetFolderSessionForTesting();
  }
  ~Session() {
    sim.Uninstall();
    Main::ResetFolderSessionForTesting();
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Ref<client::MAPIFolder> Child(const Ref<client::MAPIFolder>& parent, const std::string& name) {
    const auto folders = parent->Folders();
    for (long i = 1; i <= folders->Count(); ++i) {
      if (folders->Item(i)->Name() == name) return folders->Item(i);
    }
    return nullptr;
  }

  std::vector<std::string> ChildNames(const Ref<client::MAPIFolder>& parent) {
    std::vector<std::string> names;
    const auto folders = parent->Folders();
    for (long i = 1; i <= folders->Count(); ++i) names.push_back(folders->Item(i)->Name());
    return names;
  }

  Ref<client::View> View(const Ref<client::MAPIFolder>& folder) {
    Ref<client::View> view;
    qorvane::IgnoreErrors([&] { view = folder->Views()->Item(Main::kQorvaneViewName); });
    qorvane::Err.Clear();
    return view;
  }

  // The folder as an earlier session left it: there, with a view whose
  // definition is the given text.
  Ref<client::MAPIFolder> Existing(const std::string& viewXml) {
    const auto folder = sim.Root()->Folders()->Add(Main::kQorvaneFolderName, client::olFolderDrafts);
    folder->Views()->Add(Main::kQorvaneViewName, client::olTableView, 0)->XML(viewXml);
    sim.ResetCounts();
    return folder;
  }

  // What the client writes for a new table view.
  std::string NewViewXml() {
    const auto scratch = sim.Root()->Folders()->Add("Scratch", client::olFolderDrafts);
    return scratch->Views()->Add("Scratch View", client::olTableView, 0)->XML();
  }

  qorvane::testing::ScopedLocale locale{"en-US"};
  qorvane::testing::ScopedLogFolder log;
  sim::SimClient sim;
};

// A table view definition with the given columns.
std::string ViewWith(const std::vector<std::string>& props) {
  std::string xml = "<?xml version=\"1.0\"?>\n<view type=\"table\"><viewname>Qorvane View</viewname>";
  for (const std::string& prop : props) xml += "<column><heading>h</heading><prop>" + prop + "</prop></column>";
  return xml + "<orderby><order><prop>" + kFromProp + "</prop></order></orderby></view>";
}

// The client's new view with the sender's column replaced by the
// recipients' and the next send time added at the end.
std::vector<std::string> CustomizedColumns(std::vector<std::string> props) {
  for (std::string& prop : props) {
    if (prop == kFromProp) prop = kToProp;
  }
  props.push_back(kNextProp);
  return props;
}

TEST(GetQorvaneFolder, CreatesTheFolderBesideTheInboxWithItsView) {
  Session s;
  const std::string newView = s.NewViewXml();
  ASSERT_EQ(ColumnProps(newView), (std::vector<std::string>{kHref, "urn:schemas:httpmail:importance", kFromProp,
                                                           kSubject, "urn:schemas:httpmail:datereceived"}))
      << "the client's new view has changed; the expectations below rely on it";
  s.sim.ResetCounts();

  const auto folder = Main::GetQorvaneFolder(true);
  ASSERT_TRUE(folder);
  EXPECT_EQ(folder->Name(), "Qorvane");
  EXPECT_EQ(folder->Class(), client::olFolder);
  EXPECT_EQ(folder->DefaultItemType(), s.sim.DefaultFolder(client::olFolderDrafts)->DefaultItemType());
  EXPECT_EQ(folder->Parent()->EntryID(), s.sim.Root()->EntryID());
  EXPECT_EQ(s.sim.CallCount("Folders.Add"), 1);

  const auto view = s.View(folder);
  ASSERT_TRUE(view);
  EXPECT_EQ(ColumnProps(view->XML()), CustomizedColumns(ColumnProps(newView)));
  EXPECT_EQ(ColumnChildren(view->XML(), kToProp),
            (std::vector<std::string>{"Heading=To", "prop=" + kToProp, "width=0", "type=string"}));
  EXPECT_EQ(ColumnChildren(view->XML(), kNextProp),
            (std::vector<std::string>{"Heading=ScheduleTime", "prop=" + kNextProp, "width=100", "type=datetime",
                                      "userheading=Next Occurrence"}));
  EXPECT_EQ(s.sim.CallCount("View.Apply"), 1);
  EXPECT_EQ(s.sim.CallCount("View.Save"), 3) << "one per column edit";
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();

  s.sim.ResetCounts();
  const auto again = Main::GetQorvaneFolder(true);
  ASSERT_TRUE(again);
  EXPECT_EQ(again->EntryID(), folder->EntryID());
  EXPECT_EQ(s.sim.CallCount("Folders.Add"), 0);
  EXPECT_EQ(s.sim.CallCount("Views.Item") + s.sim.CallCount("Views.Add"), 0)
      << "a folder made in this session needs no check of its view";
}

TEST(GetQorvaneFolder, AFolderNamedInAnotherCaseIsNotOurs) {
  // The client keeps the names of one folder's sub-folders unique without
  // regard to case, so beside "qorvane" ours can't be added: that attempt
  // fails and is logged. What must not happen is taking the user's folder
  // for ours, or telling the user it is in the way.
  const struct {
    const char* name;
    bool addable;
  } cases[] = {{"qorvane", false}, {"QORVANE", false}, {"Qorvane ", true}, {"Qorvane View", true}};
  for (const auto& c : cases) {
    Session s;
    const auto stranger = s.sim.Root()->Folders()->Add(c.name, client::olFolderDrafts);
    const long strangerViews = stranger->Views()->Count();
    s.sim.ResetCounts();

    const auto folder = Main::GetQorvaneFolder(true);
    EXPECT_EQ(s.sim.CallCount("Folders.Add"), 1) << c.name;
    EXPECT_EQ(static_cast<bool>(folder), c.addable) << c.name;
    if (folder) {
      EXPECT_EQ(folder->Name(), "Qorvane") << c.name;
      EXPECT_NE(folder->EntryID(), stranger->EntryID()) << c.name;
      EXPECT_TRUE(s.log.LogText().empty()) << c.name << ": " << s.log.LogText();
    } else {
      EXPECT_TRUE(s.log.LogContains(") : Main.GetQorvaneFolder\t")) << c.name << ": " << s.log.LogText();
    }
    EXPECT_TRUE(s.Child(s.sim.Root(), c.name)) << c.name << " is still there";
    EXPECT_EQ(stranger->Views()->Count(), strangerViews) << c.name << ": its views are not touched";
    EXPECT_TRUE(s.sim.MessageBoxes().empty()) << c.name;
  }
}

TEST(GetQorvaneFolder, WithoutCreateAMissingFolderStaysMissing) {
  Session s;
  const auto before = s.ChildNames(s.sim.Root());
  s.sim.ResetCounts();
  EXPECT_FALSE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(s.ChildNames(s.sim.Root()), before);
  EXPECT_EQ(s.sim.CallCount("Folders.Add"), 0);
  EXPECT_EQ(s.sim.CallCount("Views.Add"), 0);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(GetQorvaneFolder, ChecksTheViewOfAnExistingFolderOncePerSession) {
  Session s;
  const std::string outdated = ViewWith({kHref, kFromProp, kSubject});
  const auto folder = s.Existing(outdated);
  const auto view = s.View(folder);
  s.sim.ResetCounts();

  ASSERT_TRUE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(ColumnProps(view->XML()), (std::vector<std::string>{kHref, kToProp, kSubject, kNextProp}));
  EXPECT_EQ(s.sim.CallCount("View.Apply"), 1);

  // Put back as it was: the rest of the session must not notice.
  view->XML(outdated);
  s.sim.ResetCounts();
  const auto second = Main::GetQorvaneFolder(false);
  ASSERT_TRUE(second);
  EXPECT_EQ(second->EntryID(), folder->EntryID());
  EXPECT_EQ(s.sim.CallCount("Views.Item") + s.sim.CallCount("Views.Add") + s.sim.CallCount("View.XML") +
                s.sim.CallCount("View.Apply"),
            0);
  EXPECT_EQ(view->XML(), outdated);

  Main::ResetFolderSessionForTesting();
  ASSERT_TRUE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(ColumnProps(view->XML()), (std::vector<std::string>{kHref, kToProp, kSubject, kNextProp}))
      << "a new session checks again";
}

TEST(GetQorvaneFolder, AFolderWithoutItsViewGetsItInTheSessionsFirstLook) {
  Session s;
  const auto folder = s.sim.Root()->Folders()->Add(Main::kQorvaneFolderName, client::olFolderDrafts);
  const std::string newView = s.NewViewXml();
  ASSERT_TRUE(Main::GetQorvaneFolder(false));
  const auto view = s.View(folder);
  ASSERT_TRUE(view);
  EXPECT_EQ(ColumnProps(view->XML()), CustomizedColumns(ColumnProps(newView)));
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(UpdateView, AddsWhatIsMissingAndDropsTheSender) {
  const struct {
    bool hasTo, hasFrom, hasNext;
    std::vector<std::string> before;
    std::vector<std::string> after;
    int saves;
  } cases[] = {
      {false, false, false, {kHref, kSubject}, {kHref, kSubject, kToProp, kNextProp}, 2},
      {false, false, true, {kHref, kSubject, kNextProp}, {kHref, kSubject, kNextProp, kToProp}, 1},
      {false, true, false, {kHref, kFromProp, kSubject}, {kHref, kToProp, kSubject, kNextProp}, 3},
      {false, true, true, {kHref, kFromProp, kSubject, kNextProp}, {kHref, kToProp, kSubject, kNextProp}, 2},
      {true, false, false, {kHref, kSubject, kToProp}, {kHref, kSubject, kToProp, kNextProp}, 1},
      {true, false, true, {kHref, kSubject, kToProp, kNextProp}, {kHref, kSubject, kToProp, kNextProp}, 0},
      {true, true, false, {kHref, kFromProp, kSubject, kToProp}, {kHref, kSubject, kToProp, kNextProp}, 2},
      {true, true, true, {kHref, kFromProp, kSubject, kToProp, kNextProp}, {kHref, kSubject, kToProp, kNextProp}, 1},
  };
  for (const auto& c : cases) {
    const std::string which = std::string("to ") + (c.hasTo ? "yes" : "no") + ", from " + (c.hasFrom ? "yes" : "no") +
                              ", next " + (c.hasNext ? "yes" : "no");
    Session s;
    const std::string before = ViewWith(c.before);
    const auto folder = s.Existing(before);

    EXPECT_TRUE(Main::UpdateView(folder)) << which;
    const auto view = s.View(folder);
    EXPECT_EQ(ColumnProps(view->XML()), c.after) << which;
    EXPECT_EQ(s.sim.CallCount("View.Save"), c.saves) << which;
    EXPECT_EQ(s.sim.CallCount("View.Apply"), c.saves > 0 ? 1 : 0) << which;
    if (c.saves == 0) {
      EXPECT_EQ(view->XML(), before) << which << ": a complete view is not rewritten";
    }
    // The closing attempt to make the view meets the existing one; that is
    // expected, and it is the only thing logged.
    const auto lines = s.log.LogLines();
    ASSERT_EQ(lines.size(), 1u) << which << "\n" << s.log.LogText();
    EXPECT_NE(lines[0].find(") : Main.CustomizeView\t"), std::string::npos) << lines[0];
  }
}

TEST(UpdateView, ViewsAreMadeOnlyFromVersionTen) {
  const struct {
    const char* version;
    bool views;
  } cases[] = {
      {"9.0.0.2711", false}, {"9.0", false},  {"8.5", false}, {"", false},
      {"10.0.6626", true},   {"11.0", true},  {"16.0.17928.20114", true},
  };
  for (const auto& c : cases) {
    sim::SimOptions options;
    options.version = c.version;
    {
      Session s(options);
      const auto folder = Main::GetQorvaneFolder(true);
      ASSERT_TRUE(folder) << c.version << ": the folder is made on every version";
      EXPECT_EQ(static_cast<bool>(s.View(folder)), c.views) << c.version;
      EXPECT_EQ(s.sim.CallCount("Views.Add"), c.views ? 1 : 0) << c.version;
    }
    {
      Session s(options);
      const std::string outdated = ViewWith({kHref, kFromProp});
      const auto folder = s.Existing(outdated);
      ASSERT_TRUE(Main::GetQorvaneFolder(false)) << c.version;
      EXPECT_EQ(s.View(folder)->XML() == outdated, !c.views) << c.version;
    }
  }
}

TEST(CustomizeView, AFailedColumnEditLeavesTheRestOfTheView) {
  Session s;
  const auto folder = s.sim.Root()->Folders()->Add(Main::kQorvaneFolderName, client::olFolderDrafts);
  const std::string newView = s.NewViewXml();
  // The second View.XML call is the first write: the "To" column's.
  s.sim.FailCall("View.XML", 2);
  EXPECT_TRUE(Main::CustomizeView(folder));
  auto expected = ColumnProps(newView);
  std::erase(expected, kFromProp);
  expected.push_back(kNextProp);
  EXPECT_EQ(ColumnProps(s.View(folder)->XML()), expected);
  EXPECT_TRUE(s.log.LogContains(") : Xml.AddTableViewUserColumn\t")) << s.log.LogText();
}

// The client as seen through a store whose root lists, first, something
// named "Qorvane" that is not a folder.
class ForwardingFolder : public client::MAPIFolder {
 public:
  explicit ForwardingFolder(Ref<client::MAPIFolder> inner) : inner_(std::move(inner)) {}
  std::string Name() override { return inner_->Name(); }
  long Class() override { return inner_->Class(); }
  std::string EntryID() override { return inner_->EntryID(); }
  std::string FolderPath() override { return inner_->FolderPath(); }
  long DefaultItemType() override { return inner_->DefaultItemType(); }
  Ref<client::MAPIFolder> Parent() override { return inner_->Parent(); }
  Ref<client::Folders> Folders() override { return inner_->Folders(); }
  Ref<client::Items> Items() override { return inner_->Items(); }
  Ref<client::Views> Views() override { return inner_->Views(); }

 protected:
  Ref<client::MAPIFolder> inner_;
};

class Intruder final : public ForwardingFolder {
 public:
  using ForwardingFolder::ForwardingFolder;
  std::string Name() override { return Main::kQorvaneFolderName; }
  long Class() override { return client::olMail; }
};

class IntrudedFolders final : public client::Folders {
 public:
  IntrudedFolders(Ref<client::Folders> inner, Ref<client::MAPIFolder> intruder)
      : inner_(std::move(inner)), intruder_(std::move(intruder)) {}
  long Count() override { return inner_->Count() + 1; }
  Ref<client::MAPIFolder> Item(long index) override { return index == 1 ? intruder_ : inner_->Item(index - 1); }
  Ref<client::MAPIFolder> Add(const std::string& name, long type) override { return inner_->Add(name, type); }

 private:
  Ref<client::Folders> inner_;
  Ref<client::MAPIFolder> intruder_;
};

class IntrudedRoot final : public ForwardingFolder {
 public:
  using ForwardingFolder::ForwardingFolder;
  Ref<client::Folders> Folders() override {
    return std::make_shared<IntrudedFolders>(inner_->Folders(), std::make_shared<Intruder>(inner_));
  }
};

class InboxOfIntrudedRoot final : public ForwardingFolder {
 public:
  using ForwardingFolder::ForwardingFolder;
  Ref<client::MAPIFolder> Parent() override { return std::make_shared<IntrudedRoot>(inner_->Parent()); }
};

class IntrudedNameSpace final : public client::NameSpace {
 public:
  explicit IntrudedNameSpace(Ref<client::NameSpace> inner) : inner_(std::move(inner)) {}
  Ref<client::MAPIFolder> GetDefaultFolder(long folderType) override {
    const auto folder = inner_->GetDefaultFolder(folderType);
    if (folderType != client::olFolderInbox) return folder;
    return std::make_shared<InboxOfIntrudedRoot>(folder);
  }
  Ref<client::SyncObjects> SyncObjects() override { return inner_->SyncObjects(); }

 private:
  Ref<client::NameSpace> inner_;
};

class IntrudedApplication final : public client::Application {
 public:
  explicit IntrudedApplication(Ref<client::Application> inner) : inner_(std::move(inner)) {}
  std::string Version() override { return inner_->Version(); }
  Ref<client::NameSpace> GetNamespace(const std::string& type) override {
    return std::make_shared<IntrudedNameSpace>(inner_->GetNamespace(type));
  }
  Ref<client::NameSpace> Session() override { return GetNamespace("MAPI"); }
  Ref<client::Explorers> Explorers() override { return inner_->Explorers(); }
  Ref<client::Inspectors> Inspectors() override { return inner_->Inspectors(); }
  Ref<client::Explorer> ActiveExplorer() override { return inner_->ActiveExplorer(); }
  Ref<client::Inspector> ActiveInspector() override { return inner_->ActiveInspector(); }
  Ref<client::Item> CreateItem(long itemType) override { return inner_->CreateItem(itemType); }
  Ref<client::EventSubscription> Advise(client::ApplicationEvents* sink) override { return inner_->Advise(sink); }

 private:
  Ref<client::Application> inner_;
};

TEST(GetQorvaneFolder, SomethingNamedQorvaneThatIsNoFolderIsReportedNotReplaced) {
  Session s;
  client::SetCurrentApplication(std::make_shared<IntrudedApplication>(s.sim.Application()));
  const auto before = s.ChildNames(s.sim.Root());
  s.sim.ResetCounts();

  EXPECT_FALSE(Main::GetQorvaneFolder(true));
  ASSERT_EQ(s.sim.MessageBoxes().size(), 1u);
  EXPECT_EQ(s.sim.MessageBoxes()[0].prompt,
            "Qorvane has encountered an error. Qorvane folder already exists and it is not compatible with mail "
            "items.");
  EXPECT_EQ(s.sim.MessageBoxes()[0].buttons, qorvane::vbOKOnly);
  EXPECT_EQ(s.sim.CallCount("Folders.Add"), 0);
  EXPECT_EQ(s.ChildNames(s.sim.Root()), before);

  EXPECT_FALSE(Main::GetQorvaneFolder(false));
  EXPECT_EQ(s.sim.MessageBoxes().size(), 2u) << "told every time it is asked";
  client::SetCurrentApplication(s.sim.Application());
}

TEST(GetQorvaneFolder, AFailureIsLoggedAndGivesNothing) {
  Session s;
  s.sim.FailCall("Folders.Add", 1);
  EXPECT_FALSE(Main::GetQorvaneFolder(true));
  EXPECT_TRUE(s.log.LogContains("Error(-2147467259) : Main.GetQorvaneFolder\tUnspecified error")) << s.log.LogText();
  EXPECT_FALSE(s.Child(s.sim.Root(), "Qorvane"));
}

Ref<client::OutlookBarShortcuts> ShortcutsOf(const Ref<client::Explorer>& explorer) {
  return explorer->Panes()->Item("OutlookBar")->Groups()->Item("Shortcuts")->Shortcuts();
}

// The shortcuts' names, with "*" after each that opens the folder.
std::vector<std::string> Listed(const Ref<client::OutlookBarShortcuts>& shortcuts, const Ref<client::MAPIFolder>& folder) {
  std::vector<std::string> names;
  for (long i = 1; i <= shortcuts->Count(); ++i) {
    const auto shortcut = shortcuts->Item(i);
    const auto target = shortcut->Target();
    names.push_back(shortcut->Name() + (target && target->EntryID() == folder->EntryID() ? "*" : ""));
  }
  return names;
}

TEST(AddShortcutFolder, LeavesExactlyOneShortcutToTheFolder) {
  Session s;
  const auto folder = s.sim.Root()->Folders()->Add(Main::kQorvaneFolderName, client::olFolderDrafts);
  const auto other = s.sim.DefaultFolder(client::olFolderOutbox);
  const auto explorer = s.sim.OpenExplorer(s.sim.DefaultFolder(client::olFolderInbox));
  const auto shortcuts = ShortcutsOf(explorer);
  const auto before = Listed(shortcuts, folder);

  ASSERT_TRUE(Main::AddShortcutFolder(folder));
  auto expected = before;
  expected.push_back("Qorvane*");
  EXPECT_EQ(Listed(shortcuts, folder), expected);

  ASSERT_TRUE(Main::AddShortcutFolder(folder));
  EXPECT_EQ(Listed(shortcuts, folder), expected) << "a second run replaces, not adds";

  // Stale shortcuts of that name side by side, as an earlier version or the
  // user may have left them, all go.
  shortcuts->Add(other, "Qorvane");
  shortcuts->Add(other, "Qorvane");
  shortcuts->Add(other, "Outbox copy");
  shortcuts->Add(other, "Qorvane");
  ASSERT_TRUE(Main::AddShortcutFolder(folder));
  auto after = before;
  after.push_back("Outbox copy");
  after.push_back("Qorvane*");
  EXPECT_EQ(Listed(shortcuts, folder), after);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(AddShortcutFolder, DoesNothingWithoutAFolderOrAMainWindow) {
  Session s;
  const auto folder = s.sim.Root()->Folders()->Add(Main::kQorvaneFolderName, client::olFolderDrafts);
  EXPECT_TRUE(Main::AddShortcutFolder(folder)) << "no main window";
  const auto explorer = s.sim.OpenExplorer(s.sim.DefaultFolder(client::olFolderInbox));
  const auto before = Listed(ShortcutsOf(explorer), folder);
  EXPECT_TRUE(std::find(before.begin(), before.end(), "Qorvane*") == before.end());
  EXPECT_TRUE(Main::AddShortcutFolder(nullptr));
  EXPECT_EQ(Listed(ShortcutsOf(explorer), folder), before);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(GetFolderPath, NamesEveryFolderFromTheStoreRootDown) {
  Session s;
  const auto root = s.sim.Root();
  const auto inbox = s.sim.DefaultFolder(client::olFolderInbox);
  const auto a = inbox->Folders()->Add("Projects", client::olFolderInbox);
  const auto b = a->Folders()->Add("2025 Q1", client::olFolderInbox);
  const std::string top = root->Name();
  ASSERT_FALSE(top.empty());
  const struct {
    Ref<client::MAPIFolder> folder;
    std::string expected;
  } cases[] = {
      {root, top},
      {inbox, top + "\\" + inbox->Name()},
      {a, top + "\\" + inbox->Name() + "\\Projects"},
      {b, top + "\\" + inbox->Name() + "\\Projects\\2025 Q1"},
  };
  for (const auto& c : cases) EXPECT_EQ(Main::GetFolderPath(c.folder), c.expected);
  EXPECT_TRUE(s.log.LogText().empty()) << s.log.LogText();
}

TEST(GetFolderPath, NothingGivesAnEmptyPathAndALogLine) {
  Session s;
  EXPECT_EQ(Main::GetFolderPath(nullptr), "");
  EXPECT_TRUE(s.log.LogContains("Error(91) : Main.GetFolderPath")) << s.log.LogText();
}

}  // namespace
