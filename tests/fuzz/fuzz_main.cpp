// The entry of every target: an input, in the folder of the process. None takes longer than a moment of
// the processor, however busy it is.
#include <ctime>

#include "fuzz/fuzz_input.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nivaro::fuzz;
  static const Folder folder;
  const std::clock_t start = std::clock();
  tryInput(Archive({reinterpret_cast<const char*>(data), size}), folder);
  folder.clear();
  require(std::clock() - start < 5 * CLOCKS_PER_SEC, "an input takes a moment");
  return 0;
}
