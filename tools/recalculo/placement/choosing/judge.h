// What the engine makes of one choice, told as quickly as it can be: by a rehearsal where that is exact, and
// else by the engine itself, which takes twenty times as long. One object for each thread.

#ifndef RECALCULO_CHOOSING_JUDGE_H
#define RECALCULO_CHOOSING_JUDGE_H

#include <cstdint>
#include <optional>
#include <vector>

#include "placement/choosing/engine_trial.h"
#include "placement/choosing/goal.h"
#include "placement/rehearsal/rehearsal.h"

namespace zarven::tool {

class Judge {
public:
    /// All must outlive this.
    Judge(const EngineTrial& trial, const RehearsedHeadend& model, const Goal& goal);

    const EngineTrial& trial() const { return trial_; }

    /// As that of the trial. What it tells is to be confirmed there before anybody else is told.
    TrialOutcome run(const std::vector<bool>& asked, const ChoiceWorth* bar = nullptr);

    /// By the engine itself.
    TrialOutcome confirmed(const std::vector<bool>& asked, const ChoiceWorth* bar = nullptr);
    /// What is better than the bar is confirmed.
    TrialOutcome run_confirmed(const std::vector<bool>& asked, const ChoiceWorth& bar);

    /// Since the last call.
    std::uint64_t take_engine_runs();

private:
    const EngineTrial& trial_;
    const Goal& goal_;
    /// None where only the engine can tell: where the place of a clone decides, too.
    std::optional<Rehearsal> rehearsal_;
    AskedParts asked_;
    std::vector<std::uint8_t> flags_;
    std::uint64_t engine_runs_ = 0;
};

} // namespace zarven::tool

#endif
