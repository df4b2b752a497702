/* NIVARO Morphology: sand transport and bed evolution for 2D hydraulic models.
 *
 * The C declarations of everything that the shared library exports. They hold for every host
 * language: C, C++ and, with the conventions below, Fortran.
 *
 * CONVENTIONS
 *   Arguments   Every argument is passed by reference, numbers and logicals too.
 *   Texts       A text is a buffer of fixed length, padded with blanks, without an end mark. Its
 *               length travels as a hidden 8-byte integer by value behind all ordinary arguments,
 *               one for each text, in the order of the texts. A routine that returns a text takes
 *               the result buffer and its length as its first two arguments and cuts the result to
 *               that length or pads it with blanks.
 *   Logicals    4-byte integers: true is -1, false is 0; only the lowest bit is tested.
 *   Reals       8-byte IEEE values unless a comment says otherwise. Integers have 4 bytes.
 *   Arrays      Indexed from 1, the first index varying fastest: element (i, j) of an n x m field
 *               lies (j - 1) * n + (i - 1) elements behind its first.
 *   Bed         Bed arrays hold bed depth below datum in metres, positive downward: the negative of
 *               the bed elevation. The bed change that the module reports is positive upward.
 *   Units       SI: m, s, m/s, kg/m3. Bed transport is kg/(s m).
 *   Threads     All calls come from one thread. The module keeps one model per process.
 *   Errors      No routine returns an error code for bad input: the reason is written, files are
 *               closed, and the process ends (EXITS), after start-up with exit code 1.
 *
 * CALLING ORDER
 *   1. QVMOR_INITIALISE_S1                      once, before anything else
 *   2. QVMOR_INITIALISE_S2                      once, before any dataset output
 *   3. QVMOR_SETUP_S2, QVMOR_RDINPF             for each 2D domain, the last domain last
 *   4. QVMOR_INIT_2D_DOMAIN, QVMORPHOLOGY       for each morphology computation of a domain;
 *                                               usually once with the smoothing flag at the start
 *      QVMOR_WRMIFF                             for each 2D domain, domain 1 first: once, at any time
 *                                               after 3
 *   5. QVMOR_WRSMSF_WRITE_HEADER once, then at output times QVMOR_WRSMSF_DAT_FLAGS for every domain
 *      and QVMOR_WRSMSF_DAT_RESULTS for every domain; at the end QVMOR_WRSMSF_CLOSE
 *   docs/host-guide.md goes through it with an example.
 */
#ifndef NIVARO_MORPHOLOGY_H
#define NIVARO_MORPHOLOGY_H

#include <stdint.h>

#if defined(_WIN32) && defined(NIVARO_BUILDING)
#define NIVARO_API __declspec(dllexport)
#elif defined(_WIN32)
#define NIVARO_API __declspec(dllimport)
#else
#define NIVARO_API __attribute__((visibility("default")))
#endif

/* No C++ exception crosses into the host. */
#ifdef __cplusplus
#define NIVARO_NOEXCEPT noexcept
extern "C" {
#else
#define NIVARO_NOEXCEPT
#endif

typedef int32_t nivaro_logical; /* true is -1, false is 0, the lowest bit counts */
typedef int64_t nivaro_length;  /* hidden length of a text, by value */

/* ---- The shared message record ---------------------------------------------------------------
 * One static block, all zero at load, with the natural alignment of C. Texts are padded with
 * blanks; codes of 0 count as blanks. A host fills lines and details and calls DMESSAGEXY or
 * DMESSAGE; it may set the fields marked [host]. */
typedef struct nivaro_messages {
  int32_t log_unit;       /* unit of the log; no log output while it is 0 or less */
  char line1[10000];      /* level word, blank, four-digit number, " - ", text */
  char line2[10000];      /* optional */
  char line3[10000];      /* optional */
  char line4[10000];      /* derived: the details joined by "; " */
  char location_tag[8];   /* "XY:", "NoXY:" or blank; set by DMESSAGEXY */
  double label_box_width; /* [host] width added to the right of a label box, map units */
  double label_height;    /* [host] height of one line of a label, map units */
  int32_t error_count;    /* messages of each level so far ... */
  int32_t warning_count;
  int32_t check_count;
  int32_t located_error_count; /* ... and those that went through DMESSAGEXY */
  int32_t located_warning_count;
  int32_t located_check_count;
  int32_t message_number; /* number read from line 1, 0 when there is none */
  int32_t message_level;  /* 1 ERROR, 2 WARNING, 3 CHECK, 4 UNSTABLE, 5 INFORMATION, 0 plain */
  char detail1[10000];    /* optional, typically the offending input line */
  char detail2[10000];
  char detail3[10000];
  int32_t message_table_unit; /* [host] unit of the message table; 0 or less: none */
  double last_x;              /* place of the last message object; -99999.0 when none */
  double last_y;
  nivaro_logical one_line_flag;    /* [host] print all lines of the message on one line */
  int32_t message_layer;           /* [host] GIS layer of errors, warnings, unstable, information */
  int32_t secondary_message_layer; /* [host] GIS layer of checks and plain text */
  char reference_link[64];         /* address of the message's page, or blank */
  double default_x;                /* [host] point of messages without a location */
  double default_y;
  double unlocated_spacing; /* [host] step between stacked messages without a location; 0: none */
  int32_t unlocated_count;  /* messages stacked so far */
  nivaro_logical strict_command_flag; /* [host] a control line without "==" stops the run */
  nivaro_logical echo_flag;           /* [host] READLINE shows every line it reads */
  nivaro_logical suppression_flag;    /* [host] numbered messages are discarded */
} nivaro_messages;

extern NIVARO_API nivaro_messages DMESSAGES;

/* ---- Morphology entry points ----------------------------------------------------------------- */

/* Start-up, the first call of all. Opens the log (`log_prefix`.mlf), the MapInfo workspace
 * (`output_prefix`_mor.wor) and the bed change dataset (`output_prefix`_morDH.dat).
 * The other arguments are kept for layers: `save_date_check` compares a layer's date with that of
 * its table, which is the layer's name with the 4-character `table_extension`; `save_date_error`
 * makes an old layer an error; `check_layer_prefix` and `check_layer_header_source` (a CoordSys
 * line or blank) are the check layer's; `host_projection` is the host's CoordSys line in upper case
 * without blanks and quotes (blank: no check), `projection_error` makes a mismatch an error. */
NIVARO_API void QVMOR_INITIALISE_S1(
    const char* simulation_name, const char* output_prefix, const char* log_prefix,
    const nivaro_logical* save_date_check, const char* table_extension,
    const nivaro_logical* save_date_error, const char* check_layer_prefix,
    const char* check_layer_header_source, const char* host_projection,
    const nivaro_logical* projection_error, nivaro_length simulation_name_length,
    nivaro_length output_prefix_length, nivaro_length log_prefix_length,
    nivaro_length table_extension_length, nivaro_length check_layer_prefix_length,
    nivaro_length check_layer_header_source_length,
    nivaro_length host_projection_length) NIVARO_NOEXCEPT;

/* Settings of the dataset. `time_code_switch` 0 or less: times are written as given (hours by
 * custom); 1 or more: time / 1000 + 100 * offset. A `flag_depth_threshold` above 0
 * flags a cell only where its two depth terms together exceed it. `num_data` values and `num_cells`
 * flags make a time record, summed over all domains. */
NIVARO_API void QVMOR_INITIALISE_S2(const int32_t* time_code_switch,
                                    const double* flag_depth_threshold, const int32_t* unused3,
                                    const int32_t* unused4, const int32_t* num_data,
                                    const int32_t* num_cells) NIVARO_NOEXCEPT;

/* Reserves the fields of domain 1 to 100 in the host's work arrays: twelve stretches of n * m reals
 * and one of n * m integers, or of one element each where morphology is not active. The positions
 * are counted from 1, in and out: first free position, then the first behind the reservation. */
NIVARO_API void QVMOR_SETUP_S2(const nivaro_logical* active, const int32_t* domain,
                               const int32_t* n, const int32_t* m, const int32_t* unused5,
                               const int32_t* unused6, int32_t* next_real_position,
                               int32_t* next_integer_position) NIVARO_NOEXCEPT;

/* Reads the morphology control file (.mcf) for one domain, after setting every option and every
 * cell to its default. The work arrays must extend past the domain's reservation. The call for
 * `last_domain` closes the workspace and must be the last of these calls.
 * Row bounds and offsets belong to cell tables, object bounds to layers; dx and dy are the cell
 * sizes along local x (second index) and local y (first index), `angle` the direction of local x in
 * radians, (x0, y0) the grid's origin. */
NIVARO_API void QVMOR_RDINPF(const char* control_file, const int32_t* domain,
                             const int32_t* last_domain, const int32_t* n, const int32_t* m,
                             const int32_t* first_row_bound, const int32_t* second_row_bound,
                             const int32_t* first_object_bound, const int32_t* second_object_bound,
                             const int32_t* first_row_offset, const int32_t* second_row_offset,
                             const double* dx, const double* dy, const double* angle,
                             const double* x0, const double* y0, double* real_work,
                             int32_t* integer_work, const void* unused19, const void* unused20,
                             const void* unused21,
                             nivaro_length control_file_length) NIVARO_NOEXCEPT;

/* Makes the options of `domain` the current ones. */
NIVARO_API void QVMOR_INIT_2D_DOMAIN(const int32_t* domain) NIVARO_NOEXCEPT;

/* One morphology call for one domain, with the options made current before.
 *   smoothing_flag       confine bed activity codes to the area, lower bed limits to the bed,
 *                        rebuild corner and side depths; nothing else
 *   initialisation_flag  announce the initialisation on the screen; nothing else
 *   skip_flag            nothing at all
 *   none of them         a morphology step: transport, bed change, slumping, rebuild
 * Staggering of the n x m arrays, element (i, j):
 *   wet_flags, flow_flags, water_level, zc   centre of cell (i, j)
 *   v2, z2                                   side between (i, j) and (i, j + 1)
 *   v1, z1                                   side between (i, j) and (i + 1, j)
 *   zpts                                     corner between (i, j) and (i + 1, j + 1)
 * Velocities are positive toward the increasing index. The area (first_i .. last_i by first_j ..
 * last_j) leaves at least one cell of the grid free on each side. `slump_distance2` and
 * `slump_distance1` are the distances between cell centres along the second and the first index.
 * `time_step` is in seconds. With `raise_switch`, the depth at a side is at least `raise_factor`
 * times the larger of the two levels above the side's bed. zc, z1, z2 and zpts are changed. */
NIVARO_API void QVMORPHOLOGY(
    const nivaro_logical* smoothing_flag, const nivaro_logical* initialisation_flag,
    const nivaro_logical* skip_flag, const nivaro_logical* wet_flags,
    const nivaro_logical* flow_flags, const double* water_level, const double* v2, const double* v1,
    double* zpts, double* zc, double* z2, double* z1, const int32_t* n, const int32_t* m,
    const int32_t* first_i, const int32_t* first_j, const int32_t* last_i, const int32_t* last_j,
    const double* cell_size, const double* slump_distance2, const double* slump_distance1,
    const void* unused22, const double* time_step, const nivaro_logical* raise_switch,
    const double* raise_factor, const void* unused26, const void* unused27, const void* unused28,
    const void* unused29, const void* unused30, const void* unused31, const void* unused32,
    double* real_work, int32_t* integer_work, const void* unused35, const void* unused36,
    const void* unused37, const int32_t* domain) NIVARO_NOEXCEPT;

/* ---- Bed change dataset (SMS binary scalar) -------------------------------------------------- */

/* Header of the dataset, once. The name shown is "DELH " and the 35 characters of `name`; no hidden
 * length is read. */
NIVARO_API void QVMOR_WRSMSF_WRITE_HEADER(const char* name) NIVARO_NOEXCEPT;

/* Cell flags of one domain at an output time; domain 1 begins the time record, the last domain pads
 * to the announced number. Cells are walked with i in the outer and j in the inner loop; a cell
 * whose code is `skipped_code` has no flag in the file. Arrays are nx by anything. */
NIVARO_API void QVMOR_WRSMSF_DAT_FLAGS(const int32_t* domain, const int32_t* last_domain,
                                       const double* time, const double* time_offset,
                                       const int32_t* skipped_code, const int32_t* cell_code,
                                       const nivaro_logical* cell_active, const double* depth_term1,
                                       const double* depth_term2, const int32_t* nx,
                                       const void* unused11, const int32_t* first_i,
                                       const int32_t* first_j, const int32_t* last_i,
                                       const int32_t* last_j) NIVARO_NOEXCEPT;

/* Bed change of the latest step at the corners (point_i, point_j) of one domain, after the flags of
 * all domains; the last domain pads and completes the time record. `point_counts` is indexed by
 * domain. With `write_values` false the domain's points are zeros. The range needs one cell of the
 * grid to spare on each side. */
NIVARO_API void QVMOR_WRSMSF_DAT_RESULTS(const int32_t* domain, const int32_t* last_domain,
                                         const int32_t* point_counts, const void* unused4,
                                         const nivaro_logical* write_values, const int32_t* nx,
                                         const void* unused7, const int32_t* first_i,
                                         const int32_t* first_j, const int32_t* last_i,
                                         const int32_t* last_j, const int32_t* point_i,
                                         const int32_t* point_j, const void* unused14,
                                         double* real_work) NIVARO_NOEXCEPT;

/* End card of the dataset. The file stays open until the process ends. */
NIVARO_API void QVMOR_WRSMSF_CLOSE(void) NIVARO_NOEXCEPT;

/* ---- Check layer (MapInfo MIF/MID) ----------------------------------------------------------- */

/* The cells of one domain, each as a square with its indices, code, bed elevation and the six
 * parameters read for it, in `check_layer_prefix`_mor_check.mif and .mid. The call for domain 1
 * creates the files, the one for `last_domain` closes them.
 *   values          false, or a domain without morphology: the parameters are zeros
 *   cell_code       cells of code 0 are left out; nx by anything, as is `depth`
 *   depth           bed depth below datum, the negative of the elevation shown
 *   first_i ...     the range written; index shown = offset + index - 2
 *   x0, y0          corner of field element (3, 3)
 *   step_a, step_b  cell size times cosine and sine of the grid's direction */
NIVARO_API void QVMOR_WRMIFF(const int32_t* domain, const int32_t* last_domain,
                             const nivaro_logical* values, const int32_t* cell_code,
                             const double* depth, const int32_t* nx, const void* unused7,
                             const int32_t* first_i, const int32_t* first_j, const int32_t* last_i,
                             const int32_t* last_j, const int32_t* first_offset,
                             const int32_t* second_offset, const double* x0, const double* y0,
                             const double* step_a, const double* step_b, double* real_work,
                             int32_t* integer_work) NIVARO_NOEXCEPT;

/* ---- Messages -------------------------------------------------------------------------------- */

/* Write the message held in DMESSAGES, with a location or without one, and clear it. `blank_lines`
 * 0 or more: as many empty lines, then the message, on screen and log; -1: log only; less: neither;
 * -99 (DMESSAGEXY): the messages layer only. */
NIVARO_API void DMESSAGEXY(const int32_t* blank_lines, const double* x,
                           const double* y) NIVARO_NOEXCEPT;
NIVARO_API void DMESSAGE(const int32_t* blank_lines) NIVARO_NOEXCEPT;
NIVARO_API void DMESSAGECLEAR(void) NIVARO_NOEXCEPT;
NIVARO_API void DMESSAGERESETCOUNTERS(void) NIVARO_NOEXCEPT;
/* An empty line and a rule of 80 underscores, on the screen and on a unit of 1 or more. */
NIVARO_API void DLINE(const int32_t* unit) NIVARO_NOEXCEPT;

/* ---- Control lines --------------------------------------------------------------------------- */

/* Reads a line of a module unit, without tabs and comments, variables replaced. True when it holds
 * a command. End of file and read errors end the run. */
NIVARO_API nivaro_logical READLINE(const int32_t* unit, char* line,
                                   nivaro_length line_length) NIVARO_NOEXCEPT;
/* True for a comment or blank line; cuts the comment off and replaces variables in any case. */
NIVARO_API nivaro_logical COMMENTLINE(char* line, nivaro_length line_length) NIVARO_NOEXCEPT;
/* Reads one item of the next record; true when there is none. Uses the record up. */
NIVARO_API nivaro_logical EOFLINEREAD(const int32_t* unit, char* buffer,
                                      nivaro_length buffer_length) NIVARO_NOEXCEPT;
/* Splits a line at "==" into command and value. */
NIVARO_API nivaro_logical COMMANDLINE(char* line, char* value, char* command,
                                      nivaro_length line_length, nivaro_length value_length,
                                      nivaro_length command_length) NIVARO_NOEXCEPT;
/* The same at any separator, or at a column; true when the command contains the flag ("*": any). */
NIVARO_API nivaro_logical CHECKLINE(const char* line, const char* flag, const char* separator,
                                    const int32_t* column, char* value, char* command,
                                    nivaro_length line_length, nivaro_length flag_length,
                                    nivaro_length separator_length, nivaro_length value_length,
                                    nivaro_length command_length) NIVARO_NOEXCEPT;
/* Containment in any letter case; the second form also returns the text behind the flag. */
NIVARO_API nivaro_logical FLAGEXISTS(const char* text, const char* flag, nivaro_length text_length,
                                     nivaro_length flag_length) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical FLAGEXISTSRET(const char* text, const char* flag, char* rest,
                                        nivaro_length text_length, nivaro_length flag_length,
                                        nivaro_length rest_length) NIVARO_NOEXCEPT;
/* Same text but for letter case, quotes, tabs and surrounding blanks; CS: letter case counts. */
NIVARO_API nivaro_logical ASAME(const char* a, const char* b, nivaro_length a_length,
                                nivaro_length b_length) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical ASAMECS(const char* a, const char* b, nivaro_length a_length,
                                  nivaro_length b_length) NIVARO_NOEXCEPT;
/* The command contains "Read MI " or "Read GIS " (WRITEGIS: "Write ..."; READROWCOL: "Read MID " or
 * "Read RowCol ") and the keyword; ANY: with any keyword or none. */
NIVARO_API nivaro_logical READGIS(const char* command, const char* keyword,
                                  nivaro_length command_length,
                                  nivaro_length keyword_length) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical WRITEGIS(const char* command, const char* keyword,
                                   nivaro_length command_length,
                                   nivaro_length keyword_length) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical READROWCOL(const char* command, const char* keyword,
                                     nivaro_length command_length,
                                     nivaro_length keyword_length) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical READGISANY(const char* command,
                                     nivaro_length command_length) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical READROWCOLANY(const char* command,
                                        nivaro_length command_length) NIVARO_NOEXCEPT;
/* The line, left-adjusted in place, starts like a number or is blank. */
NIVARO_API nivaro_logical NUMBERLINE(char* line, nivaro_length line_length) NIVARO_NOEXCEPT;
/* The text, left-adjusted in place, is all digits. */
NIVARO_API nivaro_logical POSITIVEINTEGERNUMBER(char* text,
                                                nivaro_length text_length) NIVARO_NOEXCEPT;
NIVARO_API void REMOVEQUOTES(char* result, nivaro_length result_length, const char* text,
                             nivaro_length text_length) NIVARO_NOEXCEPT;
NIVARO_API void REMOVESPACES(char* result, nivaro_length result_length, const char* text,
                             nivaro_length text_length) NIVARO_NOEXCEPT;

/* ---- Values from text ------------------------------------------------------------------------ */

/* Item `column` of the comma-separated list behind `key` and "=". `lowered_line` is the line in
 * lower case. A missing item gives the default (a blank text); one that does not
 * convert, and a key without "=", end the run. */
NIVARO_API int32_t EXTRACTINTEGER(const char* line, const char* lowered_line, const char* key,
                                  const int32_t* column, const int32_t* default_value,
                                  nivaro_length line_length, nivaro_length lowered_line_length,
                                  nivaro_length key_length) NIVARO_NOEXCEPT;
NIVARO_API double EXTRACTREAL(const char* line, const char* lowered_line, const char* key,
                              const int32_t* column, const double* default_value,
                              nivaro_length line_length, nivaro_length lowered_line_length,
                              nivaro_length key_length) NIVARO_NOEXCEPT;
NIVARO_API void EXTRACTSTRING(char* result, nivaro_length result_length, const char* line,
                              const char* lowered_line, const char* key, const int32_t* column,
                              nivaro_length line_length, nivaro_length lowered_line_length,
                              nivaro_length key_length) NIVARO_NOEXCEPT;
/* All items behind the key. */
NIVARO_API void EXTRACTSTRINGREM(char* result, nivaro_length result_length, const char* line,
                                 const char* lowered_line, const char* key, const int32_t* column,
                                 nivaro_length line_length, nivaro_length lowered_line_length,
                                 nivaro_length key_length) NIVARO_NOEXCEPT;
/* Position of a named field in a header line; the column is left alone when it is not there. */
NIVARO_API nivaro_logical CSVCOLUMN(const char* header, const char* name, int32_t* column,
                                    nivaro_length header_length,
                                    nivaro_length name_length) NIVARO_NOEXCEPT;
/* Real value of a field: 0 when read, -1 when the field is blank or missing, above 0 when it is no
 * number; the value is left alone then. */
NIVARO_API int32_t CSVVALUE(const char* line, const int32_t* column, double* value,
                            nivaro_length line_length) NIVARO_NOEXCEPT;
NIVARO_API int32_t NUMBEROFSUBSTRINGS(char* text, const char* separator, nivaro_length text_length,
                                      nivaro_length separator_length) NIVARO_NOEXCEPT;
NIVARO_API void SUBSTRING(char* result, nivaro_length result_length, const char* text,
                          const char* separator, const int32_t* index, nivaro_length text_length,
                          nivaro_length separator_length) NIVARO_NOEXCEPT;
/* Numbers in a line; negative when a stray character ends the count. */
NIVARO_API int32_t NUMBEROFNUMBERS(const char* line, nivaro_length line_length) NIVARO_NOEXCEPT;
/* Day number of YYYYMMDD in 365-day years, 1 on 1 January 2000; -1 on a bad date. */
NIVARO_API int32_t NUMBEROFDAYS(const char* date, nivaro_length date_length) NIVARO_NOEXCEPT;
/* The text reads as a number, which is returned in the second argument. */
NIVARO_API nivaro_logical CHECKREAL(const char* text, double* value,
                                    nivaro_length text_length) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical CHECKINT4(const char* text, int32_t* value,
                                    nivaro_length text_length) NIVARO_NOEXCEPT;

/* ---- Numbers to text: 20 characters, left-aligned -------------------------------------------- */

NIVARO_API void AINTEGER(char* result, nivaro_length result_length,
                         const int32_t* value) NIVARO_NOEXCEPT;
NIVARO_API void AINTEGER8(char* result, nivaro_length result_length,
                          const int64_t* value) NIVARO_NOEXCEPT;
/* PREC0: padded with zeros to `digits` digits (AREALDPREC0: `width` columns) when not negative. */
NIVARO_API void AINTEGERPREC0(char* result, nivaro_length result_length, const int32_t* value,
                              const int32_t* digits) NIVARO_NOEXCEPT;
NIVARO_API void AINTEGER8PREC0(char* result, nivaro_length result_length, const int64_t* value,
                               const int32_t* digits) NIVARO_NOEXCEPT;
/* As many decimals as the magnitude calls for, without trailing zeros; AREAL8 with more. */
NIVARO_API void AREAL(char* result, nivaro_length result_length,
                      const double* value) NIVARO_NOEXCEPT;
NIVARO_API void AREAL8(char* result, nivaro_length result_length,
                       const double* value) NIVARO_NOEXCEPT;
/* A given number of decimals; AREALD4 takes a 4-byte real. */
NIVARO_API void AREALD(char* result, nivaro_length result_length, const double* value,
                       const int32_t* decimals) NIVARO_NOEXCEPT;
NIVARO_API void AREALD4(char* result, nivaro_length result_length, const float* value,
                        const int32_t* decimals) NIVARO_NOEXCEPT;
NIVARO_API void AREALD8(char* result, nivaro_length result_length, const double* value,
                        const int32_t* decimals) NIVARO_NOEXCEPT;
NIVARO_API void AREALDPREC0(char* result, nivaro_length result_length, const double* value,
                            const int32_t* decimals, const int32_t* width) NIVARO_NOEXCEPT;

/* ---- Text transformations -------------------------------------------------------------------- */

NIVARO_API void TRIMF(char* result, nivaro_length result_length, const char* text,
                      nivaro_length text_length) NIVARO_NOEXCEPT;
NIVARO_API void UPPERCASE(char* result, nivaro_length result_length, const char* text,
                          nivaro_length text_length) NIVARO_NOEXCEPT;
NIVARO_API void LOWERCASE(char* result, nivaro_length result_length, const char* text,
                          nivaro_length text_length) NIVARO_NOEXCEPT;
NIVARO_API void DOUBLEQUOTE(char* result, nivaro_length result_length, const char* text,
                            nivaro_length text_length) NIVARO_NOEXCEPT;
/* Blanks become underscores; a blank text becomes "Blank". */
NIVARO_API void SPACETOUNDERSCORE(char* result, nivaro_length result_length, const char* text,
                                  nivaro_length text_length) NIVARO_NOEXCEPT;
/* Anything but letters and digits replaced, or dropped when the replacement has code 0. */
NIVARO_API void ALPHANUMERICONLY(char* result, nivaro_length result_length, const char* text,
                                 const char* replacement, nivaro_length text_length,
                                 nivaro_length replacement_length) NIVARO_NOEXCEPT;
NIVARO_API void CLEANATTRIBUTENAME(char* result, nivaro_length result_length, const char* text,
                                   nivaro_length text_length) NIVARO_NOEXCEPT;
/* Removes tabs in place; true when the text is then blank. */
NIVARO_API nivaro_logical BLANK(char* text, nivaro_length text_length) NIVARO_NOEXCEPT;
NIVARO_API void SS256(char* result, nivaro_length result_length, const char* text,
                      nivaro_length text_length) NIVARO_NOEXCEPT;
/* Length without trailing blanks and codes of 0; puts a code of 0 behind it where there is room. */
NIVARO_API int32_t LENSL(char* text, nivaro_length text_length) NIVARO_NOEXCEPT;
/* First, or every, occurrence of `old_text` in any letter case replaced. */
NIVARO_API void REPLACE(char* result, nivaro_length result_length, const char* text,
                        const char* old_text, const char* new_text, nivaro_length text_length,
                        nivaro_length old_length, nivaro_length new_length) NIVARO_NOEXCEPT;
NIVARO_API void REPLACEALL(char* result, nivaro_length result_length, const char* text,
                           const char* old_text, const char* new_text, nivaro_length text_length,
                           nivaro_length old_length, nivaro_length new_length) NIVARO_NOEXCEPT;

/* ---- Geometry ---------------------------------------------------------------------------------
 * Points and lines in the plane; lengths below 1e-6 are zero. A name ending in _8 gives the same as
 * its partner. */

/* Distance of two points; 0 when they are closer than 1e-6 along both axes. */
NIVARO_API double DISTANCE(const double* x1, const double* y1, const double* x2,
                           const double* y2) NIVARO_NOEXCEPT;
NIVARO_API double DISTANCE_8(const double* x1, const double* y1, const double* x2,
                             const double* y2) NIVARO_NOEXCEPT;
/* Length of a vector; 0 when neither component exceeds 1e-6. */
NIVARO_API double VECTOR_MAGNITUDE(const double* u, const double* v) NIVARO_NOEXCEPT;
/* Width of the water surface in a circular section filled to a depth; 0 when it is empty or full. */
NIVARO_API double CIRCLE_WIDTH(const double* radius, const double* depth) NIVARO_NOEXCEPT;
/* The points are closer than the tolerance along both axes. */
NIVARO_API nivaro_logical SAME_POINT(const double* x1, const double* y1, const double* x2,
                                     const double* y2, const double* tolerance) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical SAME_POINT_8(const double* x1, const double* y1, const double* x2,
                                       const double* y2, const double* tolerance) NIVARO_NOEXCEPT;
/* Positive when points 3 and 4 lie on the same side of the line through 1 and 2, negative when on
 * opposite sides, 0 when one of them lies on it. */
NIVARO_API double SAME_SIDE(const double* x1, const double* y1, const double* x2, const double* y2,
                            const double* x3, const double* y3, const double* x4,
                            const double* y4) NIVARO_NOEXCEPT;
NIVARO_API double SAME_SIDE_8(const double* x1, const double* y1, const double* x2,
                              const double* y2, const double* x3, const double* y3,
                              const double* x4, const double* y4) NIVARO_NOEXCEPT;
/* -1 for a point 3 left of or on the line from 1 to 2, +1 for one on its right. */
NIVARO_API int32_t POINT_POSITION_8(const double* x1, const double* y1, const double* x2,
                                    const double* y2, const double* x3,
                                    const double* y3) NIVARO_NOEXCEPT;
/* Point 3 lies exactly on the line through 1 and 2. */
NIVARO_API nivaro_logical INTERSECT_POINT(const double* x1, const double* y1, const double* x2,
                                          const double* y2, const double* x3,
                                          const double* y3) NIVARO_NOEXCEPT;
/* Segments A (1 to 2) and B (3 to 4) meet; touching counts, and so do any two on one line. */
NIVARO_API nivaro_logical INTERSECT_LINE(const double* x1, const double* y1, const double* x2,
                                         const double* y2, const double* x3, const double* y3,
                                         const double* x4, const double* y4) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical INTERSECT_LINE_8(const double* x1, const double* y1, const double* x2,
                                           const double* y2, const double* x3, const double* y3,
                                           const double* x4, const double* y4) NIVARO_NOEXCEPT;
/* Where the lines of A and B cross: 3 on both segments, 1 on A only, 2 on B only, 4 on neither,
 * 0 nowhere (parallel), -1 everywhere (one line). A segment's first point does not belong to it. */
NIVARO_API int32_t INTERSECT_LINE_V2(const double* x1, const double* y1, const double* x2,
                                     const double* y2, const double* x3, const double* y3,
                                     const double* x4, const double* y4) NIVARO_NOEXCEPT;
NIVARO_API int32_t INTERSECT_LINE_V2_8(const double* x1, const double* y1, const double* x2,
                                       const double* y2, const double* x3, const double* y3,
                                       const double* x4, const double* y4) NIVARO_NOEXCEPT;
/* The crossing of the lines of A and B; false, and the point left alone, when there is none. */
NIVARO_API nivaro_logical INTERSECTION_POINT(const double* x1, const double* y1, const double* x2,
                                             const double* y2, const double* x3, const double* y3,
                                             const double* x4, const double* y4, double* xi,
                                             double* yi) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical INTERSECTION_POINT_8(const double* x1, const double* y1, const double* x2,
                                               const double* y2, const double* x3, const double* y3,
                                               const double* x4, const double* y4, double* xi,
                                               double* yi) NIVARO_NOEXCEPT;
/* Angle between the lines of A and B in degrees, 0 to 180. */
NIVARO_API double ANGLE2D(const double* x1, const double* y1, const double* x2, const double* y2,
                          const double* x3, const double* y3, const double* x4,
                          const double* y4) NIVARO_NOEXCEPT;
/* Points in the frame of a grid: origin (x0, y0), first axis in direction `angle` (radians). The
 * result arrays are others than those of the points. */
NIVARO_API void GEO_SHIFT(const double* x, const double* y, const int32_t* count, const double* x0,
                          const double* y0, const double* angle, double* shifted_x,
                          double* shifted_y) NIVARO_NOEXCEPT;
/* A point lies inside an odd number of polygons. Their vertices stand one after another, each polygon
 * closed in itself (last vertex like the first) and followed by one slot that is not used;
 * `vertex_count` includes these slots. `polygon_ends` holds the number of each polygon's last vertex,
 * counted from 1, `min_x` the least x. A table that does not fit the vertices ends the run. */
NIVARO_API nivaro_logical INSIDE_POLYGON(const double* px, const double* py, const double* x,
                                         const double* y, const int32_t* vertex_count,
                                         const double* min_x, const int32_t* polygon_ends,
                                         const int32_t* polygon_count) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical INSIDE_POLYGON_8(const double* px, const double* py, const double* x,
                                           const double* y, const int32_t* vertex_count,
                                           const double* min_x, const int32_t* polygon_ends,
                                           const int32_t* polygon_count) NIVARO_NOEXCEPT;
/* Linear interpolation of values z at the three corners of a triangle; false, with the result
 * -99999, when a side is parallel to the line through the point. NO_CHECKS: for points known to lie
 * in a proper triangle. */
NIVARO_API nivaro_logical INTERPOLATE_TRIANGLE(const double* px, const double* py, const double* x,
                                               const double* y, const double* z,
                                               double* result) NIVARO_NOEXCEPT;
NIVARO_API nivaro_logical INTERPOLATE_TRIANGLE_8(const double* px, const double* py,
                                                 const double* x, const double* y, const double* z,
                                                 double* result) NIVARO_NOEXCEPT;
NIVARO_API void INTERPOLATE_TRIANGLE_NO_CHECKS(const double* px, const double* py, const double* x,
                                               const double* y, const double* z,
                                               double* result) NIVARO_NOEXCEPT;
/* The same in an element of 3 or 4 corners, of 4 as the mean over the triangles that contain the
 * point; false outside. */
NIVARO_API nivaro_logical INTERPOLATE_ELEMENT_8(const double* px, const double* py, const double* x,
                                                const double* y, const double* z,
                                                const int32_t* vertex_count, const double* min_x,
                                                double* result) NIVARO_NOEXCEPT;
/* Wet area, width of the water surface and wetted perimeter of a piece of bed from (x1, z1) to
 * (x2, z2) under a level; all 0 with a switch of 0 or less. The second form halves the piece. */
NIVARO_API void HYD_PARAM(const double* x1, const double* z1, const double* x2, const double* z2,
                          const double* level, const int32_t* is_used, double* area, double* width,
                          double* perimeter) NIVARO_NOEXCEPT;
NIVARO_API void HYD_PARAM2(const double* x1, const double* z1, const int32_t* is_first_used,
                           const double* x2, const double* z2, const int32_t* is_second_used,
                           const double* level, double* area1, double* area2, double* width1,
                           double* width2, double* perimeter1, double* perimeter2) NIVARO_NOEXCEPT;
/* The cells that points in local coordinates may touch, and the box around them. Low indices are at
 * least 0, high ones at most the bounds. The first index grows with local y. */
NIVARO_API void SET_SUB_GRID_AREA(const double* x, const double* y, const int32_t* count,
                                  const double* cell_size, const int32_t* first_bound,
                                  const int32_t* second_bound, int32_t* first_low,
                                  int32_t* second_low, int32_t* first_high, int32_t* second_high,
                                  double* min_x, double* min_y, double* max_x,
                                  double* max_y) NIVARO_NOEXCEPT;

/* ---- Paths: "\" or "/" separates, a drive is a letter and ":", "\\" begins a network path ---- */

/* Extension with its dot; FILEEXT in lower case. */
NIVARO_API void FILEEXT(char* result, nivaro_length result_length, const char* path,
                        nivaro_length path_length) NIVARO_NOEXCEPT;
NIVARO_API void FILEEXTKC(char* result, nivaro_length result_length, const char* path,
                          nivaro_length path_length) NIVARO_NOEXCEPT;
/* Part of the base name from its last underscore on, in lower case. */
NIVARO_API void FILE___EXT(char* result, nivaro_length result_length, const char* path,
                           nivaro_length path_length) NIVARO_NOEXCEPT;
/* Name without folder and extension; EXT: with extension; NO_: also without underscore part. */
NIVARO_API void FILENAME(char* result, nivaro_length result_length, const char* path,
                         nivaro_length path_length) NIVARO_NOEXCEPT;
NIVARO_API void FILENAMEEXT(char* result, nivaro_length result_length, const char* path,
                            nivaro_length path_length) NIVARO_NOEXCEPT;
NIVARO_API void FILENAMENO_(char* result, nivaro_length result_length, const char* path,
                            nivaro_length path_length) NIVARO_NOEXCEPT;
/* Path without extension; NO_: also without the name's underscore part. */
NIVARO_API void FILENAMEPATH(char* result, nivaro_length result_length, const char* path,
                             nivaro_length path_length) NIVARO_NOEXCEPT;
NIVARO_API void FILENAMEPATHNO_(char* result, nivaro_length result_length, const char* path,
                                nivaro_length path_length) NIVARO_NOEXCEPT;
/* Folder with its last separator. */
NIVARO_API void FILEFOLDERPATH(char* result, nivaro_length result_length, const char* path,
                               nivaro_length path_length) NIVARO_NOEXCEPT;
/* Slashes turned to backslashes. */
NIVARO_API void DOSPATH(char* result, nivaro_length result_length, const char* path,
                        nivaro_length path_length) NIVARO_NOEXCEPT;
/* Path as shown on the console. */
NIVARO_API void CORRECTSLASH(char* result, nivaro_length result_length, const char* path,
                             nivaro_length path_length) NIVARO_NOEXCEPT;
/* Doubled separators collapsed, in the argument too. */
NIVARO_API void CLEANPATH(char* result, nivaro_length result_length, char* path,
                          nivaro_length path_length) NIVARO_NOEXCEPT;
/* Parent and current folder references resolved. */
NIVARO_API void REMOVEDOTDOT(char* result, nivaro_length result_length, const char* path,
                             nivaro_length path_length) NIVARO_NOEXCEPT;
/* A file name placed in a folder, unless it names a drive or network path itself. */
NIVARO_API void ADDFOLDER(char* result, nivaro_length result_length, const char* folder,
                          const char* file, nivaro_length folder_length,
                          nivaro_length file_length) NIVARO_NOEXCEPT;
/* Another drive letter for a path that has one. */
NIVARO_API void CHANGEDRIVE(char* path, const char* drive, nivaro_length path_length,
                            nivaro_length drive_length) NIVARO_NOEXCEPT;

/* ---- The end of a run ------------------------------------------------------------------------ */

/* Closes all files, waits for Enter (not before start-up), and ends the process: exit code 1, or 0
 * before start-up. Does not return. */
NIVARO_API void EXITS(void) NIVARO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* NIVARO_MORPHOLOGY_H */
