// What differs from before: services gained, lost, moved, added and removed, inputs that are tuned otherwise, and in
// which order that is done with least off the air.

import { button, counted, grouped, h, name, put } from "./dom.js";
import { streamOf } from "./outcome.js";

const mostListed = 300;

/// What an input receives.
const told = (stream) => (stream ? streamOf(stream) : "free");

export class Changes {
    id = "changes";
    title = "Changes";
    element = h("div", { class: "changes" });

    constructor(actions) { this.actions = actions; }

    draw(outcome) {
        const { comparison } = outcome;
        if (this.outcome === outcome) return;
        this.outcome = outcome;
        if (!comparison) return put(this.element, h("p", { class: "note" }, "There is nothing to compare with yet: change something, or make a variant."));
        const { summary, gained, lost, moved, added, removed } = comparison;
        const isSame = [gained, lost, moved, added, removed].every((changes) => changes.length === 0);
        put(this.element,
            h("p", {}, `${counted(summary.unmoved, "service")} in the same places, ${grouped(summary.never_placed)} placed in neither.`),
            isSame && h("p", { class: "all-placed" }, "The placement of all services is the same."),
            this.group("Gained", gained), this.group("Lost", lost), this.group("Moved", moved),
            this.group("Added", added), this.group("Removed", removed), this.inputs(comparison), this.order(comparison));
    }

    /// In which order the inputs are tuned anew. It takes a while to find, and is asked for apart.
    order({ inputs_freed: freed, inputs_taken: taken, inputs_retuned: retuned }) {
        if (freed.length + taken.length + retuned.length === 0) return null;
        const section = h("section", { class: "order" }, h("h2", {}, "Order of the changes"), button("In which order?", async () => {
            const { outcome } = this;
            const order = await this.actions.ordered();
            if (order && this.outcome === outcome) section.replaceWith(this.steps(order));
        }));
        return section;
    }

    steps({ steps, most_off_air: most, is_least: isLeast }) {
        const rest = steps.length - mostListed;
        return h("section", { class: "order" }, h("h2", { tabindex: -1 }, "Order of the changes"),
            h("p", {}, `Tuned in this order, at most ${counted(most, "service")} that both placements have ${most === 1 ? "is" : "are"} off the air at a time${isLeast ? ", and no order has fewer" : ""}. What is lost goes before the first step, what is gained comes after the last.`),
            h("ol", {}, steps.slice(0, mostListed).map(({ input, goes_off: off, comes_back: back, off_air: number }) => h("li", {},
                this.module(input.mac), ` input ${input.number}: ${told(input.before)} → ${told(input.after)}`,
                h("span", { class: "note" }, ` ${grouped(number)} off the air`), this.services("goes off", off), this.services("comes back", back)))),
            rest > 0 && h("p", { class: "note" }, `and ${grouped(rest)} more`));
    }

    services(what, services) {
        return services.length > 0 && h("div", { class: "note" }, `${what}: `, services.slice(0, 20).map((service, at) => [at > 0 && ", ", name(`${service.lcn} ${service.name}`)]),
            services.length > 20 && `, and ${grouped(services.length - 20)} more`);
    }

    group(title, changes) {
        if (changes.length === 0) return null;
        const rows = changes.slice(0, mostListed).map((change) => h("tr", {},
            h("td", { class: "number" }, change.lcn),
            h("td", {}, h("button", { type: "button", class: "link", onclick: () => this.actions.explain(change) }, name(change.name))),
            h("td", {}, streamOf(change)), h("td", {}, this.places(change.before)), h("td", {}, this.places(change.after))));
        return h("section", {}, h("h2", {}, `${title} `, h("span", { class: "note" }, grouped(changes.length))),
            h("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": title }, h("table", {}, h("thead", {}, h("tr", {}, ["LCN", "Service", "Stream", "Before", "After"].map((text) => h("th", { scope: "col" }, text)))),
                h("tbody", {}, rows))),
            changes.length > mostListed && h("p", { class: "note" }, `and ${grouped(changes.length - mostListed)} more`));
    }

    places(places) {
        if (places === null) return h("span", { class: "note" }, "not there");
        if (places.length === 0) return h("span", { class: "note" }, "no place");
        return places.map(({ mac, outputs }) => h("span", { class: "place" }, this.module(mac), ` → ${outputs.join(", ")}`));
    }

    module(mac) {
        const module = this.outcome.modules.get(mac);
        return module ? h("button", { type: "button", class: "link", onclick: () => this.actions.showModule(mac) }, name(module.label || mac)) : name(mac);
    }

    inputs({ inputs_freed: freed, inputs_taken: taken, inputs_retuned: retuned, modules_new: added, modules_gone: gone }) {
        const all = [...taken, ...retuned, ...freed];
        if (all.length + added.length + gone.length === 0) return null;
        return h("section", {}, h("h2", {}, "Modules and inputs"), h("ul", {},
            added.map((mac) => h("li", {}, "new ", this.module(mac))), gone.map((mac) => h("li", {}, "gone ", name(mac))),
            all.slice(0, mostListed).map((input) => h("li", {}, this.module(input.mac), ` input ${input.number}: ${told(input.before)} → ${told(input.after)}`))));
    }
}
