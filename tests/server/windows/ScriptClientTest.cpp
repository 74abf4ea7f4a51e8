// The library as scripts use it: each file under scripts/ in its engine.
#include <gtest/gtest.h>

#include "server/windows/ScriptHost.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

class ScriptClient : public testing::TestWithParam<const wchar_t*> {};

TEST_P(ScriptClient, FindsWhatItExpects) {
  const ServerUnderTest server;
  const ScriptOutcome outcome = runScript(GetParam());
  EXPECT_EQ(outcome.complaints, "");
  EXPECT_TRUE(outcome.isFinished);
  EXPECT_GT(outcome.checks, 0);
}

INSTANTIATE_TEST_SUITE_P(, ScriptClient,
                         testing::Values(L"calls.vbs", L"errors.vbs", L"events.vbs", L"calls.js",
                                         L"translate.js"),
                         [](const auto& script) {
                           std::string name = utf8(script.param);
                           name[name.find('.')] = '_';
                           return name;
                         });

// A test that could not fail would be none.
TEST(ScriptHostItself, TellsOfDifferencesAndErrors) {
  const ServerUnderTest server;
  const ScriptOutcome outcome = runScript(L"failing.vbs");
  EXPECT_EQ(outcome.complaints.substr(0, outcome.complaints.find('\n')), "wrong: is <1>, expected <2>");
  EXPECT_NE(outcome.complaints.find("line 3: "), std::string::npos) << outcome.complaints;
  EXPECT_FALSE(outcome.isFinished);
}

}  // namespace
}  // namespace zelUtilities
