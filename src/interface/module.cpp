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
      layerOpener(files, diagnostics, termination, workspace, gisLayers, gisSettings),
      layers(diagnostics),
      spatialCommands(files, diagnostics, layerOpener, layers),
      controlFile(files, diagnostics, variables, spatialCommands),
      dataset(files, diagnostics),
      checkLayer(files, diagnostics, termination, layerOpener) {
  messages.setLayerSink([this](const MessagePlacement& placement, MessageRecord& message) {
    layerMessages.place(placement, message);
  });
  termination.addHook([this] { gisLayers.gisCloseAll(); });
  termination.addHook([this] { files.closeAllAtExit(); });
}

}  // namespace nivaro
