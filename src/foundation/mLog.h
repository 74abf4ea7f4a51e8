// mLog: where every failure and trace line of the library goes, and the count of live objects.
//
//   mLog::ErrorLog(u"zelFiles.zel_FileCopy", error);          // most code uses Handled.h instead
//   mLog::TraceLog(u"zelNodeList.LoadFromINI", u"load", u"1200 lines read", false);
//
// It writes nothing itself: it hands each report to a logger, an object that it creates by name at
// every report, and in debug mode it also shows errors in a message box. The logger's name is the value
// "ErrorLogger" under HKEY_LOCAL_MACHINE "Software\Zelora\Common", "zelLog.zelHandler" where there is
// none. A logger answers two late-bound methods:
//   errorMessage(library, version, source, number, error's own source, description, more information)
//   TraceMessage(library, version, source, tag, message), or ("SkipLine", "", "", "", "") for a blank line
//
// Settings (whole numbers, 0 where there are none) are read once per thread: ConDebug, ConTrace and
// ConTrack, per user from HKEY_CURRENT_USER "Software\VB and VBA Program Settings\Zelora\Common", else
// from the machine's key above. A per-user -99 counts as absent; a setting that is no whole number counts
// as 0 and is reported once.
//   ConDebug  0: report only; other: message box too; 2: ErrorLog never raises again
//   ConTrace  kept, but consulted by nobody: trace lines are always passed on
//   ConTrack  not 0: TrackerIncr and TrackerDecr count
//
// Nothing here raises but ErrorLog when asked to. A logger that fails is reported by a message box in
// debug mode, for that report alone, and never to a logger. Each thread has a state of its own.
#pragma once

#include <cstdint>

#include "automation/Collection.h"
#include "automation/Error.h"
#include "automation/Object.h"
#include "automation/String.h"

namespace zelUtilities::mLog {

// Reports an error under the source of the operation that it reached. With reRaise the error is raised
// again under "<source>::<the error's own source>" (just source where that is empty), with its number and
// description; not while ConDebug is 2, nor out of an object's end (source ending in ".Class_Terminate").
void ErrorLog(StringView source, const Error& error, StringView moreInfo = {}, bool reRaise = false);

// Hands one report to the logger, if there is one, and shows it in a message box unless the mode is 0.
// A negative mode stands for ConDebug.
void AddToErrorLog(StringView procedureSource, std::int32_t number, StringView errorSource,
                   StringView description, StringView moreInfo, std::int32_t mode = -1);

// Reads the settings of this thread unless they have been read; every entry point does it.
void InitConditional();

// Hands a trace line to the logger, after a blank separator line when skipLine is set.
void TraceLog(StringView source, StringView tag, StringView message, bool skipLine = false);

// Count the live objects of a class while ConTrack is on. The first object tracked sends a trace line.
// Counting down a name that was never counted up is reported and changes nothing.
void TrackerIncr(StringView className);
void TrackerDecr(StringView className);

// The logger, made for one report; nothing where none can be made.
Ref<Object> GetErrorLogger();

// Major, minor and revision number joined by ".": "1.2.0".
String GetLibraryVersion();

// The state of a thread, for inspection. The collections are keyed by class name and appear with the
// first tracked object.
struct State {
  bool Initialized = false;
  std::int32_t ConDebug = 0;
  std::int32_t ConTrace = 0;
  std::int32_t ConTrack = 0;
  Ref<Collection> TrackedNames;
  Ref<Collection> TrackedCounts;
};
const State& threadState();

// Puts this thread back to where nothing had been read or counted; for tests.
void resetThreadState();

}  // namespace zelUtilities::mLog
