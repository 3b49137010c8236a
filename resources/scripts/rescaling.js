// Scales a fixed-layout page so that all of it is visible, with its aspect ratio and centred in the view. Runs after
// jQuery in the reader's script world, once per load; `init` is called before the first `scale`.

// The scale from the page's own pixels to those of the view.
var Xscale = 1;

var rescaling = rescaling || (function () {
    'use strict';

    // Sizes beyond these limits are ignored.
    const minLength = 1;
    const maxLength = 20000;
    // The maximum number of corrections of a page that keeps changing its root.
    const maxCorrections = 200;

    const pixelsPerUnit = {
        '': 1, px: 1, pt: 4 / 3, pc: 16, in: 96, cm: 96 / 2.54, mm: 96 / 25.4, em: 16, rem: 16, ex: 8,
    };

    const root = document.documentElement;
    const isDrawing = root instanceof SVGSVGElement;
    const page = { width: 0, height: 0 };
    const isUsable = (length) => length >= minLength && length <= maxLength;

    function setImportant(element, properties) {
        for (const name in properties)
            element.style.setProperty(name, properties[name], 'important');
    }

    // --- Size of the page --------------------------------------------------------------------------------------------

    // Parses a length with an optional unit. Returns pixels; 0 if it cannot be used.
    function pixels(text) {
        const parts = /^\s*\+?(\d*\.?\d+(?:e[+-]?\d+)?)\s*([a-z%]*)\s*$/i.exec(text || '');
        const length = parts ? parts[1] * pixelsPerUnit[parts[2].toLowerCase()] : 0;
        return isUsable(length) ? length : 0;
    }

    // Returns the size in the viewport declaration, in any order and with any separators.
    function viewportSize() {
        const size = { width: 0, height: 0 };
        $('meta').filter(function () {
            return $.trim(this.getAttribute('name')).toLowerCase() === 'viewport';
        }).each(function () {
            const part = /(?<![a-z-])(width|height)\s*[=:]\s*["']?\s*(\+?[\d.]+(?:e\+?\d+)?\s*(?:%|px|pt|pc|in|cm|mm|r?em|ex)?)/gi;
            for (const [, side, length] of (this.getAttribute('content') || '').matchAll(part))
                size[side.toLowerCase()] = pixels(length) || size[side.toLowerCase()];
        });
        return size;
    }

    function drawingSize(svg) {
        const box = (svg.getAttribute('viewBox') || '').trim().split(/[\s,]+/).map(Number);
        if (box.length === 4 && isUsable(box[2]) && isUsable(box[3]))
            return { width: box[2], height: box[3] };
        return { width: pixels(svg.getAttribute('width')), height: pixels(svg.getAttribute('height')) };
    }

    // Returns the picture if the page consists of a single one.
    function onlyPicture() {
        let element = $('body')[0];
        while (element && !$(element).is('img, svg')) {
            const seen = $(element).contents().filter(function () {
                if (this.nodeType === Node.TEXT_NODE)
                    return $.trim(this.data) !== '';
                return this.nodeType === Node.ELEMENT_NODE && !$(this).is('script, style, link, meta, title, template');
            });
            element = seen.length === 1 && seen[0].nodeType === Node.ELEMENT_NODE ? seen[0] : null;
        }
        return element;
    }

    const pictureSize = (picture) => picture instanceof SVGSVGElement
        ? drawingSize(picture)
        : { width: picture.naturalWidth, height: picture.naturalHeight };

    // Makes the picture fill the page.
    function spread(picture, size) {
        if (picture instanceof SVGSVGElement && !picture.hasAttribute('viewBox'))
            picture.setAttribute('viewBox', '0 0 ' + size.width + ' ' + size.height);
        setImportant(picture, {
            position: 'fixed', left: '0px', top: '0px', width: size.width + 'px', height: size.height + 'px',
            'min-width': '0px', 'min-height': '0px', 'max-width': 'none', 'max-height': 'none', margin: '0px',
        });
    }

    // Returns the size of the page's layout in the view, completed with the known lengths.
    function laidOutSize(size) {
        if (size.width)
            setImportant(root, { width: size.width + 'px' });
        if (size.height)
            setImportant(root, { height: size.height + 'px' });
        const body = $('body')[0];
        const reach = (length) => Math.min(Math.max(Math.ceil(length), minLength), maxLength);
        const content = body && size.width ? Math.max(root.offsetHeight, body.scrollHeight) : 0;
        return {
            width: size.width || reach(root.scrollWidth),
            height: size.height || reach(content || root.scrollHeight),
        };
    }

    function pageSize() {
        const said = isDrawing ? drawingSize(root) : viewportSize();
        if (said.width && said.height)
            return said;
        if (isDrawing) {
            // A drawing with one length is treated as a square; without lengths, it gets the size of the view.
            const other = said.width || said.height;
            return other ? { width: other, height: other } : { width: innerWidth, height: innerHeight };
        }
        const picture = said.width || said.height ? null : onlyPicture();
        const size = picture ? pictureSize(picture) : said;
        if (picture && isUsable(size.width) && isUsable(size.height)) {
            spread(picture, size);
            return size;
        }
        return laidOutSize(said);
    }

    // --- Position in the view ----------------------------------------------------------------------------------------

    function place() {
        const width = page.width * Xscale;
        const height = page.height * Xscale;
        const left = Math.max(0, Math.floor((innerWidth - width) / 2)) + 'px';
        const top = Math.max(0, Math.floor((innerHeight - height) / 2)) + 'px';
        setImportant(root, {
            position: 'absolute', right: 'auto', bottom: 'auto', margin: '0px', 'box-sizing': 'border-box',
            'min-width': '0px', 'min-height': '0px', 'max-width': 'none', 'max-height': 'none', zoom: '1',
            translate: 'none', rotate: 'none', scale: 'none', transition: 'none',
        });
        if (isDrawing) {
            setImportant(root, { left, top, width: width + 'px', height: height + 'px', transform: 'none' });
            return;
        }
        setImportant(root, {
            left: '0px', top: '0px', width: page.width + 'px', height: page.height + 'px', 'transform-origin': '0 0',
            transform: 'translate(' + left + ', ' + top + ') scale(' + Xscale + ')', 'clip-path': 'inset(0px)',
            'will-change': 'auto', perspective: 'none',
        });
    }

    const corrections = { left: maxCorrections, style: '' };
    const observer = new MutationObserver(() => {
        if (root.getAttribute('style') !== corrections.style && corrections.left-- > 0)
            rescale();
    });

    function rescale() {
        const factor = Math.min(innerWidth / page.width, innerHeight / page.height);
        Xscale = factor > 0 && isFinite(factor) ? factor : 1;
        place();
        corrections.style = root.getAttribute('style');
    }

    function prepare() {
        if (page.width)
            return;
        Object.assign(page, pageSize());
        if (isDrawing && !root.hasAttribute('viewBox'))
            root.setAttribute('viewBox', '0 0 ' + page.width + ' ' + page.height);
        // Resize events are sent before the view is drawn in its new size.
        window.addEventListener('resize', rescale);
        observer.observe(root, { attributes: true, attributeFilter: ['style'] });
    }

    return { page, prepare, rescale };
})();

// Determines the page's own size and follows the size of the view.
function init() {
    rescaling.prepare();
}

// Fits the page to the present view.
function scale() {
    rescaling.rescale();
}

// Returns the page's own width in pixels, or that of the view ('win').
function getWidth(of) {
    return Math.round(of === 'win' ? innerWidth : rescaling.page.width);
}

function getHeight(of) {
    return Math.round(of === 'win' ? innerHeight : rescaling.page.height);
}
