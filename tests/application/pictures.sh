#!/usr/bin/env bash
# Pictures in objects are pressed with the pointer: one that the object shows, and one that is the fallback of an object
# that cannot be shown. Each is shown in the size of the window until Escape is pressed.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

convert -size 300x200 xc:'#e01010' "$HOME/red.png"
python3 - "$HOME" <<'END'
import sys
import zipfile

home = sys.argv[1]
words = "<p>" + "Some words below the picture. " * 40 + "</p>"
objects = ['<object data="red.png" type="image/png">No picture</object>',
           '<object data="shapes.xml" type="application/x-shapes"><img src="red.png" alt="Red"/></object>']
ids = [f"c{number}" for number in range(len(objects))]
with zipfile.ZipFile(f"{home}/objects.epub", "w") as book:
    book.writestr("mimetype", "application/epub+zip")
    book.writestr("META-INF/container.xml",
                  '<container xmlns="urn:oasis:names:tc:opendocument:xmlns:container" version="1.0"><rootfiles>'
                  '<rootfile full-path="a.opf" media-type="application/oebps-package+xml"/></rootfiles></container>')
    items = "".join(f'<item id="{each}" href="{each}.xhtml" media-type="application/xhtml+xml"/>' for each in ids)
    spine = "".join(f'<itemref idref="{each}"/>' for each in ids)
    book.writestr("a.opf", '<package xmlns="http://www.idpf.org/2007/opf" version="2.0"><metadata '
                  'xmlns:dc="http://purl.org/dc/elements/1.1/"><dc:title>Objects</dc:title></metadata><manifest>'
                  f'{items}<item id="p" href="red.png" media-type="image/png"/></manifest><spine>{spine}</spine></package>')
    for each, shown in zip(ids, objects):
        book.writestr(f"{each}.xhtml", '<html xmlns="http://www.w3.org/1999/xhtml"><head><title>Chapter</title></head>'
                      f"<body><div>{shown}</div>{words}</body></html>")
    book.write(f"{home}/red.png", "red.png")
END

# Prints the X, Y, WIDTH and HEIGHT of the red area of the screen.
red() {
    local width height
    read -r width height < <(screen_size)
    pixels 0 0 "$width" "$height" | convert ppm:- -fuzz 1% -fill black +opaque '#e01010' -format '%@\n' info:- |
        sed 's/\([0-9]*\)x\([0-9]*\)+\([0-9]*\)+\([0-9]*\)/\3 \4 \1 \2/'
}
red_height() { red | cut -d' ' -f4; }
is_small() { [ "$(red_height)" -gt 100 ] && [ "$(red_height)" -lt 400 ]; }
is_large() { [ "$(red_height)" -gt 600 ]; }

start "$HOME/objects.epub"
within 60 window_is "Pagora - Objects"
fill
for chapter in 1 2; do
    within 60 is_small
    settle
    read -r x y width height < <(red)
    click $((x + width / 2)) $((y + height / 2))
    within 20 is_large
    picture "object-$chapter"
    key Escape
    within 20 is_small
    key End
    settle
    key Right
    settle
done
key ctrl+q
within 20 ended
program=
