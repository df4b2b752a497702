// The morphology module as a loaded library, with C++ types over its entry points: texts with their
// hidden lengths, logicals, everything by reference.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "bed.hpp"
#include "grid_frame.hpp"
#include "nivaro_morphology.h"

namespace host {

struct LibraryError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

inline nivaro_logical logical(bool value) {
  return value ? -1 : 0;
}

// A message for the module's screen, log and messages layer: the words "ERROR", "WARNING", "CHECK" or
// "INFORMATION:" at its beginning tell its level.
struct Message {
  std::string line1;
  std::string line2 = {};
};

// First and last indices, both ends included.
struct IndexArea {
  std::int32_t firstI = 0, firstJ = 0, lastI = 0, lastJ = 0;
};

// The host's two work arrays, in which the module keeps its fields.
struct WorkArrays {
  std::vector<double> real;
  std::vector<std::int32_t> integer;
};

// The flow as the module takes it: velocities at the sides, logicals per cell.
struct FlowArrays {
  Field<nivaro_logical> wet, flowing;
  Field<double> level, v2, v1;
};

enum class MorphologyCall { Smoothing, Initialisation, Step };

// The module has one state per process, so a program makes one of these.
class ModuleLibrary {
 public:
  // Throws LibraryError that names the file and the loader's reason, or all missing entry points.
  explicit ModuleLibrary(const std::filesystem::path& file);

  // `coordSys` is the CoordSys line of the layers that the module reads and writes.
  void initialise(const std::string& name, const std::string& prefix,
                  const std::string& coordSys) const;
  void setDataset(std::int32_t points, std::int32_t cells, double flagDepth) const;
  // Next free positions of the two work arrays, counted from 1, are advanced.
  void reserve(std::int32_t domain, const GridFrame& grid, std::int32_t& nextReal,
               std::int32_t& nextInteger) const;
  void readControlFile(const std::string& file, std::int32_t domain, std::int32_t lastDomain,
                       const GridFrame& grid, WorkArrays& work) const;
  // Every cell with what was read for it, as a layer.
  void writeCheckLayer(std::int32_t domain, std::int32_t lastDomain, const GridFrame& grid,
                       const IndexArea& area, BedArrays& bed, WorkArrays& work) const;
  void loadDomain(std::int32_t domain) const;
  void compute(MorphologyCall call, std::int32_t domain, const GridFrame& grid,
               const IndexArea& area, double timeStep, const FlowArrays& flow, BedArrays& bed,
               WorkArrays& work) const;
  void writeDatasetHeader(const std::string& name) const;
  void writeFlags(std::int32_t domain, std::int32_t lastDomain, double hours, const GridFrame& grid,
                  const IndexArea& area, const FlowArrays& flow, const BedArrays& bed) const;
  void writeValues(std::int32_t domain, std::int32_t lastDomain, const GridFrame& grid,
                   const IndexArea& area, std::span<const std::int32_t> pointI,
                   std::span<const std::int32_t> pointJ, WorkArrays& work) const;
  void closeDataset() const;

  const nivaro_messages& messages() const { return *messages_; }
  // From now on messages with a place, errors of the module included, become labels on a layer; those
  // without one stand below the point (x, y) of the map.
  void openMessagesLayer(double x, double y, double labelHeight, double labelWidth,
                         double spacing) const;
  void deliver(const Message& message, double x, double y) const;
  void deliver(const Message& message) const;

 private:
  decltype(&QVMOR_INITIALISE_S1) initialiseS1_ = nullptr;
  decltype(&QVMOR_INITIALISE_S2) initialiseS2_ = nullptr;
  decltype(&QVMOR_SETUP_S2) setupS2_ = nullptr;
  decltype(&QVMOR_RDINPF) readInput_ = nullptr;
  decltype(&QVMOR_INIT_2D_DOMAIN) initDomain_ = nullptr;
  decltype(&QVMORPHOLOGY) morphology_ = nullptr;
  decltype(&QVMOR_WRSMSF_WRITE_HEADER) writeHeader_ = nullptr;
  decltype(&QVMOR_WRSMSF_DAT_FLAGS) writeFlags_ = nullptr;
  decltype(&QVMOR_WRSMSF_DAT_RESULTS) writeResults_ = nullptr;
  decltype(&QVMOR_WRSMSF_CLOSE) closeDataset_ = nullptr;
  decltype(&QVMOR_WRMIFF) writeCheckLayer_ = nullptr;
  decltype(&DMESSAGEXY) deliver_ = nullptr;
  decltype(&DMESSAGES) messages_ = nullptr;
};

}  // namespace host
