! A host in Fortran: its compiler, not a header, decides how texts, logicals and arrays are passed.
program fortran_host
  implicit none

  ! The record shared with the module, as a host of this language declares it.
  integer(4) :: log_unit, counters(6), message_number, message_level, table_unit, layers(2), unlocated
  character(10000) :: lines(4), details(3)
  character(8) :: location_tag
  character(64) :: reference_link
  real(8) :: label_box_width, label_height, last_x, last_y, default_x, default_y, unlocated_spacing
  logical(4) :: one_line_flag, flags(3)
  common /dmessages/ log_unit, lines, location_tag, label_box_width, label_height, counters, &
    message_number, message_level, details, table_unit, last_x, last_y, one_line_flag, layers, &
    reference_link, default_x, default_y, unlocated_spacing, unlocated, flags

  character(10), external :: fileext
  character(20), external :: addfolder
  logical(4), external :: flagexists, commandline
  real(8), external :: extractreal

  integer(4) :: failures = 0
  character(256) :: folder
  character(40) :: line, value, command

  call get_command_argument(1, folder)

  call check(fileext('C:\Model\Run.MIF') == '.mif', 'text function')
  call check(addfolder('C:\m\', '..\mi\a.mif') == 'C:\mi\a.mif', 'text function of two texts')
  call check(flagexists('Read MI Zpts', 'read mi'), 'logical function')
  call check(extractreal('D50 = 0.2, 0.3', 'd50 = 0.2, 0.3', 'D50', 2, -1.0d0) == 0.3d0, &
    'real function')

  line = 'Slump Slope == 2'
  call check(commandline(line, value, command), 'three texts')
  call check(command == 'Slump Slope' .and. value == ' 2', 'texts out')

  lines(1) = 'ERROR 0305 - from Fortran'
  call dmessage(-2)
  call check(counters(1) == 1 .and. message_number == 305, 'shared block, counters')
  call check(lines(1) == ' ' .and. last_x == -99999.0d0, 'shared block, cleared')
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
