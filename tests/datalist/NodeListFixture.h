// What the data list's tests speak in: logs of events and errors as text, one line each, and a check
// of a list's invariants.
#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "automation/Conversions.h"
#include "automation/Raised.h"
#include "datalist/zelNodeList.h"
#include "foundation/ErrorWatch.h"

namespace zelUtilities {

inline std::string utf8(StringView text) { return toUtf8(text); }

// "<source> <number>" for every error reported while it lives.
class ErrorLog {
 public:
  std::string text() const { return text_; }
  std::string lastDescription() const { return description_; }

 private:
  std::string text_;
  std::string description_;
  ErrorWatch watch_{[this](const ErrorReport& report) {
    text_ += toUtf8(report.source) + " " + std::to_string(report.number) + "\n";
    description_ = toUtf8(report.description);
  }};
};

// "<event> <key>" for every event of a list.
class EventLog {
 public:
  explicit EventLog(zelNodeList& list) {
    keep(list.onNodeAdded.subscribe([this](const Ref<zelNode>& node) { add("NodeAdded", node->Key()); }));
    keep(list.onNodeRemoved.subscribe([this](StringView key) { add("NodeRemoved", key); }));
    keep(list.onRemovingNode.subscribe([this](const Ref<zelNode>& node, bool& cancel) {
      add("RemovingNode", node->Key());
      cancel = cancel || cancelled.contains(utf8(node->Key()));
    }));
    keep(list.onNodesCleared.subscribe([this] { add("NodesCleared", u""); }));
    keep(list.onColumnAdded.subscribe(
        [this](const Ref<zelNodeListColumn>& column) { add("ColumnAdded", column->Key()); }));
    keep(list.onColumnRemoved.subscribe([this](StringView key) { add("ColumnRemoved", key); }));
    keep(list.onColumnsCleared.subscribe([this] { add("ColumnsCleared", u""); }));
    keep(list.onRefreshedNode.subscribe(
        [this](const Ref<zelNode>& node) { add("RefreshedNode", node->Key()); }));
  }
  // What happened since the last call.
  std::string take() { return std::exchange(text_, {}); }

  std::set<std::string> cancelled;  // keys whose removal is cancelled

 private:
  void keep(Subscription subscription) { subscriptions_.push_back(std::move(subscription)); }
  void add(const char* event, StringView key) { text_ += event + (" " + utf8(key)) + "\n"; }

  std::string text_;
  std::vector<Subscription> subscriptions_;
};

inline Ref<zelNodeListColumn> addColumn(zelNodeList& list, StringView key,
                                        ZEL_Utilities_CellTypes type = ZEL_CellType_String) {
  zelNodeListColumns::Definition definition;
  definition.sKey = key;
  definition.eCellType = type;
  return list.CreateColumn(definition);
}

// "a(b c(d))" for the tree below some nodes.
inline std::string outline(const zelNodes& nodes) {
  std::string text;
  std::uint32_t slot = nodes.startSlot();
  while (zelNode* node = nodes.nextFrom(slot)) {
    text += (text.empty() ? "" : " ") + utf8(node->Key());
    if (node->childCount() > 0) text += "(" + outline(*node->childrenIfAny()) + ")";
  }
  return text;
}

// The keys that For Each meets.
template <class Walkable>
std::string keysOf(const Walkable& items) {
  std::string text;
  const Ref<Enumerator> walk = items.NewEnum();
  for (Variant item; walk->next(item);) {
    Variant key = item.object()->Invoke(u"Key", InvokeKind::Get, {});
    text += (text.empty() ? "" : " ") + utf8(key.text());
  }
  return text;
}

// Every node once in the index under its key, once under its parent, with a cell per column.
inline void expectSound(zelNodeList& list) {
  std::size_t placed = 0;
  for (std::int32_t position = 1; position <= list.Count(); ++position) {
    zelNode* node = list.item(position);
    ASSERT_NE(node, nullptr) << position;
    EXPECT_EQ(list.find(node->Key()), node);
    const Ref<zelNodes> siblings = node->parent() ? node->parent()->Nodes() : list.RootNodes();
    EXPECT_EQ(siblings->find(node->Key()), node) << utf8(node->Key());
    EXPECT_EQ(node->cellCount(), static_cast<std::uint32_t>(list.Columns()->Count()));
    placed += static_cast<std::size_t>(node->childCount());
  }
  EXPECT_EQ(placed + static_cast<std::size_t>(list.RootNodes()->Count()),
            static_cast<std::size_t>(list.Count()));
}

}  // namespace zelUtilities
