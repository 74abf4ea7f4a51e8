// The members that every class of nodes publishes.
#pragma once

#include "automation/Binder.h"
#include "platform/linux/XmlDocument.h"
#include "platform/linux/XmlDocumentLists.h"
#include "platform/linux/XmlDocumentNode.h"

namespace zelUtilities {

template <class T>
ClassBuilder<T> describeNode(const char* name, const char* help) {
  ClassBuilder<T> members(name, help);
  members.property("nodeName", &T::nodeName, "The name as written.")
      .property("baseName", &T::baseName, "The name without its prefix.")
      .property("prefix", &T::prefix, "The name's prefix.")
      .property("namespaceURI", &T::namespaceURI, "The name space that the prefix stands for.")
      .property("nodeType", &T::nodeType, "The kind of node as a number.")
      .property("nodeTypeString", &T::nodeTypeString, "The kind of node.")
      .property("nodeValue", &T::nodeValue, &T::setNodeValue, "What the node itself holds.")
      .property("nodeTypedValue", &T::nodeTypedValue, &T::setText, "The text in its declared type.")
      .property("text", &T::text, &T::setText, "The text of the node and all below it.")
      .property("xml", &T::xml, "The node's XML text.")
      .property("parentNode", &T::parentNode, "The parent, or nothing.")
      .property("firstChild", &T::firstChild, "The first child, or nothing.")
      .property("lastChild", &T::lastChild, "The last child, or nothing.")
      .property("nextSibling", &T::nextSibling, "The next node under the same parent, or nothing.")
      .property("previousSibling", &T::previousSibling, "The node before under the same parent, or nothing.")
      .property("ownerDocument", &T::ownerDocument, "The document; of a document nothing.")
      .property("childNodes", &T::childNodes, "The children.")
      .property("attributes", &T::attributes, "An element's attributes; of other nodes nothing.")
      .method("hasChildNodes", &T::hasChildNodes, "Whether there are children.")
      .method("appendChild", &T::appendChild, {"newChild"}, "Moves a node behind the last child.")
      .method("removeChild", &T::removeChild, {"oldChild"}, "Takes a child out.")
      .method("selectSingleNode", &T::selectSingleNode, {"queryString"},
              "The first selected node, or nothing.")
      .method("selectNodes", &T::selectNodes, {"queryString"}, "The selected nodes.");
  return members;
}

}  // namespace zelUtilities
