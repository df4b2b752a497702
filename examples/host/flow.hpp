// Shallow water flow on the module's own staggering: levels at cell centres, discharges per unit
// width at the sides. Local-inertia scheme with semi-implicit friction after Bates, Horritt and
// Fewtrell (2010), with the discharge-centred damping of de Almeida et al. (2012).
#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "bed.hpp"
#include "grid_frame.hpp"

namespace host {

// Friction slope = resistance(h) * q * |q|, from Manning's n or from a roughness height ks with
// the Chezy coefficient 18 log10(12 h / ks).
struct Roughness {
  enum class Kind { Manning, Height };
  Kind kind = Kind::Manning;
  double value = 0.03;  // n in s/m^(1/3), or ks in m

  double resistance(double depth) const;
};

enum class Edge : std::size_t { West, East, South, North };
inline constexpr std::size_t kEdges = 4;

struct EdgeCondition {
  enum class Kind { Wall, Discharge, Level };
  Kind kind = Kind::Wall;
  double value = 0;  // m3/s into the model over the whole edge, or m
};

struct FlowSettings {
  Roughness roughness;
  std::array<EdgeCondition, kEdges> edges;  // by Edge
  double courant = 0.7;                     // share of the longest step that free waves allow
  double centring = 0.9;    // weight of a side's own discharge against its two neighbours'
  double dryDepth = 0.001;  // a cell with no more than this is dry and gives no water, m
};

class Flow {
 public:
  // Keeps a reference to the bed, which the module changes between the steps.
  Flow(const GridFrame& grid, const FlowSettings& settings, const BedArrays& bed);

  // Water with the level of (x, y), none where the bed is higher, and the same discharge per unit
  // width at all sides between wet cells, m2/s.
  void fill(const std::function<double(double, double)>& level, double qx = 0, double qy = 0);

  // Longest stable step for the present depths; the same for every cell.
  double stableStep() const;
  void step(double seconds);
  // As many stable, equally long steps as it takes.
  void run(double seconds);

  // To be called after the bed has changed: levels stay, a bed above its level lifts it.
  // `volumeBefore` is storedVolume() before the change.
  void followBed(double volumeBefore);

  const Field<double>& level() const { return level_; }
  const Field<double>& q1() const { return q1_; }  // side between (i, j) and (i + 1, j), m2/s
  const Field<double>& q2() const { return q2_; }  // side between (i, j) and (i, j + 1), m2/s
  double depth(int i, int j) const { return level_(i, j) + bed_.zc(i, j); }
  // Wet cells of the model, and cells of the margin through which water enters or leaves.
  bool isWet(int i, int j) const { return active_(i, j) && depth(i, j) > settings_.dryDepth; }
  double dryDepth() const { return settings_.dryDepth; }

  // Water balance, m3: stored - start = boundary + displaced, to rounding.
  double storedVolume() const;
  double boundaryVolume() const { return boundaryVolume_; }
  double displacedVolume() const { return displacedVolume_; }
  bool isFinite() const;
  // Fastest change of a level in the latest step, m/s: how far the flow is from steady.
  double levelChange() const { return levelChange_; }

 private:
  template <Axis axis>
  double nextDischarge(int i, int j, double seconds) const;
  void openEdges();
  void setEdgeDischarges();
  void limitToStoredWater(double seconds);
  void updateLevels(double seconds);
  void updateMargin();
  template <typename Visit>
  void forEachEdgeCell(Edge edge, Visit visit) const;

  GridFrame grid_;
  FlowSettings settings_;
  const BedArrays& bed_;
  Field<double> level_, q1_, q2_, next1_, next2_;
  Field<std::uint8_t> active_;         // cells that may hold water, open margin cells included
  Field<std::uint8_t> open1_, open2_;  // sides at which momentum is computed
  double boundaryVolume_ = 0;
  double displacedVolume_ = 0;
  double levelChange_ = 0;
};

}  // namespace host
