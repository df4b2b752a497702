// The host's side of the module: the work arrays, the calling order, the conversion of the host's
// flow, the bed outside outflow edges, and the accounts.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "bed_watch.hpp"
#include "case_file.hpp"
#include "flow.hpp"
#include "mesh.hpp"
#include "module_library.hpp"
#include "sand_balance.hpp"

namespace host {

// What the module made of its processor time.
struct ModuleEffort {
  double seconds = 0;
  double steps = 0;
  double cellSteps = 0;  // active wet cells, summed over the steps
};

class MorphologyCoupling {
 public:
  // Calls the module from its start up to the smoothing call and writes the check layer. Files begin with `prefix`.
  MorphologyCoupling(const ModuleLibrary& module, const Case& model, const std::string& prefix,
                     BedArrays& bed, const Mesh& mesh);

  // One morphology step of `seconds` on the present flow; the flow follows the changed bed.
  void step(Flow& flow, double seconds);
  // One time record of the dataset: bed change of the latest step.
  void writeRecord(const Flow& flow, double hours);
  void finish();

  const SandBalance& balance() const { return balance_; }
  const ModuleEffort& effort() const { return effort_; }

 private:
  void takeFlow(const Flow& flow);
  void followAtOutflowEdges();
  void tell(const std::vector<PlacedMessage>& messages) const;
  const double* moduleField(std::size_t field) const;
  void account();
  double bedVolume() const;
  template <typename Visit>
  void forEachAreaCell(Visit visit) const;

  const ModuleLibrary& module_;
  GridFrame grid_;
  FlowSettings settings_;
  BedArrays& bed_;
  const Mesh& mesh_;
  IndexArea model_;  // all cells of the model
  IndexArea area_;   // those whose bed may change
  WorkArrays work_;
  FlowArrays flow_;
  SandBalance balance_;
  ModuleEffort effort_;
  std::optional<BedWatch> watch_;  // where the case has a messages layer
  double hours_ = 0;
};

}  // namespace host
