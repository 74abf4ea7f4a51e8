#include "foundation/zelHandler.h"

#include <initializer_list>

#include "automation/Binder.h"
#include "automation/Calendar.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Machine.h"

namespace zelUtilities {

namespace {

String twoDigits(int value) { return (value < 10 ? u"0" : u"") + decimalText(value); }

String timeText() {
  const Moment moment = momentOf(now().days);
  return decimalText(moment.year) + u"-" + twoDigits(moment.month) + u"-" + twoDigits(moment.day) + u" " +
         twoDigits(moment.hour) + u":" + twoDigits(moment.minute) + u":" + twoDigits(moment.second);
}

void appendEscaped(String& line, char16_t unit) {
  constexpr StringView digits = u"0123456789ABCDEF";
  switch (unit) {
    case u'\\':
      line += u"\\\\";
      return;
    case u'\t':
      line += u"\\t";
      return;
    case u'\r':
      line += u"\\r";
      return;
    case u'\n':
      line += u"\\n";
      return;
    default:
      line += u"\\x";
      line += digits[unit / 16];
      line += digits[unit % 16];
  }
}

void appendField(String& line, StringView field) {
  line += u'\t';
  for (const char16_t unit : field) {
    if (unit < u' ' || unit == u'\\' || unit == 0x7F) {
      appendEscaped(line, unit);
    } else {
      line += unit;
    }
  }
}

void writeLine(StringView file, StringView line) {
  files().append(machine().homeFolder() + u"/" + String(file), toUtf8(line) + "\n");
}

void writeFields(StringView file, std::initializer_list<StringView> fields) {
  String line = timeText();
  for (const StringView field : fields) appendField(line, field);
  writeLine(file, line);
}

}  // namespace

void zelHandler::errorMessage(StringView sLibrary, StringView sVersion, StringView sProcedure,
                              std::int32_t lNumber, StringView sSource, StringView sDescription,
                              StringView sMoreInfo) {
  writeFields(u"errors.log",
              {sLibrary, sVersion, sProcedure, decimalText(lNumber), sSource, sDescription, sMoreInfo});
}

void zelHandler::TraceMessage(StringView sLibrary, StringView sVersion, StringView sSource, StringView sTag,
                              StringView sMessage) {
  if (sLibrary == u"SkipLine") return writeLine(u"trace.log", {});
  writeFields(u"trace.log", {sLibrary, sVersion, sSource, sTag, sMessage});
}

const ClassInfo& zelHandler::describeClass() {
  static const ClassInfo info =
      describe<zelHandler>("zelHandler", "Appends error reports and trace lines to files.")
          .creatable()
          .method("errorMessage", &zelHandler::errorMessage,
                  {"sLibrary", "sVersion", "sProcedure", "lNumber", "sSource", "sDescription", "sMoreInfo"},
                  "Appends an error report.")
          .method("TraceMessage", &zelHandler::TraceMessage,
                  {"sLibrary", "sVersion", "sSource", "sTag", "sMessage"}, "Appends a trace line.");
  return info;
}

}  // namespace zelUtilities
