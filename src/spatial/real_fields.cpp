#include "spatial/real_fields.hpp"

#include <cmath>
#include <limits>

#include "platform/list_input.hpp"
#include "platform/plain_number.hpp"

namespace nivaro {
namespace {

// False leaves the decision to the general reader.
bool readPlain(std::string_view text, std::span<double> values) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (double& value : values) {
    at = readPlainNumber(at, end, value);
    if (at == nullptr || !std::isfinite(value)) return false;
  }
  return true;
}

}  // namespace

bool readReals(std::string_view text, std::span<double> values) {
  if (readPlain(text, values)) return true;

  ListInput items(text);
  for (double& value : values) {
    value = std::numeric_limits<double>::quiet_NaN();  // an empty item leaves it as it is
    if (items.read(value) != ReadStatus::Ok || !std::isfinite(value)) return false;
  }
  return true;
}

}  // namespace nivaro
