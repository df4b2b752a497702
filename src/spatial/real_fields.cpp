#include "spatial/real_fields.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "platform/list_input.hpp"

namespace nivaro {
namespace {

constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

const char* skipBlanks(const char* at, const char* end) {
  while (at != end && isBlank(*at)) ++at;
  return at;
}

// The ordinary spellings, separated by blanks, tabs or a comma. False leaves the decision to the
// general reader, which knows the others.
bool readPlain(std::string_view text, std::span<double> values) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (double& value : values) {
    at = skipBlanks(at, end);
    const auto [next, error] = std::from_chars(at, end, value);
    if (error != std::errc{} || !std::isfinite(value)) return false;
    if (next != end && !isBlank(*next) && *next != ',') return false;
    at = skipBlanks(next, end);
    if (at != end && *at == ',') ++at;
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
