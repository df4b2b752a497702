# Sourced by run and test: installs the Debian packages that are named and missing.

# Another program may be installing something: so long is waited for its lock.
LOCK_SECONDS=60

# update_lists [SUDO]: apt-get itself does not wait for the lock of the package lists.
update_lists() {
  local end=$((SECONDS + LOCK_SECONDS)) said
  until said=$("$@" env LC_ALL=C apt-get update -qq 2>&1); do
    if [[ $said != *"Could not get lock"* || $SECONDS -ge $end ]]; then
      echo "$said" >&2
      return 1
    fi
    sleep 1
  done
}

# install_missing PACKAGE...
install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0

  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These Debian packages are needed: ${missing[*]}" >&2
      echo "Install them as root (apt-get install ${missing[*]}) and run again." >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing Debian packages: ${missing[*]}"
  update_lists "${as_root[@]}" &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y -qq --no-install-recommends -o "DPkg::Lock::Timeout=$LOCK_SECONDS" \
      "${missing[@]}" >/dev/null
}

BUILD_PACKAGES=(g++ cmake ninja-build python3)
EXAMPLE_PACKAGES=(libtomlplusplus-dev libcli11-dev gnuplot-nox)
VALIDATION_PACKAGES=(python3-numpy python3-matplotlib)
TEST_PACKAGES=(libgtest-dev libgmock-dev gfortran clang-14 clang-format-14 clang-tidy-14
  libclang-rt-14-dev python3-numpy gdal-bin shapelib libxml2-utils
  dpkg-dev file pkgconf
  python3-pytest python3-pip python3-setuptools python3-wheel mypy black)
WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix gfortran-mingw-w64-x86-64-posix clang-14 lld-14
  llvm-14 wine64 googletest)
DOC_PACKAGES=(doxygen)
BENCH_PACKAGES=(libbenchmark-dev gdal-bin)
