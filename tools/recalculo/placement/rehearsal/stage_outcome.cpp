// What a pass has come to: whether it keeps the limits, and where everything stands.

#include "placement/rehearsal/stage.h"

#include <algorithm>
#include <utility>

namespace zarven::tool {

bool Rehearsal::Stage::is_broken() {
    for (std::uint32_t module = 0; module < modules(); ++module)
        if (is_broken(module))
            return true;
    return false;
}

bool Rehearsal::Stage::is_output_broken(std::uint32_t module, std::uint32_t output) {
    const PartIndices& carried = on_output_[output];
    const OutputCapacity& most = filling_.limits().outputs[output];
    std::uint64_t bitrate = 0;
    sids_.clear();
    for (const PartIndex index : carried) {
        bitrate += part(index).bitrate;
        if (headend_.shares_sids)
            sids_.push_back(part(index).sid);
    }
    LimitTests& tests = filling_.bitrate_tests(module, output);
    if (!carried.empty() && !reglas::bajoTecho(bitrate, most.bitrate_max)) {
        tests.failed_under(reglas::techoPara(bitrate));
        return true;
    }
    tests.passed_at(reglas::techoPara(bitrate));
    std::sort(sids_.begin(), sids_.end());
    return !reglas::hastaTecho(carried.size(), most.service_max) ||
           std::adjacent_find(sids_.begin(), sids_.end()) != sids_.end();
}

bool Rehearsal::Stage::is_broken(std::uint32_t number) {
    const FlatModules::Module& most = limits(number);
    ModuleTests& tests = filling_.tests()[number];
    std::uint64_t pids = 0;
    std::uint64_t sd = 0;
    std::uint64_t hd = 0;
    for (std::uint32_t output = most.first_output; output < most.last_output; ++output) {
        if (is_output_broken(number, output))
            return true;
        for (const PartIndex index : on_output_[output]) {
            pids += part(index).pids;
            if (reglas::ocupaTranscoder(part(index).transcoding))
                ++(part(index).is_hd ? hd : sd);
        }
    }
    for (std::uint32_t input = most.first_input; input < most.last_input; ++input)
        for (const PartIndex received : on_input_[input])
            if (part(received).stream != stream_of(input))
                return true;
    if (!reglas::hastaTecho(pids, most.pids_max)) {
        tests.pids.failed();
        return true;
    }
    tests.pids.passed_at(pids);
    LimitTests& transcoders = hd != 0 ? tests.hd_transcoders : tests.sd_transcoders;
    if (!reglas::hastaTecho(sd + hd, reglas::limiteTranscoders(hd != 0, most.sd_max, most.hd_max))) {
        transcoders.failed();
        return true;
    }
    transcoders.passed_at(sd + hd);
    return false;
}

/// An input that carries something takes the place of a first one that is not tuned.
void Rehearsal::Stage::mend_first_inputs() {
    for (std::uint32_t module = 0; module < modules(); ++module) {
        const std::uint32_t first = limits(module).first_input;
        if (first == limits(module).last_input || is_tuned(first))
            continue;
        std::uint32_t other = first + 1;
        while (other < limits(module).last_input && on_input_[other].empty())
            ++other;
        if (other >= limits(module).last_input)
            continue;
        stream_of(first) = std::exchange(stream_of(other), no_index);
        for (const PartIndex index : on_input_[other])
            put(on_input_[first], index);
        on_input_[other].clear();
    }
}

/// Each service either waits or stands on an input and on an output.
bool Rehearsal::Stage::is_sound(std::uint32_t asked) const {
    const auto number = [](const std::vector<PartIndices>& lists) {
        std::size_t sum = 0;
        for (const PartIndices& parts : lists)
            sum += parts.size();
        return sum;
    };
    return number(on_input_) + filling_.left() == asked && number(on_output_) + filling_.left() == asked;
}

void Rehearsal::Stage::note_tuned(std::uint32_t module) {
    const FlatModules::Module& most = limits(module);
    for (std::uint32_t input = most.first_input + inputs_used_[module]; input < most.last_input; ++input)
        if (stream_of(input) != no_index)
            inputs_used_[module] = input - most.first_input + 1;
}

void Rehearsal::Stage::note_tuned() {
    for (std::uint32_t module = 0; module < modules(); ++module)
        note_tuned(module);
}

void Rehearsal::Stage::note_inputs() {
    for (std::uint32_t module = 0; module < modules(); ++module) {
        LimitTests& tests = filling_.tests()[module].inputs;
        if (inputs_used_[module] == limits(module).last_input - limits(module).first_input)
            tests.failed();
        tests.passed_at(std::uint64_t{inputs_used_[module]} + 1);
    }
}

/// A service that stands on several inputs is told on the first.
void Rehearsal::Stage::keep_seating() {
    best_.stream_of = filling_.seating().stream_of;
    best_.output_of.assign(headend_.parts.size(), no_index);
    for (std::uint32_t output = 0; output < on_output_.size(); ++output)
        for (const PartIndex index : on_output_[output])
            best_.output_of[index] = output;
    for (auto input = static_cast<std::uint32_t>(on_input_.size()); input-- > 0;)
        for (const PartIndex index : on_input_[input])
            best_.input_of[index] = input;
}

} // namespace zarven::tool
