// The library as a C++ client uses it: identifiers looked up once, typed values, sinks.
#include <gtest/gtest.h>
#include <windows.h>

#include <ocidl.h>

#include <cstring>
#include <thread>

#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

// Cleared at the end.
struct Value : VARIANT {
  Value() { VariantInit(this); }
  explicit Value(const wchar_t* text) : Value() {
    vt = VT_BSTR;
    bstrVal = SysAllocString(text);
  }
  explicit Value(long number) : Value() {
    vt = VT_I4;
    lVal = number;
  }
  ~Value() { VariantClear(this); }
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
};

class CppClient : public testing::Test {
 protected:
  ~CppClient() override {
    if (object_) object_->Release();
  }

  void create(const wchar_t* name) {
    CLSID id;
    ASSERT_GE(CLSIDFromProgID((std::wstring(L"zelUtilities.") + name).c_str(), &id), 0);
    ASSERT_GE(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                               reinterpret_cast<void**>(&object_)),
              0);
  }

  DISPID idOf(const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR units = const_cast<LPOLESTR>(name);
    EXPECT_GE(object_->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id), 0);
    return id;
  }

  // Arguments last one first, those with a name in front, as the system passes them.
  HRESULT call(const wchar_t* name, WORD flags, std::initializer_list<VARIANT> reversed, VARIANT* result,
               std::initializer_list<DISPID> named = {}) {
    DISPPARAMS parameters{const_cast<VARIANT*>(reversed.begin()), const_cast<DISPID*>(named.begin()),
                          static_cast<UINT>(reversed.size()), static_cast<UINT>(named.size())};
    return object_->Invoke(idOf(name), IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &exception_,
                           nullptr);
  }

  ServerUnderTest server_;
  IDispatch* object_ = nullptr;
  EXCEPINFO exception_{};
};

SAFEARRAY* doubles() {
  SAFEARRAY* array = SafeArrayCreateVector(VT_R8, 5, 3);
  for (LONG i = 5; i < 8; ++i) {
    double element = i / 2.0;
    SafeArrayPutElement(array, &i, &element);
  }
  return array;
}

TEST_F(CppClient, KeepsKindAndBoundsOfTypedArrays) {
  create(L"zelNodeList");
  Value node;
  Value none(L"");
  Value key(L"k");
  Value array;
  array.vt = VT_ARRAY | VT_R8;
  array.parray = doubles();
  ASSERT_EQ(call(L"Create", DISPATCH_METHOD, {array, none, key, none}, &node), S_OK);
  std::swap(object_, node.pdispVal);
  Value tag;
  EXPECT_EQ(call(L"Tag", DISPATCH_PROPERTYGET, {}, &tag), S_OK);
  std::swap(object_, node.pdispVal);
  ASSERT_EQ(tag.vt, VT_ARRAY | VT_R8);
  LONG lower = 0;
  LONG upper = 0;
  SafeArrayGetLBound(tag.parray, 1, &lower);
  SafeArrayGetUBound(tag.parray, 1, &upper);
  EXPECT_EQ(lower, 5);
  EXPECT_EQ(upper, 7);
  double last = 0;
  SafeArrayGetElement(tag.parray, &upper, &last);
  EXPECT_EQ(last, 3.5);
}

TEST_F(CppClient, PassesBytesByReferenceAndReadsThemBack) {
  create(L"zelFiles");
  SAFEARRAY* bytes = SafeArrayCreateVector(VT_UI1, 0, 3);
  std::memcpy(bytes->pvData, "\x00\xFFz", 3);
  VARIANT reference;
  reference.vt = VT_BYREF | VT_ARRAY | VT_UI1;
  reference.pparray = &bytes;
  Value name(L"bytes.bin");
  Value written;
  EXPECT_EQ(call(L"zel_PutFileContents", DISPATCH_METHOD, {name, reference}, &written), S_OK);
  Value read;
  EXPECT_EQ(call(L"zel_GetFileContents", DISPATCH_METHOD, {name}, &read), S_OK);
  ASSERT_EQ(read.vt, VT_ARRAY | VT_UI1);
  EXPECT_EQ(std::memcmp(read.parray->pvData, "\x00\xFFz", 3), 0);
  SafeArrayDestroy(bytes);
}

TEST_F(CppClient, NamesArguments) {
  create(L"zelStringCat");
  LPOLESTR names[] = {const_cast<LPOLESTR>(L"addelement"), const_cast<LPOLESTR>(L"SVALUE"),
                      const_cast<LPOLESTR>(L"sTagname"), const_cast<LPOLESTR>(L"sNothing")};
  DISPID ids[4];
  EXPECT_EQ(object_->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  EXPECT_EQ(ids[1], 1);
  EXPECT_EQ(ids[2], 0);
  EXPECT_EQ(object_->GetIDsOfNames(IID_NULL, names, 4, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[3], DISPID_UNKNOWN);

  Value text(L"v");
  Value tag(L"t");
  EXPECT_EQ(call(L"AddElement", DISPATCH_METHOD, {text, tag}, nullptr, {1, 0}), S_OK);
  Value complete;
  EXPECT_EQ(call(L"Complete", DISPATCH_METHOD, {}, &complete), S_OK);
  EXPECT_EQ(textOf(complete), "<t>v</t>\r\n");

  EXPECT_EQ(call(L"AddElement", DISPATCH_METHOD, {text, tag}, nullptr, {9, 0}), DISP_E_EXCEPTION);
  EXPECT_EQ(HRESULT_CODE(exception_.scode), 448);
  SysFreeString(exception_.bstrSource);
  SysFreeString(exception_.bstrDescription);
}

TEST_F(CppClient, TellsOfItsTypeAndItsEvents) {
  create(L"zelNodeList");
  ITypeInfo* information = nullptr;
  ASSERT_EQ(object_->GetTypeInfo(0, LOCALE_USER_DEFAULT, &information), S_OK);
  BSTR name = nullptr;
  information->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  EXPECT_EQ(utf8(name), "_zelNodeList");
  SysFreeString(name);
  information->Release();

  ISupportErrorInfo* errors = nullptr;
  ASSERT_EQ(object_->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&errors)), S_OK);
  EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_IDispatch), S_OK);
  errors->Release();

  IConnectionPointContainer* container = nullptr;
  ASSERT_EQ(object_->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)),
            S_OK);
  IEnumConnectionPoints* points = nullptr;
  ASSERT_EQ(container->EnumConnectionPoints(&points), S_OK);
  IConnectionPoint* found[2] = {};
  ULONG count = 0;
  EXPECT_EQ(points->Next(2, found, &count), S_FALSE);
  ASSERT_EQ(count, 1U);
  EXPECT_NE(found[0]->Unadvise(7), S_OK);
  found[0]->Release();
  points->Release();
  container->Release();
}

TEST_F(CppClient, SurvivesImpossibleCalls) {
  create(L"zelNodeList");
  EXPECT_EQ(object_->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
            E_INVALIDARG);
  DISPPARAMS none{};
  EXPECT_EQ(object_->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  DISPPARAMS lying{nullptr, nullptr, 3, 0};
  EXPECT_EQ(object_->Invoke(0, IID_NULL, 0, DISPATCH_METHOD, &lying, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
  DISPPARAMS tooManyNames{nullptr, nullptr, 0, 3};
  EXPECT_EQ(object_->Invoke(0, IID_NULL, 0, DISPATCH_METHOD, &tooManyNames, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
}

// One thread's client; each thread is an apartment of its own.
class Apartment final : public CppClient {
 public:
  explicit Apartment(const wchar_t* piece) : piece_(piece) {}
  void TestBody() override {
    create(L"zelStringCat");
    Value piece(piece_);
    for (int i = 0; i < 500; ++i) EXPECT_EQ(call(L"Concatenate", DISPATCH_METHOD, {piece}, nullptr), S_OK);
    Value complete;
    EXPECT_EQ(call(L"Complete", DISPATCH_METHOD, {}, &complete), S_OK);
    std::string expected;
    for (int i = 0; i < 500; ++i) expected += utf8(piece_);
    EXPECT_EQ(textOf(complete), expected);
  }

 private:
  const wchar_t* piece_;
};

TEST(Apartments, WorkSideBySideInOneProcess) {
  std::thread other([] { Apartment(L"other").TestBody(); });
  Apartment(L"this").TestBody();
  other.join();
}

TEST(ServerLife, TheLibraryCanBeUnloadedWhenNothingIsHeld) {
  const ServerUnderTest server;
  const HMODULE module = LoadLibraryW(besideProgram(L"zelUtilities.dll").c_str());
  ASSERT_TRUE(module);
  const auto canUnload = reinterpret_cast<HRESULT(WINAPI*)()>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
  EXPECT_EQ(canUnload(), S_OK);
  CLSID id;
  CLSIDFromProgID(L"zelUtilities.zelNodeList", &id);
  IDispatch* list = nullptr;
  ASSERT_EQ(
      CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&list)),
      S_OK);
  EXPECT_EQ(canUnload(), S_FALSE);
  list->Release();
  EXPECT_EQ(canUnload(), S_OK);
}

}  // namespace
}  // namespace zelUtilities
