#include "text/transform.hpp"

#include <algorithm>
#include <limits>

#include "platform/letters.hpp"
#include "text/blank_padded.hpp"

namespace nivaro {
namespace {

template <typename Change>
std::string eachCharacter(std::string_view text, Change change) {
  std::string result(trimmed(text));
  std::transform(result.begin(), result.end(), result.begin(), change);
  return result;
}

template <typename Unwanted>
std::string without(std::string_view text, Unwanted unwanted) {
  std::string result(text);
  std::erase_if(result, unwanted);
  result.resize(trimmedLength(result));
  return result;
}

// A control code that is not the tab.
bool isControl(char c) {
  return (c >= '\0' && c < ' ' && c != '\t') || c == '\x7F';
}

std::string orX(const std::string& name) {
  return trimmed(name).empty() ? "X" : name;
}

std::string replaceUpTo(std::size_t most, std::string_view text, std::string_view oldText,
                        std::string_view newText) {
  const std::string_view source = trimmed(text);
  const std::string_view wanted = trimmed(oldText);
  if (wanted.empty()) return std::string(source);

  std::string result;
  std::size_t copied = 0;
  for (std::size_t count = 0; count < most; ++count) {
    const std::size_t found = findIgnoringCase(source, wanted, copied);
    if (found == std::string_view::npos) break;
    result.append(source, copied, found - copied).append(trimmed(newText));
    copied = found + wanted.size();
  }
  result.append(source, copied);
  result.resize(trimmedLength(result));
  return result;
}

}  // namespace

std::string trimF(std::string_view text) {
  return std::string(stripped(text));
}

std::string upperCase(std::string_view text) {
  return eachCharacter(text, upper);
}

std::string lowerCase(std::string_view text) {
  return eachCharacter(text, lower);
}

std::string removeSpaces(std::string_view text) {
  return without(text, [](char c) { return c == ' '; });
}

std::string removeQuotes(std::string_view text) {
  return without(text, isQuote);
}

void removeTabs(std::string& text) {
  std::erase(text, '\t');
}

std::string printable(std::string_view text) {
  std::string shown(text);
  std::replace_if(shown.begin(), shown.end(), isControl, '?');
  return shown;
}

std::string doubleQuote(std::string_view text) {
  std::string result;
  for (const char c : trimmed(text)) result.append(c == '"' ? 2 : 1, c);
  return result;
}

std::string oneLine(std::string_view text) {
  std::string line(text);
  std::replace_if(line.begin(), line.end(), isControl, ' ');
  line.resize(trimmedLength(line));
  return line;
}

std::string spaceToUnderscore(std::string_view text) {
  if (trimmed(text).empty()) return "Blank";
  return eachCharacter(text, [](char c) { return c == ' ' ? '_' : c; });
}

std::string alphanumericOnly(std::string_view text, char replacement) {
  const auto isForeign = [](char c) { return !isLetter(c) && !isDigit(c); };
  if (replacement == '\0') return orX(without(text, isForeign));
  return orX(eachCharacter(text, [&](char c) { return isForeign(c) ? replacement : c; }));
}

std::string cleanAttributeName(std::string_view text) {
  return orX(without(text, [](char c) { return !isLetter(c) && !isDigit(c) && c != '_'; }));
}

bool blank(std::string& text) {
  removeTabs(text);
  return trimmed(text).empty();
}

std::string ss256(std::string_view text) {
  return std::string(trimmed(text.substr(0, 256)));
}

std::int32_t lensl(std::span<char> text) {
  std::size_t length = text.size();
  while (length > 0 && (text[length - 1] == ' ' || text[length - 1] == '\0')) --length;
  if (length < text.size()) text[length] = '\0';
  return static_cast<std::int32_t>(length);
}

std::string replace(std::string_view text, std::string_view oldText, std::string_view newText) {
  return replaceUpTo(1, text, oldText, newText);
}

std::string replaceAll(std::string_view text, std::string_view oldText, std::string_view newText) {
  return replaceUpTo(std::numeric_limits<std::size_t>::max(), text, oldText, newText);
}

}  // namespace nivaro
