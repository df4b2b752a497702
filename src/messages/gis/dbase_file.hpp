// The attribute table of a shapefile: a dBase III file of fixed-length records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "messages/gis/column.hpp"
#include "platform/unit.hpp"

namespace nivaro::gis {

// Limits of the format: a length has one byte, a record's two with a sign, the header's two
// (32 bytes, 32 for each field, and 1).
inline constexpr int kLongestField = 255;
inline constexpr int kLongestRecord = 32767;
inline constexpr std::size_t kMostFields = (65535 - 33) / 32;

// What is written to the file of which unit is the caller's; a null unit is a write that failed.
// After each call the file on the disk is a whole table: header, records and end mark.
class DbaseTable {
 public:
  explicit DbaseTable(const std::vector<Column>& columns);

  bool writeHeader(Unit* file) const;

  // One record from comma-separated values, texts between quotes. A value that is missing leaves
  // its field blank; a text that is too long is cut, a number that is too long is asterisks.
  bool addRecord(Unit* file, std::string_view attributes);

  std::int32_t recordCount() const { return recordCount_; }

 private:
  std::uint64_t headerLength() const { return 32 + 32 * fields_.size() + 1; }
  std::uint64_t recordLength() const;
  std::uint64_t endOfRecords() const;

  std::vector<DbaseField> fields_;
  std::int32_t recordCount_ = 0;
};

}  // namespace nivaro::gis
