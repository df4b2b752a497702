// The long profile of a case, and how its bed compares with a measured one.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "case_file.hpp"
#include "flow.hpp"

namespace host {

struct ProfilePoint {
  double distance = 0;   // along the profile's axis, m
  double bedBefore = 0;  // elevation, m
  double bed = 0;
  double plane = 0;  // reference plane of the case, m
  double level = 0;
  double velocity = 0;  // along the profile, m/s
};

// One row or column of cells, in the order of its axis.
std::vector<ProfilePoint> profileOf(const ProfileLine& line, const Case& model,
                                    const Field<double>& bedBefore, const BedArrays& bed,
                                    const Flow& flow);

std::string profileHeader();
std::string profileRows(const std::vector<ProfilePoint>& profile, double hours);

// Depths of the bed below the reference plane, m.
struct MeasuredPoint {
  double distance = 0;
  double depth = 0;
};

// Lines of distance and depth with a comma between; "#" begins a comment, one line of column names
// may stand first. Throws CaseError.
std::vector<MeasuredPoint> readMeasured(const std::filesystem::path& file);

struct Comparison {
  std::vector<MeasuredPoint> measured;
  std::vector<double> before, computed;  // depths at the measured points
  double rms = 0;                        // computed - measured
  double rmsNoChange = 0;                // before - measured

  // 1 - (mean square error) / (mean square error of "no change"): 1 is perfect, 0 no better than
  // to say that nothing happens.
  double skill() const { return 1 - (rms * rms) / (rmsNoChange * rmsNoChange); }
};

// Straight between the cells of the profile. Throws CaseError for points outside it.
Comparison compare(const std::vector<ProfilePoint>& profile,
                   const std::vector<MeasuredPoint>& measured);
std::string comparisonTable(const Comparison& comparison);

}  // namespace host
