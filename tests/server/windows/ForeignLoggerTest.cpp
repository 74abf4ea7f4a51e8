// A logger that is somebody else's: a class of the system's store, named in the machine's settings.
#include <gtest/gtest.h>

#include "platform/windows/ProbeDispatch.h"
#include "server/windows/ScriptHost.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

constexpr CLSID loggerId = {0x5A3C1E70, 0x2B4D, 0x4F61, {0x90, 0x11, 0x3C, 0x5E, 0x77, 0x19, 0xAB, 0x02}};

void setMachineText(const wchar_t* key, const wchar_t* name, const std::wstring& text) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, name, REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Registers the logger's class for as long as it lives.
class LoggerClass final : public IClassFactory {
 public:
  explicit LoggerClass(IDispatch& logger) : logger_(logger) {
    setMachineText(L"Software\\Classes\\Tests.Logger\\CLSID", nullptr,
                   L"{5A3C1E70-2B4D-4F61-9011-3C5E7719AB02}");
    setMachineText(L"Software\\Zelora\\Common", L"ErrorLogger", L"Tests.Logger");
    CoRegisterClassObject(loggerId, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
  }
  virtual ~LoggerClass() {
    CoRevokeClassObject(cookie_);
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Zelora\\Common", L"ErrorLogger");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Tests.Logger");
  }

  HRESULT canCreate = S_OK;

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
    return canCreate < 0 ? canCreate : logger_.QueryInterface(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IClassFactory;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // lives on the stack
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

 private:
  IDispatch& logger_;
  DWORD cookie_ = 0;
};

#pragma GCC diagnostic pop

TEST(ForeignLogger, IsGivenTheReportsOfWhatAScriptDoes) {
  const ServerUnderTest server;
  const auto failingAgain = LateBound::create(u"zelUtilities.zelNodeList");
  failingAgain(u"Create", u"", u"k", u"t");
  HRESULT answer = S_OK;
  std::string reports;
  ProbeDispatch logger(
      [&](const ProbeDispatch::Call& call) {
        for (UINT i = 0; i < call.parameters->cArgs; ++i) reports += textOf(call.argument(i)) + "|";
        failingAgain(u"RemoveColumn", u"none");  // not reported to one who is at it
        return answer;
      },
      {L"errorMessage"});
  LoggerClass loggerClass(logger);

  const auto reportsOf = [&](HRESULT canCreate, HRESULT given) {
    loggerClass.canCreate = canCreate;
    answer = given;
    reports.clear();
    const ScriptOutcome outcome = runScript(L"reports.vbs");
    return outcome.complaints + (outcome.isFinished ? "" : "broken off\n") + reports;
  };
  const char* const report =
      "zelUtilities|1.2.0|zelNodeList.RemoveColumn|-2147221503|zelNodeList.RemoveColumn|"
      "Columns can only be modified with an empty node list.||";
  EXPECT_EQ(reportsOf(S_OK, S_OK), report);
  EXPECT_EQ(reportsOf(S_OK, E_FAIL), report);
  EXPECT_EQ(reportsOf(S_OK, DISP_E_EXCEPTION), report);
  EXPECT_EQ(reportsOf(E_FAIL, S_OK), "");
  EXPECT_EQ(logger.references(), 1);
}

}  // namespace
}  // namespace zelUtilities
