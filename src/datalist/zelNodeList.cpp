#include "datalist/zelNodeList.h"

#include <vector>

#include "automation/Binder.h"
#include "datalist/KeyedObjects.h"
#include "datalist/NodeWalk.h"
#include "foundation/Handled.h"

namespace zelUtilities {

namespace {

// What a failed listener is logged under: the operation that raised the event.
auto loggedUnder(StringView source) {
  return [source] { logCurrent(source); };
}

zelNodeListColumns::Definition defaultColumn() {
  zelNodeListColumns::Definition definition;
  definition.eCellType = ZEL_CellType_String;
  return definition;
}

}  // namespace

zelNodeList::~zelNodeList() {
  allNodes_.clear();
  rootNodes_->Clear();
  rootNodes_->leaveIndex();
}

// --- Columns ---

void zelNodeList::requireEmptyList(StringView source) const {
  if (allNodes_.size() != 0)
    throw Error(objectErrorBase + 1, source, u"Columns can only be modified with an empty node list.");
}

Ref<zelNodeListColumn> zelNodeList::CreateColumn(const zelNodeListColumns::Definition& definition) {
  const Ref<zelNodeList> self(this);
  Ref<zelNodeListColumn> created;
  handled(u"zelNodeList.CreateColumn", [&] {
    requireEmptyList(u"zelNodeList.CreateColumn");
    created = columns_->Create(definition);
    if (created) onColumnAdded.raise(loggedUnder(u"zelNodeList.CreateColumn"), created);
  });
  return created;
}

bool zelNodeList::RemoveColumn(const Variant& vKey) {
  const Ref<zelNodeList> self(this);
  bool removed = false;
  handled(u"zelNodeList.RemoveColumn", [&] {
    requireEmptyList(u"zelNodeList.RemoveColumn");
    const Ref<zelNodeListColumn> column = columns_->Item(vKey);
    if (!column) return;
    // Before the removal, so that a listener can still look the column up.
    onColumnRemoved.raise(loggedUnder(u"zelNodeList.RemoveColumn"), column->Key());
    removed = columns_->Remove(vKey);
  });
  return removed;
}

void zelNodeList::ClearColumns() {
  const Ref<zelNodeList> self(this);
  handled(u"zelNodeList.ClearColumns", [&] {
    requireEmptyList(u"zelNodeList.ClearColumns");
    columns_->Clear();
    onColumnsCleared.raise(loggedUnder(u"zelNodeList.ClearColumns"));
  });
}

// Called before the first node; the column is that of a list nobody has given columns.
void zelNodeList::requireColumns() {
  if (columns_->Count() == 0) CreateColumn(defaultColumn());
}

const Ref<CellLayout>& zelNodeList::layout() {
  if (!layout_ || layoutRevision_ != columns_->revision()) {
    layout_ = Ref<CellLayout>(new CellLayout(*columns_));
    layoutRevision_ = columns_->revision();
  }
  return layout_;
}

// --- Finding nodes ---

zelNode* zelNodeList::item(const Variant& vKey) const {
  if (vKey.isString()) return find(vKey.text());
  const std::optional<std::int32_t> position = positionOf(vKey);
  return position ? allNodes_.at(*position) : nullptr;
}

Ref<Enumerator> zelNodeList::NewEnum() const {
  return make<NodeWalk<zelNodeList>>(Ref<zelNodeList>(const_cast<zelNodeList*>(this)));
}

zelNode* zelNodeList::findParent(StringView key) {
  if (key.empty()) return nullptr;
  // Most nodes have the same parent as the one before.
  if (!lastParent_ || !equalUnits(lastParent_->Key(), key)) lastParent_ = find(key);
  return lastParent_;
}

// --- Creating nodes ---

Ref<zelNode> zelNodeList::Create(StringView sParentKey, StringView sKey, StringView sText,
                                 const Variant& vTag, StringView sImageKey, StringView sToolTipText) {
  Ref<zelNode> created;
  handled(u"zelNodeList.Create", [&] {
    created = createNode({sParentKey, sKey, sText, &vTag, sImageKey, sToolTipText});
  });
  return created;
}

Ref<zelNode> zelNodeList::createNode(const NodeTexts& texts, std::uint32_t keyHash) {
  const Ref<zelNodeList> self(this);
  requireColumns();
  if (zelNode* existing = allNodes_.find(texts.key, keyHash)) return Ref<zelNode>(existing);

  zelNode* parent = findParent(texts.parentKey);
  Ref<zelNode> node = zelNode::create(texts.key, layout());
  node->requiredDefaultCell().setValue(texts.text);
  node->setImageKey(texts.imageKey);
  if (texts.tag && !texts.tag->isMissing()) node->setTag(*texts.tag);
  node->setToolTipText(texts.toolTipText);
  node->setExpanded(defaultExpandedState_);
  return store(std::move(node), keyHash, parent);
}

Ref<zelNode> zelNodeList::store(Ref<zelNode> node, std::uint32_t hash, zelNode* parent) {
  allNodes_.add(node.get(), hash);
  const Ref<zelNodes> siblings = parent ? parent->Nodes() : rootNodes_;
  siblings->append(node.get(), &allNodes_);
  onNodeAdded.raise(loggedUnder(u"zelNodeList.Create"), node);
  return node;
}

// --- Removing nodes ---

// A node on its way out whose children go first.
struct zelNodeList::Removal {
  explicit Removal(Ref<zelNode> leaving)
      : node(std::move(leaving)), children(node->childrenIfAny()->slots()) {}

  Ref<zelNode> node;
  zelNodes::Slots::Cursor children;
};

// Whether no listener cancels the removal.
bool zelNodeList::keepsAway(const Ref<zelNode>& node) {
  bool cancel = false;
  onRemovingNode.raise(loggedUnder(u"zelNodeList.Remove"), node, cancel);
  return !cancel;
}

bool zelNodeList::removeSingle(const Ref<zelNode>& node) {
  lastParent_ = nullptr;
  const StringView key = node->Key();
  const std::uint32_t hash = foldedHash(key);
  zelNode* parent = node->parent();
  const Ref<zelNodes> siblings(parent ? parent->childrenIfAny() : rootNodes_.get());
  // By key where a listener has moved things meanwhile.
  if (siblings.get() == node->siblings()) {
    siblings->remove(*node);
  } else {
    siblings->Remove(key);
  }
  zelNode* indexed = allNodes_.find(key, hash);
  if (indexed) {
    const Ref<zelNode> leaving(indexed);
    leaving->DeReference();
    allNodes_.remove(indexed, hash);
  }
  onNodeRemoved.raise(loggedUnder(u"zelNodeList.Remove"), key);
  return indexed != nullptr;
}

// Goes down with a path of its own instead of the stack: trees may be a million levels deep.
bool zelNodeList::removeTree(const Ref<zelNode>& root) {
  if (!keepsAway(root)) return false;
  if (root->childCount() == 0) return removeSingle(root);
  std::vector<std::unique_ptr<Removal>> path;
  path.push_back(std::make_unique<Removal>(root));
  for (;;) {
    if (zelNode* next = path.back()->children.next()) {
      const bool isPlaced = next->siblings() == path.back()->node->childrenIfAny();
      const Ref<zelNode> child(isPlaced ? next : find(next->Key()));
      if (!child || !keepsAway(child)) continue;
      if (child->childCount() == 0) {
        removeSingle(child);
      } else {
        path.push_back(std::make_unique<Removal>(child));
      }
    } else {
      const Ref<zelNode> emptied = path.back()->node;
      path.pop_back();
      const bool removed = removeSingle(emptied);
      if (path.empty()) return removed;
    }
  }
}

bool zelNodeList::Remove(const Variant& vKey) {
  const Ref<zelNodeList> self(this);
  bool removed = false;
  handled(u"zelNodeList.Remove", [&] {
    if (const Ref<zelNode> node = Item(vKey)) removed = removeTree(node);
  });
  return removed;
}

bool zelNodeList::RemoveChildNodes(const Variant& vKey) {
  const Ref<zelNodeList> self(this);
  bool found = false;
  handled(u"zelNodeList.RemoveChildNodes", [&] {
    const Ref<zelNode> node = Item(vKey);
    if (!node) return;
    while (node->childCount() > 0) {
      const Ref<zelNode> first(node->childrenIfAny()->at(1));
      handled(u"zelNodeList.Remove", [&] { removeTree(first); });
    }
    found = true;
  });
  return found;
}

void zelNodeList::Clear() {
  const Ref<zelNodeList> self(this);
  lastParent_ = nullptr;
  allNodes_.clear();
  rootNodes_->Clear();
  onNodesCleared.raise(loggedUnder(u"zelNodeList.Clear"));
}

void zelNodeList::RefreshedNode(StringView sNodeKey) {
  const Ref<zelNodeList> self(this);
  handled(u"zelNodeList.RefreshedNode", [&] {
    const Ref<zelNode> node(find(sNodeKey));
    if (node) onRefreshedNode.raise(loggedUnder(u"zelNodeList.RefreshedNode"), node);
  });
}

// --- Cloning ---

void zelNodeList::cloneColumns(zelNodeList& copy) const {
  columns_->forEach([&](const zelNodeListColumn& column) {
    zelNodeListColumns::Definition definition;
    definition.sKey = column.Key();
    definition.sName = column.Name();
    // The decimals stand where the description is expected; clients have come to rely on it.
    definition.sDescription = decimalText(column.Decimals());
    definition.eCellType = column.CellType();
    definition.eColumnAlignment = column.ColumnAlignment();
    definition.lColumnWidth = column.ColumnWidth();
    definition.lColumnMinWidth = column.ColumnMinWidth();
    definition.lColumnMaxWidth = column.ColumnMaxWidth();
    definition.lWidth = column.Width();
    definition.lDecimals = column.Decimals();
    definition.bVisible = column.Visible();
    definition.bSelected = column.Selected();
    definition.bEditable = column.Editable();
    definition.oNodeList = column.NodeList();
    definition.vTag = column.Tag();
    copy.CreateColumn(definition);
  });
}

void zelNodeList::cloneNodes(zelNodeList& copy) const {
  std::uint32_t slot = allNodes_.slots().startSlot();
  while (const zelNode* node = allNodes_.slots().nextFrom(slot)) {
    const Variant& value = node->requiredDefaultCell().Value();
    // A text travels as it is; anything else must be able to become one.
    const Variant text = value.isString() ? value : Variant(toText(value));
    const Ref<zelNode> created = copy.createNode(
        {node->ParentKey(), node->Key(), text, &node->Tag(), node->ImageKey(), node->ToolTipText()});
    created->CopyCells(*node);
  }
}

Ref<zelNodeList> zelNodeList::Clone() const {
  auto copy = make<zelNodeList>();
  handled(u"zelNodeList.Clone", [&] {
    cloneColumns(*copy);
    cloneNodes(*copy);
  });
  return copy;
}

// --- Description ---

namespace {

Ref<zelNodeListColumn> createColumn(zelNodeList& list, const String& sKey, const String& sName,
                                    const String& sDescription, ZEL_Utilities_CellTypes eCellType,
                                    ZEL_Utilities_ColumnAlignments eColumnAlignment,
                                    std::int32_t lColumnWidth, std::int32_t lColumnMinWidth,
                                    std::int32_t lColumnMaxWidth, std::int16_t lWidth, std::int16_t lDecimals,
                                    bool bVisible, bool bSelected, bool bEditable,
                                    const Ref<zelNodeList>& oNodeList, const Variant& vTag) {
  return list.CreateColumn({sKey, sName, sDescription, eCellType, eColumnAlignment, lColumnWidth,
                            lColumnMinWidth, lColumnMaxWidth, lWidth, lDecimals, bVisible, bSelected,
                            bEditable, oNodeList, vTag});
}

}  // namespace

const ClassInfo& zelNodeList::describeClass() {
  using T = zelNodeList;
  static const ClassInfo info =
      describe<T>(
          "zelNodeList",
          "A collection of node objects that can be used to represent any hierarchical data relationship.")
          .creatable()
          .property("Columns", &T::Columns, "A collection of column objects associated with the nodelist")
          .method("RemoveColumn", &T::RemoveColumn, {"vKey"}, "Removes a column of an empty list.")
          .method("ClearColumns", &T::ClearColumns, "Removes all columns of an empty list.")
          .method(
              "CreateColumn", &createColumn,
              {"sKey", optional("sName"), optional("sDescription"), arg("eCellType") = ZEL_CellType_Double,
               arg("eColumnAlignment") = ZEL_ColumnAlignment_Left, arg("lColumnWidth") = std::int32_t{0},
               arg("lColumnMinWidth") = std::int32_t{1440}, arg("lColumnMaxWidth") = std::int32_t{0},
               arg("lWidth") = std::int16_t{0}, arg("lDecimals") = std::int16_t{0}, arg("bVisible") = true,
               arg("bSelected") = true, arg("bEditable") = false, optional("oNodeList"), optional("vTag")},
              "Adds a column to an empty list; nothing when the key is taken.")
          .item("Item", &T::Item, {"vKey"}, "The node under a key or at a position, or nothing.")
          .enumerator(&T::NewEnum)
          .property("DefaultExpandedState", &T::DefaultExpandedState, &T::setDefaultExpandedState,
                    "Whether new nodes are expanded.")
          .property("Count", &T::Count, "The number of nodes.")
          .method("Clear", &T::Clear, "Removes all nodes.")
          .property("RootNodes", &T::RootNodes, "The collection of all nodes that do not have a parent.")
          .method("Create", &T::Create,
                  {"sParentKey", "sKey", "sText", optional("vTag"), arg("sImageKey") = u"",
                   arg("sToolTipText") = u""},
                  "Adds a node; the node that has the key already, if there is one.")
          .method("Remove", &T::Remove, {"vKey"}, "Removes a node and all below it.")
          .method("RemoveChildNodes", &T::RemoveChildNodes, {"vKey"}, "Removes all below a node.")
          .method("RefreshedNode", &T::RefreshedNode, {"sNodeKey"},
                  "Raises the event RefreshedNode for a node.")
          .method("Clone", &T::Clone, "A new list with the same columns and nodes.")
          .method("InitializeAsINI", &T::InitializeAsINI,
                  "Empties the list and gives it the columns of INI text.")
          .method("LoadFromINI", &T::LoadFromINI, {"sFilename"},
                  "Replaces the content by that of an INI file.")
          .method("SaveAsINI", &T::SaveAsINI, {"sFilename"}, "Writes the content to an INI file.")
          .method("ReadINIValue", &T::ReadINIValue, {"sSection", "sValue", "sDefaultData"},
                  "The value of a name in a section, or the default.")
          .method("UpdateINIValue", &T::UpdateINIValue, {"sSection", "sValue", "sData"},
                  "Changes the value of a name; False when there is no such name.")
          .method("CopySection", &T::CopySection, {"oSrcSection"}, "Adds a section of another list.")
          .event("NodeAdded", &T::onNodeAdded, {"oNode"}, "A new node was stored.")
          .event("NodeRemoved", &T::onNodeRemoved, {"sKey"}, "A node has left the list.")
          .event("RemovingNode", &T::onRemovingNode, {"oNode", "bCancel"},
                 "A node is about to be removed; setting bCancel keeps it.")
          .event("NodesCleared", &T::onNodesCleared, "All nodes were removed.")
          .event("ColumnAdded", &T::onColumnAdded, {"oColumn"}, "A column was added.")
          .event("ColumnRemoved", &T::onColumnRemoved, {"sKey"}, "A column is about to be removed.")
          .event("ColumnsCleared", &T::onColumnsCleared, "All columns were removed.")
          .event("RefreshedNode", &T::onRefreshedNode, {"oNode"}, "A client asks that a node be shown anew.");
  return info;
}

}  // namespace zelUtilities
