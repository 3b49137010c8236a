// Runs in the reader's script world of every page, before the scripts that paint text. Registers ranges of the text with the
// engine, which paints them as a style sheet says, without effect on the page's nodes and layout.
//
// When the engine draws a line, it looks up a style for each registered highlight, also for one without ranges, and collects the
// ranges of all highlights in the order in which these were registered. So only highlights with ranges are registered. All have the
// same priority: the page process crashes when the engine collects a range whose priority is lower than that of another before it.
// Instead the highlights are registered in a fixed order. Later ones are painted over earlier ones.

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
