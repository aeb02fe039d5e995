// How many further modules of one kind are missing. The engine is not monotonous: with more room it may place
// less. So the number is looked for upwards, one by one, from the least that the bound allows.

#ifndef RECALCULO_SIZING_ADDING_H
#define RECALCULO_SIZING_ADDING_H

#include <cstdint>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "headend/headend.h"
#include "placement/capacity.h"
#include "placement/engine_run.h"
#include "placement/result.h"
#include "placement/sizing.h"
#include "placement/sizing/runner.h"

namespace zarven::tool {

/// Looks for the smallest number of further modules.
class Adding {
public:
    /// The head-end must outlive this; `file` is for messages. Throws `Failure`.
    Adding(const Headend& headend, const std::string& file, const Module& kind, const SizingOptions& options);

    /// `now` is the result of the head-end as it is.
    Addition addition(Runner& runner, const Result& now) &&;

private:
    /// ONID, TSID, LCN and SID.
    using ServiceNumbers = std::tuple<std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t>;

    static ServiceNumbers numbers_of(const ServiceResult& service);
    void find_impossible();
    std::size_t wanted() const;
    void find_least();
    void find_shortages();
    void note_remaining(const Result& result);
    bool suffices(const Result& result) const;
    void search(Runner& runner);
    bool take(std::size_t number, const Result& result);

    const Headend& headend_;
    std::size_t most_;
    unsigned jobs_;
    EngineRun loaded_;
    std::vector<ModuleCapacity> modules_;
    ModuleCapacity kind_;
    std::set<ServiceNumbers> impossible_;
    std::size_t best_placed_ = 0;
    Addition addition_;
};

} // namespace zarven::tool

#endif
