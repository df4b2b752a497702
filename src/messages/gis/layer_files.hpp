// Opening one file of a layer, and what is said when that or its header fails.
#pragma once

#include <cstdint>
#include <string_view>

#include "files/file_units.hpp"
#include "messages/gis/report.hpp"

namespace nivaro::gis {

Failure openFailure(std::string_view file);
Failure headerFailure(std::string_view file);

// Sets `unit` to the opened file's; 0 when it could not be opened.
MaybeFailure openLayerFile(FileUnits& files, std::string_view file, std::string_view mode,
                           std::int32_t& unit);

}  // namespace nivaro::gis
