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

// Clients read the published help, so none may be left out, and every object that a member mentions must be a
// class that clients can look up; a Collection is the automation run time's own.
TEST(Library, EveryClassIsFullyDescribed) {
  const auto known = [](const TypeInfo& type) {
    return !type.object || type.object() == &Collection::describeClass() ||
           library().find(type.object()->name()) == type.object();
  };
  for (const ClassInfo* info : library().classes()) {
    EXPECT_FALSE(info->help().empty()) << toUtf8(info->name());
    for (const Member& member : info->members()) {
      SCOPED_TRACE(toUtf8(info->name() + u"." + member.name));
      EXPECT_FALSE(member.help.empty());
      EXPECT_TRUE(known(member.result));
      for (const Parameter& parameter : member.parameters) EXPECT_TRUE(known(parameter.type));
    }
  }
}

}  // namespace
}  // namespace zelUtilities
