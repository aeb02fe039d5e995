// The engine of the planner's page against the tool: the same head-ends, answered byte by byte alike. RECALCULO is the
// program, ENGINE the folder with engine.js and engine.wasm, LINEUP, if set, a folder with a channels.conf.

import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { after, describe, test } from "node:test";

const root = resolve(import.meta.dirname, "../../..");
const recalculo = resolve(process.env.RECALCULO ?? join(root, "build/gcc/tools/recalculo/recalculo"));
const built = resolve(process.env.ENGINE ?? join(root, "build/web/web"));
const examples = join(root, "examples");
const folder = mkdtempSync(join(tmpdir(), "recalculo-engine-"));
after(() => rmSync(folder, { recursive: true }));

const engine = await createRequire(import.meta.url)(join(built, "engine.js"))({ wasmBinary: readFileSync(join(built, "engine.wasm")) });

/// As the page's worker asks.
const ask = (head, texts = []) => {
    const parts = texts.map((text) => Buffer.from(text));
    const bytes = Buffer.concat([Buffer.from(`${JSON.stringify({ ...head, texts: parts.map(({ length }) => length) })}\n`), ...parts]);
    engine.HEAPU8.set(bytes, engine._recalculo_room(bytes.length));
    const begin = engine._recalculo_answer();
    const answer = Buffer.from(engine.HEAPU8.subarray(begin, begin + engine._recalculo_answer_size()));
    const end = answer.indexOf(10);
    const told = JSON.parse(answer.subarray(0, end).toString());
    let from = end + 1;
    told.texts = told.texts.map((length) => answer.subarray(from, (from += length)).toString());
    return told;
};

const native = (...parameters) => execFileSync(recalculo, parameters, { encoding: "utf8", maxBuffer: 2 ** 28, stdio: ["ignore", "pipe", "ignore"] });

/// Numbers from a seed, the same everywhere.
const numbers = (seed) => () => {
    seed = (seed + 0x6D2B79F5) | 0;
    let mixed = Math.imul(seed ^ (seed >>> 15), seed | 1);
    mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 2 ** 32;
};

const generated = (seed) => {
    const random = numbers(seed);
    const whole = (least, most) => least + Math.floor(random() * (most - least + 1));
    const name = (number) => ["Canal", "Télé", "Канал", "頻道", "قناة", "TV 👩‍👩‍👧"][whole(0, 5)] + ` ${number}`;
    const modules = Array.from({ length: whole(1, 6) }, (one, at) => ({
        mac: `02:00:00:00:00:0${at + 1}`, controller: at === 0, inputs: whole(0, 3), outputs: Array.from({ length: whole(0, 3) }, () => whole(1, 4) * 10000),
        pids_max: whole(0, 12), sd_transcoders: whole(0, 2), hd_transcoders: whole(0, 1), aux_transcoders: whole(0, 1),
        ...(random() < 0.3 ? { label: `Rack ${at}` } : {}),
    }));
    const services = [];
    for (let stream = 1; stream <= whole(1, 7); ++stream)
        for (let number = whole(1, 6); number > 0; --number)
            services.push({
                lcn: services.length + 1, name: name(services.length), onid: whole(1, 2), tsid: stream, sid: services.length + 1, bitrate: whole(200, 12000),
                ...(random() < 0.4 ? { video_format: 4 } : {}), ...(random() < 0.4 ? { descramble: true, ca_pids: whole(1, 4) } : {}),
                ...(random() < 0.2 ? { transcoding: 1 } : {}), ...(random() < 0.1 ? { type: 2 } : {}), ...(random() < 0.1 ? { ask: false } : {}),
            });
    const clones = services.filter(() => random() < 0.1).map(({ lcn, name: own, onid, tsid, sid }) => ({ lcn, name: own, onid, tsid, sid, output_name: "Again" }));
    return { name: `Generated ${seed}`, modules, services, clones };
};

const fileOf = (name, text) => {
    const file = join(folder, name);
    writeFileSync(file, text);
    return file;
};

const words = (text) => text.replace(/\s+/g, " ");

/// What a change is told with stands in the tool's report of it.
const compareWords = ({ change: { figures, renamed, inputs_taken: taken, inputs_retuned: retuned, inputs_freed: freed, ...services } }, { order: { sentence, steps } }, comparison, report) => {
    const tells = (text) => assert.ok(report.includes(words(text)), `${text}\n${report}`);
    const named = (mac) => {
        const label = comparison.labels.find((one) => one.mac === mac)?.label;
        return label ? `${mac} (${label})` : mac;
    };
    tells(figures);
    for (const [kind, told] of Object.entries(services))
        told.forEach((change, at) => {
            const side = (which) => change[which].map((text, number) => [comparison[kind][at][which]?.[number] && named(comparison[kind][at][which][number].mac), text].filter(Boolean).join(" ")).join(", ");
            tells(`${side("before")} → ${side("after")}`);
        });
    for (const { before, after } of renamed) tells(`${before} → ${after}`);
    for (const [kind, told] of Object.entries({ taken, retuned, freed }))
        told.forEach((text, at) => tells(`in ${comparison[`inputs_${kind}`][at].number} ${text}`));
    if (steps.length > 0) tells(sentence);
    steps.forEach(({ mac, number, change, effects, off_air: off }, at) => {
        const told = effects.map(({ what, services }) => `${what}: LCN ${services.map((service) => parseInt(service)).join(", ")}`);
        tells(`${at + 1} ${named(mac)} in ${number} ${change} ${told.join("; ")}`.trim());
        assert.equal(parseInt(off) || 0, comparison.order.steps[at].off_air);
    });
    return renamed.length;
};

/// All answers of one head-end, beside those of the tool.
const compareAnswers = (file, before) => {
    const text = readFileSync(file, "utf8");
    const beforeText = readFileSync(before, "utf8");
    const run = ask({ ask: "run", name: file }, [text, beforeText]);
    const [result, comparison] = run.texts;
    const whole = native("run", file, "--json", "--trials", "0");
    // What follows each change has no line ends; what is saved has.
    assert.equal(result, JSON.stringify(JSON.parse(whole)));
    const compared = native("compare", before, file, "--json");
    const changed = ask({ ask: "compare", name: file }, [text, beforeText]);
    assert.equal(changed.texts[0], compared);
    compareWords(run, changed, JSON.parse(compared), words(native("compare", before, file)));
    // The order of the steps is asked for apart.
    assert.equal(comparison, JSON.stringify({ ...JSON.parse(compared), order: { steps: [], most_off_air: 0, is_least: true } }));
    assert.equal(ask({ ask: "write", format: "result" }, [text]).texts[0], whole);
    assert.equal(ask({ ask: "bound" }, [text]).texts[0], native("bound", file, "--json"));
    assert.equal(ask({ ask: "explain" }, [text]).texts[0], native("explain", file, "--json"));
    assert.equal(ask({ ask: "write", format: "csv" }, [text]).texts[0], native("export", "--format", "csv", fileOf("result.json", result)));
    assert.equal(ask({ ask: "write", format: "channels.conf" }, [text]).texts[0], native("export", "--format", "channels.conf", join(folder, "result.json")));
    return JSON.parse(result);
};

/// And of what takes longer to answer.
const compareSearches = (file) => {
    const text = readFileSync(file, "utf8");
    const module = join(examples, "module.json");
    assert.equal(ask({ ask: "size", most: 2 }, [text, readFileSync(module, "utf8")]).texts[0], native("size", file, "--add", module, "--most", "2", "--json"));
    assert.equal(ask({ ask: "choose", seconds: 100, runs: 20 }, [text]).texts[0], native("choose", file, "--seconds", "100", "--runs", "20", "--jobs", "1", "--json"));
    assert.equal(ask({ ask: "drill", streams: true }, [text]).texts[0], native("drill", file, "--streams", "--json"));
};

describe("Every answer is the tool's", () => {
    test("on the samples", () => {
        compareAnswers(join(examples, "small.json"), join(examples, "medium.json"));
        compareAnswers(join(examples, "medium.json"), join(examples, "small.json"));
    });

    test("on 200 generated head-ends", () => {
        let before = join(examples, "small.json");
        let left = 0;
        for (let seed = 1; seed <= 200; ++seed) {
            const file = fileOf(`generated-${seed}.json`, JSON.stringify(generated(seed)));
            left += compareAnswers(file, before).summary.left_out;
            compareSearches(file);
            before = file;
        }
        assert.ok(left > 200, `only ${left} services were left out: the head-ends try nothing`);
    });

    test("of renaming, and of tuning anew", () => {
        const headend = JSON.parse(readFileSync(join(examples, "medium.json"), "utf8"));
        for (const [at, service] of headend.services.entries()) if (at % 5 === 0) Object.assign(service, { name: `Renamed ${at}`, output_name: at % 10 === 0 ? "Sent so" : undefined });
        headend.modules[3].inputs = 1;
        const file = fileOf("renamed.json", JSON.stringify(headend));
        compareAnswers(file, join(examples, "medium.json"));
        const { renamed, inputs_retuned: retuned } = ask({ ask: "run" }, [readFileSync(file), readFileSync(join(examples, "medium.json"))]).change;
        assert.ok(renamed.length > 5 && retuned.length > 0, `${renamed.length} ${retuned.length}`);
    });

    test("of sizing, and what it proposes can be taken over", () => {
        const kind = readFileSync(join(examples, "module.json"), "utf8");
        for (const seed of [3, 4, 5, 6]) {
            const text = JSON.stringify(generated(seed));
            const file = fileOf("sized.json", text);
            const [json, told] = ask({ ask: "size", most: 4 }, [text, kind]).texts;
            assert.equal(json, native("size", file, "--add", join(examples, "module.json"), "--most", "4", "--json"));
            assert.equal(told, native("size", file, "--add", join(examples, "module.json"), "--most", "4"));
            for (const { set, placed } of JSON.parse(json).raise) {
                const changed = ask({ ask: "change", set: [set] }, [text]).texts[0];
                assert.equal(JSON.parse(ask({ ask: "run" }, [changed]).texts[0]).summary.placed, placed);
            }
        }
    });

    test("of choosing, and the choice can be taken over", () => {
        const chosen = join(folder, "chosen.json");
        const file = fileOf("to-choose-of.json", JSON.stringify(generated(6)));
        const [json, told, headend] = ask({ ask: "choose", seconds: 100, runs: 200 }, [readFileSync(file, "utf8")]).texts;
        const keeping = ask({ ask: "choose", seconds: 100, runs: 50, keep: true }, [readFileSync(file, "utf8")]).texts[0];
        const kept = fileOf("kept.result.json", native("run", file, "--json"));
        assert.equal(keeping, native("choose", file, "--runs", "50", "--jobs", "1", "--keep", kept, "--json"));
        const parameters = ["choose", file, "--runs", "200", "--jobs", "1", "-o", chosen];
        assert.equal(json, native(...parameters, "--json"));
        assert.equal(told, native(...parameters));
        assert.equal(headend, readFileSync(chosen, "utf8"));
    });

    test("of explaining one service, with columns that fit names of any script", () => {
        const file = join(examples, "medium.json");
        for (const service of ["212", "Vídeo Comunitario", "75"]) {
            const answer = ask({ ask: "explain", services: [service] }, [readFileSync(file, "utf8")]);
            assert.equal(answer.texts[0], native("explain", file, "--service", service, "--json"));
            assert.ok(native("explain", file, "--service", service).startsWith(answer.texts[1]));
        }
    });

    test("of drilling, streams and all", () => {
        const file = join(examples, "medium.json");
        for (const streams of [false, true]) {
            const [json, told] = ask({ ask: "drill", streams }, [readFileSync(file, "utf8")]).texts;
            const parameters = ["drill", file, ...(streams ? ["--streams"] : [])];
            assert.equal(json, native(...parameters, "--json"));
            assert.equal(told, native(...parameters));
        }
    });

    test("of the terms that cut services down", () => {
        const file = join(examples, "medium.json");
        const text = readFileSync(file, "utf8");
        const { services } = JSON.parse(text);
        for (const terms of ["hd", "radio,100-140", "name=*Vídeo*"]) {
            const meant = ask({ ask: "filter", terms }, [text]).services;
            const asked = JSON.parse(native("run", file, "--only", terms, "--json")).summary.loaded;
            assert.ok(meant.length > 0 && meant.length < services.length);
            assert.equal(meant.filter((place) => services[place].ask !== false).length, asked);
        }
        assert.match(ask({ ask: "filter", terms: "colour" }, [text]).failure, /colour/);
    });

    test("of measured rates, in each form", () => {
        const services = [101, 102, 201, 202].map((sid, at) => ({ lcn: at + 1, name: `Service ${sid}`, onid: 1, tsid: sid < 200 ? 1001 : 1002, sid }));
        const modules = [{ mac: "02:00:00:00:00:01", controller: true, inputs: 1, outputs: [38000], pids_max: 0 }];
        const headend = fileOf("to-measure.json", JSON.stringify({ modules, services }));
        const log = fileOf("log", `analyze: ${JSON.stringify(JSON.parse(readFileSync(join(examples, "sample.analysis.json"), "utf8")))}\n`);
        for (const measured of [join(examples, "sample.analysis.json"), join(examples, "sample.rates.csv"), log]) {
            const out = join(folder, "measured.json");
            const { stderr, status } = spawnSync(recalculo, ["measure", headend, measured, "-o", out], { encoding: "utf8" });
            assert.equal(status, 0, stderr);
            const answer = ask({ ask: "open", names: [measured, "head-end"], modules: true }, [measured, headend].map((file) => readFileSync(file)));
            assert.equal(answer.kind, "measured");
            assert.equal(answer.texts[0], readFileSync(out, "utf8"));
            assert.deepEqual(answer.messages, stderr.trim().split("\n"));
        }
        const other = ask({ ask: "open", names: ["rates.csv", "head-end"], modules: true }, ["onid,tsid,sid,kbit_s\n9,9,9,100\n", readFileSync(headend)]);
        assert.equal(other.kind, "nothing measured");
    });

    test("of wish lists, in each form", () => {
        const file = join(examples, "medium.json");
        const { services } = JSON.parse(readFileSync(file, "utf8"));
        const wished = services.filter(({ ask }, at) => ask !== false && at % 4 === 1).slice(0, 12);
        const hex = (number) => number.toString(16).toUpperCase();
        const lists = {
            bouquet: `#NAME Guests\n${wished.map(({ onid, tsid, sid }) => `#SERVICE 1:0:1:${hex(sid)}:${hex(tsid)}:${hex(onid)}:C00000:0:0:0:`).join("\n")}\n`,
            table: `name;must\n${wished.map(({ name }, at) => `${name};${at === 0 ? "yes" : ""}`).join("\n")}\nNobody's;\n`,
            names: `[Sport]\n${wished.map(({ name }) => name.toUpperCase()).join("\n")}\n1\n2\nNobody\nNobody 2\nNobody 3\nNobody 4\n`,
        };
        for (const [name, text] of Object.entries(lists)) {
            const list = fileOf(name, text);
            const answer = ask({ ask: "open", names: [list, "head-end"], modules: true }, [text, readFileSync(file)]);
            assert.equal(answer.kind, "wished", name);
            const run = (...more) => spawnSync(recalculo, ["run", file, "--wish", list, "--json", "--trials", "0", ...more], { encoding: "utf8" });
            assert.equal(ask({ ask: "write", format: "result" }, [answer.texts[0]]).texts[0], run().stdout);
            const told = ({ stderr }) => stderr.trim().split("\n");
            assert.deepEqual(answer.messages, told(run()));
            assert.deepEqual(answer.all_messages ?? answer.messages, told(run("--verbose")));
        }
        const none = ask({ ask: "open", names: ["wishes.csv", "head-end"], modules: true }, ["name\nNobody\n", readFileSync(file)]);
        assert.equal(none.kind, "nothing wished");
        assert.match(none.messages.at(-1), /none of the wishes is found/);
        assert.match(ask({ ask: "open", names: ["names", "head-end"], modules: true }, ["Nobody\n", readFileSync(file)]).failure, /found no line of a channel list/);
    });

    test("of cautions, a few of each kind and the others", () => {
        const headend = generated(6);
        for (const service of headend.services) service.output_name = `Twin ${service.lcn % 2}`;
        const file = fileOf("twins.json", JSON.stringify(headend));
        const answer = ask({ ask: "run", name: file }, [readFileSync(file)]);
        assert.deepEqual(answer.failure, undefined);
        const [{ name, told, others }] = answer.cautions;
        const report = words(native("run", file, "--trials", "0", "--verbose"));
        for (const sentence of [...told, ...others]) assert.ok(report.includes(words(sentence)), sentence);
        if (others.length > 0) assert.ok(words(native("run", file, "--trials", "0")).includes(`${others.length} more, which --verbose tells: ${name}`));
        assert.deepEqual(ask({ ask: "run" }, [readFileSync(join(examples, "small.json"))]).cautions, []);
    });

    test("of MACs that no module has", () => {
        const file = fileOf("odd.json", JSON.stringify({ modules: ["rack", "01:00:5E:00:00:01", "x", "y", "z"].map((mac, at) => ({ mac, controller: at === 0, inputs: 1, outputs: [9000], pids_max: 0 })) }));
        const { stderr } = spawnSync(recalculo, ["run", file], { encoding: "utf8" });
        assert.deepEqual(ask({ ask: "run", name: file }, [readFileSync(file)]).warnings, stderr.trim().split("\n"));
        assert.deepEqual(ask({ ask: "run" }, [readFileSync(join(examples, "small.json"))]).warnings, []);
    });

    test("of importing lists of each format, with the same report", () => {
        const lists = [join(examples, "sample.lamedb"), join(examples, "sample.dvbv5.conf"), ...(process.env.LINEUP ? [join(process.env.LINEUP, "channels.conf")] : [])];
        const modules = join(examples, "modules-8-tight.json");
        for (const chosen of [...lists.map((list) => [list]), lists]) {
            const out = join(folder, "imported.json");
            const { stderr } = spawnSync(recalculo, ["import", ...chosen, "--modules", modules, "-o", out], { encoding: "utf8" });
            const answer = ask({ ask: "open", names: [...chosen, modules], modules: true }, [...chosen, modules].map((file) => readFileSync(file)));
            assert.equal(answer.texts[0], readFileSync(out, "utf8"));
            assert.deepEqual(answer.messages, stderr.trim().split("\n"));
        }
    });

    test("of importing otherwise, with every choice that the command has", () => {
        const list = join(examples, "sample.lamedb");
        const modules = join(examples, "modules-8-tight.json");
        const { choices, terms } = ask({ ask: "about" });
        assert.match(native("import", "--help").replace(/\s+/g, " "), new RegExp(terms.slice(0, 60)));
        for (const [chosen, parameters] of [
            [{ "--sd-bitrate": 1234, "--hd-bitrate": 5678 }, ["--sd-bitrate", "1234", "--hd-bitrate", "5678"]],
            [{ "--radio-bitrate": 99, "--uhd-bitrate": 30001, "--keep-duplicates": true }, ["--radio-bitrate", "99", "--uhd-bitrate", "30001", "--keep-duplicates"]],
            [{ "--only": "tv", "--exclude": "scrambled" }, ["--only", "tv", "--exclude", "scrambled"]],
        ]) {
            const out = join(folder, "otherwise.json");
            const files = [list, list];
            const { stderr } = spawnSync(recalculo, ["import", ...files, "--modules", modules, "-o", out, ...parameters], { encoding: "utf8" });
            const answer = ask({ ask: "open", names: [...files, modules], modules: true, choices: chosen }, [...files, modules].map((file) => readFileSync(file)));
            assert.equal(answer.texts[0], readFileSync(out, "utf8"));
            assert.deepEqual(answer.messages, stderr.trim().split("\n"));
            for (const option of Object.keys(chosen)) assert.ok(option in choices || /only|exclude/.test(option));
        }
        assert.match(ask({ ask: "open", names: ["a", "b"], modules: true, choices: { "--only": "colour" } }, [readFileSync(list), readFileSync(modules)]).failure, /--only/);
    });
});

describe("With the options of the tool", () => {
    const told = ({ stderr }) => stderr.trim().split("\n");
    const modules = join(examples, "modules-8-tight.json");
    const open = (files, headend, choices) => ask({ ask: "open", names: [...files, headend], modules: true, choices }, [...files, headend].map((file) => readFileSync(file)));

    test("lists, rates and wishes together are imported as the command does it, in any order", () => {
        const list = join(examples, "sample.lamedb");
        const rates = join(examples, "sample.rates.csv");
        const wishes = fileOf("wished.csv", "name;lcn;group\nRadio Faro;12;Radio\nRía Cultura UHD;3;TV\nNobody;4;TV\n");
        const out = join(folder, "together.json");
        for (const [choices, parameters] of [
            [{}, []], [{ "--wish-lcns": true, "--margin": "10%" }, ["--wish-lcns", "--margin", "10%"]],
            [{ "--margin": "measured=10%, estimated=20", "--exclude": "group=Radio" }, ["--margin", "measured=10%", "--margin", "estimated=20", "--exclude", "group=Radio"]],
        ]) {
            const run = spawnSync(recalculo, ["import", list, "--modules", modules, "--measured", rates, "--wish", wishes, ...parameters, "-o", out], { encoding: "utf8" });
            assert.equal(run.status, 0, run.stderr);
            for (const files of [[list, rates, wishes], [wishes, rates, list]]) {
                const answer = open(files, modules, choices);
                assert.equal(answer.texts[0], readFileSync(out, "utf8"));
                assert.deepEqual(answer.messages, told(run));
                assert.deepEqual([answer.of, answer.lists], [["list", "measured", "wished"], [list]]);
            }
        }
        assert.equal(open([list, fileOf("nobody", "Nobody\n")], modules).failure, "none of the wishes is found, and nothing is asked for");
        assert.match(open([list], modules, { "--margin": "much" }).failure, /^--margin: found "much"/);
    });

    test("measured rates with a margin, and wishes with their LCNs", () => {
        const headend = join(folder, "to-take.json");
        native("import", join(examples, "sample.lamedb"), "--modules", modules, "-o", headend);
        const rates = join(examples, "sample.rates.csv");
        const out = join(folder, "taken.json");
        const measured = spawnSync(recalculo, ["measure", headend, rates, "--margin", "estimated=50%", "-o", out], { encoding: "utf8" });
        const answer = open([rates], headend, { "--margin": "estimated=50%" });
        assert.equal(answer.texts[0], readFileSync(out, "utf8"));
        assert.deepEqual([answer.kind, answer.messages], ["measured", told(measured)]);
        const wishes = fileOf("numbered.csv", "name;lcn\nRadio Faro;12\nCanal Norte;2\n");
        const run = spawnSync(recalculo, ["run", headend, "--wish", wishes, "--wish-lcns", "--json", "--trials", "0"], { encoding: "utf8" });
        const wished = open([wishes], headend, { "--wish-lcns": true });
        assert.equal(ask({ ask: "write", format: "result" }, [wished.texts[0]]).texts[0], run.stdout);
        assert.deepEqual([wished.kind, wished.messages], ["wished", told(run)]);
    });

    test("outputs keep a reserve, also those of a result", () => {
        const file = join(examples, "small.json");
        const text = readFileSync(file);
        const usual = native("run", file, "--json", "--trials", "0");
        const whole = native("run", file, "--json", "--trials", "0", "--reserve", "12%");
        assert.notEqual(whole, usual);
        const written = (from, reserve) => ask({ ask: "write", format: "result", reserve }, [from]).texts[0];
        assert.deepEqual([written(text, "12%"), written(text), written(text, "12%")], [whole, usual, whole]);
        assert.deepEqual([written(whole), written(whole, "2.5")], [whole, usual]);
        assert.ok(ask({ ask: "run", reserve: "12%" }, [text]).cautions.length > 0);
        assert.equal(ask({ ask: "run", reserve: "half" }, [text]).failure, spawnSync(recalculo, ["run", file, "--reserve", "half"], { encoding: "utf8" }).stderr.trim().replace("recalculo: ", ""));
        assert.match(native("run", "--help").replace(/\s+/g, " "), new RegExp(ask({ ask: "about" }).reserve.slice(0, 60)));
    });

    test("the service lists are those of the report page", () => {
        for (const name of ["small.json", "medium.json"]) {
            const lists = ask({ ask: "write", format: "lists" }, [readFileSync(join(examples, name))]).texts[0];
            assert.ok(lists.length > 1000 && native("run", join(examples, name), "--html", "-").includes(lists));
        }
    });
});

describe("What is no head-end is refused in the tool's words", () => {
    const refusal = (text) => spawnSync(recalculo, ["run", fileOf("wrong.json", text)], { encoding: "utf8" }).stderr.trim().replace("recalculo: ", "");
    const wrong = {
        "no JSON": "{ \"modules\": [", "an unknown key": "{ \"modules\": [], \"colour\": 1 }", "a number too large": "{ \"modules\": [{ \"mac\": \"a\", \"inputs\": 70000, \"outputs\": [], \"pids_max\": 0 }] }",
        "no controller": "{ \"modules\": [] }", "two modules of one MAC": "{ \"modules\": [{ \"mac\": \"02:00:00:00:00:01\", \"inputs\": 1, \"outputs\": [], \"pids_max\": 0 }, { \"mac\": \"02:00:00:00:00:01\", \"inputs\": 1, \"outputs\": [], \"pids_max\": 0 }] }",
    };
    for (const [what, text] of Object.entries(wrong))
        test(what, () => assert.equal(ask({ ask: "run", name: join(folder, "wrong.json") }, [text]).failure, refusal(text)));

    test("and the place of what is wrong is told", () => {
        assert.equal(ask({ ask: "run" }, [wrong["a number too large"]]).place, "/modules/0/inputs");
        assert.equal(ask({ ask: "run" }, [wrong["two modules of one MAC"]]).place, "/modules/1");
    });

    test("a question that does not exist is a fault, and the next one is answered", () => {
        assert.ok(ask({ ask: "nothing" }).fault);
        assert.match(ask({ ask: "about" }).version, /^\d+\.\d+\.\d+$/);
    });
});
