#include "system/zelHelp.h"

#include <gtest/gtest.h>

#include "platform/Files.h"
#include "support/RecordingDesktop.h"

namespace zelUtilities {
namespace {

TEST(ZelHelp, TheExtensionAsWrittenChoosesTheViewer) {
  for (const StringView name : {u"manual.chm", u"other.CHM", u"chm.hlp"}) files().replaceWhole(name, "");
  RecordingDesktop desktop;
  const std::int32_t unknown = RecordingDesktop::unknownContext;
  EXPECT_EQ(ShowHTMLHelp(u"manual.chm", unknown), 100);  // the default topic
  EXPECT_EQ(ShowHTMLHelp(u"manual.chm", 0), 100);
  EXPECT_EQ(ShowHTLMHelp(u"manual.chm", -3), 102);
  EXPECT_EQ(zel_HelpFromContext(u"manual.chm", 5), 115);
  EXPECT_EQ(zel_HelpFromContext(u"other.CHM", 5), -1);
  EXPECT_EQ(zel_HelpFromContext(u"chm.hlp", unknown), -1);  // a failing viewer is skipped
  for (const String missing : {u"missing.chm", u"missing.hlp", u"", u"a*.chm"})
    EXPECT_TRUE(zel_HelpFromContext(missing, 1) == 0 && ShowHTMLHelp(missing, 1) == 0 &&
                !ShowWinHelp(missing, 1));
  EXPECT_EQ(desktop.calls, "html 15 99\nhtml 0 0\nhtml 0 0\nhtml 2 0\nhtml 15 5\nwindow 1 5\nwindow 1 99\n");
  for (const StringView name : {u"manual.chm", u"other.CHM", u"chm.hlp"}) files().remove(name);
}

}  // namespace
}  // namespace zelUtilities
