// Runs in an isolated script world of every page, before the page has any content. Paints the user's marks, returns the
// selected and the shown text, and reports presses on marks. Places are those of page-find.js. Painting changes neither
// the page's nodes nor its layout.

var pagoraMarks = (function () {
    'use strict';

    const { textIndex, rangeOf, boxOf, pageOffsetOf } = pagoraFind.text;
    const colors = ['yellow', 'orange', 'pink', 'purple', 'blue', 'green'];
    const blanks = /[ \t\n\f\r]+/g;
    const unitsIn = (text) => text.replace(blanks, '').length;
    const post = (text) => window.webkit.messageHandlers.pagora.postMessage(pagoraLoad + ' ' + text);

    // The engine keeps painting a highlight that is removed from the registry, so highlights are emptied instead.
    const highlights = new Map(colors.concat('note').map((name) => [name, new Highlight()]));
    highlights.get('note').priority = 1;
    // The painted marks, in the order of `paint`.
    let painted = [];

    // The place of a position in the page.
    function placeOf(container, offset) {
        const { nodes, starts, text } = textIndex();
        const position = new Range();
        position.setStart(container, offset);
        let low = 0;
        let high = nodes.length;
        while (low < high) {
            const middle = (low + high) >> 1;
            if (position.comparePoint(nodes[middle], 0) >= 0)
                high = middle;
            else
                low = middle + 1;
        }
        const before = nodes[low - 1];
        if (before && before === container)
            return starts[low - 1] + unitsIn(before.data.slice(0, offset));
        return low < nodes.length ? starts[low] : text.length;
    }

    // The first place of a page at this offset or after it.
    function placeOnPage(offset) {
        let low = 0;
        let high = textIndex().text.length;
        while (low < high) {
            const middle = (low + high) >> 1;
            const range = rangeOf([middle, middle + 1, '']);
            if (range && pageOffsetOf(boxOf(range)) < offset)
                low = middle + 1;
            else
                high = middle;
        }
        return low;
    }

    const isWithin = (box, x, y) => x >= box.left && x <= box.right && y >= box.top && y <= box.bottom;

    // The number of the shortest mark at a point of the page; -1 if there is none.
    function markAt(x, y) {
        const caret = Document.prototype.caretRangeFromPoint.call(document, x, y);
        const place = caret ? placeOf(caret.startContainer, caret.startOffset) : -1;
        let found = -1;
        painted.forEach(({ start, end, range }, index) => {
            if (place < start || place > end || (found >= 0 && painted[found].end - painted[found].start <= end - start))
                return;
            if (Array.prototype.some.call(range.getClientRects(), (box) => isWithin(box, x, y)))
                found = index;
        });
        return found;
    }

    function tell(index) {
        const box = Array.prototype.find.call(painted[index].range.getClientRects(),
            (line) => line.right > 0 && line.left < innerWidth && line.height > 0);
        if (box)
            post(['mark', painted[index].number, box.left, box.top, box.width, box.height].join(' '));
    }

    window.addEventListener('click', (event) => {
        const selection = window.getSelection();
        const isLink = event.target instanceof Element && event.target.closest('a, button, input, select, textarea');
        if (!event.isTrusted || event.button !== 0 || isLink || (selection && !selection.isCollapsed) || !painted.length)
            return;
        const index = markAt(event.clientX, event.clientY);
        if (index >= 0)
            tell(index);
    }, true);

    return {
        // Each mark is an array: number, start, end, text, colour, whether it has a note.
        paint(marks) {
            for (const [name, highlight] of highlights) {
                CSS.highlights.set('pagora-mark-' + name, highlight);
                highlight.clear();
            }
            painted = [];
            for (const [number, start, end, text, color, hasNote] of marks) {
                const range = rangeOf([start, end, text]);
                if (!range)
                    continue;
                const seen = placeOf(range.startContainer, range.startOffset);
                painted.push({ number, start: seen, end: seen + end - start, range });
                highlights.get(color).add(range);
                if (hasNote)
                    highlights.get('note').add(range);
            }
        },
        // The start, end and characters of the selection; empty if nothing is selected.
        selection() {
            const selection = window.getSelection();
            if (!selection || selection.isCollapsed || !selection.rangeCount)
                return '';
            const range = selection.getRangeAt(0);
            const start = placeOf(range.startContainer, range.startOffset);
            const end = placeOf(range.endContainer, range.endOffset);
            if (end <= start)
                return '';
            const units = textIndex().text.slice(start, end);
            const shown = range.toString().replace(/\s+/g, ' ').trim();
            return [start, end, shown.replace(blanks, '') === units ? shown : units].join(' ');
        },
        clearSelection() {
            const selection = window.getSelection();
            if (selection)
                selection.removeAllRanges();
        },
        // The first place of the shown page, times 2^26, plus the first place after the page.
        pageSpan() {
            const offset = window.pageXOffset;
            const end = Math.max(0, bodyLength() - innerWidth);
            const start = placeOnPage(offset);
            const next = offset >= end ? textIndex().text.length + 1 : placeOnPage(offset + innerWidth);
            return start * 0x4000000 + next;
        },
        // Reports a press on the mark with that number. Returns whether it is on the page.
        press(number) {
            const index = painted.findIndex((mark) => mark.number === number);
            if (index >= 0)
                tell(index);
            return index >= 0;
        },
    };

    function bodyLength() {
        return Object.getOwnPropertyDescriptor(Document.prototype, 'body').get.call(document).scrollWidth;
    }
})();
