// Programs as they are started on Linux, and the zone's name and offset beside the C library's, zone by zone.
#include <cstdlib>
#include <ctime>
#include <sstream>

#include "automation/Calendar.h"
#include "platform/Files.h"
#include "support/Testing.h"
#include "system/mTimeZone.h"
#include "system/zelMisc.h"

namespace zelUtilities {
namespace {

class ShellAndWaitLinux : public testing::Test {
 protected:
  ScratchFolder folder;
};

TEST_F(ShellAndWaitLinux, ProgramsGetTheirArgumentsAsTheLineQuotesThem) {
  const std::pair<StringView, const char*> cases[] = {
      {u"\"\" x\"y z\"x \t a", "<><xy zx><a>"},
      {u"a\\\\b \\\"c d\\\\\\\"e", "<a\\\\b><\"c><d\\\"e>"},  // backslashes count before marks alone
      {u"\"a\\\\\" \"b\"\"c\" d\"\"\"", "<a\\><b\"c><d\">"},
      {u"$HOME * `id` ;x >y", "<$HOME><*><`id`><;x><>y>"},  // no shell reads them
      {u"\u00E9\u4E2D \"open end ", "<\u00E9\u4E2D><open end >"}};
  for (const auto& [arguments, expected] : cases) {
    EXPECT_TRUE(zel_ShellAndWait(u"sh -c \"printf '<%s>' \\\"$@\\\" >said\" sh " + String(arguments)));
    EXPECT_EQ(files().readWhole(u"said"), expected);
  }
}

TEST_F(ShellAndWaitLinux, NamesMayHoldBlanksQuotedOrNotAndBeWindowsPaths) {
  files().createFolder(u"My Programs");
  for (const StringView line :
       {u"cp /bin/sh \"My Programs/my sh\"", u"\"My Programs/my sh\" -c \"echo 1 >>count; exit 3\"",
        u"My Programs\\MY SH -c \"echo 2 >>count; kill -9 $$\"",
        u"Z:\\bin\\sh -c \"sleep 0.1; echo 3 >>count\""})
    EXPECT_TRUE(zel_ShellAndWait(line));
  EXPECT_EQ(files().readWhole(u"count"), "1\n2\n3\n");
}

TEST_F(ShellAndWaitLinux, WhatIsNoProgramDoesNotStart) {
  Reports reports{"zelMisc.zel_"};
  files().replaceWhole(u"text", "echo 1");
  const String overlong = u"none" + String(100000, u' ') + u"x";
  for (const StringView line :
       {StringView(u"no-such-program -x"), StringView(u"\"sh -c true\""), StringView(u"/"),
        StringView(u"./text"), StringView(u"\\\\host\\sh"), StringView(overlong)})
    EXPECT_FALSE(zel_ShellAndWait(line)) << toUtf8(line);
  EXPECT_EQ(
      reports.taken(),
      "ShellAndWait|53 ShellAndWait|53 ShellAndWait|75 ShellAndWait|75 ShellAndWait|53 ShellAndWait|53 ");
}

// The zone's name and its hours east of Greenwich.
std::string given(const Variant& date = Variant::missing()) {
  return spelled({mTimeZone::TZGetLocalName(date), mTimeZone::TZGetLocalOffset(date)});
}
std::string expected(const tm& clock) {
  return spelled({fromUtf8(clock.tm_zone), static_cast<double>(clock.tm_gmtoff) / 3600});
}

class TimeZoneLinux : public testing::Test {
 protected:
  ~TimeZoneLinux() override { enter("UTC"); }  // where the other tests run
  static void enter(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }
  // Both now and on every hour of the year (0: the present one), in each zone of the list; of an hour that
  // the clocks show twice the first counts.
  static void check(const char* names, int year = 0, bool southern = false) {
    std::istringstream zones(names);
    for (std::string zone; zones >> zone;) {
      enter(zone.c_str());
      const std::time_t now = std::time(nullptr);
      const tm present = *std::localtime(&now);
      EXPECT_EQ(given(), expected(present)) << zone;
      tm start{};
      start.tm_year = year != 0 ? year - 1900 : present.tm_year;
      start.tm_mday = 1;
      start.tm_isdst = -1;
      double latest = 0;
      for (std::time_t moment = mktime(&start);; moment += 3600) {
        const tm clock = *std::localtime(&moment);
        if (clock.tm_year != start.tm_year) break;
        const double date = dateOf(dayNumberOf(clock.tm_year + 1900, clock.tm_mon + 1, clock.tm_mday),
                                   clock.tm_hour * 3600 + clock.tm_min * 60 + clock.tm_sec);
        if (date <= latest || (southern && clock.tm_isdst > 0)) continue;
        latest = date;
        ASSERT_EQ(given(Variant::date(date)), expected(clock)) << zone << " " << std::asctime(&clock);
      }
    }
  }
};

TEST_F(TimeZoneLinux, AgreesWithTheCLibraryForEveryHourOfTheYear) {
  check(
      "UTC Europe/Berlin Europe/London Europe/Dublin Europe/Chisinau Atlantic/Azores America/New_York "
      "America/Phoenix America/St_Johns America/Havana America/Nuuk America/Sao_Paulo Pacific/Kiritimati "
      "Pacific/Marquesas Asia/Jerusalem Asia/Gaza Asia/Beirut Asia/Tehran Asia/Kathmandu Africa/Cairo "
      "America/Los_Angeles Asia/Kolkata Asia/Tokyo Europe/Istanbul Pacific/Honolulu "
      "Africa/Casablanca Antarctica/Troll EST5EDT,M3.2.0,M11.1.0 <-0330>3:30 No/Where");
  check("America/New_York", 2006);
  check("Europe/London", 1941);
  check("Europe/Moscow", 2011);
  check("Africa/Casablanca", 2030);
}

// Looks wrong on a summer's day, and is meant: daylight time that spans the new year counts only for the
// present moment.
TEST_F(TimeZoneLinux, TheSouthIsInStandardTimeOnEveryDate) {
  check("Australia/Sydney Australia/Lord_Howe Pacific/Auckland Pacific/Chatham America/Santiago", 0, true);
  check("America/Sao_Paulo", 2019, true);
  enter("Australia/Sydney");
  EXPECT_EQ(given(u"1/14/2007"), "AEST|10");
}

}  // namespace
}  // namespace zelUtilities
