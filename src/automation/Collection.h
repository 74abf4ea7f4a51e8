// Collection: items of any kind in order, found by position from 1 or by a unique key.
//
//   auto names = make<Collection>();
//   names->Add(u"Arial", u"font");
//   names->Item(u"FONT");                  // keys are compared without regard to letter case
//   names->Item(std::int32_t{1});
//
// Adding, finding by key and removing take constant time, finding by position at most O(log n).
#pragma once

#include <memory>
#include <optional>

#include "automation/Enumerator.h"
#include "automation/KeyIndex.h"
#include "automation/Object.h"
#include "automation/SlotList.h"
#include "automation/Variant.h"

namespace zelUtilities {

class Collection : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Adds at the end, under a key when one is given. Raises 457 when the key is taken.
  void Add(const Variant& vItem, const Variant& vKey = Variant::missing());
  // The item under a key (a text) or at a position (any number). Raises 5 for an unknown key, 9 for
  // a position out of range, 13 for a key of another kind.
  Variant Item(const Variant& vKey) const;
  // Removes it; raises as Item does.
  void Remove(const Variant& vKey);
  void Clear();
  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }
  Ref<Enumerator> NewEnum();

  // Without errors, for the library's own use: nothing or False where Item or Add would raise.
  const Variant* find(StringView key) const;
  const Variant* at(std::int32_t position) const;
  bool tryAdd(const Variant& item, StringView key);

  ~Collection() override;

 private:
  struct Entry;
  class Walk;

  Entry* lookUp(const Variant& vKey) const;
  Entry* entryAt(std::int32_t position) const;
  void append(std::unique_ptr<Entry> entry);

  struct Entry {
    Variant item;
    std::optional<String> key;
    std::uint32_t hash = 0;
    std::uint32_t slot = 0;

    StringView keyText() const { return *key; }
    std::uint32_t keyHash() const { return hash; }
  };

  mutable SlotList<Entry, &Entry::slot> items_;
  KeyIndex<Entry> index_;
};

}  // namespace zelUtilities
