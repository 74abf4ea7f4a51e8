#include "library/Library.h"

#include <gtest/gtest.h>

#include "automation/Collection.h"
#include "foundation/bas_Main.h"
#include "platform/Objects.h"

namespace zelUtilities {
namespace {

// Also where the program has a class of that name.
TEST(Library, ItsClassesAreCreatedByNameUnlessOnlyOtherObjectsMakeThem) {
  registerObject(u"zelUtilities.zelRegistry", [] { return Ref<Object>(make<Collection>()); });
  for (const ClassInfo* info : library().classes()) {
    const Ref<Object> made = CreateNamedObject(u"zelUtilities." + info->name(), u"");
    EXPECT_EQ(made ? made->classInfo() : nullptr, info->isCreatable() || info->isGlobal() ? info : nullptr)
        << toUtf8(info->name());
  }
  registerObject(u"zelUtilities.zelRegistry", {});
}

TEST(Library, EveryClassAndMemberHasHelp) {
  for (const ClassInfo* info : library().classes()) {
    EXPECT_FALSE(info->help().empty()) << toUtf8(info->name());
    for (const Member& member : info->members())
      EXPECT_FALSE(member.help.empty()) << toUtf8(info->name() + u"." + member.name);
  }
}

}  // namespace
}  // namespace zelUtilities
