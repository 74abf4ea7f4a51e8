// What the builder does when something fails: what it raises, what it reports, and that it keeps what it had.
#include <gtest/gtest.h>

#include <limits>

#include "automation/Collection.h"
#include "foundation/ErrorWatch.h"
#include "foundation/LogFixture.h"
#include "support/RaisedError.h"
#include "text/zelStringCat.h"

namespace zelUtilities {
namespace {

constexpr std::int32_t longest = std::numeric_limits<std::int32_t>::max();

std::string complete(const zelStringCat& builder) { return toUtf8(builder.Complete()); }

// Views that claim to be as long as a text may be, and longer; their characters are never read.
const char16_t* volatile nowhere = u"x";
StringView longestText() { return {nowhere, longest}; }
StringView endless() { return {nowhere, static_cast<std::size_t>(longest) + 1}; }

// Whatever fails, the builder keeps its text.
class StringCatFailure : public ::testing::Test {
 protected:
  StringCatFailure() { builder.ConcatenatePart(u"ab"); }
  ~StringCatFailure() override { EXPECT_EQ(complete(builder).substr(0, 2), "ab"); }

  zelStringCat builder;
  std::string reports;  // without the class: "operation number own source;"

  // What the body raises, as "number|source".
  template <class Body>
  static std::string raised(const Body& body) {
    const std::string error = raisedError(body);
    return error.substr(0, error.rfind('|'));
  }

 private:
  ErrorWatch watch_{[this](const ErrorReport& report) {
    reports += toUtf8(report.source).substr(13) + " " + std::to_string(report.number) + " " +
               toUtf8(report.errorSource) + ";";
  }};
};

TEST_F(StringCatFailure, AStartBelowOneIsAnInvalidCall) {
  EXPECT_EQ(raised([&] { builder.Find(u"a", 0); }), "5|zelStringCat.Find");
  EXPECT_EQ(raised([&] { builder.Replace(u"a", u"b", -1); }), "5|zelStringCat.Replace");
  EXPECT_EQ(raised([&] { builder.Find(u"a", 1, 2); }), "5|zelStringCat.Find");
  EXPECT_EQ(reports, "Find 5 ;Replace 5 ;Find 5 ;");
}

TEST_F(StringCatFailure, ATextBeyond32BitsOverflowsUnderTheOperationsOwnName) {
  EXPECT_EQ(raised([&] { builder.CheckBufferSize(longest - 1); }), "6|zelStringCat.CheckBufferSize");
  EXPECT_EQ(builder.capacity(), 2048);
  EXPECT_EQ(raised([&] { builder.ConcatenatePart(longestText()); }),
            "6|zelStringCat.ConcatenatePart::zelStringCat.CheckBufferSize");
  EXPECT_EQ(raised([&] { builder.ConcatenatePart(endless()); }), "6|zelStringCat.ConcatenatePart");
  EXPECT_EQ(raised([&] { builder.Replace(u"a", longestText()); }),
            "6|zelStringCat.Replace::zelStringCat.CheckBufferSize");
  EXPECT_EQ(
      reports,
      "CheckBufferSize 6 ;CheckBufferSize 6 ;ConcatenatePart 6 zelStringCat.CheckBufferSize;ConcatenatePart "
      "6 ;CheckBufferSize 6 ;Replace 6 zelStringCat.CheckBufferSize;");
}

TEST_F(StringCatFailure, ConcatenateDropsTheEarlierSourceAndMissesATInItsOwn) {
  EXPECT_EQ(raised([&] { builder.Concatenate(endless()); }), "6|zelSringCat.Concatenate");
  EXPECT_EQ(raised([&] { builder.ConcatenateCRLF(endless()); }), "6|zelSringCat.Concatenate");
  EXPECT_EQ(reports, "ConcatenatePart 6 ;ConcatenatePart 6 ;");
}

TEST_F(StringCatFailure, XmlOperationsThatGoStepByStepOnlyLog) {
  builder.StartElement(endless());
  builder.StartElement(u"A");
  builder.AddAttribute(endless(), u"v");
  builder.AddAttribute(u"a", u"v", Variant(Ref<Object>(make<Collection>())));
  builder.FinishElementEx(false, u"v");
  EXPECT_EQ(complete(builder), "ab<<A >v</A>\r\n");
  EXPECT_EQ(reports,
            "ConcatenatePart 6 ;StartElement 6 zelStringCat.ConcatenatePart;ConcatenatePart 6 ;AddAttribute "
            "6 zelSringCat.Concatenate;AddAttribute 449 ;");
}

TEST_F(LogTest, InDebugModeTwoWhatDoesNotFitIsLeftOut) {
  setUser(u"ConDebug", "2");
  zelStringCat builder;
  builder.ConcatenatePart(u"ab");
  builder.ConcatenatePart(longestText());
  builder.Replace(u"a", longestText());
  builder.ConcatenatePart(u"c");
  EXPECT_EQ(complete(builder), "abc");
  EXPECT_EQ(builder.Find(u"a", 0), 0);
}

}  // namespace
}  // namespace zelUtilities
