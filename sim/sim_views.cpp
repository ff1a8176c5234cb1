// Folder views and their XML.
#include "sim/sim_views.h"

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_folder.h"
#include "sim/world.h"

namespace sim {
namespace {

// A new mail folder's table view, as the client writes it.
constexpr const char* kTableViewHead = "<?xml version=\"1.0\"?>\n<view type=\"table\">\n  <viewname>";
constexpr const char* kTableViewTail =
    "</viewname>\n"
    "  <viewstyle>table-layout:fixed;width:100%;font-family:Segoe UI;font-size:8pt</viewstyle>\n"
    "  <viewtime>0</viewtime>\n"
    "  <linecolor>8421504</linecolor>\n"
    "  <linestyle>3</linestyle>\n"
    "  <collapsestate></collapsestate>\n"
    "  <rowstyle>background-color:#FFFFFF</rowstyle>\n"
    "  <headerstyle>background-color:#D3D3D3</headerstyle>\n"
    "  <arrangement><autogroup>0</autogroup><collapseclient></collapseclient></arrangement>\n"
    "  <column><name>HREF</name><prop>DAV:href</prop><checkbox>1</checkbox></column>\n"
    "  <column><heading>Importance</heading><prop>urn:schemas:httpmail:importance</prop><type>i4</type>"
    "<bitmap>1</bitmap><width>10</width></column>\n"
    "  <column><heading>From</heading><prop>urn:schemas:httpmail:fromname</prop><type>string</type>"
    "<width>68</width></column>\n"
    "  <column><heading>Subject</heading><prop>urn:schemas:httpmail:subject</prop><type>string</type>"
    "<width>280</width></column>\n"
    "  <column><heading>Received</heading><prop>urn:schemas:httpmail:datereceived</prop><type>datetime</type>"
    "<width>76</width><format>M/d/yyyy||h:mm tt</format></column>\n"
    "  <orderby><order><heading>Received</heading><prop>urn:schemas:httpmail:datereceived</prop>"
    "<type>datetime</type><sort>desc</sort></order></orderby>\n"
    "  <groupbydefault>2</groupbydefault>\n"
    "</view>\n";

const char* ViewTypeName(long viewType) {
  switch (viewType) {
    case client::olTableView: return "table";
    case 1: return "card";
    case 2: return "calendar";
    case 3: return "icon";
    case 4: return "timeline";
    default: return nullptr;
  }
}

std::shared_ptr<SimView> FindView(SimFolder& folder, const std::string& name) {
  for (const auto& view : folder.views) {
    if (qorvane::EqualsIgnoringCase(view->ViewName(), name)) return view;
  }
  return nullptr;
}

}  // namespace

std::string NewViewXml(const std::string& name, long viewType) {
  const char* type = ViewTypeName(viewType);
  if (!type) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  if (viewType == client::olTableView) return kTableViewHead + name + kTableViewTail;
  return std::string("<?xml version=\"1.0\"?>\n<view type=\"") + type + "\">\n  <viewname>" + name +
         "</viewname>\n</view>\n";
}

void AddDefaultViews(SimFolder& folder) {
  const bool calendar = folder.defaultItemType == client::olAppointmentItem;
  const std::pair<const char*, long> names[] = {
      {calendar ? "Calendar" : "Compact", calendar ? 2L : client::olTableView},
      {calendar ? "List" : "Single", client::olTableView},
      {calendar ? "Active" : "Preview", client::olTableView}};
  for (const auto& [name, type] : names)
    folder.views.push_back(std::make_shared<SimView>(folder.world, name, NewViewXml(name, type)));
}

std::string SimView::Name() {
  world_.Enter("View", "Name");
  return name_;
}

std::string SimView::XML() {
  world_.Enter("View", "XML");
  return xml_;
}

void SimView::XML(const std::string& value) {
  world_.Enter("View", "XML");
  xml_ = value;
}

void SimView::Save() {
  world_.Enter("View", "Save");
  ++saved_;
}

void SimView::Apply() {
  world_.Enter("View", "Apply");
  ++applied_;
}

long SimViews::Count() {
  world_.Enter("Views", "Count");
  return static_cast<long>(folder_->views.size());
}

client::Ref<client::View> SimViews::Item(const std::string& name) {
  world_.Enter("Views", "Item");
  auto view = FindView(*folder_, name);
  if (!view) fault::OutOfBounds();
  return world_.Hand(view);
}

client::Ref<client::View> SimViews::Add(const std::string& name, long viewType, long saveOption) {
  world_.Enter("Views", "Add");
  if (name.empty()) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  if (FindView(*folder_, name))
    qorvane::Raise(fault::kDispatchException, "A view named \"" + name + "\" already exists.");
  if (saveOption < 0 || saveOption > 2) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  folder_->views.push_back(std::make_shared<SimView>(world_, name, NewViewXml(name, viewType)));
  return world_.Hand(folder_->views.back());
}

}  // namespace sim
