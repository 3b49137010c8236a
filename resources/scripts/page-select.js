// Runs in the reader's script world of every page, before the page has any content. Reports the text that the user has
// selected and its position on the page. The program then shows actions for it.

var pagoraSelection = (function () {
    'use strict';

    // The minimum time between two messages, in milliseconds. A page can change its selection all the time.
    const interval = 100;
    // Maximum length of the reported text, in characters.
    const maxTold = 300;
    const maxCopied = 1000000;
    const maxBoxes = 8;
    // Elements that are not part of the surrounding text.
    const skipped = /^(?:annotation|desc|head|metadata|noscript|rp|rt|script|style|template|title)$/i;

    const port = window.webkit.messageHandlers.pagora;
    const selectionOf = Document.prototype.getSelection;
    const nodeFilter = (node) => (node.nodeType === Node.ELEMENT_NODE && skipped.test(node.localName)
        ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT);

    function selectedRange() {
        const selection = selectionOf.call(document);
        return selection && selection.rangeCount && !selection.isCollapsed ? selection.getRangeAt(0) : null;
    }

    // --- Selected text -----------------------------------------------------------------------------------------------

    function blockAround(node) {
        let element = node.parentElement;
        while (element && /^(?:inline|ruby|contents)/.test(getComputedStyle(element).display))
            element = element.parentElement;
        return element;
    }

    // Returns the text in one line, without soft hyphens and ruby annotations.
    function textOf(range) {
        const { startContainer: first, endContainer: last } = range;
        const walker = Document.prototype.createTreeWalker.call(document, document,
            NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT | NodeFilter.SHOW_CDATA_SECTION, nodeFilter);
        walker.currentNode = first.childNodes[range.startOffset] || first;
        let text = '';
        let block = null;
        for (let node = walker.currentNode; node && text.length < maxTold * 2; node = walker.nextNode()) {
            if (range.comparePoint(node, 0) > 0)
                break;
            if (node.nodeType === Node.ELEMENT_NODE || !range.intersectsNode(node))
                continue;
            const around = blockAround(node);
            const from = node === first ? range.startOffset : 0;
            const to = node === last ? range.endOffset : node.length;
            text += (block && around !== block ? ' ' : '') + node.data.slice(from, Math.min(to, from + maxTold * 2));
            block = around;
        }
        const line = text.replace(/\u00ad/g, '').replace(/\s+/g, ' ').trim();
        return Array.from(line).slice(0, maxTold).join('').toWellFormed();
    }

    // --- Position ----------------------------------------------------------------------------------------------------

    const boundsOf = (a, b) => ({
        left: Math.min(a.left, b.left),
        top: Math.min(a.top, b.top),
        right: Math.max(a.right, b.right),
        bottom: Math.max(a.bottom, b.bottom),
    });
    const isBeside = (box, other) => box.left >= other.right - 1 || box.right <= other.left + 1;
    const middleOf = (box) => (box.top + box.bottom) / 2;

    // Returns the visible part of the selected text: a box for each column, and its first and last lines.
    function placeOf(range) {
        const columns = [];
        let first = null;
        let last = null;
        for (const box of range.getClientRects()) {
            const seen = {
                left: Math.max(0, box.left),
                top: Math.max(0, box.top),
                right: Math.min(innerWidth, box.right),
                bottom: Math.min(innerHeight, box.bottom),
            };
            if (seen.right <= seen.left || seen.bottom <= seen.top)
                continue;
            const column = columns.at(-1);
            const startsColumn = !column || (isBeside(seen, column) && seen.bottom <= last.top);
            const isOnLine = last && !startsColumn && middleOf(seen) > last.top && middleOf(seen) < last.bottom;
            if (isOnLine && first === last)
                first = last = boundsOf(last, seen);
            else if (isOnLine)
                last = boundsOf(last, seen);
            else
                last = seen;
            first = first || last;
            if (startsColumn && columns.length < maxBoxes)
                columns.push(seen);
            else
                columns.push(boundsOf(columns.pop(), seen));
        }
        return first && { columns, first, last };
    }

    // --- Reports -----------------------------------------------------------------------------------------------------

    const wordsOf = (box) => [box.left, box.top, box.right - box.left, box.bottom - box.top].join(' ');
    const post = (text) => port.postMessage(pagoraLoad + ' selection' + text);

    // True if the program shows the reported selection.
    let isTold = false;
    // While a mouse button is pressed, the selection is not complete.
    let isPressed = false;
    // Time at which the next message may be sent.
    let nextTime = 0;
    let timer = 0;
    let wantedWay = '';

    function forget() {
        clearTimeout(timer);
        timer = 0;
        isTold = false;
    }

    function takeBack() {
        const wasTold = isTold;
        forget();
        if (wasTold)
            post('');
    }

    function tell() {
        timer = 0;
        const start = performance.now();
        const range = selectedRange();
        const place = range && placeOf(range);
        const text = place && textOf(range);
        // A selection that takes long to measure is measured less often.
        nextTime = performance.now() + Math.max(interval, 10 * (performance.now() - start));
        if (!text)
            return takeBack();
        isTold = true;
        post([' ' + wantedWay, place.columns.length, ...place.columns.map(wordsOf), wordsOf(place.first),
            wordsOf(place.last), text].join(' '));
    }

    function tellSoon(way) {
        wantedWay = way;
        if (!timer)
            timer = setTimeout(tell, Math.max(0, nextTime - performance.now()));
    }

    const listen = (type, act) => window.addEventListener(type, (event) => event.isTrusted && act(event), true);
    listen('pointerdown', () => {
        isPressed = true;
        takeBack();
    });
    listen('pointerup', (event) => {
        isPressed = false;
        if (event.button === 0 && selectedRange())
            tellSoon('pointer');
    });
    listen('pointercancel', () => { isPressed = false; });
    listen('selectionchange', () => {
        if (isTold && !isPressed)
            tellSoon('change');
    });
    // The text has moved.
    for (const type of ['scroll', 'resize'])
        listen(type, takeBack);

    // The element whose lines hold the text. Floats, such as a large first letter, belong to the text around them.
    function blockOfWord(node) {
        let block = blockAround(node);
        while (block && getComputedStyle(block).float !== 'none')
            block = blockAround(block);
        return block;
    }

    // The last text in one direction that is selected and in the same block as the pressed one. Missing if the selection
    // does not go on in another block there.
    function edgeOfBlock(range, pressed, step) {
        const block = blockOfWord(pressed);
        const walker = Document.prototype.createTreeWalker.call(document, document, NodeFilter.SHOW_TEXT, nodeFilter);
        walker.currentNode = pressed;
        let edge = pressed;
        for (let node = walker[step](); node && range.intersectsNode(node); node = walker[step]()) {
            if (blockOfWord(node) !== block)
                return edge;
            edge = node;
        }
        return null;
    }

    // The engine takes the last word of a block and the first one of the next block for one word where both are out of the
    // flow. Of a word that is pressed twice, only the part in the pressed block stays selected.
    listen('dblclick', (event) => {
        const range = selectedRange();
        const at = Document.prototype.caretRangeFromPoint.call(document, event.clientX, event.clientY);
        const pressed = at && at.startContainer;
        if (!range || !pressed || pressed.nodeType !== Node.TEXT_NODE || !range.intersectsNode(pressed))
            return;
        const first = edgeOfBlock(range, pressed, 'previousNode');
        const last = edgeOfBlock(range, pressed, 'nextNode');
        if (!first && !last)
            return;
        selectionOf.call(document).setBaseAndExtent(first || range.startContainer, first ? 0 : range.startOffset,
            last || range.endContainer, last ? last.length : range.endOffset);
    });

    return {
        // Reports the selection on request of a key. Returns whether there is one.
        ask() {
            if (!selectedRange())
                return false;
            tellSoon('key');
            return true;
        },
        // Called when the program no longer shows the selection.
        forget,
        // Returns the whole text as the engine would copy it, without soft hyphens.
        text: () => String(selectionOf.call(document)).slice(0, maxCopied).replace(/\u00ad/g, '').toWellFormed(),
    };
})();
