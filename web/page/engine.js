// The engine as the page sees it: questions in, answers out, one at a time. It runs in a worker, which is thrown away
// to cancel, because nothing can interrupt it; another starts from the compiled module within some tens of
// milliseconds.

import { unpack } from "./unpack.js";

/// A question was given up.
export class Cancelled extends Error {}

/// The engine complains of what it was given: the sentence, and a JSON pointer to the place if one value is at fault.
export class Refused extends Error {
    constructor(sentence, place) {
        super(sentence);
        this.place = place;
    }
}

/// The compiled engine and the script of its worker, out of the page's data blocks.
export const compile = async () => {
    const packed = document.getElementById("engine");
    const bytes = Uint8Array.from(atob(packed.textContent), (letter) => letter.charCodeAt(0));
    const module = await WebAssembly.compile(unpack(bytes, Number(packed.dataset.size)));
    const script = new Blob([document.getElementById("worker").textContent], { type: "text/javascript" });
    return { module, url: URL.createObjectURL(script), warmUp: document.getElementById("sample-small").textContent };
};

export class Engine {
    /// `onprogress` is told a line of text now and then.
    constructor(compiled, onprogress = () => {}) {
        this.compiled = compiled;
        this.onprogress = onprogress;
        this.waiting = [];
        this.start();
    }

    start() {
        this.worker = new Worker(this.compiled.url);
        this.worker.onmessage = ({ data }) => this.hear(data);
        this.worker.onerror = (event) => this.hear({ broken: event.message });
        this.worker.postMessage({ module: this.compiled.module, warmUp: this.compiled.warmUp });
        this.isBusy = false;
    }

    /// Asks; a text is a string or, for a file as it is, an ArrayBuffer. Rejects with `Refused` or `Cancelled`.
    ask(head, texts = []) {
        return new Promise((resolve, reject) => {
            this.waiting.push({ head, texts, resolve, reject });
            this.next();
        });
    }

    /// Gives up all questions.
    cancel() {
        if (this.waiting.length === 0) return;
        this.worker.terminate();
        const given = this.waiting.splice(0);
        this.start();
        for (const { reject } of given) reject(new Cancelled("cancelled"));
    }

    next() {
        if (this.isBusy || this.waiting.length === 0) return;
        this.isBusy = true;
        const { head, texts } = this.waiting[0];
        this.worker.postMessage({ head, texts });
    }

    hear(data) {
        if (data.progress !== undefined) return this.onprogress(data.progress);
        if (data.ready) return;
        if (data.broken && this.waiting.length === 0) return;
        const asked = this.waiting.shift();
        if (data.broken) {
            this.worker.terminate();
            this.start();
            asked.reject(new Error(`The engine came to a sudden end: ${data.broken}`));
        } else {
            this.isBusy = false;
            this.conclude(asked, data);
        }
        this.next();
    }

    conclude({ resolve, reject }, { answer, milliseconds }) {
        if (answer.fault) reject(new Error(answer.fault));
        else if (answer.failure) reject(new Refused(answer.failure, answer.place));
        else resolve({ ...answer, milliseconds });
    }
}
