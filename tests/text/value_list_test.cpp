#include "text/value_list.hpp"

#include <gtest/gtest.h>

#include "text/transform.hpp"

namespace nivaro {
namespace {

std::string item(const std::string& line, const std::string& key, std::int32_t column) {
  const auto found = extractString(line, lowerCase(line), key, column);
  return found ? found.value() : found.report().line1;
}

TEST(ValueList, FindsItems) {
  const struct {
    std::string line, key;
    std::int32_t column;
    std::string expected;
  } cases[] = {
      {"D50 = 0.2, 0.3", "d50", 1, "0.2"},
      {"D50=0.2, 0.3", "D50 ", 2, "0.3"},
      {"D50 = 0.2, 0.3", "d50", 3, ""},
      {"D50 = 0.2, 0.3", "d50", 0, "0.2"},  // below 1 is the first item
      {"a, b c ,d", "key", 2, "b c"},       // no key: the whole line
      {"a, b c ,d", "key", 0, ""},          // neither key nor column
      {"x D50 mm = 7", "d50", 1, "7"},      // the first "=" behind the key
      {"x=1 D50=7", "d50", 1, "7"},
      {"k = \"a,b\", c", "k", 1, "a,b"},
      {"k = \"a,b\", c", "k", 2, "c"},
      {"k = \"a\"\",b\", c", "k", 1, "a,b"},  // a doubled quote does not close
      {"k = \"\", c", "k", 2, "c"},           // an empty quoted item does
      {"k = 'a\", b, c", "k", 2, "b"},        // either quote closes
      {"k = 'a''b', c", "k", 2, "c"},
      {"k = \"a, b", "k", 1, "a, b"},  // a quote left open takes the rest
      {"k = a,,c", "k", 2, ""},
      {"k = a,", "k", 2, ""},
  };
  for (const auto& [line, key, column, expected] : cases) {
    EXPECT_EQ(item(line, key, column), expected) << line << " / " << column;
  }
}

TEST(ValueList, GivesTheWholeRemainder) {
  const std::string line = "Title = \"Bed, sand\", 'x'  ";

  EXPECT_EQ(extractStringRem(line, lowerCase(line), "title", 9).value(), "Bed, sand, x");
  EXPECT_EQ(extractStringRem(line, lowerCase(line), "name", 2).value(), "x");
  EXPECT_EQ(extractStringRem(line, lowerCase(line), "name", 0).value(), "");
}

TEST(ValueList, ReadsNumbersOrTheDefault) {
  const std::string line = "D50 = 0.2, , 3d2, \"7\", 5 apples, 2.5";
  const std::string lowered = lowerCase(line);

  EXPECT_EQ(extractReal(line, lowered, "d50", 1, 9.0).value(), 0.2);
  EXPECT_EQ(extractReal(line, lowered, "d50", 2, 9.0).value(), 9.0);
  EXPECT_EQ(extractReal(line, lowered, "d50", 3, 9.0).value(), 300.0);
  EXPECT_EQ(extractReal(line, lowered, "d50", 7, 9.0).value(), 9.0);
  EXPECT_EQ(extractReal(line, lowered, "none", 0, 9.0).value(), 9.0);
  EXPECT_EQ(extractInteger(line, lowered, "d50", 4, 9).value(), 7);  // quotes go before it is read
  EXPECT_EQ(extractInteger(line, lowered, "d50", 5, 9).value(), 5);
  EXPECT_FALSE(extractInteger(line, lowered, "d50", 6, 9));  // a point makes it no integer
}

TEST(ValueList, ReportsWhatItCannotRead) {
  const std::string line = "Code = 1, abc ", lowered = lowerCase(line);
  const auto integer = extractInteger(line, lowered, "code ", 2, 0);
  ASSERT_FALSE(integer);
  EXPECT_EQ(integer.report().line1,
            "ERROR 0010 - Could not convert \"abc\" in column  2 in line below to an integer value "
            "for the code field.");
  EXPECT_EQ(integer.report().detail1, "Line = Code = 1, abc");

  const auto real = extractReal(line, lowered, "none", 2, 0.0);
  ASSERT_FALSE(real);
  EXPECT_EQ(real.report().line1,
            "ERROR 0010 - Could not convert \"abc\" in column  2 in line below to a real value for "
            "the none field.");
  EXPECT_EQ(item("Code 1", "Code ", 1), "ERROR 0203 - No \"=\" sign found after keyword \"Code\".");
}

TEST(ValueList, ChecksNumbers) {
  double real = 0.0;
  std::int32_t integer = 0;
  EXPECT_TRUE(checkReal(" -1.5e1 m", real) && checkInt4("+12", integer));
  EXPECT_EQ(real, -15.0);
  EXPECT_EQ(integer, 12);
  EXPECT_FALSE(checkReal("m", real) || checkReal("  ", real) || checkInt4("12.0", integer));
}

}  // namespace
}  // namespace nivaro
