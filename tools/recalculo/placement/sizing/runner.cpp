#include "placement/sizing/runner.h"

#include <algorithm>
#include <utility>

#include "base/workers.h"
#include "placement/engine_run.h"

namespace zarven::tool {

namespace {

RehearsedModule rehearsed(const Module& module) {
    RehearsedModule changed;
    changed.inputs = module.inputs;
    for (const std::uint32_t bitrate : module.outputs)
        changed.outputs.push_back({bitrate, tRec_Modulo::SERVICIOS_POR_SALIDA});
    changed.pids_max = module.pids_max;
    changed.sd_transcoders = module.sd_transcoders;
    changed.hd_transcoders = module.hd_transcoders;
    return changed;
}

} // namespace

Runner::Runner(const Headend& headend, const std::string& file, const SizingOptions& options)
    : headend_(headend), file_(file), options_(options), rank_(headend.modules.size()) {
    rehearsed_ = tool::rehearsed(load_engine(headend, file));
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
        std::vector<RehearsedModule> modules = rehearsed_->modules;
        modules[rank_[index]] = rehearsed(changed);
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
    const Result result = run(headend);
    return {result.counts.placed, has_broken(result)};
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
