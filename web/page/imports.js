// What one may choose of what was opened: which kinds of services are assumed to take how much, which are wanted, what is
// added to rates, and whose LCNs count. What was opened last is kept as long as the page, to be taken again.

import { button, h } from "./dom.js";

/// Options that take terms; what these may be the engine tells.
const termed = { "--only": "Only services that are", "--exclude": "No services that are" };

export class ImportChoices {
    chosen = {};

    /// `about` is the engine's answer of that name; `again` takes what was opened once more.
    constructor(about, again) {
        this.choices = Object.entries(about.choices).map(([option, choice]) => ({ of: choice.of, element: this.field(option, choice) }));
        this.choices.push(...Object.entries(termed).map(([option, label]) => ({ of: ["list"], element: this.text(option, label, about.terms) })));
        this.summary = h("summary", {});
        this.again = button("", again, { class: "primary" });
        this.element = h("details", { class: "choices" }, this.summary, h("div", { class: "fields" }, this.choices.map(({ element }) => element)), this.again);
    }

    /// Offers what there is to choose of lists, measured rates or wishes.
    offer(kinds) {
        const isImport = kinds.includes("list");
        if (this.kinds !== kinds.join()) this.element.open = false;
        this.kinds = kinds.join();
        this.summary.textContent = isImport ? "Import it otherwise" : "Take it otherwise";
        this.again.textContent = isImport ? "Import again" : "Take again";
        for (const { of, element } of this.choices) element.hidden = !of.some((kind) => kinds.includes(kind));
        return this.element;
    }

    field(option, { meaning, bitrate, form }) {
        if (bitrate !== undefined) return this.bitrate(option, meaning, bitrate);
        return form === undefined ? this.flag(option, meaning) : this.text(option, meaning, form);
    }

    bitrate(option, meaning, fallback) {
        const input = h("input", { type: "number", min: 1, max: 4294967295, value: fallback, onchange: () => {
            const value = Math.trunc(Number(input.value));
            if (input.value !== "" && input.checkValidity()) this.chosen[option] = value;
            else delete this.chosen[option];
        } });
        return h("label", {}, h("span", {}, meaning), input);
    }

    flag(option, meaning) {
        const input = h("input", { type: "checkbox", onchange: () => { this.chosen[option] = input.checked; } });
        return h("label", { class: "check" }, input, h("span", {}, meaning));
    }

    text(option, label, note) {
        const input = h("input", { spellcheck: "false", autocomplete: "off", onchange: () => { this.chosen[option] = input.value.trim(); } });
        return h("label", {}, h("span", {}, label, h("span", { class: "note" }, ` ${note}`)), input);
    }
}
