#include "automation/Comparison.h"

#include <gtest/gtest.h>

#include "automation/ArrayData.h"
#include "automation/Error.h"

namespace zelUtilities {
namespace {

struct Pair {
  Variant left, right;
};

void expectEach(Ordering expected, std::initializer_list<Pair> pairs) {
  for (const Pair& pair : pairs) {
    EXPECT_EQ(compare(pair.left, pair.right), expected) << &pair - pairs.begin();
    EXPECT_EQ(equals(pair.left, pair.right), expected == Ordering::Equal) << &pair - pairs.begin();
  }
}
// A macro, so that several pairs stand on a line.
#define EXPECT_EACH(expected, ...) expectEach(Ordering::expected, {__VA_ARGS__})

TEST(Comparison, OrdersValuesOfAnyKinds) {
  EXPECT_EACH(Less, {1, 2.5}, {true, 0}, {Variant(), u"a"}, {99, u"1"}, {u"a", u"ab"}, {0.1F, 0.2},
              {Variant::currency(1), 1e20});
  EXPECT_EACH(Equal, {true, -1}, {Variant::date(1), 1}, {Variant(), 0}, {Variant(), u""},
              {Variant(), Variant()}, {Variant::currency(10000), 1.00001}, {0.1F, 0.1},
              {Variant::error(5), Variant::error(5)});
  EXPECT_EACH(Greater, {u"1", 99}, {u"a", u"B"},
              {u"\uFFFD", u"\U00010000"},  // unit by unit, not by code point
              {Variant::currency(9007199254740993), Variant::currency(9007199254740992)});
  EXPECT_EACH(Null, {Variant::null(), Variant::null()}, {Variant::null(), u"a"});
}

TEST(Comparison, RefusesWhatHasNoOrder) {
  const Variant array = ArrayData::ofVariants({});
  for (const auto& [left, right] :
       {Pair{array, 1}, Pair{Variant::null(), array}, Pair{Variant::error(5), 5}, Pair{nullptr, 5}})
    EXPECT_THROW(compare(left, right), Error);
}

}  // namespace
}  // namespace zelUtilities
