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

class Window {
 public:
  explicit Window(DWORD style)
      : handle_(CreateWindowExW(0, L"STATIC", L"", style, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr)) {
  }
  ~Window() { DestroyWindow(handle_); }
  HWND handle() const { return handle_; }
  WindowHandle number() const { return static_cast<WindowHandle>(HandleToLong(handle_)); }
  bool isTopmost() const { return (GetWindowLongW(handle_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }

 private:
  HWND handle_;
};

TEST(DesktopOnWindows, StyleAndStackingAreThoseOfRealWindows) {
  const Window scrolling(WS_POPUP | WS_VSCROLL);
  const Window plain(WS_POPUP | WS_HSCROLL | WS_VISIBLE);
  ASSERT_NE(plain.handle(), nullptr);
  EXPECT_EQ(desktop().windowStyle(scrolling.number()) & 0x00300000, 0x00200000);
  EXPECT_EQ(desktop().windowStyle(plain.number()) & 0x00300000, 0x00100000);
  EXPECT_EQ(desktop().windowStyle(0), 0);

  desktop().stackWindow(scrolling.number(), -1, 19);
  EXPECT_TRUE(scrolling.isTopmost());
  EXPECT_FALSE(IsWindowVisible(scrolling.handle()));
  desktop().stackWindow(scrolling.number(), -2, 19);
  EXPECT_FALSE(scrolling.isTopmost());

  desktop().stackWindow(scrolling.number(), plain.number(), 83);
  EXPECT_EQ(GetWindow(plain.handle(), GW_HWNDNEXT), scrolling.handle());
  EXPECT_TRUE(IsWindowVisible(scrolling.handle()));
  RECT place{};
  GetWindowRect(scrolling.handle(), &place);
  EXPECT_EQ(place.right - place.left, 50);
}

TEST(DesktopOnWindows, TheMainScreenBeginsAtZero) {
  const std::vector<ScreenArea> areas = desktop().workAreas();
  ASSERT_FALSE(areas.empty());
  EXPECT_TRUE(areas[0].left <= 0 && areas[0].top <= 0 && areas[0].right > 100 && areas[0].bottom > 100);
  EXPECT_EQ(desktop().twipsPerPixel().x, 15);
}

TEST(DesktopOnWindows, AMissingHelpFileOpensNothing) {
  EXPECT_EQ(desktop().htmlHelp(u"C:\\missing.chm", HtmlHelpCommand::Topic, 0), 0);
}

TEST(DesktopOnWindows, AnObjectTellsItsClassByItsTypeInformation) {
  CoInitialize(nullptr);
  EXPECT_EQ(className(*createObject(u"Scripting.Dictionary")), u"Dictionary");
  ProbeDispatch untold([](const ProbeDispatch::Call&) { return E_NOTIMPL; });
  EXPECT_EQ(className(*make<ForeignObject>(&untold)), u"Object");
  CoUninitialize();
}

// Runs a question while a user closes its dialog.
template <class Question>
void answered(const wchar_t* title, WPARAM button, const Question& question) {
  std::atomic<bool> closed = false;
  std::thread user([&] {
    for (int i = 0; i < 100 && !closed; ++i, Sleep(200)) {
      const HWND dialog = FindWindowW(L"#32770", title);
      if (dialog && IsWindowVisible(dialog)) PostMessageW(dialog, WM_COMMAND, button, 0);
    }
  });
  question();
  closed = true;
  user.join();
}

class FileDialogsOnWindows : public testing::Test {
 protected:
  FileDialogsOnWindows() {
    if (!files().folderExists(folder)) files().createFolder(folder);
    for (const String& file : {one, two}) files().replaceWhole(file, "kept");
  }
  ~FileDialogsOnWindows() override { files().removeFolder(folder); }

  const String folder = files().fullPath(u"dialog files");
  const String one = folder + u"\\a.txt";
  const String two = folder + u"\\b.txt";
  FileQuestion question{u"Contract dialog", folder, u"a.txt", {{u"Texts", u"*.txt"}}, 1, u"txt", false};
};

TEST_F(FileDialogsOnWindows, FilesToOpenAreWholePaths) {
  answered(L"Contract dialog", IDOK, [&] { EXPECT_THAT(dialogs().openFiles(question), ElementsAre(one)); });
  question.several = true;
  question.name = u"\"a.txt\" \"b.txt\"";
  answered(L"Contract dialog", IDOK,
           [&] { EXPECT_THAT(dialogs().openFiles(question), ElementsAre(one, two)); });
  answered(L"Contract dialog", IDCANCEL, [&] { EXPECT_THAT(dialogs().openFiles(question), ElementsAre()); });
}

TEST_F(FileDialogsOnWindows, AFileToSaveToGetsItsExtension) {
  question.name = u"new";
  answered(L"Contract dialog", IDOK, [&] { EXPECT_EQ(dialogs().saveFile(question), folder + u"\\new.txt"); });
  answered(L"Contract dialog", IDCANCEL, [&] { EXPECT_EQ(dialogs().saveFile(question), u""); });
  question.name = String(u"a\0b", 3);
  EXPECT_EQ(raisedError([&] { dialogs().saveFile(question); }).substr(0, 2), "52");
}

TEST_F(FileDialogsOnWindows, AFolderBeginsWithTheOneGiven) {
  constexpr const wchar_t* title = L"Browse for Folder";
  answered(title, IDOK, [&] { EXPECT_EQ(dialogs().selectFolder(u"Choose", folder), folder); });
  answered(title, IDCANCEL, [&] { EXPECT_EQ(dialogs().selectFolder(u"", folder), u""); });
}

}  // namespace
}  // namespace zelUtilities
