// Messages of every level to screen, log, message table and layers. Sections: "setup" (numbers), and
// "message" as often as wanted: a line of numbers (empty lines, place, one line), then its lines 1 to
// 3 and details 1 to 3. A code of 1 stands for a line break in a text.
#include "files/open_mode.hpp"
#include "fuzz/fuzz_input.hpp"
#include "text/blank_padded.hpp"

namespace nivaro::fuzz {
namespace {

constexpr std::int32_t kTableUnit = 99;

std::string withLineBreaks(std::string_view text) {
  std::string result(text);
  std::replace(result.begin(), result.end(), '\1', '\n');
  return result;
}

void setUp(FuzzModule& run, std::string_view text) {
  Numbers numbers(text);
  Module& module = run.module;
  MessageRecord& record = *run.record;
  module.files.initFileUnits(2000);
  if (numbers.flag()) record.log_unit = module.files.openFile("run.mlf", "O ", 1);
  if (numbers.flag()) {
    record.message_table_unit = kTableUnit;
    module.units.open(kTableUnit, "messages.csv", findOpenMode("O ")->options);
  }
  record.message_layer = numbers.upTo(101);
  record.secondary_message_layer = numbers.upTo(101);
  record.suppression_flag = logical(numbers.flag());
  record.default_x = numbers.real();
  record.default_y = numbers.real();
  record.unlocated_spacing = numbers.real();
  record.label_box_width = numbers.real();
  record.label_height = numbers.real();
  module.layerMessages.setLayers("run", numbers.flag() ? "CoordSys Earth" : "",
                                 static_cast<gis::LayerFormat>(1 + numbers.upTo(2)));
}

void write(FuzzModule& run, std::string_view text) {
  std::vector<std::string_view> lines = linesOf(text);
  lines.resize(7);
  MessageRecord& record = *run.record;
  setField(record.line1, withLineBreaks(lines[1]));
  setField(record.line2, withLineBreaks(lines[2]));
  setField(record.line3, withLineBreaks(lines[3]));
  setField(record.detail1, withLineBreaks(lines[4]));
  setField(record.detail2, withLineBreaks(lines[5]));
  setField(record.detail3, withLineBreaks(lines[6]));

  Numbers numbers(lines[0]);
  constexpr std::int32_t kBlankLines[] = {0, 1, 5, -1, -2, -99};
  const std::int32_t blankLines = kBlankLines[numbers.upTo(5)];
  const bool located = numbers.flag();
  const double x = numbers.real();
  const double y = numbers.real();
  record.one_line_flag = logical(numbers.flag());
  const std::int32_t errors = record.error_count;
  if (located)
    run.module.messages.dmessageXy(blankLines, x, y);
  else if (numbers.flag())
    run.module.messages.dmessage(blankLines);
  else
    run.module.messages.write(blankLines);

  require(record.error_count - errors == (lines[1].starts_with("ERROR") ? 1 : 0),
          "an error counts once");
  for (const std::string& left :
       {fieldText(record.line1), fieldText(record.line2), fieldText(record.line3),
        fieldText(record.line4), fieldText(record.detail1), fieldText(record.detail2),
        fieldText(record.detail3), fieldText(record.reference_link)})
    require(left.empty(), "a message that was written is cleared");
}

// As many text objects as records, and each record a line whose quotes are closed.
void requireSoundLayer(const Folder& folder, const std::string& name) {
  std::int64_t objects = 0;
  bool inData = false;
  const std::string mif = folder.bytes(name + ".mif");
  for (const std::string_view line : linesOf(mif)) {
    if (inData && (line == "Text" || line == "none")) ++objects;
    inData = inData || line == "Data";
  }
  const std::string mid = folder.bytes(name + ".mid");
  const std::vector<std::string_view> records = linesOf(mid);
  require(std::ssize(records) == objects, "a record for each object");
  for (const std::string_view record : records)
    require(std::count(record.begin(), record.end(), '"') % 2 == 0, "texts end within a record");
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  {
    FuzzModule run;
    setUp(run, input.text("setup"));
    const bool wereWritten = completes([&] {
      for (const Section& section : input.sections())
        if (section.name == "message") write(run, section.text);
    });
    if (Unit* table = run.module.units.find(kTableUnit)) {
      table->close();
      table->open("messages.csv", {});
      run.record->message_table_unit = 0;
      // A number that did not fit its column is asterisks and cannot be read back.
      const bool isReadable = folder.bytes("messages.csv").find("**") == std::string::npos;
      run.console.output.clear();
      completes([&] { run.module.messages.replayTable(kTableUnit); });
      if (isReadable)
        require(!run.console.shows("WARNING 0300"), "rows of the message table are read back");
    }
    if (wereWritten) completes([&] { run.module.gisLayers.gisCloseAll(); });
  }
  requireSoundLayer(folder, "run_messages");
  requireSoundLayer(folder, "run_messages_check");
}

}  // namespace nivaro::fuzz
