// The small services: time and machine.
#include <gtest/gtest.h>

#include <ctime>

#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Machine.h"

namespace zelUtilities {
namespace {

TEST(Clock, TellsLocalAndUniversalTime) {
  // The tests run in UTC. 25569 days lie between the day 0 and 1970.
  const double days = 25569 + static_cast<double>(std::time(nullptr)) / 86400;
  EXPECT_NEAR(now().days, days, 5.0 / 86400);
  EXPECT_NEAR(universalNow().days, days, 5.0 / 86400);
}

TEST(Machine, KnowsItsProcessItsNamesAndItsSystem) {
  EXPECT_NE(machine().processId(), 0U);
  for (const std::int32_t kind : {ComputerNameKind::NetBios, ComputerNameKind::Host, ComputerNameKind::Full})
    EXPECT_NE(machine().computerName(kind), u"");
  for (const std::int32_t kind : {-1, 8}) EXPECT_EQ(machine().computerName(kind), u"");
  EXPECT_NE(machine().userName(), u"");
  EXPECT_NE(machine().systemVersion().value().platform, 0U);
}

TEST(Machine, MakesIdentifiersThatDiffer) {
  const Guid first = machine().newGuid();
  const Guid second = machine().newGuid();
  EXPECT_TRUE(first.data1 != second.data1 || first.data4 != second.data4);
  EXPECT_EQ(first.data3 >> 12, 4);         // random,
  EXPECT_EQ(first.data4[0] & 0xC0, 0x80);  // as the standard marks it
}

TEST(Machine, MakesTheHomeFolderThatTheEnvironmentNames) {
  const String home = machine().homeFolder();
  EXPECT_TRUE(files().folderExists(home));
  EXPECT_EQ(files().fullPath(home), home);
  EXPECT_EQ(home.find_last_of(u"/\\") == home.size() - 1, false);
}

}  // namespace
}  // namespace zelUtilities
