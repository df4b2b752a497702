#include "morphology/reference_step.hpp"

#include <cmath>

#include "morphology/transport_capacity.hpp"

namespace nivaro::reference {
namespace {

struct State {
  double h = 0, un = 0, speed = 0, qs = 0, qb = 0;
};

State sideState(const StepInput& in, int i, int j, bool second, int toward, bool downstream) {
  const auto& WL = in.flow.waterLevel;
  const auto& ZC = in.bed.zc;
  const auto& V1 = in.flow.v1;
  const auto& V2 = in.flow.v2;
  const auto& p = in.parameters;
  const int ni = second ? i : i + toward;
  const int nj = second ? j + toward : j;
  // The side lies above cell (si, sj).
  const int si = toward < 0 ? ni : i;
  const int sj = toward < 0 ? nj : j;
  State s;
  double ut = 0;
  if (in.flow.wet(ni, nj) & 1) {
    const double zs = second ? in.bed.z2(si, sj) : in.bed.z1(si, sj);
    s.h = 0.5 * (WL(i, j) + WL(ni, nj)) + zs;
    if (in.settings.raiseSideDepth) {
      const double higher = WL(i, j) > WL(ni, nj) ? WL(i, j) : WL(ni, nj);
      const double raised = in.settings.raiseFactor * (higher + zs);
      if (raised > s.h) s.h = raised;
    }
    s.un = second ? V2(si, sj) : V1(si, sj);
    if (p.velocityCentred && downstream) s.un = s.un * s.h / (WL(i, j) + ZC(i, j));
    if (second && toward < 0) ut = (V1(i, j) + V1(i - 1, j) + V1(i - 1, j - 1) + V1(i, j - 1)) / 4;
    if (second && toward > 0) ut = (V1(i, j + 1) + V1(i - 1, j + 1) + V1(i - 1, j) + V1(i, j)) / 4;
    if (!second && toward < 0) ut = (V2(i, j) + V2(i - 1, j) + V2(i - 1, j - 1) + V2(i, j - 1)) / 4;
    if (!second && toward > 0) ut = (V2(i + 1, j) + V2(i, j) + V2(i, j - 1) + V2(i + 1, j - 1)) / 4;
  } else if (in.flow.flow(i, j) & 1) {
    s.h = WL(i, j) + ZC(i, j);
    if (second) {
      s.un = toward < 0 ? V2(i, j) : V2(i, j - 1);
      ut = (V1(i, j) + V1(i, nj)) / 2;
    } else {
      s.un = toward < 0 ? V1(i, j) : V1(i - 1, j);
      ut = (V2(i, j) + V2(i, j - 1)) / 2;
    }
  }
  s.speed = std::sqrt(ut * ut + s.un * s.un);
  const Transport c =
      transportCapacity(s.h, s.speed, grainTerms(in.fields.d50(i, j), p), in.fields.d90(i, j), p);
  s.qs = c.suspended;
  s.qb = c.bedLoad;
  if (s.speed > 0) {
    s.qs = s.qs * s.un / s.speed;
    s.qb = s.qb * s.un / s.speed;
  }
  return s;
}

double relax(const StepInput& in, int i, int j, double qi, double qe, double ui, double hi,
             double uo, double ho) {
  double Q = 0.5 * (ui * hi + uo * ho);
  if (Q <= 0.000001) Q = 0.000001;
  const double c = qi / Q;
  in.fields.concentration(i, j) = c;
  const double cK = c * in.parameters.concentrationFactor;
  const double alpha = (1 - std::pow(qe / qi, 0.2)) * cK * in.parameters.fallVelocity / (qi - qe);
  in.fields.adaptation(i, j) = alpha;
  double x = -alpha * in.settings.cellSize;
  if (x < -10) x = -10;
  if (x > 10) x = 10;
  return (1 - std::exp(x)) * (qi - qe);
}

void sweepCell(const StepInput& in, int i, int j, bool second, bool forward, double& t) {
  if (!(in.fields.bedCode(i, j) & 1) || !(in.flow.wet(i, j) & 1)) return;
  const State lo = sideState(in, i, j, second, -1, !forward);
  const State hi = sideState(in, i, j, second, +1, forward);
  const bool limited = -in.bed.zc(i, j) <= in.fields.bedLimit(i, j);
  const double vi = in.fields.inSituVoids(i, j);
  double v = in.fields.depositionVoids(i, j);
  double d = 0;
  if (forward) {
    const double u = t != 0 ? t : lo.qs;
    const double w = hi.qs;
    if ((u < 0 && w > 0) || (u >= 0 && w >= 0 && u <= w)) {
      v = vi;
      if (!limited) d = u - w, t = w;
    } else if (u >= 0 && w < 0) {
      d = u - w;
      t = 0;
    } else if (u >= 0 && w >= 0 && w < u) {
      d = relax(in, i, j, u, w, lo.un, lo.h, hi.un, hi.h);
      t = u - d;
    }
  } else {
    const double u = t != 0 ? t : hi.qs;
    const double w = lo.qs;
    if (w <= 0 && u <= 0 && w <= u) {
      v = vi;
      if (!limited) d = w - u, t = w;
    } else if (w <= 0 && u <= 0 && w > u) {
      d = relax(in, i, j, -u, -w, -hi.un, hi.h, -lo.un, lo.h);
      t = u + d;
    }
  }
  const double M = (forward ? lo.qb - hi.qb + d : d) * in.settings.timeStep;
  double& C = in.fields.cellChange(i, j);
  C = C + (M / in.parameters.sandGrainDensity) / (1 - v) / in.settings.cellSize;
}

void sweeps(const StepInput& in, const Area& a) {
  double t;
  for (int i = a.firstI; i <= a.lastI; ++i) {
    t = 0;
    for (int j = a.firstJ; j <= a.lastJ; ++j) sweepCell(in, i, j, true, true, t);
    t = 0;
    for (int j = a.lastJ; j >= a.firstJ; --j) sweepCell(in, i, j, true, false, t);
  }
  for (int j = a.firstJ; j <= a.lastJ; ++j) {
    t = 0;
    for (int i = a.firstI; i <= a.lastI; ++i) sweepCell(in, i, j, false, true, t);
    t = 0;
    for (int i = a.lastI; i >= a.firstI; --i) sweepCell(in, i, j, false, false, t);
  }
}

void slump(const StepInput& in, int ci, int cj, int ni, int nj, double s) {
  const double zn = -in.bed.zc(ni, nj);
  const double zc = -in.bed.zc(ci, cj);
  const double dz = zn - zc;
  const double S = in.parameters.slumpSlope;
  if (!(in.fields.bedLimit(ci, cj) < zn)) return;
  if (!(dz > 0.00001) || !(in.flow.wet(ci, cj) & 1) || !(s / dz < S)) return;
  double amount = dz * (1 - (s / dz) / S);
  if (amount > in.parameters.slumpBedChangeLimit) amount = in.parameters.slumpBedChangeLimit;
  in.fields.appliedChange(ci, cj) = in.fields.appliedChange(ci, cj) + amount;
  in.fields.appliedChange(ni, nj) = in.fields.appliedChange(ni, nj) - amount;
}

void rebuild(const StepInput& in, const Area& a) {
  const auto& ZC = in.bed.zc;
  const auto& B = in.fields.bedCode;
  const bool high = in.parameters.cellSidesHigh;
  const auto side = [&](double x, double y) { return high ? (y < x ? y : x) : (x + y) / 2; };
  for (int j = a.firstJ - 1; j <= a.lastJ; ++j) {
    for (int i = a.firstI - 1; i <= a.lastI; ++i) {
      if (B(i, j) > 0 && B(i, j + 1) > 0) in.bed.z2(i, j) = side(ZC(i, j), ZC(i, j + 1));
      if (B(i, j) > 0 && B(i + 1, j) > 0) in.bed.z1(i, j) = side(ZC(i, j), ZC(i + 1, j));
      double sum = 0, count = 0;
      for (int b = j; b <= j + 1; ++b)
        for (int a2 = i; a2 <= i + 1; ++a2)
          if (B(a2, b) > 0) sum += ZC(a2, b), count += 1;
      if (count > 0) in.bed.zpts(i, j) = sum / count;
    }
  }
}

}  // namespace

void step(const StepInput& in, const Area& a) {
  const auto& f = in.fields;
  for (auto field : {f.cellChange, f.concentration, f.adaptation, f.spare})
    for (double& value : field.cells()) value = 0;
  sweeps(in, a);
  const double theta = in.parameters.timeCentringFactor;
  const double L = in.parameters.bedChangeLimit;
  for (int j = a.firstJ; j <= a.lastJ; ++j) {
    for (int i = a.firstI; i <= a.lastI; ++i) {
      double A = 0;
      if ((f.bedCode(i, j) & 1) && (in.flow.wet(i, j) & 1)) {
        A = theta * f.cellChange(i, j) + (1 - theta) * f.previousChange(i, j);
        if (A > L) A = L;
        if (A < -L) A = -L;
      }
      f.cellChange(i, j) = A;
      f.previousChange(i, j) = A;
      if (f.bedCode(i, j) > 0) in.bed.zc(i, j) = in.bed.zc(i, j) - f.cellChange(i, j);
    }
  }
  for (double& value : f.appliedChange.cells()) value = 0;
  for (int j = a.firstJ; j <= a.lastJ; ++j) {
    for (int i = a.firstI; i <= a.lastI; ++i) {
      if (f.bedCode(i, j) <= 0) continue;
      if (j < a.lastJ) slump(in, i, j, i, j + 1, in.settings.slumpDistanceSecond);
      if (j > a.firstJ) slump(in, i, j, i, j - 1, in.settings.slumpDistanceSecond);
      if (i < a.lastI) slump(in, i, j, i + 1, j, in.settings.slumpDistanceFirst);
      if (i > a.firstI) slump(in, i, j, i - 1, j, in.settings.slumpDistanceFirst);
    }
  }
  for (int j = a.firstJ; j <= a.lastJ; ++j)
    for (int i = a.firstI; i <= a.lastI; ++i)
      if (f.bedCode(i, j) > 0) in.bed.zc(i, j) = in.bed.zc(i, j) - f.appliedChange(i, j);
  rebuild(in, a);
}

}  // namespace nivaro::reference
