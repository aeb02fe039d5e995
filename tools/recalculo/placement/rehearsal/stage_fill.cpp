// Filling inputs from what waits, and topping up modules that have room. All modules are of the one model
// that the engine supports, so the fill for transcoding, which another kind of head-end has, never comes by.

#include "placement/rehearsal/stage.h"

#include <algorithm>

namespace zarven::tool {

int Rehearsal::Stage::counted(std::size_t stream) const {
    int number = 0;
    if (waiting_of_[stream] == 0)
        return number;
    for (std::size_t at = headend_.streams[stream].first; at < headend_.streams[stream].last; ++at)
        if (waits_[at] != 0)
            number += reglas::cuentaParaElegir(headend_.services[at].key, headend_.services[at].transcoding,
                                               counts_.criterion)
                          ? 1
                          : 0;
    return number;
}

void Rehearsal::Stage::add_to_totals(std::size_t stream, int sign) {
    if (waiting_of_[stream] == 0)
        return;
    for (std::size_t at = headend_.streams[stream].first; at < headend_.streams[stream].last; ++at)
        if (waits_[at] != 0) {
            counts_.with_positive_key += reglas::esClavePositiva(headend_.services[at].key) ? sign : 0;
            counts_.with_transcoding +=
                reglas::necesitaTranscoding(headend_.services[at].transcoding) ? sign : 0;
        }
}

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

void Rehearsal::Stage::count_all() {
    counts_.criterion.soloClavesPositivas = counts_.with_positive_key != 0;
    counts_.criterion.soloDeSuClase = counts_.with_transcoding != 0;
    counts_.sorted.clear();
    for (std::size_t stream = 0; stream < headend_.streams.size(); ++stream)
        if (const int number = counted(stream); number != 0)
            counts_.sorted.push_back(entry(number, stream));
    std::sort(counts_.sorted.begin(), counts_.sorted.end());
}

std::size_t Rehearsal::Stage::chosen(char mode) const {
    const auto& sorted = counts_.sorted;
    if (sorted.empty() || (mode != reglas::MODO_MAX && mode != reglas::MODO_MIN))
        return no_stream;
    if (mode == reglas::MODO_MIN)
        return number_in(sorted.front()) >= reglas::TOPE_MIN ? no_stream : stream_in(sorted.front());
    return stream_in(*std::lower_bound(sorted.begin(), sorted.end(), entry(number_in(sorted.back()), 0)));
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
        waits_[at] = 0;
        ++placed;
    }
    waiting_of_[stream] -= static_cast<std::size_t>(placed);
    waiting_ -= static_cast<std::size_t>(placed);
    return placed;
}

int Rehearsal::Stage::fill(std::size_t module, std::size_t input, char mode) {
    const std::size_t stream = chosen(mode);
    if (stream == no_stream)
        return 0;
    auto& sorted = counts_.sorted;
    add_to_totals(stream, -1);
    sorted.erase(std::lower_bound(sorted.begin(), sorted.end(), entry(counted(stream), stream)));
    const int placed = place_waiting(module, input, stream, false);
    add_to_totals(stream, 1);
    if (counts_.criterion.soloClavesPositivas != (counts_.with_positive_key != 0) ||
        counts_.criterion.soloDeSuClase != (counts_.with_transcoding != 0)) {
        count_all();
    } else if (const int left = counted(stream); left != 0) {
        sorted.insert(std::upper_bound(sorted.begin(), sorted.end(), entry(left, stream)),
                      entry(left, stream));
    }
    if (placed != 0)
        modules_[module].inputs[input].stream = stream;
    return placed;
}

Rehearsal::Stage::State Rehearsal::Stage::fill(char option) {
    placed_by_fill_ = 0;
    bool are_counted = false;
    for (std::size_t module = 0; module < modules_.size(); ++module)
        for (std::size_t input = 0; input < modules_[module].inputs.size(); ++input) {
            const char mode = reglas::modoDeEntrada(option, static_cast<std::uint16_t>(input + 1));
            if (!modules_[module].inputs[input].services.empty() || !anything_waits() ||
                mode == reglas::NO_SE_OFRECE)
                continue;
            if (!are_counted) {
                counts_.with_positive_key = counts_.with_transcoding = 0;
                for (std::size_t stream = 0; stream < headend_.streams.size(); ++stream)
                    add_to_totals(stream, 1);
                count_all();
                are_counted = true;
            }
            placed_by_fill_ += fill(module, input, mode);
        }
    return placed_by_fill_ == 0 ? State::unify : State::check;
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
        const RehearsedOutput& most = limits.outputs[output];
        const Output& now = module.outputs[output];
        if (!reglas::cabeOtroServicio(now.count, most.services_max))
            continue;
        LimitTests& tests = tests_[number].bitrate[output];
        const bool has_room = reglas::sobraBitrate(now.bitrate, most.bitrate_max);
        // Under the margin the rule turns round, and a larger value may have less to spare.
        if (!has_room || most.bitrate_max < reglas::MARGEN_BITRATE)
            tests.failed();
        else
            tests.passed_at(std::uint64_t{now.bitrate} + reglas::MARGEN_BITRATE + 1);
        if (has_room)
            return true;
    }
    return false;
}

Rehearsal::Stage::State Rehearsal::Stage::check() {
    bool is_any_uncomplete = false;
    for (std::size_t module = 0; module < modules_.size() && anything_waits() && !is_any_uncomplete; ++module)
        is_any_uncomplete = is_uncomplete(module);
    if (!is_any_uncomplete)
        return State::unify;
    for (const Module& module : modules_)
        for (const Input& input : module.inputs)
            if (input.services.empty())
                return State::fill;
    return State::complete;
}

Rehearsal::Stage::State Rehearsal::Stage::complete() {
    State next = State::unify;
    for (std::size_t module = 0; module < modules_.size() && anything_waits(); ++module) {
        if (!is_uncomplete(module))
            continue;
        for (std::size_t input = 0; input < modules_[module].inputs.size() && anything_waits(); ++input) {
            const std::size_t stream = modules_[module].inputs[input].stream;
            if (stream != no_stream)
                place_waiting(module, input, stream, true);
            else
                next = placed_by_fill_ != 0 ? State::fill : State::optimize;
        }
    }
    return next;
}

} // namespace zarven::tool
