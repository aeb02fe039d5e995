// The first that one sees of a placement: the figures, what does not add up, and why services are left out.

import { counted, grouped, h, name, put } from "./dom.js";
import { streamOf } from "./outcome.js";

/// Services listed at once; more on demand.
const mostListed = 200;

const tile = (label, figure, note, state) =>
    h("div", { class: `tile ${state ?? ""}` }, h("dt", {}, label), h("dd", {}, figure && h("b", {}, figure), note && h("span", { class: "note" }, note)));

/// "3 gained, 1 lost" of a comparison.
export const difference = (comparison) => {
    if (!comparison) return "";
    const words = ["gained", "lost", "moved", "added", "removed"].filter((word) => comparison.summary[word] > 0);
    return words.map((word) => `${grouped(comparison.summary[word])} ${word}`).join(", ");
};

/// How many services that are.
export const changedIn = (comparison) => (comparison ? ["gained", "lost", "moved", "added", "removed"].reduce((sum, word) => sum + comparison.summary[word], 0) : 0);

export class Overview {
    id = "overview";
    title = "Overview";
    element = h("div", { class: "overview" });

    /// actions: find(module or service), explain(service).
    constructor(actions) { this.actions = actions; }

    draw(outcome, plan) {
        const { result, inputs } = outcome;
        this.outcome = outcome;
        put(this.element,
            this.tiles(outcome, inputs), result.modules.length === 0 && this.noModules(plan), this.warnings(outcome), this.findings(result, true),
            this.causes(result), this.groups(result), this.variants(result), this.findings(result, false), this.cautions(outcome), this.leftOut(result));
    }

    tiles({ result, comparison }, inputs) {
        const { loaded, placed, left_out: left, neither, not_asked_for: withheld } = result.summary;
        return h("dl", { class: "tiles" },
            tile("Placed", grouped(placed), `of ${grouped(loaded)}`, placed === loaded && loaded > 0 ? "good" : ""),
            tile("Left out", grouped(left), neither ? `and ${grouped(neither)} neither` : "", left > 0 ? "short" : ""),
            tile("Inputs in use", grouped(inputs.used), `of ${grouped(inputs.all)}`),
            tile("Broken", grouped(result.findings.filter(({ broken }) => broken).length), "", result.findings.some(({ broken }) => broken) ? "short" : ""),
            withheld > 0 && tile("Not asked for", grouped(withheld)),
            comparison && tile("Difference", "", difference(comparison) || "none"));
    }

    noModules() { return h("p", {}, "There is no module yet: add one in the table."); }

    /// What is odd in the head-end, in the tool's words.
    warnings({ warnings }) {
        return warnings.length > 0 && h("section", {}, h("h2", {}, "Odd"), h("ul", { class: "findings" }, warnings.map((warning) => h("li", {}, name(warning)))));
    }

    /// What is broken, or what is only counted; of each the sentence that the tool has for it.
    findings({ findings, warnings }, isBroken) {
        const told = warnings.filter((warning, at) => (findings[at]?.broken ?? true) === isBroken);
        return told.length > 0 && h("section", {}, h("h2", {}, isBroken ? "Broken" : "Only counted", " ", h("span", { class: "note" }, grouped(told.length))),
            this.sentences(told, isBroken ? "findings broken" : "findings"));
    }

    /// What one will be asked about once it is on the air: some of each kind, the others folded.
    cautions({ cautions }) {
        const number = cautions.reduce((sum, { told, others }) => sum + told.length + others.length, 0);
        return number > 0 && h("section", {}, h("h2", {}, "Cautions ", h("span", { class: "note" }, grouped(number))), cautions.flatMap(({ name: kind, told, others }) => [
            ...this.sentences(told, "findings"),
            others.length > 0 && h("details", {}, h("summary", {}, `${grouped(others.length)} more: ${kind}`), this.sentences(others, "findings"))]));
    }

    sentences(told, kind) {
        const rest = told.length - mostListed;
        return [h("ul", { class: kind }, told.slice(0, mostListed).map((sentence) => h("li", {}, this.linked(sentence)))),
            rest > 0 && h("p", { class: "note" }, `and ${grouped(rest)} more`)];
    }

    /// A sentence in which the modules lead to their boxes.
    linked(sentence) {
        const found = this.outcome.result.modules.filter(({ mac }) => sentence.includes(mac)).at(0);
        if (!found) return name(sentence);
        const at = sentence.indexOf(found.mac);
        return h("bdi", {}, sentence.slice(0, at), this.link(found), sentence.slice(at + found.mac.length));
    }

    link(module) {
        return h("button", { type: "button", class: "link", onclick: () => this.actions.showModule(module.mac) }, name(module.mac));
    }

    /// As the tool groups them.
    causes({ causes, left_out: streams, neither }) {
        if (!causes.length) return null;
        const services = [...streams.flatMap(({ services }) => services), ...neither];
        return h("section", {}, h("h2", {}, "Causes"), h("ul", { class: "causes" }, causes.map((cause) => this.cause(cause, services))));
    }

    /// What became of the planner's headings.
    groups({ groups = [] }) {
        return groups.length > 0 && h("section", {}, h("h2", {}, "Groups"), h("ul", { class: "findings" }, groups.map(({ name: group, placed, loaded }) =>
            h("li", {}, h("b", {}, name(group)), ` ${grouped(placed)} of ${grouped(loaded)} placed`))));
    }

    /// What is asked for where one of several is.
    variants({ one_of: variants = [] }) {
        return variants.length > 0 && h("section", {}, h("h2", {}, "One of several"), h("ul", { class: "services" }, variants.slice(0, mostListed).map((variant) => h("li", {},
            h("b", {}, name(variant.one_of)), " ", h("button", { type: "button", class: "link", title: "Explain", onclick: () => this.actions.explain(variant) },
                h("span", { class: "lcn" }, variant.lcn), " ", name(variant.name)),
            h("span", { class: "note" }, ` variant ${grouped(variant.place)} of ${grouped(variant.variants)}, ${variant.placed ? "placed" : "left out"}`)))));
    }

    /// Which services it keeps out, each of them tells.
    cause({ kind, services: number, sentence }, services) {
        const kept = services.filter(({ cause }) => cause === kind);
        return h("li", {}, h("details", {},
            h("summary", {}, h("b", {}, grouped(number)), " ", name(sentence)),
            h("ul", { class: "services" }, kept.slice(0, mostListed).map((service) => this.service(service)))));
    }

    leftOut({ left_out: streams, neither, clones_waiting: waiting }) {
        const services = [...streams.flatMap(({ services }) => services), ...neither, ...waiting];
        if (services.length === 0) return h("p", { class: "all-placed" }, "Every service that is asked for is placed.");
        const list = h("ul", { class: "services" }, services.slice(0, mostListed).map((service) => this.service(service)));
        const rest = services.length - mostListed;
        return h("section", {}, h("h2", {}, counted(services.length, "service"), " without a place"), list,
            rest > 0 && h("button", { type: "button", onclick: (event) => {
                list.append(...services.slice(mostListed).map((service) => this.service(service)));
                event.target.remove();
            } }, `Show ${grouped(rest)} more`));
    }

    service(service) {
        return h("li", {},
            h("button", { type: "button", class: "link", title: "Explain", onclick: () => this.actions.explain(service) },
                h("span", { class: "lcn" }, service.lcn), " ", name(service.name)),
            h("span", { class: "note" }, ` ${streamOf(service)}`), service.reason && h("p", {}, name(service.reason)));
    }
}
