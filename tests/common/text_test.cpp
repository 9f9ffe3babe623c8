#include "common/text.h"

#include <gtest/gtest.h>

namespace skyhop {
namespace {

TEST(Text, IsTrimmedOfSpacesAndTabsOnly) {
  EXPECT_EQ(Trim(" \t a b \t"), "a b");
  EXPECT_EQ(Trim(" \t "), "");
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim("\r\nx\n"), "\r\nx\n");
}

TEST(Text, ChangesCaseOfAsciiLettersAlone) {
  EXPECT_EQ(UpperCase("az{`\xC3\xA9 1"), "AZ{`\xC3\xA9 1");
  EXPECT_EQ(LowerCase("AZ[@\xC3\x89 1"), "az[@\xC3\x89 1");
  EXPECT_TRUE(EqualsIgnoringCase("WindowState", "Windowstate"));
  EXPECT_FALSE(EqualsIgnoringCase("Window", "WindowState"));
  EXPECT_FALSE(EqualsIgnoringCase("\xC3\xA9", "\xC3\x89"));
  EXPECT_FALSE(EqualsIgnoringCase("[", "{"));
}

TEST(Text, IsReplacedOnceFromLeftToRight) {
  EXPECT_EQ(ReplaceAll("a.b.c", ".", ","), "a,b,c");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceAll("x", "x", "xx"), "xx");
  EXPECT_EQ(ReplaceAll("none", "x", "y"), "none");
}

}  // namespace
}  // namespace skyhop
