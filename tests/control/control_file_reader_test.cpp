#include "control/control_file_reader.hpp"

#include <vector>

#include "interface/entry_points.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

// Reads control files for domain 1 of 3 x 2 cells.
struct ControlFile : test::ModuleTest {
  ControlFile() { reserve(1, true, 1, 1); }

  void reserve(std::int32_t domain, bool active, std::int32_t nextReal, std::int32_t nextInteger) {
    module.fields.reserve(domain, active, 3, 2, nextReal, nextInteger);
    real.assign(static_cast<std::size_t>(nextReal + 9), -1.0);
    integer.assign(static_cast<std::size_t>(nextInteger + 9), -1);
  }

  void read(std::string_view name, std::int32_t domain = 1) {
    readControlFile(module, {.controlFile = folder.path(name),
                             .domain = domain,
                             .lastDomain = 3,
                             .n = 3,
                             .m = 2,
                             .work = {real.data(), integer.data()}});
  }

  void readText(std::string_view content) {
    folder.write("run.mcf", content);
    read("run.mcf");
  }

  const MorphologyParameters& options() { return module.parameters.ofDomain(1); }
  double d50() const { return real[0]; }

  std::vector<double> real;
  std::vector<std::int32_t> integer;
};

TEST_F(ControlFile, EmptyFileLeavesTheDefaultsAndEchoesAuto) {
  readText("! nothing\n\n");

  EXPECT_EQ(options().timeCentringFactor, 0.5);
  EXPECT_EQ(options().fallVelocity, 0.0);
  EXPECT_EQ(options().concentrationFactor, 1.0);
  // D50, D90, in-situ voids, deposition voids, bed limit; no other field is touched.
  const double defaults[] = {0.00016, 0.00016, 0.4, 0.4, -99999.0, -1.0};
  for (std::size_t k = 0; k < 6 * 6; ++k) EXPECT_EQ(real[k], defaults[k / 6]) << k;
  EXPECT_EQ(std::vector(integer.begin(), integer.begin() + 6), std::vector(6, 1));
  EXPECT_EQ(log(),
            "Morphology Erosion Method == VANRIJN89  ! [ {VANRIJN89} ]\n"
            "Morphology Deposition Method == EYESINKVERMAAS  ! [ {EYESINKVERMAAS} ]\n"
            "Morphology Fall Velocity == AUTO   ! Options [ {AUTO} | <value> ]\n"
            "Morphology Current Related Roughness == AUTO   ! Options [ {AUTO} | <value> ]\n"
            "Morphology Mixing Layer Thickness == AUTO   ! Options [ {AUTO} | <value> ]\n"
            "Morphology Reference Level == AUTO   ! Options [ {AUTO} | <value> ]\n"
            "Morphology Mixing Coefficient == AUTO   ! Options [ {AUTO} | <value> ]\n");
}

TEST_F(ControlFile, EveryOptionIsStoredAndShown) {
  struct Case {
    const char* line;
    double MorphologyParameters::*number;
    double value;
    const char* console;
  };
  using P = MorphologyParameters;
  const Case cases[] = {
      {"Morphology Fall Velocity == 0.02", &P::fallVelocity, 0.02, "set to 0.020 m/s\n"},
      {"current related roughness == 5e-2", &P::currentRelatedRoughness, 0.05, "set to 0.050 \n"},
      {"Wave Related Roughness==1D-1", &P::waveRelatedRoughness, 0.1, "set to 0.100 \n"},
      {"Mixing Layer Thickness == .1", &P::mixingLayerThickness, 0.1, "set to 0.100 m\n"},
      {"Reference Level\t== 12.5", &P::referenceLevel, 12.5, "set to12.500 m\n"},
      {"Mixing Coefficient == 1", &P::mixingCoefficient, 1.0, "set to 1.000 \n"},
      {"Sand Grain Density == 2600", &P::sandGrainDensity, 2600.0, "set to2600.0\n"},
      {"Water Density == 1025.0 ! sea", &P::waterDensity, 1025.0, "set to1025.0\n"},
      {"Slump Slope == 2", &P::slumpSlope, 2.0, "set to   2.0\n"},
      {"Slump Bed Change Limit == 0.05", &P::slumpBedChangeLimit, 0.05, "set to"},
      {"Bed Change Limit == 0.25", &P::bedChangeLimit, 0.25, "set to"},
      {"Time Centreing Factor == 0.75", &P::timeCentringFactor, 0.75, "set to  0.75\n"},
      {"Concentration Factor == 123456", &P::concentrationFactor, 123456.0, "set to******\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    console.output.clear();
    readText(c.line);
    EXPECT_EQ(options().*c.number, c.value);
    EXPECT_TRUE(shown(c.console)) << console.output;
  }
}

TEST_F(ControlFile, AutoKeepsTheNumberAndANumberEndsAuto) {
  readText("Fall Velocity == 0.02\nFall Velocity == Auto\nReference Level == 0.1\n");

  EXPECT_EQ(options().fallVelocity, 0.02);
  EXPECT_TRUE(options().automaticFallVelocity);
  EXPECT_FALSE(options().automaticReferenceLevel);
  EXPECT_TRUE(shown("set to automatic\n"));

  readText("");  // a second reading starts from the defaults, which leave this number alone
  EXPECT_EQ(options().fallVelocity, 0.02);
}

TEST_F(ControlFile, SwitchesLookForOnBeforeOff) {
  readText("Cell Sides High == on\nVelocity Centred == NONE\n");
  EXPECT_TRUE(options().cellSidesHigh);
  EXPECT_TRUE(options().velocityCentred);

  readText(
      "Cell Sides High == off\nErosion Method == VanRijn89\nDeposition Method == EyesinkVermaas");
  EXPECT_FALSE(options().cellSidesHigh);
  EXPECT_TRUE(shown("set to OFF\nset to VANRIJN89\nset to EYESINKVERMAAS\n"));
}

TEST_F(ControlFile, BadValuesEndTheRunAndNameLineAndFile) {
  for (const char* line :
       {"Fall Velocity == fast", "Slump Slope ==", "Erosion Method == OTHER",
        "Deposition Method == X", "Cell Sides High == maybe", "Velocity Centred ==   "}) {
    SCOPED_TRACE(line);
    console.output.clear();
    EXPECT_THROW(readText("! first line\n" + std::string(line) + "\n"), test::ProcessEnded);
    EXPECT_TRUE(
        shown("\nNoXY: ERROR - Reading parameter(s) or option for command below, or "
              "ambiguous command\n"));
    EXPECT_TRUE(shown("Line 2 of file " + folder.path("run.mcf"))) << console.output;
  }
}

TEST_F(ControlFile, PlaceNamesTheFileThatWasAnsweredForAMissingOne) {
  folder.write("other.mcf", "Slump Slope == steep\n");
  console.answers = {folder.path("other.mcf")};
  EXPECT_THROW(read("missing.mcf"), test::ProcessEnded);
  EXPECT_TRUE(shown("Line 1 of file " + folder.path("other.mcf"))) << console.output;
}

TEST_F(ControlFile, UnknownCommandsEndTheRunOnTheScreenOnly) {
  for (const std::string line :
       {"Fal Velocity == 0.02", "END IF",
        "Sixty columns of a command are looked at, no more, as here:  Slump Slope == 2"}) {
    console.output.clear();
    EXPECT_THROW(readText(line + "\n"), test::ProcessEnded);
    EXPECT_TRUE(shown("\n\n...Unrecognisable command in .mcf file\n\n"));
    EXPECT_TRUE(shown(line));
    EXPECT_EQ(log(), "");
  }
}

TEST_F(ControlFile, LineWithoutSeparatorWarnsAndHasABlankValue) {
  EXPECT_THROW(readText("Fall Velocity 0.02\n"), test::ProcessEnded);
  EXPECT_TRUE(shown("WARNING 0060 - Command line is missing \"==\"."));
  EXPECT_TRUE(shown("ERROR - Reading parameter(s)"));
}

TEST_F(ControlFile, SetFillsItsFieldAndIsEchoed) {
  readText(
      "Set Morphology D50 == 0.0002\nSet Morphology Bed Code == 2.7\n"
      "Set ADD Morphology Bed Limit == -3.5\n");

  EXPECT_EQ(d50(), 0.0002);
  EXPECT_EQ(real[5], 0.0002);
  EXPECT_EQ(real[6], 0.00016);
  EXPECT_EQ(real[29], -3.5);
  EXPECT_EQ(integer[5], 2);
  EXPECT_TRUE(shown("\n\nMorphology D50 globally set to 0.0002\n"));
  EXPECT_TRUE(log().starts_with("\nMorphology D50 globally set to 0.0002\n"));

  // Without "Morphology" or a field of it there is no effect.
  readText(
      "Set Morphology Bed Code == -0.5\nSet D50 == 0.5\nSet Morphology Colour == 3\n"
      "Read MI Zpts == nothing\n");
  EXPECT_EQ(integer[0], 0);
  EXPECT_EQ(d50(), 0.00016);
}

TEST_F(ControlFile, SetErrorsTellMissingFromMalformedValues) {
  EXPECT_THROW(readText("Set Morphology D50 == \n"), test::ProcessEnded);
  EXPECT_TRUE(shown("ERROR - Reading value of \"Set\" command"));

  EXPECT_THROW(readText("Set Morphology D50 == nan\n"), test::ProcessEnded);
  EXPECT_THROW(readText("Set Morphology D50 == fine\n"), test::ProcessEnded);
  EXPECT_TRUE(shown("ERROR - Reading following line in control file\nSet Morphology D50 == fine"));
}

TEST_F(ControlFile, IncludedFilesAreReadInPlaceRelativeToTheTopLevelFile) {
  std::filesystem::create_directory(folder.path("sub"));
  folder.write("sub/inner.mcf", "Slump Slope == 2\r\nRead File == second.mcf\r\n");
  folder.write("second.mcf", "Slump Slope == 3");
  // Read on Windows: the backslash, and another letter case.
  readText("Slump Slope == 1\r\nRead File == SUB\\inner.mcf\r\nBed Change Limit == 0.5\r\n");

  EXPECT_EQ(options().slumpSlope, 3.0);
  EXPECT_EQ(options().bedChangeLimit, 0.5);
  EXPECT_NE(log().find("Erosion Method"), std::string::npos);
}

TEST_F(ControlFile, NineNestedFilesAreReadAndATenthEndsTheRun) {
  for (int level = 1; level < 10; ++level)
    folder.write("f" + std::to_string(level) + ".mcf",
                 level < 9 ? "Read File == f" + std::to_string(level + 1) + ".mcf\n"
                           : std::string("Slump Slope == 9\n"));
  readText("Read File == f1.mcf\n");
  EXPECT_EQ(options().slumpSlope, 9.0);

  folder.write("f9.mcf", "Read File == f10.mcf\n");
  folder.write("f10.mcf", "");
  EXPECT_THROW(read("run.mcf"), test::ProcessEnded);
  EXPECT_TRUE(shown("ERROR - Exceeded limit of nested files (ie. of \"Read File\" files).\n"));
}

TEST_F(ControlFile, DomainWithoutMorphologyTouchesOnlyItsDummies) {
  reserve(2, false, 101, 7);
  folder.write("run.mcf", "Set Morphology D50 == 0.5\n");
  read("run.mcf", 2);

  EXPECT_EQ(real[100], 0.5);
  EXPECT_EQ(real[101], 0.00016);  // D90
  EXPECT_EQ(real[105], -1.0);
  EXPECT_EQ(integer[6], 1);
  EXPECT_EQ(integer[7], -1);
}

}  // namespace
}  // namespace nivaro
