// Counts the faults of the pages of the shown chapter. Evaluated in the reader's script world, after page-glyphs.js.
// The result is lines of fields separated by tabs: first the numbers of pages and text lines, then a line for each kind
// of fault with its name, its count and some examples. The script scrolls to each page as the reader does and records
// the scroll positions. It then compares each box of the chapter with the edges of the columns and the pages.
(function () {
    'use strict';

    const body = document.body;
    // Reading the length of the strip completes the layout, as in the reader.
    void body.scrollWidth;
    const style = getComputedStyle(body);
    const pixels = (length) => parseFloat(length) || 0;
    const W = innerWidth;
    const H = innerHeight;
    const rightToLeft = style.direction === 'rtl';
    const paddingLeft = pixels(style.paddingLeft);
    const paddingRight = pixels(style.paddingRight);
    const start = rightToLeft ? paddingRight : paddingLeft;
    const top = pixels(style.paddingTop);
    const bottom = top + pixels(style.height);
    const gap = pixels(style.columnGap);

    // --- Pages -------------------------------------------------------------------------------------------------------

    const maxPages = 20000;

    // Returns the offsets at which the reader shows a page, turning forward from the first one.
    function turnedPages() {
        const offsets = [];
        window.scrollTo(0, 0);
        while (offsets.length < maxPages) {
            const X = window.pageXOffset;
            if (offsets.length && X <= offsets[offsets.length - 1])
                break;
            offsets.push(X);
            if (!(Math.trunc(X + W) < body.scrollWidth))
                break;
            window.scrollTo(Math.trunc(X + W), 0);
        }
        window.scrollTo(0, 0);
        return offsets;
    }

    const offsets = turnedPages();
    // Columns. Reading the length of the strip has completed the layout.
    const content = body.clientWidth - paddingLeft - paddingRight;
    const givenWidth = pixels(style.columnWidth);
    const fitting = givenWidth ? Math.max(1, Math.floor((content + gap) / (givenWidth + gap))) : Infinity;
    const columnsOfPage = Math.min(parseInt(style.columnCount, 10) || Infinity, fitting);
    // The engine rounds down to a 64th of a pixel. The reader's pages are whole views, the engine's as wide as their columns.
    const step = Math.floor((content + gap) / columnsOfPage * 64) / 64;
    const columnWidth = step - gap;
    const pageShare = columnsOfPage * step / W;

    // Returns the indices of the pages that show this offset of the strip.
    function pagesAt(along) {
        const pages = [];
        const guess = Math.max(0, Math.floor(along / W) - 1);
        along /= pageShare;
        for (let i = Math.min(guess, offsets.length - 1); i >= 0 && i < offsets.length && offsets[i] <= along; ++i) {
            if (along < offsets[i] + W)
                pages.push(i);
        }
        return pages;
    }

    // --- Faults ------------------------------------------------------------------------------------------------------

    const kinds = ['cut lines', 'cut boxes', 'unseen', 'shown twice', 'blank pages', 'lone headings', 'narrow runs',
        'long lines', 'broken words'];
    const counts = Object.fromEntries(kinds.map((kind) => [kind, 0]));
    const examples = Object.fromEntries(kinds.map((kind) => [kind, []]));
    const maxExamples = 3;

    function blame(kind, example) {
        ++counts[kind];
        if (examples[kind].length < maxExamples)
            examples[kind].push(example().replace(/\s+/g, ' ').trim().slice(0, 80));
    }

    // --- Boxes -------------------------------------------------------------------------------------------------------

    // Converts a client rectangle to the strip's own direction: it extends from `from` to `to`.
    function placed(rect) {
        const from = rightToLeft ? W - rect.right : rect.left;
        const column = Math.floor((from + Math.min(8, rect.width / 2) - start + gap / 2) / step);
        const columnStart = start + column * step;
        return { from, to: from + rect.width, top: rect.top, bottom: rect.bottom, column, columnStart,
            width: rect.width, height: rect.height };
    }

    const tolerance = 1;
    const sticksOutAlong = (box) => box.from < box.columnStart - tolerance
        || box.to > box.columnStart + columnWidth + tolerance;
    const sticksOutDown = (box) => box.top < top - tolerance || box.bottom > bottom + tolerance;

    const occupied = new Set();
    let lines = 0;

    // Counts a box that is shown on no page or on several pages.
    function look(box, example) {
        const across = (box.top + box.bottom) / 2;
        const pages = across >= 0 && across <= H ? pagesAt((box.from + box.to) / 2) : [];
        for (const page of pages)
            occupied.add(page);
        if (!pages.length)
            blame('unseen', example);
        else if (pages.length > 1)
            blame('shown twice', example);
    }

    // Cache of the properties that apply to all content of an element.
    const known = new Map();
    const farAway = 2000;

    const isInline = (own) => /^(?:inline|contents|ruby.*|math|inline math)$/.test(own.display);

    function about(element) {
        let result = known.get(element);
        if (result)
            return result;
        const own = getComputedStyle(element);
        const above = element === body || !element.parentElement ? null : about(element.parentElement);
        const inline = isInline(own);
        const isClipped = /absolute|fixed/.test(own.position)
            && (own.clip !== 'auto' || own.clipPath !== 'none' || (element.offsetWidth <= 1 && element.offsetHeight <= 1));
        const scrolls = (value) => value === 'auto' || value === 'scroll';
        result = {
            style: own,
            block: inline && above ? above.block : element,
            isHidden: (above && above.isHidden) || isClipped || own.opacity === '0'
                || pixels(own.textIndent) <= -farAway / 4,
            isInScroller: (above && above.isInScroller) || (element !== body
                && ((scrolls(own.overflowX) && element.scrollWidth > element.clientWidth)
                    || (scrolls(own.overflowY) && element.scrollHeight > element.clientHeight))),
        };
        known.set(element, result);
        return result;
    }

    // --- Glyphs ------------------------------------------------------------------------------------------------------

    // Returns whether the glyphs of a line, not only its line box, exceed the column.
    function glyphsAreCut(node, box, text) {
        const ink = pagoraGlyphs.inkOf(about(node.parentElement).style, box, text);
        const cut = (edge) => ink.top < edge - tolerance && ink.bottom > edge + tolerance;
        return !ink || cut(top) || cut(bottom) || ink.top >= bottom;
    }

    const { textOn, widthOf, withoutSpaces } = pagoraGlyphs;
    const range = new Range();

    // Returns whether anything but white space exceeds the column along the line.
    function charactersStickOut(node, box) {
        const { letterSpacing, hangingPunctuation, fontSize } = about(node.parentElement).style;
        const spacing = pixels(letterSpacing);
        // Hanging punctuation in the margin is intended.
        const hanging = /first/.test(hangingPunctuation) ? pixels(fontSize) : 0;
        const hangingAtEnd = /last|end/.test(hangingPunctuation) ? pixels(fontSize) : 0;
        for (let i = 0; i < node.length; ++i) {
            if (/\s/.test(node.data[i]))
                continue;
            range.setStart(node, i);
            range.setEnd(node, i + 1);
            for (const rect of range.getClientRects()) {
                const own = placed(rect);
                if (Math.abs(own.top - box.top) < 1 && own.from >= box.from - 1 && own.to <= box.to + 1 && own.width > 0
                    && (own.from < box.columnStart - tolerance - hanging || own.to - spacing > box.columnStart + columnWidth + tolerance + hangingAtEnd))
                    return true;
            }
        }
        return false;
    }

    // --- Lines -------------------------------------------------------------------------------------------------------

    const narrowest = 10;
    const longest = 90;
    const minRun = 3;

    // The current line: parts of the same block at the same height.
    let line = null;
    // The number of preceding narrow lines that end without a forced break.
    let run = 0;
    let runText = '';

    function endRun() {
        if (run >= minRun)
            blame('narrow runs', () => runText);
        run = 0;
        runText = '';
    }

    // `isTold` is true if the line ends with a forced break or with its block.
    function endLine(isTold) {
        if (!line)
            return;
        ++lines;
        const { node, rect, characters, pictures } = line;
        if (characters > longest)
            blame('long lines', () => `${Math.round(characters)}: ${node.textContent}`);
        if (characters + pictures < narrowest && (run || !isTold)) {
            ++run;
            runText += (runText ? ' / ' : '') + (node.nodeType === Node.TEXT_NODE ? textOn(node, rect) : node.localName);
        } else
            endRun();
        if (isTold)
            endRun();
        line = null;
    }

    // `rect` is the part's box in the view, `pictures` the width of pictures in characters.
    function addToLine(node, rect, block, box, characters, pictures = 0) {
        const isSame = line && line.block === block && line.column === box.column
            && Math.min(line.bottom, box.bottom) - Math.max(line.top, box.top)
                > Math.min(line.bottom - line.top, box.height) / 2;
        if (isSame) {
            line.characters += characters;
            line.pictures += pictures;
            return;
        }
        endLine(!line || line.block !== block);
        line = { node, rect, block, column: box.column, top: box.top, bottom: box.bottom, characters, pictures };
    }

    // --- Headings ----------------------------------------------------------------------------------------------------

    // The last heading, until other content follows: its end, and whether it begins its column.
    let heading = null;
    let lastColumn = -1;

    const headingOf = (node) => node.parentElement.closest('h1, h2, h3, h4, h5, h6');
    // Returns whether the book forces a column break between the two.
    function isParted(from, to) {
        const forces = (value) => /column|page|left|right|always|recto|verso/.test(value) && !/avoid/.test(value);
        for (let each = from; each && !each.contains(to); each = each.parentElement) {
            if (forces(getComputedStyle(each).breakAfter))
                return true;
        }
        for (let each = to.parentElement; each && !each.contains(from); each = each.parentElement) {
            if (forces(getComputedStyle(each).breakBefore))
                return true;
        }
        return false;
    }

    // Counts a heading at the end of a column that it does not begin, if its text is in the next column.
    function lookForHeading(node, box) {
        const own = node.nodeType === Node.TEXT_NODE ? headingOf(node) : null;
        if (heading && heading.element !== own) {
            if (box.column > heading.column && !heading.isFirst && !isParted(heading.element, node))
                blame('lone headings', () => heading.element.textContent);
            heading = null;
        }
        if (own && !heading)
            heading = { element: own, column: box.column, isFirst: box.column !== lastColumn };
        if (heading)
            heading.column = box.column;
        lastColumn = box.column;
    }

    // --- Words -------------------------------------------------------------------------------------------------------

    const inWord = /[\p{L}\p{N}\p{M}]/u;

    const mayBreakWords = (own) => own.overflowWrap !== 'normal' || own.wordBreak !== 'normal'
        || own.lineBreak === 'anywhere';

    function countBrokenWords(node, own) {
        if (!mayBreakWords(own))
            return;
        const words = /[\p{L}\p{N}\p{M}]{2,}/gu;
        for (let word = words.exec(node.data); word; word = words.exec(node.data)) {
            if (withoutSpaces.test(word[0]))
                continue;
            range.setStart(node, word.index);
            range.setEnd(node, word.index + word[0].length);
            const rects = Array.from(range.getClientRects()).filter((rect) => rect.width > 0);
            if (rects.length < 2)
                continue;
            const isBroken = rects.some((rect) => Math.abs(rect.top - rects[0].top) > rect.height / 2
                || Math.abs(rect.left - rects[0].left) > step / 2);
            const isHyphenated = own.hyphens === 'auto' && own.webkitHyphenateCharacter !== '""';
            if (isBroken && !isHyphenated)
                blame('broken words', () => word[0]);
        }
    }

    // --- All content -------------------------------------------------------------------------------------------------

    const passedOver = /^(?:script|style|noscript|template|title|desc|metadata|select|option|datalist|textarea|audio|video|canvas|iframe|rp|head|annotation|annotation-xml)$/;
    const wholes = /^(?:img|svg|video|canvas|iframe|object|embed|math|hr|tr)$/;
    // Returns whether the fallback content is visible.
    const showsFallback = (element) => element.localName === 'object' && element.firstElementChild
        && element.firstElementChild.getClientRects().length > 0;
    const keepsLines = (own) => /pre|break-spaces/.test(own.whiteSpace);

    function lookAtText(node) {
        const text = node.data.replace(/\s+/g, ' ').trim();
        if (!text)
            return;
        const facts = about(node.parentElement);
        if (facts.style.visibility !== 'visible' || facts.isHidden)
            return;
        range.selectNodeContents(node);
        const rects = Array.from(range.getClientRects()).filter((rect) => rect.width > 0.5 && rect.height > 0.5);
        const length = rects.reduce((sum, rect) => sum + rect.width, 0);
        // White space and indents of preformatted lines have a width too.
        const letters = widthOf(keepsLines(facts.style) ? node.data.replace(/[\r\n]+/g, '') : text);
        // Preformatted text is wrapped only if a line is too long.
        const isTold = keepsLines(facts.style) && facts.block.clientWidth > 2 * narrowest * length / letters;
        const isOverLine = !!node.parentElement.closest('rt');
        for (const rect of rects) {
            const box = placed(rect);
            if (box.to < -farAway / 4 || box.bottom < -farAway / 4)
                continue;
            if (!facts.isInScroller) {
                lookForHeading(node, box);
                look(box, () => text);
                if (sticksOutAlong(box) && charactersStickOut(node, box))
                    blame('cut lines', () => `along: ${textOn(node, rect)}`);
                else if (sticksOutDown(box) && glyphsAreCut(node, box, textOn(node, rect)))
                    blame('cut lines', () => `down: ${textOn(node, rect)}`);
            } else {
                for (const page of pagesAt(box.from))
                    occupied.add(page);
            }
            if (isTold)
                endLine(true);
            if (!isOverLine)
                addToLine(node, rect, facts.block, box, letters * rect.width / length);
        }
        countBrokenWords(node, facts.style);
    }

    function lookAtWhole(element) {
        const facts = about(element);
        if (facts.style.visibility !== 'visible' || facts.isHidden)
            return;
        const rects = Array.from(element.getClientRects()).filter((rect) => rect.width > 1.5 && rect.height > 1.5);
        const boxes = rects.map(placed).filter((box) => box.to > -farAway / 4 && box.bottom > -farAway / 4);
        if (!boxes.length)
            return;
        if (facts.isInScroller) {
            for (const page of pagesAt(boxes[0].from))
                occupied.add(page);
            return;
        }
        const place = (box) => `${Math.round(box.from)},${Math.round(box.top)} ${Math.round(box.width)}x${Math.round(box.height)}`;
        const name = () => `${element.localName} at ${boxes.map(place).join(' and ')}: `
            + (element.getAttribute('src') || element.textContent);
        const height = boxes.reduce((sum, box) => sum + box.height, 0);
        const isRow = element.localName === 'tr';
        const wouldFit = !isRow || (facts.style.display === 'table-row' && height <= bottom - top + tolerance);
        const isCut = new Set(boxes.map((box) => box.column)).size > 1
            || boxes.some((box) => sticksOutAlong(box) || sticksOutDown(box));
        if (isCut && wouldFit)
            blame('cut boxes', name);
        if (isRow)
            return;
        look(boxes[0], name);
        lookForHeading(element, boxes[0]);
        if (isInline(facts.style) && facts.style.float === 'none')
            addToLine(element, rects[0], about(element.parentElement).block, boxes[0], 0,
                2 * boxes[0].width / pixels(facts.style.fontSize));
    }

    const nodes = document.createTreeWalker(body, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT, (node) =>
        (node.nodeType === Node.ELEMENT_NODE && passedOver.test(node.localName) && !wholes.test(node.localName)
            ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT));
    for (let node = nodes.nextNode(); node;) {
        let goesIn = true;
        if (node.nodeType === Node.TEXT_NODE)
            lookAtText(node);
        else if (node.localName === 'br')
            endLine(true);
        else if (wholes.test(node.localName) && !showsFallback(node)) {
            lookAtWhole(node);
            goesIn = node.localName === 'tr';
        }
        if (goesIn)
            node = nodes.nextNode();
        else {
            while (node && !nodes.nextSibling())
                node = nodes.parentNode();
            node = node && nodes.currentNode;
        }
    }
    endLine(true);

    const last = Math.max(...occupied);
    for (let page = Math.min(...occupied); page < last; ++page) {
        if (!occupied.has(page))
            blame('blank pages', () => `page ${page + 1} of ${offsets.length}`);
    }
    return [[offsets.length, lines], ...kinds.map((kind) => [kind, counts[kind], ...examples[kind]])]
        .map((fields) => fields.join('\t')).join('\n');
})()
