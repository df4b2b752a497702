#!/usr/bin/env bash
# Runs the trench case twice, with the default and with the calibrated concentration factor, and
# shows both beside the measured bed.
set -euo pipefail

if [[ $# -ne 2 ]]; then
  echo "Usage: run_trench.sh BUILD_DIR RESULTS_DIR" >&2
  exit 2
fi
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
build=$(cd -- "$1" && pwd)
mkdir -p -- "$2"
results=$(cd -- "$2" && pwd)
trench=$here/trench

# value FILE QUANTITY: a number of a run's summary.
value() { awk -F, -v quantity="$2" '$1 == quantity { print $2 }' "$1"; }

run() {
  local name=$1 control=$2
  printf '\n==== Trench, %s ====\n' "$name"
  "$build/morphology_host" "$trench" --control "$trench/$control" --out "$results/$name"
}

row() {
  local summary="$results/$1/trench_summary.csv"
  LC_ALL=C printf '  %-32s %12.4f %8.2f\n' "$2" "$(value "$summary" rms)" "$(value "$summary" skill)"
}

run default trench.mcf
run calibrated trench_calibrated.mcf

printf '\n==== Bed after 15 h against the measured bed ====\n'
printf '  %-32s %12s %8s\n' 'concentration factor' 'rms (m)' 'skill'
LC_ALL=C printf '  %-32s %12.4f %8.2f\n' '(bed as it was)' \
  "$(value "$results/default/trench_summary.csv" rms_no_change)" 0
row default '1 (default)'
factor=$(sed -n 's/.*Concentration Factor *== *\([0-9.]*\).*/\1/p' "$trench/trench_calibrated.mcf")
row calibrated "${factor%.0} (calibrated)"

if command -v gnuplot >/dev/null; then
  # Inside single quotes of gnuplot, a quote is doubled.
  gnuplot -e "results='${results//\'/\'\'}'; case_folder='${trench//\'/\'\'}'" "$trench/plot.gp"
  printf '\nPicture  %s\n' "$results/trench.png"
else
  printf '\nNo picture: gnuplot is not installed.\n'
fi
printf 'Results  %s\n         %s\n' "$results/default" "$results/calibrated"
