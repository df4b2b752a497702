// Values taken from texts.
#include "exports/adapters.hpp"
#include "exports/call.hpp"
#include "exports/the_module.hpp"
#include "text/counting.hpp"
#include "text/csv.hpp"
#include "text/value_list.hpp"

using namespace nivaro;

std::int32_t EXTRACTINTEGER(const char* line, const char* loweredLine, const char* key,
                            const std::int32_t* column, const std::int32_t* defaultValue,
                            Length lineLength, Length loweredLineLength,
                            Length keyLength) noexcept {
  return call(__func__, [&] {
    return theModule().diagnostics.valueOf(
        extractInteger(text(line, lineLength), text(loweredLine, loweredLineLength),
                       text(key, keyLength), *column, *defaultValue));
  });
}

double EXTRACTREAL(const char* line, const char* loweredLine, const char* key,
                   const std::int32_t* column, const double* defaultValue, Length lineLength,
                   Length loweredLineLength, Length keyLength) noexcept {
  return call(__func__, [&] {
    return theModule().diagnostics.valueOf(
        extractReal(text(line, lineLength), text(loweredLine, loweredLineLength),
                    text(key, keyLength), *column, *defaultValue));
  });
}

void EXTRACTSTRING(char* result, Length resultLength, const char* line, const char* loweredLine,
                   const char* key, const std::int32_t* column, Length lineLength,
                   Length loweredLineLength, Length keyLength) noexcept {
  call(__func__, [&] {
    TextOut(result, resultLength) = theModule().diagnostics.valueOf(
        extractString(text(line, lineLength), text(loweredLine, loweredLineLength),
                      text(key, keyLength), *column));
  });
}

void EXTRACTSTRINGREM(char* result, Length resultLength, const char* line, const char* loweredLine,
                      const char* key, const std::int32_t* column, Length lineLength,
                      Length loweredLineLength, Length keyLength) noexcept {
  call(__func__, [&] {
    TextOut(result, resultLength) = theModule().diagnostics.valueOf(
        extractStringRem(text(line, lineLength), text(loweredLine, loweredLineLength),
                         text(key, keyLength), *column));
  });
}

Logical CSVCOLUMN(const char* header, const char* name, std::int32_t* column, Length headerLength,
                  Length nameLength) noexcept {
  return call(__func__, [&] {
    return logical(csvColumn(text(header, headerLength), text(name, nameLength), *column));
  });
}

std::int32_t CSVVALUE(const char* line, const std::int32_t* column, double* value,
                      Length lineLength) noexcept {
  return call(__func__, [&] { return csvValue(text(line, lineLength), *column, *value); });
}

std::int32_t NUMBEROFSUBSTRINGS(char* text_, const char* separator, Length textLength,
                                Length separatorLength) noexcept {
  return call(__func__, [&] {
    return numberOfSubstrings(TextInOut(text_, textLength), text(separator, separatorLength));
  });
}

void SUBSTRING(char* result, Length resultLength, const char* text_, const char* separator,
               const std::int32_t* index, Length textLength, Length separatorLength) noexcept {
  call(__func__, [&] {
    TextOut(result, resultLength) =
        substring(text(text_, textLength), text(separator, separatorLength), *index);
  });
}

std::int32_t NUMBEROFNUMBERS(const char* line, Length lineLength) noexcept {
  return call(__func__, [&] { return numberOfNumbers(text(line, lineLength)); });
}

std::int32_t NUMBEROFDAYS(const char* date, Length dateLength) noexcept {
  return call(__func__, [&] { return numberOfDays(text(date, dateLength)); });
}

Logical CHECKREAL(const char* text_, double* value, Length textLength) noexcept {
  return call(__func__, [&] { return logical(checkReal(text(text_, textLength), *value)); });
}

Logical CHECKINT4(const char* text_, std::int32_t* value, Length textLength) noexcept {
  return call(__func__, [&] { return logical(checkInt4(text(text_, textLength), *value)); });
}
