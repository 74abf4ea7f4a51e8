// Automation objects of the system behind the library's own face.
#include "platform/windows/ForeignObject.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/LateBound.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/ProbeDispatch.h"
#include "platform/windows/VariantConversion.h"
#include "support/RaisedError.h"
#include "support/XmlEvents.h"

namespace zelUtilities {
namespace {

LateBound faceOf(ProbeDispatch& probe) { return LateBound(Ref<Object>(make<ForeignObject>(&probe))); }

HRESULT echo(const ProbeDispatch::Call& call) { return VariantCopyInd(call.result, &call.argument(0)); }

// What comes back when a value goes out and the object returns it.
std::string echoed(const Variant& value) {
  ProbeDispatch probe(echo);
  return shown(faceOf(probe)(u"Echo", value));
}

TEST(ForeignObject, EveryKindGoesOutAndComesBack) {
  const Variant nothing = nullptr, bytes = ArrayData::ofBytes(std::vector<std::uint8_t>{1, 0, 255});
  const Ref<ArrayData> table = ArrayData::create(VariantKind::String, {{-1, 2}, {5, 3}});
  for (std::size_t i = 0; i < 6; ++i) table->set(i, decimalText(static_cast<long long>(i)));
  const std::pair<Variant, std::string> cases[] = {
      {{}, "Empty "},
      {Variant::null(), "Null"},
      {nothing, "Nothing"},
      {std::int16_t{-32768}, "Integer -32768"},
      {std::int32_t{-2147483647 - 1}, "Long -2147483648"},
      {1.5F, "Single 1.5"},
      {-1e300, "Double -1E+300"},
      {Variant::currency(-123456789012345), "Currency -12345678901.2345"},
      {Variant::date(39146.5), "Date 3/5/2007 12:00:00 PM"},
      {std::uint8_t{200}, "Byte 200"},
      {true, "Boolean True"},
      {false, "Boolean False"},
      {u"", "String "},
      {StringView(u"a\0b\u65E5", 4), {"String a\0b\u65E5", 13}},
      {Variant::error(-2146828283), "Error -2146828283"},
      {bytes, "Byte()[0:3] {Byte 1, Byte 0, Byte 255}"},
      {ArrayData::ofVariants({u"two", Variant::null(), bytes}),
       "Variant()[0:3] {String two, Null, Byte()[0:3] {Byte 1, Byte 0, Byte 255}}"},
      {table, "String()[-1:2][5:3] {String 0, String 1, String 2, String 3, String 4, String 5}"},
      {ArrayData::create(VariantKind::Double, {}), "Double() {}"}};
  for (const auto& [value, expected] : cases) EXPECT_EQ(echoed(value), expected);
}

// What a value of the system's becomes.
std::string converted(VARTYPE kind, const std::function<void(VARIANT&)>& fill) {
  VARIANT value;
  VariantInit(&value);
  fill(value);
  value.vt = kind;
  return shown(fromSystem(value));
}

TEST(ForeignObject, KindsThatOnlyTheSystemHasBecomeTheNearest) {
  EXPECT_EQ(converted(VT_I1, [](VARIANT& v) { v.cVal = -5; }), "Long -5");
  EXPECT_EQ(converted(VT_UI2, [](VARIANT& v) { v.uiVal = 65535; }), "Long 65535");
  EXPECT_EQ(converted(VT_UI4, [](VARIANT& v) { v.ulVal = 5; }), "Long 5");
  EXPECT_EQ(converted(VT_UI4, [](VARIANT& v) { v.ulVal = 4000000000; }), "Double 4000000000");
  EXPECT_EQ(converted(VT_I8, [](VARIANT& v) { v.llVal = -3000000000; }), "Double -3000000000");
  EXPECT_EQ(converted(VT_INT, [](VARIANT& v) { v.intVal = 7; }), "Long 7");
  EXPECT_EQ(converted(VT_DECIMAL, [](VARIANT& v) { VarDecFromR8(2.5, &v.decVal); }), "Double 2.5");
  std::int16_t referred = 12;
  EXPECT_EQ(converted(VT_BYREF | VT_I2, [&](VARIANT& v) { v.piVal = &referred; }), "Integer 12");
}

TEST(ForeignObject, ABareStreamIsReadAndGivenBack) {
  IStream* stream = nullptr;
  ASSERT_GE(CreateStreamOnHGlobal(nullptr, TRUE, &stream), 0);
  stream->Write("<r>x</r>", 8, nullptr);
  stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
  VARIANT given;
  given.vt = VT_UNKNOWN;
  given.punkVal = stream;
  {
    const Variant taken = fromSystem(given);
    EXPECT_EQ(XmlEvents::of(taken), "<r>x</r>");
    OwnedVariant back;
    toSystem(taken, back);
    EXPECT_EQ(back.vt, VT_UNKNOWN);
    EXPECT_EQ(back.punkVal, stream);
    const Ref<ArrayData> objects = ArrayData::create(VariantKind::Object, {{0, 1}});
    objects->set(0, taken);
    OwnedVariant none;
    EXPECT_EQ(raisedError([&] { toSystem(objects, none); }), "13||Type mismatch");
  }
  EXPECT_EQ(stream->Release(), 0U);
}

TEST(ForeignObject, ArgumentsComeInOrderAndPlacesAreWrittenBack) {
  ProbeDispatch probe([](const ProbeDispatch::Call& call) {
    EXPECT_EQ(call.parameters->cArgs, 4U);
    EXPECT_STREQ(call.argument(0).bstrVal, L"first");
    EXPECT_EQ(call.argument(1).vt, VT_ERROR);  // left out
    EXPECT_EQ(call.argument(1).scode, DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(call.argument(2).vt, VT_BYREF | VT_VARIANT);
    call.argument(2).pvarVal->vt = VT_I4;
    call.argument(2).pvarVal->lVal = 99;
    LONG at = 1;
    std::uint8_t value = 42;
    return SafeArrayPutElement(call.argument(3).pvarVal->parray, &at, &value);
  });
  Variant arguments[] = {u"first", Variant::missing(), {}, ArrayData::ofBytes(std::vector<std::uint8_t>(2))};
  EXPECT_TRUE(faceOf(probe).get()->Invoke(u"x", InvokeKind::Method, arguments).isEmpty());
  EXPECT_EQ(shown(ArrayData::ofVariants({arguments[0], arguments[2], arguments[3]})),
            "Variant()[0:3] {String first, Long 99, Byte()[0:2] {Byte 0, Byte 42}}");
}

TEST(ForeignObject, AnObjectThatTakesNoReferencesGetsValues) {
  ProbeDispatch probe([](const ProbeDispatch::Call& call) {
    return call.argument(0).vt == VT_EMPTY ? S_OK : DISP_E_TYPEMISMATCH;
  });
  EXPECT_TRUE(faceOf(probe)(u"x", Variant()).isEmpty());
}

TEST(ForeignObject, FailuresArriveWithNumberSourceAndDescription) {
  const std::pair<HRESULT, std::string> cases[] = {{DISP_E_EXCEPTION, "58|Probe|It is there already"},
                                                   {DISP_E_MEMBERNOTFOUND, "438||"},
                                                   {DISP_E_BADPARAMCOUNT, "450||"},
                                                   {DISP_E_PARAMNOTOPTIONAL, "449||"},
                                                   {DISP_E_TYPEMISMATCH, "13||"},
                                                   {DISP_E_OVERFLOW, "6||"},
                                                   {DISP_E_BADINDEX, "9||"},
                                                   {E_OUTOFMEMORY, "7||"},
                                                   {static_cast<HRESULT>(0x80070003), "76||"},
                                                   {E_FAIL, "-2147467259||"}};
  for (const auto& [code, expected] : cases) {
    ProbeDispatch probe([result = code](const ProbeDispatch::Call& call) {
      if (result != DISP_E_EXCEPTION) return result;
      call.exception->scode = static_cast<SCODE>(0x800A0000 + 58);
      call.exception->bstrSource = SysAllocString(L"Probe");
      call.exception->bstrDescription = SysAllocString(L"It is there already");
      return result;
    });
    const std::string error = raisedError([&] { faceOf(probe)(u"x"); });
    EXPECT_TRUE(error.starts_with(expected) && error.back() != '|') << error;
  }
}

TEST(ForeignObject, HoldsItsObjectForAsLongAsItLivesAndRefusesOneOfOursWithoutABridge) {
  ProbeDispatch probe(echo);
  {
    const LateBound object = faceOf(probe);
    EXPECT_EQ(probe.references(), 2);
    // Passed out and back in, the object is the system's own again.
    EXPECT_EQ(objectCast<ForeignObject>(object(u"Echo", object).object())->dispatch(), &probe);
    struct Own : Object {};
    EXPECT_EQ(raisedError([&] { object(u"x", make<Own>()); }).substr(0, 3), "13|");
  }
  EXPECT_EQ(probe.references(), 1);
}

TEST(ForeignObject, WorksWithADictionaryOfTheSystems) {
  const LateBound dictionary = LateBound::create(u"Scripting.Dictionary");
  dictionary(u"Add", u"one", std::int32_t{1});
  dictionary(u"Add", u"two", 2.5);
  EXPECT_EQ(shown(dictionary(u"Count")), "Long 2");
  EXPECT_EQ(shown(dictionary(u"item", u"two")), "Double 2.5");
  Variant put[] = {u"one", u"first"};
  dictionary.get()->Invoke(u"Item", InvokeKind::Put, put);
  EXPECT_EQ(dictionary.text(u"", u"one"), u"first");
  EXPECT_EQ(shown(dictionary(u"Keys")), "Variant()[0:2] {String one, String two}");
  EXPECT_EQ(raisedError([&] { dictionary(u"Add", u"one", 1.0); }).substr(0, 4), "457|");
  const Ref<Enumerator> walk = objectCast<Enumerator>(dictionary(u"NewEnum").object());
  Variant key;
  EXPECT_TRUE(walk->next(key));
  EXPECT_EQ(key.text(), u"one");
  EXPECT_TRUE(walk->next(key));
  EXPECT_FALSE(walk->next(key));
}

TEST(ForeignObject, ScriptsObjectsAreReadCalledAndWritten) {
  const LateBound engine = LateBound::create(u"MSScriptControl.ScriptControl");
  engine.put(u"Language", u"JScript");
  const LateBound control =
      engine.object(u"Eval",
                    u"({Name: 'n', Font: {Size: 8}, Item: function(k) { return k + '!'; },"
                    u" Hide: function() { return this.late = 'hidden'; }})");
  EXPECT_EQ(control.text(u"name") + control.object(u"Font").text(u"SIZE") + control.text(u"Item", u"k"),
            u"n8k!");
  EXPECT_EQ(raisedError([&] { control(u"late"); }).substr(0, 4), "438|");
  EXPECT_EQ(control.text(u"hide"), u"hidden");
  EXPECT_EQ(control.get()->Invoke(u"Late", InvokeKind::Get, {}).text(), u"hidden");
  control.put(u"late", true);
  EXPECT_EQ(shown(control(u"Late")), "Boolean True");
  EXPECT_EQ(raisedError([&] { control.put(u"Enabled", true); }).substr(0, 4), "438|");
}

TEST(ForeignObject, AThreadThatIsNotReadyForComIsMadeSo) {
  std::int32_t count = -1;
  std::thread([&] { count = LateBound::create(u"Scripting.Dictionary").number(u"Count"); }).join();
  EXPECT_EQ(count, 0);
}

}  // namespace
}  // namespace zelUtilities
