// The message family.
#include "exports/adapters.hpp"
#include "exports/call.hpp"
#include "exports/the_module.hpp"

using namespace nivaro;

void DMESSAGEXY(const std::int32_t* blankLines, const double* x, const double* y) noexcept {
  call(__func__, [&] { theModule().messages.dmessageXy(*blankLines, *x, *y); });
}

void DMESSAGE(const std::int32_t* blankLines) noexcept {
  call(__func__, [&] { theModule().messages.dmessage(*blankLines); });
}

void DMESSAGECLEAR() noexcept {
  call(__func__, [&] { theModule().messages.dmessageClear(); });
}

void DMESSAGERESETCOUNTERS() noexcept {
  call(__func__, [&] { theModule().messages.dmessageResetCounters(); });
}

void DLINE(const std::int32_t* unit) noexcept {
  call(__func__, [&] { theModule().messages.dline(*unit); });
}
