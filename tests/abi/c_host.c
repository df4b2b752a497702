/* A host in C, from the public header alone. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "nivaro_morphology.h"

static int failures = 0;

static void check(int ok, const char* what) {
  if (ok) return;
  ++failures;
  printf("FAILED: %s\n", what);
}

/* The buffer is the text, padded with blanks. */
static int holds(const char* buffer, size_t size, const char* text) {
  const size_t length = strlen(text);
  if (length > size || memcmp(buffer, text, length) != 0) return 0;
  for (size_t i = length; i < size; ++i)
    if (buffer[i] != ' ') return 0;
  return 1;
}

static nivaro_length length(const char* text) {
  return (nivaro_length)strlen(text);
}

static int near(double value, double wanted) {
  return value > wanted - 1e-12 && value < wanted + 1e-12;
}

/* One routine of each kind; tests/exports has them all. */
static void check_convention(void) {
  const int32_t column = 2, fallback = 7;
  const double three = 3.0, minus_four = -4.0;
  const float half = 0.5F;
  const char* path = "C:\\Model\\Run.MIF   ";
  char result[20], doubled[20] = "  C:\\\\a//b          ";

  memset(result, 'x', sizeof result);
  FILEEXT(result, 12, path, length(path));
  check(holds(result, 12, ".mif") && result[12] == 'x', "a result is padded to its length");
  FILENAMEPATH(result, 4, path, length(path));
  check(holds(result, 4, "C:\\M") && result[4] == ' ', "a longer result is cut");
  CLEANPATH(result, 16, doubled, 20);
  check(holds(result, 16, "C:\\a/b") && holds(doubled, 20, "C:\\a/b"), "result and argument");
  check(FLAGEXISTS("Read MI Zpts == x", "read mi zpts", 17, 12) == -1, "true is -1");
  check(FLAGEXISTS("Read MI", "Zpts", 7, 4) == 0, "false is 0");
  check(EXTRACTINTEGER("k = 1, 22", "k = 1, 22", "K", &column, &fallback, 9, 9, 1) == 22,
        "texts and numbers");
  AREALD4(result, 20, &half, &column);
  check(holds(result, 20, "0.50"), "4-byte reals");
  check(VECTOR_MAGNITUDE(&three, &minus_four) == 5.0, "8-byte reals");
}

static void put_line1(const char* text) {
  memcpy(DMESSAGES.line1, text, strlen(text) + 1); /* with its end mark */
}

static void check_messages(void) {
  const int32_t nowhere = -2;
  const double x = 30.0, y = 40.0;

  put_line1("WARNING 0317 - from C");
  DMESSAGE(&nowhere);
  check(DMESSAGESADDRESS() == &DMESSAGES, "the record's address");
  check(DMESSAGES.warning_count == 1 && DMESSAGES.message_number == 317, "the shared record");
  check(DMESSAGES.line1[0] == ' ' && DMESSAGES.last_x == -99999.0, "the record is cleared");
  check(DMESSAGES.located_warning_count == 0, "DMESSAGE has no place");
  put_line1("WARNING 0318 - no place either");
  DMESSAGEXY(&nowhere, &DMESSAGES.default_x, &DMESSAGES.default_y);
  check(DMESSAGES.warning_count == 2 && DMESSAGES.located_warning_count == 1, "DMESSAGEXY");
  DMESSAGERESETCOUNTERS();
  check(DMESSAGES.warning_count == 0 && DMESSAGES.located_warning_count == 0,
        "DMESSAGERESETCOUNTERS");
  put_line1("ERROR 0319 - never sent");
  DMESSAGES.last_x = x;
  DMESSAGES.last_y = y;
  DMESSAGECLEAR();
  check(DMESSAGES.line1[0] == ' ' && DMESSAGES.last_x == -99999.0 && DMESSAGES.error_count == 0 &&
            DMESSAGES.message_number == 318,
        "DMESSAGECLEAR");
}

static void write_file(char* path, const char* prefix, const char* suffix, const char* text) {
  snprintf(path, 520, "%s%s", prefix, suffix);
  FILE* file = fopen(path, "wb");
  check(file != NULL && fputs(text, file) >= 0 && fclose(file) == 0, suffix);
}

static size_t read_file(const char* prefix, const char* suffix, char* content, size_t size) {
  char path[520];
  snprintf(path, sizeof path, "%s%s", prefix, suffix);
  FILE* file = fopen(path, "rb");
  check(file != NULL, suffix);
  if (file == NULL) return 0;
  const size_t count = fread(content, 1, size - 1, file);
  fclose(file);
  content[count] = '\0';
  return count;
}

enum { n = 6, m = 5, cells = n * m, hole = 2 * n + 3 /* cell (4, 3) */ };

/* Each corner of the grid's inside, last one first, and one value and one flag more than there are. */
enum { points = (n - 1) * (m - 1), values = points + 1, flags = (n - 2) * (m - 2) + 1 };
enum { record = 4 + 1 + 4 + flags + 4 * values };

/* The change of the latest step, from the depths before it, to the dataset and to `expected`. */
static void write_record(double time, const double* before, const double* zc, double depth_offset,
                         double* real_work, float* expected) {
  const int32_t one = 1, two = 2, skipped = 9, nn = n, last_i = n - 1, last_j = m - 1;
  const int32_t point_counts[2] = {-1, points}; /* that of domain 1 is the second */
  const nivaro_logical yes = -1;
  const double no_offset = 0.0;
  double offset[cells];
  int32_t code[cells] = {0}, point_i[points], point_j[points];
  nivaro_logical active[cells];

  for (int c = 0; c < cells; ++c) {
    offset[c] = depth_offset;
    active[c] = c == n + 1 ? 0 : -1; /* cell (2, 2), the first of the range */
  }
  code[n + 2] = 9; /* cell (3, 2) has no flag */
  QVMOR_WRSMSF_DAT_FLAGS(&one, &one, &time, &no_offset, &skipped, code, active, zc, offset, &nn,
                         NULL, &two, &two, &last_i, &last_j);
  for (int p = 0; p < points; ++p) {
    const int c = points - 1 - p, i = c % (n - 1), j = c / (n - 1), at = j * n + i;
    point_i[p] = i + 1;
    point_j[p] = j + 1;
    double sum = 0.0;
    for (int k = 0; k < 4; ++k) {
      const int cell = at + k % 2 + k / 2 * n;
      sum += before[cell] - zc[cell];
    }
    expected[p] = (float)(sum / 4.0);
  }
  expected[points] = 0.0F;
  QVMOR_WRSMSF_DAT_RESULTS(&one, &one, point_counts + 1, NULL, &yes, &nn, NULL, &two, &two, &last_i,
                           &last_j, point_i, point_j, NULL, real_work);
}

static int same_values(const char* bytes, const float* expected) {
  for (int p = 0; p < values; ++p) {
    float value;
    memcpy(&value, bytes + 4 * p, 4);
    if (!(value > expected[p] - 1e-6F && value < expected[p] + 1e-6F)) return 0;
  }
  return 1;
}

/* What viewers find in the dataset: the records of the two steps between header and end card. */
static void check_dataset(const char* prefix, const float* first, const float* second) {
  char content[2000];
  const size_t header = 15 * 4 + 40,
               size = read_file(prefix, "_morDH.dat", content, sizeof content);
  int32_t card[15], end = 0, begin = 0;
  float time = 0.0F;

  check(size == header + 2 * record + 4, "size of the dataset");
  if (size != header + 2 * record + 4) return;
  memcpy(card, content, sizeof card);
  memcpy(&end, content + size - 4, 4);
  check(card[0] == 3000 && card[11] == values && card[13] == flags && end == 210, "its cards");
  check(memcmp(content + 60, "DELH change of a hole", 21) == 0, "its name");
  for (int r = 0; r < 2; ++r) {
    const char* at = content + header + r * record;
    memcpy(&begin, at, 4);
    memcpy(&time, at + 5, 4);
    check(begin == 200 && at[4] == 1 && time == (r == 0 ? 1.5F : 2.5F), "a time record");
    /* Cells of row i = 2 first: (2, 2) is not active, (3, 2) is left out, one more is padding. At
     * the second step the hole alone is deeper than the threshold. */
    const char* flag = at + 9;
    int set = 0;
    for (int f = 0; f < flags; ++f) set += flag[f];
    check(flag[0] == 0 && (r == 0 ? set == flags - 3 : set == 1 && flag[6] == 1), "flags");
    check(same_values(at + 9 + flags, r == 0 ? first : second), "bed change at the corners");
  }
}

/* Cell (4, 3) alone, in a grid turned by the angle of 1 in 2. */
static void check_check_layer(const char* prefix, double* real_work, int32_t* integer_work) {
  const int32_t one = 1, two = 2, nn = n, last_i = n - 1, last_j = m - 1, first = 10, second = 20;
  const nivaro_logical yes = -1;
  const double x0 = 100.0, y0 = 200.0, along = 2.0, across = 1.0;
  int32_t code[cells] = {0};
  double depth[cells] = {0};
  char content[2000];

  code[hole] = 7;
  depth[hole] = 12.5;
  QVMOR_WRMIFF(&one, &one, &yes, code, depth, &nn, NULL, &two, &two, &last_i, &last_j, &first,
               &second, &x0, &y0, &along, &across, real_work, integer_work);
  read_file(prefix, "_mor_check.mid", content, sizeof content);
  check(strstr(content, "\"12,21\"") && strstr(content, "-12.500") && strstr(content, "0.000400") &&
            strstr(content, "0.300") && strchr(content, '\n') == strrchr(content, '\n'),
        "record of the check layer");
  read_file(prefix, "_mor_check.mif", content, sizeof content);
  /* Corner (1, 2) of the grid: 100 + 2 * 1 - 1 * 2 and 200 + 1 * 1 + 2 * 2. */
  check(strstr(content, "CoordSys Earth") && strstr(content, "        100.000        205.000"),
        "object of the check layer");
}

/* The calling order of a host, down to a step that moves sand along the first index and one that lets
 * the walls of a hole slump along the second. Arguments that could be taken for each other differ. */
static void check_run(const char* folder) {
  const nivaro_logical no = 0, yes = -1;
  const int32_t domain = 1, nn = n, mm = m, zero = 0, two = 2, last_i = n - 1, last_j = m - 1;
  const double one = 1.0, two_metres = 2.0, four = 4.0, origin = 0.0, minute = 60.0;
  const int32_t row_offset1 = 10, row_offset2 = 20, num_data = values, num_cells = flags;
  const double threshold = 1.5;
  const char* coordinates = "CoordSys Earth Projection 1, 104";
  float first[values], second[values];
  char prefix[512], mcf[520], other[520];
  snprintf(prefix, sizeof prefix, "%s/c", folder);
  write_file(mcf, prefix, ".mcf",
             "Slump Slope == 2\r\nSlump Bed Change Limit == 0.05\r\nTime Centreing Factor == 1\r\n"
             "Fall Velocity == 0.02\r\nCurrent Related Roughness == 0.05\r\n"
             "Reference Level == 0.025\r\nMixing Layer Thickness == 0.025\r\n"
             "Read MID Morphology D90 == c.csv\r\n"
             "Read MI Morphology Insitu Voids == c_voids");
  write_file(other, prefix, ".csv", "12,21,0.0004\r\n14,21,9\r\n12,23,9\r\n");
  write_file(other, prefix, "_voids.mif",
             "Version 300\nColumns 1\n  v Float\nData\n\n"
             "Region 1\n 5\n0 1\n2 1\n2 2\n0 2\n0 1\n");
  write_file(other, prefix, "_voids.mid", "0.3\n");

  QVMOR_INITIALISE_S1("c", prefix, prefix, &no, ".tab", &no, prefix, coordinates, " ", &no, 1,
                      length(prefix), length(prefix) + 1 /* with its end mark */, 4, length(prefix),
                      length(coordinates), 1);
  snprintf(other, sizeof other, "%s.mlf", prefix);
  FILE* log = fopen(other, "rb");
  check(log != NULL, "an end mark is no part of a prefix");
  if (log != NULL) fclose(log);
  check(DMESSAGES.log_unit == 2001, "log unit in the shared record");

  QVMOR_INITIALISE_S2(&zero, &threshold, &zero, &zero, &num_data, &num_cells);
  QVMOR_WRSMSF_WRITE_HEADER("change of a hole");

  int32_t next_real = 1, next_integer = 1;
  QVMOR_SETUP_S2(&yes, &domain, &nn, &mm, &zero, &zero, &next_real, &next_integer);
  check(next_real == 12 * cells + 1 && next_integer == cells + 1, "positions");

  double* real_work = calloc(12 * cells, sizeof *real_work);
  int32_t* integer_work = calloc(cells, sizeof *integer_work);
  nivaro_logical wet[cells];
  double still[cells] = {0}, moving[cells], before[cells], zpts[cells], zc[cells], z1[cells],
         z2[cells];
  for (int c = 0; c < cells; ++c) {
    wet[c] = yes;
    moving[c] = c % n < 3 ? 1.0 + 0.1 * (c / n) : 0.0; /* stops at side 4 of each row */
    before[c] = zpts[c] = zc[c] = z1[c] = z2[c] = 2.0;
  }

  QVMOR_RDINPF(mcf, &domain, &domain, &nn, &mm, &last_i, &last_j, &nn, &mm, &row_offset1,
               &row_offset2, &two_metres, &one, &origin, &origin, &origin, real_work, integer_work,
               NULL, NULL, NULL, length(mcf));
  check(real_work[cells - 1] == 0.00016 && integer_work[cells - 1] == 1, "defaults");
  /* Row index 12 with offset 10 is element 4, 21 with 20 element 3; 6 and 5 pass the bounds. */
  const double* d90 = real_work + cells;
  check(d90[hole] == 0.0004 && d90[2 * n + 5] == 0.00016 && d90[4 * n + 3] == 0.00016,
        "a cell table");
  /* Cells are 2 m along x, the second index, and 1 m along y: the region is cell (2, 1) alone. */
  const double* voids = real_work + 2 * cells;
  check(voids[hole] == 0.3 && voids[hole - 1] == 0.4 && voids[hole - n] == 0.4, "a layer");

  QVMOR_INIT_2D_DOMAIN(&domain);
  QVMORPHOLOGY(&no, &no, &no, wet, wet, still, still, moving, zpts, zc, z2, z1, &nn, &mm, &two,
               &two, &last_i, &last_j, &one, &one, &four, NULL, &minute, &no, &origin, NULL, NULL,
               NULL, NULL, NULL, NULL, NULL, real_work, integer_work, NULL, NULL, NULL, &domain);
  check(zc[hole - n] < 1.999 && zc[n + 1] == 2.0 && zc[hole] < zc[hole - n],
        "sand settles where the flow stops");
  write_record(1.5, before, zc, 0.0, real_work, first);

  for (int c = 0; c < cells; ++c)
    before[c] = zpts[c] = zc[c] = z1[c] = z2[c] = c == hole ? 3.0 : 2.0;
  QVMORPHOLOGY(&no, &no, &no, wet, wet, still, still, still, zpts, zc, z2, z1, &nn, &mm, &two, &two,
               &last_i, &last_j, &one, &one, &four, NULL, &minute, &no, &origin, NULL, NULL, NULL,
               NULL, NULL, NULL, NULL, real_work, integer_work, NULL, NULL, NULL, &domain);
  /* Slope 1:1 along the second index is steeper than 1:2, 1:4 along the first is not; each of two
   * slumps of 1 * (1 - 1 / 2) is cut to 0.05. */
  check(near(zc[hole], 2.9) && near(zc[hole - n], 2.05) && zc[hole + 1] == 2.0, "a step");
  check(near(z1[hole], 2.45) && near(z2[hole], 2.475) && near(zpts[hole], 2.2375), "a rebuilt bed");
  /* What slumps changes the bed, but is no part of the bed change. */
  write_record(2.5, zc, zc, -1.0, real_work, second);
  QVMOR_WRSMSF_CLOSE();
  check_dataset(prefix, first, second);
  check_check_layer(prefix, real_work, integer_work);

  free(real_work);
  free(integer_work);
}

int main(int argc, char** argv) {
  const char* folder = argc > 1 ? argv[1] : ".";
  check_convention();
  check_messages();
  check_run(folder);
  if (failures > 0) return 1;
  printf("c_host: all checks passed\n");
  return 0;
}
