// Gathering a stream that several inputs receive. What a gathering would change is made up aside, and taken
// over when every limit allows it.

#include "placement/rehearsal/stage.h"

#include <algorithm>
#include <utility>

namespace zarven::tool {

void Rehearsal::Stage::find_receivers() {
    receivers_.resize(headend_.streams.size());
    for (auto& receivers : receivers_)
        receivers.clear();
    for (std::size_t module = 0; module < modules_.size(); ++module)
        for (const Input& input : modules_[module].inputs)
            if (input.stream != no_stream &&
                (receivers_[input.stream].empty() || receivers_[input.stream].back() != module))
                receivers_[input.stream].push_back(static_cast<std::uint32_t>(module));
}

/// The first at or after `from` that is the module itself or receives one of its streams.
std::size_t Rehearsal::Stage::next_partner(std::size_t from, std::size_t module) const {
    std::size_t partner = from <= module ? module : modules_.size();
    for (const Input& input : modules_[module].inputs) {
        if (!is_tuned(input))
            continue;
        const auto& receivers = receivers_[input.stream];
        const auto next = std::lower_bound(receivers.begin(), receivers.end(), from);
        if (next != receivers.end())
            partner = std::min(partner, std::size_t{*next});
    }
    return partner;
}

Estado Rehearsal::Stage::unify() {
    const bool is_known = unified_at_ == changes_;
    unified_at_ = changes_;
    if (!is_known)
        find_receivers();
    bool is_to_complete = false;
    for (std::size_t module = 0; module < modules_.size() && !is_known; ++module)
        for (std::size_t other = next_partner(0, module); other < modules_.size();
             other = next_partner(other + 1, module))
            is_to_complete |= other == module ? unify_within(modules_[module]) : unify(module, other);
    return reglas::trasUnificar(is_to_complete, anything_waits());
}

bool Rehearsal::Stage::unify_within(Module& module) {
    bool is_to_complete = false;
    for (std::size_t first = 0; first < module.inputs.size(); ++first) {
        if (!is_tuned(module.inputs[first]))
            continue;
        for (std::size_t second = first + 1; second < module.inputs.size(); ++second) {
            Input& other = module.inputs[second];
            if (other.stream != module.inputs[first].stream)
                continue;
            for (const ServiceNumber number : other.services)
                put(module.inputs[first].services, number);
            other.services.clear();
            other.stream = no_stream;
            ++changes_;
            is_to_complete = true;
        }
    }
    return is_to_complete;
}

bool Rehearsal::Stage::unify(std::size_t module, std::size_t other) {
    bool is_to_complete = false;
    for (std::size_t input = 0; input < modules_[module].inputs.size(); ++input) {
        if (!is_tuned(modules_[module].inputs[input]))
            continue;
        for (std::size_t at = 0; at < modules_[other].inputs.size(); ++at) {
            const Input& partner = modules_[other].inputs[at];
            if (!is_tuned(partner))
                continue;
            if (partner.stream != modules_[module].inputs[input].stream)
                break;
            if (!gather(module, input, other))
                continue;
            for (const Input& now : modules_[other].inputs) {
                if (now.stream == no_stream)
                    continue;
                auto& receivers = receivers_[now.stream];
                const auto place = std::lower_bound(receivers.begin(), receivers.end(), other);
                if (place == receivers.end() || *place != other)
                    receivers.insert(place, static_cast<std::uint32_t>(other));
            }
            is_to_complete |= anything_waits();
        }
    }
    return is_to_complete;
}

void Rehearsal::Stage::sum_up(std::size_t stream) {
    for (Side* side : {&principal_, &auxiliary_})
        side->pids = side->bitrate = side->sd = side->hd = 0;
    for (const std::size_t module : {principal_.module, auxiliary_.module})
        for (const Input& input : modules_[module].inputs)
            for (const ServiceNumber number : input.services) {
                const RehearsedService& what = service(number);
                Side& side = what.stream == stream ? principal_ : auxiliary_;
                side.pids += what.pids;
                side.bitrate += what.bitrate;
                if (reglas::necesitaTranscoding(what.transcoding))
                    ++(what.is_hd ? side.hd : side.sd);
            }
}

void Rehearsal::Stage::divide(std::size_t stream) {
    principal_.services.clear();
    auxiliary_.services.clear();
    for (const std::size_t module : {principal_.module, auxiliary_.module})
        for (const Input& input : modules_[module].inputs)
            for (const ServiceNumber number : input.services)
                put((service(number).stream == stream ? principal_ : auxiliary_).services, number);
}

bool Rehearsal::Stage::has_pids(const Side& side) {
    LimitTests& tests = tests_[side.module].pids;
    if (!reglas::bastaConSigno((*limits_)[side.module].pids_max, side.pids)) {
        tests.failed();
        return false;
    }
    tests.passed_at(side.pids);
    return true;
}

bool Rehearsal::Stage::has_transcoders(const Side& side) {
    const RehearsedModule& limits = (*limits_)[side.module];
    if (!reglas::bastaConSigno(limits.hd_transcoders, side.hd)) {
        tests_[side.module].hd_transcoders.failed();
        return false;
    }
    tests_[side.module].hd_transcoders.passed_at(side.hd);
    if (!reglas::bastaConSigno(limits.sd_transcoders, side.sd)) {
        tests_[side.module].sd_transcoders.failed();
        return false;
    }
    tests_[side.module].sd_transcoders.passed_at(side.sd);
    return true;
}

bool Rehearsal::Stage::has_bitrate(const Side& side) {
    const auto& outputs = (*limits_)[side.module].outputs;
    std::uint64_t all = 0;
    for (const OutputCapacity& output : outputs)
        all += output.bitrate_max;
    // A sum that wraps, or counts as negative, does not grow with its parts.
    const bool is_plain = all <= static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
    const bool is_enough = reglas::bastaConSigno(static_cast<std::uint32_t>(all), side.bitrate);
    for (std::size_t output = 0; output < outputs.size(); ++output) {
        LimitTests& tests = tests_[side.module].bitrate[output];
        const std::uint64_t others = all - outputs[output].bitrate_max;
        if (!is_plain)
            tests.failed();
        else if (!is_enough)
            tests.failed_under(side.bitrate - others);
        else if (side.bitrate > others)
            tests.passed_at(side.bitrate - others);
    }
    return is_enough;
}

/// The highest keys find their place first.
bool Rehearsal::Stage::book(Side& side) {
    const auto& limits = (*limits_)[side.module].outputs;
    side.outputs.resize(limits.size());
    for (Output& output : side.outputs) {
        output.bitrate = output.count = 0;
        output.services.clear();
    }
    for (auto number = side.services.rbegin(); number != side.services.rend(); ++number) {
        const std::uint32_t bitrate = service(*number).bitrate;
        std::size_t at = 0;
        for (; at < limits.size(); ++at) {
            Output& output = side.outputs[at];
            if (!reglas::cabeOtroServicio(output.count, limits[at].service_max))
                continue;
            LimitTests& tests = tests_[side.module].bitrate[at];
            const bool is_within = reglas::bajoTecho(output.bitrate, limits[at].bitrate_max);
            const bool fits = reglas::cabeBitratePorResto(output.bitrate, bitrate, limits[at].bitrate_max);
            const std::uint64_t needed = reglas::techoPara(std::uint64_t{output.bitrate} + bitrate);
            if (!is_within)
                tests.failed_under(reglas::techoPara(output.bitrate));
            else if (!fits)
                tests.failed_under(needed);
            else
                tests.passed_at(needed);
            if (fits)
                break;
        }
        if (at == limits.size())
            return false;
        put(side.outputs[at].services, *number);
        side.outputs[at].bitrate += bitrate;
        ++side.outputs[at].count;
    }
    return true;
}

bool Rehearsal::Stage::pass_on(std::size_t stream, std::size_t gathered, ServiceNumbers&& services) {
    auto& inputs = auxiliary_.inputs;
    const auto tuned_to = [&inputs](std::size_t wanted) {
        return std::find_if(inputs.begin(), inputs.end(),
                            [wanted](const Input& input) { return input.stream == wanted; });
    };
    if (const auto free = tuned_to(gathered); free != inputs.end()) {
        free->stream = stream;
        free->services = std::move(services);
        return true;
    }
    if (services.empty())
        return true;
    auto target = tuned_to(stream);
    if (target == inputs.end())
        target = tuned_to(no_stream);
    if (target == inputs.end())
        return false;
    target->stream = stream;
    for (const ServiceNumber number : services)
        put(target->services, number);
    return true;
}

bool Rehearsal::Stage::retune(std::size_t input, std::size_t stream) {
    principal_.inputs = modules_[principal_.module].inputs;
    auxiliary_.inputs = modules_[auxiliary_.module].inputs;
    for (std::size_t at = 0; at < principal_.inputs.size(); ++at) {
        Input& now = principal_.inputs[at];
        if (at == input) {
            now.services = principal_.services;
            continue;
        }
        const std::size_t before = std::exchange(now.stream, no_stream);
        ServiceNumbers services = std::exchange(now.services, {});
        if (before != stream && !pass_on(before, stream, std::move(services)))
            return false;
    }
    for (Input& other : auxiliary_.inputs)
        if (other.stream == stream)
            other = {};
    return std::all_of(auxiliary_.services.begin(), auxiliary_.services.end(),
                       [this](ServiceNumber number) { return secure(number); });
}

/// Sees that a service stands on an input: on the one that receives its stream, if there is one.
bool Rehearsal::Stage::secure(ServiceNumber number) {
    Input* target = nullptr;
    bool is_elsewhere = false;
    for (Input& input : auxiliary_.inputs) {
        const bool stands =
            std::find(input.services.begin(), input.services.end(), number) != input.services.end();
        const bool receives = input.stream == service(number).stream;
        if (stands && receives)
            return true;
        if (receives && target == nullptr)
            target = &input;
        is_elsewhere = is_elsewhere || stands;
    }
    if (target == nullptr)
        return is_elsewhere;
    for (Input& input : auxiliary_.inputs)
        input.services.erase(std::remove(input.services.begin(), input.services.end(), number),
                             input.services.end());
    put(target->services, number);
    return true;
}

void Rehearsal::Stage::note_tuned(Module& module) {
    for (std::size_t at = module.inputs_used; at < module.inputs.size(); ++at)
        if (module.inputs[at].stream != no_stream)
            module.inputs_used = at + 1;
}

bool Rehearsal::Stage::gather(std::size_t module, std::size_t input, std::size_t other) {
    const std::size_t stream = modules_[module].inputs[input].stream;
    principal_.module = module;
    auxiliary_.module = other;
    sum_up(stream);
    if (!has_pids(principal_) || !has_pids(auxiliary_) || !has_transcoders(principal_) ||
        !has_transcoders(auxiliary_) || !has_bitrate(principal_) || !has_bitrate(auxiliary_))
        return false;
    divide(stream);
    if (!book(principal_) || !book(auxiliary_) || !retune(input, stream))
        return false;
    ++changes_;
    for (Side* side : {&principal_, &auxiliary_}) {
        modules_[side->module].inputs.swap(side->inputs);
        modules_[side->module].outputs.swap(side->outputs);
        note_tuned(modules_[side->module]);
    }
    return true;
}

} // namespace zarven::tool
