// Runs in the reader's script world of every page, before the page has any content. Locates places in the text, returns
// their pages and highlights them. A place is the number of UTF-16 units of the body's text before it, without white
// space; the program counts in the same way in the file. Highlights change neither the nodes nor the layout.

var pagoraFind = (function () {
    'use strict';

    const bodyOf = Object.getOwnPropertyDescriptor(Document.prototype, 'body').get;
    const rectsOf = Element.prototype.getClientRects;
    // Elements that are not part of the text.
    const skipped = /^(?:annotation|desc|head|metadata|noscript|rp|rt|script|style|template|title)$/i;
    const blanks = /[ \t\n\f\r]+/g;
    const isBlank = (unit) => unit === 32 || (unit >= 9 && unit <= 13 && unit !== 11);

    // The text nodes of the body with the place at which each starts, and their whole text without white space. Created
    // on request, and again after the page has changed.
    let index = null;
    const changes = new MutationObserver(() => { index = null; });

    function textIndex() {
        const body = bodyOf.call(document);
        if (changes.takeRecords().length)
            index = null;
        if (index && index.body === body)
            return index;
        index = { body, nodes: [], starts: [], text: '' };
        if (!body)
            return index;
        const walker = Document.prototype.createTreeWalker.call(document, body,
            NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT | NodeFilter.SHOW_CDATA_SECTION,
            (node) => (node.nodeType === Node.ELEMENT_NODE && skipped.test(node.localName)
                ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT));
        const texts = [];
        let length = 0;
        while (walker.nextNode()) {
            const node = walker.currentNode;
            if (node.nodeType === Node.ELEMENT_NODE)
                continue;
            const text = node.data.replace(blanks, '');
            if (!text)
                continue;
            index.nodes.push(node);
            index.starts.push(length);
            texts.push(text);
            length += text.length;
        }
        index.text = texts.join('');
        changes.disconnect();
        changes.observe(body, { childList: true, characterData: true, subtree: true });
        return index;
    }

    // Returns the text node at a place and the offset in it.
    function nodeAt(place) {
        const { nodes, starts } = textIndex();
        let low = 0;
        let high = nodes.length;
        while (high - low > 1) {
            const middle = (low + high) >> 1;
            if (starts[middle] <= place)
                low = middle;
            else
                high = middle;
        }
        const node = nodes[low];
        if (!node)
            return null;
        let left = place - starts[low];
        const data = node.data;
        for (let offset = 0; offset < data.length; ++offset) {
            if (isBlank(data.charCodeAt(offset)))
                continue;
            if (left-- === 0)
                return { node, offset };
        }
        return null;
    }

    // Returns the place of a text that the program found in the file. If the page differs from the file, it is the
    // nearest place with the same text; -1 if there is none.
    function actualStart(start, text) {
        const whole = textIndex().text;
        const wanted = text.replace(blanks, '');
        if (whole.startsWith(wanted, start))
            return start;
        const after = whole.indexOf(wanted, start);
        const before = whole.lastIndexOf(wanted, start);
        if (after < 0 || before < 0)
            return Math.max(after, before);
        return after - start < start - before ? after : before;
    }

    function rangeAt(start, end) {
        const first = nodeAt(start);
        const last = nodeAt(end - 1);
        if (!first || !last)
            return null;
        const range = new Range();
        range.setStart(first.node, first.offset);
        range.setEnd(last.node, last.offset + 1);
        return range;
    }

    function rangeOf([start, end, text]) {
        const actual = actualStart(start, text);
        return actual < 0 ? null : rangeAt(actual, actual + end - start);
    }

    const firstBox = (boxes) => Array.prototype.find.call(boxes, (box) => box.height > 0);

    // Returns the first box of the range, or of the nearest visible element around it.
    function boxOf(range) {
        let box = firstBox(range.getClientRects());
        for (let element = range.startContainer.parentElement; !box && element; element = element.parentElement)
            box = firstBox(rectsOf.call(element));
        return box;
    }

    // Returns the distance of the page with the box from the start of the strip.
    function pageOffsetOf(box) {
        if (!box)
            return -1;
        const body = bodyOf.call(document);
        const isRightToLeft = getComputedStyle(body).direction === 'rtl';
        const across = pagoraAlong(isRightToLeft ? innerWidth - box.right : box.left);
        const end = body.scrollWidth - innerWidth;
        return Math.max(0, Math.min(Math.floor((across + 1) / innerWidth) * innerWidth, end));
    }

    function paint(name, ranges) {
        pagoraHighlights.clear(name);
        for (const range of ranges)
            pagoraHighlights.add(name, range);
    }

    return {
        // Used by the scripts that run after this one.
        text: { textIndex, actualStart, rangeAt, rangeOf, boxOf, pageOffsetOf },
        // Each match is [start, end, text]. `current` is the selected match, or null.
        paint(matches, current) {
            const isThere = (range) => range;
            paint('pagora-found', matches.map(rangeOf).filter(isThere));
            paint('pagora-current', [current && rangeOf(current)].filter(isThere));
        },
        clear() {
            pagoraHighlights.clear('pagora-found');
            pagoraHighlights.clear('pagora-current');
        },
        // Returns the offset of the page on which a match begins; -1 if the page does not have the text.
        offsetOfText(match) {
            const range = rangeOf(match);
            return range ? pageOffsetOf(boxOf(range)) : -1;
        },
        // Returns the number of matches before the shown page. The matches are in the order of the text.
        countBefore(matches) {
            const x = window.pageXOffset;
            const isBefore = (match) => {
                const range = rangeOf(match);
                return range && pageOffsetOf(boxOf(range)) < x;
            };
            let low = 0;
            let high = matches.length;
            while (low < high) {
                const middle = (low + high) >> 1;
                if (isBefore(matches[middle]))
                    low = middle + 1;
                else
                    high = middle;
            }
            return low;
        },
        // Returns the offset of the page on which an element begins; -1 if there is no such element.
        offsetOfElement(id) {
            const element = Document.prototype.getElementById.call(document, id);
            if (!element)
                return -1;
            const range = new Range();
            range.selectNodeContents(element);
            return pageOffsetOf(firstBox(range.getClientRects()) || firstBox(rectsOf.call(element)));
        },
    };
})();
