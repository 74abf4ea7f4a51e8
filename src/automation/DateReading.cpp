#include "automation/DateReading.h"

#include <array>

#include "automation/Calendar.h"
#include "automation/CaseFolding.h"
#include "automation/UnitKinds.h"

namespace zelUtilities {

namespace {

constexpr int secondsPerDay = 86400;

bool startsFolded(StringView text, StringView word) {
  return !word.empty() && text.size() >= word.size() && equalFolded(text.substr(0, word.size()), word);
}

enum class Divider { None, Date, Time };
enum class HalfDay { None, Morning, Afternoon };

// One number of the text, or a month's name.
struct Element {
  int value = 0;
  int digits = 0;  // 0 for a month's name
  HalfDay halfDay = HalfDay::None;
  Divider before = Divider::None;  // what divides it from the element before

  bool isMonthName() const { return digits == 0; }
  // Years of one or two digits are those around the present.
  int year() const {
    if (digits > 2 || value >= 100) return value;
    return value < 30 ? 2000 + value : 1900 + value;
  }
};

// Splits a text into its elements.
class ElementReader {
 public:
  static constexpr std::size_t longest = 6;  // a date and a time

  ElementReader(StringView text, const Locale& locale) : rest_(text), locale_(locale) {}

  bool read() {
    skipBlanks();
    while (!rest_.empty()) {
      if (!(isDigit(rest_[0]) ? readNumber() : readWord() || readDivider())) return false;
    }
    return count_ > 0 && !pendingSymbol_;
  }

  std::size_t count() const { return count_; }
  const Element& operator[](std::size_t i) const { return elements_[i]; }

 private:
  // A blank divides parts of a date unless a symbol stands beside it.
  void skipBlanks() {
    while (!rest_.empty() && isBlank(rest_[0])) {
      rest_.remove_prefix(1);
      if (divider_ == Divider::None) divider_ = Divider::Date;
    }
  }

  bool add(Element element) {
    if (count_ == longest) return false;
    if (count_ > 0) element.before = divider_ == Divider::None ? Divider::Date : divider_;
    elements_[count_++] = element;
    divider_ = Divider::None;
    pendingSymbol_ = false;
    skipBlanks();
    return true;
  }

  bool readNumber() {
    Element element;
    for (; !rest_.empty() && isDigit(rest_[0]); rest_.remove_prefix(1)) {
      if (++element.digits > 4) return false;
      element.value = element.value * 10 + (rest_[0] - u'0');
    }
    return add(element);
  }

  bool readWord() { return readMonth() || readHalfDay(); }

  bool readMonth() {
    // The longest name that fits: names may begin with one another.
    int month = 0;
    std::size_t length = 0;
    for (const auto* names : {&locale_.monthNames, &locale_.shortMonthNames}) {
      for (std::size_t i = 0; i < names->size(); ++i) {
        if ((*names)[i].size() <= length || !startsFolded(rest_, (*names)[i])) continue;
        month = static_cast<int>(i) + 1;
        length = (*names)[i].size();
      }
    }
    if (length == 0) return false;
    rest_.remove_prefix(length);
    return add({month, 0, HalfDay::None, Divider::None});
  }

  bool readHalfDay() {
    const std::pair<StringView, HalfDay> words[] = {{locale_.morning, HalfDay::Morning},
                                                    {locale_.afternoon, HalfDay::Afternoon},
                                                    {u"AM", HalfDay::Morning},
                                                    {u"PM", HalfDay::Afternoon},
                                                    {u"A", HalfDay::Morning},
                                                    {u"P", HalfDay::Afternoon}};
    for (const auto& [word, halfDay] : words) {
      if (!startsFolded(rest_, word)) continue;
      if (count_ == 0 || pendingSymbol_ || elements_[count_ - 1].halfDay != HalfDay::None) return false;
      rest_.remove_prefix(word.size());
      elements_[count_ - 1].halfDay = halfDay;
      skipBlanks();
      return true;
    }
    return false;
  }

  bool take(StringView symbol) {
    if (symbol.empty() || rest_.substr(0, symbol.size()) != symbol) return false;
    rest_.remove_prefix(symbol.size());
    return true;
  }

  bool readDivider() {
    if (count_ == 0 || pendingSymbol_) return false;
    // A locale whose dates are divided by "." has no times divided by it.
    if (take(locale_.dateSeparator) || take(u"/") || take(u"-") || take(u",")) {
      divider_ = Divider::Date;
    } else if (take(locale_.timeSeparator) || take(u":") || take(u".")) {
      divider_ = Divider::Time;
    } else {
      return false;
    }
    pendingSymbol_ = true;
    skipBlanks();
    return true;
  }

  StringView rest_;
  const Locale& locale_;
  std::array<Element, longest> elements_;
  std::size_t count_ = 0;
  Divider divider_ = Divider::None;
  bool pendingSymbol_ = false;  // a symbol was read and needs an element behind it
};

// Some of the elements, one behind the other.
struct Part {
  std::size_t first = 0;
  std::size_t count = 0;
};

// The time stands at one end of the text: elements divided as a time, or one marked as before or after noon.
std::optional<Part> timePart(const ElementReader& elements) {
  std::optional<Part> time;
  for (std::size_t i = 0; i < elements.count();) {
    std::size_t end = i + 1;
    while (end < elements.count() && elements[end].before == Divider::Time) ++end;
    bool marked = false;
    for (std::size_t j = i; j < end; ++j) marked = marked || elements[j].halfDay != HalfDay::None;
    if (end - i > 1 || marked) {
      if (time) return std::nullopt;
      time = Part{i, end - i};
    }
    i = end;
  }
  if (!time) return Part{};
  if (time->first != 0 && time->first + time->count != elements.count()) return std::nullopt;
  return time;
}

// Seconds of the day.
std::optional<int> readTime(const ElementReader& elements, Part part) {
  if (part.count > 3) return std::nullopt;
  std::array<int, 3> parts{};
  HalfDay halfDay = HalfDay::None;
  for (std::size_t i = 0; i < part.count; ++i) {
    const Element& element = elements[part.first + i];
    if (element.isMonthName() || (halfDay != HalfDay::None)) return std::nullopt;
    parts[i] = element.value;
    halfDay = element.halfDay;
  }
  auto [hour, minute, second] = parts;
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  if (halfDay == HalfDay::Morning && hour == 12) hour = 0;
  if (halfDay == HalfDay::Afternoon && hour < 12) hour += 12;
  return (hour * 60 + minute) * 60 + second;
}

std::optional<int> dayNumber(int year, int month, int day) {
  if (!isCalendarDate(year, month, day)) return std::nullopt;
  return dayNumberOf(year, month, day);
}

std::optional<int> dayNumber(const Element& year, int month, const Element& day) {
  return dayNumber(year.year(), month, day.value);
}

// A month's name with the day, the year, or both.
std::optional<int> readNamedDate(const ElementReader& elements, Part part) {
  std::array<Element, 2> numbers;
  std::size_t count = 0;
  int month = 0;
  for (std::size_t i = 0; i < part.count; ++i) {
    const Element& element = elements[part.first + i];
    if (!element.isMonthName()) {
      if (count == numbers.size()) return std::nullopt;
      numbers[count++] = element;
    } else if (month == 0) {
      month = element.value;
    } else {
      return std::nullopt;
    }
  }
  if (count == 2) {
    if (auto day = dayNumber(numbers[1], month, numbers[0])) return day;
    return dayNumber(numbers[0], month, numbers[1]);
  }
  if (count == 0) return std::nullopt;
  if (auto day = dayNumber(currentYear(), month, numbers[0].value)) return day;
  return dayNumber(numbers[0].year(), month, 1);
}

std::optional<int> readTwoNumbers(const Element& first, const Element& second, DateOrder order) {
  const bool dayFirst = order == DateOrder::DayMonthYear;
  const int year = currentYear();
  const auto monthDay = [year](const Element& month, const Element& day) {
    return dayNumber(year, month.value, day.value);
  };
  if (auto day = dayFirst ? monthDay(second, first) : monthDay(first, second)) return day;
  if (auto day = dayFirst ? monthDay(first, second) : monthDay(second, first)) return day;
  if (auto day = dayNumber(second.year(), first.value, 1)) return day;
  return dayNumber(first.year(), second.value, 1);
}

std::optional<int> inOrder(const Element* numbers, DateOrder order) {
  switch (order) {
    case DateOrder::MonthDayYear:
      return dayNumber(numbers[2], numbers[0].value, numbers[1]);
    case DateOrder::DayMonthYear:
      return dayNumber(numbers[2], numbers[1].value, numbers[0]);
    default:
      return dayNumber(numbers[0], numbers[1].value, numbers[2]);
  }
}

std::optional<int> readThreeNumbers(const Element* numbers, DateOrder order) {
  if (auto day = inOrder(numbers, order)) return day;
  for (const DateOrder other : {DateOrder::YearMonthDay, DateOrder::DayMonthYear, DateOrder::MonthDayYear}) {
    if (auto day = inOrder(numbers, other)) return day;
  }
  return dayNumber(numbers[0], numbers[2].value, numbers[1]);
}

std::optional<int> readDay(const ElementReader& elements, Part part, DateOrder order) {
  if (part.count < 2 || part.count > 3) return std::nullopt;
  bool named = false;
  for (std::size_t i = 0; i < part.count; ++i) named = named || elements[part.first + i].isMonthName();
  if (named) return readNamedDate(elements, part);
  const Element* first = &elements[part.first];
  return part.count == 2 ? readTwoNumbers(first[0], first[1], order) : readThreeNumbers(first, order);
}

// The most common form, the same in every locale: "2007-03-05", with or without " 14:07:09". Nothing for any
// other text, date or not.
class IsoDate {
 public:
  explicit IsoDate(StringView text) : text_(text) {}

  std::optional<double> read() const {
    if (text_.size() != dateUnits && text_.size() != allUnits) return std::nullopt;
    const int year = pair(0) * 100 + pair(2);
    const int month = pair(5);
    const int day = pair(8);
    if (year < 100 || text_[4] != u'-' || text_[7] != u'-' || month < 0 || day < 0) return std::nullopt;
    const int second = text_.size() == dateUnits ? 0 : secondOfDay();
    if (second < 0 || !isCalendarDate(year, month, day)) return std::nullopt;
    return dateOf(dayNumberOf(year, month, day), second);
  }

 private:
  static constexpr std::size_t dateUnits = 10;
  static constexpr std::size_t allUnits = 19;
  static constexpr int noNumber = -100'000;

  // Two digits; far below 0 where there are none.
  int pair(std::size_t at) const {
    if (!isDigit(text_[at]) || !isDigit(text_[at + 1])) return noNumber;
    return (text_[at] - u'0') * 10 + (text_[at + 1] - u'0');
  }
  int secondOfDay() const {
    const int hour = pair(11);
    const int minute = pair(14);
    const int second = pair(17);
    if (text_[10] != u' ' || text_[13] != u':' || text_[16] != u':') return noNumber;
    if (hour > 23 || minute > 59 || second > 59 || hour < 0 || minute < 0) return noNumber;
    return (hour * 60 + minute) * 60 + second;
  }

  StringView text_;
};

}  // namespace

std::optional<double> readDate(StringView text, const Locale& locale) {
  // Where ":" divides dates, it may mean something else.
  if (!locale.dateSeparator.starts_with(u':'))
    if (const std::optional<double> iso = IsoDate(text).read()) return iso;
  ElementReader elements(text, locale);
  if (!elements.read()) return std::nullopt;
  const std::optional<Part> time = timePart(elements);
  if (!time) return std::nullopt;
  std::optional<int> second = 0;
  if (time->count > 0) second = readTime(elements, *time);
  if (!second) return std::nullopt;
  const Part date{time->first == 0 ? time->count : 0, elements.count() - time->count};
  if (date.count == 0) return static_cast<double>(*second) / secondsPerDay;
  const std::optional<int> day = readDay(elements, date, locale.dateOrder);
  if (!day) return std::nullopt;
  return dateOf(*day, *second);
}

}  // namespace zelUtilities
