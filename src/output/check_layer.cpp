#include "output/check_layer.hpp"

#include <algorithm>
#include <span>

#include "output/cell_text.hpp"
#include "text/blank_padded.hpp"

namespace nivaro {

namespace {

constexpr std::string_view kColumns[] = {
    "Columns 12",
    "  n Integer",
    "  m Integer",
    "  Grid_Ref Char(13)",
    "  Code Integer",
    "  ZC Float",
    "  Domain_Index Integer",
    "  mor_d50 Float",
    "  mor_d90 Float",
    "  mor_IVR Float",
    "  mor_DVR Float",
    "  mor_Bed_Limit_Z Float",
    "  mor_Bed_Code Integer",
    "Data",
    "",
};

bool isEmpty(const Area& range) {
  return range.lastI < range.firstI || range.lastJ < range.firstJ;
}

// Around the range of cells, turned as the grid is. An empty range counts as one cell thick:
// GIS programs take no bounds without an extent.
Bounds extent(const CellFrame& frame, const Area& range) {
  const double left = range.firstJ - 3;
  const double right = std::max(range.firstJ, range.lastJ) - 2;
  const double low = range.firstI - 3;
  const double high = std::max(range.firstI, range.lastI) - 2;
  const auto [xMin, xMax] = std::minmax(
      {frame.x(left, low), frame.x(right, low), frame.x(left, high), frame.x(right, high)});
  const auto [yMin, yMax] = std::minmax(
      {frame.y(left, low), frame.y(right, low), frame.y(left, high), frame.y(right, high)});
  return {.xMin = xMin, .yMin = yMin, .xMax = xMax, .yMax = yMax};
}

Bounds around(const Bounds& a, const Bounds& b) {
  return {.xMin = std::min(a.xMin, b.xMin),
          .yMin = std::min(a.yMin, b.yMin),
          .xMax = std::max(a.xMax, b.xMax),
          .yMax = std::max(a.yMax, b.yMax)};
}

}  // namespace

CheckLayer::CheckLayer(FileUnits& files, Diagnostics& diagnostics, Termination& termination,
                       MifLayerOpener& opener)
    : files_(files),
      diagnostics_(diagnostics),
      opener_(opener),
      header_(files, diagnostics, termination) {}

void CheckLayer::write(const CheckedDomain& domain, const GisSettings& settings,
                       std::int32_t logUnit) {
  if (domain.domain == 1) create(domain, settings, logUnit);
  Unit* mif = files_.find(units_.mif);
  Unit* mid = files_.find(units_.data);
  if (mif == nullptr || mid == nullptr) return;

  widenBounds(domain, *mif);
  writeCells(domain, *mif, *mid);
  mif->flush();
  requireWritten();
  if (domain.domain == domain.lastDomain) opener_.close(units_);
}

void CheckLayer::create(const CheckedDomain& domain, const GisSettings& settings,
                        std::int32_t logUnit) {
  opener_.close(units_);  // a layer that its last domain never completed
  baseName_ = std::string(trimmed(settings.checkLayerPrefix)) + "_mor_check";
  units_ = opener_.openOutput(baseName_);
  Unit* mif = files_.find(units_.mif);
  if (mif == nullptr) return;

  bounds_.reset();
  Bounds bounds = extent(domain.frame, domain.range);
  isPlane_ = header_.miWriteMifHeader(*mif, {.projectionLine = settings.checkLayerHeaderSource},
                                      logUnit, bounds);
  for (const std::string_view line : kColumns) mif->writeRecord(line);
}

// The header is written with the first domain, before it is known where the others lie.
void CheckLayer::widenBounds(const CheckedDomain& domain, Unit& mif) {
  if (!isPlane_ || isEmpty(domain.range)) return;
  const Bounds own = extent(domain.frame, domain.range);
  bounds_ = bounds_ ? around(*bounds_, own) : own;
  if (domain.domain == 1) return;
  const std::string header = planeHeader(*bounds_);
  mif.overwriteBytes(0, std::as_bytes(std::span(header)));
}

// A row of cells (along the second index) is gathered as one block of text for each file. Its records
// are on the disk before its squares: readers pass over a record too many, but not over an object that
// has none.
void CheckLayer::writeCells(const CheckedDomain& domain, Unit& mif, Unit& mid) {
  const Area& range = domain.range;
  CornerLines low;
  CornerLines high;
  CellRecords records(domain);
  std::string squares;
  std::string lines;
  low.fill(domain.frame, range.firstI - 3, range);
  for (int i = range.firstI; i <= range.lastI; ++i) {
    high.fill(domain.frame, i - 2, range);
    squares.clear();
    lines.clear();
    for (int j = range.firstJ; j <= range.lastJ; ++j) {
      if (domain.code(i, j) == 0) continue;
      appendSquare(squares, low, high, j);
      records.append(lines, i, j);
    }
    mid.writeBytes(std::as_bytes(std::span(lines)));
    mid.flush();
    requireWritten();
    mif.writeBytes(std::as_bytes(std::span(squares)));
    std::swap(low, high);
  }
}

void CheckLayer::requireWritten() {
  diagnostics_.requireWritten(files_.find(units_.mif), fileName(".mif"));
  diagnostics_.requireWritten(files_.find(units_.data), fileName(".mid"));
}

std::string CheckLayer::fileName(std::string_view extension) const {
  return baseName_ + std::string(extension);
}

}  // namespace nivaro
