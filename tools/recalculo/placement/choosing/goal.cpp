#include "placement/choosing/goal.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace zarven::tool {

namespace {

/// Of one unit of value. A service that moves costs less than that.
constexpr std::int64_t height_of_value = 64;
constexpr std::int64_t height_of_move = 6;

} // namespace

bool is_better(const FillWorth& one, const FillWorth& other) {
    return std::tie(one.musts, one.value, other.moved) > std::tie(other.musts, other.value, one.moved);
}

Goal::Goal(const Headend& headend, const StaysPut& stays, const FillModel& model,
           std::vector<std::vector<std::size_t>> services)
    : parts_(model.parts.size()), services_(std::move(services)) {
    for (PartIndex part = 0; part < parts_.size(); ++part)
        for (const std::size_t service : services_[part]) {
            parts_[part].musts += headend.services[service].must;
            parts_[part].value += headend.services[service].value;
        }
    find_heights();
    find_outputs(stays, model);
    sort_by_cost(model);
}

void Goal::find_heights() {
    std::int64_t sum = 0;
    for (const Part& part : parts_)
        sum += part.value;
    const std::int64_t mean =
        std::max<std::int64_t>(1, parts_.empty() ? 1 : sum / static_cast<std::int64_t>(parts_.size()));
    for (Part& part : parts_)
        part.height = height_of_value * (part.value + must_in_services * mean * part.musts);
    unit_ = static_cast<double>(height_of_value * mean);
}

void Goal::find_outputs(const StaysPut& stays, const FillModel& model) {
    if (stays.module.empty())
        return;
    for (PartIndex part = 0; part < parts_.size(); ++part)
        for (const std::size_t service : services_[part])
            for (const FillModule& module : model.modules) {
                if (stays.module[service].empty() || stays.module[service] != module.mac)
                    continue;
                const std::uint32_t output = service < stays.output.size() ? stays.output[service] : 0;
                parts_[part].first_output = module.first_output + (output == 0 ? 0 : output - 1);
                parts_[part].last_output = output == 0 ? module.last_output : parts_[part].first_output + 1;
            }
}

/// Bitrate and PIDs are added up, each as a share of what the head-end has of it.
void Goal::sort_by_cost(const FillModel& model) {
    double bitrate = 1;
    double pids = 1;
    for (const FillOutput& output : model.outputs)
        bitrate += output.bitrate_max;
    for (const FillModule& module : model.modules)
        pids += module.pids_max;
    std::vector<double> gains;
    for (PartIndex part = 0; part < parts_.size(); ++part) {
        const double least = 1e-9;
        const double cost = model.parts[part].bitrate / bitrate + model.parts[part].pids / pids + least;
        gains.push_back(static_cast<double>(parts_[part].height) / cost);
    }
    cheapest_first_.resize(parts_.size());
    std::iota(cheapest_first_.begin(), cheapest_first_.end(), PartIndex{0});
    for (const FillStream& stream : model.streams)
        std::stable_sort(cheapest_first_.begin() + stream.first, cheapest_first_.begin() + stream.last,
                         [&](PartIndex one, PartIndex other) { return gains[one] > gains[other]; });
}

FillWorth Goal::worth_of(const FillRun& fill) const {
    FillWorth worth;
    for (PartIndex index = 0; index < parts_.size(); ++index) {
        const std::uint32_t output = fill.output_of(index);
        if (output == no_index)
            continue;
        const Part& part = parts_[index];
        worth.musts += part.musts;
        worth.value += part.value;
        worth.height += part.height;
        if (part.last_output != 0 && (output < part.first_output || output >= part.last_output)) {
            ++worth.moved;
            worth.height -= height_of_move;
        }
    }
    return worth;
}

} // namespace zarven::tool
