// What happens to a control line before anyone looks for a command in it: comments are cut off and
// named variables are replaced by their values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/report.hpp"

namespace nivaro {

// Named texts that control lines refer to as "<<name>>", without regard to letter case.
class VariableTable {
 public:
  static constexpr std::size_t kCapacity = 100;
  static constexpr std::size_t kNameWidth = 100;
  static constexpr std::size_t kValueWidth = 1000;

  // Names and values are cut to their widths. False, and nothing added, when the table is full. Of
  // two entries of one name the earlier one counts.
  bool add(std::string_view name, std::string_view value);
  void clear() { entries_.clear(); }

  bool empty() const { return entries_.empty(); }

  // The value of this name; null when there is none. The pointer holds until the table is changed.
  const std::string* find(std::string_view name) const;

 private:
  struct Entry {
    std::string name;  // in upper case
    std::string value;
  };
  std::vector<Entry> entries_;
};

// Whether the line is a comment or blank. Takes off its leading blanks and everything from the first
// "!" or "#" on, then replaces its variables for as long as it refers to any; values may refer to
// further ones. A value that leads back to itself is reported as not defined, since it has no end.
Outcome<bool> commentLine(std::string& line, const VariableTable& variables);

}  // namespace nivaro
