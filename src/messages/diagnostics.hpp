// Delivers the reports of the floors below the message writer, and ends the run where one is fatal.
#pragma once

#include <string_view>
#include <utility>

#include "files/termination.hpp"
#include "messages/writer.hpp"
#include "platform/console.hpp"
#include "platform/unit.hpp"
#include "text/report.hpp"

namespace nivaro {

class Diagnostics {
 public:
  Diagnostics(Console& console, MessageWriter& messages, Termination& termination);

  // Writes the report as a message without a location; the run goes on.
  void deliver(const Report& report);

  // Writes the report and ends the run.
  [[noreturn]] void fatal(const Report& report);

  // A line on the screen only, then the end of the run.
  [[noreturn]] void fatalOnScreen(std::string_view text);

  // The value, or the end of the run with the report that came instead.
  template <typename T>
  T valueOf(Outcome<T> outcome) {
    if (!outcome) fatal(outcome.report());
    return std::move(outcome.value());
  }

  // Ends the run when writing to this file has failed (a full disk): results that are lost
  // silently are worse than a run that stops. No unit (null) is nothing lost.
  void requireWritten(const Unit* unit, std::string_view name);

  MessageWriter& messages() { return messages_; }
  Console& console() { return console_; }

 private:
  Console& console_;
  MessageWriter& messages_;
  Termination& termination_;
};

}  // namespace nivaro
