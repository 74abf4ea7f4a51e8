// Sinks of C++ clients: several at once, one that fails, one that keeps the object it listens to.
#include <gtest/gtest.h>
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <vector>

#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Lives on its test's stack and answers every event with the same code.
class Sink final : public IDispatch {
 public:
  explicit Sink(HRESULT answer = S_OK) : answer_(answer) {}
  virtual ~Sink() = default;

  std::vector<DISPID> heard;
  bool cancels = false;
  long references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    const bool known = id == IID_IUnknown || id == IID_IDispatch;
    *out = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* passed, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    heard.push_back(event);
    if (cancels && passed->cArgs > 0 && passed->rgvarg[0].vt == (VT_BYREF | VT_BOOL))
      *passed->rgvarg[0].pboolVal = VARIANT_TRUE;
    return answer_;
  }

 private:
  HRESULT answer_;
};

#pragma GCC diagnostic pop

constexpr DISPID nodeAdded = 1;
constexpr DISPID nodeRemoved = 2;
constexpr DISPID removingNode = 3;

class EventSink : public testing::Test {
 protected:
  EventSink() {
    CLSID id;
    CLSIDFromProgID(L"zelUtilities.zelNodeList", &id);
    CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&list_));
    IConnectionPointContainer* container = nullptr;
    list_->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
    IProvideClassInfo2* provider = nullptr;
    list_->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&provider));
    GUID events;
    provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events);
    container->FindConnectionPoint(events, &point_);
    provider->Release();
    container->Release();
  }
  ~EventSink() override { end(); }

  void end() {
    if (point_) point_->Release();
    if (list_) list_->Release();
    point_ = nullptr;
    list_ = nullptr;
  }

  HRESULT call(const wchar_t* name, const std::vector<const wchar_t*>& texts) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR units = const_cast<LPOLESTR>(name);
    list_->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id);
    std::vector<VARIANT> arguments(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      VARIANT& argument = arguments[texts.size() - 1 - i];
      argument.vt = VT_BSTR;
      argument.bstrVal = SysAllocString(texts[i]);
    }
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    VARIANT result;
    VariantInit(&result);
    const HRESULT code = list_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                       &result, nullptr, nullptr);
    for (VARIANT& argument : arguments) VariantClear(&argument);
    VariantClear(&result);
    return code;
  }

  ServerUnderTest server_;
  IDispatch* list_ = nullptr;
  IConnectionPoint* point_ = nullptr;
};

TEST_F(EventSink, ThatFailsKeepsNobodyElseFromHearing) {
  Sink failing(E_FAIL);
  Sink other;
  DWORD cookies[2] = {};
  ASSERT_EQ(point_->Advise(&failing, &cookies[0]), S_OK);
  ASSERT_EQ(point_->Advise(&other, &cookies[1]), S_OK);
  EXPECT_NE(cookies[0], cookies[1]);
  EXPECT_EQ(call(L"Create", {L"", L"k", L"t"}), S_OK);
  EXPECT_EQ(failing.heard.back(), nodeAdded);
  EXPECT_EQ(other.heard, failing.heard);
  EXPECT_EQ(point_->Unadvise(cookies[0]), S_OK);
  EXPECT_EQ(point_->Unadvise(cookies[0]), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(failing.references, 1);
  end();
}

TEST_F(EventSink, CancelsThroughATypedReference) {
  Sink keeping;
  keeping.cancels = true;
  DWORD cookie = 0;
  call(L"Create", {L"", L"k", L"t"});
  point_->Advise(&keeping, &cookie);
  EXPECT_EQ(call(L"Remove", {L"k"}), S_OK);
  EXPECT_EQ(keeping.heard.back(), removingNode);  // the last of them
  keeping.cancels = false;
  EXPECT_EQ(call(L"Remove", {L"k"}), S_OK);
  EXPECT_EQ(keeping.heard.back(), nodeRemoved);
  end();
}

// The client that forgets to unadvise: its sink ends with the list, and is let go of once.
TEST_F(EventSink, IsLetGoOfWithTheList) {
  Sink forgotten;
  DWORD cookie = 0;
  point_->Advise(&forgotten, &cookie);
  EXPECT_GT(forgotten.references, 1);
  end();
  EXPECT_EQ(forgotten.references, 1);
}

TEST_F(EventSink, MustBeAutomationObject) {
  DWORD cookie = 1;
  EXPECT_EQ(point_->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(point_->Advise(point_, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0U);
}

TEST_F(EventSink, IsListedWhileItIsConnected) {
  Sink sink;
  DWORD cookie = 0;
  point_->Advise(&sink, &cookie);
  IEnumConnections* all = nullptr;
  ASSERT_EQ(point_->EnumConnections(&all), S_OK);
  CONNECTDATA found[2] = {};
  ULONG count = 0;
  EXPECT_EQ(all->Next(2, found, &count), S_FALSE);
  ASSERT_EQ(count, 1U);
  EXPECT_EQ(found[0].dwCookie, cookie);
  found[0].pUnk->Release();
  all->Release();
  end();
  EXPECT_EQ(sink.references, 1);
}

}  // namespace
}  // namespace zelUtilities
