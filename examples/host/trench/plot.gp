# Bed of the trench before, computed and measured. Call with
#   gnuplot -e "results='FOLDER'; case_folder='FOLDER'" plot.gp
# where FOLDER/default and FOLDER/calibrated hold the two runs. Writes FOLDER/trench.png.
if (!exists("results")) results = "results"
if (!exists("case_folder")) case_folder = "."

set terminal pngcairo size 1200,640 font "Sans,13" linewidth 1.4
set output results."/trench.png"
set datafile separator ","
set datafile commentschars "#"

set title "Migration of a trench in a flume (van Rijn 1986, test 3): bed after 15 h" offset 0,-0.3
set xlabel "distance along the flume (m)"
set ylabel "bed above the flat flume bed (m)"
set xrange [-1:12]
set yrange [-0.18:0.06]
set xtics 1
set ytics 0.03 format "%.2f"
set mxtics 2
set grid xtics ytics linecolor "#dddddd" linetype 1
set border 3 linecolor "#555555"
set tics nomirror out
set key top right vertical samplen 3 spacing 1.2 reverse Left opaque
set arrow from -0.8,0.045 to 0.4,0.045 linecolor "#555555" linewidth 1.5 filled
set label "flow" at 0.5,0.045 textcolor "#555555"

set label "ripples of the scheme" at 1.95,0.038 textcolor "#d98200"

default = results."/default/trench_profile.csv"
calibrated = results."/calibrated/trench_profile.csv"
factor = system("grep -i 'Concentration Factor' '".case_folder."/trench_calibrated.mcf' | sed 's/.*== *//; s/\\.0*$//'")
at(hours) = abs(column("time_h") - hours) < 0.001 ? -column("below_plane_m") : NaN
before(hours) = abs(column("time_h") - hours) < 0.001 ? -column("below_plane_before_m") : NaN

plot default using "distance_m":(before(15)) with lines linewidth 2 dashtype 2 linecolor "#888888" \
       title "before", \
     default using "distance_m":(at(15)) with lines linewidth 2.5 linecolor "#d98200" \
       title "computed, concentration factor 1 (default)", \
     calibrated using "distance_m":(at(15)) with lines linewidth 2.5 linecolor "#0060b0" \
       title "computed, concentration factor ".factor." (calibrated)", \
     case_folder."/measured.csv" using "distance_m":(-column("depth_m")) with points pointtype 7 \
       pointsize 1.3 linecolor "#202020" title "measured"
