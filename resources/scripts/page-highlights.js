// Runs in the reader's script world of every page, before the scripts that paint text. Registers ranges of text as highlights
// of the engine. A style sheet sets their colours. The page's nodes and layout do not change.
//
// For each line that the engine draws, it looks up the style of every registered highlight. Therefore a highlight without
// ranges is not registered.
//
// All highlights have the same priority. The engine collects the ranges of a line in the order in which the highlights were
// registered, and the page process crashes if a range has a lower priority than the one before it. The order of registration is
// fixed instead. Later highlights are painted over earlier ones.

var pagoraHighlights = (function () {
    'use strict';

    const order = [
        ...['yellow', 'orange', 'pink', 'purple', 'blue', 'green', 'note'].map((name) => 'pagora-mark-' + name),
        'pagora-found',
        'pagora-current',
    ];
    const registered = new Map();

    function register(name) {
        const highlight = new Highlight();
        registered.set(name, highlight);
        CSS.highlights.set(name, highlight);
        for (const later of order.slice(order.indexOf(name) + 1)) {
            if (CSS.highlights.delete(later))
                CSS.highlights.set(later, registered.get(later));
        }
        return highlight;
    }
    function unregisterEmpty(name, highlight) {
        if (highlight.size)
            return;
        registered.delete(name);
        CSS.highlights.delete(name);
    }

    // The engine draws the text of a range again that is added or removed.
    return {
        add(name, range) {
            (registered.get(name) || register(name)).add(range);
        },
        remove(name, range) {
            const highlight = registered.get(name);
            highlight.delete(range);
            unregisterEmpty(name, highlight);
        },
        clear(name) {
            const highlight = registered.get(name);
            if (!highlight)
                return;
            highlight.clear();
            unregisterEmpty(name, highlight);
        },
    };
})();
