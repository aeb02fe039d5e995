// Filling inputs from what waits, and topping up modules that have room. A head-end that has the fill for
// transcoding, which none of the model that the engine supports is, is not rehearsed.

#include "placement/rehearsal/stage.h"

#include <algorithm>

namespace zarven::tool {

namespace {

std::uint64_t entry(int number, std::size_t stream) {
    return static_cast<std::uint64_t>(number) << 32 | stream;
}

int number_in(std::uint64_t entry) {
    return static_cast<int>(entry >> 32);
}

std::size_t stream_in(std::uint64_t entry) {
    return static_cast<std::uint32_t>(entry);
}

} // namespace

/// The service no longer waits.
void Rehearsal::Stage::take(ServiceNumber number) {
    const RehearsedService& what = service(number);
    ++changes_;
    waits_[number] = 0;
    --waiting_;
    --waiting_of_[what.stream];
    with_positive_key_ -= reglas::esClavePositiva(what.key) ? 1 : 0;
    with_transcoding_ -= reglas::necesitaTranscoding(what.transcoding) ? 1 : 0;
    for (std::size_t at = 0; at < what.counts.size(); ++at)
        counts_[what.stream][at] -= what.counts[at] ? 1 : 0;
}

std::size_t Rehearsal::Stage::criterion() const {
    return number_of(reglas::Criterio{with_positive_key_ != 0, with_transcoding_ != 0, false});
}

void Rehearsal::Stage::count_all() {
    criterion_ = criterion();
    sorted_.clear();
    for (std::size_t stream = 0; stream < headend_.streams.size(); ++stream)
        if (counts_[stream][criterion_] != 0)
            sorted_.push_back(entry(counts_[stream][criterion_], stream));
    std::sort(sorted_.begin(), sorted_.end());
}

std::size_t Rehearsal::Stage::chosen(char mode) const {
    if (sorted_.empty() || (mode != reglas::MODO_MAX && mode != reglas::MODO_MIN))
        return no_stream;
    if (mode == reglas::MODO_MIN)
        return number_in(sorted_.front()) >= reglas::TOPE_MIN ? no_stream : stream_in(sorted_.front());
    return stream_in(*std::lower_bound(sorted_.begin(), sorted_.end(), entry(number_in(sorted_.back()), 0)));
}

int Rehearsal::Stage::place_waiting(std::size_t module, std::size_t input, std::size_t stream,
                                    bool with_transcoding) {
    int placed = 0;
    if (waiting_of_[stream] == 0)
        return placed;
    for (std::size_t at = headend_.streams[stream].first; at < headend_.streams[stream].last; ++at) {
        if (waits_[at] == 0 ||
            (!with_transcoding && !reglas::entraEnRelleno(headend_.services[at].transcoding, false)) ||
            !place(module, input, static_cast<ServiceNumber>(at)))
            continue;
        take(static_cast<ServiceNumber>(at));
        ++placed;
    }
    return placed;
}

int Rehearsal::Stage::fill(std::size_t module, std::size_t input, char mode) {
    const std::size_t stream = chosen(mode);
    if (stream == no_stream)
        return 0;
    const int before = counts_[stream][criterion_];
    const int placed = place_waiting(module, input, stream, false);
    // What counts depends on what is left: with the last service of its kind a rule falls away.
    if (criterion_ != criterion()) {
        count_all();
    } else if (const int left = counts_[stream][criterion_]; left != before) {
        sorted_.erase(std::lower_bound(sorted_.begin(), sorted_.end(), entry(before, stream)));
        if (left != 0)
            sorted_.insert(std::lower_bound(sorted_.begin(), sorted_.end(), entry(left, stream)),
                           entry(left, stream));
    }
    if (placed != 0) {
        modules_[module].inputs[input].stream = stream;
        modules_[module].inputs_used = std::max(modules_[module].inputs_used, input + 1);
    }
    return placed;
}

Estado Rehearsal::Stage::fill(char option) {
    placed_by_fill_ = 0;
    if (filled_at_ == changes_)
        return reglas::trasRellenar(placed_by_fill_, Estado::STATUS_CHECK_EMPTY_INPUT);
    bool are_counted = false;
    for (std::size_t module = 0; module < modules_.size(); ++module)
        for (std::size_t input = 0; input < modules_[module].inputs.size(); ++input) {
            const char mode = reglas::modoDeEntrada(option, static_cast<std::uint16_t>(input + 1));
            if (!modules_[module].inputs[input].services.empty() || !anything_waits() ||
                mode == reglas::NO_SE_OFRECE)
                continue;
            if (!are_counted) {
                count_all();
                are_counted = true;
            }
            placed_by_fill_ += fill(module, input, mode);
        }
    filled_at_ = placed_by_fill_ == 0 ? changes_ : never;
    return reglas::trasRellenar(placed_by_fill_, Estado::STATUS_CHECK_EMPTY_INPUT);
}

bool Rehearsal::Stage::is_uncomplete(std::size_t number) {
    const RehearsedModule& limits = (*limits_)[number];
    const Module& module = modules_[number];
    if (!reglas::sobranPIDs(module.pids, limits.pids_max)) {
        tests_[number].pids.failed();
        return false;
    }
    tests_[number].pids.passed_at(std::uint64_t{module.pids} + 1);
    for (std::size_t output = 0; output < module.outputs.size(); ++output) {
        const OutputCapacity& most = limits.outputs[output];
        const Output& now = module.outputs[output];
        if (!reglas::cabeOtroServicio(now.count, most.service_max))
            continue;
        LimitTests& tests = tests_[number].bitrate[output];
        const bool has_room = reglas::sobraBitrate(now.bitrate, most.bitrate_max);
        // Under the margin the rule turns round, and a larger value may have less to spare.
        const std::uint64_t needed = std::uint64_t{now.bitrate} + reglas::MARGEN_BITRATE + 1;
        if (most.bitrate_max < reglas::MARGEN_BITRATE)
            tests.failed_under(reglas::MARGEN_BITRATE);
        else if (!has_room)
            tests.failed_under(needed);
        else
            tests.passed_at(needed);
        if (has_room)
            return true;
    }
    return false;
}

Estado Rehearsal::Stage::check() {
    bool is_any_uncomplete = false;
    for (std::size_t module = 0; module < modules_.size() && anything_waits() && !is_any_uncomplete; ++module)
        is_any_uncomplete = is_uncomplete(module);
    const bool is_any_input_empty = std::any_of(modules_.begin(), modules_.end(), [](const Module& module) {
        return std::any_of(module.inputs.begin(), module.inputs.end(),
                           [](const Input& input) { return input.services.empty(); });
    });
    return reglas::trasComprobar(anything_waits(), is_any_uncomplete, is_any_input_empty, headend_.resource);
}

Estado Rehearsal::Stage::complete() {
    Estado next = Estado::STATUS_UNIFY_INPUTS;
    for (std::size_t module = 0; module < modules_.size() && anything_waits(); ++module) {
        if (!is_uncomplete(module))
            continue;
        for (std::size_t input = 0; input < modules_[module].inputs.size() && anything_waits(); ++input) {
            const std::size_t stream = modules_[module].inputs[input].stream;
            if (stream != no_stream)
                place_waiting(module, input, stream, true);
            else
                next = reglas::trasEntradaLibre(placed_by_fill_, headend_.resource);
        }
    }
    return next;
}

} // namespace zarven::tool
