#include "server/InterfaceDescription.h"

#include <gmock/gmock.h>

#include "automation/Binder.h"
#include "library/Library.h"
#include "server/RegistrationFree.h"

extern const char zelUtilities_idl[];
extern const char zelUtilities_manifest_in[];

namespace zelUtilities {
namespace {

using testing::HasSubstr;
using testing::Not;

// Whoever changes a published class sees here what its clients will see.
TEST(InterfaceDescription, IsTheOneThatIsKept) {
  EXPECT_EQ(zelUtilities_idl, interfaceDescription(library()))
      << "To accept the change: build/native/bin/zel idl > src/server/zelUtilities.idl";
}

TEST(RegistrationFreeManifest, IsTheOneThatIsKept) {
  EXPECT_EQ(zelUtilities_manifest_in, registrationFreeManifest(library()))
      << "To accept the change: build/native/bin/zel manifest > src/server/zelUtilities.manifest.in";
}

struct Gadget : Object {
  Event<bool&> onGone;
  Variant Item(const Variant&) const { return {}; }
  Ref<Object> NewEnum() const { return {}; }
  Variant Tag() const { return {}; }
  void setTag(const Variant&) {}
  std::int32_t Count() const { return 0; }
  double Grow(double, std::int16_t&, const String&, bool) { return 0; }
};

ClassInfo gadget() {
  return describe<Gadget>("zelGadget", "A \"gadget\".")
      .creatable()
      .item("Item", &Gadget::Item, {"vKey"}, "One.")
      .enumerator(&Gadget::NewEnum)
      .property("Tag", &Gadget::Tag, &Gadget::setTag, "Any.")
      .property("Count", &Gadget::Count, "How many.")
      .method("Grow", &Gadget::Grow,
              {arg("dBy") = 2.5, optional("lLeft"), arg("sName") = u"a\"b", arg("bAll") = true}, "Grows.")
      .event("Gone", &Gadget::onGone, {"bCancel"}, "Is gone.");
}

std::string describedGadget() {
  const ClassInfo info = gadget();
  ClassRegistry registry;
  registry.add(info);
  return interfaceDescription(registry);
}

TEST(InterfaceDescription, GivesEachKindOfAccessUnderTheMembersIdentifier) {
  const std::string text = describedGadget();
  EXPECT_THAT(text,
              HasSubstr("[id(0), propget, helpstring(\"One.\")]\n    VARIANT Item([in] VARIANT vKey);"));
  EXPECT_THAT(text, HasSubstr("[id(-4), propget, restricted, "));
  EXPECT_THAT(text, HasSubstr("[id(1), propput, helpstring(\"Any.\")]\n    void Tag([in] VARIANT rhs);"));
  EXPECT_THAT(text, HasSubstr("[id(1), propputref, helpstring(\"Any.\")]\n    void Tag([in] VARIANT rhs);"));
  EXPECT_THAT(text, HasSubstr("[id(2), propget, helpstring(\"How many.\")]\n    long Count();"));
  EXPECT_THAT(text, Not(HasSubstr("void Count(")));
}

TEST(InterfaceDescription, ShowsDefaultsInTheHelpWhereATypeLibraryCannot) {
  EXPECT_THAT(describedGadget(),
              HasSubstr("[id(3), helpstring(\"Grows. Default of dBy: 2.5.\")]\n"
                        "    double Grow([in, optional] double dBy, [in, out, optional] short* lLeft, "
                        "[in, optional, defaultvalue(\"a\\\"b\")] BSTR sName, "
                        "[in, optional, defaultvalue(-1)] VARIANT_BOOL bAll);"));
}

TEST(InterfaceDescription, HasASourceInterfaceWithNumberedEvents) {
  const std::string text = describedGadget();
  EXPECT_THAT(
      text, HasSubstr("[id(1), helpstring(\"Is gone.\")]\n    void Gone([in, out] VARIANT_BOOL* bCancel);"));
  EXPECT_THAT(text, HasSubstr("[default, source] dispinterface _zelGadgetEvents;"));
}

template <class Names>
std::string refusal(const Names& addNames) {
  auto table = describeFunctions("zelBad", "Bad.");
  addNames(table);
  const ClassInfo info = table;
  ClassRegistry registry;
  registry.add(info);
  try {
    return "accepted: " + interfaceDescription(registry);
  } catch (const Error& error) {
    return error.what();
  }
}

void nothing(const String&, const String&) {}

TEST(InterfaceDescription, RefusesNamesThatATypeLibraryWouldConfuse) {
  EXPECT_EQ(refusal([](auto& table) {
              table.function("Value", &nothing, {"sOne", "value"}, "Help.");
            }),
            "\"Value\" and \"value\" differ only in letter case");
  EXPECT_EQ(refusal([](auto& table) {
              table.function("Do", &nothing, {"sOne", "default"}, "Help.");
            }),
            "\"default\" is a word of the description language");
  EXPECT_EQ(refusal([](auto& table) {
              table.function("Do", &nothing, {"sOne", "sTwo"}, "caf\xC3\xA9");
            }),
            "\"caf\xC3\xA9\" is more than plain ASCII");
}

}  // namespace
}  // namespace zelUtilities
