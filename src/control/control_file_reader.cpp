#include "control/control_file_reader.hpp"

#include <optional>

#include "control/option_echo.hpp"
#include "control/option_table.hpp"
#include "files/path.hpp"
#include "text/blank_padded.hpp"
#include "text/command_line.hpp"
#include "text/keyword.hpp"
#include "text/line_reader.hpp"

namespace nivaro {

namespace {

constexpr std::size_t kLineWidth = 1000;
constexpr std::size_t kCommandWidth = 60;

// The top-level file and nine nested ones.
constexpr std::size_t kMaxOpenFiles = 10;

}  // namespace

ControlFileReader::ControlFileReader(FileUnits& files, Diagnostics& diagnostics,
                                     VariableTable& variables, SpatialCommands& spatial)
    : files_(files), diagnostics_(diagnostics), variables_(variables), spatial_(spatial) {}

void ControlFileReader::read(const ControlFileRequest& request) {
  stack_.clear();
  openNext(std::string(trimmed(request.controlFile)));
  folder_ = fileFolderPath(request.controlFile);
  setDefaults(request.parameters);
  setDefaults(request.fields);

  std::string line;
  while (nextLine(line)) process(request, line);

  for (const std::string& echo : optionEcho(request.current))
    diagnostics_.messages().toUnit(request.logUnit, echo);
  files_.closeFile(stack_.front().unit);
}

void ControlFileReader::openNext(const std::string& name) {
  const std::int32_t unit = files_.openFile(name, "I ", 1);
  stack_.push_back({unit, files_.nameOf(unit)});
}

// The next line that holds a command, of the innermost file that is not at its end; false at the
// end of the top-level file, which stays open.
bool ControlFileReader::nextLine(std::string& line) {
  const MessageRecord& record = diagnostics_.messages().record();
  while (true) {
    OpenFile& file = stack_.back();
    Unit* unit = files_.find(file.unit);
    if (unit == nullptr || unit->atEnd()) {
      if (stack_.size() == 1) return false;
      files_.closeFile(file.unit);
      stack_.pop_back();
      continue;
    }
    ++file.lineNumber;
    const Outcome<bool> holdsCommand = readLine(unit, file.unit, kLineWidth, line, variables_,
                                                isTrue(record.echo_flag), diagnostics_.console());
    if (!holdsCommand) diagnostics_.fatal(located(holdsCommand.report()));
    if (holdsCommand.value()) return true;
  }
}

void ControlFileReader::process(const ControlFileRequest& request, std::string& line) {
  const bool strict = isTrue(diagnostics_.messages().record().strict_command_flag);
  const Outcome<CommandLine> outcome = commandLine(line, strict);
  if (!outcome) diagnostics_.fatal(located(outcome.report()));
  const CommandLine& split = outcome.value();
  if (split.warning) diagnostics_.deliver(located(*split.warning));
  const std::string_view command = std::string_view(split.command).substr(0, kCommandWidth);

  if (flagExists(command, "READ FILE")) return includeFile(split.value);

  if (const Option* option = findOption(command)) {
    const std::optional<std::string> shown = setOption(*option, split.value, request.parameters);
    if (!shown)
      diagnostics_.fatal({.line1 = "ERROR - Reading parameter(s) or option for command below, or "
                                   "ambiguous command",
                          .line2 = std::string(trimmed(line)),
                          .detail1 = place()});
    diagnostics_.console().line(*shown);
    return;
  }

  if (flagExists(command, "READ MI")) {
    const SpatialSource source =
        flagExists(command, "READ MID") ? SpatialSource::ReadMid : SpatialSource::ReadMi;
    return runSpatialCommand(request, source, command, split.value, line);
  }
  if (flagExists(command, "SET"))
    return runSpatialCommand(request, SpatialSource::Set, command, split.value, line);

  diagnostics_.console().line("");
  diagnostics_.console().line("...Unrecognisable command in .mcf file");
  diagnostics_.console().line("");
  diagnostics_.fatalOnScreen(std::string(trimmed(line)) + "  [" + place() + "]");
}

void ControlFileReader::includeFile(std::string_view name) {
  if (stack_.size() == kMaxOpenFiles) {
    diagnostics_.console().line("");
    diagnostics_.console().line(place() + " reads one more file.  Does a file read itself?");
    diagnostics_.fatalOnScreen(
        "ERROR - Exceeded limit of nested files (ie. of \"Read File\" files).");
  }
  openNext(addFolder(folder_, name));
}

void ControlFileReader::runSpatialCommand(const ControlFileRequest& request, SpatialSource source,
                                          std::string_view command, std::string_view value,
                                          std::string_view line) {
  const SpatialTarget* target = findSpatialTarget(command);
  if (target == nullptr) return;
  spatial_.run({.source = source,
                .target = *target,
                .regionsAdd = flagExists(command, "ADD"),
                .value = value,
                .folder = folder_,
                .controlLine = line,
                .place = place()},
               request.fields, request.grid, request.logUnit);
}

// The report with the place of the command in its first free detail.
Report ControlFileReader::located(Report report) const {
  (report.detail1.empty() ? report.detail1 : report.detail2) = place();
  return report;
}

// Where the command being processed stands.
std::string ControlFileReader::place() const {
  const OpenFile& file = stack_.back();
  return "Line " + std::to_string(file.lineNumber) + " of file " + file.name;
}

}  // namespace nivaro
