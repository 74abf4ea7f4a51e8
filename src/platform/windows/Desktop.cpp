#include "platform/Desktop.h"

#include <windows.h>

#include "platform/windows/SystemLibrary.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

constexpr double twipsPerInch = 1440;

HWND windowOf(WindowHandle window) { return static_cast<HWND>(LongToHandle(window)); }

class WindowsDesktop : public Desktop {
 public:
  std::int32_t windowStyle(WindowHandle window) override {
    return static_cast<std::int32_t>(GetWindowLongA(windowOf(window), GWL_STYLE));
  }

  void stackWindow(WindowHandle window, WindowHandle insertAfter, std::uint32_t flags) override {
    SetWindowPos(windowOf(window), windowOf(insertAfter), 0, 0, 0, 0, flags);
  }

  WindowHandle htmlHelp(StringView file, std::int32_t command, std::int32_t data) override {
    using Viewer = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);
    const auto viewer = systemFunction<Viewer>(u"hhctrl.ocx", "HtmlHelpW");
    const HWND window = viewer(nullptr, wide(String(file)), static_cast<UINT>(command),
                               static_cast<DWORD_PTR>(static_cast<std::uint32_t>(data)));
    return static_cast<WindowHandle>(HandleToLong(window));
  }

  void windowHelp(StringView file, std::int32_t command, std::int32_t data) override {
    WinHelpW(nullptr, wide(String(file)), static_cast<UINT>(command),
             static_cast<ULONG_PTR>(static_cast<std::uint32_t>(data)));
  }

  std::vector<ScreenArea> workAreas() override {
    std::vector<ScreenArea> areas;
    EnumDisplayMonitors(nullptr, nullptr, &WindowsDesktop::addArea, reinterpret_cast<LPARAM>(&areas));
    return areas;
  }

  TwipsPerPixel twipsPerPixel() override {
    TwipsPerPixel twips;
    const HDC screen = GetDC(nullptr);
    if (!screen) return twips;
    const int across = GetDeviceCaps(screen, LOGPIXELSX);
    const int down = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    if (across > 0 && down > 0) twips = {twipsPerInch / across, twipsPerInch / down};
    return twips;
  }

 private:
  static BOOL CALLBACK addArea(HMONITOR monitor, HDC, LPRECT, LPARAM found) noexcept {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (!GetMonitorInfoW(monitor, &info)) return TRUE;
    auto& areas = *reinterpret_cast<std::vector<ScreenArea>*>(found);
    const RECT& work = info.rcWork;
    const ScreenArea area{work.left, work.top, work.right, work.bottom};
    const bool isMain = (info.dwFlags & MONITORINFOF_PRIMARY) != 0;
    try {
      areas.insert(isMain ? areas.begin() : areas.end(), area);
    } catch (...) {  // no memory left; the areas so far must do
      return FALSE;
    }
    return TRUE;
  }
};

}  // namespace

Desktop& Desktop::system() {
  static auto& service = *new WindowsDesktop;
  return service;
}

}  // namespace zelUtilities
