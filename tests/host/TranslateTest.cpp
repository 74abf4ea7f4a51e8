#include <gtest/gtest.h>

#include "host/Command.h"
#include "library/Library.h"
#include "platform/Files.h"
#include "support/ScratchFolder.h"

namespace zelUtilities {
namespace {

TEST(ZelTranslate, PrintsATextOrSaysWhatIsMissing) {
  const ScratchFolder scratch;
  files().replaceWhole(u"t.xml",
                       "<G><Languages><Language Key='en' Name=''/><Language Key='de' Name=''/></Languages>"
                       "<Section Key='Main'><Translations><Control Key='bar'><Part Key='save'>"
                       "<Use Key='Caption'><Translate Language='de'>Sp\xC3\xA4ter</Translate></Use>"
                       "<Use Key='ToolTipText'><Translate Language='en'>Save</Translate></Use>"
                       "</Part></Control></Translations></Section></G>");
  files().replaceWhole(u"bad.xml", "<G>");
  const std::pair<const char*, const char*> rows[] = {
      {"t.xml DE main BAR save", "0|Sp\u00E4ter\n|"},
      {"t.xml en Main bar save ToolTipText", "0|Save\n|"},
      {"t.xml en Main bar save", "0|\n|"},  // not translated yet
      {"t.xml fr Main bar", "1||zel: t.xml has no language fr, only en, de\n"},
      {"t.xml de Main bar", "1||zel: t.xml has no text for Caption of \"bar\" in \"Main\"\n"},
      {"t.xml de Main bar x y", "1||zel: t.xml has no text for y of \"bar\", \"x\" in \"Main\"\n"},
      {"bad.xml de Main bar", "1||zel: bad.xml cannot be read as a translation file\n"},
      {"t.xml de Main", "2||zel: this is not understood; see: zel --help\n"}};
  for (const auto& [words, expected] : rows)
    EXPECT_EQ(run(library(), "translate " + std::string(words)), expected) << words;
}

}  // namespace
}  // namespace zelUtilities
