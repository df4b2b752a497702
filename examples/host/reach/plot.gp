# Bed change of the reach in plan, along the grid. Call with
#   gnuplot -e "results='FOLDER'; degrees=ANGLE; hours=TIME" plot.gp
# where FOLDER holds cells.txt (x, y, change; NaN where dry) and the outlines of the layers. Writes
# FOLDER/reach.png.
if (!exists("results")) results = "results"
if (!exists("degrees")) degrees = 0
if (!exists("hours")) hours = 24

set terminal pngcairo size 1500,600 font "Sans,12" linewidth 1.2
set output results."/reach.png"

set title sprintf("Bed change of the reach after %g h of flood, 850 m^3/s", hours) offset 0,-0.4
set xlabel "along the grid (m)"
set ylabel "across (m)" offset 1,0
set size ratio -1
set xrange [0:2000]
set yrange [200:800]
set xtics 200
set ytics 100
set tics nomirror out
set border 3 linecolor "#555555"
unset key

# Zero is white; dry cells let the grey through.
set palette defined (-1.5 "#08306b", -0.75 "#4292c6", -0.2 "#c6dbef", 0 "#ffffff", \
                     0.2 "#fdd0a2", 0.75 "#e6550d", 1.5 "#7f2704")
set cbrange [-1.5:1.5]
set cbtics 0.5 format "%+.1f"
set cblabel "scour  (m)  deposit" offset 1,0
set object 1 rectangle from graph 0,0 to graph 1,1 fillcolor "#c8c8c8" fillstyle solid noborder behind

set arrow 1 from 40,770 to 160,770 linewidth 2 filled front
set label 1 "flow" at 170,770 front
# Where the map's north lies, seen from the turned grid.
d = degrees * pi / 180
set arrow 2 from 1900,250 to 1900 + 70 * sin(d), 250 + 70 * cos(d) linewidth 2 filled front
set label 2 "N" at 1900 + 90 * sin(d), 250 + 90 * cos(d) center front

grains = "#006d2c"
rocks = "#54278f"
stones = "#000000"
cores = "#c51b8a"
set label 3 "sand pit, coarse\n(D50, D90)" at 430,740 textcolor rgb grains front
set label 4 "island, dry, in an apron\nof coarser sand (D50)" at 1110,245 center textcolor rgb grains front
set label 5 "rock sill\n(bed limit)" at 1700,775 right textcolor rgb rocks front
set label 6 "pipeline under rock\n(bed limit)" at 850,700 center textcolor rgb rocks front
set label 7 "stone aprons of the\nbridge (bed code 0)" at 700,245 center textcolor rgb stones front
set label 8 "cores (voids)" at 490,450 textcolor rgb cores front
set arrow 7 from 1710,765 to 1788,735 nohead linecolor rgb rocks front
set arrow 3 from 450,700 to 400,545 nohead linecolor rgb grains front
set arrow 4 from 1110,262 to 1110,370 nohead linecolor rgb grains front
set arrow 5 from 850,665 to 866,585 nohead linecolor rgb rocks front
set arrow 6 from 700,262 to 700,300 nohead linecolor rgb stones front

set datafile separator whitespace
plot results."/cells.txt" using 1:2:3 with image, \
     results."/grain_d50.txt" with lines linewidth 2 linecolor rgb grains, \
     results."/rock.txt" with lines linewidth 2 linecolor rgb rocks, \
     results."/protected.txt" with lines linewidth 2 linecolor rgb stones, \
     results."/cores.txt" with points pointtype 7 pointsize 1.2 linecolor rgb cores
