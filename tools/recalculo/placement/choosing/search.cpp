#include "placement/choosing/search.h"

#include <algorithm>
#include <utility>

#include "base/workers.h"

namespace zarven::tool {

namespace {

/// Of one job in one round, so that a round takes some tens of milliseconds.
std::uint64_t states_of_round(std::size_t parts) {
    return std::clamp<std::uint64_t>(2500000 / (parts + 1), 200, 10000);
}

/// What a whole run takes, rehearsed, as so many states of the filling, in such shares that the two take
/// about the same time.
constexpr std::uint64_t states_of_a_run = 30;

/// So many rehearsals take the time of a run of the engine, at the least.
constexpr std::int64_t rehearsals_of_a_trial = 5;

/// How often the placed alone are asked for, and those of them that are placed then.
constexpr int most_purifications = 3;

} // namespace

ChoosingSearch::ChoosingSearch(const Headend& headend, const ChoosingLimits& limits, const StaysPut& stays,
                               const ChoosingWatch& watch)
    : limits_(limits), watch_(watch), trial_(headend, stays), loaded_(trial_.load(trial_.askable())),
      model_(loaded_),
      goal_(trial_.headend(), stays, model_, trial_.numbers_of(model_.services, loaded_), trial_.groups()) {}

ChoosingSearch::Job::Job(const ChoosingSearch& search, Numbers& seeds)
    : pool(search.model_, search.goal_, seeds.next()), judge(search.trial_, search.model_, search.goal_),
      engine(judge, seeds.next()) {}

Choice ChoosingSearch::choice() {
    const Clock::time_point before = Clock::now();
    best_.asked = trial_.everything();
    best_.outcome = trial_.run(best_.asked);
    time_of_trial_ = Clock::now() - before;
    best_parts_ = parts_of(best_.asked);
    ++engine_runs_;
    Choice choice;
    choice.asked_for_all = best_.outcome.worth;
    choice.is_asked_for_all_sound = best_.outcome.is_sound;
    if (!model_.parts.empty() && model_.flat.inputs != 0) {
        try_asked_today();
        search();
        give_back();
    }
    choice.asked = best_.asked;
    choice.worth = best_.outcome.worth;
    choice.is_sound = best_.outcome.is_sound;
    choice.is_given_back = is_given_back_;
    choice.states = states_;
    choice.engine_runs = engine_runs_;
    return choice;
}

/// Nothing changes on air where that is as good as anything.
void ChoosingSearch::try_asked_today() {
    TriedChoice today{trial_.asked_today(), {}};
    if (std::none_of(today.asked.begin(), today.asked.end(), [](bool asked) { return asked; }))
        return;
    today.outcome = trial_.run(today.asked);
    ++engine_runs_;
    if (today.outcome.is_sound)
        take(std::move(today));
}

std::chrono::milliseconds ChoosingSearch::elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start_);
}

/// Also tells the watch.
bool ChoosingSearch::may_go_on(Clock::duration reserve) {
    if (!is_stopped_)
        is_stopped_ =
            !watch_({best_.outcome.worth, best_.outcome.is_sound, states_, engine_runs_, elapsed()});
    return !is_stopped_ && elapsed() + reserve < limits_.time;
}

/// Of it, and of the round before it. Every service withheld is tried about twice, most of them rehearsed,
/// and some may be given back, which begins it anew. At most a quarter of the time.
ChoosingSearch::Clock::duration ChoosingSearch::time_of_giving_back() const {
    const auto trials =
        2 * static_cast<std::int64_t>(best_.outcome.worth.withheld) / std::max(1U, limits_.jobs) + 1;
    return std::min<Clock::duration>(longest_round_ + time_of_trial_ * 2 * trials / rehearsals_of_a_trial,
                                     limits_.time / 4);
}

void ChoosingSearch::search() {
    Numbers seeds(limits_.seed);
    for (unsigned job = 0; job < std::max(1U, limits_.jobs); ++job)
        jobs_.push_back(std::make_unique<Job>(*this, seeds));
    const std::uint64_t states = states_of_round(model_.parts.size());
    for (std::uint64_t tried = 0; limits_.runs == 0 || tried < limits_.runs;) {
        if (!may_go_on(time_of_giving_back()) || is_all_reached())
            break;
        const std::uint64_t now = limits_.runs == 0 ? states : std::min(states, limits_.runs - tried);
        const Clock::time_point before = Clock::now();
        round(now);
        longest_round_ = std::max(longest_round_, Clock::now() - before);
        tried += now;
    }
}

/// All that can be asked for is placed where it stays put, and nothing is withheld.
bool ChoosingSearch::is_all_reached() const {
    const ChoiceWorth& worth = best_.outcome.worth;
    return best_.outcome.is_sound && worth.withheld == 0 && worth.moved == 0 &&
           best_.outcome.placed == best_.asked && is_best_of_each();
}

bool ChoosingSearch::is_best_of_each() const {
    const std::vector<OneOf>& groups = trial_.groups();
    return std::all_of(groups.begin(), groups.end(),
                       [this](const OneOf& group) { return best_.asked[group.variants.front()]; });
}

void ChoosingSearch::round(std::uint64_t states) {
    in_parallel(jobs_.size(), limits_.jobs, [&](std::size_t index) {
        Job& job = *jobs_[index];
        job.pool.run(states, best_parts_);
        look_at_found(job);
        climb(job, states);
        confirm(job);
    });
    for (const auto& job : jobs_) {
        states_ += states;
        engine_runs_ += job->judge.take_engine_runs();
        if (job->found)
            take(std::move(*std::exchange(job->found, {})));
    }
}

void ChoosingSearch::take(TriedChoice tried) {
    if (best_.outcome.is_sound && !is_better(tried.outcome.worth, best_.outcome.worth))
        return;
    best_ = std::move(tried);
    best_parts_ = parts_of(best_.asked);
}

/// What the filling promises is kept by the engine as a rule, and sometimes surpassed.
void ChoosingSearch::look_at_found(Job& job) const {
    const ChainState& found = job.pool.found();
    const ChoiceWorth& best = best_.outcome.worth;
    if (best_.outcome.is_sound && !is_better(found.worth, FillWorth{best.musts, best.value, best.moved, 0}))
        return;
    consider(job, services_of(found.asked));
    consider(job, services_of(found.placed));
}

/// Whole runs take their share of the time.
void ChoosingSearch::climb(Job& job, std::uint64_t states) const {
    TriedChoice found =
        job.engine.run(std::max<std::uint64_t>(states / states_of_a_run, 1), job.found ? *job.found : best_);
    if (found.outcome.is_sound)
        job.found = std::move(found);
}

/// A rehearsal has told; the engine has the last word.
void ChoosingSearch::confirm(Job& job) const {
    if (!job.found)
        return;
    if (best_.outcome.is_sound && !is_better(job.found->outcome.worth, best_.outcome.worth)) {
        job.found.reset();
        return;
    }
    job.found->outcome = job.judge.confirmed(job.found->asked);
    if (!job.found->outcome.is_sound)
        job.found.reset();
}

void ChoosingSearch::consider(Job& job, const std::vector<bool>& asked) const {
    TriedChoice tried{asked, {}};
    for (int round = 0; round <= most_purifications; ++round) {
        const ChoiceWorth& bar = job.found ? job.found->outcome.worth : best_.outcome.worth;
        tried.outcome = job.judge.run(tried.asked, job.found || best_.outcome.is_sound ? &bar : nullptr);
        std::vector<bool> placed = tried.outcome.placed;
        if (tried.outcome.is_sound)
            job.found = tried;
        if (placed == tried.asked)
            return;
        tried.asked = std::move(placed);
    }
}

std::vector<bool> ChoosingSearch::services_of(const PartFlags& parts) const {
    std::vector<bool> services(trial_.askable().size(), false);
    for (PartIndex part = 0; part < parts.size(); ++part)
        if (parts[part] != 0)
            for (const std::size_t service : goal_.services_of(part))
                services[service] = true;
    trial_.keep_one_of_each(services);
    return services;
}

PartFlags ChoosingSearch::parts_of(const std::vector<bool>& services) const {
    PartFlags parts(model_.parts.size(), 0);
    for (PartIndex part = 0; part < parts.size(); ++part)
        for (const std::size_t service : goal_.services_of(part))
            if (services[service])
                parts[part] = 1;
    return parts;
}

/// A better variant may make room for others.
void ChoosingSearch::give_back() {
    std::vector<Judge*> judges;
    for (const auto& job : jobs_)
        judges.push_back(&job->judge);
    std::uint64_t tried = 0;
    do {
        GivingBack giving(judges, best_);
        while (!giving.has_ended() && tried < limits_.giving_back && may_go_on({})) {
            tried += giving.step();
            best_ = giving.best();
            for (const auto& job : jobs_)
                engine_runs_ += job->judge.take_engine_runs();
        }
        is_given_back_ = giving.has_ended();
    } while (is_given_back_ && take_better_variants());
}

/// What makes no difference to the sum is not the same to viewers: HD comes before SD where nothing else is
/// lost by it. Gives whether any was taken.
bool ChoosingSearch::take_better_variants() {
    bool is_any_taken = false;
    for (const OneOf& group : trial_.groups()) {
        const auto asked = std::find_if(group.variants.begin(), group.variants.end(),
                                        [this](std::size_t variant) { return best_.asked[variant]; });
        if (asked == group.variants.end())
            continue;
        const bool is_placed = best_.outcome.placed[*asked];
        for (auto variant = group.variants.begin(); variant != asked && may_go_on({}); ++variant) {
            TriedChoice tried{best_.asked, {}};
            trial_.ask_instead(*variant, tried.asked);
            tried.outcome = trial_.run(tried.asked);
            ++engine_runs_;
            if (!tried.outcome.is_sound || (is_placed && !tried.outcome.placed[*variant]) ||
                is_better(best_.outcome.worth, tried.outcome.worth))
                continue;
            best_ = std::move(tried);
            is_any_taken = true;
            break;
        }
    }
    return is_any_taken;
}

} // namespace zarven::tool
