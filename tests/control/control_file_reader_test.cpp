#include "control/control_file_reader.hpp"

#include <tuple>
#include <vector>

#include "control/control_fixture.hpp"

namespace nivaro {
namespace {

// Domain 1 has 3 x 2 cells: six elements to a field, D50 first.
struct ControlFile : test::ControlTest {
  ControlFile() : ControlTest(3, 2, 1) {}
};

TEST_F(ControlFile, EmptyFileLeavesTheDefaultsAndEchoesAuto) {
  read("! nothing\n\n");

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
  using P = MorphologyParameters;
  const std::tuple<const char*, double P::*, double, const char*> cases[] = {
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
  for (const auto& [line, number, value, text] : cases) {
    read(line);
    EXPECT_EQ(options().*number, value) << line;
    EXPECT_TRUE(shown(text)) << console.output;
  }
}

// The echo is that of the set in use, which is another one while control files are read.
TEST_F(ControlFile, EchoShowsTheNumbersOfTheSetInUse) {
  read(
      "Fall Velocity == 0.02\nCurrent Related Roughness == 0.05\nMixing Layer Thickness == 0.1\n"
      "Reference Level == 12.5\nMixing Coefficient == 3\n");
  module.parameters.load(1);
  const std::size_t logged = log().size();
  read("");
  std::string expected = log().substr(0, logged);
  for (const char* value : {"0.02", "0.05", "0.1", "12.5", "3."})
    expected.replace(expected.find("AUTO "), 4, value);
  EXPECT_EQ(log().substr(logged), expected);
}

TEST_F(ControlFile, WordsSetSwitchesAndLeaveNumbersAlone) {
  read(
      "Fall Velocity == 0.02\nFall Velocity == Auto\n"
      "Cell Sides High == on\nVelocity Centred == NONE\n");
  EXPECT_TRUE(options().automaticFallVelocity && shown("set to automatic\n"));
  EXPECT_TRUE(options().cellSidesHigh && options().velocityCentred);  // "on" comes before "off"

  read("Cell Sides High == off\nErosion Method == VanRijn89\nDeposition Method == EyesinkVermaas");
  EXPECT_EQ(options().fallVelocity, 0.02);  // neither "auto" nor the defaults change it
  EXPECT_FALSE(options().cellSidesHigh);
  EXPECT_TRUE(shown("set to OFF\nset to VANRIJN89\nset to EYESINKVERMAAS\n"));
}

// Commands, and what the screen then shows before them.
TEST_F(ControlFile, WhatCannotBeDoneEndsTheRunAndNamesItsPlace) {
  const std::string option =
      "\nNoXY: ERROR - Reading parameter(s) or option for command below, or ambiguous command\n";
  const std::string unknown = "\n\n...Unrecognisable command in .mcf file\n\n";
  const std::string noValue = "ERROR - Reading value of \"Set\" command\n";
  const std::string badValue = "ERROR - Reading following line in control file\n";
  const std::string sixty = "Sixty columns of a command are looked at, no more, as here:  ";
  const std::pair<std::string, std::string> cases[] = {
      {"Fal Velocity == 0.02", unknown},
      {"Fall Velocity == fast", option},
      {"Slump Slope ==", option},
      {"Slump Slope == 3*", option},
      {"Fall Velocity == ,5", option},
      {"Erosion Method == OTHER", option},
      {"Deposition Method == X", option},
      {"Cell Sides High == maybe", option},
      {"Velocity Centred ==", option},
      {"FALL VELOCITY 0.02",
       "\nNoXY: WARNING 0060 - Command line is missing \"==\".\nProblematic Line: "},
      {"FALL VELOCITY 0.02", option},
      {"END IF", unknown},
      {sixty + "Slump Slope == 2", unknown},
      {"Set Morphology D50 ==", noValue},
      {"Set Morphology D50 == nan", badValue},
      {"Set Morphology D50 == fine", badValue},
      {"Set Morphology D50 == ,5", badValue},
      {"Set Morphology D50 == 3*", badValue},
      {"Set Morphology Bed Code == /", badValue},
      {"Set Morphology Bed Code == 2147483648", badValue},
  };
  for (const auto& [line, text] : cases) {
    EXPECT_THROW(read("! first line\n" + line + "\n"), test::ProcessEnded);
    EXPECT_TRUE(shown(text + line)) << console.output;
    EXPECT_TRUE(shown("Line 2 of file " + folder.path("run.mcf"))) << console.output;
  }
  EXPECT_EQ(log(), "");  // the first end, which is told on the screen alone, has closed it
}

TEST_F(ControlFile, PlaceNamesTheFileThatWasAnsweredForAMissingOne) {
  folder.write("other.mcf", "Slump Slope == steep\n");
  console.answers = {folder.path("other.mcf")};
  EXPECT_THROW(readFile("missing.mcf"), test::ProcessEnded);
  EXPECT_TRUE(shown("Line 1 of file " + folder.path("other.mcf"))) << console.output;
}

TEST_F(ControlFile, SetFillsItsFieldAndIsEchoed) {
  read(
      "Set Morphology D50 == 0.0002\nSet Morphology Bed Code == 2.7\n"
      "Set ADD Morphology Bed Limit == -3.5\n");

  EXPECT_EQ(real[0], 0.0002);
  EXPECT_EQ(real[5], 0.0002);
  EXPECT_EQ(real[6], 0.00016);
  EXPECT_EQ(real[29], -3.5);
  EXPECT_EQ(integer[5], 2);
  EXPECT_TRUE(shown("\n\nMorphology D50 globally set to 0.0002\n"));
  EXPECT_TRUE(log().starts_with("\nMorphology D50 globally set to 0.0002\n"));

  // Without "Morphology" or a field of it there is no effect.
  read(
      "Set Morphology Bed Code == -0.5\nSet D50 == 0.5\nSet Morphology Colour == 3\n"
      "Read MI Zpts == nothing\n");
  EXPECT_EQ(integer[0], 0);
  EXPECT_EQ(real[0], 0.00016);
}

TEST_F(ControlFile, IncludedFilesAreReadInPlaceRelativeToTheTopLevelFile) {
  std::filesystem::create_directory(folder.path("sub"));
  folder.write("sub/inner.mcf", "Slump Slope == 2\r\nRead File == second.mcf\r\n");
  folder.write("second.mcf", "Slump Slope == 3");
  // Read on Windows: the backslash, and another letter case.
  read("Slump Slope == 1\r\nRead File == SUB\\inner.mcf\r\nBed Change Limit == 0.5\r\n");

  EXPECT_EQ(options().slumpSlope, 3.0);
  EXPECT_EQ(options().bedChangeLimit, 0.5);
  EXPECT_TRUE(
      shown("...Closed File Unit:2004\n...Closed File Unit:2003\n"));  // the inner one first
}

TEST_F(ControlFile, NineNestedFilesAreReadAndATenthEndsTheRun) {
  EXPECT_THROW(read("Read File == run.mcf\n"), test::ProcessEnded);
  int opened = 0;
  for (std::size_t at = 0; (at = console.output.find("OK.  File Unit:", at)) != std::string::npos;
       ++at)
    ++opened;
  EXPECT_EQ(opened, 10);
  EXPECT_TRUE(shown("ERROR - Exceeded limit of nested files (ie. of \"Read File\" files).\n"));
}

TEST_F(ControlFile, DomainWithoutMorphologyTouchesOnlyItsDummies) {
  reserve(2, false);
  read("Set Morphology D50 == 0.5\n", 2);
  // One element to a field: D50 and D90, then the others with a default; the sixth has none.
  const std::vector<double> dummies = {0.5, 0.00016, 0.4, 0.4, -99999.0, -1.0};
  EXPECT_EQ(std::vector(real.begin(), real.begin() + 6), dummies);
  EXPECT_EQ(std::vector(integer.begin(), integer.begin() + 2), (std::vector{1, -1}));
}

TEST_F(ControlFile, LastDomainClosesTheWorkspace) {
  module.workspace.open(folder.path("run_mor.wor"), "run");  // unit 2002
  for (const std::int32_t domain : {1, 3}) {
    reserve(domain, true);
    read("", domain);
    EXPECT_EQ(module.units.find(2002) != nullptr, domain == 1);
  }
}

}  // namespace
}  // namespace nivaro
