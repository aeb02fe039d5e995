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
    for (std::uint32_t module = 0; module < modules(); ++module)
        for (std::uint32_t input = limits(module).first_input; input < limits(module).last_input; ++input) {
            const std::uint32_t stream = stream_of(input);
            if (stream != no_index && (receivers_[stream].empty() || receivers_[stream].back() != module))
                receivers_[stream].push_back(module);
        }
}

/// The first at or after `from` that is the module itself or receives one of its streams.
std::uint32_t Rehearsal::Stage::next_partner(std::uint32_t from, std::uint32_t module) const {
    std::uint32_t partner = from <= module ? module : modules();
    for (std::uint32_t input = limits(module).first_input; input < limits(module).last_input; ++input) {
        if (!is_tuned(input))
            continue;
        const auto& receivers = receivers_[stream_of(input)];
        const auto next = std::lower_bound(receivers.begin(), receivers.end(), from);
        if (next != receivers.end())
            partner = std::min(partner, *next);
    }
    return partner;
}

Estado Rehearsal::Stage::unify() {
    const bool is_known = unified_at_ == filling_.changes();
    const std::uint64_t before = unified_at_;
    unified_at_ = filling_.changes();
    if (!is_known) {
        list_placed();
        note_tuned();
        find_receivers();
    }
    bool is_to_complete = false;
    for (std::uint32_t module = 0; module < modules() && !is_known; ++module)
        for (std::uint32_t other = next_partner(0, module); other < modules();
             other = next_partner(other + 1, module))
            // Two that have not changed since the last walk refuse each other once more.
            if (before == never || filling_.has_changed(module, before) ||
                filling_.has_changed(other, before))
                is_to_complete |= other == module ? unify_within(module) : unify(module, other);
    return reglas::trasUnificar(is_to_complete, anything_waits());
}

bool Rehearsal::Stage::unify_within(std::uint32_t module) {
    bool is_to_complete = false;
    std::vector<std::uint32_t>& loads = filling_.loads().on_input;
    for (std::uint32_t first = limits(module).first_input; first < limits(module).last_input; ++first) {
        if (!is_tuned(first))
            continue;
        for (std::uint32_t second = first + 1; second < limits(module).last_input; ++second) {
            if (stream_of(second) != stream_of(first))
                continue;
            for (const PartIndex index : on_input_[second])
                put(on_input_[first], index);
            on_input_[second].clear();
            loads[first] += std::exchange(loads[second], 0);
            stream_of(second) = no_index;
            filling_.note_change(module);
            is_to_complete = true;
        }
    }
    return is_to_complete;
}

bool Rehearsal::Stage::unify(std::uint32_t module, std::uint32_t other) {
    bool is_to_complete = false;
    for (std::uint32_t input = limits(module).first_input; input < limits(module).last_input; ++input) {
        if (!is_tuned(input))
            continue;
        for (std::uint32_t at = limits(other).first_input; at < limits(other).last_input; ++at) {
            if (!is_tuned(at))
                continue;
            if (stream_of(at) != stream_of(input))
                break;
            if (!gather(module, input, other))
                continue;
            for (std::uint32_t now = limits(other).first_input; now < limits(other).last_input; ++now) {
                if (stream_of(now) == no_index)
                    continue;
                auto& receivers = receivers_[stream_of(now)];
                const auto place = std::lower_bound(receivers.begin(), receivers.end(), other);
                if (place == receivers.end() || *place != other)
                    receivers.insert(place, other);
            }
            is_to_complete |= anything_waits();
        }
    }
    return is_to_complete;
}

void Rehearsal::Stage::sum_up(std::uint32_t stream) {
    for (Side* side : {&principal_, &auxiliary_})
        side->pids = side->bitrate = side->sd = side->hd = 0;
    for (const std::uint32_t module : {principal_.module, auxiliary_.module})
        for (std::uint32_t input = limits(module).first_input; input < limits(module).last_input; ++input)
            for (const PartIndex index : on_input_[input]) {
                const RehearsedPart& what = part(index);
                Side& side = what.stream == stream ? principal_ : auxiliary_;
                side.pids += what.pids;
                side.bitrate += what.bitrate;
                if (reglas::necesitaTranscoding(what.transcoding))
                    ++(what.is_hd ? side.hd : side.sd);
            }
}

void Rehearsal::Stage::divide(std::uint32_t stream) {
    principal_.parts.clear();
    auxiliary_.parts.clear();
    for (const std::uint32_t module : {principal_.module, auxiliary_.module})
        for (std::uint32_t input = limits(module).first_input; input < limits(module).last_input; ++input)
            for (const PartIndex index : on_input_[input])
                put((part(index).stream == stream ? principal_ : auxiliary_).parts, index);
}

bool Rehearsal::Stage::has_pids(const Side& side) {
    LimitTests& tests = filling_.tests()[side.module].pids;
    if (!reglas::bastaConSigno(limits(side.module).pids_max, side.pids)) {
        tests.failed();
        return false;
    }
    tests.passed_at(side.pids);
    return true;
}

bool Rehearsal::Stage::has_transcoders(const Side& side) {
    ModuleTests& tests = filling_.tests()[side.module];
    if (!reglas::bastaConSigno(limits(side.module).hd_max, side.hd)) {
        tests.hd_transcoders.failed();
        return false;
    }
    tests.hd_transcoders.passed_at(side.hd);
    if (!reglas::bastaConSigno(limits(side.module).sd_max, side.sd)) {
        tests.sd_transcoders.failed();
        return false;
    }
    tests.sd_transcoders.passed_at(side.sd);
    return true;
}

bool Rehearsal::Stage::has_bitrate(const Side& side) {
    const FlatModules::Module& most = limits(side.module);
    const std::vector<OutputCapacity>& outputs = filling_.limits().outputs;
    std::uint64_t all = 0;
    for (std::uint32_t output = most.first_output; output < most.last_output; ++output)
        all += outputs[output].bitrate_max;
    // A sum that wraps, or counts as negative, does not grow with its parts.
    const bool is_plain = all <= static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
    const bool is_enough = reglas::bastaConSigno(static_cast<std::uint32_t>(all), side.bitrate);
    for (std::uint32_t output = most.first_output; output < most.last_output; ++output) {
        LimitTests& tests = filling_.bitrate_tests(side.module, output);
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
    const std::uint32_t first = limits(side.module).first_output;
    const OutputCapacity* const most = filling_.limits().outputs.data() + first;
    side.outputs.resize(limits(side.module).last_output - first);
    for (Side::Output& output : side.outputs) {
        output.load = {};
        output.parts.clear();
    }
    for (auto index = side.parts.rbegin(); index != side.parts.rend(); ++index) {
        const std::uint32_t bitrate = part(*index).bitrate;
        std::uint32_t at = 0;
        for (; at < side.outputs.size(); ++at) {
            const PassLoads::Output& load = side.outputs[at].load;
            if (!reglas::cabeOtroServicio(load.services, most[at].service_max))
                continue;
            LimitTests& tests = filling_.bitrate_tests(side.module, first + at);
            const bool is_within = reglas::bajoTecho(load.bitrate, most[at].bitrate_max);
            const bool fits = reglas::cabeBitratePorResto(load.bitrate, bitrate, most[at].bitrate_max);
            const std::uint64_t needed = reglas::techoPara(std::uint64_t{load.bitrate} + bitrate);
            if (!is_within)
                tests.failed_under(reglas::techoPara(load.bitrate));
            else if (!fits)
                tests.failed_under(needed);
            else
                tests.passed_at(needed);
            if (fits)
                break;
        }
        if (at == side.outputs.size())
            return false;
        put(side.outputs[at].parts, *index);
        side.outputs[at].load.bitrate += bitrate;
        ++side.outputs[at].load.services;
    }
    return true;
}

void Rehearsal::Stage::copy_inputs(Side& side) const {
    const FlatModules::Module& most = limits(side.module);
    side.inputs.resize(most.last_input - most.first_input);
    for (std::uint32_t at = 0; at < side.inputs.size(); ++at) {
        side.inputs[at].stream = stream_of(most.first_input + at);
        side.inputs[at].parts = on_input_[most.first_input + at];
    }
}

bool Rehearsal::Stage::pass_on(std::uint32_t stream, std::uint32_t gathered, PartIndices&& parts) {
    auto& inputs = auxiliary_.inputs;
    const auto tuned_to = [&inputs](std::uint32_t wanted) {
        return std::find_if(inputs.begin(), inputs.end(),
                            [wanted](const Side::Input& input) { return input.stream == wanted; });
    };
    if (const auto free = tuned_to(gathered); free != inputs.end()) {
        free->stream = stream;
        free->parts = std::move(parts);
        return true;
    }
    if (parts.empty())
        return true;
    auto target = tuned_to(stream);
    if (target == inputs.end())
        target = tuned_to(no_index);
    if (target == inputs.end())
        return false;
    target->stream = stream;
    for (const PartIndex index : parts)
        put(target->parts, index);
    return true;
}

bool Rehearsal::Stage::retune(std::uint32_t input, std::uint32_t stream) {
    copy_inputs(principal_);
    copy_inputs(auxiliary_);
    for (std::uint32_t at = 0; at < principal_.inputs.size(); ++at) {
        Side::Input& now = principal_.inputs[at];
        if (at == input) {
            now.parts = principal_.parts;
            continue;
        }
        const std::uint32_t before = std::exchange(now.stream, no_index);
        PartIndices parts = std::exchange(now.parts, {});
        if (before != stream && !pass_on(before, stream, std::move(parts)))
            return false;
    }
    for (Side::Input& other : auxiliary_.inputs)
        if (other.stream == stream)
            other = {};
    return std::all_of(auxiliary_.parts.begin(), auxiliary_.parts.end(),
                       [this](PartIndex index) { return secure(index); });
}

/// Sees that a service stands on an input: on the one that receives its stream, if there is one.
bool Rehearsal::Stage::secure(PartIndex index) {
    Side::Input* target = nullptr;
    bool is_elsewhere = false;
    for (Side::Input& input : auxiliary_.inputs) {
        const bool stands = std::find(input.parts.begin(), input.parts.end(), index) != input.parts.end();
        const bool receives = input.stream == part(index).stream;
        if (stands && receives)
            return true;
        if (receives && target == nullptr)
            target = &input;
        is_elsewhere = is_elsewhere || stands;
    }
    if (target == nullptr)
        return is_elsewhere;
    for (Side::Input& input : auxiliary_.inputs)
        input.parts.erase(std::remove(input.parts.begin(), input.parts.end(), index), input.parts.end());
    put(target->parts, index);
    return true;
}

/// The counters of the module stay as they were.
void Rehearsal::Stage::take_over(Side& side) {
    const FlatModules::Module& most = limits(side.module);
    for (std::uint32_t at = 0; at < side.inputs.size(); ++at) {
        const std::uint32_t input = most.first_input + at;
        stream_of(input) = side.inputs[at].stream;
        on_input_[input].swap(side.inputs[at].parts);
        filling_.loads().on_input[input] = static_cast<std::uint32_t>(on_input_[input].size());
    }
    for (std::uint32_t at = 0; at < side.outputs.size(); ++at) {
        filling_.loads().outputs[most.first_output + at] = side.outputs[at].load;
        on_output_[most.first_output + at].swap(side.outputs[at].parts);
    }
    note_tuned(side.module);
}

bool Rehearsal::Stage::gather(std::uint32_t module, std::uint32_t input, std::uint32_t other) {
    const std::uint32_t stream = stream_of(input);
    principal_.module = module;
    auxiliary_.module = other;
    sum_up(stream);
    if (!has_pids(principal_) || !has_pids(auxiliary_) || !has_transcoders(principal_) ||
        !has_transcoders(auxiliary_) || !has_bitrate(principal_) || !has_bitrate(auxiliary_))
        return false;
    divide(stream);
    if (!book(principal_) || !book(auxiliary_) || !retune(input - limits(module).first_input, stream))
        return false;
    filling_.note_change(module);
    filling_.note_change(other);
    take_over(principal_);
    take_over(auxiliary_);
    return true;
}

} // namespace zarven::tool
