#!/usr/bin/env bash
# The library and the readers share one window, which keeps its position.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

on_wayland() { [ -n "${WAYLAND_DISPLAY:-}" ]; }
# is_at X Y WIDTH HEIGHT: succeeds if the active window has this position and size.
is_at() { [ "$(window_place)" = "$*" ]; }
is_at_its_place() { is_at "${place[@]}"; }
# Sets the position and checks it.
gets_its_place() { set_window_place "${place[@]}" && is_at_its_place; }
is_whole_screen() { [ "$(window_place)" = "0 0 $(screen_size)" ]; }
# A point above the middle of the title, where a header bar has no button.
title_bar() {
    local x y width
    read -r x y width _ < <(window_place)
    echo $((x + width / 2)) $((y + 23))
}
# Maximizes the window: by the title bar, or as the only tile.
enlarge() {
    if on_wayland; then
        swaymsg -q floating disable
    else
        # shellcheck disable=SC2046
        double_click $(title_bar)
    fi
    within 20 is_whole_screen
}
is_one_window() { [ "$(active_window)" = "$window" ]; }
# is TITLE: waits until the active window has this title, and until the program has only one window.
is() {
    within 60 window_is "$1"
    within 20 is_one_window
}
read_book() {
    key Return
    is "Pagora - $1"
    within 60 page_is_drawn
}
close_book() {
    key ctrl+w
    is Pagora
}

"$here/make-sample-books" "$HOME/books" >/dev/null
"$here/make-fixed-book" "$HOME/books/00 Six Views.epub"
start "$HOME/books/00 "*.epub "$HOME/books/01 "*.epub
within 60 catalogue "len(books) == 2"
within 60 window_is Pagora
window=$(active_window)
settle

# Moves and resizes the window. A book opens at the same position, and the library returns there.
place=(140 60 960 640)
within 20 gets_its_place
key Right
settle
key Right
settle
read_book "The Lantern Keeper"
within 20 is_at_its_place
settle
picture reader-at-its-place
close_book
within 20 is_at_its_place
settle
picture library-at-its-place

# The window is fitted to a fixed book's page. The library has its previous size.
key Left
settle
key Return
is "Pagora - Six Views"
is_fitted() { ! is_at_its_place && [ "$(window_place | cut -d' ' -f1-2)" = "${place[*]:0:2}" ]; }
within 60 is_fitted
settle
picture fixed-fitted
close_book
within 20 is_at_its_place

# Full screen ends before the library is shown, and starts again with the next book.
key Right
settle
read_book "The Lantern Keeper"
key F11
within 20 is_whole_screen
settle
picture reader-full-screen
close_book
within 20 is_at_its_place
read_book "The Lantern Keeper"
within 20 is_whole_screen
settle
key F11
within 20 is_at_its_place
settle
close_book
within 20 is_at_its_place

# A maximized window stays maximized.
settle
enlarge
settle
picture library-whole-screen
read_book "The Lantern Keeper"
within 20 is_whole_screen
settle
picture reader-whole-screen
close_book
within 20 is_whole_screen
key Left
settle
key Return
is "Pagora - Six Views"
within 60 page_is_drawn
if ! on_wayland; then
    is_smaller() { ! is_whole_screen; }
    within 60 is_smaller
fi
settle
picture fixed-from-whole-screen
close_book
within 20 is_whole_screen
settle
picture library-whole-screen-again

# A library in full screen opens a book in full screen. The next book does not open in full screen.
if on_wayland; then
    # The desktop reports a position before the window has it.
    swaymsg -q floating enable
    within 20 gets_its_place
    settle
    swaymsg -q fullscreen enable
    within 20 is_whole_screen
    within 20 color_is 1270 850 ffffff
    settle
    key Right
    settle
    read_book "The Lantern Keeper"
    within 20 is_whole_screen
    close_book
    within 20 is_whole_screen
    settle
    swaymsg -q fullscreen disable
    within 20 is_at_its_place
    settle
    read_book "The Lantern Keeper"
    within 20 is_at_its_place
    close_book
fi

quit
