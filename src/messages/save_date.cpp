#include "messages/save_date.hpp"

#include "files/pause.hpp"
#include "platform/file_status.hpp"

namespace nivaro {

namespace {

constexpr std::string_view kExportPrompt = "Re-export mif file and press Enter, or close window.";

std::string quoted(const std::string& name) {
  return '"' + name + '"';
}

}  // namespace

SaveDateCheck::SaveDateCheck(FileUnits& files, Diagnostics& diagnostics, Termination& termination)
    : files_(files), diagnostics_(diagnostics), termination_(termination) {}

bool SaveDateCheck::run(const SaveDateQuestion& question, LayerUnits& units) {
  Console& console = diagnostics_.console();
  console.open("Checking save date is later than that of " + question.table + "...");
  const std::string word = question.isError ? "ERROR 0004" : "WARNING 0004";

  const auto layerDate = saveDate(question.layer);
  if (!layerDate) {
    console.line("NOT OK");
    say(word + " - Could not access save date of " + quoted(question.layer) + " to check with " +
            quoted(question.table),
        question.logUnit);
    if (!question.isError) return true;
    console.line("");
    console.line(
        "NOTE - If using NIVARO.exe, use CHECK MI SAVE DATE == WARNING or OFF to suppress check");
    console.line("");
    termination_.exits();
  }

  const auto tableDate = saveDate(question.table);
  if (!tableDate || *layerDate >= *tableDate) {
    console.line("OK");
    return true;
  }
  console.line("NOT OK");
  if (question.isError) {
    files_.closeFile(units.mif);
    files_.closeFile(units.data);
  }
  say(word + " - Save date of " + quoted(question.table) + " file is later than that of " +
          quoted(question.layer),
      question.logUnit);
  if (question.isError) askForExport();
  return !question.isError;
}

// A line of its own kind: neither counted nor numbered by the message writer.
void SaveDateCheck::say(const std::string& line, std::int32_t logUnit) {
  diagnostics_.console().line(line);
  if (logUnit >= 1) diagnostics_.messages().toUnit(logUnit, line);
}

void SaveDateCheck::askForExport() {
  if (!pauseWithPrompt(diagnostics_.console(), kExportPrompt))
    termination_.endUnanswered(kExportPrompt);
}

}  // namespace nivaro
