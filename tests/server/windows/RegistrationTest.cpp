// Registering and taking it back, as regsvr32 does it, in the test's own Wine prefix.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>

#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

std::wstring quoted(const std::wstring& path) { return L"\"" + path + L"\""; }
std::wstring library() { return quoted(besideProgram(L"zelUtilities.dll")); }

// Every key and value below a key, with its text.
void collect(HKEY parent, const std::wstring& path, std::set<std::wstring>& found) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  found.insert(path);
  wchar_t name[512];
  for (DWORD i = 0;; ++i) {
    DWORD length = 512;
    BYTE data[2048] = {};
    DWORD size = sizeof data - 2;
    if (RegEnumValueW(key, i, name, &length, nullptr, nullptr, data, &size) == ERROR_NO_MORE_ITEMS) break;
    found.insert(path + L" | " + name + L" = " + reinterpret_cast<wchar_t*>(data));
  }
  for (DWORD i = 0;; ++i) {
    DWORD length = 512;
    if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    collect(parent, path + L"\\" + name, found);
  }
  RegCloseKey(key);
}

std::set<std::wstring> classes(HKEY hive) {
  std::set<std::wstring> found;
  collect(hive, L"Software\\Classes", found);
  return found;
}

// What differs, one a line: + came, - went.
std::string difference(const std::set<std::wstring>& before, const std::set<std::wstring>& after) {
  std::string text;
  for (const std::wstring& line : after)
    if (!before.contains(line)) text += "+ " + utf8(line.c_str()) + "\n";
  for (const std::wstring& line : before)
    if (!after.contains(line)) text += "- " + utf8(line.c_str()) + "\n";
  return text;
}

std::string valueOf(HKEY hive, const std::wstring& key, const wchar_t* name = nullptr) {
  wchar_t text[1024] = {};
  DWORD size = sizeof text;
  RegGetValueW(hive, (L"Software\\Classes\\" + key).c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  return utf8(text);
}

const std::wstring nodeListKey = L"CLSID\\{026B940E-88DB-5011-99B1-32771D576452}";

void expectRegistered(HKEY hive) {
  const std::string path = utf8(besideProgram(L"zelUtilities.dll").c_str());
  EXPECT_EQ(valueOf(hive, L"zelUtilities.zelNodeList\\CLSID"), utf8(nodeListKey.substr(6).c_str()));
  EXPECT_EQ(valueOf(hive, nodeListKey + L"\\ProgID"), "zelUtilities.zelNodeList");
  EXPECT_EQ(valueOf(hive, nodeListKey + L"\\InprocServer32"), path);
  EXPECT_EQ(valueOf(hive, nodeListKey + L"\\InprocServer32", L"ThreadingModel"), "Apartment");
  const std::wstring typeLibrary = L"TypeLib\\{B7C537EE-3068-5237-9EC6-C74C18EF95CA}\\1.2";
  EXPECT_EQ(valueOf(hive, typeLibrary), "Zelora Utility Functions (V1.2)");
  EXPECT_EQ(valueOf(hive, typeLibrary + (sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32")), path);
  EXPECT_EQ(valueOf(hive, L"zelUtilities.zelNode\\CLSID"), "");  // clients cannot create it
}

TEST(Registration, ForTheMachineLeavesNothingBehind) {
  const std::wstring client = L"cscript //nologo " + quoted(besideProgram(L"scripts\\registered.vbs"));
  EXPECT_EQ(runProgram(client), 1U);  // not there yet; the script host registers itself at its first start
  const auto before = classes(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(runProgram(L"regsvr32 /s " + library()), 0U);
  expectRegistered(HKEY_LOCAL_MACHINE);
  EXPECT_EQ(runProgram(client), 42U);
  ASSERT_EQ(runProgram(L"regsvr32 /u /s " + library()), 0U);
  EXPECT_EQ(difference(before, classes(HKEY_LOCAL_MACHINE)), "");
}

TEST(Registration, ForOneUserLeavesTheMachineAlone) {
  const auto machine = classes(HKEY_LOCAL_MACHINE);
  HKEY root = nullptr;  // a user has it, but for the first moments of a Wine prefix
  RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr, 0, KEY_READ, nullptr, &root, nullptr);
  RegCloseKey(root);
  const auto before = classes(HKEY_CURRENT_USER);
  ASSERT_EQ(runProgram(L"regsvr32 /s /n /i:user " + library()), 0U);
  expectRegistered(HKEY_CURRENT_USER);
  EXPECT_EQ(difference(machine, classes(HKEY_LOCAL_MACHINE)), "");
  ASSERT_EQ(runProgram(L"regsvr32 /u /s /n /i:user " + library()), 0U);
  EXPECT_EQ(difference(before, classes(HKEY_CURRENT_USER)), "");
}

TEST(Registration, ACopyElsewhereTakesOverAndIsNotRemovedByTheFirst) {
  CreateDirectoryW(L"second", nullptr);
  ASSERT_TRUE(CopyFileW(besideProgram(L"zelUtilities.dll").c_str(), L"second\\zelUtilities.dll", FALSE));
  const auto before = classes(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(runProgram(L"regsvr32 /s " + library()), 0U);
  ASSERT_EQ(runProgram(L"regsvr32 /s second\\zelUtilities.dll"), 0U);
  const auto second = classes(HKEY_LOCAL_MACHINE);
  EXPECT_EQ(runProgram(L"regsvr32 /u /s " + library()), 0U);
  EXPECT_EQ(difference(second, classes(HKEY_LOCAL_MACHINE)), "");
  EXPECT_EQ(runProgram(L"regsvr32 /u /s second\\zelUtilities.dll"), 0U);
  EXPECT_EQ(difference(before, classes(HKEY_LOCAL_MACHINE)), "");
}

TEST(Registration, AHalfRemovedOneIsTakenBackToo) {
  const auto before = classes(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(runProgram(L"regsvr32 /s " + library()), 0U);
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + nodeListKey).c_str());
  EXPECT_EQ(runProgram(L"regsvr32 /u /s " + library()), 0U);
  EXPECT_EQ(difference(before, classes(HKEY_LOCAL_MACHINE)), "");
}

}  // namespace
}  // namespace zelUtilities
