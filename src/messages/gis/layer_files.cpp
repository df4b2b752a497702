#include "messages/gis/layer_files.hpp"

#include "files/path.hpp"

namespace nivaro::gis {

Failure openFailure(std::string_view file) {
  return {"ERROR 0411 - Could not open GIS layer file \"" + correctSlash(file) + "\"."};
}

Failure headerFailure(std::string_view file) {
  return {"ERROR 0412 - Could not write header of GIS layer file \"" + correctSlash(file) + "\"."};
}

MaybeFailure openLayerFile(FileUnits& files, std::string_view file, std::string_view mode,
                           std::int32_t& unit) {
  constexpr std::int32_t kRecordLength = 1;  // means nothing to files that are not direct access
  unit = files.openFile(file, mode, kRecordLength);
  if (files.find(unit) == nullptr) return openFailure(file);
  return {};
}

}  // namespace nivaro::gis
