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

bool same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

void transformTexts(const Texts& texts) {
  using Export = void (*)(char*, nivaro_length, const char*, nivaro_length);
  using Core = std::string (*)(std::string_view);
  constexpr std::pair<Export, Core> kRoutines[] = {
      {TRIMF, trimF},
      {UPPERCASE, upperCase},
      {LOWERCASE, lowerCase},
      {DOUBLEQUOTE, doubleQuote},
      {SPACETOUNDERSCORE, spaceToUnderscore},
      {CLEANATTRIBUTENAME, cleanAttributeName},
      {SS256, ss256},
      {REMOVEQUOTES, removeQuotes},
      {REMOVESPACES, removeSpaces},
  };
  const Buffer a(texts.a);
  const Buffer result(texts.resultLength);
  for (const auto& [exported, core] : kRoutines) {
    exported(result.data(), result.length(), a.data(), a.length());
    requireResult(result, core(texts.a));

    // The result may lie in the argument.
    const Buffer inPlace(texts.a);
    exported(inPlace.data(), inPlace.length(), inPlace.data(), inPlace.length());
    requireResult(inPlace, core(texts.a));
  }

  const Buffer b(texts.b);
  const Buffer c(texts.c);
  ALPHANUMERICONLY(result.data(), result.length(), a.data(), b.data(), a.length(), b.length());
  for (const char shown : trimmed(result.text()))
    require(isLetter(shown) || isDigit(shown) || shown == texts.b.substr(0, 1).front(),
            "nothing but letters, digits and the replacement");
  REPLACE(result.data(), result.length(), a.data(), b.data(), c.data(), a.length(), b.length(),
          c.length());
  requireResult(result, replace(texts.a, texts.b, texts.c));
  REPLACEALL(result.data(), result.length(), a.data(), b.data(), c.data(), a.length(), b.length(),
             c.length());
  requireResult(result, replaceAll(texts.a, texts.b, texts.c));
  require(a.text() == texts.a && b.text() == texts.b && c.text() == texts.c,
          "arguments that are read stay as they are");
}

void changeTexts(const Texts& texts) {
  const Buffer blankTest(texts.a);
  BLANK(blankTest.data(), blankTest.length());
  require(blankTest.text().find('\t') == std::string_view::npos, "no tab is left");

  const Buffer cut(texts.a);
  const std::int32_t length = LENSL(cut.data(), cut.length());
  require(length >= 0 && length <= cut.length(), "a length is at most that of its text");

  const Buffer digits(texts.a);
  const bool isNumber = POSITIVEINTEGERNUMBER(digits.data(), digits.length()) != 0;
  std::int32_t number = -1;
  if (isNumber && CHECKINT4(digits.data(), &number, digits.length()) != 0)
    require(number >= 0, "a row of digits is a positive integer");
  const Buffer line(texts.a);
  NUMBERLINE(line.data(), line.length());
  require(trimmed(line.text()) == stripped(texts.a), "leading blanks are taken off");
}

void compareTexts(const Texts& texts) {
  const Buffer a(texts.a);
  const Buffer b(texts.b);
  const Buffer rest(texts.resultLength);
  const bool exists = FLAGEXISTS(a.data(), b.data(), a.length(), b.length()) != 0;
  require((FLAGEXISTSRET(a.data(), b.data(), rest.data(), a.length(), b.length(), rest.length()) !=
           0) == exists,
          "a flag that exists is found");
  std::string_view behind;
  flagExistsRet(texts.a, texts.b, behind);
  requireResult(rest, behind);

  const bool isSame = ASAME(a.data(), b.data(), a.length(), b.length()) != 0;
  require(isSame == (ASAME(b.data(), a.data(), b.length(), a.length()) != 0), "same both ways");
  if (ASAMECS(a.data(), b.data(), a.length(), b.length()) != 0)
    require(isSame, "the same with letter case is the same without");
  READGIS(a.data(), b.data(), a.length(), b.length());
  WRITEGIS(a.data(), b.data(), a.length(), b.length());
  READROWCOL(a.data(), b.data(), a.length(), b.length());
  READGISANY(a.data(), a.length());
  READROWCOLANY(a.data(), a.length());
}

void takeValues(const Texts& texts, Numbers& numbers) {
  const Buffer line(texts.a);
  const Buffer lowered(lowerCase(texts.a));
  const Buffer key(texts.b);
  const Buffer result(texts.resultLength);
  const std::int32_t column = numbers.integer();
  const std::int32_t integer = numbers.integer();
  const double real = numbers.real();

  if (const auto core = extractInteger(texts.a, lowered.text(), texts.b, column, integer))
    require(EXTRACTINTEGER(line.data(), lowered.data(), key.data(), &column, &integer,
                           line.length(), lowered.length(), key.length()) == core.value(),
            "an integer is the one in the list");
  if (const auto core = extractReal(texts.a, lowered.text(), texts.b, column, real))
    require(same(EXTRACTREAL(line.data(), lowered.data(), key.data(), &column, &real, line.length(),
                             lowered.length(), key.length()),
                 core.value()),
            "a real is the one in the list");
  if (const auto core = extractString(texts.a, lowered.text(), texts.b, column)) {
    EXTRACTSTRING(result.data(), result.length(), line.data(), lowered.data(), key.data(), &column,
                  line.length(), lowered.length(), key.length());
    requireResult(result, core.value());
  }
  if (const auto core = extractStringRem(texts.a, lowered.text(), texts.b, column)) {
    EXTRACTSTRINGREM(result.data(), result.length(), line.data(), lowered.data(), key.data(),
                     &column, line.length(), lowered.length(), key.length());
    requireResult(result, core.value());
  }

  double csv = -5.0;
  std::int32_t found = -5;
  if (CSVCOLUMN(line.data(), key.data(), &found, line.length(), key.length()) != 0)
    require(found >= 1 && found <= 1 + std::count(texts.a.begin(), texts.a.end(), ','),
            "a column lies in its header");
  CSVVALUE(line.data(), &column, &csv, line.length());
  double checked = -5.0;
  if (CHECKREAL(line.data(), &checked, line.length()) == 0)
    require(checked == -5.0, "no real, no value");
}

void count(const Texts& texts, Numbers& numbers) {
  const Buffer changed(texts.a);
  const Buffer separator(texts.b);
  const Buffer result(texts.resultLength);
  const std::int32_t pieces =
      NUMBEROFSUBSTRINGS(changed.data(), separator.data(), changed.length(), separator.length());
  require(pieces >= 0 && pieces <= changed.length() + 1, "no more pieces than characters");
  const std::int32_t index = numbers.integer();
  SUBSTRING(result.data(), result.length(), changed.data(), separator.data(), &index,
            changed.length(), separator.length());
  requireResult(result, substring(changed.text(), texts.b, index));
  if (index > pieces && pieces > 0)
    require(trimmed(result.text()).empty(), "there is no piece behind the last");

  const Buffer a(texts.a);
  require(std::abs(NUMBEROFNUMBERS(a.data(), a.length())) <= a.length(), "numbers are counted");
  NUMBEROFDAYS(a.data(), a.length());
}

void writeNumbers(const Texts& texts, Numbers& numbers) {
  const Buffer result(texts.resultLength);
  const std::int32_t integer = numbers.integer();
  const std::int32_t digits = numbers.integer();
  const double real = numbers.real();
  const auto wide = std::bit_cast<std::int64_t>(real);
  // By bits: the value need not fit the smaller type.
  const auto narrow = std::bit_cast<float>(integer);
  AINTEGER(result.data(), result.length(), &integer);
  requireResult(result, std::to_string(integer));
  AINTEGER8(result.data(), result.length(), &wide);
  requireResult(result, std::to_string(wide));
  AINTEGERPREC0(result.data(), result.length(), &integer, &digits);
  requireResult(result, aintegerPrec0(integer, digits));
  AINTEGER8PREC0(result.data(), result.length(), &wide, &digits);
  requireResult(result, aintegerPrec0(wide, digits));
  AREAL(result.data(), result.length(), &real);
  requireResult(result, areal(real));
  AREAL8(result.data(), result.length(), &real);
  requireResult(result, areal8(real));
  AREALD(result.data(), result.length(), &real, &digits);
  requireResult(result, areald(real, digits));
  AREALD4(result.data(), result.length(), &narrow, &digits);
  requireResult(result, areald(static_cast<double>(narrow), digits));
  AREALD8(result.data(), result.length(), &real, &digits);
  requireResult(result, areald(real, digits));
  AREALDPREC0(result.data(), result.length(), &real, &digits, &integer);
  requireResult(result, arealdPrec0(real, digits, integer));
}

void splitLines(const Texts& texts, Numbers& numbers) {
  Module& module = theModule();
  const Buffer value(texts.resultLength);
  const Buffer command(texts.c.size());
  std::string core(texts.a);
  if (const auto split = commandLine(core, isTrue(module.record.strict_command_flag))) {
    const Buffer line(texts.a);
    COMMANDLINE(line.data(), value.data(), command.data(), line.length(), value.length(),
                command.length());
    requireResult(value, split.value().value);
    requireResult(command, split.value().command);
  }
  const std::int32_t column = numbers.integer();
  const Buffer line(texts.a);
  const Buffer flag(texts.b);
  const Buffer separator(texts.c);
  CHECKLINE(line.data(), flag.data(), separator.data(), &column, value.data(), command.data(),
            line.length(), flag.length(), separator.length(), value.length(), command.length());
  const CheckedLine checked = checkLine(texts.a, texts.b, texts.c, column);
  requireResult(value, checked.value);
  requireResult(command, checked.command);

  core = texts.a;
  if (const auto holdsNothing = commentLine(core, module.variables)) {
    const Buffer comment(texts.a);
    COMMENTLINE(comment.data(), comment.length());
    requireResult(comment, core);
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
  for (bool isOpen = true; isOpen && EOFLINEREAD(&kUnit, line.data(), line.length()) == 0;) {
    unit->backspace();
    const auto holdsCommand = readLine(unit, kUnit, lineLength, core, module.variables,
                                       isTrue(module.record.echo_flag), module.console);
    isOpen = static_cast<bool>(holdsCommand);
    if (!isOpen) break;
    unit->backspace();
    require((READLINE(&kUnit, line.data(), line.length()) != 0) == holdsCommand.value(),
            "a line that was stepped back over is read again");
    requireResult(line, core);
  }
  module.units.close(kUnit);
}

}  // namespace
}  // namespace nivaro::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nivaro;
  using namespace nivaro::fuzz;
  static const Folder folder;
  const Moment moment;
  const Archive input(data, size);
  Module& module = theModule();
  module.variables.clear();
  for (const std::string_view line : linesOf(input.text("variables"))) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    module.variables.add(line.substr(0, blank), line.substr(std::min(blank + 1, line.size())));
  }

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
  writeNumbers(texts, numbers);
  splitLines(texts, numbers);
  readLines(folder, input.text("file"), texts.resultLength);
  return 0;
}
