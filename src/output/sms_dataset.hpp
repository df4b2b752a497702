// The bed change of all domains as an SMS binary scalar dataset: a header, then for each output
// time the flags of the cells and the values at the mesh points, and an end card.
//
// The file is a plain stream of little-endian numbers: 4-byte integers, 1-byte flags, 4-byte reals.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "files/file_units.hpp"
#include "messages/diagnostics.hpp"
#include "output/byte_stream.hpp"
#include "output/flag_strip.hpp"
#include "platform/grid.hpp"

namespace nivaro {

struct DatasetSettings {
  std::int32_t timeCodeSwitch = 0;  // 1 or more: times are written as time / 1000 + 100 * offset
  double flagDepthThreshold = 0.0;  // m; above 0 it decides on the flags
  std::int32_t numData = 0;         // values per time record, all domains together
  std::int32_t numCells = 0;        // flags per time record
};

// Where one domain stands among all domains of a time record.
struct DomainTurn {
  std::int32_t domain = 1;      // domain 1 begins the record
  std::int32_t lastDomain = 1;  // the last domain pads to the announced size
};

struct CornerValues {
  Grid<const double> cellBedChange;  // m, positive upward
  Grid<double> cornerBedChange;      // filled here: the range and the cells just before it
  std::span<const std::int32_t> pointI;
  std::span<const std::int32_t> pointJ;
};

class SmsDataset {
 public:
  static constexpr std::size_t kSlots = 10;
  static constexpr std::size_t kNameLength = 35;

  SmsDataset(FileUnits& files, Diagnostics& diagnostics);

  // Opens the bed change dataset in the first slot; the other nine are never opened.
  void open(std::string_view fileName);

  void setSettings(const DatasetSettings& settings) { settings_ = settings; }

  void writeHeader(std::string_view name);
  void writeFlags(const DomainTurn& turn, const CellFlags& flags, const Area& range);

  // Without values (none), as many zeros as the domain has points.
  void writeValues(const DomainTurn& turn, std::int32_t pointCount,
                   const std::optional<CornerValues>& values, const Area& range);

  // The end card; the file stays open until the process ends.
  void writeEnd();

 private:
  template <typename Write>
  void onOpenSlots(Write write);
  void complete();

  FileUnits& files_;
  Diagnostics& diagnostics_;
  std::array<std::int32_t, kSlots> slots_;
  std::string fileName_;
  DatasetSettings settings_;
  std::int32_t flagsWritten_ = 0;  // to the current time record, all domains so far
  std::int32_t valuesWritten_ = 0;
};

}  // namespace nivaro
