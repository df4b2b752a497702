# Erosion at once, deposition over a distance.
load "style.gp"
set title "Bed change of 10 minutes, 2 m of water over fine sand, cells of 20 m"
set xlabel "distance along the flow (m)"
set ylabel "bed change (mm)"
set xrange [0:1200]
set yrange [-10:10]
set key bottom right
set label "0.8 m/s" at 45,8.5 center
set label "1 m/s" at 245,8.5 center
set label "0.8 m/s" at 800,8.5 center
set arrow from 100,-10 to 100,10 nohead dashtype 2 linecolor "#888888"
set arrow from 400,-10 to 400,10 nohead dashtype 2 linecolor "#888888"
plot runs."/lag.txt" index 0 with steps linecolor "#d98200" title "factor 1", \
     "" index 1 with steps linecolor "#7a9a20" title "factor 3", \
     "" index 2 with steps linecolor "#0060b0" title "factor 9"
