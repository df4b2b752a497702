#include "text/command_line.hpp"

#include <algorithm>

#include "text/blank_padded.hpp"
#include "text/keyword.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

constexpr std::string_view kSeparator = "==";

// Words that a line without a separator may consist of. Some count only together with one of two
// others, and a lone "ELSE" only where it is not the start of "ELSE IF", which takes a value.
struct BlockKeyword {
  std::string_view word;
  std::string_view partner = {};
  std::string_view otherPartner = {};
  std::string_view unless = {};
};

constexpr BlockKeyword kBlockKeywords[] = {
    {"ELSE", {}, {}, "ELSE IF"},
    {"END 1D DOMAIN"},
    {"END 2D DOMAIN"},
    {"END DEFINE"},
    {"END IF"},
    {"INTERPOLATE Z"},
    {"START 1D DOMAIN"},
    {"STOP"},
    {"VORLE CONTROL FILE", "AUTO", "AUTO"},
    {"WRITE CHECK FILE", "ALL", "NONE"},
    {"OUTPUT FILE", "ALL", "NONE"},
};

bool holds(std::string_view line, const BlockKeyword& keyword) {
  const auto contains = [line](std::string_view word) {
    return line.find(word) != std::string_view::npos;
  };
  if (!contains(keyword.word)) return false;
  if (!keyword.unless.empty() && contains(keyword.unless)) return false;
  return contains(keyword.partner) || contains(keyword.otherPartner);  // no partner is in any line
}

bool isBlockLine(std::string_view line) {
  return std::any_of(std::begin(kBlockKeywords), std::end(kBlockKeywords),
                     [line](const BlockKeyword& keyword) { return holds(line, keyword); });
}

Report missingSeparator(std::string_view line1, std::string_view line) {
  Report report;
  report.line1 = line1;
  report.line2 = "Problematic Line: " + std::string(line);
  return report;
}

}  // namespace

Outcome<CommandLine> commandLine(std::string& line, bool strict) {
  const std::size_t found = line.find(kSeparator);
  if (found != std::string::npos) {
    return CommandLine{line.substr(0, found), line.substr(found + kSeparator.size()), {}};
  }

  line = upperCase(line);
  if (isBlockLine(line)) return CommandLine{line, {}, {}};
  if (strict) {
    return missingSeparator(R"(ERROR 0060 - Command line is missing "==". )", line);
  }
  return CommandLine{
      line, {}, missingSeparator(R"(WARNING 0060 - Command line is missing "==". )", line)};
}

CheckedLine checkLine(std::string_view line, std::string_view flag, std::string_view separator,
                      std::int32_t column) {
  const std::string_view mark = trimmed(separator);
  const std::size_t found = mark.empty() ? std::string_view::npos : line.find(mark);
  const bool isSplitByMark = found != std::string_view::npos;
  const bool isAllCommand = !isSplitByMark && !mark.empty() && column == 0;

  std::size_t commandLength = line.size();
  std::size_t valueStart = line.size();
  if (isSplitByMark) {
    commandLength = found;
    valueStart = found + mark.size();
  } else if (!isAllCommand) {
    commandLength = std::min(static_cast<std::size_t>(std::max(column, 0)), line.size());
    valueStart = commandLength;
  }

  CheckedLine result;
  result.command = line.substr(0, commandLength);
  result.value = line.substr(valueStart);
  const bool isWanted = trimmed(flag) == "*" || flagExists(result.command, flag);
  const bool isCommand = !trimmed(result.command).empty() || (!isSplitByMark && column == 0);
  result.holdsFlag = isWanted && isCommand;
  return result;
}

}  // namespace nivaro
