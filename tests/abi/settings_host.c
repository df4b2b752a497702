/* A host whose floating-point settings are not the usual ones, on x86-64: a random domain, read, computed
 * and written. Shows a sum over the bits of all results. Ends with 3 where a call leaves settings or
 * flags behind that it did not find, with 4 where a result of a cheap routine differs.
 *
 * Usage: settings_host SETTINGS PREFIX
 * SETTINGS: plain, trap, up, down, zero, flush, x87 (53 bits), flags (some are raised) or pending (some
 * are raised, and would trap at the next x87 operation) */
#include <fenv.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <xmmintrin.h>

#include "nivaro_morphology.h"

enum { kN = 70, kM = 45, kCells = kN * kM, kSteps = 5, kPoints = (kN - 3) * (kM - 3) };

struct settings {
  const char* name;
  unsigned vector;
  unsigned short x87;
  int flags;
};

static const struct settings kSettings[] = {
    {"plain", 0x1f80, 0x37f, 0},
    {"trap", 0x0000, 0x340, 0},
    {"up", 0x5f80, 0xb7f, 0},
    {"down", 0x3f80, 0x77f, 0},
    {"zero", 0x7f80, 0xf7f, 0},
    {"flush", 0x9fc0, 0x37f, 0},
    {"x87", 0x1f80, 0x27f, 0},
    {"flags", 0x1f80, 0x37f, FE_DIVBYZERO | FE_OVERFLOW},
    {"pending", 0x0000, 0x340, FE_DIVBYZERO | FE_OVERFLOW},
};

static struct settings wanted;
static unsigned short wanted_status;

static unsigned short x87_status(void) {
  unsigned short status;
  __asm__ volatile("fnstsw %0" : "=m"(status));
  return status;
}

static void set(void) {
  __asm__ volatile("fninit"); /* without the flags of what the host has computed */
  if (wanted.flags != 0) feraiseexcept(wanted.flags);
  __asm__ volatile("fldcw %0" : : "m"(wanted.x87));
  wanted_status = x87_status();
  _mm_setcsr(wanted.vector | (unsigned)wanted.flags);
}

/* Back to what the host itself computes with. */
static void check_and_reset(void) {
  unsigned short x87;
  __asm__ volatile("fnstcw %0" : "=m"(x87));
  const unsigned vector = _mm_getcsr();
  if (x87 != wanted.x87 || vector != (wanted.vector | (unsigned)wanted.flags)) exit(3);
  if (x87_status() != wanted_status) exit(3);
  __asm__ volatile("fninit");
  _mm_setcsr(0x1f80);
}

/* The library's call in the host's settings; everything else is computed in the usual ones. */
#define IN_SETTINGS(call) (set(), (call), check_and_reset())

static const nivaro_logical kNo = 0, kYes = -1;
static const int32_t kZero = 0, kOne = 1, kTwo = 2, kn = kN, km = kM;
static const int32_t kLastI = kN - 1, kLastJ = kM - 1, kPointCount = kPoints, kCellCount = kCells;
static const double kNothing = 0.0, kCell = 7.3, kAngle = 0.3;

static double level[kCells], v1[kCells], v2[kCells], zc[kCells], z1[kCells], z2[kCells];
static double zpts[kCells];
static nivaro_logical wet[kCells], flow[kCells];
static int32_t codes[kCells], point_i[kPoints], point_j[kPoints];
static double* real_work;
static int32_t* integer_work;
static int32_t reals;

static double random_number(double low, double high) {
  static uint64_t state = 20070707;
  state = state * 6364136223846793005u + 1442695040888963407u;
  return low + (high - low) * ((double)(state >> 11) / 9007199254740992.0);
}

static nivaro_length length(const char* text) {
  return (nivaro_length)strlen(text);
}

static const char* write_file(const char* prefix, const char* end, const char* content) {
  static char name[4096];
  snprintf(name, sizeof name, "%s%s", prefix, end);
  FILE* file = fopen(name, "wb");
  if (file == NULL || fputs(content, file) == EOF || fclose(file) != 0) exit(2);
  return name;
}

static void make_domain(void) {
  for (int c = 0; c < kCells; ++c) {
    wet[c] = random_number(0, 1) < 0.9 ? kYes : kNo;
    flow[c] = random_number(0, 1) < 0.5 ? kYes : kNo;
    level[c] = random_number(-0.2, 0.2);
    zc[c] = random_number(0.8, 3.0);
    z1[c] = random_number(0.8, 3.0);
    z2[c] = random_number(0.8, 3.0);
    v1[c] = random_number(0, 1) < 0.05 ? 0.0 : random_number(-0.4, 1.6);
    v2[c] = random_number(0, 1) < 0.05 ? 0.0 : random_number(-1.0, 1.0);
  }
  for (int p = 0; p < kPoints; ++p) {
    point_i[p] = 2 + p % (kN - 3);
    point_j[p] = 2 + p / (kN - 3);
  }
}

/* Grains of all classes, some so fine that no lane takes them, from a table. */
static void read_control_file(const char* prefix) {
  char* rows = malloc(64u * kCells);
  char* end = rows;
  for (int j = 2; j < kM; ++j)
    for (int i = 2; i < kN; ++i)
      end += sprintf(end, "%d,%d,%de%d\n", i, j, (int)random_number(1000, 9999),
                     random_number(0, 1) < 0.02 ? -10 : -(int)random_number(5, 8));
  write_file(prefix, "_grains.csv", rows);
  free(rows);
  write_file(prefix, "_voids.mif",
             "Version 300\nColumns 1\n  v Float\nData\n\nRegion 1\n 4\n10.1 10.3\n400.7 33.3\n"
             "350.1 290.9\n-20.3 222.1\nPline 3\n1.1 2.2\n333.3 111.1\n77.7 199.9\n");
  write_file(prefix, "_voids.mid", "0.123456789012345678\n.4e0\n");
  const char* base = strrchr(prefix, '/') != NULL ? strrchr(prefix, '/') + 1 : prefix;
  char text[4096];
  snprintf(
      text, sizeof text,
      "Morphology Fall Velocity == 0.0213\nMorphology Current Related Roughness == 0.0537\n"
      "Morphology Reference Level == 0.0271\nMorphology Mixing Layer Thickness == 0.0331\n"
      "Morphology Concentration Factor == 7.3\nSet Morphology D90 == 3.1d-4\n"
      "Read MID Morphology D50 == %s_grains.csv\nRead MI Morphology Insitu Voids == %s_voids\n",
      base, base);
  const char* file = write_file(prefix, ".mcf", text);
  const nivaro_length file_length = length(file);
  const int32_t first_bound = kN - 2, second_bound = kM - 2;
  IN_SETTINGS(QVMOR_RDINPF(file, &kOne, &kOne, &kn, &km, &kLastI, &kLastJ, &first_bound,
                           &second_bound, &kTwo, &kTwo, &kCell, &kCell, &kAngle, &kNothing,
                           &kNothing, real_work, integer_work, NULL, NULL, NULL, file_length));
}

static void call_morphology(const nivaro_logical* smoothing) {
  const double time_step = 37.7, slump = 9.1, raise = 0.9;
  IN_SETTINGS(QVMOR_INIT_2D_DOMAIN(&kOne));
  IN_SETTINGS(QVMORPHOLOGY(smoothing, &kNo, &kNo, wet, flow, level, v2, v1, zpts, zc, z2, z1, &kn,
                           &km, &kTwo, &kTwo, &kLastI, &kLastJ, &kCell, &slump, &slump, NULL,
                           &time_step, &kYes, &raise, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                           real_work, integer_work, NULL, NULL, NULL, &kOne));
}

static void write_results(void) {
  const double time = 0.7, step_a = 7.1, step_b = 1.3;
  IN_SETTINGS(QVMOR_WRSMSF_WRITE_HEADER("bed change"));
  IN_SETTINGS(QVMOR_WRSMSF_DAT_FLAGS(&kOne, &kOne, &time, &time, &kZero, codes, wet, zc, level, &kn,
                                     NULL, &kOne, &kOne, &kn, &km));
  IN_SETTINGS(QVMOR_WRSMSF_DAT_RESULTS(&kOne, &kOne, &kPointCount, NULL, &kYes, &kn, NULL, &kTwo,
                                       &kTwo, &kLastI, &kLastJ, point_i, point_j, NULL, real_work));
  IN_SETTINGS(QVMOR_WRMIFF(&kOne, &kOne, &kYes, codes, zc, &kn, NULL, &kOne, &kOne, &kn, &km, &kTwo,
                           &kTwo, &kNothing, &kNothing, &step_a, &step_b, real_work, integer_work));
  IN_SETTINGS(QVMOR_WRSMSF_CLOSE());
}

/* Geometry that divides by zero, numbers in texts that round: each in these settings and in ours. */
static void check_cheap_routines(void) {
  const double a = 0.1, b = 1.0 / 3.0, c = 7e-310;
  const int32_t digits = 3;
  double shown = 0.0, read = 0.0;
  char text[24];
  IN_SETTINGS(shown = DISTANCE(&a, &b, &b, &kNothing));
  if (shown != DISTANCE(&a, &b, &b, &kNothing)) exit(4);
  IN_SETTINGS(shown = ANGLE2D(&a, &a, &a, &a, &b, &b, &b, &b));
  IN_SETTINGS(CHECKREAL("0.1234567890123456789e-300", &read, 26));
  if (read != 0.1234567890123456789e-300) exit(4);
  IN_SETTINGS(CHECKREAL("7e-310", &read, 6));
  if (read != c) exit(4);
  IN_SETTINGS(AREALD(text, sizeof text, &b, &digits));
  if (strncmp(text, "0.333 ", 6) != 0) exit(4);
}

static uint64_t sum = 14695981039346656037u;

static void add(const void* bytes, size_t count) {
  for (size_t k = 0; k < count; ++k)
    sum = (sum ^ ((const unsigned char*)bytes)[k]) * 1099511628211u;
}

static void add_file(const char* prefix, const char* end) {
  char name[4096];
  snprintf(name, sizeof name, "%s%s", prefix, end);
  FILE* file = fopen(name, "rb");
  if (file == NULL) exit(2);
  for (int byte; (byte = fgetc(file)) != EOF;)
    if (byte != '\r') add(&(char){(char)byte}, 1);
  fclose(file);
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  for (size_t k = 0; k < sizeof kSettings / sizeof *kSettings; ++k)
    if (strcmp(kSettings[k].name, argv[1]) == 0) wanted = kSettings[k];
  if (wanted.name == NULL) return 2;
  const char* prefix = argv[2];
  const nivaro_length end = length(prefix);
  int32_t next_real = 1, next_integer = 1;
  make_domain();
  IN_SETTINGS(QVMOR_INITIALISE_S1("settings", prefix, prefix, &kNo, ".tab", &kNo, prefix,
                                  "CoordSys NonEarth Units \"m\"", " ", &kNo, 8, end, end, 4, end,
                                  27, 1));
  IN_SETTINGS(QVMOR_INITIALISE_S2(&kZero, &kNothing, &kZero, &kZero, &kPointCount, &kCellCount));
  IN_SETTINGS(QVMOR_SETUP_S2(&kYes, &kOne, &kn, &km, &kZero, &kZero, &next_real, &next_integer));
  reals = next_real - 1;
  real_work = calloc((size_t)reals, sizeof *real_work);
  integer_work = calloc((size_t)next_integer, sizeof *integer_work);
  read_control_file(prefix);
  call_morphology(&kYes);
  for (int step = 0; step < kSteps; ++step) call_morphology(&kNo);
  write_results();
  check_cheap_routines();

  add(zc, sizeof zc);
  add(zpts, sizeof zpts);
  add(z1, sizeof z1);
  add(z2, sizeof z2);
  add(real_work, (size_t)reals * sizeof *real_work);
  add_file(prefix, "_morDH.dat");
  add_file(prefix, "_mor_check.mif");
  add_file(prefix, "_mor_check.mid");
  fprintf(stderr, "%016llx\n", (unsigned long long)sum);
  return 0;
}
