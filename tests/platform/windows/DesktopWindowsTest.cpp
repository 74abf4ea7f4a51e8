// Real windows, screens and dialogs of the system.
#include <gmock/gmock.h>
#include <windows.h>

#include <atomic>
#include <thread>

#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/Files.h"
#include "platform/Objects.h"
#include "platform/windows/ForeignObject.h"
#include "platform/windows/ProbeDispatch.h"
#include "support/RaisedError.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

HWND window(DWORD style) {
  return CreateWindowExW(0, L"STATIC", L"", style, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
}
WindowHandle numberOf(HWND window) { return static_cast<WindowHandle>(HandleToLong(window)); }

TEST(DesktopOnWindows, StyleAndStackingAreThoseOfRealWindowsOnTheScreensThereAre) {
  const HWND scrolling = window(WS_POPUP | WS_VSCROLL), plain = window(WS_POPUP | WS_HSCROLL | WS_VISIBLE);
  EXPECT_EQ(desktop().windowStyle(numberOf(scrolling)) & 0x00300000, 0x00200000);
  EXPECT_EQ(desktop().windowStyle(numberOf(plain)) & 0x00300000, 0x00100000);
  EXPECT_EQ(desktop().windowStyle(0), 0);
  for (const WindowHandle place : {-1, -2}) {
    desktop().stackWindow(numberOf(scrolling), place, 19);
    EXPECT_EQ((GetWindowLongW(scrolling, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0, place == -1);
    EXPECT_FALSE(IsWindowVisible(scrolling));
  }
  desktop().stackWindow(numberOf(scrolling), numberOf(plain), 83);
  EXPECT_EQ(GetWindow(plain, GW_HWNDNEXT), scrolling);
  EXPECT_TRUE(IsWindowVisible(scrolling));
  RECT place{};
  GetWindowRect(scrolling, &place);
  EXPECT_EQ(place.right - place.left, 50);
  DestroyWindow(scrolling);
  DestroyWindow(plain);
  const std::vector<ScreenArea> areas = desktop().workAreas();
  ASSERT_FALSE(areas.empty());
  EXPECT_TRUE(areas[0].left <= 0 && areas[0].top <= 0 && areas[0].right > 100 && areas[0].bottom > 100);
  EXPECT_EQ(desktop().twipsPerPixel().x, 15);
  EXPECT_EQ(desktop().htmlHelp(u"C:\\missing.chm", HtmlHelpCommand::Topic, 0), 0);
}

TEST(DesktopOnWindows, AnObjectTellsItsClassByItsTypeInformation) {
  CoInitialize(nullptr);
  EXPECT_EQ(className(*createObject(u"Scripting.Dictionary")), u"Dictionary");
  ProbeDispatch probe([](const ProbeDispatch::Call&) { return E_NOTIMPL; });
  for (const auto& [type, name] :
       {std::pair(L"", u"Object"), std::pair(L"_TextBox", u"TextBox"), std::pair(L"IElement", u"IElement")})
    EXPECT_EQ(className(*make<ForeignObject>(&probe.called(type))), name);
  CoUninitialize();
}

// The answer to a question whose dialog a user closes, having looked at it so many times.
template <class Question>
auto answered(WPARAM button, const Question& question, const wchar_t* title = L"Contract dialog",
              int looks = 1) {
  std::atomic<bool> closed = false;
  std::thread user([&] {
    for (int i = 0; i < 100 && !closed; ++i, Sleep(200)) {
      const HWND dialog = FindWindowW(L"#32770", title);
      if (dialog && IsWindowVisible(dialog) && --looks <= 0) PostMessageW(dialog, WM_COMMAND, button, 0);
    }
  });
  const auto answer = question();
  closed = true;
  user.join();
  return answer;
}

TEST(MessageBoxOnWindows, HasTheTitleAndButtonsAskedForAndTellsTheAnswer) {
  const auto ask = [] { return messageBox(u"Contract text", u"Contract box", MB_YESNO); };
  EXPECT_EQ(answered(IDNO, ask, L"Contract box"), IDNO);
}

TEST(FileDialogsOnWindows, FilesAreWholePathsAndTheFolderTheOneGiven) {
  const String folder = files().fullPath(u"dialog files");
  if (!files().folderExists(folder)) files().createFolder(folder);
  for (const StringView file : {u"\\a.txt", u"\\b.txt"}) files().replaceWhole(folder + String(file), "kept");
  FileQuestion question{
      u"Contract dialog", folder, u"\"a.txt\" \"b.txt\"", {{u"Texts", u"*.txt"}}, 1, u"txt", true};
  const auto open = [&] { return dialogs().openFiles(question); };
  const auto save = [&] { return dialogs().saveFile(question); };
  EXPECT_THAT(answered(IDOK, open), ElementsAre(folder + u"\\a.txt", folder + u"\\b.txt"));
  EXPECT_THAT(answered(IDCANCEL, open), ElementsAre());
  question.several = false;
  question.name = u"a.txt";
  EXPECT_THAT(answered(IDOK, open), ElementsAre(folder + u"\\a.txt"));
  question.name = u"new";
  EXPECT_EQ(answered(IDOK, save), folder + u"\\new.txt");
  EXPECT_EQ(answered(IDCANCEL, save), u"");
  question.name = String(u"a\0b", 3);
  EXPECT_EQ(raisedError(save).substr(0, 2), "52");
  const auto choose = [&] { return dialogs().selectFolder(u"Choose", folder); };
  // Wine's dialog does not always get down to the folder, but stops at one above it.
  const String chosen = answered(IDOK, choose, L"Browse for Folder", 5);
  EXPECT_TRUE(chosen.size() > 2 && folder.starts_with(chosen)) << toUtf8(chosen);
  EXPECT_EQ(answered(IDCANCEL, choose, L"Browse for Folder"), u"");
  files().removeFolder(folder);
}

}  // namespace
}  // namespace zelUtilities
