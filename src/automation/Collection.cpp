#include "automation/Collection.h"

#include "automation/Binder.h"
#include "automation/Conversions.h"
#include "automation/Error.h"

namespace zelUtilities {

class Collection::Walk : public Enumerator {
 public:
  explicit Walk(Ref<Collection> collection)
      : collection_(std::move(collection)), cursor_(collection_->items_) {}
  Walk(const Walk& other) : collection_(other.collection_), cursor_(other.cursor_) {}
  Walk& operator=(const Walk&) = delete;

  bool next(Variant& item) override {
    const Entry* entry = cursor_.next();
    if (entry) item = entry->item;
    return entry != nullptr;
  }
  void reset() override { cursor_.reset(); }
  Ref<Enumerator> clone() const override { return Ref<Enumerator>(new Walk(*this)); }

 private:
  Ref<Collection> collection_;
  SlotList<Entry, &Entry::slot>::Cursor cursor_;
};

Collection::~Collection() { Clear(); }

void Collection::append(std::unique_ptr<Entry> entry) {
  if (entry->key) index_.makeRoom();
  items_.append(entry.get());  // the last step that can fail
  if (entry->key) index_.insert(entry.get());
  static_cast<void>(entry.release());  // the list owns it now
}

void Collection::Add(const Variant& vItem, const Variant& vKey) {
  if (vKey.isMissing()) return append(std::make_unique<Entry>(Entry{vItem, {}}));
  if (!vKey.isString()) throw Error(ErrorNumber::TypeMismatch);
  if (!tryAdd(vItem, vKey.text())) throw Error(ErrorNumber::DuplicateKey);
}

bool Collection::tryAdd(const Variant& item, StringView key) {
  const std::uint32_t hash = foldedHash(key);
  if (index_.find(key, hash)) return false;
  append(std::make_unique<Entry>(Entry{item, String(key), hash}));
  return true;
}

Collection::Entry* Collection::entryAt(std::int32_t position) const {
  if (position < 1 || position > Count()) return nullptr;
  return items_.at(static_cast<std::size_t>(position) - 1);
}

Collection::Entry* Collection::lookUp(const Variant& vKey) const {
  if (vKey.isString()) {
    Entry* entry = index_.find(vKey.text());
    return entry ? entry : throw Error(ErrorNumber::InvalidProcedureCall);
  }
  if (!isNumeric(vKey)) throw Error(ErrorNumber::TypeMismatch);
  Entry* entry = entryAt(toLong(vKey));
  return entry ? entry : throw Error(ErrorNumber::SubscriptOutOfRange);
}

Variant Collection::Item(const Variant& vKey) const { return lookUp(vKey)->item; }

void Collection::Remove(const Variant& vKey) {
  const std::unique_ptr<Entry> leaving(lookUp(vKey));
  if (leaving->key) index_.erase(leaving.get());
  items_.remove(leaving.get());
}

void Collection::Clear() {
  SlotList<Entry, &Entry::slot> leaving;
  leaving.swap(items_);
  index_.clear();
  std::uint32_t slot = leaving.startSlot();
  while (const Entry* entry = leaving.nextFrom(slot)) delete entry;  // may call back here or end this
}

Ref<Enumerator> Collection::NewEnum() { return Ref<Enumerator>(new Walk(Ref<Collection>(this))); }

const Variant* Collection::find(StringView key) const {
  const Entry* entry = index_.find(key);
  return entry ? &entry->item : nullptr;
}

const Variant* Collection::at(std::int32_t position) const {
  const Entry* entry = entryAt(position);
  return entry ? &entry->item : nullptr;
}

const ClassInfo& Collection::describeClass() {
  static const ClassInfo info =
      describe<Collection>("Collection", "Items in order, found by position or by key.")
          .item("Item", &Collection::Item, {"vKey"}, "The item under a key or at a position.")
          .property("Count", &Collection::Count, "The number of items.")
          .method("Add", &Collection::Add, {"vItem", optional("vKey")}, "Adds an item at the end.")
          .method("Remove", &Collection::Remove, {"vKey"}, "Removes an item.")
          .enumerator(&Collection::NewEnum);
  return info;
}

}  // namespace zelUtilities
