// The mode codes of the file opener, one row each.
//
// Where the codes themselves leave room, this is what they mean here:
// - "A ", "AB", "S ", "SB" and "SE" are shared as "I " is: other programs may read and write the
//   file meanwhile, and a file that this process has open already is opened once more without a
//   question. In all other modes others may only read it, where the system sees to that.
// - "SB" and "SE" open as "S " does: what is there is kept, what is missing is created; reading and
//   writing begin at the start, and what lies behind the last byte written stays.
// - "IO" reads and writes a file that is kept, or created when missing.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/open_options.hpp"

namespace nivaro {

struct OpenMode {
  std::string_view code;  // two characters; a one-letter code has a trailing blank
  bool isInput;           // opens existing files only; asks for another name where there is none
  OpenOptions options;
  bool callersLength = false;  // direct access with the record length that the caller gives
};

constexpr std::array<OpenMode, 18> openModes() {
  using enum OpenOptions::Form;
  using enum OpenOptions::Status;
  using enum OpenOptions::Action;
  using enum OpenOptions::Sharing;
  using enum OpenOptions::Position;
  constexpr bool little = false;
  constexpr bool big = true;

  return {{
      {"I ", true, {Formatted, Old, Read}},
      {"UI", true, {Unformatted, Old, Read, Guarded}},
      {"BI", true, {Binary, Old, Read, Guarded}},
      {"BE", true, {Binary, Old, Read, Guarded, Start, big}},
      {"DI", true, {Binary, Old, Read, Guarded}, true},
      {"DE", true, {Binary, Old, Read, Guarded, Start, big}, true},
      {"O ", false, {Formatted, Replace, Write, Guarded}},
      {"F ", false, {Formatted, Replace, Write, Guarded}},
      {"UO", false, {Unformatted, Replace, Write, Guarded}},
      {"BO", false, {Binary, Replace, Write, Guarded}},
      {"BN", false, {Binary, Replace, Write, Guarded, Start, big}},
      {"A ", false, {Formatted, Unknown, Write, Free, End}},
      {"AB", false, {Binary, Unknown, Write, Free, End}},
      {"S ", false, {Formatted, Unknown, ReadWrite}},
      {"SB", false, {Binary, Unknown, ReadWrite}},
      {"SE", false, {Binary, Unknown, ReadWrite, Free, Start, big}},
      {"DX", false, {Binary, Old, ReadWrite, Guarded, Start, little, 4}},
      {"IO", false, {Formatted, Unknown, ReadWrite, Guarded}},
  }};
}

inline constexpr std::array<OpenMode, 18> kOpenModes = openModes();

// The row of a code, compared exactly; null for a code that is in no row.
constexpr const OpenMode* findOpenMode(std::string_view code) {
  const auto row = std::find_if(kOpenModes.begin(), kOpenModes.end(),
                                [&](const OpenMode& mode) { return mode.code == code; });
  return row == kOpenModes.end() ? nullptr : &*row;
}

}  // namespace nivaro
