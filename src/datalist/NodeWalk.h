// NodeWalk: enumerates nodes in order and goes on with those that are there, whatever is added or
// removed meanwhile.
#pragma once

#include "automation/Enumerator.h"
#include "datalist/zelNode.h"

namespace zelUtilities {

// Holder offers slots() and is held while the enumerator lives.
template <class Holder>
class NodeWalk : public Enumerator {
 public:
  explicit NodeWalk(Ref<Holder> holder) : holder_(std::move(holder)), cursor_(holder_->slots()) {}

  bool next(Variant& item) override {
    zelNode* node = cursor_.next();
    if (node) item = Variant(node);
    return node != nullptr;
  }
  void reset() override { cursor_.reset(); }
  Ref<Enumerator> clone() const override { return Ref<Enumerator>(new NodeWalk(holder_, cursor_)); }

 private:
  using Cursor = typename Holder::Slots::Cursor;

  NodeWalk(Ref<Holder> holder, const Cursor& cursor) : holder_(std::move(holder)), cursor_(cursor) {}

  Ref<Holder> holder_;
  Cursor cursor_;
};

}  // namespace zelUtilities
