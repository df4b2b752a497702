// Exported routines with any texts: rows of the table of calls, from which the inputs come, and what
// must hold whatever stands in them. Sections: "call" (a row), "width" and "file" (for the routines
// that read a unit), "variables" (a name and a value on each line).
#include <cstdlib>

#include "exports/calls.hpp"
#include "exports/the_module.hpp"
#include "files/path.hpp"
#include "fuzz/fuzz_input.hpp"
#include "nivaro_morphology.h"
#include "text/blank_padded.hpp"
#include "text/counting.hpp"
#include "text/keyword.hpp"
#include "text/line_reader.hpp"
#include "text/transform.hpp"
#include "text/value_list.hpp"

namespace nivaro::fuzz {
namespace {

using test::Routine;
using test::Row;

// Every text that is read is there, and every one that is changed but where it is only given.
bool isComplete(const Routine& routine, const Row& row) {
  const std::size_t first = routine.parameters.starts_with('R') ? 1 : 0;
  if (row.arguments.size() + first != routine.parameters.size()) return false;
  const bool givesTexts = routine.name == "COMMANDLINE" || routine.name == "CHECKLINE" ||
                          routine.name == "FLAGEXISTSRET";
  for (std::size_t i = 0; i < row.arguments.size(); ++i) {
    const char kind = routine.parameters[i + first];
    const auto& before = row.arguments[i].before;
    if (before ? before->isText != (kind == 't' || kind == 'T')
               : kind == 't' || (kind == 'T' && (i == 0 || !givesTexts)))
      return false;
  }
  return true;
}

std::string_view textOf(const Row& row, std::size_t number) {
  return row.arguments[number].before->text;
}

// A routine that ends the process is not called: the core tells so before.
bool endsRun(const Routine& routine, const Row& row) {
  if (routine.name == "COMMENTLINE") {
    std::string line(textOf(row, 0));
    return !commentLine(line, theModule().variables);
  }
  if (!routine.name.starts_with("EXTRACT")) return routine.name == "READLINE";
  const std::string_view line = textOf(row, 0), lowered = textOf(row, 1), key = textOf(row, 2);
  const auto& words = row.arguments[3].before->words;
  const auto column =
      static_cast<std::int32_t>(std::strtoll(words.empty() ? "" : words[0].c_str(), nullptr, 10));
  if (routine.name == "EXTRACTINTEGER") return !extractInteger(line, lowered, key, column, 0);
  if (routine.name == "EXTRACTREAL") return !extractReal(line, lowered, key, column, 0.0);
  return !extractString(line, lowered, key, column) ||
         !extractStringRem(line, lowered, key, column);
}

constexpr struct {
  std::string_view name;
  std::string (*core)(std::string_view);
} kTransformations[] = {
    {"TRIMF", trimF},
    {"UPPERCASE", upperCase},
    {"LOWERCASE", lowerCase},
    {"DOUBLEQUOTE", doubleQuote},
    {"SPACETOUNDERSCORE", spaceToUnderscore},
    {"CLEANATTRIBUTENAME", cleanAttributeName},
    {"REMOVEQUOTES", removeQuotes},
    {"REMOVESPACES", removeSpaces},
    {"FILEEXT", fileExt},
    {"FILENAME", fileName},
    {"FILENAMENO_", fileNameNoTail},
    {"FILENAMEPATH", fileNamePath},
    {"FILEFOLDERPATH", fileFolderPath},
    {"REMOVEDOTDOT", removeDotDot},
};

void callRow(const Routine& routine, const Row& row) {
  if (!routine.hasTexts() || routine.name.starts_with("QVMOR") || !isComplete(routine, row) ||
      endsRun(routine, row))
    return;
  const std::string broken = lawsBroken(routine, row);
  require(broken.empty(), broken.c_str());
  for (const auto& [name, core] : kTransformations)
    if (name == routine.name) {
      const std::string given = routine.call(row, {.room = 300}).given.front();
      require(given == padTo(core(textOf(row, 0)), given.size()), "a result is that of its core");
    }
}

void requireParts(std::string_view path) {
  constexpr std::string_view kSeparators = "/\\";
  const std::string whole(trimmed(path));
  require(fileFolderPath(path) + fileNameExt(path) == whole ||
              trimmed(fileFolderPath(path)) != fileFolderPath(path),
          "folder and name make the path");
  require(fileNameExt(path).find_first_of(kSeparators) == std::string::npos,
          "a name has no separator");
  require(whole.ends_with(fileExtKc(path)), "an extension is the end of its name");
  require(whole.starts_with(fileNamePath(path)) && whole.starts_with(fileNamePathNoTail(path)),
          "a path without its end is the start of the path");
  require(fileName(path).starts_with(fileNameNoTail(path)), "a tail is the end of its name");
}

void requireTidy(std::string_view path) {
  const std::string tidy = removeDotDot(path);
  require(tidy.find('/') == std::string::npos, "tidy paths have backslashes only");
  require(tidy.find("\\.\\") == std::string::npos, "no step to the folder itself is left");
  require(tidy.size() <= trimmed(path).size(), "tidying makes no path longer");

  std::string cleaned(path);
  cleanPath(cleaned);
  std::string again = cleaned;
  require(cleanPath(again) == cleaned, "a clean path is clean");
}

void requireCounts(std::string_view text) {
  require(std::abs(numberOfNumbers(text)) <= static_cast<int>(text.size()), "numbers are counted");
  std::string changed(text);
  const std::int32_t pieces = numberOfSubstrings(changed, ",");
  require(substring(changed, ",", pieces + 1).empty(), "there is no piece behind the last");
  require(asame(text, upperCase(text)), "letter case does not count");
}

void readLines(const Folder& folder, std::string_view file, std::size_t width) {
  Module& module = theModule();
  constexpr std::int32_t kUnit = 77;
  folder.write("file", file);
  module.units.open(kUnit, "file", {});
  Unit* unit = module.units.find(kUnit);
  const test::GuardedArray<char> line(width, test::Edge::Back);
  const auto length = static_cast<nivaro_length>(width);
  std::string core;
  while (EOFLINEREAD(&kUnit, line.data(), length) == 0) {
    unit->backspace();
    const auto holdsCommand =
        readLine(unit, kUnit, width, core, module.variables, false, module.console);
    if (!holdsCommand) break;
    unit->backspace();
    require((READLINE(&kUnit, line.data(), length) != 0) == holdsCommand.value(),
            "a line that was stepped back over is read again");
    require(std::string_view(line.data(), width) == padTo(core, width), "as the core reads it");
  }
  module.units.close(kUnit);
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  theModule().variables.clear();
  addVariables(theModule(), input.text("variables"));
  DMESSAGES.suppression_flag = -1;

  if (const auto row = test::rowOf(input.value("call"))) {
    for (const std::string& name : row->names)
      if (const Routine* routine = test::routineOf(name)) callRow(*routine, *row);
    for (const test::Argument& argument : row->arguments) {
      if (!argument.before || !argument.before->isText) continue;
      requireParts(argument.before->text);
      requireTidy(argument.before->text);
      requireCounts(argument.before->text);
    }
  }
  if (!input.text("file").empty())
    readLines(folder, input.text("file"),
              static_cast<std::size_t>(Numbers(input.text("width")).upTo(300)));
}

}  // namespace nivaro::fuzz
