// Numbers to text, and transformations of texts.
#include "exports/adapters.hpp"
#include "exports/call.hpp"
#include "text/number_text.hpp"
#include "text/transform.hpp"

using namespace nivaro;

void AINTEGER(char* result, Length resultLength, const std::int32_t* value) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = ainteger(*value); });
}

void AINTEGER8(char* result, Length resultLength, const std::int64_t* value) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = ainteger(*value); });
}

void AREAL(char* result, Length resultLength, const double* value) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = areal(*value); });
}

void AREAL8(char* result, Length resultLength, const double* value) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = areal8(*value); });
}

void AINTEGERPREC0(char* result, Length resultLength, const std::int32_t* value,
                   const std::int32_t* digits) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = aintegerPrec0(*value, *digits); });
}

void AINTEGER8PREC0(char* result, Length resultLength, const std::int64_t* value,
                    const std::int32_t* digits) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = aintegerPrec0(*value, *digits); });
}

void AREALD(char* result, Length resultLength, const double* value,
            const std::int32_t* decimals) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = areald(*value, *decimals); });
}

void AREALD4(char* result, Length resultLength, const float* value,
             const std::int32_t* decimals) noexcept {
  call(__func__,
       [&] { TextOut(result, resultLength) = areald(static_cast<double>(*value), *decimals); });
}

void AREALD8(char* result, Length resultLength, const double* value,
             const std::int32_t* decimals) noexcept {
  AREALD(result, resultLength, value, decimals);
}

void AREALDPREC0(char* result, Length resultLength, const double* value,
                 const std::int32_t* decimals, const std::int32_t* width) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = arealdPrec0(*value, *decimals, *width); });
}

void TRIMF(char* result, Length resultLength, const char* text_, Length textLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = trimF(text(text_, textLength)); });
}

void UPPERCASE(char* result, Length resultLength, const char* text_, Length textLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = upperCase(text(text_, textLength)); });
}

void LOWERCASE(char* result, Length resultLength, const char* text_, Length textLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = lowerCase(text(text_, textLength)); });
}

void DOUBLEQUOTE(char* result, Length resultLength, const char* text_, Length textLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = doubleQuote(text(text_, textLength)); });
}

void SPACETOUNDERSCORE(char* result, Length resultLength, const char* text_,
                       Length textLength) noexcept {
  call(__func__,
       [&] { TextOut(result, resultLength) = spaceToUnderscore(text(text_, textLength)); });
}

void CLEANATTRIBUTENAME(char* result, Length resultLength, const char* text_,
                        Length textLength) noexcept {
  call(__func__,
       [&] { TextOut(result, resultLength) = cleanAttributeName(text(text_, textLength)); });
}

void SS256(char* result, Length resultLength, const char* text_, Length textLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = ss256(text(text_, textLength)); });
}

// A replacement without a character is the one of code 0.
void ALPHANUMERICONLY(char* result, Length resultLength, const char* text_, const char* replacement,
                      Length textLength, Length replacementLength) noexcept {
  call(__func__, [&] {
    TextOut(result, resultLength) = alphanumericOnly(
        text(text_, textLength), size(replacementLength) > 0 ? *replacement : '\0');
  });
}

Logical BLANK(char* text_, Length textLength) noexcept {
  return call(__func__, [&] { return logical(blank(TextInOut(text_, textLength))); });
}

std::int32_t LENSL(char* text_, Length textLength) noexcept {
  return call(__func__, [&] { return lensl({text_, size(textLength)}); });
}

void REPLACE(char* result, Length resultLength, const char* text_, const char* oldText,
             const char* newText, Length textLength, Length oldLength, Length newLength) noexcept {
  call(__func__, [&] {
    TextOut(result, resultLength) =
        replace(text(text_, textLength), text(oldText, oldLength), text(newText, newLength));
  });
}

void REPLACEALL(char* result, Length resultLength, const char* text_, const char* oldText,
                const char* newText, Length textLength, Length oldLength,
                Length newLength) noexcept {
  call(__func__, [&] {
    TextOut(result, resultLength) =
        replaceAll(text(text_, textLength), text(oldText, oldLength), text(newText, newLength));
  });
}
