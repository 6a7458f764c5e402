# The add-in's tool pictures on one sheet. Source it after watching.sh.

# draw_tools SHEET: has the add-in draw a tool of every kind into the Companion's folder and lays the
# pictures out, with their dimensions beneath them.
draw_tools() {
    local sheet=$1 file text cells=()
    mkdir -p "$zem/temp"
    rm -f "$zem"/temp/toolimage-*.bmp
    while IFS='|' read -r file text; do
        cells+=(-label "${text//|/$'\n'}" "$zem/temp/$file")
    done < <(cd "$programs" && wine tool_gallery.exe </dev/null 2>/dev/null | tr -d '\r')
    quietly montage -background white -fill '#333333' -font DejaVu-Sans -pointsize 11 \
        "${cells[@]}" -tile 8x -geometry +8+8 "$sheet" || true
    [ -s "$sheet" ] && tick_off "tools of every kind drawn" yes || tick_off "tools of every kind drawn" no
}
