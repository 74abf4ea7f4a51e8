#include "automation/Error.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "support/RaisedError.h"

namespace zelUtilities {
namespace {

template <class Thrown>
std::string caught(const Thrown& thrown) {
  return raisedError([&] {
    try {
      throw thrown;
    } catch (...) {
      throw currentError();
    }
  });
}

TEST(Error, WhateverIsThrownBecomesAnError) {
  EXPECT_EQ(caught(Error(objectErrorBase + 1, u"zelNode.Key", u"Schl\u00FCssel")),
            "-2147221503|zelNode.Key|Schl\xC3\xBCssel");
  EXPECT_EQ(caught(std::bad_array_new_length()), "7||Out of memory");
  EXPECT_EQ(caught(std::length_error("x")), "6||Overflow");
  EXPECT_EQ(caught(std::runtime_error("broken")), "51||broken");
  EXPECT_EQ(caught(5), "51||Internal error");
  EXPECT_EQ(Error(7).description(), u"Out of memory");
}

TEST(Error, CheckedArithmeticRaisesOverflowBeyondItsWidth) {
  EXPECT_EQ(checkedShort(-32768), -32768);
  EXPECT_EQ(checkedLong(2147483647), 2147483647);
  for (const std::int64_t value : {32768LL, -32769LL, 0x100000001LL})
    EXPECT_EQ(raisedError([&] { checkedShort(value); }), "6||Overflow") << value;
  for (const std::int64_t value : {2147483648LL, -2147483649LL, 0x100000001LL})
    EXPECT_EQ(raisedError([&] { checkedLong(value); }), "6||Overflow") << value;
}

}  // namespace
}  // namespace zelUtilities
