// Runs in the reader's own script world as soon as the document is complete, before its images are.
(function () {
    'use strict';

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

    // With a column width alone, the reader leaves the count to the book.
    const body = document.body;
    if (pagoraLaysOut && body && body.style)
        body.style.setProperty('column-count', 'auto', 'important');

    window.webkit.messageHandlers.pagora.postMessage(pagoraLoad + ' complete');
})();
