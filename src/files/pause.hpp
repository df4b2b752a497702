// Console pauses: a text, and the wait for the Enter key.
#pragma once

#include <string_view>

#include "platform/console.hpp"

namespace nivaro {

inline constexpr std::string_view kContinuePrompt = "Press Enter to Continue";
inline constexpr std::string_view kClosePrompt = "Press Enter to Close";

// False when standard input has ended. A pause that only informs goes on regardless; a pause whose
// purpose is a retry then ends the run (Termination::endUnanswered), or it would never end.
bool pauseWithPrompt(Console& console, std::string_view prompt);

// An empty line, then the pause with "Press Enter to Continue".
bool pauseRun(Console& console);

}  // namespace nivaro
