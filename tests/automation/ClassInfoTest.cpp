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

struct Lamp : Object {
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  std::int16_t Width() const { return width; }
  void setWidth(std::int16_t value) { width = value; }
  Variant Tag() const { return tag; }
  void setTag(const Variant& value) { tag = value; }
  Lamp* Owner() const { return owner.get(); }
  void setOwner(Lamp* value) { owner = value; }
  Ref<Collection> Parts() const { return parts; }
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

  std::int16_t width = 0;
  Variant tag;
  Ref<Lamp> owner;
  Ref<Collection> parts = make<Collection>();
  int resets = 0;
  Event<const Ref<Lamp>&, String, bool&> removing;
  Event<> dimmed;
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

struct LateBound : testing::Test {
  struct Call {
    StringView name;
    std::vector<Variant> values = {};
    InvokeKind kind = InvokeKind::MethodOrGet;
  };
  Variant call(Call each) { return lamp->Invoke(each.name, each.kind, each.values); }
  void expectFailures(std::int32_t number, std::initializer_list<Call> calls) {
    for (const Call& each : calls) EXPECT_EQ(raised([&] { call(each); }), number) << toUtf8(each.name);
  }

  Ref<Lamp> lamp = make<Lamp>();
  const Variant none = Variant::missing();
};

// A macro, so that several calls stand on a line.
#define EXPECT_FAILURES(number, ...) expectFailures(number, {__VA_ARGS__})

constexpr auto put = InvokeKind::Put, putRef = InvokeKind::PutRef;
constexpr auto putOrPutRef = static_cast<InvokeKind>(12);  // what a script asks that does not know

TEST_F(LateBound, ArgumentsTakeTheirDefaultsAndAreWrittenBackWhereByReference) {
  EXPECT_EQ(call({u"JOIN", {u"a"}}).text(), u"a-l?");
  EXPECT_EQ(call({u"join", {u"a", none, 1, 2.5}}).text(), u"a-d2.5");
  EXPECT_TRUE(call({u"HasNone"}).boolean());
  std::vector<Variant> whole = {12345, 0, u"10"};
  EXPECT_TRUE(lamp->Invoke(u"Split", InvokeKind::Method, whole).boolean());
  EXPECT_EQ(whole[0].kind(), VariantKind::Long) << "by value";
  EXPECT_EQ(toText(whole[1]) + toText(whole[2]), u"114");
}

TEST_F(LateBound, WrongCallsAreRefused) {
  // A required argument in the middle; no member, no default member, a read-only one; another class.
  EXPECT_FAILURES(449, {u"Join", {}}, {u"Join", {none, u"b"}}, {u"Width", {}, put});
  EXPECT_FAILURES(450, {u"Join", {1, 2, 1, 4, 5}}, {u"Width", {1, 2}, put});
  EXPECT_FAILURES(438, {u"Height", {}}, {u"", {}}, {u"Parts", {nullptr}, putRef});
  EXPECT_FAILURES(13, {u"Width", {u"wide"}, put}, {u"Owner", {make<Collection>()}, putRef});
  EXPECT_FAILURES(6, {u"Width", {32768}, put});
  EXPECT_EQ(lamp->width, 0);
}

TEST_F(LateBound, PropertiesAreWrittenByValueOrByReference) {
  const auto other = make<Lamp>();
  call({u"width", {u"12"}, put});
  EXPECT_EQ(lamp->width, 12);
  for (const InvokeKind kind : {put, putRef, putOrPutRef}) {
    lamp->owner = nullptr;
    call({u"Owner", {other}, kind});
    EXPECT_EQ(lamp->owner, other);
    call({u"Tag", {other}, kind});
    EXPECT_EQ(lamp->tag.object(), other.get());
  }
  call({u"Tag", {5}, putOrPutRef});
  EXPECT_EQ(lamp->tag.longInteger(), 5);
  EXPECT_FAILURES(438, {u"Owner", {5}, put}, {u"Owner", {5}, putOrPutRef});  // by reference only
  EXPECT_FAILURES(13, {u"Owner", {5}, putRef});
}

TEST_F(LateBound, SurplusArgumentsGoToTheDefaultMemberOfTheResult) {
  lamp->parts->Add(u"bulb", u"b");
  EXPECT_EQ(call({u"Parts", {u"B"}}).text(), u"bulb");
  EXPECT_FAILURES(9, {u"Parts", {2}});
  EXPECT_FAILURES(450, {u"Parts", {1, 2}}, {u"Tag", {1}}, {u"Reset", {1}});
  EXPECT_FAILURES(91, {u"Owner", {1}});
  EXPECT_EQ(lamp->resets, 0) << "refused before it is called";
}

TEST_F(LateBound, AGenericListenerReadsAndWritesTheArguments) {
  String why = u"old";
  const auto raise = [&](bool cancel, const Variant& answer, int failing) {
    const auto listener = [&](std::span<Variant> arguments) {
      EXPECT_EQ(arguments[0].object(), lamp.get());
      EXPECT_EQ(arguments[1].text(), u"old");
      arguments[1] = u"ignored, since it goes by value";
      arguments[2] = answer;
      if (failing != 0) throw Error(failing);
    };
    const auto watch = Lamp::describeClass().events().at(0).subscribe(*lamp, listener);
    int failure = 0;
    lamp->removing.raise([&] { failure = currentError().number(); }, lamp, why, cancel);
    return std::pair(failure, cancel);
  };
  EXPECT_EQ(raise(false, u"True", 0), std::pair(0, true));
  EXPECT_EQ(raise(true, u"perhaps", 0), std::pair(13, true));
  EXPECT_EQ(raise(false, true, 77), std::pair(77, true)) << "what it had written counts";
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
  const auto upper = +[](const String& s) { return s + u"!"; };
  const ClassInfo info = describeFunctions("Texts", "").function("zel_Upper", upper, {"s"}, "");
  Variant text = u"a";
  const Variant result = make<FunctionClass>(info)->Invoke(u"ZEL_upper", InvokeKind::Method, {&text, 1});
  EXPECT_EQ(result.text(), u"a!");
  EXPECT_TRUE(info.isGlobal());
}

// What describing a class by this table raises.
#define DESCRIBING(...) raised([&] { const ClassInfo info = describe<Lamp>("Lamp", "").__VA_ARGS__; })

TEST(ClassInfo, RefusesATableThatContradictsItself) {
  EXPECT_EQ(DESCRIBING(item("A", &Lamp::HasNone, {"v"}, "")), 0);
  EXPECT_EQ(DESCRIBING(item("A", &Lamp::HasNone, {"v"}, "").item("B", &Lamp::HasNone, {"v"}, "")), 51);
  EXPECT_EQ(DESCRIBING(method("A", &Lamp::Reset, "").property("a", &Lamp::Tag, "")), 51);
  EXPECT_EQ(DESCRIBING(enumerator(&Lamp::Parts).enumerator(&Lamp::Parts)), 51);
  EXPECT_EQ(DESCRIBING(event("E", &Lamp::dimmed, "").event("e", &Lamp::dimmed, "")), 51);
  EXPECT_EQ(DESCRIBING(method("S", &Lamp::Split, {"a", optional("b"), "c"}, "")), 51);
  EXPECT_EQ(DESCRIBING(method("S", &Lamp::Split, {"a", "b", "A"}, "")), 51);
  EXPECT_EQ(DESCRIBING(method("S", &Lamp::Split, {"a", "b", arg("c") = u"x"}, "")), 51);
}

}  // namespace
}  // namespace zelUtilities
