#include "text/transform.hpp"

#include <gtest/gtest.h>

#include <algorithm>

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
  for (const auto& [text, replacement] :
       {std::pair("-+", '\0'), std::pair("-+", ' '), std::pair("  ", '_')})
    EXPECT_EQ(alphanumericOnly(text, replacement), "X") << text;
}

TEST(Transform, FindsBlankTextsBehindTabs) {
  std::string tabs = "\t \t";
  std::string word = "\ta\tb";
  EXPECT_TRUE(blank(tabs));
  EXPECT_FALSE(blank(word));
  EXPECT_EQ(tabs + word, " ab");
}

TEST(Transform, EndsATextForHostsThatLookForCodeZero) {
  const std::pair<std::string, std::string> cases[] = {
      {std::string("ab \0 ", 5), std::string("ab\0\0 ", 5)},
      {"abc", "abc"},
      {"  ", std::string("\0 ", 2)},
  };
  for (const auto& [text, ended] : cases) {
    std::string changed = text;
    EXPECT_EQ(lensl(changed), std::min(ended.find('\0'), ended.size())) << text;
    EXPECT_EQ(changed, ended);
  }
}

TEST(Transform, Replaces) {
  EXPECT_EQ(replace("one ONE two", "One ", "3 "), "3 ONE two");
  EXPECT_EQ(replaceAll("one ONE two", "One ", "3 "), "3 3 two");
  EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replaceAll("aa", "a", "xax"), "xaxxax");  // goes on behind what it put in
  EXPECT_EQ(replaceAll("a -b -", "-", " "), "a b");   // a blank new text is nothing
  EXPECT_EQ(replace("abc", "x", "y"), "abc");
  EXPECT_EQ(replace("abc", " ", "y"), "abc");
  EXPECT_EQ(ss256(std::string(300, 'a')), std::string(256, 'a'));
}

}  // namespace
}  // namespace nivaro
