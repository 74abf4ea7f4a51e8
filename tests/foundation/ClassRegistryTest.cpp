#include "foundation/ClassRegistry.h"

#include "automation/Binder.h"
#include "support/Testing.h"

namespace zelUtilities {

namespace {

struct Lamp : Object {
  void next() {}
};
std::int32_t next(std::int32_t value) { return value + 1; }

// With a lamp, a part that only other objects make, and the functions.
struct Classes : testing::Test {
  static ClassInfo functions(const char* name, const char* function) {
    return describeFunctions(name, "").function(function, &next, {"lValue"}, "");
  }
  inline static const ClassInfo lamp = describe<Lamp>("testLamp", "").creatable();
  // A member of an ordinary class may bear the name of a global operation.
  inline static const ClassInfo part = describe<Lamp>("testPart", "").method("zel_Next", &Lamp::next, "");
  inline static const ClassInfo global = functions("testFunctions", "zel_Next");

  Classes() {
    for (const ClassInfo* info : {&lamp, &global, &part}) registry.add(*info);
  }
  template <class Info>
  std::string refusalOf(const Info& info) {
    return raisedError([&] { registry.add(info); });
  }
  ClassRegistry registry;
};

TEST_F(Classes, AreFoundByNameAndCreatedByProgrammaticIdentifierOnly) {
  EXPECT_EQ(registry.find(u"testLamp"), &lamp);
  EXPECT_EQ(registry.find(u"ZELUTILITIES.TESTLAMP"), &lamp);
  EXPECT_TRUE(objectCast<Lamp>(registry.create(u"zelutilities.TestLamp").get()));
  for (const StringView name : {u"otherLibrary.testLamp", u"zelUtilities.", u""})
    EXPECT_FALSE(registry.find(name)) << toUtf8(name);
  for (const StringView name : {u"testLamp", u"zelUtilities.testPart", u"zelUtilities.testNothing"})
    EXPECT_FALSE(registry.create(name)) << toUtf8(name);
}

TEST_F(Classes, OfFunctionsHaveOneInstanceWhoseOperationsAreFoundByName) {
  const Ref<Object> instance = registry.create(u"zelUtilities.testFunctions");
  EXPECT_EQ(instance, registry.create(u"zelUtilities.testFunctions"));
  const auto found = registry.findOperation(u"ZEL_next");
  ASSERT_TRUE(found && instance);
  EXPECT_EQ(found->functionClass, &global);
  Variant one = 1;
  EXPECT_EQ(instance->Invoke(found->operation->name, InvokeKind::Method, {&one, 1}).longInteger(), 2);
}

TEST_F(Classes, WhoseNamesAreTakenAreRefusedAndLeaveNothingBehind) {
  const ClassInfo sameClass = describe<Lamp>("TESTLAMP", ""),
                  sameOperation = functions("testOther", "ZEL_NEXT");
  const EnumInfo colors{u"TEST_Colors", {{u"TEST_Color_Red", 1}}}, sameName{u"test_Colors", {}};
  const EnumInfo sameValue{u"TEST_Paints", {{u"TEST_Paint_Blue", 1}, {u"test_color_red", 2}}};
  const EnumInfo fresh{u"TEST_Paints", {{u"TEST_Paint_Blue", 1}}};
  EXPECT_EQ(refusalOf(colors), "nothing");
  const std::string refused = "51|ClassRegistry.add|the ", there = " is there already";
  EXPECT_EQ(refusalOf(sameClass), refused + "class TESTLAMP" + there);
  EXPECT_EQ(refusalOf(sameOperation), refused + "global operation ZEL_NEXT" + there);
  EXPECT_EQ(refusalOf(sameName), refused + "enumeration test_Colors" + there);
  EXPECT_EQ(refusalOf(sameValue), refused + "value test_color_red of TEST_Paints" + there);
  EXPECT_EQ(refusalOf(fresh), "nothing");
  EXPECT_EQ(registry.findEnumeration(u"test_paints"), &fresh);
  EXPECT_EQ(registry.find(u"testOther"), nullptr);
  EXPECT_EQ(registry.classes().size(), 3u);
}

}  // namespace
}  // namespace zelUtilities
