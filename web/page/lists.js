// What an installer takes along: of each output the services by LCN, where they come from and what their receivers are
// tuned by. The tables are the tool's, as its report page has them: markup in which the tool has made texts of all names.

import { button, counted, folded, h } from "./dom.js";

export class Lists {
    id = "lists";
    title = "Lists";

    /// actions: lists() gives the markup of the placement that is shown; showModule(mac).
    constructor(actions) {
        this.actions = actions;
        this.filter = h("input", { type: "search", class: "filter", placeholder: "Module, service or position", "aria-label": "Filter the lists", oninput: () => this.cut() });
        this.count = h("p", { class: "note", role: "status" });
        this.tables = h("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": "Service lists" });
        this.element = h("div", {}, h("h2", { class: "aside" }, "Service lists"), h("div", { class: "toolbar" }, this.filter, this.count), this.tables);
    }

    async draw(outcome) {
        if (this.outcome === outcome) return;
        this.outcome = outcome;
        const markup = await this.actions.lists();
        if (this.outcome !== outcome) return;
        if (markup === undefined) this.outcome = null;
        else this.show(markup);
    }

    show(markup) {
        const { body } = new DOMParser().parseFromString(markup, "text/html");
        for (const link of body.querySelectorAll("a"))
            link.replaceWith(button(link.textContent, () => this.actions.showModule(link.textContent), { class: "link mac" }));
        this.tables.replaceChildren(...body.children);
        this.texts = [...this.tables.children].map((table) => folded(table.textContent));
        this.cut();
    }

    /// Leaves the lists in which all words of the filter stand.
    cut() {
        if (!this.texts) return;
        const words = folded(this.filter.value).split(/\s+/).filter(Boolean);
        let shown = 0;
        for (const [at, text] of this.texts.entries()) {
            const holds = words.every((word) => text.includes(word));
            this.tables.children[at].hidden = !holds;
            shown += holds ? 1 : 0;
        }
        const all = counted(this.texts.length, "output");
        this.count.textContent = shown === this.texts.length ? all : `${shown} of ${all}`;
    }
}
