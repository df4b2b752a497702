#include "messages/writer.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "messages/table.hpp"
#include "platform/list_input.hpp"
#include "platform/support.hpp"
#include "text/blank_padded.hpp"
#include "text/line_reader.hpp"
#include "text/number_text.hpp"

namespace nivaro {

namespace {

constexpr double kNoPlace = -99999.0;

// A point nearer than this to the default point is the default point.
constexpr double kLocatedDistance = 1.0;

// Selects the messages layer as the only output of a message with a location.
constexpr std::int32_t kLayerOnly = -99;

// The details in one line. The separator belongs to the second and third detail, whether or not
// there is a first.
std::string joinedDetails(const MessageRecord& record) {
  std::string joined = fieldText(record.detail1);
  for (const std::string& detail : {fieldText(record.detail2), fieldText(record.detail3)})
    if (!detail.empty()) joined += "; " + detail;
  return joined;
}

bool isBlank(const char (&tag)[8]) {
  return fieldText(tag).empty();
}

}  // namespace

MessageWriter::MessageWriter(Console& console, UnitTable& units, MessageRecord& record)
    : console_(console), units_(units), record_(record) {}

void MessageWriter::dmessageXy(std::int32_t blankLines, double x, double y) {
  const double dx = x - record_.default_x;
  const double dy = y - record_.default_y;
  const bool located = std::sqrt(dx * dx + dy * dy) >= kLocatedDistance;
  if (located) setField(record_.location_tag, "XY:");

  const std::string line1 = fieldText(record_.line1);
  const MessageLevel& level = levelOf(line1);
  record_.message_level = level.level;
  if (level.count != nullptr) ++(record_.*level.count);
  if (level.locatedCount != nullptr) ++(record_.*level.locatedCount);

  // A message whose number cannot be read is not held back: it may be any.
  const bool numberOk = readNumber(level, line1);
  const bool suppressible = level.level >= 1 && level.level <= 4;
  if (numberOk && suppressible && isTrue(record_.suppression_flag)) {
    dmessageClear();
    return;
  }
  setField(record_.line4, joinedDetails(record_));  // shown by the label

  if (located) {
    place(level, x, y);
  } else if (level.level >= 1) {
    // Stacked below the default point, so that labels do not cover each other.
    ++record_.unlocated_count;
    setField(record_.location_tag, "NoXY:");
    if (record_.unlocated_spacing > 0.0)
      place(level, record_.default_x,
            record_.default_y - record_.unlocated_count * record_.unlocated_spacing);
  }

  if (blankLines == kLayerOnly) {
    dmessageClear();
    return;
  }
  dmessage(blankLines);
}

void MessageWriter::dmessage(std::int32_t blankLines) {
  // With a tag the message comes from dmessageXy, which has classified and counted it.
  if (isBlank(record_.location_tag)) {
    const std::string line1 = fieldText(record_.line1);
    const MessageLevel& level = levelOf(line1);
    record_.message_level = level.level;
    if (level.countedWithoutLocation) ++(record_.*level.count);
    readNumber(level, line1);
  }

  if (record_.message_table_unit >= 1 && record_.message_level != 0)
    toUnit(record_.message_table_unit, messageTableRow(record_));
  setField(record_.line4, joinedDetails(record_));
  print(blankLines);
  dmessageClear();
}

// Number and level stay: they tell a host what the last message was.
void MessageWriter::dmessageClear() {
  setField(record_.line1, "");
  setField(record_.line2, "");
  setField(record_.line3, "");
  setField(record_.line4, "");
  setField(record_.location_tag, "");
  setField(record_.detail1, "");
  setField(record_.detail2, "");
  setField(record_.detail3, "");
  setField(record_.reference_link, "");
  record_.last_x = kNoPlace;
  record_.last_y = kNoPlace;
  record_.one_line_flag = logical(false);
}

void MessageWriter::dmessageResetCounters() {
  record_.error_count = 0;
  record_.warning_count = 0;
  record_.check_count = 0;
  record_.located_error_count = 0;
  record_.located_warning_count = 0;
  record_.located_check_count = 0;
}

void MessageWriter::dline(std::int32_t unit) {
  const std::string rule(80, '_');
  console_.line("");
  console_.line(rule);
  if (unit < 1) return;
  toUnit(unit, "");
  toUnit(unit, rule);
}

void MessageWriter::write(std::int32_t blankLines) {
  dmessageXy(blankLines, record_.default_x, record_.default_y);
}

void MessageWriter::replayTable(std::int32_t unit) {
  Unit* table = units_.find(unit);
  std::string ignored;
  while (!eofLineRead(table, ignored)) {
    table->backspace();  // the test for the end has taken the row's line
    if (readMessageTableRow(*table, record_) != ReadStatus::Ok) {
      setField(record_.line1,
               "WARNING 0300 - Problem with reading messages.csv file - please contact " +
                   std::string(kSupportAddress) + ".");
      setField(record_.line2,
               "               Some or all non-spatial messages may not appear in _messages GIS "
               "layer.");
      write(1);
      return;
    }
    write(kLayerOnly);  // the row was on screen and log in the run that wrote it
  }
}

void MessageWriter::toUnit(std::int32_t unit, std::string_view line) {
  if (Unit* file = units_.find(unit)) file->writeLogLine(line);
}

void MessageWriter::toLog(std::string_view line) {
  if (record_.log_unit >= 1) toUnit(record_.log_unit, line);
}

// The message number, with its reference link; both empty when there is none. False when the level
// has a number field that does not read as an integer.
bool MessageWriter::readNumber(const MessageLevel& level, std::string_view line1) {
  record_.message_number = 0;
  setField(record_.reference_link, "");
  if (level.numberColumn == 0) return true;

  constexpr std::size_t kNumberWidth = 6;
  const std::size_t start = std::min(level.numberColumn - 1, line1.size());
  std::int32_t number = 0;
  if (readListItem(line1.substr(start, kNumberWidth), number) != ReadStatus::Ok) return false;
  record_.message_number = number;
  if (number >= 1)
    setField(record_.reference_link,
             std::string(kReferenceLinkBase) + "NIVARO_Message_" + aintegerPrec0(number, 4));
  return true;
}

void MessageWriter::place(const MessageLevel& level, double x, double y) {
  const std::int32_t layer =
      level.secondaryLayer ? record_.secondary_message_layer : record_.message_layer;
  if (layerSink_) layerSink_({layer, level.font, x, y}, record_);
  record_.last_x = x;
  record_.last_y = y;
}

void MessageWriter::print(std::int32_t blankLines) {
  const bool toScreen = blankLines >= 0;
  const bool toLogFile = blankLines >= -1;
  // The log comes first, so that it has all that was seen on the screen, even of a host that is killed.
  const auto both = [&](std::string_view line) {
    if (toLogFile) toLog(trimmed(line));
    if (toScreen) console_.line(trimmed(line));
  };

  for (std::int32_t i = 0; i < blankLines; ++i) both("");

  const std::string tag = fieldText(record_.location_tag);
  const std::string link = fieldText(record_.reference_link);
  // The log alone names the link; who reads the screen has no use for it.
  std::string first = fieldText(record_.line1);
  if (!tag.empty()) first = tag + " " + first;

  if (isTrue(record_.one_line_flag)) {
    for (const std::string& more :
         {fieldText(record_.line2), fieldText(record_.line3), fieldText(record_.line4)})
      if (!more.empty()) first += "  " + more;
    if (toLogFile) toLog(trimmed(link.empty() ? first : first + "  " + link));
    if (toScreen) console_.line(trimmed(first));
    return;
  }

  both(first);
  for (const std::string& more :
       {fieldText(record_.line2), fieldText(record_.line3), fieldText(record_.line4)})
    if (!more.empty()) both(more);
  if (toLogFile && !link.empty()) toLog("Wiki Link: " + link);
}

}  // namespace nivaro
