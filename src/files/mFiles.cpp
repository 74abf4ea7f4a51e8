#include "files/mFiles.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "automation/ArrayData.h"
#include "automation/Error.h"
#include "platform/Dialogs.h"
#include "platform/Files.h"
#include "platform/Locale.h"

namespace zelUtilities::mFiles {

namespace {

struct Box {
  StringView title;
  StringView header;
};
constexpr Box readBox{u"Read Error", u"The requested file could not be read:     "};
constexpr Box writeBox{u"Write Error", u"The requested file could not be written:     "};

void show(const Box& box, StringView filename, const Error& error) {
  String text(box.header);
  text += u"\r\nFile:\t";
  text += filename;
  text += u"   \r\nError:\t";
  text += error.description();
  text += u"   ";
  messageBox(text, box.title, MessageBoxStyle::Exclamation);
}

void report(const Box& box, StringView filename, ZEL_ErrorModes mode, const Error& error) {
  if ((mode & ZEL_ErrorMode_Show) != 0) show(box, filename, error);
  if ((mode & ZEL_ErrorMode_Raise) == 0) return;
  if (error.number() == 0) throw Error(ErrorNumber::InvalidProcedureCall);  // as for any raise of number 0
  throw error;
}

// Runs the body; a failure is reported as the mode says.
template <class Body>
void reported(const Box& box, StringView filename, ZEL_ErrorModes mode, const Body& body) {
  try {
    body();
  } catch (...) {
    report(box, filename, mode, currentError());
  }
}

// Sees neither hidden nor system files nor folders.
bool isVisible(StringView filename) { return !files().findFirst(filename, FileAttribute::Normal).empty(); }

std::string readVisible(StringView filename) {
  if (!isVisible(filename)) throw Error(0, {}, {});  // no failure of the file system's: nothing was tried
  return files().readWhole(filename);
}

// A line feed behind a carriage return belongs to that; any other one is bare.
bool hasBareLineFeed(std::string_view text) {
  for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
    if (at == 0 || text[at - 1] != '\r') return true;
  return false;
}

void appendWithLineEnds(std::string& out, std::string_view line) {
  for (std::size_t at; (at = line.find('\n')) != std::string_view::npos; line.remove_prefix(at + 1)) {
    out += line.substr(0, at);
    out += "\r\n";
  }
  out += line;
}

std::string rewritten(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  while (!text.empty()) {
    // Nothing is added while nothing is there, which drops empty lines at the beginning.
    if (!out.empty()) out += "\r\n";
    const std::size_t end = std::min(text.find('\r'), text.size());
    appendWithLineEnds(out, text.substr(0, end));
    text.remove_prefix(end);
    if (text.starts_with("\r\n")) {
      text.remove_prefix(2);
    } else if (!text.empty()) {
      text.remove_prefix(1);
    }
  }
  return out;
}

std::int16_t rewriteWhereNeeded(StringView path, StringView newPath) {
  const std::string text = files().readWhole(path);
  if (!hasBareLineFeed(text)) return 0;
  files().replaceWhole(newPath.empty() ? path : newPath, rewritten(text));
  return 1;
}

}  // namespace

Variant GetFileContents(StringView sFilename, ZEL_ErrorModes eErrMode) {
  Variant contents = Variant::null();
  reported(readBox, sFilename, eErrMode, [&] {
    const std::string bytes = readVisible(sFilename);
    if (bytes.empty()) {
      contents = u"";  // not an array without elements
    } else {
      contents = ArrayData::ofBytes({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    }
  });
  return contents;
}

String GetFileContentsAsString(StringView sFilename, ZEL_ErrorModes eErrMode) {
  String text;
  reported(readBox, sFilename, eErrMode, [&] { text = widen(readVisible(sFilename)); });
  return text;
}

std::unique_ptr<FileReader> openVisible(StringView sFilename) {
  std::unique_ptr<FileReader> opened;
  reported(readBox, sFilename, ZEL_ErrorMode_None, [&] {
    if (isVisible(sFilename)) opened = files().open(sFilename);
  });
  return opened;
}

void PutFileContents(std::span<const std::uint8_t> cContents, StringView sFilename, ZEL_ErrorModes eErrMode) {
  reported(writeBox, sFilename, eErrMode, [&] {
    const std::string_view bytes(reinterpret_cast<const char*>(cContents.data()), cContents.size());
    if (!isVisible(sFilename) && files().fileExists(sFilename)) {
      files().overwrite(sFilename, bytes);  // not seen, so not deleted before
    } else {
      files().replaceWhole(sFilename, bytes);
    }
  });
}

void PutFileContentsFromString(StringView sContents, StringView sFilename, ZEL_ErrorModes eErrMode) {
  reported(writeBox, sFilename, eErrMode, [&] { files().replaceWhole(sFilename, narrow(sContents)); });
}

// The code page's line ends are single bytes in every code page, so the text need not be converted.
std::int16_t RewriteFileLFtoCRLF(StringView sPath, StringView sNewPath) {
  try {
    return rewriteWhereNeeded(sPath, sNewPath);
  } catch (...) {
    return checkedShort(currentError().number());
  }
}

}  // namespace zelUtilities::mFiles
