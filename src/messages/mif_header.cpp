#include "messages/mif_header.hpp"

#include <algorithm>

#include "platform/letters.hpp"
#include "text/keyword.hpp"
#include "text/transform.hpp"

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

gis::ObjectKind findGeometry(Unit& mif) {
  struct Row {
    std::string_view word;
    gis::ObjectKind kind;
  };
  using enum gis::ObjectKind;
  constexpr Row kWords[] = {{"POINT", Point},   {"MULTIPOINT", Point}, {"TEXT", Point},
                            {"LINE", Polyline}, {"PLINE", Polyline},   {"ARC", Polyline},
                            {"REGION", Region}, {"RECT", Region},      {"ROUNDRECT", Region},
                            {"ELLIPSE", Region}};
  bool isInHeader = true;
  std::string_view line;
  while (mif.readRecord(line) == ReadStatus::Ok) {
    if (isInHeader) {
      isInHeader = !flagExists(line, "Data");
      continue;
    }
    const std::size_t start = std::min(line.find_first_not_of(" \t"), line.size());
    const std::string text = upperCase(line.substr(start, kLineWidth));
    for (const auto& [word, kind] : kWords)
      if (text.starts_with(word)) return kind;
  }
  return None;
}

std::string normaliseHeaderLine(std::string_view line) {
  std::string normal;
  for (const char c : line)
    if (c != ' ' && c != '\t' && !isQuote(c)) normal += upper(c);
  return normal;
}

}  // namespace nivaro
