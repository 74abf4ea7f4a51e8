// The compiled type library, read back with the system's loader, against the class registry.
#include <gtest/gtest.h>

#include <map>

#include "automation/Conversions.h"
#include "library/Library.h"
#include "server/InterfaceDescription.h"
#include "server/PublishedNames.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

std::string take(BSTR text) {
  std::string taken = utf8(text);
  SysFreeString(text);
  return taken;
}

GUID guidOf(const Uuid& uuid) {
  GUID guid;
  const std::wstring text =
      L"{" + std::wstring(reinterpret_cast<const wchar_t*>(fromUtf8(uuidText(uuid)).c_str())) + L"}";
  IIDFromString(text.c_str(), &guid);
  return guid;
}

std::string typeText(ITypeInfo* info, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_VOID:
      return "void";
    case VT_I2:
      return "short";
    case VT_I4:
      return "long";
    case VT_R4:
      return "float";
    case VT_R8:
      return "double";
    case VT_CY:
      return "CURRENCY";
    case VT_DATE:
      return "DATE";
    case VT_BSTR:
      return "BSTR";
    case VT_BOOL:
      return "VARIANT_BOOL";
    case VT_UI1:
      return "unsigned char";
    case VT_VARIANT:
      return "VARIANT";
    case VT_DISPATCH:
      return "IDispatch*";
    case VT_UNKNOWN:
      return "IUnknown*";
    case VT_PTR:
      return typeText(info, *type.lptdesc) + "*";
    case VT_SAFEARRAY:
      return "SAFEARRAY(" + typeText(info, *type.lptdesc) + ")";
    case VT_USERDEFINED: {
      ITypeInfo* named = nullptr;
      if (info->GetRefTypeInfo(type.hreftype, &named) < 0) return "(unknown)";
      BSTR name = nullptr;
      named->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
      named->Release();
      return take(name);
    }
    default:
      return "(type " + std::to_string(type.vt) + ")";
  }
}

std::string defaultText(const PARAMDESC& parameter) {
  if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) return "";
  const VARIANT& value = parameter.pparamdescex->varDefaultValue;
  if (value.vt == VT_BSTR) return "= \"" + utf8(value.bstrVal) + "\"";
  if (value.vt == VT_BOOL) return "= " + std::to_string(value.boolVal);
  return "= " + textOf(value);
}

std::string expectedDefault(const Parameter& parameter) {
  if (publishedDefault(parameter).empty()) return "";
  if (parameter.type.kind == VariantKind::Boolean) return toBoolean(parameter.defaultValue) ? "= -1" : "= 0";
  if (parameter.defaultValue.isString()) return "= \"" + toUtf8(parameter.defaultValue.text()) + "\"";
  return "= " + std::to_string(toLong(parameter.defaultValue));
}

// One function a line: identifier, kind, result, name, parameters, help.
std::multimap<std::string, std::string> readBack(ITypeInfo* info) {
  std::multimap<std::string, std::string> functions;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; info->GetFuncDesc(i, &function) >= 0; ++i) {
    BSTR names[32] = {};
    UINT count = 0;
    info->GetNames(function->memid, names, 32, &count);
    BSTR help = nullptr;
    info->GetDocumentation(function->memid, nullptr, &help, nullptr, nullptr);
    const std::string name = take(names[0]);
    std::string line = std::to_string(function->memid) + " " + std::to_string(function->invkind) + " " +
                       typeText(info, function->elemdescFunc.tdesc) + " " + name + "(";
    for (int p = 0; p < function->cParams; ++p) {
      const ELEMDESC& parameter = function->lprgelemdescParam[p];
      line += typeText(info, parameter.tdesc) + " " + take(names[p + 1]);
      if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0) line += " optional";
      line += defaultText(parameter.paramdesc) + ";";
    }
    if (function->memid < 0x60000000) functions.emplace(name, line + ") " + take(help));
    info->ReleaseFuncDesc(function);
  }
  return functions;
}

std::string parametersText(const std::vector<Parameter>& parameters) {
  std::string text;
  for (const Parameter& parameter : parameters) {
    text += publishedType(parameter.type, library()) + " " + toUtf8(parameter.name);
    if (parameter.optional) text += " optional";
    text += expectedDefault(parameter) + ";";
  }
  return text;
}

std::multimap<std::string, std::string> expected(const ClassInfo& info) {
  std::multimap<std::string, std::string> functions;
  for (const Member& member : info.members()) {
    const std::string name = toUtf8(member.name);
    const std::string id = std::to_string(member.id) + " ";
    const std::string help = ") " + publishedHelp(member.help, member.parameters);
    const std::string result =
        member.id == Member::enumeratorId ? "IUnknown*" : publishedType(member.result, library());
    const std::string parameters = parametersText(member.parameters);
    functions.emplace(name,
                      id + (member.isProperty ? "2 " : "1 ") + result + " " + name + "(" + parameters + help);
    const std::string value = name + "(" + parameters + result + " ;" + help;
    if (member.put) functions.emplace(name, id + "4 void " + value);
    if (isPublishedByReference(member)) functions.emplace(name, id + "8 void " + value);
  }
  return functions;
}

std::multimap<std::string, std::string> expectedEvents(const ClassInfo& info) {
  std::multimap<std::string, std::string> functions;
  for (const EventInfo& event : info.events())
    functions.emplace(toUtf8(event.name), std::to_string(event.id) + " 1 void " + toUtf8(event.name) + "(" +
                                              parametersText(event.parameters) + ") " +
                                              publishedHelp(event.help, event.parameters));
  return functions;
}

class TypeLibraryTest : public testing::Test {
 protected:
  TypeLibraryTest() {
    EXPECT_GE(LoadTypeLibEx(besideProgram(L"zelUtilities.dll").c_str(), REGKIND_NONE, &library_), 0);
  }
  ~TypeLibraryTest() override { library_->Release(); }

  ITypeInfo* find(const Uuid& id) {
    ITypeInfo* info = nullptr;
    EXPECT_GE(library_->GetTypeInfoOfGuid(guidOf(id), &info), 0) << uuidText(id);
    return info;
  }
  void expectFunctions(const Uuid& id, const std::multimap<std::string, std::string>& functions) {
    ITypeInfo* info = find(id);
    ASSERT_TRUE(info);
    EXPECT_EQ(readBack(info), functions);
    info->Release();
  }

  ITypeLib* library_ = nullptr;
};

TEST_F(TypeLibraryTest, BearsTheLibrarysNameAndHelp) {
  BSTR name = nullptr;
  BSTR help = nullptr;
  ASSERT_GE(library_->GetDocumentation(-1, &name, &help, nullptr, nullptr), 0);
  EXPECT_EQ(take(name), "zelUtilities");
  EXPECT_EQ(take(help), "Zelora Utility Functions (V1.2)");
}

TEST_F(TypeLibraryTest, DescribesEveryMemberAsTheRegistryDoes) {
  for (const ClassInfo* info : library().classes()) {
    SCOPED_TRACE(toUtf8(info->name()));
    expectFunctions(callInterfaceUuid(*info), expected(*info));
    if (!info->events().empty()) expectFunctions(eventInterfaceUuid(*info), expectedEvents(*info));
  }
}

TEST_F(TypeLibraryTest, MarksWhatClientsCreateAndWhatIsGlobal) {
  for (const ClassInfo* info : library().classes()) {
    SCOPED_TRACE(toUtf8(info->name()));
    ITypeInfo* described = find(classUuid(*info));
    ASSERT_TRUE(described);
    TYPEATTR* attributes = nullptr;
    ASSERT_GE(described->GetTypeAttr(&attributes), 0);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0, info->isCreatable() || info->isGlobal());
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FAPPOBJECT) != 0, info->isGlobal());
    EXPECT_EQ(attributes->cImplTypes, info->events().empty() ? 1 : 2);
    described->ReleaseTypeAttr(attributes);
    described->Release();
  }
}

TEST_F(TypeLibraryTest, ListsEveryEnumerationsValues) {
  for (const EnumInfo* info : library().enumerations()) {
    ITypeInfo* described = find(enumerationUuid(*info));
    ASSERT_TRUE(described);
    UINT at = 0;
    for (const EnumInfo::Value& value : info->values) {
      VARDESC* member = nullptr;
      ASSERT_GE(described->GetVarDesc(at++, &member), 0) << toUtf8(value.name);
      BSTR name = nullptr;
      described->GetDocumentation(member->memid, &name, nullptr, nullptr, nullptr);
      EXPECT_EQ(take(name), toUtf8(value.name));
      EXPECT_EQ(textOf(*member->lpvarValue), std::to_string(value.value));
      described->ReleaseVarDesc(member);
    }
    VARDESC* beyond = nullptr;
    EXPECT_LT(described->GetVarDesc(at, &beyond), 0) << toUtf8(info->name);
    described->Release();
  }
}

}  // namespace
}  // namespace zelUtilities
