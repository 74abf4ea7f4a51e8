#include "foundation/mLog.h"

#include <thread>

#include "foundation/ErrorWatch.h"
#include "foundation/Handled.h"
#include "foundation/LogFixture.h"
#include "support/RaisedError.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

const Error wanted(-2147221503, u"S", u"No such column");

void report(StringView source) { mLog::ErrorLog(source, wanted); }

TEST_F(LogTest, ALoggerIsHandedTheWholeErrorAndTraceLinesMaybeSetApart) {
  mLog::ErrorLog(u"zelNodeList.Create", wanted, String(2000, u'm'));
  mLog::TraceLog(u"zelX.Load", u"load", u"12 lines");
  mLog::TraceLog(u"a", u"", u"m", true);
  EXPECT_THAT(calls,
              ElementsAre("errorMessage|zelUtilities|1.2.0|zelNodeList.Create|-2147221503|S|No such column|" +
                              std::string(2000, 'm'),
                          "TraceMessage|zelUtilities|1.2.0|zelX.Load|load|12 lines",
                          "TraceMessage|SkipLine||||", "TraceMessage|zelUtilities|1.2.0|a||m"));
  EXPECT_TRUE(boxes.empty());
}

TEST_F(LogTest, WhateverAnOperationThrowsIsLoggedAndSwallowed) {
  handled(u"zelX.Op", [] { throw Error(457); });
  handled(u"zelX.Op", [] { throw 1; });
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|zelX.Op|457||This key is already"),
                                 HasSubstr("|zelX.Op|51||Internal error|")));
}

TEST_F(LogTest, WhatIsRaisedAgainChainsTheSourcesAndIsLoggedUnlessItIsAModules) {
  const auto fails = [] { throw Error(9, u"S", u"d"); };
  const auto module = [&] { chained(u"m.Outer", [&] { chained(u"m.Inner", fails); }); };
  EXPECT_EQ(raisedError(module), "9|m.Outer::m.Inner::S|d");
  EXPECT_TRUE(calls.empty());

  const auto inner = [&] { handledAndRaised(u"inner", fails); };
  EXPECT_EQ(raisedError([&] { handledAndRaised(u"outer", inner); }), "9|outer::inner::S|d");
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|inner|9|S|d|"), HasSubstr("|outer|9|inner::S|d|")));
  setUser(u"ConDebug", "2");
  mLog::resetThreadState();
  EXPECT_EQ(raisedError(inner), "nothing");
}

TEST_F(LogTest, NothingIsRaisedAgainOutOfAnObjectsEnd) {
  const auto raised = [](StringView source, StringView own) {
    return raisedError([&] { mLog::ErrorLog(source, Error(5, own, u"d"), {}, true); });
  };
  EXPECT_EQ(raised(u"zelX.Terminate", u""), "5|zelX.Terminate|d");
  EXPECT_EQ(raised(u"zelX.Class_Terminate", u"S"), "nothing");
  EXPECT_EQ(raised(u"outer", u"zelX.Class_Terminate"), "nothing");
  EXPECT_THAT(calls, SizeIs(3));
}

TEST_F(LogTest, DebugModeShowsTheErrorInABoxWithMoreInformationCut) {
  setUser(u"ConDebug", "1");
  mLog::ErrorLog(u"zelX.Find", Error(-2147221503, u"zelX.Check", String(5000, u'd')), String(750, u'm'));
  mLog::ErrorLog(u"a", Error(5, u"", u"d"), String(751, u'm'));
  mLog::ErrorLog(u"a", Error(5, u"", u"d"));
  const std::string title = "Debug Mode Error Handler (zelUtilities)|";
  const std::string information = "\r\n\r\nMore Info: " + std::string(750, 'm');
  const std::string small = title + "Error:  5\r\nSource: a::.\r\nDescription: d";
  EXPECT_THAT(boxes,
              ElementsAre(title + "Error:  80040001\r\nSource: zelX.Find::zelX.Check.\r\nDescription: " +
                              std::string(5000, 'd') + information,
                          small + information + " ...more... ", small));
}

TEST_F(LogTest, TheModeOfAReportDecidesAboutItsBox) {
  for (const std::int32_t mode : {1, 0, -1}) mLog::AddToErrorLog(u"a", 5, u"", u"d", u"", mode);
  EXPECT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(calls, SizeIs(3));
}

TEST_F(LogTest, ASettingIsTheUsersElseTheMachines) {
  const char* const none = nullptr;
  const struct {
    const char *user, *machine;
    std::int32_t value;
    std::size_t reports;
  } rows[] = {{none, none, 0, 0}, {"1", "2", 1, 0}, {none, "2", 2, 0},
              {"-99", "2", 2, 0}, {"0", "2", 0, 0}, {"-99", none, 0, 0},
              {"yes", "2", 0, 1}, {none, "", 0, 1}, {"3000000000", none, 0, 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    memory = {};
    calls.clear();
    mLog::resetThreadState();
    if (row.user) setUser(u"ConTrack", row.user);
    if (row.machine) setMachine(u"ConTrack", row.machine);
    mLog::InitConditional();
    EXPECT_EQ(mLog::threadState().ConTrack, row.value);
    EXPECT_THAT(calls, SizeIs(row.reports));
  }
}

TEST_F(LogTest, SettingsAreReadOncePerThreadAndAFailureReportedOnce) {
  setUser(u"ConDebug", "yes");
  setMachine(u"ConTrace", "1");
  setUser(u"ConTrack", "7");
  report(u"first");
  setMachine(u"ConTrace", "2");
  report(u"second");
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|mLog.InitConditional|13|"), HasSubstr("|first|"),
                                 HasSubstr("|second|")));
  EXPECT_EQ(mLog::threadState().ConTrace, 1);
  EXPECT_EQ(mLog::threadState().ConTrack, 7);
  std::thread([] {
    mLog::InitConditional();
    EXPECT_EQ(mLog::threadState().ConTrace, 2);
  }).join();
}

TEST_F(LogTest, TheMachineStoreAloneNamesTheLoggerAndWithoutOneThereAreBoxesYet) {
  setUser(u"ConDebug", "1");
  setUser(u"ErrorLogger", "Acme.Logger");
  report(u"a");
  setMachine(u"ErrorLogger", "Acme.Logger");
  report(u"b");
  mLog::TraceLog(u"b", u"t", u"m");
  record(u"Acme.Logger");
  report(u"c");
  registerObject(u"Acme.Logger", {});
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|a|"), HasSubstr("|c|")));
  EXPECT_THAT(boxes, SizeIs(3));
}

TEST_F(LogTest, ALoggerThatFailsIsShownOnceInDebugModeAndIsNotReentered) {
  inLogger = [] {
    report(u"within");
    throw 1;
  };
  report(u"a");
  mLog::TraceLog(u"b", u"t", u"m");
  EXPECT_TRUE(boxes.empty());
  inLogger = [] { throw 1; };
  setUser(u"ConDebug", "1");
  mLog::resetThreadState();
  report(u"c");
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|a|"), HasSubstr("|b|"), HasSubstr("|c|")));
  EXPECT_THAT(boxes, ElementsAre(HasSubstr("Source: mLog.AddToErrorLog::."), HasSubstr("Source: c::S.")));
}

std::int32_t trackedCount(StringView name) {
  return toLong(mLog::threadState().TrackedCounts->Item(String(name)));
}

TEST_F(LogTest, LiveObjectsAreCountedByClassWhenAskedFor) {
  mLog::TrackerIncr(u"zelFileList");
  EXPECT_FALSE(mLog::threadState().TrackedNames);
  setUser(u"ConTrack", "1");
  mLog::resetThreadState();
  for (const StringView name : {u"zelFileList", u"zelFileList", u"zelFileFilters"}) mLog::TrackerIncr(name);
  EXPECT_THAT(calls, ElementsAre("TraceMessage|zelUtilities|1.2.0|zelFileList|********************|"
                                 "First call to tracked object"));
  for (const StringView name : {u"zelFileList", u"zelFileFilters", u"zelFileFilters"})
    mLog::TrackerDecr(name);
  EXPECT_EQ(trackedCount(u"zelFileList"), 1);
  EXPECT_EQ(trackedCount(u"zelFileFilters"), -1);
  EXPECT_EQ(mLog::threadState().TrackedNames->Count(), 2);
}

TEST_F(LogTest, ACountThatCannotBeChangedIsReportedAndKept) {
  setUser(u"ConTrack", "1");
  mLog::TrackerIncr(u"zelFileList");
  mLog::TrackerDecr(u"zelFileFilters");
  EXPECT_THAT(calls.back(), HasSubstr("|mLog.TrackerDecr|5|"));
  EXPECT_EQ(mLog::threadState().TrackedCounts->Count(), 1);
  mLog::threadState().TrackedCounts->Clear();
  mLog::threadState().TrackedCounts->Add(std::int32_t{2147483647}, u"zelFileList");
  mLog::TrackerIncr(u"zelFileList");
  EXPECT_THAT(calls.back(), HasSubstr("|mLog.TrackerIncr|6|"));
  EXPECT_EQ(trackedCount(u"zelFileList"), 2147483647);
}

TEST_F(LogTest, AWatchSeesReportsOfItsThreadWhileItLives) {
  std::vector<std::string> seen;
  {
    const ErrorWatch watch([&](const ErrorReport& told) { seen.push_back(toUtf8(told.source)); });
    const ErrorWatch failing([](const ErrorReport&) { throw 1; });
    report(u"a");
    std::thread([] { report(u"elsewhere"); }).join();
  }
  report(u"b");
  EXPECT_THAT(seen, ElementsAre("a"));
  EXPECT_THAT(calls, SizeIs(3));
}

}  // namespace
}  // namespace zelUtilities
