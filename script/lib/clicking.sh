# Simulates the user: mouse and keys on the host's window. Source it after watching.sh.

# place_of TITLE: sets X, Y and WIDTH to the window's position and width.
place_of() {
    X=0 Y=0 WIDTH=0
    eval "$(xdotool search --onlyvisible --name "$1" getwindowgeometry --shell | grep -E '^(X|Y|WIDTH)=')"
}

# The position of the host's menus, in pixels from the window's left edge.
file_menu=17 add_in_menu=55 edit_menu=183

# host_command MENU N: chooses the Nth command of this menu and leaves the mouse over the view.
host_command() {
    place_of '^Mastercam'
    xdotool mousemove $((X + $1)) $((Y + 33)) click 1
    sleep 0.5
    local i
    for ((i = 0; i < $2; i++)); do xdotool key Down; done
    xdotool mousemove $((X + 260)) $((Y + 300)) key Return
    sleep 0.5
}

# The host commands used by the demo, as menu and row.
run_m_main="$add_in_menu 1" run_m_load="$add_in_menu 2" run_m_save="$add_in_menu 3"
run_import_nc_queue="$add_in_menu 6"
post_nc_programs="$file_menu 5" add_finishing_pass="$edit_menu 1"

# The add-in's popup menu has its title, a separator, and then its commands, 16 pixels each.
about=2 import_nc_files=4 # counted from "Open TORVA ZEM" at 0

# menu_command N: clicks the Nth command of the add-in's menu after `host_command $run_m_main`.
menu_command() {
    xdotool mousemove $((X + 300)) $((Y + 336 + 16 * $1)) click 1
}

# close_window TITLE: clicks the window's close button.
close_window() {
    place_of "$1"
    xdotool mousemove $((X + WIDTH - 16)) $((Y + 14)) click 1
}
