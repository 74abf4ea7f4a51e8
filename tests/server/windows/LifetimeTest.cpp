// Who keeps the library and its objects, and when they end.
#include <gtest/gtest.h>
#include <windows.h>

#include <psapi.h>

#include <thread>

#include "platform/windows/ProbeDispatch.h"
#include "server/windows/ScriptHost.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

HRESULT canUnload() {
  const HMODULE module = LoadLibraryW(besideProgram(L"zelUtilities.dll").c_str());
  return reinterpret_cast<HRESULT(WINAPI*)()>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")))();
}

LateBound newList() { return LateBound::create(u"zelUtilities.zelNodeList"); }

TEST(Lifetime, TheLibraryCanBeUnloadedWhenNothingIsHeld) {
  const ServerUnderTest server;
  EXPECT_EQ(canUnload(), S_OK);
  LateBound list = newList();
  LateBound node = list.object(u"Create", u"", u"k", u"t");
  LateBound walk = list.object(u"NewEnum");
  ComRef<IConnectionPoint> point = eventsOf(dispatchOf(list).get());
  list = LateBound();
  EXPECT_EQ(canUnload(), S_FALSE);
  point = {};
  EXPECT_EQ(canUnload(), S_FALSE);
  walk = LateBound();
  EXPECT_EQ(canUnload(), S_FALSE);
  node = LateBound();
  EXPECT_EQ(canUnload(), S_OK);
}

std::size_t memoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

TEST(Lifetime, ObjectsThatAScriptDropsLeaveNothing) {
  const ServerUnderTest server;
  runScript(L"dropping.vbs");  // what the engine itself keeps
  const std::size_t before = memoryInUse();
  const ScriptOutcome outcome = runScript(L"dropping.vbs");
  EXPECT_EQ(outcome.complaints, "");
  EXPECT_TRUE(outcome.isFinished);
  EXPECT_LT(memoryInUse(), before + (1U << 20));  // of 50,000 objects
  EXPECT_EQ(canUnload(), S_OK);
}

// One thread's client: what it builds must be its own, and so must the events that it hears and answers.
void expectOwnWork(DWORD apartment, const String& piece) {
  const ServerUnderTest server(apartment);
  const LateBound builder = LateBound::create(u"zelUtilities.zelStringCat");
  String expected;
  for (int i = 0; i < 300; ++i) {
    builder(u"Concatenate", piece);
    expected += piece;
  }
  EXPECT_EQ(builder.text(u"Complete"), expected);
  const LateBound list = newList();
  ProbeDispatch cancelling([](const ProbeDispatch::Call& call) {
    VARIANT& last = call.parameters->rgvarg[0];
    if (last.vt == (VT_BYREF | VT_BOOL)) *last.pboolVal = VARIANT_TRUE;
    return S_OK;
  });
  DWORD cookie = 0;
  const ComRef<IConnectionPoint> point = eventsOf(dispatchOf(list).get());
  ASSERT_EQ(point->Advise(&cancelling, &cookie), S_OK);
  EXPECT_EQ(list.object(u"Create", u"", u"k", u"t").text(u"Text"), u"t");
  list(u"Remove", u"k");
  EXPECT_EQ(list.number(u"Count"), 1);
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
  // The file system's object is the thread's own and stays until after COM has ended.
  EXPECT_FALSE(LateBound::create(u"zelUtilities.zelFiles").isTrue(u"zel_IsFile", u"none"));
}

TEST(Lifetime, ApartmentsWorkSideBySideAndEventsReachEachOfThem) {
  std::thread other([] { expectOwnWork(COINIT_APARTMENTTHREADED, u"other"); });
  std::thread proxied([] { expectOwnWork(COINIT_MULTITHREADED, u"proxied"); });
  expectOwnWork(COINIT_APARTMENTTHREADED, u"this");
  other.join();
  proxied.join();
}

// Run by the test below, in a process of its own.
TEST(Lifetime, DISABLED_AClientThatReleasesNothing) {
  static auto& server = *new ServerUnderTest;
  static auto& list = *new LateBound(newList());
  static auto& sink = *new ProbeDispatch([](const ProbeDispatch::Call&) { return S_OK; });
  DWORD cookie = 0;
  eventsOf(dispatchOf(list).get())->Advise(&sink, &cookie);
  static auto& node = *new LateBound(list.object(u"Create", u"", u"k", u"t"));
  EXPECT_FALSE(node.isNothing());
  (void)server;
}

TEST(Lifetime, AClientThatEndsWithoutReleasingDoesNotCrash) {
  EXPECT_EQ(
      runProgram(L"\"" + besideProgram(L"test_server.exe") +
                 L"\" --gtest_also_run_disabled_tests --gtest_filter=*DISABLED_AClientThatReleasesNothing"),
      0U);
}

}  // namespace
}  // namespace zelUtilities
