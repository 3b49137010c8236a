#!/usr/bin/env bash
# A book is searched while words are typed, F3 shows the results, Alt+Left goes back, and a page is opened by its
# number, all by keyboard.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

# painted: succeeds if the colour of the current match is on the page.
painted() {
    pixels 250 60 1000 640 | python3 -c "
import sys
data = sys.stdin.buffer.read()
pixels = data[-1000 * 640 * 3:]
sys.exit(bytes((255, 184, 77)) not in pixels)"
}
not_painted() { ! painted; }
pane() { seen 0 90 190 500; }
pane_is_another() { [ "$(pane)" != "$pane_before" ]; }
pane_is_as_before() { [ "$(pane)" = "$pane_before" ]; }

start_with 0
fill
key Home
settle
key Return
reads "The Lantern Keeper"
fill
move 640 790
settle
picture contents
contents=$(pane)

pane_before=$contents
key ctrl+f l a n t e r n
within 20 pane_is_another
picture results
key F3
within 20 painted
picture match
key F3
key F3
settle
picture another-match
key shift+F3
settle
within 20 painted

# The list of results by keyboard.
key ctrl+f
settle
key Down
key Down
key Down
key Return
settle
within 20 painted
picture chosen

key Escape
within 20 not_painted
pane_before=$contents
within 20 pane_is_as_before
picture ended

# Goes to the end by its number, and back again.
page_before=$(page_now)
left=$page_before
key ctrl+g
settle
picture go-to
key 9 0 Return
within 20 page_is_another
settle
picture ninety
page_is_left() { [ "$(page_now)" = "$left" ]; }
key alt+Left
within 20 page_is_left
settle
picture back
key ctrl+w
within 20 window_is Pagora
quit
