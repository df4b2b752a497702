// The message writer: classifies, counts and numbers the message held in the message record and
// writes it to the screen, the log, the message table and the messages layer.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

#include "messages/level.hpp"
#include "messages/record.hpp"
#include "platform/console.hpp"
#include "platform/unit_table.hpp"

namespace nivaro {

// Where a message is put on a messages layer, and how its label looks. The texts are the record's.
struct MessagePlacement {
  std::int32_t layer;     // GIS layer identifier
  std::string_view font;  // MapInfo font clause of its level
  double x;               // target of the label's line
  double y;
};

class MessageWriter {
 public:
  // Puts the message of the record on a GIS layer; set by the owner of the layers.
  using LayerSink = std::function<void(const MessagePlacement&, MessageRecord&)>;

  MessageWriter(Console& console, UnitTable& units, MessageRecord& record);

  void setLayerSink(LayerSink sink) { layerSink_ = std::move(sink); }

  // The exported calls. `blankLines` 0 or more: as many empty lines, then the message on screen and
  // log; -1: log only; below that neither; -99 with a location: the layer only.
  void dmessageXy(std::int32_t blankLines, double x, double y);
  void dmessage(std::int32_t blankLines);
  void dmessageClear();
  void dmessageResetCounters();
  void dline(std::int32_t unit);

  // The message without a location: dmessageXy at the record's default point.
  void write(std::int32_t blankLines);

  // Reads a message table back and places each row's text on the messages layer.
  void replayTable(std::int32_t unit);

  // One line to a unit, on the disk when this returns. Best effort: a failure is ignored, and so is
  // a number that names no open unit.
  void toUnit(std::int32_t unit, std::string_view line);

  // One line to the log, if there is one.
  void toLog(std::string_view line);

  MessageRecord& record() { return record_; }

 private:
  bool readNumber(const MessageLevel& level, std::string_view line1);
  void place(const MessageLevel& level, double x, double y);
  void print(std::int32_t blankLines);

  Console& console_;
  UnitTable& units_;
  MessageRecord& record_;
  LayerSink layerSink_;
};

}  // namespace nivaro
