#include "platform/linux/XmlDocumentText.h"

#include <libxml/tree.h>

#include <algorithm>
#include <vector>

#include "platform/linux/XmlDocumentTree.h"

namespace zelUtilities {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

// Kept in the field that libxml2 leaves to its users.
enum DroppedSpace : unsigned short { droppedFirst = 1, droppedBehind = 2 };

// Documents and attributes lack the field.
unsigned short droppedBy(const xmlNode* node) {
  const bool hasField =
      node->type != XML_DOCUMENT_NODE && node->type != XML_ATTRIBUTE_NODE && node->type != XML_DTD_NODE;
  return hasField ? node->extra : 0;
}

bool isWhiteSpace(const xmlNode* node) {
  return node->type == XML_TEXT_NODE &&
         viewOf(node->content).find_first_not_of(whiteSpace) == std::string_view::npos;
}

bool preservesSpace(const xmlNode* element, bool inherited) {
  const xmlNode* attribute = attributeOf(element, "xml:space");
  if (!attribute || !attribute->children) return inherited;
  return viewOf(attribute->children->content) == "preserve";
}

bool isUnderPreservedSpace(const xmlNode* node) {
  for (; node && node->type != XML_DOCUMENT_NODE; node = node->parent)
    if (attributeOf(node, "xml:space")) return preservesSpace(node, false);
  return false;
}

void drop(xmlNode* text) {
  if (text->prev) {
    text->prev->extra |= droppedBehind;
  } else {
    text->parent->extra |= droppedFirst;
  }
  xmlUnlinkNode(text);
  xmlFreeNode(text);
}

// What a node's text is made of, and where white space has to stay.
class Collector {
 public:
  void visit(const xmlNode* node) {
    if (node->type == XML_TEXT_NODE) text_.append(viewOf(node->content));
    if (node->type == XML_CDATA_SECTION_NODE) addFixed(viewOf(node->content));
    if (droppedBy(node) & droppedFirst) text_ += ' ';
  }
  void leave(const xmlNode* node) {
    if (droppedBy(node) & droppedBehind) text_ += ' ';
  }
  std::string trimmed() const {
    const std::size_t first = std::min(text_.find_first_not_of(whiteSpace), fixedStart_);
    if (first == std::string::npos) return {};
    const std::size_t last = text_.find_last_not_of(whiteSpace);
    const std::size_t end = std::max(last == std::string::npos ? 0 : last + 1, fixedEnd_);
    return text_.substr(first, end - first);
  }
  std::string all() && { return std::move(text_); }

 private:
  void addFixed(std::string_view text) {
    fixedStart_ = std::min(fixedStart_, text_.size());
    text_.append(text);
    fixedEnd_ = text_.size();
  }

  std::string text_;
  std::size_t fixedStart_ = std::string::npos;
  std::size_t fixedEnd_ = 0;
};

// Goes over all below top in document order, coming back to each node that has children.
void collect(const xmlNode* top, Collector& into) {
  into.visit(top);
  const xmlNode* node = firstChildOf(top);
  while (node) {
    into.visit(node);
    if (const xmlNode* child = firstChildOf(node)) {
      node = child;
      continue;
    }
    into.leave(node);
    while (node != top && !node->next) {
      node = node->parent;
      if (node != top) into.leave(node);
    }
    node = node == top ? nullptr : node->next;
  }
}

}  // namespace

void dropWhiteSpace(xmlDoc* document) {
  auto* top = reinterpret_cast<xmlNode*>(document);
  std::vector<bool> preserved = {false};  // for each element that is open
  xmlNode* node = document->children;
  while (node) {
    if (xmlNode* child = firstChildOf(node)) {
      preserved.push_back(preservesSpace(node, preserved.back()));
      node = child;
      continue;
    }
    for (;;) {
      xmlNode* next = node->next;
      xmlNode* parent = node->parent;
      if (!preserved.back() && isWhiteSpace(node)) drop(node);
      node = next;
      if (node || parent == top) break;
      preserved.pop_back();
      node = parent;
    }
  }
}

std::string textOf(xmlNode* node, bool trimmed) {
  if (node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE) return std::string(viewOf(node->content));
  Collector collector;
  collect(node, collector);
  if (!trimmed || node->type == XML_ATTRIBUTE_NODE || isUnderPreservedSpace(node))
    return std::move(collector).all();
  return collector.trimmed();
}

}  // namespace zelUtilities
