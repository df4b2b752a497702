// The one module of the process.
#pragma once

#include "interface/module.hpp"

namespace nivaro {

// Built at first use, so that every exported routine may be called before start-up.
Module& theModule();

}  // namespace nivaro
