// The zone's name and offset beside the C library's, zone by zone.
#include "system/mTimeZone.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <sstream>

#include "automation/Calendar.h"

namespace zelUtilities {
namespace {

// Puts a zone in force for as long as this lives; else the tests run in UTC.
class LocalZone {
 public:
  explicit LocalZone(const char* name) { set(name); }
  ~LocalZone() { set("UTC"); }
  LocalZone(const LocalZone&) = delete;
  LocalZone& operator=(const LocalZone&) = delete;

 private:
  static void set(const char* name) {
    setenv("TZ", name, 1);
    tzset();
  }
};

tm localTime(std::time_t moment) {
  tm local{};
  localtime_r(&moment, &local);
  return local;
}

Variant dateOn(const tm& clock) {
  return Variant::date(dateOf(dayNumberOf(clock.tm_year + 1900, clock.tm_mon + 1, clock.tm_mday),
                              clock.tm_hour * 3600 + clock.tm_min * 60 + clock.tm_sec));
}

std::string described(double hours, const std::string& name) { return name + " " + std::to_string(hours); }

std::string given(const Variant& date = Variant::missing()) {
  return described(mTimeZone::TZGetLocalOffset(date), toUtf8(mTimeZone::TZGetLocalName(date)));
}

std::string expected(const tm& clock) {
  return described(static_cast<double>(clock.tm_gmtoff) / 3600, clock.tm_zone);
}

// What the clocks show in the year, hour by hour; of an hour that they show twice the first counts.
void checkYear(int year, bool southern) {
  tm start{};
  start.tm_year = year - 1900;
  start.tm_mday = 1;
  start.tm_isdst = -1;
  double latest = 0;
  for (std::time_t moment = mktime(&start); localTime(moment).tm_year == year - 1900; moment += 3600) {
    const tm clock = localTime(moment);
    const Variant date = dateOn(clock);
    if (date.dateValue() <= latest || (southern && clock.tm_isdst > 0)) continue;
    latest = date.dateValue();
    ASSERT_EQ(given(date), expected(clock))
        << clock.tm_mon + 1 << "/" << clock.tm_mday << " " << clock.tm_hour;
  }
}

// Both now and on every hour of the year (0: the present one), in each zone of the list.
void checkZones(const char* names, int year = 0, bool southern = false) {
  std::istringstream zones(names);
  for (std::string zone; zones >> zone;) {
    SCOPED_TRACE(zone + " " + std::to_string(year));
    const LocalZone inForce(zone.c_str());
    const tm present = localTime(std::time(nullptr));
    checkYear(year != 0 ? year : present.tm_year + 1900, southern);
    EXPECT_EQ(given(), expected(present));
  }
}

TEST(TimeZoneLinux, AgreesWithTheCLibraryForEveryHourOfTheYear) {
  checkZones(
      "UTC Europe/Berlin Europe/London Europe/Dublin Europe/Lisbon Europe/Athens Europe/Moscow "
      "Europe/Chisinau "
      "Europe/Istanbul Atlantic/Azores Atlantic/Reykjavik America/New_York America/Chicago America/Denver "
      "America/Phoenix America/Los_Angeles America/Anchorage America/St_Johns America/Halifax America/Havana "
      "America/Nuuk America/Sao_Paulo America/Caracas America/Mexico_City Pacific/Honolulu "
      "Pacific/Kiritimati "
      "Pacific/Marquesas Asia/Jerusalem Asia/Gaza Asia/Beirut Asia/Tehran Asia/Kolkata Asia/Kathmandu "
      "Asia/Tokyo "
      "Africa/Cairo Africa/Casablanca Africa/Nairobi Antarctica/Troll EST5EDT,M3.2.0,M11.1.0 <-0330>3:30 "
      "No/Where");
  checkZones("America/New_York", 2006);
  checkZones("Europe/London", 1941);
  checkZones("Europe/Moscow", 2011);
  checkZones("Africa/Casablanca", 2030);
}

// Looks wrong on a summer's day, and is meant: daylight time that spans the new year counts only for the
// present moment.
TEST(TimeZoneLinux, TheSouthIsInStandardTimeOnEveryDate) {
  checkZones(
      "Australia/Sydney Australia/Lord_Howe Australia/Adelaide Pacific/Auckland Pacific/Chatham "
      "Pacific/Norfolk "
      "America/Santiago America/Asuncion",
      0, true);
  checkZones("America/Sao_Paulo", 2019, true);
  const LocalZone sydney("Australia/Sydney");
  EXPECT_EQ(given(Variant::date(39096)), described(10, "AEST"));  // 2007-01-14
}

}  // namespace
}  // namespace zelUtilities
