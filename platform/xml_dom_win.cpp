// The view XML's document object model on Windows: the system's MSXML DOM
// through COM ("Msxml2.DOMDocument.6.0", else the version-independent
// "Msxml2.DOMDocument"), with texts converted between UTF-8 and BSTR.
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <msxml2.h>

#include <string>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "platform/xml_dom.h"
#include "win/com/apartment.h"
#include "win/com/bstr.h"
#include "win/com/com_ptr.h"
#include "win/com/variant.h"

namespace qorvane::xml {
namespace {

using com::Bstr;
template <class T>
using Com = com::ComPtr<T>;

// A failed DOM call raises its HRESULT, as a late-bound call would.
void Check(HRESULT hr, const char* what) {
  if (FAILED(hr)) Raise(static_cast<std::int32_t>(hr), std::string("XML DOM: ") + what + " failed");
}

class MsxmlElement final : public Element {
 public:
  explicit MsxmlElement(Com<IXMLDOMNode> node) : node_(std::move(node)) {}

  IXMLDOMNode* Node() const { return node_.get(); }

  std::string Name() override {
    Bstr name;
    Check(node_->get_nodeName(name.put()), "nodeName");
    return name.Utf8();
  }

  std::vector<ElementRef> SelectNodes(const std::string& name) override {
    Com<IXMLDOMNodeList> list;
    Check(node_->selectNodes(Bstr(name).get(), list.put()), "selectNodes");
    std::vector<ElementRef> found;
    long length = 0;
    Check(list->get_length(&length), "length");
    for (long i = 0; i < length; ++i) {
      Com<IXMLDOMNode> item;
      Check(list->get_item(i, item.put()), "item");
      if (item) found.push_back(std::make_shared<MsxmlElement>(std::move(item)));
    }
    return found;
  }

  ElementRef SelectSingleNode(const std::string& name) override {
    Com<IXMLDOMNode> item;
    Check(node_->selectSingleNode(Bstr(name).get(), item.put()), "selectSingleNode");
    return item ? std::make_shared<MsxmlElement>(std::move(item)) : nullptr;
  }

  void AppendChild(const ElementRef& child) override {
    Com<IXMLDOMNode> placed;
    Check(node_->appendChild(Of(child), placed.put()), "appendChild");
  }

  void InsertBefore(const ElementRef& child, const ElementRef& reference) override {
    if (!reference) return AppendChild(child);
    const com::ScopedVariant before(static_cast<IDispatch*>(Of(reference)));
    Com<IXMLDOMNode> placed;
    Check(node_->insertBefore(Of(child), before.get(), placed.put()), "insertBefore");
  }

  void RemoveChild(const ElementRef& child) override {
    Com<IXMLDOMNode> removed;
    Check(node_->removeChild(Of(child), removed.put()), "removeChild");
  }

  std::string Text() override {
    Bstr text;
    Check(node_->get_text(text.put()), "text");
    return text.Utf8();
  }

  void Text(const std::string& value) override { Check(node_->put_text(Bstr(value).get()), "text"); }

 private:
  static IXMLDOMNode* Of(const ElementRef& element) {
    const auto* msxml = dynamic_cast<const MsxmlElement*>(element.get());
    if (!msxml) Raise(err::kInvalidCall, "XML DOM: the node belongs to another DOM");
    return msxml->node_.get();
  }

  Com<IXMLDOMNode> node_;
};

Com<IXMLDOMNode> AsNode(IUnknown* unknown) {
  Com<IXMLDOMNode> node;
  if (unknown) Check(unknown->QueryInterface(IID_IXMLDOMNode, reinterpret_cast<void**>(node.put())), "QueryInterface");
  return node;
}

class MsxmlDocument final : public Document {
 public:
  explicit MsxmlDocument(Com<IXMLDOMDocument> doc) : doc_(std::move(doc)) {}

  bool LoadXml(const std::string& text) override {
    VARIANT_BOOL ok = VARIANT_FALSE;
    Check(doc_->loadXML(Bstr(text).get(), &ok), "loadXML");
    return ok == VARIANT_TRUE;
  }

  ElementRef DocumentElement() override {
    Com<IXMLDOMElement> root;
    Check(doc_->get_documentElement(root.put()), "documentElement");
    if (!root) return nullptr;
    return std::make_shared<MsxmlElement>(AsNode(root.get()));
  }

  ElementRef CreateElement(const std::string& name) override {
    Com<IXMLDOMElement> element;
    Check(doc_->createElement(Bstr(name).get(), element.put()), "createElement");
    return std::make_shared<MsxmlElement>(AsNode(element.get()));
  }

  std::string Xml() override {
    Bstr text;
    Check(doc_->get_xml(text.put()), "xml");
    return text.Utf8();
  }

 private:
  Com<IXMLDOMDocument> doc_;
};

}  // namespace

std::unique_ptr<Document> CreateDocument() {
  com::EnsureComOnThisThread();
  HRESULT last = REGDB_E_CLASSNOTREG;
  for (const wchar_t* progId : {L"Msxml2.DOMDocument.6.0", L"Msxml2.DOMDocument"}) {
    CLSID clsid;
    last = CLSIDFromProgID(progId, &clsid);
    if (FAILED(last)) continue;
    Com<IXMLDOMDocument> doc;
    last = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, reinterpret_cast<void**>(doc.put()));
    if (SUCCEEDED(last) && doc) return std::make_unique<MsxmlDocument>(std::move(doc));
  }
  Raise(err::kCannotCreateObject, "Cannot create the XML DOM (HRESULT " + std::to_string(static_cast<unsigned long>(last)) + ")");
}

}  // namespace qorvane::xml
