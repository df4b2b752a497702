// Objects of MIF layers, recognised by the keyword at the start of a line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "text/report.hpp"

namespace nivaro {

enum class MifKind {
  None,
  Point,
  Line,
  Pline,
  PlineMultiple,
  Region,
  Ellipse,
  Rect,
  RoundRect,
  Arc,
  Center,  // of a region: part of it, no object
  Text,
  MultiPoint,
  Collection  // not supported: ends the run
};

inline constexpr std::int32_t kMaxPolygons = 10000;

struct MifObject {
  MifKind kind = MifKind::None;
  std::string_view keyword;   // in capitals
  std::string_view rest;      // of the line, behind the keyword
  std::int32_t sections = 1;  // of a PLINE MULTIPLE, points of a MULTIPOINT
  std::int32_t polygons = 0;  // of a REGION
};

// The object (or centre) whose keyword the line starts with, in any letter case, behind blanks and
// tabs; a longer word that begins with a keyword counts too. `rest` is a part of `line`. Reports
// 0303, 0304 and 0308.
Outcome<std::optional<MifObject>> recogniseObject(std::string_view line);

// "Erroneous line": a count or coordinates that cannot be read.
Report erroneousLine(std::string_view line);

}  // namespace nivaro
