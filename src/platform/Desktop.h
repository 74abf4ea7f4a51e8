// Desktop: other programs' windows, the screens and the help viewers, as the library asks for them.
//
//   if (desktop().windowStyle(hWnd) & verticalScrollBar) ...
//   desktop().htmlHelp(u"C:\\App\\manual.chm", HtmlHelpCommand::Topic, 0);
//
// A window is the system's number for it, cut to 32 bits. Where the system has no such windows every number
// is that of a missing window, the screens are unknown, and a help file is opened by the program that the
// user's desktop has for it.
#pragma once

#include <cstdint>
#include <vector>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

using WindowHandle = std::int32_t;

namespace HtmlHelpCommand {
inline constexpr std::int32_t Topic = 0;     // the default topic
inline constexpr std::int32_t Index = 2;     // the index
inline constexpr std::int32_t Context = 15;  // the topic of a context number
}  // namespace HtmlHelpCommand

namespace WindowHelpCommand {
inline constexpr std::int32_t Context = 1;
}

// In pixels; right and bottom lie outside.
struct ScreenArea {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
};

struct TwipsPerPixel {
  double x = 15;
  double y = 15;
};

struct Desktop {
  virtual ~Desktop() = default;

  // The style bits; 0 for a missing window.
  virtual std::int32_t windowStyle(WindowHandle window) = 0;
  // Puts a window into the stacking order right behind another one (or -1: among the topmost, -2: above all
  // others), as the system's flags say. A missing window is let be.
  virtual void stackWindow(WindowHandle window, WindowHandle insertAfter, std::uint32_t flags) = 0;

  // Opens a compiled help file and gives the viewer's window; 0 where nothing was opened, or by a program
  // whose window is unknown. A viewer that cannot go to a context number opens nothing for it. Raises 53
  // where the system has no viewer.
  virtual WindowHandle htmlHelp(StringView file, std::int32_t command, std::int32_t data) = 0;
  // Opens a help file of the older kind. Raises likewise.
  virtual void windowHelp(StringView file, std::int32_t command, std::int32_t data) = 0;

  // What task bars leave of each screen, the main screen first; none where the screens are unknown.
  virtual std::vector<ScreenArea> workAreas() = 0;
  virtual TwipsPerPixel twipsPerPixel() = 0;

  static Desktop& system();
};

inline Desktop& desktop() { return Service<Desktop>::inForce(); }

}  // namespace zelUtilities
