#include "placement/one_of.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "placement/audit/audit.h"
#include "placement/running/bounded_run.h"
#include "placement/running/engine_run.h"
#include "placement/running/host.h"
#include "placement/services.h"
#include "placement/sizing/advising.h"

namespace zarven::tool {

namespace {

/// Equal ones stand in the order of the head-end.
bool is_better_variant(const Service& one, const Service& other) {
    const auto merit = [](const Service& service) {
        return std::make_tuple(service.must ? 0 : 1, -std::int32_t{service.value}, is_hd(service) ? 0 : 1,
                               service.wished_as);
    };
    return merit(one) < merit(other);
}

/// What is asked for of each group, and what the engine makes of it.
struct GroupTrial {
    /// By group, the place among its variants.
    std::vector<std::size_t> asked;
    std::vector<bool> is_placed;
    bool is_sound = false;
    std::size_t musts = 0;
    std::size_t value = 0;
    std::size_t placed = 0;

    /// Greater is better.
    auto merit() const {
        std::size_t after_the_best = 0;
        for (const std::size_t variant : asked)
            after_the_best += variant;
        return std::make_tuple(is_sound, musts, value, placed, ~after_the_best);
    }
};

class Settling {
public:
    Settling(Headend& headend, const std::string& file, std::size_t most_runs)
        : headend_(headend), file_(file), groups_(one_of_groups(headend.services)), runs_left_(most_runs) {}

    void settle() {
        if (std::all_of(groups_.begin(), groups_.end(),
                        [](const OneOf& group) { return group.variants.size() == 1; }))
            return;
        now_ = run(std::vector<std::size_t>(groups_.size(), 0));
        bool is_changed = true;
        while (is_changed) {
            is_changed = false;
            for (std::size_t group = 0; group < groups_.size(); ++group)
                is_changed = settle(group) || is_changed;
        }
        ask_for(now_.asked);
    }

private:
    bool may_run() const { return runs_left_ != 0 && !time_.is_over(); }

    /// True if another variant has been taken.
    bool settle(std::size_t group) {
        const std::size_t asked = now_.asked[group];
        const std::size_t end = now_.is_placed[group] ? asked : groups_[group].variants.size();
        for (std::size_t variant = 0; variant < end && may_run(); ++variant) {
            if (variant == asked)
                continue;
            std::vector<std::size_t> others = now_.asked;
            others[group] = variant;
            GroupTrial trial = run(std::move(others));
            if (!trial.is_placed[group] || trial.merit() <= now_.merit())
                continue;
            now_ = std::move(trial);
            return true;
        }
        return false;
    }

    /// Those behind the variant need not yield: they come after it anyway, and stand in for it where its
    /// stream fails.
    void ask_for(const std::vector<std::size_t>& asked) {
        for (std::size_t group = 0; group < groups_.size(); ++group)
            for (std::size_t variant = 0; variant < groups_[group].variants.size(); ++variant)
                headend_.services[groups_[group].variants[variant]].yields = variant < asked[group];
    }

    GroupTrial run(std::vector<std::size_t> asked) {
        --runs_left_;
        ask_for(asked);
        GroupTrial trial;
        trial.asked = std::move(asked);
        trial.is_placed.assign(groups_.size(), false);
        EngineRun run = load_engine(headend_, file_);
        try {
            run_engine(run, file_);
        } catch (const EngineStopped&) {
            return trial;
        }
        const ServiceSet placed = placed_of(run);
        for (std::size_t service = 0; service < run.services.size(); ++service)
            if (placed.count(run.services[service]) != 0) {
                trial.musts += headend_.services[service].must ? 1 : 0;
                trial.value += headend_.services[service].value;
                ++trial.placed;
            }
        for (std::size_t group = 0; group < groups_.size(); ++group)
            trial.is_placed[group] =
                placed.count(run.services[groups_[group].variants[trial.asked[group]]]) != 0;
        trial.is_sound = !has_broken(run);
        return trial;
    }

    Headend& headend_;
    const std::string& file_;
    const std::vector<OneOf> groups_;
    std::size_t runs_left_;
    const host::TimeOfOneRun time_;
    GroupTrial now_;
};

} // namespace

bool is_variant(const Service& service) {
    return !service.one_of.empty();
}

std::vector<OneOf> one_of_groups(const std::vector<Service>& services) {
    std::map<std::string, std::vector<std::size_t>> by_name;
    for (std::size_t service = 0; service < services.size(); ++service)
        if (is_variant(services[service]) && may_be_asked_for(services[service]))
            by_name[services[service].one_of].push_back(service);
    const auto is_better = [&services](std::size_t one, std::size_t other) {
        return is_better_variant(services[one], services[other]);
    };
    std::vector<OneOf> groups;
    for (auto& [name, variants] : by_name) {
        std::stable_sort(variants.begin(), variants.end(), is_better);
        groups.push_back({name, std::move(variants)});
    }
    std::sort(groups.begin(), groups.end(), [&](const OneOf& one, const OneOf& other) {
        const std::size_t first = one.variants.front();
        const std::size_t second = other.variants.front();
        return is_better(first, second) || (!is_better(second, first) && first < second);
    });
    return groups;
}

bool may_be_asked_for(const Service& service) {
    return service.ask && (service.must || service.value != 0);
}

std::vector<bool> services_asked_for(const std::vector<Service>& services) {
    std::vector<bool> asked;
    for (const Service& service : services)
        asked.push_back(service.ask && !is_variant(service));
    for (const OneOf& group : one_of_groups(services)) {
        const auto found =
            std::find_if(group.variants.begin(), group.variants.end(),
                         [&services](std::size_t variant) { return !services[variant].yields; });
        if (found != group.variants.end())
            asked[*found] = true;
    }
    return asked;
}

std::size_t musts_wanted(const std::vector<Service>& services) {
    auto wanted = std::count_if(services.begin(), services.end(), [](const Service& service) {
        return service.must && service.ask && !is_variant(service);
    });
    for (const OneOf& group : one_of_groups(services))
        wanted += services[group.variants.front()].must ? 1 : 0;
    return static_cast<std::size_t>(wanted);
}

Headend with_all_asked_for(Headend headend) {
    for (Service& service : headend.services) {
        service.ask = true;
        service.one_of.clear();
    }
    return headend;
}

void settle_variants(Headend& headend, const std::string& file, std::size_t most_runs) {
    if (most_runs != 0)
        Settling(headend, file, most_runs).settle();
}

void settle_variants(Headend& headend, const std::string& file) {
    settle_variants(headend, file, automatic_trials_for(headend.services.size()));
}

} // namespace zarven::tool
