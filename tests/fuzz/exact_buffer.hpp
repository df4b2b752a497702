// Texts as a host passes them: in blocks of exactly their length, so that the address sanitizer sees
// a byte that is read or written beyond.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <tuple>

#include "fuzz/fuzz_input.hpp"
#include "nivaro_morphology.h"
#include "text/blank_padded.hpp"

namespace nivaro::fuzz {

class Buffer {
 public:
  explicit Buffer(std::string_view text) : Buffer(text.size()) { text.copy(data(), text.size()); }
  explicit Buffer(std::size_t size) : size_(size), bytes_(new char[size]) {
    std::fill_n(data(), size, '~');
  }

  char* data() const { return bytes_.get(); }
  nivaro_length length() const { return static_cast<nivaro_length>(size_); }
  std::string_view text() const { return {data(), size_}; }

 private:
  std::size_t size_;
  std::unique_ptr<char[]> bytes_;
};

// What stands for a text or a number among the arguments, and behind all of them.
inline char* argument(const Buffer& text) {
  return text.data();
}
template <typename Number>
Number* argument(Number& number) {
  return &number;
}
inline std::tuple<nivaro_length> lengthOf(const Buffer& text) {
  return text.length();
}
template <typename Number>
std::tuple<> lengthOf(Number&) {
  return {};
}

template <typename Routine, typename... Arguments>
auto call(Routine routine, Arguments&... arguments) {
  return std::apply(routine,
                    std::tuple_cat(std::tuple(argument(arguments)...), lengthOf(arguments)...));
}

// What an export that returns a text leaves in a buffer of this length.
template <typename Routine, typename... Arguments>
std::string resultOf(std::size_t length, Routine routine, Arguments&... arguments) {
  const Buffer result(length);
  std::apply(routine, std::tuple_cat(std::tuple(result.data(), result.length()),
                                     std::tuple(argument(arguments)...), lengthOf(arguments)...));
  return std::string(result.text());
}

// A result is the text that the core returns.
inline void requireHolds(std::string_view buffer, std::string_view expected) {
  require(buffer == padTo(expected, buffer.size()),
          "a result is its text, cut to the buffer or padded with blanks");
}
template <typename Routine, typename... Arguments>
void requireResult(std::size_t length, std::string_view expected, Routine routine,
                   Arguments&... arguments) {
  requireHolds(resultOf(length, routine, arguments...), expected);
}

// Exports that make a text of a text. The result may lie in the argument.
struct Transformation {
  void (*exported)(char*, nivaro_length, const char*, nivaro_length);
  std::string (*core)(std::string_view);
};

inline void requireResults(std::initializer_list<Transformation> routines, std::string_view text,
                           std::size_t length) {
  const Buffer read(text);
  for (const auto& [exported, core] : routines) {
    requireResult(length, core(text), exported, read);
    const Buffer inPlace(text);
    exported(inPlace.data(), inPlace.length(), inPlace.data(), inPlace.length());
    requireHolds(inPlace.text(), core(text));
  }
  require(read.text() == text, "an argument that is read stays as it is");
}

}  // namespace nivaro::fuzz
