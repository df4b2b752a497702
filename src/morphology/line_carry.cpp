// In both sweeps: t is what is carried, u the transport through the side that the sweep comes from,
// w the transport through the side that it goes to, as signed components along the index.
#include "morphology/line_carry.hpp"

#include "morphology/deposition.hpp"

namespace nivaro {
namespace {

// What a sweep does in one cell.
struct Exchange {
  double suspended;  // net suspended transport left in the cell, kg/(m s); negative is erosion
  double carried;    // t afterwards
  double voids;      // of the sand that comes or goes
};

// A number that is not one meets no case of the tables and ends here too.
Exchange passedBy(const LineBuffers& line, std::size_t k, double carried) {
  return {0.0, carried, line.depositionVoids[k]};
}

// At its limit the bed gives no suspended sand, and what is carried stays as it was.
Exchange eroded(const LineBuffers& line, std::size_t k, double carried, double taken, double w) {
  if (line.atBedLimit[k] != 0) return {0.0, carried, line.inSituVoids[k]};
  return {taken, w, line.inSituVoids[k]};
}

double deposited(const StepInput& in, const Settling& settling, LineBuffers& line, std::size_t k) {
  const Deposition result = deposition(settling, in.settings.cellSize, in.parameters.fallVelocity,
                                       in.parameters.concentrationFactor);
  line.concentration[k] = result.concentration;
  line.adaptation[k] = result.adaptation;
  return result.deposited;
}

Exchange forwardExchange(const StepInput& in, const SideBuffer& lower, const SideBuffer& upper,
                         LineBuffers& line, std::size_t k, double carried) {
  const double u = carried != 0.0 ? carried : lower.suspended[k];
  const double w = upper.suspended[k];

  if (u < 0.0 && w > 0.0) return eroded(line, k, carried, u - w, w);  // diverging
  if (u < 0.0 && w <= 0.0) return passedBy(line, k, carried);
  if (u >= 0.0 && w < 0.0) return {u - w, 0.0, line.depositionVoids[k]};  // converging
  if (u >= 0.0 && w >= 0.0 && u <= w) return eroded(line, k, carried, u - w, w);
  if (u >= 0.0 && w >= 0.0 && w < u) {
    const Settling settling{u, w, lower.normal[k], lower.depth[k], upper.normal[k], upper.depth[k]};
    const double settled = deposited(in, settling, line, k);
    return {settled, u - settled, line.depositionVoids[k]};
  }
  return passedBy(line, k, carried);
}

Exchange reverseExchange(const StepInput& in, const SideBuffer& lower, const SideBuffer& upper,
                         LineBuffers& line, std::size_t k, double carried) {
  const double u = carried != 0.0 ? carried : upper.suspended[k];
  const double w = lower.suspended[k];

  if (w <= 0.0 && u <= 0.0 && w <= u) return eroded(line, k, carried, w - u, w);
  if (w <= 0.0 && u <= 0.0 && w > u) {
    const Settling settling{
        -u, -w, -upper.normal[k], upper.depth[k], -lower.normal[k], lower.depth[k]};
    const double settled = deposited(in, settling, line, k);
    return {settled, u + settled, line.depositionVoids[k]};
  }
  return passedBy(line, k, carried);
}

// Level change, m, that a net transport into the cell makes during the step.
double levelChange(const StepInput& in, double transport, double voids) {
  const double mass = transport * in.settings.timeStep;
  return mass / in.parameters.sandGrainDensity / (1.0 - voids) / in.settings.cellSize;
}

}  // namespace

void carryForward(const StepInput& in, const SideBuffer& lower, const SideBuffer& upper,
                  LineBuffers& line) {
  double carried = 0.0;
  for (std::size_t k = 0; k < line.count; ++k) {
    const Exchange cell = forwardExchange(in, lower, upper, line, k, carried);
    carried = cell.carried;
    const double net = lower.bedLoad[k] - upper.bedLoad[k] + cell.suspended;
    line.change[k] += levelChange(in, net, cell.voids);
  }
}

void carryReverse(const StepInput& in, const SideBuffer& lower, const SideBuffer& upper,
                  LineBuffers& line) {
  double carried = 0.0;
  for (std::size_t k = line.count; k-- > 0;) {
    const Exchange cell = reverseExchange(in, lower, upper, line, k, carried);
    carried = cell.carried;
    line.change[k] += levelChange(in, cell.suspended, cell.voids);
  }
}

}  // namespace nivaro
