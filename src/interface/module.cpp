#include "interface/module.hpp"

namespace nivaro {

Module::Module(Console& console_, Process& process_, MessageRecord& record_)
    : console(console_),
      process(process_),
      record(record_),
      termination(console, process),
      files(console, process, units, termination),
      gisLayers(console, files, termination),
      messages(console, units, record),
      layerMessages(gisLayers),
      diagnostics(console, messages, termination),
      workspace(files, diagnostics),
      spatialCommands(diagnostics),
      controlFile(files, diagnostics, variables, spatialCommands),
      dataset(files, diagnostics) {
  messages.setLayerSink([this](const MessagePlacement& placement, MessageRecord& message) {
    layerMessages.place(placement, message);
  });
  termination.addHook([this] { gisLayers.gisCloseAll(); });
  termination.addHook([this] { files.closeAllAtExit(); });
}

}  // namespace nivaro
