// Depth-averaged shallow water flow on the module's own staggering: levels at cell centres, velocities
// at the sides. Explicit, with momentum carried as it is conserved (Stelling and Duinmeijer 2003), to
// second order in space where the flow is smooth, and with a turbulent viscosity. A steady
// flow does not depend on the length of the steps.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "bed.hpp"
#include "grid_frame.hpp"

namespace host {

// From Manning's n, or from a roughness height ks with the Chezy coefficient 18 log10(12 h / ks).
struct Roughness {
  enum class Kind { Manning, Height };
  Kind kind = Kind::Manning;
  double value = 0.03;  // n in s/m^(1/3), or ks in m

  // Drag coefficient g / C^2, by either law.
  double manningDrag(double depth) const;
  double heightDrag(double depth) const;
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
  double courant = 0.7;                     // share of the longest stable step
  double mixing = 0.15;  // turbulent viscosity over depth and shear velocity (Elder)
  double viscosity = 0;  // added to it, m2/s
  double dryDepth =
      0.001;  // a cell with no more than this is dry, m; with half of it, it gives no water
};

class Flow {
 public:
  // Keeps a reference to the bed, which the module changes between the steps.
  Flow(const GridFrame& grid, const FlowSettings& settings, const BedArrays& bed);

  // Water with the level of (x, y), none where the bed is higher, and the same discharge per unit
  // width at all sides between wet cells, m2/s.
  void fill(const std::function<double(double, double)>& level, double qx = 0, double qy = 0);

  // Longest stable step for the present depths and velocities, times `courant`; the same for every
  // cell.
  double stableStep() const;
  void step(double seconds);
  // As many stable, equally long steps as it takes.
  void run(double seconds);

  // To be called after the bed has changed: levels stay, a bed above its level lifts it.
  // `volumeBefore` is storedVolume() before the change.
  void followBed(double volumeBefore);

  const Field<double>& level() const { return level_; }
  const Field<double>& q1() const { return y_.discharge; }  // side of (i, j) and (i + 1, j), m2/s
  const Field<double>& q2() const { return x_.discharge; }  // side of (i, j) and (i, j + 1), m2/s
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
  double levelChange() const;

 private:
  // What belongs to the sides that are crossed along one axis. The side of a cell is the one toward
  // the next cell of that axis, `along` elements further; `across` is the same for the other axis.
  struct Sides {
    Sides(const GridFrame& grid, const Field<double>& sideBed, Axis axis);

    const Field<double>& bed;
    std::ptrdiff_t along, across;
    Field<double> velocity, next, discharge;
    Field<double> change;   // of the velocity by carried and mixed momentum, m/s2
    Field<double> open;     // 1 at sides at which momentum is computed, else 0
    Field<double> carries;  // the same without the edges of the model
  };

  // Elements of the fields from `begin` up to before `end`.
  struct Stretch {
    std::ptrdiff_t begin, end;
  };

  void findStretches();
  void restOutside();
  void describeCells();
  void findChange(Sides& sides, const Sides& other);
  void findVelocity(Sides& sides, const Sides& other, double seconds);
  void openEdges();
  void setEdgeDischarges();
  void limitToStoredWater(double seconds);
  void updateLevels(double seconds);
  void updateMargin();
  std::ptrdiff_t flat(int i, int j) const {
    return static_cast<std::ptrdiff_t>(level_.position(i, j));
  }
  Sides& sidesOf(Axis axis) { return axis == Axis::X ? x_ : y_; }
  template <typename Visit>
  void forEachEdgeCell(Edge edge, Visit visit) const;

  GridFrame grid_;
  FlowSettings settings_;
  const BedArrays& bed_;
  Sides x_, y_;
  Field<double> level_, depth_;
  Field<double> drag_;              // bed friction over density and square of the velocity
  Field<double> mixing_;            // turbulent viscosity times depth, m3/s; 0 in dry cells
  Field<double> centre_, corner_;   // momentum that crosses cell centres and corners
  Field<double> inside_;            // 1 in cells of the model, else 0
  Field<std::uint8_t> active_;      // cells that may hold water, open margin cells included
  std::vector<Stretch> stretches_;  // hold all water, and where it can come to soon
  int stepsToSearch_ = 0;           // for them
  double boundaryVolume_ = 0;
  double displacedVolume_ = 0;
};

}  // namespace host
