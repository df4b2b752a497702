// Messages as labelled objects on the GIS layers that the host chose for them, so that a modeller
// sees on the map where a message belongs.
#pragma once

#include <string>
#include <string_view>

#include "messages/gis/layer_table.hpp"
#include "messages/record.hpp"
#include "messages/writer.hpp"

namespace nivaro {

class LayerMessages {
 public:
  explicit LayerMessages(gis::LayerTable& layers);

  // Where layers that are opened here go, and their CoordSys line; blank for none.
  void setLayers(std::string_view prefix, std::string_view coordSys);

  // Puts the message of the record on its layer: a label, an arrow to the place and an attribute
  // record. A layer of the host's choice that is not open is opened as a MIF/MID pair. On a layer
  // that is no MIF layer the message gets one line, also where it is printed afterwards.
  void place(const MessagePlacement& placement, MessageRecord& record);

 private:
  void openWhereNeeded(std::int32_t layer, const MessageRecord& record);

  gis::LayerTable& layers_;
  std::string prefix_;
  std::string coordSys_;
};

}  // namespace nivaro
