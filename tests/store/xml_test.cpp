// The view column edits of module Xml, run against whichever XML DOM the
// build has: pugixml natively, the system's MSXML under wine. The same
// expectations hold for both, so the texts below are checked by their
// structure (and by the compact column markup both write), never by the
// exact bytes either parser chooses for the rest of the document.
#include "store/xml.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "platform/xml_dom.h"
#include "tests/store/view_columns.h"
#include "tests/support/test_env.h"

namespace {

using qorvane::testing::AllButColumns;
using qorvane::testing::Canonical;
using qorvane::testing::ColumnChildren;
using qorvane::testing::ColumnProps;
using qorvane::testing::ScopedLogFolder;
using qorvane::xml::ElementRef;

constexpr const char* kTo = "urn:schemas:httpmail:displayto";
constexpr const char* kFrom = "urn:schemas:httpmail:fromname";
constexpr const char* kSubject = "urn:schemas:httpmail:subject";
constexpr const char* kReceived = "urn:schemas:httpmail:datereceived";
const std::string kNext = qorvane::testing::kNextProp;

// The shape of a new mail folder's table view as the client writes it.
constexpr const char* kNewFolderView = R"(<?xml version="1.0"?>
<view type="table">
  <viewname>Qorvane View</viewname>
  <viewstyle>table-layout:fixed;width:100%;font-family:Segoe UI;font-size:8pt</viewstyle>
  <viewtime>0</viewtime>
  <linecolor>8421504</linecolor>
  <arrangement><autogroup>0</autogroup><collapseclient></collapseclient></arrangement>
  <column><name>HREF</name><prop>DAV:href</prop><checkbox>1</checkbox></column>
  <column><heading>Importance</heading><prop>urn:schemas:httpmail:importance</prop><type>i4</type><bitmap>1</bitmap><width>10</width></column>
  <column><heading>From</heading><prop>urn:schemas:httpmail:fromname</prop><type>string</type><width>68</width></column>
  <column><heading>Subject</heading><prop>urn:schemas:httpmail:subject</prop><type>string</type><width>280</width></column>
  <column><heading>Received</heading><prop>urn:schemas:httpmail:datereceived</prop><type>datetime</type><width>76</width><format>M/d/yyyy||h:mm tt</format></column>
  <orderby><order><heading>Received</heading><prop>urn:schemas:httpmail:datereceived</prop><type>datetime</type><sort>desc</sort></order></orderby>
  <groupbydefault>2</groupbydefault>
</view>
)";

const std::vector<std::string> kNewFolderProps = {"DAV:href", "urn:schemas:httpmail:importance", kFrom, kSubject,
                                                  kReceived};

// A view that keeps its definition and counts what is done to it; a step
// can be made to fail the way the client's calls fail.
class FakeView final : public client::View {
 public:
  explicit FakeView(std::string xml) : xml_(std::move(xml)) {}

  std::string Name() override { return "Qorvane View"; }
  std::string XML() override {
    ++reads;
    return xml_;
  }
  void XML(const std::string& value) override {
    if (failWrite) qorvane::Raise(-2147467259, "Unspecified error");
    ++writes;
    xml_ = value;
  }
  void Save() override {
    if (failSave) qorvane::Raise(-2147467259, "Unspecified error");
    ++saves;
  }
  void Apply() override { ++applies; }

  const std::string& Text() const { return xml_; }

  int reads = 0;
  int writes = 0;
  int saves = 0;
  int applies = 0;
  bool failWrite = false;
  bool failSave = false;

 private:
  std::string xml_;
};

std::shared_ptr<FakeView> MakeView(std::string xml = kNewFolderView) {
  return std::make_shared<FakeView>(std::move(xml));
}

ElementRef Root(qorvane::xml::Document& doc, const std::string& xml) {
  EXPECT_TRUE(doc.LoadXml(xml)) << xml;
  return doc.DocumentElement();
}

std::vector<std::string> With(std::vector<std::string> props, std::size_t at, const std::string& prop) {
  props.insert(props.begin() + static_cast<std::ptrdiff_t>(at), prop);
  return props;
}

TEST(XmlAddTableViewUserColumn, PlacesTheColumnBeforeAnExactlyNamedColumnOrAtTheEnd) {
  const struct {
    const char* why;
    std::string insertBefore;
    std::vector<std::string> expected;
  } cases[] = {
      {"before the sender", kFrom, With(kNewFolderProps, 2, kTo)},
      {"before the first column", "DAV:href", With(kNewFolderProps, 0, kTo)},
      {"before the last column", kReceived, With(kNewFolderProps, 4, kTo)},
      {"empty appends", "", With(kNewFolderProps, 5, kTo)},
      {"no such column appends", "urn:schemas:httpmail:nothing", With(kNewFolderProps, 5, kTo)},
      {"other case is no match", "URN:schemas:httpmail:fromname", With(kNewFolderProps, 5, kTo)},
      {"a prefix is no match", "urn:schemas:httpmail:from", With(kNewFolderProps, 5, kTo)},
      {"a heading is no prop", "From", With(kNewFolderProps, 5, kTo)},
  };
  for (const auto& c : cases) {
    ScopedLogFolder log;
    const auto view = MakeView();
    EXPECT_TRUE(Xml::AddTableViewUserColumn(view, "To", kTo, "string", "", c.insertBefore, 0)) << c.why;
    EXPECT_EQ(ColumnProps(view->Text()), c.expected) << c.why;
    EXPECT_EQ(view->writes, 1) << c.why;
    EXPECT_EQ(view->saves, 1) << c.why;
    EXPECT_EQ(view->applies, 0) << c.why << ": applying is the caller's business";
    EXPECT_EQ(AllButColumns(view->Text()), AllButColumns(kNewFolderView)) << c.why;
    EXPECT_TRUE(log.LogText().empty()) << c.why << ": " << log.LogText();
  }
}

TEST(XmlAddTableViewUserColumn, WritesTheChildrenInTheClientsOrder) {
  const struct {
    const char* why;
    std::optional<std::string> heading;
    std::string userheading;
    long width;
    std::vector<std::string> expected;
    const char* markup;
  } cases[] = {
      {"recipients column",
       "To",
       "",
       0,
       {"Heading=To", "prop=urn:x:p", "width=0", "type=string"},
       "<column><Heading>To</Heading><prop>urn:x:p</prop><width>0</width><type>string</type></column>"},
      {"with a user heading",
       "ScheduleTime",
       "Next Occurrence",
       100,
       {"Heading=ScheduleTime", "prop=urn:x:p", "width=100", "type=string", "userheading=Next Occurrence"},
       "<column><Heading>ScheduleTime</Heading><prop>urn:x:p</prop><width>100</width><type>string</type>"
       "<userheading>Next Occurrence</userheading></column>"},
      {"no heading passed",
       std::nullopt,
       "",
       42,
       {"prop=urn:x:p", "width=42", "type=string"},
       "<column><prop>urn:x:p</prop><width>42</width><type>string</type></column>"},
      {"a heading passed empty is still written",
       "",
       "",
       7,
       {"Heading=", "prop=urn:x:p", "width=7", "type=string"},
       "<column><Heading></Heading><prop>urn:x:p</prop><width>7</width><type>string</type></column>"},
      {"negative width as text",
       "W",
       "",
       -1,
       {"Heading=W", "prop=urn:x:p", "width=-1", "type=string"},
       "<column><Heading>W</Heading><prop>urn:x:p</prop><width>-1</width><type>string</type></column>"},
  };
  for (const auto& c : cases) {
    ScopedLogFolder log;
    const auto view = MakeView();
    ASSERT_TRUE(Xml::AddTableViewUserColumn(view, c.heading, "urn:x:p", "string", c.userheading, "", c.width)) << c.why;
    EXPECT_EQ(ColumnChildren(view->Text(), "urn:x:p"), c.expected) << c.why;
    EXPECT_NE(Canonical(view->Text()).find(c.markup), std::string::npos) << c.why << "\n" << view->Text();
  }
}

TEST(XmlAddTableViewUserColumn, KeepsTextsThatNeedEscapingOrAreNotAscii) {
  ScopedLogFolder log;
  const auto view = MakeView();
  const std::string heading = "Nächste Ausführung <& \"Zeit\">";
  const std::string prop = "urn:x:a&b<c>";
  ASSERT_TRUE(Xml::AddTableViewUserColumn(view, "Zeit", prop, "datetime", heading, "", 100));
  EXPECT_EQ(ColumnChildren(view->Text(), prop),
            (std::vector<std::string>{"Heading=Zeit", "prop=" + prop, "width=100", "type=datetime",
                                      "userheading=" + heading}));
  EXPECT_NE(Canonical(view->Text()).find("<prop>urn:x:a&amp;b&lt;c"), std::string::npos) << view->Text();
  EXPECT_TRUE(Xml::ColumnExists(view, prop));
}

TEST(XmlAddTableViewUserColumn, LeavesAViewWhoseDefinitionDoesNotParse) {
  for (const char* text : {"", "not xml at all", "<view><column></view>", "<view/><view/>"}) {
    ScopedLogFolder log;
    const auto view = MakeView(text);
    EXPECT_TRUE(Xml::AddTableViewUserColumn(view, "To", kTo, "string", "", "", 0)) << text;
    EXPECT_EQ(view->Text(), text);
    EXPECT_EQ(view->writes, 0) << text;
    EXPECT_EQ(view->saves, 0) << text;
    EXPECT_TRUE(log.LogText().empty()) << text << ": " << log.LogText();
  }
}

TEST(XmlAddTableViewUserColumn, AFailingStepIsLoggedAndLeavesTheViewAsItWas) {
  ScopedLogFolder log;
  const auto view = MakeView();
  view->failWrite = true;
  EXPECT_FALSE(Xml::AddTableViewUserColumn(view, "To", kTo, "string", "", kFrom, 0));
  EXPECT_EQ(view->Text(), kNewFolderView);
  EXPECT_EQ(view->saves, 0);
  EXPECT_TRUE(log.LogContains("Error(-2147467259) : Xml.AddTableViewUserColumn\tUnspecified error")) << log.LogText();

  const auto noView = std::shared_ptr<client::View>();
  EXPECT_FALSE(Xml::AddTableViewUserColumn(noView, "To", kTo, "string", "", "", 0));
  EXPECT_TRUE(log.LogContains("Error(91) : Xml.AddTableViewUserColumn")) << log.LogText();
}

TEST(XmlAddUserPropColumn, NamesThePropertyByItsNamedPropertyUrl) {
  ScopedLogFolder log;
  const auto view = MakeView();
  ASSERT_TRUE(Xml::AddUserPropColumn(view, "ScheduleTime", "datetime", "Next Occurrence", kSubject, 100));
  EXPECT_EQ(kNext,
            "http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/ScheduleTime");
  EXPECT_EQ(ColumnProps(view->Text()), With(kNewFolderProps, 3, kNext));
  EXPECT_EQ(ColumnChildren(view->Text(), kNext),
            (std::vector<std::string>{"Heading=ScheduleTime", "prop=" + kNext, "width=100", "type=datetime",
                                      "userheading=Next Occurrence"}));
  EXPECT_EQ(view->saves, 1);
}

TEST(XmlRemoveColumn, RemovesTheFirstExactMatchOnly) {
  const std::string twoFroms = R"(<view><column><prop>a</prop></column><column><heading>1</heading><prop>)" +
                               std::string(kFrom) + R"(</prop></column><column><prop>b</prop></column>)" +
                               R"(<column><heading>2</heading><prop>)" + kFrom + R"(</prop></column></view>)";
  const struct {
    const char* why;
    std::string xml;
    std::string prop;
    std::vector<std::string> expected;
    int saves;
  } cases[] = {
      {"the sender", kNewFolderView, kFrom, {"DAV:href", "urn:schemas:httpmail:importance", kSubject, kReceived}, 1},
      {"the first column", kNewFolderView, "DAV:href", {"urn:schemas:httpmail:importance", kFrom, kSubject, kReceived}, 1},
      {"no such column", kNewFolderView, "urn:schemas:httpmail:nothing", kNewFolderProps, 0},
      {"other case", kNewFolderView, "URN:SCHEMAS:HTTPMAIL:FROMNAME", kNewFolderProps, 0},
      {"an orderby prop is no column", R"(<view><column><prop>a</prop></column><orderby><order><prop>z</prop></order></orderby></view>)",
       "z", {"a"}, 0},
      {"of two, the first", twoFroms, kFrom, {"a", "b", kFrom}, 1},
  };
  for (const auto& c : cases) {
    ScopedLogFolder log;
    const auto view = MakeView(c.xml);
    EXPECT_TRUE(Xml::RemoveColumn(view, c.prop)) << c.why;
    EXPECT_EQ(ColumnProps(view->Text()), c.expected) << c.why;
    EXPECT_EQ(view->saves, c.saves) << c.why;
    EXPECT_EQ(view->writes, c.saves) << c.why;
    if (c.saves == 0) {
      EXPECT_EQ(view->Text(), c.xml) << c.why;
    }
    EXPECT_EQ(AllButColumns(view->Text()), AllButColumns(c.xml)) << c.why;
  }
  ScopedLogFolder log;
  const auto view = MakeView(twoFroms);
  ASSERT_TRUE(Xml::RemoveColumn(view, kFrom));
  EXPECT_EQ(ColumnChildren(view->Text(), kFrom), (std::vector<std::string>{"heading=2", std::string("prop=") + kFrom}));
}

TEST(XmlRemoveColumn, AFailureIsLoggedAndTheViewKept) {
  const struct {
    const char* why;
    std::string xml;
    bool failSave;
    const char* logged;
  } cases[] = {
      {"unreadable definition", "<view>", false, "Error(91) : Xml.RemoveColumn"},
      {"save refused", kNewFolderView, true, "Error(-2147467259) : Xml.RemoveColumn"},
  };
  for (const auto& c : cases) {
    ScopedLogFolder log;
    const auto view = MakeView(c.xml);
    view->failSave = c.failSave;
    EXPECT_FALSE(Xml::RemoveColumn(view, kFrom)) << c.why;
    EXPECT_EQ(view->saves, 0) << c.why;
    EXPECT_TRUE(log.LogContains(c.logged)) << c.why << ": " << log.LogText();
  }
}

TEST(XmlColumnExists, ComparesThePropTextExactly) {
  const std::string odd = R"(<view><column><heading>x</heading></column><column><prop>a<b>c</b></prop></column>)"
                          R"(<orderby><order><prop>z</prop></order></orderby><prop>top</prop></view>)";
  const struct {
    std::string xml;
    std::string prop;
    bool expected;
  } cases[] = {
      {kNewFolderView, kFrom, true},
      {kNewFolderView, "DAV:href", true},
      {kNewFolderView, kReceived, true},
      {kNewFolderView, "URN:schemas:httpmail:fromname", false},
      {kNewFolderView, "urn:schemas:httpmail:fromnam", false},
      {kNewFolderView, "urn:schemas:httpmail:fromname ", false},
      {kNewFolderView, "From", false},
      {kNewFolderView, "", false},
      {kNewFolderView, kTo, false},
      {odd, "z", false},    // inside orderby, not a column
      {odd, "top", false},  // a prop that is not in a column
      {odd, "ac", true},    // the prop's whole text
  };
  for (const auto& c : cases) {
    ScopedLogFolder log;
    const auto view = MakeView(c.xml);
    EXPECT_EQ(Xml::ColumnExists(view, c.prop), c.expected) << c.prop;
    EXPECT_EQ(view->writes + view->saves, 0) << "asking changes nothing";
    EXPECT_TRUE(log.LogText().empty()) << log.LogText();
  }
}

TEST(XmlColumnExists, IsFalseAndLoggedWhenTheDefinitionCantBeRead) {
  ScopedLogFolder log;
  EXPECT_FALSE(Xml::ColumnExists(MakeView("garbage"), kFrom));
  EXPECT_TRUE(log.LogContains("Error(91) : Xml.ColumnExists")) << log.LogText();
}

TEST(XmlFindColumn, GivesTheFirstColumnWithThatProp) {
  auto doc = qorvane::xml::CreateDocument();
  const ElementRef root = Root(*doc, R"(<view><column><prop>a</prop><n>1</n></column><column><n>2</n></column>)"
                                     R"(<column><prop>b</prop><n>3</n></column><column><prop>a</prop><n>4</n></column></view>)");
  ASSERT_TRUE(root);
  const auto columns = root->SelectNodes("column");
  ASSERT_EQ(columns.size(), 4u);
  const struct {
    const char* prop;
    const char* n;
  } cases[] = {{"a", "1"}, {"b", "3"}, {"c", nullptr}, {"A", nullptr}, {"", nullptr}};
  for (const auto& c : cases) {
    const ElementRef found = Xml::FindColumn(columns, c.prop);
    if (!c.n) {
      EXPECT_FALSE(found) << c.prop;
    } else {
      ASSERT_TRUE(found) << c.prop;
      EXPECT_EQ(found->SelectSingleNode("n")->Text(), c.n) << c.prop;
    }
  }
  EXPECT_FALSE(Xml::FindColumn({}, "a"));
}

// The DOM itself, where the two backends could drift apart: nodes taken out
// stay usable, nodes made are not in the text until placed, and a failed
// load leaves an empty document.
TEST(XmlDom, BothBackendsAgreeOnDetachedNodes) {
  auto doc = qorvane::xml::CreateDocument();
  const ElementRef root = Root(*doc, "<view><column><prop>a</prop></column><column><prop>b</prop></column></view>");
  ASSERT_TRUE(root);
  EXPECT_EQ(root->Name(), "view");

  const ElementRef made = doc->CreateElement("column");
  made->Text("c");
  EXPECT_EQ(Canonical(doc->Xml()).find("<column>c</column>"), std::string::npos) << "not placed yet: " << doc->Xml();

  const ElementRef first = root->SelectNodes("column").at(0);
  root->RemoveChild(first);
  EXPECT_EQ(ColumnProps(doc->Xml()), (std::vector<std::string>{"b"}));
  EXPECT_EQ(first->SelectSingleNode("prop")->Text(), "a") << "a removed node keeps its content";

  root->AppendChild(first);
  root->InsertBefore(made, first);
  EXPECT_EQ(ColumnProps(doc->Xml()), (std::vector<std::string>{"b", "<no prop>", "a"}));
  EXPECT_EQ(root->SelectNodes("column").at(1)->Text(), "c");
  EXPECT_EQ(Canonical(doc->Xml()),
            "<view><column><prop>b</prop></column><column>c</column><column><prop>a</prop></column></view>")
      << doc->Xml();

  made->Text("");
  EXPECT_EQ(made->Text(), "");
  EXPECT_THROW(root->RemoveChild(doc->CreateElement("stranger")), qorvane::RuntimeError);

  EXPECT_FALSE(doc->LoadXml("<view>"));
  EXPECT_FALSE(doc->DocumentElement());
  EXPECT_TRUE(doc->LoadXml("<other/>"));
  EXPECT_EQ(doc->DocumentElement()->Name(), "other");
}

}  // namespace
