#include "system/zelWinAPI.h"

#include <gmock/gmock.h>

#include <chrono>

#include "automation/Calendar.h"
#include "automation/Error.h"
#include "foundation/ErrorWatch.h"
#include "platform/Clock.h"
#include "platform/Machine.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

// A machine and a clock whose answers the test sets.
class ZelWinAPI : public testing::Test, public Machine, public Clock {
 protected:
  std::uint32_t processId() override { return Machine::system().processId(); }
  String homeFolder() override { return Machine::system().homeFolder(); }
  String computerName(std::int32_t kind) override { return u"name " + decimalText(kind); }
  String userName() override { return u"user"; }
  std::optional<SystemVersion> systemVersion() override { return version; }
  Guid newGuid() override {
    if (!guid) throw Error(ErrorNumber::InternalError);
    return *guid;
  }
  Date now() override { return {local}; }
  Date universalNow() override { return {local - 1}; }

  std::string versionOf(std::uint32_t platform, std::uint32_t major, std::uint32_t minor,
                        const String& servicePack = u"") {
    version = SystemVersion{platform, major, minor, 0x12340A28, servicePack};
    return toUtf8(zel_WinAPIGetWinVersion());
  }

  std::optional<SystemVersion> version;
  std::optional<Guid> guid;
  double local = 0;
  Replaced<Machine> machineInForce{*this};
  Replaced<Clock> clockInForce{*this};
  std::vector<std::string> reports;
  ErrorWatch watch{[this](const ErrorReport& report) {
    reports.push_back(toUtf8(report.source) + "|" + std::to_string(report.number));
  }};
};

TEST_F(ZelWinAPI, VersionsHaveTheNamesOfKnownSystemsAndTheServicePack) {
  EXPECT_EQ(toUtf8(zel_WinAPIGetWinVersion()), "Unknown Windows Version");
  EXPECT_EQ(versionOf(0, 1, 30), "Win32s (version 1.30 build 2600)");
  EXPECT_EQ(versionOf(1, 4, 0), "Windows 95 (version 4.0 build 2600)");
  EXPECT_EQ(versionOf(1, 4, 10), "Windows 98 (version 4.10 build 2600)");
  EXPECT_EQ(versionOf(1, 4, 90), "Windows ME (version 4.90 build 2600)");
  EXPECT_EQ(versionOf(1, 4, 1), " (version 4.1 build 2600)");
  EXPECT_EQ(versionOf(2, 4, 7), "Windows NT (version 4.7 build 2600)");
  EXPECT_EQ(versionOf(2, 5, 0), "Windows 2000 (version 5.0 build 2600)");
  EXPECT_EQ(versionOf(2, 5, 1, String(u"Service Pack 2\0\0", 16)),
            "Windows XP (version 5.1 build 2600) (Service Pack 2)");
  EXPECT_EQ(versionOf(2, 5, 2, u"without a NUL"), "Windows Server 2003 (version 5.2 build 2600)");
  EXPECT_EQ(versionOf(2, 6, 1), " (version 6.1 build 2600)");
  EXPECT_EQ(versionOf(SystemVersion::otherPlatform, 5, 1), " (version 5.1 build 2600)");
}

TEST_F(ZelWinAPI, TimesAreWrittenInOneFormToTheMillisecond) {
  local = dateOf(dayNumberOf(2007, 3, 7), 0) + 50709042 / 86400000.0;
  EXPECT_EQ(toUtf8(zel_WinAPIGetLocalTime()), "03/07/2007 14:05:09.042");
  EXPECT_EQ(toUtf8(zel_WinAPIGetSystemTime()), "03/06/2007 14:05:09.042");
  local = dateOf(dayNumberOf(2026, 12, 31), 0) + 86399999 / 86400000.0;
  EXPECT_EQ(toUtf8(zel_WinAPIGetLocalTime()), "12/31/2026 23:59:59.999");
}

TEST_F(ZelWinAPI, IdentifiersAreCapitalHexadecimalDigitsInFiveGroups) {
  guid = Guid{0x1A, 0xB, 0xC0DE, {0, 1, 0xAB, 3, 4, 5, 6, 0xFF}};
  EXPECT_EQ(toUtf8(zel_WinAPIGetGUID()), "0000001A-000B-C0DE-0001-AB03040506FF");
  EXPECT_TRUE(reports.empty());
  guid.reset();
  EXPECT_EQ(zel_WinAPIGetGUID(), u"");
  EXPECT_THAT(reports, ElementsAre("zelWinAPI.zel_WinAPIGetGUID|51"));
}

TEST_F(ZelWinAPI, NamesAreThoseOfTheKindAskedFor) {
  EXPECT_EQ(zel_WinAPIComputerName(), u"name 0");
  EXPECT_EQ(zel_WinAPIComputerNameEX(), u"name 0");
  EXPECT_EQ(zel_WinAPIComputerNameEX(ComputerNamePhysicalDnsFullyQualified), u"name 7");
  EXPECT_EQ(zel_WinAPIGetUserID(), u"user");
}

TEST_F(ZelWinAPI, SleepsAsLongAsAskedAndNotForANegativeTime) {
  const auto start = std::chrono::steady_clock::now();
  zel_Sleep(-2147483647 - 1);
  zel_Sleep(20);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(19));
}

}  // namespace
}  // namespace zelUtilities
