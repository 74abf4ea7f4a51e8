// The same tree as a Boost property tree whose data are the three texts, with an index over it.
#pragma once

#if HAVE_BOOST
#include <array>
#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <string>

#include "PeerIndex.h"

namespace zelBenchmarks {

class PtreeTree {
 public:
  using Char = char;
  using View = std::string_view;
  static constexpr const char* name = "ptree";

  void add(View parent, View key, View value, View data, View unit) {
    Tree* above = parent.empty() ? &root_ : &index_.findParent(parent).at->second;
    const auto at = above->push_back({std::string(key), Tree()});
    at->second.data() = {std::string(value), std::string(data), std::string(unit)};
    index_.add(at->first, {above, at});
    index_.tellAdded({above, at});
  }
  std::size_t size() const { return index_.size(); }
  std::size_t dataLength(View key) const { return index_.find(key).at->second.data()[1].size(); }
  std::unique_ptr<PtreeTree> clone() const {
    auto copy = std::make_unique<PtreeTree>();
    copy->root_ = root_;
    std::vector<Tree*> open{&copy->root_};
    while (!open.empty()) {
      Tree* above = open.back();
      open.pop_back();
      for (auto at = above->begin(); at != above->end(); ++at) {
        copy->index_.add(at->first, {above, at});
        if (!at->second.empty()) open.push_back(&at->second);
      }
    }
    return copy;
  }
  bool remove(View key) {
    const Place place = index_.find(key);
    if (!place.above) return false;
    std::vector<Tree::iterator> open{place.at};
    while (!open.empty()) {
      const Tree::iterator at = open.back();
      open.pop_back();
      for (auto child = at->second.begin(); child != at->second.end(); ++child) open.push_back(child);
      index_.remove(at->first);
    }
    place.above->erase(place.at);
    return true;
  }
  bool removeFirstChild(View parent) {
    const Tree& found = index_.find(parent).at->second;
    return !found.empty() && remove(found.begin()->first);
  }
  std::size_t added() const { return index_.added; }
  std::size_t removed() const { return index_.removed; }

 private:
  using Tree = boost::property_tree::basic_ptree<std::string, std::array<std::string, 3>>;
  struct Place {
    Tree* above = nullptr;
    Tree::iterator at{};
  };

  Tree root_;
  PeerIndex<char, Place> index_;
};

}  // namespace zelBenchmarks
#endif
