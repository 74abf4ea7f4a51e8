// What needs another process or a window to be seen.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>

#include "platform/Dialogs.h"
#include "platform/Registry.h"

namespace zelUtilities {
namespace {

constexpr StringView top = u"Software\\TwoWriters";
constexpr const wchar_t* prefixVariable = L"ZEL_TEST_WRITER";

// Starts this program again for the one test that writes values under names with this prefix.
HANDLE startWriter(const wchar_t* prefix) {
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  std::wstring command = std::wstring(L"\"") + program +
                         L"\" --gtest_also_run_disabled_tests --gtest_filter=TwoWriters.DISABLED_Writer";
  SetEnvironmentVariableW(prefixVariable, prefix);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                             &process));
  CloseHandle(process.hThread);
  return process.hProcess;
}

DWORD exitCode(HANDLE process) {
  WaitForSingleObject(process, INFINITE);
  DWORD code = 1;
  GetExitCodeProcess(process, &code);
  CloseHandle(process);
  return code;
}

TEST(TwoWriters, DISABLED_Writer) {
  wchar_t prefix[32] = {};
  ASSERT_NE(GetEnvironmentVariableW(prefixVariable, prefix, 32), 0U);
  const String name(prefix, prefix + std::wcslen(prefix));
  RegistryKey key;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(key.open(RegistryRoot::CurrentUser, top, RegistryAccess::Write), 0);
    ASSERT_EQ(registry().setValue(key.handle(), name + decimalText(i), RegistryType::Text, "x"), 0);
  }
}

TEST(TwoWriters, LoseNoneOfAThousandValuesEach) {
  RegistryKey key;
  bool existed = false;
  ASSERT_EQ(key.create(RegistryRoot::CurrentUser, top, existed), 0);
  const HANDLE first = startWriter(L"first");
  const HANDLE second = startWriter(L"second");
  EXPECT_EQ(exitCode(first), 0U);
  EXPECT_EQ(exitCode(second), 0U);
  ASSERT_EQ(key.open(RegistryRoot::CurrentUser, top, RegistryAccess::Read), 0);
  std::set<String> names;
  RegistryValue value;
  for (std::uint32_t i = 0; registry().enumValue(key.handle(), i, value) == 0; ++i) names.insert(value.name);
  EXPECT_EQ(names.size(), 2000U);
  EXPECT_EQ(registry().deleteKey(RegistryRoot::CurrentUser, top), 0);
}

TEST(MessageBox, ShowsTitleAndTextAndTellsTheAnswer) {
  std::atomic<bool> closed = false;
  std::wstring shown;
  std::thread user([&] {
    while (!closed) {
      if (const HWND box = FindWindowW(L"#32770", L"Contract title")) {
        wchar_t text[64] = {};
        if (GetDlgItemTextW(box, 0xFFFF, text, 64) == 0) continue;  // not complete yet
        shown = text;
        PostMessageW(box, WM_COMMAND, IDOK, 0);
      }
      Sleep(10);
    }
  });
  const std::int32_t answer = messageBox(u"Contract text \u20AC", u"Contract title", 48);
  closed = true;
  user.join();
  if (shown.empty()) GTEST_SKIP() << "no windows can be shown here";
  EXPECT_EQ(answer, MessageBoxAnswer::Ok);
  EXPECT_EQ(shown, L"Contract text \u20AC");
}

}  // namespace
}  // namespace zelUtilities
