#include "foundation/zelHandler.h"

#include <gmock/gmock.h>

#include <thread>

#include "automation/Error.h"
#include "foundation/LogFixture.h"
#include "foundation/bas_Main.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Machine.h"

namespace zelUtilities {
namespace {

using testing::HasSubstr;

struct StoppedClock : Clock {
  Date now() override { return {45360.5874884259}; }  // 2024-03-09 14:05:59
};

// The logger that comes with the library, writing into the home of the test run.
class DefaultLogger : public LogTest {
 protected:
  DefaultLogger() {
    registerObject(u"zelLog.zelHandler", {});  // the fixture's
    for (const StringView name : {u"errors.log", u"trace.log"})
      if (files().fileExists(path(name))) files().remove(path(name));
  }
  static String path(StringView name) { return machine().homeFolder() + u"/" + String(name); }

  StoppedClock clock;
  Replaced<Clock> clockInForce{clock};
};

TEST_F(DefaultLogger, AReportIsOneLineOfTabbedFields) {
  mLog::ErrorLog(u"zelNodeList.Create", Error(5, u"S", u"caf\u00E9\tC:\\x\r\ny"), u"more");
  mLog::ErrorLog(u"b", Error(-2147221503, u"", StringView(u"\1\0", 2)));
  EXPECT_EQ(files().readWhole(path(u"errors.log")),
            "2024-03-09 "
            "14:05:59\tzelUtilities\t1.2.0\tzelNodeList.Create\t5\tS\tcaf\xC3\xA9\\tC:\\\\x\\r\\ny\tmore\n"
            "2024-03-09 14:05:59\tzelUtilities\t1.2.0\tb\t-2147221503\t\t\\x01\\x00\t\n");
  EXPECT_FALSE(files().fileExists(path(u"trace.log")));
}

TEST_F(DefaultLogger, TraceLinesGoToAFileOfTheirOwn) {
  mLog::TraceLog(u"a", u"t", u"m", true);
  EXPECT_EQ(files().readWhole(path(u"trace.log")), "\n2024-03-09 14:05:59\tzelUtilities\t1.2.0\ta\tt\tm\n");
  EXPECT_FALSE(files().fileExists(path(u"errors.log")));
}

TEST_F(DefaultLogger, LinesOfSeveralThreadsDoNotMix) {
  constexpr int threads = 4, reports = 100;
  std::vector<std::thread> running;
  for (int i = 0; i < threads; ++i)
    running.emplace_back([] {
      for (int n = 0; n < reports; ++n) mLog::ErrorLog(u"a", Error(5, u"S", String(500, u'd')));
    });
  for (std::thread& thread : running) thread.join();
  const std::string line =
      "2024-03-09 14:05:59\tzelUtilities\t1.2.0\ta\t5\tS\t" + std::string(500, 'd') + "\t\n";
  std::string all;
  for (int i = 0; i < threads * reports; ++i) all += line;
  EXPECT_EQ(files().readWhole(path(u"errors.log")), all);
}

TEST_F(DefaultLogger, WhereItCannotWriteTheOperationGoesOn) {
  files().createFolder(path(u"errors.log"));
  setUser(u"ConDebug", "1");
  EXPECT_NO_THROW(mLog::ErrorLog(u"a", Error(5)));
  EXPECT_THAT(dialogs.boxes,
              testing::ElementsAre(HasSubstr("Source: mLog.AddToErrorLog::"), HasSubstr("Source: a::")));
  files().removeFolder(path(u"errors.log"));
}

}  // namespace
}  // namespace zelUtilities
