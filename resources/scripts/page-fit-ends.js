// Runs in the reader's script world of every page, before page-fit.js. Handles floats at the ends of columns.

// Handles floats at the end of a column. The engine shortens a line beside such a float, and may then move the line to the
// next column without making it longer again. The mark gives the float a smaller bottom margin: it ends with the last line
// that remains beside it.
var pagoraFreeLastLines = (function () {
    'use strict';

    // A freed line takes more words, which may move another line.
    const maxRounds = 4;
    // At most two lines are moved together, as widows.
    const linesAtEnd = 3;
    const maxNodes = 200;
    const isSeen = (rect) => rect.width > 0.5 && rect.height > 0.5;
    const boxesOf = (element) => Array.from(Element.prototype.getClientRects.call(element)).filter(isSeen);

    // Returns the lines of text after a float: those in its own column, and the first line in another column, with its
    // node.
    function linesAfter(strip, float, column) {
        const nodes = Document.prototype.createTreeWalker.call(document, strip.body, NodeFilter.SHOW_TEXT);
        nodes.currentNode = float;
        const range = new Range();
        const beside = [];
        for (let seen = 0, node = nodes.nextNode(); node && seen < maxNodes; node = nodes.nextNode(), ++seen) {
            if (Node.prototype.contains.call(float, node))
                continue;
            range.selectNodeContents(node);
            const rects = Array.from(range.getClientRects()).filter(isSeen);
            const first = rects.find((rect) => pagoraColumnOf(strip, rect) !== column);
            beside.push(...rects.filter((rect) => pagoraColumnOf(strip, rect) === column));
            if (first)
                return { beside, first, node };
        }
        return { beside };
    }

    // Returns the box of a float that reaches the last lines of its column; null for other elements.
    function boxAtEnd(strip, float, { styleOf, pixels, containerOf }) {
        const style = styleOf(float);
        const box = style.float === 'none' ? null : boxesOf(float).pop();
        if (!box)
            return null;
        const text = styleOf(containerOf(float));
        const line = pixels(text.lineHeight) || 1.4 * pagoraFontSize(text);
        const end = Element.prototype.getBoundingClientRect.call(strip.body).top + strip.paddingTop + strip.height;
        return box.bottom + pixels(style.marginBottom) > end - linesAtEnd * line ? box : null;
    }

    // Returns whether the float's block formatting context contains the node.
    function shapes(float, node, { styleOf }) {
        let around = float.parentElement;
        while (around && !Node.prototype.contains.call(around, node)) {
            const style = styleOf(around);
            if (style.float !== 'none' || style.overflow !== 'visible' || !/^(?:block|inline|list-item)$/.test(style.display)
                || /absolute|fixed/.test(style.position))
                return false;
            around = around.parentElement;
        }
        return true;
    }

    // Returns the bottom margin with which the float ends above the first line of the next column; null if that line is
    // not shortened.
    function marginOf(strip, float, tools) {
        const box = boxAtEnd(strip, float, tools);
        if (!box)
            return null;
        const column = pagoraColumnOf(strip, box);
        const { beside, first, node } = linesAfter(strip, float, column);
        if (!first || pagoraColumnOf(strip, first) !== column + 1 || !shapes(float, node, tools))
            return null;
        // A block that begins in the next column was laid out there.
        if (!boxesOf(tools.containerOf(node)).some((rect) => pagoraColumnOf(strip, rect) === column))
            return null;
        const shift = strip.rightToLeft ? -strip.step : strip.step;
        const isShort = tools.styleOf(float).float === 'left'
            ? first.left - shift > box.right - 1 : first.right - shift < box.left + 1;
        const middle = (rect) => (rect.top + rect.bottom) / 2;
        return isShort ? Math.min(0, Math.max(box.top, ...beside.map(middle)) - box.bottom) : null;
    }

    const isWithin = (one, other) => Node.prototype.contains.call(one, other) || Node.prototype.contains.call(other, one);
    const overlap = (one, other) => Math.min(one.right, other.right) - Math.max(one.left, other.left) > 1
        && Math.min(one.bottom, other.bottom) - Math.max(one.top, other.top) > 1;

    // Returns whether text or another float overlaps the float, which has moved.
    function isCovered(strip, float, candidates) {
        const box = boxesOf(float).pop();
        return box && (linesAfter(strip, float, pagoraColumnOf(strip, box)).beside.some((rect) => overlap(rect, box))
            || candidates.some((other) => !isWithin(other, float) && boxesOf(other).some((each) => overlap(each, box))));
    }

    return (strip, floats, tools, moveAll) => {
        const candidates = [...floats, ...document.images];
        const margins = new Map();
        const free = (later) => {
            for (const float of candidates) {
                const margin = marginOf(strip, float, tools);
                if (margin === null || margin >= margins.get(float))
                    continue;
                margins.set(float, margin);
                later.push([float, 'ends', { ends: margin.toFixed(2) + 'px' }]);
            }
        };
        const layOutAnew = () => {
            pagoraLayOutAnew(strip.body);
            moveAll();
        };
        for (let round = 0; round < maxRounds && tools.step(free); ++round)
            layOutAnew();
        let covered = [];
        do {
            covered = Array.from(margins.keys()).filter((float) => isCovered(strip, float, candidates));
            for (const float of covered) {
                margins.delete(float);
                Element.prototype.removeAttribute.call(float, 'data-pagora-ends');
            }
            if (covered.length)
                layOutAnew();
        } while (covered.length);
    };
})();
