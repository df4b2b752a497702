#include "control/option_table.hpp"

#include <cmath>
#include <limits>

#include "platform/fixed_field.hpp"
#include "platform/list_input.hpp"
#include "text/keyword.hpp"

namespace nivaro {

namespace {

using P = MorphologyParameters;

constexpr int kNumberWidth = 6;

// Keywords are looked for anywhere in a command, so a keyword that contains another one
// (SLUMP BED CHANGE LIMIT) stands before it.
constexpr Option kOptions[] = {
    {"EROSION METHOD", OptionKind::Method, nullptr, &P::erosionMethod, "VANRIJN89"},
    {"DEPOSITION METHOD", OptionKind::Method, nullptr, &P::depositionMethod, "EYESINKVERMAAS"},
    {"FALL VELOCITY",
     OptionKind::NumberOrAuto,
     &P::fallVelocity,
     &P::automaticFallVelocity,
     {},
     3,
     " m/s"},
    {"CURRENT RELATED ROUGHNESS",
     OptionKind::NumberOrAuto,
     &P::currentRelatedRoughness,
     &P::automaticCurrentRelatedRoughness,
     {},
     3,
     " "},
    {"WAVE RELATED ROUGHNESS",
     OptionKind::NumberOrAuto,
     &P::waveRelatedRoughness,
     &P::automaticWaveRelatedRoughness,
     {},
     3,
     " "},
    {"MIXING LAYER THICKNESS",
     OptionKind::NumberOrAuto,
     &P::mixingLayerThickness,
     &P::automaticMixingLayerThickness,
     {},
     3,
     " m"},
    {"REFERENCE LEVEL",
     OptionKind::NumberOrAuto,
     &P::referenceLevel,
     &P::automaticReferenceLevel,
     {},
     3,
     " m"},
    {"MIXING COEFFICIENT",
     OptionKind::NumberOrAuto,
     &P::mixingCoefficient,
     &P::automaticMixingCoefficient,
     {},
     3,
     " "},
    {"CELL SIDES HIGH", OptionKind::OnOff, nullptr, &P::cellSidesHigh},
    {"VELOCITY CENTRED", OptionKind::OnOff, nullptr, &P::velocityCentred},
    {"SAND GRAIN DENSITY", OptionKind::Number, &P::sandGrainDensity, nullptr, {}, 1},
    {"WATER DENSITY", OptionKind::Number, &P::waterDensity, nullptr, {}, 1},
    {"SLUMP SLOPE", OptionKind::Number, &P::slumpSlope, nullptr, {}, 1},
    {"TIME CENTREING FACTOR", OptionKind::Number, &P::timeCentringFactor, nullptr, {}, 2},
    {"SLUMP BED CHANGE LIMIT", OptionKind::Number, &P::slumpBedChangeLimit, nullptr, {}, 3},
    {"BED CHANGE LIMIT", OptionKind::Number, &P::bedChangeLimit, nullptr, {}, 3},
    {"CONCENTRATION FACTOR", OptionKind::Number, &P::concentrationFactor, nullptr, {}, 3},
};

std::optional<std::string> setNumber(const Option& option, std::string_view value,
                                     MorphologyParameters& parameters) {
  double number = std::numeric_limits<double>::quiet_NaN();  // what an empty item leaves
  if (readListItem(value, number) != ReadStatus::Ok || std::isnan(number)) return std::nullopt;
  parameters.*option.number = number;
  return "set to" + fixedField(number, kNumberWidth, option.decimals) + std::string(option.unit);
}

std::optional<std::string> setSwitch(const Option& option, bool on,
                                     MorphologyParameters& parameters) {
  parameters.*option.flag = on;
  return on ? "set to ON" : "set to OFF";
}

}  // namespace

const Option* findOption(std::string_view command) {
  for (const Option& option : kOptions)
    if (flagExists(command, option.keyword)) return &option;
  return nullptr;
}

std::optional<std::string> setOption(const Option& option, std::string_view value,
                                     MorphologyParameters& parameters) {
  switch (option.kind) {
    case OptionKind::Method:
      if (!flagExists(value, option.method)) return std::nullopt;
      parameters.*option.flag = true;
      return "set to " + std::string(option.method);
    case OptionKind::NumberOrAuto:
      parameters.*option.flag = flagExists(value, "AUTO");
      if (parameters.*option.flag) return "set to automatic";
      return setNumber(option, value, parameters);
    case OptionKind::OnOff:
      if (flagExists(value, "ON")) return setSwitch(option, true, parameters);
      if (flagExists(value, "OFF")) return setSwitch(option, false, parameters);
      return std::nullopt;
    case OptionKind::Number:
      return setNumber(option, value, parameters);
  }
  return std::nullopt;
}

}  // namespace nivaro
