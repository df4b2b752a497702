#include "platform/host_path.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_folder.hpp"

namespace nivaro {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct HostPathTest : testing::Test {
  void add(const char* name) {
    fs::create_directories(fs::path(folder.path(name)).parent_path());
    folder.write(name, "");
  }
  void addFolder(const char* name) { fs::create_directories(folder.path(name)); }

  // Places within the temporary folder, whose own name is cut off again.
  std::string within(const std::string& path) { return path.substr(folder.path("").size()); }
  void expect(bool exists, const std::string& name, const std::string& path,
              const Names& ambiguous) {
    HostPath found = hostPath(folder.path(name));
    for (std::string& other : found.ambiguous) other = within(other);
    EXPECT_EQ(found.exists, exists) << name;
    EXPECT_EQ(within(found.path), path);
    EXPECT_EQ(found.ambiguous, ambiguous) << name;
  }
  void expectFound(const std::string& name, const std::string& path) {
    expect(true, name, path, {});
  }
  void expectMissing(const std::string& name, const std::string& path,
                     const Names& ambiguous = {}) {
    expect(false, name, path, ambiguous);
  }

  test::TempFolder folder;
};

TEST_F(HostPathTest, FindsAFileInAnyCaseAndWithEitherSeparator) {
  add("Model/Run_01.MIF");
  expectFound("Model/Run_01.MIF", "Model/Run_01.MIF");
  expectFound("Model\\Run_01.MIF", "Model/Run_01.MIF");
  expectFound("model\\run_01.mif", "Model/Run_01.MIF");
  expectFound("MODEL/..\\model\\RUN_01.mif", "Model/../Model/Run_01.MIF");
  expectMissing("model\\run_02.mif", "Model/run_02.mif");
  expectMissing("model\\sub/x", "Model/sub/x");
}

TEST_F(HostPathTest, PrefersTheExactName) {
  add("run.mcf");
  add("RUN.mcf");
  expectFound("run.mcf", "run.mcf");
  expectFound("RUN.mcf", "RUN.mcf");
  expectMissing("Run.mcf", "Run.mcf", {"RUN.mcf", "run.mcf"});
}

TEST_F(HostPathTest, FollowsAllSpellingsOfAFolder) {
  addFolder("Model");
  add("model/run.mcf");
  expectFound("Model\\run.mcf", "model/run.mcf");  // not in the exact folder
  expectMissing("Model\\new", "Model/new");
  expectMissing("MODEL\\new", "MODEL/new", {"Model/new", "model/new"});

  add("Model/Run.mcf");
  expectMissing("MODEL\\run.mcf", "MODEL/run.mcf", {"Model/Run.mcf", "model/run.mcf"});
}

TEST_F(HostPathTest, TakesNoFolderForAFile) {
  addFolder("out.dat");
  expectMissing("out.dat", "out.dat");
  add("OUT.dat");
  expectFound("out.dat", "OUT.dat");
  expectMissing("OUT.dat/", "out.dat/");  // a folder was asked for
}

TEST_F(HostPathTest, CreatesFoldersInsideThoseThatDifferInCase) {
  addFolder("Results");
  EXPECT_TRUE(folderExists(folder.path("RESULTS\\")));
  EXPECT_FALSE(folderExists(folder.path("results\\2d")));

  EXPECT_TRUE(createFolder(folder.path("results\\2D\\bed $(x)\\")));

  EXPECT_TRUE(fs::is_directory(folder.path("Results/2D/bed $(x)")));
  EXPECT_TRUE(createFolder(folder.path("Results/2D")));
  EXPECT_TRUE(folderExists(""));
}

TEST_F(HostPathTest, ReportsAFolderThatCannotBeCreated) {
  add("file");
  EXPECT_FALSE(createFolder(folder.path("file\\sub\\")));
  addFolder("res");
  addFolder("Res");
  EXPECT_FALSE(createFolder(folder.path("RES\\new")));  // in which of the two?
}

}  // namespace
}  // namespace nivaro
