#include "automation/TextPattern.h"

#include "automation/LetterCase.h"
#include "automation/PatternText.h"

namespace zelUtilities {

namespace {

enum class LetterForm { AsGiven, Lower, Upper };

struct Layout {
  std::size_t places = 0;
  bool fromLeft = false;
  LetterForm form = LetterForm::AsGiven;
};

Layout layoutOf(StringView section) {
  Layout layout;
  for (std::size_t at = 0; at < section.size();) {
    if (const std::size_t literal = literalLength(section.substr(at)); literal != 0) {
      at += literal;
      continue;
    }
    const char16_t unit = section[at++];
    if (unit == u'@' || unit == u'&') ++layout.places;
    if (unit == u'!') layout.fromLeft = true;
    if (layout.form == LetterForm::AsGiven && unit == u'<') layout.form = LetterForm::Lower;
    if (layout.form == LetterForm::AsGiven && unit == u'>') layout.form = LetterForm::Upper;
  }
  return layout;
}

String inForm(StringView text, LetterForm form) {
  String out(text);
  if (form == LetterForm::Lower)
    for (char16_t& unit : out) unit = lowerCase(unit);
  if (form == LetterForm::Upper)
    for (char16_t& unit : out) unit = upperCase(unit);
  return out;
}

}  // namespace

String formatText(StringView text, StringView pattern) {
  StringView section = text.empty() ? patternSection(pattern, 1) : StringView();
  if (section.empty()) section = patternSection(pattern, 0);
  const Layout layout = layoutOf(section);
  const String units = inForm(text, layout.form);
  // Places to leave empty before the first unit of the text.
  std::size_t empty = !layout.fromLeft && layout.places > units.size() ? layout.places - units.size() : 0;
  std::size_t next = 0;
  String out;
  while (!section.empty()) {
    if (const std::size_t literal = literalLength(section); literal != 0) {
      out.append(literalText(section.substr(0, literal)));
      section.remove_prefix(literal);
      continue;
    }
    const char16_t unit = section[0];
    section.remove_prefix(1);
    if (unit == u'@' || unit == u'&') {
      if (empty == 0 && next < units.size()) {
        out.push_back(units[next++]);
      } else {
        if (unit == u'@') out.push_back(u' ');
        if (empty > 0) --empty;
      }
    } else if (unit != u'<' && unit != u'>' && unit != u'!') {
      out.push_back(unit);
    }
  }
  return out.append(units, next);
}

}  // namespace zelUtilities
