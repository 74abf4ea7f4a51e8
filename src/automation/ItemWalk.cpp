#include "automation/ItemWalk.h"

#include "automation/Conversions.h"
#include "automation/Error.h"

namespace zelUtilities {

namespace {

class PositionWalk final : public Enumerator {
 public:
  PositionWalk(Ref<Object> collection, std::int32_t position)
      : collection_(std::move(collection)), position_(position) {}

  // The count is asked for each time, since items may come and go.
  bool next(Variant& item) override {
    if (position_ >= count()) return false;
    Variant position[] = {++position_};
    item = collection_->Invoke(u"Item", InvokeKind::MethodOrGet, position);
    return true;
  }
  void reset() override { position_ = 0; }
  Ref<Enumerator> clone() const override { return make<PositionWalk>(collection_, position_); }

  std::int32_t count() const { return toLong(collection_->Invoke(u"Count", InvokeKind::MethodOrGet, {})); }

 private:
  Ref<Object> collection_;
  std::int32_t position_;  // of the item given last
};

// Nothing where the object has none.
Ref<Enumerator> enumeratorOf(Object& collection) {
  try {
    const Variant walk = collection.Invoke(u"NewEnum", InvokeKind::MethodOrGet, {});
    return walk.isObject() ? objectCast<Enumerator>(walk.object()) : nullptr;
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

Ref<Enumerator> itemsOf(const Ref<Object>& collection) {
  if (!collection) throw Error(ErrorNumber::ObjectNotSet);
  if (Ref<Enumerator> walk = enumeratorOf(*collection)) return walk;
  const auto walk = make<PositionWalk>(collection, 0);
  static_cast<void>(walk->count());  // an object that is no collection is told now
  return walk;
}

}  // namespace zelUtilities
