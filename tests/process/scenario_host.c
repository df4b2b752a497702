/* A host for the tests of what only a whole process shows: how a run ends, what stands on the
 * console, what is on the disk when it is gone.
 *
 * Usage: scenario_host SCENARIO PREFIX [CONTROL_FILE] */
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "nivaro_morphology.h"

enum { kN = 6, kM = 5, kCells = kN * kM, kPoints = 6 };

static const nivaro_logical kNo = 0, kYes = -1;
static const int32_t kOne = 1, kTwo = 2, kZero = 0, kNn = kN, kMm = kM;

static double real_work[12 * kCells];
static int32_t integer_work[kCells];

static nivaro_length length(const char* text) {
  return (nivaro_length)strlen(text);
}

static void start_checking_dates(const char* prefix, const nivaro_logical* check) {
  const int32_t values = kPoints, flags = kCells;
  const double threshold = 0.0;
  QVMOR_INITIALISE_S1("scenario", prefix, prefix, check, ".tab", check, prefix, " ", " ", &kNo, 8,
                      length(prefix), length(prefix), 4, length(prefix), 1, 1);
  QVMOR_INITIALISE_S2(&kZero, &threshold, &kZero, &kZero, &values, &flags);
}

static void start(const char* prefix) {
  start_checking_dates(prefix, &kNo);
}

static void read_control_file(const char* control_file) {
  const double cell = 1.0, zero = 0.0;
  int32_t next_real = 1, next_integer = 1;
  QVMOR_SETUP_S2(&kYes, &kOne, &kNn, &kMm, &kZero, &kZero, &next_real, &next_integer);
  QVMOR_RDINPF(control_file, &kOne, &kOne, &kNn, &kMm, &kNn, &kMm, &kNn, &kMm, &kTwo, &kTwo, &cell,
               &cell, &zero, &zero, &zero, real_work, integer_work, NULL, NULL, NULL,
               length(control_file));
}

/* One time record with every cell flagged and the bed change at six corners. */
static void write_record(double time) {
  static const int32_t point_i[kPoints] = {2, 3, 4, 2, 3, 4};
  static const int32_t point_j[kPoints] = {2, 2, 2, 3, 3, 3};
  static int32_t codes[kCells];
  static nivaro_logical active[kCells];
  static double depth[kCells];
  const int32_t points = kPoints, last_i = kN - 1, last_j = kM - 1, skipped = -1;
  const double zero = 0.0;
  for (int c = 0; c < kCells; ++c) active[c] = kYes;
  QVMOR_WRSMSF_DAT_FLAGS(&kOne, &kOne, &time, &zero, &skipped, codes, active, depth, depth, &kNn,
                         NULL, &kOne, &kOne, &kNn, &kMm);
  QVMOR_WRSMSF_DAT_RESULTS(&kOne, &kOne, &points, NULL, &kYes, &kNn, NULL, &kTwo, &kTwo, &last_i,
                           &last_j, point_i, point_j, NULL, real_work);
}

static void say(const char* text) {
  const int32_t blank_lines = 0;
  memcpy(DMESSAGES.line1, text, strlen(text));
  DMESSAGE(&blank_lines);
}

static void write_check_layer(void) {
  static int32_t codes[kCells];
  static double depth[kCells];
  const int32_t last_i = kN - 1, last_j = kM - 1;
  const double zero = 0.0, cell = 1.0;
  for (int c = 0; c < kCells; ++c) codes[c] = 1;
  QVMOR_WRMIFF(&kOne, &kOne, &kYes, codes, depth, &kNn, NULL, &kTwo, &kTwo, &last_i, &last_j, &kTwo,
               &kTwo, &zero, &zero, &cell, &zero, real_work, integer_work);
}

/* All files that a run can have open, and on standard error how many records and messages are in
 * them. Standard output has the module's lines alone. */
static int write_everything(const char* control_file, int records) {
  const int32_t no_blank_lines = 0;
  DMESSAGES.message_layer = 1;
  DMESSAGES.label_height = 1.0;
  read_control_file(control_file);
  write_check_layer();
  QVMOR_WRSMSF_WRITE_HEADER("bed change                         ");
  for (int record = 0; record < records; ++record) {
    char text[80];
    const double x = 10.0 + record, y = 20.0;
    snprintf(text, sizeof text, "WARNING 2000 - scour number %d", record);
    memcpy(DMESSAGES.line1, text, strlen(text));
    DMESSAGEXY(&no_blank_lines, &x, &y);
    write_record(record);
    fprintf(stderr, "%d\n", record + 1);
  }
  QVMOR_WRSMSF_CLOSE();
  return 7;
}

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const char* scenario = argv[1];
  const char* prefix = argv[2];

  if (strcmp(scenario, "exits_first") == 0) EXITS();
  start_checking_dates(prefix, strcmp(scenario, "save_date") == 0 ? &kYes : &kNo);
  if (strcmp(scenario, "exits") == 0) EXITS();
  if (strcmp(scenario, "start_twice") == 0) start(prefix);
  if (strcmp(scenario, "everything") == 0) return write_everything(argv[3], 20);
  if (strcmp(scenario, "everything_endless") == 0) return write_everything(argv[3], INT_MAX);
  if (strcmp(scenario, "control_file") == 0 || strcmp(scenario, "save_date") == 0)
    read_control_file(argv[3]);
  if (strcmp(scenario, "run") == 0 || strcmp(scenario, "endless") == 0) {
    read_control_file(argv[3]);
    QVMOR_WRSMSF_WRITE_HEADER("bed change                         ");
    const int endless = strcmp(scenario, "endless") == 0;
    for (int record = 0; endless || record < 3; ++record) {
      write_record(record);
      say("one more record");
    }
    QVMOR_WRSMSF_CLOSE();
  }
  printf("host goes on\n");
  return 7;
}
