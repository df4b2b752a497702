! The Fortran module as a host uses it: texts, logicals and the shared record. The morphology calls
! are those of examples/minimal.
program fortran_module_host
  use, intrinsic :: iso_fortran_env, only: int32, int64, real64
  use nivaro_morphology
  implicit none

  integer(int32) :: failures = 0, column = 7
  character(12) :: line = 'a = 1', value, command
  character(14) :: doubled = 'C:\m\\a.mif'
  real(real64) :: number = 0, square(6) = [0, 4, 4, 0, 0, 0], other(6) = [0, 0, 4, 4, 0, 0]

  call check(fileext('C:\Model\Run.MIF') == '.mif' .and. len(fileext('a.b')) == 3, 'text function')
  call check(addfolder('C:\m', 'a.mif') == 'C:\m\a.mif', 'a result longer than each argument')
  call check(replaceall('a-a', 'a', '123456') == '123456-123456', 'a result that grows')
  call check(spacetounderscore(' ') == 'Blank' .and. doublequote('""') == '""""', 'results that grow')
  call check(cleanpath(doubled) == 'C:\m\a.mif' .and. doubled == 'C:\m\a.mif', 'result and argument')
  call check(ainteger8(2_int64**40) == '1099511627776', '8-byte integer')
  call check(flagexists('Read MI Zpts', 'zpts') .and. .not. flagexists('Read', 'MI'), 'logicals')
  call check(checkline(line, 'A', '=', 0, value, command), 'three texts')
  call check(command == 'a' .and. adjustl(value) == '1', 'texts out')
  call check(checkreal('2.5', number) .and. number == 2.5_real64, 'number out')
  call check(.not. csvcolumn('x,y', 'z', column) .and. column == 7, 'number left alone')
  call check(inside_polygon(1.0_real64, 2.0_real64, square, other, 6, 0.0_real64, [5], 1), 'arrays')

  call qvmor_initialise_s1('module', 'module', 'module', .false., '.tab', .false., 'module', ' ', &
      ' ', .false.)
  call check(dmessages%log_unit > 0, 'record from start-up on')
  call set_message_text(dmessages%line1, 'WARNING 0317 - from Fortran')
  call check(message_text(dmessages%line1) == 'WARNING 0317 - from Fortran', 'record text')
  call dmessage(-2)
  call check(dmessages%warning_count == 1 .and. dmessages%message_number == 317, 'record counters')
  call check(message_text(dmessages%line1) == ' ', 'record cleared')

  if (failures > 0) error stop 1
  print '(a)', 'fortran_module_host: all checks passed'

contains

  subroutine check(ok, what)
    logical, intent(in) :: ok
    character(*), intent(in) :: what
    if (ok) return
    failures = failures + 1
    print '(2a)', 'FAILED: ', what
  end subroutine
end program
