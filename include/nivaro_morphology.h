/** \file
 *  NIVARO Morphology: the C declarations of everything that the library exports. */

/** \mainpage NIVARO Morphology
 *  Sand transport and bed evolution for 2D hydraulic models. These declarations hold for hosts in C
 *  and C++ and, with the conventions below, in any language; nivaro_morphology.f90 has them for
 *  Fortran.
 *
 *  \section conventions Conventions
 *  - **Arguments**: every argument is passed by reference, numbers and logicals too.
 *  - **Texts**: a text is a buffer of fixed length, padded with blanks, without an end mark. Its
 *    length travels as a hidden 8-byte integer by value (`nivaro_length`) behind all ordinary
 *    arguments, one for each text, in the order of the texts. A routine that returns a text takes
 *    the result's buffer and its length as its first two arguments, and cuts the result to that
 *    length or pads it with blanks. A result may lie in an argument's own buffer. A text and its
 *    length are described together.
 *  - **Logicals**: 4-byte integers; true is -1, false is 0, only the lowest bit is tested.
 *  - **Numbers**: reals are 8-byte IEEE values, integers have 4 bytes, unless a comment says
 *    otherwise.
 *  - **Arrays**: indexed from 1, the first index varying fastest: element (i, j) of an n x m field
 *    lies (j - 1) * n + (i - 1) elements behind its first.
 *  - **Brackets** at the start of an argument's description are its extents: [n, m] is an n x m
 *    field, [3] are three elements, [nx, *] nx by as many as are used. A returned text fits whole
 *    into as many characters as its brackets say.
 *  - **Unused**: arguments called `unused` are not read and may be null pointers.
 *  - **Bed**: bed arrays hold bed depth below datum in metres, positive downward: the negative of
 *    the bed elevation. The bed change that the module reports is positive upward.
 *  - **Units**: SI, that is m, s, m/s, kg/m3. Bed transport is in kg/(s m).
 *  - **Threads**: all calls come from one thread. The module keeps one model per process.
 *  - **Errors**: no routine returns an error code. What cannot go on is written, files are closed,
 *    the module waits for Enter and ends the process with exit code 1 (EXITS). A routine does so
 *    only where its note says when. No C++ exception crosses into the host.
 *
 *  \section calling_order Calling order
 *  1. QVMOR_INITIALISE_S1, once, before anything else
 *  2. QVMOR_INITIALISE_S2, once, before any dataset output
 *  3. QVMOR_SETUP_S2 and QVMOR_RDINPF for each 2D domain, the last domain last; after that, if
 *     wanted, QVMOR_WRMIFF once for each domain, domain 1 first
 *  4. QVMOR_INIT_2D_DOMAIN and QVMORPHOLOGY for each morphology computation of a domain, the first
 *     one usually with the smoothing flag
 *  5. QVMOR_WRSMSF_WRITE_HEADER once; at output times QVMOR_WRSMSF_DAT_FLAGS for every domain, then
 *     QVMOR_WRSMSF_DAT_RESULTS for every domain; at the end QVMOR_WRSMSF_CLOSE
 *
 *  docs/host-guide.md goes through it with an example. */
#ifndef NIVARO_MORPHOLOGY_H
#define NIVARO_MORPHOLOGY_H

#include <stdint.h>

/** \cond */
#if defined(_WIN32) && defined(NIVARO_BUILDING)
#define NIVARO_API __declspec(dllexport)
#elif defined(_WIN32)
#define NIVARO_API __declspec(dllimport)
#else
#define NIVARO_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
#define NIVARO_NOEXCEPT noexcept
extern "C" {
#else
#define NIVARO_NOEXCEPT
#endif

/* clang takes a \param of several arguments for a single name. */
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdocumentation"
#endif
/** \endcond */

/** True is -1, false is 0; the lowest bit counts. */
typedef int32_t nivaro_logical;
/** Hidden length of a text, by value. A length of 0 or less is an empty text. */
typedef int64_t nivaro_length;

/** \defgroup record The shared message record
 *  @{ */

/** One static block, all zero at load, with the natural alignment of C. Texts are padded with
 *  blanks; codes of 0 count as blanks. A host fills lines and details and calls DMESSAGEXY or
 *  DMESSAGE; it may set the fields marked [host]. */
typedef struct nivaro_messages {
  int32_t log_unit;              /**< unit of the log; no log output while it is 0 or less */
  char line1[10000];             /**< level word, blank, four-digit number, " - ", text */
  char line2[10000];             /**< second line, optional */
  char line3[10000];             /**< third line, optional */
  char line4[10000];             /**< derived: the details joined by "; " */
  char location_tag[8];          /**< "XY:", "NoXY:" or blank; set by DMESSAGEXY */
  double label_box_width;        /**< [host] width added to the right of a label box, map units */
  double label_height;           /**< [host] height of one line of a label, map units */
  int32_t error_count;           /**< errors so far */
  int32_t warning_count;         /**< warnings so far; information with DMESSAGEXY counts too */
  int32_t check_count;           /**< checks so far */
  int32_t located_error_count;   /**< errors that went through DMESSAGEXY */
  int32_t located_warning_count; /**< warnings and information that went through DMESSAGEXY */
  int32_t located_check_count;   /**< checks that went through DMESSAGEXY */
  int32_t message_number;        /**< number read from line 1, 0 when there is none */
  int32_t message_level; /**< 1 ERROR, 2 WARNING, 3 CHECK, 4 UNSTABLE, 5 INFORMATION, 0 plain */
  char detail1[10000];   /**< optional, typically the offending input line */
  char detail2[10000];   /**< second detail, optional */
  char detail3[10000];   /**< third detail, optional */
  int32_t message_table_unit;   /**< [host] unit of the message table; 0 or less: none */
  double last_x;                /**< x of the last message object; -99999.0 when none */
  double last_y;                /**< y of the last message object; -99999.0 when none */
  nivaro_logical one_line_flag; /**< [host] all lines of the next message on one line */
  int32_t message_layer;        /**< [host] GIS layer of errors, warnings, unstable, information */
  int32_t secondary_message_layer; /**< [host] GIS layer of checks and plain text */
  char reference_link[64];         /**< address of the message's page, or blank */
  double default_x;                /**< [host] x of the point of messages without a location */
  double default_y;                /**< [host] y of the point of messages without a location */
  double unlocated_spacing; /**< [host] step between stacked messages without a location; 0: none */
  int32_t unlocated_count;  /**< messages stacked so far */
  nivaro_logical strict_command_flag; /**< [host] a control line without "==" ends the run */
  nivaro_logical echo_flag;           /**< [host] READLINE shows every line it reads */
  nivaro_logical suppression_flag;    /**< [host] numbered messages are discarded */
} nivaro_messages;

/** The record that library and host share. */
extern NIVARO_API nivaro_messages DMESSAGES;

/** The same record for a host whose compiler cannot import data of a library, as Fortran on Windows.
 *  \return  address of the record, the same at every call */
NIVARO_API nivaro_messages* DMESSAGESADDRESS(void) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup entry Morphology entry points
 *  Start-up, reading of the control file, and the step itself, in calling order.
 *  @{ */

/** Start-up, the first call of all: opens the log (`log_prefix`.mlf), the MapInfo workspace
 *  (`output_prefix`_mor.wor) and the bed change dataset (`output_prefix`_morDH.dat), replacing
 *  files of these names and making missing folders, and keeps the settings of layers. The
 *  environment variable NIVARO_MESSAGE_LAYERS, read here, says in which format messages layers are:
 *  mif (or nothing), shp or both; with the latter two it opens a QGIS project
 *  (`log_prefix`_messages.qgs).
 *  \param[in] simulation_name, simulation_name_length  name that the head of the workspace quotes
 *  \param[in] output_prefix, output_prefix_length  folder and base name of workspace and dataset
 *  \param[in] log_prefix, log_prefix_length  folder and base name of the log
 *  \param[in] save_date_check  compare the date of each layer read with that of its table
 *  \param[in] table_extension, table_extension_length  what a layer's name ends in to name its
 *          table, 4 characters
 *  \param[in] save_date_error  a layer older than its table is an error: the run waits for a new
 *          export
 *  \param[in] check_layer_prefix, check_layer_prefix_length  folder and base name of the check
 *          layer; 1000 characters are kept
 *  \param[in] check_layer_header_source, check_layer_header_source_length  CoordSys line of the
 *          check layer and of the messages layers; blank: plain metres. 1000 characters are kept
 *  \param[in] host_projection, host_projection_length  the host's CoordSys line in upper case
 *          without blanks and quotes, which layers are compared with; blank: no check; 1000
 *          characters are kept
 *  \param[in] projection_error  a layer of another projection ends the run, otherwise it is a
 *          warning
 *  \note Ends the run when a file cannot be opened and nobody answers the question what to do, or
 *          when the workspace cannot be written. */
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

/** Settings of the bed change dataset, kept for the output calls.
 *  \param[in] time_code_switch  0 or less: times are written as given (hours by custom); 1 or more:
 *          as time / 1000 + 100 * offset
 *  \param[in] flag_depth_threshold  above 0: a cell is flagged only where its two depth terms
 *          together exceed it
 *  \param[in] unused3, unused4  not used
 *  \param[in] num_data  values of a time record, summed over all domains: at least as many as are
 *          written, since more of them spoil the file
 *  \param[in] num_cells  flags of a time record, in the same way */
NIVARO_API void QVMOR_INITIALISE_S2(const int32_t* time_code_switch,
                                    const double* flag_depth_threshold, const int32_t* unused3,
                                    const int32_t* unused4, const int32_t* num_data,
                                    const int32_t* num_cells) NIVARO_NOEXCEPT;

/** Reserves the fields of a domain in the host's work arrays: twelve stretches of reals and one of
 *  integers, of n * m elements each, or of one element where morphology is not active. Writes
 *  nothing into the arrays, which need not exist yet.
 *  \param[in] active  the domain computes morphology
 *  \param[in] domain  1 to 100
 *  \param[in] n, m  cells along the first and the second index
 *  \param[in] unused5, unused6  not used
 *  \param[in,out] next_real_position  first free position of the real work array, counted from 1;
 *          then the first behind the reservation
 *  \param[in,out] next_integer_position  the same of the integer work array
 *  \note Ends the run when the domain is not 1 to 100, or the fields do not lie between position 1
 *          and the largest 4-byte integer: all domains together may have 178 million cells. */
NIVARO_API void QVMOR_SETUP_S2(const nivaro_logical* active, const int32_t* domain,
                               const int32_t* n, const int32_t* m, const int32_t* unused5,
                               const int32_t* unused6, int32_t* next_real_position,
                               int32_t* next_integer_position) NIVARO_NOEXCEPT;

/** Reads the morphology control file (.mcf) of a domain, after setting its options and cells to
 *  their defaults. Files that it names are looked for in its folder. Row offsets and bounds belong
 *  to cell tables: index k of a row is element k - offset + 2 of the field, and elements from 2 to
 *  the bound are set. Object bounds belong to layers, whose cell (1, 1) at the grid's origin is
 *  element (3, 3).
 *  \param[in] control_file, control_file_length  path of the control file
 *  \param[in] domain  the domain, reserved before by QVMOR_SETUP_S2
 *  \param[in] last_domain  the host's last domain: the call for it closes the workspace and is the
 *          last of these calls
 *  \param[in] n, m  cells along the first and the second index, as reserved
 *  \param[in] first_row_bound, second_row_bound  highest elements that rows of cell tables may set
 *  \param[in] first_object_bound, second_object_bound  highest cells that points and lines of
 *          layers may set, counted from the origin: n - 2 and m - 2 at most. Regions fill elements
 *          2 to n - 2 and 2 to m - 2 whatever they are
 *  \param[in] first_row_offset, second_row_offset  what is taken off the indices of rows
 *  \param[in] dx  cell size along local x, the second index, m
 *  \param[in] dy  cell size along local y, the first index, m
 *  \param[in] angle  direction of local x, radians counter-clockwise from the map's x
 *  \param[in] x0, y0  origin of the grid on the map, m
 *  \param[in,out] real_work  [*] the whole real work array, from its position 1 on
 *  \param[in,out] integer_work  [*] the whole integer work array, from its position 1 on
 *  \param[in] unused19, unused20, unused21  not used
 *  \note Ends the run when the domain has no fields; a command is not known or its value cannot be
 *          read; a file is missing and nobody names another; a layer or table is wrong; files are
 *          nested more than ten deep; the workspace cannot be written. */
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

/** Makes the options of a domain the current ones, which the next steps take.
 *  \param[in] domain  1 to 100
 *  \note Ends the run when the domain is not 1 to 100. */
NIVARO_API void QVMOR_INIT_2D_DOMAIN(const int32_t* domain) NIVARO_NOEXCEPT;

/** One morphology call for one domain, with the options made current before. The flags are looked
 *  at in their order; the first that is true decides:
 *
 *  - `smoothing_flag`: sets activity codes outside the area to 0, lowers bed limits that stand
 *    above the bed to the bed, rebuilds corner and side depths, and says so on the screen
 *  - `initialisation_flag`: a line on the screen, nothing else
 *  - `skip_flag`: nothing
 *  - none: a step, that is transport, bed change, slumping, rebuild
 *
 *  For a domain without morphology nothing is computed. Velocities are positive toward the
 *  increasing index, levels upward, depths downward from the datum: water depth is level plus bed
 *  depth.
 *  \param[in] smoothing_flag, initialisation_flag, skip_flag  what to do, see above
 *  \param[in] wet_flags  [n, m] logicals, cell centres: the cell is wet
 *  \param[in] flow_flags  [n, m] logicals, cell centres: water flows through a wet cell whose
 *          neighbour is dry
 *  \param[in] water_level  [n, m] cell centres, m above datum
 *  \param[in] v2  [n, m] velocity at the side between (i, j) and (i, j + 1), m/s
 *  \param[in] v1  [n, m] velocity at the side between (i, j) and (i + 1, j), m/s
 *  \param[in,out] zpts  [n, m] bed depth at the corner between (i, j) and (i + 1, j + 1), m below
 *          datum
 *  \param[in,out] zc  [n, m] bed depth at cell centres, m below datum
 *  \param[in,out] z2  [n, m] bed depth at the sides of `v2`, m below datum
 *  \param[in,out] z1  [n, m] bed depth at the sides of `v1`, m below datum
 *  \param[in] n, m  cells along the first and the second index, as reserved
 *  \param[in] first_i, first_j, last_i, last_j  the morphology area; one cell of the grid stays
 *          free on each side
 *  \param[in] cell_size  cell size, m
 *  \param[in] slump_distance2, slump_distance1  distance of cell centres along the second and the
 *          first index, m
 *  \param[in] unused22  not used
 *  \param[in] time_step  length of the step, s
 *  \param[in] raise_switch  the depth at a side between wet cells is at least `raise_factor` times
 *          the depth that the higher of their levels gives there
 *  \param[in] raise_factor  see `raise_switch`
 *  \param[in] unused26, unused27, unused28, unused29, unused30, unused31, unused32  not used
 *  \param[in,out] real_work  [*] the whole real work array, from its position 1 on
 *  \param[in,out] integer_work  [*] the whole integer work array, from its position 1 on
 *  \param[in] unused35, unused36, unused37  not used
 *  \param[in] domain  the domain, reserved before by QVMOR_SETUP_S2
 *  \note Ends the run when the domain has no fields. Numbers never end it: bad ones travel through
 *          the fields. */
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

/** @} */

/** \defgroup dataset Bed change dataset
 *  A scalar dataset of mesh viewers (SMS binary), with one flag for each cell and one value for
 *  each mesh point in every time record. Several domains share the file: each call adds the share
 *  of one.
 *  @{ */

/** The dataset's header, once, before the first time record.
 *  \param[in] name  [35] viewers show "DELH " and this text, which is padded with blanks or ends at
 *          a code of 0; it has no hidden length
 *  \note Ends the run when the file cannot be written (disk full). */
NIVARO_API void QVMOR_WRSMSF_WRITE_HEADER(const char* name) NIVARO_NOEXCEPT;

/** Cell flags of one domain at an output time. The call for domain 1 begins the time record, the
 *  one for the last domain pads the flags to their announced number with 0. Cells are walked with i
 *  in the outer and j in the inner loop.
 *  \param[in] domain  the domain, from 1
 *  \param[in] last_domain  the last domain
 *  \param[in] time  output time, written by the rule of QVMOR_INITIALISE_S2
 *  \param[in] time_offset  used by that rule only
 *  \param[in] skipped_code  cells of this code have no flag in the file
 *  \param[in] cell_code  [nx, *] the code of each cell
 *  \param[in] cell_active  [nx, *] logicals, the flag of each cell
 *  \param[in] depth_term1, depth_term2  [nx, *] compared with the flag depth threshold, m
 *  \param[in] nx  first dimension of the four arrays
 *  \param[in] unused11  not used
 *  \param[in] first_i, first_j, last_i, last_j  the range of cells written
 *  \note Ends the run when the file cannot be written. */
NIVARO_API void QVMOR_WRSMSF_DAT_FLAGS(const int32_t* domain, const int32_t* last_domain,
                                       const double* time, const double* time_offset,
                                       const int32_t* skipped_code, const int32_t* cell_code,
                                       const nivaro_logical* cell_active, const double* depth_term1,
                                       const double* depth_term2, const int32_t* nx,
                                       const void* unused11, const int32_t* first_i,
                                       const int32_t* first_j, const int32_t* last_i,
                                       const int32_t* last_j) NIVARO_NOEXCEPT;

/** Bed change of the latest step at the mesh points of one domain, after the flags of all domains.
 *  The value at corner (i, j) is the mean over the cells (i, j) to (i + 1, j + 1), in m, positive
 *  upward. The call for the last domain pads the values to their announced number with 0 and
 *  completes the record.
 *  \param[in] domain  1 to 100
 *  \param[in] last_domain  the last domain
 *  \param[in] point_counts  [*] number of points of each domain, one element for each, domain 1 first
 *  \param[in] unused4  not used
 *  \param[in] write_values  false, or a domain without morphology: the values are 0
 *  \param[in] nx  first dimension of the domain's fields
 *  \param[in] unused7  not used
 *  \param[in] first_i, first_j, last_i, last_j  the range of cells; one cell of the grid stays free
 *          on each side
 *  \param[in] point_i, point_j  [*] the corners written, as many as the domain has points
 *  \param[in] unused14  not used
 *  \param[in,out] real_work  [*] the whole real work array; the domain's corner field is overwritten
 *  \note Ends the run when the domain is not 1 to 100, has no fields where its values are wanted, or
 *          the file cannot be written. */
NIVARO_API void QVMOR_WRSMSF_DAT_RESULTS(const int32_t* domain, const int32_t* last_domain,
                                         const int32_t* point_counts, const void* unused4,
                                         const nivaro_logical* write_values, const int32_t* nx,
                                         const void* unused7, const int32_t* first_i,
                                         const int32_t* first_j, const int32_t* last_i,
                                         const int32_t* last_j, const int32_t* point_i,
                                         const int32_t* point_j, const void* unused14,
                                         double* real_work) NIVARO_NOEXCEPT;

/** The dataset's end card, once, after the last time record. The file stays open until the process
 *  ends.
 *  \note Ends the run when the file cannot be written. */
NIVARO_API void QVMOR_WRSMSF_CLOSE(void) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup check_layer Check layer
 *  A MapInfo layer of what was read, to be looked at over the model.
 *  @{ */

/** The cells of one domain, each as a square with its indices, code, bed elevation and the six
 *  parameters read for it, in `check_layer_prefix`_mor_check.mif and .mid. Domain 1 comes first:
 *  its call creates the files, and waits for Enter behind a warning where the layer has no CoordSys
 *  line. The one for the last domain closes them.
 *  \param[in] domain  1 to 100
 *  \param[in] last_domain  the last domain
 *  \param[in] write_values  false, or a domain without morphology: the parameters are shown as 0
 *  \param[in] cell_code  [nx, *] cells of code 0 are left out
 *  \param[in] depth  [nx, *] bed depth, m below datum; the elevation shown is its negative
 *  \param[in] nx  first dimension of both arrays
 *  \param[in] unused7  not used
 *  \param[in] first_i, first_j, last_i, last_j  the range of cells written
 *  \param[in] first_offset, second_offset  the index shown is offset + index - 2
 *  \param[in] x0, y0  lower corner of element (3, 3) on the map
 *  \param[in] step_a, step_b  cell size times cosine and sine of the direction of local x, m
 *  \param[in,out] real_work  [*] the whole real work array
 *  \param[in,out] integer_work  [*] the whole integer work array
 *  \note Ends the run when the domain is not 1 to 100 or has no fields where its values are wanted, a
 *          file cannot be created or written, or the bounds in the CoordSys line cannot be read. */
NIVARO_API void QVMOR_WRMIFF(const int32_t* domain, const int32_t* last_domain,
                             const nivaro_logical* write_values, const int32_t* cell_code,
                             const double* depth, const int32_t* nx, const void* unused7,
                             const int32_t* first_i, const int32_t* first_j, const int32_t* last_i,
                             const int32_t* last_j, const int32_t* first_offset,
                             const int32_t* second_offset, const double* x0, const double* y0,
                             const double* step_a, const double* step_b, double* real_work,
                             int32_t* integer_work) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup messages Messages
 *  Messages to screen, log, table and map, by way of the shared record. The first line begins with
 *  the level ("ERROR", "WARNING", "CHECK", "UNSTABLE") and a number, or with "INFORMATION:";
 *  anything else is plain text, which is not counted.
 *  @{ */

/** Writes the message held in DMESSAGES with a place on the map, counts it, and clears the record.
 *  A place within 1 of the default point counts as none.
 *  \param[in] blank_lines  0 or more: as many empty lines, then the message, on screen and log; -1:
 *          log only; -99: messages layer only; anything else: message table and layer only
 *  \param[in] x, y  the place, map coordinates
 *  \note Ends the run when the message is to be placed on a layer that the record does not name or
 *          that cannot be written. */
NIVARO_API void DMESSAGEXY(const int32_t* blank_lines, const double* x,
                           const double* y) NIVARO_NOEXCEPT;

/** Writes the message held in DMESSAGES without a place, counts it, and clears the record.
 *  \param[in] blank_lines  as in DMESSAGEXY; -99 is like anything else below -1 */
NIVARO_API void DMESSAGE(const int32_t* blank_lines) NIVARO_NOEXCEPT;

/** Clears lines, details, tag, link, last place and one-line flag. Number, level and counters stay.
 */
NIVARO_API void DMESSAGECLEAR(void) NIVARO_NOEXCEPT;

/** Sets the six counters of messages to 0. */
NIVARO_API void DMESSAGERESETCOUNTERS(void) NIVARO_NOEXCEPT;

/** An empty line and a rule of 80 underscores on the screen.
 *  \param[in] unit  1 or more: on this unit of the module too */
NIVARO_API void DLINE(const int32_t* unit) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup control_lines Control lines
 *  What reads a control file: lines of a command, "==" and a value, with comments behind "!" or
 *  `#`. Letter case counts nowhere but in ASAMECS. Units are those of the module, 2001 to 3000.
 *  @{ */

/** Reads the next line of a unit, takes out its tabs, leading blanks and comment, and replaces its
 *  variables. Shows the line as it was read where the echo flag of DMESSAGES is set.
 *  \param[in] unit  a unit of the module
 *  \param[out] line, line_length  the line, cut to its length
 *  \return true when the line holds a command, false for a comment or a blank line
 *  \note Ends the run when the line cannot be read (0201) or there is none (0202), and as
 *          COMMENTLINE does. */
NIVARO_API nivaro_logical READLINE(const int32_t* unit, char* line,
                                   nivaro_length line_length) NIVARO_NOEXCEPT;

/** Takes off leading blanks and everything from the first "!" or `#` on, and replaces variables:
 *  `<<name>>` by the value of that name, where any are defined.
 *  \param[in,out] line, line_length  the line
 *  \return true for a comment or a blank line
 *  \note Ends the run when a variable is referred to wrongly (0014) or is not defined (0015). No
 *          routine defines any today. */
NIVARO_API nivaro_logical COMMENTLINE(char* line, nivaro_length line_length) NIVARO_NOEXCEPT;

/** Reads one item of the next record and skips the rest of the record.
 *  \param[in] unit  a unit of the module
 *  \param[in,out] buffer, buffer_length  the item; left alone where there is none
 *  \return true when none could be read: end of file, error, or no such unit */
NIVARO_API nivaro_logical EOFLINEREAD(const int32_t* unit, char* buffer,
                                      nivaro_length buffer_length) NIVARO_NOEXCEPT;

/** Splits a line at its first "==". A line without it becomes upper case and is the command itself:
 *  silently when it holds a block keyword ("ELSE", "END IF", "STOP" ...), else with warning 0060.
 *  \param[in,out] line, line_length  the line
 *  \param[out] value, value_length  what follows "==", leading blanks included; blank without "=="
 *  \param[out] command, command_length  what stands before it, trailing blanks included
 *  \return always true
 *  \note Ends the run when "==" is missing and the strict flag of DMESSAGES is set (0060). */
NIVARO_API nivaro_logical COMMANDLINE(char* line, char* value, char* command,
                                      nivaro_length line_length, nivaro_length value_length,
                                      nivaro_length command_length) NIVARO_NOEXCEPT;

/** Splits a line at a separator of any kind or, where that is blank or missing, behind a column.
 *  With column 0 a line without its separator is all command.
 *  \param[in] line, line_length  the line
 *  \param[in] flag, flag_length  what the command has to contain; "*": anything
 *  \param[in] separator, separator_length  the separator, or blank
 *  \param[in] column  length of the command where no separator is found
 *  \param[out] value, value_length  what follows
 *  \param[out] command, command_length  what stands before
 *  \return true when the command contains the flag and is not blank; a line that is all command may
 *          be blank */
NIVARO_API nivaro_logical CHECKLINE(const char* line, const char* flag, const char* separator,
                                    const int32_t* column, char* value, char* command,
                                    nivaro_length line_length, nivaro_length flag_length,
                                    nivaro_length separator_length, nivaro_length value_length,
                                    nivaro_length command_length) NIVARO_NOEXCEPT;

/** Whether a text contains a flag. Trailing blanks of both do not count, leading ones of the flag
 *  do.
 *  \param[in] text, text_length  the text
 *  \param[in] flag, flag_length  the flag
 *  \return true when it does */
NIVARO_API nivaro_logical FLAGEXISTS(const char* text, const char* flag, nivaro_length text_length,
                                     nivaro_length flag_length) NIVARO_NOEXCEPT;

/** As FLAGEXISTS, with what follows the flag.
 *  \param[in] text, text_length  the text
 *  \param[in] flag, flag_length  the flag
 *  \param[out] rest, rest_length  the text behind the first such flag; blank without one
 *  \return true when the text contains the flag */
NIVARO_API nivaro_logical FLAGEXISTSRET(const char* text, const char* flag, char* rest,
                                        nivaro_length text_length, nivaro_length flag_length,
                                        nivaro_length rest_length) NIVARO_NOEXCEPT;

/** Whether two texts are the same but for letter case, quotes, tabs and blanks around.
 *  \param[in] a, a_length  one text
 *  \param[in] b, b_length  the other
 *  \return true when they are */
NIVARO_API nivaro_logical ASAME(const char* a, const char* b, nivaro_length a_length,
                                nivaro_length b_length) NIVARO_NOEXCEPT;

/** As ASAME, but letter case counts.
 *  \param[in] a, a_length  one text
 *  \param[in] b, b_length  the other
 *  \return true when they are the same */
NIVARO_API nivaro_logical ASAMECS(const char* a, const char* b, nivaro_length a_length,
                                  nivaro_length b_length) NIVARO_NOEXCEPT;

/** Whether a command contains "Read MI " or "Read GIS " with the keyword right behind.
 *  \param[in] command, command_length  the command
 *  \param[in] keyword, keyword_length  the keyword
 *  \return true when it does */
NIVARO_API nivaro_logical READGIS(const char* command, const char* keyword,
                                  nivaro_length command_length,
                                  nivaro_length keyword_length) NIVARO_NOEXCEPT;

/** Whether a command contains "Write MI " or "Write GIS " with the keyword right behind.
 *  \param[in] command, command_length  the command
 *  \param[in] keyword, keyword_length  the keyword
 *  \return true when it does */
NIVARO_API nivaro_logical WRITEGIS(const char* command, const char* keyword,
                                   nivaro_length command_length,
                                   nivaro_length keyword_length) NIVARO_NOEXCEPT;

/** Whether a command contains "Read MID " or "Read RowCol " with the keyword right behind.
 *  \param[in] command, command_length  the command
 *  \param[in] keyword, keyword_length  the keyword
 *  \return true when it does */
NIVARO_API nivaro_logical READROWCOL(const char* command, const char* keyword,
                                     nivaro_length command_length,
                                     nivaro_length keyword_length) NIVARO_NOEXCEPT;

/** Whether a command contains "Read MI" or "Read GIS". "Read MID" contains the first.
 *  \param[in] command, command_length  the command
 *  \return true when it does */
NIVARO_API nivaro_logical READGISANY(const char* command,
                                     nivaro_length command_length) NIVARO_NOEXCEPT;

/** Whether a command contains "Read MID" or "Read RowCol".
 *  \param[in] command, command_length  the command
 *  \return true when it does */
NIVARO_API nivaro_logical READROWCOLANY(const char* command,
                                        nivaro_length command_length) NIVARO_NOEXCEPT;

/** Takes off the leading blanks of a line and looks whether a number may follow.
 *  \param[in,out] line, line_length  the line
 *  \return true when it starts with a digit, "-" or ".", or is blank */
NIVARO_API nivaro_logical NUMBERLINE(char* line, nivaro_length line_length) NIVARO_NOEXCEPT;

/** Takes off the leading blanks of a text and looks whether it is all digits.
 *  \param[in,out] text, text_length  the text
 *  \return true when it is; false for a blank text */
NIVARO_API nivaro_logical POSITIVEINTEGERNUMBER(char* text,
                                                nivaro_length text_length) NIVARO_NOEXCEPT;

/** The text without single and double quotes.
 *  \param[out] result, result_length  [text_length] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void REMOVEQUOTES(char* result, nivaro_length result_length, const char* text,
                             nivaro_length text_length) NIVARO_NOEXCEPT;

/** The text without any blank.
 *  \param[out] result, result_length  [text_length] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void REMOVESPACES(char* result, nivaro_length result_length, const char* text,
                             nivaro_length text_length) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup values Values from texts
 *  Items of lists such as `key = 1.5, "a, b", 3`. Commas separate, blanks do not; an item in quotes
 *  may hold commas. Only ERROR 0203 (a key without "=" behind it) and 0010 (an item that is no
 *  number) end the run; all other routines return a neutral value.
 *  @{ */

/** An item of the list behind a key and "=". Where the key is not in the line the whole line is the
 *  list, or, for a column below 1, there is no item.
 *  \param[in] line, line_length  the line
 *  \param[in] lowered_line, lowered_line_length  the same line in lower case (LOWERCASE), in which
 *          the key is looked for
 *  \param[in] key, key_length  the key, in any letter case
 *  \param[in] column  the item, from 1; below 1 behind a key: the first
 *  \param[in] default_value  the result where there is no item or a blank one
 *  \return the integer
 *  \note Ends the run when "=" is missing (0203) or the item is no integer (0010). */
NIVARO_API int32_t EXTRACTINTEGER(const char* line, const char* lowered_line, const char* key,
                                  const int32_t* column, const int32_t* default_value,
                                  nivaro_length line_length, nivaro_length lowered_line_length,
                                  nivaro_length key_length) NIVARO_NOEXCEPT;

/** As EXTRACTINTEGER, for a real.
 *  \param[in] line, line_length  the line
 *  \param[in] lowered_line, lowered_line_length  the same line in lower case
 *  \param[in] key, key_length  the key, in any letter case
 *  \param[in] column  the item, from 1; below 1 behind a key: the first
 *  \param[in] default_value  the result where there is no item or a blank one
 *  \return the real
 *  \note Ends the run when "=" is missing (0203) or the item is no number (0010). */
NIVARO_API double EXTRACTREAL(const char* line, const char* lowered_line, const char* key,
                              const int32_t* column, const double* default_value,
                              nivaro_length line_length, nivaro_length lowered_line_length,
                              nivaro_length key_length) NIVARO_NOEXCEPT;

/** As EXTRACTINTEGER, for a text: without quotes and without blanks around, blank where there is no
 *  item.
 *  \param[out] result, result_length  [line_length] the item
 *  \param[in] line, line_length  the line
 *  \param[in] lowered_line, lowered_line_length  the same line in lower case
 *  \param[in] key, key_length  the key, in any letter case
 *  \param[in] column  the item, from 1; below 1 behind a key: the first
 *  \note Ends the run when "=" is missing (0203). */
NIVARO_API void EXTRACTSTRING(char* result, nivaro_length result_length, const char* line,
                              const char* lowered_line, const char* key, const int32_t* column,
                              nivaro_length line_length, nivaro_length lowered_line_length,
                              nivaro_length key_length) NIVARO_NOEXCEPT;

/** As EXTRACTSTRING, but behind a key the result is all that follows "=", commas included.
 *  \param[out] result, result_length  [line_length] all items
 *  \param[in] line, line_length  the line
 *  \param[in] lowered_line, lowered_line_length  the same line in lower case
 *  \param[in] key, key_length  the key, in any letter case
 *  \param[in] column  the item, where the key is not in the line
 *  \note Ends the run when "=" is missing (0203). */
NIVARO_API void EXTRACTSTRINGREM(char* result, nivaro_length result_length, const char* line,
                                 const char* lowered_line, const char* key, const int32_t* column,
                                 nivaro_length line_length, nivaro_length lowered_line_length,
                                 nivaro_length key_length) NIVARO_NOEXCEPT;

/** Position of a named field in the header line of a table, compared as by ASAME. Every comma
 *  separates.
 *  \param[in] header, header_length  the header line; 100000 characters are looked at
 *  \param[in] name, name_length  the name
 *  \param[in,out] column  the position, from 1; left alone where there is no such field
 *  \return true when there is */
NIVARO_API nivaro_logical CSVCOLUMN(const char* header, const char* name, int32_t* column,
                                    nivaro_length header_length,
                                    nivaro_length name_length) NIVARO_NOEXCEPT;

/** Real value of a field. Every comma separates.
 *  \param[in] line, line_length  the line
 *  \param[in] column  position of the field, from 1
 *  \param[in,out] value  the value; left alone where there is none
 *  \return 0 when it was read, -1 when the field is blank or missing, 1 when it is no number */
NIVARO_API int32_t CSVVALUE(const char* line, const int32_t* column, double* value,
                            nivaro_length line_length) NIVARO_NOEXCEPT;

/** Takes the tabs out of a text and counts its pieces between separators.
 *  \param[in,out] text, text_length  the text
 *  \param[in] separator, separator_length  the separator without its trailing blanks; blank: one
 *          blank
 *  \return number of pieces; 0 for a blank text */
NIVARO_API int32_t NUMBEROFSUBSTRINGS(char* text, const char* separator, nivaro_length text_length,
                                      nivaro_length separator_length) NIVARO_NOEXCEPT;

/** A piece of a text between separators, without blanks around; blank where there are fewer.
 *  \param[out] result, result_length  [text_length] the piece
 *  \param[in] text, text_length  the text
 *  \param[in] separator, separator_length  the separator without its trailing blanks; blank: one
 *          blank
 *  \param[in] index  the piece, from 1 */
NIVARO_API void SUBSTRING(char* result, nivaro_length result_length, const char* text,
                          const char* separator, const int32_t* index, nivaro_length text_length,
                          nivaro_length separator_length) NIVARO_NOEXCEPT;

/** Counts the numbers of a line before its comment, an empty one between two commas included.
 *  \param[in] line, line_length  the line
 *  \return the count; negative when a character that belongs to no number ended it */
NIVARO_API int32_t NUMBEROFNUMBERS(const char* line, nivaro_length line_length) NIVARO_NOEXCEPT;

/** Number of a day in a calendar of 365-day years, 1 on 1 January 2000. 29 February is the 28th.
 *  \param[in] date, date_length  YYYYMMDD
 *  \return the number; -1 when the date cannot be read */
NIVARO_API int32_t NUMBEROFDAYS(const char* date, nivaro_length date_length) NIVARO_NOEXCEPT;

/** Whether a text reads as a real.
 *  \param[in] text, text_length  the text
 *  \param[in,out] value  the real, where there is one
 *  \return true when it does; false for a blank text */
NIVARO_API nivaro_logical CHECKREAL(const char* text, double* value,
                                    nivaro_length text_length) NIVARO_NOEXCEPT;

/** Whether a text reads as a 4-byte integer.
 *  \param[in] text, text_length  the text
 *  \param[in,out] value  the integer, where there is one
 *  \return true when it does; false for a blank text */
NIVARO_API nivaro_logical CHECKINT4(const char* text, int32_t* value,
                                    nivaro_length text_length) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup numbers Numbers to texts
 *  At most 20 characters, from the left of the result. A number that does not fit is a row of
 *  asterisks.
 *  @{ */

/** The digits of an integer, behind a minus sign where it is negative.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the integer */
NIVARO_API void AINTEGER(char* result, nivaro_length result_length,
                         const int32_t* value) NIVARO_NOEXCEPT;

/** As AINTEGER, of an 8-byte integer.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the integer, 8 bytes */
NIVARO_API void AINTEGER8(char* result, nivaro_length result_length,
                          const int64_t* value) NIVARO_NOEXCEPT;

/** As AINTEGER, with zeros in front of a value of 0 or more: 305 in 4 digits is "0305".
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the integer
 *  \param[in] digits  least number of digits, 20 at most */
NIVARO_API void AINTEGERPREC0(char* result, nivaro_length result_length, const int32_t* value,
                              const int32_t* digits) NIVARO_NOEXCEPT;

/** As AINTEGERPREC0, of an 8-byte integer.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the integer, 8 bytes
 *  \param[in] digits  least number of digits, 20 at most */
NIVARO_API void AINTEGER8PREC0(char* result, nivaro_length result_length, const int64_t* value,
                               const int32_t* digits) NIVARO_NOEXCEPT;

/** A real with six decimals below 0.01, one less for each power of ten, none from 1000 on; trailing
 *  zeros go, the point stays: "0.25", "3.".
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the real */
NIVARO_API void AREAL(char* result, nivaro_length result_length,
                      const double* value) NIVARO_NOEXCEPT;

/** As AREAL, with ten decimals below 1 and none from 1e9 on.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the real */
NIVARO_API void AREAL8(char* result, nivaro_length result_length,
                       const double* value) NIVARO_NOEXCEPT;

/** A real with a given number of decimals; none leaves the point.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the real
 *  \param[in] decimals  number of decimals */
NIVARO_API void AREALD(char* result, nivaro_length result_length, const double* value,
                       const int32_t* decimals) NIVARO_NOEXCEPT;

/** As AREALD, of a 4-byte real.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the real, 4 bytes
 *  \param[in] decimals  number of decimals */
NIVARO_API void AREALD4(char* result, nivaro_length result_length, const float* value,
                        const int32_t* decimals) NIVARO_NOEXCEPT;

/** The same as AREALD.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the real
 *  \param[in] decimals  number of decimals */
NIVARO_API void AREALD8(char* result, nivaro_length result_length, const double* value,
                        const int32_t* decimals) NIVARO_NOEXCEPT;

/** As AREALD, with zeros in front of a value of 0 or more.
 *  \param[out] result, result_length  [20] the text
 *  \param[in] value  the real
 *  \param[in] decimals  number of decimals
 *  \param[in] width  least number of characters, 20 at most */
NIVARO_API void AREALDPREC0(char* result, nivaro_length result_length, const double* value,
                            const int32_t* decimals, const int32_t* width) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup texts Text transformations
 *  Letters are the 26 of the alphabet; other characters have no case.
 *  @{ */

/** The text without its leading blanks.
 *  \param[out] result, result_length  [text_length] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void TRIMF(char* result, nivaro_length result_length, const char* text,
                      nivaro_length text_length) NIVARO_NOEXCEPT;

/** The text in upper case.
 *  \param[out] result, result_length  [text_length] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void UPPERCASE(char* result, nivaro_length result_length, const char* text,
                          nivaro_length text_length) NIVARO_NOEXCEPT;

/** The text in lower case.
 *  \param[out] result, result_length  [text_length] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void LOWERCASE(char* result, nivaro_length result_length, const char* text,
                          nivaro_length text_length) NIVARO_NOEXCEPT;

/** The text with every double quote doubled, for quoted fields.
 *  \param[out] result, result_length  [2 * text_length] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void DOUBLEQUOTE(char* result, nivaro_length result_length, const char* text,
                            nivaro_length text_length) NIVARO_NOEXCEPT;

/** The text with "_" for every blank but the trailing ones; "Blank" for a blank text.
 *  \param[out] result, result_length  [max(5, text_length)] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void SPACETOUNDERSCORE(char* result, nivaro_length result_length, const char* text,
                                  nivaro_length text_length) NIVARO_NOEXCEPT;

/** The text with everything but letters and digits replaced; "X" where nothing is left.
 *  \param[out] result, result_length  [max(1, text_length)] the result
 *  \param[in] text, text_length  the text
 *  \param[in] replacement, replacement_length  one character; the one of code 0, or none: what is
 *          replaced goes */
NIVARO_API void ALPHANUMERICONLY(char* result, nivaro_length result_length, const char* text,
                                 const char* replacement, nivaro_length text_length,
                                 nivaro_length replacement_length) NIVARO_NOEXCEPT;

/** Letters, digits and "_" of the text, as column names want them; "X" where there are none.
 *  \param[out] result, result_length  [max(1, text_length)] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void CLEANATTRIBUTENAME(char* result, nivaro_length result_length, const char* text,
                                   nivaro_length text_length) NIVARO_NOEXCEPT;

/** Takes the tabs out of a text.
 *  \param[in,out] text, text_length  the text
 *  \return true when it is blank then */
NIVARO_API nivaro_logical BLANK(char* text, nivaro_length text_length) NIVARO_NOEXCEPT;

/** The first 256 characters of a text.
 *  \param[out] result, result_length  [256] the result
 *  \param[in] text, text_length  the text */
NIVARO_API void SS256(char* result, nivaro_length result_length, const char* text,
                      nivaro_length text_length) NIVARO_NOEXCEPT;

/** Length of a text without trailing blanks and codes of 0. Puts a code of 0 behind it where there
 *  is room.
 *  \param[in,out] text, text_length  the text
 *  \return the length */
NIVARO_API int32_t LENSL(char* text, nivaro_length text_length) NIVARO_NOEXCEPT;

/** Replaces the first occurrence of a text, in any letter case. Trailing blanks of the old and the
 *  new text do not count; a blank old text changes nothing.
 *  \param[out] result, result_length  [text_length + new_length] the result
 *  \param[in] text, text_length  the text
 *  \param[in] old_text, old_length  what is replaced
 *  \param[in] new_text, new_length  what takes its place */
NIVARO_API void REPLACE(char* result, nivaro_length result_length, const char* text,
                        const char* old_text, const char* new_text, nivaro_length text_length,
                        nivaro_length old_length, nivaro_length new_length) NIVARO_NOEXCEPT;

/** As REPLACE, for every occurrence. The search goes on behind what was put in.
 *  \param[out] result, result_length  [text_length * max(1, new_length)] the result
 *  \param[in] text, text_length  the text
 *  \param[in] old_text, old_length  what is replaced
 *  \param[in] new_text, new_length  what takes its place */
NIVARO_API void REPLACEALL(char* result, nivaro_length result_length, const char* text,
                           const char* old_text, const char* new_text, nivaro_length text_length,
                           nivaro_length old_length, nivaro_length new_length) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup geometry Geometry
 *  Points and lines in the plane, in any unit of length; lengths below 1e-6 are zero. A line is
 *  given by two points and directed from the first to the second. Line A goes from 1 to 2, line B
 *  from 3 to 4. A name that ends in _8 does the same as its partner.
 *  @{ */

/** Distance of two points; 0 when they are closer than 1e-6 along both axes.
 *  \param[in] x1, y1, x2, y2  the points
 *  \return the distance */
NIVARO_API double DISTANCE(const double* x1, const double* y1, const double* x2,
                           const double* y2) NIVARO_NOEXCEPT;

/** \copydoc DISTANCE */
NIVARO_API double DISTANCE_8(const double* x1, const double* y1, const double* x2,
                             const double* y2) NIVARO_NOEXCEPT;

/** Length of a vector; 0 when neither component exceeds 1e-6.
 *  \param[in] u, v  the components
 *  \return the length */
NIVARO_API double VECTOR_MAGNITUDE(const double* u, const double* v) NIVARO_NOEXCEPT;

/** Width of the water surface in a circular section; 0 when it is empty or full within 1e-5.
 *  \param[in] radius  of the section
 *  \param[in] depth  of the water, from the lowest point
 *  \return the width */
NIVARO_API double CIRCLE_WIDTH(const double* radius, const double* depth) NIVARO_NOEXCEPT;

/** Whether two points are closer than a tolerance along both axes.
 *  \param[in] x1, y1, x2, y2  the points
 *  \param[in] tolerance  the tolerance
 *  \return true when they are */
NIVARO_API nivaro_logical SAME_POINT(const double* x1, const double* y1, const double* x2,
                                     const double* y2, const double* tolerance) NIVARO_NOEXCEPT;

/** \copydoc SAME_POINT */
NIVARO_API nivaro_logical SAME_POINT_8(const double* x1, const double* y1, const double* x2,
                                       const double* y2, const double* tolerance) NIVARO_NOEXCEPT;

/** Whether points 3 and 4 lie on the same side of the line through 1 and 2.
 *  \param[in] x1, y1, x2, y2  the line
 *  \param[in] x3, y3, x4, y4  the points
 *  \return positive on the same side, negative on opposite sides, 0 when one of them lies on the
 *          line */
NIVARO_API double SAME_SIDE(const double* x1, const double* y1, const double* x2, const double* y2,
                            const double* x3, const double* y3, const double* x4,
                            const double* y4) NIVARO_NOEXCEPT;

/** \copydoc SAME_SIDE */
NIVARO_API double SAME_SIDE_8(const double* x1, const double* y1, const double* x2,
                              const double* y2, const double* x3, const double* y3,
                              const double* x4, const double* y4) NIVARO_NOEXCEPT;

/** On which side of a directed line a point lies.
 *  \param[in] x1, y1, x2, y2  the line
 *  \param[in] x3, y3  the point
 *  \return -1 left of the line or on it, +1 on its right */
NIVARO_API int32_t POINT_POSITION_8(const double* x1, const double* y1, const double* x2,
                                    const double* y2, const double* x3,
                                    const double* y3) NIVARO_NOEXCEPT;

/** Whether a point lies exactly on a line.
 *  \param[in] x1, y1, x2, y2  the line, which has no ends
 *  \param[in] x3, y3  the point
 *  \return true when it does */
NIVARO_API nivaro_logical INTERSECT_POINT(const double* x1, const double* y1, const double* x2,
                                          const double* y2, const double* x3,
                                          const double* y3) NIVARO_NOEXCEPT;

/** Whether two segments meet. Touching counts, and so do any two on one line.
 *  \param[in] x1, y1, x2, y2  segment A
 *  \param[in] x3, y3, x4, y4  segment B
 *  \return true when they do */
NIVARO_API nivaro_logical INTERSECT_LINE(const double* x1, const double* y1, const double* x2,
                                         const double* y2, const double* x3, const double* y3,
                                         const double* x4, const double* y4) NIVARO_NOEXCEPT;

/** \copydoc INTERSECT_LINE */
NIVARO_API nivaro_logical INTERSECT_LINE_8(const double* x1, const double* y1, const double* x2,
                                           const double* y2, const double* x3, const double* y3,
                                           const double* x4, const double* y4) NIVARO_NOEXCEPT;

/** On which of two segments the crossing of their lines lies. The first point of a segment does not
 *  belong to it, the second does.
 *  \param[in] x1, y1, x2, y2  segment A
 *  \param[in] x3, y3, x4, y4  segment B
 *  \return 3 on both, 1 on A only, 2 on B only, 4 on neither; 0 for parallel lines, -1 for one line
 */
NIVARO_API int32_t INTERSECT_LINE_V2(const double* x1, const double* y1, const double* x2,
                                     const double* y2, const double* x3, const double* y3,
                                     const double* x4, const double* y4) NIVARO_NOEXCEPT;

/** \copydoc INTERSECT_LINE_V2 */
NIVARO_API int32_t INTERSECT_LINE_V2_8(const double* x1, const double* y1, const double* x2,
                                       const double* y2, const double* x3, const double* y3,
                                       const double* x4, const double* y4) NIVARO_NOEXCEPT;

/** The crossing of two lines, which have no ends.
 *  \param[in] x1, y1, x2, y2  line A
 *  \param[in] x3, y3, x4, y4  line B
 *  \param[in,out] xi, yi  the crossing; left alone for parallel lines
 *  \return false for parallel lines */
NIVARO_API nivaro_logical INTERSECTION_POINT(const double* x1, const double* y1, const double* x2,
                                             const double* y2, const double* x3, const double* y3,
                                             const double* x4, const double* y4, double* xi,
                                             double* yi) NIVARO_NOEXCEPT;

/** \copydoc INTERSECTION_POINT */
NIVARO_API nivaro_logical INTERSECTION_POINT_8(const double* x1, const double* y1, const double* x2,
                                               const double* y2, const double* x3, const double* y3,
                                               const double* x4, const double* y4, double* xi,
                                               double* yi) NIVARO_NOEXCEPT;

/** Angle between two directed lines, 0 to 180 degrees.
 *  \param[in] x1, y1, x2, y2  line A
 *  \param[in] x3, y3, x4, y4  line B
 *  \return the angle in degrees; 0 when a line has no length */
NIVARO_API double ANGLE2D(const double* x1, const double* y1, const double* x2, const double* y2,
                          const double* x3, const double* y3, const double* x4,
                          const double* y4) NIVARO_NOEXCEPT;

/** Points in the frame of a grid: with (dx, dy) from the origin to a point, the result is (dx cos +
 *  dy sin, dy cos - dx sin).
 *  \param[in] x, y  [count] the points
 *  \param[in] count  number of points; nothing happens below 1
 *  \param[in] x0, y0  origin of the grid
 *  \param[in] angle  direction of its first axis, radians
 *  \param[out] shifted_x, shifted_y  [count] the points in its frame; not the arrays read */
NIVARO_API void GEO_SHIFT(const double* x, const double* y, const int32_t* count, const double* x0,
                          const double* y0, const double* angle, double* shifted_x,
                          double* shifted_y) NIVARO_NOEXCEPT;

/** Whether a point lies inside an odd number of polygons. Their vertices stand one after another,
 *  each polygon closed in itself (its last vertex is like its first) and followed by one slot that
 *  is not used.
 *  \param[in] px, py  the point
 *  \param[in] x, y  [vertex_count] the vertices
 *  \param[in] vertex_count  number of vertices, unused slots included
 *  \param[in] min_x  least x of the vertices
 *  \param[in] polygon_ends  [polygon_count] number of each polygon's last vertex, counted from 1
 *  \param[in] polygon_count  number of polygons
 *  \return true inside
 *  \note Ends the run when vertices are left behind the last polygon. */
NIVARO_API nivaro_logical INSIDE_POLYGON(const double* px, const double* py, const double* x,
                                         const double* y, const int32_t* vertex_count,
                                         const double* min_x, const int32_t* polygon_ends,
                                         const int32_t* polygon_count) NIVARO_NOEXCEPT;

/** \copydoc INSIDE_POLYGON */
NIVARO_API nivaro_logical INSIDE_POLYGON_8(const double* px, const double* py, const double* x,
                                           const double* y, const int32_t* vertex_count,
                                           const double* min_x, const int32_t* polygon_ends,
                                           const int32_t* polygon_count) NIVARO_NOEXCEPT;

/** Linear interpolation of values at the corners of a triangle.
 *  \param[in] px, py  the point
 *  \param[in] x, y, z  [3] coordinates and values of the corners
 *  \param[out] result  the value; -99999 where there is none
 *  \return false when the line from the third corner to the point is parallel to the opposite side
 */
NIVARO_API nivaro_logical INTERPOLATE_TRIANGLE(const double* px, const double* py, const double* x,
                                               const double* y, const double* z,
                                               double* result) NIVARO_NOEXCEPT;

/** \copydoc INTERPOLATE_TRIANGLE */
NIVARO_API nivaro_logical INTERPOLATE_TRIANGLE_8(const double* px, const double* py,
                                                 const double* x, const double* y, const double* z,
                                                 double* result) NIVARO_NOEXCEPT;

/** As INTERPOLATE_TRIANGLE, for a point that is known to lie in a proper triangle.
 *  \param[in] px, py  the point
 *  \param[in] x, y, z  [3] coordinates and values of the corners
 *  \param[out] result  the value */
NIVARO_API void INTERPOLATE_TRIANGLE_NO_CHECKS(const double* px, const double* py, const double* x,
                                               const double* y, const double* z,
                                               double* result) NIVARO_NOEXCEPT;

/** Interpolation in an element of 3 or 4 corners; of 4, the mean over the triangles that contain
 *  the point.
 *  \param[in] px, py  the point
 *  \param[in] x, y, z  [vertex_count] coordinates and values of the corners
 *  \param[in] vertex_count  3 or 4; anything else gives false
 *  \param[in] min_x  least x of the corners
 *  \param[in,out] result  the value; outside of 4 corners -99999, outside of 3 left alone
 *  \return true inside */
NIVARO_API nivaro_logical INTERPOLATE_ELEMENT_8(const double* px, const double* py, const double* x,
                                                const double* y, const double* z,
                                                const int32_t* vertex_count, const double* min_x,
                                                double* result) NIVARO_NOEXCEPT;

/** Wet geometry of a straight piece of bed under a water level; dry pieces give 0.
 *  \param[in] x1, z1, x2, z2  the ends of the piece: place along the section and elevation
 *  \param[in] level  elevation of the water
 *  \param[in] is_used  0 or less: all results are 0
 *  \param[out] area  wet area
 *  \param[out] width  width of the water surface
 *  \param[out] perimeter  length of bed under water */
NIVARO_API void HYD_PARAM(const double* x1, const double* z1, const double* x2, const double* z2,
                          const double* level, const int32_t* is_used, double* area, double* width,
                          double* perimeter) NIVARO_NOEXCEPT;

/** As HYD_PARAM, for the two halves of a piece.
 *  \param[in] x1, z1, x2, z2  the ends of the piece
 *  \param[in] is_first_used, is_second_used  switch of each half, as in HYD_PARAM
 *  \param[in] level  elevation of the water
 *  \param[out] area1, area2  wet area of each half
 *  \param[out] width1, width2  width of the water surface
 *  \param[out] perimeter1, perimeter2  length of bed under water */
NIVARO_API void HYD_PARAM2(const double* x1, const double* z1, const int32_t* is_first_used,
                           const double* x2, const double* z2, const int32_t* is_second_used,
                           const double* level, double* area1, double* area2, double* width1,
                           double* width2, double* perimeter1, double* perimeter2) NIVARO_NOEXCEPT;

/** The cells that points may touch, and the box around the points. A cell's index is the whole part
 *  of coordinate / cell size, plus 1; low indices are at least 0, high ones at most the bounds.
 *  \param[in] x, y  [count] points in the grid's own frame
 *  \param[in] count  number of points; below 2: one point
 *  \param[in] cell_size  of both axes
 *  \param[in] first_bound, second_bound  highest index along the first axis (local y) and the
 *          second (local x)
 *  \param[out] first_low, second_low, first_high, second_high  the cells; high below low: none
 *  \param[out] min_x, min_y, max_x, max_y  the box */
NIVARO_API void SET_SUB_GRID_AREA(const double* x, const double* y, const int32_t* count,
                                  const double* cell_size, const int32_t* first_bound,
                                  const int32_t* second_bound, int32_t* first_low,
                                  int32_t* second_low, int32_t* first_high, int32_t* second_high,
                                  double* min_x, double* min_y, double* max_x,
                                  double* max_y) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup paths Paths
 *  Paths taken apart and put together as texts. Backslash and slash separate, a drive is a letter
 *  and a colon, two backslashes at the start name a network share. An extension begins at the last
 *  point of the name, a tail at the last underscore of the name without its extension. A part that
 *  is not there is blank.
 *  @{ */

/** The extension with its point, in lower case.
 *  \param[out] result, result_length  [path_length] the extension
 *  \param[in] path, path_length  the path */
NIVARO_API void FILEEXT(char* result, nivaro_length result_length, const char* path,
                        nivaro_length path_length) NIVARO_NOEXCEPT;

/** As FILEEXT, with its letter case kept.
 *  \param[out] result, result_length  [path_length] the extension
 *  \param[in] path, path_length  the path */
NIVARO_API void FILEEXTKC(char* result, nivaro_length result_length, const char* path,
                          nivaro_length path_length) NIVARO_NOEXCEPT;

/** The tail with its underscore, in lower case: "_h" of "M01_5m_H.dat".
 *  \param[out] result, result_length  [path_length] the tail
 *  \param[in] path, path_length  the path */
NIVARO_API void FILE___EXT(char* result, nivaro_length result_length, const char* path,
                           nivaro_length path_length) NIVARO_NOEXCEPT;

/** The name without folder and extension.
 *  \param[out] result, result_length  [path_length] the name
 *  \param[in] path, path_length  the path */
NIVARO_API void FILENAME(char* result, nivaro_length result_length, const char* path,
                         nivaro_length path_length) NIVARO_NOEXCEPT;

/** The name with its extension.
 *  \param[out] result, result_length  [path_length] the name
 *  \param[in] path, path_length  the path */
NIVARO_API void FILENAMEEXT(char* result, nivaro_length result_length, const char* path,
                            nivaro_length path_length) NIVARO_NOEXCEPT;

/** The name without folder, extension and tail.
 *  \param[out] result, result_length  [path_length] the name
 *  \param[in] path, path_length  the path */
NIVARO_API void FILENAMENO_(char* result, nivaro_length result_length, const char* path,
                            nivaro_length path_length) NIVARO_NOEXCEPT;

/** The path without its extension; a path that is nothing else stays whole.
 *  \param[out] result, result_length  [path_length] the path
 *  \param[in] path, path_length  the path */
NIVARO_API void FILENAMEPATH(char* result, nivaro_length result_length, const char* path,
                             nivaro_length path_length) NIVARO_NOEXCEPT;

/** As FILENAMEPATH, without the tail too.
 *  \param[out] result, result_length  [path_length] the path
 *  \param[in] path, path_length  the path */
NIVARO_API void FILENAMEPATHNO_(char* result, nivaro_length result_length, const char* path,
                                nivaro_length path_length) NIVARO_NOEXCEPT;

/** The folder with its last separator.
 *  \param[out] result, result_length  [path_length] the folder
 *  \param[in] path, path_length  the path */
NIVARO_API void FILEFOLDERPATH(char* result, nivaro_length result_length, const char* path,
                               nivaro_length path_length) NIVARO_NOEXCEPT;

/** The path with backslashes for slashes.
 *  \param[out] result, result_length  [path_length] the path
 *  \param[in] path, path_length  the path */
NIVARO_API void DOSPATH(char* result, nivaro_length result_length, const char* path,
                        nivaro_length path_length) NIVARO_NOEXCEPT;

/** The path without leading blanks, as shown on the console.
 *  \param[out] result, result_length  [path_length] the path
 *  \param[in] path, path_length  the path */
NIVARO_API void CORRECTSLASH(char* result, nivaro_length result_length, const char* path,
                             nivaro_length path_length) NIVARO_NOEXCEPT;

/** The path without leading blanks, each doubled separator made one. A pair at the start stays, and
 *  then all pairs of the same character. 1000 characters are kept.
 *  \param[out] result, result_length  [path_length] the path
 *  \param[in,out] path, path_length  the path; cleaned in place too */
NIVARO_API void CLEANPATH(char* result, nivaro_length result_length, char* path,
                          nivaro_length path_length) NIVARO_NOEXCEPT;

/** The path with backslashes only, without doubled ones behind its start, and with references to
 *  parent and current folder resolved where the text alone allows it. 1000 characters are kept.
 *  \param[out] result, result_length  [path_length] the path
 *  \param[in] path, path_length  the path */
NIVARO_API void REMOVEDOTDOT(char* result, nivaro_length result_length, const char* path,
                             nivaro_length path_length) NIVARO_NOEXCEPT;

/** A file in a folder, tidied as by REMOVEDOTDOT. A file with a drive or on a share is taken as it
 *  is; a blank file gives the folder, or "." where that is blank too.
 *  \param[out] result, result_length  [folder_length + file_length + 1] the path
 *  \param[in] folder, folder_length  the folder, with or without a last separator
 *  \param[in] file, file_length  the file */
NIVARO_API void ADDFOLDER(char* result, nivaro_length result_length, const char* folder,
                          const char* file, nivaro_length folder_length,
                          nivaro_length file_length) NIVARO_NOEXCEPT;

/** Another drive letter for a path that has one.
 *  \param[in,out] path, path_length  the path; unchanged without a drive
 *  \param[in] drive, drive_length  the letter; blank: nothing happens */
NIVARO_API void CHANGEDRIVE(char* path, const char* drive, nivaro_length path_length,
                            nivaro_length drive_length) NIVARO_NOEXCEPT;

/** @} */

/** \defgroup end The end of a run
 *  @{ */

/** Closes layers and files, waits for Enter, and ends the process with exit code 1; before start-up
 *  it does not wait and the code is 0. Where standard input has ended it does not wait either. Does
 *  not return. */
NIVARO_API void EXITS(void) NIVARO_NOEXCEPT;

/** @} */

#ifdef __clang__
#pragma clang diagnostic pop
#endif

#ifdef __cplusplus
}
#endif

#endif /* NIVARO_MORPHOLOGY_H */
