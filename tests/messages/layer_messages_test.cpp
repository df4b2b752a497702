#include "messages/layer_messages.hpp"

#include <gtest/gtest.h>

#include <memory>

#include "platform/support.hpp"
#include "support/temp_folder.hpp"
#include "support/test_process.hpp"

namespace nivaro {
namespace {

struct LayerMessagesTest : testing::Test {
  LayerMessagesTest() {
    files.initFileUnits(2000);
    messages.setLayerSink(
        [this](const MessagePlacement& at, MessageRecord& r) { placing.place(at, r); });
    placing.setLayers(folder.path("run"), "");
    record->message_layer = 3;
    record->secondary_message_layer = 3;
    record->label_height = 2.0;
    record->label_box_width = 50.0;
  }

  void message(std::string_view line1, std::string_view line2, std::string_view detail) {
    setField(record->line1, line1);
    setField(record->line2, line2);
    setField(record->detail1, detail);
    messages.dmessageXy(-2, 100.0, 200.0);
  }

  test::TempFolder folder;
  test::ScriptedConsole console;
  test::RecordingProcess process;
  std::unique_ptr<MessageRecord> record = std::make_unique<MessageRecord>();
  UnitTable units;
  Termination termination{console, process};
  FileUnits files{console, process, units, termination};
  gis::LayerTable layers{console, files, termination};
  MessageWriter messages{console, units, *record};
  LayerMessages placing{layers};
};

TEST_F(LayerMessagesTest, LabelStyleAndAttributesOfALocatedMessage) {
  message("ERROR 0305 - a \"b\"", "second", "detail");

  // Three label lines of height 2: the box begins 2 right of the place and reaches 3 up and down.
  const std::string mif = folder.read("run_messages.mif");
  EXPECT_NE(mif.find("Text\n"
                     "\"ERROR 0305 - a \"\"b\"\"\\nsecond\\ndetail\"\n"
                     "             102.000         197.000         152.000         203.000\n"
                     "    Font (\"Arial\",257,0,16711935,0)\n"
                     "    Label Line Arrow          100.000         200.000\n"),
            std::string::npos)
      << mif;
  EXPECT_EQ(folder.read("run_messages.mid"), "\"ERROR 0305 - a \"\"b\"\"  second  detail\",\"" +
                                                 std::string(kReferenceLinkBase) +
                                                 "NIVARO_Message_0305\"\n");
}

TEST_F(LayerMessagesTest, LineBreaksOfTheHostDoNotBreakTheLayer) {
  message("ERROR - a\n", "b\r\nc", "D:\\new\\");

  EXPECT_EQ(folder.read("run_messages.mid"), "\"ERROR - a   b  c  D:\\new\\\",\"\"\n");
  EXPECT_NE(folder.read("run_messages.mif").find("Text\n\"ERROR - a \\nb  c\\nD:\\new\\\"\n"),
            std::string::npos);
}

TEST_F(LayerMessagesTest, LongTextsKeepTheirQuotesAndTheirLink) {
  message("ERROR 0305 - " + std::string(3000, 'x'), "", "");

  const std::string mid = folder.read("run_messages.mid");
  EXPECT_EQ(mid.size(), 1000U + 1U);
  EXPECT_TRUE(
      mid.ends_with("x\",\"" + std::string(kReferenceLinkBase) + "NIVARO_Message_0305\"\n"));
}

TEST_F(LayerMessagesTest, ChecksGoToASecondLayerWhereTheHostWantsOne) {
  record->secondary_message_layer = 4;
  message("CHECK 0008 - c", "", "");
  message("WARNING - w", "", "");

  EXPECT_EQ(folder.read("run_messages_check.mid"),
            "\"CHECK 0008 - c\",\"" + std::string(kReferenceLinkBase) + "NIVARO_Message_0008\"\n");
  EXPECT_EQ(folder.read("run_messages.mid"), "\"WARNING - w\",\"\"\n");
}

TEST_F(LayerMessagesTest, ShapefileTakesThePlaceAndOneLine) {
  gis::LayerSettings settings;
  settings.format = gis::LayerFormat::Shape;
  settings.name = folder.path("shapes");
  settings.columns = {{"Message", gis::ColumnType::Char, 40}, {"Link", gis::ColumnType::Char, 64}};
  layers.gisOpenLayer(3, settings);
  setField(record->line1, "ERROR - a");
  setField(record->line2, "b");
  messages.dmessageXy(0, 100.0, 200.0);

  EXPECT_TRUE(console.output.ends_with("XY: ERROR - a  b\n")) << console.output;
  EXPECT_NE(folder.read("shapes_P.dbf").find("ERROR - a  b   "), std::string::npos);
}

TEST_F(LayerMessagesTest, NoLayerForALocatedMessageEndsTheRun) {
  record->message_layer = 0;

  EXPECT_THROW(message("ERROR 0305 - a", "", ""), test::ProcessEnded);
  EXPECT_NE(console.output.find("Should not be here gisWriteObject[gisID=0] - please contact " +
                                std::string(kSupportAddress)),
            std::string::npos);
}

}  // namespace
}  // namespace nivaro
