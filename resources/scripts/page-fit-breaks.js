// Runs in the reader's script world of every page, before page-fit.js. Handles the ends of columns.

// Marks headings with the room that they need below them, so that no heading is the last line of a column. The style
// sheet adds that room as an empty box inside the heading, which the engine does not divide, and the text below is laid
// out over it. Pairs of a heading and the element after it are kept for `pagoraFitBreaks`, which handles the remaining
// cases.
var pagoraKeepHeadings = (function () {
    'use strict';

    const selector = 'h1, h2, h3, h4, h5, h6, hgroup, [role~="heading"], header:has(h1, h2, h3, h4, h5, h6)';
    const isHeading = (element) => Element.prototype.matches.call(element, selector);
    const linesBelow = 2;
    const wholes = /^(?:canvas|figure|iframe|img|math|object|svg|table|video)$/;
    const clear = 'rgba(0, 0, 0, 0)';
    // If an object cannot be shown, its text and pictures are shown instead.
    const showsFallback = (element) => element.localName === 'object' && element.firstElementChild
        && Element.prototype.getClientRects.call(element.firstElementChild).length > 0;
    const isWhole = (element) => wholes.test(element.localName) && !showsFallback(element);

    // Returns whether the added box would be visible or occupy space.
    const hasOwnBox = (style, { pixels }) => style.backgroundColor !== clear || style.backgroundImage !== 'none'
        || style.overflow !== 'visible' || pixels(style.borderBottomWidth) + pixels(style.paddingBottom) > 0
        || !/^(?:block|list-item)$/.test(style.display) || style.float !== 'none' || style.position !== 'static';

    const startsWithElement = (element) => {
        const first = Array.from(element.childNodes).find((node) => node.nodeType === Node.ELEMENT_NODE
            || (node.nodeType === Node.TEXT_NODE && /\S/.test(node.data)));
        return first && first.nodeType === Node.ELEMENT_NODE ? first : null;
    };

    // Elements without content are skipped.
    const isSeen = (element) => isHeading(element) || isWhole(element) || /\S/.test(element.textContent)
        || Element.prototype.querySelector.call(element, 'canvas, iframe, img, object, svg, video');

    // Returns the next heading, undivided element or text after an element, in document order.
    function nextOf(element, body) {
        let next = elementAfter(element, body);
        while (next && !isSeen(next))
            next = elementAfter(next, body);
        while (next && !isHeading(next) && !isWhole(next) && startsWithElement(next))
            next = startsWithElement(next);
        return next;
    }

    function elementAfter(element, body) {
        let next = element;
        while (next && next !== body && !next.nextElementSibling)
            next = next.parentElement;
        return next && next !== body ? next.nextElementSibling : null;
    }

    // A picture may float in its figure, and may then be in another column.
    const pictureIn = (whole) => (whole.localName === 'figure' && Element.prototype.querySelector.call(whole, 'img')) || whole;

    const startsWithPicture = (whole) => pictureIn(whole) !== whole && startsWithElement(whole)
        && Node.prototype.contains.call(startsWithElement(whole), pictureIn(whole));

    return (strip, book, tools, later) => {
        const { styleOf, pixels, all } = tools;
        const bodyStyle = styleOf(strip.body);
        const lines = linesBelow * (pixels(bodyStyle.lineHeight) || 1.4 * pagoraFontSize(bodyStyle));
        const rooms = new Map();
        const headings = [];
        // In reverse order, because a heading may follow another.
        for (const heading of all(selector).reverse()) {
            const next = nextOf(heading, strip.body);
            const style = styleOf(heading);
            if (!next || !heading.offsetHeight)
                continue;
            let room = lines;
            if (isHeading(next))
                room = next.offsetHeight + (rooms.get(next) || lines);
            else if (isWhole(next))
                room = Math.max(tools.boxOf(next).height, tools.boxOf(pictureIn(next)).height);
            const below = Math.max(0, pixels(style.marginBottom));
            const own = heading.offsetHeight + Math.max(0, pixels(style.marginTop));
            const isTooHigh = (height) => own + height + below > strip.height;
            if (isTooHigh(room) && startsWithPicture(next)) {
                // The caption continues in the next column.
                room = tools.boxOf(pictureIn(next)).height + lines;
                if (!isTooHigh(room))
                    later.push([next, 'divided']);
            }
            room = isTooHigh(room) ? lines : room + below;
            rooms.set(heading, room);
            headings.unshift([heading, pictureIn(next)]);
            if (!hasOwnBox(style, tools) && getComputedStyle(heading, '::after').content === 'none')
                later.push([heading, 'keeps', room]);
        }
        tools.headings = headings;
    };
})();

// Returns the index of the column that contains a box, in reading direction.
var pagoraColumnOf = (strip, box) => {
    'use strict';

    const frame = Element.prototype.getBoundingClientRect.call(strip.body);
    const along = strip.rightToLeft ? frame.right - strip.paddingRight - box.right
        : box.left - frame.left - strip.paddingLeft;
    return Math.floor((along + strip.gap / 2) / strip.step);
};

// Forces a complete layout by changing the height of the columns. The engine reuses lines and positions of pictures
// because it does not detect all changes on which they depend.
var pagoraLayOutAnew = (body) => {
    'use strict';

    const height = body.style.getPropertyValue('height');
    const priority = body.style.getPropertyPriority('height');
    const setHeight = CSSStyleDeclaration.prototype.setProperty.bind(body.style, 'height');
    setHeight('1000000px', 'important');
    Element.prototype.getClientRects.call(body);
    setHeight(height, priority);
};

// Keeps pictures and table rows undivided at the ends of columns, and headings together with their text.
var pagoraFitBreaks = (function () {
    'use strict';

    // Moving an element to the next column moves everything after it, so the process is repeated.
    const maxRounds = 24;
    const has = (element, name) => Element.prototype.hasAttribute.call(element, 'data-pagora-' + name);

    const isCut = (image) => {
        const rects = Element.prototype.getClientRects.call(image);
        return rects.length > 1 && Array.from(rects).every((rect) => rect.height > 0.5);
    };

    // Returns whether a float of a single line of text is divided between columns.
    function isCutLine(float, { styleOf, pixels }) {
        const rects = Array.from(Element.prototype.getClientRects.call(float));
        const height = rects.reduce((sum, rect) => sum + rect.height, 0);
        const style = styleOf(float);
        return rects.length > 1 && height < 1.5 * (pixels(style.lineHeight) || 1.4 * pagoraFontSize(style));
    }

    // Moves floats that a column's end divides. Returns whether an element was marked.
    function moveCut(floats, tools) {
        const { mark, standsAlone, containerOf } = tools;
        const cut = Array.from(document.images).filter(isCut);
        const isMarked = (element) => has(element, 'block') || has(element, 'inline');
        let isNew = false;
        for (const float of floats) {
            if (!has(float, 'inline') && isCutLine(float, tools)) {
                mark(float, 'inline');
                isNew = true;
            }
        }
        for (const image of cut) {
            let floating = image;
            while (floating && isMarked(floating)) {
                floating = floating.parentElement;
                while (floating && !floats.has(floating))
                    floating = floating.parentElement;
            }
            if (!floating)
                continue;
            mark(floating, floating === image && standsAlone(image, containerOf(image)) ? 'block' : 'inline');
            isNew = true;
        }
        // Only one is moved at a time, because it moves the others.
        const stuck = !isNew && cut.find((image) => !has(image, 'next'));
        if (stuck)
            mark(stuck, 'next');
        return isNew || !!stuck;
    }

    // Moves a heading if the content below it begins in another column. Returns whether there was one. Only one is
    // moved at a time, because it moves the others.
    function moveLoneHeading(strip, { mark, headings }) {
        const lone = headings.find(([heading, next]) => {
            if (has(heading, 'next'))
                return false;
            const [first] = Element.prototype.getClientRects.call(next);
            const [own] = Element.prototype.getClientRects.call(heading);
            return first && own && pagoraColumnOf(strip, first) !== pagoraColumnOf(strip, own) && own.top > strip.paddingTop + 1;
        });
        if (lone)
            mark(lone[0], 'next');
        return !!lone;
    }

    return (strip, book, tools) => {
        if (Array.from(document.images).some(isCut))
            pagoraLayOutAnew(strip.body);
        const floats = new Set(book.floats);
        const moveAll = () => {
            for (let round = 0; round < maxRounds && (moveCut(floats, tools)
                | pagoraFitRows(strip, tools) | moveLoneHeading(strip, tools)); ++round) { }
        };
        moveAll();
        pagoraFreeLastLines(strip, floats, tools, moveAll);
    };
})();

// Returns whether the whole chapter is in the first of several columns.
var pagoraIsSingle = (function () {
    'use strict';

    return (strip) => {
        if (strip.columnsOfPage < 2 || strip.length > strip.body.clientWidth)
            return false;
        const range = new Range();
        range.selectNodeContents(strip.body);
        const boxes = Array.from(range.getClientRects()).filter((box) => box.width > 0 && box.height > 0);
        const frame = Element.prototype.getBoundingClientRect.call(strip.body);
        const along = (box) => (strip.rightToLeft ? frame.right - strip.paddingRight - box.left
            : box.right - frame.left - strip.paddingLeft);
        return boxes.length > 0 && boxes.every((box) => along(box) <= strip.step);
    };
})();
