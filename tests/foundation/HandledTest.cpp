#include "foundation/Handled.h"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

#include "foundation/LogFixture.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(LogTest, WhateverAnOperationThrowsIsLoggedAndSwallowed) {
  handled(u"zelX.Op", [] { throw Error(457); });
  handled(u"zelX.Op", [] { throw std::bad_alloc(); });
  handled(u"zelX.Op", [] { throw std::runtime_error("gone"); });
  handled(u"zelX.Op", [] { throw 1; });
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|zelX.Op|457||This key is already"),
                                 HasSubstr("|zelX.Op|7||Out of memory|"), HasSubstr("|zelX.Op|51||gone|"),
                                 HasSubstr("|zelX.Op|51||Internal error|")));
}

TEST_F(LogTest, AnOperationThatRaisesAgainLogsEveryLevelAndChainsTheSource) {
  const auto inner = [] { handledAndRaised(u"inner", [] { throw Error(9, u"S", u"d"); }); };
  try {
    handledAndRaised(u"outer", inner);
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.source(), u"outer::inner::S");
    EXPECT_EQ(error.number(), 9);
  }
  EXPECT_THAT(calls, ElementsAre(HasSubstr("|inner|9|S|d|"), HasSubstr("|outer|9|inner::S|d|")));
}

TEST_F(LogTest, InDebugModeTwoAnOperationThatRaisesAgainReturns) {
  setUser(u"ConDebug", "2");
  EXPECT_NO_THROW(handledAndRaised(u"inner", [] { throw Error(9); }));
}

TEST_F(LogTest, AModulesRoutineChainsTheSourceWithoutLogging) {
  const auto inner = [] {
    return chained(u"mFiles.FileDelete", []() -> int { throw Error(53, u"S", u"d"); });
  };
  try {
    chained(u"mFiles.Clean", inner);
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.source(), u"mFiles.Clean::mFiles.FileDelete::S");
    EXPECT_EQ(error.number(), 53);
    EXPECT_EQ(error.description(), u"d");
  }
  EXPECT_THAT(calls, IsEmpty());
}

}  // namespace
}  // namespace zelUtilities
