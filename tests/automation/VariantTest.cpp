#include "automation/Variant.h"

#include <gtest/gtest.h>

#include <array>

#include "automation/ArrayData.h"
#include "automation/Raised.h"

namespace zelUtilities {
namespace {

// Takes a reference to itself as it ends.
struct Thing : Object {
  explicit Thing(int& count) : ended(count) {}
  ~Thing() override {
    ++ended;
    const Variant self = Ref<Object>(this);
  }
  int& ended;
};

TEST(Variant, TextsOfEveryLengthSurviveCopiesAndMoves) {
  for (const std::size_t length : {0, 1, 10, 11, 12, 254, 255, 256, 300}) {
    String text(length, u'x');
    if (length > 1) text[1] = u'\0';
    Variant moved = text;
    const Variant original = std::move(moved);
    Variant copy = original;
    copy = copy.text().substr(length / 2);
    EXPECT_EQ(original.text(), text);
    EXPECT_EQ(copy.text(), text.substr(length / 2));
    EXPECT_TRUE(moved.isEmpty());
  }
}

TEST(Variant, AssigningItselfOrAPartOfItselfKeepsThat) {
  Variant value = ArrayData::ofVariants({u"a text that is too long to lie inside"});
  const Variant& same = value;
  value = same;
  value = value.array().at(0);
  EXPECT_EQ(value.text(), u"a text that is too long to lie inside");
}

TEST(Variant, KeepsKindsApart) {
  EXPECT_TRUE(Variant(u"x").isString()) << "a literal is no Boolean";
  EXPECT_FALSE(Variant::error(5).isMissing() || Variant(Variant::missingCode).isMissing());
  EXPECT_TRUE(Variant(Ref<ArrayData>()).isEmpty());
}

TEST(Variant, AnObjectEndsOnceWithTheLastThatHoldsIt) {
  int ended = 0;
  Variant first = make<Thing>(ended);
  std::array<Variant, 3> copies = {first, first, std::move(first)};
  EXPECT_EQ(copies[2].object()->references(), 3U);
  copies[0] = nullptr;
  copies[1].swap(copies[0]);
  copies[0] = u"text";
  EXPECT_EQ(ended, 0);
  copies[2] = Variant();
  EXPECT_EQ(ended, 1);
}

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
