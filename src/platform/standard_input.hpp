// Reading what the person at the keyboard types. Each system has a source of its own.
#pragma once

namespace nivaro {

// The next character of the C library's stream, or EOF. An input that only has nothing to give yet is
// waited for.
int readStandardInput();

}  // namespace nivaro
