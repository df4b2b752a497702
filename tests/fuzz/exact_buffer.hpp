// Texts as a host passes them: in blocks of exactly their length, so that the address sanitizer sees
// a byte that is read or written beyond.
#pragma once

#include <algorithm>
#include <memory>
#include <string_view>

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

// The result buffer of an export holds the text that its core returns, cut or padded with blanks.
inline void requireResult(const Buffer& buffer, std::string_view expected) {
  require(buffer.text() == padTo(expected, buffer.text().size()),
          "a result is its text, cut to the buffer or padded with blanks");
}

}  // namespace nivaro::fuzz
