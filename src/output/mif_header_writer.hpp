// The header lines of a MIF file that the module writes, up to its columns.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "files/file_units.hpp"
#include "files/termination.hpp"
#include "messages/diagnostics.hpp"
#include "platform/unit.hpp"

namespace nivaro {

struct Bounds {
  double xMin = 0.0;
  double yMin = 0.0;
  double xMax = 0.0;
  double yMax = 0.0;
};

// Where the header comes from: the projection line if there is one, else the file whose header is
// copied, else plane coordinates in metres.
struct MifHeaderSource {
  std::string_view projectionLine{};  // CoordSys ...
  std::string_view headerFile{};
};

// The header in plane coordinates: as long for any bounds, so that others can be written over them.
std::string planeHeader(const Bounds& bounds);

class MifHeaderWriter {
 public:
  MifHeaderWriter(FileUnits& files, Diagnostics& diagnostics, Termination& termination);

  // `bounds` are those of plane coordinates; bounds that the source itself holds are put there.
  // Messages go to the given log. True where the header is a `planeHeader` of them.
  bool miWriteMifHeader(Unit& mif, const MifHeaderSource& source, std::int32_t logUnit,
                        Bounds& bounds);

 private:
  void copyHeader(Unit& mif, std::string_view headerFile, Bounds& bounds);
  void writePlane(Unit& mif, std::string_view headerFile, const Bounds& bounds);
  void readBounds(std::string_view line, Bounds& bounds);

  FileUnits& files_;
  Diagnostics& diagnostics_;
  Termination& termination_;
};

}  // namespace nivaro
