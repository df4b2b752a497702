// Text and control-line routines through their exported names, compared with what is behind them.
// Sections: "numbers" (result length, column, counts, values), "a", "b", "c" (texts), "file" (for the
// routines that read a unit), "variables" (a name and a value on each line).
//
// Where a routine ends the process it is not called: the core tells so before.
#include <bit>
#include <cmath>

#include "exports/the_module.hpp"
#include "fuzz/exact_buffer.hpp"
#include "platform/letters.hpp"
#include "text/command_line.hpp"
#include "text/counting.hpp"
#include "text/csv.hpp"
#include "text/keyword.hpp"
#include "text/line_reader.hpp"
#include "text/number_text.hpp"
#include "text/transform.hpp"
#include "text/value_list.hpp"

namespace nivaro::fuzz {
namespace {

struct Texts {
  std::string_view a;
  std::string_view b;
  std::string_view c;
  std::size_t resultLength;
};

void transformTexts(const Texts& texts) {
  requireResults({{TRIMF, trimF},
                  {UPPERCASE, upperCase},
                  {LOWERCASE, lowerCase},
                  {DOUBLEQUOTE, doubleQuote},
                  {SPACETOUNDERSCORE, spaceToUnderscore},
                  {CLEANATTRIBUTENAME, cleanAttributeName},
                  {SS256, ss256},
                  {REMOVEQUOTES, removeQuotes},
                  {REMOVESPACES, removeSpaces}},
                 texts.a, texts.resultLength);

  const Buffer a(texts.a), b(texts.b), c(texts.c);
  const char replacement = texts.b.empty() ? '\0' : texts.b.front();
  const std::string plain = alphanumericOnly(texts.a, replacement);
  requireResult(texts.resultLength, plain, ALPHANUMERICONLY, a, b);
  for (const char shown : trimmed(plain))
    require(isLetter(shown) || isDigit(shown) || shown == replacement,
            "nothing but letters, digits and the replacement");
  requireResult(texts.resultLength, replace(texts.a, texts.b, texts.c), REPLACE, a, b, c);
  requireResult(texts.resultLength, replaceAll(texts.a, texts.b, texts.c), REPLACEALL, a, b, c);
  require(a.text() == texts.a && b.text() == texts.b && c.text() == texts.c,
          "arguments that are read stay as they are");
}

void changeTexts(const Texts& texts) {
  const Buffer blankTest(texts.a);
  call(BLANK, blankTest);
  require(blankTest.text().find('\t') == std::string_view::npos, "no tab is left");

  const Buffer cut(texts.a);
  const std::int32_t length = call(LENSL, cut);
  require(length >= 0 && length <= cut.length(), "a length is at most that of its text");

  const Buffer digits(texts.a);
  const bool isNumber = call(POSITIVEINTEGERNUMBER, digits) != 0;
  std::int32_t number = -1;
  if (isNumber && call(CHECKINT4, digits, number) != 0)
    require(number >= 0, "a row of digits is a positive integer");
  const Buffer line(texts.a);
  call(NUMBERLINE, line);
  require(trimmed(line.text()) == stripped(texts.a), "leading blanks are taken off");
}

void compareTexts(const Texts& texts) {
  const Buffer a(texts.a), b(texts.b), rest(texts.resultLength);
  require(call(FLAGEXISTSRET, a, b, rest) == call(FLAGEXISTS, a, b), "a flag that exists is found");
  std::string_view behind;
  flagExistsRet(texts.a, texts.b, behind);
  requireHolds(rest.text(), behind);

  const bool isSame = call(ASAME, a, b) != 0;
  require(isSame == (call(ASAME, b, a) != 0), "same both ways");
  require(isSame || call(ASAMECS, a, b) == 0, "the same with letter case is the same without");
  for (const auto routine : {READGIS, WRITEGIS, READROWCOL}) call(routine, a, b);
  for (const auto routine : {READGISANY, READROWCOLANY}) call(routine, a);
}

void takeValues(const Texts& texts, Numbers& numbers) {
  const Buffer line(texts.a), lowered(lowerCase(texts.a)), key(texts.b);
  const std::int32_t column = numbers.integer();
  const std::int32_t integer = numbers.integer();
  const double real = numbers.real();

  if (const auto core = extractInteger(texts.a, lowered.text(), texts.b, column, integer))
    require(call(EXTRACTINTEGER, line, lowered, key, column, integer) == core.value(),
            "an integer is the one in the list");
  if (const auto core = extractReal(texts.a, lowered.text(), texts.b, column, real))
    require(sameBits(call(EXTRACTREAL, line, lowered, key, column, real), core.value()),
            "a real is the one in the list");
  if (const auto core = extractString(texts.a, lowered.text(), texts.b, column))
    requireResult(texts.resultLength, core.value(), EXTRACTSTRING, line, lowered, key, column);
  if (const auto core = extractStringRem(texts.a, lowered.text(), texts.b, column))
    requireResult(texts.resultLength, core.value(), EXTRACTSTRINGREM, line, lowered, key, column);

  double csv = -5.0;
  std::int32_t found = -5;
  if (call(CSVCOLUMN, line, key, found) != 0)
    require(found >= 1 && found <= 1 + std::count(texts.a.begin(), texts.a.end(), ','),
            "a column lies in its header");
  call(CSVVALUE, line, column, csv);
  double checked = -5.0;
  if (call(CHECKREAL, line, checked) == 0) require(checked == -5.0, "no real, no value");
}

void count(const Texts& texts, Numbers& numbers) {
  const Buffer changed(texts.a), separator(texts.b);
  const std::int32_t pieces = call(NUMBEROFSUBSTRINGS, changed, separator);
  require(pieces >= 0 && pieces <= changed.length() + 1, "no more pieces than characters");
  const std::int32_t index = numbers.integer();
  const std::string piece = resultOf(texts.resultLength, SUBSTRING, changed, separator, index);
  requireHolds(piece, substring(changed.text(), texts.b, index));
  if (index > pieces && pieces > 0)
    require(trimmed(piece).empty(), "there is no piece behind the last");

  const Buffer a(texts.a);
  require(std::abs(call(NUMBEROFNUMBERS, a)) <= a.length(), "numbers are counted");
  call(NUMBEROFDAYS, a);
}

void writeNumbers(std::size_t length, Numbers& numbers) {
  const std::int32_t integer = numbers.integer();
  const std::int32_t digits = numbers.integer();
  const double real = numbers.real();
  const auto wide = std::bit_cast<std::int64_t>(real);
  // By bits: the value need not fit the smaller type.
  const auto narrow = std::bit_cast<float>(integer);
  requireResult(length, std::to_string(integer), AINTEGER, integer);
  requireResult(length, std::to_string(wide), AINTEGER8, wide);
  requireResult(length, aintegerPrec0(integer, digits), AINTEGERPREC0, integer, digits);
  requireResult(length, aintegerPrec0(wide, digits), AINTEGER8PREC0, wide, digits);
  requireResult(length, areal(real), AREAL, real);
  requireResult(length, areal8(real), AREAL8, real);
  requireResult(length, areald(real, digits), AREALD, real, digits);
  requireResult(length, areald(static_cast<double>(narrow), digits), AREALD4, narrow, digits);
  requireResult(length, areald(real, digits), AREALD8, real, digits);
  requireResult(length, arealdPrec0(real, digits, integer), AREALDPREC0, real, digits, integer);
}

void splitLines(const Texts& texts, Numbers& numbers) {
  Module& module = theModule();
  const Buffer value(texts.resultLength), command(texts.c.size());
  std::string core(texts.a);
  if (const auto split = commandLine(core, isTrue(module.record.strict_command_flag))) {
    const Buffer line(texts.a);
    call(COMMANDLINE, line, value, command);
    requireHolds(value.text(), split.value().value);
    requireHolds(command.text(), split.value().command);
  }
  const std::int32_t column = numbers.integer();
  const Buffer line(texts.a), flag(texts.b), separator(texts.c);
  call(CHECKLINE, line, flag, separator, column, value, command);
  const CheckedLine checked = checkLine(texts.a, texts.b, texts.c, column);
  requireHolds(value.text(), checked.value);
  requireHolds(command.text(), checked.command);

  core = texts.a;
  if (const auto holdsNothing = commentLine(core, module.variables)) {
    const Buffer comment(texts.a);
    call(COMMENTLINE, comment);
    requireHolds(comment.text(), core);
    if (module.variables.empty())
      require(core.find_first_of("!#") == core.npos, "comments are cut off");
  }
}

void readLines(const Folder& folder, std::string_view file, std::size_t lineLength) {
  Module& module = theModule();
  constexpr std::int32_t kUnit = 77;
  folder.write("file", file);
  module.units.open(kUnit, "file", {});
  Unit* unit = module.units.find(kUnit);
  const Buffer line(lineLength);
  std::string core;
  for (bool isOpen = true; isOpen && call(EOFLINEREAD, kUnit, line) == 0;) {
    unit->backspace();
    const auto holdsCommand = readLine(unit, kUnit, lineLength, core, module.variables,
                                       isTrue(module.record.echo_flag), module.console);
    isOpen = static_cast<bool>(holdsCommand);
    if (!isOpen) break;
    unit->backspace();
    require((call(READLINE, kUnit, line) != 0) == holdsCommand.value(),
            "a line that was stepped back over is read again");
    requireHolds(line.text(), core);
  }
  module.units.close(kUnit);
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  Module& module = theModule();
  module.variables.clear();
  addVariables(module, input.text("variables"));

  Numbers numbers(input.text("numbers"));
  const Texts texts{.a = input.value("a"),
                    .b = input.value("b"),
                    .c = input.value("c"),
                    .resultLength = static_cast<std::size_t>(numbers.upTo(300))};
  module.record.strict_command_flag = logical(numbers.flag());
  transformTexts(texts);
  changeTexts(texts);
  compareTexts(texts);
  takeValues(texts, numbers);
  count(texts, numbers);
  writeNumbers(texts.resultLength, numbers);
  splitLines(texts, numbers);
  readLines(folder, input.text("file"), texts.resultLength);
}

}  // namespace nivaro::fuzz
