#include "messages/gis/shape_file.hpp"

#include <limits>
#include <vector>

#include "messages/gis/ring_order.hpp"

namespace nivaro::gis {

namespace {

constexpr std::int32_t kFileCode = 9994;
constexpr std::int32_t kVersion = 1000;
constexpr std::int32_t kRecordHeaderLength = 4;
constexpr std::int32_t kIndexEntryLength = 4;

void put(ByteBuffer& to, const BoundingBox& box) {
  // A file without a shape has no box; the format has no word for that but zeros.
  const BoundingBox shown = box.isEmpty() ? BoundingBox{{0.0, 0.0}, {0.0, 0.0}} : box;
  to.little(shown.low.x).little(shown.low.y).little(shown.high.x).little(shown.high.y);
}

void put(ByteBuffer& to, Part vertices) {
  for (const Vertex& vertex : vertices) to.little(vertex.x).little(vertex.y);
}

void putType(ByteBuffer& to, ShapeType type) {
  to.little(static_cast<std::int32_t>(type));
}

std::int32_t count(std::size_t size) {
  return static_cast<std::int32_t>(size);
}

// Point objects and what becomes one: a text stands at its anchor.
Part pointsOf(const Object& object) {
  const Part all(object.vertices);
  return object.kind == ObjectKind::Multipoint ? all : all.first(1);
}

void putPoints(ByteBuffer& to, ShapeType type, Part points) {
  putType(to, type);
  // A point has neither box nor count: there is one, and it is its own box.
  if (type == ShapeType::Multipoint) {
    put(to, boundingBox(points));
    to.little(count(points.size()));
  }
  put(to, points);
}

// A polyline or polygon: box, counts, the 0-based start of each part, all vertices.
void putParts(ByteBuffer& to, ShapeType type, const std::vector<Part>& parts) {
  BoundingBox box;
  std::size_t vertexCount = 0;
  for (const Part& part : parts) {
    box.extend(part);
    vertexCount += part.size();
  }
  putType(to, type);
  put(to, box);
  to.little(count(parts.size())).little(count(vertexCount));
  std::size_t start = 0;
  for (const Part& part : parts) {
    to.little(count(start));
    start += part.size();
  }
  for (const Part& part : parts) put(to, part);
}

ByteBuffer shapeContent(ShapeType type, const Object& object) {
  ByteBuffer content;
  if (!isDrawable(object)) {
    putType(content, ShapeType::Null);
  } else if (type == ShapeType::Point || type == ShapeType::Multipoint) {
    putPoints(content, type, pointsOf(object));
  } else if (type == ShapeType::Polygon) {
    // MIF leaves the sense of rings open, so callers need not care; here it tells holes from land.
    const std::vector<std::vector<Vertex>> rings = orderedRings(partsOf(object));
    putParts(content, type, {rings.begin(), rings.end()});
  } else {
    putParts(content, type, partsOf(object));
  }
  return content;
}

}  // namespace

bool ShapeGeometry::accepts(const Object& object) const {
  return object.kind != ObjectKind::Multipoint || type_ != ShapeType::Point || shapeCount_ == 0;
}

bool ShapeGeometry::add(ShapeUnits files, const Object& object) {
  if (files.shp == nullptr || files.shx == nullptr) return false;
  if (isDrawable(object)) {
    if (object.kind == ObjectKind::Multipoint) type_ = ShapeType::Multipoint;
    ++shapeCount_;
    for (const Part& part :
         hasParts(object.kind) ? partsOf(object) : std::vector<Part>{pointsOf(object)})
      box_.extend(part);
  }

  // Lengths are signed numbers of words, so a main file ends at 4 GB.
  const ByteBuffer content = shapeContent(type_, object);
  const auto contentLength = static_cast<std::int32_t>(content.bytes().size() / 2);
  const std::int32_t room = std::numeric_limits<std::int32_t>::max() - fileLength_;
  if (contentLength > room - kRecordHeaderLength) return false;

  // The index tells where in the main file the record begins, its header included.
  ByteBuffer recordHeader;
  recordHeader.big(recordCount_ + 1).big(contentLength);
  ByteBuffer indexEntry;
  indexEntry.big(fileLength_).big(contentLength);

  ++recordCount_;
  fileLength_ += kRecordHeaderLength + contentLength;
  return files.shp->writeBytes(recordHeader.bytes()) && files.shp->writeBytes(content.bytes()) &&
         files.shx->writeBytes(indexEntry.bytes());
}

// The index last: readers take the number of records from it, so it never promises what the main
// file does not hold yet.
bool ShapeGeometry::writeHeaders(ShapeUnits files) const {
  return files.shp != nullptr && files.shx != nullptr &&
         files.shp->overwriteBytes(0, header(fileLength_).bytes()) && files.shp->flush() &&
         files.shx->overwriteBytes(0, header(indexLength()).bytes()) && files.shx->flush();
}

bool ShapeGeometry::startFiles(ShapeUnits files) const {
  return files.shp != nullptr && files.shx != nullptr &&
         files.shp->writeBytes(header(fileLength_).bytes()) && files.shp->flush() &&
         files.shx->writeBytes(header(indexLength()).bytes()) && files.shx->flush();
}

ByteBuffer ShapeGeometry::header(std::int32_t fileLength) const {
  ByteBuffer header;
  header.big(kFileCode).zeros(20).big(fileLength).little(kVersion);
  putType(header, type_);
  put(header, box_);
  header.zeros(32);  // heights and measures, which there are none of
  return header;
}

std::int32_t ShapeGeometry::indexLength() const {
  return kHeaderLength + kIndexEntryLength * recordCount_;
}

}  // namespace nivaro::gis
