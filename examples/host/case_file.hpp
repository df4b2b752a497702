// A case: a folder with a case.toml that says what to run. Every key is checked; what is wrong is
// named with its file, its line and what is expected.
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bed.hpp"
#include "flow.hpp"
#include "grid_frame.hpp"

namespace host {

struct CaseError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Times of the bed are morphological; the flow runs `acceleration` times shorter.
struct TimePlan {
  double durationHours = 0;
  double morphologyStep = 0;  // s of morphological time
  double acceleration = 1;
  double spinUpSeconds = 0;  // of flow before the first morphology step
  std::vector<double> outputHours;
};

// Water to start with: at a level, or at a depth above the reference plane (above the bed itself
// where the bed comes from a raster), at rest or with a discharge.
struct InitialWater {
  bool isDepth = false;
  double value = 0;
  double qx = 0, qy = 0;  // per unit width, m2/s
};

// The part of the model in which the bed may change; all of it by default.
struct MorphologyArea {
  double lowX = -1e30, highX = 1e30, lowY = -1e30, highY = 1e30;
};

// The row or column of cells that is written as the long profile.
struct ProfileLine {
  Axis along = Axis::X;
  std::optional<double> at;  // place on the other axis; the middle by default
};

// How messages look that are placed on the map; lengths are those of the map.
struct MessageLabels {
  double height = 0;   // of a line of text
  double width = 0;    // of the box, beyond the text's height
  double spacing = 0;  // between messages without a place, which stand below one another
};

struct MeasuredBed {
  std::filesystem::path file;
  double hours = 0;
};

struct Case {
  std::filesystem::path folder;
  std::string name;
  GridFrame grid;
  std::string coordSys;  // of the map, a MapInfo CoordSys line; blank when the case has no map
  std::optional<MessageLabels> labels;  // none: no messages layer
  BedShape bed;
  FlowSettings flow;
  InitialWater water;
  TimePlan time;
  std::filesystem::path controlFile;
  MorphologyArea area;
  ProfileLine profile;
  std::optional<MeasuredBed> measured;
};

// Throws CaseError. Paths in the file are taken from its folder.
Case readCase(const std::filesystem::path& folder);

}  // namespace host
