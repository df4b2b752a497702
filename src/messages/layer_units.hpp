// The open files of a layer.
#pragma once

#include <cstdint>

namespace nivaro {

struct LayerUnits {
  std::int32_t mif = 0;   // 0: the layer is a single file, or not open
  std::int32_t data = 0;  // the `.mid` file, or the single one
};

}  // namespace nivaro
