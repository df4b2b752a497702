# Shared by the pictures of the user guide.
set terminal pngcairo size 1000,480 font "Sans,12" linewidth 1.3
set output target
set border 3 linecolor "#555555"
set tics nomirror out
set grid xtics ytics linecolor "#dddddd" linetype 1
set key samplen 2.5 spacing 1.2
trench(run) = runs."/".run."/trench_profile.csv"
at(hours) = abs(column("time_h") - hours) < 0.001 ? -column("below_plane_m") : NaN
before(hours) = abs(column("time_h") - hours) < 0.001 ? -column("below_plane_before_m") : NaN
