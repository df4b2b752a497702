// What the system knows about a file without opening it.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace nivaro {

// When the file of this path (of the described kind, see host_path) was last saved; none when there
// is no such file or the system does not say. Of several files whose names differ in letter case
// only, the latest.
std::optional<std::filesystem::file_time_type> saveDate(std::string_view path);

}  // namespace nivaro
