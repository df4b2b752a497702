#include "runner/case_host.hpp"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <set>
#include <utility>

#include "files/open_mode.hpp"
#include "interface/start_up.hpp"
#include "this_system.hpp"

namespace nivaro::test {

using fuzz::require;

namespace {

// Around the work arrays, where nothing may write; but behind them only where no sanitizer sees it.
constexpr std::size_t kGuard = 100;
constexpr double kMark = -7.25;
constexpr std::int32_t kIntegerMark = -7;

std::size_t guardBehind() {
  return isAddressSanitized() ? 0 : kGuard;
}

template <typename T>
bool areAll(std::span<const T> values, T value) {
  return std::ranges::all_of(values, [&](T v) { return v == value; });
}

// Of all objects but regions: the offset, and an element before it for points. Rows of tables keep to
// their own bound.
bool mayBeSet(std::int32_t element, std::int32_t bound, std::int32_t rowBound, std::int32_t size) {
  const bool byObject = element >= 2 && element - 2 <= bound;
  const bool byRegion = element >= 2 && element <= size - 2;
  return byObject || byRegion || (element >= 2 && element <= rowBound);
}

// As many text objects as records, and each record a line whose quotes are closed.
void requireSoundLayer(const TempFolder& folder, const std::string& name) {
  const auto isObject = [](std::string_view line) { return line == "Text" || line == "none"; };
  const std::string mif = folder.read(name + ".mif");
  const std::string mid = folder.read(name + ".mid");
  const std::string_view objects =
      std::string_view(mif).substr(std::min(mif.find("Data\n"), mif.size()));
  const std::vector<std::string_view> records = fuzz::linesOf(mid);
  require(std::ranges::count_if(fuzz::linesOf(objects), isObject) == std::ssize(records),
          "a record for each object");
  for (const std::string_view record : records)
    require(std::ranges::count(record, '"') % 2 == 0, "texts end within a record");
}

}  // namespace

bool isLayerOfMessages(std::string_view name) {
  const auto same = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
  constexpr std::string_view kPart = "_messages";
  return std::search(name.begin(), name.end(), kPart.begin(), kPart.end(), same) != name.end();
}

std::filesystem::file_time_type caseTime() {
  static const auto time =
      std::chrono::floor<std::chrono::seconds>(std::filesystem::file_time_type::clock::now());
  return time;
}

std::string unescaped(std::string_view text) {
  constexpr std::string_view kLetters = "nrt0\\";
  constexpr std::string_view kMeanings("\n\r\t\0\\", 5);
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    result += text[at];
    if (text[at] != '\\' || at + 1 == text.size()) continue;
    if (const std::size_t letter = kLetters.find(text[++at]); letter != kLetters.npos)
      result.back() = kMeanings[letter];
    if (text[at] != 'x') continue;
    unsigned char code = 0;
    const std::string_view digits = text.substr(at + 1, 2);
    std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
    result.back() = static_cast<char>(code);
    at += digits.size();
  }
  return result;
}

std::string textOf(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.12g", number);
  return text;
}

std::string textOf(const Value& value) {
  if (const auto* text = std::get_if<std::string*>(&value)) return **text;
  if (const auto* on = std::get_if<bool*>(&value)) return **on ? "on" : "off";
  if (const auto* real = std::get_if<double*>(&value)) return textOf(**real);
  if (const auto* integer = std::get_if<std::int32_t*>(&value)) return std::to_string(**integer);
  const auto buffer = std::get<std::span<char>>(value);
  const std::string_view all(buffer.data(), buffer.size());
  return std::string(all.substr(0, all.find_last_not_of(std::string_view(" \0", 2)) + 1));
}

CaseHost::CaseHost(bool isMutated)
    : real(kGuard + guardBehind(), kMark),
      integer(kGuard + guardBehind(), kIntegerMark),
      isMutated_(isMutated) {
  const auto name = [this](std::string_view names, std::initializer_list<Value> values) {
    fuzz::Numbers words(names);
    for (const Value& value : values) values_.emplace(words.word(), value);
  };
  MessageRecord& r = *record;
  GisSettings& gis = module.gisSettings;
  name("domain last_domain n m", {&domain_, &lastDomain_, &n_, &m_});
  name("x0 y0 dx dy angle",
       {&grid_.frame.x0, &grid_.frame.y0, &grid_.frame.dx, &grid_.frame.dy, &grid_.frame.angle});
  name(
      "first_object_bound second_object_bound first_row_bound second_row_bound first_row_offset "
      "second_row_offset",
      {&grid_.frame.firstBound, &grid_.frame.secondBound, &grid_.firstRowBound,
       &grid_.secondRowBound, &grid_.firstRowOffset, &grid_.secondRowOffset});
  name("first_offset second_offset simulation_name prefix unit record",
       {&firstOffset_, &secondOffset_, &simulation_, &prefix_, &unit_, &record_});
  name("NIVARO_MESSAGE_LAYERS NIVARO_PROCESSOR", {&messageLayers_, &processor_});
  name(
      "save_date_check save_date_error table_extension host_projection projection_error "
      "check_layer_prefix check_layer_header_source",
      {&gis.checkSaveDate, &gis.saveDateIsError, &gis.tableExtension, &gis.hostProjection,
       &gis.projectionIsError, &gis.checkLayerPrefix, &gis.checkLayerHeaderSource});
  name("line1 line2 line3 line4 detail1 detail2 detail3 reference_link",
       {std::span<char>(r.line1), std::span<char>(r.line2), std::span<char>(r.line3),
        std::span<char>(r.line4), std::span<char>(r.detail1), std::span<char>(r.detail2),
        std::span<char>(r.detail3), std::span<char>(r.reference_link)});
  name(
      "error_count warning_count check_count located_error_count located_warning_count "
      "located_check_count message_number message_level",
      {&r.error_count, &r.warning_count, &r.check_count, &r.located_error_count,
       &r.located_warning_count, &r.located_check_count, &r.message_number, &r.message_level});
  name(
      "log_unit message_table_unit message_layer secondary_message_layer one_line_flag "
      "strict_command_flag echo_flag suppression_flag",
      {&r.log_unit, &r.message_table_unit, &r.message_layer, &r.secondary_message_layer,
       &r.one_line_flag, &r.strict_command_flag, &r.echo_flag, &r.suppression_flag});
  name("label_box_width label_height default_x default_y unlocated_spacing",
       {&r.label_box_width, &r.label_height, &r.default_x, &r.default_y, &r.unlocated_spacing});
  name("time time_offset skipped_code points",
       {&flags_.time, &flags_.timeOffset, &flags_.skippedCode, &points_});
  name("time_code_switch flag_depth_threshold num_data num_cells",
       {&dataset.timeCodeSwitch, &dataset.flagDepthThreshold, &dataset.numData, &dataset.numCells});
  // The options of domain 1, as their commands name them.
  MorphologyParameters& p = module.parameters.ofDomain(1);
  name(
      "Fall_Velocity Current_Related_Roughness Wave_Related_Roughness Mixing_Layer_Thickness "
      "Reference_Level Mixing_Coefficient",
      {&p.fallVelocity, &p.currentRelatedRoughness, &p.waveRelatedRoughness,
       &p.mixingLayerThickness, &p.referenceLevel, &p.mixingCoefficient});
  name(
      "AUTO_Fall_Velocity AUTO_Current_Related_Roughness AUTO_Wave_Related_Roughness "
      "AUTO_Mixing_Layer_Thickness AUTO_Reference_Level AUTO_Mixing_Coefficient",
      {&p.automaticFallVelocity, &p.automaticCurrentRelatedRoughness,
       &p.automaticWaveRelatedRoughness, &p.automaticMixingLayerThickness,
       &p.automaticReferenceLevel, &p.automaticMixingCoefficient});
  name(
      "Sand_Grain_Density Water_Density Time_Centreing_Factor Slump_Slope Slump_Bed_Change_Limit "
      "Bed_Change_Limit Concentration_Factor",
      {&p.sandGrainDensity, &p.waterDensity, &p.timeCentringFactor, &p.slumpSlope,
       &p.slumpBedChangeLimit, &p.bedChangeLimit, &p.concentrationFactor});
  name("Erosion_Method Deposition_Method Cell_Sides_High Velocity_Centred",
       {&p.erosionMethod, &p.depositionMethod, &p.cellSidesHigh, &p.velocityCentred});
  console.beforeAnswer = [this] {
    while (!console.answers.empty() && console.answers.front().starts_with("! ")) {
      act(std::string_view(console.answers.front()).substr(2));
      console.answers.pop_front();
    }
  };
}

void CaseHost::setUp() {
  if (std::exchange(isSetUp_, true)) return;
  module.files.initFileUnits(base_);
  module.logUnit = record->log_unit = module.files.openFile("run.mlf", "O ", 1);
  module.gisLayers.setLogUnit(module.logUnit);
  module.layerMessages.setLayers(
      "run", module.gisSettings.checkLayerHeaderSource,
      messageLayersFormat(messageLayers_).value_or(gis::LayerFormat::Mif));
  reserve(1, true);
  console.output.clear();
}

void CaseHost::start() {
  isSetUp_ = true;
  startUp(module, {.simulationName = simulation_,
                   .outputPrefix = prefix_,
                   .logPrefix = prefix_,
                   .gis = GisSettings(module.gisSettings),
                   .messageLayers = messageLayers_,
                   .processor = processor_});
  reserve(1, true);
}

std::optional<Value> CaseHost::value(const std::string& name) const {
  const auto known = values_.find(name);
  return known == values_.end() ? std::nullopt : std::optional(known->second);
}

void CaseHost::set(const Value& value, std::string_view text) {
  if (auto* whole = std::get_if<std::string*>(&value)) **whole = fileName(text);
  if (auto* on = std::get_if<bool*>(&value)) **on = text == "on";
  if (auto* number = std::get_if<double*>(&value)) **number = fuzz::Numbers(text).real();
  if (auto* number = std::get_if<std::int32_t*>(&value)) **number = fuzz::Numbers(text).integer();
  const Unit* const table = module.files.find(record->message_table_unit);
  if (isMutated_ && table != nullptr && table->path() != "messages.csv")
    record->message_table_unit = 0;
  if (auto* buffer = std::get_if<std::span<char>>(&value)) {
    std::ranges::fill(*buffer, ' ');
    unescaped(text).copy(buffer->data(), buffer->size());
  }
}

std::string CaseHost::fileName(std::string_view text) const {
  return isMutated_ ? fuzz::confined(unescaped(text)) : unescaped(text);
}

template <typename T>
Grid<T> CaseHost::grid(std::vector<T>& cells) const {
  const auto size = domains_.find(domain_);
  if (size == domains_.end()) return {};
  cells.resize(static_cast<std::size_t>(size->second.n) * static_cast<std::size_t>(size->second.m));
  return {cells.data(), size->second.n, size->second.m};
}

WorkArrays CaseHost::work() const {
  return {const_cast<double*>(real.data()), const_cast<std::int32_t*>(integer.data())};
}

SedimentFields CaseHost::fields() const {
  const Domain& size = domains_.at(domain_);
  return module.fields.fields(domain_, work(), size.n, size.m);
}

std::optional<Field> CaseHost::field(std::string_view name) {
  if (name == "code") return Field{grid(code_), 0.0};
  if (name == "active") return Field{grid(active_), 0.0};
  for (const std::string_view bed : {"depth", "surface", "zc", "zpts", "z2", "z1"})
    if (name == bed) return Field{grid(bed_[std::string(name)]), 0.0};
  if (!domains_.contains(domain_)) return {};
  hasStepped_ = hasStepped_ || name == "cell change";  // the host may set what a step left
  const SedimentFields all = fields();
  const std::pair<std::string_view, Field> known[] = {
      {"D50", {all.d50, 0.00016}},
      {"D90", {all.d90, 0.00016}},
      {"Insitu Voids", {all.inSituVoids, 0.4}},
      {"Deposition Voids", {all.depositionVoids, 0.4}},
      {"Bed Limit", {all.bedLimit, -99999.0}},
      {"Bed Code", {all.bedCode, 1.0}},
      {"cell change", {all.cellChange, 0.0}},
      {"corner change",
       {module.fields.cornerBedChange(domain_, real.data(), all.d50.n(), all.d50.m()), 0.0}},
  };
  for (const auto& [fieldName, field] : known)
    if (name == fieldName) return field;
  return {};
}

void CaseHost::call(std::string_view line) {
  if (const std::size_t sign = line.find(" ="); sign != line.npos) {
    const std::string name(line.substr(0, sign));
    if (isMutated_ && (name.ends_with("_count") || name == "log_unit")) return;  // the module's
    if (const std::optional<Value> named = value(name))
      return set(*named, line.substr(std::min(sign + 3, line.size())));
  }
  fuzz::Numbers words(line);
  const std::string_view word = words.word();
  if (word == "start-up") return start();
  if (word == "EXITS") module.termination.exits();
  setUp();
  if (word == "reserve") {
    const std::int32_t domain = words.integer();
    return reserve(domain, words.rest() != "off");
  }
  if (word == "read") return read(words.rest());
  if (word == "load") return module.parameters.load(std::clamp(words.integer(), 1, 100));
  if (word == "smooth" || word == "initialise" || word == "skip" || word == "step")
    return morphology(word);
  if (word == "check_layer") {
    const std::int32_t last = words.integer();
    return writeCheckLayer(last, words.rest() != "off");
  }
  if (word.starts_with("dataset_")) return writeDataset(word.substr(8), words);
  if (word == "DMESSAGEXY" || word == "DMESSAGE") return message(word, words);
  if (word == "DLINE") {
    unitsAreOwn_ = false;
    return module.messages.dline(words.integer());
  }
  if (word == "replay") return module.messages.replayTable(words.integer());
  if (word == "reset") return module.messages.dmessageResetCounters();
  if (word == "variable") {
    const std::string_view name = words.word();
    module.variables.add(name, words.rest());
    return;
  }
  if (word == "open") {
    const std::string_view mode = words.word();
    const std::int32_t recordLength = words.integer();
    return open(mode, recordLength, words.rest());
  }
  if (word == "pool") {
    const std::int32_t base = std::min(words.integer(), 100000);
    base_ = std::max(base, 9);
    unitsAreOwn_ = false;
    return module.files.initFileUnits(base);
  }
  if (word == "close") return close(words.integer());
  if (word == "use") {
    const std::string_view how = words.word();
    return use(how, words);
  }
  act(line);
}

void CaseHost::act(std::string_view line) {
  fuzz::Numbers words(line);
  const std::string_view what = words.word();
  const std::string name(words.word());
  std::error_code ignored;
  if (name.empty() || name == "." || (isMutated_ && isLayerOfMessages(name))) return;
  if (what == "make") {
    std::ofstream(name, std::ios::binary) << unescaped(words.rest());
    std::filesystem::last_write_time(name, caseTime(), ignored);
  }
  if (what == "remove") std::filesystem::remove_all(name, ignored);
  if (what == "folder") std::filesystem::create_directories(name, ignored);
  if (what == "save")
    std::filesystem::last_write_time(
        name,
        caseTime() +
            std::chrono::milliseconds(std::lround(1000.0 * std::clamp(words.real(), -1e6, 1e6))),
        ignored);
  if (what == "lock") locked_.emplace(name);
  if (what == "release" && locked_) locked_->release();
}

void CaseHost::reserve(std::int32_t number, bool active) {
  constexpr std::int32_t kMost = 30;
  const std::int32_t n = isMutated_ ? std::min(n_, kMost) : n_;
  const std::int32_t m = isMutated_ ? std::min(m_, kMost) : m_;
  auto nextReal = static_cast<std::int32_t>(real.size() - guardBehind()) + 1;
  auto nextInteger = static_cast<std::int32_t>(integer.size() - guardBehind()) + 1;
  reserveFields(module, {.domain = number, .active = active, .n = n, .m = m}, nextReal,
                nextInteger);
  const auto extend = [](auto& work, std::int32_t next, auto mark) {
    work.resize(work.size() - guardBehind());
    work.resize(static_cast<std::size_t>(next - 1), 0);
    work.resize(work.size() + guardBehind(), mark);
  };
  extend(real, nextReal, kMark);
  extend(integer, nextInteger, kIntegerMark);
  domains_[number] = {n, m, active};
}

void CaseHost::read(std::string_view name) {
  constexpr std::int32_t kMostUnits = 20;
  const auto openUnits = [&] {
    std::set<std::int32_t> units;
    for (std::int32_t unit = base_ + 1; unit <= base_ + kMostUnits; ++unit)
      if (const Unit* file = module.files.find(unit))
        if (file->path().find("_messages") == std::string::npos) units.insert(unit);
    return units;
  };
  const auto size = domains_.find(domain_);
  const Domain known = size == domains_.end() ? Domain{} : size->second;
  const std::set<std::int32_t> before = openUnits();
  const auto readIt = [&] {
    readControlFile(module, {.controlFile = name.empty() ? "run.mcf" : name,
                             .domain = domain_,
                             .lastDomain = lastDomain_,
                             .n = known.n,
                             .m = known.m,
                             .grid = grid_,
                             .work = work()});
  };
  // Also of a run that ends, the cells that were set by then lie in the grid.
  try {
    readIt();
  } catch (const ProcessEnded&) {
    if (known.active) requireOnlyTheGridWasSet(known);
    throw;
  }
  if (known.active) requireOnlyTheGridWasSet(known);
  for (const std::int32_t unit : openUnits())
    require(before.contains(unit), "every file that was opened is closed");
}

// Outside the grid a field holds one value: its default, or that of a Set. What only a step sets holds
// what it did.
void CaseHost::requireOnlyTheGridWasSet(const Domain& size) const {
  const SedimentFields all = fields();
  const auto requireUniform = [&](const auto& field) {
    std::optional<double> outside;
    for (std::int32_t j = 1; j <= size.m; ++j)
      for (std::int32_t i = 1; i <= size.n; ++i) {
        if (mayBeSet(i, grid_.frame.firstBound, grid_.firstRowBound, size.n) &&
            mayBeSet(j, grid_.frame.secondBound, grid_.secondRowBound, size.m))
          continue;
        require(!outside || fuzz::sameBits(*outside, field(i, j)),
                "only cells of the grid are set");
        outside = field(i, j);
      }
  };
  for (const Grid<double>& field :
       {all.d50, all.d90, all.inSituVoids, all.depositionVoids, all.bedLimit})
    requireUniform(field);
  requireUniform(all.bedCode);
  if (hasStepped_) return;
  for (const Grid<double>& field : {all.previousChange, all.appliedChange, all.cellChange,
                                    all.concentration, all.adaptation, all.spare})
    require(areAll<double>(field.cells(), 0.0), "fields of the step are left alone");
}

void CaseHost::requireWhole() const {
  const std::span<const double> reals(real);
  const std::span<const std::int32_t> integers(integer);
  require(areAll(reals.first(kGuard), kMark) && areAll(reals.last(guardBehind()), kMark) &&
              areAll(integers.first(kGuard), kIntegerMark) &&
              areAll(integers.last(guardBehind()), kIntegerMark),
          "nothing is written beyond the fields");
}

void CaseHost::morphology(std::string_view what) {
  const auto size = domains_.find(domain_);
  if (size != domains_.end() && (size->second.n < 5 || size->second.m < 5)) return;
  hasStepped_ = true;
  const auto bed = [&](const char* name) { return grid(bed_[name]); };
  const Grid<double> still = bed("still");
  const Grid<Logical> wet = grid(wet_);
  std::ranges::fill(wet_, logical(true));
  // The first flag that is set counts.
  runMorphology(module,
                {.smoothing = what == "smooth",
                 .initialisation = what == "smooth" || what == "initialise",
                 .skip = what != "step",
                 .flow = {.wet = wet, .flow = wet, .waterLevel = still, .v2 = still, .v1 = still},
                 .bed = {.zpts = bed("zpts"), .zc = bed("zc"), .z2 = bed("z2"), .z1 = bed("z1")},
                 .settings = {.cellSize = 0.5,
                              .slumpDistanceSecond = 0.5,
                              .slumpDistanceFirst = 0.5,
                              .timeStep = 1.0},
                 .area = {3, 3, still.n() - 2, still.m() - 2},
                 .work = work(),
                 .domain = domain_});
}

void CaseHost::writeCheckLayer(std::int32_t last, bool values) {
  const Grid<std::int32_t> code = grid(code_);
  nivaro::writeCheckLayer(module, {.cells = {.domain = domain_,
                                             .lastDomain = last,
                                             .code = code,
                                             .depth = grid(bed_["depth"]),
                                             .range = {3, 3, code.n() - 2, code.m() - 2},
                                             .firstOffset = firstOffset_,
                                             .secondOffset = secondOffset_,
                                             .frame = cellFrame_},
                                   .writeValues = values,
                                   .work = work()});
}

void CaseHost::writeDataset(std::string_view what, fuzz::Numbers& words) {
  constexpr std::int32_t kMost = 1000;
  if (isMutated_) dataset.numData = std::min(dataset.numData, kMost);
  if (isMutated_) dataset.numCells = std::min(dataset.numCells, kMost);
  module.dataset.setSettings(dataset);
  if (what == "header") return module.dataset.writeHeader(words.rest());
  if (what == "end") return module.dataset.writeEnd();

  flags_.code = grid(code_);
  flags_.active = grid(active_);
  flags_.depthTerm1 = grid(bed_["depth"]);
  flags_.depthTerm2 = grid(bed_["surface"]);
  const int n = flags_.code.n();
  const int m = flags_.code.m();
  const Area range{3, 3, n - 2, m - 2};
  const bool isSmall = n < 5 || m < 5;
  if (isSmall && (!DomainFieldTable::isDomain(domain_) || module.fields.isReserved(domain_)))
    return;
  const DomainTurn turn{domain_, words.integer()};
  if (what == "flags") return module.dataset.writeFlags(turn, flags_, range);
  std::vector<std::int32_t> i;
  std::vector<std::int32_t> j;
  for (fuzz::Numbers points(points_); !points.rest().empty();) {
    i.push_back(std::clamp(points.integer(), 1, n));
    j.push_back(std::clamp(points.integer(), 1, m));
  }
  writeDatasetValues(module, {.turn = turn,
                              .writeValues = words.rest() != "off",
                              .nx = n,
                              .range = range,
                              .pointI = i,
                              .pointJ = j,
                              .realWork = real.data()});
}

void CaseHost::message(std::string_view kind, fuzz::Numbers& words) {
  const std::int32_t blankLines = std::min(words.integer(), 100);
  const std::int32_t errors = record->error_count;
  const bool isError = fieldText(record->line1).starts_with("ERROR");
  if (kind == "DMESSAGE") {
    module.messages.dmessage(blankLines);
  } else if (words.rest().empty()) {
    module.messages.write(blankLines);
  } else {
    const double x = words.real();
    module.messages.dmessageXy(blankLines, x, words.real());
  }
  require(record->error_count - errors == (isError ? 1 : 0), "an error counts once");
  for (const char* left :
       {"line1", "line2", "line3", "line4", "detail1", "detail2", "detail3", "reference_link"})
    require(textOf(values_.at(left)).empty(), "a message that was written is cleared");
}

void CaseHost::requireSoundMessages(const TempFolder& folder) {
  Unit* table = module.files.find(record->message_table_unit);
  if (unitsAreOwn_ && tableIsOwn_ && table != nullptr && table->path() == "messages.csv" &&
      record->log_unit != record->message_table_unit) {
    table->close();
    table->open("messages.csv", {});
    const std::int32_t unit = std::exchange(record->message_table_unit, 0);
    // A number that did not fit its column is asterisks and cannot be read back.
    const bool isReadable = folder.bytes("messages.csv").find("**") == std::string::npos;
    console.output.clear();
    fuzz::completes([&] { module.messages.replayTable(unit); });
    require(!isReadable || !console.shows("WARNING 0300"),
            "rows of the message table are read back");
  }
  if (!fuzz::completes([&] { module.gisLayers.gisCloseAll(); }) || !unitsAreOwn_) return;
  for (const char* layer : {"run_messages", "run_messages_check"}) requireSoundLayer(folder, layer);
}

void CaseHost::open(std::string_view mode, std::int32_t recordLength, std::string_view text) {
  readsOnly = false;
  const std::string file = fileName(text);
  if (isMutated_ && isLayerOfMessages(file)) return;
  tableIsOwn_ = !std::exchange(hasOpened_, true) && mode == "O";
  unit_ = module.files.openFile(file, mode, recordLength);
  if (unit_ == 0) return require(mode == "A", "an open that fails says so in one mode only");
  require(unit_ > base_ && unit_ <= base_ + FileUnits::kSlots, "units are those of the pool");
  std::string code(mode.substr(0, 2));
  code.resize(2, ' ');
  const Unit* opened = module.files.find(unit_);
  if (const OpenMode* row = findOpenMode(code))
    require(opened != nullptr && opened->options().form == row->options.form,
            "a file has its form");
  require(!module.files.nameOf(unit_).empty(), "a unit has a name");
}

void CaseHost::close(std::int32_t unit) {
  unit_ = unit;
  unitsAreOwn_ = false;
  module.files.closeFile(unit_);
  require(unit_ == 0 || unit_ == unit, "closing clears the variable or leaves it");
  if (unit_ == 0) require(module.files.find(unit) == nullptr, "a closed unit is free");
}

void CaseHost::use(std::string_view word, fuzz::Numbers& words) {
  readsOnly = unitsAreOwn_ = false;
  Unit* const file = module.files.find(words.integer());
  if (file == nullptr) return;
  const bool canRead = file->options().action != OpenOptions::Action::Write;
  const bool canWrite = file->options().action != OpenOptions::Action::Read;
  const auto bytes = [&] { return std::as_bytes(std::span(words.rest())); };
  std::string_view line;
  if (word == "read") {
    const ReadStatus status = file->readRecord(line);
    require(canRead || status == ReadStatus::Error, "what is written is not read");
    record_ = status == ReadStatus::Ok ? line : "(none)";
  }
  if (word == "write")
    require(file->writeRecord(words.rest()) == (canWrite && file->failure().empty()),
            "writing is told");
  if (word == "bytes") file->writeBytes(bytes());
  if (word == "over") {
    const auto offset = static_cast<std::uint64_t>(std::clamp(words.integer(), 0, 200000));
    file->overwriteBytes(offset, bytes());
  }
  if (word == "back") file->backspace();
  if (word == "rewind") file->rewind();
  if (word == "end" && file->atEnd() && canRead)
    require(file->readRecord(line) == ReadStatus::End, "nothing is read at the end");
  if (word == "flush") file->flush();
}

}  // namespace nivaro::test
