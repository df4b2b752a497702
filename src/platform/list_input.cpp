#include "platform/list_input.hpp"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <type_traits>

#include "platform/letters.hpp"
#include "platform/unit.hpp"

namespace nivaro {
namespace {

// A carriage return can only be what is left of a line end.
constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}
constexpr bool endsItem(char c) {
  return isBlank(c) || c == ',' || c == '/';
}
constexpr bool isSign(char c) {
  return c == '+' || c == '-';
}

constexpr bool isExponentLetter(char c) {
  return std::string_view("eEdDqQ").find(c) != std::string_view::npos;
}

// std::from_chars knows no leading "+".
std::string_view withoutPlus(std::string_view text) {
  const bool plain = text.size() > 1 && text[0] == '+' && !isSign(text[1]);
  return plain ? text.substr(1) : text;
}

bool convert(std::string_view text, std::int32_t& value) {
  text = withoutPlus(text);
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return false;
  value = number;
  return true;
}

// Whether a well-formed number that no real can hold is too small for one (else it is too large):
// decided by the power of ten of its first significant digit.
bool isTooSmall(std::string_view number) {
  const std::size_t letter = number.find_first_of("eE");
  std::int32_t power = 0;
  if (letter != std::string_view::npos) {
    const std::string_view exponent = withoutPlus(number.substr(letter + 1));
    const auto result = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    if (result.ec == std::errc::result_out_of_range) return exponent[0] == '-';
  }
  const std::string_view mantissa = number.substr(0, letter);
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto first = static_cast<std::int64_t>(mantissa.find_first_of("123456789"));
  return power + point - first < 0;
}

// The ordinary spelling of a number, exponent letter e. `end` is where the text ceases to be one.
bool convertPlain(std::string_view text, double& value, const char*& end) {
  double number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  end = result.ptr;
  if (result.ec == std::errc::invalid_argument || end != text.data() + text.size()) return false;
  if (result.ec == std::errc::result_out_of_range) {
    if (!isTooSmall(text)) return false;
    number = text[0] == '-' ? -0.0 : 0.0;
  }
  value = number;
  return true;
}

bool convert(std::string_view text, double& value) {
  text = withoutPlus(text);
  const char* end = nullptr;
  if (convertPlain(text, value, end)) return true;

  // The other spellings of an exponent: letters d and q, or its sign alone.
  const auto mantissa = static_cast<std::size_t>(end - text.data());
  if (mantissa == 0 || mantissa == text.size()) return false;
  const bool letter = isExponentLetter(text[mantissa]);
  if (!letter && !isSign(text[mantissa])) return false;
  std::string ordinary(text.substr(0, mantissa));
  ordinary += 'e';
  ordinary += text.substr(mantissa + (letter ? 1 : 0));
  return convertPlain(ordinary, value, end);
}

bool convert(std::string_view text, std::string& value) {
  value = text;
  return true;
}

}  // namespace

ListInput::ListInput(std::string_view text) : record_(text) {}

ListInput::ListInput(Unit& unit) : unit_(&unit) {}

ReadStatus ListInput::read(std::int32_t& value) {
  return readValue(value);
}
ReadStatus ListInput::read(double& value) {
  return readValue(value);
}
ReadStatus ListInput::read(std::string& value) {
  return readValue(value);
}

template <typename Value>
ReadStatus ListInput::readValue(Value& value) {
  if (nextItem() != ReadStatus::Ok || listEnded_ || item_.kind == Kind::Null) return status_;

  const bool isText = std::is_same_v<Value, std::string>;
  if ((item_.kind == Kind::Quoted && !isText) || !convert(item_.text, value))
    status_ = ReadStatus::Error;
  return status_;
}

ReadStatus ListInput::nextItem() {
  if (status_ != ReadStatus::Ok || listEnded_) return status_;
  if (repeats_ > 0) {
    --repeats_;
    return ReadStatus::Ok;
  }
  return status_ = findItem();
}

ReadStatus ListInput::findItem() {
  item_ = {};
  ReadStatus status = toNextCharacter();
  if (status == ReadStatus::Ok && afterItem_ && current() == ',') {
    ++position_;
    status = toNextCharacter();
  }
  afterItem_ = false;
  if (status != ReadStatus::Ok) return status;

  if (current() == '/') {
    listEnded_ = true;
    return ReadStatus::Ok;
  }
  if (current() == ',') {
    ++position_;
    return ReadStatus::Ok;
  }
  afterItem_ = true;
  status = takeRepeat();
  return status == ReadStatus::Ok ? takeValue() : status;
}

// The "r*" before an item.
ReadStatus ListInput::takeRepeat() {
  std::size_t star = position_;
  while (star < record_.size() && isDigit(record_[star])) ++star;
  if (star == position_ || star == record_.size() || record_[star] != '*') return ReadStatus::Ok;

  std::int32_t count = 0;
  if (!convert(record_.substr(position_, star - position_), count) || count == 0)
    return ReadStatus::Error;
  repeats_ = count - 1;
  position_ = star + 1;
  return ReadStatus::Ok;
}

// The item itself; there is none behind an "r*" that stands alone.
ReadStatus ListInput::takeValue() {
  if (atRecordEnd() || endsItem(current())) return ReadStatus::Ok;
  if (isQuote(current())) return takeQuoted(record_[position_++]);

  const std::size_t start = position_;
  while (!atRecordEnd() && !endsItem(current())) ++position_;
  item_ = {Kind::Plain, record_.substr(start, position_ - start)};
  return ReadStatus::Ok;
}

// The text up to the closing quote, which may stand in a later record: nothing is put in where the
// records meet.
ReadStatus ListInput::takeQuoted(char quote) {
  quoted_.clear();
  for (;;) {
    const std::size_t start = position_;
    const std::size_t end = std::min(record_.find(quote, start), record_.size());
    const std::string_view stretch = record_.substr(start, end - start);
    if (end == record_.size()) {
      quoted_ += stretch;
      const ReadStatus status = nextRecord();
      if (status != ReadStatus::Ok) return status;
      continue;
    }
    position_ = end + 1;
    const bool isDoubled = !atRecordEnd() && current() == quote;
    if (!isDoubled && quoted_.empty()) {
      item_ = {Kind::Quoted, stretch};
      return ReadStatus::Ok;
    }
    quoted_ += stretch;
    if (!isDoubled) break;
    quoted_ += quote;
    ++position_;
  }
  item_ = {Kind::Quoted, quoted_};
  return ReadStatus::Ok;
}

// To the next character that is not blank, in a later record if need be.
ReadStatus ListInput::toNextCharacter() {
  for (;;) {
    while (!atRecordEnd() && isBlank(current())) ++position_;
    if (!atRecordEnd()) return ReadStatus::Ok;
    const ReadStatus status = nextRecord();
    if (status != ReadStatus::Ok) return status;
  }
}

ReadStatus ListInput::nextRecord() {
  if (unit_ == nullptr) return ReadStatus::End;
  position_ = 0;
  record_ = {};
  return unit_->readRecord(record_);
}

}  // namespace nivaro
