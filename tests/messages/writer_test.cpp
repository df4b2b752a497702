#include "messages/writer.hpp"

#include <vector>

#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

struct Writer : test::ModuleTest {
  Writer() { writer.setLayerSink({}); }
  void message(std::string_view line1) { setField(record->line1, line1); }

  MessageWriter& writer = module.messages;
};

TEST_F(Writer, FieldsEndWithTheirTextWhateverFillsThem) {
  const std::string text = "a" + std::string(98, ' ') + "b";  // 100 characters
  for (const auto& [blanks, zeros] : {std::pair(9900, 0), {0, 9900}, {64, 9836}, {9837, 63}}) {
    const std::string filled = text + std::string(static_cast<std::size_t>(blanks), ' ') +
                               std::string(static_cast<std::size_t>(zeros), '\0');
    setField(record->line1, filled);
    EXPECT_EQ(fieldText(record->line1), text) << blanks;
  }
  setField(record->line1, std::string("\0a\0b", 4));
  EXPECT_EQ(fieldText(record->line1), " a b") << "codes of 0 within a text count as blanks too";
  setField(record->line1, "");
  EXPECT_EQ(fieldText(record->line1), "");
}

TEST_F(Writer, MessageIsCountedOnceNumberedAndLinkedInTheLogOnly) {
  message("ERROR 0010 - Bad value");
  writer.dmessage(0);

  EXPECT_EQ(record->located_error_count, 0);
  EXPECT_EQ(console.output, "ERROR 0010 - Bad value\n");
  EXPECT_EQ(log(), "ERROR 0010 - Bad value\nWiki Link: " + std::string(kReferenceLinkBase) +
                       "NIVARO_Message_0010\n");

  message("ERROR 0010 - Bad value");
  writer.write(0);  // with the tag of a message that has no place

  EXPECT_TRUE(console.output.ends_with("\nNoXY: ERROR 0010 - Bad value\n"));
  EXPECT_EQ(record->error_count, 2);
  EXPECT_EQ(record->located_error_count, 1);
  EXPECT_EQ(record->unlocated_count, 1);
}

TEST_F(Writer, LevelsDecideOnCountersAndNumbers) {
  struct Case {
    const char* line1;
    // Level and number, errors, warnings and checks, and those with a location.
    std::vector<int> expected;
  };
  // Counters after a located message and then the same message without a location.
  const Case cases[] = {
      {"ERROR 0305 - a", {1, 305, 2, 0, 0, 1, 0, 0}},
      {"WARNING 0317 - a", {2, 317, 0, 2, 0, 0, 1, 0}},
      {"CHECK 0175 - a", {3, 175, 0, 0, 2, 0, 0, 1}},
      {"UNSTABLE 12345 - a", {4, 12345, 0, 0, 0, 0, 0, 0}},
      {"INFORMATION: 0305 a", {5, 0, 0, 1, 0, 0, 1, 0}},  // counted with a location only
      {"ERROR - Reading line", {1, 0, 2, 0, 0, 1, 0, 0}},
      {"ERROR", {1, 0, 2, 0, 0, 1, 0, 0}},
      {"error 0305 - a", {0, 0, 0, 0, 0, 0, 0, 0}},  // letter case counts
      {"NIVARO MORPHOLOGY", {0, 0, 0, 0, 0, 0, 0, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line1);
    writer.dmessageResetCounters();
    message(c.line1);
    writer.dmessageXy(-2, 100.0, 200.0);
    message(c.line1);
    writer.dmessage(-2);

    EXPECT_THAT(
        (std::vector{record->message_level, record->message_number, record->error_count,
                     record->warning_count, record->check_count, record->located_error_count,
                     record->located_warning_count, record->located_check_count}),
        c.expected);
  }
}

TEST_F(Writer, BlankLinesSelectTheOutputs) {
  message("plain");
  writer.dmessage(2);
  message("log only");
  writer.dmessage(-1);
  message("nowhere");
  writer.dmessage(-2);
  message("nowhere");
  writer.dmessageXy(-99, 0.0, 0.0);

  EXPECT_EQ(console.output, "\n\nplain\n");
  EXPECT_EQ(log(), "\n\nplain\nlog only\n");
}

TEST_F(Writer, AllLinesArePrintedAndTheRecordIsCleared) {
  message("WARNING 0317 - first");
  setField(record->line2, "second");
  setField(record->line3, "third");
  setField(record->detail1, "a");
  setField(record->detail3, "c");

  writer.dmessageXy(0, 50.0, 60.0);

  EXPECT_EQ(console.output, "XY: WARNING 0317 - first\nsecond\nthird\na; c\n");
  for (const std::string& field :
       {fieldText(record->line1), fieldText(record->line2), fieldText(record->line3),
        fieldText(record->line4), fieldText(record->detail1), fieldText(record->detail3),
        fieldText(record->location_tag), fieldText(record->reference_link)})
    EXPECT_EQ(field, "");
  EXPECT_EQ(record->last_x, -99999.0);
  EXPECT_EQ(record->message_number, 317);  // left for the host
}

TEST_F(Writer, OneLineModeJoinsLinesAndLink) {
  message("ERROR 0010 - first");
  setField(record->line3, "third");
  setField(record->detail2, "b");  // its separator comes with it
  record->one_line_flag = -1;

  writer.dmessage(1);

  EXPECT_EQ(console.output, "\nERROR 0010 - first  third  ; b\n");
  EXPECT_EQ(log(), "\nERROR 0010 - first  third  ; b  " + std::string(kReferenceLinkBase) +
                       "NIVARO_Message_0010\n");
  EXPECT_EQ(record->one_line_flag, 0);
}

TEST_F(Writer, SuppressionDiscardsNumberedMessagesOnly) {
  record->suppression_flag = -1;
  for (const char* line : {"WARNING 0317 - a", "WARNING - b", "plain"}) {
    message(line);
    writer.write(0);
  }

  EXPECT_EQ(console.output, "NoXY: WARNING - b\nplain\n");
}

TEST_F(Writer, ZeroCodesInTheRecordAreBlanks) {
  record->line1[0] = 'x';  // the rest of the block is zero, as at load
  record->line2[3] = 'y';

  writer.dmessage(0);

  EXPECT_EQ(console.output, "x\n   y\n");
  EXPECT_EQ(log().find('\0'), std::string::npos);
}

TEST_F(Writer, PlacesLocatedAndStackedMessagesOnTheirLayers) {
  std::vector<std::tuple<std::int32_t, double, double>> placed;
  writer.setLayerSink(
      [&](const MessagePlacement& p, MessageRecord&) { placed.emplace_back(p.layer, p.x, p.y); });
  record->message_layer = 7;
  record->secondary_message_layer = 8;
  record->default_x = 1000.0;
  record->default_y = 2000.0;

  message("ERROR 0010 - no spacing: no object");
  writer.write(-2);
  EXPECT_TRUE(placed.empty());

  record->unlocated_spacing = 5.0;
  message("ERROR 0010 - the second without a location");
  writer.write(-2);
  message("CHECK 0008 - one map unit away");
  writer.dmessageXy(-2, 1001.0, 2000.0);
  message("CHECK 0008 - nearer than that");
  writer.dmessageXy(-99, 1000.999, 2000.0);
  message("plain text without a location is not placed");
  writer.write(-2);

  // Those without a location in a column of their own, 5 apart from the default point down.
  EXPECT_THAT(placed, testing::ElementsAre(std::tuple(7, 1000.0, 2000.0 - 2 * 5.0),
                                           std::tuple(8, 1001.0, 2000.0),
                                           std::tuple(8, 1000.0, 2000.0 - 3 * 5.0)));
}

TEST_F(Writer, TableRowsHoldTheMessageInQuotedFields) {
  record->message_table_unit = module.files.openFile(folder.path("messages.csv"), "O ", 1);
  message("ERROR 0305 - Layer \"a\"");
  setField(record->line2, "   more");
  setField(record->detail2, "b");
  record->last_x = -99999.0;
  record->last_y = -99999.0;
  writer.dmessage(-2);
  message("ERROR - Reading line");
  writer.dmessage(-2);
  message("plain text has no row");
  writer.dmessage(-2);

  // Number in 5 columns with 4 digits, level in 2, two places of 16 columns with 3 decimals.
  EXPECT_EQ(
      folder.read("messages.csv"),
      " 0305, 1,      -99999.000,      -99999.000,\"ERROR 0305 - Layer \"\"a\"\"  more\",\"\","
      "\"b\",\"\",\"" +
          std::string(kReferenceLinkBase) +
          "NIVARO_Message_0305\"\n"
          " 0000, 1,      -99999.000,      -99999.000,\"ERROR - Reading line\",\"\",\"\",\"\","
          "\"\"\n");
}

TEST_F(Writer, ReplayPlacesTheRowsAndStopsAtABadOne) {
  folder.write("old.csv",
               " 0305, 1,     1.000,     2.000,\"ERROR 0305 - a, \"\"b\"\"\",\"d\",\"\",\"\",\"\"\n"
               " 0010, 1,     1.000,     2.000,\"ERROR 0010 - c\",\"\",\"\",\"\",\"\"\n"
               " 0010, x,     1.000,     2.000,\"ERROR 0010 - never\",\"\",\"\",\"\",\"\"\n");
  std::vector<std::string> placed;
  writer.setLayerSink([&](const MessagePlacement&, MessageRecord& r) {
    placed.push_back(fieldText(r.line1) + "|" + fieldText(r.line4));
  });
  record->unlocated_spacing = 1.0;

  writer.replayTable(module.files.openFile(folder.path("old.csv"), "I ", 1));

  ASSERT_EQ(placed.size(), 3U);  // two rows and the warning about the third
  EXPECT_EQ(placed[0], "ERROR 0305 - a, \"b\"|d");
  EXPECT_EQ(placed[1], "ERROR 0010 - c|");
  EXPECT_TRUE(shown("WARNING 0300 - Problem with reading messages.csv file"));
}

TEST_F(Writer, RuleGoesToScreenAndUnit) {
  writer.dline(0);
  EXPECT_EQ(log(), "");

  writer.dline(module.logUnit);
  EXPECT_EQ(log(), "\n" + std::string(80, '_') + "\n");
  EXPECT_EQ(console.output, log() + log());
}

}  // namespace
}  // namespace nivaro
