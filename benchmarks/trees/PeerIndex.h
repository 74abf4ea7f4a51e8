// What every peer tree needs to do the node list's work: an index of its keys without regard to the
// case of ASCII letters, listeners, and the latest parent, which the next node often has too.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace zelBenchmarks {

template <class Char>
Char lowerAscii(Char unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<Char>(unit + 32) : unit;
}

template <class Char>
struct FoldedHash {
  std::size_t operator()(std::basic_string_view<Char> text) const {  // may "throw", so that it is stored
    std::uint64_t hash = 14695981039346656037ULL;
    for (const Char unit : text)
      hash = (hash ^ static_cast<std::uint64_t>(lowerAscii(unit))) * 1099511628211ULL;
    return hash;
  }
};

template <class Char>
struct FoldedEqual {
  bool operator()(std::basic_string_view<Char> left, std::basic_string_view<Char> right) const {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i)
      if (lowerAscii(left[i]) != lowerAscii(right[i])) return false;
    return true;
  }
};

// Keys are views into the tree.
template <class Char, class Node>
class PeerIndex {
 public:
  using View = std::basic_string_view<Char>;

  Node find(View key) const {
    const auto found = nodes_.find(key);
    return found == nodes_.end() ? Node() : found->second;
  }
  Node findParent(View key) {
    if (lastParentKey_.empty() || lastParentKey_ != key) {
      const auto found = nodes_.find(key);
      lastParentKey_ = found->first;
      lastParent_ = found->second;
    }
    return lastParent_;
  }
  void add(View storedKey, Node node) { nodes_.emplace(storedKey, node); }
  void tellAdded(Node node) { onAdded(node); }
  void remove(View storedKey) {
    lastParentKey_ = {};
    nodes_.erase(storedKey);
    onRemoved(storedKey);
  }
  std::size_t size() const { return nodes_.size(); }

  std::size_t added = 0;
  std::size_t removed = 0;

 private:
  std::unordered_map<View, Node, FoldedHash<Char>, FoldedEqual<Char>> nodes_;
  View lastParentKey_;
  Node lastParent_{};
  std::function<void(const Node&)> onAdded = [this](const Node&) { ++added; };
  std::function<void(View)> onRemoved = [this](View) { ++removed; };
};

}  // namespace zelBenchmarks
