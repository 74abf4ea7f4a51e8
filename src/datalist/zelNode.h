// zelNode: one entry of a node list: a key, a text, a place in the hierarchy, one cell per column.
//
//   Ref<zelNode> node = list->Create(u"", u"a", u"Text of a");
//   node->Cells().Item(u"Width")->setValue(std::int32_t{12});
//   for (...) node->Nodes()                            // the children, in insertion order
//
// Nodes are made by their list and change place only through it. A node that has left its list stays
// readable while somebody holds it: Parent is nothing, its cells know their keys and values only.
//
// A node is one block of memory: the node, its key, its cells. What few nodes have (tag, image,
// tool tip, cell settings, children) is made when first needed.
#pragma once

#include <memory>
#include <vector>

#include "automation/ClassInfo.h"
#include "datalist/CellLayout.h"
#include "datalist/zelCells.h"

namespace zelUtilities {

class zelNodes;

class zelNode final : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Nothing for a root node.
  Ref<zelNode> Parent() const { return Ref<zelNode>(parent()); }
  // "" for a root node.
  StringView ParentKey() const;
  StringView Key() const { return {reinterpret_cast<const char16_t*>(this + 1), keyUnits_}; }
  // The children.
  Ref<zelNodes> Nodes();
  // The default cell's value as text. Raises what the conversion raises (94 for Null).
  String Text() const;
  void setText(StringView value);
  // The client's data; objects are held.
  const Variant& Tag() const;
  void setTag(const Variant& value);
  const String& ImageKey() const;
  void setImageKey(StringView value);
  const String& ToolTipText() const;
  void setToolTipText(StringView value);
  // The handle of the item that a client's tree control made for the node; only stored.
  std::int32_t HItem() const { return hItem_; }
  void setHItem(std::int32_t value) { hItem_ = value; }
  bool Expanded() const { return expanded_ != 0; }
  void setExpanded(bool value) { expanded_ = value; }
  // The client's flag; the library never sets it.
  bool Changed() const { return changed_ != 0; }
  void setChanged(bool value) { changed_ = value; }
  Ref<zelCells> Cells() const { return Ref<zelCells>(const_cast<zelCells*>(&cells_)); }
  // The first column's cell.
  Ref<zelCell> DefaultCell() const;

  // For the library's own use.

  // A new node outside any list, with an empty cell for each key of the layout.
  static Ref<zelNode> create(StringView sKey, const Ref<CellLayout>& layout);
  // Copies type, editability, list, tool tip and value from the other node's cells to those of the same
  // key. A missing cell is logged under "zelNode.CopyCells" and ends the copying.
  void CopyCells(const zelNode& sourceNode);
  // Clears the back references of the node and of all below it, the deepest first.
  void DeReference();

  zelNode* parent() const;
  // The collection that the node stands in; nothing once it has left its list.
  zelNodes* siblings() const { return siblings_; }
  const CellLayout& layout() const { return *layout_; }
  std::uint32_t cellCount() const { return layout_->size(); }
  zelCell& cell(std::uint32_t position) const { return firstCell()[position]; }
  zelCell& requiredDefaultCell() const;
  zelCell* findCell(StringView sColumnKey) const { return cells_.find(sColumnKey); }
  std::uint32_t positionOf(const zelCell& cell) const {
    return static_cast<std::uint32_t>(&cell - firstCell());
  }
  // Nothing while nothing has been set.
  const CellSettings* cellSettings(std::uint32_t position) const;
  CellSettings& makeCellSettings(std::uint32_t position);
  // The children where there have been any, without making the collection.
  zelNodes* childrenIfAny() const { return children_; }
  std::int32_t childCount() const;

  StringView keyText() const { return Key(); }
  std::uint32_t keyHash() const { return foldedHash(Key()); }

 private:
  friend class NodeIndex;
  friend class zelNodes;

  struct Extras;

  zelNode(StringView sKey, Ref<CellLayout> layout, std::uint32_t memoryOffset);
  ~zelNode() override;
  void lastReference() override;
  static void destroy(zelNode* node);

  static std::size_t cellsOffset(std::size_t keyUnits) {
    return (sizeof(zelNode) + keyUnits * sizeof(char16_t) + alignof(zelCell) - 1) & ~(alignof(zelCell) - 1);
  }
  static std::size_t blockSize(std::size_t keyUnits, std::size_t cells) {
    return cellsOffset(keyUnits) + cells * sizeof(zelCell);
  }
  zelCell* firstCell() const {
    return reinterpret_cast<zelCell*>(reinterpret_cast<char*>(const_cast<zelNode*>(this)) +
                                      cellsOffset(keyUnits_));
  }
  Extras& extras();
  void clearBackReferences();

  std::uint32_t expanded_ : 1 = 0;
  std::uint32_t changed_ : 1 = 0;
  std::uint32_t cleared_ : 1 = 0;          // nothing at or below the node refers back
  const std::uint32_t memoryOffset_ : 29;  // of the node's block
  // The collection that the node stands in; while a node is ended, the next one to end.
  union {
    zelNodes* siblings_ = nullptr;
    zelNode* nextToEnd_;
  };
  Ref<CellLayout> layout_;
  zelNodes* children_ = nullptr;  // counted
  std::unique_ptr<Extras> extras_;
  zelCells cells_;
  std::uint32_t keyUnits_;
  std::int32_t hItem_ = 0;
  std::uint32_t indexSlot_ = 0;    // in the list's index
  std::uint32_t siblingSlot_ = 0;  // in siblings_
};

}  // namespace zelUtilities
