// How many late-bound calls a second the automation server takes, beside the system's own
// Scripting.Dictionary in the same run: from VBScript in the system's engine, and from C++ with identifiers
// looked up once. The library is the one beside the program, found by its manifest. Each figure is the best
// of several rounds, in which the two take turns.
#include <windows.h>

#include <activscp.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int rounds = 5;
constexpr int calls = 100000;
constexpr int entries = 1000;  // in the collections that are looked into

void require(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "Wrong result: %s\n", what);
  std::exit(1);
}

double now() {
  LARGE_INTEGER ticks;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(ticks.QuadPart) / static_cast<double>(frequency.QuadPart);
}

template <class Ours, class Theirs>
void compare(const char* name, int count, const Ours& ours, const Theirs& theirs) {
  double best[2] = {1e9, 1e9};
  const auto timed = [](const auto& body) {
    const double start = now();
    body();
    return now() - start;
  };
  for (int round = 0; round < rounds; ++round) {
    best[0] = std::min(best[0], timed(ours));
    best[1] = std::min(best[1], timed(theirs));
  }
  std::printf("%-22s %11.0f %11.0f %8.2f\n", name, count / best[0], count / best[1], best[1] / best[0]);
  std::fflush(stdout);
}

// The classes of the manifest beside the program, for the whole run.
void activateManifest() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring manifest = path;
  manifest.replace(manifest.rfind(L'\\') + 1, std::wstring::npos, L"zelUtilities.manifest");
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.lpSource = manifest.c_str();
  ULONG_PTR cookie = 0;
  const HANDLE context = CreateActCtxW(&wanted);
  require(context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie), "the manifest");
}

// --- VBScript ---

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class Site final : public IActiveScriptSite {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    const bool known = id == IID_IUnknown || id == __uuidof(IActiveScriptSite);
    *out = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD, IUnknown**, ITypeInfo**) override {
    return TYPE_E_ELEMENTNOTFOUND;
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError*) override {
    require(false, "the script failed");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }
};

#pragma GCC diagnostic pop

class Script {
 public:
  Script() {
    CLSID id;
    IActiveScript* engine = nullptr;
    require(CLSIDFromProgID(L"VBScript", &id) >= 0 &&
                CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                                 reinterpret_cast<void**>(&engine)) >= 0,
            "VBScript");
    engine->QueryInterface(__uuidof(IActiveScriptParse), reinterpret_cast<void**>(&parser_));
    engine->SetScriptSite(&site_);
    parser_->InitNew();
    engine->SetScriptState(SCRIPTSTATE_CONNECTED);
  }
  void run(const std::wstring& statements) const {
    EXCEPINFO exception{};
    parser_->ParseScriptText(statements.c_str(), nullptr, nullptr, nullptr, 0, 0, 0, nullptr, &exception);
  }

 private:
  Site site_;
  IActiveScriptParse* parser_ = nullptr;
};

std::wstring repeated(int count, const std::wstring& statement) {
  return L"For i = 1 To " + std::to_wstring(count) + L"\n" + statement + L"\nNext\n";
}

void measureScript() {
  const Script script;
  script.run(
      L"Set list = CreateObject(\"zelUtilities.zelNodeList\")\n"
      L"Set map = CreateObject(\"Scripting.Dictionary\")\n" +
      repeated(entries, L"list.Create \"\", \"k\" & i, \"t\"\nmap.Add \"k\" & i, \"t\"") +
      L"Set node = list.Item(\"k500\")\n");
  const auto both = [&](const char* name, const wchar_t* ours, const wchar_t* theirs) {
    compare(
        name, calls, [&] { script.run(repeated(calls, ours)); },
        [&] { script.run(repeated(calls, theirs)); });
  };
  both("VBScript Count", L"n = list.Count", L"n = map.Count");
  both("VBScript Item", L"Set found = list.Item(\"k500\")", L"found = map.Item(\"k500\")");
  both("VBScript read a text", L"t = node.Text", L"t = map.Item(\"k500\")");
  compare(
      "VBScript add", 10000,
      [&] {
        script.run(L"Set added = CreateObject(\"zelUtilities.zelNodeList\")\n" +
                   repeated(10000, L"added.Create \"\", \"k\" & i, \"t\""));
      },
      [&] {
        script.run(L"Set added = CreateObject(\"Scripting.Dictionary\")\n" +
                   repeated(10000, L"added.Add \"k\" & i, \"t\""));
      });
}

// --- C++ ---

class Text : public VARIANT {
 public:
  explicit Text(const std::wstring& text) {
    vt = VT_BSTR;
    bstrVal = SysAllocString(text.c_str());
  }
  Text(Text&& other) noexcept : VARIANT(other) { other.vt = VT_EMPTY; }
  Text& operator=(Text&&) = delete;
  ~Text() { VariantClear(this); }
};

class Client {
 public:
  explicit Client(const wchar_t* name) {
    CLSID id;
    require(
        CLSIDFromProgID(name, &id) >= 0 && CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                                            reinterpret_cast<void**>(&object_)) >= 0,
        "an object");
  }
  ~Client() { object_->Release(); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  DISPID idOf(const wchar_t* name) const {
    auto* units = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    require(object_->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id) >= 0, "a name");
    return id;
  }
  // Arguments last one first, as the system takes them.
  template <std::size_t N>
  void call(DISPID id, WORD flags, std::array<VARIANT, N>& reversed, VARTYPE expected) const {
    DISPPARAMS parameters{reversed.data(), nullptr, N, 0};
    VARIANT result;
    VariantInit(&result);
    const HRESULT code =
        object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result, nullptr, nullptr);
    require(code >= 0 && result.vt == expected, "a call");
    VariantClear(&result);
  }

 private:
  IDispatch* object_ = nullptr;
};

std::vector<Text> keysOf(int count) {
  std::vector<Text> keys;
  for (int i = 0; i < count; ++i) keys.emplace_back(L"k" + std::to_wstring(i));
  return keys;
}

const Text none(L"");
const Text text(L"t");

void addNodes(const Client& list, const std::vector<Text>& keys) {
  const DISPID create = list.idOf(L"Create");
  for (const Text& key : keys) {
    std::array<VARIANT, 3> arguments = {text, key, none};
    list.call(create, DISPATCH_METHOD, arguments, VT_DISPATCH);
  }
}

void addEntries(const Client& map, const std::vector<Text>& keys) {
  const DISPID add = map.idOf(L"Add");
  for (const Text& key : keys) {
    std::array<VARIANT, 2> arguments = {text, key};
    map.call(add, DISPATCH_METHOD, arguments, VT_EMPTY);
  }
}

void measureClient() {
  const Client list(L"zelUtilities.zelNodeList");
  const Client map(L"Scripting.Dictionary");
  const std::vector<Text> keys = keysOf(entries);
  addNodes(list, keys);
  addEntries(map, keys);

  const auto counted = [](const Client& client) {
    return [&client, id = client.idOf(L"Count")] {
      std::array<VARIANT, 0> nothing;
      for (int i = 0; i < calls; ++i) client.call(id, DISPATCH_PROPERTYGET, nothing, VT_I4);
    };
  };
  compare("C++ Count", calls, counted(list), counted(map));
  const auto lookedUp = [&keys](const Client& client, VARTYPE expected) {
    return [&client, &keys, expected, id = client.idOf(L"Item")] {
      for (int i = 0; i < calls; ++i) {
        std::array<VARIANT, 1> key = {keys[static_cast<std::size_t>(i % entries)]};
        client.call(id, DISPATCH_PROPERTYGET, key, expected);
      }
    };
  };
  compare("C++ Item", calls, lookedUp(list, VT_DISPATCH), lookedUp(map, VT_BSTR));
  const std::vector<Text> many = keysOf(10000);
  compare(
      "C++ add", 10000, [&] { addNodes(Client(L"zelUtilities.zelNodeList"), many); },
      [&] { addEntries(Client(L"Scripting.Dictionary"), many); });
}

}  // namespace

int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  activateManifest();
  std::printf("%-22s %11s %11s %8s\n", "calls a second", "ours", "dictionary", "ratio");
  measureScript();
  measureClient();
  return 0;
}
