// Fuzz target: a folder view's XML definition, as the client hands it over,
// edited the way the add-in brings "Qorvane View" up to date: look for the
// columns, add the recipients in front of the sender, remove the sender, add
// the next send time (Xml::ColumnExists, AddTableViewUserColumn,
// RemoveColumn).
//
// When the definition parses, each edit must do exactly its own change: one
// column more or less with that prop, every other column's prop left where
// it was, and text that parses again. When it does not parse, the edits must
// leave the view alone. Nothing may crash or hang.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "client/folders.h"
#include "fuzz/fuzz_support.h"
#include "platform/xml_dom.h"
#include "store/named_property.h"
#include "store/xml.h"

using qorvane::fuzz::Check;

namespace {

const std::string kDisplayTo = "urn:schemas:httpmail:displayto";
const std::string kFromName = "urn:schemas:httpmail:fromname";
const std::string kScheduleTime = Main::NamedPropertyUrl("ScheduleTime");

class FakeView final : public client::View {
 public:
  explicit FakeView(std::string xml) : xml_(std::move(xml)) {}
  std::string Name() override { return "Qorvane View"; }
  std::string XML() override { return xml_; }
  void XML(const std::string& value) override { xml_ = value; }
  void Save() override {}
  void Apply() override {}

 private:
  std::string xml_;
};

// The prop of each column, in order, as Xml finds them; nothing when the
// text does not parse.
std::optional<std::vector<std::string>> ColumnProps(const std::string& text) {
  auto doc = qorvane::xml::CreateDocument();
  if (!doc->LoadXml(text) || !doc->DocumentElement()) return std::nullopt;
  std::vector<std::string> props;
  for (const auto& column : doc->DocumentElement()->SelectNodes("column")) {
    const auto prop = column->SelectSingleNode("prop");
    props.push_back(prop ? prop->Text() : std::string("\x01no prop"));
  }
  return props;
}

std::vector<std::string> Without(std::vector<std::string> props, const std::string& prop) {
  props.erase(std::remove(props.begin(), props.end(), prop), props.end());
  return props;
}

long Count(const std::vector<std::string>& props, const std::string& prop) {
  return std::count(props.begin(), props.end(), prop);
}

// Runs one edit and checks that the number of columns with that prop changed
// by `change` (or, where it had none to remove, not at all) and that nothing
// else moved.
template <class Edit>
void CheckEdit(const std::shared_ptr<FakeView>& view, const std::string& prop, long change, const char* what,
               Edit edit) {
  const std::string before = view->XML();
  const auto propsBefore = ColumnProps(before);
  const bool done = edit();
  const auto propsAfter = ColumnProps(view->XML());
  if (!propsBefore) {
    Check(view->XML() == before, std::string(what) + " changed a view whose definition does not parse");
    return;
  }
  Check(done, std::string(what) + " failed on a definition that parses");
  Check(propsAfter.has_value(), std::string(what) + " wrote a definition that does not parse");
  const long expected = std::max(0L, Count(*propsBefore, prop) + change);
  Check(Count(*propsAfter, prop) == expected, std::string(what) + " did not change its column exactly once");
  Check(Without(*propsAfter, prop) == Without(*propsBefore, prop), std::string(what) + " moved other columns");
  Check(Xml::ColumnExists(view, prop) == (expected > 0), std::string(what) + ": ColumnExists disagrees");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qorvane::fuzz::QuietLog();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto view = std::make_shared<FakeView>(std::string(reinterpret_cast<const char*>(data), size));
  const bool hasFrom = Xml::ColumnExists(view, kFromName);
  Xml::ColumnExists(view, kDisplayTo);
  Xml::ColumnExists(view, kScheduleTime);
  CheckEdit(view, kDisplayTo, +1, "AddTableViewUserColumn", [&] {
    return Xml::AddTableViewUserColumn(view, "To", kDisplayTo, "string", "", hasFrom ? kFromName : "", 0);
  });
  CheckEdit(view, kFromName, -1, "RemoveColumn", [&] { return Xml::RemoveColumn(view, kFromName); });
  CheckEdit(view, kScheduleTime, +1, "AddUserPropColumn", [&] {
    return Xml::AddUserPropColumn(view, "ScheduleTime", "datetime", "Next Occurrence", "", 100);
  });
  return 0;
}
