#include "foundation/mLog.h"

#include <gmock/gmock.h>

#include <thread>

#include "foundation/ErrorWatch.h"
#include "foundation/LogFixture.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const Error wanted(-2147221503, u"S", u"No such column");

std::string raisedSource(StringView source, const Error& error) {
  try {
    mLog::ErrorLog(source, error, {}, true);
  } catch (const Error& raised) {
    EXPECT_EQ(raised.number(), error.number());
    EXPECT_EQ(raised.description(), error.description());
    return toUtf8(raised.source());
  }
  return "nothing";
}

TEST_F(LogTest, AReportCarriesLibraryVersionSourceAndTheWholeError) {
  const String moreInfo(2000, u'm');
  mLog::ErrorLog(u"zelNodeList.Create", wanted, moreInfo);
  EXPECT_THAT(calls,
              ElementsAre("errorMessage|zelUtilities|1.2.0|zelNodeList.Create|-2147221503|S|No such column|" +
                          toUtf8(moreInfo)));
  EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(LogTest, ReRaisingChainsTheSourcesLevelByLevel) {
  EXPECT_EQ(raisedSource(u"inner", Error(5, u"", u"d")), "inner");
  EXPECT_EQ(raisedSource(u"inner", wanted), "inner::S");
  EXPECT_EQ(raisedSource(u"outer", Error(5, u"inner::S", u"d")), "outer::inner::S");
  EXPECT_NO_THROW(mLog::ErrorLog(u"outer", wanted));
}

TEST_F(LogTest, NothingIsRaisedOutOfAnObjectsEnd) {
  EXPECT_EQ(raisedSource(u"zelFileList.Class_Terminate", Error(5)), "nothing");
  EXPECT_EQ(raisedSource(u"zelFileList.Class_Terminate", wanted), "nothing");
  EXPECT_EQ(raisedSource(u"outer", Error(5, u"zelFileList.Class_Terminate", u"d")), "nothing");
  EXPECT_EQ(raisedSource(u"zelFileList.Terminate", Error(5)), "zelFileList.Terminate");
  EXPECT_THAT(calls, SizeIs(4));
}

TEST_F(LogTest, DebugModeShowsTheErrorInABox) {
  setUser(u"ConDebug", "1");
  mLog::ErrorLog(u"zelX.Find", Error(-2147221503, u"zelX.Check", u"Too long"), u"more");
  mLog::ErrorLog(u"a", Error(5, u"", u"d"));
  EXPECT_THAT(dialogs.boxes, ElementsAre("Debug Mode Error Handler (zelUtilities)|"
                                         "Error:  80040001\r\nSource: zelX.Find::zelX.Check.\r\n"
                                         "Description: Too long\r\n\r\nMore Info: more",
                                         "Debug Mode Error Handler (zelUtilities)|"
                                         "Error:  5\r\nSource: a::.\r\nDescription: d"));
}

TEST_F(LogTest, ABoxCutsMoreInformationButNotTheDescription) {
  setUser(u"ConDebug", "1");
  mLog::ErrorLog(u"a", Error(5, u"", String(5000, u'd')), String(750, u'm'));
  mLog::ErrorLog(u"a", Error(5, u"", u"d"), String(751, u'm'));
  const std::string information = "\r\n\r\nMore Info: " + std::string(750, 'm');
  EXPECT_THAT(dialogs.boxes, ElementsAre(EndsWith(": " + std::string(5000, 'd') + information),
                                         EndsWith(": d" + information + " ...more... ")));
}

TEST_F(LogTest, TheModeOfAReportDecidesAboutItsBox) {
  mLog::AddToErrorLog(u"a", 5, u"", u"d", u"", 1);
  EXPECT_THAT(dialogs.boxes, SizeIs(1));
  mLog::AddToErrorLog(u"a", 5, u"", u"d", u"", 0);
  mLog::AddToErrorLog(u"a", 5, u"", u"d", u"", -1);
  EXPECT_THAT(dialogs.boxes, SizeIs(1));
  EXPECT_THAT(calls, SizeIs(3));
}

struct SettingCase {
  const char* user;
  const char* machine;
  std::int32_t value;
  std::size_t reports;
};

class LogSetting : public LogTest, public testing::WithParamInterface<SettingCase> {};

TEST_P(LogSetting, IsTheUsersElseTheMachines) {
  if (GetParam().user) setUser(u"ConTrack", GetParam().user);
  if (GetParam().machine) setMachine(u"ConTrack", GetParam().machine);
  mLog::InitConditional();
  EXPECT_EQ(mLog::threadState().ConTrack, GetParam().value);
  EXPECT_EQ(mLog::threadState().ConDebug, 0);
  EXPECT_THAT(calls, SizeIs(GetParam().reports));
}

INSTANTIATE_TEST_SUITE_P(Stores, LogSetting,
                         testing::Values(SettingCase{nullptr, nullptr, 0, 0}, SettingCase{"1", "2", 1, 0},
                                         SettingCase{nullptr, "2", 2, 0}, SettingCase{"-99", "2", 2, 0},
                                         SettingCase{"0", "2", 0, 0}, SettingCase{"-99", nullptr, 0, 0},
                                         SettingCase{"yes", "2", 0, 1}, SettingCase{nullptr, "", 0, 1},
                                         SettingCase{"3000000000", nullptr, 0, 1}));

TEST_F(LogTest, ASettingThatDoesNotConvertIsReportedOnceWithoutReenteringTheReading) {
  setUser(u"ConDebug", "yes");
  setUser(u"ConTrack", "7");
  mLog::ErrorLog(u"first", wanted);
  mLog::ErrorLog(u"second", wanted);
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|mLog.InitConditional|13|"), HasSubstr("|first|"),
                                 HasSubstr("|second|")));
  EXPECT_EQ(mLog::threadState().ConTrack, 7);
}

TEST_F(LogTest, SettingsAreReadOncePerThread) {
  setMachine(u"ConTrace", "1");
  mLog::InitConditional();
  setMachine(u"ConTrace", "2");
  mLog::InitConditional();
  mLog::ErrorLog(u"a", wanted);
  EXPECT_EQ(mLog::threadState().ConTrace, 1);
  std::thread([] {
    EXPECT_FALSE(mLog::threadState().Initialized);
    mLog::InitConditional();
    EXPECT_EQ(mLog::threadState().ConTrace, 2);
  }).join();
}

TEST_F(LogTest, TheMachineStoreAloneNamesTheLoggerAtEachReport) {
  int others = 0;
  registerObject(u"Acme.Logger", [&] {
    ++others;
    return Ref<Object>(make<Recorder>(*this));
  });
  setUser(u"ErrorLogger", "Acme.Logger");
  mLog::ErrorLog(u"a", wanted);
  EXPECT_EQ(others, 0);
  setMachine(u"ErrorLogger", "Acme.Logger");
  mLog::ErrorLog(u"a", wanted);
  EXPECT_EQ(others, 1);
  registerObject(u"Acme.Logger", {});
}

TEST_F(LogTest, WithoutALoggerErrorsStillReachTheBoxAndTracesAreDropped) {
  setMachine(u"ErrorLogger", "Acme.Missing");
  setMachine(u"ConDebug", "1");
  EXPECT_FALSE(mLog::GetErrorLogger());
  mLog::TraceLog(u"a", u"t", u"m");
  EXPECT_THAT(dialogs.boxes, IsEmpty());
  mLog::ErrorLog(u"a", wanted);
  EXPECT_THAT(dialogs.boxes, SizeIs(1));
}

TEST_F(LogTest, ALoggerThatFailsIsNotAskedAgainAndNobodyElseIsDisturbed) {
  inLogger = [] { throw Error(70); };
  EXPECT_EQ(raisedSource(u"outer", wanted), "outer::S");
  mLog::TraceLog(u"a", u"t", u"m", true);
  EXPECT_THAT(calls, SizeIs(2));
  registerObject(u"zelLog.zelHandler", []() -> Ref<Object> { throw Error(7); });
  EXPECT_NO_THROW(mLog::ErrorLog(u"a", wanted));
  EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(LogTest, ALoggerThatFailsIsShownOnceInDebugModeAndSoIsTheError) {
  setUser(u"ConDebug", "1");
  inLogger = [] { throw 1; };
  mLog::ErrorLog(u"a", wanted);
  EXPECT_THAT(calls, SizeIs(1));
  EXPECT_THAT(dialogs.boxes,
              ElementsAre(HasSubstr("Source: mLog.AddToErrorLog::."), HasSubstr("Source: a::S.")));
}

TEST_F(LogTest, ALoggerThatReportsItselfIsNotReentered) {
  inLogger = [] { mLog::ErrorLog(u"within", wanted); };
  mLog::ErrorLog(u"a", wanted);
  mLog::ErrorLog(u"b", wanted);
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|a|"), HasSubstr("|b|")));
}

TEST_F(LogTest, ATraceLineMayBeSetApart) {
  mLog::TraceLog(u"zelX.Load", u"load", u"12 lines");
  mLog::TraceLog(u"a", u"", u"m", true);
  EXPECT_THAT(calls, ElementsAre("TraceMessage|zelUtilities|1.2.0|zelX.Load|load|12 lines",
                                 "TraceMessage|SkipLine||||", "TraceMessage|zelUtilities|1.2.0|a||m"));
}

std::int32_t trackedCount(StringView name) {
  return toLong(mLog::threadState().TrackedCounts->Item(String(name)));
}

TEST_F(LogTest, LiveObjectsAreCountedByClass) {
  setUser(u"ConTrack", "1");
  mLog::TrackerIncr(u"zelFileList");
  EXPECT_THAT(calls, ElementsAre("TraceMessage|zelUtilities|1.2.0|zelFileList|********************|"
                                 "First call to tracked object"));
  mLog::TrackerIncr(u"zelFileList");
  mLog::TrackerIncr(u"zelFileFilters");
  mLog::TrackerDecr(u"zelFileList");
  mLog::TrackerDecr(u"zelFileFilters");
  mLog::TrackerDecr(u"zelFileFilters");
  EXPECT_EQ(trackedCount(u"zelFileList"), 1);
  EXPECT_EQ(trackedCount(u"zelFileFilters"), -1);
  EXPECT_EQ(mLog::threadState().TrackedNames->Count(), 2);
  EXPECT_THAT(calls, SizeIs(1));
}

TEST_F(LogTest, ACountThatCannotBeChangedIsReportedAndKept) {
  mLog::TrackerIncr(u"zelFileList");  // not asked for yet
  EXPECT_FALSE(mLog::threadState().TrackedNames);
  mLog::resetThreadState();
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
    const ErrorWatch watch([&](const ErrorReport& report) { seen.push_back(toUtf8(report.source)); });
    const ErrorWatch failing([](const ErrorReport&) { throw 1; });
    mLog::ErrorLog(u"a", wanted);
    std::thread([] { mLog::ErrorLog(u"elsewhere", wanted); }).join();
  }
  mLog::ErrorLog(u"b", wanted);
  EXPECT_THAT(seen, ElementsAre("a"));
  EXPECT_THAT(calls, SizeIs(3));
}

}  // namespace
}  // namespace zelUtilities
