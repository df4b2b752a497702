#!/usr/bin/env bash
# Package lists that another program has locked are waited for; nothing of the system is touched.
#
# Usage: lock_test.sh PACKAGES.SH
set -euo pipefail
source "$1"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/partial"
export APT_CONFIG=$folder/apt.conf
echo "Dir::State::lists \"$folder\"; Dir::Etc { sourcelist \"/dev/null\"; sourceparts \"/dev/null\"; };" \
  >"$APT_CONFIG"

hold='import fcntl, sys, time
lock = open(sys.argv[1], "w")
fcntl.lockf(lock, fcntl.LOCK_EX)
print("held", flush=True)
time.sleep(2)'
coproc python3 -c "$hold" "$folder/lock"
read -r _ <&"${COPROC[0]}"
! LOCK_SECONDS=0 update_lists 2>"$folder/said"
grep -q "Could not get lock" "$folder/said"
update_lists
