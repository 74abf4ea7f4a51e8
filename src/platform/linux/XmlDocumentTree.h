// XmlTree: a document of libxml2 with every node that was created for it or taken out of it, and the few ways
// in which nodes are moved. No node of it ends before the tree does while an XmlNode stands for it.
//
// Names are kept as they are written: a prefix is part of its node's name, and declarations of name spaces
// are ordinary attributes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>

#include "automation/String.h"

// libxml2 calls its structures so.
struct _xmlDoc;   // NOLINT(bugprone-reserved-identifier)
struct _xmlNode;  // NOLINT(bugprone-reserved-identifier)

namespace zelUtilities {

class XmlTree {
 public:
  XmlTree();  // an empty document
  // Takes the document over.
  explicit XmlTree(_xmlDoc* document) : document_(document) {}
  ~XmlTree();
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;

  _xmlDoc* document() const { return document_; }
  // A number that changes whenever nodes are moved, for those who remember places.
  std::uint32_t changes() const { return changes_; }

  // Takes over a new node without a parent, and returns it.
  _xmlNode* own(_xmlNode* node);
  // Moves a node to the end of a parent's children. Adjacent texts stay apart.
  void append(_xmlNode* parent, _xmlNode* child);
  // For a node that was put into its place otherwise.
  void noteChange() { ++changes_; }
  // Takes a node (or an attribute) out of its parent; it stays in memory.
  void remove(_xmlNode* node);
  // Takes it out and ends it, unless something in it is in use.
  void discard(_xmlNode* node);
  void discardChildren(_xmlNode* node);
  // The object that stood for a node has ended.
  void released(_xmlNode* node) noexcept;

 private:
  void endUnlessUsed(_xmlNode* root) noexcept;

  _xmlDoc* document_;
  std::unordered_set<_xmlNode*> loose_;  // the nodes without a parent
  std::uint32_t changes_ = 0;
};

// The first child of an element, a document or an attribute; nothing for other nodes, such as a document
// type, whose declarations clients do not see.
_xmlNode* firstChildOf(const _xmlNode* node);
// The node behind this one in document order below top, attributes left out; nothing at the end.
_xmlNode* nextBelow(const _xmlNode* top, _xmlNode* node);
// An attribute of an element by its name as written, or nothing.
_xmlNode* attributeOf(const _xmlNode* element, const std::string& name);

// What stands in a document's text; raises 5 for a text that holds what XML does not allow.
std::string xmlCharacters(StringView text);
// The name of an element or attribute; raises E_FAIL for one that XML does not allow.
std::string xmlName(StringView name);

// libxml2's text is unsigned.
inline const unsigned char* asXml(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.c_str());
}
inline std::string_view viewOf(const unsigned char* text) {
  return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

// The numbers that the system's own document raises.
namespace XmlErrorNumber {
inline constexpr std::int32_t Failed = -2147467259;           // 0x80004005
inline constexpr std::int32_t InvalidArgument = -2147024809;  // 0x80070057
}  // namespace XmlErrorNumber

}  // namespace zelUtilities
