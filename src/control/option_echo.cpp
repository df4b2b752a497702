#include "control/option_echo.hpp"

#include <string_view>

#include "text/number_text.hpp"

namespace nivaro {

namespace {

std::string echoOf(std::string_view name, bool automatic, double value) {
  return std::string(name) + " == " + (automatic ? "AUTO" : areal(value)) +
         "   ! Options [ {AUTO} | <value> ]";
}

}  // namespace

std::array<std::string, 7> optionEcho(const MorphologyParameters& p) {
  return {
      "Morphology Erosion Method == VANRIJN89  ! [ {VANRIJN89} ]",
      "Morphology Deposition Method == EYESINKVERMAAS  ! [ {EYESINKVERMAAS} ]",
      echoOf("Morphology Fall Velocity", p.automaticFallVelocity, p.fallVelocity),
      echoOf("Morphology Current Related Roughness", p.automaticCurrentRelatedRoughness,
             p.currentRelatedRoughness),
      echoOf("Morphology Mixing Layer Thickness", p.automaticMixingLayerThickness,
             p.mixingLayerThickness),
      echoOf("Morphology Reference Level", p.automaticReferenceLevel, p.referenceLevel),
      echoOf("Morphology Mixing Coefficient", p.automaticMixingCoefficient, p.mixingCoefficient),
  };
}

}  // namespace nivaro
