#include "interface/start_up.hpp"

#include <string>

#include "platform/support.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {

namespace {

// Unit numbers from 2001 on keep clear of the host's own.
constexpr std::int32_t kBaseUnit = 2000;

std::string fileName(std::string_view prefix, std::string_view suffix) {
  return std::string(trimmed(prefix)) + std::string(suffix);
}

void writeBanner(Module& module) {
  module.diagnostics.deliver({.line1 = "NIVARO MORPHOLOGY Module Build 2007-07-AA",
                              .line2 = "Support: " + std::string(kSupportAddress)});
}

void warnOfFormat(Module& module, std::string_view word) {
  module.diagnostics.deliver({.line1 = "WARNING 0438 - NIVARO_MESSAGE_LAYERS is \"" +
                                       oneLine(trimmed(word)) +
                                       "\", which is not \"mif\", \"shp\" or \"both\".",
                              .line2 = "Messages layers are written as \"mif\"."});
}

// Who doubts the engine's results may have them from the plain step, or from another kind of processor.
void chooseProcessor(Module& module, std::string_view word) {
  const std::string wanted = lowerCase(stripped(word));
  if (wanted.empty()) return;
  for (const auto& [name, processor] : kProcessors) {
    if (wanted != name || !isSupported(processor)) continue;
    module.stepWorkspace = StepWorkspace(processor);
    module.diagnostics.deliver({.line1 = "NIVARO_PROCESSOR: morphology steps run on " + wanted});
    return;
  }
  module.diagnostics.deliver(
      {.line1 = "WARNING 0440 - NIVARO_PROCESSOR is \"" + oneLine(trimmed(word)) +
                "\", which is no kind of processor that this machine has.",
       .line2 = "Steps run on the fastest kind.  Known are plain, portable, avx2 and avx512."});
}

}  // namespace

void startUp(Module& module, const StartUpArguments& arguments) {
  // Files that an earlier start-up left open; their units are about to be given away.
  module.gisLayers.closeOpenLayers();
  module.console.line("");
  module.console.line("TRANSFERRED TO MORPHOLOGY MODULE");
  module.files.initFileUnits(kBaseUnit);

  module.logUnit = module.files.openFile(fileName(arguments.logPrefix, ".mlf"), "O ", 1);
  module.record.log_unit = module.logUnit;
  module.gisLayers.setLogUnit(module.logUnit);
  writeBanner(module);
  chooseProcessor(module, arguments.processor);

  module.workspace.open(fileName(arguments.outputPrefix, "_mor.wor"), arguments.simulationName);
  module.gisSettings = arguments.gis;
  const auto format = messageLayersFormat(arguments.messageLayers);
  module.layerMessages.setLayers(arguments.logPrefix, arguments.gis.checkLayerHeaderSource,
                                 format.value_or(gis::LayerFormat::Mif));
  module.dataset.open(fileName(arguments.outputPrefix, "_morDH.dat"));

  if (!format) warnOfFormat(module, arguments.messageLayers);
  if (format.value_or(gis::LayerFormat::Mif) != gis::LayerFormat::Mif)
    module.gisLayers.openProject(fileName(arguments.logPrefix, "_messages.qgs"));
}

}  // namespace nivaro
