#include "gis_fixture.hpp"

namespace nivaro::gis::test {
namespace {

using testing::HasSubstr;

constexpr std::string_view kHeader =
    "Version 300\n"
    "Charset \"WindowsLatin1\"\n"
    "Delimiter \",\"\n"
    "CoordSys Earth Projection 8, 104, \"m\", 9, 0, 0.9996, 500000, 0\n"
    "Columns 2\n"
    "  Message Char(60)\n"
    "  Link Char(40)\n"
    "Data\n";

class Mif : public GisTest {
 protected:
  // What is written for one object, behind the header.
  std::string textOf(const Object& object) {
    LayerSettings wanted = settingsFor(LayerFormat::Mif, "t");
    wanted.coordSys = "CoordSys Earth Projection 8, 104, \"m\", 9, 0, 0.9996, 500000, 0";
    const std::int32_t layer = layers.gisOpenLayer(wanted);
    write(layer, object);
    layers.gisCloseLayer(layer);
    const std::string text = folder.read("t.mif");
    EXPECT_TRUE(text.starts_with(kHeader)) << text;
    return text.substr(std::min(text.size(), kHeader.size()));
  }
};

TEST_F(Mif, WritesEachKindOfObject) {
  // Coordinates stand in 16 columns with 6 decimals.
  const std::string a = "        1.500000       -2.250000";
  const std::string b = "        3.000000        4.000000";
  const std::vector<Vertex> ab = {{1.5, -2.25}, {3, 4}};
  const struct {
    Object object;
    std::string text;
  } cases[] = {
      {pointAt(1.5, -2.25), "Point " + a + "\n"},
      {objectOf(ObjectKind::Multipoint, ab), "MultiPoint 2\n" + a + "\n" + b + "\n"},
      {objectOf(ObjectKind::Line, ab), "Line " + a + b + "\n"},
      {objectOf(ObjectKind::Polyline, ab), "Pline 2\n" + a + "\n" + b + "\n"},
      {objectOf(ObjectKind::MultiplePolyline, {ab[0], ab[1], ab[1], ab[1], ab[0]}, {1, 3}),
       "Pline Multiple 2\n 2\n" + a + "\n" + b + "\n 3\n" + b + "\n" + b + "\n" + a + "\n"},
      {objectOf(ObjectKind::Region, {ab[0], ab[1], ab[0]}),
       "Region 1\n 3\n" + a + "\n" + b + "\n" + a + "\n"},
      {objectOf(ObjectKind::Region, {ab[0], ab[1], ab[0], ab[1], ab[1], ab[1]}, {0, 4}),
       "Region 2\n 3\n" + a + "\n" + b + "\n" + a + "\n 3\n" + b + "\n" + b + "\n" + b + "\n"},
      {objectOf(ObjectKind::Text, {{0, 0}, {1.5, -2.25}, {3, 4}}),
       "Text\n\"m\"\n"
       "               1.500          -2.250           3.000           4.000\n"},
      {kNullObject, "none\n"},
      // Too few vertices, in one part of two.
      {objectOf(ObjectKind::Polyline, {ab[0]}), "none\n"},
      {objectOf(ObjectKind::MultiplePolyline, {ab[0], ab[1], ab[0]}, {1, 2}), "none\n"},
      {objectOf(ObjectKind::Region, {ab[0], ab[1], ab[0], ab[1], ab[0]}, {1, 4}), "none\n"},
  };
  for (const auto& [object, text] : cases) EXPECT_EQ(textOf(object), text);
}

TEST_F(Mif, KeepsCoordinatesApartAndReadableWhateverTheirSize) {
  // -12345678.5 would fill all 16 columns, 1e10 would be asterisks.
  EXPECT_EQ(textOf(pointAt(1.0, -12345678.5)), "Point         1.000000 -12345678.500000\n");
  EXPECT_EQ(textOf(pointAt(1e10, 1.0)), "Point  10000000000.000000        1.000000\n");
  EXPECT_EQ(textOf(pointAt(1.0, std::numeric_limits<double>::infinity())), "none\n");
}

TEST_F(Mif, StyleLinesFollowObjectsButNotNullObjects) {
  const std::int32_t layer = openMif();
  layers.setStyle(layer, "    Symbol (35,0,12)  ", "");
  write(layer, pointAt(1, 2));
  write(layer, kNullObject);

  EXPECT_TRUE(folder.read("a.mif").ends_with(
      "Point         1.000000        2.000000\n    Symbol (35,0,12)\nnone\n"));
}

TEST_F(Mif, PairIsWholeAfterEachObjectAndEachRecord) {
  const std::int32_t layer = openMif();
  const Object point = pointAt(1, 2);

  // A host killed before the record leaves the object with a blank one.
  layers.gisWriteObject(layer, point);
  EXPECT_TRUE(folder.read("a.mif").ends_with("Data\nPoint         1.000000        2.000000\n"));
  EXPECT_EQ(folder.read("a.mid"), ",\n");

  const std::string first = "\"ERROR 0001 - a \"\"b\"\"\",\"https://x\"";
  layers.gisWriteRecord(layer, point, first + "   ");
  EXPECT_EQ(folder.read("a.mid"), first + "\n");

  // Records come in the order of their objects, also when these come first.
  layers.gisWriteObject(layer, point);
  layers.gisWriteObject(layer, point);
  layers.gisWriteRecord(layer, point, "\"second\",\"\"");
  EXPECT_EQ(folder.read("a.mid"), first + "\n\"second\",\"\"\n,\n");
}

TEST_F(Mif, ColumnsHaveTheirTypeAndWidth) {
  layers.gisOpenLayer(
      {.name = folder.path("a"),
       .columns = {{"A_name_that_is_longer_than_the_31_allowed", ColumnType::Integer},
                   {"Bed_level", ColumnType::Decimal, 10, 3},
                   {"D50", ColumnType::Float},
                   {"On", ColumnType::Date}}});
  EXPECT_THAT(folder.read("a.mif"),
              HasSubstr("\nCoordSys NonEarth Units \"m\" Bounds (-10000000, -10000000) (10000000, "
                        "10000000)\nColumns 4\n  A_name_that_is_longer_than_the_ Integer\n"
                        "  Bed_level Decimal(10,3)\n  D50 Float\n  On Date\nData\n"));
}

TEST(QuotedText, StaysOnOneLineWithItsClosingQuoteWithinTheLimit) {
  EXPECT_EQ(quotedText("a \"b\" c  "), "\"a \"\"b\"\" c\"");
  EXPECT_EQ(quotedText("abcdef", 5), "\"abc\"");
  EXPECT_EQ(quotedText("ab\"cd", 5), "\"ab\"");  // half a doubled quote would end the text
  EXPECT_EQ(quotedText("ab\\ncd", 5),
            "\"ab\"");  // half a line break would be a character of its own
  EXPECT_EQ(quotedText("a\r\nb\tc\x1A\n"), "\"a  b\tc\"");
}

}  // namespace
}  // namespace nivaro::gis::test
