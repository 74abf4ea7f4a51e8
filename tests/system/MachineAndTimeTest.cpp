// What the library tells of the machine, its time and its programs, which the tests set.
#include <chrono>

#include "automation/Calendar.h"
#include "platform/Clock.h"
#include "platform/Machine.h"
#include "platform/Process.h"
#include "support/Testing.h"
#include "system/mTimeZone.h"
#include "system/zelMisc.h"
#include "system/zelWinAPI.h"

namespace zelUtilities {
namespace {

class MachineAndTime : public testing::Test, public Machine, public Clock, public TimeZone, public Process {
 protected:
  std::uint32_t processId() override { return Machine::system().processId(); }
  String homeFolder() override { return Machine::system().homeFolder(); }
  String computerName(std::int32_t kind) override { return u"name " + decimalText(kind); }
  String userName() override { return u"user"; }
  std::optional<SystemVersion> systemVersion() override { return version; }
  Guid newGuid() override { return guid ? *guid : throw Error(ErrorNumber::InternalError); }
  Date now() override { return {local}; }
  Date universalNow() override { return {local - 1 + 0.001 / 86400}; }
  std::uint32_t information(std::optional<int> year, TimeZoneRecord& record) override {
    askedYear = year.value_or(0);
    record = zone;
    return state;
  }
  void runToEnd(StringView commandLine) override {
    started += toUtf8(commandLine) + "|";
    if (commandLine == u"b.exe") throw Error(ErrorNumber::FileNotFound);
  }
  static std::string on(const Variant& date = Variant::missing()) {
    return spelled({mTimeZone::TZGetLocalName(date), mTimeZone::TZGetLocalOffset(date)});
  }

  std::optional<SystemVersion> version;
  std::optional<Guid> guid;
  double local = 0;
  // New York: the first Sunday of November, the second of March, both at two o'clock.
  TimeZoneRecord zone{300, u"Eastern", {0, 11, 0, 1, 2}, 0, String(u"Summer\0\0", 8), {0, 3, 0, 2, 2}, -60};
  std::uint32_t state = TimeZoneState::Daylight;
  int askedYear = -1;
  std::string started;
  Replaced<Machine> machineInForce{*this};
  Replaced<Clock> clockInForce{*this};
  Replaced<TimeZone> zoneInForce{*this};
  Replaced<Process> processInForce{*this};
  Reports reports{""};
};

TEST_F(MachineAndTime, ThePresentIsAsTheSystemSaysAndADateAsTheRulesSay) {
  EXPECT_EQ(on(), "Summer|-4");
  EXPECT_EQ(askedYear, 0);
  state = TimeZoneState::Standard;
  EXPECT_EQ(on(), "Eastern|-5");
  for (const StringView summer : {u"3/11/2007 2:00:00", u"11/4/2007 1:59:59", u"7/4/2010"})
    EXPECT_EQ(on(summer), "Summer|-4");
  EXPECT_EQ(askedYear, 2010);
  for (const StringView winter : {u"1/15/2007", u"3/11/2007 1:59:59", u"11/4/2007 2:00:00"})
    EXPECT_EQ(on(winter), "Eastern|-5");
  std::swap(zone.standardDate, zone.daylightDate);  // the south: always standard time, on purpose
  zone.standardBias = 30;
  for (const StringView date : {u"1/4/2010", u"7/4/2010"}) EXPECT_EQ(on(date), "Eastern|-5.5");
  zone.daylightDate = {};  // nothing is looked for in an empty rule
  EXPECT_EQ(on(u"7/4/2010"), "Eastern|-5.5");
}

TEST_F(MachineAndTime, ARuleNamesTheNthWeekdayOfAMonthTheLastOneOrADateOfItsOwn) {
  const std::tuple<TimeRecord, StringView, StringView> rules[] = {
      {{0, 10, 0, 5, 3}, u"5/1/2006", u"10/29/2006 3:00:00"},  // five Sundays
      {{0, 10, 0, 5, 3}, u"12/31/2007", u"10/28/2007 3:00:00"},
      {{0, 2, 6, 5, 0}, u"1/1/2020", u"2/29/2020"},
      {{0, 3, 0, 1, 0}, u"1/1/2026", u"3/1/2026"},  // the month begins with one
      {{0, 3, 0, 2, 2, 30, 15}, u"1/1/2007", u"3/11/2007 2:30:15"},
      {{2010, 10, 3, 9, 1}, u"1/1/1999", u"10/9/2010 1:00:00"}};
  for (const auto& [rule, date, expected] : rules)
    EXPECT_EQ(mTimeZone::TimeZoneDate(rule, {toDate(date)}).days, toDate(expected));
  EXPECT_EQ(reports.taken(), "");
  for (const TimeRecord& rule :
       {TimeRecord{0, 13, 0, 1}, {0, 3, 7, 1}, {0, 3, 0, 0}, {0, 3, 0, 6}, {2007, 2, 0, 29}}) {
    EXPECT_EQ(mTimeZone::TimeZoneDate(rule, {toDate(u"1/1/2007")}).days, 0);
    EXPECT_EQ(reports.taken(), "mTimeZone.TimeZoneDate|5 ");
  }
}

TEST_F(MachineAndTime, FailuresAreLoggedButASystemWithoutAnAnswerIsRaised) {
  EXPECT_EQ(spelled({mTimeZone::TZGetLocalName(u"no date"), mTimeZone::TZGetLocalOffset(Variant::null())}),
            "|0");
  mTimeZone::TZGetLocalOffset(Variant::date(1e9));
  EXPECT_EQ(reports.taken(),
            "mTimeZone.TZGetLocalName|13 mTimeZone.TZGetLocalOffset|94 mTimeZone.LoadTimeZoneInfo|6 ");
  state = TimeZoneState::Invalid;
  EXPECT_EQ(raisedError([] { mTimeZone::TZGetLocalName(); }),
            "-2147220991|mTimeZone.TZGetLocalName::mTimeZone.LoadTimeZoneInfo|"
            "GetTimeZoneInformation returned an invalid response");
  EXPECT_EQ(reports.taken(), "");
  EXPECT_EQ(zel_GetEmailMessageDate(), u"");  // no half of it
  EXPECT_EQ(reports.taken(), "zelMisc.zel_GetEmailMessageDate|-2147220991 ");
}

TEST_F(MachineAndTime, VersionsHaveTheNamesOfKnownSystemsAndTheServicePack) {
  EXPECT_EQ(toUtf8(zel_WinAPIGetWinVersion()), "Unknown Windows Version");
  const auto named = [this](std::uint32_t platform, std::uint32_t major, std::uint32_t minor) {
    version = SystemVersion{platform, major, minor, 0x12340A28, u"without a NUL"};
    return toUtf8(zel_WinAPIGetWinVersion().substr(0, zel_WinAPIGetWinVersion().find(u'('))) + "|";
  };
  EXPECT_EQ(named(0, 1, 30) + named(1, 4, 0) + named(1, 4, 10) + named(1, 4, 90) + named(1, 4, 1),
            "Win32s |Windows 95 |Windows 98 |Windows ME | |");
  EXPECT_EQ(named(2, 4, 7) + named(2, 5, 0) + named(2, 5, 1) + named(2, 5, 2) + named(2, 6, 1),
            "Windows NT |Windows 2000 |Windows XP |Windows Server 2003 | |");
  EXPECT_EQ(named(SystemVersion::otherPlatform, 5, 1), " |");
  EXPECT_EQ(zel_WinAPIGetWinVersion(), u" (version 5.1 build 2600)");
  version->servicePack = String(u"Service Pack 2\0\0", 16);
  EXPECT_EQ(toUtf8(zel_WinAPIGetWinVersion()), " (version 5.1 build 2600) (Service Pack 2)");
}

TEST_F(MachineAndTime, TimesAreWrittenInOneFormToTheMillisecond) {
  local = dateOf(dayNumberOf(2007, 3, 7), 0) + 50709042 / 86400000.0;
  EXPECT_EQ(zel_WinAPIGetLocalTime(), u"03/07/2007 14:05:09.042");
  EXPECT_EQ(zel_WinAPIGetSystemTime(), u"03/06/2007 14:05:09.043");
  local += 0.9 / 86400;                                               // no part of a second is rounded up
  EXPECT_EQ(zel_GetEmailMessageID(), u"<20070307140509943@name 3>");  // milliseconds of the other clock
  state = TimeZoneState::Unknown;
  // Looks wrong, and is meant: no plus sign, and fractions of hours are not turned into minutes.
  for (const auto& [minutes, expected] :
       {std::pair{300, u"-0500"}, {-60, u"0100"}, {0, u"0000"}, {210, u"-0350"}, {-765, u"1275"}}) {
    zone.bias = minutes;
    EXPECT_EQ(zel_GetEmailMessageDate(), String(u"Wed, 7 Mar 2007 14:05:09 ") + expected);
  }
  local = dateOf(dayNumberOf(2026, 12, 31), 0) + 86399999 / 86400000.0;
  EXPECT_EQ(zel_WinAPIGetLocalTime(), u"12/31/2026 23:59:59.999");
}

TEST_F(MachineAndTime, NamesAreThoseOfTheKindAskedForAndIdentifiersInCapitals) {
  EXPECT_EQ(spelled({zel_WinAPIGetUserID(), zel_WinAPIComputerName(), zel_WinAPIComputerNameEX(),
                     zel_WinAPIComputerNameEX(ComputerNamePhysicalDnsFullyQualified)}),
            "user|name 0|name 0|name 7");
  EXPECT_EQ(zel_WinAPIGetGUID(), u"");
  EXPECT_EQ(reports.taken(), "zelWinAPI.zel_WinAPIGetGUID|51 ");
  guid = Guid{0x1A, 0xB, 0xC0DE, {0, 1, 0xAB, 3, 4, 5, 6, 0xFF}};
  EXPECT_EQ(zel_WinAPIGetGUID(), u"0000001A-000B-C0DE-0001-AB03040506FF");
}

TEST_F(MachineAndTime, AProgramThatDoesNotStartIsFalseAndLogged) {
  EXPECT_TRUE(zel_ShellAndWait(u"  a.exe \"b c "));
  EXPECT_FALSE(zel_ShellAndWait(u"b.exe"));
  EXPECT_EQ(reports.taken(), "zelMisc.zel_ShellAndWait|53 ");
  for (const StringView line : {StringView(), StringView(u"  "), StringView(u"a.exe\0b", 7)}) {
    EXPECT_FALSE(zel_ShellAndWait(line));
    EXPECT_EQ(reports.taken(), "zelMisc.zel_ShellAndWait|5 ");
  }
  EXPECT_EQ(started, "a.exe \"b c |b.exe|");
}

TEST_F(MachineAndTime, SleepsAsLongAsAskedAndNotForANegativeTime) {
  const auto start = std::chrono::steady_clock::now();
  zel_Sleep(-2147483647 - 1);
  zel_Sleep(20);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(19));
}

}  // namespace
}  // namespace zelUtilities
