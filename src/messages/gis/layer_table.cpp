#include "messages/gis/layer_table.hpp"

#include <algorithm>

#include "files/path.hpp"
#include "messages/gis/column.hpp"
#include "messages/gis/layer_files.hpp"
#include "platform/fixed_field.hpp"
#include "platform/support.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro::gis {

namespace {

constexpr const char* kMif = ".mif";
constexpr const char* kShape = ".shp";
constexpr std::int32_t kInputCode = 1;

std::string withContact(std::string_view text) {
  return std::string(text) + std::string(kSupportAddress);
}

}  // namespace

LayerTable::LayerTable(Console& console, FileUnits& files, Termination& termination)
    : files_(files), report_(console, files, termination), project_(files) {}

// ---- Opening ----

std::int32_t LayerTable::gisOpenLayer(const LayerSettings& settings) {
  const auto free = std::find(layers_.begin(), layers_.end(), std::nullopt);
  const auto layer = static_cast<std::int32_t>(free - layers_.begin()) + 1;
  gisOpenLayer(layer, settings);
  return layer;
}

void LayerTable::gisOpenLayer(std::int32_t layer, const LayerSettings& settings) {
  if (layer > kLayers) {
    report_.stop({"ERROR 0251 - Cannot have more than " + std::to_string(kLayers) +
                  " GIS layers open at once."});
  }
  if (layer < 1 || isOpen(layer)) {
    report_.stop({withContact("Should not be here gisOpenLayer[gisID=" + std::to_string(layer) +
                              "] - please contact ")});
  }
  if (const std::string fault = columnsFault(settings.columns); !fault.empty()) {
    report_.stop({"ERROR 0413 - Columns of GIS layer \"" + correctSlash(settings.name) +
                  "\" are not valid: " + fault + "."});
  }
  // The slot is taken when all files are there: a layer opened in part is none to close.
  Layer opened;
  opened.name = settings.name;
  opened.projectCode = settings.projectCode;
  if (settings.format != LayerFormat::Shape) opened.mif.emplace(files_);
  if (settings.format != LayerFormat::Mif) opened.shapes.emplace(files_);
  requireFreeName(opened);
  MaybeFailure failure;
  if (opened.mif) failure = opened.mif->open(settings);
  if (!failure && opened.shapes) failure = opened.shapes->open(settings);
  if (failure) report_.stop(*failure);
  layers_[static_cast<std::size_t>(layer - 1)].emplace(std::move(opened));
}

// The opening dialogue would offer to close the other layer's files under it.
void LayerTable::requireFreeName(const Layer& opened) {
  const bool isTaken = std::any_of(layers_.begin(), layers_.end(), [&](const auto& other) {
    return other && upperCase(other->name) == upperCase(opened.name) &&
           ((other->mif && opened.mif) || (other->shapes && opened.shapes));
  });
  if (isTaken || stripped(opened.name).empty())
    report_.stop(openFailure(opened.name + (opened.mif ? kMif : kShape)));
}

void LayerTable::openProject(std::string_view path) {
  if (const MaybeFailure failure = project_.open(path)) report_.stop(*failure);
}

// ---- Slots ----

LayerTable::Layer* LayerTable::find(std::int32_t layer) {
  if (!isOpen(layer)) return nullptr;
  return &*layers_[static_cast<std::size_t>(layer - 1)];
}

// The open layer, or the end of the run with the name of the routine that was called.
LayerTable::Layer& LayerTable::require(std::int32_t layer, std::string_view routine) {
  Layer* found = find(layer);
  if (found != nullptr) return *found;
  // All identifiers below 1 are "no layer".
  report_.stop({withContact("Should not be here " + std::string(routine) + "[gisID=" +
                            std::to_string(std::max(layer, 0)) + "] - please contact ")});
}

bool LayerTable::isOpen(std::int32_t layer) const {
  return layer >= 1 && layer <= kLayers && layers_[static_cast<std::size_t>(layer - 1)];
}

LayerFormat LayerTable::format(std::int32_t layer) const {
  if (!isOpen(layer)) return LayerFormat::None;
  const Layer& found = *layers_[static_cast<std::size_t>(layer - 1)];
  if (found.mif && found.shapes) return LayerFormat::Both;
  return found.mif ? LayerFormat::Mif : LayerFormat::Shape;
}

void LayerTable::setStyle(std::int32_t layer, std::string_view line1, std::string_view line2) {
  Layer* found = find(layer);
  if (found != nullptr && found->mif) found->mif->setStyle(line1, line2);
}

// ---- Writing ----

void LayerTable::gisWriteObject(std::int32_t id, const Object& object) {
  Layer& layer = require(id, "gisWriteObject");
  if (hasParts(object.kind)) requireOrderedParts(id, object);
  if (layer.mif && object.kind == ObjectKind::Unset) {
    stop(layer, {withContact("ERROR 0350 - Trying to write a MIF object that is not yet supported."
                             "  Please contact ")});
  }
  MaybeFailure failure;
  if (layer.mif) failure = layer.mif->writeObject(object);
  if (!failure && layer.shapes) failure = layer.shapes->writeObject(object);
  if (failure) stop(layer, *failure);
  listInProject(layer, object);
}

void LayerTable::gisWriteRecord(std::int32_t id, const Object& object,
                                std::string_view attributes) {
  Layer& layer = require(id, "gisWriteRecord");
  MaybeFailure failure;
  if (layer.mif) failure = layer.mif->writeRecord(object, attributes);
  if (!failure && layer.shapes) failure = layer.shapes->writeRecord(object, attributes);
  if (failure) stop(layer, *failure);
}

void LayerTable::requireOrderedParts(std::int32_t id, const Object& object) {
  const std::int32_t bad = firstBadPart(object);
  if (bad == 0) return;
  const auto value = [](std::string_view label, std::int64_t number) {
    return std::string(label) + integerField(number, 5);
  };
  report_.stop({withContact("Should not be here [gisO_%ir(i) <= gisO_%ir(i-1)] - please contact "),
                value("GIS Layer   =", id), value("i           =", bad),
                value("gisO_%ir(i) =", object.firstVertex[static_cast<std::size_t>(bad - 1)]),
                value("gisO_%nr    =", static_cast<std::int64_t>(object.firstVertex.size()))});
}

// A file is listed with its first object, since only that tells how it is to be drawn. Each file of
// a shapefile layer is a layer of its own to the project.
void LayerTable::listInProject(const Layer& layer, const Object& object) {
  if (!project_.isOpen() || !isDrawable(object)) return;
  if (layer.mif) list({layer.name + kMif, object.kind, layer.projectCode});
  if (!layer.shapes) return;
  const std::string suffix(subLayerSuffix(object.kind));
  list({layer.name + suffix + kShape, object.kind, layer.projectCode});
}

void LayerTable::listInput(const std::string& file, ObjectKind kind) {
  list({file, kind, kInputCode});
}

void LayerTable::list(const ProjectEntry& entry) {
  if (const MaybeFailure failure = project_.add(entry)) report_.stop(*failure);
}

// The layer cannot be completed either; closing it says nothing more.
void LayerTable::stop(Layer& layer, const Failure& failure) {
  layer.failureReported = true;
  report_.stop(failure);
}

// ---- Closing ----

void LayerTable::gisCloseLayer(std::int32_t id) {
  if (!isOpen(id)) {
    report_.print(0, {withContact("SOFTWARE CHECK - Trying to close a GIS Layer that's not open."
                                  "  Please contact ")});
    return;
  }
  if (const MaybeFailure failure = complete(id)) report_.stop(*failure);
}

void LayerTable::gisCloseAll() {
  report_.print(1, {"Closing any unclosed GIS layers..."});
  closeOpenLayers();
}

void LayerTable::closeOpenLayers() {
  MaybeFailure first;
  for (std::int32_t id = 1; id <= kLayers; ++id) {
    if (!isOpen(id)) continue;
    const MaybeFailure failure = complete(id);
    if (failure && !first) first = failure;
  }
  const MaybeFailure projectFailure = project_.close();
  if (projectFailure && !first) first = projectFailure;
  if (first) report_.stop(*first);
}

// Closes the layer's files and frees its slot.
MaybeFailure LayerTable::complete(std::int32_t id) {
  std::optional<Layer>& layer = layers_[static_cast<std::size_t>(id - 1)];
  const auto tell = [&](const char* extension) {
    report_.print(1, {"Closing GIS Layer " + std::to_string(id) + " [" +
                      correctSlash(layer->name + extension) + "]..."});
  };
  MaybeFailure failure;
  if (layer->mif) {
    tell(kMif);
    failure = layer->mif->close();
  }
  if (layer->shapes) {
    tell(kShape);
    const MaybeFailure other = layer->shapes->close();
    if (!failure) failure = other;
  }
  const bool isNews = failure && !layer->failureReported;
  layer.reset();
  return isNews ? failure : MaybeFailure();
}

}  // namespace nivaro::gis
