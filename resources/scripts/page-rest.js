// Runs in the reader's script world of every page, after page-start.js. Reports whether the idle page is drawn exactly
// as it would be after the book is reopened at the same place.

(function () {
    'use strict';

    const getterOf = (name) => Object.getOwnPropertyDescriptor(Document.prototype, name).get;
    const bodyOf = getterOf('body');
    const rootOf = getterOf('documentElement');
    const activeElementOf = getterOf('activeElement');
    const fontsOf = getterOf('fonts');
    const port = window.webkit.messageHandlers.pagora;
    // The highlights of a search in the book.
    const passing = ['pagora-found', 'pagora-current'];

    function isAsOpened() {
        const selection = Document.prototype.getSelection.call(document);
        const focused = activeElementOf.call(document);
        return (!selection || selection.isCollapsed)
            && (!focused || focused === bodyOf.call(document) || focused === rootOf.call(document))
            && !Document.prototype.querySelector.call(document, 'a:hover')
            && !passing.some((name) => CSS.highlights.has(name))
            && Document.prototype.getAnimations.call(document).length === 0
            && fontsOf.call(document).status !== 'loading';
    }

    // Reports the number when the present layout has been drawn.
    window.pagoraReportRest = (number, frames) => pagoraWhenDrawn(
        frames, () => port.postMessage(pagoraLoad + ' rests ' + number + ' ' + (isAsOpened() ? 1 : 0)));
})();
