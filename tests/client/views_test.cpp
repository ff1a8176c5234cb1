// Conformance: a folder's views, a new table view's XML, and XML round trips.
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class ViewsTest : public ClientTest<F> {
 protected:
  Ref<client::MAPIFolder> NewFolder() { return this->Root()->Folders()->Add("Qorvane", client::olFolderDrafts); }
};
TYPED_TEST_SUITE(ViewsTest, ClientFixtures);

TYPED_TEST(ViewsTest, AddedTableViewHasTheClientsTableXml) {
  const auto views = this->NewFolder()->Views();
  const long before = views->Count();
  const auto view = views->Add("Qorvane View", client::olTableView, client::olViewSaveOptionThisFolderEveryone);
  EXPECT_EQ(views->Count(), before + 1);
  EXPECT_EQ(view->Name(), "Qorvane View");
  const std::string xml = view->XML();
  for (const char* part : {"<view type=\"table\">", "<viewname>Qorvane View</viewname>",
                           "<prop>urn:schemas:httpmail:fromname</prop>", "<prop>urn:schemas:httpmail:subject</prop>"}) {
    EXPECT_NE(xml.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(views->Item("Qorvane View")->XML(), xml);
}

TYPED_TEST(ViewsTest, NamesAreUniqueAndLookupsOfAbsentNamesRaise) {
  const auto views = this->NewFolder()->Views();
  views->Add("Qorvane View", client::olTableView, client::olViewSaveOptionThisFolderEveryone);
  const long count = views->Count();
  EXPECT_NE(ErrorOf([&] { views->Add("Qorvane View", client::olTableView, 0); }), 0);
  EXPECT_EQ(views->Count(), count);
  for (const char* absent : {"Other View", "Qorvane", ""}) {
    SCOPED_TRACE(absent);
    EXPECT_NE(ErrorOf([&] { views->Item(absent); }), 0);
  }
}

TYPED_TEST(ViewsTest, XmlReadsBackAsItWasWritten) {
  const auto view = this->NewFolder()->Views()->Add("Qorvane View", client::olTableView, 0);
  const std::string texts[] = {
      "<?xml version=\"1.0\"?>\n<view type=\"table\"><viewname>Qorvane View</viewname></view>\n",
      "<view type=\"table\">\r\n  "
      "<column><prop>urn:schemas:httpmail:displayto</prop><width>0</width></column>\r\n</view>",
  };
  for (const auto& text : texts) {
    view->XML(text);
    view->Save();
    view->Apply();
    EXPECT_EQ(view->XML(), text);
    EXPECT_EQ(this->Root()->Folders()->Item(6)->Views()->Item("Qorvane View")->XML(), text);
  }
}

TYPED_TEST(ViewsTest, EveryFolderHasItsOwnViews) {
  const auto folder = this->NewFolder();
  folder->Views()->Add("Qorvane View", client::olTableView, 0);
  EXPECT_NE(ErrorOf([&] { this->Inbox()->Views()->Item("Qorvane View"); }), 0);
}

}  // namespace
}  // namespace client_conformance
