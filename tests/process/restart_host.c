/* A host that can be stopped and taken up again: two domains with options of their own and slopes
 * that slump, a flow that turns with every other step, and fields of the host's own in front of the
 * module's in both work arrays.
 *
 * Usage: restart_host PREFIX CONTROL_FILE_1 CONTROL_FILE_2 STEPS STATE_OUT [STATE_IN]
 * Leaves the state behind the last step in STATE_OUT, and the dataset with a record of every step. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "nivaro_morphology.h"

enum { kN = 12, kM = 9, kCells = kN * kM, kDomains = 2, kOwn = 7 };
enum { kPoints = (kN - 3) * (kM - 3), kReals = kOwn + 12 * kCells * kDomains };

static const nivaro_logical kNo = 0, kYes = -1;
static const int32_t kZero = 0, kTwo = 2, kNn = kN, kMm = kM, kLastI = kN - 1;
static const int32_t kLastJ = kM - 1, kLastDomain = kDomains;
static const double kNothing = 0.0, kCell = 2.0, kTimeStep = 120.0;

/* All that a later run needs: the host's own bed and clock, and the stretches of the work arrays. */
static struct {
  double real_work[kReals];
  double zc[kDomains][kCells], z1[kDomains][kCells], z2[kDomains][kCells], zpts[kDomains][kCells];
  int32_t integer_work[kOwn + kCells * kDomains];
  int32_t step;
} state;

static nivaro_logical wet[kCells];
static double level[kCells], v1[kCells], v2[kCells];

static nivaro_length length(const char* text) {
  return (nivaro_length)strlen(text);
}

static void make_bed(void) {
  for (int d = 0; d < kDomains; ++d) {
    for (int c = 0; c < kCells; ++c) {
      state.zc[d][c] = 1.0 + 0.1 * ((c * 7 + d) % 5);
      state.z1[d][c] = state.z2[d][c] = state.zpts[d][c] = state.zc[d][c];
    }
    state.zc[d][4 * kN + 5 + d] = 3.5; /* a hole with walls that slump */
  }
}

static void compute_flow(int d) {
  const double q = state.step % 2 == 0 ? 0.8 : -0.5;
  for (int c = 0; c < kCells; ++c) {
    v1[c] = q / state.z1[d][c];
    v2[c] = 0.3 * q / state.z2[d][c];
  }
}

static void call_morphology(const nivaro_logical* smoothing, int d) {
  const int32_t domain = d + 1;
  QVMOR_INIT_2D_DOMAIN(&domain);
  QVMORPHOLOGY(smoothing, &kNo, &kNo, wet, wet, level, v2, v1, state.zpts[d], state.zc[d],
               state.z2[d], state.z1[d], &kNn, &kMm, &kTwo, &kTwo, &kLastI, &kLastJ, &kCell, &kCell,
               &kCell, NULL, &kTimeStep, &kNo, &kNothing, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
               state.real_work, state.integer_work, NULL, NULL, NULL, &domain);
}

static void write_record(void) {
  static int32_t codes[kCells], point_i[kPoints], point_j[kPoints];
  const int32_t points[kDomains] = {kPoints, kPoints}, skipped = -1;
  const double time = state.step;
  for (int p = 0; p < kPoints; ++p) {
    point_i[p] = 2 + p % (kN - 3);
    point_j[p] = 2 + p / (kN - 3);
  }
  for (int32_t domain = 1; domain <= kDomains; ++domain)
    QVMOR_WRSMSF_DAT_FLAGS(&domain, &kLastDomain, &time, &kNothing, &skipped, codes, wet, level,
                           level, &kNn, NULL, &kTwo, &kTwo, &kLastI, &kLastJ);
  for (int32_t domain = 1; domain <= kDomains; ++domain)
    QVMOR_WRSMSF_DAT_RESULTS(&domain, &kLastDomain, points, NULL, &kYes, &kNn, NULL, &kTwo, &kTwo,
                             &kLastI, &kLastJ, point_i, point_j, NULL, state.real_work);
}

/* The same in every run, whether it begins or goes on. */
static void start(const char* prefix, char** control_files) {
  const int32_t values = kDomains * kPoints, flags = kDomains * (kN - 2) * (kM - 2);
  QVMOR_INITIALISE_S1("restart", prefix, prefix, &kNo, ".tab", &kNo, prefix, " ", " ", &kNo, 7,
                      length(prefix), length(prefix), 4, length(prefix), 1, 1);
  QVMOR_INITIALISE_S2(&kZero, &kNothing, &kZero, &kZero, &values, &flags);
  int32_t next_real = kOwn + 1, next_integer = kOwn + 1;
  for (int32_t domain = 1; domain <= kDomains; ++domain) {
    const char* file = control_files[domain - 1];
    QVMOR_SETUP_S2(&kYes, &domain, &kNn, &kMm, &kZero, &kZero, &next_real, &next_integer);
    QVMOR_RDINPF(file, &domain, &kLastDomain, &kNn, &kMm, &kLastI, &kLastJ, &kLastI, &kLastJ, &kTwo,
                 &kTwo, &kCell, &kCell, &kNothing, &kNothing, &kNothing, state.real_work,
                 state.integer_work, NULL, NULL, NULL, length(file));
  }
  QVMOR_WRSMSF_WRITE_HEADER("bed change                         ");
}

int main(int argc, char** argv) {
  if (argc < 6) return 2;
  for (int c = 0; c < kCells; ++c) wet[c] = kYes;
  make_bed();
  start(argv[1], argv + 2);
  if (argc > 6) {
    FILE* in = fopen(argv[6], "rb"); /* behind the control files, which set everything anew */
    if (in == NULL || fread(&state, sizeof state, 1, in) != 1 || fclose(in) != 0) return 1;
  } else {
    for (int d = 0; d < kDomains; ++d) call_morphology(&kYes, d);
  }
  const int32_t last = state.step + atoi(argv[4]);
  while (state.step < last) {
    for (int d = 0; d < kDomains; ++d) {
      compute_flow(d);
      call_morphology(&kNo, d);
    }
    ++state.step;
    write_record();
  }
  QVMOR_WRSMSF_CLOSE();
  FILE* out = fopen(argv[5], "wb");
  if (out == NULL || fwrite(&state, sizeof state, 1, out) != 1 || fclose(out) != 0) return 1;
  return 0;
}
