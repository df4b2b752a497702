! A host in Fortran: its compiler, not a header, decides how texts, logicals and arrays are passed.
program fortran_host
  implicit none

  ! The record shared with the module, as a host of this language declares it.
  integer(4) :: log_unit
  character(10000) :: line1, line2, line3, line4
  character(8) :: location_tag
  real(8) :: label_box_width, label_height
  integer(4) :: error_count, warning_count, check_count
  integer(4) :: located_error_count, located_warning_count, located_check_count
  integer(4) :: message_number, message_level
  character(10000) :: detail1, detail2, detail3
  integer(4) :: message_table_unit
  real(8) :: last_x, last_y
  logical(4) :: one_line_flag
  integer(4) :: message_layer, secondary_message_layer
  character(64) :: reference_link
  real(8) :: default_x, default_y, unlocated_spacing
  integer(4) :: unlocated_count
  logical(4) :: strict_command_flag, echo_flag, suppression_flag
  common /dmessages/ log_unit, line1, line2, line3, line4, location_tag, label_box_width, &
    label_height, error_count, warning_count, check_count, located_error_count, &
    located_warning_count, located_check_count, message_number, message_level, detail1, detail2, &
    detail3, message_table_unit, last_x, last_y, one_line_flag, message_layer, &
    secondary_message_layer, reference_link, default_x, default_y, unlocated_spacing, &
    unlocated_count, strict_command_flag, echo_flag, suppression_flag

  character(10), external :: fileext
  character(20), external :: addfolder, ainteger
  logical(4), external :: flagexists, commandline, checkreal
  real(8), external :: extractreal

  integer(4) :: failures = 0
  character(256) :: folder
  character(40) :: line, value, command
  real(8) :: number

  call get_command_argument(1, folder)

  call check(fileext('C:\Model\Run.MIF') == '.mif', 'text function')
  call check(addfolder('C:\m\', '..\mi\a.mif') == 'C:\mi\a.mif', 'text function of two texts')
  call check(ainteger(-305) == '-305', 'text function of a number')
  call check(flagexists('Read MI Zpts', 'read mi'), 'logical function, true')
  call check(.not. flagexists('Read MI', 'Zpts'), 'logical function, false')
  call check(extractreal('D50 = 0.2, 0.3', 'd50 = 0.2, 0.3', 'D50', 2, -1.0d0) == 0.3d0, &
    'real function')
  call check(checkreal(' 1D-3 ', number) .and. number == 1.0d-3, 'number out')

  line = 'Slump Slope == 2'
  call check(commandline(line, value, command), 'three texts')
  call check(command == 'Slump Slope' .and. value == ' 2', 'texts out')

  line1 = 'ERROR 0305 - from Fortran'
  call dmessage(-2)
  call check(error_count == 1 .and. message_number == 305, 'shared block, counters')
  call check(line1 == ' ' .and. last_x == -99999.0d0, 'shared block, cleared')
  call check(.not. one_line_flag .and. unlocated_spacing == 0.0d0, 'shared block, behind the texts')

  call start_up(trim(folder) // '/fortran')

  if (failures > 0) error stop 1
  print '(a)', 'fortran_host: all checks passed'

contains

  subroutine check(ok, what)
    logical, intent(in) :: ok
    character(*), intent(in) :: what
    if (ok) return
    failures = failures + 1
    print '(2a)', 'FAILED: ', what
  end subroutine

  ! The calls of a host that hand texts over among numbers, and its arrays as they lie.
  subroutine start_up(prefix)
    character(*), intent(in) :: prefix
    integer, parameter :: n = 5, m = 6
    real(8) :: real_work(12 * n * m)
    integer(4) :: integer_work(n * m), next_real = 1, next_integer = 1, unit

    open(newunit=unit, file=prefix // '.mcf', status='replace', action='write')
    write(unit, '(a)') 'Set Morphology D50 == 0.0002'
    close(unit)
    call qvmor_initialise_s1('fortran', prefix, prefix, .false., '.tab', .false., prefix, ' ', ' ', &
      .false.)
    call check(log_unit > 0, 'shared block, log unit')
    call qvmor_setup_s2(.true., 1, n, m, 0, 0, next_real, next_integer)
    call check(next_real == 12 * n * m + 1 .and. next_integer == n * m + 1, 'positions out')
    call qvmor_rdinpf(prefix // '.mcf', 1, 1, n, m, n, m, n, m, 2, 2, 1.0d0, 1.0d0, 0.0d0, 0.0d0, &
      0.0d0, real_work, integer_work, 0, 0, 0)
    call check(all(real_work(1:n * m) == 0.0002d0) .and. all(integer_work == 1), 'arrays out')
  end subroutine
end program
