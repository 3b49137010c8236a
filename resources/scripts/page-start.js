// Runs in the reader's script world of every page, before the page has any content. Makes the page measure and scroll
// as the page arithmetic expects: vertical distances are those of the text in a single column, positions are relative
// to the start of the strip in reading direction, and only the reader scrolls the page.
//
// Functions that the page can shadow by naming its elements are taken from the prototypes.

// Set by a script of the program that runs after this one: the number of the load, whether the reader lays the page
// out, and the number of columns. Not set for the warm-up page.
var pagoraLoad = 0, pagoraLaysOut = true, pagoraColumnCount = 'auto';

(function () {
    'use strict';

    const getterOf = (owner, name) => Object.getOwnPropertyDescriptor(owner, name).get;
    const bodyOf = getterOf(Document.prototype, 'body');
    const rootOf = getterOf(Document.prototype, 'documentElement');
    const activeElementOf = getterOf(Document.prototype, 'activeElement');
    const nativeOffsetTop = getterOf(HTMLElement.prototype, 'offsetTop');
    const nativeScrollWidth = getterOf(Element.prototype, 'scrollWidth');
    const nativeScrollX = getterOf(window, 'scrollX');
    const nativeScrollY = getterOf(window, 'scrollY');
    const nativeScrollTo = window.scrollTo;
    const port = window.webkit.messageHandlers.pagora;

    const post = (text) => port.postMessage(pagoraLoad + ' ' + text);
    const pixels = (length) => parseFloat(length) || 0;

    // --- Styles ------------------------------------------------------------------------------------------------------

    // The reader's styles of a text page override important declarations of the book.
    const readersStyles = {
        background: 'background',
        backgroundColor: 'background-color',
        color: 'color',
        float: 'float',
        fontFamily: 'font-family',
        height: 'height',
        margin: 'margin',
        maxHeight: 'max-height',
        maxWidth: 'max-width',
        overflow: 'overflow',
        padding: 'padding',
        webkitColumnCount: 'column-count',
        webkitColumnGap: 'column-gap',
        webkitColumnWidth: 'column-width',
    };
    // Mark with the number of columns for style sheets. The reader sets the number itself, or the width of a single
    // column.
    const columnMark = 'data-pagora-columns';
    window.pagoraMarkColumns = (count) => {
        const root = rootOf.call(document);
        if (root)
            Element.prototype.setAttribute.call(root, columnMark, count);
    };
    function columnsAreAskedFor(property, value) {
        if (property === 'webkitColumnCount')
            pagoraMarkColumns(value);
        else if (property === 'webkitColumnWidth' && value !== 'auto')
            pagoraMarkColumns('1');
    }

    // Sets the language of the text if the document does not declare one.
    window.pagoraSetLanguage = (language) => {
        const root = rootOf.call(document);
        const says = (name) => Element.prototype.hasAttribute.call(root, name);
        if (language && root instanceof HTMLElement && !says('lang') && !says('xml:lang'))
            Element.prototype.setAttribute.call(root, 'lang', language);
    };

    // The background of the page for the program, without blanks; "none" if there is none.
    const clear = 'rgba(0, 0, 0, 0)';
    let paper = '';
    window.pagoraTellPaper = () => {
        const grounds = [rootOf.call(document), bodyOf.call(document)].filter((each) => each)
            .map((each) => getComputedStyle(each).backgroundColor);
        const ground = (grounds.find((each) => each !== clear) || 'none').replace(/\s/g, '');
        if (ground !== paper)
            post('paper ' + ground);
        paper = ground;
    };

    // Gives drawings without a background a light one in a dark theme.
    const groundMark = 'data-pagora-dark';
    function backgroundIsAskedFor(style, value) {
        const body = bodyOf.call(document);
        const root = rootOf.call(document);
        if (!body || style !== body.style)
            return;
        if (/^#0{3,6}$/.test(value))
            Element.prototype.setAttribute.call(root, groundMark, '');
        else
            Element.prototype.removeAttribute.call(root, groundMark);
    }

    const setProperty = CSSStyleDeclaration.prototype.setProperty;
    const isSupported = CSS.supports;
    // A font family with a word that begins with a digit must be quoted.
    const quotedFamily = (family) => (isSupported.call(CSS, 'font-family', family)
        ? family : '"' + family.replace(/["\\]/g, '\\$&') + '"');
    let styles = Object.getPrototypeOf(Document.prototype.createElement.call(document, 'p').style);
    while (!Object.prototype.hasOwnProperty.call(styles, 'webkitColumnWidth'))
        styles = Object.getPrototypeOf(styles);
    // The column width that the reader computes does not include the margins of a wide view.
    const asSet = {
        fontFamily: quotedFamily,
        maxWidth: (value) => 'min(' + value + ', 100%)',
    };
    for (const [property, name] of Object.entries(readersStyles)) {
        Object.defineProperty(styles, property, {
            configurable: true,
            get: getterOf(styles, property),
            set(value) {
                const text = pagoraLaysOut && asSet[property] ? asSet[property](String(value)) : value;
                setProperty.call(this, name, text, pagoraLaysOut ? 'important' : '');
                columnsAreAskedFor(property, value);
                if (property === 'backgroundColor') {
                    backgroundIsAskedFor(this, value);
                    queueMicrotask(pagoraTellPaper);
                }
                followStripSoon();
            },
        });
    }

    // Returns the strip of columns of the body, with everything fitted into it; null if the body has no columns.
    const columnStrip = () => pagoraFit(pagoraMeasureStrip);

    // --- Positions ---------------------------------------------------------------------------------------------------

    const isRightToLeft = () => {
        const body = bodyOf.call(document);
        return !!body && getComputedStyle(body).direction === 'rtl';
    };

    let stripLength = 0;
    // The engine rounds the column width down, so its pages are slightly narrower than the reader's.
    let pageShare = 1;

    // Lets the view scroll to the end of the strip, including the margin.
    function extendStrip() {
        const strip = columnStrip();
        const length = strip ? strip.length : 0;
        pageShare = strip ? strip.pageShare : 1;
        if (length === stripLength)
            return;
        stripLength = length;
        const end = Math.max(0, length - 1) + 'px';
        const rightToLeft = !!strip && strip.rightToLeft;
        const style = rootOf.call(document).style;
        style.setProperty('left', rightToLeft ? 'auto' : end, 'important');
        style.setProperty('right', rightToLeft ? end : 'auto', 'important');
    }

    // The position that the reader set, from the start of the strip, and the resulting position of the engine.
    let readerX = 0;
    let positionX = 0;
    let positionY = 0;

    const currentX = () => (isRightToLeft() ? -nativeScrollX.call(window) : nativeScrollX.call(window)) || 0;

    function place(x, y) {
        pagoraClosePicture();
        extendStrip();
        // Overflowing elements would let the view scroll beyond the strip.
        if (stripLength)
            x = Math.max(0, Math.min(x, stripLength - innerWidth));
        const engineX = Math.round(x * pageShare);
        nativeScrollTo.call(window, { left: isRightToLeft() ? -engineX : engineX, top: y, behavior: 'instant' });
        positionX = currentX();
        readerX = positionX === engineX ? Math.trunc(x) : Math.round(positionX / pageShare);
        positionY = nativeScrollY.call(window);
    }

    // Converts a distance from the start of the view to a distance from the start of the reader's strip.
    window.pagoraAlong = (distance) => (currentX() + distance) / pageShare;

    // A change of text size, font or width may make the strip end before the page's position.
    function followStrip() {
        if (positionX > 0)
            place(readerX, positionY);
    }
    window.pagoraFollowStrip = followStrip;

    // Deferred until the script that changes the styles has run. A page at the start is always within the strip.
    let followsStrip = false;
    function followStripSoon() {
        if (followsStrip || positionX === 0)
            return;
        followsStrip = true;
        queueMicrotask(() => {
            followsStrip = false;
            followStrip();
        });
    }

    // Undoes scrolling by the keyboard, a search, a selection, the page's scripts or the engine.
    function restorePosition() {
        if (currentX() !== positionX || nativeScrollY.call(window) !== positionY)
            place(readerX, positionY);
    }

    window.scrollTo = function (x, y) {
        place(Number(x) || 0, Number(y) || 0);
    };
    for (const name of ['pageXOffset', 'scrollX']) {
        Object.defineProperty(window, name, {
            configurable: true,
            get() {
                restorePosition();
                return readerX;
            },
        });
    }
    Object.defineProperty(Element.prototype, 'scrollWidth', {
        configurable: true,
        enumerable: true,
        get() {
            const strip = this === bodyOf.call(document) ? columnStrip() : null;
            return strip ? strip.length : nativeScrollWidth.call(this);
        },
    });
    window.addEventListener('scroll', (event) => {
        if (event.target === document)
            restorePosition();
    }, { capture: true, passive: true });

    // Elements of other languages have no `style`, but the reader expects one.
    Object.defineProperty(Element.prototype, 'style', { configurable: true, get: () => ({}) });

    // --- Vertical distances ------------------------------------------------------------------------------------------

    const replacedElements = /^(?:audio|canvas|embed|hr|iframe|img|input|math|object|svg|video)$/i;
    const maxNodes = 500;

    const firstBox = (boxes) => {
        for (const box of boxes) {
            if (box.height > 0)
                return box;
        }
        return null;
    };

    // Returns the box of the first visible content in the element: a character, an image, a rule.
    function firstVisibleBox(element) {
        const range = new Range();
        const nodes = Document.prototype.createTreeWalker.call(
            document, element, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT);
        for (let seen = 0; seen < maxNodes && nodes.nextNode(); ++seen) {
            const node = nodes.currentNode;
            let box = null;
            if (node.nodeType === Node.TEXT_NODE) {
                const start = node.data.search(/\S/);
                if (start < 0)
                    continue;
                range.setStart(node, start);
                range.setEnd(node, start + 1);
                box = firstBox(range.getClientRects());
            } else if (replacedElements.test(node.localName))
                box = firstBox(Element.prototype.getClientRects.call(node));
            if (box)
                return box;
        }
        return Element.prototype.getClientRects.call(element)[0] || null;
    }

    // Returns the distance to the element as if the columns were below each other; undefined if the engine's own value
    // applies.
    function distanceDownTheText(element) {
        const strip = columnStrip();
        if (!strip || element === strip.body || !Node.prototype.contains.call(strip.body, element))
            return undefined;
        const box = firstVisibleBox(element);
        if (!box)
            return undefined;
        const frame = Element.prototype.getBoundingClientRect.call(strip.body);
        const across = strip.rightToLeft
            ? frame.right - strip.paddingRight - box.right
            : box.left - frame.left - strip.paddingLeft;
        const column = Math.max(0, Math.floor((across + strip.gap / 2) / strip.step));
        const down = Math.round(box.top - frame.top - strip.paddingTop);
        const lowest = Math.ceil(strip.height) - 1;
        return Math.round(column * strip.height) + Math.max(0, Math.min(down, lowest));
    }

    Object.defineProperty(HTMLElement.prototype, 'offsetTop', {
        configurable: true,
        enumerable: true,
        get() {
            const distance = distanceDownTheText(this);
            return distance === undefined ? nativeOffsetTop.call(this) : distance;
        },
    });

    // --- Pending resources -------------------------------------------------------------------------------------------

    // Style sheets that have arrived or failed.
    const settledLinks = new WeakSet();
    for (const name of ['load', 'error'])
        document.addEventListener(name, (event) => event.target instanceof Element && settledLinks.add(event.target), true);

    // Returns the style sheets on which the page's layout still depends.
    window.pagoraAwaitedStyles = () => {
        const links = Document.prototype.querySelectorAll.call(document, 'link[rel~="stylesheet" i][href]');
        return Array.from(links).filter((link) => !link.sheet && !settledLinks.has(link) && !link.disabled
            && !link.relList.contains('alternate') && (!link.media || matchMedia(link.media).matches));
    };

    // --- Reports to the program --------------------------------------------------------------------------------------

    const takesKeys = (node) => node instanceof Element
        && (/^(?:audio|button|input|select|summary|textarea|video)$/i.test(node.localName) || node.isContentEditable
            || Element.prototype.hasAttribute.call(node, 'data-pagora-scrolls'));

    // Only events of the engine itself are used, because the page can send any number of events.
    const listen = (type, act) => window.addEventListener(type, (event) => event.isTrusted && act(event), true);

    // A control gets the keys only if the user has pressed it or moved to it with Tab, not if the page itself focuses
    // it. Escape returns the keys to the reader.
    const tabTimeout = 1000;
    let pressed = null;
    let lastTab = -Infinity;
    const isPressed = (control) => pressed && (control === pressed || Node.prototype.contains.call(control, pressed)
        || Array.from(control.labels || []).some((label) => Node.prototype.contains.call(label, pressed)));
    listen('pointerdown', (event) => {
        pressed = event.target;
        const focused = activeElementOf.call(document);
        if (takesKeys(focused) && isPressed(focused))
            post('keys 1');
    });
    listen('keydown', (event) => {
        if (event.key === 'Tab') {
            pressed = null;
            lastTab = performance.now();
        } else if (event.key === 'Escape') {
            pressed = null;
            post('keys 0');
        }
    });
    listen('focusin', (event) => {
        const isWanted = isPressed(event.target) || performance.now() - lastTab < tabTimeout;
        post('keys ' + (isWanted && takesKeys(event.target) ? 1 : 0));
    });
    listen('focusout', () => post('keys 0'));
    // Calls `call` in the next frame, or in a later one, by this number.
    const afterFrames = (frames, call) => requestAnimationFrame(() => (frames > 0 ? afterFrames(frames - 1, call) : call()));
    // Calls `report` when the present layout has been drawn. `frames` is the number of further frames that begin before the
    // engine presents one. A message that is sent in a frame callback arrives after that frame.
    const drawings = new MessageChannel();
    const reports = [];
    drawings.port1.onmessage = () => reports.shift()();
    window.pagoraWhenDrawn = (frames, report) => afterFrames(frames, () => {
        reports.push(report);
        drawings.port2.postMessage(0);
    });
    window.pagoraReportPaint = (number, frames) => pagoraWhenDrawn(frames, () => post('painted ' + number));
    // Reports the first drawing of the page. `pagoraLaysOut` is read then, because it is set after this script.
    new PerformanceObserver(() => pagoraLaysOut && post('begun')).observe({ type: 'paint', buffered: true });
    listen('resize', () => post('size ' + innerWidth + ' ' + innerHeight));
})();
