#include "system/zelHelp.h"

#include <gtest/gtest.h>

#include "platform/Files.h"
#include "support/RecordingDesktop.h"

namespace zelUtilities {
namespace {

class ZelHelp : public testing::Test {
 protected:
  ~ZelHelp() override {
    for (const String& file : {html, upper, older}) files().remove(file);
  }
  static String there(const String& name) {
    files().replaceWhole(name, "");
    return files().fullPath(name);
  }

  const String html = there(u"manual.chm");
  const String upper = there(u"other.CHM");
  const String older = there(u"chm.hlp");
  RecordingDesktop desktop;
};

TEST_F(ZelHelp, CompiledHelpIsOpenedAtTheContextOrElseAtItsDefaultTopic) {
  EXPECT_EQ(ShowHTMLHelp(html, 5), 115);
  EXPECT_EQ(ShowHTMLHelp(html, RecordingDesktop::unknownContext), 100);
  EXPECT_EQ(ShowHTMLHelp(html, 0), 100);
  EXPECT_EQ(ShowHTLMHelp(html, -3), 102);
  EXPECT_EQ(desktop.calls, "html 15 5\nhtml 15 99\nhtml 0 0\nhtml 0 0\nhtml 2 0\n");
}

TEST_F(ZelHelp, TheExtensionAsWrittenChoosesTheViewer) {
  EXPECT_EQ(zel_HelpFromContext(html, 5), 115);
  EXPECT_EQ(zel_HelpFromContext(upper, 5), -1);
  EXPECT_EQ(zel_HelpFromContext(older, 6), -1);
  EXPECT_EQ(desktop.calls, "html 15 5\nwindow 1 5\nwindow 1 6\n");
}

TEST_F(ZelHelp, MissingFilesOpenNothingAndAFailingViewerIsSkipped) {
  for (const StringView missing : {u"missing.chm", u"missing.hlp", u"", u"a*.chm"}) {
    EXPECT_EQ(zel_HelpFromContext(String(missing), 1), 0);
    EXPECT_EQ(ShowHTMLHelp(String(missing), 1), 0);
    EXPECT_FALSE(ShowWinHelp(String(missing), 1));
  }
  EXPECT_EQ(desktop.calls, "");
  EXPECT_TRUE(ShowWinHelp(older, RecordingDesktop::unknownContext));
}

}  // namespace
}  // namespace zelUtilities
