// The pool of file units: every file of the module is opened and closed through it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "files/termination.hpp"
#include "platform/console.hpp"
#include "platform/process.hpp"
#include "platform/unit_table.hpp"

namespace nivaro {

class FileUnits {
 public:
  static constexpr int kSlots = 1000;

  FileUnits(Console& console, Process& process, UnitTable& units, Termination& termination);

  // All slots free, files left open are forgotten, not closed; prompt and exit code at the end of
  // the run are switched on. A base below 9 is raised to 9: lower numbers are for hosts.
  void initFileUnits(std::int32_t base);

  // Opens `name` on the lowest free unit, in conversation with the person at the console until it
  // is open. Returns the unit: 0 after a failed open in mode "A ", a number without a file after an
  // unknown mode.
  std::int32_t openFile(std::string_view name, std::string_view mode, std::int32_t recordLength);

  // Closes a pool unit that is in use, says so, and sets the caller's variable to 0. Any other
  // number is left alone. Data that could not be written are reported, but end nothing.
  void closeFile(std::int32_t& unit);

  // Every unit in use, lowest first, without a word and without freeing the slots: for the end of
  // the run. A file that cannot be closed is reported and ends the process there.
  void closeAllAtExit();

  // The name under which a unit was opened: as it was asked for, or as the person at the console
  // answered instead.
  std::string nameOf(std::int32_t unit) const;

  // The open file of a unit; null for a number that names none.
  Unit* find(std::int32_t unit) { return units_.find(unit); }

 private:
  std::int32_t numberOf(std::size_t slot) const;
  std::optional<std::size_t> slotInUse(std::int32_t unit) const;
  bool closeReporting(std::int32_t unit);
  [[noreturn]] void endForBlankName();

  Console& console_;
  Process& process_;
  UnitTable& units_;
  Termination& termination_;
  std::int32_t base_ = 0;
  std::array<bool, kSlots> inUse_{};
  std::array<std::string, kSlots> names_;
};

}  // namespace nivaro
