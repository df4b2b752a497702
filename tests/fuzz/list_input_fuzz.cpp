// List-directed input from a text and from a file, and numbers written in columns. Sections: "kinds"
// (letters: i integer, r real, others text), "list", "numbers" (of which columns are made).
#include <cmath>

#include "fuzz/fuzz_input.hpp"
#include "platform/field_writer.hpp"
#include "platform/fixed_field.hpp"
#include "platform/list_input.hpp"
#include "text/blank_padded.hpp"
#include "text/number_text.hpp"

namespace nivaro::fuzz {
namespace {

// One item as it was read, or what stood in the variable before.
struct Item {
  ReadStatus status;
  std::int32_t integer = -77;
  double real = -77.5;
  std::string text = "before";

  bool operator==(const Item& other) const {
    return status == other.status && integer == other.integer && text == other.text &&
           sameBits(real, other.real);
  }
};

Item readItem(ListInput& list, char kind) {
  Item item{};
  if (kind == 'i')
    item.status = list.read(item.integer);
  else if (kind == 'r')
    item.status = list.read(item.real);
  else
    item.status = list.read(item.text);
  return item;
}

std::vector<Item> readItems(ListInput&& list, std::string_view kinds) {
  std::vector<Item> items;
  for (const char kind : kinds) {
    items.push_back(readItem(list, kind));
    const Item& last = items.back();
    if (last.status == ReadStatus::Ok) continue;
    require(last == Item{.status = last.status}, "what cannot be read changes no variable");
    if (items.size() > 1 && items[items.size() - 2].status != ReadStatus::Ok)
      require(items[items.size() - 2].status == last.status, "a list that has ended stays so");
  }
  return items;
}

// A number read is the number that C's own reader sees in an ordinary spelling, and it is read again
// from its shortest spelling.
void requireRightNumber(std::string_view text) {
  double value = 0.0;
  if (readListItem(text, value) != ReadStatus::Ok) return;
  require(!std::isinf(value) || text.find_first_of("iI") != text.npos, "no number is too large");
  char shortest[64];
  const auto end = std::to_chars(shortest, shortest + sizeof shortest, value).ptr;
  double again = 0.0;
  require(readListItem(std::string_view(shortest, end), again) == ReadStatus::Ok &&
              (again == value || std::isnan(value)),
          "a number is read again");
  if (text.empty() || text.find_first_not_of("0123456789.eE+-") != text.npos) return;
  char* stop = nullptr;
  const std::string whole(text);
  const double expected = std::strtod(whole.c_str(), &stop);
  if (*stop == '\0' && !std::isinf(expected)) {
    const bool isSame = value == expected || (value == 0.0 && std::abs(expected) < 1e-307);
    require(isSame, "a number is that of its digits");
  }
}

// "3*x" is x three times.
void requireSameRepeated(std::string_view list, std::int32_t count, std::string_view kinds) {
  const std::string word(list.substr(0, list.find_first_of(" \t\r\n,/*'\"")));
  std::string repeated = std::to_string(count);
  repeated += '*';
  repeated += word;
  std::string written;
  for (std::int32_t i = 0; i < count; ++i) written += word + ' ';
  const std::string_view wanted = kinds.substr(0, static_cast<std::size_t>(count) + 1);
  if (!word.empty())
    require(readItems(ListInput(repeated), wanted) == readItems(ListInput(written), wanted),
            "a repeated item is the item as often");
}

void requireSoundColumns(double value, int width, int decimals) {
  const std::string field = fixedField(value, width, decimals);
  require(field.size() == static_cast<std::size_t>(std::max(width, 0)), "a field has its width");
  std::string appended;
  appendFixedField(appended, value, width, decimals);
  require(appended == field, "appended reals are those of fixedField");

  const std::string_view number = leftTrimmed(field);
  double again = 0.0;
  if (number.empty() || number.find('*') != number.npos || !std::isfinite(value)) return;
  require(readListItem(number, again) == ReadStatus::Ok, "a column is read again");
  // Half a unit of the last decimal, and what the subtraction rounds away.
  const double half = 0.5 * std::pow(10.0, -decimals);
  require(std::abs(again - value) <= half * (1 + 1e-9) + std::abs(value) * 1e-15,
          "a column holds its number");
}

void requireSoundIntegers(std::int64_t value, int width) {
  const std::string field = integerField(value, width);
  std::string appended;
  appendIntegerField(appended, value, width);
  require(appended == field, "appended integers are those of integerField");
  require(ainteger(value) == std::to_string(value), "an integer is its digits");
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  const std::string_view list = input.value("list");
  const std::string_view kinds = input.value("kinds").substr(0, 50);

  const std::vector<Item> ofText = readItems(ListInput(list), kinds);
  for (const std::string_view line : linesOf(list)) {
    requireRightNumber(line);
    requireSameRepeated(line, 3, kinds);
  }

  // One record or, from a text, what a record is: the same items.
  folder.write("list", list);
  Unit unit;
  unit.open("list", {});
  const std::vector<Item> ofUnit = readItems(ListInput(unit), kinds);
  const bool isOneRecord =
      list.find('\n') == list.npos && !list.ends_with('\r') && !list.starts_with("\xEF\xBB\xBF");
  if (isOneRecord) require(ofText == ofUnit, "a record has the items of its text");

  Numbers numbers(input.text("numbers"));
  const double value = numbers.real();
  requireSoundColumns(value, numbers.upTo(400), numbers.upTo(20));
  requireSoundIntegers(std::bit_cast<std::int64_t>(value), numbers.upTo(30));
  for (const std::string& text : {areal(value), areal8(value), areald(value, numbers.integer()),
                                  arealdPrec0(value, numbers.integer(), numbers.integer())})
    require(text.size() <= 20 && !text.starts_with(' '), "a number text is short");
}

}  // namespace nivaro::fuzz
