#include <gmock/gmock.h>
#include <windows.h>

#include <cstdio>

#include "platform/Files.h"

namespace zelUtilities {
namespace {

std::string folderOfProgram() {
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  const std::string program = path;
  return program.substr(0, program.rfind('\\') + 1);
}

// What the example prints, run without registration.
std::string settingsCom(const std::string& arguments) {
  std::FILE* output = _popen((folderOfProgram() + "settings-com.exe " + arguments + " 2>&1").c_str(), "r");
  std::string text;
  char line[256];
  while (std::fgets(line, sizeof line, output)) text += line;
  return text + std::to_string(_pclose(output));
}

TEST(SettingsCom, FollowsTheEventsAndSavesACopy) {
  files().replaceWhole(u"s.ini", "[Window]\r\nWidth=1024\r\n; wide\r\n");
  EXPECT_EQ(settingsCom("s.ini copy.ini"),
            "added []\nadded [Window]\nadded [Window]Width\nadded [Window]; wide\n"
            "[Default]\n[Window]\n  Width = 1024\n   = ; wide\nsaved\n0");
  EXPECT_EQ(files().readWhole(u"copy.ini"), "[Window]\r\nWidth=1280\r\n; wide\r\n");
  EXPECT_EQ(settingsCom("missing.ini copy.ini"), "the file cannot be read\n1");
  for (StringView file : {u"s.ini", u"copy.ini"}) files().remove(file);
}

}  // namespace
}  // namespace zelUtilities
