#include "interface/module.hpp"

namespace nivaro {

Module::Module(Console& console_, Process& process_, MessageRecord& record_)
    : console(console_),
      process(process_),
      record(record_),
      termination(console, process),
      files(console, process, units, termination),
      messages(console, units, record),
      diagnostics(console, messages, termination),
      workspace(files, diagnostics),
      spatialCommands(diagnostics),
      controlFile(files, diagnostics, variables, spatialCommands),
      dataset(files, diagnostics) {
  termination.addHook([this] { files.closeAllAtExit(); });
}

}  // namespace nivaro
