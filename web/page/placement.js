// The modules as boxes that fold: how full each output is, and inside which services come in and go out.

import { counted, folded, grouped, h, name, renew, svg } from "./dom.js";
import { isFree, streamOf, usedInputs } from "./outcome.js";

const loadWords = { broken: "Broken", full: "Full", high: "High", free: "Free" };

/// Services by what they are, for the filter.
const sorts = {
    hd: { title: "HD", holds: (service) => service.hd },
    sd: { title: "SD", holds: (service) => !service.hd && !service.radio },
    radio: { title: "Radio", holds: (service) => service.radio },
    scrambled: { title: "Scrambled", holds: (service) => service.scrambled },
    transcoded: { title: "Transcoded", holds: (service) => service.transcoded },
};

const percent = (used, most) => (most > 0 ? Math.min(100, (used / most) * 100) : used > 0 ? 100 : 0);

export class Placement {
    id = "placement";
    title = "Modules";

    constructor(actions) {
        this.actions = actions;
        this.open = new Set();
        this.filter = h("input", { type: "search", class: "filter", placeholder: "Module, service or stream", "aria-label": "Filter the modules",
            oninput: () => this.drawModules() });
        this.load = this.select("Load", [["", "Any load"], ...Object.entries(loadWords)]);
        this.sort = this.select("Kind of service", [["", "Any kind"], ...Object.entries(sorts).map(([key, { title }]) => [key, title])]);
        this.colours = this.select("Colours", [["load", "Colours by load"], ["stream", "Colours by stream"]]);
        this.count = h("p", { class: "note", role: "status" });
        this.list = h("div", { class: "modules" });
        this.element = h("div", {}, h("h2", { class: "aside" }, "Modules"), h("div", { class: "toolbar" }, this.filter, this.load, this.sort, this.colours, this.count), this.list);
    }

    select(label, options) {
        return h("select", { "aria-label": label, onchange: () => this.drawModules() },
            options.map(([value, text]) => h("option", { value }, text)));
    }

    draw(outcome) {
        this.outcome = outcome;
        this.streams = new Map();
        for (const { inputs } of outcome.result.modules)
            for (const input of inputs)
                if (input.tuned && !this.streams.has(streamOf(input))) this.streams.set(streamOf(input), this.streams.size);
        this.drawModules();
    }

    /// Unfolds a module and goes there.
    reveal(mac) {
        this.open.add(mac);
        this.filter.value = this.load.value = this.sort.value = "";
        this.drawModules();
        const box = [...this.list.children].find(({ dataset }) => dataset.mac === mac);
        box?.scrollIntoView({ block: "nearest" });
        box?.querySelector("summary").focus({ preventScroll: true });
    }

    drawModules() {
        if (!this.outcome) return;
        const { result, loads } = this.outcome;
        const words = folded(this.filter.value).split(/\s+/).filter(Boolean);
        const shown = result.modules.map((module, at) => ({ module, loads: loads[at] }))
            .filter(({ module, loads: own }) => this.holds(module, own, words));
        renew(this.list, shown.map(({ module, loads: own }) => [this.shownOf(module, own), () => this.box(module, own)]));
        this.count.textContent = shown.length === result.modules.length ? counted(shown.length, "module")
            : `${shown.length} of ${counted(result.modules.length, "module")}`;
    }

    holds(module, loads, words) {
        if (this.load.value && !loads.includes(this.load.value)) return false;
        const services = module.outputs.flatMap((output) => output.services);
        if (this.sort.value && !services.some(sorts[this.sort.value].holds)) return false;
        if (words.length === 0) return true;
        const text = folded([module.mac, module.label ?? "", ...module.inputs.filter(({ tuned }) => tuned).map(streamOf),
            ...services.map((service) => `${service.lcn} ${service.name}`)].join("\n"));
        return words.every((word) => text.includes(word));
    }

    /// What a box shows, of a folded one its line.
    shownOf(module, loads) {
        const isOpen = this.open.has(module.mac);
        const colours = this.colours.value === "stream" && module.outputs.map(({ services }) => services.map((service) => [service.bitrate, this.colourOf(service)]));
        const inside = isOpen && [module, module.inputs.map((input) => this.reception(input)), this.sort.value];
        const { mac, label, controller, inputs, outputs, pids, pids_max: pidsMax } = module;
        return JSON.stringify([mac, label, controller, usedInputs(module), inputs.length, pids, pidsMax, loads, colours, inside,
            outputs.map(({ number, bitrate, bitrate_max: most, service_count: count }) => [number, bitrate, most, count])]);
    }

    box(module, loads) {
        const { mac, label, controller, inputs, outputs, pids, pids_max: pidsMax } = module;
        const box = h("details", { class: "module", data: { mac }, ontoggle: (event) => {
            if (box.open) this.open.add(mac);
            else this.open.delete(mac);
            // The placement may have become another inside while the line stayed as it was.
            if (box.open) this.unfold(box, this.outcome.modules.get(mac), loads);
            else if (box.childElementCount > 1) box.lastChild.remove(); // of two quick toggles only the last is told
            event.stopPropagation();
        } }, h("summary", {},
            h("span", { class: "module-name" }, name(label || mac), label && h("span", { class: "mac" }, name(mac)),
                controller && h("span", { class: "badge" }, "controller")),
            h("span", { class: "facts" }, `${usedInputs(module)} of ${counted(inputs.length, "input")}`, h("span", {}, `${grouped(pids)} of ${counted(pidsMax, "PID")}`)),
            h("span", { class: "bars" }, outputs.map((output, at) => this.bar(output, loads[at])))));
        if (this.open.has(mac)) {
            box.open = true;
            this.unfold(box, module, loads);
        }
        return box;
    }

    unfold(box, module, loads) {
        if (box.childElementCount === 1) box.append(this.inside(module, loads));
    }

    bar(output, load) {
        const share = percent(output.bitrate, output.bitrate_max);
        const words = `Output ${output.number}: ${grouped(output.bitrate)} of ${grouped(output.bitrate_max)} kbit/s, ${counted(output.service_count, "service")}`;
        return h("span", { class: `bar ${load}`, title: words },
            svg("svg", { role: "img", "aria-label": `${words}, ${loadWords[load].toLowerCase()}`, viewBox: "0 0 100 10", preserveAspectRatio: "none" },
                svg("rect", { class: "track", width: 100, height: 10 }),
                this.colours.value === "stream" ? this.streamParts(output) : svg("rect", { class: "load", width: share, height: 10 })),
            h("span", { class: "percent", "aria-hidden": "true" }, `${Math.round(share)} %`));
    }

    colourOf(service) { return (this.streams.get(streamOf(service)) ?? 0) % 8; }

    streamParts(output) {
        let x = 0;
        return output.services.filter(({ clone }) => !clone).map((service) => {
            const width = percent(service.bitrate, output.bitrate_max);
            x += width;
            return svg("rect", { class: `c${this.colourOf(service)}`, x: x - width, width, height: 10 });
        });
    }

    inside(module, loads) {
        return h("div", { class: "inside" },
            h("div", {}, h("h3", {}, "Inputs"), h("ul", {}, module.inputs.map((input) => h("li", {},
                h("b", {}, `Input ${input.number} `),
                isFree(input) ? h("span", { class: "note" }, "free") : h("span", {}, `stream ${streamOf(input)} `, h("span", { class: "note" }, [this.reception(input), this.fill(input)].filter(Boolean).join(", "))),
                this.services(input.services))))),
            h("div", {}, h("h3", {}, "Outputs"), h("ul", {}, module.outputs.map((output, at) => h("li", {},
                h("b", {}, `Output ${output.number} `),
                h("span", { class: `state ${loads[at]}` }, loadWords[loads[at]]),
                h("span", { class: "note" }, ` ${grouped(output.bitrate)} of ${grouped(output.bitrate_max)} kbit/s, ${counted(output.service_count, "service")}`),
                this.services(output.services))))));
    }

    reception({ onid, tsid }) {
        const stream = this.outcome.result.streams?.find((one) => one.onid === onid && one.tsid === tsid);
        return stream ? [stream.satellite, stream.frequency && `${stream.frequency / 1000} MHz`, stream.polarization].filter(Boolean).join(" ") : "";
    }

    /// How much of what its transponder carries goes on from here.
    fill({ bitrate, net_rate: most }) {
        return most ? `${grouped(bitrate)} of ${grouped(most)} kbit/s, ${Math.round(percent(bitrate, most))} %` : `${grouped(bitrate)} kbit/s`;
    }

    services(services) {
        const { holds } = sorts[this.sort.value] ?? { holds: () => true };
        return h("ul", { class: "chips" }, services.filter(holds).map((service) => h("li", {},
            h("button", { type: "button", class: `chip${service.clone ? " clone" : ""}`, title: `${grouped(service.bitrate)} kbit/s, stream ${streamOf(service)}`,
                onclick: () => this.actions.explain(service) }, h("span", { class: "lcn" }, service.lcn), " ", name(service.name),
            service.hd && h("span", { class: "tag" }, "HD"), service.scrambled && h("span", { class: "tag" }, `CA ${service.ca_pids}`)))));
    }
}
