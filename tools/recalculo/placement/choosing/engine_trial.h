// The engine itself, run on a part of the services of a head-end: the judge of every choice. Loading and
// running anew takes from 0.1 ms for a hundred services to some milliseconds for a thousand.

#ifndef RECALCULO_CHOOSING_ENGINE_TRIAL_H
#define RECALCULO_CHOOSING_ENGINE_TRIAL_H

#include <vector>

#include "headend/headend.h"
#include "placement/choosing/choosing.h"
#include "placement/one_of.h"
#include "placement/running/engine_run.h"

namespace zarven::tool {

/// What the engine makes of one choice.
struct TrialOutcome {
    ChoiceWorth worth;
    /// The audit finds nothing broken.
    bool is_sound = false;
    /// For each of `Headend::services`, whether it stands on an output.
    std::vector<bool> placed;
};

/// What is asked for, and what came of it.
struct TriedChoice {
    std::vector<bool> asked;
    TrialOutcome outcome;
};

class EngineTrial {
public:
    /// `stays` must outlive this.
    EngineTrial(const Headend& headend, const StaysPut& stays);

    /// Those that may be asked for.
    const std::vector<bool>& askable() const { return askable_; }
    /// All of them, and of each group the variant that it is settled on.
    std::vector<bool> everything() const;
    /// Those that are asked for today, one of each group; none if that is not known.
    std::vector<bool> asked_today() const;

    /// How many of those are not; of a group that is withheld as a whole, the best stands for all.
    std::size_t withheld_of(const std::vector<bool>& asked) const;

    /// The one-of groups of what may be asked for. What is asked for has one of each at the most: as it is
    /// changed it is made so again, and of several the best stays.
    const std::vector<OneOf>& groups() const { return groups_; }
    void keep_one_of_each(std::vector<bool>& asked) const;
    /// Asks for one more, and for no other of its group.
    void ask_instead(std::size_t service, std::vector<bool>& asked) const;
    /// It is not asked for, and no other of its group is.
    bool is_withheld(std::size_t service, const std::vector<bool>& asked) const;

    const Headend& headend() const { return headend_; }

    /// From several threads at once, if the log is masked. What is no better than `bar` is not looked at
    /// further, and counts as not sound; so does a run that does not end within its limits.
    TrialOutcome run(const std::vector<bool>& asked, const ChoiceWorth* bar = nullptr) const;

    /// The engine before it runs.
    EngineRun load(const std::vector<bool>& asked) const;
    /// The places in `Headend::services` of each of these services of a loaded engine: its own, and those of
    /// further services of its key, which are clones to the engine.
    std::vector<std::vector<std::size_t>> numbers_of(const std::vector<const tRec_Servicio*>& services,
                                                     const EngineRun& loaded) const;

private:
    void read(const EngineRun& run, TrialOutcome& outcome) const;
    bool stays(std::size_t service) const {
        return service < stays_.module.size() && !stays_.module[service].empty();
    }
    bool is_moved(std::size_t service, const std::string& mac, std::uint32_t output,
                  std::uint16_t input) const;

    /// Without what the engine does not look at. The numbers that it only carries along tell which service
    /// one is.
    Headend headend_;
    const StaysPut& stays_;
    std::vector<bool> askable_;
    std::vector<bool> settled_;
    std::vector<OneOf> groups_;
    /// Of each service, the place of its group; the number of groups for those in none.
    std::vector<std::size_t> group_of_;
};

} // namespace zarven::tool

#endif
