// What differs from before: services gained, lost, moved, renamed, added and removed, inputs that are tuned otherwise, and
// in which order that is done with least off the air. The sentences are the tool's.

import { button, grouped, h, name, put } from "./dom.js";
import { streamOf } from "./outcome.js";

const mostListed = 300;

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
        const { gained, lost, moved, added, removed } = comparison;
        const { change } = outcome;
        const isSame = [gained, lost, moved, added, removed].every((changes) => changes.length === 0);
        put(this.element,
            h("p", {}, change.figures),
            isSame && h("p", { class: "all-placed" }, "The placement of all services is the same."),
            this.group("Gained", gained, change.gained), this.group("Lost", lost, change.lost), this.group("Moved", moved, change.moved),
            this.renamed(comparison.renamed, change.renamed), this.group("Added", added, change.added), this.group("Removed", removed, change.removed),
            this.inputs(comparison, change), this.order(comparison));
    }

    /// In which order the inputs are tuned anew. It takes a while to find, and is asked for apart.
    order({ inputs_freed: freed, inputs_taken: taken, inputs_retuned: retuned }) {
        if (freed.length + taken.length + retuned.length === 0) return null;
        const section = h("section", { class: "order" }, h("h2", {}, "Order of the changes"), button("In which order?", async () => {
            const { outcome } = this;
            const order = await this.actions.ordered();
            if (!order || this.outcome !== outcome) return;
            const isLed = section.contains(document.activeElement);
            const steps = this.steps(order);
            section.replaceWith(steps);
            if (isLed) steps.firstChild.focus({ preventScroll: true });
        }));
        return section;
    }

    steps({ sentence, meaning, steps }) {
        const rest = steps.length - mostListed;
        return h("section", { class: "order" }, h("h2", { tabindex: -1 }, "Order of the changes"), h("p", {}, sentence), h("p", { class: "note" }, meaning),
            h("ol", {}, steps.slice(0, mostListed).map(({ mac, number, change, effects, off_air: off }) => h("li", {},
                this.input(mac, number, change), h("span", { class: "note" }, ` ${off}`), effects.map((effect) => this.effect(effect))))),
            rest > 0 && h("p", { class: "note" }, `and ${grouped(rest)} more`));
    }

    effect({ what, services }) {
        return h("div", { class: "note" }, `${what}: `, services.slice(0, 20).map((service, at) => [at > 0 && ", ", name(service)]),
            services.length > 20 && `, and ${grouped(services.length - 20)} more`);
    }

    group(title, changes, told) {
        return this.table(title, ["LCN", "Service", "Stream", "Before", "After"], changes, (change, at) => [
            h("td", { class: "number" }, change.lcn), h("td", {}, this.service(change, change.name)),
            h("td", {}, streamOf(change)), h("td", {}, this.places(change.before, told[at].before)), h("td", {}, this.places(change.after, told[at].after))]);
    }

    /// Those in the same places; others stand under what became of them.
    renamed(renames, told) {
        return this.table("Renamed", ["Before", "After"], renames, ({ after }, at) => [
            h("td", {}, name(told[at].before)), h("td", {}, this.service(after, told[at].after))]);
    }

    table(title, headings, records, cells) {
        if (records.length === 0) return null;
        return h("section", {}, h("h2", {}, `${title} `, h("span", { class: "note" }, grouped(records.length))),
            h("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": title }, h("table", {}, h("thead", {}, h("tr", {}, headings.map((text) => h("th", { scope: "col" }, text)))),
                h("tbody", {}, records.slice(0, mostListed).map((record, at) => h("tr", {}, cells(record, at)))))),
            records.length > mostListed && h("p", { class: "note" }, `and ${grouped(records.length - mostListed)} more`));
    }

    service(service, text) {
        return h("button", { type: "button", class: "link", onclick: () => this.actions.explain(service) }, name(text));
    }

    /// With the inputs, which may be all that is another.
    places(places, told) {
        if (!places?.length) return h("span", { class: "note" }, told);
        return places.map(({ mac }, at) => h("span", { class: "place" }, this.module(mac), ` ${told[at]}`));
    }

    module(mac) {
        const module = this.outcome.modules.get(mac);
        return module ? h("button", { type: "button", class: "link", onclick: () => this.actions.showModule(mac) }, name(module.label || mac)) : name(mac);
    }

    input(mac, number, change) { return [this.module(mac), ` input ${number}: ${change}`]; }

    inputs(comparison, told) {
        const { modules_new: added, modules_gone: gone } = comparison;
        const all = ["inputs_taken", "inputs_retuned", "inputs_freed"].flatMap((kind) => comparison[kind].map(({ mac, number }, at) => ({ mac, number, change: told[kind][at] })));
        if (all.length + added.length + gone.length === 0) return null;
        return h("section", {}, h("h2", {}, "Modules and inputs"), h("ul", {},
            added.map((mac) => h("li", {}, "new ", this.module(mac))), gone.map((mac) => h("li", {}, "gone ", name(mac))),
            all.slice(0, mostListed).map(({ mac, number, change }) => h("li", {}, this.input(mac, number, change)))),
        all.length > mostListed && h("p", { class: "note" }, `and ${grouped(all.length - mostListed)} more`));
    }
}
