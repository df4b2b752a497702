! The smallest host: sand moves off a hump in a channel under a steady flow that follows from
! continuity. What the module is asked, in which order, and nothing else.
!
! Usage: minimal_host CONTROL_FILE PREFIX
! Leaves PREFIX.mlf, PREFIX_mor.wor and PREFIX_morDH.dat of the module, and PREFIX_bed.bin: the bed
! depths of the cells as 8-byte reals, the first index fastest.
program minimal_host
  use, intrinsic :: iso_fortran_env, only: int32, real64
  use nivaro_morphology, only: nivaro_logical, qvmor_initialise_s1, qvmor_initialise_s2, &
      qvmor_setup_s2, qvmor_rdinpf, qvmor_init_2d_domain, qvmorphology, &
      qvmor_wrsmsf_write_header, qvmor_wrsmsf_dat_flags, qvmor_wrsmsf_dat_results, &
      qvmor_wrsmsf_close
  implicit none

  ! 60 x 20 cells, and the area in which the bed may move: one cell is left free on each side.
  integer(int32), parameter :: n = 60, m = 20, first = 2, last_i = n - 1, last_j = m - 1
  ! Points of the result: the corners inside the area.
  integer(int32), parameter :: points = (last_i - first) * (last_j - first)
  integer(int32), parameter :: flags = (last_i - first + 1) * (last_j - first + 1)
  integer(int32), parameter :: steps = 24, steps_per_record = 6
  real(real64), parameter :: cell_size = 5, time_step = 600, discharge = 0.6_real64

  ! Element (i, j) lies at the centre of the cell, at its side toward i + 1 (v1, z1), at its side
  ! toward j + 1 (v2, z2) or at the corner of both (zpts). Bed arrays hold depths below datum,
  ! positive downward.
  ! Flow flags are true where a wet cell sends water into a dry one: nowhere here.
  logical(nivaro_logical) :: wet(n, m), flow(n, m)
  real(real64) :: level(n, m), v1(n, m), v2(n, m), zc(n, m), z1(n, m), z2(n, m), zpts(n, m)

  ! The module's memory, which the host keeps.
  real(real64), allocatable :: real_work(:)
  integer(int32), allocatable :: integer_work(:)

  character(1000) :: control_file, prefix
  integer(int32) :: next_real, next_integer, step
  integer :: unit

  if (command_argument_count() /= 2) error stop 2
  call get_command_argument(1, control_file)
  call get_command_argument(2, prefix)
  flow = .false.
  level = 0
  v1 = 0
  v2 = 0
  z1 = 0
  z2 = 0
  zpts = 0
  call make_channel()

  ! 1. Start-up: log, workspace, dataset.
  call qvmor_initialise_s1('hump', prefix, prefix, .false., '.tab', .false., prefix, ' ', ' ', &
      .false.)
  call qvmor_initialise_s2(time_code_switch=0, flag_depth_threshold=0.0_real64, num_data=points, &
      num_cells=flags)

  ! 2. Each domain: reserve, allocate, read the control file. This host has one.
  next_real = 1
  next_integer = 1
  call qvmor_setup_s2(.true., 1, n, m, next_real, next_integer)
  allocate(real_work(next_real - 1), integer_work(next_integer - 1))
  call qvmor_rdinpf(control_file, domain=1, last_domain=1, n=n, m=m, &
      first_row_bound=last_i, second_row_bound=last_j, &
      first_object_bound=n - 2, second_object_bound=m - 2, &
      first_row_offset=2, second_row_offset=2, dx=cell_size, dy=cell_size, &
      angle=0.0_real64, x0=0.0_real64, y0=0.0_real64, &
      real_work=real_work, integer_work=integer_work)

  ! 3. Confine the area and bring sides and corners in line with the cells.
  call call_morphology(smoothing=.true.)

  ! 4. Steps, with a time record now and then.
  call qvmor_wrsmsf_write_header('bed change')
  do step = 1, steps
    call compute_flow()
    call call_morphology(smoothing=.false.)
    if (mod(step, steps_per_record) == 0) call write_record(step * time_step / 3600)
  end do

  ! 5. The end.
  call qvmor_wrsmsf_close()
  open(newunit=unit, file=trim(prefix) // '_bed.bin', access='stream', form='unformatted', &
      status='replace', action='write')
  write(unit) zc
  close(unit)

contains

  ! A bed 1 m below a level of 0, a hump of 0.3 m on it, and dry cells along both banks.
  subroutine make_channel()
    integer :: i, j
    do j = 1, m
      do i = 1, n
        zc(i, j) = (20 - max(0, min(6, i - 15, 32 - i, j - 4, 17 - j))) / 20.0_real64
        wet(i, j) = j > 1 .and. j < m
      end do
    end do
    ! The module keeps sides up to date between cells of the area; those at its edge are the host's.
    z1(1:n - 1, :) = 0.5_real64 * (zc(1:n - 1, :) + zc(2:n, :))
    z2(:, 1:m - 1) = 0.5_real64 * (zc(:, 1:m - 1) + zc(:, 2:m))
  end subroutine

  ! Every row of cells keeps its discharge per metre: the velocity is high where it is shallow.
  subroutine compute_flow()
    v1(1:n - 1, first:last_j) = discharge / z1(1:n - 1, first:last_j)
  end subroutine

  subroutine call_morphology(smoothing)
    logical, intent(in) :: smoothing
    call qvmor_init_2d_domain(1)
    call qvmorphology(smoothing, .false., .false., wet, flow, level, v2, v1, zpts, zc, z2, z1, &
        n, m, first, first, last_i, last_j, cell_size, cell_size, cell_size, time_step, &
        .false., 0.0_real64, real_work, integer_work, domain=1)
  end subroutine

  ! One time record of the bed change of the latest step: flags of the cells, values at the points.
  subroutine write_record(hours)
    real(real64), intent(in) :: hours
    integer(int32) :: codes(n, m), point_i(points), point_j(points), i, j
    codes = 0
    point_i = [((i, i = first, last_i - 1), j = first, last_j - 1)]
    point_j = [((j, i = first, last_i - 1), j = first, last_j - 1)]
    call qvmor_wrsmsf_dat_flags(1, 1, hours, 0.0_real64, -1, codes, wet, level, zc, n, &
        first, first, last_i, last_j)
    call qvmor_wrsmsf_dat_results(1, 1, [points], .true., n, first, first, last_i, last_j, &
        point_i, point_j, real_work)
  end subroutine
end program
