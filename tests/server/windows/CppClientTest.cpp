// The library as a C++ client uses it: typed values, arguments by name and by reference, what it tells of
// itself.
#include <gtest/gtest.h>

#include "platform/Desktop.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/VariantConversion.h"
#include "server/windows/ServerUnderTest.h"
#include "support/RaisedError.h"

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
  const Ref<ArrayData> table = ArrayData::create(VariantKind::Double, {{5, 3}, {-1, 1}});
  table->set(2, 2.5);
  node.put(u"Tag", table);
  EXPECT_EQ(shown(node(u"Tag")), "Double()[5:3][-1:1] {Double 0, Double 0, Double 2.5}");
  const LateBound files = create(u"zelFiles");
  files(u"zel_PutFileContents", ArrayData::ofBytes(std::vector<std::uint8_t>{0, 255, 'z'}), u"bytes.bin");
  EXPECT_EQ(shown(files(u"zel_GetFileContents", u"bytes.bin")), "Byte()[0:3] {Byte 0, Byte 255, Byte 122}");
}

TEST_F(CppClient, IsAnsweredThroughTypedAndVariantReferences) {
  OwnedVariant text, variable, isUrl, grown, doubles, variants;
  toSystem(u"a/b", text);
  toSystem(u"c/d", variable);
  const auto files = dispatchOf(create(u"zelFiles"));
  for (const VARIANT& passed : {referenceTo(VT_BSTR, &text.bstrVal), referenceTo(VT_VARIANT, &variable)})
    EXPECT_EQ(call(files.get(), L"zel_IsURL", {passed}, &isUrl), S_OK);
  EXPECT_EQ(textOf(text) + " " + textOf(variable) + " " + textOf(isUrl), "a\\b c\\d False");

  toSystem(ArrayData::create(VariantKind::Double, {{0, 1}}), grown);
  toSystem(ArrayData::create(VariantKind::Double, {{1, 2}}), doubles);
  toSystem(ArrayData::ofVariants({u"1.5"}), variants);
  const VARIANT toGrown = referenceTo(VT_ARRAY | VT_R8, &grown.parray);
  const auto misc = dispatchOf(create(u"zelMisc"));
  const auto append = [&](const VARIANT& array, const VARIANT& more) {
    return call(misc.get(), L"zel_AppendArray", {more, array}, nullptr);
  };
  EXPECT_EQ(append(toGrown, doubles), S_OK);
  EXPECT_EQ(append(referenceTo(VT_VARIANT, &doubles), toGrown), S_OK);
  EXPECT_EQ(append(referenceTo(VT_ARRAY | VT_VARIANT, &variants.parray), grown), S_OK);
  EXPECT_EQ(fromSystem(doubles).array().size(), 5U);
  EXPECT_EQ(shown(fromSystem(variants)), "Variant()[0:4] {Double 1.5, Double 0, Double 0, Double 0}");
}

TEST_F(CppClient, NamesArguments) {
  const LateBound builder = create(u"zelStringCat");
  const auto object = dispatchOf(builder);
  LPOLESTR names[] = {const_cast<LPOLESTR>(L"addelement"), const_cast<LPOLESTR>(L"SVALUE"),
                      const_cast<LPOLESTR>(L"sTagname"), const_cast<LPOLESTR>(L"sNothing")};
  DISPID ids[4];
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  EXPECT_TRUE(ids[1] == 1 && ids[2] == 0);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 4, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[3], DISPID_UNKNOWN);

  OwnedVariant text, tag;
  toSystem(u"v", text);
  toSystem(u"t", tag);
  EXPECT_EQ(call(object.get(), L"AddElement", {text, tag}, nullptr, {1, 0}), S_OK);
  EXPECT_EQ(builder.text(u"Complete"), u"<t>v</t>\r\n");
  EXCEPINFO exception{};
  const HRESULT code = call(object.get(), L"AddElement", {text, tag}, nullptr, {9, 0}, &exception);
  EXPECT_TRUE(
      raisedError([&] { raiseComError(code, &exception); }).starts_with("448|zelUtilities.zelStringCat|"));
}

TEST_F(CppClient, TellsOfItsTypeAndItsErrors) {
  const LateBound list = create(u"zelNodeList");
  EXPECT_EQ(className(*list.get()), u"zelNodeList");
  const auto object = dispatchOf(list);
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
  DISPPARAMS none{}, lying{nullptr, nullptr, 3, 0}, tooManyNames{nullptr, nullptr, 0, 3};
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
  const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
  auto* imports = reinterpret_cast<decltype(allocate)*>(base + table.VirtualAddress);
  DWORD before = 0;
  VirtualProtect(imports, table.Size, PAGE_READWRITE, &before);
  std::replace(imports, imports + table.Size / sizeof allocate, allocate, &countedAllocate);
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

}  // namespace
}  // namespace zelUtilities
