#include "system/zelRegistry.h"

#include <gmock/gmock.h>

#include "automation/ArrayData.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/ClassRegistry.h"
#include "foundation/ErrorWatch.h"
#include "platform/Registry.h"
#include "support/MemoryRegistry.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ZEL_Registry_HKEYs user = HKEY_CURRENT_USER;
const String acme = u"Software\\Acme of the tests";

// Runs on the system's own registry, in a key of its own.
class ZelRegistry : public testing::Test {
 protected:
  ZelRegistry() {
    clear();
    zel_CreateRegistryKey(user, acme);
  }
  ~ZelRegistry() override { clear(); }

  static void clear() {
    for (const StringView sub : {u"\\B\\C", u"\\B", u"\\A", u"\\a", u""})
      zel_DeleteRegistryKey(user, acme + String(sub));
  }

  // Stores bytes as they are under a type.
  static void store(const String& name, std::uint32_t type, std::string_view data) {
    RegistryKey key;
    ASSERT_EQ(key.open(user, acme, RegistryAccess::Write), RegistryResult::Success);
    ASSERT_EQ(registry().setValue(key.handle(), name, type, data), RegistryResult::Success);
  }
  static Variant read(const String& name) { return zel_GetRegistryValue(user, acme, name); }

  std::vector<std::string> reports;
  ErrorWatch watch{[this](const ErrorReport& report) {
    reports.push_back(toUtf8(report.source) + "|" + std::to_string(report.number) + "|" +
                      toUtf8(report.moreInfo));
  }};
};

std::int32_t raisedBy(const std::function<void()>& body, StringView description) {
  try {
    body();
  } catch (const Error& error) {
    EXPECT_EQ(error.description(), description);
    return error.number();
  }
  return 0;
}

TEST_F(ZelRegistry, ATextReadsBackWhole) {
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"Name", u"abc"));
  ASSERT_TRUE(read(u"name").isString());
  EXPECT_EQ(read(u"NAME").text(), u"abc");
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"Name", u"Gr\u00F6\u00DFe \u20AC \u4E2D"));
  EXPECT_EQ(read(u"Name").text(), u"Gr\u00F6\u00DFe \u20AC ?");  // the code page has no more
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"", String(5000, u'x')));
  EXPECT_EQ(read(u"").text(), String(5000, u'x'));
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"Name", u""));
  EXPECT_EQ(read(u"Name").text(), u"");
}

TEST_F(ZelRegistry, IntegersOfBothSizesReadBackAsLong) {
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"N", std::int32_t{5}));
  ASSERT_EQ(read(u"N").kind(), VariantKind::Long);
  EXPECT_EQ(read(u"N").longInteger(), 5);
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"N", std::int16_t{-2}));
  ASSERT_EQ(read(u"N").kind(), VariantKind::Long);
  EXPECT_EQ(read(u"N").longInteger(), -2);
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"N", std::int32_t{-2147483647 - 1}));
  EXPECT_EQ(read(u"N").longInteger(), -2147483647 - 1);
}

TEST_F(ZelRegistry, ByteArraysReadBackFromZero) {
  const std::vector<std::uint8_t> bytes = {0, 255, 0, 7};
  Ref<ArrayData> fromOne = ArrayData::create(VariantKind::Byte, {{1, 4}});
  std::copy(bytes.begin(), bytes.end(), fromOne->bytes().begin());
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"B", fromOne));
  const Variant back = read(u"B");
  ASSERT_TRUE(back.isArray());
  EXPECT_EQ(back.array().bounds()[0].lower, 0);
  EXPECT_THAT(std::vector(back.array().bytes().begin(), back.array().bytes().end()), bytes);
  EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"B", ArrayData::ofBytes({})));
  EXPECT_EQ(read(u"B").array().size(), 0u);
}

TEST_F(ZelRegistry, OtherKindsOfValueAreRefusedAndNothingIsWritten) {
  const Variant refused[] = {Variant(),
                             Variant::null(),
                             2.5,
                             true,
                             std::uint8_t{1},
                             Variant::date(1),
                             Variant(nullptr),
                             Variant::missing(),
                             ArrayData::ofVariants({std::int32_t{1}})};
  for (const Variant& value : refused) {
    EXPECT_EQ(raisedBy([&] { zel_SetRegistryValue(user, acme, u"V", value); }, u"Unsupported value type"),
              1001)
        << toUtf8(typeName(value));
  }
  EXPECT_TRUE(read(u"V").isEmpty());
  EXPECT_THAT(reports, IsEmpty());
}

TEST_F(ZelRegistry, NoKeyIsLeftOpen) {
  MemoryRegistry memory;
  const Replaced<Registry> replaced(memory);
  zel_CreateRegistryKey(user, acme);
  EXPECT_THROW(zel_SetRegistryValue(user, acme, u"V", 2.5), Error);
  zel_SetRegistryValue(user, acme, u"V", u"abc");
  zel_GetRegistryValue(user, acme, u"V");
  zel_EnumRegistryKeys(user, acme);
  zel_EnumRegistryValues(user, acme);
  zel_CheckRegistryKey(user, acme);
  zel_DeleteRegistryValue(user, acme, u"V");
  zel_DeleteRegistryKey(user, acme);
  EXPECT_EQ(memory.openKeys(), 0u);
}

TEST_F(ZelRegistry, WritingUnderAMissingKeyCreatesNothing) {
  EXPECT_FALSE(zel_SetRegistryValue(user, acme + u"\\A", u"Name", u"abc"));
  EXPECT_FALSE(zel_SetRegistryValue(user, acme + u"\\A", u"Name", 2.5));  // not even looked at
  EXPECT_FALSE(zel_CheckRegistryKey(user, acme + u"\\A"));
}

TEST_F(ZelRegistry, WhatCannotBeReadIsTheDefault) {
  EXPECT_TRUE(read(u"Missing").isEmpty());
  EXPECT_EQ(zel_GetRegistryValue(user, acme, u"Missing", u"x").text(), u"x");
  EXPECT_EQ(zel_GetRegistryValue(user, acme + u"\\A", u"Missing", u"x").text(), u"x");
  store(u"Q", RegistryType::QWord, std::string(8, '\1'));
  store(u"BE", RegistryType::DWordBigEndian, std::string(4, '\1'));
  EXPECT_TRUE(read(u"Q").isEmpty());
  EXPECT_EQ(zel_GetRegistryValue(user, acme, u"BE", u"x").text(), u"x");
}

TEST_F(ZelRegistry, TextsReadBackWholeHoweverTheyWereStored) {
  store(u"bare", RegistryType::Text, "abc");
  store(u"ended", RegistryType::Text, std::string_view("abc\0", 4));
  store(u"nul", RegistryType::Text, std::string_view("\0", 1));
  store(u"none", RegistryType::Text, "");
  store(u"expand", RegistryType::ExpandableText, std::string_view("%TEMP%\0", 7));
  store(u"multi", RegistryType::MultiText, std::string_view("a\0bc\0\0", 6));
  store(u"empty", RegistryType::MultiText, std::string_view("\0\0", 2));
  EXPECT_EQ(read(u"bare").text(), u"abc");
  EXPECT_EQ(read(u"ended").text(), u"abc");
  EXPECT_EQ(read(u"nul").text(), u"");
  ASSERT_TRUE(read(u"none").isString());
  EXPECT_EQ(read(u"none").text(), u"");
  EXPECT_EQ(read(u"expand").text(), u"%TEMP%");
  EXPECT_EQ(read(u"multi").text(), StringView(u"a\0bc", 4));
  EXPECT_EQ(read(u"empty").text(), u"");
}

// Looks inverted, and is meant: callers read it as "the key was there already".
TEST_F(ZelRegistry, CreatingAKeyIsTrueOnlyWhenItWasThere) {
  EXPECT_FALSE(zel_CreateRegistryKey(user, acme + u"\\B\\C"));
  EXPECT_TRUE(zel_CreateRegistryKey(user, acme + u"\\B\\C"));
  EXPECT_TRUE(zel_CreateRegistryKey(user, acme + u"\\B"));
  EXPECT_TRUE(zel_CheckRegistryKey(user, acme + u"\\b\\c"));
}

TEST_F(ZelRegistry, DeletingAKeyLeavesOneWithSubkeys) {
  zel_CreateRegistryKey(user, acme + u"\\B\\C");
  zel_DeleteRegistryKey(user, acme + u"\\B");
  EXPECT_TRUE(zel_CheckRegistryKey(user, acme + u"\\B"));
  zel_DeleteRegistryKey(user, acme + u"\\B\\C");
  zel_DeleteRegistryKey(user, acme + u"\\B");
  EXPECT_FALSE(zel_CheckRegistryKey(user, acme + u"\\B"));
  zel_DeleteRegistryKey(user, acme + u"\\Missing");
}

TEST_F(ZelRegistry, DeletingAValueTellsWhetherItWasThere) {
  zel_SetRegistryValue(user, acme, u"Name", u"abc");
  EXPECT_TRUE(zel_DeleteRegistryValue(user, acme, u"NAME"));
  EXPECT_FALSE(zel_DeleteRegistryValue(user, acme, u"Name"));
  EXPECT_FALSE(zel_DeleteRegistryValue(user, acme + u"\\A", u"Name"));
  EXPECT_TRUE(read(u"Name").isEmpty());
}

TEST_F(ZelRegistry, SubkeysAreListedUnderTheirNames) {
  zel_CreateRegistryKey(user, acme + u"\\A");
  zel_CreateRegistryKey(user, acme + u"\\B\\C");
  const Ref<Collection> keys = zel_EnumRegistryKeys(user, acme);
  ASSERT_EQ(keys->Count(), 2);
  EXPECT_EQ(toText(keys->Item(u"a")), u"A");
  EXPECT_EQ(toText(keys->Item(u"B")), u"B");
  EXPECT_EQ(zel_EnumRegistryKeys(user, acme + u"\\Missing")->Count(), 0);
  EXPECT_TRUE(zel_EnumRegistryKeys(user, u"")->find(u"Software"));
  EXPECT_THAT(reports, IsEmpty());
}

String dataIn(const Collection& values, StringView name) {
  const Variant entry = values.Item(name);
  EXPECT_EQ(entry.array().size(), 2u);
  EXPECT_EQ(toText(entry.array().at(0)), name);
  const Variant data = entry.array().at(1);
  return data.isArray() ? u"bytes" : toText(data);
}

TEST_F(ZelRegistry, ValuesAreListedWithTheirData) {
  zel_SetRegistryValue(user, acme, u"Name", u"abc");
  zel_SetRegistryValue(user, acme, u"N", std::int32_t{5});
  zel_SetRegistryValue(user, acme, u"B", ArrayData::ofBytes({}));
  zel_SetRegistryValue(user, acme, u"Long", String(9000, u'x'));
  const Ref<Collection> values = zel_EnumRegistryValues(user, acme);
  ASSERT_EQ(values->Count(), 4);
  EXPECT_EQ(dataIn(*values, u"Name"), u"abc");
  EXPECT_EQ(dataIn(*values, u"N"), u"5");
  EXPECT_EQ(dataIn(*values, u"B"), u"bytes");
  EXPECT_EQ(dataIn(*values, u"Long"), String(9000, u'x'));
  EXPECT_EQ(zel_EnumRegistryValues(user, acme + u"\\Missing")->Count(), 0);
  EXPECT_THAT(reports, IsEmpty());
}

// A registry with keys or values of the test's choice, in their order.
struct ListedRegistry : MemoryRegistry {
  std::vector<String> keys;
  std::vector<RegistryValue> values;
  RegistryCode openKey(RegistryHandle, StringView, RegistryAccess, RegistryHandle& key) override {
    key = 1;
    return RegistryResult::Success;
  }
  void closeKey(RegistryHandle) override {}
  RegistryCode createKey(RegistryHandle, StringView, RegistryHandle&, bool&) override {
    return RegistryResult::AccessDenied;
  }
  RegistryCode enumKey(RegistryHandle, std::uint32_t index, String& name) override {
    if (index >= keys.size()) return RegistryResult::NoMoreItems;
    name = keys[index];
    return RegistryResult::Success;
  }
  RegistryCode enumValue(RegistryHandle, std::uint32_t index, RegistryValue& value) override {
    if (index >= values.size()) return RegistryResult::NoMoreItems;
    value = values[index];
    return RegistryResult::Success;
  }
};

RegistryValue textValue(StringView name, std::string_view data) {
  return {String(name), RegistryType::Text, withTerminator(RegistryType::Text, std::string(data))};
}

// Looks wrong, and is meant: the two-element array is reused for every value.
TEST_F(ZelRegistry, AValueOfAnUnreadableTypeKeepsTheDataOfTheOneBefore) {
  ListedRegistry listed;
  listed.values = {{u"first", RegistryType::QWord, "12345678"},
                   textValue(u"second", "abc"),
                   {u"third", RegistryType::QWord, "12345678"}};
  const Replaced<Registry> replaced(listed);
  const Ref<Collection> values = zel_EnumRegistryValues(user, u"Key");
  EXPECT_TRUE(values->Item(u"first").array().at(1).isEmpty());
  EXPECT_EQ(dataIn(*values, u"second"), u"abc");
  EXPECT_EQ(dataIn(*values, u"third"), u"abc");
}

TEST_F(ZelRegistry, NamesThatDifferInCaseAloneEndTheListWithAReportOfItsProgress) {
  ListedRegistry listed;
  listed.keys = {u"One", u"Two", u"TWO", u"Three"};
  listed.values = {textValue(u"v", "1"), textValue(u"V", "2"), textValue(u"w", "3")};
  const Replaced<Registry> replaced(listed);
  EXPECT_EQ(zel_EnumRegistryKeys(user, u"Key")->Count(), 2);
  EXPECT_EQ(zel_EnumRegistryValues(user, u"Key")->Count(), 1);
  EXPECT_THAT(
      reports,
      ElementsAre(
          "zelRegistry.zel_EnumRegistryKeys|457|Index = 2",
          "zelRegistry.zel_EnumRegistryValues|457|Key -- Index = 1 | RetVal = 0Adding to collection"));
}

struct ClosedRegistry : ListedRegistry {
  RegistryCode openKey(RegistryHandle, StringView, RegistryAccess, RegistryHandle&) override {
    return RegistryResult::AccessDenied;
  }
};

TEST_F(ZelRegistry, AKeyThatCannotBeCreatedCountsAsThereWhenItOpens) {
  ListedRegistry opens;
  const Replaced<Registry> replaced(opens);
  EXPECT_TRUE(zel_CreateRegistryKey(user, u"Key"));
}

TEST_F(ZelRegistry, AKeyThatCannotBeCreatedNorOpenedRaises) {
  ClosedRegistry closed;
  const Replaced<Registry> replaced(closed);
  EXPECT_EQ(raisedBy([] { zel_CreateRegistryKey(user, u"Key"); }, u"Unable to create the registry key"),
            1001);
  EXPECT_FALSE(zel_SetRegistryValue(user, u"Key", u"Name", u"abc"));
  EXPECT_FALSE(zel_DeleteRegistryValue(user, u"Key", u"Name"));
  EXPECT_EQ(zel_EnumRegistryValues(user, u"Key")->Count(), 0);
  EXPECT_THAT(reports, IsEmpty());
}

TEST_F(ZelRegistry, ClientsCallItByNameWithADefaultLeftOut) {
  ClassRegistry classes;
  classes.add(zelRegistryInfo());
  const auto operation = classes.findOperation(u"zel_GetRegistryValue");
  ASSERT_TRUE(operation);
  EXPECT_EQ(operation->operation->help, u"Reads a value from the Registry.");
  Variant arguments[] = {std::int32_t{-2147483647}, acme, u"Missing"};
  EXPECT_TRUE(ClassRegistry::instance(*operation->functionClass)
                  ->Invoke(u"zel_GetRegistryValue", InvokeKind::Method, arguments)
                  .isEmpty());
  ASSERT_TRUE(classes.findEnumeration(u"ZEL_Registry_HKEYs"));
  EXPECT_EQ(classes.findEnumeration(u"ZEL_Registry_HKEYs")->values[6].name, u"HKEY_DYN_DATA");
  EXPECT_EQ(classes.findEnumeration(u"ZEL_Registry_HKEYs")->values[6].value, -2147483642);
}

}  // namespace
}  // namespace zelUtilities
