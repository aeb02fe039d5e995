// Streams on the left, the modules they come to in the middle, their outputs on the right; the wider a line, the more
// services it carries. Of a large head-end one module after the other is looked at, or what the filter leaves.

import { counted, folded, grouped, h, svg } from "./dom.js";
import { moduleName, streamOf } from "./outcome.js";

const mostModules = 12;
const rowHeight = 26;
const width = 620;
const columns = [2, 212, 462];
const boxWidth = 110;
const outputWidth = 156;
const moduleWidth = 150;

export class Diagram {
    id = "diagram";
    title = "Diagram";

    constructor(actions) {
        this.actions = actions;
        this.filter = h("input", { type: "search", class: "filter", placeholder: "Module, service or stream", "aria-label": "Filter the diagram", oninput: () => this.drawLines() });
        this.count = h("p", { class: "note", role: "status" });
        this.picture = h("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": "Diagram" });
        this.element = h("div", {}, h("div", { class: "toolbar" }, this.filter, this.count), this.picture);
    }

    draw(outcome) {
        this.outcome = outcome;
        this.drawLines();
    }

    chosen() {
        const words = folded(this.filter.value).split(/\s+/).filter(Boolean);
        const textOf = (module) => folded([module.mac, module.label ?? "", ...module.inputs.flatMap((input) =>
            [input.tuned ? streamOf(input) : "", ...input.services.map((service) => `${service.lcn} ${service.name}`)])].join("\n"));
        return this.outcome.result.modules.map((module, at) => ({ module, loads: this.outcome.loads[at] }))
            .filter(({ module }) => words.length === 0 || words.every((word) => textOf(module).includes(word)));
    }

    drawLines() {
        if (!this.outcome) return;
        const chosen = this.chosen();
        const shown = chosen.slice(0, mostModules);
        const all = counted(chosen.length, "module");
        this.count.textContent = shown.length < chosen.length ? `The first ${shown.length} of ${all}: filter for others` : all;
        this.picture.replaceChildren(this.svgOf(shown));
    }

    svgOf(shown) {
        const streams = new Map();
        const inputs = [];
        const outputs = [];
        const frames = [];
        let y = 24;
        for (const { module, loads } of shown) {
            const tuned = module.inputs.filter((input) => input.tuned);
            const height = Math.max(tuned.length, module.outputs.length, 1) * rowHeight;
            const middle = (count, at) => y + (height / count) * (at + 0.5) + 14;
            tuned.forEach((input, at) => {
                if (!streams.has(streamOf(input))) streams.set(streamOf(input), { y: middle(tuned.length, at), number: streams.size });
                inputs.push({ module, input, y: middle(tuned.length, at) });
            });
            module.outputs.forEach((output, at) => outputs.push({ module, output, load: loads[at], y: middle(module.outputs.length, at) }));
            frames.push({ module, y, height });
            y += height + 34;
        }
        // A stream that several modules receive keeps the place of its first; no two lie upon each other.
        let last = 0;
        for (const stream of [...streams.values()].sort((one, other) => one.y - other.y)) stream.y = last = Math.max(stream.y, last + rowHeight * 0.8);
        return svg("svg", { class: "diagram", viewBox: `0 0 ${width} ${Math.max(y, last + 30)}`, role: "group",
            "aria-label": `${counted(streams.size, "stream")} to ${counted(shown.length, "module")}, ${counted(outputs.length, "output")}` },
        ["Streams", "Modules and inputs", "Outputs"].map((text, at) => svg("text", { x: columns[at], y: 14, class: "heading" }, text)),
        inputs.map(({ input, y: to }) => this.line(columns[0] + boxWidth, streams.get(streamOf(input)).y, columns[1], to, input.services.length, streams.get(streamOf(input)).number)),
        inputs.flatMap(({ module, input, y: from }) => outputs.filter((output) => output.module === module).map(({ output, y: to }) => {
            const common = output.services.filter((service) => streamOf(service) === streamOf(input)).length;
            return common > 0 && this.line(columns[1] + moduleWidth, from, columns[2], to, common, streams.get(streamOf(input)).number);
        })),
        [...streams].map(([stream, { y: at }]) => this.box(columns[0], at, stream, "stream")),
        frames.map((frame) => this.frame(frame)),
        inputs.map(({ input, y: at }) => svg("text", { x: columns[1] + 8, y: at + 4 }, `Input ${input.number} · ${input.services.length}`)),
        outputs.map(({ output, load, y: at }) => this.box(columns[2], at, `${output.number} · ${grouped(output.bitrate)} of ${grouped(output.bitrate_max)}`, load)));
    }

    line(x1, y1, x2, y2, services, stream) {
        const bend = (x2 - x1) / 2;
        return svg("path", { class: `flow s${stream % 8}`, d: `M${x1} ${y1}C${x1 + bend} ${y1} ${x2 - bend} ${y2} ${x2} ${y2}`,
            "stroke-width": Math.min(14, 1 + services * 1.5) }, svg("title", {}, counted(services, "service")));
    }

    box(x, y, text, kind) {
        const boxed = x === columns[2] ? outputWidth : boxWidth;
        return svg("g", {}, svg("rect", { class: `node ${kind}`, x, y: y - 10, width: boxed, height: 20, rx: 4 }), svg("text", { x: x + 8, y: y + 4 }, text));
    }

    frame({ module, y, height }) {
        const show = () => this.actions.showModule(module.mac);
        return svg("g", { class: "module-node", tabindex: 0, role: "link", "aria-label": moduleName(module), onclick: show,
            onkeydown: (event) => {
                if (event.key !== "Enter") return;
                event.preventDefault(); // or the module's line, which has the focus then, takes the key to fold it
                show();
            } },
            svg("text", { x: columns[1], y: y + 8, class: "heading" }, moduleName(module)),
            svg("rect", { class: "frame", x: columns[1], y: y + 14, width: moduleWidth, height, rx: 6 }));
    }
}
