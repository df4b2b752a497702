#include "messages/mif_layer_opener.hpp"

#include <array>
#include <regex>

#include "support/test_module.hpp"

namespace nivaro {
namespace {

struct LayerOpener : test::ModuleTest {
  LayerOpener() {
    folder.write("sand.mid", "1\n");
    console.output.clear();
  }

  LayerUnits open(std::string_view name, LayerFiles kind = LayerFiles::Pair) {
    return opener.openInput(folder.path(name), kind, module.logUnit);
  }

  FileUnits& files = module.files;
  MifLayerOpener& opener = module.layerOpener;
};

TEST_F(LayerOpener, ProjectListsEachPairOnceWithTheGeometryOfItsFirstObject) {
  module.gisLayers.openProject(folder.path("run.qgs"));
  const std::array<std::string, 3> layers[] = {{"a", "\n  text\n", "Point"},
                                               {"b", "NONE\nArc 1 2\nPoint 1 2\n", "Line"},
                                               {"c", "\trect 1 2 3 4\n", "Polygon"},
                                               {"empty", "", "Point"}};
  std::string expected;
  for (const auto& [name, objects, geometry] : layers) {
    folder.write(name + ".mif", "Point 0 0\nData\n" + objects);
    folder.write(name + ".mid", "");
    open(name);
    const LayerUnits again = open(name + ".MIF");
    std::string_view first;
    files.find(again.mif)->readRecord(first);
    EXPECT_EQ(first, "Point 0 0") << "the file is rewound";
    expected += geometry + ' ' + folder.path(name + ".mif") + '\n';
  }
  open("sand.mid", LayerFiles::Single);

  const std::string project = folder.read("run.qgs");
  const std::regex entry(" geometry=\"(\\w+)\"[^]*?<datasource>([^<]*)<");
  std::string listed;
  for (std::sregex_iterator found(project.begin(), project.end(), entry), end; found != end;
       ++found)
    listed += found->format("$1 $2\n");
  EXPECT_EQ(listed, expected);
}

}  // namespace
}  // namespace nivaro
