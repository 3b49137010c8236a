// Runs in the reader's script world of every page, before page-fit.js. Measures the strip of columns in which the body
// is laid out.

// Returns the font size of this style in pixels, including the reader's text size. Newer engines leave the text size out of
// the computed font size but include it in lengths in em. page.css sets the object position of the root to one em.
var pagoraFontSize = (style) => {
    'use strict';

    const root = getComputedStyle(document.documentElement);
    const scale = parseFloat(root.objectPosition) / parseFloat(root.fontSize);
    return (parseFloat(style.fontSize) || 0) * (scale > 0 && scale < Infinity ? scale : 1);
};

// Returns the measured strip; null if the body has no columns. Lengths are in pixels and not rounded:
//
//   body, rightToLeft          the body and its direction
//   step, gap                  distance between the starts of two columns, and space between them
//   height                     height of a column
//   paddingLeft, paddingRight, paddingTop
//   reach                      extent of the content
//   length                     length of the reader's strip, a whole number of views
//   columnsOfPage              number of columns in a view
//   pageShare                  width of the engine's pages, as a fraction of the view's width
var pagoraMeasureStrip = (function () {
    'use strict';

    const getterOf = (owner, name) => Object.getOwnPropertyDescriptor(owner, name).get;
    const bodyOf = getterOf(Document.prototype, 'body');
    const rootOf = getterOf(Document.prototype, 'documentElement');
    const compatModeOf = getterOf(Document.prototype, 'compatMode');
    const nativeScrollWidth = getterOf(Element.prototype, 'scrollWidth');
    const pixels = (length) => parseFloat(length) || 0;

    // Returns the extent of the body's content. In quirks mode the body's scroll width is that of the view, which
    // includes the end of the strip.
    function reachOf(body) {
        if (compatModeOf.call(document) !== 'BackCompat')
            return nativeScrollWidth.call(body);
        const style = rootOf.call(document).style;
        const left = style.getPropertyValue('left');
        const right = style.getPropertyValue('right');
        style.setProperty('left', 'auto', 'important');
        style.setProperty('right', 'auto', 'important');
        const reach = nativeScrollWidth.call(body);
        style.setProperty('left', left, 'important');
        style.setProperty('right', right, 'important');
        return reach;
    }

    // The engine measures in 64ths of a pixel and rounds the width of a column down.
    const roundedDown = (length) => Math.floor(length * 64) / 64;

    return () => {
        const body = bodyOf.call(document);
        if (!body)
            return null;
        const style = getComputedStyle(body);
        const count = parseInt(style.columnCount, 10);
        const width = pixels(style.columnWidth);
        if (!count && !width)
            return null;

        const paddingLeft = pixels(style.paddingLeft);
        const paddingRight = pixels(style.paddingRight);
        const content = body.clientWidth - paddingLeft - paddingRight;
        const gap = pixels(style.columnGap);
        const fitting = width ? Math.max(1, Math.floor((content + gap) / (width + gap))) : Infinity;
        const columnsOfPage = Math.min(count || Infinity, fitting);
        const rightToLeft = style.direction === 'rtl';
        const step = roundedDown((content + gap) / columnsOfPage);
        // Extends to the end of the column into which content overflows, with the margin after it. The engine does not
        // include that in the body's overflow.
        const reach = reachOf(body);
        const columns = Math.ceil((reach - (rightToLeft ? paddingRight : paddingLeft) + gap - 2) / step);
        // Rounds up to whole pages, so an empty column may follow the last one.
        const pages = reach > body.clientWidth ? Math.ceil(columns / columnsOfPage) : 1;
        return {
            body,
            gap,
            step,
            height: pixels(style.height),
            paddingLeft,
            paddingRight,
            paddingTop: pixels(style.paddingTop),
            rightToLeft,
            reach,
            columnsOfPage,
            length: pages * body.clientWidth,
            pageShare: body.clientWidth ? columnsOfPage * step / body.clientWidth : 1,
        };
    };
})();
