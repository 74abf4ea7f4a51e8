// Compares conversions, comparison and formatting with the system's own over generated values.
#include <gtest/gtest.h>

#include <cmath>

#include "automation/Comparison.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/Format.h"
#include "automation/LocaleGuard.h"
#include "automation/windows/Differences.h"
#include "automation/windows/Explanations.h"
#include "automation/windows/Generator.h"

namespace zelUtilities::oracle {
namespace {

constexpr std::uint32_t english = 0x409;
constexpr std::uint32_t german = 0x407;

// German as the system at hand has it.
Locale systemGerman() {
  Locale locale = germanLocale();
  locale.shortDateFormat = u"d.m.yyyy";
  return locale;
}

template <class Operation>
Outcome outcomeOf(const Operation& operation) {
  try {
    return {operation(), 0};
  } catch (const Error& error) {
    return {{}, error.number()};
  }
}

constexpr VariantKind targets[] = {VariantKind::Byte,   VariantKind::Integer, VariantKind::Long,
                                   VariantKind::Single, VariantKind::Double,  VariantKind::Currency,
                                   VariantKind::Date,   VariantKind::Boolean, VariantKind::String};

void tryConversions(Differences& differences, const Variant& value, std::uint32_t localeId) {
  for (const VariantKind kind : targets) {
    Trial trial{value, kind, {}, {}, {}, {}};
    trial.ours = outcomeOf([&] { return convertTo(value, kind); });
    trial.system = systemConvert(value, kind, localeId);
    differences.add(trial);
  }
}

void tryDate(Differences& differences, const String& text, std::uint32_t localeId) {
  Trial trial{text, VariantKind::Date, {}, {}, {}, {}};
  trial.ours = outcomeOf([&] { return Variant::date(toDate(text)); });
  trial.system = systemReadDate(text, localeId);
  differences.add(trial);
}

void tryComparison(Differences& differences, const Variant& left, const Variant& right) {
  Trial trial{left, VariantKind::Empty, {}, right, {}, {}};
  trial.ours = outcomeOf([&] {
    const Ordering ordering = compare(left, right);
    return ordering == Ordering::Null ? Variant::null() : Variant(static_cast<std::int32_t>(ordering));
  });
  trial.system = systemCompare(left, right, english);
  differences.add(trial);
}

void tryFormat(Differences& differences, const Variant& value, const String& pattern) {
  Trial trial{value, VariantKind::Empty, pattern, {}, {}, {}};
  trial.ours = outcomeOf([&] { return Variant(format(value, pattern)); });
  trial.system = systemFormat(value, pattern);
  differences.add(trial);
}

TEST(Oracle, ConvertsNumbersAlike) {
  Generator generator(1);
  Differences differences("conversions of numbers", explainNumberConversions());
  for (int i = 0; i < 12000; ++i) tryConversions(differences, generator.numberValue(), english);
  for (int i = 0; i < 3000; ++i) tryConversions(differences, generator.date(), english);
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 3000; ++i) tryConversions(differences, generator.numberValue(), german);
  for (int i = 0; i < 3000; ++i) tryConversions(differences, generator.date(), german);
}

TEST(Oracle, ConvertsNumberTextsAlike) {
  Generator generator(2);
  Differences differences("conversions of number texts", explainNumberTexts());
  for (int i = 0; i < 8000; ++i) tryConversions(differences, generator.numberText(u".", u",", u"$"), english);
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 4000; ++i)
    tryConversions(differences, generator.numberText(u",", u".", u"\u20AC"), german);
}

TEST(Oracle, ReadsDatesAlike) {
  Generator generator(3);
  Differences differences("dates read from texts", explainDateTexts());
  for (int i = 0; i < 20000; ++i)
    tryDate(differences, generator.dateText({u"January", u"Feb", u"mar", u"May", u"SEPTEMBER", u"Dec"}),
            english);
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 10000; ++i)
    tryDate(differences, generator.dateText({u"Januar", u"Feb", u"m\u00E4rz", u"Mai", u"SEPTEMBER", u"Dez"}),
            german);
}

TEST(Oracle, ComparesAlike) {
  Generator generator(4);
  Differences differences("comparisons", explainComparisons());
  // Texts on which the order of the locale and that of the units agree.
  const auto value = [&]() -> Variant {
    switch (generator.below(12)) {
      case 0:
        return Variant::null();
      case 1:
        return generator.date();
      case 2:
        return generator.oneOf({u"", u"a", u"ab", u"abc", u"b", u"ba"});
      default:
        return generator.numberValue();
    }
  };
  for (int i = 0; i < 60000; ++i) {
    const Variant left = value();
    Variant right = value();
    // Every fourth number meets itself in another kind.
    if (generator.chance(25) && !left.isString() && !left.isNull())
      right = outcomeOf([&] { return convertTo(left, targets[generator.below(8)]); }).value;
    tryComparison(differences, left, right);
  }
}

TEST(Oracle, FormatsNumbersAlike) {
  Generator generator(5);
  Differences differences("numbers formatted", explainNumberFormats());
  for (int i = 0; i < 40000; ++i) {
    Variant value = generator.numberValue();
    // The system writes past its own buffer for longer numbers.
    if (std::fabs(toDouble(value)) > 1e60) value = 0.5;
    tryFormat(differences, value, generator.numberPattern());
  }
  for (int i = 0; i < 5000; ++i) {
    String text = generator.numberText(u".", u",", u"$");
    if (text.find_first_of(u"eE") != String::npos) text = u"2.5";
    tryFormat(differences, text, generator.numberPattern());
  }
}

TEST(Oracle, FormatsDatesAlike) {
  Generator generator(6);
  Differences differences("dates formatted", explainDateFormats());
  for (int i = 0; i < 30000; ++i) tryFormat(differences, generator.date(), generator.datePattern());
}

TEST(Oracle, FormatsTextsAlike) {
  Generator generator(7);
  Differences differences("texts formatted", explainTextFormats());
  for (int i = 0; i < 20000; ++i)
    tryFormat(differences, generator.oneOf({u"", u"a", u"Ab", u"abc", u"Wxyz", u"testing", u"A longer text"}),
              generator.textPattern());
}

}  // namespace
}  // namespace zelUtilities::oracle
