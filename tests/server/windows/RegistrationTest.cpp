// Registering and taking it back, as regsvr32 does it, in the test's own Wine prefix.
#include <gtest/gtest.h>

#include <set>

#include "automation/CaseFolding.h"
#include "platform/Locale.h"
#include "platform/Registry.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

constexpr RegistryHandle machine = RegistryRoot::LocalMachine;
constexpr RegistryHandle user = RegistryRoot::CurrentUser;
const String classesKey = u"Software\\Classes";
const String nodeListClass = u"{026B940E-88DB-5011-99B1-32771D576452}",
             nodeListKey = u"CLSID\\" + nodeListClass;

std::wstring quoted(const std::wstring& path) { return L"\"" + path + L"\""; }
std::wstring library() { return quoted(besideProgram(L"zelUtilities.dll")); }
DWORD regsvr32(const std::wstring& words) { return runProgram(L"regsvr32 /s " + words); }

using Lines = std::set<String>;

// Every key below a path and every value as "key|name|text", folded: the system writes a key as it likes.
void collect(RegistryHandle root, const String& path, Lines& found) {
  RegistryKey key;
  if (key.open(root, path, RegistryAccess::Read) != RegistryResult::Success) return;
  found.insert(foldCase(path));
  RegistryValue value;
  for (std::uint32_t i = 0; registry().enumValue(key.handle(), i, value) == RegistryResult::Success; ++i)
    found.insert(foldCase(path + u"|" + value.name + u"|" + widen(value.text())));
  String name;
  for (std::uint32_t i = 0; registry().enumKey(key.handle(), i, name) == RegistryResult::Success; ++i)
    collect(root, path + u"\\" + name, found);
}

Lines classes(RegistryHandle root) {
  Lines found;
  collect(root, classesKey, found);
  return found;
}

// What differs, one a line: + came, - went.
void expectUnchanged(RegistryHandle root, const Lines& before) {
  const Lines after = classes(root);
  String text;
  for (const String& line : after)
    if (!before.contains(line)) text.append(u"+ ").append(line).append(u"\n");
  for (const String& line : before)
    if (!after.contains(line)) text.append(u"- ").append(line).append(u"\n");
  EXPECT_EQ(toUtf8(text), "");
}

void expectRegistered(RegistryHandle root) {
  const String path = fromUtf8(utf8(besideProgram(L"zelUtilities.dll").c_str()));
  const String typeLibrary = u"TypeLib\\{B7C537EE-3068-5237-9EC6-C74C18EF95CA}\\1.2";
  const Lines found = classes(root);
  for (const String& line :
       {u"zelUtilities.zelNodeList\\CLSID||" + nodeListClass,
        nodeListKey + u"\\ProgID||zelUtilities.zelNodeList", nodeListKey + u"\\InprocServer32||" + path,
        nodeListKey + u"\\InprocServer32|ThreadingModel|Apartment",
        typeLibrary + u"||Zelora Utility Functions (V1.2)",
        typeLibrary + (sizeof(void*) == 8 ? u"\\0\\win64||" : u"\\0\\win32||") + path})
    EXPECT_TRUE(found.contains(foldCase(classesKey + u"\\" + line))) << toUtf8(line);
  EXPECT_FALSE(found.contains(foldCase(classesKey + u"\\zelUtilities.zelNode")))
      << "clients cannot create it";
}

TEST(Registration, ForTheMachineLeavesNothingBehindAlsoWhereAPartIsGone) {
  const std::wstring client = L"cscript //nologo " + quoted(besideProgram(L"scripts\\registered.vbs"));
  EXPECT_EQ(runProgram(client), 1U);  // not there yet; the script host registers itself at its first start
  const Lines before = classes(machine);
  ASSERT_EQ(regsvr32(library()), 0U);
  expectRegistered(machine);
  EXPECT_EQ(runProgram(client), 42U);
  RegDeleteTreeA(HKEY_LOCAL_MACHINE, toUtf8(classesKey + u"\\" + nodeListKey).c_str());
  ASSERT_EQ(regsvr32(L"/u " + library()), 0U);
  expectUnchanged(machine, before);
}

TEST(Registration, ForOneUserLeavesTheMachineAlone) {
  RegistryKey root;  // a user has it, but for the first moments of a Wine prefix
  bool existed = false;
  root.create(user, classesKey, existed);
  const Lines machines = classes(machine), before = classes(user);
  ASSERT_EQ(regsvr32(L"/n /i:user " + library()), 0U);
  expectRegistered(user);
  expectUnchanged(machine, machines);
  ASSERT_EQ(regsvr32(L"/u /n /i:user " + library()), 0U);
  expectUnchanged(user, before);
}

TEST(Registration, ACopyElsewhereTakesOverAndIsNotRemovedByTheFirst) {
  CreateDirectoryW(L"second", nullptr);
  ASSERT_TRUE(CopyFileW(besideProgram(L"zelUtilities.dll").c_str(), L"second\\zelUtilities.dll", FALSE));
  const Lines before = classes(machine);
  ASSERT_EQ(regsvr32(library()) + regsvr32(L"second\\zelUtilities.dll"), 0U);
  const Lines second = classes(machine);
  EXPECT_EQ(regsvr32(L"/u " + library()), 0U);
  expectUnchanged(machine, second);
  EXPECT_EQ(regsvr32(L"/u second\\zelUtilities.dll"), 0U);
  expectUnchanged(machine, before);
}

}  // namespace
}  // namespace zelUtilities
