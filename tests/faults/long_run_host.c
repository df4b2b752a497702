/* A host for very long runs: the trench of a flume in a flow that turns, a mound that collapses in
 * still water, control files read again and again, and flags of the dataset.
 *
 * Usage: long_run_host steps|collapse|rounds|flags PREFIX CONTROL_FILE COUNT [ROWS COLUMNS]
 * Says on standard error, a name and a number each: the memory that the process holds (kB) and its
 * open files at the start, at half the count and at the end, and what became of the bed. */
#include <dirent.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "nivaro_morphology.h"

enum { kStepsOfATide = 2000 };

static const nivaro_logical kNo = 0, kYes = -1;
static const int32_t kOne = 1, kTwo = 2, kZero = 0;
static const double kNothing = 0.0, kCell = 0.1, kTimeStep = 8.0;
static const double kDepth = 0.39, kDischarge = 0.1989, kTrench = 0.15; /* of the measured case */

static int32_t n = 9, m = 64; /* cells across and along the flume, two of margin at each end */
static double *real_work, *zc, *z1, *z2, *zpts, *level, *v1, *v2;
static int32_t* integer_work;
static nivaro_logical* wet;

static nivaro_length length(const char* text) {
  return (nivaro_length)strlen(text);
}

static void* zeros(size_t count, size_t size) {
  void* memory = calloc(count, size);
  if (memory == NULL) exit(2);
  return memory;
}

static int cells(void) {
  return n * m;
}

static void start(const char* prefix) {
  const int32_t values = cells(), flags = cells();
  int32_t next_real = 1, next_integer = 1;
  QVMOR_INITIALISE_S1("long run", prefix, prefix, &kNo, ".tab", &kNo, prefix, " ", " ", &kNo, 8,
                      length(prefix), length(prefix), 4, length(prefix), 1, 1);
  QVMOR_INITIALISE_S2(&kZero, &kNothing, &kZero, &kZero, &values, &flags);
  QVMOR_SETUP_S2(&kYes, &kOne, &n, &m, &kZero, &kZero, &next_real, &next_integer);
  real_work = zeros((size_t)next_real, sizeof *real_work);
  integer_work = zeros((size_t)next_integer, sizeof *integer_work);
  double** fields[] = {&zc, &z1, &z2, &zpts, &level, &v1, &v2};
  for (size_t f = 0; f < sizeof fields / sizeof *fields; ++f)
    *fields[f] = zeros((size_t)cells(), sizeof(double));
  wet = zeros((size_t)cells(), sizeof *wet);
}

static void read_control_file(const char* file) {
  const int32_t last_i = n - 1, last_j = m - 1;
  QVMOR_RDINPF(file, &kOne, &kOne, &n, &m, &last_i, &last_j, &last_i, &last_j, &kTwo, &kTwo, &kCell,
               &kCell, &kNothing, &kNothing, &kNothing, real_work, integer_work, NULL, NULL, NULL,
               length(file));
}

static void call_morphology(const nivaro_logical* smoothing) {
  const int32_t first = 3, last_i = n - 2, last_j = m - 2;
  QVMOR_INIT_2D_DOMAIN(&kOne);
  QVMORPHOLOGY(smoothing, &kNo, &kNo, wet, wet, level, v2, v1, zpts, zc, z2, z1, &n, &m, &first,
               &first, &last_i, &last_j, &kCell, &kCell, &kCell, NULL, &kTimeStep, &kNo, &kNothing,
               NULL, NULL, NULL, NULL, NULL, NULL, NULL, real_work, integer_work, NULL, NULL, NULL,
               &kOne);
}

/* A bed that is flat but for one change of depth in the middle third. */
static void make_bed(double change) {
  for (int c = 0; c < cells(); ++c) {
    const int i = c % n + 1, j = c / n + 1;
    const int is_middle = 3 * i > n && 3 * i <= 2 * n && 3 * j > m && 3 * j <= 2 * m;
    const int across = change > 0.0 ? 3 * j > m && 3 * j <= 2 * m : is_middle;
    zc[c] = kDepth + (across ? change : 0.0);
    z1[c] = z2[c] = zpts[c] = zc[c];
    wet[c] = kYes;
  }
  call_morphology(&kYes);
}

static double volume(void) {
  long double sum = 0.0;
  for (int c = 0; c < cells(); ++c) sum += zc[c];
  return (double)sum;
}

static void widen(double* low, double* high) {
  for (int c = 0; c < cells(); ++c) {
    if (!(zc[c] >= *low)) *low = zc[c]; /* what is no number too */
    if (!(zc[c] <= *high)) *high = zc[c];
  }
}

static void tell(const char* when) {
  long pages = 0, held = 0;
  FILE* memory = fopen("/proc/self/statm", "r");
  if (memory == NULL || fscanf(memory, "%ld %ld", &pages, &held) != 2) exit(2);
  fclose(memory);
  int files = 0;
  DIR* open_files = opendir("/proc/self/fd");
  while (readdir(open_files) != NULL) ++files;
  closedir(open_files);
  fprintf(stderr, "memory_%s %ld\nfiles_%s %d\n", when, held * (sysconf(_SC_PAGESIZE) / 1024), when,
          files);
}

/* Calls `one_more` so many times. */
static void repeat(int count, void (*one_more)(int)) {
  tell("start");
  for (int i = 0; i < count; ++i) {
    if (i == count / 2) tell("half");
    one_more(i);
  }
  tell("end");
}

static double low = INFINITY, high = -INFINITY;

static void step_in_a_tide(int step) {
  const double q = step / kStepsOfATide % 2 == 0 ? kDischarge : -kDischarge;
  for (int c = 0; c < cells(); ++c) v2[c] = q / z2[c];
  call_morphology(&kNo);
  if (step % 100 == 0) widen(&low, &high);
}

static void step_in_still_water(int step) {
  (void)step;
  call_morphology(&kNo);
}

static const char* control_file;

static void read_again(int round) {
  (void)round;
  read_control_file(control_file);
}

static void write_flags(int record) {
  const double time = record;
  QVMOR_WRSMSF_DAT_FLAGS(&kOne, &kOne, &time, &kNothing, &kOne, integer_work, wet, level, level, &n,
                         NULL, &kOne, &kOne, &n, &m);
}

int main(int argc, char** argv) {
  if (argc < 5) return 2;
  const char* what = argv[1];
  const int count = atoi(argv[4]);
  control_file = argv[3];
  if (argc > 6) n = atoi(argv[5]), m = atoi(argv[6]);
  start(argv[2]);
  if (strcmp(what, "rounds") == 0 || strcmp(what, "flags") == 0) {
    repeat(count, *what == 'r' ? read_again : write_flags);
    return 7;
  }
  read_control_file(control_file);
  const int collapses = strcmp(what, "collapse") == 0;
  make_bed(collapses ? -kTrench : kTrench);
  const double before = volume();
  repeat(count, collapses ? step_in_still_water : step_in_a_tide);
  widen(&low, &high);
  fprintf(stderr, "low %.17g\nhigh %.17g\nvolume_before %.17g\nvolume_after %.17g\n", low, high,
          before, volume());
  return 7;
}
