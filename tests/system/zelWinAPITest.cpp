#include "system/zelWinAPI.h"

#include <gtest/gtest.h>

#include <chrono>

#include "automation/Calendar.h"
#include "automation/Error.h"
#include "platform/Clock.h"
#include "platform/Machine.h"
#include "support/Reports.h"

namespace zelUtilities {
namespace {

// A machine and a clock whose answers the test sets.
class ZelWinAPI : public testing::Test, public Machine, public Clock {
 protected:
  std::uint32_t processId() override { return Machine::system().processId(); }
  String homeFolder() override { return Machine::system().homeFolder(); }
  String computerName(std::int32_t kind) override { return u"name " + decimalText(kind); }
  String userName() override { return u"user"; }
  std::optional<SystemVersion> systemVersion() override { return version; }
  Guid newGuid() override { return guid ? *guid : throw Error(ErrorNumber::InternalError); }
  Date now() override { return {local}; }
  Date universalNow() override { return {local - 1}; }

  std::optional<SystemVersion> version;
  std::optional<Guid> guid;
  double local = 0;
  Replaced<Machine> machineInForce{*this};
  Replaced<Clock> clockInForce{*this};
};

TEST_F(ZelWinAPI, VersionsHaveTheNamesOfKnownSystemsAndTheServicePack) {
  EXPECT_EQ(toUtf8(zel_WinAPIGetWinVersion()), "Unknown Windows Version");
  const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, const char*> versions[] = {
      {0, 1, 30, "Win32s (version 1.30"},
      {1, 4, 0, "Windows 95 (version 4.0"},
      {1, 4, 10, "Windows 98 (version 4.10"},
      {1, 4, 90, "Windows ME (version 4.90"},
      {1, 4, 1, " (version 4.1"},
      {2, 4, 7, "Windows NT (version 4.7"},
      {2, 5, 0, "Windows 2000 (version 5.0"},
      {2, 5, 1, "Windows XP (version 5.1"},
      {2, 5, 2, "Windows Server 2003 (version 5.2"},
      {2, 6, 1, " (version 6.1"},
      {SystemVersion::otherPlatform, 5, 1, " (version 5.1"}};
  for (const auto& [platform, major, minor, expected] : versions) {
    version = SystemVersion{platform, major, minor, 0x12340A28, u"without a NUL"};
    EXPECT_EQ(toUtf8(zel_WinAPIGetWinVersion()), std::string(expected) + " build 2600)");
  }
  version->servicePack = String(u"Service Pack 2\0\0", 16);
  EXPECT_EQ(toUtf8(zel_WinAPIGetWinVersion()), " (version 5.1 build 2600) (Service Pack 2)");
}

TEST_F(ZelWinAPI, TimesAreWrittenInOneFormToTheMillisecond) {
  local = dateOf(dayNumberOf(2007, 3, 7), 0) + 50709042 / 86400000.0;
  EXPECT_EQ(toUtf8(zel_WinAPIGetLocalTime()), "03/07/2007 14:05:09.042");
  EXPECT_EQ(toUtf8(zel_WinAPIGetSystemTime()), "03/06/2007 14:05:09.042");
  local = dateOf(dayNumberOf(2026, 12, 31), 0) + 86399999 / 86400000.0;
  EXPECT_EQ(toUtf8(zel_WinAPIGetLocalTime()), "12/31/2026 23:59:59.999");
}

TEST_F(ZelWinAPI, IdentifiersAreCapitalHexadecimalDigitsInFiveGroups) {
  Reports reports{"zelWinAPI."};
  EXPECT_EQ(zel_WinAPIGetGUID(), u"");
  EXPECT_EQ(reports.taken(), "zel_WinAPIGetGUID|51 ");
  guid = Guid{0x1A, 0xB, 0xC0DE, {0, 1, 0xAB, 3, 4, 5, 6, 0xFF}};
  EXPECT_EQ(toUtf8(zel_WinAPIGetGUID()), "0000001A-000B-C0DE-0001-AB03040506FF");
  EXPECT_EQ(reports.taken(), "");
}

TEST_F(ZelWinAPI, NamesAreThoseOfTheKindAskedFor) {
  EXPECT_EQ(zel_WinAPIComputerName() + zel_WinAPIComputerNameEX() + zel_WinAPIGetUserID(),
            u"name 0name 0user");
  EXPECT_EQ(zel_WinAPIComputerNameEX(ComputerNamePhysicalDnsFullyQualified), u"name 7");
}

TEST_F(ZelWinAPI, SleepsAsLongAsAskedAndNotForANegativeTime) {
  const auto start = std::chrono::steady_clock::now();
  zel_Sleep(-2147483647 - 1);
  zel_Sleep(20);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(19));
}

}  // namespace
}  // namespace zelUtilities
