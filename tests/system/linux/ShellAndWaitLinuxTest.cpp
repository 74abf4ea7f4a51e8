#include <gtest/gtest.h>

#include "foundation/ErrorWatch.h"
#include "platform/Files.h"
#include "system/zelMisc.h"

namespace zelUtilities {
namespace {

TEST(ShellAndWaitLinux, ProgramsGetTheirArgumentsAsTheLineQuotesThem) {
  const std::pair<StringView, const char*> cases[] = {
      {u"a \t \"b c\" d", "<a><b c><d>"},
      {u"\"\" x\"y z\"x", "<><xy zx>"},
      {u"a\\\\b \\\"c d\\\\\\\"e", "<a\\\\b><\"c><d\\\"e>"},  // backslashes count before marks alone
      {u"\"a\\\\\" \"b\"\"c\" d\"\"\"", "<a\\><b\"c><d\">"},
      {u"$HOME * `id` ;x >y", "<$HOME><*><`id`><;x><>y>"},  // no shell reads them
      {u"\u00E9\u4E2D \"open end ", "<\u00E9\u4E2D><open end >"}};
  for (const auto& [arguments, expected] : cases) {
    EXPECT_TRUE(zel_ShellAndWait(u"sh -c \"printf '<%s>' \\\"$@\\\" >said\" sh " + String(arguments)));
    EXPECT_EQ(files().readWhole(u"said"), expected);
  }
}

TEST(ShellAndWaitLinux, NamesMayHoldBlanksQuotedOrNotAndBeWindowsPaths) {
  files().createFolder(u"My Programs");
  EXPECT_TRUE(zel_ShellAndWait(u"cp /bin/sh \"My Programs/my sh\""));
  EXPECT_TRUE(zel_ShellAndWait(u"\"My Programs/my sh\" -c \"echo 1 >>count; exit 3\""));
  EXPECT_TRUE(zel_ShellAndWait(u"My Programs\\MY SH -c \"echo 2 >>count; kill -9 $$\""));
  EXPECT_TRUE(zel_ShellAndWait(u"Z:\\bin\\sh -c \"sleep 0.1; echo 3 >>count\""));
  EXPECT_EQ(files().readWhole(u"count"), "1\n2\n3\n");
}

TEST(ShellAndWaitLinux, WhatIsNoProgramDoesNotStart) {
  std::vector<std::int32_t> numbers;
  const ErrorWatch watch([&](const ErrorReport& report) { numbers.push_back(report.number); });
  files().replaceWhole(u"text", "echo 1");
  for (const StringView line :
       {u"no-such-program -x", u"\"sh -c true\"", u"/", u"./text", u"\\\\host\\sh", u"*"})
    EXPECT_FALSE(zel_ShellAndWait(line)) << toUtf8(line);
  EXPECT_FALSE(zel_ShellAndWait(u"none" + String(100000, u' ') + u"x"));
  EXPECT_EQ(numbers, (std::vector{53, 53, 75, 75, 53, 53, 53}));
}

}  // namespace
}  // namespace zelUtilities
