#include "foundation/mLog.h"

#include <array>

#include "automation/Conversions.h"
#include "automation/ThreadOwned.h"
#include "foundation/ErrorWatch.h"
#include "foundation/Handled.h"
#include "foundation/LibraryVersion.h"
#include "foundation/RegistryVariant.h"
#include "foundation/bas_Main.h"
#include "platform/Dialogs.h"

namespace zelUtilities::mLog {

namespace {

constexpr StringView machineKey = u"Software\\Zelora\\Common";
constexpr StringView userKey = u"Software\\VB and VBA Program Settings\\Zelora\\Common";
constexpr std::int32_t absent = -99;  // a per-user setting of this value counts as absent
constexpr std::int32_t neverRaise = 2;
constexpr StringView objectsEnd = u".Class_Terminate";  // nothing is raised out of an object's end
constexpr std::size_t shownMoreInfo = 750;              // characters

struct ThreadLog : State {
  bool callingLogger = false;
};
ThreadLog& threadLog() { return ThreadOwned<ThreadLog>::value(); }

ThreadLog& initializedLog() {
  if (!threadLog().Initialized) InitConditional();
  return threadLog();
}

// While this lives the thread is in the hands of a logger, which must not be asked to report on itself.
class LoggerCall {
 public:
  LoggerCall() { threadLog().callingLogger = true; }
  ~LoggerCall() { threadLog().callingLogger = false; }
  LoggerCall(const LoggerCall&) = delete;
  LoggerCall& operator=(const LoggerCall&) = delete;
};

String numberText(std::int32_t number) {
  if (number >= 0) return decimalText(number);
  String digits(8, u'0');
  auto bits = static_cast<std::uint32_t>(number);
  for (std::size_t i = 8; i-- > 0; bits /= 16) digits[i] = u"0123456789ABCDEF"[bits % 16];
  return digits;
}

String boxText(const ErrorReport& report) {
  String text = u"Error:  " + numberText(report.number) + u"\r\nSource: ";
  text.append(report.source).append(u"::").append(report.errorSource).append(u".\r\nDescription: ");
  text.append(report.description);
  if (report.moreInfo.empty()) return text;
  text.append(u"\r\n\r\nMore Info: ").append(report.moreInfo.substr(0, shownMoreInfo));
  return report.moreInfo.size() > shownMoreInfo ? text + u" ...more... " : text;
}

void showBox(const ErrorReport& report) noexcept {
  try {
    messageBox(boxText(report), u"Debug Mode Error Handler (" + String(libraryName) + u")");
  } catch (...) {  // no memory left for the text
  }
}

// What the logger itself failed with, inside a catch block: told to everybody but a logger.
void reportLoggerFailure(StringView source) noexcept {
  try {
    const Error error = currentError();
    const ErrorReport report{source, error.number(), error.source(), error.description(), {}};
    ErrorWatch::tell(report);
    if (threadLog().ConDebug != 0) showBox(report);
  } catch (...) {  // no memory left for the error
  }
}

// Runs the body with the logger, if there is one, unless this thread is within a logger already.
template <class Body>
void withLogger(StringView source, const Body& body) noexcept {
  if (threadLog().callingLogger) return;
  const LoggerCall call;
  try {
    if (const Ref<Object> logger = GetErrorLogger()) body(*logger);
  } catch (...) {
    reportLoggerFailure(source);
  }
}

void passToLogger(const ErrorReport& report) noexcept {
  withLogger(u"mLog.AddToErrorLog", [&](Object& logger) {
    std::array<Variant, 7> arguments = {libraryName,    GetLibraryVersion(), report.source,
                                        report.number,  report.errorSource,  report.description,
                                        report.moreInfo};
    logger.Invoke(u"errorMessage", InvokeKind::Method, arguments);
  });
}

// A per-user setting wins over the machine's; raises where the one that counts is no whole number.
std::int32_t setting(StringView name) {
  const Variant user = readRegistryValue(RegistryRoot::CurrentUser, userKey, name, absent);
  const std::int32_t value = toLong(user);
  if (value != absent) return value;
  return toLong(readRegistryValue(RegistryRoot::LocalMachine, machineKey, name, std::int32_t{0}));
}

void putCount(StringView className, std::int32_t count) {
  threadLog().TrackedCounts->Remove(className);
  threadLog().TrackedCounts->Add(count, className);
}

std::int32_t countOf(StringView className) {
  if (!threadLog().TrackedCounts) throw Error(ErrorNumber::ObjectNotSet);
  return toLong(threadLog().TrackedCounts->Item(className));
}

void startTracking(StringView className) {
  if (threadLog().TrackedNames) return;
  TraceLog(className, u"********************", u"First call to tracked object", false);
  threadLog().TrackedCounts = make<Collection>();
  threadLog().TrackedNames = make<Collection>();
}

}  // namespace

void ErrorLog(StringView source, const Error& error, StringView moreInfo, bool reRaise) {
  const ThreadLog& log = initializedLog();
  AddToErrorLog(source, error.number(), error.source(), error.description(), moreInfo);
  if (log.ConDebug == neverRaise || !reRaise) return;
  if (source.ends_with(objectsEnd)) return;
  String chainedSource(source);
  if (!error.source().empty()) chainedSource.append(u"::").append(error.source());
  if (chainedSource.ends_with(objectsEnd)) return;
  throw error.withSource(chainedSource);
}

void AddToErrorLog(StringView procedureSource, std::int32_t number, StringView errorSource,
                   StringView description, StringView moreInfo, std::int32_t mode) {
  const ThreadLog& log = initializedLog();
  if (mode < 0) mode = log.ConDebug;
  const ErrorReport report{procedureSource, number, errorSource, description, moreInfo};
  ErrorWatch::tell(report);
  passToLogger(report);
  if (mode != 0) showBox(report);
}

void InitConditional() {
  if (threadLog().Initialized) return;
  // Set first: what fails below is reported through this very log, with the settings read so far.
  threadLog().Initialized = true;
  const auto read = [](StringView name, std::int32_t& value) {
    value = 0;
    handled(u"mLog.InitConditional", [&] { value = setting(name); });
  };
  read(u"ConDebug", threadLog().ConDebug);
  read(u"ConTrace", threadLog().ConTrace);
  read(u"ConTrack", threadLog().ConTrack);
}

Ref<Object> GetErrorLogger() {
  Ref<Object> logger;
  handled(u"mLog.GetErrorLogger", [&] {
    const Variant name =
        readRegistryValue(RegistryRoot::LocalMachine, machineKey, u"ErrorLogger", u"zelLog.zelHandler");
    logger = CreateNamedObject(toText(name), {});
  });
  return logger;
}

void TraceLog(StringView source, StringView tag, StringView message, bool skipLine) {
  handled(u"mLog.TraceLog", [&] {
    initializedLog();
    withLogger(u"mLog.TraceLog", [&](Object& logger) {
      std::array<Variant, 5> blank = {u"SkipLine", u"", u"", u"", u""};
      if (skipLine) logger.Invoke(u"TraceMessage", InvokeKind::Method, blank);
      std::array<Variant, 5> line = {libraryName, GetLibraryVersion(), source, tag, message};
      logger.Invoke(u"TraceMessage", InvokeKind::Method, line);
    });
  });
}

void TrackerIncr(StringView className) {
  handled(u"mLog.TrackerIncr", [&] {
    if (initializedLog().ConTrack == 0) return;
    startTracking(className);
    if (threadLog().TrackedNames->tryAdd(className, className)) {
      threadLog().TrackedCounts->Add(std::int32_t{1}, className);
    } else {
      putCount(className, checkedLong(std::int64_t{countOf(className)} + 1));
    }
  });
}

void TrackerDecr(StringView className) {
  handled(u"mLog.TrackerDecr", [&] {
    if (initializedLog().ConTrack == 0) return;
    putCount(className, checkedLong(std::int64_t{countOf(className)} - 1));
  });
}

String GetLibraryVersion() {
  return decimalText(versionMajor) + u"." + decimalText(versionMinor) + u"." + decimalText(versionRevision);
}

const State& threadState() { return threadLog(); }

void resetThreadState() { threadLog() = {}; }

}  // namespace zelUtilities::mLog

namespace zelUtilities {

void logCurrent(StringView source, StringView moreInfo) noexcept {
  try {
    mLog::ErrorLog(source, currentError(), moreInfo);
  } catch (...) {  // no memory left to report with
  }
}

void logCurrentAndRaise(StringView source) { mLog::ErrorLog(source, currentError(), {}, true); }

void raiseChained(StringView source) {
  const Error error = currentError();
  throw error.withSource(String(source) + u"::" + error.source());
}

}  // namespace zelUtilities
