// What the system knows about a file without opening it. Each system has a source of its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace nivaro {

// Whole seconds on the system's own scale, to be compared only: larger is later. Copying and unpacking
// lose what is below a second.
using SaveDate = std::int64_t;

// When the file of this path (as hosts write it, see host_path) was last saved; none when there
// is no such file or the system does not say. Of several files whose names differ in letter case
// only, the latest.
std::optional<SaveDate> saveDate(std::string_view path);

}  // namespace nivaro
