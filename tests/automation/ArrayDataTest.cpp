#include "automation/ArrayData.h"

#include <gtest/gtest.h>

#include "automation/Raised.h"

namespace zelUtilities {
namespace {

TEST(ArrayData, StartsWithEmptyElementsOfItsKind) {
  const auto last = [](VariantKind kind) { return ArrayData::create(kind, {{-1, 2}, {5, 3}})->at(5); };
  EXPECT_EQ(last(VariantKind::String).text(), u"");
  EXPECT_EQ(last(VariantKind::Object).object(), nullptr);
  EXPECT_EQ(last(VariantKind::Byte).kind(), VariantKind::Byte);
  EXPECT_EQ(raised([&] { last(VariantKind::Null); }), 13);
}

TEST(ArrayData, HasAsManyElementsAsItsBoundsSayOrRefuses) {
  const ArrayBound wide{0, 65536};
  EXPECT_EQ(ArrayData::create(VariantKind::Byte, {})->size(), 0U);
  EXPECT_EQ(ArrayData::create(VariantKind::Long, {{0, 3}, {0, 0}})->size(), 0U);
  EXPECT_EQ(raised([&] { ArrayData::create(VariantKind::Byte, {wide, wide, wide, wide}); }), 7);
  EXPECT_EQ(raised([&] { ArrayData::create(VariantKind::Long, {wide, wide, wide, {0, 32768}}); }), 7);
}

TEST(ArrayData, TakesOnlyItsKindWithinItsBounds) {
  const auto numbers = ArrayData::create(VariantKind::Long, {{1, 2}});
  const auto copy = numbers->clone();
  numbers->set(1, 7);
  EXPECT_EQ(numbers->at(1).longInteger(), 7);
  EXPECT_EQ(copy->at(1).longInteger(), 0) << "a clone changes by itself";
  EXPECT_EQ(raised([&] { numbers->set(0, u"7"); }), 13);
  EXPECT_EQ(raised([&] { numbers->set(2, 7); }), 9);
  EXPECT_EQ(raised([&] { numbers->at(2); }), 9);
}

}  // namespace
}  // namespace zelUtilities
