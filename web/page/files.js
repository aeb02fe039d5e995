// Files in and out: opened by a button, dropped or pasted; saved by a download. What a file is the engine says.

import { button, h, name } from "./dom.js";
import { ImportChoices } from "./imports.js";
import { textOf } from "./plan.js";

/// Writes a file as the browser does it.
const download = (file, text, type) => {
    const url = URL.createObjectURL(new Blob([text], { type }));
    const link = h("a", { href: url, download: file });
    document.body.append(link);
    link.click();
    link.remove();
    setTimeout(() => URL.revokeObjectURL(url), 10_000);
};

/// The name of a file without folder and ending.
const stem = (file) => file.replace(/\.(json|conf|csv|html|lamedb|txt)$/i, "").replace(/[^\p{L}\p{N} ._-]+/gu, "_").slice(0, 80) || "head-end";

/// All that an answer tells, where the messages are a few of them.
const allOf = ({ all_messages: all }) => all && h("details", {}, h("summary", {}, `All ${all.length} messages`), h("ul", {}, all.map((message) => h("li", {}, name(message)))));

/// What is no plan of its own.
const taking = [{ known: "measured", what: "These are measured rates", label: "Take measured rates" },
    { known: "wished", what: "These are wishes", label: "Ask for what is wished" }];

export const sample = (name) => document.getElementById(`sample-${name}`).textContent;

export class Files {
    /// actions: asked(engine, head, texts), say(text), tell(messages).
    constructor(plan, engine, actions) {
        Object.assign(this, { plan, engine, actions });
        this.input = h("input", { type: "file", multiple: true, hidden: true, onchange: () => {
            this.openFiles([...this.input.files]);
            this.input.value = "";
        } });
        document.body.append(this.input);
        this.listen();
    }

    /// What may be chosen of what was opened; made once, of what the engine tells of it.
    async choices(kinds) {
        this.choosing ??= new ImportChoices(await this.engine.ask({ ask: "about" }), () => this.again());
        return this.choosing.offer(kinds);
    }

    listen() {
        document.addEventListener("dragover", (event) => {
            event.preventDefault();
            document.body.classList.add("dropping");
        });
        document.addEventListener("dragleave", (event) => { if (!event.relatedTarget) document.body.classList.remove("dropping"); });
        document.addEventListener("drop", (event) => {
            event.preventDefault();
            document.body.classList.remove("dropping");
            const text = event.dataTransfer.getData("text/plain");
            if (event.dataTransfer.files.length > 0) this.openFiles([...event.dataTransfer.files]);
            else if (text) this.open([{ name: "dropped text", text }]);
        });
        document.addEventListener("paste", (event) => {
            // What is sent to where the selection is, is for what has the focus.
            if (document.activeElement.closest("input, textarea, .grid")) return;
            const files = [...event.clipboardData.files];
            const text = event.clipboardData.getData("text/plain");
            if (files.length > 0) this.openFiles(files);
            else if (text.trim()) this.open([{ name: "pasted text", text }]);
        });
    }

    choose() { this.input.click(); }

    async openFiles(files) {
        try {
            const read = await Promise.all(files.map(async (file) => ({ name: file.name, text: await file.arrayBuffer() })));
            if (read.length > 0) await this.open(read);
        } catch (wrong) {
            this.actions.say(`Cannot be read: ${wrong.message}`);
        }
    }

    /// Opens texts: a head-end or a result by itself; channel lists together, on the modules that there are; measured
    /// rates and wish lists with them, or for the services that there are. `isSample`: the page brings it.
    async open(files, isSample = false) {
        const { headend } = this.plan;
        const answer = await this.ask(files, headend);
        if (!answer) return false;
        if (answer.kind === "module") return this.addModule(answer.texts[0]);
        const taken = taking.find(({ known }) => answer.kind.endsWith(known));
        if (taken) return this.takeUp(files, headend, answer, taken);
        if (answer.messages) return this.takeLists(files, answer);
        const [{ name }] = files;
        this.actions.tell([]);
        this.plan.open(answer.kind === "result" ? { id: 1, file: name, result: answer.texts[0], name: JSON.parse(answer.texts[0]).name }
            : { id: 1, file: name, headend: JSON.parse(answer.texts[0]), sampleName: isSample ? JSON.parse(answer.texts[0]).name : undefined });
        return true;
    }

    /// What the texts are beside a head-end, or beside the modules of a sample.
    ask(files, headend) {
        const modules = headend?.modules.length > 0 ? textOf(headend) : sample("modules");
        return this.actions.asked(this.engine, { ask: "open", names: [...files.map(({ name }) => name), "modules"], modules: true, choices: this.choosing?.chosen ?? {} },
            [...files.map(({ text }) => text), modules]);
    }

    /// Makes a plan of channel lists. The name of a head-end stays, if it is not a sample's.
    async takeLists(files, answer) {
        const { variant, headend } = this.plan;
        const hasModules = headend?.modules.length > 0;
        const title = stem(answer.lists[0]);
        const messages = [...answer.messages];
        if (!hasModules) messages.push("The services are planned on the sixteen modules of a sample: change them in the table of modules.");
        this.again = () => this.open(files);
        this.actions.tell(messages, [allOf(answer), await this.choices(answer.of)]);
        const made = JSON.parse(answer.texts[0]);
        const isOwn = hasModules && headend.name && headend.name !== variant.sampleName;
        this.plan.open({ id: 1, file: `${title}.json`, headend: isOwn ? made : { ...made, name: title } }, false);
        return true;
    }

    /// Takes what goes with the services that are there: `known` is the kind of an answer that knows some of them.
    async takeUp(files, headend, answer, { what, known, label }) {
        if (!headend) {
            this.actions.say(`${what}: open the head-end first whose services they are of.`);
            return false;
        }
        if (!this.plan.headend || ![headend, this.taken].includes(this.plan.headend)) {
            this.actions.say(`${what}, and the plan has changed since they were opened: open them again.`);
            return false;
        }
        this.again = async () => {
            // On what was there before it was taken.
            const other = await this.ask(files, headend);
            if (other) this.takeUp(files, headend, other, { what, known, label });
        };
        this.actions.tell(answer.messages, [allOf(answer), await this.choices(answer.of)]);
        if (answer.kind === known) {
            this.taken = JSON.parse(answer.texts[0]);
            this.plan.change(this.taken, label);
        }
        return true;
    }

    async addModule(text) {
        if (!this.plan.headend) return this.actions.say("This is a single module: open a head-end first, to add it to.");
        const answer = await this.actions.asked(this.engine, { ask: "add", number: 1 }, [textOf(this.plan.headend), text]);
        if (answer) this.plan.change(JSON.parse(answer.texts[0]), "Add a module");
        return Boolean(answer);
    }

    // ---- Out -------------------------------------------------------------------------------------------

    get stem() { return stem(this.plan.variant?.file ?? "head-end"); }

    async save() {
        const { headend, variant } = this.plan;
        if (!headend) return this.actions.say("There is no head-end to save.");
        const answer = await this.actions.asked(this.engine, { ask: "change" }, [textOf(headend)]);
        if (!answer) return;
        download(`${this.stem}.json`, answer.texts[0], "application/json");
        this.plan.keepSaved(variant);
        this.actions.saved();
    }

    async write(format, ending, type) {
        const { variant } = this.plan;
        if (!variant) return;
        const answer = await this.actions.asked(this.engine, { ask: "write", format, ...this.plan.reserved, name: variant.file }, [variant.result ?? textOf(variant.headend)]);
        if (!answer) return;
        download(`${this.stem}${ending}`, answer.texts[0], type);
        if (answer.message) this.actions.say(answer.message);
    }

    /// The ways out, as buttons of a menu.
    ways() {
        return [
            button("Result (JSON)", () => this.write("result", ".result.json", "application/json")),
            button("Channel list (channels.conf)", () => this.write("channels.conf", ".channels.conf", "text/plain")),
            button("Table (CSV)", () => this.write("csv", ".csv", "text/csv")),
            button("Report (HTML)", () => this.write("page", ".html", "text/html")),
        ];
    }
}
