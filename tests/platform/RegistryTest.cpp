// What the registry answers on every system.
#include "platform/Registry.h"

#include <gtest/gtest.h>

#include <set>

namespace zelUtilities {
namespace {

using namespace std::string_literals;
using namespace RegistryResult;

constexpr RegistryHandle root = RegistryRoot::CurrentUser;
constexpr auto Read = RegistryAccess::Read;
constexpr auto Write = RegistryAccess::Write;

// All paths of the tests lie below this one.
String in(StringView path) { return u"Software\\Contract\\" + String(path); }

struct Opened : RegistryKey {
  explicit Opened(StringView path = {}, RegistryAccess access = Read) : code(open(root, in(path), access)) {}
  RegistryCode code;
};

bool create(StringView path) {
  RegistryKey key;
  bool existed = false;
  EXPECT_EQ(key.create(root, in(path), existed), Success);
  return existed;
}

RegistryCode set(StringView name, std::uint32_t type, std::string_view data, StringView path = {}) {
  return registry().setValue(Opened(path, Write).handle(), name, type, data);
}

RegistryValue get(StringView name) {
  RegistryValue value;
  EXPECT_EQ(registry().queryValue(Opened().handle(), name, value), Success);
  return value;
}

// "type:data" of a value that was set and read by another name.
std::string stored(StringView name, std::uint32_t type, std::string_view data, StringView readAs) {
  EXPECT_EQ(set(name, type, data), Success);
  const RegistryValue value = get(readAs);
  return std::to_string(value.type) + ":" + value.data;
}
std::string stored(std::uint32_t type, std::string_view data) { return stored(u"v", type, data, u"V"); }

std::set<String> subkeys(StringView path = {}) {
  const Opened key(path);
  std::set<String> names;
  String name;
  for (std::uint32_t i = 0; registry().enumKey(key.handle(), i, name) == Success; ++i) names.insert(name);
  return names;
}

void removeTree(const String& path) {
  while (!subkeys(path).empty()) removeTree(path + u"\\" + *subkeys(path).begin());
  registry().deleteKey(root, in(path));
}

class RegistryContract : public testing::Test {
 protected:
  RegistryContract() {
    removeTree({});
    EXPECT_FALSE(create({}));
  }
  ~RegistryContract() override { removeTree({}); }
};

TEST_F(RegistryContract, CreatingSaysWhetherTheKeyExistedInAnyLetterCase) {
  EXPECT_FALSE(create(u"Paths\\B"));
  for (const StringView path : {u"Paths\\B", u"PATHS\\b", u"Paths", u"Paths\\", u""})
    EXPECT_TRUE(create(path));
  EXPECT_EQ(subkeys(), std::set<String>{u"Paths"});
}

TEST_F(RegistryContract, AMissingKeyIsNotOpenedAndAnOverlongOneNotCreated) {
  const Opened missing(u"None", Write);
  EXPECT_TRUE(missing.code == FileNotFound && missing.handle() == 0);
  RegistryKey key;
  bool existed = false;
  EXPECT_NE(key.create(root, in(String(300, u'k')), existed), Success);
  EXPECT_TRUE(subkeys().empty());
}

TEST_F(RegistryContract, ValuesComeBackWithTheTypeOfTheirLastWritingAndTextsWithOneTerminator) {
  EXPECT_EQ(stored(RegistryType::Text, "abc"), "1:abc\0"s);
  EXPECT_EQ(get(u"v").text(), "abc");
  EXPECT_EQ(stored(RegistryType::Text, "abc\0"s), "1:abc\0"s);
  EXPECT_EQ(stored(RegistryType::ExpandableText, "x"), "2:x\0"s);
  EXPECT_EQ(stored(RegistryType::MultiText, "a\0bc\0\0"s), "7:a\0bc\0\0"s);
  EXPECT_EQ(get(u"v").text(), "a\0bc"s);
  EXPECT_EQ(stored(RegistryType::Binary, ""), "3:");
  EXPECT_EQ(stored(RegistryType::DWord, "\2\0\0\0"s), "4:\2\0\0\0"s);
  EXPECT_EQ(stored(RegistryType::QWord, "12345678"), "11:12345678");
  EXPECT_EQ(stored(RegistryType::None, "") + stored(77, "q"), "0:77:q");
  std::string large(100000, '\0');
  for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<char>(i * 7);
  EXPECT_EQ(stored(RegistryType::Binary, large), "3:" + large);
}

TEST_F(RegistryContract, NamesAndTextsAreOfTheCodePage) {
  EXPECT_EQ(stored(u"Gr\u00F6\u00DFe", RegistryType::Text, "\xC4\xD6\x80\xFF", u"GR\u00D6\u00DFE"),
            "1:\xC4\xD6\x80\xFF\0"s);
  EXPECT_EQ(stored(StringView(u"cut\0off", 7), RegistryType::Binary, "a", u"cut"), "3:a");
  EXPECT_EQ(stored(u"", RegistryType::Binary, "default", u""), "3:default");
  EXPECT_EQ(get(u"").name, u"");
}

TEST_F(RegistryContract, AKeyGivesOnlyTheRightsItWasOpenedForAndNoneJustCreated) {
  set(u"v", RegistryType::Binary, "abc");
  EXPECT_EQ(registry().setValue(Opened().handle(), u"v", RegistryType::Text, "x"), AccessDenied);
  EXPECT_EQ(registry().deleteValue(Opened().handle(), u"v"), AccessDenied);
  EXPECT_EQ(get(u"v").data, "abc");
  RegistryValue value;
  String name;
  EXPECT_EQ(registry().queryValue(Opened({}, Write).handle(), u"v", value), AccessDenied);
  RegistryKey created;
  bool existed = false;
  created.create(root, in({}), existed);
  EXPECT_EQ(registry().queryValue(created.handle(), u"v", value), AccessDenied);
  EXPECT_EQ(registry().enumKey(created.handle(), 0, name), AccessDenied);
}

TEST_F(RegistryContract, AnOpenKeyServesAsRootAndAHandleThatIsNoneIsRefused) {
  create(u"A\\B");
  const Opened outer;
  RegistryKey inner;
  EXPECT_EQ(inner.open(outer.handle(), u"A\\B", Read), Success);
  inner.close();
  EXPECT_EQ(registry().deleteKey(outer.handle(), u"A\\B"), Success);
  EXPECT_TRUE(subkeys(u"A").empty());
  RegistryValue value;
  bool existed = false;
  EXPECT_EQ(inner.open(0x7654321, u"x", Read), InvalidHandle);
  EXPECT_EQ(inner.create(0x7654321, u"x", existed), InvalidHandle);
  EXPECT_EQ(registry().queryValue(0x7654321, u"x", value), InvalidHandle);
  EXPECT_EQ(registry().deleteKey(0x7654321, u"x"), InvalidHandle);
}

TEST_F(RegistryContract, AKeyWithSubkeysAndARootAreNotDeleted) {
  create(u"A\\B");
  EXPECT_EQ(registry().deleteKey(root, in(u"A")), AccessDenied);
  EXPECT_EQ(subkeys(), std::set<String>{u"A"});
  EXPECT_EQ(registry().deleteKey(root, in(u"A\\B")), Success);
  EXPECT_EQ(registry().deleteKey(root, in(u"A")), Success);
  EXPECT_EQ(registry().deleteKey(root, in(u"A")), FileNotFound);
  EXPECT_EQ(registry().deleteKey(root, u""), AccessDenied);
}

TEST_F(RegistryContract, AKeyDeletedWhileOpenIsGone) {
  create(u"A");
  set(u"v", RegistryType::Text, "abc", u"A");
  const Opened reader(u"A"), writer(u"A", Write);
  ASSERT_EQ(registry().deleteKey(root, in(u"A")), Success);
  create(u"A");
  RegistryValue value;
  String name;
  EXPECT_EQ(registry().queryValue(reader.handle(), u"v", value), KeyDeleted);
  EXPECT_EQ(registry().enumKey(reader.handle(), 0, name), KeyDeleted);
  EXPECT_EQ(registry().enumValue(reader.handle(), 0, value), KeyDeleted);
  EXPECT_EQ(registry().setValue(writer.handle(), u"v", RegistryType::Text, "x"), KeyDeleted);
}

// Positions move up when a value is deleted.
TEST_F(RegistryContract, EnumeratesEveryValueWithItsData) {
  std::map<String, std::string> values{{u"a", "abc"}, {u"b", "\5\0\0\0"s}, {u"c", std::string(5000, 'x')}},
      found;
  for (const auto& [name, data] : values) set(name, RegistryType::Binary, data);
  const Opened reader, writer({}, Write);
  RegistryValue value;
  for (std::uint32_t i = 0; registry().enumValue(reader.handle(), i, value) == Success; ++i)
    found[value.name] = value.data;
  EXPECT_EQ(found, values);
  EXPECT_EQ(registry().enumValue(reader.handle(), 3, value), NoMoreItems);
  while (registry().enumValue(reader.handle(), 0, value) == Success &&
         registry().deleteValue(writer.handle(), value.name) == Success)
    EXPECT_EQ(value.data, values.extract(value.name).mapped());
  EXPECT_TRUE(values.empty());
}

}  // namespace
}  // namespace zelUtilities
