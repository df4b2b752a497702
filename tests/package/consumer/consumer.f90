! A host in Fortran: what the one in C does, and a file of its own between, written while it waits.
program consumer
  use, intrinsic :: iso_fortran_env, only: real64
  use nivaro_morphology, only: aintegerprec0, distance, dmessage, dmessages, find_dmessages, &
      set_message_text
  implicit none
  integer :: unit, id

  call find_dmessages()
  call set_message_text(dmessages%line1, 'WARNING 0317 - seen by the host')
  call dmessage(-2)
  open(newunit=unit, status='scratch', form='unformatted', asynchronous='yes')
  write(unit, asynchronous='yes', id=id) dmessages%warning_count
  wait(unit)
  close(unit)
  print '(a, f4.1, 1x, i0)', trim(aintegerprec0(7, 4)), &
      distance(0.0_real64, 0.0_real64, 3.0_real64, 4.0_real64), dmessages%warning_count
end program
