// Runs in the reader's script world of every page, before the page has any content. Reports which reference to a note
// the user points at: by resting the pointer on it, with Shift+Enter, or by a long press.

(function () {
    'use strict';

    const restTime = 350;
    const longPress = 500;
    // Heuristics for references without an explicit type.
    const maxMarkLength = 6;

    const post = (text) => window.webkit.messageHandlers.pagora.postMessage(pagoraLoad + ' ' + text);
    const activeElementOf = Object.getOwnPropertyDescriptor(Document.prototype, 'activeElement').get;
    const attribute = Element.prototype.getAttribute;
    const attributeNS = Element.prototype.getAttributeNS;
    const words = (text) => (text || '').split(/\s+/);

    function isRaised(link) {
        if (link.closest('sup') || link.querySelector('sup'))
            return true;
        const align = getComputedStyle(link).verticalAlign;
        return align === 'super' || align === 'text-top' || align === 'top' || parseFloat(align) > 0;
    }

    // Returns the reference around the element, if it leads to a place in the book.
    function referenceAt(target) {
        const link = target instanceof Element ? target.closest('a') : null;
        if (!link || !pagoraLaysOut || !/^file:.*#./i.test(link.href || ''))
            return null;
        const kinds = words(attributeNS.call(link, 'http://www.idpf.org/2007/ops', 'type') || attribute.call(link, 'epub:type'))
            .concat(words(attribute.call(link, 'role')));
        if (kinds.includes('noteref') || kinds.includes('doc-noteref'))
            return link;
        if (kinds.includes('backlink') || kinds.includes('doc-backlink'))
            return null;
        const length = link.textContent.trim().length;
        return length > 0 && length <= maxMarkLength && isRaised(link) ? link : null;
    }

    function tell(link, how) {
        const box = Element.prototype.getClientRects.call(link)[0];
        if (box)
            post(['note', how, box.left, box.top, box.width, box.height, link.href].join(' '));
    }

    // Does what Shift+Enter on the element does. Returns whether it is a reference.
    window.pagoraAskForNote = (element) => {
        const link = referenceAt(element);
        if (link)
            tell(link, 'key');
        return !!link;
    };

    const listen = (type, act) => window.addEventListener(type, (event) => event.isTrusted && act(event), true);

    let rested = null;
    let timer = 0;
    function restOn(link) {
        if (link === rested)
            return;
        clearTimeout(timer);
        if (rested)
            post('note');
        rested = link;
        if (link)
            timer = setTimeout(() => tell(link, 'pointer'), restTime);
    }
    listen('pointerover', (event) => event.pointerType !== 'touch' && restOn(referenceAt(event.target)));
    listen('pointerout', (event) => !event.relatedTarget && restOn(null));

    listen('keydown', (event) => {
        const link = event.key === 'Enter' && event.shiftKey ? referenceAt(activeElementOf.call(document)) : null;
        if (!link)
            return;
        event.preventDefault();
        event.stopPropagation();
        tell(link, 'key');
    });

    let pressTimer = 0;
    let wasLong = false;
    listen('pointerdown', (event) => {
        wasLong = false;
        const link = event.pointerType === 'touch' ? referenceAt(event.target) : null;
        if (link)
            pressTimer = setTimeout(() => {
                wasLong = true;
                tell(link, 'touch');
            }, longPress);
    });
    for (const type of ['pointerup', 'pointercancel', 'pointermove'])
        listen(type, (event) => event.pointerType === 'touch' && clearTimeout(pressTimer));
    // A long press does not follow the link.
    listen('click', (event) => {
        if (wasLong) {
            event.preventDefault();
            event.stopPropagation();
        }
        wasLong = false;
    });
})();
