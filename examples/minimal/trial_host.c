/* A host on a POSIX system that an error in its control file does not end: a child process reads the
 * file first. What is wrong ends the child.
 *
 * Usage: trial_host CONTROL_FILE PREFIX */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include "nivaro_morphology.h"

enum { kN = 60, kM = 20 };

static nivaro_length length(const char* text) {
  return (nivaro_length)strlen(text);
}

/* The calls of the module up to the last control file. */
static void start_and_read(const char* control_file, const char* prefix) {
  const nivaro_logical no = 0, yes = -1;
  const int32_t zero = 0, one = 1, n = kN, m = kM, offset = 2, cells = kN * kM;
  const int32_t row_i = kN - 1, row_j = kM - 1, objects_i = kN - 2, objects_j = kM - 2;
  const double nothing = 0.0, cell_size = 5.0;

  QVMOR_INITIALISE_S1("trial", prefix, prefix, &no, ".tab", &no, prefix, " ", " ", &no, 5,
                      length(prefix), length(prefix), 4, length(prefix), 1, 1);
  QVMOR_INITIALISE_S2(&zero, &nothing, &zero, &zero, &cells, &cells);
  int32_t next_real = 1, next_integer = 1;
  QVMOR_SETUP_S2(&yes, &one, &n, &m, &zero, &zero, &next_real, &next_integer);
  double* real_work = calloc((size_t)next_real - 1, sizeof *real_work);
  int32_t* integer_work = calloc((size_t)next_integer - 1, sizeof *integer_work);
  if (real_work == NULL || integer_work == NULL) exit(1);
  QVMOR_RDINPF(control_file, &one, &one, &n, &m, &row_i, &row_j, &objects_i, &objects_j, &offset,
               &offset, &cell_size, &cell_size, &nothing, &nothing, &nothing, real_work,
               integer_work, NULL, NULL, NULL, length(control_file));
}

/* The module ends a process with 0 or 1, so "read" is another number. */
enum { kRead = 2 };

static int can_be_read(const char* control_file, const char* prefix) {
  fflush(NULL); /* or the child writes once more what the host has in its buffers */
  const pid_t child = fork();
  if (child == 0) {
    if (freopen("/dev/null", "r", stdin) == NULL) _exit(1); /* so that no question waits */
    start_and_read(control_file, prefix);
    _exit(kRead); /* without the host's exit handlers */
  }
  int status = 0;
  return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
         WEXITSTATUS(status) == kRead;
}

int main(int count, char** arguments) {
  if (count != 3) return 2;
  if (can_be_read(arguments[1], arguments[2])) {
    start_and_read(arguments[1], arguments[2]);
    puts("The host goes on with morphology.");
  } else {
    puts("The host goes on without morphology: what is wrong stands above.");
  }
  return 0;
}
