#include "text/control_line.hpp"

#include <algorithm>
#include <optional>

#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

constexpr std::string_view kCommentCharacters = "!#";

// Far more than a control line can hold in good faith; beyond it a value refers to itself.
constexpr int kMostReplacements = 1000;

// Names as the table compares them.
std::string variableName(std::string_view name) {
  return upperCase(name.substr(0, VariableTable::kNameWidth));
}

std::string lineDetail(std::string_view line) {
  return "Line: " + std::string(trimmed(line));
}

Report badDelimiter(std::string_view line) {
  Report report;
  report.line1 = R"(ERROR 0014 - Variable Delimiter ">>" non-existent or before "<<".)";
  report.detail1 = lineDetail(line);
  return report;
}

Report notDefined(const std::string& name, std::string_view line) {
  Report report;
  report.line1 = "ERROR 0015 - Variable \"" + name + "\" not defined.";
  report.detail1 = lineDetail(line);
  return report;
}

std::optional<Report> replaceVariables(std::string& line, const VariableTable& variables) {
  const std::string written = line;
  for (int count = 0;; ++count) {
    const std::size_t open = line.find("<<");
    if (open == std::string::npos) return std::nullopt;
    const std::size_t close = line.find(">>");
    if (close == std::string::npos || close <= open + 2) return badDelimiter(line);

    const std::string name =
        variableName(std::string_view(line).substr(open + 2, close - open - 2));
    const std::string* value = variables.find(name);
    if (value == nullptr) return notDefined(name, line);
    if (count == kMostReplacements) return notDefined(name, written);

    line.replace(open, close + 2 - open, *value);
    line.resize(trimmedLength(line));
  }
}

}  // namespace

bool VariableTable::add(std::string_view name, std::string_view value) {
  if (entries_.size() == kCapacity) return false;
  entries_.push_back({variableName(name), std::string(trimmed(value.substr(0, kValueWidth)))});
  return true;
}

const std::string* VariableTable::find(std::string_view name) const {
  const auto found = std::find_if(
      entries_.begin(), entries_.end(),
      [wanted = variableName(name)](const Entry& entry) { return entry.name == wanted; });
  return found == entries_.end() ? nullptr : &found->value;
}

Outcome<bool> commentLine(std::string& line, const VariableTable& variables) {
  line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
  const std::size_t comment = std::min(line.find_first_of(kCommentCharacters), line.size());
  const bool holdsNothing = line.empty() || comment == 0;
  line.resize(comment);

  // Without any variables "<<" is ordinary text.
  if (!variables.empty()) {
    if (auto report = replaceVariables(line, variables)) return *std::move(report);
  }
  return holdsNothing;
}

}  // namespace nivaro
