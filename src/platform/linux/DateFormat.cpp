#include "platform/linux/DateFormat.h"

namespace zelUtilities {

namespace {

// A conversion of strftime as the token of a pattern. Composed ones stand for what they are made of.
StringView tokenOf(char16_t conversion, bool unpadded) {
  switch (conversion) {
    case u'd':
      return unpadded ? u"d" : u"dd";
    case u'e':
      return u"d";
    case u'm':
      return unpadded ? u"m" : u"mm";
    case u'b':
    case u'h':
      return u"mmm";
    case u'B':
      return u"mmmm";
    case u'a':
      return u"ddd";
    case u'A':
      return u"dddd";
    case u'y':
      return u"yy";
    case u'Y':
      return u"yyyy";
    case u'D':
      return u"mm/dd/yy";
    case u'F':
      return u"yyyy-mm-dd";
    case u'H':
    case u'I':
      return unpadded ? u"h" : u"hh";
    case u'k':
    case u'l':
      return u"h";
    case u'M':
      return u"nn";
    case u'S':
      return u"ss";
    case u'p':
    case u'P':
      return u"AMPM";
    case u'T':
      return u"hh:nn:ss";
    case u'R':
      return u"hh:nn";
    case u'r':
      return u"hh:nn:ss AMPM";
    case u'%':
      return u"%";
    default:
      return {};
  }
}

bool isLetter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit >= 0x80;
}

bool isFlag(char16_t unit) { return StringView(u"-_0^#EO").find(unit) != StringView::npos; }

}  // namespace

String patternFromConversions(StringView conversions) {
  String pattern;
  for (std::size_t i = 0; i < conversions.size(); ++i) {
    if (conversions[i] != u'%') {
      if (isLetter(conversions[i])) pattern.push_back(u'\\');
      pattern.push_back(conversions[i]);
      continue;
    }
    bool unpadded = false;
    for (++i; i < conversions.size() && isFlag(conversions[i]); ++i) unpadded |= conversions[i] == u'-';
    if (i < conversions.size()) pattern.append(tokenOf(conversions[i], unpadded));
  }
  pattern.erase(pattern.find_last_not_of(u' ') + 1);
  return pattern;
}

DateOrder dateOrderOf(StringView pattern) {
  const std::size_t first = pattern.find_first_of(u"dmy");
  if (first == StringView::npos || pattern[first] == u'm') return DateOrder::MonthDayYear;
  return pattern[first] == u'y' ? DateOrder::YearMonthDay : DateOrder::DayMonthYear;
}

String separatorOf(StringView pattern) {
  const StringView tokens = u"dmyhns";
  const std::size_t first = pattern.find_first_of(tokens);
  if (first == StringView::npos) return {};
  const std::size_t behind = pattern.find_first_not_of(tokens, first);
  const std::size_t next = pattern.find_first_of(tokens, behind);
  if (next == StringView::npos) return {};
  String separator(trimBlanks(pattern.substr(behind, next - behind)));
  std::erase(separator, u'\\');
  return separator;
}

}  // namespace zelUtilities
