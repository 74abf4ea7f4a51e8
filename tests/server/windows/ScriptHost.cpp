#include "server/windows/ScriptHost.h"

#include <windows.h>

#include <activscp.h>

#include <deque>
#include <fstream>
#include <iterator>
#include <vector>

#include "platform/windows/OwnedVariant.h"
#include "platform/windows/ProbeDispatch.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {

namespace {

// Calls a function of the script. Scripts write into references to variants only.
HRESULT callScript(IDispatch& script, DISPID function, DISPPARAMS& passed) {
  std::vector<OwnedVariant> held(passed.cArgs);
  std::vector<VARIANT> arguments(passed.cArgs);
  for (UINT i = 0; i < passed.cArgs; ++i) {
    VariantCopyInd(&held[i], &passed.rgvarg[i]);
    arguments[i] = held[i];
    if ((passed.rgvarg[i].vt & VT_BYREF) == 0) continue;
    arguments[i].vt = VT_BYREF | VT_VARIANT;
    arguments[i].pvarVal = &held[i];
  }
  DISPPARAMS parameters{arguments.data(), nullptr, passed.cArgs, 0};
  const HRESULT code = script.Invoke(function, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                     nullptr, nullptr, nullptr);
  for (UINT i = 0; i < passed.cArgs; ++i)
    if (passed.rgvarg[i].vt == (VT_BYREF | VT_BOOL) && VariantChangeType(&held[i], &held[i], 0, VT_BOOL) >= 0)
      *passed.rgvarg[i].pboolVal = held[i].boolVal;
  return code;
}

// Hands the events of an object to functions of the script, by the names that its type information gives.
class ScriptSink {
 public:
  ScriptSink(IDispatch* script, const std::wstring& prefix, IDispatch* source)
      : point_(eventsOf(source)), sink_([this, script, prefix](const ProbeDispatch::Call& call) {
          BSTR event = nullptr;
          events_->GetDocumentation(call.id, &event, nullptr, nullptr, nullptr);
          std::wstring name = prefix + L"_" + event;
          SysFreeString(event);
          LPOLESTR units = name.data();
          DISPID function = 0;
          if (script->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &function) < 0)
            return DISP_E_MEMBERNOTFOUND;
          return callScript(*script, function, *call.parameters);
        }) {
    ComRef<ITypeInfo> coclass;
    ComRef<ITypeLib> library;
    UINT index = 0;
    GUID id;
    const auto provider = query<IProvideClassInfo2>(source);
    if (!point_ || provider->GetClassInfo(coclass.receive()) < 0) return;
    coclass->GetContainingTypeLib(library.receive(), &index);
    provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id);
    library->GetTypeInfoOfGuid(id, events_.receive());
    point_->Advise(&sink_, &cookie_);
  }
  ~ScriptSink() { disconnect(); }

  bool isConnected() const { return cookie_ != 0; }
  void disconnect() {
    if (cookie_ != 0) point_->Unadvise(cookie_);
    cookie_ = 0;
  }

 private:
  ComRef<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  ComRef<ITypeInfo> events_;
  ProbeDispatch sink_;
};

// The face of a script's object that tells of a type; lives for as long as the script holds it.
class TypedFace final : public ProbeDispatch {
 public:
  explicit TypedFace(ComRef<IDispatch> object)
      : ProbeDispatch([object](const Call& call) {
          std::wstring name = call.name;
          LPOLESTR units = name.data();
          DISPID id = 0;
          const HRESULT code = object->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id);
          if (code < 0) return code;
          return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, call.flags, call.parameters, call.result,
                                call.exception, nullptr);
        }) {}
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = ProbeDispatch::Release();
    if (left == 0) delete this;
    return left;
  }
};

// What the script calls.
class Tools {
 public:
  explicit Tools(ScriptOutcome& outcome) : outcome_(outcome) {}

  ComRef<IDispatch> script;
  ProbeDispatch face{[this](const ProbeDispatch::Call& call) {
                       std::vector<OwnedVariant> values(call.parameters->cArgs);
                       for (UINT i = 0; i < values.size(); ++i) VariantCopyInd(&values[i], &call.argument(i));
                       return answer(call.id, values, call.result);
                     },
                     {L"Equal", L"Watch", L"Unwatch", L"Finished", L"NewObject", L"Typed"}};
  std::deque<ScriptSink> sinks;  // kept to the end: one may leave while it is being called

 private:
  HRESULT answer(DISPID id, std::vector<OwnedVariant>& values, VARIANT* result) {
    if (id == 1 && values.size() == 3) {
      const std::string is = textOf(values[0]);
      const std::string expected = textOf(values[1]);
      ++outcome_.checks;
      if (is != expected)
        outcome_.complaints += textOf(values[2]) + ": is <" + is + ">, expected <" + expected + ">\n";
    } else if (id == 2 && values.size() == 2) {
      sinks.emplace_back(script.get(), values[1].bstrVal, values[0].pdispVal);
      if (!sinks.back().isConnected()) outcome_.complaints += "no events\n";
      if (result) result->vt = VT_I4;
      if (result) result->lVal = static_cast<LONG>(sinks.size()) - 1;
    } else if (id == 3 && values.size() == 1) {
      sinks.at(std::stoul(textOf(values[0]))).disconnect();
    } else if (id == 4) {
      outcome_.isFinished = true;
    } else if (id == 5 && values.size() == 1 && result) {
      CLSID classId;
      result->vt = VT_DISPATCH;
      CLSIDFromProgID(values[0].bstrVal, &classId);
      return CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(&result->pdispVal));
    } else if (id == 6 && values.size() == 2 && result) {
      result->vt = VT_DISPATCH;
      result->pdispVal = &(new TypedFace(query<IDispatch>(values[0].pdispVal)))->called(values[1].bstrVal);
    } else {
      return DISP_E_BADPARAMCOUNT;
    }
    return S_OK;
  }

  ScriptOutcome& outcome_;
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

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
  ComRef<IActiveScript> engine;
  CLSIDFromProgID(name.ends_with(L".js") ? L"JScript" : L"VBScript", &engineId);
  if (source.empty() || CoCreateInstance(engineId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                                         engine.receiveAny()) < 0) {
    outcome.complaints = "the script or its engine is missing\n";
    return outcome;
  }
  const auto parser = query<IActiveScriptParse>(engine.get());
  Tools tools(outcome);
  Site site(outcome, tools.face);
  engine->SetScriptSite(&site);
  parser->InitNew();
  engine->AddNamedItem(L"tools", SCRIPTITEM_ISVISIBLE | SCRIPTITEM_GLOBALMEMBERS);
  engine->GetScriptDispatch(nullptr, tools.script.receive());
  EXCEPINFO exception{};
  parser->ParseScriptText(source.c_str(), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE, nullptr,
                          &exception);
  engine->SetScriptState(SCRIPTSTATE_CONNECTED);
  tools.sinks.clear();
  engine->Close();
  return outcome;
}

}  // namespace zelUtilities
