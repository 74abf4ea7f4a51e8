#include "datalist/zelNode.h"

#include <new>

#include "automation/Binder.h"
#include "datalist/CellSettings.h"
#include "datalist/zelNodes.h"
#include "foundation/Handled.h"

namespace zelUtilities {

struct zelNode::Extras {
  Variant tag;
  String imageKey;
  String toolTipText;
  std::vector<std::unique_ptr<CellSettings>> cells;  // by position; empty until one is needed
};

namespace {

// Nodes that lost their last reference while another one was being ended: ending them in turn, not
// one inside the other, keeps the stack flat however deep the tree was.
struct EndingNodes {
  zelNode* waiting = nullptr;
  bool isEnding = false;
};
thread_local EndingNodes endingNodes;

const String noText;

}  // namespace

Ref<zelNode> zelNode::create(StringView sKey, const Ref<CellLayout>& layout) {
  if (sKey.size() > static_cast<std::size_t>(INT32_MAX)) throw Error(ErrorNumber::Overflow);
  const NodeMemory::Block block = layout->memory().allocate(blockSize(sKey.size(), layout->size()));
  return Ref<zelNode>(new (block.place) zelNode(sKey, layout, block.offset));
}

zelNode::zelNode(StringView sKey, Ref<CellLayout> layout, std::uint32_t memoryOffset)
    : memoryOffset_(memoryOffset),
      layout_(std::move(layout)),
      cells_(*this),
      keyUnits_(static_cast<std::uint32_t>(sKey.size())) {
  if (!sKey.empty()) std::memcpy(static_cast<void*>(this + 1), sKey.data(), sKey.size() * sizeof(char16_t));
  for (std::uint32_t i = 0; i < cellCount(); ++i) new (firstCell() + i) zelCell(*this);
}

zelNode::~zelNode() {
  for (std::uint32_t i = cellCount(); i-- > 0;) cell(i).~zelCell();
  if (children_) {
    children_->ownerEnds();
    children_->release();
  }
}

void zelNode::destroy(zelNode* node) {
  const Ref<CellLayout> layout = node->layout_;  // whose memory outlives the node
  const NodeMemory::Block block{node, node->memoryOffset_};
  const std::size_t size = blockSize(node->keyUnits_, node->cellCount());
  node->~zelNode();
  layout->memory().free(block, size);
}

void zelNode::lastReference() {
  EndingNodes& ending = endingNodes;
  if (ending.isEnding) {
    nextToEnd_ = std::exchange(ending.waiting, this);
    return;
  }
  ending.isEnding = true;
  destroy(this);
  while (zelNode* next = ending.waiting) {
    ending.waiting = next->nextToEnd_;
    destroy(next);
  }
  ending.isEnding = false;
}

zelNode* zelNode::parent() const { return siblings_ ? siblings_->owner() : nullptr; }

StringView zelNode::ParentKey() const {
  const zelNode* found = parent();
  return found ? found->Key() : StringView();
}

Ref<zelNodes> zelNode::Nodes() {
  if (!children_) {
    Ref<zelNodes> made = make<zelNodes>(this);
    children_ = made.detach();
  }
  return Ref<zelNodes>(children_);
}

std::int32_t zelNode::childCount() const { return children_ ? children_->Count() : 0; }

Ref<zelCell> zelNode::DefaultCell() const { return Ref<zelCell>(cellCount() == 0 ? nullptr : firstCell()); }

zelCell& zelNode::requiredDefaultCell() const {
  return cellCount() == 0 ? throw Error(ErrorNumber::ObjectNotSet) : *firstCell();
}

String zelNode::Text() const { return toText(requiredDefaultCell().Value()); }

void zelNode::setText(StringView value) { requiredDefaultCell().setValue(value); }

zelNode::Extras& zelNode::extras() {
  if (!extras_) extras_ = std::make_unique<Extras>();
  return *extras_;
}

const Variant& zelNode::Tag() const {
  static const Variant noTag;
  return extras_ ? extras_->tag : noTag;
}

void zelNode::setTag(const Variant& value) {
  if (extras_ || !value.isEmpty()) extras().tag = value;
}

const String& zelNode::ImageKey() const { return extras_ ? extras_->imageKey : noText; }

void zelNode::setImageKey(StringView value) {
  if (extras_ || !value.empty()) extras().imageKey = value;
}

const String& zelNode::ToolTipText() const { return extras_ ? extras_->toolTipText : noText; }

void zelNode::setToolTipText(StringView value) {
  if (extras_ || !value.empty()) extras().toolTipText = value;
}

const CellSettings* zelNode::cellSettings(std::uint32_t position) const {
  return extras_ && !extras_->cells.empty() ? extras_->cells[position].get() : nullptr;
}

CellSettings& zelNode::makeCellSettings(std::uint32_t position) {
  std::vector<std::unique_ptr<CellSettings>>& cells = extras().cells;
  if (cells.empty()) cells.resize(cellCount());
  if (!cells[position]) cells[position] = std::make_unique<CellSettings>();
  return *cells[position];
}

void zelNode::CopyCells(const zelNode& sourceNode) {
  handled(u"zelNode.CopyCells", [&] {
    const bool sameLayout = layout_ == sourceNode.layout_;
    for (std::uint32_t i = 0; i < sourceNode.cellCount(); ++i) {
      const zelCell& source = sourceNode.cell(i);
      zelCell* target = nullptr;
      if (sameLayout || (i < cellCount() && equalFolded(layout().key(i), source.Key()))) {
        target = &cell(i);
      } else {
        target = findCell(source.Key());
      }
      if (!target) throw Error(ErrorNumber::ObjectNotSet);
      target->copyFrom(source);
    }
  });
}

void zelNode::clearBackReferences() {
  layout_ = layout_->detached();
  if (extras_) {
    for (const auto& settings : extras_->cells) {
      if (!settings) continue;
      settings->namedNode = CellSettings::NamedNode::Owner;
      settings->otherNode = nullptr;
    }
  }
  if (children_) children_->leaveIndex();
  siblings_ = nullptr;
  cleared_ = true;
}

void zelNode::DeReference() {
  if (cleared_) return;
  handled(u"zelNode.DeReference", [&] {
    struct Level {
      Ref<zelNode> node;
      std::uint32_t slot;
    };
    const auto levelOf = [](zelNode* node) {
      return Level{Ref<zelNode>(node), node->children_ ? node->children_->startSlot() : 0};
    };
    std::vector<Level> path{levelOf(this)};
    while (!path.empty()) {
      Level& level = path.back();
      zelNode* child = level.node->children_ ? level.node->children_->nextFrom(level.slot) : nullptr;
      if (!child) {
        level.node->clearBackReferences();
        path.pop_back();
      } else if (!child->cleared_) {
        path.push_back(levelOf(child));
      }
    }
  });
}

const ClassInfo& zelNode::describeClass() {
  using T = zelNode;
  static const ClassInfo info =
      describe<T>("zelNode", "An entry of a node list.")
          .property("Parent", &T::Parent, "The parent node, or nothing.")
          .property("ParentKey", &T::ParentKey, "The parent node's key, or the empty text.")
          .property("Key", &T::Key, "The node's key.")
          .property("Nodes", &T::Nodes, "The child nodes.")
          .property("Text", &T::Text, &T::setText, "The default cell's value as text.")
          .property("Tag", &T::Tag, &T::setTag, "The client's data.")
          .property("ImageKey", &T::ImageKey, &T::setImageKey, "The key of the image that the client shows.")
          .property("ToolTipText", &T::ToolTipText, &T::setToolTipText, "The node's tool tip.")
          .property("HItem", &T::HItem, &T::setHItem, "The handle of the client's tree item.")
          .property("Expanded", &T::Expanded, &T::setExpanded, "Whether the client shows the node expanded.")
          .property("Changed", &T::Changed, &T::setChanged, "The client's flag.")
          .property("Cells", &T::Cells, "The node's cells, one for each column.")
          .property("DefaultCell", &T::DefaultCell, "The first cell.");
  return info;
}

}  // namespace zelUtilities
