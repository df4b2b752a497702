// The check layer: a MIF/MID pair in which every cell of every domain is a square that carries what
// the module reads for it, so that a modeller can see the inputs over the model.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "files/file_units.hpp"
#include "messages/diagnostics.hpp"
#include "messages/gis_settings.hpp"
#include "messages/mif_layer_opener.hpp"
#include "output/mif_header_writer.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// The parameters of a cell.
struct CheckedFields {
  Grid<const double> d50;
  Grid<const double> d90;
  Grid<const double> inSituVoids;
  Grid<const double> depositionVoids;
  Grid<const double> bedLimit;
  Grid<const std::int32_t> bedCode;
};

// From the cells' indices to the plane: the origin is the corner of field element (3, 3), the steps
// are cell size times cosine and sine of the grid's direction. The second index runs along local x.
struct CellFrame {
  double x0 = 0.0;
  double y0 = 0.0;
  double stepA = 1.0;
  double stepB = 0.0;

  // The point `a` cells along local x and `b` along local y.
  double x(double a, double b) const { return x0 + stepA * a - stepB * b; }
  double y(double a, double b) const { return y0 + stepB * a + stepA * b; }
};

struct CheckedDomain {
  std::int32_t domain = 1;  // domain 1 creates the layer
  std::int32_t lastDomain = 1;
  Grid<const std::int32_t> code;          // cells of code 0 are left out
  Grid<const double> depth;               // of the bed below datum: the negative of its elevation
  std::optional<CheckedFields> fields{};  // none: zeros
  Area range;
  std::int32_t firstOffset = 0;  // index shown of field element 2
  std::int32_t secondOffset = 0;
  CellFrame frame{};
};

class CheckLayer {
 public:
  CheckLayer(FileUnits& files, Diagnostics& diagnostics, Termination& termination,
             MifLayerOpener& opener);

  // Appends the cells of a domain; the last domain completes the layer. A write that fails ends the
  // run. Without a layer, created by domain 1, nothing happens.
  void write(const CheckedDomain& domain, const GisSettings& settings, std::int32_t logUnit);

 private:
  void create(const CheckedDomain& domain, const GisSettings& settings, std::int32_t logUnit);
  void widenBounds(const CheckedDomain& domain, Unit& mif);
  void writeCells(const CheckedDomain& domain, Unit& mif, Unit& mid);
  void requireWritten();
  std::string fileName(std::string_view extension) const;

  FileUnits& files_;
  Diagnostics& diagnostics_;
  MifLayerOpener& opener_;
  MifHeaderWriter header_;
  LayerUnits units_;
  std::string baseName_;
  bool isPlane_ = false;          // the header has bounds of ours
  std::optional<Bounds> bounds_;  // of the domains that have cells
};

}  // namespace nivaro
