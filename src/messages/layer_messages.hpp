// Messages as labelled objects on the GIS layers that the host chose for them, so that a modeller
// sees on the map where a message belongs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "messages/gis/layer_table.hpp"
#include "messages/record.hpp"
#include "messages/writer.hpp"

namespace nivaro {

// The format that a word names, in any letter case: mif, shp or both; a blank one is mif. None for
// any other word.
std::optional<gis::LayerFormat> messageLayersFormat(std::string_view word);

class LayerMessages {
 public:
  explicit LayerMessages(gis::LayerTable& layers);

  // Where layers that are opened here go, their CoordSys line (blank for none) and their format.
  void setLayers(std::string_view prefix, std::string_view coordSys, gis::LayerFormat format);

  // Puts the message of the record on its layer: a label, an arrow to the place and an attribute
  // record. A layer of the host's choice that is not open is opened. On a layer without a MIF file
  // the message gets one line, also where it is printed afterwards.
  void place(const MessagePlacement& placement, MessageRecord& record);

 private:
  void openWhereNeeded(std::int32_t layer, const MessageRecord& record);

  gis::LayerTable& layers_;
  std::string prefix_;
  std::string coordSys_;
  gis::LayerFormat format_ = gis::LayerFormat::Mif;
};

}  // namespace nivaro
