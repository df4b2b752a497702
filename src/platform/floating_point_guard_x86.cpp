// For x86-64. The standard functions would do, but save and load the whole x87 environment at each
// call: a tenth of a microsecond, where most calls of a host find its settings to be ours already.
#include <xmmintrin.h>

#include <cstdint>
#include <cstring>

#include "platform/floating_point_guard.hpp"

namespace nivaro {
namespace {

constexpr std::uint32_t kVectorSettings = 0x1f80;  // MXCSR: all masked, to nearest, no flushing
constexpr std::uint16_t kX87Settings = 0x37f;      // all masked, to nearest, 64 bits
constexpr std::uint16_t kX87Flags = 0xff;  // of the status: exceptions and what follows from them

struct Settings {
  std::uint32_t vector;  // with its flags
  std::uint16_t x87;
  std::uint16_t x87Status;
};
static_assert(sizeof(Settings) <= sizeof(std::fenv_t));

// As the processor stores it.
struct X87Environment {
  std::uint16_t settings, unused1, status, unused2;
  std::uint32_t rest[5];
};

std::uint16_t x87Settings() {
  std::uint16_t settings;
  asm volatile("fnstcw %0" : "=m"(settings));
  return settings;
}

std::uint16_t x87Status() {
  std::uint16_t status;
  asm volatile("fnstsw %0" : "=am"(status));
  return status;
}

// Settings and flags at once: a flag that is raised when its trap is switched on again would trap at
// the host's next operation.
void loadX87(const Settings& host) {
  X87Environment environment;
  asm volatile("fnstenv %0" : "=m"(environment));
  environment.settings = host.x87;
  environment.status =
      static_cast<std::uint16_t>((environment.status & ~kX87Flags) | (host.x87Status & kX87Flags));
  asm volatile("fldenv %0" : : "m"(environment));
}

}  // namespace

FloatingPointGuard::FloatingPointGuard() noexcept {
  const Settings host = {_mm_getcsr(), x87Settings(), x87Status()};
  std::memcpy(&host_, &host, sizeof host);
  _mm_setcsr(kVectorSettings);
  if (host.x87 == kX87Settings) return;
  // Without flags, or the host's own might trap here.
  asm volatile("fnclex\n\tfldcw %0" : : "m"(kX87Settings));
}

FloatingPointGuard::~FloatingPointGuard() {
  Settings host;
  std::memcpy(&host, &host_, sizeof host);
  const bool isChanged =
      host.x87 != kX87Settings || ((x87Status() ^ host.x87Status) & kX87Flags) != 0;
  if (isChanged) loadX87(host);
  _mm_setcsr(host.vector);
}

}  // namespace nivaro
