#include "text/transform.hpp"

#include <gtest/gtest.h>

namespace nivaro {
namespace {

TEST(Transform, ChangesCharacters) {
  const struct {
    std::string (*transform)(std::string_view);
    std::string_view text, expected;
  } cases[] = {
      {trimF, "  a b ", "a b"},
      {upperCase, "az{`\xE9 1", "AZ{`\xE9 1"},
      {lowerCase, "AZ[@\xC9 1", "az[@\xC9 1"},
      {removeSpaces, " a b\tc ", "ab\tc"},
      {removeQuotes, "\"it's\" ", "its"},
      {doubleQuote, "a\"b\"\" ", "a\"\"b\"\"\"\""},
      {spaceToUnderscore, " a b  ", "_a_b"},
      {spaceToUnderscore, "  ", "Blank"},
      {cleanAttributeName, "Bed-Level (m)_1", "BedLevelm_1"},
      {cleanAttributeName, "-+!", "X"},
  };
  for (const auto& [transform, text, expected] : cases) {
    EXPECT_EQ(transform(text), expected) << text;
  }
}

TEST(Transform, KeepsLettersAndDigits) {
  EXPECT_EQ(alphanumericOnly("a b-1 ", '_'), "a_b_1");
  EXPECT_EQ(alphanumericOnly("a b-1 ", '\0'), "ab1");
  EXPECT_EQ(alphanumericOnly("-+", '\0'), "X");
  EXPECT_EQ(alphanumericOnly("-+", ' '), "X");
  EXPECT_EQ(alphanumericOnly("  ", '_'), "X");
}

TEST(Transform, FindsBlankTextsBehindTabs) {
  std::string tabs = "\t \t";
  std::string word = "\ta\tb";

  EXPECT_TRUE(blank(tabs));
  EXPECT_EQ(tabs, " ");
  EXPECT_FALSE(blank(word));
  EXPECT_EQ(word, "ab");
}

TEST(Transform, EndsATextForHostsThatLookForCodeZero) {
  std::string padded("ab \0 ", 5);
  std::string full = "abc";
  std::string nothing = "  ";

  EXPECT_EQ(lensl(padded), 2);
  EXPECT_EQ(padded, std::string("ab\0\0 ", 5));
  EXPECT_EQ(lensl(full), 3);
  EXPECT_EQ(full, "abc");
  EXPECT_EQ(lensl(nothing), 0);
  EXPECT_EQ(nothing, std::string("\0 ", 2));
}

TEST(Transform, Replaces) {
  EXPECT_EQ(replace("one ONE two", "One ", "3 "), "3 ONE two");
  EXPECT_EQ(replaceAll("one ONE two", "One ", "3 "), "3 3 two");
  EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replaceAll("aa", "a", "xax"), "xaxxax");  // goes on behind what it put in
  EXPECT_EQ(replaceAll("a-b-", "-", " "), "ab");      // a blank new text is nothing
  EXPECT_EQ(replace("abc", "x", "y"), "abc");
  EXPECT_EQ(replace("abc", " ", "y"), "abc");
  EXPECT_EQ(ss256(std::string(300, 'a')), std::string(256, 'a'));
}

}  // namespace
}  // namespace nivaro
