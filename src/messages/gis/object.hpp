// The object that a caller puts on a GIS layer: what it is, its parts and its vertices.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nivaro::gis {

// `Unset` is a record that was reset and not filled; it cannot be written. `None` is an object
// without geometry, which has an attribute record all the same.
enum class ObjectKind {
  Unset,
  None,
  Point,
  Line,
  Polyline,
  MultiplePolyline,
  Region,
  Text,
  Multipoint
};

struct Vertex {
  double x = 0.0;
  double y = 0.0;
};

// Label texts and attribute records are held to this many characters; a caller that quotes a text
// cuts it so that its closing quote still fits (see `quotedText`).
inline constexpr std::size_t kAttributeLength = 1000;

struct Object {
  ObjectKind kind = ObjectKind::Unset;

  // 1-based index of the first vertex of each part, strictly increasing. Lines, polylines and
  // regions have parts; no entry, or a first one below 1, stands for 1.
  std::vector<std::int32_t> firstVertex{1};

  // A text object has three: its anchor, then the lower-left and upper-right corners of its box.
  std::vector<Vertex> vertices;

  std::string label;  // text objects: the label, between double quotes
  std::string name;   // what the object is called in messages
};

using Part = std::span<const Vertex>;

// Whether the kind has parts (`partsOf`).
bool hasParts(ObjectKind kind);

// The 1-based number of the first part that does not begin behind the one before it, or behind the
// last vertex; 0 when all parts are in order.
std::int32_t firstBadPart(const Object& object);

// The vertices of each part; the parts must be in order.
std::vector<Part> partsOf(const Object& object);

// Whether there is something to draw: not a null object, enough vertices in each part, all of them
// finite. A message from a run that has gone to infinity must not make its layer unreadable, so such
// an object is written as a null object.
bool isDrawable(const Object& object);

// The text between double quotes, those inside doubled, in at most `limit` characters, and not cut
// within the "\n" that breaks a label's line. Line breaks and other control characters but the tab are
// blanks in it.
std::string quotedText(std::string_view text, std::size_t limit = kAttributeLength);

}  // namespace nivaro::gis
