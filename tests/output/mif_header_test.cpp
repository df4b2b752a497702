#include "output/mif_header_writer.hpp"

#include <array>

#include "support/test_module.hpp"

namespace nivaro {
namespace {

using MifHeader = test::ModuleTest;

TEST_F(MifHeader, OfAFileIsCopiedUpToItsColumns) {
  folder.write("header.mif",
               "Version 450  \r\nCoordSys NonEarth Units \"m\" Bounds (-1, -2) ( 3,4.5 )\r\n"
               "Unique 1\r\nCOLUMNS 1\r\n  v Float\r\n");
  Unit* out = module.files.find(module.files.openFile(folder.path("out.mif"), "O ", 1));
  Bounds bounds;
  MifHeaderWriter(module.files, module.diagnostics, module.termination)
      .miWriteMifHeader(*out, {.headerFile = folder.path("header.mif")}, 0, bounds);
  out->flush();

  EXPECT_EQ(folder.read("out.mif"),
            "Version 450\nCoordSys NonEarth Units \"m\" Bounds (-1, -2) ( 3,4.5 )\nUnique 1\n");
  EXPECT_EQ((std::array{bounds.xMin, bounds.yMin, bounds.xMax, bounds.yMax}),
            (std::array{-1.0, -2.0, 3.0, 4.5}));
  EXPECT_EQ(record->log_unit, module.logUnit) << "the log of the call was for the call";
}

}  // namespace
}  // namespace nivaro
