// A whole module of its own for a test: scripted console, recorded end, private message record.
#pragma once

#include <memory>

#include "interface/module.hpp"
#include "support/test_process.hpp"

namespace nivaro::test {

struct TestModule {
  ScriptedConsole console;
  RecordingProcess process;
  // 70 kB: kept off the stack.
  std::unique_ptr<MessageRecord> record = std::make_unique<MessageRecord>();
  Module module{console, process, *record};
};

}  // namespace nivaro::test
