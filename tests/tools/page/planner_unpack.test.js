// What xz has packed comes back byte by byte, with each parameter of the format.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { describe, test } from "node:test";
import { unpack } from "../../../web/page/unpack.js";
import { root } from "./planner_page.js";

const packed = (bytes, parameters) => execFileSync("xz", ["--format=lzma", `--lzma1=preset=9e,${parameters}`, "--stdout"], { input: bytes, maxBuffer: 2 ** 28 });

const noise = Uint8Array.from({ length: 50000 }, (one, at) => (Math.imul(at + 1, 2654435761) ^ (at * at)) >>> 13);

describe("Unpacking", () => {
    for (const [what, bytes] of Object.entries({
        "one byte": Uint8Array.of(7), "nothing but zeros": new Uint8Array(300000), noise,
        "text": readFileSync(join(root, "docs/headend.schema.json")), "a program, twice": Buffer.concat([1, 2].map(() => readFileSync(process.env.RECALCULO ?? process.execPath).subarray(0, 600000))),
    }))
        for (const parameters of ["lc=3,lp=0,pb=2", "lc=0,lp=0,pb=0", "lc=0,lp=4,pb=4", "lc=4,lp=0,pb=1", "lc=1,lp=2,pb=2"])
            test(`${what}, ${parameters}`, () => assert.equal(Buffer.compare(Buffer.from(unpack(packed(bytes, parameters), bytes.length)), Buffer.from(bytes)), 0));
});
