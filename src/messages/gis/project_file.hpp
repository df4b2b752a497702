// The QGIS project file that lists the layers of a run.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "files/file_units.hpp"
#include "messages/gis/object.hpp"
#include "messages/gis/report.hpp"

namespace nivaro::gis {

// One file to list: what it holds follows from the kind of its first object.
struct ProjectEntry {
  std::string file;
  ObjectKind kind;
  std::int32_t projectCode;
};

class ProjectFile {
 public:
  explicit ProjectFile(FileUnits& files) : files_(files) {}

  // A project that is still open is closed first.
  MaybeFailure open(std::string_view path);
  bool isOpen() const { return unit_ != 0; }

  // Adds the layer's element and its line in the legend, once for each file. The project is whole
  // after each call, so that a run that never closes it leaves one that opens.
  MaybeFailure add(const ProjectEntry& entry);

  MaybeFailure close();

 private:
  MaybeFailure writeFromTail(std::string_view more);
  std::string tail() const;

  FileUnits& files_;
  std::int32_t unit_ = 0;
  std::string path_;
  std::uint64_t tailOffset_ = 0;  // where the list of layers ends
  std::set<std::string> listed_;  // files
  std::vector<std::string> inputIds_;
  std::vector<std::string> outputIds_;
};

}  // namespace nivaro::gis
