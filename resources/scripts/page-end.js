// Runs in the reader's script world when the document is complete, before its images are loaded.
(function () {
    'use strict';

    // The element that the engine inserts at an XML error.
    const type = Object.getOwnPropertyDescriptor(Document.prototype, 'contentType').get.call(document);
    if (/^(?:application|text)\/(?:xhtml\+)?xml$/.test(type)
        && Document.prototype.querySelector.call(document, 'parsererror')) {
        window.webkit.messageHandlers.pagora.postMessage(pagoraLoad + ' broken');
        return;
    }

    // An element named like a property of the document would shadow it, so such names are removed.
    const named = Document.prototype.querySelectorAll.call(
        document, 'embed[name], form[name], iframe[name], img[name], object[name], object[id]');
    for (const element of named) {
        for (const attribute of ['name', 'id']) {
            const value = Element.prototype.getAttribute.call(element, attribute);
            if (value !== null && value in Document.prototype)
                Element.prototype.removeAttribute.call(element, attribute);
        }
    }

    // If only a column width were set, the book's column count would apply. If the reader will set a count, it is set
    // here, which avoids a second layout.
    const body = document.body;
    if (pagoraLaysOut && body && body.style)
        body.style.setProperty('column-count', pagoraColumnCount, 'important');

    // Waits for the style sheets for a limited time, because a layout without them would have to be repeated.
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
