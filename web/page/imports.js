// What one may choose of an import: which kinds of services are assumed to take how much, and which are wanted. The list
// that was imported last is kept as long as the page, to be imported again.

import { button, h } from "./dom.js";

/// Options that take terms; what these may be the engine tells.
const termed = { "--only": "Only services that are", "--exclude": "No services that are" };

export class ImportChoices {
    chosen = {};

    /// `about` is the engine's answer of that name; `again` imports once more.
    constructor(about, again) {
        const rows = Object.entries(about.choices).map(([option, { meaning, bitrate }]) => (bitrate === undefined ? this.flag(option, meaning) : this.bitrate(option, meaning, bitrate)));
        this.element = h("details", { class: "choices" }, h("summary", {}, "Import it otherwise"),
            h("div", { class: "fields" }, rows, Object.entries(termed).map(([option, label]) => this.terms(option, label, about.terms))),
            button("Import again", again, { class: "primary" }));
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

    terms(option, label, meaning) {
        const input = h("input", { spellcheck: "false", autocomplete: "off", onchange: () => { this.chosen[option] = input.value.trim(); } });
        return h("label", {}, h("span", {}, label, h("span", { class: "note" }, ` ${meaning}`)), input);
    }
}
