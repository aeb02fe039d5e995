// Views of which one is seen at a time, by the pattern of tabs: arrow keys go from one to the next.

import { h } from "./dom.js";

export class Tabs {
    /// views: { id, title, element }. `onshow` is told the view that is now seen.
    constructor(label, views, onshow = () => {}) {
        Object.assign(this, { views, onshow });
        this.buttons = views.map((view) => h("button", {
            type: "button", role: "tab", id: `tab-${view.id}`, "aria-controls": `panel-${view.id}`, onclick: () => this.show(view.id),
        }, view.title, h("span", { class: "tab-note" })));
        this.panels = views.map((view) => h("div", { role: "tabpanel", id: `panel-${view.id}`, "aria-labelledby": `tab-${view.id}`, hidden: true, tabindex: -1 }, view.element));
        this.list = h("div", { class: "tabs", role: "tablist", "aria-label": label, onkeydown: (event) => this.key(event) }, this.buttons);
        this.show(views[0].id);
    }

    get shown() { return this.views[this.at]; }

    show(id) {
        this.at = this.views.findIndex((view) => view.id === id);
        this.buttons.forEach((tab, at) => {
            tab.setAttribute("aria-selected", String(at === this.at));
            tab.tabIndex = at === this.at ? 0 : -1;
        });
        this.panels.forEach((panel, at) => { panel.hidden = at !== this.at; });
        this.onshow(this.shown);
    }

    /// Writes a figure beside a title.
    note(id, text) {
        this.buttons[this.views.findIndex((view) => view.id === id)].lastChild.textContent = text ? ` ${text}` : "";
    }

    key(event) {
        const steps = { ArrowRight: 1, ArrowLeft: -1 };
        const last = this.views.length - 1;
        const to = event.key === "Home" ? 0 : event.key === "End" ? last : steps[event.key] === undefined ? -1 : (this.at + steps[event.key] + last + 1) % (last + 1);
        if (to < 0) return;
        event.preventDefault();
        this.show(this.views[to].id);
        this.buttons[to].focus();
    }
}
