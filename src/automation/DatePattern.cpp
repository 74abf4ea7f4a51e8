#include "automation/DatePattern.h"

#include <utility>

#include "automation/Calendar.h"
#include "automation/PatternText.h"

namespace zelUtilities {

namespace {

void appendNumber(String& out, int value, int width) {
  char16_t digits[12];
  int count = 0;
  do {
    digits[count++] = static_cast<char16_t>(u'0' + value % 10);
    value /= 10;
  } while (value > 0);
  for (int i = count; i < width; ++i) out.push_back(u'0');
  while (count > 0) out.push_back(digits[--count]);
}

enum class HalfDay { None, Words, Letters, Locale };

// The half-day mark at the start of a text; its length is that of the mark.
struct HalfDayMark {
  HalfDay kind = HalfDay::None;
  std::size_t length = 0;
};

HalfDayMark halfDayMark(StringView text) {
  if (startsWithWord(text, u"am/pm")) return {HalfDay::Words, 5};
  if (startsWithWord(text, u"a/p")) return {HalfDay::Letters, 3};
  if (startsWithWord(text, u"ampm")) return {HalfDay::Locale, 4};
  return {};
}

bool hasHalfDay(StringView pattern) {
  while (!pattern.empty()) {
    if (halfDayMark(pattern).kind != HalfDay::None) return true;
    const std::size_t literal = literalLength(pattern);
    pattern.remove_prefix(literal != 0 ? literal : 1);
  }
  return false;
}

// Writes one date by one pattern.
class DateWriter {
 public:
  DateWriter(const Moment& moment, const Locale& locale, String& out)
      : moment_(moment), locale_(locale), out_(out) {}

  void write(StringView pattern) {
    twelveHours_ = hasHalfDay(pattern);
    while (!pattern.empty()) pattern.remove_prefix(writeToken(pattern));
  }

  void writeGeneral() {
    const bool time = moment_.secondOfDay != 0;
    const bool date = moment_.dayNumber != 0;
    if (date) writeLocal(locale_.shortDateFormat);
    if (date && time) out_.push_back(u' ');
    if (time || !date) writeLocal(locale_.timeFormat);
  }

 private:
  // Writes what the pattern starts with and returns how much of the pattern that was.
  std::size_t writeToken(StringView pattern) {
    if (const HalfDayMark mark = halfDayMark(pattern); mark.kind != HalfDay::None) {
      writeHalfDay(mark.kind, pattern);
      return mark.length;
    }
    if (const std::size_t literal = literalLength(pattern); literal != 0) {
      out_.append(literalText(pattern.substr(0, literal)));
      return literal;
    }
    const char16_t letter = lowerLetter(pattern[0]);
    std::size_t run = 1;
    while (run < pattern.size() && lowerLetter(pattern[run]) == letter) ++run;
    return writeRun(letter, pattern[0], run);
  }

  void writeHalfDay(HalfDay kind, StringView pattern) {
    const bool morning = moment_.hour < 12;
    if (kind == HalfDay::Locale) {
      out_.append(morning ? locale_.morning : locale_.afternoon);
      return;
    }
    // The mark's own letters: its first part or what follows the slash.
    const std::size_t length = kind == HalfDay::Words ? 2 : 1;
    out_.append(pattern.substr(morning ? 0 : length + 1, length));
  }

  std::size_t writeRun(char16_t letter, char16_t unit, std::size_t run) {
    const auto limited = [run](std::size_t longest) { return run < longest ? run : longest; };
    bool minutes = false;
    if (StringView(u"dmyhnsqw").find(letter) != StringView::npos)
      minutes = std::exchange(afterHour_, letter == u'h') && run <= 2;
    switch (letter) {
      case u'd':
        return writeDay(limited(isLocal_ ? 4 : 6));
      case u'm':
        return minutes ? writeNumber(moment_.minute, run) : writeMonth(limited(4));
      case u'y':
        return writeYear(limited(4));
      case u'h':
        return writeNumber(hour(), limited(2));
      case u'n':
        return writeNumber(moment_.minute, limited(2));
      case u's':
        return writeNumber(moment_.second, limited(2));
      case u'q':
        return writeNumber((moment_.month + 2) / 3, 1);
      case u'w':
        return writeWeek(limited(2));
      default:
        return writeSymbol(letter, unit, run);
    }
  }

  std::size_t writeSymbol(char16_t letter, char16_t unit, std::size_t run) {
    if (letter == u'/') {
      out_.append(locale_.dateSeparator);
    } else if (letter == u':') {
      out_.append(locale_.timeSeparator);
    } else if (letter == u'c' && !isLocal_) {
      writeGeneral();
    } else if (letter == u't' && run >= 5 && !isLocal_) {
      writeLocal(locale_.timeFormat);
      return 5;
    } else {
      out_.push_back(unit);
    }
    return 1;
  }

  // One of the locale's own patterns, inside another or alone.
  void writeLocal(StringView pattern) {
    DateWriter inner(moment_, locale_, out_);
    inner.isLocal_ = true;
    inner.write(pattern);
  }

  std::size_t writeNumber(int value, std::size_t width) {
    appendNumber(out_, value, static_cast<int>(width));
    return width;
  }

  std::size_t writeDay(std::size_t width) {
    const auto weekday = static_cast<std::size_t>(moment_.weekday);
    switch (width) {
      case 3:
        out_.append(locale_.shortDayNames[weekday]);
        break;
      case 4:
        out_.append(locale_.dayNames[weekday]);
        break;
      case 5:
        writeLocal(locale_.shortDateFormat);
        break;
      case 6:
        writeLocal(locale_.longDateFormat);
        break;
      default:
        return writeNumber(moment_.day, width);
    }
    return width;
  }

  std::size_t writeMonth(std::size_t width) {
    const auto month = static_cast<std::size_t>(moment_.month - 1);
    if (width < 3) return writeNumber(moment_.month, width);
    out_.append(width == 3 ? locale_.shortMonthNames[month] : locale_.monthNames[month]);
    return width;
  }

  std::size_t writeYear(std::size_t width) {
    if (width == 2) return writeNumber(moment_.year % 100, width);
    if (width != 4) return writeNumber(moment_.dayOfYear, width);
    appendNumber(out_, moment_.year, 1);  // years before 1000 have three digits
    return width;
  }

  std::size_t writeWeek(std::size_t width) {
    // The first week holds 1 January, however short it is.
    const int firstWeekday = (moment_.weekday - (moment_.dayOfYear - 1) % 7 + 7) % 7;
    const int week = (moment_.dayOfYear - 1 + firstWeekday) / 7 + 1;
    appendNumber(out_, width == 1 ? moment_.weekday + 1 : week, 1);
    return width;
  }

  int hour() const { return twelveHours_ ? (moment_.hour + 11) % 12 + 1 : moment_.hour; }

  const Moment& moment_;
  const Locale& locale_;
  String& out_;
  bool twelveHours_ = false;
  bool isLocal_ = false;    // a pattern of the locale names no other patterns
  bool afterHour_ = false;  // the last token was the hour: m now means minutes
};

}  // namespace

String formatDate(double days, StringView pattern, const Locale& locale) {
  const Moment moment = momentOf(days);
  String out;
  DateWriter(moment, locale, out).write(pattern);
  return out;
}

String generalDate(double days, const Locale& locale) {
  const Moment moment = momentOf(days);
  String out;
  DateWriter(moment, locale, out).writeGeneral();
  return out;
}

}  // namespace zelUtilities
