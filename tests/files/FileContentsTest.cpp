#include "automation/Binder.h"
#include "files/FilesClasses.h"
#include "files/FilesFixture.h"
#include "files/zelFiles.h"
#include "platform/LateBound.h"

namespace zelUtilities {
namespace {

constexpr int none = ZEL_ErrorMode_None, show = ZEL_ErrorMode_Show, raise = ZEL_ErrorMode_Raise,
              both = ZEL_ErrorMode_ShowAndRaise;

Ref<ArrayData> bytes(std::string_view text) {
  return ArrayData::ofBytes({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

Variant writeBytes(StringView file, ZEL_ErrorModes mode) {
  return zel_PutFileContentsEx(bytes("new"), file, mode), Variant();
}
Variant writeText(StringView file, ZEL_ErrorModes mode) {
  return zel_PutFileContentsFromStringEx(u"new", file, mode), Variant();
}

struct Row {
  std::string before;
  StringView file;
  int mode;
  std::string asBytes, asText;
  // The call of the file system that fails and its error.
  std::string call = {};
  std::int32_t number = 0;
};

class FileContents : public FilesFixture {
 protected:
  template <class Bytes, class Text>
  void expectRows(const std::vector<Row>& rows, const Bytes& ofBytes, const Text& ofText) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.before + ", mode " + std::to_string(row.mode));
      const String file = path(row.file);
      const auto mode = static_cast<ZEL_ErrorModes>(row.mode);
      const auto asBytes = [&] { return ofBytes(file, mode); };
      const auto asText = [&] { return ofText(file, mode); };
      EXPECT_EQ(resultOver(row.before, asBytes, row.call, row.number), row.asBytes);
      EXPECT_EQ(resultOver(row.before, asText, row.call, row.number), row.asText);
    }
  }
  std::string rewritten(std::string_view text) {
    const std::int16_t result = zel_RewriteFileLFtoCRLF(put(u"a.txt", text));
    EXPECT_TRUE(result == 1 || bytesIn(u"a.txt") == text);
    return result == 1 ? bytesIn(u"a.txt") : std::to_string(result);
  }
};

const std::string readBox = "[48|Read Error|The requested file could not be read:     \r\nFile:\ta   \r\n";
const std::string writeBox =
    "[48|Write Error|The requested file could not be written:     \r\nFile:\ta   \r\n";

TEST_F(FileContents, EveryByteComesBackFromTextInTheCodePage) {
  std::string all = "caf\xE9 \x80\r\n";
  EXPECT_EQ(zel_GetFileContentsAsString(put(u"a.txt", all)), u"caf\u00E9 \u20AC\r\n");
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  zel_PutFileContentsFromString(zel_GetFileContentsAsString(put(u"a.txt", all)), path(u"b.txt"));
  EXPECT_EQ(bytesIn(u"b.txt"), all);
  zel_PutFileContentsFromString(u"x\u4E2D", path(u"b.txt"));
  EXPECT_EQ(bytesIn(u"b.txt"), "x?");
  const Variant contents = zel_GetFileContents(put(u"a.txt", {"\0\xFFz", 3}));
  EXPECT_THAT(contents.array().bytes(), ElementsAre(0, 255, 'z'));
  EXPECT_EQ(contents.array().bounds().at(0).lower, 0);
}

TEST_F(FileContents, WhatCannotBeReadIsEmptyAndReportedAsTheModeSays) {
  // That there is no such file has no description, and is raised as an invalid call.
  const std::string missing = readBox + "Error:\t   ]", invalidCall = "5||Invalid procedure call or argument";
  const std::string denied = readBox + "Error:\tPermission denied   ]",
                    raised = "70||Permission denied" + denied;
  expectRows({{"", u"a", show, "Null" + missing, missing},
              {"", u"a", raise, invalidCall, invalidCall},
              {"", u"a", 4, "Null", ""},  // only the two lowest bits count
              {"", u"a", 7, invalidCall + missing, invalidCall + missing},
              {"a:h", u"a", none, "Null", ""},
              {"a:s", u"a", none, "Null", ""},
              {"a\\", u"a", none, "Null", ""},
              {"a=z:r", u"a", both, "Byte()", "z"},
              {"a=", u"a", both, "", ""},  // an empty text either way
              {"a", u"a", show, "Null" + denied, denied, "readWhole", 70},
              {"a", u"a", both, raised, raised, "readWhole", 70}},
             zel_GetFileContentsEx, zel_GetFileContentsAsStringEx);
}

TEST_F(FileContents, WritingReplacesTheWholeFileOrLeavesTheOldContents) {
  const std::string box = writeBox + "Error:\tPath/File access error   ]";
  const std::string denied = "75||Path/File access error" + box, full = "61||Disk full";
  const std::string badName = "52||Bad file name or number", noPath = "76||Path not found";
  expectRows({{"a=longer", u"a", both, " -> a=new", " -> a=new"},
              {"a=longer:h", u"a", both, " -> a=newger:h", " -> a=new:h"},  // bytes go into it in place
              {"a=old:r", u"a", show, box, box},
              {"a=old:r", u"a", both, denied, denied},
              {"", u"no\\a", raise, noPath, noPath},
              {"b", u"*", raise, badName, badName},
              {"a=old", u"a", raise, full, full, "replaceWhole", ErrorNumber::DiskFull}},
             writeBytes, writeText);
}

TEST_F(FileContents, BytesAreWrittenFromArraysOfBytesOnly) {
  for (const std::string& contents : {std::string("\0\xFFz", 3), std::string()}) {
    zel_PutFileContents(bytes(contents), put(u"a"));
    EXPECT_EQ(bytesIn(u"a"), contents);
  }
  const auto noBytes = ArrayData::ofVariants({});
  EXPECT_EQ(raisedError([&] { zel_PutFileContentsEx(noBytes, put(u"a"), {}); }), "13||Type mismatch");
  EXPECT_EQ(treeIn(folder), "a");
}

TEST_F(FileContents, BareLineFeedsBecomeCrLf) {
  for (const char* text : {"a\r\nb\r\n", "a\rb", "a\r\r\n", ""}) EXPECT_EQ(rewritten(text), "0");
  EXPECT_EQ(rewritten("a\nb\n") + rewritten("\n"), "a\r\nb\r\n\r\n");
  EXPECT_EQ(rewritten("\x81\n\n\xFF"), "\x81\r\n\r\n\xFF") << "bytes of any value stay";
  EXPECT_EQ(rewritten("a\nb\r\n"), "a\r\nb") << "the last line loses its end";
  EXPECT_EQ(rewritten("a\rb\nc"), "a\r\nb\r\nc") << "a lone CR ends a line";
  EXPECT_EQ(rewritten("a\n\r\r\nb"), "a\r\n\r\n\r\nb");
  EXPECT_EQ(rewritten("\r\n\r\na\nb"), "a\r\nb") << "empty lines at the beginning are dropped";
  EXPECT_EQ(rewritten("\r\n\na"), "\r\na");
}

TEST_F(FileContents, ANewPathTakesTheRewrittenTextAndAFailureIsReturnedByItsNumber) {
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"a", "1\n2"), path(u"b")), 1);
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(put(u"c", "1\r\n2"), path(u"d")), 0);
  EXPECT_EQ(treeIn(folder), "a=1\n2 b=1\r\n2 c=1\r\n2");
  EXPECT_EQ(zel_RewriteFileLFtoCRLF(path(u"no.txt")), 53);
  for (const auto& [call, number, result] :
       {std::tuple("replaceWhole", 75, "75"), {"readWhole", objectErrorBase + 1, "6||Overflow"}}) {
    FailingFiles failing(call, number);
    const Replaced<Files> replaced(failing);
    EXPECT_EQ(outcome([&] { return zel_RewriteFileLFtoCRLF(path(u"a")); }), result) << "beyond 16 bits";
  }
}

TEST_F(FileContents, TheOperationsAreGlobalWithTheirOwnDefaults) {
  ClassRegistry registry;
  registerFiles(registry);
  const Variant no = path(u"no"), file = path(u"a");
  const auto called = [&](StringView name, const auto&... arguments) {
    const LateBound functions(ClassRegistry::instance(*registry.findOperation(name)->functionClass));
    const std::string result = outcome([&] { return functions(name, arguments...); });
    return result.substr(0, result.size() - boxes.size()) + (boxes.empty() ? "" : " shown");
  };
  for (const StringView name : {u"zel_GetFileContents", u"zel_GetFileContentsEx"})
    EXPECT_EQ(called(name, no), "Null shown");
  for (const StringView name : {u"zel_GetFileContentsAsString", u"zel_GetFileContentsAsStringEx"})
    EXPECT_EQ(called(name, no), "");
  EXPECT_EQ(called(u"zel_PutFileContents", bytes("a\nb"), file), "");
  EXPECT_EQ(called(u"zel_RewriteFileLFtoCRLF", file), "1");
  EXPECT_EQ(bytesIn(u"a"), "a\r\nb");
  EXPECT_EQ(called(u"zel_PutFileContentsFromStringEx", u"x", path(u"no\\a")), " shown");
}

}  // namespace
}  // namespace zelUtilities
