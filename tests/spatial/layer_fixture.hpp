// A layer written, opened and read by a test, with all that its reader needs.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "messages/diagnostics.hpp"
#include "spatial/mif_reader.hpp"
#include "support/temp_folder.hpp"
#include "support/test_process.hpp"

namespace nivaro::test {

struct LayerTest : testing::Test {
  ScriptedConsole console;
  RecordingProcess process;
  std::unique_ptr<MessageRecord> record = std::make_unique<MessageRecord>();
  UnitTable units;
  Termination termination{console, process};
  MessageWriter messages{console, units, *record};
  Diagnostics diagnostics{console, messages, termination};
  MifReader reader{diagnostics};
  TempFolder folder;
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

  bool wasWritten(std::string_view text) const {
    return console.output.find(text) != std::string::npos;
  }
};

}  // namespace nivaro::test
