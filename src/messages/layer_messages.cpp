#include "messages/layer_messages.hpp"

#include <vector>

#include "messages/gis/mif_text.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {

namespace {

// The widest character column that desktop GIS programs take, and the link of the record.
constexpr int kMessageWidth = 254;
constexpr int kMessageFields = 4;  // hold the longest text in a shapefile's table
constexpr int kLinkWidth = sizeof(MessageRecord::reference_link);

constexpr std::string_view kLineBreak = "\\n";  // as MapInfo writes one inside a text
constexpr std::string_view kSameLine = "  ";

struct Label {
  std::string text;
  int lines = 1;
};

Label joined(const MessageRecord& record, std::string_view separator) {
  Label label{fieldText(record.line1)};
  for (const std::string& line :
       {fieldText(record.line2), fieldText(record.line3), fieldText(record.line4)}) {
    if (line.empty()) continue;
    label.text += separator;
    label.text += line;
    if (separator == kLineBreak) ++label.lines;
  }
  return label;
}

// The target of the label's arrow, and the box right of it, centred on its height.
std::vector<gis::Vertex> labelVertices(const MessagePlacement& at, const MessageRecord& record,
                                       int lines) {
  const double height = record.label_height;
  const double halfBox = lines * 0.5 * height;
  const double left = at.x + height;
  return {{at.x, at.y}, {left, at.y - halfBox}, {left + record.label_box_width, at.y + halfBox}};
}

std::string attributes(const MessageRecord& record) {
  // The text gives way to the link, which is of no use when it is cut.
  std::string link = ",";
  link += record.message_number >= 1 ? gis::quotedText(fieldText(record.reference_link)) : "\"\"";
  return gis::quotedText(joined(record, kSameLine).text, gis::kAttributeLength - link.size()) +
         link;
}

}  // namespace

std::optional<gis::LayerFormat> messageLayersFormat(std::string_view word) {
  struct Row {
    std::string_view word;
    gis::LayerFormat format;
  };
  constexpr Row kWords[] = {{"", gis::LayerFormat::Mif},
                            {"mif", gis::LayerFormat::Mif},
                            {"shp", gis::LayerFormat::Shape},
                            {"both", gis::LayerFormat::Both}};
  for (const auto& [known, format] : kWords)
    if (lowerCase(stripped(word)) == known) return format;
  return std::nullopt;
}

LayerMessages::LayerMessages(gis::LayerTable& layers) : layers_(layers) {}

void LayerMessages::setLayers(std::string_view prefix, std::string_view coordSys,
                              gis::LayerFormat format) {
  prefix_ = trimmed(prefix);
  coordSys_ = trimmed(coordSys);
  format_ = format;
}

void LayerMessages::place(const MessagePlacement& placement, MessageRecord& record) {
  openWhereNeeded(placement.layer, record);
  const gis::LayerFormat format = layers_.format(placement.layer);
  const bool isMif = format == gis::LayerFormat::Mif || format == gis::LayerFormat::Both;
  // Only MIF labels have line breaks; screen and log then show the message as the layer does.
  if (!isMif) record.one_line_flag = logical(true);

  // The style holds the place of this very message, so it is set anew for each.
  const Label label = joined(record, isTrue(record.one_line_flag) ? kSameLine : kLineBreak);
  if (isMif)
    layers_.setStyle(
        placement.layer, "    " + std::string(placement.font),
        "    Label Line Arrow " + gis::position({placement.x, placement.y}, gis::kLabelDecimals));

  gis::Object object;
  object.kind = gis::ObjectKind::Text;
  object.name = "message";
  object.vertices = labelVertices(placement, record, label.lines);
  object.label = gis::quotedText(label.text);
  layers_.gisWriteObject(placement.layer, object);
  layers_.gisWriteRecord(placement.layer, object, attributes(record));
}

void LayerMessages::openWhereNeeded(std::int32_t layer, const MessageRecord& record) {
  // An identifier that names no slot is left to the layer table, which ends the run for it.
  if (layer < 1 || layer > gis::LayerTable::kLayers || layers_.isOpen(layer)) return;
  gis::LayerSettings settings;
  settings.format = format_;
  settings.name = prefix_ + (layer == record.message_layer ? "_messages" : "_messages_check");
  settings.columns = {{"Message", gis::ColumnType::Char, kMessageWidth, 0, kMessageFields},
                      {"Link", gis::ColumnType::Char, kLinkWidth}};
  settings.coordSys = coordSys_;
  settings.lines = settings.regions = false;  // a message is a point among shapes
  layers_.gisOpenLayer(layer, settings);
}

}  // namespace nivaro
