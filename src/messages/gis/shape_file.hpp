// The geometry of one shapefile: the main file (.shp) and its index (.shx).
#pragma once

#include <cstdint>

#include "messages/gis/bounding_box.hpp"
#include "messages/gis/byte_buffer.hpp"
#include "messages/gis/object.hpp"
#include "platform/unit.hpp"

namespace nivaro::gis {

enum class ShapeType : std::int32_t {
  Null = 0,
  Point = 1,
  Polyline = 3,
  Polygon = 5,
  Multipoint = 8
};

// The files, null where one is not open: a write to it has then failed.
struct ShapeUnits {
  Unit* shp;
  Unit* shx;
};

// Counts, lengths and the box of a shapefile while it grows. All lengths are in 16-bit words, as in
// the files.
class ShapeGeometry {
 public:
  explicit ShapeGeometry(ShapeType type) : type_(type) {}

  // Whether the object can be a record of this file: all shapes of a file are of one type. A file
  // for points without any yet becomes one of multipoints with its first multipoint; then a point
  // is a multipoint of one vertex.
  bool accepts(const Object& object) const;

  // One record and its index entry. An object that cannot be drawn is a null shape; a text object
  // is a point at its anchor. False when a write failed.
  bool add(ShapeUnits files, const Object& object);

  // Headers that tell what has been added, over those in the files.
  bool writeHeaders(ShapeUnits files) const;

  // Headers at the start of empty files.
  bool startFiles(ShapeUnits files) const;

  std::int32_t recordCount() const { return recordCount_; }

 private:
  static constexpr std::int32_t kHeaderLength = 50;

  ByteBuffer header(std::int32_t fileLength) const;
  std::int32_t indexLength() const;

  ShapeType type_;
  std::int32_t recordCount_ = 0;
  std::int32_t shapeCount_ = 0;  // records that are not null
  std::int32_t fileLength_ = kHeaderLength;
  BoundingBox box_;
};

}  // namespace nivaro::gis
