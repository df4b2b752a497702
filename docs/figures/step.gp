# The trench after 15 h with three morphology steps.
load "style.gp"
set datafile separator ","
set title "Ripples of a step that is too long: the trench after 15 h, cells of 0.1 m"
set xlabel "distance along the flume (m)"
set ylabel "bed above the flat bed (m)"
set xrange [-3:10]
set yrange [-0.16:0.07]
set key top right
plot trench("step256") using "distance_m":(at(15)) with lines linecolor "#e6a9a0" title "step 256 s", \
     trench("step8") using "distance_m":(at(15)) with lines linewidth 2.5 linecolor "#0060b0" title "step 8 s", \
     trench("step64") using "distance_m":(at(15)) with lines linecolor "#d98200" title "step 64 s", \
     trench("step8") using "distance_m":(before(15)) with lines dashtype 2 linecolor "#888888" title "before"
