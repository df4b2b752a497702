// The GIS layers that are open, by identifier: objects and their attribute records are appended to
// them one at a time. The host sees a layer as its slot number in this table; 0 is no layer.
//
// Nothing here returns an error: what goes wrong is printed and ends the run (see report.hpp).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/file_units.hpp"
#include "files/termination.hpp"
#include "messages/gis/layer_settings.hpp"
#include "messages/gis/mif_layer.hpp"
#include "messages/gis/object.hpp"
#include "messages/gis/project_file.hpp"
#include "messages/gis/report.hpp"
#include "messages/gis/shape_layer.hpp"
#include "platform/console.hpp"

namespace nivaro::gis {

class LayerTable {
 public:
  static constexpr std::int32_t kLayers = 100;

  LayerTable(Console& console, FileUnits& files, Termination& termination);

  // Where the library's own lines go beside the screen; nowhere else while it is 0 or less.
  void setLogUnit(std::int32_t unit) { report_.setLogUnit(unit); }

  // Opens a layer on the lowest free slot, whose identifier is returned, or on the slot stated.
  std::int32_t gisOpenLayer(const LayerSettings& settings);
  void gisOpenLayer(std::int32_t layer, const LayerSettings& settings);

  bool isOpen(std::int32_t layer) const;
  LayerFormat format(std::int32_t layer) const;  // None for a slot that is free or does not exist

  // The two lines written after every object in a MIF file; blank ones are not written. Shapefiles
  // have no style.
  void setStyle(std::int32_t layer, std::string_view line1, std::string_view line2);

  // The object, and then its attributes: comma-separated values, texts between double quotes. The
  // files of the layer hold both on the disk once the record is written, and are sound before.
  void gisWriteObject(std::int32_t layer, const Object& object);
  void gisWriteRecord(std::int32_t layer, const Object& object, std::string_view attributes);

  // A layer that is not open is only reported.
  void gisCloseLayer(std::int32_t layer);

  // Every open layer and the project; for the end of a run, which is told so. A layer that cannot be
  // completed does not keep the others from it.
  void gisCloseAll();
  void closeOpenLayers();

  // Lists every layer from its first object on in a QGIS project.
  void openProject(std::string_view path);
  bool hasProject() const { return project_.isOpen(); }

  // Lists a layer of someone else's among the input layers, where there is a project.
  void listInput(const std::string& file, ObjectKind kind);

 private:
  struct Layer {
    std::string name;  // the path of its files without extension
    std::int32_t projectCode = 0;
    std::optional<MifLayer> mif;
    std::optional<ShapeLayer> shapes;
    bool failureReported = false;
  };

  Layer* find(std::int32_t layer);
  Layer& require(std::int32_t layer, std::string_view routine);
  void requireFreeName(const Layer& opened);
  void requireOrderedParts(std::int32_t layer, const Object& object);
  void listInProject(const Layer& layer, const Object& object);
  void list(const ProjectEntry& entry);
  MaybeFailure complete(std::int32_t layer);
  [[noreturn]] void stop(Layer& layer, const Failure& failure);

  FileUnits& files_;
  LibraryReport report_;
  ProjectFile project_;
  std::array<std::optional<Layer>, kLayers> layers_;
};

}  // namespace nivaro::gis
