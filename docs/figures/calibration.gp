# How far the trench is from its measured bed, for twelve concentration factors.
load "style.gp"
set multiplot layout 1,2
set title "The trench after 15 h"
set datafile separator ","
set xlabel "distance along the flume (m)"
set ylabel "bed above the flat bed (m)"
set xrange [-1:10]
set yrange [-0.26:0.06]
set key bottom right
plot for [k in "1 3 9 30"] trench("factor".k) using "distance_m":(at(15)) with lines linewidth 1.5 \
       linecolor rgb (k eq "9" ? "#0060b0" : k eq "1" ? "#d98200" : k eq "3" ? "#e8b56a" : "#74a9cf") title "factor ".k, \
     measured using "distance_m":(-column("depth_m")) with points pointtype 7 linecolor "#202020" title "measured"
set title "rms difference from the measured bed"
set datafile separator whitespace
set logscale x
set xlabel "concentration factor"
set ylabel "m"
set xrange [0.9:35]
set yrange [0:0.1]
set xtics (1, 2, 3, 4, 6, 9, 15, 30)
set arrow from 0.9,0.0893 to 35,0.0893 nohead dashtype 2 linecolor "#888888"
set label "bed as it was" at 30,0.0925 right textcolor "#666666"
unset key
plot runs."/calibration.txt" using 1:2 with linespoints pointtype 7 linecolor "#0060b0"
unset multiplot
