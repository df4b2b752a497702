// The open files by unit number, and inquiry by name.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "platform/unit.hpp"

namespace nivaro {

// Its end writes and closes all files that are still open, so that they are whole after a normal
// end of the process without any call.
class UnitTable {
 public:
  // Opens a file on a number, closing what was open on it. Empty on success, else the reason. Where
  // the file is open on another number too, what that one has written can be read here.
  std::string open(std::int32_t number, const std::string& path, const OpenOptions& options);

  // False when the unit's buffered data could not be written. A number without a file is fine.
  bool close(std::int32_t number);

  // The open file on this number; null when there is none. Writes to such a number are ignored and
  // reads from it fail: other numbers may be the host's own units.
  Unit* find(std::int32_t number);

  // The number on which this very file (not only this spelling of its name) is open.
  std::optional<std::int32_t> numberOf(const std::string& path) const;

  // Write what is buffered in every unit.
  void flushAll();

 private:
  std::map<std::int32_t, Unit> units_;
};

}  // namespace nivaro
