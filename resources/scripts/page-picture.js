// Runs in the reader's script world of every page, before the page has any content. A click on a picture without
// another function enlarges it to the size of the view, until the next click, the Escape key or a page turn. The
// enlarged picture is a sibling of the body, so that the layout of the page does not change.

// True if the program shows pictures that are files. This script then shows a picture only if the program cannot.
var pagoraHandsPicturesOver = false;

// Removes the enlarged picture, if there is one.
var pagoraClosePicture = (function () {
    'use strict';

    const html = 'http://www.w3.org/1999/xhtml';
    const rootOf = Object.getOwnPropertyDescriptor(Document.prototype, 'documentElement').get;
    const make = (name) => Document.prototype.createElementNS.call(document, html, name);
    const setAttribute = Element.prototype.setAttribute;
    // Elements that handle clicks themselves.
    const pressable = 'a[href], area, audio, button, input, label, select, summary, textarea, video, [onclick],'
        + ' [contenteditable], [role="button"], [role="link"], [usemap]';

    const port = window.webkit.messageHandlers.pagora;
    let shown = null;

    // While the picture is shown, it gets the keys.
    function takeKeys(takes) {
        for (const what of [' keys ', ' escape '])
            port.postMessage(pagoraLoad + what + (takes ? 1 : 0));
    }

    function close() {
        if (!shown)
            return;
        const picture = shown;
        shown = null;
        picture.close();
        Element.prototype.remove.call(picture);
        takeKeys(false);
    }

    function pictureAt(target) {
        const picture = target instanceof Element ? target.closest('img, object[type^="image/"], svg') : null;
        // The outermost SVG element. Drawings of the size of letters are ignored.
        const whole = picture && (picture.ownerSVGElement || picture);
        const box = whole && Element.prototype.getBoundingClientRect.call(whole);
        const minSize = 2 * pagoraFontSize(getComputedStyle(document.body));
        return whole && !whole.closest(pressable) && box.width > minSize && box.height > minSize ? whole : null;
    }

    function copyOf(picture) {
        const copy = Node.prototype.cloneNode.call(picture, true);
        for (const name of ['id', 'class', 'style', 'width', 'height', 'align', 'hspace', 'vspace', 'border'])
            Element.prototype.removeAttribute.call(copy, name);
        return copy;
    }

    function show(picture) {
        const frame = make('dialog');
        setAttribute.call(frame, 'data-pagora-picture', '');
        setAttribute.call(frame, 'aria-label', picture.getAttribute('alt') || document.title);
        frame.append(copyOf(picture));
        rootOf.call(document).append(frame);
        frame.addEventListener('close', close);
        shown = frame;
        frame.showModal();
        takeKeys(true);
    }

    // Returns the file of the picture, or the only picture of a drawing; empty if it is not a file.
    function fileOf(picture) {
        if (picture instanceof HTMLImageElement)
            return picture.currentSrc;
        if (picture instanceof HTMLObjectElement)
            return picture.data;
        const drawn = Array.from(picture.querySelectorAll('*')).filter((each) => !/^(?:title|desc|g|defs)$/.test(each.localName));
        const isOneImage = drawn.length === 1 && drawn[0].localName === 'image';
        return isOneImage ? new URL(drawn[0].href.baseVal, document.baseURI).href : '';
    }

    let handedOver = null;

    // Does what a press on the element does.
    window.pagoraPressPicture = (element) => {
        const picture = pictureAt(element);
        const file = picture && pagoraHandsPicturesOver ? fileOf(picture) : '';
        if (/^file:\S+$/.test(file)) {
            handedOver = picture;
            port.postMessage(pagoraLoad + ' picture ' + file);
        } else if (picture)
            show(picture);
    };
    // Called if the program could not show the last picture that was pressed.
    window.pagoraShowPictureHere = () => handedOver && handedOver.isConnected && show(handedOver);

    window.addEventListener('click', (event) => {
        if (!event.isTrusted || event.defaultPrevented || event.button !== 0 || !pagoraLaysOut)
            return;
        if (shown)
            return close();
        // A drag has selected text.
        if (!String(getSelection()))
            pagoraPressPicture(event.target);
    });

    return close;
})();
