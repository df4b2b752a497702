#include "files/open_dialogue.hpp"

#include <algorithm>
#include <filesystem>

#include "files_fixture.hpp"
#include "locked_file.hpp"
#include "this_system.hpp"

namespace nivaro {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kNameQuestion =
    "Check file exists and press enter or enter another file name: ";

struct OpenDialogueTest : test::FilesTest {
  std::int32_t open(const std::string& path, const std::string& mode, std::int32_t unit = 2001) {
    OpenRequest request{unit, path, mode, 12};
    return dialogue.openUnit(request);
  }

  int exitCodeOf(const std::string& path, const std::string& mode) {
    return test::exitCodeOf([&] { open(path, mode, 2009); });
  }

  bool isOpen(std::int32_t unit) { return units.find(unit) != nullptr; }

  static std::string announcement(const std::string& mode, const std::string& path) {
    return "\nTrying to open (" + mode + ") file " + path + "...";
  }

  static std::string lockedText(const std::string& path) {
    return "Can't Open: " + path + "\n\n Can't open: " + path +
           "\n\n Another application or user maybe using it,\n"
           "    or the file's folder does not exist.\n"
           " If so, close the file or create file path.\n"
           "\nPress Enter to Continue\n";
  }

  OpenDialogue dialogue{console, process, units, termination};
  std::deque<std::string>& answers = console.answers;
};

TEST_F(OpenDialogueTest, ShowsTheOutcomeOnTheLineOfTheAnnouncementExceptInModeIo) {
  folder.write("Model.mif", "x\n");
  const std::string given = folder.path("model.MIF");  // and the path as it is given
  EXPECT_EQ(open("  " + given + "  ", "I "), 2001);
  EXPECT_EQ(output, announcement("I", given) + "OK.  File Unit:2001\n");
  EXPECT_TRUE(isOpen(2001));

  output.clear();
  EXPECT_EQ(open(folder.path("file"), "IO"), 2001);
  EXPECT_EQ(output, announcement("IO", folder.path("file")));
}

TEST_F(OpenDialogueTest, OpensEveryModeAsItsRowSays) {
  for (const OpenMode& mode : kOpenModes) {
    const std::string code(mode.code);
    SCOPED_TRACE(code);
    const bool keeps =
        mode.isInput || code[0] == 'A' || code[0] == 'S' || code[0] == 'D' || code == "IO";
    const std::string path = folder.write("file", "kept");
    EXPECT_EQ(open(path, code), 2001);
    ASSERT_TRUE(isOpen(2001));
    const OpenOptions& options = units.find(2001)->options();
    EXPECT_EQ(options.recordLength, mode.callersLength ? 12 : code == "DX" ? 4 : 0);
    EXPECT_EQ(options.bigEndian, code[1] == 'E' || code == "BN");
    EXPECT_EQ(options.position == OpenOptions::Position::End, code[0] == 'A');
    units.close(2001);
    EXPECT_EQ(folder.read("file"), keeps ? "kept" : "");

    if (mode.isInput || code == "DX") continue;  // these create nothing
    fs::remove(path);
    open(path, code);
    units.close(2001);
    EXPECT_TRUE(fs::exists(path));
  }
}

TEST_F(OpenDialogueTest, AsksForAnotherNameUntilTheInputFileIsThere) {
  folder.write("there.mcf", "");
  const std::string missing = folder.path("missing.mcf");
  const std::string there = folder.path("there.mcf");
  answers = {"  ", "  " + there + " "};

  EXPECT_EQ(open(missing, "I "), 2001);

  const std::string round = announcement("I", missing) + "\nCHECK 0008 - \"" + missing +
                            "\" cannot be found or opened.\n" + kNameQuestion;
  EXPECT_EQ(output, round + "No file name entered.  Trying file again...\n" + round +
                        announcement("I", there) + "OK.  File Unit:2001\n");
}

TEST_F(OpenDialogueTest, CountsEightyCharactersOfAnAnsweredNameAndFindsAFileThatHasComeUp) {
  console.beforeAnswer = [&] { folder.write("there", ""); };
  const std::string there = folder.path("there");
  answers = {there + std::string(80 - there.size(), ' ') + "beyond"};
  EXPECT_EQ(open(folder.path("missing"), "I "), 2001);
  units.close(2001);
  fs::remove(there);
  answers = {""};
  EXPECT_EQ(open(there, "I "), 2001);
}

TEST_F(OpenDialogueTest, ListsFilesThatDifferInCaseOnly) {
  if (!test::kLetterCaseCounts) GTEST_SKIP();
  folder.write("run", "");
  folder.write("RUN", "");
  const std::string meanings = "The name differs only in letter case from each of:\n   " +
                               folder.path("RUN") + "\n   " + folder.path("run") + "\n";
  answers = {folder.path("run")};
  EXPECT_EQ(open(folder.path("Run"), "I "), 2001);
  EXPECT_THAT(output, HasSubstr("cannot be found or opened.\n" + meanings + kNameQuestion));

  console.beforeAnswer = [&] { fs::remove(folder.path("RUN")); };
  answers = {""};
  EXPECT_EQ(open(folder.path("Run"), "A "), 2001);
  EXPECT_THAT(output, HasSubstr("Can't Open: " + folder.path("Run") + "\n" + meanings));
  EXPECT_THAT(output, testing::EndsWith("Press Enter to Continue\nOK.  File Unit:2001\n"));
}

TEST_F(OpenDialogueTest, OffersToCloseAnOutputFileThatIsOpenOrAsksForAnotherName) {
  const std::string path = folder.path("out");
  open(path, "O ");
  answers = {" y", "", "no", folder.path("other"), "yes"};  // only the first character counts

  EXPECT_EQ(open(path, "O ", 2002), 2002);
  EXPECT_THAT(output, HasSubstr(" is already open, close it? " + std::string(kNameQuestion) +
                                "No file name entered.  Trying file again...\n\nTrying to open"));
  EXPECT_TRUE(isOpen(2001));
  EXPECT_EQ(units.find(2002)->path(), folder.path("other"));

  output.clear();
  EXPECT_EQ(open(path, "O ", 2003), 2003);
  EXPECT_EQ(output, announcement("O", path) + "\n" + path +
                        " is already open, close it? OK.  File Unit:2003\n");
  EXPECT_FALSE(isOpen(2001));
}

TEST_F(OpenDialogueTest, OpensSharedAndInputFilesTwiceWithoutAQuestion) {
  const std::string path = folder.path("out");
  open(path, "S ");
  for (const char* mode : {"I ", "A ", "AB", "S ", "SB", "SE"})
    EXPECT_EQ(open(path, mode, 2002), 2002) << mode;
  EXPECT_TRUE(isOpen(2001));
}

TEST_F(OpenDialogueTest, EndsWhereTheOpenFileCannotBeClosed) {
  if (!test::hasFullDisk()) GTEST_SKIP();
  open(test::kFullDisk, "O ");
  units.find(2001)->writeRecord("lost");
  answers = {"Y"};
  EXPECT_EQ(exitCodeOf(test::kFullDisk, "O "), 1);
  EXPECT_THAT(output, HasSubstr("close it?   Unable to close file.\n"));
}

TEST_F(OpenDialogueTest, OpensNothingInAnUnknownMode) {
  const std::string name = folder.path("file") + std::string(100, 'x');
  EXPECT_EQ(open(name, "o "), 2001);  // codes are in upper case
  EXPECT_THAT(output,
              HasSubstr("...  Unrecognised file type o  file " + name.substr(0, 80) + "\n"));
  EXPECT_FALSE(isOpen(2001));
  EXPECT_FALSE(fs::exists(name));
}

TEST_F(OpenDialogueTest, CreatesMissingFolders) {
  const std::string path = folder.path("results\\2d/bed.dat");
  EXPECT_EQ(open(path, "A "), 2001);
  EXPECT_EQ(output, announcement("A", path) + "Can't Open: " + path + "\nOK.  File Unit:2001\n");
  EXPECT_TRUE(fs::exists(folder.path("results/2d/bed.dat")));
}

TEST_F(OpenDialogueTest, WaitsWhereAFolderCannotBeCreated) {
  folder.write("results", "a file in the way");
  const std::string path = folder.path("results/bed.dat");
  console.beforeAnswer = [&] { fs::remove(folder.path("results")); };
  answers = {""};

  EXPECT_EQ(open(path, "O "), 2001);

  std::string shown = folder.path("results/");
  std::replace(shown.begin(), shown.end(), '/', '\\');
  EXPECT_EQ(output, announcement("O", path) + "Can't Open: " + path + "\n\n Can't open: " + path +
                        "\n\n\nCould not create folder: " + shown +
                        "\n\nPress Enter to Continue\nCan't Open: " + path +
                        "\nOK.  File Unit:2001\n");
}

// The folder is there, and yet the file cannot be opened: creating folders again would go on
// forever.
TEST_F(OpenDialogueTest, WaitsWhereTheFolderIsThereAndTheFileStillFails) {
  const std::string path = folder.path("out");
  fs::create_directory(path);
  console.beforeAnswer = [&] { fs::remove(path); };
  answers = {""};

  EXPECT_EQ(open(path, "O "), 2001);

  EXPECT_EQ(output, announcement("O", path) + "Can't Open: " + path + "\n" + lockedText(path) +
                        "OK.  File Unit:2001\n");
}

TEST_F(OpenDialogueTest, ReplacesAFileOfAnotherCase) {
  folder.write("Bed.DAT", "old");
  open(folder.path("bed.dat"), "O ");
  EXPECT_EQ(folder.read("Bed.DAT"), "");
  EXPECT_EQ(fs::exists(folder.path("bed.dat")), !test::kLetterCaseCounts);
}

// Every question ends the run once nobody can answer: files closed, reason given, exit code 1.
TEST_F(OpenDialogueTest, EndsTheRunAtAQuestionThatNobodyCanAnswer) {
  const std::string out = folder.path("out");
  open(out, "O ");
  folder.write("file", "");
  fs::create_directory(folder.path("folder"));
  const std::string nameQuestion = "Check file exists and press enter or enter another";
  const struct {
    std::string path, mode, question;
  } cases[] = {
      {folder.path("missing"), "I ", nameQuestion},
      {folder.path("folder"), "I ", nameQuestion},
      {out, "O ", out + " is already open, close it?\n"},
      {folder.path("folder"), "O ", "Press Enter to Continue\n"},
      {folder.path("file/sub/x"), "O ", "Press Enter to Continue\n"},
  };
  for (const auto& [path, mode, question] : cases) {
    output.clear();
    termination.addHook([&] { console.line("closing files"); });
    EXPECT_EQ(exitCodeOf(path, mode), 1);
    EXPECT_THAT(output, HasSubstr("\nStandard input has ended, so nobody can answer: " + question));
    EXPECT_THAT(output, testing::EndsWith("\nThe run ends here.\nclosing files\n"));
  }
}

TEST_F(OpenDialogueTest, LockedFileEndsTheRunAsInputAndIsWaitedForAsOutputExceptWhenAppending) {
  const std::string path = folder.path("file");
  test::LockedFile file(path);
  for (const char* mode : {"I ", "IO"}) {
    output.clear();
    EXPECT_EQ(exitCodeOf(path, mode), 1);
    EXPECT_THAT(output, testing::EndsWith(path + "...\nCould not open \"" + path +
                                          "\": " + test::LockedFile::kReason + "\n"));
  }
  output.clear();
  EXPECT_EQ(open(path, "A "), 0);
  EXPECT_EQ(output, announcement("A", path) + "FAILED.  No File Unit allocated.\n");

  output.clear();
  console.beforeAnswer = [&] {
    if (answers.size() == 1) file.release();
  };
  answers = {"", ""};
  EXPECT_EQ(open(path, "O "), 2001);
  EXPECT_EQ(output, announcement("O", path) + lockedText(path) + lockedText(path) +
                        "OK.  File Unit:2001\n");
}

}  // namespace
}  // namespace nivaro
