// The compiled type library, read back with the system's loader, against the class registry.
#include <gtest/gtest.h>

#include <iostream>
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

std::string nameOf(ITypeInfo* info, MEMBERID member = MEMBERID_NIL) {
  BSTR name = nullptr;
  info->GetDocumentation(member, &name, nullptr, nullptr, nullptr);
  return take(name);
}

std::string typeText(ITypeInfo* info, const TYPEDESC& type) {
  static const std::map<VARTYPE, const char*> names = {
      {VT_VOID, "void"},         {VT_I2, "short"},        {VT_I4, "long"},
      {VT_R4, "float"},          {VT_R8, "double"},       {VT_CY, "CURRENCY"},
      {VT_DATE, "DATE"},         {VT_BSTR, "BSTR"},       {VT_UI1, "unsigned char"},
      {VT_BOOL, "VARIANT_BOOL"}, {VT_VARIANT, "VARIANT"}, {VT_DISPATCH, "IDispatch*"},
      {VT_UNKNOWN, "IUnknown*"}};
  if (type.vt == VT_PTR) return typeText(info, *type.lptdesc) + "*";
  if (type.vt == VT_SAFEARRAY) return "SAFEARRAY(" + typeText(info, *type.lptdesc) + ")";
  if (type.vt != VT_USERDEFINED) return names.at(type.vt);
  ComRef<ITypeInfo> named;
  return info->GetRefTypeInfo(type.hreftype, named.receive()) < 0 ? "(unknown)" : nameOf(named.get());
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

// Both libraries are compiled from one description, each with a switch of its own.
class TypeLibraryTest : public testing::TestWithParam<const wchar_t*> {
 protected:
  void SetUp() override {
    const std::wstring path = besideProgram(GetParam());
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) GTEST_SKIP() << "not built";
    ASSERT_GE(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library_.receive()), 0);
  }

  ComRef<ITypeInfo> find(const Uuid& id) {
    ComRef<ITypeInfo> info;
    EXPECT_GE(library_->GetTypeInfoOfGuid(guidOf(id), info.receive()), 0) << uuidText(id);
    return info;
  }
  void expectFunctions(const Uuid& id, const std::multimap<std::string, std::string>& functions) {
    if (const auto info = find(id)) {
      EXPECT_EQ(readBack(info.get()), functions);
      compared_ += functions.size();
    }
  }
  // A class as the registry describes it: its members, its events, and how clients come by it.
  void expectClass(const ClassInfo& info) {
    expectFunctions(callInterfaceUuid(info), expected(info));
    if (!info.events().empty()) expectFunctions(eventInterfaceUuid(info), expectedEvents(info));
    const auto described = find(classUuid(info));
    TYPEATTR* attributes = nullptr;
    if (!described || described->GetTypeAttr(&attributes) < 0) return;
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0, info.isCreatable() || info.isGlobal());
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FAPPOBJECT) != 0, info.isGlobal());
    EXPECT_EQ(attributes->cImplTypes, info.events().empty() ? 1 : 2);
    described->ReleaseTypeAttr(attributes);
  }
  void expectEnumeration(const EnumInfo& info) {
    const auto described = find(enumerationUuid(info));
    std::string values;
    VARDESC* member = nullptr;
    for (UINT i = 0; described && described->GetVarDesc(i, &member) >= 0; ++i, ++compared_) {
      values += nameOf(described.get(), member->memid) + " " + textOf(*member->lpvarValue) + "\n";
      described->ReleaseVarDesc(member);
    }
    std::string registered;
    for (const EnumInfo::Value& value : info.values)
      registered += toUtf8(value.name) + " " + std::to_string(value.value) + "\n";
    EXPECT_EQ(values, registered);
  }

  ComRef<ITypeLib> library_;
  std::size_t compared_ = 0;
};

TEST_P(TypeLibraryTest, SaysWhatTheRegistrySays) {
  BSTR name = nullptr;
  BSTR help = nullptr;
  ASSERT_GE(library_->GetDocumentation(-1, &name, &help, nullptr, nullptr), 0);
  EXPECT_EQ(take(name), "zelUtilities");
  EXPECT_EQ(take(help), "Zelora Utility Functions (V1.2)");
  for (const ClassInfo* info : library().classes()) {
    SCOPED_TRACE(toUtf8(info->name()));
    expectClass(*info);
  }
  for (const EnumInfo* info : library().enumerations()) expectEnumeration(*info);
  std::cout << compared_ << " functions and values are the same\n";
}

INSTANTIATE_TEST_SUITE_P(, TypeLibraryTest,
                         testing::Values(L"zelUtilities.dll", L"..\\..\\windows-x86\\bin\\zelUtilities.dll"),
                         [](const auto& library) {
                           return library.index == 0 ? "OfThisLibrary" : "Of32Bits";
                         });

}  // namespace
}  // namespace zelUtilities
