# Plays the user: mouse and keys on the host's window. Source it after watching.sh.

# place_of TITLE: sets X, Y and WIDTH to the window's place.
place_of() {
    X=0 Y=0 WIDTH=0
    eval "$(xdotool search --onlyvisible --name "$1" getwindowgeometry --shell | grep -E '^(X|Y|WIDTH)=')"
}

# add_in_command N: chooses the Nth command of the host's Add-in menu, with the mouse left over the
# drawing.
add_in_command() {
    place_of '^Mastercam'
    xdotool mousemove $((X + 55)) $((Y + 33)) click 1
    sleep 0.5
    local i
    for ((i = 0; i < $1; i++)); do xdotool key Down; done
    xdotool mousemove $((X + 260)) $((Y + 300)) key Return
    sleep 0.5
}

# The add-in's open menu has its title, a line, and then its commands, 16 pixels each.
about=2 import_nc_files=4 # counted from "Open TORVA ZEM" at 0

# menu_command N: clicks the Nth command of the add-in's menu, which was opened by add_in_command.
menu_command() {
    xdotool mousemove $((X + 300)) $((Y + 336 + 16 * $1)) click 1
}

# close_window TITLE: clicks the window's close button.
close_window() {
    place_of "$1"
    xdotool mousemove $((X + WIDTH - 16)) $((Y + 14)) click 1
}
