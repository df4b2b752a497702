#include "messages/mif_layer_opener.hpp"

#include "files/path.hpp"
#include "messages/mif_header.hpp"
#include "platform/host_path.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {

namespace {

constexpr std::string_view kInput = "I ";
constexpr std::string_view kOutput = "O ";

// `.mif` and `.mid` name a pair; any other extension is a part of its name.
std::string pairName(const std::string& name) {
  const std::string extension = fileExt(name);
  return extension == ".mif" || extension == ".mid" ? fileNamePath(name) : name;
}

}  // namespace

MifLayerOpener::MifLayerOpener(FileUnits& files, Diagnostics& diagnostics, Termination& termination,
                               WorkspaceList& workspace, gis::LayerTable& gisLayers,
                               const GisSettings& settings)
    : files_(files),
      diagnostics_(diagnostics),
      workspace_(workspace),
      gisLayers_(gisLayers),
      settings_(settings),
      saveDate_(files, diagnostics, termination) {}

LayerUnits MifLayerOpener::openInput(std::string_view name, LayerFiles files,
                                     std::int32_t logUnit) {
  for (;;) {
    LayerUnits units;
    const std::string opened = openFiles(name, files, kInput, units);
    const bool isLayer = files == LayerFiles::Pair || fileExt(opened) == ".mid";
    if (!isLayer) return units;
    workspace_.enter(fileNamePath(name), logUnit);
    if (!checkSaveDate(opened, units, logUnit)) continue;
    if (Unit* mif = files_.find(units.mif)) listInProject(*mif);
    return units;
  }
}

LayerUnits MifLayerOpener::openOutput(std::string_view name) {
  LayerUnits units;
  openFiles(name, LayerFiles::Pair, kOutput, units);
  return units;
}

void MifLayerOpener::close(LayerUnits& units) {
  files_.closeFile(units.mif);
  files_.closeFile(units.data);
}

// The name under which the data file was opened.
std::string MifLayerOpener::openFiles(std::string_view name, LayerFiles files,
                                      std::string_view mode, LayerUnits& units) {
  std::string opened(stripped(name));
  if (files == LayerFiles::Pair) {
    const std::string pair = pairName(opened);
    units.mif = files_.openFile(pair + ".mif", mode, 1);
    Unit* mif = files_.find(units.mif);
    if (mode == kInput && mif != nullptr) checkProjection(*mif);
    opened = pair + ".mid";
  }
  units.data = files_.openFile(opened, mode, 1);
  return opened;
}

void MifLayerOpener::checkProjection(Unit& mif) {
  std::string wanted = settings_.hostProjection;
  if (blank(wanted)) return;
  std::string line;
  findProjectionLine(mif, line, diagnostics_);
  mif.rewind();
  if (normaliseHeaderLine(line) == trimmed(wanted)) return;

  Report report = {
      .line1 =
          "WARNING 0305 - Projection of .mif file is different to that specified by the "
          "MI Projection == command.",
      .detail1 = "File \"" + mif.path() + "\"",
      .detail2 = line.empty() ? "It has no CoordSys line." : "Its projection: " + line,
      .detail3 = "The model's projection: " + std::string(trimmed(settings_.hostProjection)),
      .blankLines = 0};
  if (!settings_.projectionIsError) return diagnostics_.deliver(report);
  report.line1 =
      "ERROR 0305 - Projection of .mif file is different to that specified by the MI Projection == "
      "command.";
  report.line2 = "Use \"MI Projection Check == WARNING\" to change message to a WARNING.";
  report.blankLines = 1;
  diagnostics_.fatal(report);
}

void MifLayerOpener::listInProject(Unit& mif) {
  if (!gisLayers_.hasProject()) return;
  const gis::ObjectKind kind = findGeometry(mif);
  mif.rewind();
  gisLayers_.listInput(absolutePath(mif.path()), kind);
}

bool MifLayerOpener::checkSaveDate(const std::string& opened, LayerUnits& units,
                                   std::int32_t logUnit) {
  if (!settings_.checkSaveDate) return true;

  // Another file is open where the person at the console named one.
  const Unit* data = files_.find(units.data);
  const bool isAsNamed = data == nullptr || data->isOpenOn(hostPath(opened).path);
  const std::string layer = isAsNamed ? opened : data->path();
  return saveDate_.run(
      {.layer = layer,
       .table = fileNamePath(layer) + std::string(trimmed(settings_.tableExtension)),
       .isError = settings_.saveDateIsError,
       .logUnit = logUnit},
      units);
}

}  // namespace nivaro
