#include "messages/mif_header.hpp"

#include "platform/letters.hpp"
#include "text/keyword.hpp"

namespace nivaro {
namespace {

// Longer lines are cut.
constexpr std::size_t kLineWidth = 1000;

}  // namespace

void findProjectionLine(Unit& mif, std::string& line, Diagnostics& diagnostics) {
  std::string_view record;
  for (;;) {
    const ReadStatus status = mif.readRecord(record);
    if (status == ReadStatus::End) return;
    if (status == ReadStatus::Error) break;
    record = record.substr(0, kLineWidth);
    if (!flagExists(record, "CoordSys")) continue;
    line = record;
    return;
  }
  diagnostics.deliver({.line1 = "WARNING 0306 - Problems finding CoordSys line in .mif file"});
}

std::string normaliseHeaderLine(std::string_view line) {
  std::string normal;
  for (const char c : line)
    if (c != ' ' && c != '\t' && !isQuote(c)) normal += upper(c);
  return normal;
}

}  // namespace nivaro
