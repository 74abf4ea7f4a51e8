#include "library/Library.h"

#include <gtest/gtest.h>

#include "automation/Collection.h"
#include "foundation/bas_Main.h"

namespace zelUtilities {
namespace {

TEST(Library, ClientsCreateItsClassesByName) {
  for (const StringView name :
       {u"zelNodeList", u"zelNodeListColumns", u"zelCellButtons", u"zelUOMNodeListFilter", u"zelStringCat",
        u"zelRegistry", u"zelXML", u"zelFiles"}) {
    EXPECT_TRUE(library().create(u"zelUtilities." + String(name))) << toUtf8(name);
  }
}

TEST(Library, ObjectsThatOnlyOtherObjectsMakeAreKnownButNotCreated) {
  for (const StringView name :
       {u"zelNode", u"zelNodes", u"zelCell", u"zelCells", u"zelNodeListColumn", u"zelCellButton"}) {
    EXPECT_TRUE(library().find(name)) << toUtf8(name);
    EXPECT_FALSE(library().create(u"zelUtilities." + String(name))) << toUtf8(name);
  }
}

TEST(Library, ItsClassesAreFoundByNameLikeAnybodysElse) {
  library();
  const Ref<Object> list = CreateNamedObject(u"zelUtilities.zelNodeList", u"");
  ASSERT_TRUE(list);
  EXPECT_EQ(list->classInfo(), library().find(u"zelNodeList"));
}

// Clients read the published names and help, so none may be left out, and every object that a member mentions
// must be a class that clients can look up; a Collection is the automation run time's own.
TEST(Library, EveryClassIsFullyDescribed) {
  for (const ClassInfo* info : library().classes()) {
    EXPECT_FALSE(info->help().empty()) << toUtf8(info->name());
    for (const Member& member : info->members()) {
      const String where = info->name() + u"." + member.name;
      EXPECT_FALSE(member.help.empty()) << toUtf8(where);
      EXPECT_TRUE(member.id != 0 || member.name == u"Item") << toUtf8(where);
      const auto known = [](const TypeInfo& type) {
        if (!type.object || type.object() == &Collection::describeClass()) return true;
        return library().find(type.object()->name()) == type.object();
      };
      EXPECT_TRUE(known(member.result)) << toUtf8(where);
      for (const Parameter& parameter : member.parameters)
        EXPECT_TRUE(known(parameter.type)) << toUtf8(where);
    }
  }
}

}  // namespace
}  // namespace zelUtilities
