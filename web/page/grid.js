// A table of up to some ten thousand records that a keyboard can drive. Only the rows in sight are drawn, all of one
// height. The table has the focus and tells which of its cells is the active one, so that nothing is lost when a row
// leaves. It holds no records: it is given them, and tells what is to be changed.

import { h, markWrong, svg } from "./dom.js";

const rowHeight = 30;
const spare = 6;
const markWidth = 36;

let grids = 0;

export class Grid {
    /// columns: as fields.js makes them. onedit([{ row, column, value }], label), onmark(), onopen(row), onpaste(text),
    /// onwrong(column, text, error) for what is not taken.
    constructor({ label, columns, onedit, onmark, onopen, onpaste, onwrong }) {
        Object.assign(this, { label, columns, onedit, onmark, onopen, onpaste, onwrong });
        this.name = `grid${++grids}`;
        this.records = [];
        this.order = [];
        /// The records themselves: places change with every row that comes and goes.
        this.marked = new Set();
        this.row = 0;
        this.column = 0;
        this.head = h("div", { class: "grid-head", role: "row", "aria-rowindex": 1 });
        this.body = h("div", { class: "grid-body", role: "rowgroup" });
        this.element = h("div", {
            class: "grid", role: "grid", tabindex: 0, "aria-label": label, "aria-multiselectable": "true",
            onkeydown: (event) => this.key(event), onscroll: () => this.look(), onpointerdown: (event) => this.point(event),
            ondblclick: (event) => { if (this.cellAt(event)) this.edit(); },
        }, h("div", { role: "rowgroup" }, this.head), this.body);
        // Browsers send these to where the selection is, which may be within a cell, or not in the table at all.
        document.addEventListener("copy", (event) => { if (this.hasFocus) this.copy(event); });
        document.addEventListener("paste", (event) => { if (this.hasFocus) this.paste(event); });
        this.rows = new Map();
        this.sight = { top: 0, height: 0 };
        new ResizeObserver(() => this.look()).observe(this.element);
    }

    /// The table itself, and no field in it.
    get hasFocus() { return document.activeElement === this.element; }
    get shown() { return this.columns.filter((column) => column.isShown); }

    /// The records, and the places of those to show, in their order.
    show(records, order) {
        this.records = records;
        this.order = order;
        this.row = Math.max(0, Math.min(this.row, order.length - 1));
        this.drawHead();
        this.draw();
    }

    /// Draws what is in sight. To ask for that makes the browser lay out all that was changed before, so it is asked for
    /// only when it is another.
    look() {
        this.sight = { top: this.element.scrollTop, height: this.element.clientHeight };
        this.draw();
    }

    drawHead() {
        const columns = this.shown;
        this.column = Math.min(this.column, columns.length - 1);
        const drawn = JSON.stringify([columns.map(({ key }) => key), this.sorted?.column.key, this.sorted?.sign]);
        if (this.headDrawn === drawn) return;
        this.headDrawn = drawn;
        this.rows.clear();
        this.body.replaceChildren();
        const cells = columns.map((column, at) => {
            const sorted = this.sorted?.column === column;
            return h("div", {
                role: "columnheader", "aria-colindex": at + 2, class: column.kind,
                title: `${column.hint ? `${column.hint}\n` : ""}Sort: click, or Alt+↑ and Alt+↓ in the column`,
                "aria-sort": sorted ? (this.sorted.sign > 0 ? "ascending" : "descending") : undefined,
                style: { width: `${column.width}px` }, onclick: () => this.sort(column),
            }, column.heading);
        });
        this.head.replaceChildren(h("div", {
            role: "columnheader", "aria-colindex": 1, class: "mark", style: { width: `${markWidth}px` }, title: "Select all: Ctrl+A",
            onclick: () => this.markAll(!this.order.every((place) => this.isMarked(place))),
        }, h("span", { class: "aside" }, "Selected")), ...cells);
        this.element.setAttribute("aria-colcount", columns.length + 1);
        this.width = columns.reduce((sum, column) => sum + column.width, markWidth);
    }

    draw() {
        if (this.editor) return;
        const { height } = this.sight;
        const all = this.order.length * rowHeight;
        const top = Math.max(0, Math.min(this.sight.top, all + 2 * rowHeight - height));
        const first = Math.max(0, Math.floor(top / rowHeight) - spare);
        const last = Math.min(this.order.length, Math.ceil((top + height) / rowHeight) + spare);
        for (const [at, { element }] of this.rows)
            if (at < first || at >= last) {
                element.remove();
                this.rows.delete(at);
            }
        for (let at = last - 1, next = null; at >= first; --at) next = this.drawRow(at, next);
        this.sizeBody(all);
        this.element.setAttribute("aria-rowcount", this.order.length + 1);
        const isDrawn = this.row >= first && this.row < last;
        if (isDrawn) this.element.setAttribute("aria-activedescendant", this.idOf(this.row, this.column));
        else this.element.removeAttribute("aria-activedescendant");
    }

    sizeBody(height) {
        const sized = `${height} ${this.width}`;
        if (this.sized === sized) return;
        this.sized = sized;
        Object.assign(this.body.style, { height: `${height}px`, width: `${this.width}px` });
        this.head.style.width = `${this.width}px`;
    }

    idOf(row, column) { return `${this.name}-${row}-${column}`; }

    /// Brings a row up to date, which is made if it is not there, and stands before `next`.
    drawRow(at, next) {
        const row = this.rows.get(at) ?? this.makeRow(at, next);
        const place = this.order[at];
        const record = this.records[place];
        const isMarked = this.isMarked(place);
        if (row.isMarked !== isMarked) {
            row.isMarked = isMarked;
            row.element.setAttribute("aria-selected", String(isMarked));
            row.element.classList.toggle("marked", isMarked);
            row.mark.replaceChildren(...this.tick(isMarked));
        }
        row.cells.forEach((cell, number) => this.drawCell(cell, record, place, at === this.row && number === this.column));
        return row.element;
    }

    makeRow(at, next) {
        const cells = this.shown.map((column, number) => ({ column, element: h("div", {
            role: "gridcell", id: this.idOf(at, number), "aria-colindex": number + 2, "aria-readonly": column.parse ? undefined : "true",
            style: { width: `${column.width}px` },
        }) }));
        const mark = h("div", { role: "gridcell", class: "mark", "aria-colindex": 1, style: { width: `${markWidth}px` } });
        const element = h("div", { role: "row", "aria-rowindex": at + 2, data: { at }, style: { top: `${at * rowHeight}px` } }, mark, cells.map((cell) => cell.element));
        this.body.insertBefore(element, next);
        const row = { element, mark, cells };
        this.rows.set(at, row);
        return row;
    }

    /// Only what is another is touched.
    drawCell(cell, record, place, isActive) {
        const { column, element } = cell;
        const text = column.format(column.get(record, place));
        const kind = `${column.kind}${isActive ? " active" : ""}${column.classOf ? ` ${column.classOf(record, place)}` : ""}`;
        const title = column.titleOf?.(record, place) ?? "";
        if (cell.kind !== kind) element.className = cell.kind = kind;
        if ((cell.title ?? "") !== title) element.title = cell.title = title;
        if (cell.text === text) return;
        cell.text = text;
        element.replaceChildren(...(column.kind === "truth" ? this.tick(text !== "") : [h("bdi", {}, text)]));
    }

    tick(isOn) {
        return [
            svg("svg", { class: isOn ? "tick on" : "tick", viewBox: "0 0 16 16", "aria-hidden": "true" },
                svg("rect", { x: 1, y: 1, width: 14, height: 14, rx: 3 }), isOn && svg("path", { d: "M4 8l3 3 5-6" })),
            h("span", { class: "aside" }, isOn ? "yes" : "no"),
        ];
    }

    // ---- Moving ----------------------------------------------------------------------------------------

    go(row, column = this.column) {
        this.row = Math.max(0, Math.min(row, this.order.length - 1));
        this.column = Math.max(0, Math.min(column, this.shown.length - 1));
        const top = this.row * rowHeight;
        const { scrollTop, clientHeight } = this.element;
        const room = clientHeight - this.head.offsetHeight - rowHeight;
        if (top < scrollTop) this.element.scrollTop = top;
        else if (top > scrollTop + room) this.element.scrollTop = top - room;
        const left = this.shown.slice(0, this.column).reduce((sum, { width }) => sum + width, markWidth);
        const width = this.shown[this.column]?.width ?? 0;
        if (left - markWidth < this.element.scrollLeft) this.element.scrollLeft = left - markWidth;
        else if (left + width > this.element.scrollLeft + this.element.clientWidth)
            this.element.scrollLeft = left + width - this.element.clientWidth;
        this.look();
    }

    /// Goes to a record by its place, and says whether it is shown.
    goTo(place) {
        const row = this.order.indexOf(place);
        if (row >= 0) this.go(row);
        return row >= 0;
    }

    key(event) {
        if (event.isComposing || event.target !== this.element || this.order.length === 0) return;
        const page = Math.max(1, Math.floor(this.element.clientHeight / rowHeight) - 2);
        const control = event.ctrlKey || event.metaKey;
        const moves = {
            ArrowUp: () => this.goMarking(event, this.row - 1), ArrowDown: () => this.goMarking(event, this.row + 1),
            ArrowLeft: () => this.go(this.row, this.column - 1), ArrowRight: () => this.go(this.row, this.column + 1),
            PageUp: () => this.goMarking(event, this.row - page), PageDown: () => this.goMarking(event, this.row + page),
            Home: () => (control ? this.go(0, 0) : this.go(this.row, 0)),
            End: () => (control ? this.go(this.order.length - 1, this.shown.length - 1) : this.go(this.row, this.shown.length - 1)),
            Enter: () => this.edit(), F2: () => this.edit(), " ": () => this.toggle(event),
            Delete: () => this.clear(), Escape: () => this.markAll(false),
        };
        const isLetter = event.key.length === 1 && event.key !== " " && !control && !event.altKey;
        if (control && event.key.toLowerCase() === "a") this.markAll(true);
        else if (event.altKey && /^Arrow(Up|Down)$/.test(event.key)) this.sort(this.shown[this.column], event.key === "ArrowUp" ? 1 : -1);
        else if (isLetter && event.key !== "/") this.edit(event.key);
        else if (moves[event.key] && (!control || /Home|End/.test(event.key))) moves[event.key]();
        else return;
        event.preventDefault();
    }

    goMarking(event, row) {
        if (event.shiftKey) this.mark(this.order[this.row], true);
        this.go(row);
        if (event.shiftKey) this.mark(this.order[this.row], true);
    }

    point(event) {
        const cell = this.cellAt(event);
        if (!cell || event.button !== 0) return;
        const place = this.order[cell.row];
        if (event.shiftKey)
            for (let at = Math.min(cell.row, this.row); at <= Math.max(cell.row, this.row); ++at) this.marked.add(this.records[this.order[at]]);
        else if (cell.column < 0 || event.ctrlKey || event.metaKey) this.isMarked(place) ? this.marked.delete(this.records[place]) : this.marked.add(this.records[place]);
        this.go(cell.row, Math.max(0, cell.column));
        this.onmark?.();
        const column = this.shown[this.column];
        if (cell.column >= 0 && column.kind === "truth" && column.parse && event.target.closest(".tick")) this.toggle(event);
        if (cell.column >= 0 && column.isLink) this.onopen?.(place);
    }

    cellAt(event) {
        const row = event.target.closest?.("[data-at]");
        const cell = event.target.closest?.("[role=gridcell]");
        if (!row || !cell || event.target.closest("input")) return null;
        return { row: Number(row.dataset.at), column: Number(cell.getAttribute("aria-colindex")) - 2 };
    }

    sort(column, sign = this.sorted?.column === column ? -this.sorted.sign : 1) {
        this.sorted = { column, sign };
        this.onsort?.();
    }

    /// Puts places in the order that was asked for last.
    inOrder(places, records) {
        if (!this.sorted) return places;
        const { column, sign } = this.sorted;
        const keyed = places.map((place) => ({ place, key: column.get(records[place], place) ?? "" }));
        keyed.sort(({ key: one }, { key: other }) => sign *
            (typeof one === "number" && typeof other === "number" ? one - other
                : String(one).localeCompare(String(other), "en", { numeric: true })));
        return keyed.map(({ place }) => place);
    }

    // ---- Marking ---------------------------------------------------------------------------------------

    isMarked(place) { return this.marked.has(this.records[place]); }

    mark(place, isMarked) {
        if (isMarked) this.marked.add(this.records[place]);
        else this.marked.delete(this.records[place]);
        this.onmark?.();
        this.draw();
    }

    markAll(isMarked) {
        this.marked = new Set(isMarked ? this.order.map((place) => this.records[place]) : []);
        this.onmark?.();
        this.draw();
    }

    /// The places of all that is marked, as they are shown, and then those that are not shown.
    get placesMarked() {
        const shown = new Set(this.order);
        return [...this.order, ...[...this.records.keys()].filter((place) => !shown.has(place))].filter((place) => this.isMarked(place));
    }

    /// The places that a change in the active cell is for: all that is marked if its row is, else that alone.
    get meant() { return this.meantAt(this.order[this.row]); }

    meantAt(active) {
        return this.isMarked(active) ? this.placesMarked : [active];
    }

    // ---- Changing --------------------------------------------------------------------------------------

    toggle(event) {
        const column = this.shown[this.column];
        const place = this.order[this.row];
        if (column.kind !== "truth" || !column.parse || event.shiftKey) return this.mark(place, !this.isMarked(place));
        this.set(column, !column.get(this.records[place], place));
    }

    clear() {
        const column = this.shown[this.column];
        if (column.parse && !column.required) this.set(column, undefined);
    }

    set(column, value, place = this.order[this.row]) {
        this.onedit(this.meantAt(place).map((row) => ({ row, column, value })), column.heading);
    }

    edit(begin) {
        const column = this.shown[this.column];
        const place = this.order[this.row];
        if (this.editor || place === undefined) return;
        if (column.isLink) return this.onopen?.(place);
        if (!column.parse) return;
        const cell = document.getElementById(this.idOf(this.row, this.column));
        if (!cell) return;
        const input = h("input", {
            class: "editor", "aria-label": `${column.heading}. ${column.hint ?? ""}`, autocomplete: "off", spellcheck: "false",
            onkeydown: (event) => this.editorKey(event), onblur: () => this.conclude(true, 0, 0),
        });
        input.value = begin ?? column.format(column.get(this.records[place], place));
        this.editor = { input, column, record: this.records[place] };
        // What stood there is drawn anew afterwards.
        this.rows.get(this.row).cells[this.column].text = undefined;
        cell.replaceChildren(input);
        input.focus();
        if (begin === undefined) input.select();
    }

    editorKey(event) {
        if (event.isComposing) return;
        const moves = { Enter: [event.shiftKey ? -1 : 1, 0], Tab: [0, event.shiftKey ? -1 : 1] };
        if (event.key === "Escape") this.conclude(false, 0, 0);
        else if (moves[event.key]) this.conclude(true, ...moves[event.key]);
        else return;
        event.preventDefault();
        event.stopPropagation();
    }

    /// Says whether no cell is open any more.
    conclude(isTaken, down, right) {
        if (!this.editor) return true;
        const { input, column, record } = this.editor;
        const parsed = column.parse(input.value);
        if (isTaken && parsed.error) {
            markWrong(input, true);
            input.setCustomValidity(parsed.error);
            if (document.activeElement === input) return input.reportValidity();
            this.onwrong(column, input.value, parsed.error);
        }
        const hadFocus = document.activeElement === input;
        this.editor = null;
        input.onblur = null;
        // Meanwhile other rows may have come to stand where it stands, or all those of another file.
        const place = this.records.indexOf(record);
        const isOther = place >= 0 && column.format(column.get(record, place)) !== input.value;
        this.draw();
        if (hadFocus) this.element.focus({ preventScroll: true });
        if (isTaken && !parsed.error && isOther) this.set(column, parsed.value, place);
        this.go(this.row + down, this.column + right);
        return true;
    }

    // ---- With a spreadsheet ----------------------------------------------------------------------------

    copy(event) {
        if (this.order.length === 0) return;
        const columns = this.shown.filter(({ parse }) => parse);
        const line = (place) => columns.map((column) => this.textFor(column, place)).join("\t");
        const places = this.placesMarked;
        const text = places.length > 0
            ? [columns.map(({ heading }) => heading).join("\t"), ...places.map(line)].join("\n")
            : this.textFor(this.shown[this.column], this.order[this.row]);
        event.clipboardData.setData("text/plain", text);
        event.preventDefault();
    }

    textFor(column, place) {
        const text = column.format(column.get(this.records[place], place));
        return (column.kind === "truth" ? (text ? "1" : "0") : text).replace(/[\t\n\r]+/g, " ");
    }

    paste(event) {
        const text = event.clipboardData.getData("text/plain");
        if (!text) return;
        event.preventDefault();
        this.onpaste(text.replace(/\r\n?/g, "\n").replace(/\n+$/, "").split("\n").map((line) => line.split("\t")));
    }
}
