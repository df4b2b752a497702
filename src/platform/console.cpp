#include "platform/console.hpp"

#include <cstdio>

#include "platform/standard_output.hpp"

namespace nivaro {

// One call for text and line end, so that lines stay whole where the host writes between them.
void StandardConsole::line(std::string_view text) {
  writeStandardOutput(std::string(text).append("\n"));
}

void StandardConsole::open(std::string_view text) {
  writeStandardOutput(text);
}

bool StandardConsole::readLine(std::string& answer) {
  answer.clear();
  int c = std::getc(stdin);
  if (c == EOF) return false;
  for (; c != EOF && c != '\n'; c = std::getc(stdin)) answer += static_cast<char>(c);
  if (answer.ends_with('\r')) answer.pop_back();
  return true;
}

}  // namespace nivaro
