#include "automation/Error.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "automation/Raised.h"

namespace zelUtilities {
namespace {

template <class Thrown>
Error caught(const Thrown& thrown) {
  try {
    throw thrown;
  } catch (...) {
    return currentError();
  }
}

TEST(Error, WhateverIsThrownBecomesAnError) {
  const Error own = caught(Error(objectErrorBase + 1, u"zelNode.Key", u"Schl\u00FCssel"));
  EXPECT_EQ(own.number(), -2147221503);
  EXPECT_EQ(own.source(), u"zelNode.Key");
  EXPECT_STREQ(own.what(), "Schl\xC3\xBCssel");
  EXPECT_EQ(caught(std::bad_array_new_length()).number(), 7);
  EXPECT_EQ(caught(std::length_error("x")).number(), 6);
  EXPECT_EQ(caught(5).number(), 51);
  EXPECT_EQ(caught(std::runtime_error("broken")).description(), u"broken");
}

TEST(Error, CheckedArithmeticRaisesOverflowBeyondItsWidth) {
  EXPECT_EQ(checkedShort(-32768), -32768);
  EXPECT_EQ(checkedLong(2147483647), 2147483647);
  for (const std::int64_t value : {32768LL, -32769LL, 0x100000001LL})
    EXPECT_EQ(raised([&] { checkedShort(value); }), 6) << value;
  for (const std::int64_t value : {2147483648LL, -2147483649LL, 0x100000001LL})
    EXPECT_EQ(raised([&] { checkedLong(value); }), 6) << value;
}

}  // namespace
}  // namespace zelUtilities
