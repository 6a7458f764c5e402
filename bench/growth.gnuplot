# Draws growth.dat of the folder it runs in as growth.svg: what each operation costs, over the number
# of operations. Flat is proportional growth.
set terminal svg size 960,420 font "DejaVu Sans,12" background "white"
set output "growth.svg"
set multiplot layout 1,2
set logscale x 10
set xrange [80:12500]
set format x "%.0f"
set xlabel "operations"
set grid ytics lt 1 lw 1 lc rgb "#dddddd"
set border 3
set tics nomirror
set key top right samplen 2 spacing 1.2
set pointsize 0.8

set title "time for each operation, µs"
set logscale y 10
set yrange [1:1000] # room for the key
plot "growth.dat" index "tool export" using 1:($3/$1) with linespoints lw 2 pt 7 lc rgb "#1f6fb4" title "tool export", \
     "" index "tool export" using 1:($4/$1) with linespoints lw 1.5 dt 2 pt 6 lc rgb "#1f6fb4" title "its calls made bare", \
     "" index "NC queue" using 1:($3/$1) with linespoints lw 2 pt 7 lc rgb "#c8641e" title "NC queue", \
     "" index "NC queue" using 1:($4/$1) with linespoints lw 1.5 dt 2 pt 6 lc rgb "#c8641e" title "its calls made bare"

set title "peak memory for each operation, bytes"
unset logscale y
set yrange [0:1000]
plot "growth.dat" index "tool export, memory each" using 1:2 with linespoints lw 2 pt 7 lc rgb "#1f6fb4" title "tool export", \
     "" index "NC queue, memory each" using 1:2 with linespoints lw 2 pt 7 lc rgb "#c8641e" title "NC queue"
unset multiplot
