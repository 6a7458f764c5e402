# Simulates the user: the mouse on the host's window. Source it after watching.sh. No keys are pressed: a window of the
# Companion may take the keyboard at any time.

# place_of TITLE: sets WINDOW, X, Y and WIDTH to the window, its position and its width.
place_of() { place "$(xdotool search --onlyvisible --name "$1")"; }
place() {
    WINDOW= X=0 Y=0 WIDTH=0
    eval "$(xdotool getwindowgeometry --shell "$1" | grep -E '^(WINDOW|X|Y|WIDTH)=')"
}

# The position of the host's menus, in pixels from the window's left edge.
file_menu=17 add_in_menu=55 edit_menu=183
menu_row=16 # pixels

# host_command MENU N: chooses the Nth command of this menu.
host_command() {
    place_of '^Mastercam'
    xdotool mousemove $((X + $1)) $((Y + 33)) click 1
    choose $((menu_row / 2 + 3 + menu_row * ($2 - 1)))
}

# choose DOWN: clicks so many pixels below the top of the menu that the host shows, and waits until it has closed.
choose() {
    if ! await menu_is_shown; then
        check_off "menu of the host opened" no
        return
    fi
    local menu
    menu=$(shown_menu)
    place "$menu"
    xdotool mousemove $((X + 20)) $((Y + $1)) click 1
    await menu_is_closed "$menu" || check_off "menu of the host closed" no
}

# The host has two kinds of windows on the screen: its main window and menus.
shown_menu() {
    local main
    main=$(xdotool search --onlyvisible --name '^Mastercam')
    xdotool search --onlyvisible --class '^mastercam' | grep -vxF "$main" || true
}
menu_is_shown() { [ -n "$(shown_menu)" ]; }
menu_is_closed() { [ "$(shown_menu)" != "$1" ]; }

# The host commands used by the demo, as menu and row.
run_m_main="$add_in_menu 1" run_m_load="$add_in_menu 2" run_m_save="$add_in_menu 3"
run_import_nc_queue="$add_in_menu 6"
post_nc_programs="$file_menu 5" add_finishing_pass="$edit_menu 1"

# The add-in's popup menu has its title, a separator, and then its commands.
about=2 import_nc_files=4 # counted from "Open TORVA ZEM" at 0

# menu_command N: chooses the Nth command of the add-in's menu after `host_command $run_m_main`.
menu_command() { choose $((36 + menu_row * $1)); }

# close_window TITLE: clicks the window's close button.
close_window() {
    place_of "$1"
    xdotool mousemove $((X + WIDTH - 16)) $((Y + 14)) click 1
}
