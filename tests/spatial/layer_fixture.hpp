// A layer written, opened and read by a test, with all that its reader needs.
#pragma once

#include <string>
#include <string_view>

#include "spatial/mif_reader.hpp"
#include "support/test_module.hpp"

namespace nivaro::test {

struct LayerTest : ModuleTest {
  LayerTest() { module.messages.setLayerSink({}); }

  MifReader& reader = module.layers;
  Unit mif;
  Unit mid;

  // Opens the files as they are.
  void openFiles(std::string_view mifText, std::string_view midText) {
    ASSERT_EQ(mif.open(folder.write("layer.mif", mifText), {}), "");
    ASSERT_EQ(mid.open(folder.write("layer.mid", midText), {}), "");
  }

  // Puts a header before the objects and starts the layer.
  void openLayer(std::string_view objects, std::string_view midText) {
    openFiles(
        "Version 300\nDelimiter \",\"\nColumns 1\n  Value Float\ndata\n\n" + std::string(objects),
        midText);
    ASSERT_TRUE(reader.findObjectSection(mif));
  }
};

}  // namespace nivaro::test
