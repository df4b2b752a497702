#include "control/option_echo.hpp"

#include <string_view>

#include "text/number_text.hpp"

namespace nivaro {

namespace {

std::string numberLine(std::string_view name, bool automatic, double value) {
  return std::string(name) + " == " + (automatic ? "AUTO" : areal(value)) +
         "   ! Options [ {AUTO} | <value> ]";
}

}  // namespace

std::array<std::string, 7> optionEcho(const MorphologyParameters& p) {
  return {
      "Morphology Erosion Method == VANRIJN89  ! [ {VANRIJN89} ]",
      "Morphology Deposition Method == EYESINKVERMAAS  ! [ {EYESINKVERMAAS} ]",
      numberLine("Morphology Fall Velocity", p.automaticFallVelocity, p.fallVelocity),
      numberLine("Morphology Current Related Roughness", p.automaticCurrentRelatedRoughness,
                 p.currentRelatedRoughness),
      numberLine("Morphology Mixing Layer Thickness", p.automaticMixingLayerThickness,
                 p.mixingLayerThickness),
      numberLine("Morphology Reference Level", p.automaticReferenceLevel, p.referenceLevel),
      numberLine("Morphology Mixing Coefficient", p.automaticMixingCoefficient,
                 p.mixingCoefficient),
  };
}

}  // namespace nivaro
