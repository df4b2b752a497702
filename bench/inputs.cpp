#include "inputs.hpp"

#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <numbers>
#include <random>

namespace nivaro::bench {
namespace {

constexpr int kVertices = 50;  // the last is the first once more

constexpr const char* kHeader =
    "Version 300\n"
    "Charset \"WindowsLatin1\"\n"
    "Delimiter \",\"\n"
    "CoordSys NonEarth Units \"m\" Bounds (0, 0) (10000000, 10000000)\n"
    "Columns 1\n"
    "  D50 Float\n"
    "Data\n\n";

std::string point(double x, double y) {
  std::array<char, 64> line;
  const int length = std::snprintf(line.data(), line.size(), "%.2f %.2f\n", x, y);
  return {line.data(), static_cast<std::size_t>(length)};
}

// A clover leaf around a centre.
std::string region(double x, double y, double radius) {
  std::string text = "Region  1\n  " + std::to_string(kVertices) + "\n";
  for (int vertex = 0; vertex < kVertices; ++vertex) {
    const double angle = 2.0 * std::numbers::pi * (vertex % (kVertices - 1)) / (kVertices - 1);
    const double r = radius * (1.0 + 0.2 * std::sin(3.0 * angle));
    text += point(x + r * std::cos(angle), y + r * std::sin(angle));
  }
  return text + "    Pen (1,2,0)\n    Brush (1,0,16777215)\n    Center " + point(x, y);
}

}  // namespace

void writeRegionLayer(const std::string& base, int regions, int cells) {
  std::minstd_rand dice(1);
  const auto within = [&dice](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(dice);
  };
  std::string objects = kHeader;
  std::string records;
  for (int k = 0; k < regions; ++k) {
    const double x = kOriginX + within(0.0, cells * kCellSize);
    const double y = kOriginY + within(0.0, cells * kCellSize);
    objects += region(x, y, within(6.0, 14.0) * kCellSize);
    records += std::to_string(within(0.0001, 0.002)) + "\n";
  }
  save(base + ".mif", objects);
  save(base + ".mid", records);
}

void writeCellTable(const std::string& path, int cells) {
  std::minstd_rand dice(2);
  std::uniform_real_distribution<double> level(-30.0, 2.0);
  std::string text;
  for (int i = 1; i <= cells; ++i)
    for (int j = 1; j <= cells; ++j)
      text +=
          std::to_string(i) + "," + std::to_string(j) + "," + std::to_string(level(dice)) + "\n";
  save(path, text);
}

void save(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string textOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace nivaro::bench
