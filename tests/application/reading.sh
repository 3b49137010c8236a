#!/usr/bin/env bash
# A long session with a library of 300 books: twenty pages are turned, a chapter is chosen, the colours are changed,
# text is copied, the desktop switches to dark and light, and the windows are closed as the desktop closes them.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"

mkfifo "$HOME/schemes"
/usr/bin/python3 "$tests/portal.py" <"$HOME/schemes" >"$HOME/portal" &
ends_with_us $!
exec 9>"$HOME/schemes"
within 60 grep -qx ready "$HOME/portal"

# lightness X Y: prints the lightness of the pixel, from 0 to 255.
lightness() { echo $((16#$(color_at "$1" "$2" | cut -c1-2))); }
title_bar_is_dark() { [ "$(lightness 250 10)" -lt 100 ]; }
title_bar_is_light() { [ "$(lightness 250 10)" -gt 180 ]; }
margin_is() { color_is 275 700 "$1"; }
something_is_copied() { [ "$(clipboard | wc -w)" -gt 5 ]; }
copies() {
    key ctrl+c
    something_is_copied
}
header() { seen 300 0 300 40; }
header_is() { [ "$(header)" = "$1" ]; }
header_is_another() { [ "$(header)" != "$1" ]; }
# theme NAME COLOUR: chooses the theme in the panel of the display options.
theme() {
    press "Display options" button
    settle
    choose "$1" button
    within 20 margin_is "$2"
    key Escape
    move 640 760
    settle
}

start_with 0
shelve 292
fill
move 640 760
picture library
key Home
key End
picture library-end
key Home
settle
key Return
reads "The Lantern Keeper"
fill
move 640 760
settle
for _ in $(seq 20); do turn Right; done
picture page

page_before=$(page_now)
press "7. Falcon and feather" item
within 60 page_is_another
move 640 760
picture chapter
turn F9
turn F9
theme "White on black" 000000
picture night
theme "The book’s own colours" ffffff

shown=$(header)
key F11
within 20 header_is_another "$shown"
picture full-screen
key F11
within 20 header_is "$shown"

move 340 260
button_down
move 500 300
move 640 400
button_up
within 20 copies
clipboard >"$pictures/copied.txt"

close_window
within 20 window_is Pagora
within 20 catalogue 'books[0].get("LastInd", 0) > 0'
settle

# The bars of a reader have the colours of its page, so the appearance is checked in the library.
echo dark >&9
within 20 title_bar_is_dark
picture dark
echo light >&9
within 20 title_bar_is_light
settle
close_window
within 20 ended
program=
