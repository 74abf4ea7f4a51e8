#include "server/windows/ScriptHost.h"

#include <deque>
#include <fstream>
#include <iterator>

#include "platform/windows/ForeignObject.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/ProbeDispatch.h"
#include "platform/windows/VariantConversion.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {

namespace {

// Calls a function of the script. Scripts write into references to variants only.
HRESULT callScript(IDispatch& script, DISPID function, DISPPARAMS& passed) {
  std::vector<OwnedVariant> held(passed.cArgs);
  std::vector<VARIANT> arguments(passed.cArgs);
  for (UINT i = 0; i < passed.cArgs; ++i) {
    VariantCopyInd(&held[i], &passed.rgvarg[i]);
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
    HREFTYPE events = 0;
    if (!point_ || query<IProvideClassInfo>(source)->GetClassInfo(coclass.receive()) < 0) return;
    coclass->GetRefTypeOfImplType(1, &events);
    coclass->GetRefTypeInfo(events, events_.receive());
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
                       OwnedVariant values[3], ignored;
                       for (UINT i = 0; i < std::min(call.parameters->cArgs, 3U); ++i)
                         VariantCopyInd(&values[i], &call.argument(i));
                       answer(call.name, values, call.result ? *call.result : ignored);
                       return S_OK;
                     },
                     {L"Equal", L"Watch", L"Unwatch", L"Finished", L"NewObject", L"Typed"}};
  std::deque<ScriptSink> sinks;  // kept to the end: one may leave while it is being called

 private:
  void answer(const std::wstring& tool, OwnedVariant (&values)[3], VARIANT& result) {
    if (tool == L"Equal") {
      const std::string is = textOf(values[0]), expected = textOf(values[1]);
      ++outcome_.checks;
      if (is != expected)
        outcome_.complaints += textOf(values[2]) + ": is <" + is + ">, expected <" + expected + ">\n";
    } else if (tool == L"Watch") {
      sinks.emplace_back(script.get(), values[1].bstrVal, values[0].pdispVal);
      if (!sinks.back().isConnected()) outcome_.complaints += "no events\n";
      toSystem(static_cast<std::int32_t>(sinks.size()) - 1, result);
    } else if (tool == L"Unwatch") {
      sinks.at(std::stoul(textOf(values[0]))).disconnect();
    } else if (tool == L"Finished") {
      outcome_.isFinished = true;
    } else if (tool == L"NewObject") {
      toSystem(createObject(fromUtf8(textOf(values[0]))), result);
    } else {
      result.vt = VT_DISPATCH;
      result.pdispVal = &(new TypedFace(query<IDispatch>(values[0].pdispVal)))->called(values[1].bstrVal);
    }
  }

  ScriptOutcome& outcome_;
};

String readScript(const std::wstring& name) {
  std::ifstream file(utf8(besideProgram(L"scripts\\" + name).c_str()), std::ios::binary);
  return fromUtf8(std::string(std::istreambuf_iterator<char>(file), {}));
}

}  // namespace

ScriptOutcome runScript(const std::wstring& name) {
  ScriptOutcome outcome;
  const LateBound control = LateBound::create(u"MSScriptControl.ScriptControl");
  control.put(u"Language", name.ends_with(L".js") ? u"JScript" : u"VBScript");
  Tools tools(outcome);
  control(u"AddObject", u"tools", make<ForeignObject>(&tools.face), true);
  tools.script = dispatchOf(control.object(u"CodeObject"));
  try {
    control(u"AddCode", readScript(name));
  } catch (const Error& error) {
    const LateBound told = control.object(u"Error");
    outcome.complaints += "line " + std::to_string(told.number(u"Line")) + ": " + error.what() + " (" +
                          toUtf8(error.source()) + ")\n";
  }
  tools.sinks.clear();
  return outcome;
}

}  // namespace zelUtilities
