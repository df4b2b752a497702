#include "simulation.hpp"

#include <cmath>
#include <cstdint>

#include "number_format.hpp"
#include "progress.hpp"

namespace host {

namespace {

double secondsSince(Progress::Clock::time_point start) {
  return std::chrono::duration<double>(Progress::Clock::now() - start).count();
}

void fillWithWater(Flow& flow, const Case& model) {
  const InitialWater& water = model.water;
  const BedShape& bed = model.bed;
  const auto level = [&](double x, double y) {
    if (!water.isDepth) return water.value;
    return water.value + (bed.raster ? bed.elevation(x, y).value_or(0) : bed.plane(x, y));
  };
  flow.fill(level, water.qx, water.qy);
}

// Of the mean discharge through the sides of a cell.
double speed(const Flow& flow, int i, int j) {
  if (!flow.isWet(i, j)) return 0;
  const double qx = 0.5 * (flow.q2()(i, j - 1) + flow.q2()(i, j));
  const double qy = 0.5 * (flow.q1()(i - 1, j) + flow.q1()(i, j));
  return std::hypot(qx, qy) / flow.depth(i, j);
}

std::string bedChangeRows(const GridFrame& grid, const BedArrays& bed,
                          const Field<double>& bedBefore, const Flow& flow, double hours) {
  std::string text;
  forEachCell(grid, [&](int i, int j) {
    if (!bed.code(i, j)) return;
    text += fixed(hours, 4) + ',' + fixed(grid.x(j), 4) + ',' + fixed(grid.y(i), 4) + ',' +
            fixed(-bed.zc(i, j), 6) + ',' + fixed(bedBefore(i, j) - bed.zc(i, j), 6) + ',' +
            fixed(flow.isWet(i, j) ? flow.depth(i, j) : 0, 4) + ',' + fixed(speed(flow, i, j), 4) +
            '\n';
  });
  return text;
}

// The parts of one run that results are taken from.
class Recorder {
 public:
  Recorder(const Case& model, const ResultFolder& results, const BedArrays& bed, const Flow& flow)
      : model_(model), results_(results), bed_(bed), bedBefore_(bed.zc), flow_(flow) {
    results_.write("_profile.csv", profileHeader());
    results_.write("_bed_change.csv", "time_h,x_m,y_m,bed_m,bed_change_m,depth_m,speed_m_s\n");
  }

  void record(double hours) const {
    results_.append("_profile.csv", profileRows(profile(), hours));
    results_.append("_bed_change.csv", bedChangeRows(model_.grid, bed_, bedBefore_, flow_, hours));
  }

  Comparison compareWith(const MeasuredBed& measured) const {
    Comparison comparison = compare(profile(), readMeasured(measured.file));
    results_.write("_measured.csv", comparisonTable(comparison));
    return comparison;
  }

 private:
  std::vector<ProfilePoint> profile() const {
    return profileOf(model_.profile, model_, bedBefore_, bed_, flow_);
  }

  const Case& model_;
  const ResultFolder& results_;
  const BedArrays& bed_;
  Field<double> bedBefore_;
  const Flow& flow_;
};

void checkFinite(const Flow& flow, const SandBalance& sand, double hours) {
  if (flow.isFinite() && std::isfinite(sand.bedVolumeAtEnd)) return;
  throw UnstableError("After " + fixed(hours, 3) +
                      " h the flow or the bed is no number any more: "
                      "the morphology step is too long, or the control file leaves a parameter "
                      "unset that the transport formula needs.");
}

}  // namespace

RunReport runCase(const Case& model, const ModuleLibrary& module, const ResultFolder& results,
                  std::ostream& out, bool isTerminal) {
  const auto start = Progress::Clock::now();
  BedArrays bed = bedArrays(model.bed, model.grid);
  const Mesh mesh = makeMesh(model.grid, bed.code);
  results.write(".2dm", meshText(mesh, model.grid, bed.zpts));
  MorphologyCoupling morphology(module, model, results.prefix(), bed, mesh);
  Flow flow(model.grid, model.flow, bed);
  fillWithWater(flow, model);
  const double waterAtStart = flow.storedVolume();

  out << "\nFlow alone for " << durationText(model.time.spinUpSeconds) << " of spin-up."
      << std::endl;
  flow.run(model.time.spinUpSeconds);
  out << "Levels now change by " << significant(1000 * flow.levelChange(), 2) << " mm/s at most."
      << std::endl;
  const Recorder recorder(model, results, bed, flow);
  recorder.record(0);
  morphology.writeRecord(flow, 0);

  RunReport report;
  const auto recordAt = [&](double hours) {
    checkFinite(flow, morphology.balance(), hours);
    recorder.record(hours);
    morphology.writeRecord(flow, hours);
    if (model.measured && std::abs(model.measured->hours - hours) < 1e-6)
      report.comparison = recorder.compareWith(*model.measured);
  };

  out << "Flow and bed for " << fixed(model.time.durationHours, 2) << " h." << std::endl;
  Progress progress(out, isTerminal, model.time.durationHours, Progress::Clock::now());
  double from = 0;
  for (const double to : model.time.outputHours) {
    // Equal steps that end on the output time, none longer than the case asks for.
    const double seconds = (to - from) * 3600;
    const auto steps =
        static_cast<std::int64_t>(std::ceil(seconds / model.time.morphologyStep - 1e-9));
    const double step = seconds / static_cast<double>(steps);
    for (std::int64_t k = 1; k <= steps; ++k) {
      flow.run(step / model.time.acceleration);
      morphology.step(flow, step);
      const double share = static_cast<double>(k) / static_cast<double>(steps);
      progress.show(from + share * (to - from), Progress::Clock::now());
    }
    recordAt(to);
    from = to;
  }
  progress.finish();
  morphology.finish();

  report.sand = morphology.balance();
  report.effort = morphology.effort();
  report.wallSeconds = secondsSince(start);
  report.waterPassed = flow.boundaryVolume();
  report.waterError =
      flow.storedVolume() - waterAtStart - flow.boundaryVolume() - flow.displacedVolume();
  report.moduleErrors = module.messages().error_count;
  report.moduleWarnings = module.messages().warning_count;
  report.moduleChecks = module.messages().check_count;
  return report;
}

void printReport(std::ostream& out, const RunReport& report) {
  const auto line = [&](const std::string& what, const std::string& value) {
    out << "  " << what << std::string(what.size() < 34 ? 34 - what.size() : 1, ' ') << value
        << '\n';
  };
  const SandBalance& sand = report.sand;
  out << "\nSand, as volume of bed\n";
  line("eroded", fixed(sand.eroded, 5) + " m3");
  line("deposited", fixed(sand.deposited, 5) + " m3");
  line("net, in over the edges", fixed(sand.net(), 5) + " m3");
  line("moved by slumping", fixed(sand.slumped, 5) + " m3");
  line("slumping summed over the grid", significant(sand.slumpSum, 2) + " m3 (0 but for rounding)");
  line("bed less all of these", significant(sand.unexplained(), 2) + " m3 (0 but for rounding)");
  line("water balance misses", significant(report.waterError, 2) + " m3");
  out << "\nTime\n";
  line("whole run", fixed(report.wallSeconds, 2) + " s");
  line("share of the module", fixed(100 * report.effort.seconds / report.wallSeconds, 1) + " %");
  if (report.effort.cellSteps > 0)
    line("module per active cell and step",
         fixed(1e9 * report.effort.seconds / report.effort.cellSteps, 0) + " ns");
  line("morphology steps", fixed(report.effort.steps, 0));
  line("messages in the log", std::to_string(report.moduleErrors) + " errors, " +
                                  std::to_string(report.moduleWarnings) + " warnings, " +
                                  std::to_string(report.moduleChecks) + " checks");
  if (!report.comparison) return;
  out << "\nComputed against measured bed, " << report.comparison->measured.size() << " points\n";
  line("rms difference", fixed(report.comparison->rms, 4) + " m");
  line("rms difference of \"no change\"", fixed(report.comparison->rmsNoChange, 4) + " m");
  line("skill", fixed(report.comparison->skill(), 3));
}

std::string summaryTable(const RunReport& report) {
  std::string text = "quantity,value,unit\n";
  const auto row = [&](const std::string& what, const std::string& value, const char* unit) {
    text += what + ',' + value + ',' + unit + '\n';
  };
  row("eroded", fixed(report.sand.eroded, 8), "m3");
  row("deposited", fixed(report.sand.deposited, 8), "m3");
  row("net", fixed(report.sand.net(), 8), "m3");
  row("slumped", fixed(report.sand.slumped, 8), "m3");
  row("slump_sum", significant(report.sand.slumpSum, 4), "m3");
  row("unexplained", significant(report.sand.unexplained(), 4), "m3");
  row("water_error", significant(report.waterError, 4), "m3");
  row("run_time", fixed(report.wallSeconds, 3), "s");
  row("module_time", fixed(report.effort.seconds, 3), "s");
  row("morphology_steps", fixed(report.effort.steps, 0), "");
  row("active_cell_steps", fixed(report.effort.cellSteps, 0), "");
  if (report.comparison) {
    row("rms", fixed(report.comparison->rms, 6), "m");
    row("rms_no_change", fixed(report.comparison->rmsNoChange, 6), "m");
    row("skill", fixed(report.comparison->skill(), 6), "");
  }
  return text;
}

}  // namespace host
