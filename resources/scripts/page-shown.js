// Runs in the reader's script world of every page, after page-start.js. Returns the text that a page shows, for
// assistive technology.

// Returns the document's title in one line, then the visible text, with one line for each paragraph.
var pagoraShownText = (function () {
    'use strict';

    const bodyOf = Object.getOwnPropertyDescriptor(Document.prototype, 'body').get;

    const maxTextLength = 20000;
    const maxLineLength = 200;
    const probeStep = 6;

    // Returns the first of these points that has text, as an empty range.
    function textAt(points) {
        for (const [x, y] of points) {
            const place = Document.prototype.caretRangeFromPoint.call(document, x, y);
            if (place && place.startContainer.nodeType === Node.TEXT_NODE)
                return place;
        }
        return null;
    }

    // Returns the text from the start of the page to its end; a page without columns is returned as a whole.
    function shownText() {
        const strip = pagoraFit(pagoraMeasureStrip);
        const body = bodyOf.call(document);
        if (!strip)
            return body ? body.innerText : '';
        const [near, far] = [strip.paddingLeft + 1, innerWidth - strip.paddingRight - 2];
        const [start, end] = strip.rightToLeft ? [far, near] : [near, far];
        const heights = [];
        for (let y = strip.paddingTop + 2; y < strip.paddingTop + strip.height; y += probeStep)
            heights.push(y);
        const first = textAt(heights.map((y) => [start, y]));
        const last = textAt(heights.reverse().map((y) => [end, y]));
        if (!first || !last)
            return '';
        return textBetween(first.startContainer, endOfLine(first, -1), last.startContainer, endOfLine(last, 1));
    }

    // Returns how far the line at that place extends in the same node, backwards or forwards. In text of both
    // directions, the edge of a line may be in the middle of its text.
    function endOfLine(place, step) {
        const range = new Range();
        const { startContainer: node, startOffset: offset } = place;
        const boxAt = (index) => {
            range.setStart(node, index);
            range.setEnd(node, index + 1);
            return range.getClientRects()[0];
        };
        const before = step < 0 ? 1 : 0;
        const start = boxAt(Math.min(offset, node.length - 1));
        let end = offset;
        for (let i = 0; start && i < maxLineLength; ++i, end += step) {
            const box = end - before >= 0 && end - before < node.length ? boxAt(end - before) : null;
            if (!box || Math.abs(box.top - start.top) > box.height / 2 || box.right < 0 || box.left > innerWidth)
                break;
        }
        return end;
    }

    const isInline = (element) => getComputedStyle(element).display.startsWith('inline');

    function blockAround(node) {
        let element = node.parentElement;
        while (element && isInline(element))
            element = element.parentElement;
        return element;
    }

    // Returns the text from one place to another, with one line for each block.
    function textBetween(first, firstOffset, last, lastOffset) {
        const nodes = Document.prototype.createTreeWalker.call(
            document, bodyOf.call(document), NodeFilter.SHOW_TEXT);
        nodes.currentNode = first;
        let text = '';
        let block = null;
        for (let node = first; node && text.length < maxTextLength; node = nodes.nextNode()) {
            const around = blockAround(node);
            if (block && around !== block)
                text += '\n';
            block = around;
            text += node.data.slice(node === first ? firstOffset : 0, node === last ? lastOffset : undefined)
                .replace(/\s+/g, ' ');
            if (node === last)
                break;
        }
        return text;
    }

    return () => {
        const plain = (text) => text.replace(/[^\S\n]+/g, ' ').replace(/ ?\n[\n ]*/g, '\n').trim();
        return document.title.replace(/\s+/g, ' ').trim() + '\n' + plain(shownText().slice(0, maxTextLength));
    };
})();
