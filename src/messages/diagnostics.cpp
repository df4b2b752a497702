#include "messages/diagnostics.hpp"

#include <string>

#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {

Diagnostics::Diagnostics(Console& console, MessageWriter& messages, Termination& termination)
    : console_(console), messages_(messages), termination_(termination) {}

void Diagnostics::deliver(const Report& report) {
  MessageRecord& record = messages_.record();
  setField(record.line1, printable(report.line1));
  setField(record.line2, printable(report.line2));
  setField(record.line3, printable(report.line3));
  setField(record.detail1, printable(report.detail1));
  setField(record.detail2, printable(report.detail2));
  setField(record.detail3, printable(report.detail3));
  messages_.write(report.blankLines);
}

void Diagnostics::fatal(const Report& report) {
  deliver(report);
  termination_.exits();
}

void Diagnostics::fatalOnScreen(std::string_view text) {
  console_.line(printable(text));
  termination_.exits();
}

void Diagnostics::requireWritten(const Unit* unit, std::string_view name) {
  if (unit == nullptr || unit->failure().empty()) return;
  fatal({.line1 = "ERROR - Could not write file \"" + std::string(trimmed(name)) +
                  "\": " + unit->failure() + ".",
         .line2 =
             "What was written before is complete.  Check the disk's free space and run again."});
}

}  // namespace nivaro
