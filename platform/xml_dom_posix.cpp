// The view XML's document object model on POSIX, over pugixml.
//
// pugixml has no free-standing nodes: every node lives in its document's
// tree. Elements made by CreateElement and children taken out by RemoveChild
// are therefore parked under a holding element kept after the document
// element; DocumentElement and Xml() look past it, so to callers those
// elements are as detached as MSXML's. Moving a node is pugixml's move within
// one document, so element handles keep pointing at the same node wherever
// it goes.
//
// pugixml parses and prints without recursion but frees a removed subtree
// recursively, and a view XML can be hostile: a document nested deeper than
// MSXML 6 takes (kMaxElementDepth) is refused as MSXML refuses it, and every
// walk here goes by the tree's own links, never by recursion.
#include <pugixml.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "platform/xml_dom.h"

namespace qorvane::xml {
namespace {

// A name no view definition uses (the colon keeps it out of plain names).
constexpr const char* kParkingName = "qorvane:parked";

// MSXML 6's MaxElementDepth: the deepest nesting of elements it loads.
constexpr int kMaxElementDepth = 256;

// The node after node in document order within root's subtree, or null;
// depth follows the move (+1 into a child, -1 for each level climbed out).
pugi::xml_node NextInSubtree(pugi::xml_node node, pugi::xml_node root, int& depth) {
  if (node.first_child()) {
    ++depth;
    return node.first_child();
  }
  while (node != root) {
    if (node.next_sibling()) return node.next_sibling();
    node = node.parent();
    --depth;
  }
  return pugi::xml_node();
}

// How deeply elements nest below node (its children are level 1).
int ElementDepth(pugi::xml_node node) {
  int depth = 0;
  int deepest = 0;
  for (pugi::xml_node n = NextInSubtree(node, node, depth); n; n = NextInSubtree(n, node, depth)) {
    if (n.type() == pugi::node_element) deepest = std::max(deepest, depth);
  }
  return deepest;
}

// Removes node with everything below it, deepest nodes first, so that
// pugixml's own removal only ever frees a leaf.
void RemoveSubtree(pugi::xml_node node) {
  const pugi::xml_node top = node.parent();
  while (node != top) {
    if (node.first_child()) {
      node = node.first_child();
    } else {
      pugi::xml_node parent = node.parent();
      parent.remove_child(node);
      node = parent;
    }
  }
}

class PugiDocument;

[[noreturn]] void Fail(const std::string& what) { Raise(err::kInvalidCall, "XML DOM: " + what); }

class PugiElement final : public Element {
 public:
  PugiElement(PugiDocument& owner, pugi::xml_node node) : owner_(owner), node_(node) {}

  pugi::xml_node Node() const { return node_; }

  std::string Name() override { return node_.name(); }

  std::vector<ElementRef> SelectNodes(const std::string& name) override {
    std::vector<ElementRef> found;
    for (pugi::xml_node child = node_.child(name.c_str()); child; child = child.next_sibling(name.c_str())) {
      found.push_back(Wrap(child));
    }
    return found;
  }

  ElementRef SelectSingleNode(const std::string& name) override {
    const pugi::xml_node child = node_.child(name.c_str());
    return child ? Wrap(child) : nullptr;
  }

  void AppendChild(const ElementRef& child) override {
    if (!node_.append_move(Of(child))) Fail("appendChild refused the node");
  }

  void InsertBefore(const ElementRef& child, const ElementRef& reference) override {
    if (!reference) return AppendChild(child);
    const pugi::xml_node before = Of(reference);
    if (before.parent() != node_) Fail("insertBefore: the reference node is not a child");
    if (!node_.insert_move_before(Of(child), before)) Fail("insertBefore refused the node");
  }

  void RemoveChild(const ElementRef& child) override;

  std::string Text() override {
    std::string text;
    int depth = 0;
    for (pugi::xml_node n = NextInSubtree(node_, node_, depth); n; n = NextInSubtree(n, node_, depth)) {
      if (n.type() == pugi::node_pcdata || n.type() == pugi::node_cdata) text += n.value();
    }
    return text;
  }

  void Text(const std::string& value) override {
    while (node_.first_child()) RemoveSubtree(node_.first_child());
    if (!value.empty()) node_.append_child(pugi::node_pcdata).set_value(value.c_str());
  }

 private:
  ElementRef Wrap(pugi::xml_node node) { return std::make_shared<PugiElement>(owner_, node); }

  // Only elements of this same document can be moved around in it.
  pugi::xml_node Of(const ElementRef& element) const {
    const auto* pugi = dynamic_cast<const PugiElement*>(element.get());
    if (!pugi || &pugi->owner_ != &owner_) Fail("the node belongs to another document");
    return pugi->node_;
  }

  PugiDocument& owner_;
  pugi::xml_node node_;
};

class PugiDocument final : public Document {
 public:
  bool LoadXml(const std::string& text) override {
    parking_ = pugi::xml_node();
    const pugi::xml_parse_result result = doc_.load_string(text.c_str(), pugi::parse_default | pugi::parse_declaration);
    if (result && WellFormed() && ElementDepth(doc_) <= kMaxElementDepth) return true;
    doc_.reset();
    return false;
  }

  ElementRef DocumentElement() override {
    for (pugi::xml_node child : doc_.children()) {
      if (child.type() == pugi::node_element && child != parking_) return std::make_shared<PugiElement>(*this, child);
    }
    return nullptr;
  }

  ElementRef CreateElement(const std::string& name) override {
    if (name.empty()) Fail("createElement needs a name");
    pugi::xml_node element = Parking().append_child(name.c_str());
    if (!element) Fail("createElement failed");
    return std::make_shared<PugiElement>(*this, element);
  }

  std::string Xml() override {
    std::ostringstream text;
    for (pugi::xml_node child : doc_.children()) {
      if (child != parking_) child.print(text, "", pugi::format_raw);
    }
    return text.str();
  }

  // pugixml takes fragments too; MSXML wants exactly one document element
  // and no text beside it, and so does this.
  bool WellFormed() const {
    int elements = 0;
    for (pugi::xml_node child : doc_.children()) {
      if (child.type() == pugi::node_element) ++elements;
      if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) return false;
    }
    return elements == 1;
  }

  pugi::xml_node Parking() {
    if (!parking_) parking_ = doc_.append_child(kParkingName);
    return parking_;
  }

 private:
  pugi::xml_document doc_;
  pugi::xml_node parking_;
};

void PugiElement::RemoveChild(const ElementRef& child) {
  const pugi::xml_node node = Of(child);
  if (node.parent() != node_) Fail("removeChild: the node is not a child");
  if (!owner_.Parking().append_move(node)) Fail("removeChild failed");
}

}  // namespace

std::unique_ptr<Document> CreateDocument() { return std::make_unique<PugiDocument>(); }

}  // namespace qorvane::xml
