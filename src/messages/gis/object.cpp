#include "messages/gis/object.hpp"

#include <algorithm>
#include <cmath>

#include "text/transform.hpp"

namespace nivaro::gis {

namespace {

// In each part. Readers give up a whole layer for a part with fewer.
std::size_t fewestVertices(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Text:
    case ObjectKind::Region:
      return 3;
    case ObjectKind::Line:
    case ObjectKind::Polyline:
    case ObjectKind::MultiplePolyline:
      return 2;
    default:
      return 1;
  }
}

// Part positions as they are used: at least one part, the first at vertex 1 or later.
std::vector<std::int32_t> raisedParts(const Object& object) {
  std::vector<std::int32_t> first = object.firstVertex;
  if (first.empty()) first.push_back(1);
  first.front() = std::max(first.front(), 1);
  return first;
}

}  // namespace

bool hasParts(ObjectKind kind) {
  return kind == ObjectKind::Line || kind == ObjectKind::Polyline ||
         kind == ObjectKind::MultiplePolyline || kind == ObjectKind::Region;
}

std::int32_t firstBadPart(const Object& object) {
  const std::vector<std::int32_t> first = raisedParts(object);
  const auto vertexCount = static_cast<std::int32_t>(object.vertices.size());
  // A part that begins behind the last vertex would be empty, which no reader takes.
  for (std::size_t i = 1; i < first.size(); ++i)
    if (first[i] <= first[i - 1] || first[i] > vertexCount) return static_cast<std::int32_t>(i) + 1;
  return 0;
}

std::vector<Part> partsOf(const Object& object) {
  const std::vector<std::int32_t> first = raisedParts(object);
  const Part all(object.vertices);
  std::vector<Part> parts;
  for (std::size_t i = 0; i < first.size(); ++i) {
    // The first part alone is not checked against the vertices: it may be empty.
    const auto begin = std::min(static_cast<std::size_t>(first[i] - 1), all.size());
    const auto end = i + 1 < first.size() ? static_cast<std::size_t>(first[i + 1] - 1) : all.size();
    parts.push_back(all.subspan(begin, end - begin));
  }
  return parts;
}

bool isDrawable(const Object& object) {
  if (object.kind == ObjectKind::Unset || object.kind == ObjectKind::None) return false;
  const std::vector<Part> parts =
      hasParts(object.kind) ? partsOf(object) : std::vector<Part>{object.vertices};
  const std::size_t fewest = fewestVertices(object.kind);
  if (std::any_of(parts.begin(), parts.end(), [&](Part part) { return part.size() < fewest; }))
    return false;
  return std::all_of(object.vertices.begin(), object.vertices.end(), [](const Vertex& vertex) {
    return std::isfinite(vertex.x) && std::isfinite(vertex.y);
  });
}

std::string quotedText(std::string_view text, std::size_t limit) {
  std::string quoted = "\"";
  const std::string line = oneLine(text);
  for (std::size_t at = 0; at < line.size(); ++at) {
    const std::size_t copies = line[at] == '"' ? 2 : 1;
    const std::size_t needed = line.compare(at, 2, "\\n") == 0 ? 2 : copies;
    if (quoted.size() + needed + 1 > limit) break;
    quoted.append(copies, line[at]);
  }
  return quoted + '"';
}

}  // namespace nivaro::gis
