#include "placement/choosing/goal.h"

#include <algorithm>
#include <map>
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

Goal::Goal(const Headend& headend, const StaysPut& stays, const RehearsedHeadend& model,
           std::vector<std::vector<std::size_t>> services, const std::vector<OneOf>& groups)
    : parts_(model.parts.size()), services_(std::move(services)) {
    for (PartIndex part = 0; part < parts_.size(); ++part)
        for (const std::size_t service : services_[part]) {
            parts_[part].musts += headend.services[service].must;
            parts_[part].value += headend.services[service].value;
        }
    find_rivals(groups);
    find_heights();
    find_places(stays, model);
    find_costs(model);
}

void Goal::find_rivals(const std::vector<OneOf>& groups) {
    rivals_.resize(parts_.size());
    std::map<std::size_t, PartIndex> parts;
    for (PartIndex part = 0; part < parts_.size(); ++part)
        for (const std::size_t service : services_[part])
            parts.emplace(service, part);
    for (const OneOf& group : groups) {
        groups_.emplace_back();
        for (const std::size_t variant : group.variants)
            if (const auto part = parts.find(variant);
                part != parts.end() &&
                std::find(groups_.back().begin(), groups_.back().end(), part->second) == groups_.back().end())
                groups_.back().push_back(part->second);
        for (const PartIndex part : groups_.back())
            for (const PartIndex rival : groups_.back())
                if (rival != part)
                    rivals_[part].push_back(rival);
    }
}

std::vector<std::uint8_t> Goal::one_of_each(std::vector<std::uint8_t> asked) const {
    for (const std::vector<PartIndex>& group : groups_) {
        bool has_one = false;
        for (const PartIndex part : group) {
            if (has_one)
                asked[part] = 0;
            has_one = has_one || asked[part] != 0;
        }
    }
    return asked;
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

void Goal::find_places(const StaysPut& stays, const RehearsedHeadend& model) {
    if (stays.module.empty())
        return;
    for (PartIndex part = 0; part < parts_.size(); ++part)
        for (const std::size_t service : services_[part]) {
            const auto mac = std::find(model.macs.begin(), model.macs.end(), stays.module[service]);
            if (stays.module[service].empty() || mac == model.macs.end())
                continue;
            const auto place = static_cast<std::size_t>(mac - model.macs.begin());
            const FlatModules::Module& module = model.flat.modules[place];
            const std::uint32_t output = service < stays.output.size() ? stays.output[service] : 0;
            parts_[part].first_output = module.first_output + (output == 0 ? 0 : output - 1);
            parts_[part].last_output = output == 0 ? module.last_output : parts_[part].first_output + 1;
            const std::uint16_t input = service < stays.input.size() ? stays.input[service] : 0;
            const bool is_known = input != 0 && input <= module.last_input - module.first_input;
            parts_[part].first_input = input == 0 ? module.first_input : module.first_input + input - 1U;
            parts_[part].last_input = is_known ? parts_[part].first_input + 1 : module.last_input;
        }
}

void Goal::find_costs(const RehearsedHeadend& model) {
    streams_ = model.streams.size();
    double bitrate = 1;
    double pids = 1;
    for (const OutputCapacity& output : model.flat.outputs)
        bitrate += output.bitrate_max;
    for (const ModuleCapacity& module : model.modules)
        pids += module.pids_max;
    for (PartIndex part = 0; part < parts_.size(); ++part) {
        parts_[part].bitrate = model.parts[part].bitrate / bitrate;
        parts_[part].pids = model.parts[part].pids / pids;
        parts_[part].stream = model.parts[part].stream;
    }
    // What counts is what there is too little of: the prices with which most could be placed.
    double best_weight = 0;
    std::int64_t highest = -1;
    for (int tenths = 0; tenths <= 10; ++tenths) {
        sort_by_cost(tenths / 10.0);
        const std::int64_t height = height_of(best_for(1, no_index));
        if (height > highest) {
            highest = height;
            best_weight = tenths / 10.0;
        }
    }
    sort_by_cost(best_weight);
    cheapest_first_ = order_;
    std::stable_sort(cheapest_first_.begin(), cheapest_first_.end(), [&](PartIndex one, PartIndex other) {
        return model.parts[one].stream < model.parts[other].stream;
    });
}

/// Those that give most for what they take first, if a share of the PIDs has such a weight against one of
/// bitrate.
void Goal::sort_by_cost(double weight_of_pids) {
    std::vector<double> gains;
    for (const Part& part : parts_) {
        const double least = 1e-9;
        const double cost = (1 - weight_of_pids) * part.bitrate + weight_of_pids * part.pids + least;
        gains.push_back(static_cast<double>(part.height) / cost);
    }
    order_.resize(parts_.size());
    std::iota(order_.begin(), order_.end(), PartIndex{0});
    std::stable_sort(order_.begin(), order_.end(),
                     [&](PartIndex one, PartIndex other) { return gains[one] > gains[other]; });
}

std::vector<std::uint8_t> Goal::best_for(double share, std::uint32_t most_of_stream) const {
    std::vector<std::uint8_t> asked(parts_.size(), 0);
    std::vector<std::uint32_t> of_stream(streams_, 0);
    double bitrate = share;
    double pids = share;
    for (const bool musts : {true, false})
        for (const PartIndex index : order_) {
            const Part& part = parts_[index];
            if ((part.musts != 0) != musts)
                continue;
            if (!musts &&
                (part.bitrate > bitrate || part.pids > pids || of_stream[part.stream] >= most_of_stream))
                continue;
            asked[index] = 1;
            bitrate -= part.bitrate;
            pids -= part.pids;
            ++of_stream[part.stream];
        }
    return asked;
}

std::int64_t Goal::height_of(const std::vector<std::uint8_t>& asked) const {
    std::int64_t height = 0;
    for (PartIndex part = 0; part < parts_.size(); ++part)
        height += asked[part] != 0 ? parts_[part].height : 0;
    return height;
}

FillWorth Goal::worth_of(const Seating& seating) const {
    FillWorth worth;
    for (PartIndex index = 0; index < parts_.size(); ++index) {
        const std::uint32_t output = seating.output_of[index];
        const Part& part = parts_[index];
        if (output != no_index) {
            worth.musts += part.musts;
            worth.value += part.value;
            worth.height += part.height;
        }
        // What is not placed is on no output at all, and so has moved as well.
        const std::uint32_t input = seating.input_of[index];
        if (part.last_output != 0 && (output < part.first_output || output >= part.last_output ||
                                      input < part.first_input || input >= part.last_input)) {
            ++worth.moved;
            worth.height -= height_of_move;
        }
    }
    return worth;
}

} // namespace zarven::tool
