// The columns of the tables, made of the schema of a head-end: keys, ranges, defaults and meanings stand there. Only
// the headings and which columns are shown first are told here.

const schema = JSON.parse(document.getElementById("schema").textContent);

const headings = {
    mac: "MAC", lcn: "LCN", name: "Name", output_name: "Sent as", onid: "ONID", tsid: "TSID", sid: "SID", osid: "OSID",
    bitrate: "kbit/s", video_bitrate: "Picture kbit/s", video_format: "Format", pids_max: "PIDs", ca_pids: "CA PIDs",
    ca_pids_max: "CA PIDs, most", sd_transcoders: "SD transcoders", hd_transcoders: "HD transcoders",
    aux_transcoders: "AUX transcoders", ask: "Ask for",
};

const widths = { mac: 165, controller: 92, name: 180, output_name: 150, label: 130, outputs: 130, inputs: 70, pids_max: 58, ask: 74, must: 62, value: 62 };

const heading = (key) => headings[key] ?? key[0].toUpperCase() + key.slice(1).replaceAll("_", " ");

/// Follows a reference into the definitions.
const resolved = (property) => {
    const reference = property.$ref ?? property.allOf?.[0].$ref;
    return reference ? { ...schema.definitions[reference.split("/").at(-1)], ...property, reference } : property;
};

const kindOf = (property) => {
    if (property.reference?.endsWith("/flag") || property.type === "boolean") return "truth";
    if (property.type === "array") return "list";
    if (property.type === "string") return "text";
    return "number";
};

const parsers = {
    text: (column, text) => (column.required && text === "" ? { error: "Expected a text that is not empty" } : { value: text }),
    truth: (column, text) => {
        if (/^(1|true|yes|x|✓)$/i.test(text.trim())) return { value: true };
        if (/^(0|false|no|)$/i.test(text.trim())) return { value: false };
        return { error: "Expected yes or no" };
    },
    number: (column, text) => {
        const trimmed = text.trim();
        const number = Number(trimmed);
        if (trimmed === "" && !column.required) return { value: undefined };
        if (/^-?\d+$/.test(trimmed) && number >= column.least && number <= column.most) return { value: number };
        return { error: `Expected a whole number from ${column.least} to ${column.most}` };
    },
    list: (column, text) => {
        const numbers = [];
        for (const part of text.split(/[\s,;+]+/).filter(Boolean)) {
            const [, times = "1", number] = /^(?:(\d{1,4})[x×*])?(\d{1,10})$/i.exec(part) ?? [];
            if (number === undefined) return { error: "Expected bitrates in kbit/s, as 38000 24000 or 4x38000" };
            numbers.push(...Array(Number(times)).fill(Number(number)));
        }
        return { value: numbers };
    },
};

/// 38000 38000 24000 as "2×38000 24000".
const shortList = (numbers) => {
    const runs = [];
    for (const number of numbers)
        if (runs.at(-1)?.number === number) ++runs.at(-1).times;
        else runs.push({ number, times: 1 });
    return runs.map(({ number, times }) => (times > 1 ? `${times}×${number}` : `${number}`)).join(" ");
};

const formats = {
    text: (value) => value ?? "",
    number: (value) => (value === undefined ? "" : String(value)),
    truth: (value) => (value ? "✓" : ""),
    list: (value) => shortList(value ?? []),
};

/// The columns of a kind of record: "module" or "service".
export const columnsOf = (record, shown) => {
    const { properties, required } = schema.definitions[record];
    const columns = Object.entries(properties)
        .filter(([, property]) => property.const === undefined)
        .map(([key, given]) => {
            const property = resolved(given);
            const kind = kindOf(property);
            const column = {
                key, kind, heading: heading(key), hint: property.description, fallback: property.default,
                required: required.includes(key), least: property.minimum ?? 0, most: property.maximum ?? 4294967295,
                width: widths[key] ?? (kind === "text" ? 140 : 82), isShown: shown.includes(key),
            };
            column.parse = (text) => parsers[kind](column, text);
            column.format = (value) => formats[kind](value);
            column.get = (one) => one[key] ?? column.fallback;
            return column;
        });
    const place = ({ key }) => (shown.includes(key) ? shown.indexOf(key) : shown.length);
    return columns.sort((one, other) => place(one) - place(other));
};

/// The record with another value; one that is the default is not written.
export const withValue = (record, column, value) => {
    const changed = { ...record };
    if (value === undefined || JSON.stringify(value) === JSON.stringify(column.fallback)) delete changed[column.key];
    else changed[column.key] = value;
    return changed;
};
