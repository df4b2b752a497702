// The opening of one file in conversation with the person at the console: asks for another name
// when an input file is missing, offers to close a file that is open already, waits while a file is
// locked, creates missing folders. A question that nobody can answer any more ends the run.
#pragma once

#include <cstdint>
#include <string>

#include "files/open_mode.hpp"
#include "files/termination.hpp"
#include "platform/console.hpp"
#include "platform/host_path.hpp"
#include "platform/process.hpp"
#include "platform/unit_table.hpp"

namespace nivaro {

struct OpenRequest {
  std::int32_t unit = 0;
  std::string name;
  std::string mode;  // two characters
  std::int32_t recordLength = 0;
};

class OpenDialogue {
 public:
  OpenDialogue(Console& console, Process& process, UnitTable& units, Termination& termination);

  // Returns the unit: 0 after a failed open in mode "A ", the request's number, but without a file,
  // after an unknown mode. The request holds the name that was asked for last.
  std::int32_t openUnit(OpenRequest& request);

 private:
  enum class Outcome { Opened, NoUnit, NothingOpened, AskForName };

  // One round, from the announcement to the outcome.
  Outcome tryToOpen(const OpenRequest& request);
  Outcome openInput(const OpenRequest& request, const OpenMode& mode, const HostPath& file);
  Outcome openOutput(const OpenRequest& request, const OpenMode& mode, HostPath file);
  void openOrStop(const OpenRequest& request, const OpenMode& mode, const HostPath& file);
  std::string open(const OpenRequest& request, const OpenMode& mode, const HostPath& file);
  Outcome sayOpened(const OpenRequest& request);

  // The questions.
  std::string askForName(const std::string& name);
  bool isFreeToReplace(const OpenRequest& request, const HostPath& file);
  std::string answerTo(const std::string& question);

  // What an output file may lack; each ends with the wait for a new attempt.
  void waitForFile(const std::string& name);
  void waitForFolder(const std::string& name, const std::string& folder);
  void waitForEnter();

  void listMeanings(const HostPath& file);
  [[noreturn]] void stop(const std::string& message);

  Console& console_;
  Process& process_;
  UnitTable& units_;
  Termination& termination_;
};

}  // namespace nivaro
