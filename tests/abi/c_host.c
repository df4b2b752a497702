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

static void check_texts(void) {
  char result[16];
  const char* path = "C:\\Model\\Run.MIF   ";

  memset(result, 'x', sizeof result);
  FILEEXT(result, 12, path, length(path));
  check(holds(result, 12, ".mif") && result[12] == 'x', "a result is padded to its length");
  FILENAMEPATH(result, 4, path, length(path));
  check(holds(result, 4, "C:\\M") && result[4] == ' ', "a longer result is cut");

  char doubled[20] = "  C:\\\\a//b          ";
  CLEANPATH(result, 16, doubled, 20);
  check(holds(result, 16, "C:\\a/b") && holds(doubled, 20, "C:\\a/b"), "result and argument");
  char ended[8] = {'a', 'b', 'c', ' ', ' ', ' ', ' ', ' '};
  check(LENSL(ended, 8) == 3 && ended[3] == '\0', "LENSL ends the text");
}

static void check_values(void) {
  const int32_t column = 2, fallback = 7, digits = 4, value = 305;
  const float third = 0.5F;
  char result[20];

  check(FLAGEXISTS("Read MI Zpts == x", "read mi zpts", 17, 12) == -1, "true is -1");
  check(FLAGEXISTS("Read MI", "Zpts", 7, 4) == 0, "false is 0");
  check(EXTRACTINTEGER("k = 1, 22", "k = 1, 22", "K", &column, &fallback, 9, 9, 1) == 22,
        "EXTRACTINTEGER");
  AINTEGERPREC0(result, 20, &value, &digits);
  check(holds(result, 20, "0305"), "AINTEGERPREC0");
  AREALD4(result, 20, &third, &column);
  check(holds(result, 20, "0.50"), "AREALD4 takes a 4-byte real");

  int32_t integer = 0;
  check(CHECKINT4("12 ", &integer, 3) == -1 && integer == 12, "CHECKINT4");
}

static int near(double value, double wanted) {
  return value > wanted - 1e-12 && value < wanted + 1e-12;
}

static void check_geometry(void) {
  const double zero = 0.0, one = 1.0, two = 2.0, three = 3.0, four = 4.0, quarter = 0.25;
  const double right_angle = 1.5707963267948966;
  const int32_t points = 6, polygons = 1, ends = 5, corners = 4, yes = 1, bound = 9;
  double x = -1.0, y = -1.0;

  check(DISTANCE(&zero, &zero, &three, &four) == 5.0, "DISTANCE");
  check(DISTANCE_8(&one, &zero, &four, &four) == 5.0, "DISTANCE_8");
  check(VECTOR_MAGNITUDE(&three, &four) == 5.0, "VECTOR_MAGNITUDE");
  check(CIRCLE_WIDTH(&two, &two) == 4.0, "CIRCLE_WIDTH");
  check(SAME_POINT(&zero, &one, &quarter, &one, &one) == -1, "SAME_POINT");
  check(SAME_POINT_8(&zero, &one, &two, &one, &one) == 0, "SAME_POINT_8");
  /* The line runs up the y axis; (1, 0) and (3, 4) lie right of it. */
  check(SAME_SIDE(&zero, &zero, &zero, &two, &one, &zero, &three, &four) > 0.0, "SAME_SIDE");
  check(POINT_POSITION_8(&zero, &zero, &zero, &two, &one, &zero) == 1, "POINT_POSITION_8");
  check(INTERSECT_POINT(&zero, &zero, &one, &one, &three, &three) == -1, "INTERSECT_POINT");
  /* The diagonal to (2, 2) and the line x = 1 from 0 to 4. */
  check(INTERSECT_LINE(&zero, &zero, &two, &two, &one, &zero, &one, &four) == -1, "INTERSECT_LINE");
  check(INTERSECT_LINE_V2(&zero, &zero, &two, &two, &one, &zero, &one, &four) == 3,
        "INTERSECT_LINE_V2");
  check(INTERSECT_LINE_V2_8(&two, &two, &four, &four, &one, &zero, &one, &four) == 2,
        "INTERSECT_LINE_V2_8: only on B");
  check(INTERSECTION_POINT(&zero, &zero, &two, &two, &one, &zero, &one, &four, &x, &y) == -1 &&
            x == 1.0 && y == 1.0,
        "INTERSECTION_POINT");
  check(near(ANGLE2D(&zero, &zero, &one, &zero, &zero, &zero, &one, &one), 45.0), "ANGLE2D");

  GEO_SHIFT(&one, &three, &polygons, &one, &two, &right_angle, &x, &y);
  check(near(x, 1.0) && near(y, 0.0), "GEO_SHIFT");

  /* The square from 0 to 4, closed, and its closing slot. */
  const double square_x[6] = {0, 4, 4, 0, 0, 0}, square_y[6] = {0, 0, 4, 4, 0, 0};
  check(INSIDE_POLYGON(&one, &two, square_x, square_y, &points, &zero, &ends, &polygons) == -1,
        "INSIDE_POLYGON");
  const double five = 5.0;
  check(INSIDE_POLYGON_8(&five, &two, square_x, square_y, &points, &zero, &ends, &polygons) == 0,
        "INSIDE_POLYGON_8");

  /* z = x + 2 y at the corners. */
  const double z[4] = {0, 4, 12, 8};
  double value = 0.0;
  check(INTERPOLATE_TRIANGLE(&three, &one, square_x, square_y, z, &value) == -1 && near(value, 5.0),
        "INTERPOLATE_TRIANGLE");
  INTERPOLATE_TRIANGLE_NO_CHECKS(&three, &two, square_x, square_y, z, &value);
  check(near(value, 7.0), "INTERPOLATE_TRIANGLE_NO_CHECKS");
  check(INTERPOLATE_ELEMENT_8(&one, &two, square_x, square_y, z, &corners, &zero, &value) == -1 &&
            near(value, 5.0),
        "INTERPOLATE_ELEMENT_8");

  /* A bed that rises from 1 to 4 between x = 0 and 4 under level 5: 4 wide, 5 long, half of it deep. */
  double area = 0.0, width = 0.0, perimeter = 0.0, area2 = 0.0, width2 = 0.0, perimeter2 = 0.0;
  HYD_PARAM(&zero, &one, &four, &four, &five, &yes, &area, &width, &perimeter);
  check(near(area, 10.0) && width == 4.0 && perimeter == 5.0, "HYD_PARAM");
  const int32_t no = 0;
  HYD_PARAM2(&zero, &one, &no, &four, &four, &yes, &five, &area, &area2, &width, &width2,
             &perimeter, &perimeter2);
  check(area == 0.0 && near(area2, 3.5) && width == 0.0 && width2 == 2.0 && perimeter2 == 2.5,
        "HYD_PARAM2");

  /* Cells of size 2: y from 1 to 3 in cells 1 to 2, x from 2 to 25 in cells 2 to 13, cut to 9. */
  const double px[2] = {2, 25}, py[2] = {3, 1};
  const int32_t two_points = 2;
  int32_t low1, low2, high1, high2;
  double min_x, min_y, max_x, max_y;
  SET_SUB_GRID_AREA(px, py, &two_points, &two, &bound, &bound, &low1, &low2, &high1, &high2, &min_x,
                    &min_y, &max_x, &max_y);
  check(low1 == 1 && low2 == 2 && high1 == 2 && high2 == 9, "SET_SUB_GRID_AREA: cells");
  check(min_x == 2 && min_y == 1 && max_x == 25 && max_y == 3, "SET_SUB_GRID_AREA: box");
}

static void check_messages(void) {
  const int32_t nowhere = -2;
  const char text[] = "WARNING 0317 - from C";
  memcpy(DMESSAGES.line1, text, sizeof text); /* with its end mark */
  DMESSAGE(&nowhere);
  check(DMESSAGES.warning_count == 1 && DMESSAGES.message_number == 317, "the shared record");
  check(DMESSAGES.line1[0] == ' ' && DMESSAGES.last_x == -99999.0, "the record is cleared");
  DMESSAGERESETCOUNTERS();
  check(DMESSAGES.warning_count == 0, "DMESSAGERESETCOUNTERS");
}

static void write_file(char* path, const char* prefix, const char* suffix, const char* text) {
  snprintf(path, 520, "%s%s", prefix, suffix);
  FILE* file = fopen(path, "wb");
  check(file != NULL && fputs(text, file) >= 0 && fclose(file) == 0, suffix);
}

/* The calling order of a host, down to a step that moves sand along the first index and one that lets
 * the walls of a hole slump along the second. Arguments that could be taken for each other differ. */
static void check_run(const char* folder) {
  enum { n = 6, m = 5, cells = n * m, hole = 2 * n + 3 /* cell (4, 3) */ };
  const nivaro_logical no = 0, yes = -1;
  const int32_t domain = 1, nn = n, mm = m, zero = 0, two = 2, last_i = n - 1, last_j = m - 1;
  const double one = 1.0, two_metres = 2.0, four = 4.0, origin = 0.0, hour = 3600.0;
  const int32_t row_offset1 = 10, row_offset2 = 20;
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

  QVMOR_INITIALISE_S1("c", prefix, prefix, &no, ".tab", &no, prefix, " ", " ", &no, 1,
                      length(prefix), length(prefix) + 1 /* with its end mark */, 4, length(prefix),
                      1, 1);
  snprintf(other, sizeof other, "%s.mlf", prefix);
  FILE* log = fopen(other, "rb");
  check(log != NULL, "an end mark is no part of a prefix");
  if (log != NULL) fclose(log);
  check(DMESSAGES.log_unit == 2001, "log unit in the shared record");

  int32_t next_real = 1, next_integer = 1;
  QVMOR_SETUP_S2(&yes, &domain, &nn, &mm, &zero, &zero, &next_real, &next_integer);
  check(next_real == 12 * cells + 1 && next_integer == cells + 1, "positions");

  double* real_work = calloc(12 * cells, sizeof *real_work);
  int32_t* integer_work = calloc(cells, sizeof *integer_work);
  nivaro_logical wet[cells];
  double still[cells] = {0}, moving[cells], zpts[cells], zc[cells], z1[cells], z2[cells];
  for (int c = 0; c < cells; ++c) {
    wet[c] = yes;
    moving[c] = c % n < 3 ? 1.0 : 0.0; /* stops at side 4 of each row */
    zpts[c] = zc[c] = z1[c] = z2[c] = 2.0;
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
               &two, &last_i, &last_j, &one, &one, &four, NULL, &hour, &no, &origin, NULL, NULL,
               NULL, NULL, NULL, NULL, NULL, real_work, integer_work, NULL, NULL, NULL, &domain);
  check(zc[hole - n] < 1.999 && zc[n + 1] == 2.0, "sand settles where the flow stops");

  for (int c = 0; c < cells; ++c) zpts[c] = zc[c] = z1[c] = z2[c] = c == hole ? 3.0 : 2.0;
  QVMORPHOLOGY(&no, &no, &no, wet, wet, still, still, still, zpts, zc, z2, z1, &nn, &mm, &two, &two,
               &last_i, &last_j, &one, &one, &four, NULL, &hour, &no, &origin, NULL, NULL, NULL,
               NULL, NULL, NULL, NULL, real_work, integer_work, NULL, NULL, NULL, &domain);
  /* Slope 1:1 along the second index is steeper than 1:2, 1:4 along the first is not; each of two
   * slumps of 1 * (1 - 1 / 2) is cut to 0.05. */
  check(near(zc[hole], 2.9) && near(zc[hole - n], 2.05) && zc[hole + 1] == 2.0, "a step");
  check(near(z1[hole], 2.45) && near(z2[hole], 2.475) && near(zpts[hole], 2.2375), "a rebuilt bed");

  free(real_work);
  free(integer_work);
}

int main(int argc, char** argv) {
  const char* folder = argc > 1 ? argv[1] : ".";
  check_texts();
  check_values();
  check_geometry();
  check_messages();
  check_run(folder);
  if (failures > 0) return 1;
  printf("c_host: all checks passed\n");
  return 0;
}
