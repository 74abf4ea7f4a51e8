#include <gmock/gmock.h>

#include "automation/Binder.h"
#include "automation/Conversions.h"
#include "files/FilesClasses.h"
#include "files/zelFiles.h"
#include "foundation/ErrorWatch.h"
#include "platform/Dialogs.h"
#include "support/FailingFiles.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileContents : public ::testing::Test, private Dialogs {
 protected:
  FileContents() {
    do {
      folder = files().temporaryFolder() + u"\\zelFileContents" + decimalText(++counter);
    } while (files().folderExists(folder));
    files().createFolder(folder);
  }
  ~FileContents() override {
    EXPECT_THAT(logged, IsEmpty());  // whatever the mode
    files().removeFolder(folder, true);
  }

  String path(StringView name) const { return folder + u"\\" + String(name); }
  String put(StringView name, std::string_view bytes, std::uint32_t attributes = FileAttribute::Normal) {
    files().replaceWhole(path(name), bytes);
    if (attributes != FileAttribute::Normal) files().setAttributes(path(name), attributes);
    return path(name);
  }
  static std::string bytesIn(StringView file) { return files().readWhole(file); }

  // What the body raises, as "number description"; "" when it raises nothing.
  template <class Body>
  static std::string raised(const Body& body) {
    try {
      body();
    } catch (const Error& error) {
      return std::to_string(error.number()) + " " + toUtf8(error.description());
    }
    return "";
  }
  static Ref<ArrayData> bytes(std::string_view text) {
    return ArrayData::ofBytes({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  }

  String folder;
  std::vector<std::string> boxes;   // as "style|title|text", with the folder's name left out
  std::vector<std::string> logged;  // sources

 private:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    String shown = decimalText(style) + u"|" + String(title) + u"|" + String(text);
    if (const auto at = shown.find(folder + u"\\"); at != String::npos) shown.erase(at, folder.size() + 1);
    boxes.push_back(toUtf8(shown));
    return MessageBoxAnswer::Ok;
  }

  static inline int counter = 0;
  Replaced<Dialogs> dialogs_{*this};
  ErrorWatch watch_{[this](const ErrorReport& report) { logged.push_back(toUtf8(report.source)); }};
};

// Reading

TEST_F(FileContents, AFileIsReadAsBytesFromZeroOn) {
  const Variant contents = zel_GetFileContents(put(u"a.bin", {"\0\xFFz", 3}));
  ASSERT_TRUE(contents.isArray());
  EXPECT_EQ(contents.array().elementKind(), VariantKind::Byte);
  EXPECT_THAT(contents.array().bytes(), ElementsAre(0, 255, 'z'));
  EXPECT_EQ(contents.array().bounds().at(0).lower, 0);
  EXPECT_EQ(contents.array().bounds().at(0).count, 3U);
}

TEST_F(FileContents, AFileIsReadAsTextInTheCodePage) {
  EXPECT_EQ(zel_GetFileContentsAsString(put(u"a.txt", "caf\xE9 \x80\r\n")), u"caf\u00E9 \u20AC\r\n");
}

TEST_F(FileContents, EveryByteComesBackFromText) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const String text = zel_GetFileContentsAsString(put(u"a.txt", all));
  EXPECT_EQ(text.size(), 256U);
  zel_PutFileContentsFromString(text, path(u"b.txt"));
  EXPECT_EQ(bytesIn(path(u"b.txt")), all);
}

TEST_F(FileContents, AnEmptyFileIsAnEmptyTextEitherWay) {
  const String file = put(u"a.txt", "");
  const Variant contents = zel_GetFileContents(file);
  EXPECT_TRUE(contents.isString());
  EXPECT_EQ(contents.text(), u"");
  EXPECT_EQ(zel_GetFileContentsAsString(file), u"");
  EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(FileContents, AMissingFileIsShownWithoutADescription) {
  EXPECT_TRUE(zel_GetFileContents(path(u"no.txt")).isNull());
  EXPECT_EQ(zel_GetFileContentsAsString(path(u"no.txt")), u"");
  EXPECT_THAT(
      boxes,
      ElementsAre(
          "48|Read Error|The requested file could not be read:     \r\nFile:\tno.txt   \r\nError:\t   "));
}

TEST_F(FileContents, RaisingForAMissingFileIsAnInvalidCall) {
  const std::string invalidCall = "5 Invalid procedure call or argument";
  EXPECT_EQ(raised([&] { zel_GetFileContentsEx(path(u"no.txt"), ZEL_ErrorMode_Raise); }), invalidCall);
  EXPECT_THAT(boxes, IsEmpty());
  EXPECT_EQ(raised([&] { zel_GetFileContentsAsStringEx(path(u"no.txt"), ZEL_ErrorMode_ShowAndRaise); }),
            invalidCall);
  EXPECT_EQ(boxes.size(), 1U);
}

TEST_F(FileContents, AHiddenOrSystemFileOrAFolderReadsAsMissing) {
  put(u"hidden.txt", "x", FileAttribute::Hidden);
  put(u"system.txt", "x", FileAttribute::System);
  files().createFolder(path(u"folder"));
  for (const char16_t* name : {u"hidden.txt", u"system.txt", u"folder"}) {
    EXPECT_TRUE(zel_GetFileContentsEx(path(name), ZEL_ErrorMode_None).isNull());
    EXPECT_EQ(zel_GetFileContentsAsString(path(name)), u"");
  }
  EXPECT_EQ(zel_GetFileContentsAsString(put(u"readonly.txt", "x", FileAttribute::ReadOnly)), u"x");
}

TEST_F(FileContents, AFailureToReadIsShownAndRaisedAsItIs) {
  FailingFiles locked("readWhole", ErrorNumber::PermissionDenied);
  const String file = put(u"a.txt", "x");
  const Replaced<Files> replaced(locked);
  EXPECT_TRUE(zel_GetFileContents(file).isNull());
  EXPECT_THAT(boxes,
              ElementsAre("48|Read Error|The requested file could not be read:     \r\nFile:\ta.txt   \r\n"
                          "Error:\tPermission denied   "));
  EXPECT_EQ(raised([&] { zel_GetFileContentsAsStringEx(file, ZEL_ErrorMode_Raise); }),
            "70 Permission denied");
}

TEST_F(FileContents, AnErrorModeActsByItsTwoLowestBits) {
  const auto mode = [](int bits) { return static_cast<ZEL_ErrorModes>(bits); };
  EXPECT_TRUE(zel_GetFileContentsEx(path(u"no.txt"), mode(4)).isNull());
  EXPECT_THAT(boxes, IsEmpty());
  EXPECT_NE(raised([&] { zel_GetFileContentsEx(path(u"no.txt"), mode(7)); }), "");
  EXPECT_EQ(boxes.size(), 1U);
}

// Writing

TEST_F(FileContents, BytesAreWrittenWholeOverWhatWasThere) {
  const String file = put(u"a.bin", "a much longer text");
  zel_PutFileContents(bytes({"\0b", 2}), file);
  EXPECT_EQ(bytesIn(file), std::string("\0b", 2));
  zel_PutFileContents(bytes(""), file);
  EXPECT_EQ(bytesIn(file), "");
  zel_PutFileContents(bytes("new"), path(u"new.bin"));
  EXPECT_EQ(bytesIn(path(u"new.bin")), "new");
}

TEST_F(FileContents, TextIsWrittenInTheCodePageWithNothingBehindIt) {
  zel_PutFileContentsFromString(u"caf\u00E9 \u20AC \u4E2D", path(u"a.txt"));
  EXPECT_EQ(bytesIn(path(u"a.txt")), "caf\xE9 \x80 ?");
}

TEST_F(FileContents, BytesGoIntoAHiddenFileInPlaceAndTextReplacesIt) {
  const String file = put(u"a.bin", "0123456789", FileAttribute::Hidden);
  zel_PutFileContents(bytes("ab"), file);
  EXPECT_EQ(bytesIn(file), "ab23456789");
  zel_PutFileContentsFromString(u"xyz", file);
  EXPECT_EQ(bytesIn(file), "xyz");
  EXPECT_EQ(files().attributes(file) & FileAttribute::Hidden, FileAttribute::Hidden);
}

TEST_F(FileContents, AReadOnlyFileIsReportedAndUntouched) {
  const String file = put(u"a.txt", "old", FileAttribute::ReadOnly);
  zel_PutFileContentsFromString(u"new", file);
  zel_PutFileContents(bytes("new"), file);
  EXPECT_EQ(bytesIn(file), "old");
  const std::string box =
      "48|Write Error|The requested file could not be written:     \r\nFile:\ta.txt   \r\n"
      "Error:\tPath/File access error   ";
  EXPECT_THAT(boxes, ElementsAre(box, box));
  EXPECT_EQ(raised([&] { zel_PutFileContentsFromStringEx(u"new", file, ZEL_ErrorMode_Raise); }),
            "75 Path/File access error");
}

TEST_F(FileContents, AFullDiskLeavesTheOldContents) {
  const String file = put(u"a.txt", "old");
  FailingFiles full("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(full);
  EXPECT_EQ(raised([&] { zel_PutFileContentsFromStringEx(u"new", file, ZEL_ErrorMode_Raise); }),
            "61 Disk full");
  EXPECT_EQ(raised([&] { zel_PutFileContentsEx(bytes("new"), file, ZEL_ErrorMode_ShowAndRaise); }),
            "61 Disk full");
  EXPECT_EQ(bytesIn(file), "old");
  EXPECT_EQ(boxes.size(), 1U);
}

TEST_F(FileContents, AFolderThatIsNotThereIsReported) {
  EXPECT_EQ(raised([&] { zel_PutFileContentsFromStringEx(u"x", path(u"no\\a.txt"), ZEL_ErrorMode_Raise); }),
            "76 Path not found");
}

TEST_F(FileContents, WildcardsDestroyNothing) {
  const String file = put(u"a.txt", "old");
  zel_PutFileContentsFromStringEx(u"new", path(u"*.txt"), ZEL_ErrorMode_None);
  zel_PutFileContentsEx(bytes("new"), path(u"?.txt"), ZEL_ErrorMode_None);
  EXPECT_EQ(bytesIn(file), "old");
}

TEST_F(FileContents, OnlyBytesCanBeWrittenAsBytes) {
  EXPECT_EQ(raised([&] { zel_PutFileContentsEx(ArrayData::ofVariants({}), path(u"a"), ZEL_ErrorMode_None); }),
            "13 Type mismatch");
  EXPECT_FALSE(files().fileExists(path(u"a")));
}

// Line ends

class LineEnds : public FileContents {
 protected:
  // What a file becomes; "unchanged" where it is not rewritten.
  std::string rewritten(std::string_view text) {
    const String file = put(u"a.txt", text);
    const std::int16_t result = zel_RewriteFileLFtoCRLF(file);
    EXPECT_TRUE(result == 1 || bytesIn(file) == text);
    return result == 1 ? bytesIn(file) : result == 0 ? "unchanged" : std::to_string(result);
  }
};

TEST_F(LineEnds, BareLineFeedsBecomeCrLf) {
  EXPECT_EQ(rewritten("a\nb\n"), "a\r\nb\r\n");
  EXPECT_EQ(rewritten("\n"), "\r\n");
  EXPECT_EQ(rewritten("a\n\nb"), "a\r\n\r\nb");
}

TEST_F(LineEnds, FilesWithoutBareLineFeedsStay) {
  EXPECT_EQ(rewritten("a\r\nb\r\n"), "unchanged");
  EXPECT_EQ(rewritten("a\rb"), "unchanged");
  EXPECT_EQ(rewritten("a\r\r\n"), "unchanged");
  EXPECT_EQ(rewritten(""), "unchanged");
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

TEST_F(LineEnds, BytesOfAnyValueStay) { EXPECT_EQ(rewritten("\x81\xE9\n\xFF"), "\x81\xE9\r\n\xFF"); }

TEST_F(LineEnds, ANewPathTakesTheRewrittenTextIfThereIsAny) {
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"a.txt", "a\nb"), path(u"b.txt")), 1);
  EXPECT_EQ(bytesIn(path(u"a.txt")), "a\nb");
  EXPECT_EQ(bytesIn(path(u"b.txt")), "a\r\nb");
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"c.txt", "a\r\nb"), path(u"d.txt")), 0);
  EXPECT_FALSE(files().fileExists(path(u"d.txt")));
}

TEST_F(LineEnds, AFailureIsReturnedByItsNumber) {
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(path(u"no.txt")), 53);
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"r.txt", "a\nb", FileAttribute::ReadOnly)), 75);
  const String file = put(u"a.txt", "a\nb");
  FailingFiles full("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(full);
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(file), 61);
  EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(LineEnds, AFailureWhoseNumberNeedsMoreThan16BitsOverflows) {
  FailingFiles foreign("readWhole", objectErrorBase + 1);
  const Replaced<Files> replaced(foreign);
  EXPECT_EQ(raised([] { zel_RewriteFileLFtoCRLF(u"a.txt"); }), "6 Overflow");
}

// Late-bound

TEST_F(FileContents, TheOperationsAreGlobalWithTheirOwnDefaults) {
  ClassRegistry registry;
  registerFiles(registry);
  const auto call = [&registry](StringView name, std::vector<Variant> arguments) {
    const auto operation = registry.findOperation(name);
    return ClassRegistry::instance(*operation->functionClass)->Invoke(name, InvokeKind::Method, arguments);
  };
  const String missing = path(u"no.txt");
  EXPECT_TRUE(call(u"zel_GetFileContentsEx", {missing}).isNull());
  EXPECT_EQ(boxes.size(), 1U);
  EXPECT_EQ(call(u"zel_GetFileContentsAsStringEx", {missing}).text(), u"");
  EXPECT_EQ(boxes.size(), 1U);
  call(u"zel_PutFileContents", {Variant(bytes("a\nb")), path(u"a.txt")});
  EXPECT_EQ(toLong(call(u"zel_RewriteFileLFtoCRLF", {path(u"a.txt")})), 1);
  EXPECT_EQ(call(u"zel_GetFileContentsAsString", {path(u"a.txt")}).text(), u"a\r\nb");
  call(u"zel_PutFileContentsFromStringEx", {u"x", path(u"no\\a.txt")});
  EXPECT_EQ(boxes.size(), 2U);
}

}  // namespace
}  // namespace zelUtilities
