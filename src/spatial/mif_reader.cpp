#include "spatial/mif_reader.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "files/pause.hpp"
#include "platform/fixed_field.hpp"
#include "platform/real_to_integer.hpp"
#include "spatial/real_fields.hpp"
#include "text/blank_padded.hpp"
#include "text/keyword.hpp"
#include "text/number_text.hpp"

namespace nivaro {
namespace {

// Longer lines are cut.
constexpr std::size_t kLineWidth = 1000;

// A closed triangle and its closing copy.
constexpr std::size_t kLeastRegionVertices = 5;

bool isUsed(MifKind kind) {
  switch (kind) {
    case MifKind::Point:
    case MifKind::MultiPoint:
    case MifKind::Line:
    case MifKind::Pline:
    case MifKind::PlineMultiple:
    case MifKind::Region:
      return true;
    default:
      return false;
  }
}

// Blanks may be delimiters everywhere.
bool isReadable(char delimiter) {
  return delimiter == ',' || delimiter == '\t' || delimiter == ' ';
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t") == std::string_view::npos;
}

}  // namespace

MifReader::MifReader(Diagnostics& diagnostics) : diagnostics_(diagnostics) {}

bool MifReader::findObjectSection(Unit& mif) {
  mif.rewind();
  delimiter_ = ',';
  lineNumber_ = 0;
  recordNumber_ = 0;
  std::string_view line;
  for (;;) {
    const ReadStatus status = readLine(mif, line);
    if (status == ReadStatus::End) return true;
    if (status == ReadStatus::Error) break;
    noteDelimiter(line);
    if (flagExists(line, "Data")) return true;
  }
  diagnostics_.deliver({.line1 = "WARNING 0313 - Problems finding start of data in .mif file"});
  pauseRun(diagnostics_.console());
  return false;
}

bool MifReader::objectsLeft(Unit& mif, Unit& mid) const {
  return !mif.atEnd() && rowsLeft(mid, tabs());
}

const MifObject* MifReader::nextObject(Unit& mif, Unit& mid) {
  std::string_view line;
  for (;;) {
    const ReadStatus status = readLine(mif, line);
    if (status == ReadStatus::End) return nullptr;
    if (status == ReadStatus::Error) failToRead(mif);

    auto found = recogniseObject(line);
    if (!found) fail(mif, found.report());
    if (!found.value() || found.value()->kind == MifKind::Center) continue;

    // The line outlives its record: it is needed once the lines behind it have been read.
    object_ = *found.value();
    keywordLine_ = line;
    object_.rest = std::string_view(keywordLine_).substr(line.size() - object_.rest.size());
    break;
  }
  readValue(mid);
  if (isUsed(object_.kind)) return &object_;

  diagnostics_.deliver({.line1 = "WARNING - Object below ignored.  Only Points, Lines, Polylines & "
                                 "Regions used.",
                        .line2 = std::string(trimmed(keywordLine_)),
                        .blankLines = 0});
  return nullptr;
}

bool MifReader::readSection(Unit& mif) {
  x_.clear();
  y_.clear();
  polygonEnds_.clear();
  switch (object_.kind) {
    case MifKind::Point:
      readPoint(mif);
      return true;
    case MifKind::MultiPoint:
      addVertices(mif, 1);
      return true;
    case MifKind::Line:
      readLineObject(mif);
      return true;
    case MifKind::Pline:
      addVertices(mif, readCount(mif, object_.rest, keywordLine_));
      return true;
    case MifKind::PlineMultiple:
      addVertices(mif, readCount(mif));
      return true;
    case MifKind::Region:
      return readRegion(mif);
    default:
      return false;
  }
}

// The header says: Delimiter ";".
void MifReader::noteDelimiter(std::string_view headerLine) {
  std::string_view rest;
  if (!flagExistsRet(headerLine, "Delimiter", rest)) return;
  rest.remove_prefix(std::min(rest.find('"'), rest.size()));
  if (rest.size() >= 3 && rest[2] == '"') delimiter_ = rest[1];
}

ReadStatus MifReader::readLine(Unit& mif, std::string_view& line) {
  const ReadStatus status = mif.readRecord(line);
  if (status != ReadStatus::Ok) return status;
  line = line.substr(0, kLineWidth);
  ++lineNumber_;
  return status;
}

std::string_view MifReader::lineInObject(Unit& mif) {
  std::string_view line;
  const ReadStatus status = readLine(mif, line);
  if (status == ReadStatus::End)
    fail(mif, {.line1 = "ERROR 0309 - Unexpected end of .mif file encountered."});
  if (status == ReadStatus::Error) failToRead(mif);
  return line;
}

void MifReader::readValue(Unit& mid) {
  ++recordNumber_;
  std::string_view record;
  const ReadStatus status = readRow(mid, record, tabs());
  if (status == ReadStatus::End) failRecord(mid, "There is no such record.");
  if (status == ReadStatus::Error) failRecord(mid, "It cannot be read.");
  if (!isReadable(delimiter_) && record.find(delimiter_) != record.npos)
    failRecord(mid, "Its fields are separated by \"" + std::string(1, delimiter_) +
                        "\" instead of commas: " + std::string(record));
  const bool isEmptyField = delimiter_ == '\t' && leftTrimmed(record).starts_with('\t');
  if (isEmptyField || !readReals(record, {&value_, 1}))
    failRecord(mid, "Its first field is not a number: " + std::string(record));
}

std::int32_t MifReader::wholeValue(const Unit& mid) {
  if (!isInIntegerRange(std::round(value_)))
    failRecord(mid, "Its value is beyond the integers of 4 bytes: " + areal8(value_));
  return rounded(value_);
}

void MifReader::failRecord(const Unit& mid, const std::string& reason) {
  diagnostics_.fatal(
      {.line1 = "ERROR - Reading MID file.",
       .line2 = "Record " + std::to_string(recordNumber_) + " of file \"" + mid.path() + "\".",
       .detail1 = reason});
}

// A count that is read from a line of its own.
std::int32_t MifReader::readCount(Unit& mif) {
  const std::string_view line = lineInObject(mif);
  return readCount(mif, line, line);
}

std::int32_t MifReader::readCount(const Unit& mif, std::string_view text, std::string_view line) {
  std::int32_t count = -1;  // what an empty item leaves is no count either
  if (readListItem(text, count) != ReadStatus::Ok || count < 0) fail(mif, erroneousLine(line));
  return count;
}

void MifReader::addVertex(const Unit& mif, std::string_view text, std::string_view line) {
  std::array<double, 2> point{};
  if (!readReals(text, point)) fail(mif, erroneousLine(line));
  x_.push_back(point[0]);
  y_.push_back(point[1]);
}

void MifReader::addVertices(Unit& mif, std::int32_t count) {
  requireRoom(mif, static_cast<std::int64_t>(x_.size()) + count);
  for (std::int32_t i = 0; i < count; ++i) {
    const std::string_view line = lineInObject(mif);
    addVertex(mif, line, line);
  }
}

void MifReader::requireRoom(const Unit& mif, std::int64_t vertices) {
  if (vertices <= kMaxVertices) return;
  fail(mif, {.line1 = "ERROR 0310 - Exceeded number of allowable nodes in a single polyline or "
                      "region.",
             .line2 = "             Requested" + integerField(vertices, 8) + "        Limit" +
                      integerField(kMaxVertices, 8)});
}

void MifReader::readPoint(Unit& mif) {
  if (isBlank(object_.rest))
    addVertices(mif, 1);
  else
    addVertex(mif, object_.rest, keywordLine_);
}

void MifReader::readLineObject(Unit& mif) {
  std::array<double, 4> ends{};
  if (!readReals(object_.rest, ends)) fail(mif, erroneousLine(keywordLine_));
  x_ = {ends[0], ends[2]};
  y_ = {ends[1], ends[3]};
}

bool MifReader::readRegion(Unit& mif) {
  for (std::int32_t i = 0; i < object_.polygons; ++i) readPolygon(mif);
  if (x_.size() < kLeastRegionVertices) {
    warnOfFewPoints(mif);
    return false;
  }
  skipRegionStyle(mif);
  return true;
}

void MifReader::readPolygon(Unit& mif) {
  const std::int32_t count = readCount(mif);
  const std::size_t first = x_.size();
  requireRoom(mif, static_cast<std::int64_t>(first) + count + 1);
  addVertices(mif, count);
  polygonEnds_.push_back(static_cast<std::int32_t>(x_.size()));

  // The closing slot of a polygon without vertices repeats what stands before it.
  const std::size_t copied = count > 0 || first == 0 ? first : first - 1;
  x_.push_back(x_.empty() ? 0.0 : x_[copied]);
  y_.push_back(y_.empty() ? 0.0 : y_[copied]);
}

void MifReader::warnOfFewPoints(const Unit& mif) {
  constexpr std::string_view kText =
      "WARNING 0318 - Insufficient points for Region object in mif file.  Region ignored.";
  const bool hasVertex = !polygonEnds_.empty() && polygonEnds_.front() > 0;
  if (!hasVertex) {
    diagnostics_.deliver({.line1 = std::string(kText), .detail1 = place(mif)});
    return;
  }
  // A located message needs a layer to stand on. Where the host has none, a warning must not end
  // the run: it is written without its place, which goes into the text.
  MessageRecord& record = diagnostics_.messages().record();
  if (record.message_layer < 1) {
    diagnostics_.deliver(
        {.line1 = std::string(kText),
         .detail1 = "Its first vertex is " + areal8(x_.front()) + ", " + areal8(y_.front()) + "."});
    return;
  }
  setField(record.line1, kText);
  diagnostics_.messages().dmessageXy(1, x_.front(), y_.front());
}

// Pen, brush and centre of a region; the keyword line of the next object is left to be read again.
void MifReader::skipRegionStyle(Unit& mif) {
  std::string_view line;
  for (;;) {
    const ReadStatus status = readLine(mif, line);
    if (status == ReadStatus::End) return;
    if (status == ReadStatus::Error) failToRead(mif);

    const auto found = recogniseObject(line);
    if (!found) fail(mif, found.report());
    if (!found.value()) continue;
    if (found.value()->kind == MifKind::Center) {
      std::array<double, 2> centre{};
      if (!readReals(found.value()->rest, centre)) fail(mif, erroneousLine(line));
      return;
    }
    mif.backspace();
    --lineNumber_;
    return;
  }
}

void MifReader::failToRead(const Unit& mif) {
  fail(mif, {.line1 = "ERROR - Reading MIF file or premature end of file."});
}

void MifReader::fail(const Unit& mif, Report report) {
  report.detail1 = place(mif);
  diagnostics_.fatal(report);
}

std::string MifReader::place(const Unit& mif) const {
  return "Line " + std::to_string(lineNumber_) + " of file \"" + mif.path() + "\".";
}

}  // namespace nivaro
