#include "messages/level.hpp"

namespace nivaro {

namespace {

constexpr std::string_view kAlarmFont = R"(Font ("Arial",257,0,16711935,0))";
constexpr std::string_view kWarningFont = R"(Font ("Arial",257,0,16776960,0))";
constexpr std::string_view kCheckFont = R"(Font ("Arial",257,0,255,16777215))";
constexpr std::string_view kPlainFont = R"(Font ("Arial",257,0,53248,16777215))";

// In the order of testing; the empty word of plain text matches any line.
constexpr MessageLevel kLevels[] = {
    {"ERROR", 1, 6, &MessageRecord::error_count, true, &MessageRecord::located_error_count,
     kAlarmFont, false},
    {"WARNING", 2, 8, &MessageRecord::warning_count, true, &MessageRecord::located_warning_count,
     kWarningFont, false},
    {"CHECK", 3, 6, &MessageRecord::check_count, true, &MessageRecord::located_check_count,
     kCheckFont, true},
    {"UNSTABLE", 4, 9, nullptr, false, nullptr, kAlarmFont, false},
    {"INFORMATION:", 5, 0, &MessageRecord::warning_count, false,
     &MessageRecord::located_warning_count, kAlarmFont, false},
    {"", 0, 0, nullptr, false, nullptr, kPlainFont, true},
};

}  // namespace

const MessageLevel& levelOf(std::string_view line1) {
  const MessageLevel* level = kLevels;
  while (!line1.starts_with(level->word)) ++level;
  return *level;
}

}  // namespace nivaro
