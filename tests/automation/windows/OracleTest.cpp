// Compares conversions, comparison and formatting with the system's own over generated values.
#include <gtest/gtest.h>

#include <cmath>

#include "automation/Comparison.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/Format.h"
#include "automation/LocaleGuard.h"
#include "automation/windows/Explanations.h"
#include "automation/windows/Generator.h"

namespace zelUtilities::oracle {
namespace {

// German as the system at hand has it.
Locale systemGerman() {
  Locale locale = germanLocale();
  locale.shortDateFormat = u"d.m.yyyy";
  return locale;
}

template <class Operation>
Outcome outcomeOf(const Operation& operation) {
  try {
    return {operation()};
  } catch (const Error& error) {
    return {{}, error.number()};
  }
}

constexpr VariantKind targets[] = {VariantKind::Byte,   VariantKind::Integer, VariantKind::Long,
                                   VariantKind::Single, VariantKind::Double,  VariantKind::Currency,
                                   VariantKind::Date,   VariantKind::Boolean, VariantKind::String};

Outcome ourConvert(const Variant& value, VariantKind kind) {
  return outcomeOf([&] { return convertTo(value, kind); });
}

Outcome ourCompare(const Variant& left, const Variant& right) {
  return outcomeOf([&] {
    const Ordering ordering = compare(left, right);
    return ordering == Ordering::Null ? Variant::null() : Variant(static_cast<std::int32_t>(ordering));
  });
}

std::uint32_t localeId() { return currentLocale().decimalSeparator == u"," ? 0x407 : 0x409; }

void tryConversion(Differences& differences, const Variant& value, VariantKind kind) {
  differences.add({value, kind, {}, {}, ourConvert(value, kind), systemConvert(value, kind, localeId())});
}

void tryConversions(Differences& differences, const Variant& value) {
  for (const VariantKind kind : targets) tryConversion(differences, value, kind);
}

void tryFormat(Differences& differences, const Variant& value, const String& pattern) {
  const Outcome ours = outcomeOf([&] { return Variant(format(value, pattern)); });
  differences.add({value, VariantKind::Empty, pattern, {}, ours, systemFormat(value, pattern)});
}

TEST(Oracle, ConvertsNumbersAlike) {
  Generator generator(1);
  Differences differences("conversions of numbers", explainNumberConversions());
  for (int i = 0; i < 12000; ++i) tryConversions(differences, generator.numberValue());
  for (int i = 0; i < 3000; ++i) tryConversions(differences, generator.date());
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 3000; ++i) tryConversions(differences, generator.numberValue());
  for (int i = 0; i < 3000; ++i) tryConversions(differences, generator.date());
}

TEST(Oracle, ConvertsNumberTextsAlike) {
  Generator generator(2);
  Differences differences("conversions of number texts", explainNumberTexts());
  for (int i = 0; i < 8000; ++i) tryConversions(differences, generator.numberText(u".", u",", u"$"));
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 4000; ++i) tryConversions(differences, generator.numberText(u",", u".", u"\u20AC"));
}

TEST(Oracle, ReadsDatesAlike) {
  Generator generator(3);
  Differences differences("dates read from texts", explainDateTexts());
  const auto date = [&](StringView monthNames) {
    tryConversion(differences, generator.dateText(monthNames), VariantKind::Date);
  };
  for (int i = 0; i < 20000; ++i) date(u"January|Feb|mar|May|SEPTEMBER|Dec");
  const LocaleGuard guard(systemGerman());
  for (int i = 0; i < 10000; ++i) date(u"Januar|Feb|m\u00E4rz|Mai|SEPTEMBER|Dez");
}

TEST(Oracle, ComparesAlike) {
  Generator generator(4);
  Differences differences("comparisons", explainComparisons());
  const auto value = [&]() -> Variant {
    const int choice = generator.below(12);
    if (choice == 0) return Variant::null();
    if (choice == 1) return generator.date();
    // Texts on which the order of the locale and that of the units agree.
    if (choice == 2) return generator.oneOf(u"|a|ab|abc|b|ba");
    return generator.numberValue();
  };
  for (int i = 0; i < 60000; ++i) {
    const Variant left = value();
    Variant right = value();
    // Every fourth number meets itself in another kind.
    if (generator.chance(25) && !left.isString() && !left.isNull())
      right = ourConvert(left, targets[generator.below(8)]).value;
    const Outcome ours = ourCompare(left, right);
    differences.add({left, VariantKind::Empty, {}, right, ours, systemCompare(left, right, localeId())});
  }
}

TEST(Oracle, FormatsNumbersAlike) {
  Generator generator(5);
  Differences differences("numbers formatted", explainNumberFormats());
  for (int i = 0; i < 40000; ++i) {
    // The system writes past its own buffer for longer numbers.
    const Variant value = generator.numberValue();
    tryFormat(differences, std::fabs(toDouble(value)) > 1e60 ? 0.5 : value, generator.numberPattern());
  }
  for (int i = 0; i < 5000; ++i) {
    const String text = generator.numberText(u".", u",", u"$");
    const bool mayBeLong = text.find_first_of(u"eE") != String::npos;
    tryFormat(differences, mayBeLong ? u"2.5" : text, generator.numberPattern());
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
    tryFormat(differences, generator.oneOf(u"|a|Ab|abc|Wxyz|testing|A longer text"), generator.textPattern());
}

}  // namespace
}  // namespace zelUtilities::oracle
