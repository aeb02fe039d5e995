// What is being planned: the variants, each a head-end as its file has it, which of them is looked at, and the variant as it
// was opened that all of them come from. States are never changed, only replaced, so that undoing is taking an earlier one;
// what two states have in common they share.

/// How far back one can go.
const mostSteps = 500;

export class Plan extends EventTarget {
    constructor() {
        super();
        this.state = { variants: [], current: 0 };
        this.past = [];
        this.future = [];
        /// Of each variant, by its id, the head-end that is in a file: no warning before leaving it.
        this.saved = new Map();
        /// What outputs are to keep free, as --reserve; empty for the usual.
        this.reserve = "";
        /// How many services of head-ends and results are placed.
        this.figures = new WeakMap();
    }

    get variant() { return this.state.variants[this.state.current]; }
    get headend() { return this.variant?.headend; }
    get unsaved() { return this.state.variants.filter((variant) => !this.isSaved(variant)); }
    get isChanged() { return this.unsaved.length > 0; }

    /// A copy of what is in a file is no loss, and a result is as it was opened.
    isSaved({ headend }) { return !headend || [...this.saved.values()].includes(headend); }

    keepSaved({ id, headend }) { this.saved.set(id, headend); }

    /// What was opened, unless nothing has become of it.
    get opened() {
        const { opened } = this.state;
        return opened?.headend === this.headend ? undefined : opened;
    }

    figuresOf(variant) { return this.figures.get(variant.headend ?? variant); }

    keepFigures(variant, { placed, loaded }) { this.figures.set(variant.headend ?? variant, { placed, loaded }); }

    /// Begins anew with one variant; what was before can be undone to.
    open(opened, isSaved = true) {
        const state = { variants: [opened], current: 0, opened };
        if (isSaved) this.saved = new Map([[opened.id, opened.headend]]);
        if (this.variant) this.commit(state, `Open ${opened.file}`);
        else this.become(state);
    }

    /// Takes up what was open before.
    recall({ variants, current, isSaved, saved = isSaved ? variants.map(({ id }) => id) : [], figures = [], reserve = "" }) {
        this.reserve = reserve;
        const state = { variants, current, opened: variants[current] };
        variants.forEach((variant, at) => { if (figures[at]) this.keepFigures(variant, figures[at]); });
        for (const variant of variants) if (saved.includes(variant.id)) this.keepSaved(variant);
        this.become(state);
    }

    /// Takes a new state; `label` names the step for undoing.
    commit(state, label) {
        this.past.push({ state: this.state, label });
        if (this.past.length > mostSteps) this.past.shift();
        this.future = [];
        this.become(state);
    }

    /// Changes the head-end that is looked at.
    change(headend, label) {
        this.commit(this.withVariant({ ...this.variant, headend }), label);
    }

    withVariant(variant) {
        const { variants, current } = this.state;
        return { ...this.state, variants: variants.with?.(current, variant) ?? variants.map((one, at) => (at === current ? variant : one)) };
    }

    /// Looks at another variant, which is no step.
    look(current) {
        this.become({ ...this.state, current });
    }

    /// Has outputs keep so much free, which is no step: the head-end stays as it is.
    keepFree(reserve) {
        this.reserve = reserve;
        this.become(this.state);
    }

    /// The same as a part of a question.
    get reserved() { return this.reserve ? { reserve: this.reserve } : {}; }

    addVariant() {
        const { variants, current } = this.state;
        const variant = { ...this.variant, id: variants.reduce((most, { id }) => Math.max(most, id), 0) + 1 };
        this.commit({ ...this.state, variants: [...variants.slice(0, current + 1), variant, ...variants.slice(current + 1)], current: current + 1 },
            "New variant");
    }

    removeVariant() {
        const { variants, current } = this.state;
        const rest = variants.filter((one, at) => at !== current);
        this.commit({ ...this.state, variants: rest, current: Math.min(current, rest.length - 1) }, "Remove variant");
    }

    undo() { this.step(this.past, this.future); }
    redo() { this.step(this.future, this.past); }

    step(from, to) {
        const step = from.pop();
        if (!step) return;
        to.push({ state: this.state, label: step.label });
        this.become(step.state);
    }

    become(state) {
        const before = this.state;
        this.state = state;
        this.dispatchEvent(new CustomEvent("change", { detail: { before } }));
    }
}

/// What a variant is called.
export const variantName = ({ id }) => {
    const letter = (number) => String.fromCharCode(65 + number);
    return id <= 26 ? letter(id - 1) : letter(Math.floor((id - 1) / 26) - 1) + letter((id - 1) % 26);
};

const texts = new WeakMap();

/// The head-end as the engine takes it. Each is written once.
export const textOf = (headend) => {
    if (!texts.has(headend)) texts.set(headend, JSON.stringify(headend));
    return texts.get(headend);
};
