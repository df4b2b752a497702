#!/usr/bin/env bash
# Runs the reach case, says what its result files hold, and draws the bed change in plan with the
# layers over it.
set -euo pipefail

if [[ $# -ne 2 ]]; then
  echo "Usage: run_reach.sh BUILD_DIR RESULTS_DIR" >&2
  exit 2
fi
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
build=$(cd -- "$1" && pwd)
mkdir -p -- "$2"
results=$(cd -- "$2" && pwd)
reach=$here/reach

printf '\n==== Reach in flood ====\n'
"$build/morphology_host" "$reach" --out "$results"

printf '\n==== Bed change (m) where the case has its features ====\n'
hours=$(awk -F, 'END { print $1 }' "$results/reach_bed_change.csv")
# change NAME X1 X2 Y1 Y2: least, mean and largest change of the wet cells of a box.
change() {
  LC_ALL=C awk -F, -v hours="$hours" -v name="$1" -v x1="$2" -v x2="$3" -v y1="$4" -v y2="$5" '
    $1 == hours && $2 > x1 && $2 < x2 && $3 > y1 && $3 < y2 && $6 > 0 {
      if (!n || $5 < low) low = $5
      if (!n || $5 > high) high = $5
      sum += $5; ++n
    }
    END { printf "  %-28s %8.2f %8.2f %8.2f\n", name, low, n ? sum / n : 0, high }' \
    "$results/reach_bed_change.csv"
}
printf '  %-28s %8s %8s %8s\n' place least mean largest
change 'sand pit' 330 410 500 560
change 'under the bridge' 640 760 360 500
change 'head of the island' 880 970 410 460
change 'behind the island' 1260 1340 410 460
change 'rock sill' 1800 1900 500 700

if command -v gnuplot >/dev/null; then
  scratch=$(mktemp -d)
  trap 'rm -rf -- "$scratch"' EXIT
  LC_ALL=C awk -F, -v hours="$hours" \
    '$1 == hours { print $2, $3, ($6 > 0 ? $5 : "NaN") }' \
    "$results/reach_bed_change.csv" >"$scratch/cells.txt"
  # The place of the grid on the map, as the case has it.
  place=$(sed -n '/^\[map\]/,/^$/ s/^origin = \[\(.*\), \(.*\)\]/\1 \2/p' "$reach/case.toml")
  degrees=$(sed -n '/^\[map\]/,/^$/ s/^angle = \([0-9.-]*\).*/\1/p' "$reach/case.toml")
  for layer in grain_d50 rock protected cores; do
    LC_ALL=C awk -v x0="${place% *}" -v y0="${place#* }" -v degrees="$degrees" \
      -f "$reach/outlines.awk" "$reach/$layer.mif" >"$scratch/$layer.txt"
  done
  gnuplot -e "results='$scratch'; degrees=$degrees; hours=$hours" "$reach/plot.gp"
  mv -- "$scratch/reach.png" "$results/reach.png"
  printf '\nPicture  %s\n' "$results/reach.png"
else
  printf '\nNo picture: gnuplot is not installed.\n'
fi
printf 'Results  %s\n' "$results"
printf 'For a GIS: reach.2dm with reach_morDH.dat, reach_mor_check, reach_messages, reach_mor.wor\n'
