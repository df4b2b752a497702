#include "messages/workspace_list.hpp"

#include <algorithm>

#include "text/blank_padded.hpp"

namespace nivaro {

WorkspaceList::WorkspaceList(FileUnits& files, Diagnostics& diagnostics)
    : files_(files), diagnostics_(diagnostics) {}

void WorkspaceList::open(std::string_view fileName, std::string_view simulationName) {
  layers_.clear();
  fileName_ = fileName;
  unit_ = files_.openFile(fileName_, "O ", 80);
  write("!Workspace");
  write("!Version 600");
  write("!Charset WindowsLatin1");
  write("!Contains morphology input layers from NIVARO simulation \"" +
        std::string(trimmed(simulationName)) + "\"");
}

void WorkspaceList::enter(const std::string& layer, std::int32_t logUnit) {
  if (unit_ < 1) return;
  if (std::ranges::find(layers_, layer) != layers_.end()) return;

  if (layers_.size() + 1 >= kCapacity) {
    constexpr std::string_view warning =
        "WARNING 0317 - Exceeded limit of input layers for MI workspace (.wor may not be complete)";
    diagnostics_.console().line(warning);
    if (logUnit >= 1) diagnostics_.messages().toUnit(logUnit, warning);
    layers_.resize(kCapacity - 1);
  }
  layers_.push_back(layer);
  write("Open Table \"" + std::string(trimmed(layer)) + "\"");
}

void WorkspaceList::close() {
  files_.closeFile(unit_);
  unit_ = kClosed;
}

void WorkspaceList::write(std::string_view line) {
  Unit* file = files_.find(unit_);
  if (file == nullptr) return;
  file->writeRecord(line);
  file->flush();
  diagnostics_.requireWritten(file, fileName_);
}

}  // namespace nivaro
