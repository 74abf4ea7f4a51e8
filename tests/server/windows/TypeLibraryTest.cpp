// The compiled type library, read with the system's loader and written back as the description that it was
// compiled from.
#include <gtest/gtest.h>

#include <map>

#include "library/Library.h"
#include "server/InterfaceDescription.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

std::string take(BSTR text) {
  std::string taken = utf8(text);
  SysFreeString(text);
  return taken;
}

template <class Described>
std::pair<std::string, std::string> nameAndHelp(const Described& described, MEMBERID member = MEMBERID_NIL) {
  BSTR name = nullptr, help = nullptr;
  described->GetDocumentation(member, &name, &help, nullptr, nullptr);
  return {take(name), "helpstring(\"" + take(help) + "\")"};
}

std::string uuidOf(const GUID& id) {
  wchar_t text[39] = {};
  StringFromGUID2(id, text, 39);
  std::string lower = utf8(text).substr(1, 36);
  for (char& c : lower) c = static_cast<char>(std::tolower(c));
  return "[uuid(" + lower + ")";
}

ComRef<ITypeInfo> referred(ITypeInfo* info, HREFTYPE type) {
  ComRef<ITypeInfo> found;
  info->GetRefTypeInfo(type, found.receive());
  return found;
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
  return type.vt == VT_USERDEFINED ? nameAndHelp(referred(info, type.hreftype)).first : names.at(type.vt);
}

// The values of an enumeration, each with its name, as they stand in a description.
std::map<LONG, std::string> valuesOf(ITypeInfo* enumeration) {
  std::map<LONG, std::string> names;
  VARDESC* value = nullptr;
  for (UINT i = 0; enumeration->GetVarDesc(i, &value) >= 0; enumeration->ReleaseVarDesc(value), ++i)
    names[value->lpvarValue->lVal] = nameAndHelp(enumeration, value->memid).first;
  return names;
}

std::string defaultText(ITypeInfo* info, const ELEMDESC& parameter) {
  const VARIANT& value = parameter.paramdesc.pparamdescex->varDefaultValue;
  std::string text = value.vt == VT_BOOL ? std::to_string(value.boolVal) : textOf(value);
  if (value.vt == VT_BSTR) text = "\"" + text + "\"";
  if (parameter.tdesc.vt == VT_USERDEFINED) {
    const auto names = valuesOf(referred(info, parameter.tdesc.hreftype).get());
    if (names.contains(value.lVal)) text = names.at(value.lVal);
  }
  return ", defaultvalue(" + text + ")";
}

std::string functionText(ITypeInfo* info, const FUNCDESC& function) {
  static const std::map<INVOKEKIND, const char*> kinds = {{INVOKE_FUNC, ""},
                                                          {INVOKE_PROPERTYGET, ", propget"},
                                                          {INVOKE_PROPERTYPUT, ", propput"},
                                                          {INVOKE_PROPERTYPUTREF, ", propputref"}};
  BSTR names[32] = {};
  UINT count = 0;
  info->GetNames(function.memid, names, 32, &count);
  std::string text = "    [id(" + std::to_string(function.memid) + ")" + kinds.at(function.invkind);
  if ((function.wFuncFlags & FUNCFLAG_FRESTRICTED) != 0) text += ", restricted";
  text += ", " + nameAndHelp(info, function.memid).second + "]\n    " +
          typeText(info, function.elemdescFunc.tdesc) + " " + take(names[0]) + "(";
  for (int i = 0; i < function.cParams; ++i) {
    const ELEMDESC& parameter = function.lprgelemdescParam[i];
    const WORD flags = parameter.paramdesc.wParamFlags;
    const std::string name = take(names[i + 1]);
    text += i == 0 ? "[in" : ", [in";
    if ((flags & PARAMFLAG_FOUT) != 0) text += ", out";
    if ((flags & PARAMFLAG_FOPT) != 0) text += ", optional";
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0) text += defaultText(info, parameter);
    text += "] " + typeText(info, parameter.tdesc) + " " + (name.empty() ? "rhs" : name);
  }
  return text + ");\n";
}

std::string callsText(ITypeInfo* info) {
  std::string text = "    properties:\n    methods:\n";
  FUNCDESC* function = nullptr;
  for (UINT i = 0; info->GetFuncDesc(i, &function) >= 0; info->ReleaseFuncDesc(function), ++i)
    if (function->memid < 0x60000000) text += functionText(info, *function);  // above are IDispatch's own
  return text;
}

std::string facesText(ITypeInfo* coclass) {
  std::string text;
  HREFTYPE face = 0;
  for (UINT i = 0; coclass->GetRefTypeOfImplType(i, &face) >= 0; ++i) {
    INT flags = 0;
    coclass->GetImplTypeFlags(i, &flags);
    text += std::string("    [default") + ((flags & IMPLTYPEFLAG_FSOURCE) != 0 ? ", source" : "") +
            "] dispinterface " + nameAndHelp(referred(coclass, face)).first + ";\n";
  }
  return text;
}

std::string typeInfoText(ITypeInfo* info) {
  TYPEATTR* attributes = nullptr;
  info->GetTypeAttr(&attributes);
  const bool isEnumeration = attributes->typekind == TKIND_ENUM,
             isClass = attributes->typekind == TKIND_COCLASS;
  const WORD flags = attributes->wTypeFlags;
  const std::string id = uuidOf(attributes->guid);
  info->ReleaseTypeAttr(attributes);
  const auto [name, help] = nameAndHelp(info);
  if (isEnumeration) {
    std::string values;
    for (const auto& [value, called] : valuesOf(info))
      values += (values.empty() ? "" : ",\n") + ("    " + called) + " = " + std::to_string(value);
    return "  typedef " + id + "] enum " + name + " {\n" + values + "\n  } " + name + ";\n";
  }
  std::string text = "  " + id + ", " + help;
  if ((flags & TYPEFLAG_FAPPOBJECT) != 0) text += ", appobject";
  if (isClass && (flags & TYPEFLAG_FCANCREATE) == 0) text += ", noncreatable";
  text += (isClass ? "]\n  coclass " : "]\n  dispinterface ") + name;
  return text + " {\n" + (isClass ? facesText(info) : callsText(info)) + "  };\n";
}

// Both libraries are compiled from one description, each with a switch of its own.
class TypeLibraryTest : public testing::TestWithParam<const wchar_t*> {};

TEST_P(TypeLibraryTest, SaysWhatTheDescriptionSays) {
  const std::wstring path = besideProgram(GetParam());
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) GTEST_SKIP() << "not built";
  ComRef<ITypeLib> typeLibrary;
  ASSERT_GE(LoadTypeLibEx(path.c_str(), REGKIND_NONE, typeLibrary.receive()), 0);
  std::string description = interfaceDescription(library());
  std::erase(description, '\\');  // as the texts are behind it
  for (UINT i = 0; i < typeLibrary->GetTypeInfoCount(); ++i) {
    ComRef<ITypeInfo> info;
    typeLibrary->GetTypeInfo(i, info.receive());
    const std::string text = typeInfoText(info.get());
    const std::size_t at = description.find("\n" + text);
    EXPECT_NE(at, std::string::npos) << text;
    description.erase(std::min(at, description.size()), text.size());
  }
  EXPECT_EQ(description.rfind("uuid("), description.find("uuid(")) << "of the library alone:\n"
                                                                   << description;
  const auto [name, help] = nameAndHelp(typeLibrary.get(), -1);
  EXPECT_NE(description.find(help + "]\nlibrary " + name + " {\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(, TypeLibraryTest,
                         testing::Values(L"zelUtilities.dll", L"..\\..\\windows-x86\\bin\\zelUtilities.dll"),
                         [](const auto& library) {
                           return library.index == 0 ? "OfThisLibrary" : "Of32Bits";
                         });

}  // namespace
}  // namespace zelUtilities
