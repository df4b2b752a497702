#include "platform/unit_table.hpp"

namespace nivaro {

std::string UnitTable::open(std::int32_t number, const std::string& path,
                            const OpenOptions& options) {
  if (const auto other = numberOf(path)) units_[*other].flush();
  Unit& unit = units_[number];
  std::string reason = unit.open(path, options);
  if (!reason.empty()) units_.erase(number);
  return reason;
}

bool UnitTable::close(std::int32_t number) {
  const auto found = units_.find(number);
  if (found == units_.end()) return true;
  const bool allWritten = found->second.close();
  units_.erase(found);
  return allWritten;
}

Unit* UnitTable::find(std::int32_t number) {
  const auto found = units_.find(number);
  return found == units_.end() ? nullptr : &found->second;
}

std::optional<std::int32_t> UnitTable::numberOf(const std::string& path) const {
  const std::optional<FileIdentity> file = fileIdentity(path);
  for (const auto& [number, unit] : units_)
    if (unit.isOpenOn(file)) return number;
  return std::nullopt;
}

void UnitTable::flushAll() {
  for (auto& [number, unit] : units_) unit.flush();
}

}  // namespace nivaro
