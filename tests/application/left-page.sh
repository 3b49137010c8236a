#!/usr/bin/env bash
# The last page shown of a book is visible before the page engine has drawn anything: its processes are stopped
# meanwhile. Keys are handled in order when they continue, and a book can be closed without them.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"

# A part of the page that the loading indicator does not cover.
page_now() { seen 330 120 380 250; }

# The processes that draw pages, below the program.
engine_processes() {
    ps -eo pid=,ppid=,comm= | awk -v "ancestor=$program" '
        { parent[$1] = $2; name[$1] = $3 }
        END {
            for (process in parent) {
                above = process
                while (above > 1 && above != ancestor) above = parent[above]
                if (above == ancestor && name[process] ~ /^WebKitWebProces/) print process
            }
        }'
}
engine_is_there() { [ -n "$(engine_processes)" ]; }
stop_engine() {
    within 20 engine_is_there
    # The next reader window has been prepared by then.
    settle
    # shellcheck disable=SC2046
    kill -STOP $(engine_processes)
}
let_engine_go_on() {
    # shellcheck disable=SC2046
    kill -CONT $(engine_processes)
}
picture_is_kept() { [ -n "$(find "$HOME/.local/share/org.pagora.Pagora/pages" -name "*.page")" ]; }
page_is() { [ "$(page_now)" = "$1" ]; }
first_book() { double_press "The Lantern Keeper, Ada Marlow*" cell; }
leave() {
    key ctrl+w
    within 20 window_is Pagora
    within 20 picture_is_kept
}

start_with 0
fill
settle
first_book
move 640 845
reads "The Lantern Keeper"
first=$(page_now)
turn Right
second=$(page_now)
turn Right
left=$(page_now)
picture left
leave

stop_engine
first_book
move 640 845
within 10 page_is "$left"
save_screen "$pictures/before-the-engine.png"
window_is "Pagora - The Lantern Keeper" || fail "another book is open"
key Left Left Right
settle
page_is "$left" || fail "a key was answered before the page was there"
let_engine_go_on
within 60 page_is "$second"
turn Left
page_is "$first" || fail "the keys were not answered in order"
turn Right
leave

stop_engine
first_book
within 10 page_is "$second"
key ctrl+w
within 10 window_is Pagora
first_book
move 640 845
reads "The Lantern Keeper"
within 60 page_is "$second"

key ctrl+w
within 20 window_is Pagora
quit
