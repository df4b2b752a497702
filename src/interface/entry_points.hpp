// The morphology entry points with typed arguments: what the host's calls come down to.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "interface/module.hpp"
#include "morphology/fields.hpp"
#include "output/check_layer.hpp"
#include "output/sms_dataset.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// Reserves the fields of one domain in the host's work arrays.
struct ReservationCall {
  std::int32_t domain = 0;
  bool active = false;
  std::int32_t n = 0;
  std::int32_t m = 0;
};
void reserveFields(Module& module, const ReservationCall& call, std::int32_t& nextReal,
                   std::int32_t& nextInteger);

// Reads the control file of one domain into its options and fields.
struct ControlFileCall {
  std::string_view controlFile;
  std::int32_t domain = 0;
  std::int32_t lastDomain = 0;
  std::int32_t n = 0;
  std::int32_t m = 0;
  GridDescription grid{};
  WorkArrays work;
};
void readControlFile(Module& module, const ControlFileCall& call);

// One morphology call of one domain: what the first flag that is set says, a step if none is.
struct MorphologyCall {
  bool smoothing = false;
  bool initialisation = false;
  bool skip = false;
  HostFlow flow;
  HostBed bed;
  StepSettings settings;
  Area area;
  WorkArrays work;
  std::int32_t domain = 0;
};
void runMorphology(Module& module, const MorphologyCall& call);

// The values of one domain at an output time.
struct DatasetValuesCall {
  DomainTurn turn;
  bool writeValues = false;
  std::int32_t nx = 0;
  Area range;
  std::span<const std::int32_t> pointI;
  std::span<const std::int32_t> pointJ;
  double* realWork = nullptr;
};
void writeDatasetValues(Module& module, const DatasetValuesCall& call);

// The cells of one domain in the check layer.
struct CheckLayerCall {
  CheckedDomain cells;  // its fields are filled here
  bool writeValues = false;
  WorkArrays work;
};
void writeCheckLayer(Module& module, CheckLayerCall call);

// Ends the run for a domain number that no domain can have, in the name of the routine that the host
// called.
void requireDomain(Module& module, std::string_view routine, std::int32_t domain);

// Ends the run because there is no memory for a thing: the dataset, or the routine of that name.
[[noreturn]] void endWithoutMemory(Module& module, std::string_view thing);

}  // namespace nivaro
