# Outlines of MIF layers in the grid's coordinates, blank lines between them. Call with
#   awk -v x0=... -v y0=... -v degrees=... -f outlines.awk LAYER.mif ...
BEGIN { c = cos(degrees * atan2(0, -1) / 180); s = sin(degrees * atan2(0, -1) / 180) }

function put(x, y) {
  printf "%.2f %.2f\n", (x - x0) * c + (y - y0) * s, (y - y0) * c - (x - x0) * s
}

{ sub(/\r$/, "") }
tolower($1) == "point" { print ""; put($2, $3); next }
tolower($1) ~ /^(region|pline)$/ { print ""; next }
inside && NF == 1 && $1 ~ /^[0-9]+$/ { print ""; next }
tolower($1) == "data" { inside = 1; next }
FNR == 1 { inside = 0 }
inside && NF == 2 && $1 ~ /^[0-9.+-]+$/ { put($1, $2) }
