// What the data list's tests speak in: a log of events, trees as text and a check of a list's invariants.
#pragma once

#include <set>
#include <vector>

#include "automation/Raised.h"
#include "datalist/zelNodeList.h"
#include "support/Testing.h"

namespace zelUtilities {

inline std::string keyOf(StringView key) { return toUtf8(key); }
template <class Keyed>
std::string keyOf(const Ref<Keyed>& object) {
  return toUtf8(object->Key());
}

// A list's events, one word each: "+a" a node was added, "?a" it is about to be removed, "-a" it was removed,
// "!a" it was refreshed, "clear"; of a column "+|a", "-|a" and "clear|".
class EventLog {
 public:
  explicit EventLog(zelNodeList& list) {
    hear(list.onNodeAdded, "+");
    hear(list.onRemovingNode, "?");
    hear(list.onNodeRemoved, "-");
    hear(list.onRefreshedNode, "!");
    hear(list.onNodesCleared, "clear");
    hear(list.onColumnAdded, "+|");
    hear(list.onColumnRemoved, "-|");
    hear(list.onColumnsCleared, "clear|");
  }
  // What happened since the last call, each with a blank behind it.
  std::string take() { return std::exchange(text_, {}); }

  std::set<std::string> cancelled;  // keys whose removal is cancelled

 private:
  template <class... A>
  void hear(Event<A...>& event, const std::string& mark) {
    subscriptions_.push_back(event.subscribe([this, mark](A... subject) { add(mark, subject...); }));
  }
  void add(const std::string& mark) { text_ += mark + " "; }
  void add(const std::string& mark, const auto& subject) { add(mark + keyOf(subject)); }
  void add(const std::string& mark, const Ref<zelNode>& node, bool& cancel) {
    add(mark, node);
    cancel = cancel || cancelled.contains(keyOf(node));
  }

  std::string text_;
  std::vector<Subscription> subscriptions_;
};

inline zelNodeListColumns::Definition defined(StringView key,
                                              ZEL_Utilities_CellTypes type = ZEL_CellType_Double) {
  zelNodeListColumns::Definition definition;
  definition.sKey = key;
  definition.eCellType = type;
  return definition;
}

// "a(b c(d))" for the tree below some nodes.
inline std::string outline(const zelNodes& nodes) {
  std::string text;
  std::uint32_t slot = nodes.startSlot();
  while (zelNode* node = nodes.nextFrom(slot)) {
    text += (text.empty() ? "" : " ") + keyOf(node->Key());
    if (node->childCount() > 0) text += "(" + outline(*node->childrenIfAny()) + ")";
  }
  return text;
}

// The keys that For Each meets.
template <class Walkable>
std::string keysOf(const Walkable& items) {
  std::string text;
  const Ref<Enumerator> walk = items.NewEnum();
  for (Variant item; walk->next(item);)
    text += (text.empty() ? "" : " ") + propertiesOf(*item.object(), u"Key");
  return text;
}

// Every node once in the index under its key, once under its parent, with a cell per column.
inline void expectSound(zelNodeList& list) {
  std::int32_t placed = list.RootNodes()->Count();
  for (std::int32_t position = 1; position <= list.Count(); ++position) {
    zelNode* node = list.item(position);
    ASSERT_NE(node, nullptr) << position;
    EXPECT_EQ(list.find(node->Key()), node);
    const Ref<zelNodes> siblings = node->parent() ? node->parent()->Nodes() : list.RootNodes();
    EXPECT_EQ(siblings->find(node->Key()), node) << keyOf(node->Key());
    EXPECT_EQ(node->Cells()->Count(), list.Columns()->Count());
    placed += node->childCount();
  }
  EXPECT_EQ(placed, list.Count());
}

}  // namespace zelUtilities
