#include "case_file.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <numbers>
#include <tuple>

#include "toml_table.hpp"

namespace host {

namespace {

namespace fs = std::filesystem;

std::string readName(TomlTable& root) {
  std::string name = root.text("name", "letters, digits, - and _; result files begin with it");
  const auto isFit = [](unsigned char c) { return std::isalnum(c) || c == '-' || c == '_'; };
  if (!std::all_of(name.begin(), name.end(), isFit))
    root.fail("name", "expected letters, digits, - and _ only, since result files begin with it.");
  return name;
}

GridFrame readGrid(TomlTable table) {
  GridFrame grid;
  grid.columns = table.count("columns");
  grid.rows = table.count("rows");
  grid.cellSize = table.number("cell_size", Range::Positive, "m");
  if (table.has("origin"))
    std::tie(grid.originX, grid.originY) =
        table.pair("origin", "x and y of the lower left corner, m");
  table.finish();
  return grid;
}

void readMap(TomlTable table, Case& result) {
  MapPlace place;
  std::tie(place.x, place.y) = table.pair("origin", "map coordinates of the grid's corner");
  place.angle =
      table.number("angle", Range::Any, "degrees anticlockwise", 0) * std::numbers::pi / 180;
  result.grid.map = place;
  result.coordSys = table.text("coord_sys", "a CoordSys line as layers have it");
  if (!result.coordSys.starts_with("CoordSys "))
    table.fail("coord_sys", "expected a line that begins with CoordSys, as layers have it.");
  table.finish();
}

MessageLabels readLabels(TomlTable table) {
  MessageLabels labels;
  labels.height = table.number("label_height", Range::Positive, "m");
  labels.width = table.number("label_width", Range::Positive, "m");
  labels.spacing = table.number("spacing", Range::Positive, "m");
  table.finish();
  return labels;
}

Axis readAxis(TomlTable& table, std::string_view key) {
  return table.word(key, {"x", "y"}, 0) == 0 ? Axis::X : Axis::Y;
}

BedProfile readProfile(TomlTable table) {
  BedProfile profile;
  profile.along = readAxis(table, "along");
  const bool isDepth = table.oneOf({"heights", "depths"}) == "depths";
  const std::string_view key = isDepth ? "depths" : "heights";
  profile.points = table.pairs(key, "distance and height or depth, m");
  double last = -1e300;
  for (auto& [distance, height] : profile.points) {
    if (distance <= last) table.fail(key, "expected distances that increase.");
    last = distance;
    if (isDepth) height = -height;
  }
  table.finish();
  return profile;
}

BedBox readBox(TomlTable table) {
  BedBox box;
  std::tie(box.lowX, box.highX) = table.pair("x", "low and high, m");
  std::tie(box.lowY, box.highY) = table.pair("y", "low and high, m");
  box.height = table.number("height", Range::Any, "m");
  table.finish();
  return box;
}

BedShape readBed(TomlTable table, const fs::path& folder) {
  BedShape bed;
  if (table.oneOf({"level", "raster"}) == "raster") {
    const fs::path file = folder / table.text("raster", "an ESRI ASCII grid");
    if (!fs::is_regular_file(file)) table.fail("raster", "there is no file " + file.string() + ".");
    try {
      bed.raster = readRaster(file);
    } catch (const std::runtime_error& error) {
      throw CaseError(error.what());
    }
  } else {
    bed.level = table.number("level", Range::Any, "m");
    if (table.has("slope"))
      std::tie(bed.slopeX, bed.slopeY) = table.pair("slope", "rise per metre along x and y");
  }
  for (TomlTable& piece : table.tables("profile")) bed.profiles.push_back(readProfile(piece));
  for (TomlTable& piece : table.tables("box")) bed.boxes.push_back(readBox(piece));
  table.finish();
  return bed;
}

Roughness readRoughness(TomlTable table) {
  Roughness roughness;
  const bool isManning = table.oneOf({"manning", "height"}) == "manning";
  roughness.kind = isManning ? Roughness::Kind::Manning : Roughness::Kind::Height;
  roughness.value = isManning ? table.number("manning", Range::NotNegative, "s/m^(1/3)")
                              : table.number("height", Range::Positive, "m");
  table.finish();
  return roughness;
}

std::array<EdgeCondition, kEdges> readBoundaries(TomlTable table) {
  constexpr std::array<std::string_view, kEdges> kNames = {"west", "east", "south", "north"};
  std::array<EdgeCondition, kEdges> edges;
  for (std::size_t e = 0; e < kEdges; ++e) {
    if (!table.has(kNames[e])) continue;
    TomlTable edge = table.table(kNames[e]);
    const bool isLevel = edge.oneOf({"discharge", "level"}) == "level";
    edges[e] =
        isLevel ? EdgeCondition{EdgeCondition::Kind::Level, edge.number("level", Range::Any, "m")}
                : EdgeCondition{EdgeCondition::Kind::Discharge,
                                edge.number("discharge", Range::Any, "m3/s into the model")};
    edge.finish();
  }
  table.finish();
  return edges;
}

InitialWater readWater(TomlTable table) {
  InitialWater water;
  water.isDepth = table.oneOf({"level", "depth"}) == "depth";
  water.value = water.isDepth ? table.number("depth", Range::NotNegative, "m")
                              : table.number("level", Range::Any, "m");
  if (table.has("discharge"))
    std::tie(water.qx, water.qy) = table.pair("discharge", "per unit width along x and y, m2/s");
  table.finish();
  return water;
}

void readFlow(TomlTable table, FlowSettings& flow) {
  flow.courant = table.number("courant", Range::Positive, "0 to 1", flow.courant);
  if (flow.courant > 1) table.fail("courant", "expected a number of 1 or less.");
  flow.mixing =
      table.number("mixing", Range::NotNegative, "over depth and shear velocity", flow.mixing);
  flow.viscosity = table.number("viscosity", Range::NotNegative, "m2/s", flow.viscosity);
  flow.dryDepth = table.number("dry_depth", Range::Positive, "m", flow.dryDepth);
  table.finish();
}

std::vector<double> readOutputHours(TomlTable& table, double duration) {
  std::vector<double> hours;
  if (table.oneOf({"output_every_h", "output_h"}) == "output_every_h") {
    const double every = table.number("output_every_h", Range::Positive, "h");
    for (int k = 1; k * every < duration - 1e-9; ++k) hours.push_back(k * every);
  } else {
    hours = table.numbers("output_h", "h");
    if (!std::is_sorted(hours.begin(), hours.end()) || (!hours.empty() && hours.front() <= 0))
      table.fail("output_h", "expected hours above 0 that increase.");
    std::erase_if(hours, [&](double hour) { return hour > duration - 1e-9; });
  }
  hours.push_back(duration);
  return hours;
}

TimePlan readTime(TomlTable table) {
  TimePlan time;
  time.durationHours = table.number("duration_h", Range::Positive, "h of bed evolution");
  time.morphologyStep = table.number("morphology_step_s", Range::Positive, "s of bed evolution");
  time.acceleration =
      table.number("acceleration", Range::Positive, "seconds of bed evolution for one of flow", 1);
  time.spinUpSeconds = table.number("spin_up_s", Range::NotNegative, "s of flow", 0);
  time.outputHours = readOutputHours(table, time.durationHours);
  table.finish();
  return time;
}

void readMorphology(TomlTable table, Case& result) {
  result.controlFile = result.folder / table.text("control_file", "the .mcf file");
  if (!fs::is_regular_file(result.controlFile))
    table.fail("control_file", "there is no file " + result.controlFile.string() + ".");
  if (table.has("x"))
    std::tie(result.area.lowX, result.area.highX) = table.pair("x", "low and high, m");
  if (table.has("y"))
    std::tie(result.area.lowY, result.area.highY) = table.pair("y", "low and high, m");
  table.finish();
}

ProfileLine readProfileLine(TomlTable table) {
  ProfileLine line;
  line.along = readAxis(table, "along");
  if (table.has("at")) line.at = table.number("at", Range::Any, "m");
  table.finish();
  return line;
}

MeasuredBed readMeasured(TomlTable table, const fs::path& folder, double duration) {
  MeasuredBed measured;
  measured.file = folder / table.text("file", "a CSV file of distance and depth");
  if (!fs::is_regular_file(measured.file))
    table.fail("file", "there is no file " + measured.file.string() + ".");
  measured.hours = table.number("time_h", Range::NotNegative, "h", duration);
  table.finish();
  return measured;
}

toml::table parse(const fs::path& file) {
  try {
    return toml::parse_file(file.string());
  } catch (const toml::parse_error& error) {
    throw CaseError(file.string() + ":" + std::to_string(error.source().begin.line) + ": " +
                    std::string(error.description()));
  }
}

}  // namespace

Case readCase(const fs::path& folder) {
  const fs::path file = folder / "case.toml";
  if (!fs::is_directory(folder)) throw CaseError(folder.string() + ": there is no such folder.");
  if (!fs::is_regular_file(file))
    throw CaseError(folder.string() + ": the folder holds no case.toml.");
  const toml::table content = parse(file);
  TomlTable root(content, "", file.string());

  Case result;
  result.folder = folder;
  result.name = readName(root);
  result.grid = readGrid(root.table("grid"));
  if (root.has("map")) readMap(root.table("map"), result);
  if (root.has("messages")) result.labels = readLabels(root.table("messages"));
  result.bed = readBed(root.table("bed"), folder);
  result.flow.roughness = readRoughness(root.table("roughness"));
  result.flow.edges = readBoundaries(root.table("boundary"));
  if (root.has("flow")) readFlow(root.table("flow"), result.flow);
  result.water = readWater(root.table("initial"));
  result.time = readTime(root.table("time"));
  readMorphology(root.table("morphology"), result);
  if (root.has("profile")) result.profile = readProfileLine(root.table("profile"));
  if (root.has("measured"))
    result.measured = readMeasured(root.table("measured"), folder, result.time.durationHours);
  root.finish();
  return result;
}

}  // namespace host
