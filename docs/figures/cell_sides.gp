# Cell sides high on coarse cells.
load "style.gp"
set datafile separator ","
set title "Cell Sides High, the trench after 15 h with factor 9"
set xlabel "distance along the flume (m)"
set ylabel "bed above the flat bed (m)"
set xrange [-1:12]
set yrange [-0.2:0.06]
set key bottom left
plot trench("step8") using "distance_m":(before(15)) with lines dashtype 2 linecolor "#888888" title "before", \
     trench("fine_OFF") using "distance_m":(at(15)) with lines linewidth 2 linecolor "#0060b0" title "OFF, cells of 0.1 m", \
     trench("coarse_OFF") using "distance_m":(at(15)) with points pointtype 6 linecolor "#0060b0" title "OFF, cells of 0.5 m", \
     trench("fine_ON") using "distance_m":(at(15)) with lines linecolor "#d98200" title "ON, cells of 0.1 m", \
     trench("coarse_ON") using "distance_m":(at(15)) with linespoints pointtype 6 linecolor "#b03020" title "ON, cells of 0.5 m"
