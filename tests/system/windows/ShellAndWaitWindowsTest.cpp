#include <windows.h>

#include "platform/Files.h"
#include "support/Testing.h"
#include "system/zelMisc.h"

namespace zelUtilities {
namespace {

String ownProgram() {
  wchar_t path[MAX_PATH];
  return String(reinterpret_cast<const char16_t*>(path), GetModuleFileNameW(nullptr, path, MAX_PATH));
}

// A line that lets this program run a test of its own that takes a moment.
String shortRun() { return u"\"" + ownProgram() + u"\" --gtest_filter=MachineAndTime.Sleeps*"; }

TEST(ShellAndWaitWindows, ProgramsRunToTheirEndHoweverItIs) {
  EXPECT_TRUE(zel_ShellAndWait(u"cmd.exe /c \"echo a b>said& exit 3\""));
  EXPECT_EQ(files().readWhole(u"said"), "a b\r\n");
  CreateDirectoryW(L"My Programs", nullptr);
  ASSERT_TRUE(
      CopyFileW(reinterpret_cast<const wchar_t*>(ownProgram().c_str()), L"My Programs\\my test.exe", FALSE));
  const String run = u" --gtest_filter=None* --gtest_output=xml:ran.xml";
  for (const StringView program :
       {u"\"My Programs\\my test.exe\"", u"My Programs\\my test", u"My Programs\\my test.exe"}) {
    EXPECT_TRUE(zel_ShellAndWait(String(program) + run));
    EXPECT_TRUE(files().fileExists(u"ran.xml"));
    files().remove(u"ran.xml", false);
  }
}

TEST(ShellAndWaitWindows, WhatIsNoProgramDoesNotStart) {
  Reports reports{"zelMisc."};
  for (const StringView line : {u"no-such-program -x", u"\"cmd.exe /c exit\"", u"*"}) {
    EXPECT_FALSE(zel_ShellAndWait(line));
    EXPECT_EQ(reports.taken(), "zel_ShellAndWait|53 ");
  }
}

int ticks = 0;
void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) { ++ticks; }

TEST(ShellAndWaitWindows, MessagesAreHandledWhileItWaitsAndARequestToQuitIsLeftForTheCaller) {
  const UINT_PTR timer = SetTimer(nullptr, 0, 10, tick);
  EXPECT_TRUE(zel_ShellAndWait(shortRun()));
  KillTimer(nullptr, timer);
  EXPECT_GT(ticks, 0);
  PostQuitMessage(7);
  EXPECT_TRUE(zel_ShellAndWait(shortRun()));
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace zelUtilities
