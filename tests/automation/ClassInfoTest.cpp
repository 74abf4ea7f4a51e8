#include "automation/ClassInfo.h"

#include <gtest/gtest.h>

#include "automation/Binder.h"
#include "automation/Collection.h"
#include "automation/Raised.h"

namespace zelUtilities {

enum class Shade { Dark = 1, Light = 2 };

template <>
const EnumInfo& enumInfo<Shade>() {
  static const EnumInfo info{u"Shade", {{u"Shade_Dark", 1}, {u"Shade_Light", 2}}};
  return info;
}

namespace {

class Lamp : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  std::int16_t Width() const { return width_; }
  void setWidth(std::int16_t value) { width_ = value; }
  Variant Tag() const { return tag_; }
  void setTag(const Variant& value) { tag_ = value; }
  Lamp* Owner() const { return owner_.get(); }
  void setOwner(Lamp* value) { owner_ = value; }
  Ref<Collection> Parts() const { return parts_; }
  String Join(StringView sFirst, const String& sMiddle, Shade eShade, const Variant& vLast) {
    return String(sFirst) + sMiddle + (eShade == Shade::Dark ? u"d" : u"l") +
           (vLast.isMissing() ? u"?" : toText(vLast));
  }
  bool Split(String sText, String& sHead, std::int32_t& lRest) {
    sHead = sText.substr(0, 1);
    lRest += static_cast<std::int32_t>(sText.size()) - 1;
    return true;
  }
  std::int32_t Reset() { return ++resets; }
  bool HasNone(Ref<ArrayData> vList) const { return vList->size() == 0; }

  Event<const Ref<Lamp>&, String, bool&> removing;
  int resets = 0;

 private:
  std::int16_t width_ = 0;
  Variant tag_;
  Ref<Lamp> owner_;
  Ref<Collection> parts_ = make<Collection>();
};

const ClassInfo& Lamp::describeClass() {
  static const ClassInfo info =
      describe<Lamp>("Lamp", "A lamp.")
          .creatable()
          .property("Width", &Lamp::Width, &Lamp::setWidth, "")
          .property("Tag", &Lamp::Tag, &Lamp::setTag, "")
          .propertyRef("Owner", &Lamp::Owner, &Lamp::setOwner, "")
          .property("Parts", &Lamp::Parts, "")
          .method("Join", &Lamp::Join,
                  {"sFirst", arg("sMiddle") = u"-", arg("eShade") = Shade::Light, optional("vLast")}, "")
          .method("Split", &Lamp::Split, {"sText", "sHead", optional("lRest")}, "")
          .method("Reset", &Lamp::Reset, "")
          .method("HasNone", &Lamp::HasNone, {optional("vList")}, "")
          .event("Removing", &Lamp::removing, {"oLamp", "sWhy", "bCancel"}, "");
  return info;
}

class LateBound : public testing::Test {
 protected:
  using Values = std::vector<Variant>;

  Variant call(StringView name, Values& values, InvokeKind kind = InvokeKind::MethodOrGet) {
    return lamp->Invoke(name, kind, values);
  }
  Variant call(StringView name, Values&& values = {}) { return call(name, values); }
  void put(StringView name, Variant value, InvokeKind kind = InvokeKind::Put) {
    lamp->Invoke(name, kind, std::span(&value, 1));
  }
  std::int32_t failure(StringView name, Values values, InvokeKind kind = InvokeKind::MethodOrGet) {
    return raised([&] { call(name, values, kind); });
  }

  Ref<Lamp> lamp = make<Lamp>();
  const Variant none = Variant::missing();
};

constexpr auto putOrPutRef = static_cast<InvokeKind>(12);  // what a script asks that does not know

TEST_F(LateBound, ArgumentsLeftOutTakeTheirDefaults) {
  EXPECT_EQ(call(u"JOIN", {u"a"}).text(), u"a-l?");
  EXPECT_EQ(call(u"join", {u"a", none, 1, 2.5}).text(), u"a-d2.5");
  EXPECT_TRUE(call(u"HasNone").boolean());
}

TEST_F(LateBound, WrongCallsAreRefused) {
  EXPECT_EQ(failure(u"Join", {}), 449);
  EXPECT_EQ(failure(u"Join", {none, u"b"}), 449) << "a required one in the middle";
  EXPECT_EQ(failure(u"Join", {1, 2, 1, 4, 5}), 450);
  EXPECT_EQ(failure(u"Width", {1, 2}, InvokeKind::Put), 450);
  EXPECT_EQ(failure(u"Width", {}, InvokeKind::Put), 449);
  EXPECT_EQ(failure(u"Height", {}), 438);
  EXPECT_EQ(failure(u"", {}), 438) << "no default member";
  EXPECT_EQ(failure(u"Parts", {nullptr}, InvokeKind::PutRef), 438) << "read-only";
  EXPECT_EQ(failure(u"Width", {u"wide"}, InvokeKind::Put), 13);
  EXPECT_EQ(failure(u"Width", {32768}, InvokeKind::Put), 6);
  EXPECT_EQ(failure(u"Owner", {make<Collection>()}, InvokeKind::PutRef), 13) << "another class";
  EXPECT_EQ(lamp->Width(), 0);
}

TEST_F(LateBound, ArgumentsByReferenceAreWrittenBack) {
  Values whole = {12345, 0, u"10"};
  EXPECT_TRUE(call(u"Split", whole).boolean());
  EXPECT_EQ(whole[0].kind(), VariantKind::Long) << "by value";
  EXPECT_EQ(whole[1].text(), u"1");
  EXPECT_EQ(whole[2].longInteger(), 14);
  Values shorter = {u"abc", Variant()};
  call(u"Split", shorter);
  EXPECT_EQ(shorter[1].text(), u"a");
}

TEST_F(LateBound, PropertiesAreWrittenByValueOrByReference) {
  const auto other = make<Lamp>();
  put(u"width", u"12");
  EXPECT_EQ(lamp->Width(), 12);
  for (const InvokeKind kind : {InvokeKind::Put, InvokeKind::PutRef, putOrPutRef}) {
    put(u"Owner", nullptr, InvokeKind::PutRef);
    put(u"Owner", other, kind);
    EXPECT_EQ(lamp->Owner(), other.get());
    put(u"Tag", other, kind);
    EXPECT_EQ(lamp->Tag().object(), other.get());
  }
  put(u"Tag", 5, putOrPutRef);
  EXPECT_EQ(lamp->Tag().longInteger(), 5);
  EXPECT_EQ(failure(u"Owner", {5}, InvokeKind::Put), 438) << "only objects, and by reference";
  EXPECT_EQ(failure(u"Owner", {5}, putOrPutRef), 438);
  EXPECT_EQ(failure(u"Owner", {5}, InvokeKind::PutRef), 13);
}

TEST_F(LateBound, SurplusArgumentsGoToTheDefaultMemberOfTheResult) {
  lamp->Parts()->Add(u"bulb", u"b");
  EXPECT_EQ(call(u"Parts", {u"B"}).text(), u"bulb");
  EXPECT_EQ(call(u"Parts", {1}).text(), u"bulb");
  EXPECT_EQ(failure(u"Parts", {2}), 9);
  EXPECT_EQ(failure(u"Parts", {1, 2}), 450);
  EXPECT_EQ(failure(u"Tag", {1}), 450);
  EXPECT_EQ(failure(u"Owner", {1}), 91);
  EXPECT_EQ(failure(u"Reset", {1}), 450);
  EXPECT_EQ(lamp->resets, 0) << "refused before it is called";
}

TEST_F(LateBound, AGenericListenerReadsAndWritesTheArguments) {
  const EventInfo& removing = Lamp::describeClass().events().at(0);
  Variant answer = u"True", seen;
  const Subscription watch = removing.subscribe(*lamp, [&](std::span<Variant> arguments) {
    EXPECT_EQ(arguments[0].object(), lamp.get());
    seen = arguments[1];
    arguments[1] = u"ignored, since it goes by value";
    arguments[2] = answer;
  });
  int failures = 0;
  String why = u"old";
  bool cancel = false;
  lamp->removing.raise([&] { ++failures; }, lamp, why, cancel);
  EXPECT_TRUE(cancel);
  EXPECT_EQ(seen.text(), u"old");
  answer = u"perhaps";
  lamp->removing.raise([&] { failures += currentError().number(); }, lamp, why, cancel);
  EXPECT_EQ(failures, 13);
  EXPECT_TRUE(cancel);
}

TEST(ClassInfo, DescribesWhatTheTableSays) {
  const ClassInfo& info = Lamp::describeClass();
  const Member& join = *info.find(u"join");
  EXPECT_EQ(join.id, 5);
  EXPECT_EQ(join.parameters[2].type.enumeration()->name, u"Shade");
  EXPECT_EQ(join.parameters[2].defaultValue.longInteger(), 2);
  EXPECT_TRUE(info.find(u"Split")->parameters[1].type.byReference);
  EXPECT_FALSE(info.events()[0].parameters[0].type.byReference);
  EXPECT_EQ(info.find(u"Parts")->result.object(), &Collection::describeClass());
  EXPECT_NE(objectCast<Lamp>(info.create().get()), nullptr);
  EXPECT_EQ(raised([] { Collection::describeClass().create(); }), 429);
}

TEST(ClassInfo, FunctionsNeedNoObjectOfTheirOwn) {
  const ClassInfo info = describeFunctions("Texts", "")
                             .function(
                                 "zel_Upper", +[](const String& s) { return s + u"!"; }, {"s"}, "");
  Variant text = u"a";
  EXPECT_EQ(make<FunctionClass>(info)->Invoke(u"ZEL_upper", InvokeKind::Method, std::span(&text, 1)).text(),
            u"a!");
  EXPECT_TRUE(info.isGlobal());
}

TEST(ClassInfo, RefusesATableThatContradictsItself) {
  const auto described = [](auto add) {
    return raised([&] {
      auto table = describe<Lamp>("Lamp", "");
      add(table);
      const ClassInfo info = table;
    });
  };
  const auto item = [](auto& table, const char* name) { table.item(name, &Lamp::HasNone, {"vList"}, ""); };
  EXPECT_EQ(described([&](auto& table) { item(table, "A"); }), 0);
  EXPECT_EQ(described([&](auto& table) { item(table, "A"), item(table, "B"); }), 51);
  EXPECT_EQ(described([](auto& t) { t.method("A", &Lamp::Reset, "").property("a", &Lamp::Tag, ""); }), 51);
  EXPECT_EQ(described([](auto& t) { t.enumerator(&Lamp::Parts).enumerator(&Lamp::Parts); }), 51);
  EXPECT_EQ(described([](auto& t) { t.method("S", &Lamp::Split, {"a", optional("b"), "c"}, ""); }), 51);
  EXPECT_EQ(described([](auto& t) { t.method("S", &Lamp::Split, {"a", "b", "A"}, ""); }), 51);
  EXPECT_EQ(described([](auto& t) { t.method("S", &Lamp::Split, {"a", "b", arg("c") = u"x"}, ""); }), 51);
  EXPECT_EQ(
      described([](auto& t) {
        t.event("E", &Lamp::removing, {"a", "b", "c"}, "").event("e", &Lamp::removing, {"a", "b", "c"}, "");
      }),
      51);
}

}  // namespace
}  // namespace zelUtilities
