#include "system/zelRegistry.h"

#include "platform/LateBound.h"
#include "support/MemoryRegistry.h"
#include "support/Testing.h"

namespace zelUtilities {
namespace {

using namespace std::string_literals;

constexpr ZEL_Registry_HKEYs user = HKEY_CURRENT_USER;
const String acme = u"Software\\Acme";

std::string listed(const Ref<Collection>& values) {
  std::string text;
  for (std::int32_t i = 1; i <= values->Count(); ++i) text += shown(values->Item(i)) + "|";
  return text;
}

class ZelRegistry : public testing::Test {
 protected:
  ZelRegistry() { zel_CreateRegistryKey(user, acme); }
  ~ZelRegistry() override { EXPECT_EQ(memory.openKeys(), 0u); }

  // What is read where the value was written, or was stored with a type.
  static std::string written(const Variant& value) {
    EXPECT_TRUE(zel_SetRegistryValue(user, acme, u"Name", value));
    return shown(zel_GetRegistryValue(user, acme, u"NAME"));
  }
  std::string stored(std::uint32_t type, const std::string& data) {
    memory.store(user, acme, u"Stored", type, data);
    return shown(zel_GetRegistryValue(user, acme, u"Stored", u"default"));
  }

  MemoryRegistry memory;
  Replaced<Registry> replaced{memory};
  Reports reports{"zelRegistry.zel_", Reports::MoreInfo};
};

TEST_F(ZelRegistry, TextsIntegersAndBytesReadBackAndOtherKindsAreRefused) {
  const Ref<ArrayData> fromOne = ArrayData::create(VariantKind::Byte, {{1, 2}});
  fromOne->bytes()[1] = 255;
  EXPECT_EQ(written(u"\u00FC \u20AC \u4E2D"), "String \u00FC \u20AC ?");  // the code page has no more
  EXPECT_EQ(written(u"") + written(std::int16_t{-2}), "String Long -2");
  EXPECT_EQ(written(std::int32_t{-2147483647 - 1}), "Long -2147483648");
  EXPECT_EQ(written(ArrayData::ofBytes({})), "Byte()[0:0] {}");
  EXPECT_EQ(written(fromOne), "Byte()[0:2] {Byte 0, Byte 255}");
  const Variant refused[] = {{},      Variant::null(),    2.5,
                             true,    std::uint8_t{1},    Variant::date(1),
                             nullptr, Variant::missing(), ArrayData::ofVariants({1})};
  for (const Variant& value : refused)
    EXPECT_EQ(raisedError([&] { zel_SetRegistryValue(user, acme, u"Name", value); }),
              "1001|zelRegistry.zel_SetRegistryValue|Unsupported value type");
  EXPECT_EQ(shown(zel_GetRegistryValue(user, acme, u"Name")), "Byte()[0:2] {Byte 0, Byte 255}");
}

TEST_F(ZelRegistry, ReadsWhateverIsStoredAndGivesTheDefaultForWhatItCannotRead) {
  EXPECT_EQ(stored(RegistryType::Text, "abc") + stored(RegistryType::Text, ""), "String abcString ");
  EXPECT_EQ(stored(RegistryType::ExpandableText, "%TEMP%\0"s), "String %TEMP%");
  EXPECT_EQ(stored(RegistryType::MultiText, "a\0bc\0\0"s), "String a\0bc"s);
  EXPECT_EQ(stored(RegistryType::MultiText, "\0\0"s), "String ");
  EXPECT_EQ(stored(RegistryType::DWord, "\5"), "Long 5");
  for (const std::uint32_t type : {RegistryType::QWord, RegistryType::DWordBigEndian})
    EXPECT_EQ(stored(type, "12345678"), "String default");
  EXPECT_TRUE(zel_GetRegistryValue(user, acme, u"Missing").isEmpty());
  EXPECT_EQ(zel_GetRegistryValue(user, acme + u"\\A", u"Missing", u"x").text(), u"x");
}

// Looks inverted, and is meant: callers read it as "the key was there already".
TEST_F(ZelRegistry, OnlyCreatingCreatesAKeyAndIsTrueOnlyWhenItWasThere) {
  for (const Variant& value : {Variant(u"abc"), Variant(2.5)})  // a missing key comes before a bad value
    EXPECT_FALSE(zel_SetRegistryValue(user, acme + u"\\B", u"Name", value));
  EXPECT_FALSE(zel_CheckRegistryKey(user, acme + u"\\B"));
  EXPECT_FALSE(zel_CreateRegistryKey(user, acme + u"\\B\\C"));
  EXPECT_TRUE(zel_CreateRegistryKey(user, acme + u"\\b\\c"));
  for (const String& key : {acme + u"\\B", acme + u"\\B\\C"}) {  // the first has a subkey
    zel_DeleteRegistryKey(user, key);
    EXPECT_EQ(zel_CheckRegistryKey(user, acme + u"\\B\\C"), key == acme + u"\\B");
  }
}

TEST_F(ZelRegistry, SubkeysAndValuesAreListedUnderTheirNames) {
  for (const StringView key : {u"\\A", u"\\B\\C"}) zel_CreateRegistryKey(user, acme + String(key));
  const Ref<Collection> keys = zel_EnumRegistryKeys(user, acme);
  EXPECT_EQ(listed(keys), "String A|String B|");
  EXPECT_TRUE(keys->find(u"a") && zel_EnumRegistryKeys(user, u"")->find(u"Software"));
  written(u"abc");
  zel_SetRegistryValue(user, acme, u"N", 5);
  const Ref<Collection> values = zel_EnumRegistryValues(user, acme);
  EXPECT_EQ(listed(values), "Variant()[0:2] {String Name, String abc}|Variant()[0:2] {String N, Long 5}|");
  EXPECT_TRUE(values->find(u"NAME"));
  EXPECT_EQ(
      spelled({zel_DeleteRegistryValue(user, acme, u"NAME"), zel_DeleteRegistryValue(user, acme, u"Name"),
               zel_DeleteRegistryValue(user, acme + u"\\Missing", u"Name")}),
      "True|False|False");
  for (const auto list : {zel_EnumRegistryKeys, zel_EnumRegistryValues})
    EXPECT_EQ(list(user, acme + u"\\Missing")->Count(), 0);
}

// What cannot be had from a system's registry: a key that opens and cannot be created, five names of which
// the fourth is the second in capitals, and values of which only the second is of a type that can be read.
struct OddRegistry : MemoryRegistry {
  RegistryCode openKey(RegistryHandle, StringView path, RegistryAccess, RegistryHandle&) override {
    return path == u"Odd" ? RegistryResult::Success : RegistryResult::AccessDenied;
  }
  RegistryCode createKey(RegistryHandle, StringView, RegistryHandle&, bool&) override {
    return RegistryResult::AccessDenied;
  }
  RegistryCode enumKey(RegistryHandle, std::uint32_t index, String& name) override {
    name = index == 3 ? u"KEY1" : u"Key" + decimalText(index);
    return index < 5 ? RegistryResult::Success : RegistryResult::NoMoreItems;
  }
  RegistryCode enumValue(RegistryHandle key, std::uint32_t index, RegistryValue& value) override {
    value.type = index == 1 ? RegistryType::DWord : RegistryType::QWord;
    value.data = "\5";
    return enumKey(key, index, value.name);
  }
};

// Looks wrong, and is meant: the two-element array is reused for every value. A key that cannot be created
// counts as there when it opens.
TEST_F(ZelRegistry, OddKeysKeepDataOfTheValueBeforeEndTheListAtAFailureAndCountAsThere) {
  OddRegistry odd;
  const Replaced<Registry> oddInForce(odd);
  EXPECT_EQ(zel_EnumRegistryKeys(user, u"Odd")->Count(), 3);
  EXPECT_EQ(listed(zel_EnumRegistryValues(user, u"Odd")),
            "Variant()[0:2] {String Key0, Empty }|Variant()[0:2] {String Key1, Long 5}|"
            "Variant()[0:2] {String Key2, Long 5}|");
  EXPECT_EQ(reports.taken(),
            "EnumRegistryKeys|457|Index = 3 "
            "EnumRegistryValues|457|Odd -- Index = 3 | RetVal = 0Adding to collection ");
  EXPECT_TRUE(zel_CreateRegistryKey(user, u"Odd"));
  EXPECT_EQ(raisedError([] { zel_CreateRegistryKey(user, u"Even"); }),
            "1001|zelRegistry.zel_CreateRegistryKey|Unable to create the registry key");
}

}  // namespace
}  // namespace zelUtilities
