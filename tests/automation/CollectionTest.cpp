#include "automation/Collection.h"

#include <gtest/gtest.h>

#include <functional>

#include "automation/FailingMemory.h"
#include "automation/Raised.h"

namespace zelUtilities {
namespace {

// An item that does something as it ends.
struct Last : Object {
  explicit Last(std::function<void()> action) : atEnd(std::move(action)) {}
  ~Last() override { atEnd(); }
  std::function<void()> atEnd;
};

Ref<Collection> numbered(std::int32_t count) {
  auto numbers = make<Collection>();
  for (std::int32_t i = 1; i <= count; ++i) numbers->Add(i, u"k" + decimalText(i));
  return numbers;
}

TEST(Collection, AnswersByPositionAndByKeyInAnyCase) {
  const auto items = make<Collection>();
  items->Add(u"Arial", u"Font");
  items->Add(u"no key");
  items->Add(u"empty", u"");
  EXPECT_EQ(items->Item(u"FONT").text(), u"Arial");
  EXPECT_EQ(items->Item(u"").text(), u"empty");
  EXPECT_EQ(items->Item(2.4).text(), u"no key");
  EXPECT_EQ(raised([&] { items->Add(1, u"fonT"); }), 457);
  EXPECT_EQ(raised([&] { items->Add(1, 5); }), 13);
  EXPECT_EQ(items->Count(), 3);
  EXPECT_EQ(raised([&] { items->Item(u"2"); }), 5) << "a text is a key, never a position";
  EXPECT_EQ(raised([&] { items->Item(0); }), 9);
  EXPECT_EQ(raised([&] { items->Remove(4); }), 9);
  EXPECT_EQ(raised([&] { items->Item(Variant::date(1)); }), 13);
}

TEST(Collection, AnEnumeratorGoesOnWithTheItemsThatAreThere) {
  auto items = numbered(5);
  const Ref<Enumerator> walk = items->NewEnum();
  std::string seen;
  const auto step = [&seen](Enumerator& some, int times = 1) {
    for (Variant item; times > 0; --times) seen += some.next(item) ? std::to_string(item.longInteger()) : ".";
  };
  step(*walk, 2);
  items->Remove(2);
  EXPECT_EQ(items->find(u"k2"), nullptr);
  items->Remove(u"k3");
  const Ref<Enumerator> copy = walk->clone();
  step(*walk, 3);
  items->Remove(3);
  items->Add(6);
  step(*walk);
  items->Clear();
  items->Add(7);
  items = nullptr;  // the enumerators keep it
  step(*walk);
  step(*copy);
  copy->reset();
  step(*copy);
  EXPECT_EQ(seen, "1245.6777");
}

TEST(Collection, ItemsMayCallBackAsTheyEndAndEndTheirCollection) {
  auto items = numbered(3);
  int ended = 0;
  const auto callBack = [&, self = items.get()] {
    ++ended;
    Variant first;
    self->NewEnum()->next(first);
    if (self->find(u"k1")) self->Remove(u"k1");
    self->Clear();
  };
  items->Add(make<Last>(callBack), u"x");
  items->Add(make<Last>(callBack));
  items->Remove(u"x");
  EXPECT_EQ(ended, 2);
  EXPECT_EQ(items->Count(), 0);
  EXPECT_TRUE(items->tryAdd(1, u"k2"));
  items->Add(make<Last>(callBack));
  items = nullptr;
  EXPECT_EQ(ended, 3);
  for (const bool clears : {false, true}) {
    items = numbered(100);
    items->Add(make<Last>([&] { items = nullptr; }), u"x");
    items->Add(u"after it");
    const FailingMemory failing(clears ? 0 : -1);  // clearing needs no memory
    clears ? items->Clear() : items->Remove(u"x");
    EXPECT_FALSE(items);
  }
}

TEST(Collection, AnAdditionThatFindsNoMemoryChangesNothing) {
  const Variant item = u"an item that is too long to lie inside";
  for (std::int32_t size = 0; size < 40; ++size) {
    for (long allowed = 0, added = 0; !added; ++allowed) {
      const auto items = numbered(size + 1);
      if (size > 2) items->Remove(2), items->at(2);  // which makes the list count its gaps
      const std::int32_t count = items->Count();
      const Variant key = u"a key of some length";
      try {
        const FailingMemory failing(allowed);
        added = items->tryAdd(item, key.text());
      } catch (const std::bad_alloc&) {
      }
      ASSERT_EQ(items->Count(), count + added);
      ASSERT_EQ(items->find(key.text()), added ? items->at(count + 1) : nullptr);
      ASSERT_EQ(items->at(count)->longInteger(), size + 1);
      ASSERT_EQ(items->tryAdd(item, key.text()), !added);
    }
  }
}

}  // namespace
}  // namespace zelUtilities
