#include "files/open_dialogue.hpp"

#include <optional>
#include <string_view>

#include "files/path.hpp"
#include "files/pause.hpp"
#include "platform/fixed_field.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

constexpr std::size_t kAnswerLength = 80;

std::string quoted(const std::string& name) {
  return '"' + printable(name) + '"';
}

// Modes that add to a file, or share it, may open it a second time.
bool mayOpenTwice(const std::string& mode) {
  return mode[0] == 'A' || mode[0] == 'S';
}

}  // namespace

OpenDialogue::OpenDialogue(Console& console, Process& process, UnitTable& units,
                           Termination& termination)
    : console_(console), process_(process), units_(units), termination_(termination) {}

std::int32_t OpenDialogue::openUnit(OpenRequest& request) {
  for (;;) {
    request.name = cleanPath(request.name);
    const Outcome outcome = tryToOpen(request);
    if (outcome == Outcome::NoUnit) return 0;
    if (outcome != Outcome::AskForName) return request.unit;
    request.name = askForName(request.name);
  }
}

OpenDialogue::Outcome OpenDialogue::tryToOpen(const OpenRequest& request) {
  console_.line("");
  console_.open("Trying to open (" + std::string(trimmed(request.mode)) + ") file " +
                printable(correctSlash(request.name)) + "...");

  const HostPath file = hostPath(request.name);
  const OpenMode* mode = findOpenMode(request.mode);
  if (mode != nullptr && mode->isInput) return openInput(request, *mode, file);

  if (!mayOpenTwice(request.mode) && !isFreeToReplace(request, file)) return Outcome::AskForName;
  if (mode == nullptr) {
    console_.line("  Unrecognised file type " + request.mode + " file " +
                  request.name.substr(0, kAnswerLength));
    return Outcome::NothingOpened;
  }
  if (mode->code == "IO") {
    openOrStop(request, *mode, file);
    return Outcome::Opened;  // without a word, as this mode has always been
  }
  return openOutput(request, *mode, file);
}

OpenDialogue::Outcome OpenDialogue::openInput(const OpenRequest& request, const OpenMode& mode,
                                              const HostPath& file) {
  // A name ends at a code of 0 for the system: what is meant is not what would be opened.
  const bool isName = request.name.find('\0') == std::string::npos;
  if (!file.exists || !isName) {
    console_.line("");
    console_.line("CHECK 0008 - " + quoted(request.name) + " cannot be found or opened.");
    listMeanings(file);
    return Outcome::AskForName;
  }
  openOrStop(request, mode, file);
  return sayOpened(request);
}

OpenDialogue::Outcome OpenDialogue::openOutput(const OpenRequest& request, const OpenMode& mode,
                                               HostPath file) {
  const bool existed = file.exists;
  const std::string folder = dosPath(fileFolderPath(request.name));
  bool folderIsThere = false;  // an attempt that fails in spite of it has another cause
  while (!open(request, mode, file).empty()) {
    if (existed && mode.code == "A ") {
      console_.line("FAILED.  No File Unit allocated.");
      return Outcome::NoUnit;
    }
    console_.line("Can't Open: " + request.name);
    listMeanings(file);
    if (existed || folderIsThere || !file.ambiguous.empty())
      waitForFile(request.name);
    else if (createFolder(folder))
      folderIsThere = true;
    else
      waitForFolder(request.name, folder);
    file = hostPath(request.name);
  }
  return sayOpened(request);
}

// For modes whose errors are not a matter for a conversation.
void OpenDialogue::openOrStop(const OpenRequest& request, const OpenMode& mode,
                              const HostPath& file) {
  const std::string reason = open(request, mode, file);
  if (reason.empty()) return;
  console_.line("");
  stop("Could not open " + quoted(request.name) + ": " + reason);
}

std::string OpenDialogue::open(const OpenRequest& request, const OpenMode& mode,
                               const HostPath& file) {
  if (!file.ambiguous.empty())
    return "more than one file differs from this name in letter case only";
  OpenOptions options = mode.options;
  if (mode.callersLength) options.recordLength = request.recordLength;
  return units_.open(request.unit, file.path, options);
}

OpenDialogue::Outcome OpenDialogue::sayOpened(const OpenRequest& request) {
  console_.line("OK.  File Unit:" + integerField(request.unit, 4));
  return Outcome::Opened;
}

std::string OpenDialogue::askForName(const std::string& name) {
  const std::string answer =
      answerTo("Check file exists and press enter or enter another file name: ");
  const std::string_view another = stripped(std::string_view(answer).substr(0, kAnswerLength));
  if (!another.empty()) return std::string(another);
  console_.line("No file name entered.  Trying file again...");
  return name;
}

bool OpenDialogue::isFreeToReplace(const OpenRequest& request, const HostPath& file) {
  const std::optional<std::int32_t> other = units_.numberOf(file.path);
  if (!other) return true;

  console_.line("");
  const std::string answer = answerTo(request.name + " is already open, close it? ");
  if (!answer.starts_with('Y') && !answer.starts_with('y')) return false;
  if (!units_.close(*other)) stop("  Unable to close file.");
  return true;
}

std::string OpenDialogue::answerTo(const std::string& question) {
  console_.open(question);
  std::string answer;
  if (!console_.readLine(answer)) termination_.endUnanswered(trimmed(question));
  return answer;
}

void OpenDialogue::waitForFile(const std::string& name) {
  console_.line("");
  console_.line(" Can't open: " + name);
  console_.line("");
  console_.line(" Another application or user maybe using it,");
  console_.line("    or the file's folder does not exist.");
  console_.line(" If so, close the file or create file path.");
  waitForEnter();
}

void OpenDialogue::waitForFolder(const std::string& name, const std::string& folder) {
  console_.line("");
  console_.line(" Can't open: " + name);
  console_.line("");
  console_.line("");
  console_.line("Could not create folder: " + folder);
  waitForEnter();
}

void OpenDialogue::waitForEnter() {
  if (!pauseRun(console_)) termination_.endUnanswered(kContinuePrompt);
}

void OpenDialogue::listMeanings(const HostPath& file) {
  if (file.ambiguous.empty()) return;
  console_.line("The name differs only in letter case from each of:");
  for (const std::string& path : file.ambiguous) console_.line("   " + path);
}

void OpenDialogue::stop(const std::string& message) {
  console_.line(message);
  endProcess(process_, 1);
}

}  // namespace nivaro
