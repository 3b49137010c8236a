# shellcheck shell=bash
# Drags files onto the running program, for scripts that have sourced drive.sh. The library window is in the left part of the
# screen, the source of the drag is on the right.

library_width=960
library_window=
source_window=
dragging=
nudge=1

# Moves the library window to a known position.
place_library() {
    local height
    height=$(screen_size | cut -d' ' -f2)
    library_window=$(active_window)
    take_place 0 0 "$library_width" "$height"
    settle
}

# Succeeds if another window of the program, such as an alert, is active.
library_has_a_window_over_it() { another_window "$library_window"; }

# bring_forward TITLE: gives the window the keyboard focus.
bring_forward() {
    within 20 activate "$1"
    within 20 window_is "$1"
}

# offer_files FILE...: sets the files of the next drag; see tests/application/drag-source.cpp.
offer_files() {
    end_files
    "$programs/drag-source" "$@" &
    source_window=$!
    within 20 put "Drag Source" 1020 60
    settle
}

# The area of the drop target's label.
drop_label() { seen 280 760 400 70; }
# Moves the pointer before each check, because the toolkit may have merged the previous movements into one.
drop_label_changed() {
    nudge $((nudge = -nudge)) 0
    [ "$(drop_label)" != "$dragging" ]
}

# Starts the drag and holds the files over the library.
hold_files() {
    dragging=$(drop_label)
    move 1120 120
    button_down
    local step
    for step in $(seq 16); do
        move $((1120 - step * 42)) $((120 + step * 20))
        sleep 0.03
    done
}

release_files() { button_up; }

# Drops the offered files when the library accepts them.
drop_files() {
    hold_files
    within 20 drop_label_changed
    settle
    drop_label_changed || fail "the library no longer shows that it takes the files"
    release_files
}

end_files() {
    if [ -n "$source_window" ]; then
        kill "$source_window" 2>/dev/null || true
        wait "$source_window" 2>/dev/null || true
    fi
    source_window=
}
