// GIS layers written object by object: MIF pairs are read back, shapefiles are taken apart. Sections:
// "layer" (shape, style, what is opened), "columns" (name, type, width, decimals, fields on each line),
// "object" as often as wanted: a line of kind and first vertices, a line of coordinates, a line of
// attributes, a line that is the label.
#include <bit>
#include <cmath>
#include <cstring>

#include "fuzz/fuzz_input.hpp"
#include "platform/byte_order.hpp"
#include "text/blank_padded.hpp"
#include "text/keyword.hpp"

namespace nivaro::fuzz {
namespace {

using namespace nivaro::gis;

std::vector<Column> readColumns(std::string_view text) {
  std::vector<Column> columns{{"Number", ColumnType::Integer}};
  for (const std::string_view line : linesOf(text)) {
    const std::string_view name = line.substr(0, line.find(' '));
    // Readers take the first line with this word for the end of the header.
    if (flagExists(name, "data")) continue;
    Numbers numbers(line.substr(name.size()));
    columns.push_back({std::string(name), static_cast<ColumnType>(numbers.upTo(6)),
                       numbers.upTo(300), numbers.upTo(20), numbers.upTo(4)});
  }
  return columns;
}

struct Written {
  Object object;
  std::string attributes;
};

Written readObject(std::string_view text, std::size_t number) {
  std::vector<std::string_view> lines = linesOf(text);
  lines.resize(4);
  Written written;
  Numbers head(lines[0]);
  written.object.kind = static_cast<ObjectKind>(head.upTo(8));
  const std::int32_t parts = head.upTo(5);
  written.object.firstVertex.clear();
  for (std::int32_t i = 0; i < parts; ++i) written.object.firstVertex.push_back(head.integer());
  Numbers coordinates(lines[1]);
  const std::int32_t vertices = coordinates.upTo(40);
  for (std::int32_t i = 0; i < vertices; ++i) {
    const double x = coordinates.real();
    written.object.vertices.push_back({x, coordinates.real()});
  }
  written.attributes = std::to_string(number) + "," + std::string(lines[2]);
  written.object.label = quotedText(lines[3]);
  written.object.name = "object";
  return written;
}

bool isNear(double written, double read) {
  return std::abs(written - read) <= 0.5000001e-6 + std::abs(written) * 1e-15;
}

// The vertices of the section just read are those of a part, behind which a closing copy may stand.
bool hasVertices(const MifReader& reader, Part part) {
  if (reader.x().size() < part.size()) return false;
  for (std::size_t i = 0; i < part.size(); ++i)
    if (!isNear(part[i].x, reader.x()[i]) || !isNear(part[i].y, reader.y()[i])) return false;
  return true;
}

// The vertices that a section of an object was written with; what is no line gives as many as were read.
Part sectionOf(const Object& object, std::size_t section, std::size_t read) {
  const Part all(object.vertices);
  if (object.kind == ObjectKind::Multipoint) return all.subspan(section, 1);
  if (object.kind == ObjectKind::MultiplePolyline) return partsOf(object)[section];
  if (object.kind == ObjectKind::Region) return partsOf(object).front();
  return object.kind == ObjectKind::Polyline ? all : all.first(read);
}

// The MIF/MID pair has each object that was written, in order, by the module's own reader.
void requireReadable(const std::vector<Written>& written) {
  FuzzModule run;
  MifReader& reader = run.module.layers;
  Unit mif;
  Unit mid;
  require(mif.open("layer.mif", {}).empty() && mid.open("layer.mid", {}).empty(),
          "the pair is there");
  const bool wasRead = completes([&] {
    reader.findObjectSection(mif);
    for (std::size_t i = 0; i < written.size(); ++i) {
      const Object& object = written[i].object;
      require(reader.objectsLeft(mif, mid), "no object is missing");
      const MifObject* found = reader.nextObject(mif, mid);
      require(reader.value() == static_cast<double>(i + 1), "records belong to their objects");
      // What is not used is passed over up to the next object.
      require(found != nullptr || !isDrawable(object) || object.kind == ObjectKind::Text,
              "geometry is not ignored");
      for (std::int32_t section = 0; found != nullptr && section < found->sections; ++section)
        if (reader.readSection(mif))
          require(hasVertices(reader, sectionOf(object, static_cast<std::size_t>(section),
                                                reader.x().size())),
                  "vertices are those written");
    }
  });
  require(wasRead, "the module reads what it writes");
}

struct Bytes {
  std::string all;

  std::size_t size() const { return all.size(); }
  template <typename Number>
  Number number(std::size_t at, ByteOrder order = ByteOrder::Little) const {
    require(at + sizeof(Number) <= size(), "nothing is cut off");
    Number value;
    std::memcpy(&value, all.data() + at, sizeof value);
    return std::bit_cast<Number>(encoded(value, order));
  }
  std::int32_t big(std::size_t at) const { return number<std::int32_t>(at, ByteOrder::Big); }
  std::int32_t little(std::size_t at) const { return number<std::int32_t>(at); }
  std::size_t little16(std::size_t at) const { return number<std::uint16_t>(at); }
  double real(std::size_t at) const { return number<double>(at); }
  std::uint8_t byte(std::size_t at) const { return number<std::uint8_t>(at); }
};

void requireSoundShape(const Bytes& shp, std::size_t at, std::int32_t words) {
  const auto content = static_cast<std::size_t>(words) * 2;
  const std::int32_t type = shp.little(at);
  require(type == 0 || type == shp.little(32), "shapes are of the file's type");
  if (type == 0) return require(content == 4, "a null shape is its type");
  if (type == 1) return require(content == 20, "a point is two numbers");
  const bool hasPartTable = type != 8;
  const std::size_t counts = at + 36;
  const auto parts = static_cast<std::size_t>(hasPartTable ? shp.little(counts) : 0);
  const auto points = static_cast<std::size_t>(shp.little(counts + (hasPartTable ? 4 : 0)));
  const std::size_t vertices = counts + (hasPartTable ? 8 + 4 * parts : 4);
  require(at + content == vertices + 16 * points, "counts are those of what follows");
  for (std::size_t i = 1; i < parts; ++i)
    require(shp.little(counts + 8 + 4 * i) > shp.little(counts + 4 + 4 * i), "parts are in order");
  for (std::size_t i = 0; i < points; ++i)
    for (std::size_t axis = 0; axis < 2; ++axis) {
      const double value = shp.real(vertices + 16 * i + 8 * axis);
      require(shp.real(at + 4 + 8 * axis) <= value && value <= shp.real(at + 20 + 8 * axis),
              "a shape lies in its box");
      require(shp.real(36 + 8 * axis) <= value && value <= shp.real(52 + 8 * axis),
              "a shape lies in the file's box");
    }
}

void requireSoundShapes(const Folder& folder, const std::string& name) {
  if (!std::filesystem::exists(folder.path(name + ".dbf"))) return;
  const Bytes shp{folder.bytes(name + ".shp")};
  const Bytes shx{folder.bytes(name + ".shx")};
  const Bytes dbf{folder.bytes(name + ".dbf")};
  require(shp.size() == 2 * static_cast<std::size_t>(shp.big(24)) &&
              shx.size() == 2 * static_cast<std::size_t>(shx.big(24)),
          "files have their stated length");
  const std::size_t records = (shx.size() - 100) / 8;
  std::size_t at = 100;
  for (std::size_t i = 0; i < records; ++i) {
    const std::int32_t words = shp.big(at + 4);
    require(shx.big(100 + 8 * i) == static_cast<std::int32_t>(at / 2) &&
                shx.big(104 + 8 * i) == words && shp.big(at) == static_cast<std::int32_t>(i + 1),
            "the index points at the records");
    requireSoundShape(shp, at + 8, words);
    at += 8 + 2 * static_cast<std::size_t>(words);
  }
  require(at == shp.size(), "no bytes behind the last record");

  require(static_cast<std::size_t>(dbf.little(4)) == records, "a table record for each shape");
  const std::size_t end = dbf.little16(8) + records * dbf.little16(10);
  require(dbf.size() == end + 1 && dbf.byte(end) == 0x1A, "the table has its stated length");
  std::size_t length = 1;
  for (std::size_t field = 32; field + 32 < dbf.little16(8); field += 32)
    length += dbf.byte(field + 16);
  require(length == dbf.little16(10), "fields make up the record");
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  FuzzModule run;
  LayerTable& layers = run.module.gisLayers;
  run.module.files.initFileUnits(2000);
  Numbers numbers(input.text("layer"));
  LayerSettings settings;
  settings.name = "layer";
  settings.format = numbers.flag() ? LayerFormat::Shape : LayerFormat::Mif;
  for (bool* opened : {&settings.points, &settings.lines, &settings.regions})
    *opened = !numbers.flag();
  settings.projection = numbers.flag() ? "GEOGCS[]" : "";
  const bool hasStyle = numbers.flag();
  const bool hasProject = numbers.flag();
  settings.columns = readColumns(input.text("columns"));

  std::vector<Written> written;
  const bool isWhole = completes([&] {
    if (hasProject) layers.openProject("project.qgs");
    const std::int32_t layer = layers.gisOpenLayer(settings);
    if (hasStyle) layers.setStyle(layer, "    Symbol (35,0,12)", "    ");
    for (const Section& section : input.sections()) {
      if (section.name != "object") continue;
      Written next = readObject(section.text, written.size() + 1);
      layers.gisWriteObject(layer, next.object);
      layers.gisWriteRecord(layer, next.object, next.attributes);
      written.push_back(std::move(next));
    }
    layers.gisCloseLayer(layer);
  });

  if (isWhole && settings.format == LayerFormat::Mif) requireReadable(written);
  for (const char* suffix : {"_P", "_L", "_R"})
    requireSoundShapes(folder, std::string("layer") + suffix);
}

}  // namespace nivaro::fuzz
