#include "control/spatial_command.hpp"

#include <algorithm>

#include "platform/list_input.hpp"
#include "platform/real_to_integer.hpp"
#include "text/blank_padded.hpp"
#include "text/number_text.hpp"

namespace nivaro {

SpatialCommands::SpatialCommands(Diagnostics& diagnostics) : diagnostics_(diagnostics) {}

void SpatialCommands::run(const SpatialCommand& command, const SedimentFields& fields,
                          std::int32_t logUnit) {
  if (command.source == SpatialSource::Set) {
    set(command, fields, logUnit);
    return;
  }
  // Layers and cell tables plug in here.
  diagnostics_.fatal({.line1 = "ERROR - Read MI and Read MID commands are not available yet.",
                      .line2 = std::string(trimmed(command.controlLine)),
                      .detail1 = std::string(command.place)});
}

void SpatialCommands::set(const SpatialCommand& command, const SedimentFields& fields,
                          std::int32_t logUnit) {
  double value = 0.0;
  const ReadStatus status = readListItem(command.value, value);
  if (status == ReadStatus::End)
    diagnostics_.fatal({.line1 = "ERROR - Reading value of \"Set\" command",
                        .line2 = std::string(trimmed(command.controlLine)),
                        .detail1 = std::string(command.place)});
  if (status == ReadStatus::Error)
    diagnostics_.fatal({.line1 = "ERROR - Reading following line in control file",
                        .line2 = std::string(trimmed(command.controlLine)),
                        .detail1 = std::string(command.place)});

  announce(std::string(command.target.name) + " globally set to " + areal(value), logUnit);
  if (command.target.real != nullptr)
    std::ranges::fill((fields.*command.target.real).cells(), value);
  else
    std::ranges::fill(fields.bedCode.cells(), truncated(value));
}

// An empty line and the text, on the screen and in the log.
void SpatialCommands::announce(const std::string& text, std::int32_t logUnit) {
  for (const std::string& line : {std::string(), text}) {
    diagnostics_.console().line(line);
    diagnostics_.messages().toUnit(logUnit, line);
  }
}

}  // namespace nivaro
