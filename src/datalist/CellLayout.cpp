#include "datalist/CellLayout.h"

namespace zelUtilities {

namespace {

// Up to so many keys are found faster by looking at each.
constexpr std::size_t fewKeys = 8;

}  // namespace

CellLayout::CellLayout(const zelNodeListColumns& columns) : memory_(std::make_shared<NodeMemory>()) {
  auto keys = std::make_shared<Keys>();
  columns.forEach([&](zelNodeListColumn& column) {
    columns_.emplace_back(&column);
    keys->texts.push_back({column.Key(), foldedHash(column.Key())});
  });
  if (keys->texts.size() > fewKeys)
    for (Key& key : keys->texts) keys->index.insert(&key);
  keys_ = std::move(keys);
}

std::uint32_t CellLayout::find(StringView key) const {
  const std::vector<Key>& texts = keys_->texts;
  if (texts.size() > fewKeys) {
    const Key* found = keys_->index.find(key);
    return found ? static_cast<std::uint32_t>(found - texts.data()) : size();
  }
  // Mostly the key comes in the letters of the column.
  for (const Key& own : texts)
    if (equalUnits(own.text, key)) return static_cast<std::uint32_t>(&own - texts.data());
  std::uint32_t position = 0;
  while (position < texts.size() && !equalFolded(texts[position].text, key)) ++position;
  return position;
}

Ref<CellLayout> CellLayout::detached() {
  if (isDetached()) return Ref<CellLayout>(this);
  if (!detached_) detached_ = Ref<CellLayout>(new CellLayout(keys_, memory_));
  return detached_;
}

}  // namespace zelUtilities
