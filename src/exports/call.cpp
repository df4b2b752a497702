#include "exports/call.hpp"

#include <cstdio>
#include <exception>

#include "exports/the_module.hpp"
#include "interface/entry_points.hpp"
#include "platform/process.hpp"

namespace nivaro {

void endWithoutMemory(std::string_view thing) {
  try {
    endWithoutMemory(theModule(), thing);
  } catch (const std::exception&) {
    // Nothing was left for the message or for what the end of a run closes: the system closes it.
    std::fputs("ERROR - Could not allocate memory (RAM).\n", stdout);
    RealProcess process;
    endProcess(process, 1);
  }
}

}  // namespace nivaro
