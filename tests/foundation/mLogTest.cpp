#include "foundation/mLog.h"

#include <thread>

#include "foundation/ErrorWatch.h"
#include "foundation/Handled.h"
#include "foundation/LogFixture.h"

namespace zelUtilities {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

constexpr auto none = nullptr;

void report(StringView source) { mLog::ErrorLog(source, Error(5, u"S", u"d")); }

TEST_F(LogTest, ALoggerIsHandedTheWholeErrorAndTraceLinesMaybeSetApart) {
  mLog::ErrorLog(u"zelNodeList.Create", Error(-2147221503, u"S", u"No such column"), String(2000, u'm'));
  mLog::TraceLog(u"zelX.Load", u"load", u"12 lines");
  mLog::TraceLog(u"a", u"", u"m", true);
  EXPECT_THAT(calls,
              ElementsAre("errorMessage|zelUtilities|1.2.0|zelNodeList.Create|-2147221503|S|No such column|" +
                              std::string(2000, 'm'),
                          "TraceMessage|zelUtilities|1.2.0|zelX.Load|load|12 lines",
                          "TraceMessage|SkipLine||||", "TraceMessage|zelUtilities|1.2.0|a||m"));
  EXPECT_TRUE(boxes.empty());
}

TEST_F(LogTest, WhateverIsThrownIsLoggedOrRaisedAgainUnderTheChainOfSourcesOrBoth) {
  const auto fails = [] { throw Error(9, u"S", u"d"); };
  const auto module = [&] { chained(u"m.Outer", [&] { chained(u"m.Inner", fails); }); };
  EXPECT_EQ(raisedError(module), "9|m.Outer::m.Inner::S|d");
  handled(u"a", [] { throw 1; });
  const auto inner = [&] { handledAndRaised(u"inner", fails); };
  EXPECT_EQ(raisedError([&] { handledAndRaised(u"outer", inner); }), "9|outer::inner::S|d");
  EXPECT_EQ(reports, "a|51 inner|9 outer|9 ");
  EXPECT_THAT(calls.back(), HasSubstr("|outer|9|inner::S|d|"));
  set(u"ConDebug", "2");
  mLog::resetThreadState();
  EXPECT_EQ(raisedError(inner), "nothing");
}

TEST_F(LogTest, NothingIsRaisedAgainOutOfAnObjectsEnd) {
  const auto raised = [](StringView source, StringView own) {
    return raisedError([&] { mLog::ErrorLog(source, Error(5, own, u"d"), {}, true); });
  };
  EXPECT_EQ(raised(u"zelX.Terminate", u"") + " " + raised(u"zelX.Class_Terminate", u"S") + " " +
                raised(u"outer", u"zelX.Class_Terminate"),
            "5|zelX.Terminate|d nothing nothing");
  EXPECT_THAT(calls, SizeIs(3));
}

TEST_F(LogTest, DebugModeOrTheModeOfAReportShowsTheErrorInABoxWithMoreInformationCut) {
  for (const std::int32_t mode : {1, 0, -1}) mLog::AddToErrorLog(u"a", 5, u"", u"d", u"", mode);
  set(u"ConDebug", "1");
  mLog::resetThreadState();
  mLog::ErrorLog(u"zelX.Find", Error(-2147221503, u"zelX.Check", String(5000, u'd')), String(750, u'm'));
  mLog::ErrorLog(u"a", Error(5, u"", u"d"), String(751, u'm'));
  const std::string title = "Debug Mode Error Handler (zelUtilities)|";
  const std::string information = "\r\n\r\nMore Info: " + std::string(750, 'm');
  const std::string small = title + "Error:  5\r\nSource: a::.\r\nDescription: d";
  EXPECT_THAT(boxes,
              ElementsAre(small,
                          title + "Error:  80040001\r\nSource: zelX.Find::zelX.Check.\r\nDescription: " +
                              std::string(5000, 'd') + information,
                          small + information + " ...more... "));
}

TEST_F(LogTest, ASettingIsTheUsersElseTheMachines) {
  const auto read = [&](const char* user, const char* machine) {
    memory = {};
    mLog::resetThreadState();
    set(u"ConTrack", user, machine);
    mLog::InitConditional();
    return std::exchange(reports, "") + std::to_string(mLog::threadState().ConTrack);
  };
  EXPECT_EQ(read(none, none) + read("1", "2") + read(none, "2") + read("-99", "2"), "0122");
  EXPECT_EQ(read("0", "2") + read("-99", none), "00");
  EXPECT_EQ(read("yes", "2"), "mLog.InitConditional|13 0");
  EXPECT_EQ(read(none, ""), "mLog.InitConditional|13 0");
  EXPECT_EQ(read("3000000000", none), "mLog.InitConditional|6 0");
}

TEST_F(LogTest, SettingsAreReadOncePerThreadAndAFailureReportedOnce) {
  set(u"ConDebug", "yes");
  set(u"ConTrace", none, "1");
  set(u"ConTrack", "7");
  report(u"first");
  set(u"ConTrace", none, "2");
  report(u"second");
  EXPECT_EQ(reports, "mLog.InitConditional|13 first|5 second|5 ");
  EXPECT_EQ(mLog::threadState().ConTrace, 1);
  EXPECT_EQ(mLog::threadState().ConTrack, 7);
  std::thread([] {
    mLog::InitConditional();
    EXPECT_EQ(mLog::threadState().ConTrace, 2);
  }).join();
}

TEST_F(LogTest, TheMachineStoreAloneNamesTheLoggerAndWithoutOneThereAreBoxesYet) {
  set(u"ConDebug", "1");
  set(u"ErrorLogger", "Acme.Logger");
  report(u"a");
  set(u"ErrorLogger", none, "Acme.Logger");
  report(u"b");
  mLog::TraceLog(u"b", u"t", u"m");
  record(u"Acme.Logger");
  report(u"c");
  registerObject(u"Acme.Logger", {});
  EXPECT_EQ(reports, "a|5 c|5 ");
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
  set(u"ConDebug", "1");
  mLog::resetThreadState();
  report(u"c");
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|a|"), HasSubstr("|b|"), HasSubstr("|c|")));
  EXPECT_THAT(boxes, ElementsAre(HasSubstr("Source: mLog.AddToErrorLog::."), HasSubstr("Source: c::S.")));
}

TEST_F(LogTest, LiveObjectsAreCountedByClassWhenAskedForAndACountThatCannotChangeIsReportedAndKept) {
  mLog::TrackerIncr(u"a");
  EXPECT_FALSE(mLog::threadState().TrackedNames);
  set(u"ConTrack", "1");
  mLog::resetThreadState();
  for (const StringView name : {u"a", u"a", u"b"}) mLog::TrackerIncr(name);
  for (const StringView name : {u"a", u"b", u"b", u"c"}) mLog::TrackerDecr(name);
  EXPECT_EQ(calls[0], "TraceMessage|zelUtilities|1.2.0|a|********************|First call to tracked object");
  const Ref<Collection>& counts = mLog::threadState().TrackedCounts;
  EXPECT_EQ(toText(counts->Item(u"a")) + toText(counts->Item(u"b")), u"1-1");
  EXPECT_EQ(mLog::threadState().TrackedNames->Count(), 2);
  EXPECT_EQ(counts->Count(), 2);
  counts->Remove(u"a");
  counts->Add(2147483647, u"a");
  mLog::TrackerIncr(u"a");
  EXPECT_EQ(toLong(counts->Item(u"a")), 2147483647);
  EXPECT_EQ(reports, "mLog.TrackerDecr|5 mLog.TrackerIncr|6 ");
}

TEST_F(LogTest, AWatchSeesReportsOfItsThreadWhileItLives) {
  std::string seen;
  {
    const ErrorWatch watch([&](const ErrorReport& told) { seen += toUtf8(told.source); });
    const ErrorWatch failing([](const ErrorReport&) { throw 1; });
    report(u"a");
    std::thread([] { report(u"elsewhere"); }).join();
  }
  report(u"b");
  EXPECT_EQ(seen, "a");
  EXPECT_EQ(reports, "a|5 elsewhere|5 b|5 ");
}

}  // namespace
}  // namespace zelUtilities
