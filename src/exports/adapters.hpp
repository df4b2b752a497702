// Between the host's calling convention and plain C++: buffers of fixed length, hidden lengths,
// 4-byte logicals, arrays by their first element. docs/abi.md describes the convention.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "nivaro_morphology.h"
#include "platform/grid.hpp"
#include "platform/logical.hpp"

namespace nivaro {

using Length = nivaro_length;

// A length below 0 is a host's mistake and counts as an empty text.
inline std::size_t size(Length length) {
  return length > 0 ? static_cast<std::size_t>(length) : std::size_t{0};
}

// A text argument, with its trailing blanks.
inline std::string_view text(const char* buffer, Length length) {
  return {buffer, size(length)};
}

// A name or path argument. A C host may hand over its end mark with the text; what stands from a
// code of 0 on is not part of the name.
inline std::string_view name(const char* buffer, Length length) {
  const std::string_view whole = text(buffer, length);
  return whole.substr(0, whole.find('\0'));
}

// The buffer of a text result: what is assigned is cut to its length or padded with blanks. The
// result may lie in the argument's own buffer.
class TextOut {
 public:
  TextOut(char* buffer, Length length) : buffer_(buffer), size_(size(length)) {}

  void operator=(std::string_view value) {
    const std::size_t used = value.size() < size_ ? value.size() : size_;
    if (used > 0) std::memmove(buffer_, value.data(), used);
    if (size_ > used) std::memset(buffer_ + used, ' ', size_ - used);
  }

 private:
  char* buffer_;
  std::size_t size_;
};

// A text argument that the routine changes: a string for the time of the call, written back at its
// end.
class TextInOut {
 public:
  TextInOut(char* buffer, Length length)
      : buffer_(buffer), length_(length), value_(text(buffer, length)) {}
  ~TextInOut() { TextOut(buffer_, length_) = value_; }
  TextInOut(const TextInOut&) = delete;
  TextInOut& operator=(const TextInOut&) = delete;

  // Usable where it is made: the routine sees the string, the buffer gets it back when the full
  // expression ends.
  operator std::string&() { return value_; }

 private:
  char* buffer_;
  Length length_;
  std::string value_;
};

template <typename T>
Grid<T> grid(T* first, const std::int32_t* n, const std::int32_t* m) {
  return {first, *n, *m};
}

inline Area area(const std::int32_t* firstI, const std::int32_t* firstJ, const std::int32_t* lastI,
                 const std::int32_t* lastJ) {
  return {.firstI = *firstI, .firstJ = *firstJ, .lastI = *lastI, .lastJ = *lastJ};
}

}  // namespace nivaro
