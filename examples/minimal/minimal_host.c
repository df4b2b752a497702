/* The smallest host: sand moves off a hump in a channel under a steady flow that follows from
 * continuity. What the module is asked, in which order, and nothing else.
 *
 * Usage: minimal_host CONTROL_FILE PREFIX
 * Leaves PREFIX.mlf, PREFIX_mor.wor and PREFIX_morDH.dat of the module, and PREFIX_bed.bin: the bed
 * depths of the cells as 8-byte reals, the first index fastest. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "nivaro_morphology.h"

/* 60 x 20 cells, and the area in which the bed may move: one cell is left free on each side. */
enum { kN = 60, kM = 20, kCells = kN * kM, kFirst = 2, kLastI = kN - 1, kLastJ = kM - 1 };
/* Points of the result: the corners inside the area. */
enum { kPoints = (kLastI - kFirst) * (kLastJ - kFirst) };
enum { kSteps = 24, kStepsPerRecord = 6 };

/* Everything goes by reference, so constants have names. */
static const nivaro_logical kNo = 0, kYes = -1;
static const int32_t kZero = 0, kOne = 1, kN32 = kN, kM32 = kM, kPoints32 = kPoints;
static const int32_t kFirst32 = kFirst, kLastI32 = kLastI, kLastJ32 = kLastJ;
static const double kNothing = 0.0, kCellSize = 5.0, kTimeStep = 600.0, kDischarge = 0.6;

/* The host's arrays. Element (i, j), counted from 1, lies at the centre of the cell, at its side
 * toward i + 1 (v1, z1), at its side toward j + 1 (v2, z2) or at the corner of both (zpts). Bed
 * arrays hold depths below datum, positive downward. */
/* Flow flags are true where a wet cell sends water into a dry one: nowhere here. */
static nivaro_logical wet[kCells], flow[kCells];
static double level[kCells], v1[kCells], v2[kCells];
static double zc[kCells], z1[kCells], z2[kCells], zpts[kCells];

/* The module's memory, which the host keeps. */
static double* real_work;
static int32_t* integer_work;

static int at(int i, int j) {
  return (j - 1) * kN + (i - 1);
}

static int least(int a, int b) {
  return a < b ? a : b;
}

/* The length of a text goes along with it, by value, behind all other arguments. */
static nivaro_length length(const char* text) {
  return (nivaro_length)strlen(text);
}

/* A bed 1 m below a level of 0, a hump of 0.3 m on it, and dry cells along both banks. */
static void make_channel(void) {
  for (int j = 1; j <= kM; ++j) {
    for (int i = 1; i <= kN; ++i) {
      const int steps = least(least(i - 15, 32 - i), least(j - 4, 17 - j));
      zc[at(i, j)] = (20 - (steps < 0 ? 0 : least(steps, 6))) / 20.0;
      wet[at(i, j)] = j > 1 && j < kM ? kYes : kNo;
    }
  }
  /* The module keeps sides up to date between cells of the area; those at its edge are the host's. */
  for (int j = 1; j < kM; ++j) {
    for (int i = 1; i < kN; ++i) {
      z1[at(i, j)] = 0.5 * (zc[at(i, j)] + zc[at(i + 1, j)]);
      z2[at(i, j)] = 0.5 * (zc[at(i, j)] + zc[at(i, j + 1)]);
    }
  }
}

/* Every row of cells keeps its discharge per metre: the velocity is high where it is shallow. */
static void compute_flow(void) {
  for (int j = kFirst; j <= kLastJ; ++j)
    for (int i = 1; i < kN; ++i) v1[at(i, j)] = kDischarge / z1[at(i, j)];
}

static void call_morphology(const nivaro_logical* smoothing) {
  QVMOR_INIT_2D_DOMAIN(&kOne);
  QVMORPHOLOGY(smoothing, &kNo, &kNo, wet, flow, level, v2, v1, zpts, zc, z2, z1, &kN32, &kM32,
               &kFirst32, &kFirst32, &kLastI32, &kLastJ32, &kCellSize, &kCellSize, &kCellSize, NULL,
               &kTimeStep, &kNo, &kNothing, NULL, NULL, NULL, NULL, NULL, NULL, NULL, real_work,
               integer_work, NULL, NULL, NULL, &kOne);
}

/* One time record of the bed change of the latest step: flags of the cells, values at the points. */
static void write_record(double hours) {
  static int32_t codes[kCells], point_i[kPoints], point_j[kPoints];
  static const int32_t skipped = -1;
  int p = 0;
  for (int j = kFirst; j < kLastJ; ++j) {
    for (int i = kFirst; i < kLastI; ++i) {
      point_i[p] = i;
      point_j[p++] = j;
    }
  }
  QVMOR_WRSMSF_DAT_FLAGS(&kOne, &kOne, &hours, &kNothing, &skipped, codes, wet, level, zc, &kN32,
                         NULL, &kFirst32, &kFirst32, &kLastI32, &kLastJ32);
  QVMOR_WRSMSF_DAT_RESULTS(&kOne, &kOne, &kPoints32, NULL, &kYes, &kN32, NULL, &kFirst32, &kFirst32,
                           &kLastI32, &kLastJ32, point_i, point_j, NULL, real_work);
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const char* control_file = argv[1];
  const char* prefix = argv[2];
  make_channel();

  /* 1. Start-up: log, workspace, dataset. */
  const int32_t flags = (kLastI - kFirst + 1) * (kLastJ - kFirst + 1);
  QVMOR_INITIALISE_S1("hump", prefix, prefix, &kNo, ".tab", &kNo, prefix, " ", " ", &kNo, 4,
                      length(prefix), length(prefix), 4, length(prefix), 1, 1);
  QVMOR_INITIALISE_S2(&kZero, &kNothing, &kZero, &kZero, &kPoints32, &flags);

  /* 2. Each domain: reserve, allocate, read the control file. This host has one. */
  int32_t next_real = 1, next_integer = 1;
  QVMOR_SETUP_S2(&kYes, &kOne, &kN32, &kM32, &kZero, &kZero, &next_real, &next_integer);
  real_work = calloc((size_t)next_real - 1, sizeof *real_work);
  integer_work = calloc((size_t)next_integer - 1, sizeof *integer_work);
  if (real_work == NULL || integer_work == NULL) return 1;
  const int32_t objects_i = kN - 2, objects_j = kM - 2, offset = 2;
  QVMOR_RDINPF(control_file, &kOne, &kOne, &kN32, &kM32, &kLastI32, &kLastJ32, &objects_i,
               &objects_j, &offset, &offset, &kCellSize, &kCellSize, &kNothing, &kNothing,
               &kNothing, real_work, integer_work, NULL, NULL, NULL, length(control_file));

  /* 3. Confine the area and bring sides and corners in line with the cells. */
  call_morphology(&kYes);

  /* 4. Steps, with a time record now and then. */
  QVMOR_WRSMSF_WRITE_HEADER("bed change");
  for (int step = 1; step <= kSteps; ++step) {
    compute_flow();
    call_morphology(&kNo);
    if (step % kStepsPerRecord == 0) write_record(step * kTimeStep / 3600.0);
  }

  /* 5. The end. */
  QVMOR_WRSMSF_CLOSE();
  char name[1000];
  snprintf(name, sizeof name, "%s_bed.bin", prefix);
  FILE* bed = fopen(name, "wb");
  if (bed == NULL || fwrite(zc, sizeof *zc, kCells, bed) != kCells || fclose(bed) != 0) return 1;
  free(real_work);
  free(integer_work);
  return 0;
}
