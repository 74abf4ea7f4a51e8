#include <gmock/gmock.h>

#include "automation/Binder.h"
#include "automation/Conversions.h"
#include "files/FilesClasses.h"
#include "files/FilesFixture.h"
#include "files/zelFiles.h"
#include "support/FailingFiles.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileContents : public FilesFixture {
 protected:
  ~FileContents() override { EXPECT_THAT(logged, IsEmpty()) << "whatever the mode"; }

  static Ref<ArrayData> bytes(std::string_view text) {
    return ArrayData::ofBytes({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  }

  // What an operation gives, or "number description" of what it raises, and behind it the boxes shown.
  template <class Body>
  std::string outcome(const Body& body) {
    boxes.clear();
    std::string result;
    try {
      result = body();
    } catch (const Error& error) {
      result = std::to_string(error.number()) + " " + toUtf8(error.description());
    }
    return result + boxes;
  }
  std::string read(StringView file, int mode) {
    return outcome([&] {
      const Variant contents = zel_GetFileContentsEx(file, static_cast<ZEL_ErrorModes>(mode));
      return toUtf8(contents.isString() ? u"\"" + String(contents.text()) + u"\"" : typeName(contents));
    });
  }
  std::string readText(StringView file, ZEL_ErrorModes mode = ZEL_ErrorMode_ShowAndRaise) {
    return outcome([&] { return toUtf8(zel_GetFileContentsAsStringEx(file, mode)); });
  }
  std::string write(const Ref<ArrayData>& contents, StringView file, ZEL_ErrorModes mode) {
    return outcome([&] { return zel_PutFileContentsEx(contents, file, mode), ""; });
  }
  std::string writeText(StringView text, StringView file, ZEL_ErrorModes mode) {
    return outcome([&] { return zel_PutFileContentsFromStringEx(text, file, mode), ""; });
  }
};

const std::string readBox = "[48|Read Error|The requested file could not be read:     \r\nFile:\t";
const std::string writeBox = "[48|Write Error|The requested file could not be written:     \r\nFile:\t";

TEST_F(FileContents, AFileIsReadAsBytesFromZeroOn) {
  const Variant contents = zel_GetFileContents(put(u"a.bin", {"\0\xFFz", 3}));
  ASSERT_EQ(toUtf8(typeName(contents)), "Byte()");
  EXPECT_THAT(contents.array().bytes(), ElementsAre(0, 255, 'z'));
  EXPECT_EQ(contents.array().bounds().at(0).lower, 0);
}

TEST_F(FileContents, EveryByteComesBackFromTextInTheCodePage) {
  std::string all = "caf\xE9 \x80\r\n";
  EXPECT_EQ(zel_GetFileContentsAsString(put(u"a.txt", all)), u"caf\u00E9 \u20AC\r\n");
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  zel_PutFileContentsFromString(zel_GetFileContentsAsString(put(u"a.txt", all)), path(u"b.txt"));
  EXPECT_EQ(bytesIn(u"b.txt"), all);
  zel_PutFileContentsFromString(u"x\u4E2D", path(u"b.txt"));
  EXPECT_EQ(bytesIn(u"b.txt"), "x?");
}

TEST_F(FileContents, AnEmptyFileIsAnEmptyTextEitherWay) {
  EXPECT_EQ(read(put(u"a.txt", ""), ZEL_ErrorMode_ShowAndRaise), "\"\"");
  EXPECT_EQ(readText(path(u"a.txt")), "");
}

TEST_F(FileContents, AMissingFileIsShownWithoutADescriptionAndRaisedAsAnInvalidCall) {
  const String none = path(u"no.txt");
  const std::string box = readBox + "no.txt   \r\nError:\t   ]";
  const std::string invalidCall = "5 Invalid procedure call or argument";
  EXPECT_EQ(outcome([&] { return toUtf8(typeName(zel_GetFileContents(none))); }), "Null" + box);
  EXPECT_EQ(outcome([&] { return toUtf8(zel_GetFileContentsAsString(none)); }), "");
  EXPECT_EQ(read(none, ZEL_ErrorMode_Raise), invalidCall);
  EXPECT_EQ(readText(none), invalidCall + box);
  EXPECT_EQ(read(none, 4), "Null") << "only the two lowest bits count";
  EXPECT_EQ(read(none, 7), invalidCall + box);
}

TEST_F(FileContents, AHiddenOrSystemFileOrAFolderReadsAsMissing) {
  files().createFolder(path(u"folder"));
  for (const String& file : {put(u"hidden.txt", "x", FileAttribute::Hidden),
                             put(u"system.txt", "x", FileAttribute::System), path(u"folder")}) {
    EXPECT_EQ(read(file, ZEL_ErrorMode_None), "Null");
    EXPECT_EQ(readText(file, ZEL_ErrorMode_None), "");
  }
  EXPECT_EQ(readText(put(u"readonly.txt", "x", FileAttribute::ReadOnly)), "x");
}

TEST_F(FileContents, AFailureToReadIsShownAndRaisedAsItIs) {
  FailingFiles locked("readWhole", ErrorNumber::PermissionDenied);
  const String file = put(u"a.txt", "x");
  const Replaced<Files> replaced(locked);
  const std::string box = readBox + "a.txt   \r\nError:\tPermission denied   ]";
  EXPECT_EQ(read(file, ZEL_ErrorMode_Show), "Null" + box);
  EXPECT_EQ(readText(file), "70 Permission denied" + box);
}

TEST_F(FileContents, BytesAreWrittenWholeOverWhatWasThere) {
  const String file = put(u"a.bin", "a much longer text");
  for (const std::string& contents : {std::string("\0b", 2), std::string()}) {
    zel_PutFileContents(bytes(contents), file);
    EXPECT_EQ(bytesIn(u"a.bin"), contents);
  }
}

TEST_F(FileContents, BytesGoIntoAHiddenFileInPlaceAndTextReplacesIt) {
  const String file = put(u"a.bin", "0123456789", FileAttribute::Hidden);
  zel_PutFileContents(bytes("ab"), file);
  EXPECT_EQ(bytesIn(u"a.bin"), "ab23456789");
  zel_PutFileContentsFromString(u"xyz", file);
  EXPECT_EQ(bytesIn(u"a.bin"), "xyz");
  EXPECT_EQ(files().attributes(file) & FileAttribute::Hidden, FileAttribute::Hidden);
}

TEST_F(FileContents, AFailureToWriteLeavesTheOldContents) {
  const auto show = ZEL_ErrorMode_Show, raise = ZEL_ErrorMode_Raise, both = ZEL_ErrorMode_ShowAndRaise;
  const String file = put(u"a.txt", "old"), readOnly = put(u"r.txt", "old", FileAttribute::ReadOnly);
  const std::string box = writeBox + "r.txt   \r\nError:\tPath/File access error   ]";
  EXPECT_EQ(writeText(u"new", readOnly, show), box);
  EXPECT_EQ(write(bytes("new"), readOnly, both), "75 Path/File access error" + box);
  EXPECT_EQ(bytesIn(u"r.txt"), "old");
  EXPECT_EQ(writeText(u"new", path(u"no\\a.txt"), raise), "76 Path not found");
  EXPECT_EQ(write(ArrayData::ofVariants({}), file, ZEL_ErrorMode_None), "13 Type mismatch");
  EXPECT_NE(writeText(u"new", path(u"*.txt"), raise), "") << "wildcards destroy nothing";
  EXPECT_NE(write(bytes("new"), path(u"?.txt"), raise), "");
  FailingFiles full("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(full);
  EXPECT_EQ(writeText(u"new", file, raise), "61 Disk full");
  EXPECT_EQ(write(bytes("new"), file, raise), "61 Disk full");
  EXPECT_EQ(bytesIn(u"a.txt"), "old");
}

// What a file becomes; "unchanged" where it is not rewritten.
class LineEnds : public FileContents {
 protected:
  std::string rewritten(std::string_view text) {
    const std::int16_t result = zel_RewriteFileLFtoCRLF(put(u"a.txt", text));
    EXPECT_TRUE(result == 1 || bytesIn(u"a.txt") == text);
    return result == 1 ? bytesIn(u"a.txt") : result == 0 ? "unchanged" : std::to_string(result);
  }
};

TEST_F(LineEnds, BareLineFeedsBecomeCrLf) {
  EXPECT_EQ(rewritten("a\nb\n"), "a\r\nb\r\n");
  EXPECT_EQ(rewritten("\n"), "\r\n");
  EXPECT_EQ(rewritten("a\n\nb"), "a\r\n\r\nb");
  EXPECT_EQ(rewritten("\x81\xE9\n\xFF"), "\x81\xE9\r\n\xFF") << "bytes of any value stay";
}

TEST_F(LineEnds, FilesWithoutBareLineFeedsStay) {
  for (const char* text : {"a\r\nb\r\n", "a\rb", "a\r\r\n", ""}) EXPECT_EQ(rewritten(text), "unchanged");
}

TEST_F(LineEnds, TheLastLineLosesItsEndAndALoneCrEndsALine) {
  EXPECT_EQ(rewritten("a\nb\r\n"), "a\r\nb");
  EXPECT_EQ(rewritten("a\rb\nc"), "a\r\nb\r\nc");
  EXPECT_EQ(rewritten("a\n\r\r\nb"), "a\r\n\r\n\r\nb");
}

TEST_F(LineEnds, EmptyLinesAtTheBeginningAreDropped) {
  EXPECT_EQ(rewritten("\r\n\r\na\nb"), "a\r\nb");
  EXPECT_EQ(rewritten("\r\n\na"), "\r\na");
}

TEST_F(LineEnds, ANewPathTakesTheRewrittenTextIfThereIsAny) {
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"a.txt", "a\nb"), path(u"b.txt")), 1);
  EXPECT_EQ(bytesIn(u"a.txt"), "a\nb");
  EXPECT_EQ(bytesIn(u"b.txt"), "a\r\nb");
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"c.txt", "a\r\nb"), path(u"d.txt")), 0);
  EXPECT_FALSE(files().fileExists(path(u"d.txt")));
}

TEST_F(LineEnds, AFailureIsReturnedByItsNumber) {
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(path(u"no.txt")), 53);
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"r.txt", "a\nb", FileAttribute::ReadOnly)), 75);
  FailingFiles full("replaceWhole", ErrorNumber::DiskFull), foreign("readWhole", objectErrorBase + 1);
  const String file = put(u"a.txt", "a\nb");
  {
    const Replaced<Files> replaced(full);
    EXPECT_EQ(zel_RewriteFileLFtoCRLF(file), 61);
  }
  const Replaced<Files> replaced(foreign);
  EXPECT_EQ(outcome([&] { return std::to_string(zel_RewriteFileLFtoCRLF(file)); }), "6 Overflow")
      << "the number needs more than 16 bits";
}

TEST_F(FileContents, TheOperationsAreGlobalWithTheirOwnDefaults) {
  ClassRegistry registry;
  registerFiles(registry);
  const auto call = [&](StringView name, std::vector<Variant> arguments) {
    const auto operation = registry.findOperation(name);
    Variant result;
    const std::string shown = outcome([&] {
      result =
          ClassRegistry::instance(*operation->functionClass)->Invoke(name, InvokeKind::Method, arguments);
      return "";
    });
    return (result.isNull() ? "Null" : toUtf8(toText(result))) + (shown.empty() ? "" : " shown");
  };
  const String file = path(u"a.txt");
  EXPECT_EQ(call(u"zel_GetFileContentsEx", {file}), "Null shown");
  EXPECT_EQ(call(u"zel_GetFileContentsAsStringEx", {file}), "");
  EXPECT_EQ(call(u"zel_PutFileContents", {bytes("a\nb"), file}), "");
  EXPECT_EQ(call(u"zel_RewriteFileLFtoCRLF", {file}), "1");
  EXPECT_EQ(call(u"zel_GetFileContentsAsString", {file}), "a\r\nb");
  EXPECT_EQ(call(u"zel_PutFileContentsFromStringEx", {u"x", path(u"no\\a.txt")}), " shown");
}

}  // namespace
}  // namespace zelUtilities
