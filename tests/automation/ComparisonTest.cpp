#include "automation/Comparison.h"

#include <gtest/gtest.h>

#include "automation/ArrayData.h"
#include "automation/Error.h"

namespace zelUtilities {
namespace {

struct Case {
  Variant left;
  Variant right;
  Ordering expected;
};

TEST(Comparison, OrdersValuesOfAnyKinds) {
  const Case cases[] = {
      {1, 2.5, Ordering::Less},
      {true, 0, Ordering::Less},
      {true, -1, Ordering::Equal},
      {Variant::date(1), 1, Ordering::Equal},
      {Variant(), 0, Ordering::Equal},
      {Variant(), u"", Ordering::Equal},
      {Variant(), u"a", Ordering::Less},
      {Variant(), Variant(), Ordering::Equal},
      {99, u"1", Ordering::Less},
      {u"1", 99, Ordering::Greater},
      {u"a", u"B", Ordering::Greater},
      {u"a", u"ab", Ordering::Less},
      {u"\uFFFD", u"\U00010000", Ordering::Greater},  // unit by unit, not by code point
      {Variant::currency(10000), 1.00001, Ordering::Equal},
      {0.1F, 0.1, Ordering::Equal},
      {0.1F, Variant(0.2), Ordering::Less},
      {Variant::currency(9007199254740993), Variant::currency(9007199254740992), Ordering::Greater},
      {Variant::currency(1), 1e20, Ordering::Less},
      {Variant::error(5), Variant::error(5), Ordering::Equal},
      {Variant::null(), Variant::null(), Ordering::Null},
      {Variant::null(), u"a", Ordering::Null},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(compare(row.left, row.right), row.expected) << &row - cases;
    EXPECT_EQ(equals(row.left, row.right), row.expected == Ordering::Equal) << &row - cases;
  }
}

TEST(Comparison, RefusesWhatHasNoOrder) {
  EXPECT_THROW(compare(ArrayData::ofVariants({}), 1), Error);
  EXPECT_THROW(compare(Variant::null(), ArrayData::ofVariants({})), Error);
  EXPECT_THROW(compare(Variant::error(5), 5), Error);
  EXPECT_THROW(compare(nullptr, 5), Error);
}

}  // namespace
}  // namespace zelUtilities
