# Draws hosts.dat of the folder it runs in as hosts.svg: latency and processor time over the number of hosts.
set terminal svg size 960,520 font "DejaVu Sans,12" background "white"
set output "hosts.svg"
set multiplot layout 1,2
set logscale x 2
set xrange [0.9:9]
set xtics (1, 2, 4, 8)
set xlabel "hosts"
set grid ytics lt 1 lw 1 lc rgb "#dddddd"
set border 3
set tics nomirror
set key below vertical maxrows 4 samplen 2 spacing 1.2
set pointsize 0.8
set yrange [0:*]

set title "from a written request to DoFileOpen, ms"
plot "hosts.dat" index "request to DoFileOpen, one a second" using 1:2 with linespoints lw 2 pt 7 lc rgb "#1f6fb4" title "median, one a second", \
     "" index "request to DoFileOpen, 95th percentile, one a second" using 1:2 with linespoints lw 1.5 dt 2 pt 6 lc rgb "#1f6fb4" title "95th percentile", \
     "" index "request to DoFileOpen, without pause" using 1:2 with linespoints lw 2 pt 7 lc rgb "#c8641e" title "median, without pause"

set title "processor time of a check-out and commit, ms"
plot "hosts.dat" index "processor time of a check-out and commit, host, one a second" using 1:2 with linespoints lw 2 pt 7 lc rgb "#1f6fb4" title "host", \
     "" index "processor time of a check-out and commit, Companion, one a second" using 1:2 with linespoints lw 2 pt 7 lc rgb "#c8641e" title "Companion", \
     "" index "processor time of an idle host" using 1:2 with linespoints lw 1.5 dt 2 pt 6 lc rgb "#1f6fb4" title "idle host, for each second", \
     "" index "processor time of the idle Companion" using 1:2 with linespoints lw 1.5 dt 2 pt 6 lc rgb "#c8641e" title "idle Companion, for each second"
unset multiplot
