/* A host in C and in C++: a text, a number and the message record. */
#include <stdio.h>
#include <string.h>

#include "nivaro_morphology.h"

int main(void) {
  static const char kWarning[] = "WARNING 0317 - seen by the host";
  const int32_t number = 7;
  const int32_t digits = 4;
  const int32_t table_only = -2;
  const double origin = 0.0;
  const double x = 3.0;
  const double y = 4.0;
  char text[8];

  AINTEGERPREC0(text, (nivaro_length)sizeof text, &number, &digits);
  memcpy(DMESSAGES.line1, kWarning, sizeof kWarning);
  DMESSAGE(&table_only);
  printf("%.4s %.1f %d\n", text, DISTANCE(&origin, &origin, &x, &y), (int)DMESSAGES.warning_count);
  return 0;
}
