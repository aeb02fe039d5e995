// The page put together: the plan, the engine that follows each change of it, and the views.

import { Ask, Explanation } from "./ask.js";
import { Changes } from "./changes.js";
import { Diagram } from "./diagram.js";
import { button, grouped, h, name, put, renew } from "./dom.js";
import { Draft, given } from "./draft.js";
import { Cancelled, compile, Engine, Refused } from "./engine.js";
import { Files, sample } from "./files.js";
import { keyOf, moduleName, Outcome, usedInputs } from "./outcome.js";
import { changedIn, difference, Overview } from "./overview.js";
import { Lists } from "./lists.js";
import { Placement } from "./placement.js";
import { Plan, textOf, variantName } from "./plan.js";
import { Table } from "./tables.js";
import { Tabs } from "./tabs.js";
import { Terms } from "./terms.js";

const byId = (id) => document.getElementById(id);

/// After so long a run that is no longer wanted is given up for the next.
const patience = 400;

class App {
    constructor(compiled) {
        this.plan = new Plan();
        this.runner = new Engine(compiled, (text) => this.showProgress(text));
        this.asker = new Engine(compiled);
        /// Head-ends that do not run: nothing is compared with them.
        this.refused = new WeakSet();
        const actions = {
            say: (text) => this.say(text), tell: (messages, more) => this.tell(messages, more), saved: () => this.drawBar(),
            asked: (...question) => this.asked(...question), explain: (service) => this.explanation.explain(service), ordered: () => this.ordered(), lists: () => this.lists(), keepFree: (reserve) => this.keepFree(reserve),
            showModule: (mac) => this.showModule(mac), showService: (service) => this.showService(service),
        };
        this.files = new Files(this.plan, this.asker, actions);
        this.draft = new Draft(this.plan, actions.say);
        this.explanation = new Explanation(this.plan, this.asker, actions);
        this.makeTables(actions);
        this.views = [new Overview(actions), new Placement(actions), new Lists(actions), new Changes(actions), new Diagram(actions), new Ask(this.plan, this.asker, (tell) => new Engine(compiled, tell), actions)];
        this.asker.ask({ ask: "about" }).then(({ reserve }) => this.views[0].explainReserve(reserve), () => {});
        this.seen = new Tabs("Placement", this.views, () => this.drawView());
        this.put();
        this.listen();
        this.plan.addEventListener("change", () => this.follow());
    }

    // ---- Parts -----------------------------------------------------------------------------------------

    makeTables(actions) {
        const placeOf = (service) => this.outcome?.places.get(keyOf(service));
        const place = {
            key: "place", heading: "Placed on", kind: "text", width: 178, isShown: true, isLink: true, hint: "Where the service is placed. Enter or a click explains it",
            get: (service) => {
                const found = placeOf(service);
                if (found) return `${moduleName(found.module)} → ${found.outputs.join(", ")}`;
                return this.outcome ? (service.ask === false ? "not asked for" : "left out") : "";
            },
            format: (value) => value, classOf: (service) => (!this.outcome || placeOf(service) || service.ask === false ? "" : "short"),
            titleOf: (service) => this.outcome?.reasons.get(keyOf(service)),
        };
        const use = {
            key: "use", heading: "In use", kind: "text", width: 120, isShown: true, isLink: true, hint: "Inputs and PIDs in use. Enter or a click shows the module",
            get: ({ mac }) => {
                const module = this.outcome?.modules.get(mac);
                return module ? `${usedInputs(module)} of ${module.inputs.length}, ${module.pids} PIDs` : "";
            },
            format: (value) => value,
        };
        this.modules = new Table("modules", this.plan, actions.say, { extra: [use], onopen: (at) => this.showModule(this.plan.headend.modules[at].mac) });
        this.services = new Table("services", this.plan, actions.say, {
            extra: [place], onopen: (at) => this.explanation.explain(this.plan.headend.services[at]),
            terms: new Terms(this.plan, (...question) => this.asked(this.asker, ...question), () => this.services.draw()),
            states: () => [
                { title: "State", states: [
                    { name: "left", title: "Left out", holds: (service) => service.ask !== false && !placeOf(service) },
                    { name: "placed", title: "Placed", holds: (service) => Boolean(placeOf(service)) },
                    { name: "withheld", title: "Not asked for", holds: (service) => service.ask === false },
                    { name: "must", title: "Must", holds: (service) => service.must === true },
                ] },
                { title: "Left out because", states: (this.outcome?.result.causes ?? []).map(({ kind, sentence }) => (
                    { name: `cause ${kind}`, title: sentence, holds: (service) => this.outcome.causes.get(keyOf(service)) === kind })) },
                { title: "On module", states: (this.outcome?.result.modules ?? []).map((module) => (
                    { name: `module ${module.mac}`, title: moduleName(module), holds: (service) => placeOf(service)?.module === module })) },
            ],
        });
        const parent = () => this.plan.headend.services?.[this.services.grid.order[this.services.grid.row]];
        this.clones = new Table("clones", this.plan, actions.say, { parent });
        this.pids = new Table("pids", this.plan, actions.say, { parent });
    }

    put() {
        this.edited = new Tabs("Head-end", [{ id: "modules", title: "Modules", element: this.modules.element },
            { id: "services", title: "Services", element: this.services.element }, { id: "clones", title: "Clones", element: this.clones.element },
            { id: "pids", title: "PIDs", element: this.pids.element }], () => this.drawTable());
        byId("edit").append(this.edited.list, ...this.edited.panels);
        byId("see").append(this.seen.list, ...this.seen.panels);
        byId("work").append(this.explanation.element);
        byId("open").onclick = byId("open-first").onclick = () => this.files.choose();
        byId("save").onclick = () => this.files.save();
        byId("undo").onclick = () => this.plan.undo();
        byId("redo").onclick = () => this.plan.redo();
        byId("cancel").onclick = () => this.runner.cancel();
        byId("compare").onchange = () => this.run();
        byId("print").onclick = () => print();
        byId("forget").onclick = () => this.forget();
        byId("export").append(...this.files.ways());
        byId("name").onchange = (event) => this.plan.change({ ...this.plan.headend, name: event.target.value || undefined }, "Rename");
        for (const [title, id] of [["A small head-end", "small"], ["A hotel", "medium"]])
            byId("samples").append(button(title, () => this.files.open([{ name: `${id}.json`, text: sample(id) }], true)));
        byId("samples").append(button("An empty head-end", () => this.plan.open({ id: 1, file: "head-end.json", headend: { modules: [], services: [] } })));
    }

    listen() {
        addEventListener("keydown", (event) => this.key(event));
        addEventListener("beforeunload", (event) => { if (this.plan.isChanged) event.preventDefault(); });
        document.addEventListener("click", ({ target }) => {
            if (!target.closest(".menu") || target.matches("button")) this.closeMenus();
        });
    }

    /// The keyboard stays where it was opened.
    closeMenus() {
        for (const menu of document.querySelectorAll("details.menu[open]")) {
            if (menu.contains(document.activeElement)) menu.firstElementChild.focus();
            menu.open = false;
        }
    }

    key(event) {
        const control = event.ctrlKey || event.metaKey;
        const letter = event.key.toLowerCase();
        const isField = event.target.matches?.("input, textarea, select");
        // Those that one types into undo what was typed by themselves.
        const isText = isField && !event.target.matches("select, [type=checkbox]");
        if (control && letter === "s") this.save();
        else if (control && letter === "o") this.files.choose();
        else if (control && !isText && letter === "z") event.shiftKey ? this.plan.redo() : this.plan.undo();
        else if (control && !isText && letter === "y") this.plan.redo();
        else if (event.key === "Escape") return this.closeMenus();
        else if (event.key === "/" && !isField && !control) this.edited.shown.element.querySelector(".filter").focus();
        else return;
        event.preventDefault();
    }

    /// With what is being typed; nothing where that is wrong.
    save() {
        const field = document.activeElement;
        if (field === byId("name")) {
            field.blur();
            field.focus();
        }
        if ([this.modules, this.services, this.clones, this.pids].every(({ grid }) => grid.conclude(true, 0, 0))) this.files.save();
    }

    // ---- Following the plan ----------------------------------------------------------------------------

    /// What can be compared with comes first, then the engine: while it works, the tables are drawn.
    follow() {
        this.drawBar();
        this.run();
        this.drawTable();
    }

    /// What the current variant is compared with.
    get before() {
        const { plan } = this;
        const choice = byId("compare").value;
        if (choice.startsWith("variant ")) return plan.state.variants.find(({ id }) => `variant ${id}` === choice);
        if (choice === "opened") return plan.opened;
        return plan.past.map(({ state }) => state.variants.find(({ id }) => id === plan.variant?.id))
            .findLast((variant) => variant && variant.headend !== plan.headend && !this.refused.has(variant.headend));
    }

    async run() {
        const { variant } = this.plan;
        if (!variant) return;
        const wanted = this.wanted = {};
        if (this.isRunning) {
            clearTimeout(this.giveUp);
            this.giveUp = setTimeout(() => this.runner.cancel(), patience);
            return;
        }
        this.isRunning = true;
        this.showRunning(true);
        const texts = [variant, this.before].filter(Boolean).map((one) => one.result ?? textOf(one.headend));
        try {
            const answer = await this.runner.ask({ ask: "run", ...this.plan.reserved, name: variant.file }, texts);
            if (this.plan.variant === variant) {
                this.compared = texts;
                this.take(new Outcome(answer), variant);
            }
        } catch (wrong) {
            if (wrong instanceof Refused && variant.headend) this.refused.add(variant.headend);
            if (this.plan.variant === variant) this.fail(wrong);
        }
        clearTimeout(this.giveUp);
        this.isRunning = false;
        this.showRunning(false);
        if (this.wanted !== wanted) this.run();
    }

    /// In which order what was before becomes what is.
    async ordered() {
        const answer = await this.asked(this.asker, { ask: "compare", ...this.plan.reserved, name: this.plan.variant.file }, this.compared);
        return answer?.order;
    }

    /// What is no reserve is told, and kept nowhere: says whether it is one. Not asked of the engine that runs the plan,
    /// which may be cancelled meanwhile; what is typed later counts, however late the answer comes.
    async keepFree(reserve) {
        const kept = this.kept = {};
        const isOne = reserve === "" || Boolean(await this.asked(this.asker, { ask: "run", reserve }, [sample("small")]));
        if (isOne && this.kept === kept) this.plan.keepFree(reserve);
        return isOne;
    }

    /// The engine that has just placed it knows it still.
    async lists() {
        const answer = await this.asked(this.runner, { ask: "write", format: "lists", ...this.plan.reserved, name: this.plan.variant.file }, this.compared.slice(0, 1));
        return answer?.texts[0];
    }

    take(outcome, variant) {
        this.outcome = outcome;
        this.plan.keepFigures(variant, outcome.result.summary);
        byId("failure").hidden = true;
        const { placed, loaded, left_out: left } = outcome.result.summary;
        const since = difference(outcome.comparison);
        byId("status").textContent = `${placed} of ${loaded} placed, ${left} left out${since ? ` (${since})` : ""} · ${Math.round(outcome.milliseconds)} ms`;
        document.body.classList.remove("stale");
        this.drawView();
        this.drawTable();
        this.drawVariants();
        // The figure alone: with words the tabs would go to and fro between one line and two.
        this.seen.note("changes", changedIn(outcome.comparison) && grouped(changedIn(outcome.comparison)));
        this.explanation.draw();
        document.documentElement.dataset.drawn = String(Number(document.documentElement.dataset.drawn ?? 0) + 1);
    }

    fail(wrong) {
        document.body.classList.add("stale");
        if (wrong instanceof Cancelled) return void (byId("status").textContent = "Cancelled. What is shown is of before.");
        const [, list, at] = /^\/(modules|services|clones|pids)\/(\d+)/.exec(wrong.place ?? "") ?? [];
        put(byId("failure"), h("p", {}, name(wrong.message)), list && button("Go there", () => this.goTo(list, Number(at))));
        byId("failure").hidden = false;
        byId("status").textContent = wrong instanceof Refused ? "The engine cannot run this. What is shown is of before." : "";
    }

    showRunning(isRunning) {
        clearTimeout(this.late);
        if (isRunning) this.late = setTimeout(() => { byId("cancel").hidden = false; document.body.classList.add("stale"); }, 150);
        else byId("cancel").hidden = true;
    }

    showProgress(text) { byId("status").textContent = text; }

    // ---- Drawing ---------------------------------------------------------------------------------------

    drawBar() {
        const { plan } = this;
        document.body.classList.toggle("empty", !plan.variant);
        document.body.classList.toggle("only-result", Boolean(plan.variant && !plan.headend));
        byId("name").readOnly = Boolean(plan.variant && !plan.headend);
        byId("name").value = plan.headend?.name ?? plan.variant?.name ?? "";
        const { activeElement } = document;
        for (const [id, steps] of [["undo", plan.past], ["redo", plan.future]]) {
            byId(id).disabled = steps.length === 0;
            byId(id).title = steps.length > 0 ? `${id === "undo" ? "Undo" : "Redo"}: ${steps.at(-1).label}` : "";
        }
        // What cannot be pressed any more lets go of the keyboard.
        for (const [id, other] of [["undo", "redo"], ["redo", "undo"]]) if (activeElement === byId(id) && activeElement.disabled) byId(other).focus();
        byId("changed").hidden = !plan.isChanged;
        byId("changed").title = plan.unsaved.map((variant) => `Variant ${variantName(variant)} is in no file`).join("\n");
        document.title = `${plan.isChanged ? "• " : ""}${plan.headend?.name || plan.variant?.file || "Planner"} · Recalculo`;
        this.drawVariants();
    }

    drawVariants() {
        const { variants, current } = this.plan.state;
        const figures = variants.map((variant) => this.plan.figuresOf(variant));
        const hadFocus = byId("variants").contains(document.activeElement);
        renew(byId("variants"), [
            ...variants.map((variant, at) => [JSON.stringify([at, at === current, variant.id, figures[at]?.placed, figures[at]?.loaded]), () => this.variantButton(variant, at, figures[at])]),
            variants.length > 0 && this.plan.headend && ["add", () => button("New variant", () => this.plan.addVariant())],
            variants.length > 1 && ["remove", () => button("Remove variant", () => this.plan.removeVariant())],
        ]);
        if (hadFocus && !byId("variants").contains(document.activeElement)) byId("variants").querySelector("[aria-pressed=true]").focus();
        renew(byId("compare"), [["last", "the last change"], ["opened", "what was opened"], ...variants.filter((variant, at) => at !== current).map((variant) => [`variant ${variant.id}`, `variant ${variantName(variant)}`])]
            .map(([value, text]) => [value, () => h("option", { value }, text)]));
    }

    variantButton(variant, at, summary) {
        return h("button", { type: "button", "aria-pressed": String(at === this.plan.state.current), onclick: () => this.plan.look(at) }, h("b", {}, variantName(variant)),
            summary && h("span", {}, ` ${summary.placed} of ${summary.loaded}`));
    }

    drawTable() { if (this.plan.headend) this[this.edited?.shown.id]?.draw(); }

    drawView() { if (this.outcome) this.seen.shown.draw(this.outcome, this.plan); }

    // ---- Going somewhere -------------------------------------------------------------------------------

    showModule(mac) {
        this.seen.show("placement");
        this.views[1].reveal(mac);
    }

    showService(service) {
        const at = (this.plan.headend?.services ?? []).findIndex((one) => keyOf(one) === keyOf(service));
        if (at >= 0) this.goTo("services", at);
    }

    goTo(list, at) {
        this.edited.show(list);
        if (!this[list].grid.goTo(at)) {
            this[list].clearFilters();
            this[list].grid.goTo(at);
        }
        this[list].grid.element.focus();
    }

    // ---- Telling ---------------------------------------------------------------------------------------

    /// Asks, and tells what is wrong; undefined then.
    async asked(engine, head, texts) {
        try {
            return await engine.ask(head, texts);
        } catch (wrong) {
            if (!(wrong instanceof Cancelled)) this.say(wrong.message);
            return undefined;
        }
    }

    say(text) { this.tell([text]); }

    /// `more` stands below the messages.
    tell(messages, more) {
        byId("messages").hidden = messages.length === 0;
        put(byId("messages"), h("div", {}, h("ul", {}, messages.map((message) => h("li", {}, name(message)))), more),
            button("Close", () => { byId("messages").hidden = true; }));
    }

    forget() {
        this.draft.forget();
        this.say("The draft is forgotten; it is kept anew with the next change.");
    }

    /// What was open before, what the page brings, or nothing.
    async begin() {
        const draft = this.draft.recall();
        if (draft) {
            this.plan.recall(draft);
        } else if (given()) {
            await this.files.open([{ name: "head-end.json", text: given() }]);
        } else {
            this.drawBar();
        }
        this.draft.follow();
    }
}

const fail = (text) => {
    byId("start-failure").textContent = text;
    byId("start-failure").hidden = false;
    document.body.classList.add("unable");
};

if (typeof WebAssembly !== "object")
    fail("This browser has no WebAssembly, or it is switched off. The planner needs it: any Chrome, Edge, Firefox or Safari since 2023 has it.");
else
    compile().then((compiled) => new App(compiled).begin()).then(() => document.documentElement.classList.add("ready"),
        (wrong) => fail(`The planner cannot start: ${wrong.message}`));
