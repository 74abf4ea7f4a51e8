#include "system/zelRegistry.h"

#include <gmock/gmock.h>

#include <functional>

#include "automation/ArrayData.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/ClassRegistry.h"
#include "foundation/ErrorWatch.h"
#include "support/MemoryRegistry.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ZEL_Registry_HKEYs user = HKEY_CURRENT_USER;
const String acme = u"Software\\Acme of the tests";

// "Long 5", "Byte() 0 255", "Empty": kind and contents of a value.
std::string described(const Variant& value) {
  std::string text = toUtf8(typeName(value));
  if (value.isEmpty()) return text;
  if (!value.isArray()) return text + " " + toUtf8(toText(value));
  EXPECT_EQ(value.array().bounds()[0].lower, 0);
  for (const std::uint8_t byte : value.array().bytes()) text += " " + std::to_string(byte);
  return text;
}

// Runs on the system's own registry, in a key of its own.
class ZelRegistry : public testing::Test {
 protected:
  ZelRegistry() {
    clear();
    zel_CreateRegistryKey(user, acme);
  }
  ~ZelRegistry() override { clear(); }

  static void clear() {
    for (const StringView sub : {u"\\B\\C", u"\\B", u"\\A", u""})
      zel_DeleteRegistryKey(user, acme + String(sub));
  }

  static std::string read(const String& name) { return described(zel_GetRegistryValue(user, acme, name)); }
  static std::string written(const Variant& value) {
    EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"Name", value));
    return read(u"NAME");
  }
  // Stores bytes as they are under a type.
  static std::string stored(std::uint32_t type, std::string_view data) {
    RegistryKey key;
    EXPECT_EQ(key.open(user, acme, RegistryAccess::Write), RegistryResult::Success);
    EXPECT_EQ(registry().setValue(key.handle(), u"Stored", type, data), RegistryResult::Success);
    return described(zel_GetRegistryValue(user, acme, u"Stored", u"default"));
  }

  std::vector<std::string> reports;
  ErrorWatch watch{[this](const ErrorReport& report) {
    reports.push_back(toUtf8(report.source) + "|" + std::to_string(report.number) + "|" +
                      toUtf8(report.moreInfo));
  }};
};

std::string raisedBy(const std::function<void()>& body) {
  try {
    body();
  } catch (const Error& error) {
    return std::to_string(error.number()) + " " + error.what();
  }
  return "nothing";
}

TEST_F(ZelRegistry, WhatIsWrittenReadsBack) {
  EXPECT_EQ(written(u"abc"), "String abc");
  EXPECT_EQ(written(u""), "String ");
  EXPECT_EQ(written(String(5000, u'x')), "String " + std::string(5000, 'x'));
  EXPECT_EQ(written(u"\u00FC \u20AC \u4E2D"), "String \xC3\xBC \xE2\x82\xAC ?");  // the code page has no more
  EXPECT_EQ(written(std::int32_t{5}), "Long 5");
  EXPECT_EQ(written(std::int16_t{-2}), "Long -2");
  EXPECT_EQ(written(std::int32_t{-2147483647 - 1}), "Long -2147483648");
  EXPECT_EQ(written(ArrayData::ofBytes({})), "Byte()");
  const Ref<ArrayData> fromOne = ArrayData::create(VariantKind::Byte, {{1, 2}});
  fromOne->bytes()[1] = 255;
  EXPECT_EQ(written(fromOne), "Byte() 0 255");
}

TEST_F(ZelRegistry, OtherKindsOfValueAreRefusedAndNothingIsWritten) {
  const Variant refused[] = {Variant(), Variant::null(),    2.5,
                             true,      std::uint8_t{1},    Variant::date(1),
                             nullptr,   Variant::missing(), ArrayData::ofVariants({std::int32_t{1}})};
  for (const Variant& value : refused) {
    EXPECT_EQ(raisedBy([&] { zel_SetRegistryValue(user, acme, u"V", value); }), "1001 Unsupported value type")
        << toUtf8(typeName(value));
  }
  EXPECT_EQ(read(u"V"), "Empty");
  EXPECT_THAT(reports, IsEmpty());
}

TEST_F(ZelRegistry, WritingUnderAMissingKeyCreatesNothing) {
  EXPECT_FALSE(zel_SetRegistryValue(user, acme + u"\\A", u"Name", u"abc"));
  EXPECT_FALSE(zel_SetRegistryValue(user, acme + u"\\A", u"Name", 2.5));  // not even looked at
  EXPECT_FALSE(zel_CheckRegistryKey(user, acme + u"\\A"));
}

TEST_F(ZelRegistry, WhatCannotBeReadIsTheDefault) {
  EXPECT_EQ(read(u"Missing"), "Empty");
  EXPECT_EQ(described(zel_GetRegistryValue(user, acme, u"Missing", u"x")), "String x");
  EXPECT_EQ(described(zel_GetRegistryValue(user, acme + u"\\A", u"Missing", u"x")), "String x");
  EXPECT_EQ(stored(RegistryType::QWord, "12345678"), "String default");
  EXPECT_EQ(stored(RegistryType::DWordBigEndian, "1234"), "String default");
}

TEST_F(ZelRegistry, TextsReadBackWholeHoweverTheyWereStored) {
  EXPECT_EQ(stored(RegistryType::Text, "abc"), "String abc");
  EXPECT_EQ(stored(RegistryType::Text, {"abc\0", 4}), "String abc");
  EXPECT_EQ(stored(RegistryType::Text, {"\0", 1}), "String ");
  EXPECT_EQ(stored(RegistryType::Text, ""), "String ");
  EXPECT_EQ(stored(RegistryType::ExpandableText, {"%TEMP%\0", 7}), "String %TEMP%");
  EXPECT_EQ(stored(RegistryType::MultiText, {"a\0bc\0\0", 6}), std::string("String a\0bc", 11));
  EXPECT_EQ(stored(RegistryType::MultiText, {"\0\0", 2}), "String ");
}

// Looks inverted, and is meant: callers read it as "the key was there already".
TEST_F(ZelRegistry, CreatingAKeyIsTrueOnlyWhenItWasThere) {
  EXPECT_FALSE(zel_CreateRegistryKey(user, acme + u"\\B\\C"));
  EXPECT_TRUE(zel_CreateRegistryKey(user, acme + u"\\B\\C"));
  EXPECT_TRUE(zel_CreateRegistryKey(user, acme + u"\\B"));
  EXPECT_TRUE(zel_CheckRegistryKey(user, acme + u"\\b\\c"));
}

TEST_F(ZelRegistry, DeletingTellsOfValuesAndIsSilentAboutKeys) {
  written(u"abc");
  EXPECT_TRUE(zel_DeleteRegistryValue(user, acme, u"NAME"));
  EXPECT_FALSE(zel_DeleteRegistryValue(user, acme, u"Name"));
  EXPECT_FALSE(zel_DeleteRegistryValue(user, acme + u"\\A", u"Name"));
  EXPECT_EQ(read(u"Name"), "Empty");
  zel_CreateRegistryKey(user, acme + u"\\B\\C");
  zel_DeleteRegistryKey(user, acme + u"\\B");  // has a subkey
  EXPECT_TRUE(zel_CheckRegistryKey(user, acme + u"\\B"));
  zel_DeleteRegistryKey(user, acme + u"\\B\\C");
  zel_DeleteRegistryKey(user, acme + u"\\B");
  EXPECT_FALSE(zel_CheckRegistryKey(user, acme + u"\\B"));
}

TEST_F(ZelRegistry, SubkeysAreListedUnderTheirNames) {
  zel_CreateRegistryKey(user, acme + u"\\A");
  zel_CreateRegistryKey(user, acme + u"\\B\\C");
  const Ref<Collection> keys = zel_EnumRegistryKeys(user, acme);
  ASSERT_EQ(keys->Count(), 2);
  EXPECT_EQ(described(keys->Item(u"a")), "String A");
  EXPECT_EQ(zel_EnumRegistryKeys(user, acme + u"\\Missing")->Count(), 0);
  EXPECT_TRUE(zel_EnumRegistryKeys(user, u"")->find(u"Software"));
}

// "name: data" of the value listed under a name.
std::string listed(const Collection& values, StringView name) {
  const Variant entry = values.Item(name);
  EXPECT_EQ(entry.array().size(), 2u);
  return toUtf8(toText(entry.array().at(0))) + ": " + described(entry.array().at(1));
}

TEST_F(ZelRegistry, ValuesAreListedWithTheirData) {
  zel_SetRegistryValue(user, acme, u"Name", u"abc");
  zel_SetRegistryValue(user, acme, u"N", std::int32_t{5});
  zel_SetRegistryValue(user, acme, u"Long", String(9000, u'x'));
  const Ref<Collection> values = zel_EnumRegistryValues(user, acme);
  ASSERT_EQ(values->Count(), 3);
  EXPECT_EQ(listed(*values, u"NAME"), "Name: String abc");
  EXPECT_EQ(listed(*values, u"N"), "N: Long 5");
  EXPECT_EQ(listed(*values, u"Long"), "Long: String " + std::string(9000, 'x'));
  EXPECT_EQ(zel_EnumRegistryValues(user, acme + u"\\Missing")->Count(), 0);
  EXPECT_THAT(reports, IsEmpty());
}

// Keys and values of the test's choice, which cannot be had from a system's registry.
struct OddRegistry : MemoryRegistry {
  bool opens = true;
  std::vector<String> keys = {u"One", u"Two", u"TWO", u"Three"};
  std::vector<RegistryValue> values;
  RegistryCode openKey(RegistryHandle, StringView, RegistryAccess, RegistryHandle&) override {
    return opens ? RegistryResult::Success : RegistryResult::AccessDenied;
  }
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

// Looks wrong, and is meant: the two-element array is reused for every value.
TEST_F(ZelRegistry, AValueOfAnUnreadableTypeKeepsTheDataOfTheOneBefore) {
  OddRegistry odd;
  odd.values = {{u"first", RegistryType::QWord, "12345678"},
                {u"second", RegistryType::DWord, {"\5\0\0\0", 4}},
                {u"third", RegistryType::QWord, "12345678"}};
  const Replaced<Registry> replaced(odd);
  const Ref<Collection> values = zel_EnumRegistryValues(user, u"Key");
  EXPECT_EQ(listed(*values, u"first"), "first: Empty");
  EXPECT_EQ(listed(*values, u"second"), "second: Long 5");
  EXPECT_EQ(listed(*values, u"third"), "third: Long 5");
}

TEST_F(ZelRegistry, NamesThatDifferInCaseAloneEndTheListWithAReportOfItsProgress) {
  OddRegistry odd;
  odd.values = {
      {u"v", RegistryType::Text, ""}, {u"V", RegistryType::Text, ""}, {u"w", RegistryType::Text, ""}};
  const Replaced<Registry> replaced(odd);
  EXPECT_EQ(zel_EnumRegistryKeys(user, u"Key")->Count(), 2);
  EXPECT_EQ(zel_EnumRegistryValues(user, u"Key")->Count(), 1);
  EXPECT_THAT(reports, ElementsAre("zelRegistry.zel_EnumRegistryKeys|457|Index = 2",
                                   "zelRegistry.zel_EnumRegistryValues|457|"
                                   "Key -- Index = 1 | RetVal = 0Adding to collection"));
}

TEST_F(ZelRegistry, AKeyThatCannotBeCreatedCountsAsThereOnlyWhenItOpens) {
  OddRegistry odd;
  const Replaced<Registry> replaced(odd);
  EXPECT_TRUE(zel_CreateRegistryKey(user, u"Key"));
  odd.opens = false;
  EXPECT_EQ(raisedBy([] { zel_CreateRegistryKey(user, u"Key"); }), "1001 Unable to create the registry key");
}

TEST_F(ZelRegistry, NoKeyIsLeftOpen) {
  MemoryRegistry memory;
  const Replaced<Registry> replaced(memory);
  zel_CreateRegistryKey(user, acme);
  EXPECT_THROW(zel_SetRegistryValue(user, acme, u"V", 2.5), Error);
  EXPECT_EQ(written(u"abc"), "String abc");
  zel_EnumRegistryKeys(user, acme);
  zel_EnumRegistryValues(user, acme);
  zel_DeleteRegistryValue(user, acme, u"V");
  EXPECT_EQ(memory.openKeys(), 0u);
}

TEST_F(ZelRegistry, ClientsCallItByNameWithADefaultLeftOut) {
  ClassRegistry classes;
  classes.add(zelRegistryInfo());
  const Ref<Object> instance = classes.create(u"zelUtilities.zelRegistry");
  Variant arguments[] = {std::int32_t{-2147483647}, acme, u"Missing"};
  EXPECT_TRUE(instance->Invoke(u"zel_GetRegistryValue", InvokeKind::Method, arguments).isEmpty());
  const EnumInfo* roots = classes.findEnumeration(u"ZEL_Registry_HKEYs");
  ASSERT_TRUE(roots);
  EXPECT_EQ(roots->values[6].name, u"HKEY_DYN_DATA");
  EXPECT_EQ(roots->values[6].value, -2147483642);
}

}  // namespace
}  // namespace zelUtilities
