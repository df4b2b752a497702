// A control file with all that it may name: nested files, layers, cell tables. Sections: "grid",
// "settings", "variables" (a name and a value on each line), "answers"; any other one is a file, and
// "run.mcf" is the control file.
#include "fuzz/grid_input.hpp"

namespace nivaro::fuzz {
namespace {

void readSettings(FuzzModule& run, std::string_view text) {
  Numbers numbers(text);
  run.record->strict_command_flag = logical(numbers.flag());
  run.record->echo_flag = logical(numbers.flag());
  GisSettings& gis = run.module.gisSettings;
  gis.checkSaveDate = numbers.flag();
  gis.saveDateIsError = numbers.flag();
  gis.projectionIsError = numbers.flag();
  gis.tableExtension = ".tab";
  if (numbers.flag()) gis.hostProjection = "COORDSYSEARTHPROJECTION8,33";
}

void writeFiles(const Folder& folder, const Archive& input) {
  for (const Section& section : input.sections())
    if (isFileName(section.name)) folder.write(section.name, confined(section.text));
}

// Fields that only a step sets.
void requireStepFieldsUntouched(const SedimentFields& fields) {
  for (const Grid<double>& field : {fields.previousChange, fields.appliedChange, fields.cellChange,
                                    fields.concentration, fields.adaptation, fields.spare})
    requireUntouchedElsewhere(field, GridInput::kUntouched, [](auto...) { return false; });
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  if (input.text("run.mcf").empty()) return;

  FuzzModule run;
  Module& module = run.module;
  readSettings(run, input.text("settings"));
  addVariables(module, input.text("variables"));
  run.answerWith(confined(input.text("answers")));
  GridInput domain(module, input.text("grid"));
  writeFiles(folder, input);
  module.files.initFileUnits(2000);
  module.logUnit = run.record->log_unit = module.files.openFile(folder.path("run.mlf"), "O ", 1);

  const std::string controlFile = folder.path("run.mcf");
  const bool wasRead = completes([&] {
    readControlFile(module, {.controlFile = controlFile,
                             .domain = kDomain,
                             .lastDomain = kDomain,
                             .n = domain.n,
                             .m = domain.m,
                             .grid = domain.grid,
                             .work = domain.work()});
  });

  requireStepFieldsUntouched(domain.fields(module));
  constexpr std::int32_t kUnitBehindLog = 2002;
  if (wasRead)
    for (std::int32_t unit = kUnitBehindLog; unit < kUnitBehindLog + 12; ++unit)
      require(module.units.find(unit) == nullptr, "every file that was opened is closed");
}

}  // namespace nivaro::fuzz
