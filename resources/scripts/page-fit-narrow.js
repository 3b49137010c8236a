// Runs in the reader's script world of every page, before page-fit.js. Handles large margins, large titles and long
// words in narrow columns.

// Marks blocks with smaller margins if their margins leave no room for text.
var pagoraFitInsets = (function () {
    'use strict';

    // Blocks of the same kind have the same margins. This is the number of blocks that are measured for each kind.
    const sampleSize = 8;
    // Room for the marker of a list item, in em, and the maximum for all nested lists together, as a fraction of the
    // column.
    const roomForMarker = 1.3;
    const shareForMarkers = 0.3;
    const isList = (block) => /^[ou]l$/.test(block.localName);
    const minCharacters = 12;
    // Two words of usual length.
    const minLetters = 20;

    const sides = ['marginLeft', 'marginRight', 'paddingLeft', 'paddingRight'];
    const sum = (lengths) => lengths.reduce((total, each) => total + each, 0);

    // Returns the maximum width of the padding of these blocks, and their font size.
    function measureSort(blocks, { styleOf, pixels }) {
        const found = { padding: 0, size: 0 };
        for (const block of blocks.slice(0, sampleSize)) {
            const style = styleOf(block);
            found.padding = Math.max(found.padding, pixels(style.paddingLeft) + pixels(style.paddingRight));
            found.size = Math.max(found.size, pagoraFontSize(style));
        }
        return found;
    }

    // Returns the blocks from this one out to the body; null if anything but margins determines the block's width.
    function blocksAround(block, strip, { styleOf, isInline }) {
        const around = [];
        for (let each = block; each && each !== strip.body; each = each.parentElement) {
            const style = styleOf(each);
            if (isInline(style))
                continue;
            if (!/^(?:block|flow-root|list-item)$/.test(style.display) || style.float !== 'none'
                || /absolute|fixed/.test(style.position))
                return null;
            around.push({ block: each, style });
        }
        return around;
    }

    // Returns the margins and the padding of a block, reduced to the fraction for which there is room.
    function insets({ block, style }, share, largest, { pixels }) {
        const lengths = {};
        for (const side of sides)
            lengths[side] = pixels(style[side]) * share;
        if (isList(block)) {
            const start = style.direction === 'rtl' ? 'paddingRight' : 'paddingLeft';
            const room = Math.min(largest, roomForMarker * pagoraFontSize(style));
            lengths[start] = Math.max(lengths[start], Math.min(pixels(style[start]), room));
        }
        // A hanging first line keeps its fraction of the room.
        const indent = pixels(style.textIndent);
        lengths.textIndent = indent < 0 ? indent * share : indent;
        return Object.fromEntries(Object.entries(lengths).map(([name, length]) => [name, length.toFixed(2) + 'px']));
    }

    return (strip, book, tools, later) => {
        const { letter, pixels, styleOf } = tools;
        const column = strip.step - strip.gap;
        const shares = new Map();
        tools.narrowest = Infinity;
        for (const blocks of book.insets) {
            const { padding, size } = measureSort(blocks, tools);
            const wanted = Math.min(minLetters * letter * size, 0.95 * column);
            for (const block of blocks) {
                const width = block.clientWidth - padding;
                if (!block.clientWidth || width >= wanted || block.textContent.trim().length < minCharacters)
                    continue;
                tools.narrowest = Math.min(tools.narrowest, wanted / (letter * size));
                const around = blocksAround(block, strip, tools);
                if (!around)
                    continue;
                const taken = sum(around.flatMap(({ style }) => sides.map((side) => Math.max(0, pixels(style[side])))));
                const share = taken > 0 ? Math.max(0, Math.min(1, (column - wanted) / taken)) : 1;
                const forSign = shareForMarkers * column / Math.max(1, around.filter((each) => isList(each.block)).length);
                for (const each of around) {
                    if (!(shares.has(each.block) && shares.get(each.block).share <= share))
                        shares.set(each.block, { share, each, forSign });
                }
            }
        }
        for (const [block, { share, each, forSign }] of shares)
            later.push([block, 'tight', insets(each, share, forSign, tools)]);
    };
})();

// Marks titles that are too large for the column, with a font size that fits.
var pagoraFitTitles = (function () {
    'use strict';

    // Minimum number of letters in a line.
    const minLetters = 14;
    const headings = 'h1, h2, h3, h4, h5, h6';
    const maxWordLength = (text) => Math.max(0, ...text.split(/[\s\u00AD\u2010-\u2015-]+/).map((word) => word.length));
    // A title's letters, which may be bold capitals, are at most this many times as wide as the text's letters.
    const maxLetterRatio = 1.6;

    const pen = Document.prototype.createElementNS.call(document, 'http://www.w3.org/1999/xhtml', 'canvas').getContext('2d');

    // Returns the average width of the title's letters, as a fraction of the font size.
    function letterOf(text, style) {
        const isCapital = style.textTransform === 'uppercase' || /small-caps/.test(style.fontVariantCaps);
        pen.font = `${style.fontStyle} ${style.fontWeight} 100px ${style.fontFamily}`;
        return pen.measureText(isCapital ? text.toUpperCase() : text).width / text.length / 100;
    }

    return (strip, book, { styleOf, pixels, isInline, containerOf, roomIn, all, letter }, later) => {
        const bodyStyle = styleOf(strip.body);
        const bodySize = pagoraFontSize(bodyStyle);
        const rootSize = pagoraFontSize(styleOf(strip.body.parentElement));
        for (const title of new Set(all(headings).concat(book.titles))) {
            const style = styleOf(title);
            const size = pagoraFontSize(style);
            const text = title.textContent.trim();
            if (size <= bodySize || !text || !title.getClientRects().length)
                continue;
            const block = isInline(style) ? containerOf(title) : title;
            const room = roomIn(block, strip).width;
            const letters = Math.max(maxWordLength(text), Math.min(minLetters, text.length));
            const spacing = pixels(style.letterSpacing) / size;
            if (room / (letters * (letter * maxLetterRatio + spacing)) > size)
                continue;
            const fitting = room / (letters * (letterOf(text, style) + spacing));
            if (fitting >= size)
                continue;
            const fitted = Math.max(fitting, bodySize);
            // If the font size cannot be reduced, the letter spacing is.
            const closer = Math.max(0, Math.min(spacing, room / letters / fitted - letterOf(text, style)));
            later.push([title, 'title', { title: (fitted / rootSize).toFixed(4) + 'rem', spacing: closer.toFixed(4) + 'em' }]);
        }
    };
})();

// Disables hyphenation in verses, and in entries that are slightly longer than a line, where the rest of a word would
// be alone in the second line.
var pagoraKeepWords = (function () {
    'use strict';

    // In shorter lines, words are hyphenated everywhere.
    const minLettersInWideLine = 32;
    const shareOfSecondLine = 0.5;

    return (strip, book, { styleOf, pixels, letter }, later) => {
        for (const block of book.verses) {
            if (pixels(styleOf(block).textIndent) < 0)
                later.push([block, 'manual']);
        }
        const inLine = (strip.step - strip.gap) / (letter * pagoraFontSize(styleOf(strip.body)));
        for (const block of inLine < minLettersInWideLine ? [] : book.entries) {
            const length = block.textContent.trim().length;
            if (length > 0.7 * inLine && length < (1 + shareOfSecondLine) * inLine)
                later.push([block, 'manual']);
        }
    };
})();

// Marks text with words that are longer than a line.
var pagoraFitWords = (function () {
    'use strict';

    // The characters between two line break opportunities. Scripts without spaces break lines anywhere.
    const unbroken = '[^ \\t\\n\\r\\f\\u00AD\\u200B\\u2010-\\u2015\\u0E00-\\u0EFF\\u1000-\\u109F\\u1780-\\u17FF\\u2E80-\\uA4CF'
        + '\\uAC00-\\uD7AF\\uF900-\\uFAFF\\uFE30-\\uFE4F\\uFF00-\\uFFEF-]';
    // Words up to this fraction of a line fit even in nested lists.
    const surelyFits = 0.4;
    // The hyphen before a line break is in the same line.
    const wordsOver = (length) => new RegExp(unbroken + '{' + (length + 1) + ',}[-\\u00AD\\u2010-\\u2015]?', 'g');

    // The length of the longest word of the page's text; computed on first use.
    let longest = -1;
    // The words of more letters than a limit: [text node, start, length].
    let words = { limit: Infinity, found: [] };

    function maxLongWordLength(text) {
        let length = 0;
        for (const word of text.match(wordsOver(7)) || [])
            length = Math.max(length, word.length);
        return length;
    }

    function findWords(body, limit) {
        const found = [];
        const long = wordsOver(limit);
        const nodes = Document.prototype.createTreeWalker.call(document, body, NodeFilter.SHOW_TEXT);
        while (nodes.nextNode()) {
            for (const match of nodes.currentNode.data.matchAll(long))
                found.push([nodes.currentNode, match.index, match[0].length]);
        }
        return { limit, found };
    }

    // Returns the blocks with a word of which a part is wider than its line.
    function tooNarrow(strip, containerOf) {
        const column = strip.step - strip.gap;
        const blocks = new Set();
        const range = new Range();
        for (const [node, start, length] of words.found) {
            if (start + length > node.length)
                continue;
            range.setStart(node, start);
            range.setEnd(node, start + length);
            const block = containerOf(node);
            // A table grows with its words, and is fitted as a whole.
            const isInCell = /^(?:td|th)$/.test(block.localName);
            const isTooWide = (box) => box.width > column + 1 || (!isInCell && (sticksOut(box, strip)
                || (block !== strip.body && block.clientWidth && box.width > block.clientWidth + 1)));
            // A word may be hyphenated and its parts still be too long.
            if (Array.from(range.getClientRects()).some(isTooWide))
                blocks.add(block);
        }
        return blocks;
    }

    // Marks the blocks of long words, and then those that still overflow with hyphenation.
    function fit(strip, book, { styleOf, pixels, containerOf, letter, narrowest, step }) {
        const column = strip.step - strip.gap;
        const titles = book.titles.filter((title) => title.scrollWidth > title.clientWidth && title.clientWidth > 0);
        if (longest < 0)
            longest = maxLongWordLength(strip.body.textContent);
        const letters = column / (pagoraFontSize(styleOf(strip.body)) * letter);
        const limit = Math.max(4, Math.floor(Math.min(letters, narrowest) * surelyFits));
        const isLong = longest > limit;
        if (isLong && words.limit > limit)
            words = findWords(strip.body, limit);
        const mark = (blocks, name) => step((later) => blocks.forEach((block) => later.push([block, name])));
        const blocks = isLong ? tooNarrow(strip, containerOf) : new Set();
        if (mark(new Set([...titles, ...blocks]), 'long') && isLong)
            mark(tooNarrow(strip, containerOf), 'manual');
    }

    function sticksOut(box, strip) {
        const frame = Element.prototype.getBoundingClientRect.call(strip.body);
        const across = strip.rightToLeft ? frame.right - strip.paddingRight - box.right
            : box.left - frame.left - strip.paddingLeft;
        const inColumn = across - Math.floor((across + 1) / strip.step) * strip.step;
        return inColumn + box.width > strip.step - strip.gap + 1;
    }

    return fit;
})();
