// Runs in the reader's own script world as soon as the document is complete, before its images are.
(function () {
    'use strict';

    // What the engine puts into a page of XML at the fault that it stopped at.
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

    // With a column width alone, the reader leaves the count to the book. Where it is about to give one, that stands at
    // once: the page would be laid out twice.
    const body = document.body;
    if (pagoraLaysOut && body && body.style)
        body.style.setProperty('column-count', pagoraColumnCount, 'important');

    // Laid out before its style sheets are there, the page would be laid out twice; one that never comes is not waited
    // for.
    const complete = () => {
        if (pagoraLaysOut)
            pagoraTellPaper();
        window.webkit.messageHandlers.pagora.postMessage(
            pagoraLoad + ' complete ' + (body ? getComputedStyle(body).direction : 'ltr'));
    };
    const longestWait = 500;
    const start = performance.now();
    (function wait() {
        if (!pagoraAwaitedStyles().length || performance.now() - start > longestWait)
            complete();
        else
            setTimeout(wait, 2);
    })();
})();
