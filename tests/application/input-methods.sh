#!/usr/bin/env bash
# Keys turn pages and open and close panels, and text is typed, with each input method: IBus and dead keys.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

has_ibus() { ibus list-engine && ibus engine xkb:us::eng; }
# The top of the contents, with the focus ring of the search field.
field_now() { seen 0 40 400 140; }
field_is_another() { [ "$(field_now)" != "$field_before" ]; }
search_is() { key ctrl+a ctrl+c && [ "$(clipboard)" = "$1" ]; }

# read_through TEXT KEY...: reads a book by keyboard. The keys, typed into the search field, produce the text.
read_through() {
    local text=$1
    shift
    start
    within 60 window_is Pagora
    settle
    key Right
    read_first "The Lantern Keeper"
    turn Right
    turn space
    turn Left
    turn End
    turn Home
    field_before=$(field_now)
    key ctrl+f
    within 20 field_is_another
    settle
    key "$@"
    within 20 search_is "$text"
    key Escape
    settle
    turn Right
    key ctrl+w
    within 20 window_is Pagora
    key F10
    settle
    picture "menu-${GTK_IM_MODULE:-plain}"
    key Escape
    settle
    quit
}

start_with 01 02
quit

ibus-daemon --daemonize --replace --xim --panel disable --emoji-extension disable
within 30 has_ibus
export GTK_IM_MODULE=ibus
read_through "pe" p e
ibus exit

export GTK_IM_MODULE=simple
setxkbmap us -variant intl
read_through "pé" p dead_acute e
