// Measures lines of text, for page-faults.js.
var pagoraGlyphs = (function () {
    'use strict';

    const pen = document.createElementNS('http://www.w3.org/1999/xhtml', 'canvas').getContext('2d');
    const range = new Range();

    // Returns the top and bottom of a text's glyphs in its line box; null if the font is unknown.
    function inkOf(style, box, text) {
        pen.font = style.font || `${style.fontStyle} ${style.fontWeight} ${style.fontSize} ${style.fontFamily}`;
        const measured = pen.measureText(text);
        const height = measured.fontBoundingBoxAscent + measured.fontBoundingBoxDescent;
        if (!(height > 0))
            return null;
        const scale = box.height / height;
        const baseline = box.top + measured.fontBoundingBoxAscent * scale;
        return {
            top: baseline - measured.actualBoundingBoxAscent * scale,
            bottom: baseline + measured.actualBoundingBoxDescent * scale,
        };
    }

    // Returns the text of a node on the line with this box.
    function textOn(node, rect) {
        let text = '';
        for (let i = 0; i < node.length && text.length < 200; ++i) {
            range.setStart(node, i);
            range.setEnd(node, i + 1);
            // A letter at the start of a line also has an empty box at the end of the previous line.
            const own = Array.from(range.getClientRects()).find((box) => box.width > 0);
            if (own && Math.abs(own.top - rect.top) < 1 && own.left >= rect.left - 1 && own.right <= rect.right + 1)
                text += node.data[i];
        }
        return text.trim();
    }

    // Scripts in which a line may end between any two letters.
    const withoutSpaces = /[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}\p{Script=Thai}\p{Script=Lao}\p{Script=Khmer}\p{Script=Myanmar}]/u;

    // Returns the number of letters in a text; wide ones are counted twice.
    const wide = /[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}\p{Script=Hangul}\u3000-\u303F\uFF01-\uFF60]/gu;
    const widthOf = (text) => text.length + (text.match(wide) || []).length;

    return { inkOf, textOn, widthOf, withoutSpaces };
})();
