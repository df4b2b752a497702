// A whole module of its own for a test: scripted console, recorded end, private message record.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "interface/module.hpp"
#include "support/temp_folder.hpp"
#include "support/test_process.hpp"

namespace nivaro::test {

struct TestModule {
  ScriptedConsole console;
  RecordingProcess process;
  // 70 kB: kept off the stack.
  std::unique_ptr<MessageRecord> record = std::make_unique<MessageRecord>();
  Module module{console, process, *record};
};

// A test with such a module, a folder, and the module's log "run.mlf" in it, unit 2001.
struct ModuleTest : testing::Test, TestModule {
  ModuleTest() {
    module.files.initFileUnits(2000);
    module.logUnit = record->log_unit = module.files.openFile(folder.path("run.mlf"), "O ", 1);
    console.output.clear();
  }

  bool shown(std::string_view text) const { return console.shows(text); }
  std::string log() const { return folder.read("run.mlf"); }

  TempFolder folder;
};

}  // namespace nivaro::test
