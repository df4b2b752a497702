#include "gis_fixture.hpp"
#include "platform/support.hpp"

namespace nivaro::gis::test {
namespace {

using testing::HasSubstr;

const std::string kContact(kSupportAddress);
const std::string kNoLayer = " - please contact " + kContact + "\n";

using LayerTableTest = GisTest;

TEST_F(LayerTableTest, HoldsAHundredLayersAndReusesSlots) {
  for (int i = 1; i <= LayerTable::kLayers; ++i) EXPECT_EQ(openMif('l' + std::to_string(i)), i);
  layers.gisCloseLayer(7);
  EXPECT_EQ(layers.format(7), LayerFormat::None);
  EXPECT_EQ(openMif("again"), 7);

  EXPECT_THAT(shownWhenStopping([&] { openMif("more"); }),
              HasSubstr("ERROR 0251 - Cannot have more than 100 GIS layers open at once.\n"));
}

TEST_F(LayerTableTest, StopsWithAWordForEachMisuse) {
  const auto writing = [&](LayerFormat format, const std::vector<Object>& objects) {
    return [this, format, objects] {
      const std::int32_t layer = layers.gisOpenLayer(settingsFor(format, "m"));
      for (const Object& object : objects) layers.gisWriteObject(layer, object);
    };
  };
  const Object emptyPart = objectOf(ObjectKind::Region, {{0, 0}, {1, 0}, {1, 1}}, {1, 3, 3});
  const Object partBehindTheEnd = objectOf(ObjectKind::Polyline, {{0, 0}, {1, 0}}, {1, 3});
  const Object multi = objectOf(ObjectKind::Multipoint, {{0, 0}, {1, 1}});
  const struct {
    std::function<void()> call;
    std::string shown;
  } cases[] = {
      {[&] { layers.gisWriteObject(0, multi); },
       "Should not be here gisWriteObject[gisID=0]" + kNoLayer},
      {[&] { layers.gisWriteRecord(-3, multi, ""); },
       "Should not be here gisWriteRecord[gisID=0]" + kNoLayer},
      {[&] { layers.gisWriteObject(101, multi); },
       "Should not be here gisWriteObject[gisID=101]" + kNoLayer},
      {[&] { layers.gisOpenLayer(0, settingsFor(LayerFormat::Mif, "z")); },
       "Should not be here gisOpenLayer[gisID=0]" + kNoLayer},
      {[&] { openMif("a"), openMif("A"); }, "ERROR 0411 - Could not open GIS layer file \""},
      {[&] {
         layers.gisOpenLayer({.name = " ", .columns = {{"a", ColumnType::Integer}}});
       },
       "ERROR 0411 - Could not open GIS layer file \""},
      {[&] { layers.gisOpenLayer({.name = "b", .columns = {}}); },
       "ERROR 0413 - Columns of GIS layer \"b\" are not valid: there must be at least one column."},
      {writing(LayerFormat::Mif, {{}}),
       "ERROR 0350 - Trying to write a MIF object that is not yet supported.  Please contact " +
           kContact + "\n"},
      {writing(LayerFormat::Shape, {{}}),
       "Should not be here [gisWriteObject-shp].  Please contact " + kContact + "\n"},
      {writing(LayerFormat::Shape, {pointAt(5, 6), multi}),
       "ERROR 0350 - Trying to write a SHP object that is not yet supported.  Please contact " +
           kContact + "\n"},
      {writing(LayerFormat::Mif, {emptyPart}),
       "Should not be here [gisO_%ir(i) <= gisO_%ir(i-1)]" + kNoLayer +
           "GIS Layer   =    1\ni           =    3\ngisO_%ir(i) =    3\ngisO_%nr    =    3\n"},
      {writing(LayerFormat::Shape, {partBehindTheEnd}),
       "Should not be here [gisO_%ir(i) <= gisO_%ir(i-1)]" + kNoLayer +
           "GIS Layer   =    1\ni           =    2\ngisO_%ir(i) =    3\ngisO_%nr    =    2\n"},
  };
  for (const auto& [call, shown] : cases) {
    layers.gisCloseAll();
    EXPECT_THAT(shownWhenStopping(call), HasSubstr("\n" + shown));
  }
}

TEST(Columns, MustFitWhatTheFormatsHold) {
  const auto many = [](int count, int width) {
    std::vector<Column> columns;
    for (int i = 0; i < count; ++i)
      columns.push_back({'c' + std::to_string(i), ColumnType::Char, width});
    return columns;
  };
  std::vector<Column> tooLong = many(129, 254);
  tooLong.back().width = 255;
  const struct {
    std::vector<Column> columns;
    std::string_view fault;
  } cases[] = {
      {{{" ", ColumnType::Char, 5}}, "a column has no name"},
      {many(1, 0), "the length of a column must be 1 to 255"},
      {many(1, 256), "the length of a column must be 1 to 255"},
      // A digit, the point and two decimals.
      {{{"a", ColumnType::Decimal, 4, 2}}, ""},
      {{{"a", ColumnType::Decimal, 4, 3}}, "the decimals of a column must fit its length"},
      {{{"LongColumn1", ColumnType::Date}, {"longcolumn2", ColumnType::Date}},
       "column names must differ in their first 10 characters"},
      // 129 columns of 254 and the deletion flag: 32767.
      {many(129, 254), ""},
      {tooLong, "a record must be at most 32767 characters long"},
      // 2046 descriptors of 32 bytes are what fits the header's own length.
      {many(2046, 1), ""},
      {many(2047, 1), "there are too many columns"},
  };
  for (const auto& [columns, fault] : cases) EXPECT_EQ(columnsFault(columns), fault);
}

TEST_F(LayerTableTest, ClosingIsReportedOnScreenAndLog) {
  const std::int32_t log = files.openFile(folder.path("log.txt"), "O ", 1);
  layers.setLogUnit(log);
  const std::int32_t layer = openMif("a");

  layers.gisCloseLayer(layer);
  layers.gisCloseLayer(layer);

  const std::string closing = "\nClosing GIS Layer 1 [" + folder.path("a.mif") + "]...\n";
  const std::string check =
      "SOFTWARE CHECK - Trying to close a GIS Layer that's not open.  Please contact " + kContact +
      "\n";
  EXPECT_EQ(folder.read("log.txt"), closing + check);
  EXPECT_THAT(console.output, HasSubstr(closing));
  EXPECT_TRUE(console.output.ends_with(check)) << console.output;
}

TEST_F(LayerTableTest, ARunThatEndsCompletesEveryLayerThatItCanAndSaysSoOnce) {
  openMif("a");
  layers.gisWriteObject(openShapes("b"), pointAt(1, 2));  // the run ends before its record
  module.units.close(2001);                               // the .mif of the first layer

  const std::string shown = shownWhenStopping([&] { module.termination.exits(); });

  for (const char* once : {"Closing any unclosed GIS layers...", "Closing GIS Layer 1 [",
                           "ERROR 0439 - Writing .mif file object coordinates.",
                           "Closing GIS Layer 2 [", "Press Enter to Close"})
    EXPECT_TRUE(shown.find(once) < shown.size() && shown.find(once) == shown.rfind(once)) << shown;
  // A header of 100 bytes, a record of 8 and 20; 97 and 1, a record of 101 and the end mark.
  EXPECT_EQ(folder.bytes("b_P.shp").size(), 128u);
  EXPECT_EQ(folder.bytes("b_P.dbf").size(), 97u + 101u + 1u);
  EXPECT_FALSE(layers.isOpen(1) || layers.isOpen(2));
}

}  // namespace
}  // namespace nivaro::gis::test
