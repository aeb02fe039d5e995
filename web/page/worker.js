// The engine's worker: answers one message after the other. What emscripten writes stands before this in the same
// script and gives `recalculo`.

/* global recalculo */
"use strict";
(() => {
    const encoder = new TextEncoder();
    const decoder = new TextDecoder();
    let started;

    const start = async ({ module, warmUp }) => {
        const engine = await recalculo({
            instantiateWasm: (imports, done) => {
                WebAssembly.instantiate(module, imports).then((instance) => done(instance));
                return {};
            },
            progress: (text) => postMessage({ progress: text }),
        });
        // The first run of all takes three times as long as any other.
        ask(engine, { ask: "run" }, [warmUp]);
        return engine;
    };

    /// In bytes: texts of people, files as they are.
    const bytesOf = (text) => (typeof text === "string" ? encoder.encode(text) : new Uint8Array(text));

    const ask = (engine, head, texts) => {
        const parts = texts.map(bytesOf);
        const first = encoder.encode(JSON.stringify({ ...head, texts: parts.map((part) => part.length) }) + "\n");
        const size = parts.reduce((sum, part) => sum + part.length, first.length);
        let place = engine._recalculo_room(size);
        for (const part of [first, ...parts]) {
            engine.HEAPU8.set(part, place);
            place += part.length;
        }
        const begin = engine._recalculo_answer();
        // The memory may have moved meanwhile.
        const answer = engine.HEAPU8.subarray(begin, begin + engine._recalculo_answer_size());
        const end = answer.indexOf(10);
        const told = JSON.parse(decoder.decode(answer.subarray(0, end)));
        let from = end + 1;
        told.texts = told.texts.map((length) => decoder.decode(answer.subarray(from, (from += length))));
        return told;
    };

    onmessage = async ({ data }) => {
        if (data.module) {
            started = start(data);
            started.then(() => postMessage({ ready: true }), (error) => postMessage({ broken: String(error) }));
            return;
        }
        try {
            const engine = await started;
            const begin = performance.now();
            const answer = ask(engine, data.head, data.texts);
            postMessage({ answer, milliseconds: performance.now() - begin });
        } catch (error) {
            postMessage({ broken: String(error) });
        }
    };
})();
