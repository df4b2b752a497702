#include <chrono>

#include "gis_fixture.hpp"
#include "messages/gis/ring_order.hpp"

namespace nivaro::gis::test {
namespace {

using namespace std::string_literals;

using Shape = GisTest;

std::string zeros(std::size_t count) {
  return std::string(count, '\0');
}

TEST_F(Shape, NullObjectGoesToEverySubLayerThatIsOpen) {
  LayerSettings wanted = settingsFor(LayerFormat::Shape, "a");
  wanted.regions = false;
  const std::int32_t layer = layers.gisOpenLayer(wanted);
  write(layer, kNullObject);
  // Nothing to draw either.
  write(layer, pointAt(std::numeric_limits<double>::quiet_NaN(), 0));
  write(layer, pointAt(0, std::numeric_limits<double>::infinity()));

  // An index entry has 8 bytes, a header 100, of which the box begins at the 37th.
  EXPECT_EQ(folder.bytes("a_P.shx").size(), 100u + 8u * 3u);
  EXPECT_EQ(folder.bytes("a_L.shx").size(), 100u + 8u * 1u);
  EXPECT_EQ(folder.bytes("a_P.shp").substr(36, 32), zeros(32));
  for (const char* file : {"a_R.shp", "a_P.prj"})  // no regions, no projection given
    EXPECT_FALSE(std::filesystem::exists(folder.path(file)));
  EXPECT_THAT(shownWhenStopping([&] { write(layer, ringedRegion()); }),
              testing::HasSubstr("ERROR 0439 - Writing .shp file object coordinates."));
}

TEST_F(Shape, TableHasHeaderFieldsRecordsAndEndMark) {
  const std::int32_t layer =
      layers.gisOpenLayer({.format = LayerFormat::Shape,
                           .name = folder.path("a"),
                           .columns = {{"LongColumnName", ColumnType::Char, 6, 2},
                                       {"Count", ColumnType::Integer},
                                       {"Bed", ColumnType::Decimal, 7, 2},
                                       {"On", ColumnType::Date, 20}}});
  write(layer, pointAt(1, 2), "\"a, b\",12,-1.25,20260131");
  write(layer, pointAt(1, 2), "\"longer text\",123456789012");  // too long, too long, missing

  const std::string dbf = folder.bytes("a_P.dbf");
  // 32 bytes, 32 for each of 4 fields, 1: 161; a deletion flag and 6 + 11 + 7 + 8 characters: 33.
  EXPECT_EQ(dbf[0], 3);
  EXPECT_EQ(dbf.substr(4), "\2\0\0\0\xA1\0\x21\0"s + zeros(17) + "\3" + zeros(2) +  //
                               "LongColumn\0C"s + zeros(4) + "\6\0"s + zeros(14) +  //
                               "Count" + zeros(6) + "N" + zeros(4) + "\13\0"s + zeros(14) + "Bed" +
                               zeros(8) + "N" + zeros(4) + "\7\2" + zeros(14) +           //
                               "On" + zeros(9) + "D" + zeros(4) + "\10\0"s + zeros(14) +  //
                               "\r a, b           12  -1.2520260131"
                               " longer***********               \x1A");
  // The day of writing, which may have been yesterday.
  using namespace std::chrono;
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(dbf[at]); };
  const sys_days written = year(1900 + byte(1)) / byte(2) / byte(3);
  EXPECT_LE(abs(floor<days>(system_clock::now()) - written), days(1));
}

TEST(RingOrder, ToldByContainmentEvenWhereRingsTouch) {
  const std::vector<Vertex> outer = {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};  // clockwise
  const std::vector<Vertex> corner = {{0, 0}, {0, 4}, {4, 0}, {0, 0}};             // inside
  const std::vector<Vertex> neighbour = {{10, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 0}};
  // Far from the origin and small: products of the coordinates themselves would lose it.
  const std::vector<Vertex> far = {{6e6, 6e6}, {6e6 + 1e-3, 6e6}, {6e6, 6e6 + 1e-3}, {6e6, 6e6}};

  const std::vector<Vertex> pinhole = {{5, 5}, {5, 5.1}, {5.1, 5}, {5, 5}};

  const auto rings = orderedRings({outer, corner, neighbour, far, pinhole});

  for (std::size_t k = 0; k < 5; ++k) EXPECT_EQ(signedArea(rings[k]) > 0.0, k == 1 || k == 4) << k;
  EXPECT_NEAR(signedArea(rings[3]), -0.5e-6, 1e-9);
}

}  // namespace
}  // namespace nivaro::gis::test
