/* A host that is compiled and linked as Microsoft's compiler does, without its runtime. The exit code is
 * 0 where a text, a number and the message record are as they should. */
#include "nivaro_morphology.h"

int _fltused = 0; /* the compiler names it wherever there are reals */

static int is_same(const char* text, const char* wanted, int length) {
  for (int i = 0; i < length; ++i)
    if (text[i] != wanted[i]) return 0;
  return 1;
}

int host(void) {
  static const char kWarning[] = "WARNING 0317 - seen by the host";
  const int32_t number = 7, digits = 4, table_only = -2;
  const double origin = 0.0, x = 3.0, y = 4.0;
  char text[8];

  AINTEGERPREC0(text, sizeof text, &number, &digits);
  for (int i = 0; kWarning[i] != '\0'; ++i) DMESSAGES.line1[i] = kWarning[i];
  DMESSAGE(&table_only);
  if (!is_same(text, "0007    ", sizeof text)) return 1;
  if (DISTANCE(&origin, &origin, &x, &y) != 5.0) return 2;
  if (DMESSAGES.warning_count != 1 || DMESSAGESADDRESS() != &DMESSAGES) return 3;
  return 0;
}
