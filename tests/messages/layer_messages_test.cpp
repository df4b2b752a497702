#include "messages/layer_messages.hpp"

#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

using testing::AllOf;
using testing::HasSubstr;

struct LayerMessagesTest : test::ModuleTest {
  LayerMessagesTest() {
    writeAs(gis::LayerFormat::Mif);
    record->message_layer = record->secondary_message_layer = 3;
    record->label_height = 2.0;
    record->label_box_width = 50.0;
  }

  void writeAs(gis::LayerFormat format) {
    module.layerMessages.setLayers(folder.path("run"), "", format);
  }

  void message(std::string_view line1, std::string_view line2, std::string_view detail = "") {
    setField(record->line1, line1);
    setField(record->line2, line2);
    setField(record->detail1, detail);
    module.messages.dmessageXy(0, 100.0, 200.0);
  }

  static std::string link(std::string_view number) {
    return std::string(kReferenceLinkBase) + "NIVARO_Message_" + std::string(number);
  }
};

TEST_F(LayerMessagesTest, ShapefileTakesThePlaceAndTheWholeTextInOneLine) {
  writeAs(gis::LayerFormat::Shape);
  message("ERROR - a", "b");
  EXPECT_TRUE(console.output.ends_with("XY: ERROR - a  b\n")) << console.output;

  // The first field has room for 254 characters, but is parted where none has blanks at an end.
  message("ERROR - " + std::string(243, 'x'), " y", std::string(600, 'z'));
  const auto field = [](std::string text, std::size_t width = 254) {
    text.resize(width, ' ');
    return text;
  };
  EXPECT_THAT(
      folder.bytes("run_messages_P.dbf"),
      AllOf(HasSubstr(' ' + field("ERROR - a  b") + field("", 3 * 254 + 64)),
            HasSubstr(' ' + field("ERROR - " + std::string(242, 'x')) +
                      field("x   y  " + std::string(247, 'z')) + field(std::string(254, 'z')) +
                      field(std::string(99, 'z')) + field("", 64))));
}

TEST_F(LayerMessagesTest, BothFormatsAreOneLayer) {
  writeAs(gis::LayerFormat::Both);
  message("ERROR 0305 - a", "b");
  module.gisLayers.gisCloseAll();

  EXPECT_TRUE(shown("XY: ERROR 0305 - a\nb\n"));
  EXPECT_THAT(folder.read("run_messages.mif"), HasSubstr("\"ERROR 0305 - a\\nb\"\n"));
  EXPECT_EQ(folder.read("run_messages.mid"), "\"ERROR 0305 - a  b\",\"" + link("0305") + "\"\n");
  EXPECT_THAT(folder.bytes("run_messages_P.dbf"), HasSubstr(" ERROR 0305 - a  b   "));
  for (const char* file : {"run_messages.mif", "run_messages.shp"})
    EXPECT_TRUE(shown("Closing GIS Layer 3 [" + folder.path(file) + "]...\n"));
}

}  // namespace
}  // namespace nivaro
