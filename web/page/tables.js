// The tables of modules and services: what can be done to many at once, filtering, and taking in what comes from a
// spreadsheet. Every change is one step of the plan.

import { button, counted, folded, grouped, h } from "./dom.js";
import { columnsOf, withValue } from "./fields.js";
import { Grid } from "./grid.js";

/// What each table is about. `identity` tells a pasted row from another.
const kinds = {
    modules: {
        record: "module", thing: "module", identity: ["mac"],
        shown: ["mac", "label", "controller", "inputs", "outputs", "pids_max", "sd_transcoders", "hd_transcoders", "aux_transcoders"],
        fresh: (headend) => ({ mac: freeMac(headend.modules), controller: headend.modules.length === 0, inputs: 4,
            outputs: [38000, 38000, 38000, 38000], pids_max: 40 }),
        copied: (module, headend) => ({ ...module, mac: freeMac(headend.modules), controller: undefined }),
    },
    services: {
        record: "service", thing: "service", identity: ["onid", "tsid", "sid", "lcn"],
        shown: ["lcn", "name", "ask", "must", "value", "bitrate", "onid", "tsid", "sid", "video_format", "descramble", "ca_pids", "transcoding"],
        fresh: (headend) => {
            const last = headend.services?.at(-1);
            const lcn = (headend.services ?? []).reduce((most, service) => Math.max(most, service.lcn), 0) + 1;
            return { lcn: Math.min(lcn, 65535), name: "New service", onid: last?.onid ?? 1, tsid: last?.tsid ?? 1,
                sid: Math.min((last?.sid ?? 0) + 1, 65535) };
        },
        copied: (service) => ({ ...service, sid: Math.min(service.sid + 1, 65535), osid: undefined }),
    },
    clones: {
        record: "clone", thing: "clone", identity: ["onid", "tsid", "lcn", "sid", "output_name"],
        shown: ["lcn", "name", "output_name", "onid", "tsid", "sid", "parent_sid", "transcoding"],
        // Of the service that is looked at.
        fresh: (headend, service) => {
            const { lcn = 1, name = "New clone", onid = 1, tsid = 1, sid = 1 } = service ?? headend.services?.[0] ?? {};
            return { lcn, name, output_name: `${name} 2`, onid, tsid, sid };
        },
        copied: (clone) => ({ ...clone }),
    },
    pids: {
        record: "pid", thing: "PID", identity: ["sid", "id"], shown: ["sid", "id", "audio", "order"],
        fresh: (headend, service) => ({ sid: service?.sid ?? headend.services?.[0]?.sid ?? 1, id: (headend.pids ?? []).reduce((most, { id }) => Math.max(most, id), 255) + 1 }),
        copied: (pid) => ({ ...pid, id: pid.id + 1 }),
    },
};

const titles = { modules: "Modules", services: "Services", clones: "Clones", pids: "PIDs" };

/// A locally administered address that no module has.
const freeMac = (modules) => {
    const taken = new Set(modules.map(({ mac }) => mac));
    for (let number = modules.length + 1; ; ++number) {
        const hex = number.toString(16).toUpperCase().padStart(6, "0");
        const mac = `02:00:00:${hex.slice(0, 2)}:${hex.slice(2, 4)}:${hex.slice(4, 6)}`;
        if (!taken.has(mac)) return mac;
    }
};

/// What has become of some of the records that were: those that are still there, those that are there in other words, by
/// their keys, and within one variant those that stand in place of others.
const heirs = (some, before, now, keyOf, isSameVariant) => {
    const [were, are] = [new Set(before), new Set(now)];
    const fresh = new Map();
    for (const record of now)
        if (!were.has(record)) fresh.set(keyOf(record), [...(fresh.get(keyOf(record)) ?? []), record]);
    const found = new Set(now.filter((record) => some.has(record)));
    const taken = new Set();
    const lost = [];
    before.forEach((record, place) => {
        if (are.has(record)) return;
        const heir = fresh.get(keyOf(record))?.shift();
        if (!heir) return void lost.push(place);
        taken.add(heir);
        if (some.has(record)) found.add(heir);
    });
    if (isSameVariant && before.length === now.length)
        for (const place of lost)
            if (some.has(before[place]) && !were.has(now[place]) && !taken.has(now[place])) found.add(now[place]);
    return found;
};

const complaint = ({ heading }, text, error) => `${heading}, "${text.slice(0, 40)}": ${error.toLowerCase()}`;

const clean = (record) => Object.fromEntries(Object.entries(record).filter(([, value]) => value !== undefined));

export class Table {
    /// `extra` are columns that show what became of the records; `states` gives groups of what the table can be cut
    /// down to, { title, states: [{ name, title, holds(record) }] }; `terms` is a filter of the engine's; `parent` the
    /// service that new records are of; `onopen` is told the place of a record.
    constructor(key, plan, say, { extra = [], states, terms, parent = () => undefined, onopen } = {}) {
        Object.assign(this, { key, plan, say, statesOf: states, terms, parent, kind: kinds[key] });
        const columns = columnsOf(this.kind.record, this.kind.shown);
        columns.splice(2, 0, ...extra);
        this.grid = new Grid({
            label: titles[key], columns, onopen,
            onedit: (edits, label) => this.edit(edits, label), onmark: () => this.showMarked(), onpaste: (lines) => this.paste(lines),
            onwrong: (...wrong) => say(`Nothing is changed: ${complaint(...wrong)}`),
        });
        this.grid.onsort = () => this.draw();
        this.filter = h("input", { type: "search", class: "filter", placeholder: "Filter", "aria-label": `Filter ${key}`, autocomplete: "off",
            spellcheck: "false", oninput: () => this.draw(), onkeydown: (event) => {
                if (event.key === "ArrowDown") { event.preventDefault(); this.grid.element.focus(); }
            } });
        this.state = h("select", { "aria-label": `Which ${key}`, onchange: () => this.draw() },
            h("option", { value: "" }, "All"));
        this.count = h("p", { class: "note", role: "status" });
        this.marked = h("div", { class: "marked-actions" });
        this.told = h("span", { role: "status" });
        this.element = h("div", { class: "table" },
            h("div", { class: "toolbar" }, this.filter, states && this.state, terms?.element, this.count,
                h("span", { class: "spring" }), button("Add", () => this.add()), this.allColumns()),
            this.marked, this.grid.element);
        this.showMarked();
        plan.addEventListener("change", ({ detail: { before } }) => this.follow(before));
    }

    get records() { return this.recordsOf(this.plan.variant); }

    recordsOf(variant) { return variant?.headend?.[this.key] ?? []; }

    keyOf(record) { return JSON.stringify(this.kind.identity.map((key) => record[key])); }

    allColumns() {
        const box = h("input", { type: "checkbox", onchange: () => {
            for (const column of this.grid.columns) column.isShown = box.checked || this.kind.shown.includes(column.key) || !column.parse;
            this.draw();
        } });
        return h("label", { class: "check" }, box, "All columns");
    }

    /// What was marked stays so: the record itself, or what has become of it. Of another file nothing is marked.
    follow(before) {
        const { marked } = this.grid;
        if (marked.size === 0) return;
        const { state, variant } = this.plan;
        const was = before.variants[before.current];
        this.grid.marked = before.opened === state.opened ? heirs(marked, this.recordsOf(was), this.records, (record) => this.keyOf(record), was.id === variant.id) : new Set();
    }

    draw() {
        const { records } = this;
        const words = folded(this.filter.value).split(/\s+/).filter(Boolean);
        const state = this.drawStates();
        let places = records.map((record, place) => place);
        if (state) places = places.filter((place) => state.holds(records[place], place));
        if (this.terms?.meant) places = places.filter((place) => this.terms.meant.has(place));
        if (words.length > 0) places = places.filter((place) => words.every((word) => this.textOf(records[place]).includes(word)));
        this.grid.show(records, this.grid.inOrder(places, records));
        this.count.textContent = places.length === records.length ? counted(records.length, this.kind.thing)
            : `${places.length} of ${counted(records.length, this.kind.thing)}`;
        this.showMarked();
    }

    /// Offers what there is now, and gives the state that is chosen.
    drawStates() {
        const groups = this.statesOf?.() ?? [];
        const { value } = this.state;
        const shown = JSON.stringify(groups.map(({ title, states }) => [title, states.map((state) => [state.name, state.title])]));
        if (this.statesShown !== shown) {
            this.statesShown = shown;
            this.state.replaceChildren(h("option", { value: "" }, "All"), ...groups.filter(({ states }) => states.length > 0).map(({ title, states }) =>
                h("optgroup", { label: title }, states.map((state) => h("option", { value: state.name }, state.title)))));
            this.state.value = [...this.state.options].some((option) => option.value === value) ? value : "";
        }
        return groups.flatMap(({ states }) => states).find(({ name }) => name === this.state.value);
    }

    /// What the filter looks at.
    textOf(record) {
        const { mac, label, lcn, name, output_name: sent, onid, tsid, sid, id, audio } = record;
        return folded([mac, label, lcn !== undefined && `${lcn}`, name, sent, onid !== undefined && `${onid}/${tsid}`, id !== undefined && `${sid} ${id}`, audio].filter(Boolean).join(" "));
    }

    /// Shows all records again.
    clearFilters() {
        this.filter.value = this.state.value = "";
        this.terms?.clear();
        this.draw();
    }

    showMarked() {
        const { grid } = this;
        const number = grid.marked.size;
        const shown = grid.order.reduce((sum, place) => sum + (grid.isMarked(place) ? 1 : 0), 0);
        const told = `${grouped(number)} selected${shown < number ? `, ${grouped(number - shown)} of them not shown` : ""}`;
        if (this.told.textContent !== told) this.told.textContent = told;
        if (this.hasMarked === number > 0) return;
        this.hasMarked = number > 0;
        const set = (key, value, label) => button(label, () =>
            this.edit(grid.placesMarked.map((row) => ({ row, column: grid.columns.find((column) => column.key === key), value })), label));
        const has = (key) => grid.columns.some((column) => column.key === key);
        this.marked.replaceChildren(...(number === 0 ? [] : [
            this.told,
            ...(has("ask") ? [set("ask", true, "Ask for"), set("ask", false, "Do not ask for")] : []),
            ...(has("must") ? [set("must", true, "Must"), set("must", false, "Need not")] : []),
            button("Copy", () => this.duplicate()), button("Remove", () => this.remove()),
            button("Clear selection", () => grid.markAll(false)),
        ]));
    }

    /// Changes records as one step.
    edit(edits, label) {
        const records = [...this.records];
        for (const { row, column, value } of edits) records[row] = withValue(records[row], column, value);
        this.become(records, `${label} of ${counted(new Set(edits.map(({ row }) => row)).size, this.kind.thing)}`);
    }

    become(records, label) {
        this.plan.change({ ...this.plan.headend, [this.key]: records }, label);
    }

    add() {
        const records = [...this.records, this.kind.fresh(this.plan.headend, this.parent())];
        this.clearFilters();
        this.become(records, `Add a ${this.kind.thing}`);
        this.grid.goTo(records.length - 1);
        this.grid.element.focus();
    }

    duplicate() {
        if (this.records.length === 0) return;
        const headend = { ...this.plan.headend, [this.key]: [...this.records] };
        const places = this.grid.placesMarked;
        for (const place of places) headend[this.key].push(clean(this.kind.copied(this.records[place], headend)));
        this.become(headend[this.key], `Copy ${counted(places.length, this.kind.thing)}`);
        this.grid.goTo(headend[this.key].length - 1);
        this.grid.element.focus();
    }

    remove() {
        const { marked } = this.grid;
        this.become(this.records.filter((record) => !marked.has(record)), `Remove ${counted(marked.size, this.kind.thing)}`);
        this.grid.element.focus();
    }

    // ---- From a spreadsheet ----------------------------------------------------------------------------

    /// With a line of headings the rows are records, old ones by their identity and new ones; without, they are put
    /// where the active cell is.
    paste(lines) {
        const titled = lines[0].map((text) => this.grid.columns.find(({ heading, key, parse }) =>
            parse && [heading.toLowerCase(), key].includes(text.trim().toLowerCase())));
        const hasHeadings = titled.every(Boolean) && this.kind.identity.every((key) => titled.some((column) => column.key === key));
        try {
            if (hasHeadings) this.pasteRecords(titled, lines.slice(1));
            else this.pasteCells(lines);
        } catch (wrong) {
            this.say(`Nothing is pasted: ${wrong.message}`);
        }
    }

    parsed(column, text) {
        const { value, error } = column.parse(text);
        if (error) throw new Error(complaint(column, text, error));
        return value;
    }

    pasteRecords(columns, lines) {
        const records = [...this.records];
        const places = new Map(records.map((record, place) => [this.keyOf(record), place]));
        let added = 0;
        for (const line of lines) {
            const record = columns.reduce((made, column, at) => withValue(made, column, this.parsed(column, line[at] ?? "")), {});
            const place = places.get(this.keyOf(record));
            if (place === undefined) added += records.push({ ...this.kind.fresh(this.plan.headend), ...record }) ? 1 : 0;
            else records[place] = columns.reduce((made, column) => withValue(made, column, record[column.key]), records[place]);
        }
        this.become(records, `Paste ${counted(lines.length, this.kind.thing)}`);
        this.say(`Pasted: ${counted(added, this.kind.thing)} new, ${lines.length - added} changed.`);
    }

    pasteCells(lines) {
        const { grid } = this;
        const columns = grid.shown.slice(grid.column);
        const isOne = lines.length === 1 && lines[0].length === 1;
        const rows = isOne ? grid.meant : grid.order.slice(grid.row, grid.row + lines.length);
        const edits = rows.flatMap((row, at) => (isOne ? lines[0] : lines[at]).slice(0, columns.length).map((text, number) => {
            if (!columns[number].parse) throw new Error(`${columns[number].heading} cannot be changed`);
            return { row, column: columns[number], value: this.parsed(columns[number], text) };
        }));
        this.edit(edits, "Paste into cells");
        if (!isOne && rows.length < lines.length) this.say(`${lines.length - rows.length} lines lie beyond the end and are passed over.`);
    }
}
