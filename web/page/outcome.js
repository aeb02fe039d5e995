// What came out of a run, with what the views look up in it.

/// Tells the services of a result apart, and finds them in the head-end.
export const keyOf = ({ lcn, onid, tsid, sid }) => `${lcn}/${onid}/${tsid}/${sid}`;

export const streamOf = ({ onid, tsid }) => `${onid}/${tsid}`;

/// The name of a module: its label, and its MAC where there is none.
export const moduleName = ({ label, mac }) => label || mac;

/// An input without services is free, whatever it is tuned to.
export const isFree = ({ services }) => services.length === 0;

/// How many inputs of a module are in use.
export const usedInputs = ({ inputs }) => inputs.filter((input) => !isFree(input)).length;

export class Outcome {
    constructor({ texts: [result, comparison], change, loads, warnings, cautions, milliseconds }) {
        this.result = JSON.parse(result);
        this.comparison = comparison ? JSON.parse(comparison) : null;
        /// The same in words.
        this.change = change;
        this.loads = loads;
        this.warnings = warnings;
        this.cautions = cautions;
        this.milliseconds = milliseconds;
    }

    /// Where each service stands: by its key, the names of module and outputs.
    get places() {
        if (!this.found) {
            this.found = new Map();
            for (const module of this.result.modules)
                for (const { number, services } of module.outputs)
                    for (const service of services)
                        if (!service.clone) {
                            const key = keyOf(service);
                            const place = this.found.get(key);
                            if (place) place.outputs.push(number);
                            else this.found.set(key, { module, outputs: [number] });
                        }
        }
        return this.found;
    }

    /// The reasons of the services that are left out, by key.
    get reasons() {
        if (!this.told) {
            this.told = new Map();
            for (const { services } of this.result.left_out) for (const service of services) this.told.set(keyOf(service), service.reason);
            for (const service of this.result.neither) this.told.set(keyOf(service), service.reason);
        }
        return this.told;
    }

    /// What keeps the services out that are left out, by key.
    get causes() {
        this.kept ??= new Map([...this.result.left_out.flatMap(({ services }) => services), ...this.result.neither].map((service) => [keyOf(service), service.cause]));
        return this.kept;
    }

    /// Modules by MAC.
    get modules() {
        this.byMac ??= new Map(this.result.modules.map((module) => [module.mac, module]));
        return this.byMac;
    }

    get inputs() {
        const { modules } = this.result;
        const sum = (count) => modules.reduce((total, module) => total + count(module), 0);
        return { used: sum(usedInputs), all: sum(({ inputs }) => inputs.length) };
    }
}
