#include "text/line_reader.hpp"

#include <string_view>

#include "platform/fixed_field.hpp"
#include "platform/list_input.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

Report unreadable(std::string_view line1, std::int32_t unitNumber) {
  Report report;
  report.line1.append(line1).append(integerField(unitNumber, 5));
  return report;
}

}  // namespace

Outcome<bool> readLine(Unit* unit, std::int32_t unitNumber, std::size_t width, std::string& line,
                       const VariableTable& variables, bool echo, Console& console) {
  std::string_view record;
  const ReadStatus status = unit == nullptr ? ReadStatus::Error : unit->readRecord(record);
  if (status == ReadStatus::End) {
    return unreadable(
        "ERROR 0202 - End-of-file encountered reading text line from file unit number", unitNumber);
  }
  if (status == ReadStatus::Error) {
    return unreadable("ERROR 0201 - Reading text line from file unit number", unitNumber);
  }

  line = record.substr(0, width);
  if (echo) console.line(">> " + std::string(trimmed(line)));
  removeTabs(line);

  const Outcome<bool> holdsNothing = commentLine(line, variables);
  if (!holdsNothing) return holdsNothing.report();
  if (line.size() > width) line.resize(width);  // values may be longer than their names
  return !holdsNothing.value();
}

bool eofLineRead(Unit* unit, std::string& buffer) {
  return unit == nullptr || ListInput(*unit).read(buffer) != ReadStatus::Ok;
}

}  // namespace nivaro
