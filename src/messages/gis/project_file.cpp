#include "messages/gis/project_file.hpp"

#include <cstddef>
#include <cstdlib>
#include <initializer_list>
#include <span>

#include "files/path.hpp"
#include "messages/gis/xml_text.hpp"
#include "platform/host_path.hpp"
#include "text/number_text.hpp"
#include "text/transform.hpp"

namespace nivaro::gis {

namespace {

constexpr std::string_view kHead =
    "<!DOCTYPE qgis PUBLIC 'http://mrcc.com/qgis.dtd' 'SYSTEM'>\n"
    "<qgis projectname=\"\" version=\"2.0.1-Dufour\">\n"
    "    <title></title>\n"
    "    <projectlayers>\n";

struct Property {
  std::string_view key;
  std::string_view value;
};

// How the layers of one geometry are drawn: in colours that stand out on any background.
constexpr Property kPointProperties[] = {
    {"name", "circle"}, {"size", "2"}, {"color", "255,0,255,255"}, {"color_border", "0,0,0,255"}};
constexpr Property kLineProperties[] = {
    {"penstyle", "solid"}, {"width", "0.5"}, {"color", "0,0,255,255"}};
constexpr Property kRegionProperties[] = {{"style", "no"},
                                          {"style_border", "solid"},
                                          {"width_border", "0.26"},
                                          {"color", "255,255,255,255"},
                                          {"color_border", "0,128,0,255"}};

struct Look {
  std::string_view geometry;
  std::string_view symbol;
  std::string_view symbolLayer;
  std::span<const Property> properties;  // of the symbol layer
};
constexpr Look kPointLook{"Point", "marker", "SimpleMarker", kPointProperties};
constexpr Look kLineLook{"Line", "line", "SimpleLine", kLineProperties};
constexpr Look kRegionLook{"Polygon", "fill", "SimpleFill", kRegionProperties};

const Look& lookOf(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Line:
    case ObjectKind::Polyline:
    case ObjectKind::MultiplePolyline:
      return kLineLook;
    case ObjectKind::Region:
      return kRegionLook;
    default:
      return kPointLook;
  }
}

// Lines of XML, each with four blanks for every level.
class XmlLines {
 public:
  void line(std::size_t level, std::initializer_list<std::string_view> pieces) {
    text_.append(4 * level, ' ');
    for (const std::string_view piece : pieces) text_ += piece;
    text_ += '\n';
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::string mapLayer(const ProjectEntry& entry, const std::string& id) {
  const Look& look = lookOf(entry.kind);
  XmlLines xml;
  xml.line(2, {R"(<maplayer minimumScale="0" maximumScale="1e+08" type="vector" geometry=")",
               look.geometry, R"(" hasScaleBasedVisibilityFlag="0">)"});
  xml.line(3, {"<id>", id, "</id>"});
  // Absolute, so that the project opens from wherever it is moved to.
  xml.line(3, {"<datasource>", xmlText(absolutePath(entry.file)), "</datasource>"});
  xml.line(3, {"<layername>", xmlText(fileName(entry.file)), "</layername>"});
  xml.line(3, {R"(<provider encoding="UTF-8">ogr</provider>)"});
  xml.line(3, {R"(<renderer-v2 symbollevels="0" type="singleSymbol">)"});
  xml.line(4, {"<symbols>"});
  xml.line(5, {R"(<symbol alpha="1" type=")", look.symbol, R"(" name="0">)"});
  xml.line(6, {R"(<layer pass="0" class=")", look.symbolLayer, R"(" locked="0">)"});
  for (const auto& [key, value] : look.properties)
    xml.line(7, {R"(<prop k=")", key, R"(" v=")", value, R"("/>)"});
  xml.line(6, {"</layer>"});
  xml.line(5, {"</symbol>"});
  xml.line(4, {"</symbols>"});
  xml.line(3, {"</renderer-v2>"});
  xml.line(2, {"</maplayer>"});
  return xml.text();
}

std::string legendGroup(std::string_view name, std::string_view checked,
                        const std::vector<std::string>& ids) {
  const std::string check(checked);
  std::string group = "        <legendgroup open=\"true\" checked=\"" + check + "\" name=\"" +
                      std::string(name) + "\">\n";
  for (const std::string& id : ids)
    group += "\t\t\t        <legendlayer drawingOrder=\"-1\" open=\"true\" checked=\"" + check +
             "\">\n"
             "\t\t\t            <filegroup open=\"true\" hidden=\"false\">\n"
             "\t\t\t                <legendlayerfile isInOverview=\"0\" layerid=\"" +
             id +
             "\" visible=\"0\"/>\n"
             "\t\t\t            </filegroup>\n"
             "\t\t\t        </legendlayer>\n";
  return group + "        </legendgroup>\n";
}

}  // namespace

MaybeFailure ProjectFile::open(std::string_view path) {
  if (auto failure = close()) return failure;
  path_ = path;
  listed_.clear();
  inputIds_.clear();
  outputIds_.clear();
  tailOffset_ = 0;
  unit_ = files_.openFile(path, "BO", 1);
  return writeFromTail(kHead);
}

MaybeFailure ProjectFile::add(const ProjectEntry& entry) {
  if (!isOpen() || !listed_.insert(entry.file).second) return {};
  // The running number keeps layers apart that have the same name in different folders. It has the
  // 17 digits of the program's own identifiers, which takes no identifier of 10 characters or less.
  constexpr int kDigits = 17;
  const auto number = static_cast<std::int64_t>(inputIds_.size() + outputIds_.size()) + 1;
  const std::string id =
      alphanumericOnly(fileName(entry.file), '_') + aintegerPrec0(number, kDigits);
  // Codes are signed; 64 bits hold the absolute value of each.
  const bool isInput = std::abs(static_cast<std::int64_t>(entry.projectCode)) == 1;
  (isInput ? inputIds_ : outputIds_).push_back(id);
  return writeFromTail(mapLayer(entry, id));
}

MaybeFailure ProjectFile::close() {
  if (!isOpen()) return {};
  MaybeFailure failure = writeFromTail("");
  files_.closeFile(unit_);
  unit_ = 0;
  return failure;
}

// The new end is longer than the one that it covers.
MaybeFailure ProjectFile::writeFromTail(std::string_view more) {
  const std::string text = std::string(more) + tail();
  Unit* file = files_.find(unit_);
  if (file == nullptr || !file->overwriteBytes(tailOffset_, std::as_bytes(std::span(text)))) {
    unit_ = 0;  // so that the end of the run does not fail for it once more; the pool closes it
    return Failure{"ERROR 0437 - Could not write QGIS project file \"" + correctSlash(path_) +
                   "\"."};
  }
  tailOffset_ += more.size();
  return {};
}

std::string ProjectFile::tail() const {
  return "    </projectlayers>\n    <legend>\n" +
         legendGroup("Input Layers", "Qt::Checked", inputIds_) +
         legendGroup("Output Layers", "Qt::Unchecked", outputIds_) + "    </legend>\n</qgis>\n";
}

}  // namespace nivaro::gis
