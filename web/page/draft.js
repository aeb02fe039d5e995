// What was open, kept by the browser until the page is opened again. A file that was saved is the truth; this is what
// saves one from a window closed too soon. All pages of a disk share one store, so the name is the tool's, and pages
// with a head-end inside leave the draft of one's own plan alone.

const version = 1;
/// Browsers keep some five million characters.
const mostCharacters = 4_500_000;

/// The head-end that `recalculo run --live` has put into the page; empty for none.
export const given = () => document.getElementById("plan").textContent.trim();

export class Draft {
    constructor(plan, say) {
        Object.assign(this, { plan, say, key: given() === "" ? "recalculo.draft" : "recalculo.draft.given" });
        addEventListener("pagehide", () => this.keep());
    }

    /// Keeps from now on what becomes of the plan. What the page has begun with needs no keeping.
    follow() {
        this.plan.addEventListener("change", () => {
            this.isChanged = true;
            clearTimeout(this.timer);
            this.timer = setTimeout(() => this.keep(), 300);
        });
    }

    keep() {
        if (!this.isChanged) return;
        const { variants, current } = this.plan.state;
        try {
            const text = JSON.stringify({ version, given: given(), saved: variants.filter((variant) => this.plan.isSaved(variant)).map(({ id }) => id),
                figures: variants.map((variant) => this.plan.figuresOf(variant)), variants, current, reserve: this.plan.reserve });
            if (text.length < mostCharacters) localStorage.setItem(this.key, text);
            else {
                localStorage.removeItem(this.key);
                if (!this.isTold) this.say("This plan is too large for the browser to keep as a draft: save it as a file.");
                this.isTold = true;
            }
        } catch {
            // A browser that keeps nothing is no reason to stop.
        }
    }

    /// The draft, unless the page brings another head-end; null for none.
    recall() {
        try {
            const draft = JSON.parse(localStorage.getItem(this.key));
            const isMine = draft?.version === version && (given() === "" || draft.given === given());
            return isMine && Array.isArray(draft.variants) && draft.variants[draft.current] ? draft : null;
        } catch {
            return null;
        }
    }

    /// Until the next change nothing is kept.
    forget() {
        this.isChanged = false;
        try {
            localStorage.removeItem(this.key);
        } catch {
            // There was nothing.
        }
        clearTimeout(this.timer);
    }
}
