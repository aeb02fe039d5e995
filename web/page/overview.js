// The first that one sees of a placement: the figures, what does not add up, and why services are left out.

import { button, counted, grouped, h, markWrong, name, renew } from "./dom.js";
import { streamOf } from "./outcome.js";

/// Services listed at once; more on demand.
const mostListed = 200;

/// So many of a list are printed, by style.css: with the rest the summary has one sheet.
const mostPrinted = 20;

const tile = (label, figure, note, state) =>
    h("div", { class: `tile ${state ?? ""}` }, h("dt", {}, label), h("dd", {}, figure && h("b", {}, figure), note && h("span", { class: "note" }, note)));

const differences = ["gained", "lost", "moved", "renamed", "added", "removed"];

/// Of a list that is shown as far as `mostListed`.
const andMore = (all) => all > mostListed && h("p", { class: "note" }, `and ${grouped(all - mostListed)} more`);

/// "3 gained, 1 lost" of a comparison.
export const difference = (comparison) => {
    if (!comparison) return "";
    const words = differences.filter((word) => comparison.summary[word] > 0);
    return words.map((word) => `${grouped(comparison.summary[word])} ${word}`).join(", ");
};

/// How many services that are.
export const changedIn = (comparison) => (comparison ? differences.reduce((sum, word) => sum + comparison.summary[word], 0) : 0);

export class Overview {
    id = "overview";
    title = "Overview";
    element = h("div", { class: "overview" });

    /// actions: showModule(mac), explain(service), keepFree(reserve).
    constructor(actions) {
        this.actions = actions;
        this.heading = h("h2", {});
        this.list = h("ul", { class: "services" });
        this.rest = button("", () => {
            this.listLeftOut(Infinity);
            this.list.children[mostListed].querySelector("button").focus();
        });
        this.notPrinted = h("p", { class: "note on-paper" });
        this.left = h("section", { class: "left-out" }, this.heading, this.list, this.rest, this.notPrinted);
        this.reserve = h("input", { placeholder: "2.5%", autocomplete: "off", spellcheck: "false", onchange: async () => {
            const { value } = this.reserve;
            const isOne = await this.actions.keepFree(value.trim());
            if (this.reserve.value === value) markWrong(this.reserve, !isOne);
        } });
        this.reserving = h("label", { class: "reserve" }, "Reserve ", this.reserve);
    }

    /// In the tool's words.
    explainReserve(meaning) { this.reserve.title = meaning; }

    /// Each part is made of what it shows; what shows the same as before stays.
    draw(outcome, plan) {
        const { result, warnings, cautions } = outcome;
        const [broken, counting] = [true, false].map((isBroken) => result.warnings.filter((warning, at) => (result.findings[at]?.broken ?? true) === isBroken));
        const part = (make, ...shown) => [JSON.stringify([make.name, ...shown]), () => make.apply(this, shown)];
        const some = (make, list, ...shown) => list.length > 0 && part(make, list, ...shown);
        this.outcome = outcome;
        if (document.activeElement !== this.reserve) {
            this.reserve.value = plan.reserve;
            markWrong(this.reserve, false);
        }
        this.listLeftOut(mostListed);
        renew(this.element, [
            part(this.tiles, this.figures(outcome)), ["reserve", () => this.reserving], result.modules.length === 0 && part(this.noModules), some(this.odd, warnings), some(this.findings, broken, true),
            some(this.causes, this.kept(result)), some(this.groups, result.groups ?? []), some(this.variants, result.one_of ?? []),
            some(this.findings, counting, false), some(this.cautions, cautions), part(this.leftOut, this.services.length > 0),
        ]);
    }

    figures({ result, comparison, inputs }) {
        const { loaded, placed, left_out: left, neither, not_asked_for: withheld } = result.summary;
        const broken = result.findings.filter((finding) => finding.broken).length;
        return [
            ["Placed", grouped(placed), `of ${grouped(loaded)}`, placed === loaded && loaded > 0 ? "good" : ""],
            ["Left out", grouped(left), neither ? `and ${grouped(neither)} neither` : "", left > 0 ? "short" : ""],
            ["Inputs in use", grouped(inputs.used), `of ${grouped(inputs.all)}`],
            ["Broken", grouped(broken), "", broken > 0 ? "short" : ""],
            ...(withheld > 0 ? [["Not asked for", grouped(withheld)]] : []),
            ...(comparison ? [["Difference", "", difference(comparison) || "none"]] : []),
        ];
    }

    tiles(figures) { return h("dl", { class: "tiles" }, figures.map((figure) => tile(...figure))); }

    noModules() { return h("p", {}, "There is no module yet: add one in the table."); }

    /// What is odd in the head-end, in the tool's words.
    odd(warnings) {
        return h("section", {}, h("h2", {}, "Odd"), h("ul", { class: "findings" }, warnings.map((warning) => h("li", {}, name(warning)))));
    }

    /// What is broken, or what is only counted; of each the sentence that the tool has for it.
    findings(told, isBroken) {
        return h("section", {}, h("h2", {}, isBroken ? "Broken" : "Only counted", " ", h("span", { class: "note" }, grouped(told.length))),
            this.sentences(told, isBroken ? "findings broken" : "findings"));
    }

    /// What one will be asked about once it is on the air: some of each kind, the others folded.
    cautions(cautions) {
        const number = cautions.reduce((sum, { told, others }) => sum + told.length + others.length, 0);
        return h("section", {}, h("h2", {}, "Cautions ", h("span", { class: "note" }, grouped(number))), cautions.flatMap(({ name: kind, told, others }) => [
            ...this.sentences(told, "findings"),
            others.length > 0 && h("details", {}, h("summary", {}, `${grouped(others.length)} more: ${kind}`), this.sentences(others, "findings"))]));
    }

    sentences(told, kind) {
        return [h("ul", { class: kind }, told.slice(0, mostListed).map((sentence) => h("li", {}, this.linked(sentence)))), andMore(told.length)];
    }

    /// A sentence in which the modules lead to their boxes.
    linked(sentence) {
        const found = this.outcome.result.modules.find(({ mac }) => sentence.includes(mac));
        if (!found) return name(sentence);
        const at = sentence.indexOf(found.mac);
        return h("bdi", {}, sentence.slice(0, at), this.link(found), sentence.slice(at + found.mac.length));
    }

    link(module) {
        return h("button", { type: "button", class: "link", onclick: () => this.actions.showModule(module.mac) }, name(module.mac));
    }

    /// What keeps services out, as the tool groups it, with the services that it keeps out.
    kept({ causes, left_out: streams, neither }) {
        const services = [...streams.flatMap((stream) => stream.services), ...neither];
        return causes.map(({ kind, services: number, sentence }) => ({ number, sentence, services: services.filter(({ cause }) => cause === kind).slice(0, mostListed) }));
    }

    causes(causes) {
        return h("section", {}, h("h2", {}, "Causes"), h("ul", { class: "causes" }, causes.map(({ number, sentence, services }) => h("li", {}, h("details", {},
            h("summary", {}, h("b", {}, grouped(number)), " ", name(sentence)),
            h("ul", { class: "services" }, services.map((service) => this.service(service))), andMore(number))))));
    }

    /// What became of the planner's headings.
    groups(groups) {
        return h("section", {}, h("h2", {}, "Groups"), h("ul", { class: "findings" }, groups.map(({ name: group, placed, loaded }) =>
            h("li", {}, h("b", {}, name(group)), ` ${grouped(placed)} of ${grouped(loaded)} placed`))));
    }

    /// What is asked for where one of several is.
    variants(variants) {
        return h("section", {}, h("h2", {}, "One of several"), h("ul", { class: "services" }, variants.slice(0, mostListed).map((variant) => h("li", {},
            h("b", {}, name(variant.one_of)), " ", h("button", { type: "button", class: "link", title: "Explain", onclick: () => this.actions.explain(variant) },
                h("span", { class: "lcn" }, variant.lcn), " ", name(variant.name)),
            h("span", { class: "note" }, ` variant ${grouped(variant.place)} of ${grouped(variant.variants)}, ${variant.placed ? "placed" : "left out"}`)))), andMore(variants.length));
    }

    /// The services without a place; of many the first, until all are asked for.
    listLeftOut(most) {
        const { left_out: streams, neither, clones_waiting: waiting } = this.outcome.result;
        this.services = [...streams.flatMap(({ services }) => services), ...neither, ...waiting];
        const rest = this.services.length - most;
        this.heading.textContent = `${counted(this.services.length, "service")} without a place`;
        this.rest.textContent = `Show ${grouped(Math.max(rest, 0))} more`;
        this.rest.hidden = rest <= 0;
        this.notPrinted.textContent = this.services.length > mostPrinted ? `and ${grouped(this.services.length - mostPrinted)} more` : "";
        renew(this.list, this.services.slice(0, most).map((service) => [JSON.stringify(service), () => this.service(service)]));
    }

    leftOut(isAny) { return isAny ? this.left : h("p", { class: "all-placed" }, "Every service that is asked for is placed."); }

    service(service) {
        return h("li", {},
            h("button", { type: "button", class: "link", title: "Explain", onclick: () => this.actions.explain(service) },
                h("span", { class: "lcn" }, service.lcn), " ", name(service.name)),
            h("span", { class: "note" }, ` ${streamOf(service)}`), service.reason && h("p", {}, name(service.reason)));
    }
}
