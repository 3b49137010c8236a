# shellcheck shell=bash
# Input, windows and pictures on an X11 display, for drive.sh. Positions are in pixels of the screen.

openbox --sm-disable 2>/dev/null &
ends_with_us $!

display_is_ready() { xdotool get_num_desktops; }

# key NAME+NAME...: presses and releases each combination.
key() { xdotool key --delay 30 "$@"; }
key_down() { xdotool keydown "$1"; }
key_up() { xdotool keyup "$1"; }

move() { xdotool mousemove --sync "$1" "$2"; }
# nudge X Y: moves the pointer by this distance.
nudge() { xdotool mousemove_relative --sync -- "$1" "$2"; }
button_down() { xdotool mousedown "${1:-1}"; }
button_up() { xdotool mouseup "${1:-1}"; }
# click X Y [BUTTON]
click() { xdotool mousemove --sync "$1" "$2" click --delay 60 "${3:-1}"; }
double_click() { xdotool mousemove --sync "$1" "$2" click --repeat 2 --delay 20 1; }

# The number of the window that has the keyboard focus. Fails if none has: a window manager activates a new window a
# moment before it gives it the focus.
active_window() {
    local active
    active=$(xdotool getactivewindow) && [ "$(xdotool getwindowfocus)" = "$active" ] && echo "$active"
}
window_title() {
    local active
    active=$(active_window) && xdotool getwindowname "$active"
}
# The active window's X, Y, WIDTH and HEIGHT.
window_place() {
    xdotool getactivewindow getwindowgeometry --shell |
        awk -F= '{ value[$1] = $2 } END { print value["X"], value["Y"], value["WIDTH"], value["HEIGHT"] }'
}
# set_window_place X Y WIDTH HEIGHT: requests this position and size.
set_window_place() { xdotool getactivewindow windowmove "$1" "$2" windowsize "$3" "$4"; }
screen_size() { xdotool getdisplaygeometry; }
# These also fail if a window is destroyed during the search; call them with `within`.
is_there() { xdotool search --onlyvisible --name "^$1\$"; }
activate() { xdotool search --onlyvisible --name "^$1\$" windowactivate; }
# put TITLE X Y: moves the window with this title.
put() { xdotool search --onlyvisible --name "^$1\$" windowmove "$2" "$3"; }
# Closes a window as its close button does.
close_window() { xdotool key alt+F4; }
# The text of the clipboard.
clipboard() { xclip -selection clipboard -out; }

# pixels [X Y WIDTH HEIGHT]: prints the screen or a part of it as a picture without a date.
pixels() { import -window root ${1:+-crop "$3x$4+$1+$2"} +repage -depth 8 ppm:-; }
save_screen() { import -window root "$1"; }
