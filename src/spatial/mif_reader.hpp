// Reads the objects of a MIF/MID layer, one after another: the graphical objects from the `.mif`
// file, the value of each from the first field of its record in the `.mid` file.
//
// Both files are read line by line and stay with their owner, who asks for the next object as long
// as there are objects left. What is wrong with a layer ends the run with the file, and the line or
// record, named in the message.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "messages/diagnostics.hpp"
#include "platform/unit.hpp"
#include "spatial/mif_object.hpp"
#include "spatial/table_rows.hpp"

namespace nivaro {

class MifReader {
 public:
  static constexpr std::int64_t kMaxVertices = 100000;  // of one section, closing copies included

  explicit MifReader(Diagnostics& diagnostics);
  MifReader(const MifReader&) = delete;  // the object at hand views the reader's own line
  MifReader& operator=(const MifReader&) = delete;

  // Starts a layer: goes to the line behind the first one that contains "data" (or to the end of
  // the file). False after a warning and a pause when the file cannot be read.
  bool findObjectSection(Unit& mif);

  // Whether neither file is at its end; blank lines at the end of the `.mid` do not count.
  bool objectsLeft(Unit& mif, Unit& mid) const;

  // The next object and its value. Null at the end of the layer, and for an object of a kind that
  // is not used, of which it warns.
  const MifObject* nextObject(Unit& mif, Unit& mid);

  // The next section of that object into the vertex arrays; to be called as often as the object has
  // sections. False for a region of too few points, of which it warns.
  bool readSection(Unit& mif);

  double value() const { return value_; }

  // The value rounded to the nearest integer; one that 4 bytes do not hold ends the run.
  std::int32_t wholeValue(const Unit& mid);

  std::span<const double> x() const { return x_; }
  std::span<const double> y() const { return y_; }

  // For each polygon of a region the number of its last vertex, counted from 1; the closing copy of
  // its first vertex follows.
  std::span<const std::int32_t> polygonEnds() const { return polygonEnds_; }

 private:
  Tabs tabs() const { return delimiter_ == '\t' ? Tabs::SeparateFields : Tabs::AreBlank; }
  void noteDelimiter(std::string_view headerLine);
  ReadStatus readLine(Unit& mif, std::string_view& line);
  std::string_view lineInObject(Unit& mif);
  void readValue(Unit& mid);

  // `line` is what a report shows when `text`, a part of it, cannot be read.
  std::int32_t readCount(const Unit& mif, std::string_view text, std::string_view line);
  std::int32_t readCount(Unit& mif);
  void addVertex(const Unit& mif, std::string_view text, std::string_view line);
  void addVertices(Unit& mif, std::int32_t count);
  void requireRoom(const Unit& mif, std::int64_t vertices);

  void readPoint(Unit& mif);
  void readLineObject(Unit& mif);
  bool readRegion(Unit& mif);
  void readPolygon(Unit& mif);
  void warnOfFewPoints(const Unit& mif);
  void skipRegionStyle(Unit& mif);

  [[noreturn]] void failRecord(const Unit& mid, const std::string& reason);
  [[noreturn]] void failToRead(const Unit& mif);
  [[noreturn]] void fail(const Unit& mif, Report report);
  std::string place(const Unit& mif) const;

  Diagnostics& diagnostics_;
  char delimiter_ = ',';         // of the fields in the `.mid`, as the header says
  std::int64_t lineNumber_ = 0;  // of the line last read from the `.mif`
  std::int64_t recordNumber_ = 0;
  std::string keywordLine_;
  MifObject object_;
  double value_ = 0.0;
  std::vector<double> x_;
  std::vector<double> y_;
  std::vector<std::int32_t> polygonEnds_;
};

}  // namespace nivaro
