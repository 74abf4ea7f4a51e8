// CellLayout: what the cells of a node list's nodes have in common, held once for all of them.
//
// Columns are fixed while a list holds nodes, so one layout serves every node made meanwhile. A
// node that has left its list keeps the keys only, so that its cells stay readable under them.
#pragma once

#include <vector>

#include "automation/KeyIndex.h"
#include "datalist/NodeMemory.h"
#include "datalist/zelNodeListColumns.h"

namespace zelUtilities {

class CellLayout {
 public:
  explicit CellLayout(const zelNodeListColumns& columns);
  CellLayout(const CellLayout&) = delete;
  CellLayout& operator=(const CellLayout&) = delete;

  std::uint32_t size() const { return static_cast<std::uint32_t>(keys_->texts.size()); }
  const String& key(std::uint32_t position) const { return keys_->texts[position].text; }
  // The position (from 0) of a column key in any letter case, or size() when there is none.
  std::uint32_t find(StringView key) const;
  // Nothing in the layout of detached nodes.
  zelNodeListColumn* column(std::uint32_t position) const {
    return columns_.empty() ? nullptr : columns_[position].get();
  }
  bool isDetached() const { return columns_.empty(); }
  // The same keys without the columns, and the same memory.
  Ref<CellLayout> detached();
  // Of the nodes whose cells the layout describes.
  NodeMemory& memory() const { return *memory_; }

  void retain() const { ++references_; }
  void release() const {
    if (--references_ == 0) delete this;
  }

 private:
  struct Key {
    String text;
    std::uint32_t hash;
    StringView keyText() const { return text; }
    std::uint32_t keyHash() const { return hash; }
  };
  struct Keys {
    std::vector<Key> texts;
    KeyIndex<Key> index;  // of many keys only
  };

  CellLayout(std::shared_ptr<const Keys> keys, std::shared_ptr<NodeMemory> memory)
      : keys_(std::move(keys)), memory_(std::move(memory)) {}

  mutable std::uint32_t references_ = 0;
  std::shared_ptr<const Keys> keys_;
  std::shared_ptr<NodeMemory> memory_;
  std::vector<Ref<zelNodeListColumn>> columns_;
  Ref<CellLayout> detached_;
};

}  // namespace zelUtilities
