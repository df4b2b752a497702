#include "messages/table.hpp"

#include "platform/fixed_field.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {

namespace {

std::string quotedField(std::string_view text) {
  return ",\"" + doubleQuote(oneLine(text)) + "\"";
}

}  // namespace

std::string messageTableRow(const MessageRecord& record) {
  const std::string text = fieldText(record.line1) + "  " +
                           std::string(leftTrimmed(fieldText(record.line2))) + "  " +
                           std::string(leftTrimmed(fieldText(record.line3)));
  return integerField(record.message_number, 5, 4) + "," + integerField(record.message_level, 2) +
         "," + fixedField(record.last_x, 16, 3) + "," + fixedField(record.last_y, 16, 3) +
         quotedField(text) + quotedField(fieldText(record.detail1)) +
         quotedField(fieldText(record.detail2)) + quotedField(fieldText(record.detail3)) +
         quotedField(fieldText(record.reference_link));
}

ReadStatus readMessageTableRow(Unit& table, MessageRecord& record) {
  std::int32_t number = 0;
  std::int32_t level = 0;
  double x = 0.0;
  double y = 0.0;
  std::string text;
  std::string detail;
  const ReadStatus status = ListInput(table).readAll(number, level, x, y, text, detail);
  if (status != ReadStatus::Ok) return status;
  setField(record.line1, text);
  setField(record.detail1, detail);
  return ReadStatus::Ok;
}

}  // namespace nivaro
