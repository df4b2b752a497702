// Files in a folder of their own, with a scripted console and a recorded end of the run.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "files/file_units.hpp"
#include "support/temp_folder.hpp"
#include "support/test_process.hpp"

namespace nivaro::test {

struct FilesTest : testing::Test {
  TempFolder folder;
  ScriptedConsole console;
  std::string& output = console.output;
  RecordingProcess process;
  UnitTable units;
  Termination termination{console, process};
  FileUnits files{console, process, units, termination};
};

}  // namespace nivaro::test
