// Runs in the reader's script world of every page, before the page has any content. Finds elements that do not fit
// into the columns and marks them. The style sheet page.css has a rule for each mark:
//
//   data-pagora-alone   a float that leaves no room for text beside it: text starts below it
//   data-pagora-block   a picture without text in its line: becomes a block, which is not divided and has nothing beside it
//   data-pagora-inline  a float at a column's end that would divide it: becomes an inline box
//   data-pagora-ends    a float at a column's end: ends above the lines of the next column
//   data-pagora-inflow  a positioned picture that covers text: becomes part of the flow
//   data-pagora-fits    a picture that is wider than its container: is limited to that width
//   data-pagora-raised  superscripts and subscripts: do not change the line height
//   data-pagora-beside  a picture with text beside it: gets a margin
//   data-pagora-next    a picture that would be divided, or a heading without its text: starts a column
//   data-pagora-parts   a box that is taller than a column: may be divided
//   data-pagora-divided a block with `break-inside: avoid` that is taller than a column, alone or with its heading: may be
//                       divided
//   data-pagora-whole   a box with a border or a background: is not divided
//   data-pagora-keeps   a heading: reserves room for the lines below it
//   data-pagora-manual  text in which hyphenation by the engine would make a line overflow: is not hyphenated
//   data-pagora-tight   a block whose margins leave no room for text: gets smaller margins
//   data-pagora-title   a title with room for only one word in a line: gets a smaller font size
//   data-pagora-single  a chapter of at most one column: is centred on the page
//   data-pagora-wide    a table that is wider than its column
//   data-pagora-stacked a table that only arranges paragraphs side by side: its cells are stacked in a narrow column
//   data-pagora-narrow  a cell with room for only one word in a line
//   data-pagora-small   a table or an equation in a smaller font size, in tenths
//   data-pagora-scrolls an element that is still too wide: scrolls horizontally
//   data-pagora-push    a row of a table that is followed by a column break, so that the next row is not divided
//   data-pagora-long    text with a word that is longer than the line
//
// Each step measures everything before it sets marks, so that it causes at most one layout.

// Sets the marks for this strip of columns. Returns whether the layout has changed.
var pagoraFit = (function () {
    'use strict';

    const attribute = Element.prototype.getAttribute;
    const all = (selector) => Array.from(Document.prototype.querySelectorAll.call(document, selector));
    const styleOf = (element) => getComputedStyle(element);
    const pixels = (length) => parseFloat(length) || 0;
    const isInline = (style) => style.display === 'inline' || style.display === 'contents';
    // The minimum number of average letters in a readable line beside a picture.
    const minLetters = 20;

    // Returns the position of the element, and its size as if no column's end divided it.
    function boxOf(element) {
        const parts = Array.from(Element.prototype.getClientRects.call(element));
        if (parts.length < 2)
            return parts[0] || new DOMRect();
        const height = parts.reduce((sum, part) => sum + part.height, 0);
        return new DOMRect(parts[0].left, parts[0].top, Math.max(...parts.map((part) => part.width)), height);
    }

    // --- Marks -------------------------------------------------------------------------------------------------------

    // The marks that were set: pairs of an element and a mark's name. They are removed before the next layout.
    let marked = [];
    const focusable = new WeakSet();

    function mark(element, name, value = '') {
        Element.prototype.setAttribute.call(element, 'data-pagora-' + name, value);
        marked.push([element, name]);
        if (name === 'scrolls' && attribute.call(element, 'tabindex') === null) {
            Element.prototype.setAttribute.call(element, 'tabindex', '0');
            focusable.add(element);
        }
    }

    function unmark() {
        let hadEnds = false;
        for (const [element, name] of marked) {
            Element.prototype.removeAttribute.call(element, 'data-pagora-' + name);
            hadEnds = hadEnds || name === 'ends';
            if (name === 'scrolls' && focusable.delete(element))
                Element.prototype.removeAttribute.call(element, 'tabindex');
        }
        marked = [];
        if (hadEnds)
            pagoraLayOutAnew(book.body);
    }

    // --- Content of the book -----------------------------------------------------------------------------------------

    // Elements with the same name and class are of the same kind. Only the first ones of each kind are measured.
    const sampleSize = 8;
    const sizeOfTitles = 1.3;
    // Maximum number of letters of a verse or a list entry that is slightly longer than a line.
    const longestEntry = 120;
    const clear = 'rgba(0, 0, 0, 0)';

    // The body and its elements that may need a mark, in one list for each kind. Created by `survey`, once per body.
    let book = null;

    function kindOf(element, bodySize) {
        const own = styleOf(element);
        return {
            floats: own.float !== 'none' && own.position !== 'absolute' && own.position !== 'fixed',
            atoms: /^inline-(?:block|flex|grid|table)$/.test(own.display) || /flex|grid/.test(own.display),
            raised: isInline(own) && /^(?:sub|super)$/.test(own.verticalAlign) && own.lineHeight !== '0px',
            verses: !isInline(own) && pixels(own.textIndent) < 0,
            entries: !isInline(own) && own.hyphens === 'auto' && element.textContent.length < longestEntry,
            titles: pagoraFontSize(own) >= bodySize * sizeOfTitles,
            undivided: /^avoid/.test(own.breakInside),
            framed: !isInline(own) && own.display !== 'table-cell' && (own.backgroundColor !== clear
                || pixels(own.borderTopWidth) * pixels(own.borderBottomWidth) > 0),
            insets: !isInline(own) && pixels(own.marginLeft) + pixels(own.marginRight) + pixels(own.paddingLeft)
                + pixels(own.paddingRight) > 1,
        };
    }

    function survey(body) {
        const sorts = new Map();
        const found = { floats: [], atoms: [], raised: [], verses: [], entries: [], titles: [], undivided: [], framed: [], insets: [] };
        const bodySize = pagoraFontSize(styleOf(body));
        for (const element of Element.prototype.getElementsByTagName.call(body, '*')) {
            const name = element.localName;
            if (name === 'img' || !(element instanceof HTMLElement))
                continue;
            const key = name + ' ' + attribute.call(element, 'class');
            let sort = sorts.get(key);
            if (!sort)
                sorts.set(key, sort = { elements: [], looked: 0 });
            sort.elements.push(element);
            const hasStyle = attribute.call(element, 'style') !== null;
            if (sort.looked >= sampleSize && !hasStyle)
                continue;
            ++sort.looked;
            const own = kindOf(element, bodySize);
            for (const each of Object.keys(found))
                sort[each] = sort[each] || own[each];
        }
        for (const sort of sorts.values()) {
            for (const each of Object.keys(found)) {
                if (sort[each])
                    found[each].push(sort.elements);
            }
        }
        const flat = (each) => found[each].flat();
        return { floats: flat('floats'), atoms: flat('atoms'), raised: flat('raised'), verses: flat('verses'),
            entries: flat('entries'), titles: flat('titles'), undivided: flat('undivided'), framed: flat('framed'), insets: found.insets };
    }

    // --- Containing boxes --------------------------------------------------------------------------------------------

    function containerOf(element) {
        let container = element.parentElement;
        while (container && container.parentElement && isInline(styleOf(container)))
            container = container.parentElement;
        return container || element;
    }

    // Returns the room for text in a block, in the column where it begins.
    function roomIn(container, strip) {
        const style = styleOf(container);
        const around = container === strip.body ? 0
            : pixels(style.paddingLeft) + pixels(style.paddingRight) + pixels(style.borderLeftWidth)
                + pixels(style.borderRightWidth);
        const rects = Element.prototype.getClientRects.call(container);
        const width = container === strip.body || !rects.length ? strip.step - strip.gap : rects[0].width - around;
        return { width: Math.min(width, strip.step - strip.gap), size: pagoraFontSize(style), style };
    }

    // Returns the average width of the text's letters, as a fraction of the font size.
    function letterWidth(body) {
        const sample = body.textContent.slice(0, 4000).replace(/\s+/g, ' ').slice(0, 400);
        const style = styleOf(body);
        const pen = Document.prototype.createElementNS
            .call(document, 'http://www.w3.org/1999/xhtml', 'canvas').getContext('2d');
        pen.font = '100px ' + style.fontFamily;
        const spacing = pixels(style.letterSpacing) / (pagoraFontSize(style) || 1);
        return (sample ? pen.measureText(sample).width / sample.length / 100 : 0.5) + spacing;
    }

    // --- Floats and pictures -----------------------------------------------------------------------------------------

    const isBlank = (node) => node.nodeType === Node.COMMENT_NODE
        || (node.nodeType === Node.TEXT_NODE && !/\S/.test(node.data));

    // Returns whether the element has no text in its line.
    function standsAlone(element, container) {
        for (let inner = element; inner && inner !== container; inner = inner.parentElement) {
            for (const step of ['previousSibling', 'nextSibling']) {
                let beside = inner[step];
                while (beside && isBlank(beside))
                    beside = beside[step];
                const isText = beside && (beside.nodeType !== Node.ELEMENT_NODE
                    || (beside.localName !== 'br' && isInline(styleOf(beside))) || beside.localName === 'img');
                if (isText)
                    return false;
            }
        }
        return true;
    }

    // Returns whether the book centres the element.
    const isCentred = (container, room) => /center/.test(room.style.textAlign) || /^(?:figure|center)$/.test(container.localName);

    // The margin between a picture and the text beside it, in em.
    const gapBeside = 0.6;

    function fitFloats(strip, letter, later) {
        const images = Array.from(document.images);
        if (!images.length && !book.floats.length)
            return;
        const hasText = /\S/.test(strip.body.textContent);
        const band = [];
        for (const float of images.concat(book.floats)) {
            const own = styleOf(float);
            if (own.display === 'none')
                continue;
            const isImage = float.localName === 'img';
            if (isImage && (own.position === 'absolute' || own.position === 'fixed'))
                later.push([float, 'inflow']);
            if (own.float === 'none')
                continue;
            const box = boxOf(float);
            if (box.width < 1)
                continue;
            const container = containerOf(float);
            const room = roomIn(container, strip);
            const margins = pixels(own.marginLeft) + pixels(own.marginRight);
            if (isImage && box.width + margins > room.width + 1) {
                later.push([float, 'fits', room.width - margins]);
                continue;
            }
            let rest = room.width - box.width - margins;
            for (const other of band) {
                if (other.bottom > box.top + 1 && other.top < box.bottom - 1
                    && pagoraColumnOf(strip, other) === pagoraColumnOf(strip, box))
                    rest -= other.width;
            }
            // In a container with margins, such as a figure, the text after the float would be laid out in the margins.
            if (isImage && rest <= 1 && room.width < strip.step - strip.gap - 1 && standsAlone(float, container)) {
                later.push([float, 'block']);
                continue;
            }
            const isTight = rest > 1 && rest < (minLetters * letter + (isImage ? gapBeside : 0)) * room.size;
            const isWhole = isImage && rest > 1
                && (!hasText || (isCentred(container, room) && standsAlone(float, container)));
            if (isTight || isWhole) {
                later.push([float, 'alone', room.width - box.width]);
                if (isImage && standsAlone(float, container))
                    later.push([float, 'block']);
            }
            else {
                band.push(box);
                if (isImage && rest > 1 && pixels(own.marginRight) < gapBeside * room.size)
                    later.push([float, 'beside']);
            }
        }
    }

    // Marks an element and sets a length for the style sheet, with a higher priority than the book's own style.
    function markWithLength(element, name, length) {
        CSSStyleDeclaration.prototype.setProperty.call(
            element.style, '--pagora-' + name, Math.max(0, Math.floor(length)) + 'px');
        mark(element, name);
    }

    function markWithLengths(element, name, lengths) {
        for (const each of Object.keys(lengths))
            CSSStyleDeclaration.prototype.setProperty.call(element.style, '--pagora-' + each, lengths[each]);
        mark(element, name);
    }

    // Limits the pictures that the reader's layout scripts do not limit.
    function fitPictures(strip, later) {
        for (const picture of all('body canvas, body embed, body iframe, body object, body svg, body video')) {
            const box = boxOf(picture);
            const own = styleOf(picture);
            if (box.width < 1 || own.position === 'absolute' || own.position === 'fixed')
                continue;
            const margins = pixels(own.marginLeft) + pixels(own.marginRight);
            const room = roomIn(containerOf(picture), strip).width - margins;
            if (box.width > room + 1)
                later.push([picture, 'fits', room]);
        }
    }

    // --- Boxes that are not divided ----------------------------------------------------------------------------------

    // Maximum height of a frame as a fraction of the column. A taller one would leave too much empty space before it.
    const maxFrameShare = 0.4;

    // Margins are not divided either.
    function isTooHigh(atom, strip) {
        const style = styleOf(atom);
        return boxOf(atom).height + pixels(style.marginTop) + pixels(style.marginBottom) > strip.height;
    }

    // The boxes in a divided row may themselves be undivided boxes that are too tall.
    function fitAtomsWithin(strip, later) {
        for (const [outer, name] of marked) {
            for (const inner of name === 'parts' ? outer.children : []) {
                if (inner instanceof HTMLElement && /^inline-/.test(styleOf(inner).display) && isTooHigh(inner, strip))
                    later.push([inner, 'parts']);
            }
        }
    }

    function fitAtoms(strip, later) {
        for (const atom of book.atoms) {
            if (isTooHigh(atom, strip))
                later.push([atom, 'parts']);
        }
        for (const block of book.undivided) {
            if (block.offsetHeight > strip.height)
                later.push([block, 'divided']);
        }
        for (const box of book.framed) {
            if (box.offsetHeight && box.offsetHeight < maxFrameShare * strip.height)
                later.push([box, 'whole']);
        }
    }

    // --- Steps -------------------------------------------------------------------------------------------------------

    let fittedTo = '';
    let loads = 0;
    // Elements that were loaded or have failed since the last fitting. Load events do not reach the window.
    const arrived = new Set();
    for (const name of ['load', 'error'])
        document.addEventListener(name, (event) => event.target instanceof Element && arrived.add(event.target), true);
    // Sizes of the pictures at the last fitting. A picture that arrives with the same size changes nothing.
    let sizes = new WeakMap();
    const sizeOf = (element) => [boxOf(element).width, boxOf(element).height].join();
    function countArrived() {
        for (const element of arrived)
            loads += sizes.get(element) === sizeOf(element) ? 0 : 1;
        arrived.clear();
    }
    if (document.fonts)
        document.fonts.addEventListener('loadingdone', () => ++loads);

    // The maximum size of pictures, which the reader sets on each of them.
    const maxPictureSize = () => Array.from(document.images).slice(0, 1)
        .map((image) => ['max-width', 'max-height'].map((name) => image.style.getPropertyValue(name))).join();

    const keyOf = (strip) => {
        const style = styleOf(strip.body);
        // A chapter of a single column is centred and has its own column width. The reader's values are in the marks.
        return [attribute.call(strip.body.parentElement, 'data-pagora-columns'), strip.body.clientWidth, strip.step,
            strip.gap, strip.height, strip.reach, pagoraFontSize(style), style.fontFamily, maxPictureSize(), loads].join();
    };

    // `later` contains the element, the name of the mark and optionally a length, or lengths by name.
    function apply(later) {
        for (const [element, name, value] of later) {
            if (typeof value === 'object')
                markWithLengths(element, name, value);
            else if (value !== undefined)
                markWithLength(element, name, value);
            else
                mark(element, name);
        }
    }

    // Marks the elements that `find` returns. Returns whether there were any.
    function step(find) {
        const later = [];
        find(later);
        apply(later);
        return later.length > 0;
    }

    return (measure) => {
        let strip = measure();
        countArrived();
        if (!strip || keyOf(strip) === fittedTo)
            return strip;
        book = book && book.body === strip.body ? book : { body: strip.body, ...survey(strip.body) };
        if (marked.length) {
            unmark();
            strip = measure();
        }
        const tools = { mark, boxOf, styleOf, pixels, isInline, containerOf, roomIn, standsAlone, all, step,
            letter: letterWidth(strip.body), pushes: new Map() };
        step((later) => pagoraFitInsets(strip, book, tools, later));
        step((later) => {
            fitFloats(strip, tools.letter, later);
            fitPictures(strip, later);
            fitAtoms(strip, later);
            for (const letters of book.raised)
                later.push([letters, 'raised']);
            pagoraKeepWords(strip, book, tools, later);
            pagoraFitTitles(strip, book, tools, later);
            pagoraKeepHeadings(strip, book, tools, later);
        });
        step((later) => fitAtomsWithin(strip, later));
        pagoraFitWords(strip, book, tools);
        pagoraFitWide(strip, tools);
        pagoraFitBreaks(strip, book, tools);
        if (pagoraIsSingle(measure()))
            apply([[strip.body.parentElement, 'single', { single: Math.ceil(strip.step - strip.gap) + 'px' }]]);
        if (marked.length)
            strip = measure();
        sizes = new WeakMap(Array.from(document.images, (image) => [image, sizeOf(image)]));
        fittedTo = keyOf(strip);
        return strip;
    };
})();
