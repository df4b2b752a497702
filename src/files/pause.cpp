#include "files/pause.hpp"

#include <string>

namespace nivaro {

// The prompt is a line of its own: what follows the pause then never ends up behind it, also where
// nobody's Enter key ends the line.
bool pauseWithPrompt(Console& console, std::string_view prompt) {
  console.line(prompt);
  std::string ignored;
  return console.readLine(ignored);
}

bool pauseRun(Console& console) {
  console.line("");
  return pauseWithPrompt(console, kContinuePrompt);
}

}  // namespace nivaro
