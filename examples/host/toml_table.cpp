#include "toml_table.hpp"

#include <cmath>
#include <limits>

namespace host {

namespace {

std::string inQuotes(std::string_view text) {
  return '"' + std::string(text) + '"';
}

std::string describe(Range range, std::string_view unit) {
  std::string text = "a number";
  if (range == Range::Positive) text += " above 0";
  if (range == Range::NotNegative) text += " of 0 or more";
  if (!unit.empty()) text += " (" + std::string(unit) + ")";
  return text;
}

bool isIn(Range range, double value) {
  if (!std::isfinite(value)) return false;
  return range == Range::Any || value > 0 || (range == Range::NotNegative && value == 0);
}

// TOML tells 1 from 1.0; both are numbers to a modeller.
std::optional<double> asNumber(const toml::node& node) {
  if (node.is_integer() || node.is_floating_point()) return node.value<double>();
  return std::nullopt;
}

}  // namespace

TomlTable::TomlTable(const toml::table& table, std::string name, std::string file)
    : table_(table), name_(std::move(name)), file_(std::move(file)) {}

void TomlTable::failAt(unsigned line, const std::string& complaint) const {
  throw CaseError(file_ + ":" + std::to_string(line == 0 ? 1 : line) + ": " + complaint);
}

void TomlTable::fail(std::string_view key, const std::string& complaint) const {
  const toml::node* found = table_.get(key);
  failAt(found ? found->source().begin.line : table_.source().begin.line,
         fullName(key) + ": " + complaint);
}

std::string TomlTable::fullName(std::string_view key) const {
  return name_.empty() ? std::string(key) : name_ + "." + std::string(key);
}

bool TomlTable::has(std::string_view key) {
  known_.emplace(key);
  return table_.contains(key);
}

const toml::node& TomlTable::node(std::string_view key, const std::string& expected) {
  if (has(key)) return *table_.get(key);
  failAt(table_.source().begin.line,
         "the key " + inQuotes(fullName(key)) + " is missing; expected " + expected + ".");
}

double TomlTable::number(std::string_view key, Range range, std::string_view unit) {
  const std::string expected = describe(range, unit);
  const auto value = asNumber(node(key, expected));
  if (!value || !isIn(range, *value)) fail(key, "expected " + expected + ".");
  return *value;
}

double TomlTable::number(std::string_view key, Range range, std::string_view unit,
                         double otherwise) {
  return has(key) ? number(key, range, unit) : otherwise;
}

int TomlTable::count(std::string_view key) {
  const std::string expected = "a whole number of 1 or more";
  const auto value = node(key, expected).value_exact<std::int64_t>();
  if (!value || *value < 1 || *value > std::numeric_limits<int>::max() / 2)
    fail(key, "expected " + expected + ".");
  return static_cast<int>(*value);
}

std::string TomlTable::text(std::string_view key, std::string_view meaning) {
  const std::string expected = "a text in quotes (" + std::string(meaning) + ")";
  const auto value = node(key, expected).value_exact<std::string>();
  if (!value || value->empty()) fail(key, "expected " + expected + ".");
  return *value;
}

std::size_t TomlTable::word(std::string_view key, std::initializer_list<std::string_view> words,
                            std::size_t otherwise) {
  if (!has(key)) return otherwise;
  std::string expected = "one of";
  for (const std::string_view word : words) expected.append(" ").append(inQuotes(word));
  const std::string found = node(key, expected).value_or(std::string());
  std::size_t position = 0;
  for (const std::string_view word : words) {
    if (word == found) return position;
    ++position;
  }
  fail(key, "expected " + expected + ".");
}

std::vector<double> TomlTable::numbers(std::string_view key, std::string_view meaning) {
  const std::string expected = "a list of numbers (" + std::string(meaning) + ")";
  const toml::array* list = node(key, expected).as_array();
  if (!list) fail(key, "expected " + expected + ".");
  std::vector<double> values;
  for (const toml::node& item : *list) {
    const auto value = asNumber(item);
    if (!value || !std::isfinite(*value)) fail(key, "expected " + expected + ".");
    values.push_back(*value);
  }
  return values;
}

std::pair<double, double> TomlTable::pair(std::string_view key, std::string_view meaning) {
  const auto values = numbers(key, meaning);
  if (values.size() != 2) fail(key, "expected two numbers (" + std::string(meaning) + ").");
  return {values[0], values[1]};
}

std::vector<std::pair<double, double>> TomlTable::pairs(std::string_view key,
                                                        std::string_view meaning) {
  const std::string expected = "a list of pairs of numbers (" + std::string(meaning) + ")";
  const toml::array* list = node(key, expected).as_array();
  if (!list || list->empty()) fail(key, "expected " + expected + ".");
  std::vector<std::pair<double, double>> values;
  for (const toml::node& item : *list) {
    const toml::array* two = item.as_array();
    const auto complain = [&] {
      failAt(item.source().begin.line, fullName(key) + ": expected " + expected + ".");
    };
    if (!two || two->size() != 2) complain();
    const auto first = asNumber(*two->get(0));
    const auto second = asNumber(*two->get(1));
    if (!first || !second) complain();
    values.emplace_back(*first, *second);
  }
  return values;
}

TomlTable TomlTable::table(std::string_view key) {
  const toml::node& found = node(key, "a table [" + fullName(key) + "]");
  if (!found.is_table()) fail(key, "expected a table [" + fullName(key) + "].");
  return TomlTable(*found.as_table(), fullName(key), file_);
}

std::vector<TomlTable> TomlTable::tables(std::string_view key) {
  std::vector<TomlTable> found;
  if (!has(key)) return found;
  const std::string expected = "expected tables [[" + fullName(key) + "]].";
  const toml::array* list = table_.get(key)->as_array();
  if (!list) fail(key, expected);
  for (const toml::node& item : *list) {
    if (!item.is_table()) fail(key, expected);
    found.emplace_back(*item.as_table(), fullName(key), file_);
  }
  return found;
}

std::string_view TomlTable::oneOf(std::initializer_list<std::string_view> keys) {
  std::string names;
  std::string_view found;
  int count = 0;
  for (const std::string_view key : keys) {
    names += (names.empty() ? "" : " or ") + inQuotes(key);
    if (has(key)) found = key, ++count;
  }
  if (count == 1) return found;
  failAt(table_.source().begin.line, (name_.empty() ? "the file" : "[" + name_ + "]") +
                                         ": expected exactly one of " + names + ".");
}

void TomlTable::finish() {
  for (const auto& [key, value] : table_) {
    const std::string_view name = key.str();
    if (known_.contains(name)) continue;
    std::string list;
    for (const std::string& one : known_) list += (list.empty() ? "" : ", ") + one;
    failAt(key.source().begin.line,
           "unknown key " + inQuotes(fullName(name)) + "; known here: " + list + ".");
  }
}

}  // namespace host
