// Module Xml: the view's column edits over the platform's XML DOM.
#include "store/xml.h"

#include <memory>
#include <string>

#include "base/need.h"
#include "infra/error_trap.h"

namespace Xml {
namespace {

using qorvane::xml::Document;
using qorvane::xml::ElementRef;

using qorvane::Need;

void AppendTextChild(Document& doc, const ElementRef& parent, const std::string& name, const std::string& text) {
  const ElementRef child = doc.CreateElement(name);
  Need(child)->Text(text);
  parent->AppendChild(child);
}

// The largest view definition taken in: a real one is a few kilobytes, and
// a damaged one must not make the client's process parse megabytes.
constexpr std::size_t kMaxViewXmlSize = std::size_t{1} << 20;

// The view's definition as a document, empty when the text does not parse.
// Raises "out of memory", saying why, for a text beyond kMaxViewXmlSize.
std::unique_ptr<Document> ReadView(client::View& view, bool& parsed) {
  const std::string text = view.XML();
  if (text.size() > kMaxViewXmlSize) {
    qorvane::Raise(qorvane::err::kOutOfMemory, "The view's XML definition is " + std::to_string(text.size()) +
                                                   " bytes long, more than the " +
                                                   std::to_string(kMaxViewXmlSize) + " taken in; it is left alone");
  }
  auto doc = qorvane::xml::CreateDocument();
  parsed = doc->LoadXml(text);
  return doc;
}

// The view's definition as a document; null when it does not parse.
std::unique_ptr<Document> LoadView(client::View& view) {
  bool parsed = false;
  auto doc = ReadView(view, parsed);
  return parsed ? std::move(doc) : nullptr;
}

}  // namespace

bool AddTableViewUserColumn(const client::Ref<client::View>& view, const std::optional<std::string>& heading,
                            const std::string& prop, const std::string& type, const std::string& userheading,
                            const std::string& insertBefore, long width) {
  return qorvane::Trap("Xml.AddTableViewUserColumn", [&] {
    const auto target = Need(view);
    const auto doc = LoadView(*target);
    if (!doc) return;
    const ElementRef column = Need(doc->CreateElement("column"));
    // The order of these children is the one the client writes itself.
    if (heading) AppendTextChild(*doc, column, "Heading", *heading);
    AppendTextChild(*doc, column, "prop", prop);
    AppendTextChild(*doc, column, "width", std::to_string(width));
    AppendTextChild(*doc, column, "type", type);
    if (!userheading.empty()) AppendTextChild(*doc, column, "userheading", userheading);

    const ElementRef root = Need(doc->DocumentElement());
    const auto columns = root->SelectNodes("column");
    ElementRef before;
    if (!insertBefore.empty()) before = FindColumn(columns, insertBefore);
    if (before) {
      root->InsertBefore(column, before);
    } else {
      root->AppendChild(column);
    }
    target->XML(doc->Xml());
    target->Save();
  });
}

bool AddUserPropColumn(const client::Ref<client::View>& view, const std::string& propName, const std::string& type,
                       const std::string& heading, const std::string& insertBefore, long width) {
  return AddTableViewUserColumn(view, propName, Main::NamedPropertyUrl(propName), type, heading,
                                insertBefore, width);
}

bool RemoveColumn(const client::Ref<client::View>& view, const std::string& prop) {
  return qorvane::Trap("Xml.RemoveColumn", [&] {
    const auto target = Need(view);
    // Only adding stops quietly on a definition that doesn't parse; here it
    // leaves no document element, which fails as "object not set" and is
    // logged.
    bool parsed = false;
    const auto doc = ReadView(*target, parsed);
    const ElementRef root = Need(doc->DocumentElement());
    const ElementRef column = FindColumn(root->SelectNodes("column"), prop);
    if (!column) return;
    root->RemoveChild(column);
    target->XML(doc->Xml());
    target->Save();
  });
}

bool ColumnExists(const client::Ref<client::View>& view, const std::string& prop) {
  bool exists = false;
  qorvane::Trap("Xml.ColumnExists", [&] {
    bool parsed = false;
    const auto doc = ReadView(*Need(view), parsed);
    exists = FindColumn(Need(doc->DocumentElement())->SelectNodes("column"), prop) != nullptr;
  });
  return exists;
}

ElementRef FindColumn(const std::vector<ElementRef>& columnNodes, const std::string& prop) {
  for (const ElementRef& column : columnNodes) {
    if (!column) continue;
    const ElementRef propNode = column->SelectSingleNode("prop");
    if (propNode && propNode->Text() == prop) return column;
  }
  return nullptr;
}

}  // namespace Xml
