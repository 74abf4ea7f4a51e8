#include "foundation/zelHandler.h"

#include "foundation/LogFixture.h"
#include "platform/Clock.h"
#include "platform/Machine.h"
#include "support/FailingFiles.h"

namespace zelUtilities {
namespace {

using testing::HasSubstr;

// The logger that comes with the library, writing into the home of the test run on 2024-03-09 at 14:05:59.
class DefaultLogger : public LogTest, public Clock {
 protected:
  DefaultLogger() {
    registerObject(u"zelLog.zelHandler", {});  // the fixture's
    for (const StringView name : {u"errors.log", u"trace.log"})
      if (files().fileExists(path(name))) files().remove(path(name));
  }
  Date now() override { return {45360.5874884259}; }
  Date universalNow() override { return now(); }
  static String path(StringView name) { return machine().homeFolder() + u"/" + String(name); }

 private:
  Replaced<Clock> clockInForce_{*this};
};

TEST_F(DefaultLogger, ReportsAndTracesAreLinesOfTabbedFieldsInFilesOfTheirOwn) {
  mLog::ErrorLog(u"zelNodeList.Create", Error(5, u"S", u"caf\u00E9\tC:\\x\r\ny"), u"more");
  mLog::ErrorLog(u"b", Error(-2147221503, u"", StringView(u"\x1F\0\x7F ~", 5)));
  EXPECT_FALSE(files().fileExists(path(u"trace.log")));
  mLog::TraceLog(u"a", u"t", u"m", true);
  EXPECT_EQ(files().readWhole(path(u"errors.log")),
            "2024-03-09 14:05:59\tzelUtilities\t1.2.0\tzelNodeList.Create\t5\tS\t"
            "caf\xC3\xA9\\tC:\\\\x\\r\\ny\tmore\n"
            "2024-03-09 14:05:59\tzelUtilities\t1.2.0\tb\t-2147221503\t\t\\x1F\\x00\\x7F ~\t\n");
  EXPECT_EQ(files().readWhole(path(u"trace.log")), "\n2024-03-09 14:05:59\tzelUtilities\t1.2.0\ta\tt\tm\n");
}

// In one piece, so that the lines of several threads and processes do not mix.
TEST_F(DefaultLogger, ALineIsWrittenInOnePieceAndWhereItCannotBeTheOperationGoesOn) {
  FailingFiles disk("append", ErrorNumber::DiskFull, 1);
  const Replaced<Files> replaced(disk);
  set(u"ConDebug", "1");
  mLog::ErrorLog(u"a", Error(5));
  mLog::ErrorLog(u"b", Error(5));
  EXPECT_THAT(boxes, ElementsAre(HasSubstr("Source: a::"), HasSubstr("Source: mLog.AddToErrorLog::"),
                                 HasSubstr("Source: b::")));
}

}  // namespace
}  // namespace zelUtilities
