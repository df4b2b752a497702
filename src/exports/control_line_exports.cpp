// The control-line family.
#include "exports/adapters.hpp"
#include "exports/call.hpp"
#include "exports/the_module.hpp"
#include "text/command_line.hpp"
#include "text/control_line.hpp"
#include "text/keyword.hpp"
#include "text/line_reader.hpp"
#include "text/transform.hpp"

using namespace nivaro;

Logical READLINE(const std::int32_t* unit, char* line, Length lineLength) noexcept {
  return call(__func__, [&] {
    Module& module = theModule();
    return logical(module.diagnostics.valueOf(
        readLine(module.units.find(*unit), *unit, size(lineLength), TextInOut(line, lineLength),
                 module.variables, isTrue(module.record.echo_flag), module.console)));
  });
}

Logical COMMENTLINE(char* line, Length lineLength) noexcept {
  return call(__func__, [&] {
    Module& module = theModule();
    return logical(
        module.diagnostics.valueOf(commentLine(TextInOut(line, lineLength), module.variables)));
  });
}

Logical EOFLINEREAD(const std::int32_t* unit, char* buffer, Length bufferLength) noexcept {
  return call(__func__, [&] {
    return logical(eofLineRead(theModule().units.find(*unit), TextInOut(buffer, bufferLength)));
  });
}

Logical COMMANDLINE(char* line, char* value, char* command, Length lineLength, Length valueLength,
                    Length commandLength) noexcept {
  return call(__func__, [&] {
    Module& module = theModule();
    const CommandLine split = module.diagnostics.valueOf(
        commandLine(TextInOut(line, lineLength), isTrue(module.record.strict_command_flag)));
    if (split.warning) module.diagnostics.deliver(*split.warning);
    TextOut(value, valueLength) = split.value;
    TextOut(command, commandLength) = split.command;
    return logical(true);
  });
}

Logical CHECKLINE(const char* line, const char* flag, const char* separator,
                  const std::int32_t* column, char* value, char* command, Length lineLength,
                  Length flagLength, Length separatorLength, Length valueLength,
                  Length commandLength) noexcept {
  return call(__func__, [&] {
    const CheckedLine split = checkLine(text(line, lineLength), text(flag, flagLength),
                                        text(separator, separatorLength), *column);
    TextOut(value, valueLength) = split.value;
    TextOut(command, commandLength) = split.command;
    return logical(split.holdsFlag);
  });
}

Logical FLAGEXISTS(const char* text_, const char* flag, Length textLength,
                   Length flagLength) noexcept {
  return call(__func__,
              [&] { return logical(flagExists(text(text_, textLength), text(flag, flagLength))); });
}

Logical FLAGEXISTSRET(const char* text_, const char* flag, char* rest, Length textLength,
                      Length flagLength, Length restLength) noexcept {
  return call(__func__, [&] {
    std::string_view behind;
    const bool found = flagExistsRet(text(text_, textLength), text(flag, flagLength), behind);
    TextOut(rest, restLength) = behind;
    return logical(found);
  });
}

Logical ASAME(const char* a, const char* b, Length aLength, Length bLength) noexcept {
  return call(__func__, [&] { return logical(asame(text(a, aLength), text(b, bLength))); });
}

Logical ASAMECS(const char* a, const char* b, Length aLength, Length bLength) noexcept {
  return call(__func__, [&] { return logical(asameCs(text(a, aLength), text(b, bLength))); });
}

Logical READGIS(const char* command, const char* keyword, Length commandLength,
                Length keywordLength) noexcept {
  return call(__func__, [&] {
    return logical(readGis(text(command, commandLength), text(keyword, keywordLength)));
  });
}

Logical WRITEGIS(const char* command, const char* keyword, Length commandLength,
                 Length keywordLength) noexcept {
  return call(__func__, [&] {
    return logical(writeGis(text(command, commandLength), text(keyword, keywordLength)));
  });
}

Logical READROWCOL(const char* command, const char* keyword, Length commandLength,
                   Length keywordLength) noexcept {
  return call(__func__, [&] {
    return logical(readRowCol(text(command, commandLength), text(keyword, keywordLength)));
  });
}

Logical READGISANY(const char* command, Length commandLength) noexcept {
  return call(__func__, [&] { return logical(readGisAny(text(command, commandLength))); });
}

Logical READROWCOLANY(const char* command, Length commandLength) noexcept {
  return call(__func__, [&] { return logical(readRowColAny(text(command, commandLength))); });
}

Logical NUMBERLINE(char* line, Length lineLength) noexcept {
  return call(__func__, [&] { return logical(numberLine(TextInOut(line, lineLength))); });
}

Logical POSITIVEINTEGERNUMBER(char* text_, Length textLength) noexcept {
  return call(__func__,
              [&] { return logical(positiveIntegerNumber(TextInOut(text_, textLength))); });
}

void REMOVEQUOTES(char* result, Length resultLength, const char* text_,
                  Length textLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = removeQuotes(text(text_, textLength)); });
}

void REMOVESPACES(char* result, Length resultLength, const char* text_,
                  Length textLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = removeSpaces(text(text_, textLength)); });
}
