// Checked reading of one table of a TOML file: values of the right type and range, no key missing,
// no key unknown. Every complaint names file, line, key and what is expected.
#pragma once

#include <toml++/toml.h>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "case_file.hpp"

namespace host {

enum class Range { Any, Positive, NotNegative };

class TomlTable {
 public:
  // `name` is the table's dotted name, blank for the whole file. Keeps a reference to the table.
  TomlTable(const toml::table& table, std::string name, std::string file);

  bool has(std::string_view key);
  double number(std::string_view key, Range range, std::string_view unit);
  double number(std::string_view key, Range range, std::string_view unit, double otherwise);
  int count(std::string_view key);
  std::string text(std::string_view key, std::string_view meaning);
  // One of a few words; the position of the one found.
  std::size_t word(std::string_view key, std::initializer_list<std::string_view> words,
                   std::size_t otherwise);
  std::pair<double, double> pair(std::string_view key, std::string_view meaning);
  std::vector<std::pair<double, double>> pairs(std::string_view key, std::string_view meaning);
  std::vector<double> numbers(std::string_view key, std::string_view meaning);
  TomlTable table(std::string_view key);
  std::vector<TomlTable> tables(std::string_view key);
  // Exactly one of the keys; which.
  std::string_view oneOf(std::initializer_list<std::string_view> keys);

  // To be called when all known keys have been asked for: any other key is a mistake.
  void finish();
  [[noreturn]] void fail(std::string_view key, const std::string& complaint) const;

 private:
  const toml::node& node(std::string_view key, const std::string& expected);
  std::string fullName(std::string_view key) const;
  [[noreturn]] void failAt(unsigned line, const std::string& complaint) const;

  const toml::table& table_;
  std::string name_;
  std::string file_;
  std::set<std::string, std::less<>> known_;
};

}  // namespace host
