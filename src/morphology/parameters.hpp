// The options of one domain that hold for all its cells, as the control file sets them. What varies
// from cell to cell is a field (fields.hpp).
#pragma once

namespace nivaro {

// All zero and false at load. "unset" marks the five reals that have no default: they keep what
// they had, 0 until a control file gives a value, and the transport formulas use them as they
// stand.
struct MorphologyParameters {
  double fallVelocity = 0.0;             // of the suspended sand, m/s; unset
  double currentRelatedRoughness = 0.0;  // ks,c, m; unset
  double waveRelatedRoughness = 0.0;     // ks,w, m; unset; no effect without waves
  double mixingLayerThickness = 0.0;     // near the bed, m; unset
  double referenceLevel = 0.0;           // of the near-bed concentration, m above the bed; unset
  double mixingCoefficient = 0.0;        // sediment over fluid mixing, -; default 1.05
  double sandGrainDensity = 0.0;         // kg/m3; default 2650
  double waterDensity = 0.0;             // kg/m3; default 1000
  double timeCentringFactor = 0.0;       // weight of the new bed change, -; default 0.5
  double slumpSlope = 0.0;               // stable slope, horizontal over vertical, -; default 1
  double slumpBedChangeLimit = 0.0;      // of one slump, m; default 0.1
  double bedChangeLimit = 0.0;           // of one step, m; default 0.1
  bool erosionMethod = false;            // VANRIJN89, the only one; default true, not consulted
  bool depositionMethod = false;  // EYESINKVERMAAS, the only one; default true, not consulted
  bool cellSidesHigh = false;     // a side takes the higher of its beds; default false
  bool velocityCentred = false;   // downstream velocity scaled to the cell; default false

  // "AUTO" was chosen. The marks are only echoed: no value is computed, the number above stands.
  bool automaticFallVelocity = false;             // default true
  bool automaticCurrentRelatedRoughness = false;  // default true
  bool automaticWaveRelatedRoughness = false;     // default true
  bool automaticMixingLayerThickness = false;     // default true
  bool automaticReferenceLevel = false;           // default true
  bool automaticMixingCoefficient = false;        // default true

  double concentrationFactor = 0.0;  // calibrates the deposition, -; default 1
};

// What a control file starts from. The five reals without a default are left as they are.
inline void setDefaults(MorphologyParameters& p) {
  p.timeCentringFactor = 0.5;
  p.erosionMethod = true;
  p.depositionMethod = true;
  p.automaticFallVelocity = true;
  p.automaticCurrentRelatedRoughness = true;
  p.automaticWaveRelatedRoughness = true;
  p.automaticMixingLayerThickness = true;
  p.automaticReferenceLevel = true;
  p.automaticMixingCoefficient = true;
  p.mixingCoefficient = 1.05;
  p.cellSidesHigh = false;
  p.sandGrainDensity = 2650.0;
  p.waterDensity = 1000.0;
  p.slumpSlope = 1.0;
  p.slumpBedChangeLimit = 0.1;
  p.bedChangeLimit = 0.1;
  p.concentrationFactor = 1.0;
  p.velocityCentred = false;
}

}  // namespace nivaro
