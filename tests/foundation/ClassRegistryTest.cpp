#include "foundation/ClassRegistry.h"

#include <gtest/gtest.h>

#include "automation/Binder.h"

namespace zelUtilities {

enum class TestColor : std::int32_t { Red = 1, Green = 2 };
template <>
const EnumInfo& enumInfo<TestColor>() {
  static const EnumInfo info{u"TEST_Colors", {{u"TEST_Color_Red", 1}, {u"TEST_Color_Green", 2}}};
  return info;
}

namespace {

class Lamp : public Object {
 public:
  static const ClassInfo& describeClass() {
    static const ClassInfo info = describe<Lamp>("testLamp", "A lamp.")
                                      .creatable()
                                      .property("Color", &Lamp::color, &Lamp::setColor, "Its color.");
    return info;
  }
  const ClassInfo* classInfo() const override { return &describeClass(); }
  TestColor color() const { return color_; }
  void setColor(TestColor value) { color_ = value; }

 private:
  TestColor color_ = TestColor::Red;
};

class Part : public Object {
 public:
  static const ClassInfo& describeClass() {
    static const ClassInfo info = describe<Part>("testPart", "Only a lamp makes it.")
                                      .property("color", &Part::color, "Spelt its own way.");
    return info;
  }
  const ClassInfo* classInfo() const override { return &describeClass(); }
  std::int32_t color() const { return 0; }
};

std::int32_t twice(std::int32_t value) { return 2 * value; }

const ClassInfo& numbersInfo() {
  static const ClassInfo info =
      describeFunctions("testNumbers", "Arithmetic.").function("zel_Twice", &twice, {"lValue"}, "Doubles.");
  return info;
}

std::string refusalOf(ClassRegistry& registry, const ClassInfo& info) {
  try {
    registry.add(info);
  } catch (const Error& error) {
    return error.what();
  }
  return "accepted";
}

TEST(ClassRegistry, FindsAClassWithAndWithoutTheLibrarysName) {
  ClassRegistry registry;
  registry.add(Lamp::describeClass());
  EXPECT_EQ(registry.find(u"testLamp"), &Lamp::describeClass());
  EXPECT_EQ(registry.find(u"ZELUTILITIES.TESTLAMP"), &Lamp::describeClass());
  EXPECT_EQ(registry.find(u"otherLibrary.testLamp"), nullptr);
  EXPECT_EQ(registry.find(u"zelUtilities."), nullptr);
  EXPECT_EQ(registry.find(u""), nullptr);
}

TEST(ClassRegistry, ListsClassesAndTheEnumerationsTheyMentionInOrder) {
  ClassRegistry registry;
  registry.add(Part::describeClass());
  registry.add(Lamp::describeClass());
  ASSERT_EQ(registry.classes().size(), 2u);
  EXPECT_EQ(registry.classes()[0]->name(), u"testPart");
  EXPECT_EQ(registry.classes()[1]->name(), u"testLamp");
  ASSERT_EQ(registry.enumerations().size(), 1u);
  EXPECT_EQ(registry.findEnumeration(u"test_colors"), &enumInfo<TestColor>());
}

TEST(ClassRegistry, CreatesByProgrammaticIdentifierOnly) {
  ClassRegistry registry;
  registry.add(Lamp::describeClass());
  registry.add(Part::describeClass());
  EXPECT_TRUE(objectCast<Lamp>(registry.create(u"zelutilities.TestLamp").get()));
  EXPECT_FALSE(registry.create(u"testLamp"));
  EXPECT_FALSE(registry.create(u"zelUtilities.testPart"));
  EXPECT_FALSE(registry.create(u"zelUtilities.testNothing"));
}

TEST(ClassRegistry, AFunctionClassHasOneInstanceWhoseOperationsAreFoundByName) {
  ClassRegistry registry;
  registry.add(numbersInfo());
  const Ref<Object> instance = registry.create(u"zelUtilities.testNumbers");
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance, registry.create(u"zelUtilities.testNumbers"));

  const auto found = registry.findOperation(u"ZEL_twice");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->functionClass, &numbersInfo());
  Variant arguments[] = {std::int32_t{21}};
  EXPECT_EQ(instance->Invoke(found->operation->name, InvokeKind::Method, arguments).longInteger(), 42);
  EXPECT_FALSE(registry.findOperation(u"Color"));
}

TEST(ClassRegistry, RefusesNamesThatAreTakenAndAddsNothingThen) {
  ClassRegistry registry;
  registry.add(Lamp::describeClass());
  registry.add(numbersInfo());

  static const ClassInfo sameClass = describe<Part>("TESTLAMP", "");
  EXPECT_EQ(refusalOf(registry, sameClass), "the class TESTLAMP is there already");
  static const ClassInfo sameOperation =
      describeFunctions("testOther", "").function("ZEL_TWICE", &twice, {"lValue"}, "");
  EXPECT_EQ(refusalOf(registry, sameOperation), "the global operation ZEL_TWICE is there already");
  EXPECT_EQ(registry.classes().size(), 2u);
  EXPECT_EQ(registry.find(u"testOther"), nullptr);

  EXPECT_EQ(refusalOf(registry, Part::describeClass()), "accepted");  // its "color" is not the lamp's "Color"
}

TEST(ClassRegistry, RefusesAnEnumerationWhoseNameOrValueIsTaken) {
  ClassRegistry registry;
  registry.add(enumInfo<TestColor>());
  const EnumInfo sameName{u"test_Colors", {}};
  EXPECT_THROW(registry.add(sameName), Error);
  const EnumInfo sameValue{u"TEST_Paints", {{u"TEST_Paint_Blue", 1}, {u"test_color_red", 2}}};
  EXPECT_THROW(registry.add(sameValue), Error);
  EXPECT_EQ(registry.enumerations().size(), 1u);
  const EnumInfo fresh{u"TEST_Paints", {{u"TEST_Paint_Blue", 1}}};
  registry.add(fresh);  // the refused ones left nothing behind
  EXPECT_EQ(registry.enumerations().size(), 2u);
}

}  // namespace
}  // namespace zelUtilities
