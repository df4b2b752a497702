#include "text/keyword.hpp"

#include <algorithm>

#include "platform/letters.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

bool containsEither(std::string_view command, std::string_view first, std::string_view second,
                    std::string_view keyword) {
  return flagExists(command, std::string(first).append(keyword)) ||
         flagExists(command, std::string(second).append(keyword));
}

// What is left of a text when quotes, tabs and the blanks around are gone.
std::string bare(std::string_view text) {
  std::string result = removeQuotes(text);
  removeTabs(result);
  return trimF(result);
}

void removeLeadingBlanks(std::string& text) {
  text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace

bool flagExists(std::string_view text, std::string_view flag) {
  return findIgnoringCase(trimmed(text), trimmed(flag)) != std::string_view::npos;
}

bool flagExistsRet(std::string_view text, std::string_view flag, std::string_view& rest) {
  const std::size_t found = findIgnoringCase(trimmed(text), trimmed(flag));
  const bool exists = found != std::string_view::npos;
  rest = exists ? trimmed(text).substr(found + trimmedLength(flag)) : std::string_view();
  return exists;
}

bool asame(std::string_view a, std::string_view b) {
  return asameKey(a) == asameKey(b);
}

std::string asameKey(std::string_view text) {
  return upperCase(bare(text));
}

bool asameCs(std::string_view a, std::string_view b) {
  return bare(a) == bare(b);
}

bool readGis(std::string_view command, std::string_view keyword) {
  return containsEither(command, "Read MI ", "Read GIS ", keyword);
}

bool writeGis(std::string_view command, std::string_view keyword) {
  return containsEither(command, "Write MI ", "Write GIS ", keyword);
}

bool readRowCol(std::string_view command, std::string_view keyword) {
  return containsEither(command, "Read MID ", "Read RowCol ", keyword);
}

bool readGisAny(std::string_view command) {
  return readGis(command, "");
}

bool readRowColAny(std::string_view command) {
  return readRowCol(command, "");
}

bool numberLine(std::string& line) {
  removeLeadingBlanks(line);
  return line.empty() || isDigit(line.front()) || line.front() == '-' || line.front() == '.';
}

bool positiveIntegerNumber(std::string& text) {
  removeLeadingBlanks(text);
  const std::string_view digits = trimmed(text);
  return !digits.empty() && std::all_of(digits.begin(), digits.end(), isDigit);
}

}  // namespace nivaro
