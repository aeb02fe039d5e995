#include "placement/choosing/judge.h"

#include <utility>

namespace zarven::tool {

Judge::Judge(const EngineTrial& trial, const RehearsedHeadend& model, const Goal& goal)
    : trial_(trial), goal_(goal), asked_(model), flags_(model.parts.size()) {
    bool has_clones = false;
    for (PartIndex part = 0; part < flags_.size(); ++part)
        has_clones = has_clones || goal.services_of(part).size() != 1;
    if (model.allows_passes && !has_clones)
        rehearsal_.emplace(model);
}

TrialOutcome Judge::run(const std::vector<bool>& asked, const ChoiceWorth* bar) {
    if (rehearsal_) {
        for (PartIndex part = 0; part < flags_.size(); ++part)
            flags_[part] = asked[goal_.services_of(part).front()] ? 1 : 0;
        asked_.assign(flags_);
        if (const std::optional<Rehearsed> rehearsed = rehearsal_->run(asked_)) {
            const FillWorth worth = goal_.worth_of(rehearsal_->seating());
            TrialOutcome outcome;
            outcome.worth = {worth.musts, worth.value, rehearsed->placed, worth.moved,
                             trial_.withheld_of(asked)};
            outcome.placed.assign(asked.size(), false);
            for (PartIndex part = 0; part < flags_.size(); ++part)
                outcome.placed[goal_.services_of(part).front()] = rehearsal_->seating().is_placed(part);
            outcome.is_sound = !rehearsed->is_broken && (bar == nullptr || is_better(outcome.worth, *bar));
            return outcome;
        }
    }
    return confirmed(asked, bar);
}

TrialOutcome Judge::confirmed(const std::vector<bool>& asked, const ChoiceWorth* bar) {
    ++engine_runs_;
    return trial_.run(asked, bar);
}

TrialOutcome Judge::run_confirmed(const std::vector<bool>& asked, const ChoiceWorth& bar) {
    const std::uint64_t before = engine_runs_;
    TrialOutcome outcome = run(asked, &bar);
    if (!outcome.is_sound || engine_runs_ != before)
        return outcome;
    return confirmed(asked, &bar);
}

std::uint64_t Judge::take_engine_runs() {
    return std::exchange(engine_runs_, 0);
}

} // namespace zarven::tool
