// Module Xml: editing the columns of a folder view through the view's XML
// definition. A column is a `column` child of the document element and is
// known by the text of its `prop` child; everything else in the definition is
// left as it was found.
//
// Every edit loads View.XML into a fresh document, changes it, and writes the
// whole text back and saves the view only when the change is complete, so a
// failure part-way leaves the view untouched. Failures are logged under the
// procedure's label and reported as false (ColumnExists: as "not there"). A
// definition longer than 1 MiB is such a failure ("out of memory", with its
// size), and one nested too deep does not parse (xml_dom.h): neither is
// walked.
// UI thread only, like the view itself.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "client/folders.h"
#include "platform/xml_dom.h"
#include "store/named_property.h"

namespace Xml {

// A user property "Name" is the column prop Main::NamedPropertyUrl("Name")
// (store/named_property.h).

// Adds a column with Heading (when given), prop, width, type and, when not
// empty, userheading, in front of the column whose prop is insertBefore, or
// at the end when insertBefore is empty or names no column. A view whose XML
// does not parse is left alone (and that is not a failure).
bool AddTableViewUserColumn(const client::Ref<client::View>& view, const std::optional<std::string>& heading,
                            const std::string& prop, const std::string& type, const std::string& userheading,
                            const std::string& insertBefore, long width);

// The column of a user property: its name becomes the Heading, its named
// property URL the prop, and heading what the user sees (userheading).
bool AddUserPropColumn(const client::Ref<client::View>& view, const std::string& propName, const std::string& type,
                       const std::string& heading, const std::string& insertBefore, long width);

// Removes the first column with that prop; no such column changes nothing.
bool RemoveColumn(const client::Ref<client::View>& view, const std::string& prop);

// Whether a column's prop text equals prop exactly (case included).
bool ColumnExists(const client::Ref<client::View>& view, const std::string& prop);

// The first of the column nodes whose prop child's text equals prop exactly,
// or null.
qorvane::xml::ElementRef FindColumn(const std::vector<qorvane::xml::ElementRef>& columnNodes, const std::string& prop);

}  // namespace Xml
