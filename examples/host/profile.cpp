#include "profile.hpp"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string_view>

#include "number_format.hpp"

namespace host {

namespace {

// Row or column of cells that holds a place, the middle one where none is given.
int lineIndex(const ProfileLine& line, const GridFrame& grid) {
  const bool alongX = line.along == Axis::X;
  const int count = alongX ? grid.rows : grid.columns;
  const double origin = alongX ? grid.originY : grid.originX;
  const double place = line.at.value_or(origin + 0.5 * count * grid.cellSize);
  const int cell = static_cast<int>(std::floor((place - origin) / grid.cellSize));
  return std::clamp(cell, 0, count - 1) + GridFrame::kMargin + 1;
}

double depthBelowPlane(const std::vector<ProfilePoint>& profile, double distance,
                       double ProfilePoint::*bed) {
  const auto below = [&](const ProfilePoint& point) { return point.plane - point.*bed; };
  const auto after = std::find_if(profile.begin(), profile.end(), [&](const ProfilePoint& point) {
    return point.distance >= distance;
  });
  if (after == profile.end() || (after == profile.begin() && after->distance > distance))
    throw CaseError("A measured point at " + significant(distance, 6) + " m lies off the profile.");
  if (after == profile.begin()) return below(*after);
  const ProfilePoint& before = *(after - 1);
  const double share = (distance - before.distance) / (after->distance - before.distance);
  return below(before) + share * (below(*after) - below(before));
}

double rms(const std::vector<double>& depths, const std::vector<MeasuredPoint>& measured) {
  double sum = 0;
  for (std::size_t k = 0; k < measured.size(); ++k) {
    const double error = depths[k] - measured[k].depth;
    sum += error * error;
  }
  return std::sqrt(sum / static_cast<double>(measured.size()));
}

bool readNumbers(std::string_view text, double& first, double& second) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) return false;
  const auto number = [](std::string_view part, double& value) {
    const std::size_t begin = part.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return false;
    part.remove_prefix(begin);
    part = part.substr(0, part.find_last_not_of(" \t\r") + 1);
    const auto end = std::from_chars(part.data(), part.data() + part.size(), value);
    return end.ec == std::errc() && end.ptr == part.data() + part.size();
  };
  return number(text.substr(0, comma), first) && number(text.substr(comma + 1), second);
}

}  // namespace

std::vector<ProfilePoint> profileOf(const ProfileLine& line, const Case& model,
                                    const Field<double>& bedBefore, const BedArrays& bed,
                                    const Flow& flow) {
  const GridFrame& grid = model.grid;
  const bool alongX = line.along == Axis::X;
  const int fixedIndex = lineIndex(line, grid);
  const int first = alongX ? grid.firstJ() : grid.firstI();
  const int last = alongX ? grid.lastJ() : grid.lastI();
  std::vector<ProfilePoint> profile;
  for (int k = first; k <= last; ++k) {
    const int i = alongX ? fixedIndex : k;
    const int j = alongX ? k : fixedIndex;
    if (!bed.code(i, j)) continue;
    ProfilePoint point;
    point.distance = alongX ? grid.x(j) : grid.y(i);
    point.bedBefore = -bedBefore(i, j);
    point.bed = -bed.zc(i, j);
    point.plane = model.bed.raster ? 0 : model.bed.plane(grid.x(j), grid.y(i));
    point.level = flow.level()(i, j);
    const double q = alongX ? 0.5 * (flow.q2()(i, j) + flow.q2()(i, j - 1))
                            : 0.5 * (flow.q1()(i, j) + flow.q1()(i - 1, j));
    point.velocity = flow.isWet(i, j) ? q / flow.depth(i, j) : 0;
    profile.push_back(point);
  }
  return profile;
}

std::string profileHeader() {
  return "time_h,distance_m,bed_before_m,bed_m,bed_change_m,below_plane_before_m,below_plane_m,"
         "water_level_m,depth_m,velocity_m_s\n";
}

std::string profileRows(const std::vector<ProfilePoint>& profile, double hours) {
  std::string text;
  for (const ProfilePoint& p : profile) {
    text += fixed(hours, 4) + ',' + fixed(p.distance, 4);
    for (const double value : {p.bedBefore, p.bed, p.bed - p.bedBefore, p.plane - p.bedBefore,
                               p.plane - p.bed, p.level, p.level - p.bed, p.velocity})
      text += ',' + fixed(value, 6);
    text += '\n';
  }
  return text;
}

std::vector<MeasuredPoint> readMeasured(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::vector<MeasuredPoint> points;
  std::string line;
  bool namesMayCome = true;
  for (int number = 1; std::getline(in, line); ++number) {
    line = line.substr(0, line.find('#'));
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    MeasuredPoint point;
    if (readNumbers(line, point.distance, point.depth)) {
      points.push_back(point);
    } else if (!namesMayCome) {
      throw CaseError(file.string() + ":" + std::to_string(number) +
                      ": expected a distance and a depth with a comma between.");
    }
    namesMayCome = false;
  }
  if (points.empty()) throw CaseError(file.string() + ": holds no measured point.");
  return points;
}

Comparison compare(const std::vector<ProfilePoint>& profile,
                   const std::vector<MeasuredPoint>& measured) {
  Comparison result;
  result.measured = measured;
  for (const MeasuredPoint& point : measured) {
    result.before.push_back(depthBelowPlane(profile, point.distance, &ProfilePoint::bedBefore));
    result.computed.push_back(depthBelowPlane(profile, point.distance, &ProfilePoint::bed));
  }
  result.rms = rms(result.computed, measured);
  result.rmsNoChange = rms(result.before, measured);
  return result;
}

std::string comparisonTable(const Comparison& comparison) {
  std::string text = "distance_m,measured_depth_m,depth_before_m,computed_depth_m\n";
  for (std::size_t k = 0; k < comparison.measured.size(); ++k) {
    text += fixed(comparison.measured[k].distance, 4);
    for (const double value :
         {comparison.measured[k].depth, comparison.before[k], comparison.computed[k]})
      text += ',' + fixed(value, 5);
    text += '\n';
  }
  return text;
}

}  // namespace host
