// The zone's name and offset beside the C library's, zone by zone.
#include "system/mTimeZone.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <sstream>

#include "automation/Calendar.h"

namespace zelUtilities {
namespace {

tm localTime(std::time_t moment) {
  tm local{};
  localtime_r(&moment, &local);
  return local;
}

std::string described(double hours, const std::string& name) { return name + " " + std::to_string(hours); }

std::string given(const Variant& date = Variant::missing()) {
  return described(mTimeZone::TZGetLocalOffset(date), toUtf8(mTimeZone::TZGetLocalName(date)));
}

std::string expected(const tm& clock) {
  return described(static_cast<double>(clock.tm_gmtoff) / 3600, clock.tm_zone);
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
      const tm present = localTime(std::time(nullptr));
      EXPECT_EQ(given(), expected(present)) << zone;
      tm start{};
      start.tm_year = year != 0 ? year - 1900 : present.tm_year;
      start.tm_mday = 1;
      start.tm_isdst = -1;
      double latest = 0;
      for (std::time_t moment = mktime(&start);; moment += 3600) {
        const tm clock = localTime(moment);
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
  EXPECT_EQ(given(u"1/14/2007"), described(10, "AEST"));
}

}  // namespace
}  // namespace zelUtilities
