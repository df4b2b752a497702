#include <cstring>

#include "gis_fixture.hpp"
#include "messages/gis/ring_order.hpp"

namespace nivaro::gis::test {
namespace {

// Numbers of a file, by the byte at which they stand.
struct Bytes {
  std::string content;

  std::size_t size() const { return content.size(); }
  std::int32_t byte(std::size_t at) const { return static_cast<unsigned char>(content.at(at)); }
  std::int32_t shortNumber(std::size_t at) const { return byte(at) + 256 * byte(at + 1); }
  std::int32_t little(std::size_t at) const {
    return shortNumber(at) + 65536 * shortNumber(at + 2);
  }
  std::int32_t big(std::size_t at) const {
    return 65536 * (256 * byte(at) + byte(at + 1)) + 256 * byte(at + 2) + byte(at + 3);
  }
  std::vector<double> reals(std::size_t at, std::size_t count) const {
    std::vector<double> values(count);
    std::memcpy(values.data(), content.data() + at, 8 * count);
    return values;
  }
  std::string text(std::size_t at, std::size_t length) const { return content.substr(at, length); }
};

class Shape : public GisTest {
 protected:
  Bytes bytes(std::string_view name) const { return {folder.bytes(name)}; }
};

using testing::ElementsAre;

TEST_F(Shape, HeadersAndIndexTellWhatWasWrittenAfterEachRecord) {
  const std::int32_t layer = openShapes();
  for (int i = 1; i <= 3; ++i) {
    write(layer, pointAt(10.0 * i, -i));
    const Bytes shp = bytes("a_P.shp");
    const Bytes shx = bytes("a_P.shx");
    // A point record has 4 words of header and 10 of content (type and two coordinates).
    EXPECT_EQ(shp.big(24), 50 + 14 * i);
    EXPECT_EQ(shp.size(), 2u * static_cast<unsigned>(shp.big(24)));
    EXPECT_EQ(shx.big(24), 50 + 4 * i);
    EXPECT_EQ(shx.size(), 2u * static_cast<unsigned>(shx.big(24)));
    for (const Bytes* file : {&shp, &shx}) {
      EXPECT_EQ(file->big(0), 9994);
      EXPECT_EQ(file->little(28), 1000);
      EXPECT_EQ(file->little(32), 1);
      EXPECT_THAT(file->reals(36, 4), ElementsAre(10, -i, 10.0 * i, -1));
    }
    const std::size_t start = 100 + 28 * static_cast<std::size_t>(i - 1);
    EXPECT_EQ(shx.big(100 + 8 * static_cast<std::size_t>(i - 1)), static_cast<int>(start / 2));
    EXPECT_EQ(shx.big(104 + 8 * static_cast<std::size_t>(i - 1)), 10);
    EXPECT_EQ(shp.big(start), i);
    EXPECT_EQ(shp.big(start + 4), 10);
    EXPECT_THAT(shp.reals(start + 12, 2), ElementsAre(10.0 * i, -i));
  }
  const std::string before = folder.bytes("a_P.shp") + folder.bytes("a_P.dbf");
  layers.gisCloseLayer(layer);
  EXPECT_EQ(folder.bytes("a_P.shp") + folder.bytes("a_P.dbf"), before);
  EXPECT_EQ(bytes("a_P.shx").big(24), 62);
  EXPECT_EQ(bytes("a_R.shp").big(24), 50);  // the empty ones are whole too
}

TEST_F(Shape, ContentLengthsFollowFromVerticesAndParts) {
  const std::vector<Vertex> three = {{0, 0}, {1, 0}, {1, 1}};
  const struct {
    Object object;
    std::string file;
    std::int32_t type;
    std::int32_t words;
  } cases[] = {
      {kNullObject, "_P", 0, 2},
      {objectOf(ObjectKind::Text, three), "_P", 1, 10},
      {objectOf(ObjectKind::Multipoint, three), "_P", 8, (16 * 3 + 40) / 2},
      {objectOf(ObjectKind::Line, {three[0], three[1]}), "_L", 3, (16 * 2 + 4 + 44) / 2},
      {objectOf(ObjectKind::MultiplePolyline, {{0, 0}, {1, 0}, {1, 1}, {2, 2}}, {1, 3}), "_L", 3,
       (16 * 4 + 4 * 2 + 44) / 2},
      {ringedRegion(), "_R", 5, (16 * 15 + 4 * 3 + 44) / 2},
  };
  for (const auto& [object, file, type, words] : cases) {
    const std::int32_t layer = openShapes();
    write(layer, object);
    layers.gisCloseLayer(layer);
    const Bytes shp = bytes("a" + file + ".shp");
    EXPECT_EQ(shp.big(104), words);
    EXPECT_EQ(shp.little(108), type);
    EXPECT_EQ(shp.size(), 108u + 2u * static_cast<unsigned>(words));
    if (type != 0) {
      EXPECT_EQ(shp.little(32), type);
    }
  }
}

TEST(RingOrder, ToldByContainmentEvenWhereRingsTouch) {
  const std::vector<Vertex> outer = {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};  // clockwise
  const std::vector<Vertex> corner = {{0, 0}, {0, 4}, {4, 0}, {0, 0}};             // inside
  const std::vector<Vertex> neighbour = {{10, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 0}};
  // Far from the origin and small: products of the coordinates themselves would lose it.
  const std::vector<Vertex> far = {{6e6, 6e6}, {6e6 + 1e-3, 6e6}, {6e6, 6e6 + 1e-3}, {6e6, 6e6}};

  const auto rings = orderedRings({outer, corner, neighbour, far});

  for (const std::size_t k : {0U, 1U, 2U, 3U}) EXPECT_EQ(signedArea(rings[k]) > 0.0, k == 1) << k;
  EXPECT_NEAR(signedArea(rings[3]), -0.5e-6, 1e-9);
}

TEST_F(Shape, NullObjectGoesToEverySubLayerThatIsOpen) {
  LayerSettings wanted = settingsFor(LayerFormat::Shape, "a");
  wanted.regions = false;
  const std::int32_t layer = layers.gisOpenLayer(wanted);
  write(layer, kNullObject);
  write(layer, pointAt(std::numeric_limits<double>::quiet_NaN(), 0));  // nothing to draw either

  EXPECT_EQ(bytes("a_P.shx").big(24), 50 + 4 * 2);
  EXPECT_EQ(bytes("a_L.shx").big(24), 50 + 4 * 1);
  EXPECT_EQ(bytes("a_P.dbf").little(4), 2);
  EXPECT_EQ(bytes("a_L.dbf").little(4), 1);
  EXPECT_THAT(bytes("a_P.shp").reals(36, 4), ElementsAre(0, 0, 0, 0));
  for (const char* file : {"a_R.shp", "a_P.prj"})  // no regions, no projection given
    EXPECT_FALSE(std::filesystem::exists(folder.path(file)));
  EXPECT_THAT(shownWhenStopping([&] { write(layer, ringedRegion()); }),
              testing::HasSubstr("ERROR 0439 - Writing .shp file object coordinates."));
}

TEST_F(Shape, APointFileHoldsPointsOrMultipointsButNotBoth) {
  const Object multi = objectOf(ObjectKind::Multipoint, {{0, 0}, {1, 1}});
  const std::int32_t first = openShapes("a");
  write(first, multi);
  write(first, pointAt(5, 6));  // as a multipoint of one
  EXPECT_EQ(bytes("a_P.shp").little(32), 8);
  EXPECT_EQ(bytes("a_P.shx").big(108 + 4), (16 + 40) / 2);

  const std::int32_t second = openShapes("b");
  write(second, pointAt(5, 6));
  EXPECT_THAT(shownWhenStopping([&] { write(second, multi); }),
              testing::HasSubstr("ERROR 0350 - Trying to write a SHP object that is not yet "
                                 "supported.  Please contact "));
}

TEST_F(Shape, TableHasHeaderFieldsRecordsAndEndMark) {
  LayerSettings wanted = settingsFor(LayerFormat::Shape, "a");
  wanted.columns = {{"LongColumnName", ColumnType::Char, 6},
                    {"Count", ColumnType::Integer},
                    {"Bed", ColumnType::Decimal, 7, 2}};
  const std::int32_t layer = layers.gisOpenLayer(wanted);
  write(layer, pointAt(1, 2), "\"a, b\",12,-1.25");
  write(layer, pointAt(1, 2), "\"longer text\",123456789012");  // too long, too long, missing
  const Bytes dbf = bytes("a_P.dbf");

  // 32 bytes, 32 for each of 3 fields, 1; a deletion flag and 6 + 11 + 7 characters.
  EXPECT_EQ(dbf.byte(0), 3);
  EXPECT_GE(dbf.byte(1), 124);  // years since 1900
  EXPECT_EQ(dbf.little(4), 2);
  EXPECT_EQ(dbf.shortNumber(8), 129);
  EXPECT_EQ(dbf.shortNumber(10), 25);
  EXPECT_EQ(dbf.text(32, 12), std::string("LongColumn\0C", 12));
  EXPECT_EQ(dbf.text(64, 12), std::string("Count\0\0\0\0\0\0N", 12));
  EXPECT_EQ(dbf.byte(64 + 16), 11);
  EXPECT_EQ(dbf.byte(96 + 16), 7);
  EXPECT_EQ(dbf.byte(96 + 17), 2);
  EXPECT_EQ(dbf.byte(128), 0x0D);
  EXPECT_EQ(dbf.text(129, 25), " a, b           12  -1.25");
  EXPECT_EQ(dbf.text(154, 25), " longer***********       ");
  EXPECT_EQ(dbf.byte(179), 0x1A);
  EXPECT_EQ(dbf.size(), 180u);
}

}  // namespace
}  // namespace nivaro::gis::test
