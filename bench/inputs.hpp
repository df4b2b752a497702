// The files that the reading benchmarks read: the same in every run.
#pragma once

#include <string>

namespace nivaro::bench {

inline constexpr double kCellSize = 10.0;  // m
inline constexpr double kOriginX = 500000.0;
inline constexpr double kOriginY = 6000000.0;

// `base`.mif and .mid: regions of 50 vertices, some twenty cells wide, all over a grid of
// `cells` x `cells`, each with a grain size.
void writeRegionLayer(const std::string& base, int regions, int cells);

// A row of indices and a bed level for every cell of a grid.
void writeCellTable(const std::string& path, int cells);

void save(const std::string& path, const std::string& text);
std::string textOf(const std::string& path);

}  // namespace nivaro::bench
