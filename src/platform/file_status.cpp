#include "platform/file_status.hpp"

#include <string>
#include <system_error>
#include <vector>

#include "platform/host_path.hpp"

namespace nivaro {

std::optional<std::filesystem::file_time_type> saveDate(std::string_view path) {
  HostPath file = hostPath(path);
  if (file.ambiguous.empty()) file.ambiguous.push_back(file.path);

  std::optional<std::filesystem::file_time_type> latest;
  for (const std::string& spelling : file.ambiguous) {
    std::error_code error;
    const auto date = std::filesystem::last_write_time(spelling, error);
    if (!error && (!latest || date > *latest)) latest = date;
  }
  return latest;
}

}  // namespace nivaro
