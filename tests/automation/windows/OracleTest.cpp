// Compares conversions, comparison and formatting with the system's own over generated values. The system at
// hand is Wine 8's; where it is at fault, we keep to what Windows and the clients' language do.
#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <regex>

#include "automation/CaseFolding.h"
#include "automation/Comparison.h"
#include "automation/Error.h"
#include "automation/Format.h"
#include "automation/LocaleGuard.h"
#include "automation/windows/Generator.h"
#include "automation/windows/SystemOracle.h"
#include "support/Spelled.h"

namespace zelUtilities::oracle {
namespace {

// What an operation gave, or the number of the error that it raised as an Error.
template <class Operation>
Variant outcomeOf(const Operation& operation) {
  try {
    return operation();
  } catch (const Error& error) {
    return Variant::error(error.number());
  }
}

// Dates are the same within a fraction of a second: there are several ways to add up hours and minutes.
bool same(const Variant& a, const Variant& b) {
  if (a.kind() != b.kind() || a.isNull()) return a.kind() == b.kind();
  if (a.isError()) return a.errorCode() == b.errorCode();
  if (a.isString()) return a.text() == b.text();
  if (a.kind() == VariantKind::Currency) return a.currencyValue() == b.currencyValue();
  return std::fabs(toDouble(a) - toDouble(b)) <= (a.kind() == VariantKind::Date ? 1e-9 : 0);
}

// A value that was formatted by a pattern, converted to the kind of that number, or compared with another.
struct Trial {
  Variant value, pattern, other, ours, system;
};

// A difference that is meant: a fault of the system's implementation at hand, or ours by intent.
struct Explanation {
  const char* sentence;
  bool (*applies)(const Trial&);
  bool needed = true;
  std::size_t count = 0;
};

bool isMismatch(const Variant& value) { return value.isError() && value.errorCode() == 13; }
bool isOverflow(const Variant& value) { return value.isError() && value.errorCode() == 6; }

// Whether a part of the text, in any letter case, matches the regular expression.
bool has(StringView text, const char* part) {
  static std::map<const char*, std::regex> known;
  return std::regex_search(toUtf8(text), known.try_emplace(part, part, std::regex::icase).first->second);
}

String without(StringView text, char16_t unit) {
  String out(text);
  std::erase(out, unit);
  return out;
}

// The texts of a trial; empty where a value is none.
StringView textOf(const Variant& value) { return value.isString() ? value.text() : StringView(); }
StringView in(const Trial& trial) { return textOf(trial.value); }
StringView our(const Trial& trial) { return textOf(trial.ours); }
StringView their(const Trial& trial) { return textOf(trial.system); }
StringView by(const Trial& trial) { return textOf(trial.pattern); }

bool eitherIs(const Trial& trial, VariantKind kind) {
  return trial.value.kind() == kind || trial.other.kind() == kind;
}

// What a number pattern is given.
double numberIn(const Trial& trial) {
  return trial.value.isString() && !isNumeric(trial.value) ? 0 : toDouble(trial.value);
}

double apart(const Trial& trial) {
  if (!isNumeric(trial.ours) || trial.system.isError()) return HUGE_VAL;
  return std::fabs(toDouble(trial.ours) - toDouble(trial.system));
}

bool differInLastPlaces(const Trial& trial) {
  const double relative = trial.ours.kind() == VariantKind::Single ? 2e-7 : 5e-15;
  return apart(trial) <= (isNumeric(trial.ours) ? relative * std::fabs(toDouble(trial.ours)) : 0);
}

// More than one sign, a currency sign too many or before the decimals, an open parenthesis, or a thousands
// separator behind the decimal one.
bool hasSurplus(StringView text) {
  return has(text, "[-+].*[-+]|([$]|\u20AC)(.*([$]|\u20AC)|[.,])|[(][^)]*$") ||
         has(text, currentLocale().decimalSeparator == u"." ? "[.e].*," : "[,e].*[.]");
}

bool isDay(const Variant& value) { return value.kind() == VariantKind::Date; }

// A macro, so that an explanation takes two lines.
#define WHERE(...) [](const Trial& t) { return __VA_ARGS__; }

constexpr Explanation nextCentury = {
    "the system puts the years 30 to 49 into the coming century",
    WHERE(isDay(t.ours) && isDay(t.system) && std::fabs(t.ours.dateValue() - 14611) < 3653 &&
          std::fabs(t.system.dateValue() - t.ours.dateValue() - 36524.5) < 2)};

// German as the system at hand has it.
Locale systemGerman() {
  Locale locale = germanLocale();
  locale.shortDateFormat = u"d.m.yyyy";
  return locale;
}

constexpr VariantKind targets[] = {VariantKind::Byte,   VariantKind::Integer, VariantKind::Long,
                                   VariantKind::Single, VariantKind::Double,  VariantKind::Currency,
                                   VariantKind::Date,   VariantKind::Boolean, VariantKind::String};

// Every difference needs an explanation, and every explanation that is needed a difference; the end of a test
// prints the counts and fails it for either.
class Oracle : public testing::Test, protected Generator {
 protected:
  void explain(std::vector<Explanation> explanations) { explanations_ = std::move(explanations); }

  void add(const Trial& trial) {
    ++trials_;
    if (same(trial.ours, trial.system)) return;
    for (Explanation& each : explanations_)
      if (each.applies(trial)) return void(++each.count);
    if (++unexplained_ > 40) return;
    const auto& [value, pattern, other, ours, system] = trial;
    std::cout << spelled({value, pattern, other, ours, system}) << ", apart " << apart(trial) << "\n";
  }

  ~Oracle() override {
    std::cout << trials_ << " compared, " << unexplained_ << " differ unexplained\n";
    EXPECT_EQ(unexplained_, 0U);
    for (const Explanation& each : explanations_) {
      std::cout << "  " << each.count << " differ: " << each.sentence << "\n";
      EXPECT_EQ(each.count != 0, each.needed) << "no longer needed: " << each.sentence;
    }
  }

  void tryConversion(const Variant& value, VariantKind kind) {
    const Variant ours = outcomeOf([&] { return convertTo(value, kind); });
    const Variant system = outcomeOf([&] { return systemConvert(value, kind, localeId()); });
    add({value, static_cast<int>(kind), {}, ours, system});
  }
  void tryConversions(const Variant& value) {
    for (const VariantKind kind : targets) tryConversion(value, kind);
  }
  void tryFormat(const Variant& value, const String& pattern) {
    const Variant ours = outcomeOf([&] { return format(value, pattern); });
    add({value, pattern, {}, ours, outcomeOf([&] { return systemFormat(value, pattern); })});
  }
  void tryComparison(const Variant& left, const Variant& right) {
    const Variant ours = outcomeOf([&] {
      const Ordering ordering = compare(left, right);
      return ordering == Ordering::Null ? Variant::null() : Variant(static_cast<std::int32_t>(ordering));
    });
    add({left, {}, right, ours, outcomeOf([&] { return systemCompare(left, right, localeId()); })});
  }

 private:
  static std::uint32_t localeId() { return currentLocale().decimalSeparator == u"," ? 0x407 : 0x409; }

  std::vector<Explanation> explanations_;
  std::size_t trials_ = 0, unexplained_ = 0;
};

TEST_F(Oracle, ConvertsNumbersAlike) {
  explain({
      {"the system makes dates that no calendar has from Single and Currency",
       WHERE(isDay(t.system) && isOverflow(t.ours))},
      {"the system chooses the exponent of small numbers by their size, we by the decimals they take",
       WHERE(has(our(t), "e-") != has(their(t), "e-"))},
      {"the system keeps the point in a number with an exponent in every locale",
       WHERE(has(our(t), "e") && without(our(t), u',') == without(their(t), u'.'))},
      {"the system writes a moment that rounds to midnight with the time",
       WHERE(eitherIs(t, VariantKind::Date) && has(their(t), ":00:00"))},
      {"in 32 bits the system rounds a currency once, we twice as in 64 bits",
       WHERE(t.value.kind() == VariantKind::Currency && differInLastPlaces(t)), sizeof(void*) == 4},
  });
  for (int i = 0; i < 12000; ++i) tryConversions(numberValue());
  for (int i = 0; i < 3000; ++i) tryConversions(date());
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 3000; ++i) tryConversions(numberValue());
  for (int i = 0; i < 3000; ++i) tryConversions(date());
}

TEST_F(Oracle, ConvertsNumberTextsAlike) {
  explain({
      {"the system is off in the last places, the fifth decimal of a Currency, and negative exponents",
       WHERE(differInLastPlaces(t) || apart(t) < 1.5)},
      {"the system makes no Currency from other bases, and only a Long from 32 bits",
       WHERE(has(in(t), "&") && isOverflow(t.system))},
      {"the system overflows for what is too small for a Single, and for negative fractions as Bytes",
       WHERE(isOverflow(t.system) && isNumeric(t.ours) && toDouble(t.ours) == 0)},
      {"the system takes exponents of more than nine digits modulo 2^32",
       WHERE(has(in(t), "\\d{10}") && has(in(t), "e"))},
      {"we take each sign once, thousands before the decimals, closed parentheses, and dates of full parts "
       "only",
       WHERE(isMismatch(t.ours) && (hasSurplus(in(t)) || isDay(t.system)))},
      {"the system knows no D for an exponent", WHERE(isMismatch(t.system) && has(in(t), "d"))},
      nextCentury,
  });
  for (int i = 0; i < 8000; ++i) tryConversions(numberText());
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 4000; ++i) tryConversions(numberText());
}

TEST_F(Oracle, ReadsDatesAlike) {
  explain({
      nextCentury,
      {"the system reads a month's name between or behind two numbers as year, month, day, and in times",
       WHERE(has(in(t), "jan|feb|mar|m\u00E4rz|may|mai|sep|dec|dez"))},
      {"the system passes over dividers that divide nothing",
       WHERE(isMismatch(t.ours) && has(in(t), "^\\s*[-,./:]|[-,./:]\\s*([-,./:ap]|$)"))},
      {"we let a date's divider stand between time and date",
       WHERE(isMismatch(t.system) && has(in(t), " /|- |:\\S*-"))},
      {"the system takes the letters a and p for other things, but after hours and minutes alone",
       WHERE(has(in(t), "^[^ap]*[ap](?!m)"))},
      {"the system takes numbers of more than four digits, and gives the years 001 to 0099 a century",
       WHERE(has(in(t), "\\d{5}|\\b0\\d\\d"))},
  });
  const auto tryDate = [&](const String& months) { tryConversion(dateText(months), VariantKind::Date); };
  for (int i = 0; i < 20000; ++i) tryDate(u"January|Feb|mar|May|SEPTEMBER|Dec");
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 10000; ++i) tryDate(u"Januar|Feb|m\u00E4rz|Mai|SEPTEMBER|Dez");
}

TEST_F(Oracle, ComparesAlike) {
  explain({
      {"the system compares any number with a Single in the precision of a Single",
       WHERE(eitherIs(t, VariantKind::Single))},
      {"we compare a Double with a Currency in the precision of a Currency, as the clients' language does",
       WHERE(eitherIs(t, VariantKind::Currency) && eitherIs(t, VariantKind::Double))},
  });
  const auto value = [&]() -> Variant {
    const int choice = below(12);
    if (choice == 0) return Variant::null();
    if (choice == 1) return date();
    // Texts on which the order of the locale and that of the units agree.
    return choice == 2 ? any(u"|a|ab|abc|b|ba") : numberValue();
  };
  for (int i = 0; i < 60000; ++i) {
    const Variant left = value();
    const bool isNumber = !left.isString() && !left.isNull();
    // Every fourth number meets itself in another kind.
    const auto itself = [&] { return convertTo(left, targets[below(8)]); };
    const Variant right = isNumber && chance(25) ? outcomeOf(itself) : value();
    tryComparison(left, right.isError() ? Variant() : right);
  }
}

TEST_F(Oracle, FormatsNumbersAlike) {
  explain({
      {"the system has no digits for Empty, and leaves a text under General Number as it is",
       WHERE(t.value.isEmpty() || (t.value.isString() && by(t) == u"General Number"))},
      {"the system takes the digits of other bases for decimal ones", WHERE(has(in(t), "&"))},
      {"the system takes the 0 of a text with a sign for a negative number",
       WHERE(numberIn(t) == 0 && has(in(t), "-") && isNumeric(t.value))},
      {"we take one sign, one currency sign, and thousands separators before the decimal one only",
       WHERE(hasSurplus(in(t)))},
      {"the system shows 7 digits of a Single", WHERE(eitherIs(t, VariantKind::Single))},
      {"the system writes the sign next to the digits, we before everything",
       WHERE(our(t).find(u'-') == 0 && without(our(t), u'-') == without(their(t), u'-'))},
      {"the system loses what is carried over from the decimals of a number below one",
       WHERE(std::fabs(numberIn(t)) < 1 && numberIn(t) != 0)},
      {"the system's exponents go wrong beside commas and # places",
       WHERE(has(by(t), "e[+]###|e[-+].*,|,.*e[-+]"))},
      {"the system drops a place for zero where # stands behind 0, and its exponent",
       WHERE(numberIn(t) == 0 && has(by(t), "0[^;]*#|e[-+]"))},
      {"the system loses the last 0 before the point under #,#", WHERE(has(by(t), "#,#(?!#0)"))},
  });
  for (int i = 0; i < 40000; ++i) {
    // The system writes past its own buffer for longer numbers.
    const Variant value = numberValue();
    tryFormat(std::fabs(toDouble(value)) > 1e60 ? 0.5 : value, numberPattern());
  }
  for (int i = 0; i < 5000; ++i) {
    const String text = numberText();
    // Those may be longer, too; and of some, the system keeps the zeros that they begin with.
    tryFormat(has(text, "[de]|^\\D*0,?\\d") ? u"2.5" : text, numberPattern());
  }
}

TEST_F(Oracle, FormatsDatesAlike) {
  explain({
      {"the system is at fault in medium dates, long times at midnight, half-day marks, c, and weeks",
       WHERE(has(by(t), "medium date|ttttt|long time|a/p|am/pm|ampm|c|ww"))},
      {"the system takes m for minutes anywhere behind an hour, we next to it",
       WHERE(has(by(t), "h") && has(by(t), "m"))},
      {"the system rounds the last second of a day into the time but not into the date",
       WHERE(std::fabs(std::remainder(t.value.dateValue(), 1)) < 0.5 / 86400)},
  });
  for (int i = 0; i < 30000; ++i) tryFormat(date(), datePattern());
}

TEST_F(Oracle, FormatsTextsAlike) {
  explain({
      {"the system turns texts to lower case unasked", WHERE(foldCase(our(t)) == their(t))},
      {"the system ignores ! and fills & from the left", WHERE(has(by(t), "!|&"))},
  });
  for (int i = 0; i < 20000; ++i) tryFormat(any(u"|a|Ab|abc|Wxyz|testing|A longer text"), textPattern());
}

}  // namespace
}  // namespace zelUtilities::oracle
