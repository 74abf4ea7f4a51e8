// What every registry answers: the system's own and the one in memory.
#include "platform/Registry.h"

#include <gtest/gtest.h>

#include <set>

#include "platform/Locale.h"
#include "support/MemoryRegistry.h"

namespace zelUtilities {
namespace {

constexpr RegistryHandle root = RegistryRoot::CurrentUser;
constexpr StringView top = u"Software\\Contract";

enum class Whose { System, Memory };

class RegistryContract : public testing::TestWithParam<Whose> {
 protected:
  RegistryContract() : replaced_(GetParam() == Whose::System ? Registry::system() : memory_) {
    removeTree(String(top));
    bool existed = true;
    RegistryKey key;
    EXPECT_EQ(key.create(root, top, existed), RegistryResult::Success);
    EXPECT_FALSE(existed);
  }
  ~RegistryContract() override { removeTree(String(top)); }

  static void removeTree(const String& path) {
    while (!subkeys(path).empty()) removeTree(path + u"\\" + *subkeys(path).begin());
    registry().deleteKey(root, path);
  }

  static std::set<String> subkeys(StringView path) {
    std::set<String> names;
    RegistryKey key;
    if (key.open(root, path, RegistryAccess::Read) != RegistryResult::Success) return names;
    String name;
    for (std::uint32_t i = 0; registry().enumKey(key.handle(), i, name) == RegistryResult::Success; ++i)
      names.insert(name);
    return names;
  }

  static bool create(StringView path) {
    RegistryKey key;
    bool existed = false;
    EXPECT_EQ(key.create(root, path, existed), RegistryResult::Success);
    return existed;
  }

  static RegistryCode set(StringView name, std::uint32_t type, std::string_view data, StringView path = top) {
    RegistryKey key;
    const RegistryCode code = key.open(root, path, RegistryAccess::Write);
    return code == RegistryResult::Success ? registry().setValue(key.handle(), name, type, data) : code;
  }

  static RegistryValue get(StringView name, StringView path = top) {
    RegistryKey key;
    RegistryValue value;
    EXPECT_EQ(key.open(root, path, RegistryAccess::Read), RegistryResult::Success);
    EXPECT_EQ(registry().queryValue(key.handle(), name, value), RegistryResult::Success);
    return value;
  }

 private:
  MemoryRegistry memory_;
  Replaced<Registry> replaced_;
};

INSTANTIATE_TEST_SUITE_P(Registries, RegistryContract, testing::Values(Whose::System, Whose::Memory),
                         [](const auto& chosen) {
                           return chosen.param == Whose::System ? "System" : "Memory";
                         });

TEST_P(RegistryContract, CreatingSaysWhetherTheKeyExisted) {
  EXPECT_FALSE(create(u"Software\\Contract\\A\\B"));
  EXPECT_TRUE(create(u"Software\\Contract\\A\\B"));
  EXPECT_TRUE(create(u"Software\\Contract\\A"));
}

TEST_P(RegistryContract, AMissingKeyDoesNotOpenAndIsNotCreated) {
  RegistryKey key;
  EXPECT_EQ(key.open(root, u"Software\\Contract\\None", RegistryAccess::Write), RegistryResult::FileNotFound);
  EXPECT_EQ(key.handle(), 0);
  EXPECT_TRUE(subkeys(top).empty());
}

TEST_P(RegistryContract, NamesAreFoundInAnyLetterCaseAndKeepTheirFirstSpelling) {
  create(u"Software\\Contract\\Paths");
  EXPECT_TRUE(create(u"SOFTWARE\\contract\\PATHS"));
  EXPECT_EQ(subkeys(top), std::set<String>{u"Paths"});
  set(u"Width", RegistryType::DWord, std::string_view("\1\0\0\0", 4));
  set(u"WIDTH", RegistryType::DWord, std::string_view("\2\0\0\0", 4));
  EXPECT_EQ(get(u"width").data, std::string("\2\0\0\0", 4));
}

TEST_P(RegistryContract, PathsMayEndInASeparator) {
  EXPECT_TRUE(create(u"Software\\Contract\\"));
  EXPECT_TRUE(subkeys(top).empty());
}

TEST_P(RegistryContract, ATextReadsWithOneTerminatorHoweverItWasStored) {
  set(u"bare", RegistryType::Text, "abc");
  set(u"ended", RegistryType::Text, std::string_view("abc\0", 4));
  set(u"single", RegistryType::ExpandableText, "x");
  for (const StringView name : {u"bare", u"ended"}) {
    EXPECT_EQ(get(name).type, RegistryType::Text);
    EXPECT_EQ(get(name).data, std::string("abc\0", 4));
    EXPECT_EQ(get(name).text(), "abc");
  }
  EXPECT_EQ(get(u"single").type, RegistryType::ExpandableText);
  EXPECT_EQ(get(u"single").data, std::string("x\0", 2));
}

TEST_P(RegistryContract, PartsOfAMultiTextStayApart) {
  set(u"list", RegistryType::MultiText, std::string_view("a\0bc\0\0", 6));
  EXPECT_EQ(get(u"list").data, std::string("a\0bc\0\0", 6));
  EXPECT_EQ(get(u"list").text(), std::string("a\0bc", 4));
}

TEST_P(RegistryContract, BytesOfTheCodePageComeBack) {
  const std::string bytes = "\xC4\xD6\x80\xFF";  // ÄÖ€ÿ
  set(u"Gr\u00F6\u00DFe", RegistryType::Text, bytes);
  EXPECT_EQ(get(u"GR\u00D6\u00DFE").text(), bytes);
}

TEST_P(RegistryContract, DataOfAnyLengthAndTypeComeBack) {
  std::string large(100000, '\0');
  for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<char>(i * 7);
  set(u"large", RegistryType::Binary, large);
  set(u"empty", RegistryType::Binary, "");
  set(u"none", RegistryType::None, "");
  set(u"number", RegistryType::QWord, "12345678");
  set(u"odd", 77, "q");
  EXPECT_EQ(get(u"large").data, large);
  EXPECT_EQ(get(u"empty").data, "");
  EXPECT_EQ(get(u"none").type, RegistryType::None);
  EXPECT_EQ(get(u"number").type, RegistryType::QWord);
  EXPECT_EQ(get(u"odd").type, 77U);
  EXPECT_EQ(get(u"odd").data, "q");
}

TEST_P(RegistryContract, AValueTakesTheTypeOfItsLastWriting) {
  set(u"v", RegistryType::Text, "abc");
  set(u"v", RegistryType::Binary, "z");
  EXPECT_EQ(get(u"v").type, RegistryType::Binary);
  EXPECT_EQ(get(u"v").data, "z");
}

TEST_P(RegistryContract, TheEmptyNameIsTheDefaultValue) {
  set(u"", RegistryType::Text, "default");
  EXPECT_EQ(get(u"").text(), "default");
  EXPECT_EQ(get(u"").name, u"");
}

TEST_P(RegistryContract, ANameEndsAtItsFirstNul) {
  set(StringView(u"cut\0off", 7), RegistryType::Text, "abc");
  EXPECT_EQ(get(u"cut").text(), "abc");
}

TEST_P(RegistryContract, AMissingValueIsNotFound) {
  RegistryKey key;
  RegistryValue value;
  key.open(root, top, RegistryAccess::Read);
  EXPECT_EQ(registry().queryValue(key.handle(), u"none", value), RegistryResult::FileNotFound);
  key.open(root, top, RegistryAccess::Write);
  EXPECT_EQ(registry().deleteValue(key.handle(), u"none"), RegistryResult::FileNotFound);
}

TEST_P(RegistryContract, AKeyOpenedForReadingIsNotWrittenTo) {
  set(u"v", RegistryType::Text, "abc");
  RegistryKey key;
  key.open(root, top, RegistryAccess::Read);
  EXPECT_EQ(registry().setValue(key.handle(), u"v", RegistryType::Text, "x"), RegistryResult::AccessDenied);
  EXPECT_EQ(registry().deleteValue(key.handle(), u"v"), RegistryResult::AccessDenied);
  EXPECT_EQ(get(u"v").text(), "abc");
}

TEST_P(RegistryContract, AKeyOpenedForWritingOrJustCreatedIsNotRead) {
  set(u"v", RegistryType::Text, "abc");
  RegistryKey key;
  RegistryValue value;
  String name;
  bool existed = false;
  key.open(root, top, RegistryAccess::Write);
  EXPECT_EQ(registry().queryValue(key.handle(), u"v", value), RegistryResult::AccessDenied);
  key.create(root, top, existed);
  EXPECT_EQ(registry().queryValue(key.handle(), u"v", value), RegistryResult::AccessDenied);
  EXPECT_EQ(registry().enumKey(key.handle(), 0, name), RegistryResult::AccessDenied);
}

TEST_P(RegistryContract, AnOpenKeyServesAsRoot) {
  create(u"Software\\Contract\\A\\B");
  RegistryKey outer;
  RegistryKey inner;
  ASSERT_EQ(outer.open(root, top, RegistryAccess::Read), RegistryResult::Success);
  EXPECT_EQ(inner.open(outer.handle(), u"A\\B", RegistryAccess::Read), RegistryResult::Success);
  inner.close();
  EXPECT_EQ(registry().deleteKey(outer.handle(), u"A\\B"), RegistryResult::Success);
  EXPECT_TRUE(subkeys(u"Software\\Contract\\A").empty());
}

TEST_P(RegistryContract, AHandleThatIsNoneIsRefused) {
  RegistryHandle key = 0;
  RegistryValue value;
  bool existed = false;
  EXPECT_EQ(registry().openKey(0x7654321, u"x", RegistryAccess::Read, key), RegistryResult::InvalidHandle);
  EXPECT_EQ(registry().createKey(0x7654321, u"x", key, existed), RegistryResult::InvalidHandle);
  EXPECT_EQ(registry().queryValue(0x7654321, u"x", value), RegistryResult::InvalidHandle);
  EXPECT_EQ(registry().deleteKey(0x7654321, u"x"), RegistryResult::InvalidHandle);
}

TEST_P(RegistryContract, AKeyWithSubkeysIsNotDeleted) {
  create(u"Software\\Contract\\A\\B");
  EXPECT_EQ(registry().deleteKey(root, u"Software\\Contract\\A"), RegistryResult::AccessDenied);
  EXPECT_EQ(subkeys(top), std::set<String>{u"A"});
  EXPECT_EQ(registry().deleteKey(root, u"Software\\Contract\\A\\B"), RegistryResult::Success);
  EXPECT_EQ(registry().deleteKey(root, u"Software\\Contract\\A"), RegistryResult::Success);
  EXPECT_EQ(registry().deleteKey(root, u"Software\\Contract\\A"), RegistryResult::FileNotFound);
}

TEST_P(RegistryContract, ARootIsNotDeleted) {
  EXPECT_EQ(registry().deleteKey(root, u""), RegistryResult::AccessDenied);
}

TEST_P(RegistryContract, AKeyDeletedWhileOpenIsGone) {
  create(u"Software\\Contract\\A");
  set(u"v", RegistryType::Text, "abc", u"Software\\Contract\\A");
  RegistryKey reader;
  RegistryKey writer;
  reader.open(root, u"Software\\Contract\\A", RegistryAccess::Read);
  writer.open(root, u"Software\\Contract\\A", RegistryAccess::Write);
  ASSERT_EQ(registry().deleteKey(root, u"Software\\Contract\\A"), RegistryResult::Success);
  create(u"Software\\Contract\\A");
  RegistryValue value;
  String name;
  EXPECT_EQ(registry().queryValue(reader.handle(), u"v", value), RegistryResult::KeyDeleted);
  EXPECT_EQ(registry().enumKey(reader.handle(), 0, name), RegistryResult::KeyDeleted);
  EXPECT_EQ(registry().enumValue(reader.handle(), 0, value), RegistryResult::KeyDeleted);
  EXPECT_EQ(registry().setValue(writer.handle(), u"v", RegistryType::Text, "x"), RegistryResult::KeyDeleted);
}

TEST_P(RegistryContract, EnumeratesEverySubkeyOnceAndThenNoMore) {
  std::set<String> names;
  for (int i = 0; i < 30; ++i) names.insert(u"Key " + decimalText(i));
  for (const String& name : names) create(String(top) + u"\\" + name);
  EXPECT_EQ(subkeys(top), names);
  RegistryKey key;
  String name;
  key.open(root, top, RegistryAccess::Read);
  EXPECT_EQ(registry().enumKey(key.handle(), 30, name), RegistryResult::NoMoreItems);
  EXPECT_EQ(registry().enumKey(key.handle(), 29, name), RegistryResult::Success);
}

TEST_P(RegistryContract, EnumeratesEveryValueWithItsData) {
  set(u"a", RegistryType::Text, "abc");
  set(u"b", RegistryType::DWord, std::string_view("\5\0\0\0", 4));
  set(u"c", RegistryType::Binary, std::string(5000, 'x'));
  RegistryKey key;
  key.open(root, top, RegistryAccess::Read);
  std::map<String, std::string> found;
  RegistryValue value;
  std::uint32_t index = 0;
  while (registry().enumValue(key.handle(), index, value) == RegistryResult::Success) {
    found[value.name] = value.data;
    ++index;
  }
  EXPECT_EQ(registry().enumValue(key.handle(), index, value), RegistryResult::NoMoreItems);
  EXPECT_EQ(found, (std::map<String, std::string>{
                       {u"a", {"abc\0", 4}}, {u"b", {"\5\0\0\0", 4}}, {u"c", std::string(5000, 'x')}}));
}

TEST_P(RegistryContract, PositionsMoveUpWhenAValueIsDeletedDuringAnEnumeration) {
  for (const StringView name : {u"a", u"b", u"c", u"d"}) set(name, RegistryType::Text, "x");
  RegistryKey reader;
  RegistryKey writer;
  reader.open(root, top, RegistryAccess::Read);
  writer.open(root, top, RegistryAccess::Write);
  int seen = 0;
  RegistryValue value;
  while (registry().enumValue(reader.handle(), 0, value) == RegistryResult::Success) {
    ++seen;
    EXPECT_EQ(registry().deleteValue(writer.handle(), value.name), RegistryResult::Success);
  }
  EXPECT_EQ(seen, 4);
}

TEST_P(RegistryContract, AnOverlongKeyNameIsRefused) {
  RegistryKey key;
  bool existed = false;
  EXPECT_NE(key.create(root, String(top) + u"\\" + String(300, u'k'), existed), RegistryResult::Success);
  EXPECT_TRUE(subkeys(top).empty());
}

}  // namespace
}  // namespace zelUtilities
