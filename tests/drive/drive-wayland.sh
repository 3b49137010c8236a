# shellcheck shell=bash
# The functions of drive-x11.sh on a Wayland display, with wayland-desktop. Positions are in logical pixels of the screen.

desktop_pipes=$(mktemp -d)
mkfifo "$desktop_pipes/commands" "$desktop_pipes/answers"
"$here/wayland-desktop" <"$desktop_pipes/commands" >"$desktop_pipes/answers" &
ends_with_us $!
exec 7>"$desktop_pipes/commands" 8<"$desktop_pipes/answers"
rm -r "$desktop_pipes"

# tell COMMAND...: prints the answer of wayland-desktop. Fails if wayland-desktop fails.
tell() {
    local status answer
    echo "$*" >&7
    read -r status answer <&8 || fail "the desktop has gone"
    [ -z "$answer" ] || echo "$answer"
    [ "$status" = ok ]
}

display_is_ready() { tell screen; }

key() { tell key "$@"; }
key_down() { tell keydown "$1"; }
key_up() { tell keyup "$1"; }

move() { tell move "$1" "$2"; }
nudge() { tell nudge "$1" "$2"; }
# glide X Y: two fingers on a touchpad scroll the view by this distance, and are lifted while moving.
glide() { tell glide "$1" "$2"; }
button_down() { tell buttondown "${1:-1}"; }
button_up() { tell buttonup "${1:-1}"; }
click() { tell move "$1" "$2" && tell click "${3:-1}"; }
double_click() { tell move "$1" "$2" && tell click 1 2; }

window_title() { tell title; }
active_window() { tell active; }
window_place() { tell place; }
set_window_place() { tell setplace "$1" "$2" "$3" "$4"; }
screen_size() { tell screen; }
is_there() { tell there "$1"; }
activate() { tell forward "$1"; }
put() { tell at "$1" "$2" "$3"; }
close_window() { tell tell kill; }
clipboard() { wl-paste --no-newline; }

pixels() { grim ${1:+-g "$1,$2 $3x$4"} -t ppm -; }
save_screen() { grim "$1"; }
