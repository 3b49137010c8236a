// Runs in the reader's script world of every page, before page-fit.js. Handles tables, equations and words that are
// wider than their column.

// Marks tables and equations that overflow their columns. Each step measures everything, then sets marks.
var pagoraFitWide = (function () {
    'use strict';

    const steps = 10;
    // The minimum font size, in tenths of the original.
    const minShare = 6;

    // Returns the font size with which an element fits, in tenths, rounded down; 10 if it already fits.
    const tenths = (room, needed) => (needed <= room + 1 ? steps : Math.floor(steps * room / needed));

    // --- Equations ---------------------------------------------------------------------------------------------------

    function equationRoom(equation, strip, tools) {
        const container = tools.containerOf(equation);
        return { container, width: tools.roomIn(container, strip).width, height: strip.height };
    }

    function fitEquations(strip, tools) {
        const equations = tools.all('math').map((math) => [math, tools.boxOf(math)])
            .filter(([, box]) => box.width > 0);
        const wide = [];
        for (const [math, box] of equations) {
            // Most equations are far narrower than the column.
            const rest = strip.step - strip.gap;
            if (box.width <= rest / 2 && box.height <= strip.height)
                continue;
            const room = equationRoom(math, strip, tools);
            const share = Math.min(tenths(room.width, box.width), tenths(room.height, box.height));
            if (share < steps)
                wide.push([math, Math.max(share, minShare), room.container]);
        }
        for (const [math, share] of wide)
            tools.mark(math, 'small', share);
        const tooWide = wide.filter(([math, , container]) => {
            const box = tools.boxOf(math);
            return box.width > tools.roomIn(container, strip).width + 1 || box.height > strip.height;
        });
        for (const container of new Set(tooWide.map(([, , each]) => each))) {
            if (container !== strip.body)
                tools.mark(container, 'scrolls');
        }
    }

    // --- Tables ------------------------------------------------------------------------------------------------------

    // In em.
    const narrowCell = 5.5;
    const manyLines = 2.6;
    const minCharacters = 8;

    // Returns the cells that have room for only one word in a line.
    function narrowCells(table, tools) {
        const narrow = [];
        for (const cell of Element.prototype.querySelectorAll.call(table, 'td, th')) {
            const width = cell.clientWidth;
            if (!width || width > 200)
                continue;
            const style = tools.styleOf(cell);
            const size = pagoraFontSize(style);
            const inner = width - tools.pixels(style.paddingLeft) - tools.pixels(style.paddingRight);
            if (inner < narrowCell * size && cell.clientHeight > manyLines * size * 1.2 && cell.textContent.trim().length > minCharacters)
                narrow.push(cell);
        }
        return narrow;
    }

    // Tables that only arrange paragraphs side by side have few rows, and much text in the narrow cells.
    const maxRowsOfProse = 4;
    const lettersOfProse = 80;
    const isProse = (table, cells) => cells.length > 1 && table.rows.length <= maxRowsOfProse
        && cells.reduce((sum, cell) => sum + cell.textContent.trim().length, 0) > lettersOfProse * cells.length;

    function fitTables(strip, tools) {
        const column = strip.step - strip.gap;
        const outermost = tools.all('table').filter((table) => !table.parentElement.closest('table'));
        if (!outermost.length)
            return;
        const widthOf = (table) => Math.max(table.offsetWidth, table.scrollWidth);
        const roomOf = (table) => tools.roomIn(tools.containerOf(table), strip).width;
        const sticksOut = (table) => widthOf(table) > Math.min(column, roomOf(table)) + 1;
        let wide = outermost.filter(sticksOut);
        for (const table of wide)
            tools.mark(table, 'wide');

        const found = new Map(outermost.map((table) => [table, narrowCells(table, tools)]));
        for (const [table, cells] of found) {
            if (isProse(table, cells)) {
                tools.mark(table, 'stacked');
                found.delete(table);
            }
        }
        const narrow = Array.from(found).flatMap(([table, cells]) => cells.map((cell) => [table, cell]));
        for (const [, cell] of narrow)
            tools.mark(cell, 'narrow');
        wide = Array.from(new Set(wide.concat(narrow.map(([table]) => table))))
            .filter(sticksOut).map((table) => [table, tenths(roomOf(table), widthOf(table))]);
        for (const [table, share] of wide)
            tools.mark(table, 'small', Math.max(share, minShare + 1));
        for (const table of wide.map(([each]) => each).filter(sticksOut))
            tools.mark(table, 'scrolls');
    }

    // A table that is taller than a column is divided. With a smaller font size it may fit.
    function keepWhole(strip, { all, mark }) {
        const heightOf = (table) => Array.from(Element.prototype.getClientRects.call(table))
            .reduce((sum, rect) => sum + rect.height, 0);
        for (const table of all('table[data-pagora-divided]').filter((each) => heightOf(each) <= strip.height)) {
            Element.prototype.removeAttribute.call(table, 'data-pagora-divided');
            mark(table, 'whole');
        }
    }

    return (strip, tools) => {
        fitTables(strip, tools);
        fitEquations(strip, tools);
        keepWhole(strip, tools);
    };
})();

// Moves rows of long tables that would be divided to the next column. Returns whether there were any. `tools.pushes`
// contains the heights of pushes that differ from the computed ones.
var pagoraFitRows = (function () {
    'use strict';

    const rectsOf = (element) => Element.prototype.getClientRects.call(element);
    const heightOf = (rects) => Array.from(rects).reduce((sum, rect) => sum + rect.height, 0);

    const endless = '1000000px';
    const pushOf = (row) => parseFloat(Array.from(row.cells, (cell) =>
        Element.prototype.getAttribute.call(cell, 'data-pagora-push')).find((value) => value !== null)) || 0;

    // Returns the heights of rows in an endless column, which divides none of them.
    function wholeHeights(tables, body) {
        const height = body.style.getPropertyValue('height');
        const priority = body.style.getPropertyPriority('height');
        const setHeight = CSSStyleDeclaration.prototype.setProperty.bind(body.style, 'height');
        setHeight(endless, 'important');
        const heights = tables.map((table) => Array.from(table.rows,
            (row) => heightOf(rectsOf(row)) - pushOf(row)));
        setHeight(height, priority);
        return heights;
    }

    // Extends the row to the column's end; 0 undoes that. Returns whether this is a change.
    function push(row, height, tools) {
        if (Math.abs(pushOf(row) - height) < 0.5)
            return false;
        const cells = Array.from(row.cells).filter((cell) => cell.rowSpan === 1);
        for (const cell of cells)
            Element.prototype.removeAttribute.call(cell, 'data-pagora-push');
        if (height && cells.length) {
            for (const cell of cells) {
                const padding = tools.pixels(tools.styleOf(cell).paddingBottom);
                CSSStyleDeclaration.prototype.setProperty.call(
                    cell.style, '--pagora-push', (padding + height) + 'px');
                tools.mark(cell, 'push', height);
            }
        }
        return cells.length > 0;
    }

    const isCut = (row, strip) => {
        const rects = Array.from(rectsOf(row));
        return rects.filter((rect) => rect.height > 1).length > 1 && heightOf(rects) <= strip.height;
    };

    function fitRows(table, heights, strip, tools) {
        const rows = Array.from(table.rows);
        const own = tools.styleOf(table);
        const spacing = own.borderCollapse === 'collapse' ? 0 : tools.pixels(own.borderSpacing.split(' ').pop());
        const start = rectsOf(rows[0])[0];
        let y = start ? start.top - tools.boxOf(strip.body).top - strip.paddingTop : 0;
        const wanted = rows.map(() => 0);
        heights.forEach((height, i) => {
            const found = i ? tools.pushes.get(rows[i - 1]) : undefined;
            if (found !== undefined || (i && y > 0.5 && y + height > strip.height && height <= strip.height)) {
                wanted[i - 1] = found === undefined ? Math.max(0, strip.height - y) : found;
                y = 0;
            }
            y = (y + height + spacing) % strip.height;
        });
        return rows.map((row, i) => push(row, wanted[i], tools)).includes(true) || pushFirstCut(rows, strip, tools);
    }

    // The engine may divide the table at a different place. Stores the height that pushes the first row that is still
    // divided. Only one row is pushed at a time, because it moves those after it.
    function pushFirstCut(rows, strip, tools) {
        const i = rows.findIndex((row, at) => at > 0 && isCut(row, strip));
        if (i < 1)
            return false;
        tools.pushes.set(rows[i - 1], pushOf(rows[i - 1]) + rectsOf(rows[i])[0].height);
        return push(rows[i - 1], tools.pushes.get(rows[i - 1]), tools);
    }

    return (strip, tools) => {
        const long = tools.all('table').filter((table) => table.rows.length > 1
            && heightOf(rectsOf(table)) > strip.height);
        const cut = long.filter((table) => Array.from(table.rows).some((row) => isCut(row, strip)));
        if (!cut.length)
            return false;
        const heights = wholeHeights(cut, strip.body);
        return cut.map((table, i) => fitRows(table, heights[i], strip, tools)).includes(true);
    };
})();
