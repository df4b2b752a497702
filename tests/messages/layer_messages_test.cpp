#include "messages/layer_messages.hpp"

#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

using testing::HasSubstr;

struct LayerMessagesTest : test::ModuleTest {
  LayerMessagesTest() {
    module.layerMessages.setLayers(folder.path("run"), "");
    record->message_layer = record->secondary_message_layer = 3;
    record->label_height = 2.0;
    record->label_box_width = 50.0;
  }

  void message(std::string_view line1, std::string_view line2 = "", std::string_view detail = "",
               double x = 100.0) {
    setField(record->line1, line1);
    setField(record->line2, line2);
    setField(record->detail1, detail);
    module.messages.dmessageXy(0, x, 200.0);
  }

  static std::string link(std::string_view number) {
    return std::string(kReferenceLinkBase) + "NIVARO_Message_" + std::string(number);
  }
};

TEST_F(LayerMessagesTest, LabelStyleAndAttributesOfALocatedMessage) {
  message("ERROR 0305 - a \"b\"", "second", "detail");

  // Three label lines of height 2: the box begins 2 right of the place and reaches 3 up and down.
  EXPECT_THAT(folder.read("run_messages.mif"),
              HasSubstr("Text\n\"ERROR 0305 - a \"\"b\"\"\\nsecond\\ndetail\"\n"
                        "             102.000         197.000         152.000         203.000\n"
                        "    Font (\"Arial\",257,0,16711935,0)\n"
                        "    Label Line Arrow          100.000         200.000\n"));
  EXPECT_EQ(folder.read("run_messages.mid"),
            "\"ERROR 0305 - a \"\"b\"\"  second  detail\",\"" + link("0305") + "\"\n");

  message("ERROR - a", "", "", -4e11);  // wider than the 16 columns of the others
  EXPECT_THAT(folder.read("run_messages.mif"),
              HasSubstr(" -399999999998.000         199.000 -399999999948.000         201.000\n"
                        "    Font (\"Arial\",257,0,16711935,0)\n"
                        "    Label Line Arrow  -400000000000.000         200.000\n"));
}

TEST_F(LayerMessagesTest, LineBreaksOfTheHostDoNotBreakTheLayer) {
  message("ERROR - a\n", "b\r\nc", "D:\\new\\");

  EXPECT_EQ(folder.read("run_messages.mid"), "\"ERROR - a   b  c  D:\\new\\\",\"\"\n");
  EXPECT_THAT(folder.read("run_messages.mif"),
              HasSubstr("Text\n\"ERROR - a \\nb  c\\nD:\\new\\\"\n"));
}

TEST_F(LayerMessagesTest, LongTextsKeepTheirQuotesAndTheirLink) {
  message("ERROR 0305 - " + std::string(3000, 'x'));
  const std::string end = "\",\"" + link("0305") + "\"\n";
  EXPECT_EQ(folder.read("run_messages.mid"),
            "\"ERROR 0305 - " + std::string(1001 - 14 - end.size(), 'x') + end);
}

TEST_F(LayerMessagesTest, ChecksGoToASecondLayerWhereTheHostWantsOne) {
  record->secondary_message_layer = 4;
  message("CHECK 0008 - c");
  message("WARNING - w");

  EXPECT_EQ(folder.read("run_messages_check.mid"), "\"CHECK 0008 - c\",\"" + link("0008") + "\"\n");
  EXPECT_EQ(folder.read("run_messages.mid"), "\"WARNING - w\",\"\"\n");
}

TEST_F(LayerMessagesTest, ShapefileTakesThePlaceAndOneLine) {
  module.gisLayers.gisOpenLayer(3, {.format = gis::LayerFormat::Shape,
                                    .name = folder.path("shapes"),
                                    .columns = {{"Message", gis::ColumnType::Char, 40},
                                                {"Link", gis::ColumnType::Char, 64}}});
  message("ERROR - a", "b");

  EXPECT_TRUE(console.output.ends_with("XY: ERROR - a  b\n")) << console.output;
  EXPECT_THAT(folder.bytes("shapes_P.dbf"), HasSubstr("ERROR - a  b   "));
}

TEST_F(LayerMessagesTest, NoLayerForALocatedMessageEndsTheRun) {
  record->message_layer = 0;
  EXPECT_THROW(message("ERROR 0305 - a"), test::ProcessEnded);
  EXPECT_TRUE(shown("Should not be here gisWriteObject[gisID=0] - please contact " +
                    std::string(kSupportAddress)));
}

}  // namespace
}  // namespace nivaro
