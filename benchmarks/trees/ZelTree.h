// The node list as the tree benchmarks use it, through the calls a client makes.
#pragma once

#include "datalist/zelNodeList.h"

namespace zelBenchmarks {

class ZelTree {
 public:
  using Char = char16_t;
  using View = std::u16string_view;
  static constexpr const char* name = "zel";

  ZelTree() {
    for (const char16_t* key : {u"Value", u"Data", u"Unit"}) {
      zelUtilities::zelNodeListColumns::Definition column;
      column.sKey = key;
      column.eCellType = zelUtilities::ZEL_CellType_String;
      list_->CreateColumn(column);
    }
    listen();
  }

  // A parent of "" makes a root node.
  void add(View parent, View key, View value, View data, View unit) {
    const auto node = list_->Create(parent, key, value);
    const auto cells = node->Cells();
    cells->Item(dataKey_)->setValue(data);
    cells->Item(unitKey_)->setValue(unit);
  }
  std::size_t size() const { return static_cast<std::size_t>(list_->Count()); }
  // Characters of the cell "Data".
  std::size_t dataLength(View key) const {
    return list_->Item(key)->Cells()->Item(dataKey_)->Value().text().size();
  }
  std::unique_ptr<ZelTree> clone() const { return std::unique_ptr<ZelTree>(new ZelTree(list_->Clone())); }
  // The node and all below it; False when it is not there.
  bool remove(View key) { return list_->Remove(key); }
  bool removeFirstChild(View parent) {
    const auto first = list_->Item(parent)->Nodes()->Item(std::int32_t{1});
    return first && list_->Remove(first->Key());
  }
  std::size_t added() const { return added_; }
  std::size_t removed() const { return removed_; }

 private:
  explicit ZelTree(zelUtilities::Ref<zelUtilities::zelNodeList> list) : list_(std::move(list)) { listen(); }
  void listen() {
    onAdded_ = list_->onNodeAdded.subscribe([this](const auto&) { ++added_; });
    onRemoved_ = list_->onNodeRemoved.subscribe([this](View) { ++removed_; });
  }

  zelUtilities::Ref<zelUtilities::zelNodeList> list_ = zelUtilities::make<zelUtilities::zelNodeList>();
  zelUtilities::Variant dataKey_ = u"Data";
  zelUtilities::Variant unitKey_ = u"Unit";
  std::size_t added_ = 0;
  std::size_t removed_ = 0;
  zelUtilities::Subscription onAdded_;
  zelUtilities::Subscription onRemoved_;
};

}  // namespace zelBenchmarks
