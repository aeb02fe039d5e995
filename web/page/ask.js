// Questions that take a while: what would make everything fit, how much any arrangement could place, why a service
// stands where it does. The answers are the tool's own texts; what they propose is taken over with a button.

import { button, counted, h, name } from "./dom.js";
import { Cancelled } from "./engine.js";
import { textOf } from "./plan.js";
import { keyOf, moduleName } from "./outcome.js";

const onlyResult = "A result does not tell what modules answer: open its head-end.";

/// Columns of text that fit into an element.
const columnsIn = (element) => {
    const probe = h("span", { class: "probe" }, "0".repeat(20));
    element.append(probe);
    const width = probe.getBoundingClientRect().width / 20;
    probe.remove();
    return Math.max(24, Math.floor((element.clientWidth - 24) / width));
};

export class Ask {
    id = "ask";
    title = "Ask";

    /// `engine` makes the changes that are taken over. What takes long has one of its own, for which nothing else
    /// waits: `begin` starts it, given what is told of the progress.
    constructor(plan, engine, begin, actions) {
        Object.assign(this, { plan, engine, begin, actions });
        this.kind = h("select", { "aria-label": "Kind of module to add" });
        this.most = h("input", { type: "number", min: 0, max: 10000, value: 32, "aria-label": "The most modules to add" });
        this.seconds = h("input", { type: "number", min: 1, max: 3600, value: 5, "aria-label": "Seconds to search" });
        this.keeps = h("input", { type: "checkbox" });
        this.streams = h("input", { type: "checkbox" });
        this.stop = button("Stop", () => this.own.cancel(), { hidden: true });
        this.progress = h("p", { class: "note", role: "status" });
        this.answer = h("div", { class: "answer" });
        this.old = h("p", { class: "old", role: "status", hidden: true }, "The plan has changed since this was asked. ", button("Ask again", () => this.again()));
        plan.addEventListener("change", () => { this.allow(); this.age(); });
        const ask = (title, question) => button(title, question, { class: "primary" });
        this.questions = [ask("Size", () => this.size()), ask("Choose", () => this.choose()), ask("Bound", () => this.bound()), ask("Drill", () => this.drill())];
        const [size, choose, bound, drill] = this.questions;
        this.element = h("div", { class: "ask" },
            h("p", {}, "What would make everything fit: further modules like ", this.kind, ", ", this.most, " at the most, or one limit raised? ",
                size),
            h("p", {}, "Which services are better not asked for, so that the most that matters is placed? Search for ", this.seconds, " seconds ",
                h("label", { class: "check inline" }, this.keeps, "and move as little as may be "), choose),
            h("p", {}, "How many services could any arrangement place? ", bound),
            h("p", {}, "What goes off the air when a module or an input fails? ", h("label", { class: "check inline" }, this.streams, "Each stream, too "), drill),
            h("p", {}, this.stop), this.progress, this.old, this.answer);
    }

    draw() {
        const modules = this.plan.headend?.modules ?? [];
        const chosen = this.kind.value;
        this.kind.replaceChildren(...modules.map((module, at) => h("option", { value: at }, moduleName(module))));
        if (chosen && modules[chosen]) this.kind.value = chosen;
    }

    get module() { return this.plan.headend?.modules[this.kind.value]; }

    size() {
        this.again = this.size;
        const { module } = this;
        if (!module) return this.actions.say("There is no module yet whose like could be added.");
        const kind = JSON.stringify({ ...module, controller: undefined, label: undefined });
        const most = Math.max(0, Math.min(10000, Math.trunc(Number(this.most.value)) || 0));
        return this.put({ ask: "size", most }, [textOf(this.plan.headend), kind], (sizing) => [
            sizing.add.number > 0 && this.proposal(`Add ${counted(sizing.add.number, "module")}`, { ask: "add", number: sizing.add.number }, [kind]),
            ...sizing.raise.map((raise) => this.proposal(raise.set, { ask: "change", set: [raise.set] })),
        ]);
    }

    choose() {
        this.again = this.choose;
        const seconds = Math.max(1, Math.min(3600, Math.trunc(Number(this.seconds.value)) || 5));
        return this.put({ ask: "choose", seconds, keep: this.keeps.checked, ...this.plan.reserved }, [textOf(this.plan.headend)], (choice, [, , chosen]) =>
            [this.proposal("Ask for what was chosen", { ask: "change" }, [], chosen)]);
    }

    drill() {
        this.again = this.drill;
        return this.put({ ask: "drill", streams: this.streams.checked }, [textOf(this.plan.headend)], () => []);
    }

    bound() {
        this.again = this.bound;
        return this.put({ ask: "bound" }, [textOf(this.plan.headend)], () => []);
    }

    /// A button that makes the change which the answer proposes, of the head-end that it was asked of.
    proposal(title, question, texts = [], headendText = textOf(this.of)) {
        const { of } = this;
        return h("li", {}, h("code", {}, name(title)), " ", button("Take over", async () => {
            const answer = await this.actions.asked(this.engine, question, [headendText, ...texts]);
            if (answer && this.plan.headend === of) this.plan.change(JSON.parse(answer.texts[0]), title);
        }));
    }

    /// A result is asked nothing.
    allow() {
        const isAllowed = Boolean(this.plan.headend);
        for (const ask of this.questions) {
            ask.disabled = !isAllowed;
            ask.title = isAllowed ? "" : onlyResult;
        }
    }

    /// An answer is good for the head-end that it was asked of, and again once one is back there.
    age() {
        const isOld = this.answer.hasChildNodes() && Boolean(this.plan.headend) && this.plan.headend !== this.of;
        this.old.hidden = !isOld;
        for (const proposed of this.answer.querySelectorAll("button")) proposed.disabled = this.plan.headend !== this.of;
    }

    /// Asks, instead of what is still being asked.
    async put(head, texts, proposalsOf) {
        const { headend } = this.plan;
        if (!headend) return;
        const asked = this.asked = {};
        const isLast = () => this.asked === asked;
        this.own ??= this.begin((text) => { if (!this.stop.hidden) this.progress.textContent = text; });
        this.own.cancel();
        this.stop.hidden = false;
        this.progress.textContent = "Asking";
        this.answer.replaceChildren();
        this.age();
        try {
            const { texts: answers } = await this.own.ask({ ...head, width: columnsIn(this.answer) }, texts);
            if (!isLast()) return;
            this.of = headend;
            this.answer.replaceChildren(h("pre", { tabindex: 0 }, answers[1]), h("ul", { class: "proposals" }, proposalsOf(JSON.parse(answers[0]), answers)));
            this.progress.textContent = "";
            this.age();
        } catch (wrong) {
            if (isLast()) this.progress.textContent = wrong instanceof Cancelled ? "Stopped." : wrong.message;
        }
        if (isLast()) this.stop.hidden = true;
    }
}

const queryFor = ({ lcn, onid, tsid }) => `${lcn}@${onid}/${tsid}`;

/// Why a service stands where it does, beside everything else.
export class Explanation {
    constructor(plan, engine, actions) {
        Object.assign(this, { plan, engine, actions });
        this.heading = h("h2", { id: "explained", tabindex: -1 });
        this.inTable = button("In the table", () => this.actions.showService(this.service));
        this.body = h("div", { class: "answer" });
        this.element = h("aside", { class: "explanation", "aria-labelledby": "explained", hidden: true,
            onkeydown: (event) => { if (event.key === "Escape") this.close(); } },
        h("header", {}, this.heading, this.inTable, button("Close", () => this.close())), this.body);
    }

    close() {
        this.element.hidden = true;
        this.from?.focus?.();
    }

    explain(service) {
        this.from = this.element.hidden ? document.activeElement : this.from;
        this.element.hidden = false;
        this.tell(service);
        this.heading.focus({ preventScroll: true });
    }

    async tell(service) {
        this.service = service;
        this.of = this.plan.variant;
        const asked = this.asked = {};
        this.heading.replaceChildren(name(service.name));
        // Not that of a result, which has no tables.
        this.inTable.hidden = !this.plan.headend?.services?.some((one) => keyOf(one) === keyOf(service));
        if (!this.plan.headend) return this.body.replaceChildren(h("p", {}, onlyResult));
        const told = await this.engine.ask({ ask: "explain", services: [queryFor(service)], width: columnsIn(this.body) }, [textOf(this.plan.headend)])
            .then(({ texts }) => h("pre", { tabindex: 0 }, texts[1]), (wrong) => h("p", {}, name(wrong.message)));
        if (this.asked === asked) this.body.replaceChildren(told);
    }

    /// Whether what is open still has the service, or the clone.
    get isThere() {
        const { headend, variant } = this.plan;
        if (!headend) return variant === this.of;
        return [...headend.services ?? [], ...headend.clones ?? []].some((one) => queryFor(one) === queryFor(this.service));
    }

    /// After a change the answer is another. Only who asks is led to it: others are typing.
    draw() {
        if (this.element.hidden) return;
        if (this.isThere) this.tell(this.service);
        else if (this.element.contains(document.activeElement)) this.close();
        else this.element.hidden = true;
    }
}
