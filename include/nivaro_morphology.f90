! NIVARO Morphology for hosts in Fortran: everything that the library exports, under its own names.
!
!   use nivaro_morphology, only: qvmor_initialise_s1, qvmorphology, ...
!
! Take this file into the host's sources and link with the library. Texts are ordinary character
! variables of any length, padded with blanks. Yes and no are ordinary logicals. What the library
! accepts and does not use is left out. A routine whose exported form differs from that is there
! twice: as a wrapper with the exported name, and as it is exported, with the prefix "abi_", with
! every argument and the hidden lengths of its texts. "only" keeps short names such as replace and
! distance out of the host.
!
! CONVENTIONS
!   Numbers     Reals have 8 bytes and integers 4 unless a comment says otherwise. Units are SI.
!   Arrays      Indexed from 1, contiguous, first index fastest. Grid arrays are n by m. Logical
!               arrays are `logical(nivaro_logical)`, the default logical of most compilers.
!   Bed         Depth below datum in m, positive downward: minus the bed's elevation. Bed changes
!               that the module reports are positive upward.
!   Velocities  m/s, positive toward the increasing index.
!   Threads     All calls come from one thread. A process holds one model.
!   The end     No routine returns an error code. What is wrong is written to screen and log, files
!               are closed, the module waits for Enter and ends the process with exit code 1.
!
! CALLING ORDER
!   1. qvmor_initialise_s1                      once, before anything else
!   2. qvmor_initialise_s2                      once, before the dataset's header
!   3. qvmor_setup_s2, qvmor_rdinpf             for each 2D domain, the last one last
!      qvmor_wrmiff                             after that, if wanted: once for each domain
!   4. qvmor_init_2d_domain, qvmorphology       for each computation of a domain; the first one
!                                               usually with the smoothing flag
!   5. qvmor_wrsmsf_write_header                once
!      qvmor_wrsmsf_dat_flags for each domain, then qvmor_wrsmsf_dat_results for each domain
!                                               at every output time
!      qvmor_wrsmsf_close                       once, at the end
!   examples/minimal/minimal_host.f90 is a host that does all of it.
module nivaro_morphology
  use, intrinsic :: iso_c_binding, only: c_char, c_double, c_f_pointer, c_float, c_int32_t, &
      c_int64_t, c_loc, c_null_ptr, c_ptr
  implicit none
  public

  ! Kind of the logical arrays: 4 bytes, of which the lowest bit counts.
  integer, parameter :: nivaro_logical = 4

  private :: as_word, is_true

  ! The message record that host and module share, all zero at load. A host fills lines and details
  ! with set_message_text and calls dmessagexy or dmessage; it may set the fields marked [host].
  ! Texts are arrays of characters; codes of 0 in them count as blanks.
  type, bind(C) :: nivaro_messages
    integer(c_int32_t) :: log_unit ! unit of the log; no log output while it is 0 or less
    character(kind=c_char) :: line1(10000) ! level word, blank, four-digit number, " - ", text
    character(kind=c_char) :: line2(10000) ! optional
    character(kind=c_char) :: line3(10000) ! optional
    character(kind=c_char) :: line4(10000) ! derived: the details joined by "; "
    character(kind=c_char) :: location_tag(8) ! "XY:", "NoXY:" or blank; set by DMESSAGEXY
    real(c_double) :: label_box_width ! [host] width added to the right of a label box, map units
    real(c_double) :: label_height ! [host] height of one line of a label, map units
    integer(c_int32_t) :: error_count ! messages of each level so far ...
    integer(c_int32_t) :: warning_count
    integer(c_int32_t) :: check_count
    integer(c_int32_t) :: located_error_count ! ... and those that went through DMESSAGEXY
    integer(c_int32_t) :: located_warning_count
    integer(c_int32_t) :: located_check_count
    integer(c_int32_t) :: message_number ! number read from line 1, 0 when there is none
    ! 1 ERROR, 2 WARNING, 3 CHECK, 4 UNSTABLE, 5 INFORMATION, 0 plain
    integer(c_int32_t) :: message_level
    character(kind=c_char) :: detail1(10000) ! optional, typically the offending input line
    character(kind=c_char) :: detail2(10000)
    character(kind=c_char) :: detail3(10000)
    integer(c_int32_t) :: message_table_unit ! [host] unit of the message table; 0 or less: none
    real(c_double) :: last_x ! place of the last message object; -99999.0 when none
    real(c_double) :: last_y
    integer(c_int32_t) :: one_line_flag ! [host] print all lines of the message on one line; 0 is no
    ! [host] GIS layer of errors, warnings, unstable, information
    integer(c_int32_t) :: message_layer
    integer(c_int32_t) :: secondary_message_layer ! [host] GIS layer of checks and plain text
    character(kind=c_char) :: reference_link(64) ! address of the message's page, or blank
    real(c_double) :: default_x ! [host] point of messages without a location
    real(c_double) :: default_y
    ! [host] step between stacked messages without a location; 0: none
    real(c_double) :: unlocated_spacing
    integer(c_int32_t) :: unlocated_count ! messages stacked so far
    ! [host] a control line without "==" stops the run; 0 is no
    integer(c_int32_t) :: strict_command_flag
    integer(c_int32_t) :: echo_flag ! [host] READLINE shows every line it reads; 0 is no
    integer(c_int32_t) :: suppression_flag ! [host] numbered messages are discarded; 0 is no
  end type

  ! The record itself, from find_dmessages or qvmor_initialise_s1 on; nowhere before. A variable bound
  ! to the exported block would be a second, dead block on Windows.
  type(nivaro_messages), pointer, protected :: dmessages => null()

  ! Exported routines that need no wrapper.
  interface
    ! ---- Morphology entry points -----------------------------------------------------------------

    ! Makes the options of one domain the current ones. Before every qvmorphology call where domains
    ! have options of their own. Stops the run: a number outside 1 to 100.
    subroutine qvmor_init_2d_domain(domain) bind(C, name='QVMOR_INIT_2D_DOMAIN')
      import
      integer(c_int32_t), intent(in) :: domain
    end subroutine

    ! ---- Bed change dataset (SMS binary scalar) --------------------------------------------------

    ! End card of the dataset. The file stays open until the process ends.
    subroutine qvmor_wrsmsf_close() bind(C, name='QVMOR_WRSMSF_CLOSE')
      import
    end subroutine

    ! ---- Messages --------------------------------------------------------------------------------

    ! The address of the record that dmessages points to.
    function dmessagesaddress() result(outcome) bind(C, name='DMESSAGESADDRESS')
      import
      type(c_ptr) :: outcome
    end function

    ! Write the message held in DMESSAGES, with a location or without one, and clear it. blank_lines
    ! 0 or more: as many empty lines, then the message, on screen and log; -1: log only; less:
    ! neither; -99 (DMESSAGEXY): the messages layer only.
    subroutine dmessagexy(blank_lines, x, y) bind(C, name='DMESSAGEXY')
      import
      integer(c_int32_t), intent(in) :: blank_lines
      real(c_double), intent(in) :: x, y
    end subroutine

    subroutine dmessage(blank_lines) bind(C, name='DMESSAGE')
      import
      integer(c_int32_t), intent(in) :: blank_lines
    end subroutine

    subroutine dmessageclear() bind(C, name='DMESSAGECLEAR')
      import
    end subroutine

    subroutine dmessageresetcounters() bind(C, name='DMESSAGERESETCOUNTERS')
      import
    end subroutine

    ! An empty line and a rule of 80 underscores, on the screen and on a unit of 1 or more.
    subroutine dline(unit) bind(C, name='DLINE')
      import
      integer(c_int32_t), intent(in) :: unit
    end subroutine

    ! ---- Geometry --------------------------------------------------------------------------------
    ! Points and lines in the plane; lengths below 1e-6 are zero. A name ending in _8 gives the same
    ! as its partner. More of the family stands below.

    ! Distance of two points; 0 when they are closer than 1e-6 along both axes.
    function distance(x1, y1, x2, y2) result(outcome) bind(C, name='DISTANCE')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2
      real(c_double) :: outcome
    end function

    function distance_8(x1, y1, x2, y2) result(outcome) bind(C, name='DISTANCE_8')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2
      real(c_double) :: outcome
    end function

    ! Length of a vector; 0 when neither component exceeds 1e-6.
    function vector_magnitude(u, v) result(outcome) bind(C, name='VECTOR_MAGNITUDE')
      import
      real(c_double), intent(in) :: u, v
      real(c_double) :: outcome
    end function

    ! Width of the water surface in a circular section filled to a depth; 0 when it is empty or
    ! full.
    function circle_width(radius, depth) result(outcome) bind(C, name='CIRCLE_WIDTH')
      import
      real(c_double), intent(in) :: radius, depth
      real(c_double) :: outcome
    end function

    ! Positive when points 3 and 4 lie on the same side of the line through 1 and 2, negative when
    ! on opposite sides, 0 when one of them lies on it.
    function same_side(x1, y1, x2, y2, x3, y3, x4, y4) result(outcome) bind(C, name='SAME_SIDE')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      real(c_double) :: outcome
    end function

    function same_side_8(x1, y1, x2, y2, x3, y3, x4, &
        y4) result(outcome) bind(C, name='SAME_SIDE_8')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      real(c_double) :: outcome
    end function

    ! -1 for a point 3 left of or on the line from 1 to 2, +1 for one on its right.
    function point_position_8(x1, y1, x2, y2, x3, &
        y3) result(outcome) bind(C, name='POINT_POSITION_8')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3
      integer(c_int32_t) :: outcome
    end function

    ! Where the lines of A and B cross: 3 on both segments, 1 on A only, 2 on B only, 4 on neither,
    ! 0 nowhere (parallel), -1 everywhere (one line). A segment's first point does not belong to it.
    function intersect_line_v2(x1, y1, x2, y2, x3, y3, x4, &
        y4) result(outcome) bind(C, name='INTERSECT_LINE_V2')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      integer(c_int32_t) :: outcome
    end function

    function intersect_line_v2_8(x1, y1, x2, y2, x3, y3, x4, &
        y4) result(outcome) bind(C, name='INTERSECT_LINE_V2_8')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      integer(c_int32_t) :: outcome
    end function

    ! Angle between the lines of A and B in degrees, 0 to 180.
    function angle2d(x1, y1, x2, y2, x3, y3, x4, y4) result(outcome) bind(C, name='ANGLE2D')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      real(c_double) :: outcome
    end function

    ! Points in the frame of a grid: origin (x0, y0), first axis in direction angle (radians). The
    ! result arrays are others than those of the points.
    subroutine geo_shift(x, y, count, x0, y0, angle, shifted_x, &
        shifted_y) bind(C, name='GEO_SHIFT')
      import
      integer(c_int32_t), intent(in) :: count
      real(c_double), intent(in) :: x0, y0, angle, x(count), y(count)
      real(c_double), intent(out) :: shifted_x(count), shifted_y(count)
    end subroutine

    subroutine interpolate_triangle_no_checks(px, py, x, y, z, &
        result) bind(C, name='INTERPOLATE_TRIANGLE_NO_CHECKS')
      import
      real(c_double), intent(in) :: px, py, x(3), y(3), z(3)
      real(c_double), intent(out) :: result
    end subroutine

    ! Wet area, width of the water surface and wetted perimeter of a piece of bed from (x1, z1) to
    ! (x2, z2) under a level; all 0 with a switch of 0 or less. The second form halves the piece.
    subroutine hyd_param(x1, z1, x2, z2, level, is_used, area, width, &
        perimeter) bind(C, name='HYD_PARAM')
      import
      integer(c_int32_t), intent(in) :: is_used
      real(c_double), intent(in) :: x1, z1, x2, z2, level
      real(c_double), intent(out) :: area, width, perimeter
    end subroutine

    subroutine hyd_param2(x1, z1, is_first_used, x2, z2, is_second_used, level, area1, area2, &
        width1, width2, perimeter1, perimeter2) bind(C, name='HYD_PARAM2')
      import
      integer(c_int32_t), intent(in) :: is_first_used, is_second_used
      real(c_double), intent(in) :: x1, z1, x2, z2, level
      real(c_double), intent(out) :: area1, area2, width1, width2, perimeter1, perimeter2
    end subroutine

    ! The cells that points in local coordinates may touch, and the box around them. Low indices are
    ! at least 0, high ones at most the bounds. The first index grows with local y.
    subroutine set_sub_grid_area(x, y, count, cell_size, first_bound, second_bound, first_low, &
        second_low, first_high, second_high, min_x, min_y, max_x, &
        max_y) bind(C, name='SET_SUB_GRID_AREA')
      import
      integer(c_int32_t), intent(in) :: count, first_bound, second_bound
      real(c_double), intent(in) :: cell_size, x(count), y(count)
      integer(c_int32_t), intent(out) :: first_low, second_low, first_high, second_high
      real(c_double), intent(out) :: min_x, min_y, max_x, max_y
    end subroutine

    ! ---- The end of a run ------------------------------------------------------------------------

    ! Closes all files, waits for Enter (not before start-up) and ends the process: exit code 1, or
    ! 0 before start-up. Does not return.
    subroutine exits() bind(C, name='EXITS')
      import
    end subroutine
  end interface

  ! Exported routines as they are; each has a wrapper below, which says what it does.
  interface
    subroutine abi_qvmor_initialise_s1(simulation_name, output_prefix, log_prefix, &
        save_date_check, table_extension, save_date_error, check_layer_prefix, &
        check_layer_header_source, host_projection, projection_error, simulation_name_length, &
        output_prefix_length, log_prefix_length, table_extension_length, &
        check_layer_prefix_length, check_layer_header_source_length, &
        host_projection_length) bind(C, name='QVMOR_INITIALISE_S1')
      import
      integer(c_int32_t), intent(in) :: save_date_check, save_date_error, projection_error
      character(kind=c_char), intent(in) :: simulation_name(*), output_prefix(*), log_prefix(*), &
          table_extension(*), check_layer_prefix(*), check_layer_header_source(*), &
          host_projection(*)
      integer(c_int64_t), value :: simulation_name_length, output_prefix_length, &
          log_prefix_length, table_extension_length, check_layer_prefix_length, &
          check_layer_header_source_length, host_projection_length
    end subroutine
    subroutine abi_qvmor_initialise_s2(time_code_switch, flag_depth_threshold, unused3, unused4, &
        num_data, num_cells) bind(C, name='QVMOR_INITIALISE_S2')
      import
      integer(c_int32_t), intent(in) :: time_code_switch, unused3, unused4, num_data, num_cells
      real(c_double), intent(in) :: flag_depth_threshold
    end subroutine
    subroutine abi_qvmor_setup_s2(active, domain, n, m, unused5, unused6, next_real_position, &
        next_integer_position) bind(C, name='QVMOR_SETUP_S2')
      import
      integer(c_int32_t), intent(in) :: active, domain, n, m, unused5, unused6
      integer(c_int32_t), intent(inout) :: next_real_position, next_integer_position
    end subroutine
    subroutine abi_qvmor_rdinpf(control_file, domain, last_domain, n, m, first_row_bound, &
        second_row_bound, first_object_bound, second_object_bound, first_row_offset, &
        second_row_offset, dx, dy, angle, x0, y0, real_work, integer_work, unused19, unused20, &
        unused21, control_file_length) bind(C, name='QVMOR_RDINPF')
      import
      integer(c_int32_t), intent(in) :: domain, last_domain, n, m, first_row_bound, &
          second_row_bound, first_object_bound, second_object_bound, first_row_offset, &
          second_row_offset
      character(kind=c_char), intent(in) :: control_file(*)
      real(c_double), intent(in) :: dx, dy, angle, x0, y0
      real(c_double), intent(inout) :: real_work(*)
      integer(c_int32_t), intent(inout) :: integer_work(*)
      type(c_ptr), value :: unused19, unused20, unused21
      integer(c_int64_t), value :: control_file_length
    end subroutine
    subroutine abi_qvmorphology(smoothing_flag, initialisation_flag, skip_flag, wet_flags, &
        flow_flags, water_level, v2, v1, zpts, zc, z2, z1, n, m, first_i, first_j, last_i, last_j, &
        cell_size, slump_distance2, slump_distance1, unused22, time_step, raise_switch, &
        raise_factor, unused26, unused27, unused28, unused29, unused30, unused31, unused32, &
        real_work, integer_work, unused35, unused36, unused37, &
        domain) bind(C, name='QVMORPHOLOGY')
      import
      integer(c_int32_t), intent(in) :: smoothing_flag, initialisation_flag, skip_flag, n, m, &
          first_i, first_j, last_i, last_j, raise_switch, domain
      type(c_ptr), value :: wet_flags, flow_flags, unused22, unused26, unused27, unused28, &
          unused29, unused30, unused31, unused32, unused35, unused36, unused37
      real(c_double), intent(in) :: cell_size, slump_distance2, slump_distance1, time_step, &
          raise_factor, water_level(n, m), v2(n, m), v1(n, m)
      real(c_double), intent(inout) :: zpts(n, m), zc(n, m), z2(n, m), z1(n, m), real_work(*)
      integer(c_int32_t), intent(inout) :: integer_work(*)
    end subroutine
    subroutine abi_qvmor_wrsmsf_write_header(name) bind(C, name='QVMOR_WRSMSF_WRITE_HEADER')
      import
      character(kind=c_char), intent(in) :: name(35)
    end subroutine
    subroutine abi_qvmor_wrsmsf_dat_flags(domain, last_domain, time, time_offset, skipped_code, &
        cell_code, cell_active, depth_term1, depth_term2, nx, unused11, first_i, first_j, last_i, &
        last_j) bind(C, name='QVMOR_WRSMSF_DAT_FLAGS')
      import
      integer(c_int32_t), intent(in) :: domain, last_domain, skipped_code, nx, first_i, first_j, &
          last_i, last_j, cell_code(nx, *)
      real(c_double), intent(in) :: time, time_offset, depth_term1(nx, *), depth_term2(nx, *)
      type(c_ptr), value :: cell_active, unused11
    end subroutine
    subroutine abi_qvmor_wrsmsf_dat_results(domain, last_domain, point_counts, unused4, &
        write_values, nx, unused7, first_i, first_j, last_i, last_j, point_i, point_j, unused14, &
        real_work) bind(C, name='QVMOR_WRSMSF_DAT_RESULTS')
      import
      integer(c_int32_t), intent(in) :: domain, last_domain, write_values, nx, first_i, first_j, &
          last_i, last_j, point_counts(*), point_i(*), point_j(*)
      type(c_ptr), value :: unused4, unused7, unused14
      real(c_double), intent(inout) :: real_work(*)
    end subroutine
    subroutine abi_qvmor_wrmiff(domain, last_domain, values, cell_code, depth, nx, unused7, &
        first_i, first_j, last_i, last_j, first_offset, second_offset, x0, y0, step_a, step_b, &
        real_work, integer_work) bind(C, name='QVMOR_WRMIFF')
      import
      integer(c_int32_t), intent(in) :: domain, last_domain, values, nx, first_i, first_j, last_i, &
          last_j, first_offset, second_offset, cell_code(nx, *)
      real(c_double), intent(in) :: x0, y0, step_a, step_b, depth(nx, *)
      type(c_ptr), value :: unused7
      real(c_double), intent(inout) :: real_work(*)
      integer(c_int32_t), intent(inout) :: integer_work(*)
    end subroutine
    function abi_readline(unit, line, line_length) result(outcome) bind(C, name='READLINE')
      import
      integer(c_int32_t), intent(in) :: unit
      character(kind=c_char), intent(out) :: line(*)
      integer(c_int64_t), value :: line_length
      integer(c_int32_t) :: outcome
    end function
    function abi_commentline(line, line_length) result(outcome) bind(C, name='COMMENTLINE')
      import
      character(kind=c_char), intent(inout) :: line(*)
      integer(c_int64_t), value :: line_length
      integer(c_int32_t) :: outcome
    end function
    function abi_eoflineread(unit, buffer, &
        buffer_length) result(outcome) bind(C, name='EOFLINEREAD')
      import
      integer(c_int32_t), intent(in) :: unit
      character(kind=c_char), intent(inout) :: buffer(*)
      integer(c_int64_t), value :: buffer_length
      integer(c_int32_t) :: outcome
    end function
    function abi_commandline(line, value, command, line_length, value_length, &
        command_length) result(outcome) bind(C, name='COMMANDLINE')
      import
      character(kind=c_char), intent(inout) :: line(*)
      character(kind=c_char), intent(out) :: value(*), command(*)
      integer(c_int64_t), value :: line_length, value_length, command_length
      integer(c_int32_t) :: outcome
    end function
    function abi_checkline(line, flag, separator, column, value, command, line_length, &
        flag_length, separator_length, value_length, &
        command_length) result(outcome) bind(C, name='CHECKLINE')
      import
      integer(c_int32_t), intent(in) :: column
      character(kind=c_char), intent(in) :: line(*), flag(*), separator(*)
      character(kind=c_char), intent(out) :: value(*), command(*)
      integer(c_int64_t), value :: line_length, flag_length, separator_length, value_length, &
          command_length
      integer(c_int32_t) :: outcome
    end function
    function abi_flagexists(text, flag, text_length, &
        flag_length) result(outcome) bind(C, name='FLAGEXISTS')
      import
      character(kind=c_char), intent(in) :: text(*), flag(*)
      integer(c_int64_t), value :: text_length, flag_length
      integer(c_int32_t) :: outcome
    end function
    function abi_flagexistsret(text, flag, rest, text_length, flag_length, &
        rest_length) result(outcome) bind(C, name='FLAGEXISTSRET')
      import
      character(kind=c_char), intent(in) :: text(*), flag(*)
      character(kind=c_char), intent(out) :: rest(*)
      integer(c_int64_t), value :: text_length, flag_length, rest_length
      integer(c_int32_t) :: outcome
    end function
    function abi_asame(a, b, a_length, b_length) result(outcome) bind(C, name='ASAME')
      import
      character(kind=c_char), intent(in) :: a(*), b(*)
      integer(c_int64_t), value :: a_length, b_length
      integer(c_int32_t) :: outcome
    end function
    function abi_asamecs(a, b, a_length, b_length) result(outcome) bind(C, name='ASAMECS')
      import
      character(kind=c_char), intent(in) :: a(*), b(*)
      integer(c_int64_t), value :: a_length, b_length
      integer(c_int32_t) :: outcome
    end function
    function abi_readgis(command, keyword, command_length, &
        keyword_length) result(outcome) bind(C, name='READGIS')
      import
      character(kind=c_char), intent(in) :: command(*), keyword(*)
      integer(c_int64_t), value :: command_length, keyword_length
      integer(c_int32_t) :: outcome
    end function
    function abi_writegis(command, keyword, command_length, &
        keyword_length) result(outcome) bind(C, name='WRITEGIS')
      import
      character(kind=c_char), intent(in) :: command(*), keyword(*)
      integer(c_int64_t), value :: command_length, keyword_length
      integer(c_int32_t) :: outcome
    end function
    function abi_readrowcol(command, keyword, command_length, &
        keyword_length) result(outcome) bind(C, name='READROWCOL')
      import
      character(kind=c_char), intent(in) :: command(*), keyword(*)
      integer(c_int64_t), value :: command_length, keyword_length
      integer(c_int32_t) :: outcome
    end function
    function abi_readgisany(command, command_length) result(outcome) bind(C, name='READGISANY')
      import
      character(kind=c_char), intent(in) :: command(*)
      integer(c_int64_t), value :: command_length
      integer(c_int32_t) :: outcome
    end function
    function abi_readrowcolany(command, &
        command_length) result(outcome) bind(C, name='READROWCOLANY')
      import
      character(kind=c_char), intent(in) :: command(*)
      integer(c_int64_t), value :: command_length
      integer(c_int32_t) :: outcome
    end function
    function abi_numberline(line, line_length) result(outcome) bind(C, name='NUMBERLINE')
      import
      character(kind=c_char), intent(inout) :: line(*)
      integer(c_int64_t), value :: line_length
      integer(c_int32_t) :: outcome
    end function
    function abi_positiveintegernumber(text, &
        text_length) result(outcome) bind(C, name='POSITIVEINTEGERNUMBER')
      import
      character(kind=c_char), intent(inout) :: text(*)
      integer(c_int64_t), value :: text_length
      integer(c_int32_t) :: outcome
    end function
    subroutine abi_removequotes(result, result_length, text, &
        text_length) bind(C, name='REMOVEQUOTES')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    subroutine abi_removespaces(result, result_length, text, &
        text_length) bind(C, name='REMOVESPACES')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    function abi_extractinteger(line, lowered_line, key, column, default_value, line_length, &
        lowered_line_length, key_length) result(outcome) bind(C, name='EXTRACTINTEGER')
      import
      integer(c_int32_t), intent(in) :: column, default_value
      character(kind=c_char), intent(in) :: line(*), lowered_line(*), key(*)
      integer(c_int64_t), value :: line_length, lowered_line_length, key_length
      integer(c_int32_t) :: outcome
    end function
    function abi_extractreal(line, lowered_line, key, column, default_value, line_length, &
        lowered_line_length, key_length) result(outcome) bind(C, name='EXTRACTREAL')
      import
      integer(c_int32_t), intent(in) :: column
      character(kind=c_char), intent(in) :: line(*), lowered_line(*), key(*)
      real(c_double), intent(in) :: default_value
      integer(c_int64_t), value :: line_length, lowered_line_length, key_length
      real(c_double) :: outcome
    end function
    subroutine abi_extractstring(result, result_length, line, lowered_line, key, column, &
        line_length, lowered_line_length, key_length) bind(C, name='EXTRACTSTRING')
      import
      integer(c_int32_t), intent(in) :: column
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, line_length, lowered_line_length, key_length
      character(kind=c_char), intent(in) :: line(*), lowered_line(*), key(*)
    end subroutine
    subroutine abi_extractstringrem(result, result_length, line, lowered_line, key, column, &
        line_length, lowered_line_length, key_length) bind(C, name='EXTRACTSTRINGREM')
      import
      integer(c_int32_t), intent(in) :: column
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, line_length, lowered_line_length, key_length
      character(kind=c_char), intent(in) :: line(*), lowered_line(*), key(*)
    end subroutine
    function abi_csvcolumn(header, name, column, header_length, &
        name_length) result(outcome) bind(C, name='CSVCOLUMN')
      import
      character(kind=c_char), intent(in) :: header(*), name(*)
      integer(c_int32_t), intent(inout) :: column
      integer(c_int64_t), value :: header_length, name_length
      integer(c_int32_t) :: outcome
    end function
    function abi_csvvalue(line, column, value, &
        line_length) result(outcome) bind(C, name='CSVVALUE')
      import
      integer(c_int32_t), intent(in) :: column
      character(kind=c_char), intent(in) :: line(*)
      real(c_double), intent(inout) :: value
      integer(c_int64_t), value :: line_length
      integer(c_int32_t) :: outcome
    end function
    function abi_numberofsubstrings(text, separator, text_length, &
        separator_length) result(outcome) bind(C, name='NUMBEROFSUBSTRINGS')
      import
      character(kind=c_char), intent(inout) :: text(*)
      character(kind=c_char), intent(in) :: separator(*)
      integer(c_int64_t), value :: text_length, separator_length
      integer(c_int32_t) :: outcome
    end function
    subroutine abi_substring(result, result_length, text, separator, index, text_length, &
        separator_length) bind(C, name='SUBSTRING')
      import
      integer(c_int32_t), intent(in) :: index
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length, separator_length
      character(kind=c_char), intent(in) :: text(*), separator(*)
    end subroutine
    function abi_numberofnumbers(line, &
        line_length) result(outcome) bind(C, name='NUMBEROFNUMBERS')
      import
      character(kind=c_char), intent(in) :: line(*)
      integer(c_int64_t), value :: line_length
      integer(c_int32_t) :: outcome
    end function
    function abi_numberofdays(date, date_length) result(outcome) bind(C, name='NUMBEROFDAYS')
      import
      character(kind=c_char), intent(in) :: date(*)
      integer(c_int64_t), value :: date_length
      integer(c_int32_t) :: outcome
    end function
    function abi_checkreal(text, value, text_length) result(outcome) bind(C, name='CHECKREAL')
      import
      character(kind=c_char), intent(in) :: text(*)
      real(c_double), intent(inout) :: value
      integer(c_int64_t), value :: text_length
      integer(c_int32_t) :: outcome
    end function
    function abi_checkint4(text, value, text_length) result(outcome) bind(C, name='CHECKINT4')
      import
      character(kind=c_char), intent(in) :: text(*)
      integer(c_int32_t), intent(inout) :: value
      integer(c_int64_t), value :: text_length
      integer(c_int32_t) :: outcome
    end function
    subroutine abi_ainteger(result, result_length, value) bind(C, name='AINTEGER')
      import
      integer(c_int32_t), intent(in) :: value
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
    end subroutine
    subroutine abi_ainteger8(result, result_length, value) bind(C, name='AINTEGER8')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      integer(c_int64_t), intent(in) :: value
    end subroutine
    subroutine abi_aintegerprec0(result, result_length, value, &
        digits) bind(C, name='AINTEGERPREC0')
      import
      integer(c_int32_t), intent(in) :: value, digits
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
    end subroutine
    subroutine abi_ainteger8prec0(result, result_length, value, &
        digits) bind(C, name='AINTEGER8PREC0')
      import
      integer(c_int32_t), intent(in) :: digits
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      integer(c_int64_t), intent(in) :: value
    end subroutine
    subroutine abi_areal(result, result_length, value) bind(C, name='AREAL')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      real(c_double), intent(in) :: value
    end subroutine
    subroutine abi_areal8(result, result_length, value) bind(C, name='AREAL8')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      real(c_double), intent(in) :: value
    end subroutine
    subroutine abi_areald(result, result_length, value, decimals) bind(C, name='AREALD')
      import
      integer(c_int32_t), intent(in) :: decimals
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      real(c_double), intent(in) :: value
    end subroutine
    subroutine abi_areald4(result, result_length, value, decimals) bind(C, name='AREALD4')
      import
      integer(c_int32_t), intent(in) :: decimals
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      real(c_float), intent(in) :: value
    end subroutine
    subroutine abi_areald8(result, result_length, value, decimals) bind(C, name='AREALD8')
      import
      integer(c_int32_t), intent(in) :: decimals
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      real(c_double), intent(in) :: value
    end subroutine
    subroutine abi_arealdprec0(result, result_length, value, decimals, &
        width) bind(C, name='AREALDPREC0')
      import
      integer(c_int32_t), intent(in) :: decimals, width
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length
      real(c_double), intent(in) :: value
    end subroutine
    subroutine abi_trimf(result, result_length, text, text_length) bind(C, name='TRIMF')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    subroutine abi_uppercase(result, result_length, text, text_length) bind(C, name='UPPERCASE')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    subroutine abi_lowercase(result, result_length, text, text_length) bind(C, name='LOWERCASE')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    subroutine abi_doublequote(result, result_length, text, &
        text_length) bind(C, name='DOUBLEQUOTE')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    subroutine abi_spacetounderscore(result, result_length, text, &
        text_length) bind(C, name='SPACETOUNDERSCORE')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    subroutine abi_alphanumericonly(result, result_length, text, replacement, text_length, &
        replacement_length) bind(C, name='ALPHANUMERICONLY')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length, replacement_length
      character(kind=c_char), intent(in) :: text(*), replacement(*)
    end subroutine
    subroutine abi_cleanattributename(result, result_length, text, &
        text_length) bind(C, name='CLEANATTRIBUTENAME')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    function abi_blank(text, text_length) result(outcome) bind(C, name='BLANK')
      import
      character(kind=c_char), intent(inout) :: text(*)
      integer(c_int64_t), value :: text_length
      integer(c_int32_t) :: outcome
    end function
    subroutine abi_ss256(result, result_length, text, text_length) bind(C, name='SS256')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length
      character(kind=c_char), intent(in) :: text(*)
    end subroutine
    function abi_lensl(text, text_length) result(outcome) bind(C, name='LENSL')
      import
      character(kind=c_char), intent(inout) :: text(*)
      integer(c_int64_t), value :: text_length
      integer(c_int32_t) :: outcome
    end function
    subroutine abi_replace(result, result_length, text, old_text, new_text, text_length, &
        old_length, new_length) bind(C, name='REPLACE')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length, old_length, new_length
      character(kind=c_char), intent(in) :: text(*), old_text(*), new_text(*)
    end subroutine
    subroutine abi_replaceall(result, result_length, text, old_text, new_text, text_length, &
        old_length, new_length) bind(C, name='REPLACEALL')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, text_length, old_length, new_length
      character(kind=c_char), intent(in) :: text(*), old_text(*), new_text(*)
    end subroutine
    function abi_same_point(x1, y1, x2, y2, tolerance) result(outcome) bind(C, name='SAME_POINT')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, tolerance
      integer(c_int32_t) :: outcome
    end function
    function abi_same_point_8(x1, y1, x2, y2, &
        tolerance) result(outcome) bind(C, name='SAME_POINT_8')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, tolerance
      integer(c_int32_t) :: outcome
    end function
    function abi_intersect_point(x1, y1, x2, y2, x3, &
        y3) result(outcome) bind(C, name='INTERSECT_POINT')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3
      integer(c_int32_t) :: outcome
    end function
    function abi_intersect_line(x1, y1, x2, y2, x3, y3, x4, &
        y4) result(outcome) bind(C, name='INTERSECT_LINE')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      integer(c_int32_t) :: outcome
    end function
    function abi_intersect_line_8(x1, y1, x2, y2, x3, y3, x4, &
        y4) result(outcome) bind(C, name='INTERSECT_LINE_8')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      integer(c_int32_t) :: outcome
    end function
    function abi_intersection_point(x1, y1, x2, y2, x3, y3, x4, y4, xi, &
        yi) result(outcome) bind(C, name='INTERSECTION_POINT')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      real(c_double), intent(inout) :: xi, yi
      integer(c_int32_t) :: outcome
    end function
    function abi_intersection_point_8(x1, y1, x2, y2, x3, y3, x4, y4, xi, &
        yi) result(outcome) bind(C, name='INTERSECTION_POINT_8')
      import
      real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
      real(c_double), intent(inout) :: xi, yi
      integer(c_int32_t) :: outcome
    end function
    function abi_inside_polygon(px, py, x, y, vertex_count, min_x, polygon_ends, &
        polygon_count) result(outcome) bind(C, name='INSIDE_POLYGON')
      import
      integer(c_int32_t), intent(in) :: vertex_count, polygon_count, polygon_ends(polygon_count)
      real(c_double), intent(in) :: px, py, min_x, x(vertex_count), y(vertex_count)
      integer(c_int32_t) :: outcome
    end function
    function abi_inside_polygon_8(px, py, x, y, vertex_count, min_x, polygon_ends, &
        polygon_count) result(outcome) bind(C, name='INSIDE_POLYGON_8')
      import
      integer(c_int32_t), intent(in) :: vertex_count, polygon_count, polygon_ends(polygon_count)
      real(c_double), intent(in) :: px, py, min_x, x(vertex_count), y(vertex_count)
      integer(c_int32_t) :: outcome
    end function
    function abi_interpolate_triangle(px, py, x, y, z, &
        result) result(outcome) bind(C, name='INTERPOLATE_TRIANGLE')
      import
      real(c_double), intent(in) :: px, py, x(3), y(3), z(3)
      real(c_double), intent(out) :: result
      integer(c_int32_t) :: outcome
    end function
    function abi_interpolate_triangle_8(px, py, x, y, z, &
        result) result(outcome) bind(C, name='INTERPOLATE_TRIANGLE_8')
      import
      real(c_double), intent(in) :: px, py, x(3), y(3), z(3)
      real(c_double), intent(out) :: result
      integer(c_int32_t) :: outcome
    end function
    function abi_interpolate_element_8(px, py, x, y, z, vertex_count, min_x, &
        result) result(outcome) bind(C, name='INTERPOLATE_ELEMENT_8')
      import
      integer(c_int32_t), intent(in) :: vertex_count
      real(c_double), intent(in) :: px, py, min_x, x(vertex_count), y(vertex_count), &
          z(vertex_count)
      real(c_double), intent(inout) :: result
      integer(c_int32_t) :: outcome
    end function
    subroutine abi_fileext(result, result_length, path, path_length) bind(C, name='FILEEXT')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_fileextkc(result, result_length, path, path_length) bind(C, name='FILEEXTKC')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_file___ext(result, result_length, path, path_length) bind(C, name='FILE___EXT')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_filename(result, result_length, path, path_length) bind(C, name='FILENAME')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_filenameext(result, result_length, path, &
        path_length) bind(C, name='FILENAMEEXT')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_filenameno_(result, result_length, path, &
        path_length) bind(C, name='FILENAMENO_')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_filenamepath(result, result_length, path, &
        path_length) bind(C, name='FILENAMEPATH')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_filenamepathno_(result, result_length, path, &
        path_length) bind(C, name='FILENAMEPATHNO_')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_filefolderpath(result, result_length, path, &
        path_length) bind(C, name='FILEFOLDERPATH')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_dospath(result, result_length, path, path_length) bind(C, name='DOSPATH')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_correctslash(result, result_length, path, &
        path_length) bind(C, name='CORRECTSLASH')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_cleanpath(result, result_length, path, path_length) bind(C, name='CLEANPATH')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(inout) :: path(*)
    end subroutine
    subroutine abi_removedotdot(result, result_length, path, &
        path_length) bind(C, name='REMOVEDOTDOT')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, path_length
      character(kind=c_char), intent(in) :: path(*)
    end subroutine
    subroutine abi_addfolder(result, result_length, folder, file, folder_length, &
        file_length) bind(C, name='ADDFOLDER')
      import
      character(kind=c_char), intent(out) :: result(*)
      integer(c_int64_t), value :: result_length, folder_length, file_length
      character(kind=c_char), intent(in) :: folder(*), file(*)
    end subroutine
    subroutine abi_changedrive(path, drive, path_length, drive_length) bind(C, name='CHANGEDRIVE')
      import
      character(kind=c_char), intent(inout) :: path(*)
      character(kind=c_char), intent(in) :: drive(*)
      integer(c_int64_t), value :: path_length, drive_length
    end subroutine
  end interface

contains

  ! ---- Morphology entry points, in calling order ----------------------------------------------

  ! Start-up, before any other call of the module. Opens <log_prefix>.mlf (the log),
  ! <output_prefix>_mor.wor (a workspace of the input layers) and <output_prefix>_morDH.dat (the bed
  ! change dataset); their folders are made where they are missing. The environment variable
  ! NIVARO_MESSAGE_LAYERS (mif, shp or both) says in which format messages layers are.
  !   simulation_name            shown in the workspace
  !   save_date_check            compare the date of each input layer with that of its table, which
  !   table_extension            has the layer's name with this extension of 4 characters, '.tab'
  !   save_date_error            ask for a new export of a layer older than its table, not just warn
  !   check_layer_prefix         path and start of the name of the files of qvmor_wrmiff
  !   check_layer_header_source  CoordSys line of that layer; blank: plain metres, after a
  !                              warning that waits for Enter
  !   host_projection            CoordSys line that input layers must have, in upper case, without
  !                              blanks and quotes; blank: anything goes
  !   projection_error           a layer with another one ends the run instead of a warning
  ! Stops the run: a file cannot be opened and nobody answers the question for another one.
  subroutine qvmor_initialise_s1(simulation_name, output_prefix, log_prefix, save_date_check, &
      table_extension, save_date_error, check_layer_prefix, check_layer_header_source, &
      host_projection, projection_error)
    character(*), intent(in) :: simulation_name, output_prefix, log_prefix, table_extension, &
        check_layer_prefix, check_layer_header_source, host_projection
    logical, intent(in) :: save_date_check, save_date_error, projection_error
    call find_dmessages()
    call abi_qvmor_initialise_s1(simulation_name, output_prefix, log_prefix, &
        as_word(save_date_check), table_extension, as_word(save_date_error), check_layer_prefix, &
        check_layer_header_source, host_projection, as_word(projection_error), &
        len(simulation_name, c_int64_t), len(output_prefix, c_int64_t), &
        len(log_prefix, c_int64_t), len(table_extension, c_int64_t), &
        len(check_layer_prefix, c_int64_t), len(check_layer_header_source, c_int64_t), &
        len(host_projection, c_int64_t))
  end subroutine

  ! Settings of the bed change dataset, before its header is written.
  !   time_code_switch      0: times are written as given, by custom in hours; 1: as
  !                         time / 1000 + 100 * time_offset
  !   flag_depth_threshold  m; above 0 a cell is flagged only where its two depth terms add up to
  !                         more than this
  !   num_data, num_cells   values (points) and flags (cells) of a time record, over all domains.
  !                         Announce at least what is written: missing ones are filled with zeros,
  !                         ones too many spoil the file
  subroutine qvmor_initialise_s2(time_code_switch, flag_depth_threshold, num_data, num_cells)
    integer(c_int32_t), intent(in) :: time_code_switch, num_data, num_cells
    real(c_double), intent(in) :: flag_depth_threshold
    call abi_qvmor_initialise_s2(time_code_switch, flag_depth_threshold, 0_c_int32_t, &
        0_c_int32_t, num_data, num_cells)
  end subroutine

  ! Reserves the module's fields of one domain in the host's two work arrays. Nothing is written
  ! into them: call this with both positions at 1 first, and allocate afterwards.
  !   active                 the domain has morphology: 12 n m reals and n m integers; else 12 reals
  !                          and 1 integer
  !   domain                 1 to 100
  !   n, m                   cells along the first and the second index
  !   next_real_position     in: first free position, counted from 1; out: the first one behind the
  !   next_integer_position  reservation
  ! Stops the run: another domain, or positions that are not between 1 and the largest integer.
  subroutine qvmor_setup_s2(active, domain, n, m, next_real_position, next_integer_position)
    logical, intent(in) :: active
    integer(c_int32_t), intent(in) :: domain, n, m
    integer(c_int32_t), intent(inout) :: next_real_position, next_integer_position
    call abi_qvmor_setup_s2(as_word(active), domain, n, m, 0_c_int32_t, 0_c_int32_t, &
        next_real_position, next_integer_position)
  end subroutine

  ! Reads the control file of one domain: sets every option and every cell of the domain's fields to
  ! its default, then does what the commands say. After qvmor_setup_s2 of this domain; the call for
  ! `last_domain` is the last one, since it closes the workspace.
  !   n, m                        the domain's dimensions, as for qvmor_setup_s2
  !   first_, second_row_bound    last elements that the rows of a cell table may set
  !   first_, second_row_offset   index i in such a row means element i - offset + 2
  !   first_, second_object_bound cells along each index that a layer's points and lines may reach,
  !                               counted from element 3 on: n - 2 and m - 2 reach the grid's end
  !   dx, dy                      m, cell sizes along local x (second index), local y (first index)
  !   angle                       radians, direction of local x, counter-clockwise from east
  !   x0, y0                      m, the grid's origin: lower corner of element (3, 3)
  !   real_work, integer_work     the host's work arrays as a whole, from position 1 on
  ! Stops the run: a command that is not known, a value that cannot be read, a layer or table that
  ! is missing or wrong, files nested more than ten deep, a domain without qvmor_setup_s2.
  subroutine qvmor_rdinpf(control_file, domain, last_domain, n, m, first_row_bound, &
      second_row_bound, first_object_bound, second_object_bound, first_row_offset, &
      second_row_offset, dx, dy, angle, x0, y0, real_work, integer_work)
    character(*), intent(in) :: control_file
    integer(c_int32_t), intent(in) :: domain, last_domain, n, m, first_row_bound, &
        second_row_bound, first_object_bound, second_object_bound, first_row_offset, &
        second_row_offset
    real(c_double), intent(in) :: dx, dy, angle, x0, y0
    real(c_double), intent(inout) :: real_work(*)
    integer(c_int32_t), intent(inout) :: integer_work(*)
    call abi_qvmor_rdinpf(control_file, domain, last_domain, n, m, first_row_bound, &
        second_row_bound, first_object_bound, second_object_bound, first_row_offset, &
        second_row_offset, dx, dy, angle, x0, y0, real_work, integer_work, c_null_ptr, &
        c_null_ptr, c_null_ptr, len(control_file, c_int64_t))
  end subroutine

  ! One morphology call for one domain, with its options made current by qvmor_init_2d_domain. The
  ! first flag that is set counts:
  !   smoothing_flag       usually a domain's first call: activity codes outside the area become 0,
  !                        bed limits above the bed are lowered to it, corners and sides are rebuilt
  !   initialisation_flag  announces the initialisation on the screen, nothing else
  !   skip_flag            nothing at all
  !   none                 a step: transport, bed change, slumping, corners and sides
  ! Arrays, n by m, element (i, j):
  !   wet_flags, flow_flags   in      cell is wet; lets sand out where its neighbour is dry
  !   water_level             in      m, elevation, at the cell's centre
  !   v2                      in      m/s, side between (i, j) and (i, j + 1), positive toward j + 1
  !   v1                      in      m/s, side between (i, j) and (i + 1, j), positive toward i + 1
  !   zpts                    in/out  m, depth below datum, corner between (i, j) and (i + 1, j + 1)
  !   zc                      in/out  m, depth below datum, centre of the cell
  !   z2                      in/out  m, depth below datum, side between (i, j) and (i, j + 1)
  !   z1                      in/out  m, depth below datum, side between (i, j) and (i + 1, j)
  !   real_work, integer_work in/out  the host's work arrays as a whole, from position 1 on
  ! The area first_i..last_i by first_j..last_j leaves one cell of the grid free on each side.
  !   cell_size                         m
  !   slump_distance2, slump_distance1  m, between cell centres along the second and the first index
  !   time_step                         s
  !   raise_switch, raise_factor        the depth at a side is at least raise_factor times that of
  !                                     the larger of the two levels
  ! Stops the run only for a domain without qvmor_setup_s2 or a number outside 1 to 100.
  subroutine qvmorphology(smoothing_flag, initialisation_flag, skip_flag, wet_flags, flow_flags, &
      water_level, v2, v1, zpts, zc, z2, z1, n, m, first_i, first_j, last_i, last_j, cell_size, &
      slump_distance2, slump_distance1, time_step, raise_switch, raise_factor, real_work, &
      integer_work, domain)
    logical, intent(in) :: smoothing_flag, initialisation_flag, skip_flag, raise_switch
    integer(c_int32_t), intent(in) :: n, m, first_i, first_j, last_i, last_j, domain
    logical(nivaro_logical), intent(in), target :: wet_flags(n, m), flow_flags(n, m)
    real(c_double), intent(in) :: water_level(n, m), v2(n, m), v1(n, m), cell_size, &
        slump_distance2, slump_distance1, time_step, raise_factor
    real(c_double), intent(inout) :: zpts(n, m), zc(n, m), z2(n, m), z1(n, m), real_work(*)
    integer(c_int32_t), intent(inout) :: integer_work(*)
    call abi_qvmorphology(as_word(smoothing_flag), as_word(initialisation_flag), &
        as_word(skip_flag), c_loc(wet_flags), c_loc(flow_flags), water_level, v2, v1, zpts, zc, &
        z2, z1, n, m, first_i, first_j, last_i, last_j, cell_size, slump_distance2, &
        slump_distance1, c_null_ptr, time_step, as_word(raise_switch), raise_factor, c_null_ptr, &
        c_null_ptr, c_null_ptr, c_null_ptr, c_null_ptr, c_null_ptr, c_null_ptr, real_work, &
        integer_work, c_null_ptr, c_null_ptr, c_null_ptr, domain)
  end subroutine

  ! ---- Bed change dataset ---------------------------------------------------------------------

  ! Header, once, after qvmor_initialise_s2. Viewers show "DELH " and the first 35 characters of the
  ! name. A full disk stops the run here and in the other calls of this group.
  subroutine qvmor_wrsmsf_write_header(name)
    character(*), intent(in) :: name
    character(35) :: shown
    shown = name
    call abi_qvmor_wrsmsf_write_header(shown)
  end subroutine

  ! Flags of one domain's cells at an output time. Call it for domains 1, 2, ..., last_domain, then
  ! qvmor_wrsmsf_dat_results for the same; domain 1 begins the time record.
  !   time, time_offset         see time_code_switch of qvmor_initialise_s2
  !   skipped_code              cells whose code equals this have no flag in the file
  !   cell_code, cell_active    per cell; arrays are nx by anything
  !   depth_term1, depth_term2  m, per cell; their sum is compared with flag_depth_threshold
  !   first_i ... last_j        range written, i in the outer loop and j in the inner one
  subroutine qvmor_wrsmsf_dat_flags(domain, last_domain, time, time_offset, skipped_code, &
      cell_code, cell_active, depth_term1, depth_term2, nx, first_i, first_j, last_i, last_j)
    integer(c_int32_t), intent(in) :: domain, last_domain, skipped_code, nx, first_i, first_j, &
        last_i, last_j
    real(c_double), intent(in) :: time, time_offset, depth_term1(nx, *), depth_term2(nx, *)
    integer(c_int32_t), intent(in) :: cell_code(nx, *)
    logical(nivaro_logical), intent(in), target :: cell_active(nx, *)
    call abi_qvmor_wrsmsf_dat_flags(domain, last_domain, time, time_offset, skipped_code, &
        cell_code, c_loc(cell_active), depth_term1, depth_term2, nx, c_null_ptr, first_i, first_j, &
        last_i, last_j)
  end subroutine

  ! Bed change of the latest step at one domain's points; the call for last_domain completes the
  ! time record and puts it on the disk.
  !   point_counts      number of points of each domain, indexed by domain
  !   write_values      false: zeros for all points of this domain
  !   nx                first dimension of the domain's fields
  !   first_i ...       range of cells averaged to corners; one cell of the grid to spare around it
  !   point_i, point_j  corner of each point: element (i, j) as in zpts
  !   real_work         in/out: the domain's field of corner values is overwritten
  ! Stops the run: a domain outside 1 to 100, a full disk.
  subroutine qvmor_wrsmsf_dat_results(domain, last_domain, point_counts, write_values, nx, &
      first_i, first_j, last_i, last_j, point_i, point_j, real_work)
    integer(c_int32_t), intent(in) :: domain, last_domain, point_counts(*), nx, first_i, first_j, &
        last_i, last_j, point_i(*), point_j(*)
    logical, intent(in) :: write_values
    real(c_double), intent(inout) :: real_work(*)
    call abi_qvmor_wrsmsf_dat_results(domain, last_domain, point_counts, c_null_ptr, &
        as_word(write_values), nx, c_null_ptr, first_i, first_j, last_i, last_j, point_i, &
        point_j, c_null_ptr, real_work)
  end subroutine

  ! ---- Check layer ----------------------------------------------------------------------------

  ! What was read for each cell of one domain, as squares in <check_layer_prefix>_mor_check.mif and
  ! .mid. Once, after the last qvmor_rdinpf, for domains 1, 2, ..., last_domain: the first creates
  ! the files, the last closes them.
  !   write_values                  false: zeros instead of the parameters
  !   cell_code, depth              per cell, nx by anything; cells of code 0 are left out; depth is
  !                                 m below datum, the layer shows the elevation
  !   first_i ... last_j            range written; the index shown is offset + index - 2
  !   x0, y0                        m, lower corner of element (3, 3)
  !   step_a, step_b                m, cell size times cosine and sine of the grid's direction
  ! Stops the run: a domain outside 1 to 100, a file that cannot be created or written, bounds of
  ! the CoordSys line that cannot be read.
  subroutine qvmor_wrmiff(domain, last_domain, write_values, cell_code, depth, nx, first_i, &
      first_j, last_i, last_j, first_offset, second_offset, x0, y0, step_a, step_b, real_work, &
      integer_work)
    integer(c_int32_t), intent(in) :: domain, last_domain, nx, cell_code(nx, *), first_i, first_j, &
        last_i, last_j, first_offset, second_offset
    logical, intent(in) :: write_values
    real(c_double), intent(in) :: depth(nx, *), x0, y0, step_a, step_b
    real(c_double), intent(inout) :: real_work(*)
    integer(c_int32_t), intent(inout) :: integer_work(*)
    call abi_qvmor_wrmiff(domain, last_domain, as_word(write_values), cell_code, depth, nx, &
        c_null_ptr, first_i, first_j, last_i, last_j, first_offset, second_offset, x0, y0, step_a, &
        step_b, real_work, integer_work)
  end subroutine

  ! ---- Messages -------------------------------------------------------------------------------
  ! dmessagexy, dmessage, dmessageclear, dmessageresetcounters and dline stand above.

  ! Lets dmessages point to the record. For hosts that need it before qvmor_initialise_s1, which does
  ! so too.
  subroutine find_dmessages()
    call c_f_pointer(dmessagesaddress(), dmessages)
  end subroutine

  ! Puts a text into a line or detail: call set_message_text(dmessages%line1, 'WARNING 0900 - ...')
  subroutine set_message_text(field, text)
    character(kind=c_char), intent(out) :: field(:)
    character(*), intent(in) :: text
    integer :: k
    field = ' '
    do k = 1, min(size(field), len(text))
      field(k) = text(k:k)
    end do
  end subroutine

  ! The text of a line or detail of the record.
  pure function message_text(field) result(text)
    character(kind=c_char), intent(in) :: field(:)
    character(size(field)) :: text
    integer :: k
    do k = 1, size(field)
      text(k:k) = merge(' ', field(k), iachar(field(k)) == 0)
    end do
  end function

  ! ---- Control lines -----------------------------------------------------------------------------

  ! Reads a line of a module unit, without tabs and comments, variables replaced. True when it holds
  ! a command. End of file and read errors end the run.
  function readline(unit, line) result(outcome)
    integer(c_int32_t), intent(in) :: unit
    character(*), intent(out) :: line
    logical :: outcome
    outcome = is_true(abi_readline(unit, line, len(line, c_int64_t)))
  end function

  ! True for a comment or blank line; cuts the comment off and replaces variables in any case.
  function commentline(line) result(outcome)
    character(*), intent(inout) :: line
    logical :: outcome
    outcome = is_true(abi_commentline(line, len(line, c_int64_t)))
  end function

  ! Reads one item of the next record; true when there is none. Uses the record up.
  function eoflineread(unit, buffer) result(outcome)
    integer(c_int32_t), intent(in) :: unit
    character(*), intent(inout) :: buffer
    logical :: outcome
    outcome = is_true(abi_eoflineread(unit, buffer, len(buffer, c_int64_t)))
  end function

  ! Splits a line at "==" into command and value.
  function commandline(line, value, command) result(outcome)
    character(*), intent(inout) :: line
    character(*), intent(out) :: value, command
    logical :: outcome
    outcome = is_true(abi_commandline(line, value, command, len(line, c_int64_t), &
        len(value, c_int64_t), len(command, c_int64_t)))
  end function

  ! The same at any separator, or at a column; true when the command contains the flag ("*": any).
  function checkline(line, flag, separator, column, value, command) result(outcome)
    integer(c_int32_t), intent(in) :: column
    character(*), intent(in) :: line, flag, separator
    character(*), intent(out) :: value, command
    logical :: outcome
    outcome = is_true(abi_checkline(line, flag, separator, column, value, command, &
        len(line, c_int64_t), len(flag, c_int64_t), len(separator, c_int64_t), &
        len(value, c_int64_t), len(command, c_int64_t)))
  end function

  ! Containment in any letter case; the second form also returns the text behind the flag.
  function flagexists(text, flag) result(outcome)
    character(*), intent(in) :: text, flag
    logical :: outcome
    outcome = is_true(abi_flagexists(text, flag, len(text, c_int64_t), len(flag, c_int64_t)))
  end function

  function flagexistsret(text, flag, rest) result(outcome)
    character(*), intent(in) :: text, flag
    character(*), intent(out) :: rest
    logical :: outcome
    outcome = is_true(abi_flagexistsret(text, flag, rest, len(text, c_int64_t), &
        len(flag, c_int64_t), len(rest, c_int64_t)))
  end function

  ! Same text but for letter case, quotes, tabs and surrounding blanks; CS: letter case counts.
  function asame(a, b) result(outcome)
    character(*), intent(in) :: a, b
    logical :: outcome
    outcome = is_true(abi_asame(a, b, len(a, c_int64_t), len(b, c_int64_t)))
  end function

  function asamecs(a, b) result(outcome)
    character(*), intent(in) :: a, b
    logical :: outcome
    outcome = is_true(abi_asamecs(a, b, len(a, c_int64_t), len(b, c_int64_t)))
  end function

  ! The command contains "Read MI " or "Read GIS " (WRITEGIS: "Write ..."; READROWCOL: "Read MID "
  ! or "Read RowCol ") with the keyword right behind; ANY: with any keyword or none.
  function readgis(command, keyword) result(outcome)
    character(*), intent(in) :: command, keyword
    logical :: outcome
    outcome = is_true(abi_readgis(command, keyword, len(command, c_int64_t), &
        len(keyword, c_int64_t)))
  end function

  function writegis(command, keyword) result(outcome)
    character(*), intent(in) :: command, keyword
    logical :: outcome
    outcome = is_true(abi_writegis(command, keyword, len(command, c_int64_t), &
        len(keyword, c_int64_t)))
  end function

  function readrowcol(command, keyword) result(outcome)
    character(*), intent(in) :: command, keyword
    logical :: outcome
    outcome = is_true(abi_readrowcol(command, keyword, len(command, c_int64_t), &
        len(keyword, c_int64_t)))
  end function

  function readgisany(command) result(outcome)
    character(*), intent(in) :: command
    logical :: outcome
    outcome = is_true(abi_readgisany(command, len(command, c_int64_t)))
  end function

  function readrowcolany(command) result(outcome)
    character(*), intent(in) :: command
    logical :: outcome
    outcome = is_true(abi_readrowcolany(command, len(command, c_int64_t)))
  end function

  ! The line, left-adjusted in place, starts like a number or is blank.
  function numberline(line) result(outcome)
    character(*), intent(inout) :: line
    logical :: outcome
    outcome = is_true(abi_numberline(line, len(line, c_int64_t)))
  end function

  ! The text, left-adjusted in place, is all digits.
  function positiveintegernumber(text) result(outcome)
    character(*), intent(inout) :: text
    logical :: outcome
    outcome = is_true(abi_positiveintegernumber(text, len(text, c_int64_t)))
  end function

  ! Without single and double quotes; without any blank.
  function removequotes(text) result(outcome)
    character(*), intent(in) :: text
    character(len(text)) :: outcome
    call abi_removequotes(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  function removespaces(text) result(outcome)
    character(*), intent(in) :: text
    character(len(text)) :: outcome
    call abi_removespaces(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  ! ---- Values from text --------------------------------------------------------------------------

  ! The item at this column of the comma-separated list behind the key and "=". lowered_line is the
  ! line in lower case. A missing item gives the default (a blank text); one that does not convert,
  ! and a key without "=", end the run.
  function extractinteger(line, lowered_line, key, column, default_value) result(outcome)
    integer(c_int32_t), intent(in) :: column, default_value
    character(*), intent(in) :: line, lowered_line, key
    integer(c_int32_t) :: outcome
    outcome = abi_extractinteger(line, lowered_line, key, column, default_value, &
        len(line, c_int64_t), len(lowered_line, c_int64_t), len(key, c_int64_t))
  end function

  function extractreal(line, lowered_line, key, column, default_value) result(outcome)
    integer(c_int32_t), intent(in) :: column
    character(*), intent(in) :: line, lowered_line, key
    real(c_double), intent(in) :: default_value
    real(c_double) :: outcome
    outcome = abi_extractreal(line, lowered_line, key, column, default_value, &
        len(line, c_int64_t), len(lowered_line, c_int64_t), len(key, c_int64_t))
  end function

  function extractstring(line, lowered_line, key, column) result(outcome)
    integer(c_int32_t), intent(in) :: column
    character(*), intent(in) :: line, lowered_line, key
    character(len(line)) :: outcome
    call abi_extractstring(outcome, len(outcome, c_int64_t), line, lowered_line, key, column, &
        len(line, c_int64_t), len(lowered_line, c_int64_t), len(key, c_int64_t))
  end function

  ! All items behind the key.
  function extractstringrem(line, lowered_line, key, column) result(outcome)
    integer(c_int32_t), intent(in) :: column
    character(*), intent(in) :: line, lowered_line, key
    character(len(line)) :: outcome
    call abi_extractstringrem(outcome, len(outcome, c_int64_t), line, lowered_line, key, column, &
        len(line, c_int64_t), len(lowered_line, c_int64_t), len(key, c_int64_t))
  end function

  ! Position of a named field in a header line; the column is left alone when it is not there.
  function csvcolumn(header, name, column) result(outcome)
    character(*), intent(in) :: header, name
    integer(c_int32_t), intent(inout) :: column
    logical :: outcome
    outcome = is_true(abi_csvcolumn(header, name, column, len(header, c_int64_t), &
        len(name, c_int64_t)))
  end function

  ! Real value of a field: 0 when read, -1 when the field is blank or missing, above 0 when it is no
  ! number; the value is left alone then.
  function csvvalue(line, column, value) result(outcome)
    integer(c_int32_t), intent(in) :: column
    character(*), intent(in) :: line
    real(c_double), intent(inout) :: value
    integer(c_int32_t) :: outcome
    outcome = abi_csvvalue(line, column, value, len(line, c_int64_t))
  end function

  ! Pieces that the separator makes of a text, from which it takes the tabs out.
  function numberofsubstrings(text, separator) result(outcome)
    character(*), intent(inout) :: text
    character(*), intent(in) :: separator
    integer(c_int32_t) :: outcome
    outcome = abi_numberofsubstrings(text, separator, len(text, c_int64_t), &
        len(separator, c_int64_t))
  end function

  ! The piece of this index, counted from 1, without blanks around; blank when there are fewer.
  function substring(text, separator, index) result(outcome)
    integer(c_int32_t), intent(in) :: index
    character(*), intent(in) :: text, separator
    character(len(text)) :: outcome
    call abi_substring(outcome, len(outcome, c_int64_t), text, separator, index, &
        len(text, c_int64_t), len(separator, c_int64_t))
  end function

  ! Numbers in a line; negative when a stray character ends the count.
  function numberofnumbers(line) result(outcome)
    character(*), intent(in) :: line
    integer(c_int32_t) :: outcome
    outcome = abi_numberofnumbers(line, len(line, c_int64_t))
  end function

  ! Day number of YYYYMMDD in 365-day years, 1 on 1 January 2000; -1 on a bad date.
  function numberofdays(date) result(outcome)
    character(*), intent(in) :: date
    integer(c_int32_t) :: outcome
    outcome = abi_numberofdays(date, len(date, c_int64_t))
  end function

  ! The text reads as a number, which is returned in the second argument.
  function checkreal(text, value) result(outcome)
    character(*), intent(in) :: text
    real(c_double), intent(inout) :: value
    logical :: outcome
    outcome = is_true(abi_checkreal(text, value, len(text, c_int64_t)))
  end function

  function checkint4(text, value) result(outcome)
    character(*), intent(in) :: text
    integer(c_int32_t), intent(inout) :: value
    logical :: outcome
    outcome = is_true(abi_checkint4(text, value, len(text, c_int64_t)))
  end function

  ! ---- Numbers to text: 20 characters, left-aligned ----------------------------------------------

  ! As many digits as it takes; 8: an 8-byte integer.
  function ainteger(value) result(outcome)
    integer(c_int32_t), intent(in) :: value
    character(20) :: outcome
    call abi_ainteger(outcome, len(outcome, c_int64_t), value)
  end function

  function ainteger8(value) result(outcome)
    integer(c_int64_t), intent(in) :: value
    character(20) :: outcome
    call abi_ainteger8(outcome, len(outcome, c_int64_t), value)
  end function

  ! PREC0: padded with zeros to that many digits (AREALDPREC0: columns) when not negative.
  function aintegerprec0(value, digits) result(outcome)
    integer(c_int32_t), intent(in) :: value, digits
    character(20) :: outcome
    call abi_aintegerprec0(outcome, len(outcome, c_int64_t), value, digits)
  end function

  function ainteger8prec0(value, digits) result(outcome)
    integer(c_int32_t), intent(in) :: digits
    integer(c_int64_t), intent(in) :: value
    character(20) :: outcome
    call abi_ainteger8prec0(outcome, len(outcome, c_int64_t), value, digits)
  end function

  ! As many decimals as the magnitude calls for, without trailing zeros; AREAL8 with more.
  function areal(value) result(outcome)
    real(c_double), intent(in) :: value
    character(20) :: outcome
    call abi_areal(outcome, len(outcome, c_int64_t), value)
  end function

  function areal8(value) result(outcome)
    real(c_double), intent(in) :: value
    character(20) :: outcome
    call abi_areal8(outcome, len(outcome, c_int64_t), value)
  end function

  ! A given number of decimals; AREALD4 takes a 4-byte real.
  function areald(value, decimals) result(outcome)
    integer(c_int32_t), intent(in) :: decimals
    real(c_double), intent(in) :: value
    character(20) :: outcome
    call abi_areald(outcome, len(outcome, c_int64_t), value, decimals)
  end function

  function areald4(value, decimals) result(outcome)
    integer(c_int32_t), intent(in) :: decimals
    real(c_float), intent(in) :: value
    character(20) :: outcome
    call abi_areald4(outcome, len(outcome, c_int64_t), value, decimals)
  end function

  function areald8(value, decimals) result(outcome)
    integer(c_int32_t), intent(in) :: decimals
    real(c_double), intent(in) :: value
    character(20) :: outcome
    call abi_areald8(outcome, len(outcome, c_int64_t), value, decimals)
  end function

  function arealdprec0(value, decimals, width) result(outcome)
    integer(c_int32_t), intent(in) :: decimals, width
    real(c_double), intent(in) :: value
    character(20) :: outcome
    call abi_arealdprec0(outcome, len(outcome, c_int64_t), value, decimals, width)
  end function

  ! ---- Text transformations ----------------------------------------------------------------------

  ! Without blanks before and behind.
  function trimf(text) result(outcome)
    character(*), intent(in) :: text
    character(len(text)) :: outcome
    call abi_trimf(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  function uppercase(text) result(outcome)
    character(*), intent(in) :: text
    character(len(text)) :: outcome
    call abi_uppercase(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  function lowercase(text) result(outcome)
    character(*), intent(in) :: text
    character(len(text)) :: outcome
    call abi_lowercase(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  ! Every double quote doubled.
  function doublequote(text) result(outcome)
    character(*), intent(in) :: text
    character(2 * len(text)) :: outcome
    call abi_doublequote(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  ! Blanks become underscores; a blank text becomes "Blank".
  function spacetounderscore(text) result(outcome)
    character(*), intent(in) :: text
    character(max(5, len(text))) :: outcome
    call abi_spacetounderscore(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  ! Anything but letters and digits replaced, or dropped when the replacement has code 0.
  function alphanumericonly(text, replacement) result(outcome)
    character(*), intent(in) :: text, replacement
    character(max(1, len(text))) :: outcome
    call abi_alphanumericonly(outcome, len(outcome, c_int64_t), text, replacement, &
        len(text, c_int64_t), len(replacement, c_int64_t))
  end function

  ! Letters, digits and underscores only, as column names of layers want them.
  function cleanattributename(text) result(outcome)
    character(*), intent(in) :: text
    character(max(1, len(text))) :: outcome
    call abi_cleanattributename(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  ! Removes tabs in place; true when the text is then blank.
  function blank(text) result(outcome)
    character(*), intent(inout) :: text
    logical :: outcome
    outcome = is_true(abi_blank(text, len(text, c_int64_t)))
  end function

  ! The first 256 characters.
  function ss256(text) result(outcome)
    character(*), intent(in) :: text
    character(256) :: outcome
    call abi_ss256(outcome, len(outcome, c_int64_t), text, len(text, c_int64_t))
  end function

  ! Length without trailing blanks and codes of 0; puts a code of 0 behind it where there is room.
  function lensl(text) result(outcome)
    character(*), intent(inout) :: text
    integer(c_int32_t) :: outcome
    outcome = abi_lensl(text, len(text, c_int64_t))
  end function

  ! First, or every, occurrence of old_text in any letter case replaced.
  function replace(text, old_text, new_text) result(outcome)
    character(*), intent(in) :: text, old_text, new_text
    character(len(text) + len(new_text)) :: outcome
    call abi_replace(outcome, len(outcome, c_int64_t), text, old_text, new_text, &
        len(text, c_int64_t), len(old_text, c_int64_t), len(new_text, c_int64_t))
  end function

  function replaceall(text, old_text, new_text) result(outcome)
    character(*), intent(in) :: text, old_text, new_text
    character(len(text) * max(1, len(new_text))) :: outcome
    call abi_replaceall(outcome, len(outcome, c_int64_t), text, old_text, new_text, &
        len(text, c_int64_t), len(old_text, c_int64_t), len(new_text, c_int64_t))
  end function

  ! ---- Geometry ----------------------------------------------------------------------------------

  ! The points are closer than the tolerance along both axes.
  function same_point(x1, y1, x2, y2, tolerance) result(outcome)
    real(c_double), intent(in) :: x1, y1, x2, y2, tolerance
    logical :: outcome
    outcome = is_true(abi_same_point(x1, y1, x2, y2, tolerance))
  end function

  function same_point_8(x1, y1, x2, y2, tolerance) result(outcome)
    real(c_double), intent(in) :: x1, y1, x2, y2, tolerance
    logical :: outcome
    outcome = is_true(abi_same_point_8(x1, y1, x2, y2, tolerance))
  end function

  ! Point 3 lies exactly on the line through 1 and 2.
  function intersect_point(x1, y1, x2, y2, x3, y3) result(outcome)
    real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3
    logical :: outcome
    outcome = is_true(abi_intersect_point(x1, y1, x2, y2, x3, y3))
  end function

  ! Segments A (1 to 2) and B (3 to 4) meet; touching counts, and so do any two on one line.
  function intersect_line(x1, y1, x2, y2, x3, y3, x4, y4) result(outcome)
    real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
    logical :: outcome
    outcome = is_true(abi_intersect_line(x1, y1, x2, y2, x3, y3, x4, y4))
  end function

  function intersect_line_8(x1, y1, x2, y2, x3, y3, x4, y4) result(outcome)
    real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
    logical :: outcome
    outcome = is_true(abi_intersect_line_8(x1, y1, x2, y2, x3, y3, x4, y4))
  end function

  ! The crossing of the lines of A and B; false, and the point left alone, when there is none.
  function intersection_point(x1, y1, x2, y2, x3, y3, x4, y4, xi, yi) result(outcome)
    real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
    real(c_double), intent(inout) :: xi, yi
    logical :: outcome
    outcome = is_true(abi_intersection_point(x1, y1, x2, y2, x3, y3, x4, y4, xi, yi))
  end function

  function intersection_point_8(x1, y1, x2, y2, x3, y3, x4, y4, xi, yi) result(outcome)
    real(c_double), intent(in) :: x1, y1, x2, y2, x3, y3, x4, y4
    real(c_double), intent(inout) :: xi, yi
    logical :: outcome
    outcome = is_true(abi_intersection_point_8(x1, y1, x2, y2, x3, y3, x4, y4, xi, yi))
  end function

  ! A point lies inside an odd number of polygons. Their vertices stand one after another, each
  ! polygon closed in itself (last vertex like the first) and followed by one slot that is not used;
  ! vertex_count includes these slots. polygon_ends holds the number of each polygon's last vertex,
  ! counted from 1, min_x the least x. A table that does not fit the vertices ends the run.
  function inside_polygon(px, py, x, y, vertex_count, min_x, polygon_ends, &
      polygon_count) result(outcome)
    integer(c_int32_t), intent(in) :: vertex_count, polygon_count, polygon_ends(polygon_count)
    real(c_double), intent(in) :: px, py, min_x, x(vertex_count), y(vertex_count)
    logical :: outcome
    outcome = is_true(abi_inside_polygon(px, py, x, y, vertex_count, min_x, polygon_ends, &
        polygon_count))
  end function

  function inside_polygon_8(px, py, x, y, vertex_count, min_x, polygon_ends, &
      polygon_count) result(outcome)
    integer(c_int32_t), intent(in) :: vertex_count, polygon_count, polygon_ends(polygon_count)
    real(c_double), intent(in) :: px, py, min_x, x(vertex_count), y(vertex_count)
    logical :: outcome
    outcome = is_true(abi_inside_polygon_8(px, py, x, y, vertex_count, min_x, polygon_ends, &
        polygon_count))
  end function

  ! Linear interpolation of values z at the three corners of a triangle; false, with the result
  ! -99999, when a side is parallel to the line through the point. NO_CHECKS: for points known to
  ! lie in a proper triangle.
  function interpolate_triangle(px, py, x, y, z, result) result(outcome)
    real(c_double), intent(in) :: px, py, x(3), y(3), z(3)
    real(c_double), intent(out) :: result
    logical :: outcome
    outcome = is_true(abi_interpolate_triangle(px, py, x, y, z, result))
  end function

  function interpolate_triangle_8(px, py, x, y, z, result) result(outcome)
    real(c_double), intent(in) :: px, py, x(3), y(3), z(3)
    real(c_double), intent(out) :: result
    logical :: outcome
    outcome = is_true(abi_interpolate_triangle_8(px, py, x, y, z, result))
  end function

  ! The same in an element of 3 or 4 corners, of 4 as the mean over the triangles that contain the
  ! point. False outside: with 4 corners the result is -99999 then, with 3 it is left alone.
  function interpolate_element_8(px, py, x, y, z, vertex_count, min_x, result) result(outcome)
    integer(c_int32_t), intent(in) :: vertex_count
    real(c_double), intent(in) :: px, py, min_x, x(vertex_count), y(vertex_count), z(vertex_count)
    real(c_double), intent(inout) :: result
    logical :: outcome
    outcome = is_true(abi_interpolate_element_8(px, py, x, y, z, vertex_count, min_x, result))
  end function

  ! ---- Paths: "\" or "/" separates, a drive is a letter and ":", "\\" begins a network path ------

  ! Extension with its dot; FILEEXT in lower case.
  function fileext(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_fileext(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  function fileextkc(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_fileextkc(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Part of the base name from its last underscore on, in lower case.
  function file___ext(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_file___ext(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Name without folder and extension; EXT: with extension; NO_: also without underscore part.
  function filename(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_filename(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  function filenameext(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_filenameext(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  function filenameno_(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_filenameno_(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Path without extension; NO_: also without the name's underscore part.
  function filenamepath(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_filenamepath(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  function filenamepathno_(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_filenamepathno_(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Folder with its last separator.
  function filefolderpath(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_filefolderpath(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Slashes turned to backslashes.
  function dospath(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_dospath(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Path as shown on the console.
  function correctslash(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_correctslash(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Doubled separators collapsed, in the argument too.
  function cleanpath(path) result(outcome)
    character(*), intent(inout) :: path
    character(len(path)) :: outcome
    call abi_cleanpath(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! Parent and current folder references resolved.
  function removedotdot(path) result(outcome)
    character(*), intent(in) :: path
    character(len(path)) :: outcome
    call abi_removedotdot(outcome, len(outcome, c_int64_t), path, len(path, c_int64_t))
  end function

  ! A file name placed in a folder, unless it names a drive or network path itself.
  function addfolder(folder, file) result(outcome)
    character(*), intent(in) :: folder, file
    character(len(folder) + len(file) + 1) :: outcome
    call abi_addfolder(outcome, len(outcome, c_int64_t), folder, file, len(folder, c_int64_t), &
        len(file, c_int64_t))
  end function

  ! Another drive letter for a path that has one.
  subroutine changedrive(path, drive)
    character(*), intent(inout) :: path
    character(*), intent(in) :: drive
    call abi_changedrive(path, drive, len(path, c_int64_t), len(drive, c_int64_t))
  end subroutine

  ! ---- Logicals on their way ------------------------------------------------------------------

  pure function as_word(yes) result(word)
    logical, intent(in) :: yes
    integer(c_int32_t) :: word
    word = merge(-1_c_int32_t, 0_c_int32_t, yes)
  end function

  pure function is_true(word) result(yes)
    integer(c_int32_t), intent(in) :: word
    logical :: yes
    yes = btest(word, 0)
  end function
end module
