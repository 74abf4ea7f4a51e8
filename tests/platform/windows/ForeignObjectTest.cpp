// Automation objects of the system behind the library's own face.
#include "platform/windows/ForeignObject.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "automation/ArrayData.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "platform/Objects.h"
#include "platform/windows/ProbeDispatch.h"
#include "platform/windows/VariantConversion.h"

namespace zelUtilities {
namespace {

Variant call(Object& object, StringView name, std::vector<Variant> arguments = {}) {
  return object.Invoke(name, InvokeKind::MethodOrGet, arguments);
}

Error raisedBy(const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    return error;
  }
  return {0, {}, {}};
}

HRESULT echo(const ProbeDispatch::Call& call) { return VariantCopyInd(call.result, &call.argument(0)); }

// What comes back when a value goes out and the object returns it.
Variant echoed(const Variant& value) {
  ProbeDispatch probe(echo);
  return call(*make<ForeignObject>(&probe), u"Echo", {value});
}

TEST(ForeignObject, EveryPlainKindGoesOutAndComesBack) {
  const Variant values[] = {{},
                            Variant::null(),
                            std::int16_t{-32768},
                            std::int32_t{-2147483647 - 1},
                            1.5F,
                            -1e300,
                            Variant::currency(-123456789012345),
                            Variant::date(39146.5),
                            std::uint8_t{200},
                            true,
                            false,
                            u"",
                            StringView(u"a\0b\u65E5", 4)};
  for (const Variant& value : values) {
    EXPECT_EQ(typeName(echoed(value)), typeName(value));
    EXPECT_TRUE(value.isNull() || toText(echoed(value)) == toText(value));
  }
  EXPECT_EQ(echoed(Variant::error(-2146828283)).errorCode(), -2146828283);
  EXPECT_EQ(typeName(echoed(nullptr)), u"Nothing");
}

TEST(ForeignObject, ArraysKeepTheirBoundsAndElements) {
  const Variant bytes = echoed(ArrayData::ofBytes(std::vector<std::uint8_t>{1, 0, 255}));
  ASSERT_EQ(bytes.array().elementKind(), VariantKind::Byte);
  EXPECT_EQ(std::vector<std::uint8_t>(bytes.array().bytes().begin(), bytes.array().bytes().end()),
            (std::vector<std::uint8_t>{1, 0, 255}));
  const Variant mixed = echoed(ArrayData::ofVariants({u"two", Variant::null(), bytes}));
  EXPECT_EQ(mixed.array().at(0).text(), u"two");
  EXPECT_TRUE(mixed.array().at(1).isNull());
  EXPECT_EQ(mixed.array().at(2).array().size(), 3U);
  Ref<ArrayData> table = ArrayData::create(VariantKind::String, {{-1, 2}, {5, 3}});
  for (std::size_t i = 0; i < 6; ++i) table->set(i, decimalText(static_cast<long long>(i)));
  const Variant texts = echoed(table);
  EXPECT_EQ(texts.array().bounds()[0].lower, -1);
  EXPECT_EQ(texts.array().bounds()[1].count, 3U);
  EXPECT_EQ(texts.array().at(4).text(), u"4");
  EXPECT_EQ(echoed(ArrayData::create(VariantKind::Double, {})).array().size(), 0U);
}

// What a value of the system's becomes.
Variant converted(VARTYPE kind, const std::function<void(VARIANT&)>& fill) {
  VARIANT value;
  VariantInit(&value);
  fill(value);
  value.vt = kind;
  return fromSystem(value);
}

TEST(ForeignObject, KindsThatOnlyTheSystemHasBecomeTheNearest) {
  EXPECT_EQ(converted(VT_I1, [](VARIANT& v) { v.cVal = -5; }).longInteger(), -5);
  EXPECT_EQ(converted(VT_UI2, [](VARIANT& v) { v.uiVal = 65535; }).longInteger(), 65535);
  EXPECT_EQ(converted(VT_UI4, [](VARIANT& v) { v.ulVal = 5; }).longInteger(), 5);
  EXPECT_EQ(converted(VT_UI4, [](VARIANT& v) { v.ulVal = 4000000000; }).doubleValue(), 4e9);
  EXPECT_EQ(converted(VT_I8, [](VARIANT& v) { v.llVal = -3000000000; }).doubleValue(), -3e9);
  EXPECT_EQ(converted(VT_INT, [](VARIANT& v) { v.intVal = 7; }).longInteger(), 7);
  EXPECT_EQ(converted(VT_DECIMAL, [](VARIANT& v) { VarDecFromR8(2.5, &v.decVal); }).doubleValue(), 2.5);
  std::int16_t referred = 12;
  EXPECT_EQ(converted(VT_BYREF | VT_I2, [&](VARIANT& v) { v.piVal = &referred; }).integer(), 12);
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
  Variant arguments[] = {u"first", Variant::missing(), {}, ArrayData::ofBytes(std::vector<std::uint8_t>(3))};
  EXPECT_TRUE(make<ForeignObject>(&probe)->Invoke(u"x", InvokeKind::Method, arguments).isEmpty());
  EXPECT_EQ(arguments[0].text(), u"first");
  EXPECT_EQ(arguments[2].longInteger(), 99);
  EXPECT_EQ(arguments[3].array().at(1).byte(), 42);
}

TEST(ForeignObject, AnObjectThatTakesNoReferencesGetsValues) {
  ProbeDispatch probe([](const ProbeDispatch::Call& call) {
    return call.argument(0).vt == VT_EMPTY ? S_OK : DISP_E_TYPEMISMATCH;
  });
  EXPECT_TRUE(call(*make<ForeignObject>(&probe), u"x", {Variant()}).isEmpty());
}

TEST(ForeignObject, AnExceptionArrivesWithNumberSourceAndDescription) {
  ProbeDispatch probe([](const ProbeDispatch::Call& call) {
    call.exception->scode = static_cast<SCODE>(0x800A0000 + 58);
    call.exception->bstrSource = SysAllocString(L"Probe");
    call.exception->bstrDescription = SysAllocString(L"It is there already");
    return DISP_E_EXCEPTION;
  });
  const Error error = raisedBy([&] { call(*make<ForeignObject>(&probe), u"x"); });
  EXPECT_EQ(error.number(), 58);
  EXPECT_EQ(error.source(), u"Probe");
  EXPECT_EQ(error.description(), u"It is there already");
}

TEST(ForeignObject, ResultCodesBecomeTheNumbersOfTheRunTime) {
  const std::pair<HRESULT, std::int32_t> cases[] = {{DISP_E_MEMBERNOTFOUND, 438},
                                                    {DISP_E_BADPARAMCOUNT, 450},
                                                    {DISP_E_PARAMNOTOPTIONAL, 449},
                                                    {DISP_E_TYPEMISMATCH, 13},
                                                    {DISP_E_OVERFLOW, 6},
                                                    {DISP_E_BADINDEX, 9},
                                                    {E_OUTOFMEMORY, 7},
                                                    {static_cast<HRESULT>(0x80070003), 76},
                                                    {E_FAIL, E_FAIL}};
  for (const auto& [result, number] : cases) {
    ProbeDispatch probe([code = result](const ProbeDispatch::Call&) { return code; });
    const Error error = raisedBy([&] { call(*make<ForeignObject>(&probe), u"x"); });
    EXPECT_EQ(error.number(), number);
    EXPECT_NE(error.description(), u"");
  }
}

TEST(ForeignObject, HoldsItsObjectForAsLongAsItLives) {
  ProbeDispatch probe(echo);
  {
    Ref<Object> object = make<ForeignObject>(&probe);
    EXPECT_EQ(probe.references(), 2);
    // Passed out and back in, the object is the system's own again.
    const Variant back = call(*object, u"Echo", {object});
    EXPECT_EQ(objectCast<ForeignObject>(back.object())->dispatch(), &probe);
  }
  EXPECT_EQ(probe.references(), 1);
}

TEST(ForeignObject, AnObjectOfOursIsRefusedWithoutABridge) {
  struct Own : Object {};
  ProbeDispatch probe(echo);
  EXPECT_EQ(raisedBy([&] { call(*make<ForeignObject>(&probe), u"x", {make<Own>()}); }).number(), 13);
  EXPECT_EQ(probe.references(), 1);
}

TEST(ForeignObject, WorksWithADictionaryOfTheSystems) {
  const Ref<Object> dictionary = createObject(u"Scripting.Dictionary");
  call(*dictionary, u"Add", {u"one", std::int32_t{1}});
  call(*dictionary, u"Add", {u"two", 2.5});
  EXPECT_EQ(toLong(call(*dictionary, u"Count")), 2);
  EXPECT_EQ(call(*dictionary, u"item", {u"two"}).doubleValue(), 2.5);
  Variant put[] = {u"one", u"first"};
  dictionary->Invoke(u"Item", InvokeKind::Put, put);
  EXPECT_EQ(call(*dictionary, u"", {u"one"}).text(), u"first");
  EXPECT_EQ(call(*dictionary, u"Keys").array().at(1).text(), u"two");
  EXPECT_EQ(raisedBy([&] { call(*dictionary, u"Add", {u"one", 1.0}); }).number(), ErrorNumber::DuplicateKey);

  const Variant enumerator = call(*dictionary, u"NewEnum");
  Variant key;
  ASSERT_TRUE(objectCast<Enumerator>(enumerator.object())->next(key));
  EXPECT_EQ(key.text(), u"one");
  ASSERT_TRUE(objectCast<Enumerator>(enumerator.object())->next(key));
  EXPECT_FALSE(objectCast<Enumerator>(enumerator.object())->next(key));
}

TEST(ForeignObject, ScriptsObjectsAreReadCalledAndWritten) {
  const Ref<Object> engine = createObject(u"MSScriptControl.ScriptControl");
  Variant language[] = {u"JScript"};
  engine->Invoke(u"Language", InvokeKind::Put, language);
  const Ref<Object> control = call(*engine, u"Eval",
                                   {u"({Name: 'n', Font: {Size: 8}, Item: function(k) { return k + '!'; },"
                                    u" Hide: function() { return this.late = 'hidden'; }})"})
                                  .object();
  EXPECT_EQ(call(*control, u"name").text(), u"n");
  EXPECT_EQ(toLong(call(*call(*control, u"Font").object(), u"SIZE")), 8);
  EXPECT_EQ(call(*control, u"Item", {u"k"}).text(), u"k!");
  EXPECT_EQ(raisedBy([&] { call(*control, u"late"); }).number(), 438);
  EXPECT_EQ(call(*control, u"hide").text(), u"hidden");
  EXPECT_EQ(control->Invoke(u"Late", InvokeKind::Get, {}).text(), u"hidden");
  Variant value[] = {true};
  control->Invoke(u"late", InvokeKind::Put, value);
  EXPECT_TRUE(call(*control, u"Late").boolean());
  EXPECT_EQ(raisedBy([&] { control->Invoke(u"Enabled", InvokeKind::Put, value); }).number(), 438);
}

TEST(ForeignObject, AThreadThatIsNotReadyForComIsMadeSo) {
  std::int32_t count = -1;
  std::thread([&] { count = toLong(call(*createObject(u"Scripting.Dictionary"), u"Count")); }).join();
  EXPECT_EQ(count, 0);
}

}  // namespace
}  // namespace zelUtilities
