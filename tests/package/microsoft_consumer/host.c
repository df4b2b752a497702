/* A host that is compiled and linked as Microsoft's compiler does, without its runtime: the exit code
 * tells what went wrong. */
#include "nivaro_morphology.h"

int _fltused = 0; /* the compiler names it wherever there are reals */

int host(void) {
  static const char kWarning[] = "WARNING 0317 - seen by the host";
  const int32_t table_only = -2;
  const double origin = 0.0, x = 3.0, y = 4.0;

  for (int i = 0; kWarning[i] != '\0'; ++i) DMESSAGES.line1[i] = kWarning[i];
  DMESSAGE(&table_only);
  if (DMESSAGES.warning_count != 1 || DMESSAGESADDRESS() != &DMESSAGES) return 1;
  return DISTANCE(&origin, &origin, &x, &y) == 5.0 ? 0 : 2;
}
