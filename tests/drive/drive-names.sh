# shellcheck shell=bash
# Presses widgets by their accessible names, for scripts that have sourced drive.sh.

# Starts the program with its accessible tree, which scripts/headless disables.
export GTK_A11Y=atspi
# Screen pixels per point.
unit=${unit:-1}

# Set by drive.sh.
: "${here:?}"

# place_of NAME [ROLE]: prints X and Y of the widget's centre on the screen. Fails if the active window has no such
# widget.
place_of() {
    local x y width height left top outer_width outer_height
    read -r x y width height < <("$here/find-widget" "$@") || return 1
    read -r left top outer_width outer_height < <(window_place) || return 1
    # The toolkit may add a border for resizing around the window's widget.
    echo $((left + x * unit + (outer_width - width * unit) / 2)) $((top + y * unit + (outer_height - height * unit) / 2))
}

# press NAME [ROLE [BUTTON]]: clicks the widget with this name. Not for widgets in a popover.
press() {
    within 20 place_of "$1" "${2:-}"
    # shellcheck disable=SC2046
    click $(place_of "$1" "${2:-}") "${3:-1}"
}
double_press() {
    within 20 place_of "$1" "${2:-}"
    # shellcheck disable=SC2046
    double_click $(place_of "$1" "${2:-}")
}

# choose NAME [ROLE]: moves to the widget of the open popover with the Tab key and presses it with the space bar.
choose() {
    for _ in $(seq 20); do
        "$here/find-widget" --focused "$@" && break
        key Tab
    done
    "$here/find-widget" --focused "$@" || fail "no widget has the name $1"
    key space
}
