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
  EXPECT_EQ(layers.format(100), LayerFormat::Mif);
  layers.gisCloseLayer(7);
  EXPECT_FALSE(layers.isOpen(7));
  EXPECT_EQ(layers.format(7), LayerFormat::None);
  EXPECT_EQ(openMif("again"), 7);

  EXPECT_THAT(shownWhenStopping([&] { openMif("more"); }),
              HasSubstr("ERROR 0251 - Cannot have more than 100 GIS layers open at once.\n"));
}

TEST_F(LayerTableTest, StopsWithAWordForEachMisuse) {
  const auto writing = [&](LayerFormat format, const Object& object) {
    return [this, format, object] {
      layers.gisWriteObject(layers.gisOpenLayer(settingsFor(format, "m")), object);
    };
  };
  const struct {
    std::function<void()> call;
    std::string shown;
  } cases[] = {
      {[&] { layers.gisWriteObject(0, pointAt(1, 2)); },
       "Should not be here gisWriteObject[gisID=0]" + kNoLayer},
      {[&] { layers.gisWriteRecord(-3, pointAt(1, 2), ""); },
       "Should not be here gisWriteRecord[gisID=0]" + kNoLayer},
      {[&] { layers.gisWriteObject(101, pointAt(1, 2)); },
       "Should not be here gisWriteObject[gisID=101]" + kNoLayer},
      {[&] { layers.gisOpenLayer(0, settingsFor(LayerFormat::Mif, "z")); },
       "Should not be here gisOpenLayer[gisID=0]" + kNoLayer},
      {writing(LayerFormat::Mif, {}),
       "ERROR 0350 - Trying to write a MIF object that is not yet supported.  Please contact " +
           kContact + "\n"},
      {writing(LayerFormat::Shape, {}),
       "Should not be here [gisWriteObject-shp].  Please contact " + kContact + "\n"},
      {writing(LayerFormat::Mif, objectOf(ObjectKind::Region, {{0, 0}, {1, 0}, {1, 1}}, {1, 3, 3})),
       "Should not be here [gisO_%ir(i) <= gisO_%ir(i-1)]" + kNoLayer +
           "GIS Layer   =    1\ni           =    3\ngisO_%ir(i) =    3\ngisO_%nr    =    3\n"},
      {writing(LayerFormat::Shape, objectOf(ObjectKind::Polyline, {{0, 0}, {1, 0}}, {1, 3})),
       "Should not be here [gisO_%ir(i) <= gisO_%ir(i-1)]" + kNoLayer +
           "GIS Layer   =    1\ni           =    2\ngisO_%ir(i) =    3\ngisO_%nr    =    2\n"},
  };
  for (const auto& [call, shown] : cases) {
    layers.gisCloseAll();
    EXPECT_THAT(shownWhenStopping(call), HasSubstr("\n" + shown));
  }
}

TEST_F(LayerTableTest, RefusesColumnsThatTheFormatsCannotHold) {
  const struct {
    std::vector<Column> columns;
    std::string reason;
  } cases[] = {
      {{}, "at least one column"},
      {{{"", ColumnType::Char, 5}}, "no name"},
      {{{"a", ColumnType::Char, 0}}, "1 to 255"},
      {{{"a", ColumnType::Char, 256}}, "1 to 255"},
      {{{"a", ColumnType::Decimal, 4, 3}}, "decimals"},
      {{{"LongColumn1", ColumnType::Char, 5}, {"longcolumn2", ColumnType::Char, 5}}, "differ"},
  };
  for (const auto& [columns, reason] : cases) {
    LayerSettings wanted = settingsFor(LayerFormat::Shape, "a");
    wanted.columns = columns;
    const std::string shown = shownWhenStopping([&] { layers.gisOpenLayer(wanted); });
    EXPECT_THAT(shown, HasSubstr("ERROR 0413 - Columns of GIS layer \""));
    EXPECT_THAT(shown, HasSubstr(reason));
  }
}

TEST(Columns, ARecordHasAtMost32767Characters) {
  // 129 columns of 254 and the deletion flag: 32767.
  std::vector<Column> columns;
  for (int i = 0; i < 129; ++i) columns.push_back({'c' + std::to_string(i), ColumnType::Char, 254});
  EXPECT_EQ(columnsFault(columns), "");
  columns.back().width = 255;
  EXPECT_THAT(columnsFault(columns), HasSubstr("32767"));

  // 2046 descriptors of 32 bytes are what fits the header's own length.
  columns.clear();
  for (int i = 0; i < 2046; ++i) columns.push_back({'c' + std::to_string(i), ColumnType::Char, 1});
  EXPECT_EQ(columnsFault(columns), "");
  columns.push_back({"one_more", ColumnType::Char, 1});
  EXPECT_THAT(columnsFault(columns), HasSubstr("too many"));
}

TEST_F(LayerTableTest, ALayerOfTheSameNameOrNoneCannotBeOpened) {
  openMif("a");
  EXPECT_THAT(shownWhenStopping([&] { openMif("A"); }),
              HasSubstr("ERROR 0411 - Could not open GIS layer file \""));
  LayerSettings nameless = settingsFor(LayerFormat::Mif, "b");
  nameless.name = " ";
  EXPECT_THAT(shownWhenStopping([&] { layers.gisOpenLayer(nameless); }), HasSubstr("ERROR 0411"));
}

TEST_F(LayerTableTest, AFullDiskStopsTheRunWithOneWord) {
  if (!nivaro::test::hasFullDisk()) GTEST_SKIP();
  const struct {
    LayerFormat format;
    std::string file, shown;
  } cases[] = {
      {LayerFormat::Mif, ".mif", "ERROR 0412 - Could not write header of GIS layer"},
      {LayerFormat::Mif, ".mid",
       "\nERROR 0254 - Failed to write attribute data record for a Object\n"},
      {LayerFormat::Shape, "_P.shp", "_P.shp\".\n"},
      {LayerFormat::Shape, "_L.shx", "_L.shp\".\n"},
      {LayerFormat::Shape, "_R.dbf", "_R.dbf\".\n"},
  };
  for (const auto& [format, file, shown] : cases) {
    const std::string name = "full" + file.substr(1);
    for (int unit = 2001; unit < 2020; ++unit) module.units.close(unit);  // full ones too
    makeFull(name + file);
    const std::string output = shownWhenStopping([&, format = format] {
      write(layers.gisOpenLayer(settingsFor(format, name)), pointAt(1, 2));
    });
    EXPECT_THAT(output, HasSubstr(shown));
    EXPECT_EQ(output.find("ERROR"), output.rfind("ERROR")) << output;
  }
}

TEST_F(LayerTableTest, AFileThatIsGoneFailsTheNextWrite) {
  // The first file of the pool is unit 2001: the files of a layer are opened in this order.
  const struct {
    LayerFormat format;
    std::int32_t unit;
    std::string shown;
  } cases[] = {
      {LayerFormat::Mif, 2001, "\nERROR 0439 - Writing .mif file object coordinates.\n"},
      {LayerFormat::Mif, 2002,
       "\nERROR 0254 - Failed to write attribute data record for a Object\n"},
      {LayerFormat::Shape, 2001, "\nERROR 0439 - Writing .shp file object coordinates.\n"},
      {LayerFormat::Shape, 2003, "\nERROR 0417 - Writing .dbf record.\n"},
  };
  for (const auto& [format, unit, shown] : cases) {
    files.initFileUnits(2000);
    const std::int32_t layer = layers.gisOpenLayer(settingsFor(format, "g"));
    module.units.close(unit);
    EXPECT_THAT(shownWhenStopping([&] { write(layer, pointAt(1, 2)); }), HasSubstr(shown));
    layers.gisCloseLayer(layer);  // says nothing of the failure that has been reported
  }
}

TEST_F(LayerTableTest, ClosingIsReportedOnScreenAndLog) {
  const std::int32_t log = files.openFile(folder.path("log.txt"), "O ", 1);
  layers.setLogUnit(log);
  const std::int32_t layer = openMif("a");
  console.output.clear();

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

TEST_F(LayerTableTest, ARunThatEndsLeavesEveryLayerWhole) {
  write(openMif("a"), pointAt(1, 2));
  layers.gisWriteObject(1, pointAt(1, 2));  // the run ends before its record
  layers.gisWriteObject(openShapes("b"), pointAt(1, 2));

  const std::string shown = shownWhenStopping([&] { module.termination.exits(); });

  EXPECT_THAT(shown, HasSubstr("\nClosing any unclosed GIS layers...\n\nClosing GIS Layer 1 ["));
  EXPECT_THAT(shown, HasSubstr("\nClosing GIS Layer 2 ["));
  EXPECT_FALSE(layers.isOpen(1) || layers.isOpen(2));
  EXPECT_EQ(folder.read("a.mid"), "\"m\",\"\"\n,\n");
  // A header of 100 bytes, a record of 8 and 20; 97 and 1, a record of 101 and the end mark.
  EXPECT_EQ(folder.bytes("b_P.shp").size(), 128u);
  EXPECT_EQ(folder.bytes("b_P.dbf").size(), 97u + 101u + 1u);
  EXPECT_EQ(module.units.find(2001), nullptr);
}

TEST_F(LayerTableTest, AFailureWhileTheRunEndsDoesNotStartTheEndAgain) {
  openMif("a");
  write(openShapes("b"), pointAt(1, 2));
  module.units.close(2001);  // the .mif of the first layer

  const std::string shown = shownWhenStopping([&] { module.termination.exits(); });

  for (const char* once : {"Closing any unclosed GIS layers...", "Press Enter to Close",
                           "ERROR 0439 - Writing .mif file object coordinates."})
    EXPECT_TRUE(shown.find(once) < shown.size() && shown.find(once) == shown.rfind(once)) << shown;
  EXPECT_THAT(shown, HasSubstr("Closing GIS Layer 2 ["));  // completed all the same
}

}  // namespace
}  // namespace nivaro::gis::test
