#include "automation/LetterCase.h"

#include "automation/CaseFolding.h"
#include "automation/CaseFoldingTable.h"

namespace zelUtilities {

namespace {

// Units that fold to a letter without being its capital, as the final sigma and the micro sign do.
bool isVariantForm(char16_t unit) {
  return StringView(u"\u00B5\u017F\u0345\u03C2\u03D0\u03D1\u03D5\u03D6\u03F0\u03F1\u03F5\u1E9B\u1E9E\u1FBE")
             .find(unit) != StringView::npos;
}

// The first unit whose folded form this is; capitals stand before the other signs for a letter.
char16_t capitalOf(char16_t unit) {
  for (const CaseFoldingRun& run : caseFoldingRuns) {
    const std::int32_t capital = unit - run.delta;
    if (capital < run.first || capital > run.last || (capital - run.first) % run.step != 0) continue;
    if (!isVariantForm(static_cast<char16_t>(capital))) return static_cast<char16_t>(capital);
  }
  return unit;
}

}  // namespace

char16_t upperCase(char16_t unit) {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
  return foldCase(unit) == unit ? capitalOf(unit) : unit;
}

char16_t lowerCase(char16_t unit) { return isVariantForm(unit) ? unit : foldCase(unit); }

}  // namespace zelUtilities
