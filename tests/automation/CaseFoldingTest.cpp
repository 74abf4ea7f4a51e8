#include "automation/CaseFolding.h"

#include <gtest/gtest.h>

#include "automation/Variant.h"

namespace zelUtilities {
namespace {

TEST(CaseFolding, FoldsTheLettersOfEveryScript) {
  // Cherokee, the last of these scripts, folds to the capitals.
  const StringView text =
      u"AMZ\u00C0\u00D6\u00D8\u00DE\u0178\u0141\u017D \u0391\u03A1\u03A3\u03A9\u0386\u038F\u1F08 "
      u"\u0400\u0401\u0410\u042F\u04C0 \uFF21\uFF3A\u01C4\u01C5\u01F1 "
      u"\u00B5\u017F\u03C2\u1E9E\u212A\u212B\u2126 "
      u"\u0531\u0556\u10A0\u1C90 \u13F8\uAB70";
  const StringView folded =
      u"amz\u00E0\u00F6\u00F8\u00FE\u00FF\u0142\u017E \u03B1\u03C1\u03C3\u03C9\u03AC\u03CE\u1F00 "
      u"\u0450\u0451\u0430\u044F\u04CF \uFF41\uFF5A\u01C6\u01C6\u01F3 \u03BCs\u03C3\u00DFk\u00E5\u03C9 "
      u"\u0561\u0586\u2D00\u10D0 \u13F0\u13A0";
  EXPECT_EQ(toUtf8(foldCase(text)), toUtf8(folded));
  EXPECT_EQ(foldCase(folded), folded);
  // Neighbours of the letters, dotted and dotless i, sharp s, an unassigned unit; letters beyond the first
  // plane are two units.
  const StringView none = u"@[`{\x7F\u00D7\u00F7\u0130\u0131\u00DF\u03A2\uFFFF\U00010400";
  EXPECT_EQ(foldCase(none), none);
}

// Texts are compared four units at a time; every unit is put at every place of the four and of the rest.
TEST(CaseFolding, ComparingAndHashingAgreeWithFoldingEveryUnit) {
  for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
    const auto unit = static_cast<char16_t>(code);
    String text(7, u'Q'), folded(7, u'q');
    text[code % 7] = unit;
    folded[code % 7] = foldCase(unit);
    ASSERT_TRUE(equalFolded(text, folded)) << code;
    ASSERT_EQ(foldedHash(text), foldedHash(folded)) << code;
    ASSERT_EQ(compareFolded(text, folded), 0) << code;
    folded[code % 7] = foldCase(static_cast<char16_t>(foldCase(unit) + 1));
    if (folded[code % 7] == foldCase(unit)) continue;
    ASSERT_FALSE(equalFolded(text, folded)) << code;
    ASSERT_NE(foldedHash(text), foldedHash(folded)) << code;
  }
}

// Words of four units, then two, then one: every length of the rest, a difference at every place.
TEST(UnitWords, CopiesComparesAndHashesTextsOfEveryLength) {
  const String source = u"a\u0130\u00E4\uFFFFbcdefghij";
  for (std::size_t length = 0; length <= source.size(); ++length) {
    const StringView text = StringView(source).substr(0, length);
    String copy(length + 1, u'!');
    copyUnits(copy.data(), text);
    ASSERT_EQ(copy, String(text) + u'!');
    EXPECT_EQ(Variant(text).text(), text);
    EXPECT_TRUE(equalUnits(text, StringView(copy).substr(0, length)));
    EXPECT_FALSE(equalUnits(text, copy));
    for (std::size_t at = 0; at < length; ++at) {
      String other(text);
      other[at] ^= 0x100;
      EXPECT_FALSE(equalUnits(text, other)) << length << " " << at;
      EXPECT_FALSE(equalFolded(text, other)) << length << " " << at;
      EXPECT_NE(foldedHash(text), foldedHash(other)) << length << " " << at;
    }
  }
}

TEST(CaseFolding, SortsByFoldedUnitsThenByLength) {
  EXPECT_LT(compareFolded(u"_", u"Z"), 0) << "the underscore comes before the folded z";
  EXPECT_LT(compareFolded(u"abc", u"ABCD"), 0);
  EXPECT_GT(compareFolded(u"\uFF21", u"z"), 0);
  EXPECT_FALSE(equalFolded(u"abc", u"ABCD"));
  EXPECT_NE(foldedHash(u"a"), foldedHash(StringView(u"a\0", 2)));
}

}  // namespace
}  // namespace zelUtilities
