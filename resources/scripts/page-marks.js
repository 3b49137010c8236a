// Runs in an isolated script world of every page, before the page has any content. Paints the user's marks, returns the
// selected and the shown text, and reports presses on marks. Places are those of page-find.js. Painting changes neither
// the page's nodes nor its layout.
//
// When the engine draws a line, it compares the line with each range of each registered highlight and looks up a style for
// each highlight. Therefore only marks near the shown page are registered, and only their colours. The engine also draws
// and caches up to a page in both directions. The marks there are registered before, so that a page turn draws nothing
// twice.

var pagoraMarks = (function () {
    'use strict';

    const { textIndex, actualStart, rangeAt, rangeOf, boxOf, pageOffsetOf } = pagoraFind.text;
    // The maximum number of registered marks. Above the second number, only those of one page on each side are
    // registered.
    const maxRegistered = 1000;
    const maxBeside = 64;
    const maxPagesBeside = 3;
    // Milliseconds from a page turn until the marks of the next pages are registered.
    const idleTime = 250;
    const bodyOf = Object.getOwnPropertyDescriptor(Document.prototype, 'body').get;
    const blanks = /[ \t\n\f\r]+/g;
    const unitsIn = (text) => text.replace(blanks, '').length;
    const post = (text) => window.webkit.messageHandlers.pagora.postMessage(pagoraLoad + ' ' + text);

    // The marks of the chapter in the order of their starts. The range of each is created on request.
    let marks = [];
    // For each mark, the mark with the latest end among those up to it.
    let reaching = [];
    // The registered marks, and the part of the strip to which they belong.
    let registered = [];
    const nothing = { near: Infinity, far: -Infinity };
    let covered = nothing;
    // The start of the shown page on the strip.
    let shownAt = 0;
    let timer = 0;

    // Returns the place of a position in the page.
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

    // Returns the first place on a page that starts at this offset, or after it.
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

    function boxesOf(mark) {
        return mark.range ? Array.prototype.filter.call(mark.range.getClientRects(), (box) => box.height > 0) : [];
    }

    // Returns the distance of a mark's character along the strip. For invisible text it is that of the element around
    // it. Cached until the layout changes.
    let isRightToLeft = false;
    function placeAlong(place, isEnd) {
        const range = rangeAt(place, place + 1);
        const box = range && boxOf(range);
        if (!box)
            return -1;
        return pagoraAlong(isRightToLeft ? innerWidth - (isEnd ? box.left : box.right) : (isEnd ? box.right : box.left));
    }
    function startAlong(mark) {
        if (mark.startAlong === undefined)
            mark.startAlong = placeAlong(mark.start, false);
        return mark.startAlong;
    }
    function endAlong(mark) {
        if (mark.endAlong === undefined)
            mark.endAlong = placeAlong(mark.end - 1, true);
        return mark.endAlong;
    }
    function forgetLayout() {
        const body = bodyOf.call(document);
        isRightToLeft = !!body && getComputedStyle(body).direction === 'rtl';
        for (const mark of marks)
            mark.startAlong = mark.endAlong = undefined;
        covered = nothing;
    }

    // Returns the first index from `low` on for which the test holds. It must hold for all later ones as well.
    function firstIndex(low, test) {
        let high = marks.length;
        while (low < high) {
            const middle = (low + high) >> 1;
            if (test(middle))
                high = middle;
            else
                low = middle + 1;
        }
        return low;
    }

    function withRanges(some) {
        for (const mark of some) {
            if (mark.range === undefined)
                mark.range = rangeAt(mark.start, mark.end);
        }
        return some.filter((mark) => mark.range);
    }

    // Returns the part of the strip that the shown page occupies, with the given numbers of pages before and after it.
    // A fixed page is visible as a whole.
    function partOfStrip(before, after) {
        if (!pagoraLaysOut)
            return { near: 0, far: 0 };
        const near = pagoraAlong(0);
        return { near: near - before * innerWidth, far: near + (after + 1) * innerWidth };
    }
    // Lengths are rounded by less than a pixel.
    const isCovered = (part) => part.near > covered.near - 1 && part.far < covered.far + 1;

    function marksIn({ near, far }) {
        if (!pagoraLaysOut)
            return marks.slice(0, maxRegistered);
        // Marks that begin before the part may reach into it.
        const reaches = firstIndex(0, (index) => endAlong(reaching[index]) > near);
        const begins = firstIndex(reaches, (index) => startAlong(marks[index]) >= near);
        const ends = firstIndex(begins, (index) => startAlong(marks[index]) >= far);
        return marks.slice(reaches, begins).filter((mark) => endAlong(mark) > near).concat(marks.slice(begins, ends));
    }

    function registerMarksIn(part) {
        let some = marksIn(part);
        covered = part;
        if (some.length > maxRegistered) {
            covered = partOfStrip(0, 0);
            some = marksIn(covered).slice(0, maxRegistered);
        }
        some = withRanges(some);
        const kept = new Set(some);
        const before = new Set(registered);
        for (const mark of registered) {
            if (!kept.has(mark))
                mark.names.forEach((name) => pagoraHighlights.remove(name, mark.range));
        }
        for (const mark of some) {
            if (!before.has(mark))
                mark.names.forEach((name) => pagoraHighlights.add(name, mark.range));
        }
        registered = some;
    }

    // Registers the marks on both sides of the shown page.
    function update() {
        clearTimeout(timer);
        timer = 0;
        const page = partOfStrip(0, 0);
        let pages = maxPagesBeside;
        while (pages > 1 && marksIn(partOfStrip(pages, pages)).length > maxBeside)
            --pages;
        registerMarksIn(partOfStrip(pages, pages));
        shownAt = page.near;
    }

    // Called after a page turn. The engine now draws the new page and the one ahead; the one behind is already drawn.
    // The other marks are registered when the page is idle.
    function follow() {
        const page = partOfStrip(0, 0);
        if (!marks.length || !isCovered(page))
            return update();
        const ahead = page.near < shownAt ? partOfStrip(1, 0) : partOfStrip(0, 1);
        shownAt = page.near;
        if (!isCovered(ahead))
            registerMarksIn(ahead);
        if (isCovered(partOfStrip(2, 2)))
            return;
        clearTimeout(timer);
        timer = setTimeout(update, idleTime);
    }

    // The event is sent before the page is drawn in its new place.
    window.addEventListener('scroll', (event) => {
        if (event.target === document)
            follow();
    }, { capture: true, passive: true });

    const keyOf = ({ number, start, end, color, hasNote }) => [number, start, end, color, hasNote].join(' ');
    const isWithin = (box, x, y) => x >= box.left && x <= box.right && y >= box.top && y <= box.bottom;

    // Returns the mark at a point of the page; the shortest if there are several.
    function markAt(x, y) {
        let found = null;
        for (const mark of registered) {
            if ((!found || mark.end - mark.start < found.end - found.start)
                && boxesOf(mark).some((box) => isWithin(box, x, y)))
                found = mark;
        }
        return found;
    }

    // Reports a press on the mark. Returns whether a line of it is on the page.
    function tell(mark) {
        const box = boxesOf(mark).find((line) => line.right > 0 && line.left < innerWidth);
        if (box)
            post(['mark', mark.number, box.left, box.top, box.width, box.height].join(' '));
        return !!box;
    }

    window.addEventListener('click', (event) => {
        const selection = window.getSelection();
        const isLink = event.target instanceof Element && event.target.closest('a, button, input, select, textarea');
        if (!event.isTrusted || event.button !== 0 || isLink || (selection && !selection.isCollapsed))
            return;
        const mark = markAt(event.clientX, event.clientY);
        if (mark)
            tell(mark);
    }, true);

    return {
        // Each mark is an array: number, start, end, text, colour, whether it has a note.
        paint(given) {
            const before = new Map(marks.map((mark) => [keyOf(mark), mark]));
            marks = [];
            for (const [number, start, end, text, color, hasNote] of given) {
                const actual = actualStart(start, text);
                if (actual < 0)
                    continue;
                const names = (hasNote ? [color, 'note'] : [color]).map((name) => 'pagora-mark-' + name);
                const mark = { number, start: actual, end: actual + end - start, color, hasNote, names };
                marks.push(before.get(keyOf(mark)) || mark);
                before.delete(keyOf(mark));
            }
            marks.sort((one, other) => one.start - other.start);
            reaching = [];
            for (const mark of marks) {
                const before = reaching[reaching.length - 1];
                reaching.push(before && before.end > mark.end ? before : mark);
            }
            forgetLayout();
            update();
        },
        // Called for a page whose layout has changed.
        update() {
            forgetLayout();
            update();
        },
        // Returns the start, end and characters of the selection; empty if nothing is selected.
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
        // Returns the first place of the shown page, times 2^26, plus the first place after the page.
        pageSpan() {
            const offset = window.pageXOffset;
            const end = Math.max(0, bodyOf.call(document).scrollWidth - innerWidth);
            const start = placeOnPage(offset);
            const next = offset >= end ? textIndex().text.length + 1 : placeOnPage(offset + innerWidth);
            return start * 0x4000000 + next;
        },
        // Reports a press on the mark with that number. Returns whether it is on the page.
        press(number) {
            const pressed = marks.find((mark) => mark.number === number);
            return !!pressed && tell(pressed);
        },
    };

})();
