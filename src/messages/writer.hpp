// The message writer: classifies, counts and numbers the message held in the message record and
// writes it to the screen, the log, the message table and the messages layer.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "messages/record.hpp"
#include "platform/console.hpp"
#include "platform/unit_table.hpp"

namespace nivaro {

// A message as it is put on a messages layer.
struct LayerMessage {
  std::int32_t layer = 0;     // GIS layer identifier
  std::string_view font;      // MapInfo font clause of its level
  double x = 0.0;             // the label's target
  double y = 0.0;
  const MessageRecord& record;  // lines, label sizes, number and link
};

class MessageWriter {
 public:
  // Puts a message on a GIS layer; wired by the owner of the layers.
  using LayerSink = std::function<void(const LayerMessage&)>;

  MessageWriter(Console& console, UnitTable& units, MessageRecord& record);

  void setLayerSink(LayerSink sink) { layerSink_ = std::move(sink); }

  // The exported calls. `blankLines` 0 or more: screen and log; -1: log only; below that neither;
  // -99 with a location: the layer only.
  void dmessageXy(std::int32_t blankLines, double x, double y);
  void dmessage(std::int32_t blankLines);
  void dmessageClear();
  void dmessageResetCounters();
  void dline(std::int32_t unit);

  // The message without a location: dmessageXy at the record's default point.
  void write(std::int32_t blankLines);

  // One line to a unit, best effort: nothing happens when the number names no open unit.
  void toUnit(std::int32_t unit, std::string_view line);

  MessageRecord& record() { return record_; }
  UnitTable& units() { return units_; }

 private:
  Console& console_;
  UnitTable& units_;
  MessageRecord& record_;
  LayerSink layerSink_;
};

}  // namespace nivaro
