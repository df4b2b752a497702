#include "exports/the_module.hpp"

#include "nivaro_morphology.h"

namespace nivaro {

namespace {

// Never destroyed, so that a host's own exit handlers may still call the module; what is buffered
// goes to the files when the process ends or the library is unloaded.
struct ModuleForLife {
  StandardConsole console;
  RealProcess process;
  Module& module = *new Module(console, process, DMESSAGES);
  ~ModuleForLife() { module.units.flushAll(); }
};

}  // namespace

Module& theModule() {
  static ModuleForLife life;
  return life.module;
}

}  // namespace nivaro
