#include "common/text.h"

#include <gtest/gtest.h>

#include <utility>

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

TEST(Text, IsTakenLineByLine) {
  std::string_view rest = "a\r\nb\rc\n\n\xE2\x9A\xA1";
  for (const char* line : {"a", "b", "c", "", "\xE2\x9A\xA1"}) EXPECT_EQ(TakeLine(rest), line);
  EXPECT_EQ(rest, "");
  EXPECT_EQ(TakeLine(rest), "");
}

TEST(Text, IsCountedInUtf8Characters) {
  const std::pair<std::string_view, std::size_t> cases[] = {
      {"a", 1},
      {"\xC3\xA9x", 2},
      {"\xE2\x9A\xA1", 3},
      {"\xF0\x9F\x93\xA1x", 4},
      {"\xA9\xC3", 1},
      {"\xC3x", 1},
      {"\xE2\x9A", 1},
      {"\xC0\x80", 1},
      {"\xF5\x80\x80\x80", 1},
  };
  for (const auto& [text, size] : cases) EXPECT_EQ(CharacterSize(text), size) << text;
}

}  // namespace
}  // namespace skyhop
