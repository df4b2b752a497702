#include "interface/entry_points.hpp"

#include <optional>
#include <string>
#include <string_view>

#include "morphology/bed_rebuild.hpp"
#include "morphology/engine/morphology_step.hpp"
#include "platform/support.hpp"

namespace nivaro {

namespace {

[[noreturn]] void stopForDomain(Module& module, std::string_view routine, std::int32_t domain,
                                std::string_view what) {
  module.diagnostics.fatalOnScreen("Should not be here " + std::string(routine) + " - domain " +
                                   std::to_string(domain) + std::string(what) + " - contact " +
                                   std::string(kSupportAddress));
}

// Whether a domain that was set up takes part. One that was not would have its fields in front of the
// host's work arrays.
bool hasMorphology(Module& module, std::string_view routine, std::int32_t domain) {
  requireDomain(module, routine, domain);
  if (!module.fields.isReserved(domain))
    stopForDomain(module, routine, domain, " has no fields: QVMOR_SETUP_S2 comes first");
  return module.fields.row(domain).active;
}

}  // namespace

void requireDomain(Module& module, std::string_view routine, std::int32_t domain) {
  if (!DomainFieldTable::isDomain(domain))
    stopForDomain(module, routine, domain, " is not in 1 to 100");
}

void reserveFields(Module& module, const ReservationCall& call, std::int32_t& nextReal,
                   std::int32_t& nextInteger) {
  constexpr std::string_view routine = "QVMOR_SETUP_S2";
  requireDomain(module, routine, call.domain);
  if (!module.fields.reserve(call.domain, call.active, call.n, call.m, nextReal, nextInteger))
    stopForDomain(module, routine, call.domain,
                  " of " + std::to_string(call.n) + " x " + std::to_string(call.m) +
                      " cells does not fit behind positions " + std::to_string(nextReal) + " and " +
                      std::to_string(nextInteger) + ", which count from 1 in 4-byte integers");
}

void readControlFile(Module& module, const ControlFileCall& call) {
  GridDescription grid = call.grid;
  grid.isUsed = hasMorphology(module, "QVMOR_RDINPF", call.domain);
  module.controlFile.read({.controlFile = call.controlFile,
                           .parameters = module.parameters.ofDomain(call.domain),
                           .fields = module.fields.fields(call.domain, call.work, call.n, call.m),
                           .grid = grid,
                           .current = module.parameters.current(),
                           .logUnit = module.logUnit});
  if (call.domain == call.lastDomain) module.workspace.close();
}

void runMorphology(Module& module, const MorphologyCall& call) {
  const bool active = hasMorphology(module, "QVMORPHOLOGY", call.domain);
  const StepInput input = {
      .flow = call.flow,
      .bed = call.bed,
      .fields = module.fields.fields(call.domain, call.work, call.bed.zc.n(), call.bed.zc.m()),
      .settings = call.settings,
      .parameters = module.parameters.current()};

  if (call.smoothing) {
    module.console.line("");
    module.console.line("Smoothing Zpts based on ZC values in morphology areas...");
    if (active) smoothBed(input, call.area);
    return;
  }
  if (call.initialisation) {
    module.console.line("");
    module.console.line("Initialising Morphological Variables...");
    return;
  }
  if (call.skip || !active) return;
  morphologyStep(input, call.area, module.stepWorkspace);
}

void writeDatasetValues(Module& module, const DatasetValuesCall& call) {
  std::optional<CornerValues> values;
  if (call.writeValues && hasMorphology(module, "QVMOR_WRSMSF_DAT_RESULTS", call.turn.domain)) {
    values = CornerValues{.cellBedChange = module.fields.cellBedChange(
                              call.turn.domain, call.realWork, call.nx, kAnyDimension),
                          .cornerBedChange = module.fields.cornerBedChange(
                              call.turn.domain, call.realWork, call.nx, kAnyDimension),
                          .pointI = call.pointI,
                          .pointJ = call.pointJ};
  }
  module.dataset.writeValues(call.turn, static_cast<std::int32_t>(call.pointI.size()), values,
                             call.range);
}

void writeCheckLayer(Module& module, CheckLayerCall call) {
  CheckedDomain& cells = call.cells;
  requireDomain(module, "QVMOR_WRMIFF", cells.domain);
  if (call.writeValues && hasMorphology(module, "QVMOR_WRMIFF", cells.domain)) {
    const SedimentFields fields =
        module.fields.fields(cells.domain, call.work, cells.code.n(), cells.code.m());
    cells.fields = CheckedFields{.d50 = fields.d50,
                                 .d90 = fields.d90,
                                 .inSituVoids = fields.inSituVoids,
                                 .depositionVoids = fields.depositionVoids,
                                 .bedLimit = fields.bedLimit,
                                 .bedCode = fields.bedCode};
  }
  module.checkLayer.write(cells, module.gisSettings, module.logUnit);
}

void endWithoutMemory(Module& module, std::string_view thing) {
  module.diagnostics.fatalOnScreen("ERROR - Could not allocate memory (RAM) for " +
                                   std::string(thing) + ".");
}

}  // namespace nivaro
