#include "server/windows/ScriptHost.h"

#include <windows.h>

#include <activscp.h>
#include <ocidl.h>

#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <vector>

#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {

namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A dispatch object that answers names of its own; counted only as far as clients need.
class NamedCalls : public IDispatch {
 public:
  virtual ~NamedCalls() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    const bool known = id == IID_IUnknown || id == IID_IDispatch || id == ownId();
    *out = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }

 protected:
  virtual GUID ownId() const { return IID_IDispatch; }

 private:
  ULONG references_ = 1;
};

// Hands the events of an object to functions of the script.
class ScriptSink final : public NamedCalls {
 public:
  ScriptSink(IDispatch* script, std::wstring prefix, IDispatch* source)
      : script_(script), prefix_(std::move(prefix)) {
    IProvideClassInfo2* provider = nullptr;
    if (source->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&provider)) < 0) return;
    provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &eventsId_);
    ITypeInfo* coclass = nullptr;
    ITypeLib* library = nullptr;
    UINT index = 0;
    if (provider->GetClassInfo(&coclass) >= 0) {
      coclass->GetContainingTypeLib(&library, &index);
      library->GetTypeInfoOfGuid(eventsId_, &events_);
      library->Release();
      coclass->Release();
    }
    provider->Release();
    IConnectionPointContainer* container = nullptr;
    if (source->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)) < 0)
      return;
    container->FindConnectionPoint(eventsId_, &point_);
    container->Release();
    if (point_) point_->Advise(this, &cookie_);
  }
  ~ScriptSink() override {
    if (events_) events_->Release();
  }

  bool isConnected() const { return cookie_ != 0; }
  void disconnect() {
    if (point_) {
      point_->Unadvise(cookie_);
      point_->Release();
    }
    point_ = nullptr;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD, DISPPARAMS* passed, VARIANT* result,
                                   EXCEPINFO* exception, UINT* wrong) override {
    DISPID function = 0;
    std::wstring name = prefix_ + L"_" + nameOf(id);
    LPOLESTR units = name.data();
    if (script_->GetIDsOfNames(IID_NULL, &units, 1, locale, &function) < 0) return DISP_E_MEMBERNOTFOUND;
    // Scripts write into references to variants only.
    std::vector<VARIANT> held(passed->cArgs);
    std::vector<VARIANT> arguments(passed->cArgs);
    for (UINT i = 0; i < passed->cArgs; ++i) {
      VariantInit(&held[i]);
      VariantCopyInd(&held[i], &passed->rgvarg[i]);
      arguments[i] = held[i];
      if ((passed->rgvarg[i].vt & VT_BYREF) == 0) continue;
      arguments[i].vt = VT_BYREF | VT_VARIANT;
      arguments[i].pvarVal = &held[i];
    }
    DISPPARAMS parameters{arguments.data(), nullptr, passed->cArgs, 0};
    const HRESULT code =
        script_->Invoke(function, IID_NULL, locale, DISPATCH_METHOD, &parameters, result, exception, wrong);
    for (UINT i = 0; i < passed->cArgs; ++i) {
      if (passed->rgvarg[i].vt == (VT_BYREF | VT_BOOL) &&
          VariantChangeType(&held[i], &held[i], 0, VT_BOOL) >= 0)
        *passed->rgvarg[i].pboolVal = held[i].boolVal;
      VariantClear(&held[i]);
    }
    return code;
  }

 private:
  GUID ownId() const override { return eventsId_; }
  std::wstring nameOf(DISPID id) const {
    BSTR name = nullptr;
    if (events_) events_->GetDocumentation(id, &name, nullptr, nullptr, nullptr);
    const std::wstring text = name ? name : L"";
    SysFreeString(name);
    return text;
  }

  IDispatch* script_;
  std::wstring prefix_;
  GUID eventsId_{};
  ITypeInfo* events_ = nullptr;
  IConnectionPoint* point_ = nullptr;
  DWORD cookie_ = 0;
};

// What the script calls.
class Tools final : public NamedCalls {
 public:
  Tools(ScriptOutcome& outcome, IDispatch*& script) : outcome_(outcome), script_(script) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    static constexpr const wchar_t* known[] = {L"Equal", L"Watch", L"Unwatch", L"Finished"};
    for (DISPID id = 0; id < 4; ++id) {
      if (lstrcmpiW(names[0], known[id]) != 0) continue;
      ids[0] = id + 1;
      return S_OK;
    }
    return DISP_E_UNKNOWNNAME;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* passed, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    std::vector<VARIANT> values(passed->cArgs);
    for (UINT i = 0; i < passed->cArgs; ++i) {
      VariantInit(&values[i]);
      VariantCopyInd(&values[i], &passed->rgvarg[passed->cArgs - 1 - i]);
    }
    const HRESULT code = call(id, values, result);
    for (VARIANT& value : values) VariantClear(&value);
    return code;
  }

  void disconnectAll() {
    for (auto& [number, sink] : sinks_) {
      sink->disconnect();
      sink->Release();
    }
    sinks_.clear();
  }

 private:
  HRESULT call(DISPID id, std::vector<VARIANT>& values, VARIANT* result) {
    if (id == 1 && values.size() == 3) {
      const std::string is = textOf(values[0]);
      const std::string expected = textOf(values[1]);
      ++outcome_.checks;
      if (is != expected)
        outcome_.complaints += textOf(values[2]) + ": is <" + is + ">, expected <" + expected + ">\n";
    } else if (id == 2 && values.size() == 2 && values[0].vt == VT_DISPATCH) {
      auto* sink = new ScriptSink(script_, values[1].bstrVal, values[0].pdispVal);
      if (!sink->isConnected()) outcome_.complaints += "no events\n";
      sinks_.emplace(++lastNumber_, sink);
      if (result) {
        result->vt = VT_I4;
        result->lVal = lastNumber_;
      }
    } else if (id == 3 && values.size() == 1) {
      const auto found = sinks_.find(values[0].vt == VT_I4 ? values[0].lVal : values[0].iVal);
      if (found == sinks_.end()) return DISP_E_BADINDEX;
      ScriptSink* sink = found->second;
      sinks_.erase(found);
      sink->disconnect();
      sink->Release();
    } else if (id == 4) {
      outcome_.isFinished = true;
    } else {
      return DISP_E_BADPARAMCOUNT;
    }
    return S_OK;
  }

  ScriptOutcome& outcome_;
  IDispatch*& script_;
  std::map<long, ScriptSink*> sinks_;
  long lastNumber_ = 0;
};

class Site final : public IActiveScriptSite {
 public:
  Site(ScriptOutcome& outcome, IDispatch& tools) : outcome_(outcome), tools_(tools) {}
  virtual ~Site() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    const bool known = id == IID_IUnknown || id == __uuidof(IActiveScriptSite);
    *out = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // lives on the stack
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override {
    *locale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD mask, IUnknown** item, ITypeInfo** type) override {
    if (type) *type = nullptr;
    if ((mask & SCRIPTINFO_IUNKNOWN) == 0) return TYPE_E_ELEMENTNOTFOUND;
    *item = &tools_;
    tools_.AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
    EXCEPINFO exception{};
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    error->GetExceptionInfo(&exception);
    error->GetSourcePosition(&context, &line, &column);
    outcome_.complaints += "line " + std::to_string(line + 1) + ": " + utf8(exception.bstrDescription) +
                           " (" + utf8(exception.bstrSource) + ")\n";
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

 private:
  ScriptOutcome& outcome_;
  IDispatch& tools_;
};

#pragma GCC diagnostic pop

std::wstring readScript(const std::wstring& name) {
  std::ifstream file(utf8(besideProgram(L"scripts\\" + name).c_str()), std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  return {bytes.begin(), bytes.end()};  // scripts are plain ASCII
}

}  // namespace

ScriptOutcome runScript(const std::wstring& name) {
  ScriptOutcome outcome;
  const std::wstring source = readScript(name);
  CLSID engineId;
  CLSIDFromProgID(name.ends_with(L".js") ? L"JScript" : L"VBScript", &engineId);
  IActiveScript* engine = nullptr;
  IActiveScriptParse* parser = nullptr;
  if (source.empty() || CoCreateInstance(engineId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                                         reinterpret_cast<void**>(&engine)) < 0) {
    outcome.complaints = "the script or its engine is missing\n";
    return outcome;
  }
  engine->QueryInterface(__uuidof(IActiveScriptParse), reinterpret_cast<void**>(&parser));
  IDispatch* script = nullptr;
  auto* tools = new Tools(outcome, script);
  Site site(outcome, *tools);
  engine->SetScriptSite(&site);
  parser->InitNew();
  engine->AddNamedItem(L"tools", SCRIPTITEM_ISVISIBLE | SCRIPTITEM_GLOBALMEMBERS);
  engine->GetScriptDispatch(nullptr, &script);
  EXCEPINFO exception{};
  parser->ParseScriptText(source.c_str(), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE, nullptr,
                          &exception);
  engine->SetScriptState(SCRIPTSTATE_CONNECTED);
  tools->disconnectAll();
  engine->Close();
  if (script) script->Release();
  parser->Release();
  engine->Release();
  tools->Release();
  return outcome;
}

}  // namespace zelUtilities
