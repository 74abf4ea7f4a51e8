// The library as a C++ client uses it: typed values, arguments by name and by reference, what it tells of
// itself.
#include <gtest/gtest.h>

#include "automation/ArrayData.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/VariantConversion.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

class CppClient : public testing::Test {
 protected:
  static LateBound create(const char16_t* name) { return LateBound::create(String(u"zelUtilities.") + name); }

  // Arguments last one first, those with a name in front, as the system passes them.
  static HRESULT call(IDispatch* object, const wchar_t* name, std::vector<VARIANT> reversed, VARIANT* result,
                      std::vector<DISPID> named = {}, EXCEPINFO* exception = nullptr) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR units = const_cast<LPOLESTR>(name);
    EXPECT_GE(object->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id), 0);
    DISPPARAMS parameters{reversed.data(), named.data(), static_cast<UINT>(reversed.size()),
                          static_cast<UINT>(named.size())};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result, exception,
                          nullptr);
  }
  static VARIANT referenceTo(VARTYPE type, void* place) {
    VARIANT reference;
    reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
    reference.byref = place;
    return reference;
  }

  ServerUnderTest server_;
};

TEST_F(CppClient, KeepsKindAndBoundsOfTypedArrays) {
  const LateBound node = create(u"zelNodeList").object(u"Create", u"", u"k", u"t");
  Ref<ArrayData> table = ArrayData::create(VariantKind::Double, {{5, 3}, {-1, 2}});
  for (std::size_t i = 0; i < 6; ++i) table->set(i, static_cast<double>(i) / 2);
  node.put(u"Tag", table);
  const Variant tag = node(u"Tag");
  ASSERT_EQ(tag.array().elementKind(), VariantKind::Double);
  EXPECT_EQ(tag.array().bounds()[0].lower, 5);
  EXPECT_EQ(tag.array().bounds()[1].lower, -1);
  EXPECT_EQ(tag.array().at(5).doubleValue(), 2.5);

  const std::vector<std::uint8_t> bytes = {0, 255, 'z'};
  const LateBound files = create(u"zelFiles");
  files(u"zel_PutFileContents", ArrayData::ofBytes(bytes), u"bytes.bin");
  const Variant read = files(u"zel_GetFileContents", u"bytes.bin");
  EXPECT_EQ(std::vector(read.array().bytes().begin(), read.array().bytes().end()), bytes);
}

TEST_F(CppClient, IsAnsweredThroughTypedAndVariantReferences) {
  const auto files = dispatchOf(create(u"zelFiles"));
  BSTR text = SysAllocString(L"a/b");
  OwnedVariant variable;
  variable.vt = VT_BSTR;
  variable.bstrVal = SysAllocString(L"c/d");
  OwnedVariant isUrl;
  for (const VARIANT& passed : {referenceTo(VT_BSTR, &text), referenceTo(VT_VARIANT, &variable)})
    EXPECT_EQ(call(files.get(), L"zel_IsURL", {passed}, &isUrl), S_OK);
  EXPECT_EQ(utf8(text) + textOf(variable), "a\\bc\\d");
  EXPECT_EQ(textOf(isUrl), "False");
  SysFreeString(text);

  const auto misc = dispatchOf(create(u"zelMisc"));
  OwnedVariant doubles;
  toSystem(ArrayData::create(VariantKind::Double, {{1, 2}}), doubles);
  SAFEARRAY* grown = SafeArrayCreateVector(VT_R8, 0, 1);
  EXPECT_EQ(call(misc.get(), L"zel_AppendArray", {doubles, referenceTo(VT_ARRAY | VT_R8, &grown)}, nullptr),
            S_OK);
  EXPECT_EQ(grown->rgsabound[0].cElements, 3U);
  EXPECT_EQ(call(misc.get(), L"zel_AppendArray",
                 {referenceTo(VT_ARRAY | VT_R8, &grown), referenceTo(VT_VARIANT, &doubles)}, nullptr),
            S_OK);
  EXPECT_EQ(doubles.parray->rgsabound[0].cElements, 5U);
  OwnedVariant variants;
  toSystem(ArrayData::ofVariants({u"1.5"}), variants);
  EXPECT_EQ(call(misc.get(), L"zel_AppendArray",
                 {doubles, referenceTo(VT_ARRAY | VT_VARIANT, &variants.parray)}, nullptr),
            S_OK);
  EXPECT_EQ(fromSystem(variants).array().size(), 6U);
  EXPECT_EQ(fromSystem(variants).array().at(0).doubleValue(), 1.5);
  SafeArrayDestroy(grown);

  // An optional argument by reference, left out and given.
  const LateBound registry = create(u"zelRegistry");
  const auto user = std::int32_t(0x80000001);
  EXPECT_TRUE(registry(u"zel_GetRegistryValue", user, u"Software\\None", u"None").isEmpty());
  EXPECT_EQ(registry(u"zel_GetRegistryValue", user, u"Software\\None", u"None", u"default").text(),
            u"default");
}

TEST_F(CppClient, NamesArguments) {
  const LateBound builder = create(u"zelStringCat");
  const auto object = dispatchOf(builder);
  LPOLESTR names[] = {const_cast<LPOLESTR>(L"addelement"), const_cast<LPOLESTR>(L"SVALUE"),
                      const_cast<LPOLESTR>(L"sTagname"), const_cast<LPOLESTR>(L"sNothing")};
  DISPID ids[4];
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  EXPECT_EQ(ids[1], 1);
  EXPECT_EQ(ids[2], 0);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 4, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[3], DISPID_UNKNOWN);

  OwnedVariant text;
  OwnedVariant tag;
  toSystem(u"v", text);
  toSystem(u"t", tag);
  EXPECT_EQ(call(object.get(), L"AddElement", {text, tag}, nullptr, {1, 0}), S_OK);
  EXPECT_EQ(builder.text(u"Complete"), u"<t>v</t>\r\n");
  EXCEPINFO exception{};
  EXPECT_EQ(call(object.get(), L"AddElement", {text, tag}, nullptr, {9, 0}, &exception), DISP_E_EXCEPTION);
  EXPECT_EQ(HRESULT_CODE(exception.scode), 448);
  EXPECT_EQ(utf8(exception.bstrSource), "zelUtilities.zelStringCat");
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
}

TEST_F(CppClient, TellsOfItsTypeAndItsErrors) {
  const auto object = dispatchOf(create(u"zelNodeList"));
  ComRef<ITypeInfo> information;
  ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.receive()), S_OK);
  BSTR name = nullptr;
  information->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  EXPECT_EQ(utf8(name), "_zelNodeList");
  SysFreeString(name);
  EXPECT_EQ(query<ISupportErrorInfo>(object.get())->InterfaceSupportsErrorInfo(IID_IDispatch), S_OK);

  ComRef<IEnumConnectionPoints> points;
  ASSERT_EQ(query<IConnectionPointContainer>(object.get())->EnumConnectionPoints(points.receive()), S_OK);
  IConnectionPoint* found[2] = {};
  ULONG count = 0;
  EXPECT_EQ(points->Next(2, found, &count), S_FALSE);
  ASSERT_EQ(count, 1U);
  EXPECT_NE(found[0]->Unadvise(7), S_OK);
  found[0]->Release();
}

TEST_F(CppClient, SurvivesImpossibleCalls) {
  const auto object = dispatchOf(create(u"zelNodeList"));
  const auto invoke = [&](DISPID id, DISPPARAMS* parameters) {
    return object->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr, nullptr);
  };
  DISPPARAMS none{};
  DISPPARAMS lying{nullptr, nullptr, 3, 0};
  DISPPARAMS tooManyNames{nullptr, nullptr, 0, 3};
  EXPECT_EQ(invoke(999, nullptr), E_INVALIDARG);
  EXPECT_EQ(invoke(999, &none), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(invoke(0, &lying), DISP_E_EXCEPTION);
  EXPECT_EQ(invoke(0, &tooManyNames), DISP_E_EXCEPTION);
}

int allocations = 0;
void* (*allocate)(std::size_t) = nullptr;
void* countedAllocate(std::size_t size) {
  ++allocations;
  return allocate(size);
}

// Leads the library's own import of malloc through a counter.
void countAllocations() {
  auto* base = reinterpret_cast<char*>(GetModuleHandleW(L"zelUtilities.dll"));
  allocate = reinterpret_cast<decltype(allocate)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), "malloc")));
  const auto* headers =
      reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
  const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); module->Name; ++module) {
    for (auto* slot = reinterpret_cast<decltype(allocate)*>(base + module->FirstThunk); *slot; ++slot) {
      DWORD before = 0;
      if (*slot != allocate || !VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before)) continue;
      *slot = &countedAllocate;
    }
  }
}

TEST_F(CppClient, AllocatesNothingWhereNoObjectOrTextIsReturned) {
  const LateBound list = create(u"zelNodeList");
  list(u"CreateColumn", u"A");
  const LateBound node = list.object(u"Create", u"", u"k", u"t");
  countAllocations();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(list.number(u"Count"), 1);
    node.put(u"HItem", i);
    EXPECT_EQ(node.number(u"HItem"), i);
  }
  EXPECT_EQ(allocations, 0);
  list.object(u"Create", u"", u"l", u"t");
  EXPECT_GT(allocations, 0);  // they are counted
}

TEST_F(CppClient, PassesXmlNodesIn) {
  const LateBound document = LateBound::create(u"MSXML.DOMDocument");
  document(u"loadXML", u"<a><b>t</b></a>");
  EXPECT_EQ(create(u"zelXML")(u"zel_ValueFromElement", u"b", document.object(u"documentElement"), u"").text(),
            u"t");
}

}  // namespace
}  // namespace zelUtilities
