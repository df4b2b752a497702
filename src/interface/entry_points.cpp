#include "interface/entry_points.hpp"

#include <optional>
#include <string>
#include <string_view>

#include "morphology/morphology_step.hpp"
#include "platform/support.hpp"

namespace nivaro {

namespace {

[[noreturn]] void stopForDomain(Module& module, std::int32_t domain, std::string_view what) {
  module.diagnostics.fatalOnScreen("Should not be here - domain " + std::to_string(domain) +
                                   std::string(what) + " - contact " +
                                   std::string(kSupportAddress));
}

}  // namespace

void requireDomain(Module& module, std::int32_t domain) {
  if (!DomainFieldTable::isDomain(domain)) stopForDomain(module, domain, " is not in 1 to 100");
}

void requireFields(Module& module, std::int32_t domain) {
  requireDomain(module, domain);
  if (!module.fields.isReserved(domain))
    stopForDomain(module, domain, " has no fields: QVMOR_SETUP_S2 comes first");
}

void reserveFields(Module& module, const ReservationCall& call, std::int32_t& nextReal,
                   std::int32_t& nextInteger) {
  requireDomain(module, call.domain);
  if (!module.fields.reserve(call.domain, call.active, call.n, call.m, nextReal, nextInteger))
    stopForDomain(module, call.domain,
                  " of " + std::to_string(call.n) + " x " + std::to_string(call.m) +
                      " cells does not fit behind positions " + std::to_string(nextReal) + " and " +
                      std::to_string(nextInteger) + ", which count from 1 in 4-byte integers");
}

void readControlFile(Module& module, const ControlFileCall& call) {
  requireFields(module, call.domain);
  GridDescription grid = call.grid;
  grid.isUsed = module.fields.row(call.domain).active;
  module.controlFile.read({.controlFile = call.controlFile,
                           .parameters = module.parameters.ofDomain(call.domain),
                           .fields = module.fields.fields(call.domain, call.work, call.n, call.m),
                           .grid = grid,
                           .current = module.parameters.current(),
                           .logUnit = module.logUnit});
  if (call.domain == call.lastDomain) module.workspace.close();
}

void runMorphology(Module& module, const MorphologyCall& call) {
  requireFields(module, call.domain);
  const StepInput input = {
      .flow = call.flow,
      .bed = call.bed,
      .fields = module.fields.fields(call.domain, call.work, call.bed.zc.n(), call.bed.zc.m()),
      .settings = call.settings,
      .parameters = module.parameters.current()};
  const bool active = module.fields.row(call.domain).active;

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
  morphologyStep(input, call.area, module.stepScratch);
}

void writeDatasetValues(Module& module, const DatasetValuesCall& call) {
  requireDomain(module, call.turn.domain);
  std::optional<CornerValues> values;
  if (call.writeValues && module.fields.row(call.turn.domain).active) {
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
  requireDomain(module, cells.domain);
  if (call.writeValues && module.fields.row(cells.domain).active) {
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

}  // namespace nivaro
