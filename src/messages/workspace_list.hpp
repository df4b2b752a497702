// The MapInfo workspace that lists the input layers of the run, each once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "files/file_units.hpp"
#include "messages/diagnostics.hpp"

namespace nivaro {

class WorkspaceList {
 public:
  // The layers that a workspace has room for. The last place is never full: a layer that gets it is
  // warned of, and replaces the one there.
  static constexpr std::size_t kCapacity = 1000;

  WorkspaceList(FileUnits& files, Diagnostics& diagnostics);

  // Opens the workspace file, writes its header and forgets the layers of an earlier one.
  void open(std::string_view fileName, std::string_view simulationName);

  // Enters an input layer, by its path and name without extension, where it is not in the list yet.
  // Nothing happens while no workspace is open.
  void enter(const std::string& layer, std::int32_t logUnit);

  // Closes it for good: the run's last domain has read its layers.
  void close();

 private:
  static constexpr std::int32_t kClosed = -1;

  void write(std::string_view line);

  FileUnits& files_;
  Diagnostics& diagnostics_;
  std::int32_t unit_ = 0;
  std::string fileName_;
  std::vector<std::string> layers_;  // path and name without extension
};

}  // namespace nivaro
