// The layers as the programs read them that people use. Skipped where these are not installed.
#include "programs.hpp"
#include <map>

#include "gis_fixture.hpp"

namespace nivaro::gis::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

// An object, where its shape goes, and the geometry that readers should find, as well-known text.
struct Sample {
  Object object;
  std::string subLayer;
  std::string mifGeometry;
  std::string shapeGeometry;
};

std::vector<Sample> samples() {
  const std::vector<Vertex> bend = {{0, 0}, {1, 0}, {1, 2}, {3, 4}};
  return {
      {pointAt(1.5, -2.25), "_P", "POINT (1.5 -2.25)", "POINT (1.5 -2.25)"},
      // A label in a MIF file lies at the corner of its box, in a shapefile at its anchor.
      {objectOf(ObjectKind::Text, {{7, 8}, {8, 7}, {9, 9}}), "_P", "POINT (8 7)", "POINT (7 8)"},
      {objectOf(ObjectKind::Line, {{0, 0}, {3, 4}}), "_L", "LINESTRING (0 0,3 4)",
       "LINESTRING (0 0,3 4)"},
      {objectOf(ObjectKind::Polyline, bend), "_L", "LINESTRING (0 0,1 0,1 2,3 4)",
       "LINESTRING (0 0,1 0,1 2,3 4)"},
      {objectOf(ObjectKind::MultiplePolyline, bend, {1, 3}), "_L",
       "MULTILINESTRING ((0 0,1 0),(1 2,3 4))", "MULTILINESTRING ((0 0,1 0),(1 2,3 4))"},
      {objectOf(ObjectKind::Region, {{0, 0}, {2, 0}, {2, 3}, {0, 0}}), "_R",
       "POLYGON ((0 0,2 0,2 3,0 0))", "POLYGON ((0 0,2 3,2 0,0 0))"},
      // Readers make of the island in the hole a polygon of its own.
      {ringedRegion(), "_R",
       "MULTIPOLYGON (((0 0,10 0,10 10,0 10,0 0),(4 4,6 4,6 6,4 6,4 4)),"
       "((5 5,5.5 5.0,5.5 5.5,5.0 5.5,5 5)))",
       "MULTIPOLYGON (((0 0,0 10,10 10,10 0,0 0),(4 4,6 4,6 6,4 6,4 4)),"
       "((5 5,5.0 5.5,5.5 5.5,5.5 5.0,5 5)))"},
      {kNullObject, "", "", ""},
  };
}

constexpr std::string_view kAttributes = "\"a, \"\"b\"\"\",\"link\"";

// The line that ogr2ogr writes for an object with these attributes.
std::string csvRow(const std::string& geometry) {
  const std::string quoted = geometry.empty() ? "" : '"' + geometry + '"';
  return quoted + ",\"a, \"\"b\"\"\",link\n";
}

class Programs : public GisTest {
 protected:
  void SetUp() override {
    for (const char* program : {"ogr2ogr", "ogrinfo", "shpdump"})
      if (!isInstalled(program)) GTEST_SKIP() << program << " is not installed";
  }

  // The features of a file: their geometry as text, and their attributes.
  std::string featuresOf(const std::string& name) const {
    const Said said = run("ogr2ogr -f CSV /vsistdout/ -lco GEOMETRY=AS_WKT " + folder.path(name));
    EXPECT_EQ(said.exitCode, 0);
    return said.text;  // complaints would be in it
  }

  std::string summaryOf(const std::string& name) const {
    return run("ogrinfo -ro -so -al " + folder.path(name)).text;
  }
};

TEST_F(Programs, GdalAndShapelibReadEveryObjectOfALayer) {
  const std::int32_t mif = openMif();
  const std::int32_t shapes = openShapes();
  std::map<std::string, std::string> rows;  // by file
  for (const Sample& sample : samples()) {
    const bool isText = sample.object.kind == ObjectKind::Text;
    layers.setStyle(mif, isText ? "    Font (\"Arial\",257,0,16711935,0)" : "",
                    isText ? "    Label Line Arrow            7.000           8.000" : "");
    write(mif, sample.object, kAttributes);
    rows["a.mif"] += csvRow(sample.mifGeometry);
    write(shapes, sample.object, kAttributes);
    for (const std::string subLayer : {"_P", "_L", "_R"})
      if (sample.subLayer == subLayer || sample.subLayer.empty())
        rows["a" + subLayer + ".shp"] += csvRow(sample.shapeGeometry);
  }
  write(mif, pointAt(1, 2), "\"a, b\"");  // no value for the other column
  rows["a.mif"] += "\"POINT (1 2)\",\"a, b\",\n";
  write(mif, objectOf(ObjectKind::Multipoint, {{1, 2}, {3, 4}}), kAttributes);
  rows["a.mif"] += csvRow("MULTIPOINT ((1 2),(3 4))");

  // While the layers are open, as after a run that was killed, and when they are closed.
  for (const bool isClosed : {false, true}) {
    if (isClosed) layers.gisCloseAll();
    for (const auto& [file, expected] : rows)
      EXPECT_EQ(featuresOf(file), "WKT,Message,Link\n" + expected) << file;
    EXPECT_THAT(run("shpdump -validate " + folder.path("a_R.shp")).text,
                HasSubstr("0 object has invalid ring orderings.\n"));
  }
  EXPECT_THAT(summaryOf("a.mif"), HasSubstr("Message: String (60.0)\nLink: String (40.0)\n"));
  EXPECT_THAT(summaryOf("a_P.shp"),
              HasSubstr("Extent: (1.500000, -2.250000) - (7.000000, 8.000000)"));
  EXPECT_THAT(summaryOf("a_R.shp"),
              HasSubstr("Extent: (0.000000, 0.000000) - (10.000000, 10.000000)"));
}

TEST_F(Programs, GdalReadsMultipointsAndProjectionOfAShapefileLayer) {
  LayerSettings wanted = settingsFor(LayerFormat::Shape, "a");
  wanted.projection = "LOCAL_CS[\"site grid\",UNIT[\"metre\",1]]";
  const std::int32_t layer = layers.gisOpenLayer(wanted);
  for (const Object& object :
       {kNullObject, objectOf(ObjectKind::Multipoint, {{1, 2}, {3, 4}}), pointAt(5, 6)})
    write(layer, object, kAttributes);

  EXPECT_EQ(folder.read("a_R.prj"), wanted.projection + "\n");
  EXPECT_EQ(featuresOf("a_P.shp"), "WKT,Message,Link\n" + csvRow("") +
                                       csvRow("MULTIPOINT ((1 2),(3 4))") +
                                       csvRow("MULTIPOINT ((5 6))"));
  EXPECT_THAT(summaryOf("a_P.shp"),
              AllOf(HasSubstr("Geometry: Multi Point"), HasSubstr("site grid")));
}

}  // namespace
}  // namespace nivaro::gis::test
