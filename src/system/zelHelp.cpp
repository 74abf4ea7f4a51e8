#include "system/zelHelp.h"

#include "automation/Binder.h"
#include "automation/Error.h"
#include "foundation/bas_Main.h"
#include "platform/Desktop.h"

namespace zelUtilities {

namespace {

// Behind the last dot of the file's name, in its own letter case; "" without one.
StringView writtenExtension(StringView path) {
  const StringView name = path.substr(path.find_last_of(u'\\') + 1);
  const std::size_t dot = name.find_last_of(u'.');
  return dot == StringView::npos ? StringView() : name.substr(dot + 1);
}

}  // namespace

std::int32_t zel_HelpFromContext(const String& sHelpFile, std::int32_t lContextID) {
  if (writtenExtension(sHelpFile) == u"chm") return ShowHTMLHelp(sHelpFile, lContextID);
  return ShowWinHelp(sHelpFile, lContextID) ? -1 : 0;
}

std::int32_t ShowHTMLHelp(const String& sHelpFile, std::int32_t lContextID) {
  if (!FSOSays(u"FileExists", sHelpFile)) return 0;
  if (lContextID < 0) return desktop().htmlHelp(sHelpFile, HtmlHelpCommand::Index, 0);
  WindowHandle window = 0;
  if (lContextID > 0) window = desktop().htmlHelp(sHelpFile, HtmlHelpCommand::Context, lContextID);
  return window != 0 ? window : desktop().htmlHelp(sHelpFile, HtmlHelpCommand::Topic, 0);
}

std::int32_t ShowHTLMHelp(const String& sHelpFile, std::int32_t lContextID) {
  return ShowHTMLHelp(sHelpFile, lContextID);
}

bool ShowWinHelp(const String& sHelpFile, std::int32_t lContextID) {
  if (!FSOSays(u"FileExists", sHelpFile)) return false;
  try {
    desktop().windowHelp(sHelpFile, WindowHelpCommand::Context, lContextID);
  } catch (const Error&) {  // the caller is told that the file was there, no more
  }
  return true;
}

const ClassInfo& zelHelp::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelHelp", "Functions to aid in handling Help requests.")
          .function("zel_HelpFromContext", &zel_HelpFromContext, {"sHelpFile", "lContextID"},
                    "Opens a help file at a context.")
          .function("ShowHTMLHelp", &ShowHTMLHelp, {"sHelpFile", "lContextID"},
                    "Opens a compiled HTML help file at a context.")
          .function("ShowHTLMHelp", &ShowHTLMHelp, {"sHelpFile", "lContextID"}, "The same as ShowHTMLHelp.")
          .function("ShowWinHelp", &ShowWinHelp, {"sHelpFile", "lContextID"},
                    "Opens a window help file at a context.");
  return info;
}

}  // namespace zelUtilities
