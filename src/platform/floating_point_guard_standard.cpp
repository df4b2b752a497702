// For processors whose settings the standard environment holds, all of them.
#include "platform/floating_point_guard.hpp"

namespace nivaro {

FloatingPointGuard::FloatingPointGuard() noexcept {
  std::fegetenv(&host_);
  std::fesetenv(FE_DFL_ENV);
}

FloatingPointGuard::~FloatingPointGuard() {
  std::fesetenv(&host_);
}

}  // namespace nivaro
