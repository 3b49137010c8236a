// Runs in the reader's own script world as soon as the document is complete, before its images are.
(function () {
    'use strict';

    // The element that the engine inserts at an XML error.
    const type = Object.getOwnPropertyDescriptor(Document.prototype, 'contentType').get.call(document);
    if (/^(?:application|text)\/(?:xhtml\+)?xml$/.test(type)
        && Document.prototype.querySelector.call(document, 'parsererror')) {
        window.webkit.messageHandlers.pagora.postMessage(pagoraLoad + ' broken');
        return;
    }

    // An element named like a property of the document would be found in its place.
    const named = Document.prototype.querySelectorAll.call(
        document, 'embed[name], form[name], iframe[name], img[name], object[name], object[id]');
    for (const element of named) {
        for (const attribute of ['name', 'id']) {
            const value = Element.prototype.getAttribute.call(element, attribute);
            if (value !== null && value in Document.prototype)
                Element.prototype.removeAttribute.call(element, attribute);
        }
    }

    // With only a column width the book's column count would apply. If the reader is about to set a count, it is set here,
    // to avoid a second layout.
    const body = document.body;
    if (pagoraLaysOut && body && body.style)
        body.style.setProperty('column-count', pagoraColumnCount, 'important');

    // Waits for the style sheets, because a layout without them would be repeated. The wait is limited.
    const complete = () => {
        if (pagoraLaysOut)
            pagoraTellPaper();
        window.webkit.messageHandlers.pagora.postMessage(
            pagoraLoad + ' complete ' + (body ? getComputedStyle(body).direction : 'ltr'));
    };
    const maxWait = 500;
    const start = performance.now();
    (function wait() {
        if (!pagoraAwaitedStyles().length || performance.now() - start > maxWait)
            complete();
        else
            setTimeout(wait, 2);
    })();
})();
