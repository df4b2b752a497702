#include "spatial/mif_reader.hpp"

#include "messages/mif_header.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

using MifReaderTest = test::ModuleTest;

TEST_F(MifReaderTest, FileThatCannotBeReadIsReported) {
  Unit none;
  console.answers = {""};
  EXPECT_FALSE(module.layers.findObjectSection(none));
  EXPECT_TRUE(shown("\nNoXY: WARNING 0313 - Problems finding start of data in .mif file\n"));
  EXPECT_TRUE(console.answers.empty());  // it waited for the Enter key
  EXPECT_THROW(module.layers.nextObject(none, none), test::ProcessEnded);
  EXPECT_TRUE(shown("ERROR - Reading MIF file or premature end of file.\n"));

  std::string line = "as it was";
  findProjectionLine(none, line, module.diagnostics);
  EXPECT_EQ(line, "as it was");
  EXPECT_TRUE(shown("\nNoXY: WARNING 0306 - Problems finding CoordSys line in .mif file\n"));
}

}  // namespace
}  // namespace nivaro
