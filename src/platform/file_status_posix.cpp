#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "platform/file_status.hpp"
#include "platform/host_path.hpp"

namespace nivaro {

std::optional<SaveDate> saveDate(std::string_view path) {
  HostPath file = hostPath(path);
  if (file.ambiguous.empty()) file.ambiguous.push_back(file.path);

  std::optional<SaveDate> latest;
  for (const std::string& spelling : file.ambiguous) {
    std::error_code error;
    const auto date = std::filesystem::last_write_time(spelling, error).time_since_epoch();
    const SaveDate seconds = std::chrono::floor<std::chrono::seconds>(date).count();
    if (!error && (!latest || seconds > *latest)) latest = seconds;
  }
  return latest;
}

}  // namespace nivaro
