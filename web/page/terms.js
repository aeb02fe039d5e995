// Cutting the services down by terms, as the tool's --only takes them. Which services are meant the engine says.

import { h, markWrong } from "./dom.js";
import { textOf } from "./plan.js";

export class Terms {
    /// The places of the services that are meant; null for all.
    meant = null;

    /// `ask` is given a question and its texts, and tells what is wrong; `onmeant` is called when others are meant.
    constructor(plan, ask, onmeant) {
        Object.assign(this, { plan, ask, onmeant });
        this.element = h("input", { class: "terms", placeholder: "Terms, as hd,100-199", "aria-label": "Terms", autocomplete: "off", spellcheck: "false",
            onchange: () => this.follow(), onkeydown: (event) => { if (event.key === "Enter") this.follow(); } });
        plan.addEventListener("change", () => { if (this.element.value.trim()) this.follow(); });
    }

    clear() {
        this.element.value = "";
        this.meant = null;
    }

    async follow() {
        const terms = this.element.value.trim();
        const { headend } = this.plan;
        const answer = terms && headend ? await this.ask({ ask: "filter", terms }, [textOf(headend)]) : undefined;
        if (terms !== this.element.value.trim() || headend !== this.plan.headend) return;
        markWrong(this.element, terms && !answer);
        this.meant = answer ? new Set(answer.services) : null;
        this.onmeant();
    }
}
