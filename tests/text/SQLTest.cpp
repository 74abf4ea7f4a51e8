#include "automation/ArrayData.h"
#include "automation/Calendar.h"
#include "automation/LocaleGuard.h"
#include "support/Testing.h"
#include "text/zelSQL.h"

namespace zelUtilities {
namespace {

const Variant null = Variant::null();
Variant date(int year, int month, int day, int seconds = 0) {
  return Variant::date(dateOf(dayNumberOf(year, month, day), seconds));
}

// Literals do not depend on the user's conventions.
class SQL : public testing::Test {
  LocaleGuard guard_{germanLocale()};
};

template <class Function>
void expectLiterals(Function function, std::initializer_list<std::pair<Variant, StringView>> cases) {
  for (const auto& [value, literal] : cases) EXPECT_EQ(toUtf8(function(value)), toUtf8(literal));
}
// A macro, so that several rows stand on a line.
#define EXPECT_LITERALS(function, ...) expectLiterals(function, {__VA_ARGS__})

TEST_F(SQL, ValuesHaveOneForm) {
  EXPECT_LITERALS(zel_SQLBoolean, {true, u"True"}, {0, u"False"}, {u"2,5", u"True"}, {null, u"Null"},
                  {u"", u"Null"}, {Variant(), u"Null"});
  EXPECT_LITERALS(zel_SQLDate, {date(2007, 3, 5, 50829), u"#03/05/2007 14:07:09#"},
                  {date(2007, 3, 5), u"#03/05/2007#"}, {date(100, 1, 1), u"#01/01/0100#"},
                  {Variant::date(8.5 / 24), u"#08:30:00#"}, {u"5.3.2007", u"#03/05/2007#"},
                  {39146, u"#03/05/2007#"}, {0, u"Null"}, {u"", u"Null"}, {Variant(), u"Null"},
                  {null, u"Null"});
  // A Boolean's text is "True".
  EXPECT_LITERALS([](const Variant& value) { return zel_SQLNumber(value); }, {3.5, u"3.5"},
                  {-0.25F, u"-0.25"}, {Variant::currency(12345), u"1.2345"}, {1e20, u"1E+20"},
                  {u"12abc", u"12"}, {u"3,5", u"3"}, {u"abc", u"0"}, {Variant(), u"0"}, {true, u"0"},
                  {null, u"0"});
  EXPECT_EQ(zel_SQLNumber(null, true), u"Null");
}

TEST_F(SQL, TextsAreQuotedCutAtNulAndTrimmedAtTheirEnd) {
  const auto text = [](const Variant& value) { return zel_SQLString(value); };
  EXPECT_LITERALS(text, {u"O'Brien  ", u"'O''Brien'"}, {StringView(u"a\0b", 3), u"'a'"}, {3.5, u"'3.5'"},
                  {Variant(), u"''"}, {null, u"''"});
  EXPECT_EQ(zel_SQLString(u"O'Brien  ", false, false), u"'O''Brien  '");
  EXPECT_EQ(zel_SQLString(u"  a   b  ", false, true, false), u"' a b'");
  EXPECT_EQ(zel_SQLString(null, true), u"Null");
}

TEST_F(SQL, WhereLosesItsLastWord) {
  const auto where = [](const Variant& clause) { return zel_SQLWhere(clause.text()); };
  EXPECT_LITERALS(where, {u"a = 1 and ", u"a = 1 "}, {u"x = 1 OR ", u"x = 1 "}, {u"where ", u""},
                  {u"select * from t WHERE ", u"select * from t "}, {u"where and ", u""},
                  {u"a or and ", u"a or "}, {u"and ", u"and "}, {u"nowhere ", u"no"}, {u"a = 1", u"a = 1"},
                  {u"", u""});
}

TEST_F(SQL, BytesAreEscapedByTheirLowEightBits) {
  EXPECT_EQ(zel_SQLBinary(u"a\\b'\n\r\u00E9\u007F"), u"'a\\\\b''\\n\r\\xE9\u007F'");
  EXPECT_EQ(zel_SQLBinary(StringView(u"\0\u0100\u010A\u0127\u015C\u20AC\u0141", 7)),
            u"'\\x00\\x00\\n''\\\\\\xAC\u0141'");
}

TEST_F(SQL, WhatDoesNotConvertIsLoggedAndGivesNothing) {
  Reports reports{"mSQL."};
  const Variant array = ArrayData::ofVariants({});
  for (const String& literal : {zel_SQLBoolean(u"maybe"), zel_SQLDate(u"never"), zel_SQLDate(1e300),
                                zel_SQLNumber(u"1e999"), zel_SQLString(array)})
    EXPECT_EQ(literal, u"");
  EXPECT_EQ(reports.taken(), "SQLBoolean|13 SQLDate|13 SQLDate|6 SQLNumber|6 SQLString|13 ");
}

}  // namespace
}  // namespace zelUtilities
