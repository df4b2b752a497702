// The environment of the process. Each system has a source of its own.
#pragma once

#include <string>

namespace nivaro {

// The value of a variable, empty where there is none.
std::string environmentVariable(const char* name);

}  // namespace nivaro
