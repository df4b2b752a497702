#include "messages/writer.hpp"

#include <sstream>
#include <vector>

#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

struct Writer : test::ModuleTest {
  Writer() { writer.setLayerSink({}); }

  // A message without a place.
  void message(std::string_view line1, std::int32_t blankLines = -2) {
    setField(record->line1, line1);
    writer.write(blankLines);
  }

  // Lines 1 to 3 and details 1 to 3, with bars between them.
  void fill(const std::string& texts) {
    std::istringstream rest(texts);
    const auto next = [&](auto& field) {
      std::string text;
      std::getline(rest, text, '|');
      setField(field, text);
    };
    next(record->line1), next(record->line2), next(record->line3);
    next(record->detail1), next(record->detail2), next(record->detail3);
  }

  static std::string link(std::string_view number) {
    return std::string(kReferenceLinkBase) + "NIVARO_Message_" + std::string(number);
  }

  MessageWriter& writer = module.messages;
};

TEST_F(Writer, FieldsEndWithTheirTextWhateverFillsThem) {
  const std::string text = "a" + std::string(98, ' ') + "b";  // 100 of 10,000 characters
  for (const std::size_t blanks : {0U, 64U, 9837U, 9900U}) {
    setField(record->line1, text + std::string(blanks, ' ') + std::string(9900 - blanks, '\0'));
    EXPECT_EQ(fieldText(record->line1), text) << blanks;
  }
  setField(record->line1, {"\0a\0b", 4});
  EXPECT_EQ(fieldText(record->line1), " a b") << "codes of 0 within a text count as blanks too";
  setField(record->line1, "");
  EXPECT_EQ(fieldText(record->line1), "");
}

TEST_F(Writer, MessageIsShownAndLoggedAndTheRecordIsCleared) {
  const struct {
    std::string texts;
    Logical oneLine;
    std::int32_t blankLines;
    std::string screen, log;
  } cases[] = {
      {"plain", 0, 2, "\n\nplain\n", "\n\nplain\n"},
      {"log only", 0, -1, "", "log only\n"},
      {"nowhere", 0, -2, "", ""},
      {"WARNING 0317 - first|second|third|a||c", 0, 0,
       "WARNING 0317 - first\nsecond\nthird\na; c\n",
       "WARNING 0317 - first\nsecond\nthird\na; c\nWiki Link: " + link("0317") + "\n"},
      // The separator of the second detail comes with it.
      {"ERROR 0010 - first||third||b", -1, 1, "\nERROR 0010 - first  third  ; b\n",
       "\nERROR 0010 - first  third  ; b  " + link("0010") + "\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.texts);
    const std::string logBefore = log();
    console.output.clear();
    fill(c.texts);
    record->one_line_flag = c.oneLine;

    writer.dmessage(c.blankLines);

    EXPECT_EQ(console.output, c.screen);
    EXPECT_EQ(log(), logBefore + c.log);
    for (const std::string& field :
         {fieldText(record->line1), fieldText(record->line2), fieldText(record->line3),
          fieldText(record->line4), fieldText(record->detail1), fieldText(record->detail2),
          fieldText(record->detail3), fieldText(record->reference_link)})
      EXPECT_EQ(field, "");
    EXPECT_EQ(record->one_line_flag, 0);
  }
  EXPECT_EQ(record->message_number, 10);  // left for the host
}

TEST_F(Writer, LevelsDecideOnCountersNumbersLayersAndFonts) {
  struct Case {
    const char* line1;
    // Level and number; errors, warnings and checks; those with a location; the layer.
    std::vector<int> expected;
    const char* font;
  };
  // Counters after a located message and then the same message without a location.
  const Case cases[] = {
      {"ERROR 0305 - a", {1, 305, 2, 0, 0, 1, 0, 0, 7}, "257,0,16711935,0"},
      {"WARNING 0317 - a", {2, 317, 0, 2, 0, 0, 1, 0, 7}, "257,0,16776960,0"},
      {"CHECK 0175 - a", {3, 175, 0, 0, 2, 0, 0, 1, 8}, "257,0,255,16777215"},
      {"UNSTABLE 12345 - a", {4, 12345, 0, 0, 0, 0, 0, 0, 7}, "257,0,16711935,0"},
      // Counted with a location only.
      {"INFORMATION: 0305 a", {5, 0, 0, 1, 0, 0, 1, 0, 7}, "257,0,16711935,0"},
      {"ERROR - Reading line", {1, 0, 2, 0, 0, 1, 0, 0, 7}, "257,0,16711935,0"},
      {"ERROR", {1, 0, 2, 0, 0, 1, 0, 0, 7}, "257,0,16711935,0"},
      // Letter case counts.
      {"error 0305 - a", {0, 0, 0, 0, 0, 0, 0, 0, 8}, "257,0,53248,16777215"},
  };
  record->message_layer = 7;
  record->secondary_message_layer = 8;
  MessagePlacement placed{};
  writer.setLayerSink([&](const MessagePlacement& p, MessageRecord&) { placed = p; });
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line1);
    writer.dmessageResetCounters();
    setField(record->line1, c.line1);
    writer.dmessageXy(-2, 100.0, 200.0);
    setField(record->line1, c.line1);
    writer.dmessage(-2);

    const MessageRecord& r = *record;
    EXPECT_THAT((std::vector{r.message_level, r.message_number, r.error_count, r.warning_count,
                             r.check_count, r.located_error_count, r.located_warning_count,
                             r.located_check_count, placed.layer}),
                c.expected);
    EXPECT_EQ(placed.font, "Font (\"Arial\"," + std::string(c.font) + ")");
  }
}

TEST_F(Writer, SuppressionDiscardsNumberedMessagesOnly) {
  record->suppression_flag = -1;
  for (const char* line : {"WARNING 0317 - a", "WARNING - b", "plain"}) message(line, 0);
  EXPECT_EQ(console.output, "NoXY: WARNING - b\nplain\n");
}

TEST_F(Writer, PlacesLocatedAndStackedMessagesOnTheirLayers) {
  std::vector<std::pair<double, double>> placed;
  writer.setLayerSink(
      [&](const MessagePlacement& p, MessageRecord&) { placed.emplace_back(p.x, p.y); });
  record->default_x = 1000.0;
  record->default_y = 2000.0;

  message("ERROR 0010 - no spacing: no object");
  EXPECT_TRUE(placed.empty());

  record->unlocated_spacing = 5.0;
  message("ERROR 0010 - the second without a location");
  setField(record->line1, "CHECK 0008 - one map unit away");
  writer.dmessageXy(-2, 1001.0, 2000.0);
  setField(record->line1, "CHECK 0008 - nearer than that");
  writer.dmessageXy(-99, 1000.999, 2000.0);
  message("plain text without a location is not placed");

  // Those without a location in a column of their own, 5 apart from the default point down.
  EXPECT_THAT(placed,
              testing::ElementsAre(std::pair(1000.0, 2000.0 - 2 * 5.0), std::pair(1001.0, 2000.0),
                                   std::pair(1000.0, 2000.0 - 3 * 5.0)));
}

TEST_F(Writer, TableRowsHoldTheMessageInQuotedFields) {
  record->message_table_unit = module.files.openFile(folder.path("messages.csv"), "O ", 1);
  fill("ERROR 0305 - Layer \"a\"|   more|||b");
  writer.dmessageXy(-2, 10.0, 20.0);
  message("ERROR - Reading line");
  message("plain text has no row");

  // Number in 5 columns with 4 digits, level in 2, two places of 16 columns with 3 decimals.
  EXPECT_EQ(
      folder.read("messages.csv"),
      R"( 0305, 1,          10.000,          20.000,"ERROR 0305 - Layer ""a""  more","","b","",")" +
          link("0305") + "\"\n" +
          R"( 0000, 1,      -99999.000,      -99999.000,"ERROR - Reading line","","","","")"
          "\n");
}

TEST_F(Writer, ReplayPlacesTheRowsAndStopsAtABadOne) {
  folder.write("old.csv", R"( 0305, 1,     1.000,     2.000,"ERROR 0305 - a, ""b""","d","","",""
 0010, 1,     1.000,     2.000,"ERROR 0010 - c","","","",""
 0010, x,     1.000,     2.000,"ERROR 0010 - never","","","",""
)");
  std::vector<std::string> placed;
  writer.setLayerSink([&](const MessagePlacement&, MessageRecord& r) {
    placed.push_back(fieldText(r.line1) + "|" + fieldText(r.line4));
  });
  record->unlocated_spacing = 1.0;

  writer.replayTable(module.files.openFile(folder.path("old.csv"), "I ", 1));

  const std::string warning = "WARNING 0300 - Problem with reading messages.csv file";
  EXPECT_THAT(placed, testing::ElementsAre("ERROR 0305 - a, \"b\"|d", "ERROR 0010 - c|",
                                           testing::StartsWith(warning)));
  EXPECT_TRUE(log().starts_with("\nNoXY: " + warning)) << "rows were logged by their own run";
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
