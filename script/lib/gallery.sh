# The add-in's tool pictures on one contact sheet. Source it after watching.sh.

# draw_tools SHEET: has the add-in draw a tool of every type into the Companion's folder and arranges the
# pictures, with the dimensions below them.
draw_tools() {
    local sheet=$1 file text cells=()
    mkdir -p "$zem/temp"
    rm -f "$zem"/temp/toolimage-*.bmp
    while IFS='|' read -r file text; do
        cells+=(-label "${text//|/$'\n'}" "$zem/temp/$file")
    done < <(cd "$programs" && wine tool_gallery.exe </dev/null 2>/dev/null | tr -d '\r')
    quietly montage -background white -fill '#333333' -font DejaVu-Sans -pointsize 11 \
        "${cells[@]}" -tile 8x -geometry +8+8 "$sheet" || true
    [ -s "$sheet" ] && check_off "tools of every type drawn" yes || check_off "tools of every type drawn" no
}
