#include "library/Library.h"

#include <gtest/gtest.h>

#include "automation/Collection.h"
#include "automation/Conversions.h"
#include "datalist/zelNodeList.h"
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

// A new object of the class; of those that only other objects make, one of a list's.
Ref<Object> objectOf(const ClassInfo& info) {
  if (Ref<Object> made = CreateNamedObject(u"zelUtilities." + info.name(), u"")) return made;
  const auto list = make<zelNodeList>();
  const Ref<zelNode> node = list->Create(u"", u"n", u"text");
  for (const Ref<Object>& part :
       std::initializer_list<Ref<Object>>{list->Columns()->Item(1), node, node->DefaultCell()})
    if (part->classInfo() == &info) return part;
  return {};
}

Variant distinctValue(const TypeInfo& type, std::int16_t number) {
  if (type.enumeration) return type.enumeration()->values.back().value;
  switch (type.kind) {
    case VariantKind::Boolean:
      return number % 2 == 0;
    case VariantKind::Integer:
      return static_cast<std::int16_t>(number + 1);
    case VariantKind::Long:
      return std::int32_t{10'000} + number;
    case VariantKind::String:
      return u"text " + decimalText(number);
    default:
      return {};
  }
}

// Each property that can be written is given a value of its own, and only then is each read.
TEST(Library, EveryPropertyIsBoundToAValueOfItsOwn) {
  std::size_t tried = 0;
  for (const ClassInfo* info : library().classes()) {
    const Ref<Object> object = objectOf(*info);
    if (!object) continue;
    std::vector<std::pair<const Member*, Variant>> written;
    for (const Member& member : info->members()) {
      if (!member.isProperty || !member.put || !member.parameters.empty()) continue;
      Variant value = distinctValue(member.result, static_cast<std::int16_t>(written.size()));
      if (value.isEmpty() || member.name == u"Decimals") continue;  // which depend on the type
      object->Invoke(member.name, InvokeKind::Put, {&value, 1});
      written.emplace_back(&member, value);
    }
    tried += written.size();
    for (const auto& [member, value] : written)
      EXPECT_EQ(toUtf8(toText(object->Invoke(member->name, InvokeKind::Get, {}))), toUtf8(toText(value)))
          << toUtf8(info->name() + u"." + member->name);
  }
  EXPECT_GT(tried, 50u);
}

}  // namespace
}  // namespace zelUtilities
