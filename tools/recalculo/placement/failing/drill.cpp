// One run stands for all inputs of a module, and none is made for what takes nothing off the air.

#include "placement/failing/drill.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <tuple>
#include <utility>

#include "base/workers.h"
#include "placement/failing/drill_parts.h"
#include "placement/one_of.h"
#include "placement/sizing/further_modules.h"

namespace zarven::tool {

namespace {

class Drilling {
public:
    Drilling(const Headend& headend, const std::string& file, const DrillOptions& options)
        : headend_(headend), file_(file), options_(options) {
        const std::vector<bool> asked = services_asked_for(headend.services);
        for (std::size_t index = 0; index < asked.size(); ++index) {
            const Service& service = headend.services[index];
            if (service.must && asked[index])
                musts_.insert(numbers_of(service));
        }
    }

    Drill drill() && {
        plan(1);
        EngineRun run = load_engine(headend_, file_);
        run_engine(run, file_);
        const Result now = result_of(run, headend_.name, Reasons::omitted);
        done();
        const std::vector<PlacedService> before = placed_services(now);
        drill_.name = headend_.name;
        for (const Module& module : headend_.modules)
            if (!module.label.empty())
                drill_.labels.emplace(module.mac, module.label);
        drill_.now = now.counts;
        drill_.findings = now.findings;
        note_musts(before);
        Parts parts(headend_, before);
        if (options_.has_streams)
            parts.add_streams(headend_);
        drill_.taken_out = parts.taken_out;
        drill_.harmless = parts.harmless;
        drill_.failures = failures_of(headend_, before, parts.groups);
        sort_failures();
        if (!drill_.failures.empty())
            note_worst(before);
        if (options_.spare)
            look_for_spare(before, has_broken(now));
        drill_.is_partial = is_partial_;
        return std::move(drill_);
    }

private:
    void note_musts(const std::vector<PlacedService>& before) {
        drill_.musts = musts_.size();
        for (const PlacedService& service : before) {
            if (service.places.empty())
                continue;
            const bool is_must = musts_.count(numbers_of(service.service)) != 0;
            drill_.musts_placed += is_must ? 1 : 0;
            if (is_must || musts_.empty())
                kept_.insert(numbers_of(service.service));
        }
    }

    /// Of the groups that were run before the drill was stopped.
    std::vector<DrilledFailure> failures_of(const Headend& headend, const std::vector<PlacedService>& before,
                                            const std::vector<Alike>& groups) {
        std::vector<std::vector<DrilledFailure>> found(groups.size());
        plan(groups.size());
        in_parallel(groups.size(), options_.jobs, [&](std::size_t number) {
            if (is_stopped())
                return;
            const Rerun rerun = rerun_of(without(headend, groups[number].front()), file_);
            for (const FailedPart& part : groups[number])
                found[number].push_back(judged(part, before, rerun, musts_));
            done();
        });
        std::vector<DrilledFailure> failures;
        for (std::vector<DrilledFailure>& group : found)
            std::move(group.begin(), group.end(), std::back_inserter(failures));
        return failures;
    }

    void sort_failures() {
        const auto weight = [](const DrilledFailure& failure) {
            return std::make_tuple(failure.musts_lost(), failure.all_lost(), failure.off_air(),
                                   failure.moved);
        };
        std::stable_sort(drill_.failures.begin(), drill_.failures.end(),
                         [&weight](const DrilledFailure& one, const DrilledFailure& other) {
                             return weight(one) > weight(other);
                         });
    }

    /// Once more, because the services that all the failures move are too many to be kept.
    void note_worst(const std::vector<PlacedService>& before) {
        const DrilledFailure& worst = drill_.failures.front();
        if (worst.moved == 0 || is_stopped())
            return;
        plan(1);
        judged(worst.part, before, rerun_of(without(headend_, worst.part), file_), musts_,
               &drill_.worst_moved);
        done();
    }

    void look_for_spare(const std::vector<PlacedService>& before, bool is_broken) {
        Spare spare;
        spare.kind = *options_.spare;
        spare.most = options_.most;
        spare.kept = kept_.size();
        for (std::size_t number = 0; number <= options_.most && !spare.number && !is_stopped(); ++number) {
            const SpareAttempt attempt =
                number == 0 ? attempt_as_it_is(before, is_broken) : attempt_with(number);
            if (is_partial_)
                break;
            spare.attempts.push_back(attempt);
            if (attempt.missing + attempt.failures == 0 && !attempt.is_broken)
                spare.number = number;
        }
        drill_.spare = std::move(spare);
    }

    SpareAttempt attempt_as_it_is(const std::vector<PlacedService>& before, bool is_broken) const {
        SpareAttempt attempt;
        attempt.is_broken = is_broken;
        note_kept(before, drill_.failures, attempt);
        return attempt;
    }

    SpareAttempt attempt_with(std::size_t number) {
        const Headend more = with_modules(headend_, *options_.spare, number);
        SpareAttempt attempt;
        attempt.number = number;
        plan(1);
        const Rerun now = rerun_of(more, file_);
        done();
        attempt.is_broken = now.run != NewRun::usable;
        if (!attempt.is_broken)
            note_kept(now.services, failures_of(more, now.services, Parts(more, now.services).groups),
                      attempt);
        return attempt;
    }

    void note_kept(const std::vector<PlacedService>& before, const std::vector<DrilledFailure>& failures,
                   SpareAttempt& attempt) const {
        attempt.missing = kept_.size();
        for (const PlacedService& service : before)
            if (!service.places.empty())
                attempt.missing -= kept_.count(numbers_of(service.service));
        for (const DrilledFailure& failure : failures) {
            if (failure.part.kind == PartKind::stream)
                continue;
            const auto kept_among = [this](const std::vector<DrilledService>& services) {
                return static_cast<std::size_t>(
                    std::count_if(services.begin(), services.end(), [this](const DrilledService& one) {
                        return kept_.count(numbers_of(one.service)) != 0;
                    }));
            };
            const std::size_t lost = kept_among(failure.lost) + kept_among(failure.lost_besides);
            attempt.failures += lost != 0 ? 1 : 0;
            attempt.worst = std::max(attempt.worst, lost);
        }
    }

    bool is_stopped() {
        if (!options_.is_stopped())
            return false;
        const std::lock_guard<std::mutex> one_at_a_time(mutex_);
        is_partial_ = true;
        return true;
    }

    void plan(std::size_t runs) { planned_ += runs; }

    void done() {
        const std::lock_guard<std::mutex> one_at_a_time(mutex_);
        options_.progress(++done_, planned_);
    }

    const Headend& headend_;
    const std::string& file_;
    const DrillOptions& options_;
    DrilledIds musts_;
    /// What no failure may lose.
    DrilledIds kept_;
    Drill drill_;
    std::mutex mutex_;
    std::size_t done_ = 0;
    std::size_t planned_ = 0;
    bool is_partial_ = false;
};

} // namespace

std::size_t DrilledFailure::musts_lost() const {
    const auto is_must = [](const DrilledService& service) { return service.must; };
    return static_cast<std::size_t>(std::count_if(lost.begin(), lost.end(), is_must) +
                                    std::count_if(lost_besides.begin(), lost_besides.end(), is_must));
}

Headend without(Headend headend, const FailedPart& part) {
    if (part.kind == PartKind::stream) {
        for (Service& service : headend.services)
            if (stream_of(service) == part.stream)
                service.ask = false;
        return headend;
    }
    const auto failed = std::find_if(headend.modules.begin(), headend.modules.end(),
                                     [&part](const Module& module) { return module.mac == part.mac; });
    if (part.kind == PartKind::input) {
        --failed->inputs;
        return headend;
    }
    headend.modules.erase(failed);
    const auto first =
        std::min_element(headend.modules.begin(), headend.modules.end(),
                         [](const Module& one, const Module& other) { return one.mac < other.mac; });
    if (part.is_controller && first != headend.modules.end())
        first->controller = true;
    return headend;
}

Drill drill_headend(const Headend& headend, const std::string& file, const DrillOptions& options) {
    return Drilling(headend, file, options).drill();
}

} // namespace zarven::tool
