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
  double Grow(double, std::int16_t&, const String&, bool) { return 0; }
  std::int32_t Count() const { return 0; }
  void setCount(std::int32_t) {}
};

// The description of one class alone, or why it is refused.
std::string described(const ClassInfo& info) {
  ClassRegistry registry;
  registry.add(info);
  try {
    return interfaceDescription(registry);
  } catch (const Error& error) {
    return error.what();
  }
}

// What the library itself happens not to have.
TEST(InterfaceDescription, EscapesTextsAndShowsDefaultsInTheHelpWhereATypeLibraryCannot) {
  const ClassInfo gadget =
      describe<Gadget>("zelGadget", "A \"gadget\".")
          .creatable()
          .method("Grow", &Gadget::Grow,
                  {arg("dBy") = 2.5, optional("lLeft"), arg("sName") = u"a\"b", arg("bAll") = true}, "Grows.")
          .property("Count", &Gadget::Count, &Gadget::setCount, "How many.");
  EXPECT_THAT(
      described(gadget),
      HasSubstr("[id(1), helpstring(\"Grows. Default of dBy: 2.5.\")]\n"
                "    double Grow([in, optional] double dBy, [in, out, optional] short* lLeft, "
                "[in, optional, defaultvalue(\"a\\\"b\")] BSTR sName, "
                "[in, optional, defaultvalue(-1)] VARIANT_BOOL bAll);\n"
                "    [id(2), propget, helpstring(\"How many.\")]\n    long Count();\n"
                "    [id(2), propput, helpstring(\"How many.\")]\n    void Count([in] long rhs);\n  };"));
  EXPECT_THAT(described(gadget), HasSubstr("helpstring(\"A \\\"gadget\\\".\")]\n  coclass"));
}

void nothing(const String&, const String&) {}

TEST(InterfaceDescription, RefusesNamesThatATypeLibraryWouldConfuse) {
  const std::tuple<const char*, const char*, const char*, std::string> rows[] = {
      {"Value", "value", "Help.", "\"Value\" and \"value\" differ only in letter case"},
      {"Do", "default", "Help.", "\"default\" is a word of the description language"},
      {"Do", "sTwo", "caf\xC3\xA9", "\"caf\xC3\xA9\" is more than plain ASCII"}};
  for (const auto& [name, parameter, help, refusal] : rows)
    EXPECT_EQ(
        described(describeFunctions("zelBad", "Bad.").function(name, &nothing, {"sOne", parameter}, help)),
        refusal);
}

}  // namespace
}  // namespace zelUtilities
