// Loads a settings file into a node list through COM, prints each node while it is added, then the sections
// and entries, changes a value and saves a copy.
//   settings-com settings.ini copy.ini
// The library must be registered: regsvr32 zelUtilities.dll, or for yourself: regsvr32 /n /i:user
// zelUtilities.dll Or it lies beside the program together with its manifest, and settings-com.exe.manifest
// names that.
#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>
#include <shellapi.h>

#include <cstdio>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

std::string utf8(const wchar_t* text) {
  if (!text) return {};
  const int units = static_cast<int>(wcslen(text));
  std::string bytes(3 * static_cast<std::size_t>(units), '\0');
  bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(
      CP_UTF8, 0, text, units, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
  return bytes;
}

void require(HRESULT result, const char* what) {
  if (FAILED(result)) throw std::runtime_error(what);
}

// A value on its way into or out of a call; cleared at the end.
class Value : public VARIANT {
 public:
  Value() { VariantInit(this); }
  Value(const wchar_t* text) : Value() {
    vt = VT_BSTR;
    bstrVal = SysAllocString(text);
  }
  Value(Value&& other) noexcept : VARIANT(other) { VariantInit(&other); }
  ~Value() { VariantClear(this); }

  bool isTrue() const { return vt == VT_BOOL && boolVal != VARIANT_FALSE; }
  std::string text() const {
    Value converted;
    require(VariantCopyInd(&converted, const_cast<Value*>(this)), "the value is no text");
    require(VariantChangeType(&converted, &converted, VARIANT_ALPHABOOL, VT_BSTR), "the value is no text");
    return utf8(converted.bstrVal);
  }
};

// An object of the library, called by the names of its members.
class Client {
 public:
  explicit Client(const Value& value) : object_(value.vt == VT_DISPATCH ? value.pdispVal : nullptr) {
    if (!object_) throw std::runtime_error("there is no object");
    object_->AddRef();
  }
  static Client create(const wchar_t* programmaticId) {
    CLSID id;
    require(CLSIDFromProgID(programmaticId, &id), "the library is not registered");
    Value object;
    object.vt = VT_DISPATCH;
    object.pdispVal = nullptr;
    require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                             reinterpret_cast<void**>(&object.pdispVal)),
            "the object cannot be created");
    return Client(object);
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { object_->Release(); }

  IDispatch* get() const { return object_; }

  // Calls a method or reads a property. Where many calls follow, keep the identifier.
  Value call(const wchar_t* name, std::initializer_list<const wchar_t*> texts = {}) const {
    DISPID id = DISPID_NEWENUM;
    LPOLESTR units = const_cast<LPOLESTR>(name);
    if (*name)
      require(object_->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id), "no such member");
    std::vector<Value> arguments;
    for (auto text = std::rbegin(texts); text != std::rend(texts); ++text) arguments.emplace_back(*text);
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    Value result;
    EXCEPINFO exception{};
    const HRESULT code =
        object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &parameters, &result, &exception, nullptr);
    const std::string description = utf8(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    require(code, description.empty() ? "the call failed" : description.c_str());
    return result;
  }
  Client object(const wchar_t* name, std::initializer_list<const wchar_t*> texts = {}) const {
    return Client(call(name, texts));
  }

  // Calls body(item) with each item of a collection, as For Each does.
  template <class Body>
  void forEach(const Body& body) const {
    const Value walk = call(L"");
    IEnumVARIANT* items = nullptr;
    require(walk.punkVal->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(&items)),
            "no collection");
    for (;;) {
      Value item;
      if (items->Next(1, &item, nullptr) != S_OK) break;
      body(Client(item));
    }
    items->Release();
  }

 private:
  IDispatch* object_;
};

// Told of what happens to a node list for as long as it lives. The numbers of the events are those in the
// interface description (zelUtilities.idl, _zelNodeListEvents).
class NodeListEvents final : public IDispatch {
 public:
  explicit NodeListEvents(const Client& list) {
    IProvideClassInfo2* information = nullptr;
    require(list.get()->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&information)),
            "no events");
    const HRESULT known = information->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events_);
    information->Release();
    require(known, "no events");
    IConnectionPointContainer* points = nullptr;
    require(list.get()->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&points)),
            "no events");
    const HRESULT found = points->FindConnectionPoint(events_, &point_);
    points->Release();
    require(found, "no events");
    require(point_->Advise(this, &cookie_), "the events cannot be followed");
  }
  ~NodeListEvents() {
    point_->Unadvise(cookie_);
    point_->Release();
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                   UINT*) override try {
    constexpr DISPID nodeAdded = 1;
    if (id != nodeAdded) return S_OK;
    Value node;
    require(VariantCopyInd(&node, &arguments->rgvarg[0]), "no argument");
    std::printf("added %s\n", Client(node).call(L"Key").text().c_str());
    return S_OK;
  } catch (...) {  // nothing may leave through COM
    return E_FAIL;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IDispatch || id == events_;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  // Lives as long as its block; it leaves the list's connection at the end.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }

 private:
  IID events_{};
  IConnectionPoint* point_ = nullptr;
  DWORD cookie_ = 0;
};

void run(const wchar_t* file, const wchar_t* copy) {
  const Client list = Client::create(L"zelUtilities.zelNodeList");
  {
    const NodeListEvents events(list);
    if (!list.call(L"LoadFromINI", {file}).isTrue()) throw std::runtime_error("the file cannot be read");
  }
  list.object(L"RootNodes").forEach([](const Client& section) {
    std::printf("%s\n", section.call(L"Text").text().c_str());
    section.object(L"Nodes").forEach([](const Client& entry) {
      const Client cells = entry.object(L"Cells");
      std::printf("  %s = %s\n", cells.object(L"Item", {L"Value"}).call(L"Value").text().c_str(),
                  cells.object(L"Item", {L"Data"}).call(L"Value").text().c_str());
    });
  });
  list.call(L"UpdateINIValue", {L"Window", L"Width", L"1280"});
  if (!list.call(L"SaveAsINI", {copy}).isTrue()) throw std::runtime_error("the copy cannot be written");
  std::printf("saved\n");
}

}  // namespace

int main() {
  SetConsoleOutputCP(CP_UTF8);
  int count = 0;
  LPWSTR* arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 3) {
    std::fprintf(stderr, "settings-com FILE COPY\n");
    return 1;
  }
  int code = 0;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  try {
    run(arguments[1], arguments[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    code = 1;
  }
  CoUninitialize();
  LocalFree(arguments);
  return code;
}
