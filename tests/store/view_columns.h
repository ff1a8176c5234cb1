// Reading a folder view's XML definition back in tests: the columns' props
// in order, one column's children, and a form of the text that both XML
// parsers agree on (MSXML under wine indents what it writes, pugixml does
// not; each writes empty elements its own way).
#pragma once

#include <regex>
#include <string>
#include <vector>

#include "platform/xml_dom.h"
#include "store/xml.h"

namespace qorvane::testing {

inline const std::string kToProp = "urn:schemas:httpmail:displayto";
inline const std::string kFromProp = "urn:schemas:httpmail:fromname";
inline const std::string kNextProp = std::string(Xml::kPublicStringsNamespace) + "/ScheduleTime";

inline xml::ElementRef LoadRoot(xml::Document& doc, const std::string& text) {
  if (!doc.LoadXml(text)) return nullptr;
  return doc.DocumentElement();
}

// The prop texts of the view's columns, in order ("<no prop>" for a column
// without one); empty when the text doesn't parse.
inline std::vector<std::string> ColumnProps(const std::string& text) {
  auto doc = xml::CreateDocument();
  std::vector<std::string> props;
  const xml::ElementRef root = LoadRoot(*doc, text);
  if (!root) return props;
  for (const xml::ElementRef& column : root->SelectNodes("column")) {
    const xml::ElementRef prop = column->SelectSingleNode("prop");
    props.push_back(prop ? prop->Text() : "<no prop>");
  }
  return props;
}

// The children of the first column with that prop, as "name=text", in the
// order of the names below (the ones columns are made of).
inline std::vector<std::string> ColumnChildren(const std::string& text, const std::string& prop) {
  auto doc = xml::CreateDocument();
  std::vector<std::string> children;
  const xml::ElementRef root = LoadRoot(*doc, text);
  if (!root) return children;
  const xml::ElementRef column = Xml::FindColumn(root->SelectNodes("column"), prop);
  if (!column) return children;
  for (const char* name : {"Heading", "heading", "name", "prop", "width", "type", "userheading"}) {
    for (const xml::ElementRef& child : column->SelectNodes(name)) children.push_back(std::string(name) + "=" + child->Text());
  }
  return children;
}

// No declaration, no whitespace between tags, empty elements in full.
inline std::string Canonical(const std::string& text) {
  std::string canonical = std::regex_replace(text, std::regex(R"(<\?xml[^>]*\?>)"), "");
  canonical = std::regex_replace(canonical, std::regex(R"(>\s+<)"), "><");
  canonical = std::regex_replace(canonical, std::regex(R"(<([A-Za-z_:][-A-Za-z0-9_:.]*)\s*/>)"), "<$1></$1>");
  return std::regex_replace(canonical, std::regex(R"(^\s+|\s+$)"), "");
}

// Everything but the columns: what column edits must leave as they found it.
inline std::string AllButColumns(const std::string& text) {
  return std::regex_replace(Canonical(text), std::regex(R"(<column>.*?</column>)"), "");
}

}  // namespace qorvane::testing
