# Which cells points, lines and regions set.
load "style.gp"
set terminal pngcairo size 1000,620 font "Sans,12" linewidth 1.3
set title "D50 that the layers set: Set 0.2 mm, then Read MI, then Read MI ... ADD"
set size ratio -1
set xrange [-12:292]
set yrange [-12:152]
unset key
unset grid
set xtics 0,20,260
set ytics 0,20,140
set palette defined (0.2 "#f4f1e8", 0.3 "#9ecae1", 0.4 "#fdae6b", 0.5 "#9e6fb8")
set cbrange [0.15:0.55]
set palette maxcolors 4
set cbtics 0.2,0.1,0.5
set cblabel "D50 (mm)"
do for [k=0:26] { set arrow from 10*k,0 to 10*k,140 nohead linecolor "#cccccc" front }
do for [k=0:14] { set arrow from 0,10*k to 260,10*k nohead linecolor "#cccccc" front }
set style textbox opaque noborder margins 0.5,0.5
set label "points" at 52,116 front boxed
set label "line" at 42,62 front boxed
set label "polyline" at 135,16 front boxed
set label "region with a hole" at 90,145 front
set label "region" at 178,86 front boxed
set label "region of a layer read with ADD" at 182,124 front boxed
outlines = "< awk -v x0=0 -v y0=0 -v degrees=0 -f ../../examples/host/reach/outlines.awk layers/objects.mif layers/more.mif"
plot runs."/cells.txt" using 1:2:3 with image, \
     "" using 1:2 with points pointtype 7 pointsize 0.2 linecolor "#888888", \
     outlines using 1:2 with lines linewidth 1.8 linecolor "#202020", \
     "< awk 'tolower($1) == \"point\" {print $2, $3} tolower($1) == \"line\" {print \"\"; print \"\"}' layers/objects.mif" \
       index 0 using 1:2 with points pointtype 7 linecolor "#202020", \
     "< awk 'tolower($1) == \"line\" {print $2, $3; print $4, $5}' layers/objects.mif" with lines linewidth 1.8 linecolor "#202020"
