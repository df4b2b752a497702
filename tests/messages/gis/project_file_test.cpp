#include "gis_fixture.hpp"
#include "messages/gis/xml_text.hpp"
#include "programs.hpp"

namespace nivaro::gis::test {
namespace {

using testing::HasSubstr;

class Project : public GisTest {
 protected:
  // The project as a parser of XML takes it: the value of an XPath expression.
  std::string valueOf(const std::string& expression) {
    const Said said = run("xmllint --xpath 'string(" + expression + ")' " + folder.path("run.qgs"));
    EXPECT_EQ(said.exitCode, 0) << said.text;
    return said.text.substr(0, said.text.find_last_not_of('\n') + 1);
  }
};

TEST_F(Project, ListsEachFileOnceWithItsGeometryAndGroup) {
  if (!isInstalled("xmllint")) GTEST_SKIP() << "xmllint is not installed";
  layers.openProject(folder.path("run.qgs"));
  LayerSettings input = settingsFor(LayerFormat::Mif, "a & <b>'s");
  input.projectCode = -1;
  const std::int32_t mif = layers.gisOpenLayer(input);
  const std::int32_t shapes = openShapes("out");
  openMif("never written to");
  write(mif, kNullObject);  // does not tell yet how the layer is drawn
  EXPECT_EQ(valueOf("count(//maplayer)"), "0");
  write(mif, ringedRegion());
  write(mif, pointAt(1, 2));
  write(shapes, pointAt(1, 2));
  write(shapes, objectOf(ObjectKind::Line, {{0, 0}, {1, 1}}));
  write(shapes, pointAt(3, 4));

  const std::string output = "//legendgroup[@name=\"Output Layers\"]/legendlayer";
  for (const bool isClosed : {false, true}) {  // a whole project also while the run goes on
    if (isClosed) layers.gisCloseAll();
    const std::pair<std::string, std::string> cases[] = {
        {"count(/qgis/projectlayers/maplayer[@type=\"vector\"])", "3"},
        {"//maplayer[1]/layername", "a & <b>'s"},
        {"//maplayer[1]/datasource", folder.path("a & <b>'s.mif")},
        {"//maplayer[1]/@geometry", "Polygon"},
        {"//maplayer[2]/datasource", folder.path("out_P.shp")},
        {"//maplayer[3]/datasource", folder.path("out_L.shp")},
        {"//maplayer[3]/@geometry", "Line"},
        {"//maplayer[3]/provider", "ogr"},
        {"//legendgroup[@name=\"Input Layers\"]//@layerid", valueOf("//maplayer[1]/id")},
        {"count(" + output + ")", "2"},
        {output + "[2]//@layerid", valueOf("//maplayer[3]/id")},
    };
    for (const auto& [expression, value] : cases) EXPECT_EQ(valueOf(expression), value);
  }
}

TEST_F(Project, ASecondProjectIsLikeTheFirst) {
  LayerSettings input = settingsFor(LayerFormat::Mif, "in");
  input.projectCode = 1;
  const std::int32_t both[] = {layers.gisOpenLayer(input), openMif("out")};
  for (const char* project : {"first.qgs", "run.qgs"}) {
    layers.openProject(folder.path(project));
    for (const std::int32_t layer : both) write(layer, pointAt(1, 2));
  }
  EXPECT_THAT(folder.read("first.qgs"), HasSubstr("<layername>in</layername>"));
  EXPECT_EQ(folder.read("run.qgs"), folder.read("first.qgs"));
}

TEST_F(Project, LegendStandsAsItIsPublished) {
  layers.openProject(folder.path("run.qgs"));
  write(openMif("a"), pointAt(1, 2));
  layers.gisCloseAll();

  EXPECT_TRUE(folder.read("run.qgs").ends_with(
      "    </projectlayers>\n"
      "    <legend>\n"
      "        <legendgroup open=\"true\" checked=\"Qt::Checked\" name=\"Input Layers\">\n"
      "        </legendgroup>\n"
      "        <legendgroup open=\"true\" checked=\"Qt::Unchecked\" name=\"Output Layers\">\n"
      "\t\t\t        <legendlayer drawingOrder=\"-1\" open=\"true\" checked=\"Qt::Unchecked\">\n"
      "\t\t\t            <filegroup open=\"true\" hidden=\"false\">\n"
      "\t\t\t                <legendlayerfile isInOverview=\"0\" layerid=\"a00000000000000001\" "
      "visible=\"0\"/>\n"
      "\t\t\t            </filegroup>\n"
      "\t\t\t        </legendlayer>\n"
      "        </legendgroup>\n"
      "    </legend>\n"
      "</qgis>\n"));
}

TEST(XmlText, HoldsNamesOfAnyBytes) {
  EXPECT_EQ(xmlText("a<b>&\"c'"), "a&lt;b&gt;&amp;&quot;c&apos;");
  EXPECT_EQ(xmlText("Fl\xC3\xBCsse"), "Fl\xC3\xBCsse");      // UTF-8 stays
  EXPECT_EQ(xmlText("Fl\xFCsse\x01"), "Fl&#252;sse ");       // Latin 1
  EXPECT_EQ(xmlText("\xC3"), "&#195;");                      // a character cut short
  EXPECT_EQ(xmlText("\xC0\xAF"), "&#192;&#175;");            // longer than need be
  EXPECT_EQ(xmlText("\xED\xA0\x80"), "&#237;&#160;&#128;");  // half of a pair
  EXPECT_EQ(xmlText("\xEF\xBF\xBE"), "&#239;&#191;&#190;");  // no character
  EXPECT_EQ(xmlText("\xF0\x9F\x8C\x8A"), "\xF0\x9F\x8C\x8A");
}

}  // namespace
}  // namespace nivaro::gis::test
