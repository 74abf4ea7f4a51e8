#include <gtest/gtest.h>

#include "platform/Files.h"
#include "support/Reports.h"
#include "system/zelMisc.h"

namespace zelUtilities {
namespace {

TEST(ShellAndWaitLinux, ProgramsGetTheirArgumentsAsTheLineQuotesThem) {
  const std::pair<StringView, const char*> cases[] = {
      {u"\"\" x\"y z\"x \t a", "<><xy zx><a>"},
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
  for (const StringView line :
       {u"cp /bin/sh \"My Programs/my sh\"", u"\"My Programs/my sh\" -c \"echo 1 >>count; exit 3\"",
        u"My Programs\\MY SH -c \"echo 2 >>count; kill -9 $$\"",
        u"Z:\\bin\\sh -c \"sleep 0.1; echo 3 >>count\""})
    EXPECT_TRUE(zel_ShellAndWait(line));
  EXPECT_EQ(files().readWhole(u"count"), "1\n2\n3\n");
}

TEST(ShellAndWaitLinux, WhatIsNoProgramDoesNotStart) {
  Reports reports{"zelMisc."};
  files().replaceWhole(u"text", "echo 1");
  const String overlong = u"none" + String(100000, u' ') + u"x";
  const std::pair<StringView, const char*> lines[] = {
      {u"no-such-program -x", "53"}, {u"\"sh -c true\"", "53"}, {u"/", "75"}, {u"./text", "75"},
      {u"\\\\host\\sh", "53"},       {overlong, "53"}};
  for (const auto& [line, number] : lines) {
    EXPECT_FALSE(zel_ShellAndWait(line)) << toUtf8(line);
    EXPECT_EQ(reports.taken(), std::string("zel_ShellAndWait|") + number + " ");
  }
}

}  // namespace
}  // namespace zelUtilities
