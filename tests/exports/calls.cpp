#include "exports/calls.hpp"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <regex>
#include <tuple>
#include <type_traits>
#include <utility>

#include "nivaro_morphology.h"

namespace nivaro::test {

namespace {

// ---- Rows

class Reader {
 public:
  explicit Reader(std::string_view line) : rest_(line) {}

  std::optional<Row> row() {
    Row row;
    while (isFine_ && !take("(")) row.names.emplace_back(word("( "));
    while (isFine_ && !take(")")) {
      row.arguments.push_back(argument(row));
      if (!take(",") && !rest_.starts_with(')')) isFine_ = false;
    }
    if (take("=")) row.result = value();
    const bool prints = take("prints");
    row.endsRun = !prints && take("ends");
    if (prints || row.endsRun) row.printed = value().text;
    skipBlanks();
    if (!isFine_ || !(rest_.empty() || rest_.starts_with('#'))) return std::nullopt;
    return row;
  }

 private:
  void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \r"), rest_.size())); }

  bool take(std::string_view mark) {
    skipBlanks();
    if (!rest_.starts_with(mark)) return false;
    rest_.remove_prefix(mark.size());
    return true;
  }

  std::string word(std::string_view ends) {
    skipBlanks();
    const std::size_t length = std::min(rest_.find_first_of(ends), rest_.size());
    if (length == 0) isFine_ = false;
    const std::string found(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return found;
  }

  Argument argument(const Row& row) {
    Argument argument;
    if (take("lower") && !row.arguments.empty() && row.arguments.back().before) {
      argument = row.arguments.back();
      for (char& c : argument.before->text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
      return argument;
    }
    if (!take("->")) argument.before = value();
    if (!argument.before || take("->")) argument.after = value();
    return argument;
  }

  Value value() {
    if (take("`")) return {.isText = true, .text = text(), .words = {}};
    if (!take("[")) return {.isText = false, .text = {}, .words = {word(" ,)")}};
    Value array;
    while (isFine_ && !take("]")) array.words.push_back(word(" ]"));
    return array;
  }

  // The rest of a text between backticks.
  std::string text() {
    const std::size_t length = rest_.find('`');
    if (length == std::string_view::npos) isFine_ = false;
    const std::string quoted(rest_.substr(0, length));
    rest_.remove_prefix(std::min(quoted.size() + 1, rest_.size()));
    static const std::regex code("\\{([0-9A-F]{1,2})(\\*([0-9]{1,4}))?\\}");
    std::string plain;
    auto from = quoted.begin();
    for (std::sregex_iterator at(from, quoted.end(), code), end; at != end; ++at) {
      plain.append(from, (*at)[0].first);
      plain.append((*at)[3].matched ? std::stoul((*at)[3]) : 1,
                   static_cast<char>(std::stoul((*at)[1], nullptr, 16)));
      from = (*at)[0].second;
    }
    return plain.append(from, quoted.end());
  }

  std::string_view rest_;
  bool isFine_ = true;
};

// ---- Calls

template <typename Number>
Number numberOf(std::string word) {
  if (word == "yes") return static_cast<Number>(-1);
  if (word == "no") return 0;
  if (word.starts_with('~')) word.erase(0, 1);
  if constexpr (std::is_floating_point_v<Number>)
    return static_cast<Number>(std::strtod(word.c_str(), nullptr));
  else
    return static_cast<Number>(std::strtoll(word.c_str(), nullptr, 10));
}

template <typename Number>
bool isExpected(Number value, const std::string& word) {
  const auto expected = numberOf<Number>(word);
  if constexpr (std::is_floating_point_v<Number>) {
    if (std::isnan(expected)) return std::isnan(value);
    if (word.starts_with('~'))
      return std::abs(value - expected) <= 1e-9 * std::max(Number{1}, std::abs(expected));
  }
  return std::equal_to<>()(value, expected);
}

std::string padded(std::string text, std::size_t size) {
  text.resize(size, ' ');
  return text;
}

// What no routine writes by itself.
template <typename T>
constexpr T kUntouched = static_cast<T>(-7777);
template <>
constexpr char kUntouched<char> = '~';

template <typename T>
struct Buffer {
  const Argument& argument;
  bool isRead;  // only
  std::vector<T> before;
  GuardedArray<T> array;
};

// A host that rounds upward gets the same results.
class HostRounding {
 public:
  explicit HostRounding(bool upward) : mode_(upward ? FE_UPWARD : FE_TONEAREST) {
    std::fesetround(mode_);
  }
  // Whether it still does; from then on rounding is to nearest.
  bool end() const {
    const bool isAsBefore = std::fegetround() == mode_;
    std::fesetround(FE_TONEAREST);
    return isAsBefore;
  }

 private:
  int mode_;
};

// The buffers of one call, in the order of the parameters, and what is in them afterwards.
class Call {
 public:
  Call(const Row& row, const Layout& layout, bool givesText) : layout_(layout) {
    // A text result is the first parameter.
    if (givesText) all_.push_back({std::nullopt, row.result});
    all_.insert(all_.end(), row.arguments.begin(), row.arguments.end());
  }

  template <typename T>
  T next() {
    if constexpr (std::is_same_v<T, nivaro_length>) {
      return lengths_[measured_++];
    } else if constexpr (std::is_same_v<T, const void*>) {
      ++at_;
      return nullptr;
    } else {
      using Item = std::remove_const_t<std::remove_pointer_t<T>>;
      return nextBuffer<Item>(std::is_const_v<std::remove_pointer_t<T>>);
    }
  }

  void finished(const HostRounding& rounding) {
    if (!rounding.end()) fault("the host's rounding is changed");
  }

  template <typename Number>
  void returned(Number value, const std::optional<Value>& expected) {
    outcome_.given.push_back(std::to_string(value) + ';');
    if (!expected || expected->words.size() != 1 || !isExpected(value, expected->words[0]))
      fault("the result is " + std::to_string(value));
  }

  Outcome finish() {
    if (at_ != all_.size()) fault("there are more arguments than parameters");
    std::apply([&](auto&... kinds) { (finishAll(kinds), ...); }, buffers_);
    return std::move(outcome_);
  }

 private:
  template <typename Item>
  Item* nextBuffer(bool isRead) {
    static const Argument none;
    const bool isThere = at_ < all_.size();
    const Argument& argument = isThere ? all_[at_] : none;
    const bool isResult = at_ == 0 && !argument.before;
    ++at_;
    if (!isThere) fault("arguments are missing");
    if constexpr (std::is_same_v<Item, char>) {
      const int resultAt = layout_.resultIn;
      if (resultAt >= 0 && at_ == static_cast<std::size_t>(resultAt) + 1) return shareResult();
      if (isResult && resultAt > 0)
        return add<char>(argument, false, textOf(all_[static_cast<std::size_t>(resultAt)]));
      return add<char>(argument, isRead, textOf(argument));
    } else {
      std::vector<Item> numbers;
      const auto& value = argument.before ? argument.before : argument.after;
      if (value && value->isText) fault("a text stands for a number");
      for (const std::string& word : value ? value->words : std::vector<std::string>())
        numbers.push_back(argument.before ? numberOf<Item>(word) : kUntouched<Item>);
      if (numbers.empty()) numbers.push_back(kUntouched<Item>);
      return add<Item>(argument, isRead, std::move(numbers));
    }
  }

  // The text that a buffer holds before the call.
  std::vector<char> textOf(const Argument& argument) const {
    std::string text;
    if (argument.before) {
      text = argument.before->text;
      if (!text.empty()) text.append(layout_.blanks, ' ');
    } else {
      const std::size_t expected = argument.after ? argument.after->text.size() : 0;
      const auto size = static_cast<std::ptrdiff_t>(expected) + layout_.room;
      text.assign(static_cast<std::size_t>(std::max<std::ptrdiff_t>(size, 0)), kUntouched<char>);
    }
    return {text.begin(), text.end()};
  }

  template <typename Item>
  Item* add(const Argument& argument, bool isRead, std::vector<Item> content) {
    auto& buffers = std::get<std::deque<Buffer<Item>>>(buffers_);
    GuardedArray<Item> array(std::span<const Item>(content), layout_.edge);
    buffers.push_back({argument, isRead, std::move(content), std::move(array)});
    Buffer<Item>& added = buffers.back();
    if (isRead) added.array.makeReadOnly();
    if constexpr (std::is_same_v<Item, char>) lengths_.push_back(lengthOf(added.before.size()));
    return added.array.data();
  }

  char* shareResult() {
    lengths_.push_back(lengths_.front());
    return std::get<std::deque<Buffer<char>>>(buffers_).front().array.data();
  }

  // A length below 0 is that of an empty text too.
  nivaro_length lengthOf(std::size_t size) const {
    if (size > 0 || layout_.room == 0) return static_cast<nivaro_length>(size);
    return layout_.edge == Edge::Front ? -1 : INT64_MIN;
  }

  template <typename Item>
  void finishAll(std::deque<Buffer<Item>>& buffers) {
    for (const Buffer<Item>& buffer : buffers) {
      const std::vector<Item> now = buffer.array.copy();
      if (!buffer.array.isAloneWritten()) fault("something beside a buffer is written");
      if (buffer.isRead) continue;
      const auto& after = buffer.argument.after;
      if constexpr (std::is_same_v<Item, char>) {
        const std::string text(now.begin(), now.end());
        outcome_.given.push_back(text);
        const std::string kept(buffer.before.begin(), buffer.before.end());
        if (text != (after ? padded(after->text, now.size()) : kept)) fault("`" + text + "`");
      } else {
        for (std::size_t i = 0; i < now.size(); ++i) {
          const std::string number = std::to_string(now[i]);
          outcome_.given.push_back(number + ';');
          const bool isRight = after
                                   ? i < after->words.size() && isExpected(now[i], after->words[i])
                                   : std::equal_to<>()(now[i], buffer.before[i]);
          if (!isRight) fault(number);
        }
      }
    }
  }

  void fault(const std::string& what) { outcome_.faults += what + "; "; }

  Layout layout_;
  std::vector<Argument> all_;
  std::size_t at_ = 0;  // arguments handed over
  std::vector<nivaro_length> lengths_;
  std::size_t measured_ = 0;  // texts whose length has been handed over
  std::tuple<std::deque<Buffer<char>>, std::deque<Buffer<std::int32_t>>,
             std::deque<Buffer<std::int64_t>>, std::deque<Buffer<double>>,
             std::deque<Buffer<float>>>
      buffers_;
  Outcome outcome_;
};

// ---- Routines

template <typename Parameter>
std::string letterOf() {
  if constexpr (std::is_same_v<Parameter, nivaro_length>) return "";
  if constexpr (std::is_same_v<Parameter, const char*>) return "t";
  if constexpr (std::is_same_v<Parameter, char*>) return "T";
  return std::is_const_v<std::remove_pointer_t<Parameter>> ? "n" : "N";
}

// A subroutine that begins with a text and its length gives that text.
template <typename Result, typename... Parameters>
constexpr bool startsWithResult() {
  if constexpr (sizeof...(Parameters) < 2 || !std::is_void_v<Result>)
    return false;
  else
    return std::is_same_v<std::tuple_element_t<1, std::tuple<Parameters...>>, nivaro_length>;
}

// Lengths travel in the order of the texts wherever they stand, so the parameters tell it all.
template <typename Result, typename... Parameters>
Routine routine(const char* name, Result (*exported)(Parameters...) noexcept) {
  std::string parameters = (letterOf<Parameters>() + ... + std::string());
  constexpr bool givesText = startsWithResult<Result, Parameters...>();
  if (givesText) parameters.front() = 'R';
  return {name, parameters, [exported](const Row& row, const Layout& layout) {
            Call call(row, layout, givesText);
            const std::tuple<Parameters...> list{call.next<Parameters>()...};
            const HostRounding rounding(layout.edge == Edge::Front);
            if constexpr (std::is_void_v<Result>) {
              std::apply(exported, list);
              call.finished(rounding);
            } else {
              const Result result = std::apply(exported, list);
              call.finished(rounding);
              call.returned(result, row.result);
            }
            return call.finish();
          }};
}

// Arguments whose buffer may take the text result.
std::vector<int> placesOfResult(const Routine& routine) {
  std::vector<int> places{-1};
  if (!routine.parameters.starts_with('R')) return places;
  for (std::size_t i = 1; i < routine.parameters.size(); ++i)
    if (routine.parameters[i] == 't') places.push_back(static_cast<int>(i));
  return places;
}

}  // namespace

std::optional<Row> rowOf(std::string_view line) {
  return Reader(line).row();
}

const std::vector<Routine>& routines() {
  static const std::vector<Routine> all{
#include "exported_routines.inc"
  };
  return all;
}

const Routine* routineOf(std::string_view name) {
  const auto found = std::find_if(routines().begin(), routines().end(),
                                  [&](const Routine& routine) { return routine.name == name; });
  return found == routines().end() ? nullptr : &*found;
}

std::string faultsOf(const Routine& routine, const Row& row) {
  // Trailing blanks belong to the buffer, not to the text; LENSL alone looks behind the text.
  const std::vector<std::size_t> behind = routine.hasTexts() && routine.name != "LENSL"
                                              ? std::vector<std::size_t>{0, 20}
                                              : std::vector<std::size_t>{0};
  const bool givesTexts = routine.parameters.find_first_of("RT") != std::string::npos;
  for (const Edge edge : kEdges)
    for (const int place : placesOfResult(routine))
      for (const int room : givesTexts ? std::vector{0, 5, -1, -9999} : std::vector{0})
        for (const std::size_t blanks : behind)
          if (auto faults = routine.call(row, {edge, room, blanks, place}).faults; !faults.empty())
            return faults + "with room " + std::to_string(room) + ", result in " +
                   std::to_string(place) + ", blanks " + std::to_string(blanks);
  return "";
}

std::string lawsBroken(const Routine& routine, const Row& row) {
  const Outcome wide = routine.call(row, {.edge = Edge::Back, .room = 300});
  const auto isSame = [](const std::string& a, const std::string& b) {
    return a.substr(0, b.size()) == b.substr(0, a.size());
  };
  for (const auto& [edge, room] : {std::pair(Edge::Front, -1), std::pair(Edge::Back, 7)})
    for (const int place : placesOfResult(routine)) {
      const Outcome other = routine.call(row, {edge, room, 0, place});
      if (other.faults.find("beside") != std::string::npos) return other.faults;
      if (!std::equal(other.given.begin(), other.given.end(), wide.given.begin(), wide.given.end(),
                      isSame))
        return "a result depends on the buffers";
    }
  return "";
}

}  // namespace nivaro::test
