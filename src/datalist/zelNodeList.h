// zelNodeList: a hierarchy of keyed nodes with one cell per column, for grids, trees and settings files.
//
//   auto list = make<zelNodeList>();
//   Subscription watch = list->onNodeAdded.subscribe([](const Ref<zelNode>& node) { ... });
//   list->CreateColumn(u"Name", u"", u"", ZEL_CellType_String);
//   list->Create(u"", u"fonts", u"Fonts");
//   list->Create(u"fonts", u"arial", u"Arial");
//   list->Item(u"ARIAL")->ParentKey();                 // "fonts"
//
//   list->LoadFromINI(u"settings.ini");
//   list->ReadINIValue(u"Paths", u"Home", u"");
//
// Keys are unique in the whole list and compared without regard to letter case. Columns change only
// while the list holds no node. Every change raises its event before the operation returns; a listener
// that throws is logged under the operation that raised the event, and the operation goes on.
//
// Failures never reach the caller: they are logged under "zelNodeList.<operation>", and the operation
// returns what it holds by then (False, nothing, ""). One list serves one thread.
#pragma once

#include "automation/Event.h"
#include "datalist/NodeIndex.h"
#include "datalist/zelNodeListColumns.h"
#include "datalist/zelNodes.h"

namespace zelUtilities {

class zelNodeList final : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  zelNodeList() = default;

  Event<const Ref<zelNode>&> onNodeAdded;            // a new node was stored
  Event<StringView> onNodeRemoved;                   // the node of that key has left the list
  Event<const Ref<zelNode>&, bool&> onRemovingNode;  // setting bCancel keeps the node
  Event<> onNodesCleared;
  Event<const Ref<zelNodeListColumn>&> onColumnAdded;
  Event<StringView> onColumnRemoved;  // the column of that key is about to be removed
  Event<> onColumnsCleared;
  Event<const Ref<zelNode>&> onRefreshedNode;  // a client asks that the node be shown anew

  const Ref<zelNodeListColumns>& Columns() const { return columns_; }
  // While the list holds a node, the three below change nothing and log 0x80040001.
  // Makes a column and raises ColumnAdded; nothing when the key is taken (see zelNodeListColumns::Create).
  Ref<zelNodeListColumn> CreateColumn(const zelNodeListColumns::Definition& definition);
  // Raises ColumnRemoved, then removes it; False, without an event, when there is no such column.
  bool RemoveColumn(const Variant& vKey);
  // Removes all and raises ColumnsCleared.
  void ClearColumns();

  // The node under a key (any letter case) or at a position from 1 in creation order; nothing when
  // there is none.
  Ref<zelNode> Item(const Variant& vKey) const { return Ref<zelNode>(item(vKey)); }
  // Every node in creation order, not by hierarchy. Nodes added and removed meanwhile are respected.
  Ref<Enumerator> NewEnum() const;
  std::int32_t Count() const { return static_cast<std::int32_t>(allNodes_.size()); }
  // What Expanded is for nodes created from now on; initially True.
  bool DefaultExpandedState() const { return defaultExpandedState_; }
  void setDefaultExpandedState(bool value) { defaultExpandedState_ = value; }
  // The nodes without a parent.
  const Ref<zelNodes>& RootNodes() const { return rootNodes_; }

  // Makes a node and raises NodeAdded. A node that has the key already is returned unchanged. An unknown
  // parent key makes a root node. A list without columns gets one text column with the key "" first.
  Ref<zelNode> Create(StringView sParentKey, StringView sKey, StringView sText,
                      const Variant& vTag = Variant::missing(), StringView sImageKey = {},
                      StringView sToolTipText = {});
  // Removes a node, its children before it, the deepest first: RemovingNode for the node, then
  // RemovingNode ... NodeRemoved for each child, then NodeRemoved for the node. False when there is no
  // such node or a listener cancels. Cancelling for a child keeps that child in the list, but its parent
  // goes, and the child is left without parent and columns.
  bool Remove(const Variant& vKey);
  // Removes the first child as long as there is one; False when there is no such node. A listener that
  // cancels the removal of a child makes it run for ever.
  bool RemoveChildNodes(const Variant& vKey);
  // Removes all nodes and raises NodesCleared; the columns stay.
  void Clear();
  // Raises the event RefreshedNode for a node that exists; nothing else happens.
  void RefreshedNode(StringView sNodeKey);
  // A new list with the same columns and nodes. Of a column, what CreateColumn takes is carried over,
  // with the number of decimals as its description; a column whose tag is an object is missing. Of a
  // node, key, text, tag, image, tool tip and the cells' type, editability, list, tool tip and value.
  // Object tags and node lists are shared.
  Ref<zelNodeList> Clone() const;

  // INI text: sections are root nodes, their lines child nodes, in the columns "Value" (the section line
  // or the name before "=") and "Data" (what follows, or a whole line that is no setting). Blank lines
  // and comments are kept. Lines end in CR LF; a repeated name has its last value.

  // Clears the list and its columns and makes the two columns.
  void InitializeAsINI();
  // Replaces the content by that of the file. False, leaving the list empty, when the file is empty or
  // cannot be read.
  bool LoadFromINI(const String& sFilename);
  // Writes the file, whole or not at all. True even when it cannot be written, which is shown to the user.
  bool SaveAsINI(const String& sFilename) const;
  // The value of a name in a section (given without brackets), or the default.
  String ReadINIValue(StringView sSection, StringView sValue, StringView sDefaultData) const;
  // False, adding nothing, when there is no such name.
  bool UpdateINIValue(StringView sSection, StringView sValue, StringView sData);
  // Adds a section of another list with its lines; lines that are here already take its values.
  bool CopySection(const Ref<zelNode>& oSrcSection);

  // For the library's own use: without counting, nothing when there is none.
  zelNode* item(const Variant& vKey) const;
  zelNode* find(StringView key) const { return allNodes_.find(key); }
  using Slots = NodeIndex::Slots;
  Slots& slots() const { return allNodes_.slots(); }

 private:
  struct NodeTexts {
    StringView parentKey = {};
    StringView key = {};
    Variant text = {};
    const Variant* tag = nullptr;
    StringView imageKey = {};
    StringView toolTipText = {};
  };
  struct Removal;
  class IniReader;

  ~zelNodeList() override;

  void requireEmptyList(StringView source) const;
  void requireColumns();
  const Ref<CellLayout>& layout();
  zelNode* findParent(StringView key);
  Ref<zelNode> createNode(const NodeTexts& texts) { return createNode(texts, foldedHash(texts.key)); }
  Ref<zelNode> createNode(const NodeTexts& texts, std::uint32_t keyHash);
  Ref<zelNode> store(Ref<zelNode> node, std::uint32_t hash, zelNode* parent);
  bool keepsAway(const Ref<zelNode>& node);
  bool removeTree(const Ref<zelNode>& root);
  bool removeSingle(const Ref<zelNode>& node);
  void cloneColumns(zelNodeList& copy) const;
  void cloneNodes(zelNodeList& copy) const;
  zelNode* findEntry(StringView sSection, StringView sValue) const;

  Ref<zelNodeListColumns> columns_ = make<zelNodeListColumns>();
  NodeIndex allNodes_;
  Ref<zelNodes> rootNodes_ = make<zelNodes>(nullptr);
  bool defaultExpandedState_ = true;
  Ref<CellLayout> layout_;  // of the columns at layoutRevision_
  std::uint32_t layoutRevision_ = 0;
  zelNode* lastParent_ = nullptr;  // of the latest node; nothing once any node has left
};

}  // namespace zelUtilities
