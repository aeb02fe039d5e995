#include "placement/sizing/runner.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/workers.h"
#include "placement/choosing/choice.h"
#include "placement/choosing/choosing.h"
#include "placement/running/bounded_run.h"
#include "placement/running/engine_run.h"

namespace zarven::tool {

namespace {

ModuleCapacity capacity_of(const Module& module) {
    ModuleCapacity capacity;
    capacity.inputs = module.inputs;
    for (const std::uint32_t bitrate : module.outputs)
        capacity.outputs.push_back({bitrate, tRec_Modulo::SERVICIOS_POR_SALIDA});
    capacity.pids_max = module.pids_max;
    capacity.sd_transcoders = module.sd_transcoders;
    capacity.hd_transcoders = module.hd_transcoders;
    return capacity;
}

} // namespace

Runner::Runner(const Headend& headend, const std::string& file, const SizingOptions& options)
    : headend_(headend), file_(file), options_(options), rank_(headend.modules.size()) {
    rehearsed_.emplace(load_engine(headend, file));
    if (!rehearsed_->allows_passes)
        rehearsed_.reset();
    for (std::size_t module = 0; module < rank_.size(); ++module)
        rank_[module] = static_cast<std::size_t>(
            std::count_if(headend.modules.begin(), headend.modules.end(),
                          [&](const Module& other) { return other.mac < headend.modules[module].mac; }));
}

void Runner::count() {
    const std::lock_guard<std::mutex> one_at_a_time(mutex_);
    ++done_;
    planned_ = std::max(planned_, done_);
    options_.progress(done_, planned_);
}

Result Runner::run(const Headend& headend, Reasons reasons) {
    EngineRun run = load_engine(headend, file_);
    run_engine(run, file_);
    Result result = result_of(run, headend.name, reasons);
    count();
    return result;
}

std::optional<Result> Runner::run_unless_stopped(const Headend& headend) {
    try {
        return run(headend);
    } catch (const EngineStopped&) {
        count();
        return {};
    }
}

SizingTrial Runner::chosen(const Headend& headend) const {
    ChoosingLimits limits;
    limits.time = std::chrono::hours(24 * 365);
    limits.runs = sizing_states;
    limits.seed = sizing_seed;
    limits.giving_back = sizing_giving_back;
    const Choice choice =
        choose_services(headend, limits, {}, [this](const ChoosingProgress&) { return !is_stopped(); });
    const EngineRun all = load_engine(headend, file_);
    const ServiceSet clones = set_of(all.clones);
    SizingTrial trial;
    for (std::size_t service = 0; service < headend.services.size(); ++service)
        if (const tRec_Servicio* record = all.services[service]; record != nullptr && !choice.asked[service])
            trial.withheld.push_back(describe(*record, clones.count(record) != 0));
    try {
        EngineRun run = load_engine(with_choice(headend, choice), file_);
        run_engine(run, file_);
        trial.result = result_of(run, headend.name, Reasons::omitted);
    } catch (const EngineStopped&) {
        trial.withheld.clear();
    }
    return trial;
}

std::optional<SizingTrial> Runner::trial(const Headend& headend) {
    if (!options_.are_chosen)
        return SizingTrial{run_unless_stopped(headend), {}};
    SizingTrial trial = chosen(headend);
    if (is_stopped())
        return {};
    count();
    return trial;
}

std::unique_ptr<Rehearsal> Runner::take_rehearsal() {
    const std::lock_guard<std::mutex> one_at_a_time(mutex_);
    if (idle_.empty())
        return std::make_unique<Rehearsal>(*rehearsed_);
    std::unique_ptr<Rehearsal> rehearsal = std::move(idle_.back());
    idle_.pop_back();
    return rehearsal;
}

void Runner::give_back(std::unique_ptr<Rehearsal> rehearsal) {
    const std::lock_guard<std::mutex> one_at_a_time(mutex_);
    idle_.push_back(std::move(rehearsal));
}

Outcome Runner::with_module(std::size_t index, const Module& changed, ModuleTests* tests) {
    if (rehearsed_) {
        std::vector<ModuleCapacity> modules = rehearsed_->modules;
        modules[rank_[index]] = capacity_of(changed);
        std::unique_ptr<Rehearsal> rehearsal = take_rehearsal();
        const std::optional<Rehearsed> outcome = rehearsal->run(modules);
        if (outcome && tests != nullptr)
            *tests = rehearsal->tests()[rank_[index]];
        give_back(std::move(rehearsal));
        if (outcome) {
            count();
            return {outcome->placed, outcome->is_broken};
        }
    }
    Headend headend = headend_;
    headend.modules[index] = changed;
    const std::optional<Result> result = run_unless_stopped(headend);
    return result ? Outcome{result->counts.placed, has_broken(*result)} : Outcome{0, true};
}

std::vector<ModuleTests> Runner::tests_as_it_is() {
    std::vector<ModuleTests> tests;
    if (!rehearsed_)
        return tests;
    Rehearsal rehearsal(*rehearsed_);
    if (rehearsal.run(rehearsed_->modules))
        for (const std::size_t rank : rank_)
            tests.push_back(rehearsal.tests()[rank]);
    return tests;
}

void Runner::in_parallel(std::size_t parts, const std::function<void(std::size_t)>& part) const {
    tool::in_parallel(parts, options_.jobs, part);
}

} // namespace zarven::tool
