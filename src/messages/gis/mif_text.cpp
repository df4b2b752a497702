#include "messages/gis/mif_text.hpp"

#include "platform/fixed_field.hpp"
#include "text/blank_padded.hpp"

namespace nivaro::gis {

namespace {

constexpr int kCoordinateWidth = 16;

// Without a projection readers would take coordinates for degrees. The bounds hold any national
// grid, and leave programs that store coordinates as integers a precision of 5 mm.
constexpr std::string_view kNonEarth =
    "CoordSys NonEarth Units \"m\" Bounds (-10000000, -10000000) (10000000, 10000000)";

// A coordinate in its columns. A number that would fill them all would run into the one before it,
// and asterisks could not be read back: such numbers get the columns they need and a blank.
std::string coordinate(double value, int decimals) {
  constexpr int kWidestNumber = 330;
  std::string field = fixedField(value, kCoordinateWidth, decimals);
  if (field.front() == ' ') return field;
  field = ' ';
  return field += leftTrimmed(fixedField(value, kWidestNumber, decimals));
}

class LineWriter {
 public:
  explicit LineWriter(Unit& file) : file_(file) {}

  // One failed line is a failed object, whatever follows it.
  void line(std::string_view text) { written_ = file_.writeRecord(text) && written_; }
  void vertices(Part part) {
    for (const Vertex& vertex : part) line(position(vertex));
  }
  // Each part under the count of its vertices.
  void parts(const std::vector<Part>& parts) {
    for (const Part& part : parts) {
      line(' ' + std::to_string(part.size()));
      vertices(part);
    }
  }
  bool written() const { return written_; }

 private:
  Unit& file_;
  bool written_ = true;
};

void writeDrawable(LineWriter& out, const Object& object) {
  const std::vector<Vertex>& at = object.vertices;
  switch (object.kind) {
    case ObjectKind::Point:
      out.line("Point " + position(at[0]));
      return;
    case ObjectKind::Multipoint:
      out.line("MultiPoint " + std::to_string(at.size()));
      out.vertices(at);
      return;
    case ObjectKind::Line:
      out.line("Line " + position(at[0]) + position(at[1]));
      return;
    case ObjectKind::Polyline:
      out.line("Pline " + std::to_string(at.size()));
      out.vertices(at);
      return;
    case ObjectKind::MultiplePolyline: {
      const std::vector<Part> parts = partsOf(object);
      out.line("Pline Multiple " + std::to_string(parts.size()));
      out.parts(parts);
      return;
    }
    case ObjectKind::Region: {
      const std::vector<Part> parts = partsOf(object);
      out.line("Region " + std::to_string(parts.size()));
      out.parts(parts);
      return;
    }
    case ObjectKind::Text:
      // Vertex 1, the anchor, is no part of the object: the label line of its style leads there.
      out.line("Text");
      out.line(object.label);
      out.line("    " + position(at[1], kLabelDecimals) + position(at[2], kLabelDecimals));
      return;
    case ObjectKind::Unset:
    case ObjectKind::None:
      return;
  }
}

}  // namespace

std::string position(const Vertex& vertex, int decimals) {
  return coordinate(vertex.x, decimals) + coordinate(vertex.y, decimals);
}

bool writeMifHeader(Unit& file, std::string_view coordSys, const std::vector<Column>& columns) {
  LineWriter out(file);
  out.line("Version 300");
  out.line("Charset \"WindowsLatin1\"");
  out.line("Delimiter \",\"");
  out.line(trimmed(coordSys).empty() ? kNonEarth : trimmed(coordSys));
  out.line("Columns " + std::to_string(columns.size()));
  for (const Column& column : columns) out.line(mifColumn(column));
  out.line("Data");
  return out.written();
}

bool writeMifObject(Unit& file, const Object& object) {
  LineWriter out(file);
  if (isDrawable(object))
    writeDrawable(out, object);
  else
    out.line("none");
  return out.written();
}

}  // namespace nivaro::gis
