#include "messages/gis/project_file.hpp"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <system_error>

#include "files/path.hpp"
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

// How the layers of one geometry are drawn: colours are of our choosing, so that messages stand out
// on any background.
struct Look {
  std::string_view geometry;
  std::string_view symbol;
  std::string_view symbolLayer;
  std::string_view properties;  // of the symbol layer, each a line
};
constexpr Look kPointLook{
    "Point", "marker", "SimpleMarker",
    "                            <prop k=\"name\" v=\"circle\"/>\n"
    "                            <prop k=\"size\" v=\"2\"/>\n"
    "                            <prop k=\"color\" v=\"255,0,255,255\"/>\n"
    "                            <prop k=\"color_border\" v=\"0,0,0,255\"/>\n"};
constexpr Look kLineLook{"Line", "line", "SimpleLine",
                         "                            <prop k=\"penstyle\" v=\"solid\"/>\n"
                         "                            <prop k=\"width\" v=\"0.5\"/>\n"
                         "                            <prop k=\"color\" v=\"0,0,255,255\"/>\n"};
constexpr Look kRegionLook{
    "Polygon", "fill", "SimpleFill",
    "                            <prop k=\"style\" v=\"no\"/>\n"
    "                            <prop k=\"style_border\" v=\"solid\"/>\n"
    "                            <prop k=\"width_border\" v=\"0.26\"/>\n"
    "                            <prop k=\"color\" v=\"255,255,255,255\"/>\n"
    "                            <prop k=\"color_border\" v=\"0,128,0,255\"/>\n"};

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

std::string mapLayer(const ProjectEntry& entry, const std::string& id) {
  const Look& look = lookOf(entry.kind);
  // Absolute, so that the project opens from wherever it is moved to.
  std::error_code ignored;
  const std::string source =
      std::filesystem::absolute(hostPath(entry.file).path, ignored).lexically_normal().string();
  const auto line = [](std::string_view text) { return std::string(text) + "\n"; };

  return line(
             "        <maplayer minimumScale=\"0\" maximumScale=\"1e+08\" type=\"vector\" "
             "geometry=\"" +
             std::string(look.geometry) + "\" hasScaleBasedVisibilityFlag=\"0\">") +
         line("            <id>" + id + "</id>") +
         line("            <datasource>" + xmlText(source) + "</datasource>") +
         line("            <layername>" + xmlText(fileName(entry.file)) + "</layername>") +
         line("            <provider encoding=\"UTF-8\">ogr</provider>") +
         line("            <renderer-v2 symbollevels=\"0\" type=\"singleSymbol\">") +
         line("                <symbols>") +
         line("                    <symbol alpha=\"1\" type=\"" + std::string(look.symbol) +
              "\" name=\"0\">") +
         line("                        <layer pass=\"0\" class=\"" + std::string(look.symbolLayer) +
              "\" locked=\"0\">") +
         std::string(look.properties) + line("                        </layer>") +
         line("                    </symbol>") + line("                </symbols>") +
         line("            </renderer-v2>") + line("        </maplayer>");
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

// The length of the UTF-8 character that the text begins with; 0 when it begins with none.
std::size_t utf8Length(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  const std::size_t length = first < 0x80                    ? 1
                             : first >= 0xC2 && first < 0xE0 ? 2
                             : first >= 0xE0 && first < 0xF0 ? 3
                             : first >= 0xF0 && first < 0xF5 ? 4
                                                             : 0;
  if (length == 0 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0U) != 0x80U) return 0;
  return length;
}

std::string xmlCharacter(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&apos;";
    default:
      return {static_cast<unsigned char>(c) < 0x20 ? ' ' : c};
  }
}

}  // namespace

std::string xmlText(std::string_view text) {
  std::string xml;
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    if (length == 0) {
      xml += "&#" + std::to_string(static_cast<unsigned char>(text.front())) + ";";
    } else if (length == 1) {
      xml += xmlCharacter(text.front());
    } else {
      xml += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return xml;
}

MaybeFailure ProjectFile::open(std::string_view path) {
  if (auto failure = close()) return failure;
  path_ = path;
  inputIds_.clear();
  outputIds_.clear();
  tailOffset_ = 0;
  unit_ = files_.openFile(path, "BO", 1);
  return writeFromTail(kHead);
}

MaybeFailure ProjectFile::add(const ProjectEntry& entry) {
  if (!isOpen()) return {};
  // The running number keeps layers apart that have the same name in different folders. It has the
  // 17 digits of the program's own identifiers, which takes no identifier of 10 characters or less.
  constexpr int kDigits = 17;
  const auto number = static_cast<std::int64_t>(inputIds_.size() + outputIds_.size()) + 1;
  const std::string id =
      alphanumericOnly(fileName(entry.file), '_') + aintegerPrec0(number, kDigits);
  const bool isInput = std::abs(static_cast<std::int64_t>(entry.projectCode)) == 1;
  (isInput ? inputIds_ : outputIds_).push_back(id);
  return writeFromTail(mapLayer(entry, id));
}

MaybeFailure ProjectFile::close() {
  if (!isOpen()) return {};
  const MaybeFailure failure = writeFromTail("");
  files_.closeFile(unit_);
  unit_ = 0;
  return failure;
}

// The new end is longer than the one that it covers.
MaybeFailure ProjectFile::writeFromTail(std::string_view more) {
  const std::string text = std::string(more) + tail();
  Unit* file = files_.find(unit_);
  if (file == nullptr || !file->overwriteBytes(tailOffset_, std::as_bytes(std::span(text))))
    return Failure{"ERROR 0437 - Could not write QGIS project file \"" + correctSlash(path_) +
                   "\"."};
  tailOffset_ += more.size();
  return {};
}

std::string ProjectFile::tail() const {
  return "    </projectlayers>\n    <legend>\n" +
         legendGroup("Input Layers", "Qt::Checked", inputIds_) +
         legendGroup("Output Layers", "Qt::Unchecked", outputIds_) + "    </legend>\n</qgis>\n";
}

}  // namespace nivaro::gis
