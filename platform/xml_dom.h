// The little of an XML document object model that editing a folder view's
// XML definition needs: load the text, walk the document element's child
// elements by name, make, insert and remove elements, read and set their
// text, and write the document back out as text.
//
// Windows uses the system's MSXML DOM through COM, as the mail client's own
// view code would see it; POSIX uses pugixml. The two are held to the same
// behaviour by the view-editing tests (tests/store/folder_test.cpp), which
// run natively against pugixml and under wine against MSXML.
//
// Lifecycle: a Document owns its nodes. Element handles stay valid while
// their Document lives and until the next LoadXml; an element taken out with
// RemoveChild stays valid (detached) as well. Not thread-safe: one document
// is used by one thread at a time (on Windows, a COM apartment thread; the
// first CreateDocument on a thread initialises COM there if nobody has).
// Failures of the parser's own calls throw qorvane::RuntimeError (on Windows
// with the COM HRESULT); a text that does not parse is not a failure but a
// false from LoadXml.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace qorvane::xml {

class Element;
using ElementRef = std::shared_ptr<Element>;

class Element {
 public:
  virtual ~Element() = default;
  // The element's tag name.
  virtual std::string Name() = 0;
  // The direct child elements with that tag name, in document order.
  virtual std::vector<ElementRef> SelectNodes(const std::string& name) = 0;
  // The first direct child element with that tag name, or null.
  virtual ElementRef SelectSingleNode(const std::string& name) = 0;
  // Moves the element to the end of this element's children.
  virtual void AppendChild(const ElementRef& child) = 0;
  // Moves the element in front of reference, which must be a child of this
  // element; a null reference appends.
  virtual void InsertBefore(const ElementRef& child, const ElementRef& reference) = 0;
  // Detaches a child of this element; raises when it is not one.
  virtual void RemoveChild(const ElementRef& child) = 0;
  // The text of the element and everything below it, UTF-8.
  virtual std::string Text() = 0;
  // Replaces the element's content with that text.
  virtual void Text(const std::string& value) = 0;
};

class Document {
 public:
  virtual ~Document() = default;
  // Replaces the document with the parsed text; false when it doesn't parse
  // or nests elements more than 256 deep, as MSXML 6 refuses (the document
  // is then empty).
  virtual bool LoadXml(const std::string& text) = 0;
  // Null for an empty document.
  virtual ElementRef DocumentElement() = 0;
  // A new element of this document, not yet placed anywhere.
  virtual ElementRef CreateElement(const std::string& name) = 0;
  // The whole document as text, UTF-8.
  virtual std::string Xml() = 0;
};

// A new empty document; raises 429 when no parser can be created.
std::unique_ptr<Document> CreateDocument();

}  // namespace qorvane::xml
