// The message family.
#include "exports/adapters.hpp"
#include "exports/the_module.hpp"

using namespace nivaro;

void DMESSAGEXY(const std::int32_t* blankLines, const double* x, const double* y) noexcept {
  theModule().messages.dmessageXy(*blankLines, *x, *y);
}

void DMESSAGE(const std::int32_t* blankLines) noexcept {
  theModule().messages.dmessage(*blankLines);
}

void DMESSAGECLEAR() noexcept {
  theModule().messages.dmessageClear();
}

void DMESSAGERESETCOUNTERS() noexcept {
  theModule().messages.dmessageResetCounters();
}

void DLINE(const std::int32_t* unit) noexcept {
  theModule().messages.dline(*unit);
}
