#include "placement/rehearsal/filling.h"

#include <algorithm>
#include <iterator>

namespace zarven::tool {

using reglas::Estado;
using reglas::Estrategia;

template <bool is_noted>
Filling<is_noted>::Filling(const RehearsedHeadend& headend)
    : headend_(headend), most_(Preference::most, headend.streams.size()),
      fewest_(Preference::fewest, headend.streams.size()) {
    set_modules(headend.modules);
    seating_.output_of.assign(headend.parts.size(), no_index);
    seating_.input_of.resize(headend.parts.size());
    placed_.reserve(headend.parts.size());
}

template <bool is_noted> void Filling<is_noted>::set_modules(const std::vector<ModuleCapacity>& modules) {
    limits_.assign(modules);
    loads_.outputs.resize(limits_.outputs.size());
    loads_.modules.resize(limits_.modules.size());
    loads_.on_input.resize(limits_.inputs);
    seating_.stream_of.resize(limits_.inputs);
    changed_at_.resize(limits_.modules.size());
    if constexpr (is_noted)
        forget_tests();
}

template <bool is_noted> void Filling<is_noted>::forget_tests() {
    tests_.resize(limits_.modules.size());
    for (std::size_t module = 0; module < tests_.size(); ++module) {
        ModuleTests& tests = tests_[module];
        tests.inputs = tests.pids = tests.sd_transcoders = tests.hd_transcoders = {};
        const FlatModules::Module& limits = limits_.modules[module];
        tests.bitrate.assign(limits.last_output - limits.first_output, {});
    }
}

template <bool is_noted> void Filling<is_noted>::begin(const AskedParts& asked, const Estrategia& strategy) {
    strategy_ = &strategy;
    lists_ = asked.lists();
    counts_ = asked.counts();
    with_positive_key_ = asked.with_positive_key();
    with_transcoding_ = asked.with_transcoding();
    placed_.clear();
    left_ = asked.count();
    filled_ = 0;
    std::fill(loads_.outputs.begin(), loads_.outputs.end(), PassLoads::Output{});
    std::fill(loads_.modules.begin(), loads_.modules.end(), PassLoads::Module{});
    std::fill(loads_.on_input.begin(), loads_.on_input.end(), 0);
    std::fill(seating_.stream_of.begin(), seating_.stream_of.end(), no_index);
    std::fill(seating_.output_of.begin(), seating_.output_of.end(), no_index);
    const char modes[] = {strategy.primera, strategy.segunda, strategy.otras};
    ranks_most_ = std::count(std::begin(modes), std::end(modes), reglas::MODO_MAX) != 0;
    ranks_fewest_ = std::count(std::begin(modes), std::end(modes), reglas::MODO_MIN) != 0;
    criterion_ = criterion();
    rank_all([&](std::uint32_t stream) { return asked.counting(stream, criterion_); });
    filled_at_ = never;
}

template <bool is_noted> void Filling<is_noted>::run(const AskedParts& asked, const Estrategia& strategy) {
    begin(asked, strategy);
    Estado state = reglas::estadoDeRelleno(headend_.resource);
    for (;;) {
        switch (state) {
        case Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING:
            state = fill();
            break;
        case Estado::STATUS_CHECK_EMPTY_INPUT:
            state = check();
            break;
        case Estado::STATUS_UNCOMPLETE_MODULES:
            state = complete();
            break;
        default:
            return;
        }
    }
}

// ---- Which stream is next ---------------------------------------------------------------------------

template <bool is_noted> template <class Count> void Filling<is_noted>::rank_all(const Count& count) {
    if (ranks_most_)
        most_.assign(counts_.size(), count);
    if (ranks_fewest_)
        fewest_.assign(counts_.size(), count);
    ranked_at_ = changes_;
}

template <bool is_noted> void Filling<is_noted>::rank_all() {
    criterion_ = criterion();
    rank_all([this](std::uint32_t stream) { return counting(stream); });
}

/// Of what is left of the stream.
template <bool is_noted> std::uint32_t Filling<is_noted>::counting(std::uint32_t stream) const {
    std::uint32_t number = 0;
    for (const PartIndex* part = waiting_begin(stream); part != waiting_end(stream); ++part)
        number += reglas::cuentaParaElegir(headend_.parts[*part].key, headend_.parts[*part].transcoding,
                                           criterion_);
    return number;
}

/// What counts depends on what is left: with the last service of its kind a rule falls away.
template <bool is_noted> void Filling<is_noted>::rank(std::uint32_t changed) {
    const reglas::Criterio now = criterion();
    if (now.soloClavesPositivas != criterion_.soloClavesPositivas ||
        now.soloDeSuClase != criterion_.soloDeSuClase)
        return rank_all();
    const std::uint32_t number = counting(changed);
    if (ranks_most_)
        most_.set(changed, number);
    if (ranks_fewest_)
        fewest_.set(changed, number);
    ranked_at_ = changes_;
}

// ---- Placing one ------------------------------------------------------------------------------------

/// The limits of the outputs, and the PIDs.
template <bool is_noted>
std::uint32_t Filling<is_noted>::output_for(std::uint32_t module, const RehearsedPart& part) {
    const FlatModules::Module& limits = limits_.modules[module];
    const PassLoads::Module& load = loads_.modules[module];
    const bool pids_fit = reglas::cabenPIDs(load.pids, part.pids, limits.pids_max);
    if constexpr (!is_noted)
        if (!pids_fit)
            return limits.last_output;
    std::uint32_t output = limits.first_output;
    for (; output != limits.last_output; ++output) {
        const OutputCapacity& ceiling = limits_.outputs[output];
        const PassLoads::Output& now = loads_.outputs[output];
        const bool bitrate_fits = reglas::cabeBitrate(now.bitrate, part.bitrate, ceiling.bitrate_max);
        if constexpr (is_noted) {
            if (!reglas::cabeOtroServicio(now.services, ceiling.service_max))
                continue;
            const std::uint64_t needed =
                reglas::techoPara(static_cast<std::uint32_t>(now.bitrate + part.bitrate));
            LimitTests& tests = bitrate_tests(module, output);
            if (!bitrate_fits) {
                tests.failed_under(needed);
                continue;
            }
            tests.passed_at(needed);
            if (pids_fit)
                tests_[module].pids.passed_at(std::uint64_t{load.pids} + part.pids);
            else
                tests_[module].pids.failed();
        }
        if (reglas::cabe(reglas::cabeOtroServicio(now.services, ceiling.service_max), bitrate_fits, pids_fit))
            break;
    }
    return output;
}

template <bool is_noted>
bool Filling<is_noted>::takes_transcoder(std::uint32_t module, const RehearsedPart& part) {
    const FlatModules::Module& limits = limits_.modules[module];
    PassLoads::Module& load = loads_.modules[module];
    const bool is_left = reglas::quedaTranscoder(load.sd, load.hd, limits.sd_max, limits.hd_max);
    if constexpr (is_noted) {
        LimitTests& tests = load.hd != 0 ? tests_[module].hd_transcoders : tests_[module].sd_transcoders;
        if (is_left)
            tests.passed_at(std::uint64_t{load.sd} + load.hd + 1);
        else
            tests.failed();
    }
    if (is_left)
        ++(part.is_hd ? load.hd : load.sd);
    return is_left;
}

template <bool is_noted>
bool Filling<is_noted>::seat(std::uint32_t module, std::uint32_t input, PartIndex index) {
    const RehearsedPart& part = headend_.parts[index];
    const std::uint32_t output = output_for(module, part);
    if (output == limits_.modules[module].last_output ||
        (reglas::ocupaTranscoder(part.transcoding) && !takes_transcoder(module, part)))
        return false;
    loads_.outputs[output].bitrate += part.bitrate;
    ++loads_.outputs[output].services;
    loads_.modules[module].pids = static_cast<std::uint16_t>(loads_.modules[module].pids + part.pids);
    seating_.output_of[index] = output;
    seating_.input_of[index] = input;
    return true;
}

template <bool is_noted> void Filling<is_noted>::no_longer_waits(PartIndex index) {
    const RehearsedPart& part = headend_.parts[index];
    with_positive_key_ -= reglas::esClavePositiva(part.key);
    with_transcoding_ -= reglas::necesitaTranscoding(part.transcoding);
}

template <bool is_noted> void Filling<is_noted>::take(PartIndex part) {
    const std::uint32_t stream = headend_.parts[part].stream;
    PartIndex* const begin = lists_.data() + headend_.streams[stream].first;
    PartIndex* const end = begin + counts_[stream];
    PartIndex* const place = std::find(begin, end, part);
    std::copy(place + 1, end, place);
    --counts_[stream];
    --left_;
    no_longer_waits(part);
    ++changes_;
}

// ---- The states -------------------------------------------------------------------------------------

/// Those that do not fit stay in the list.
template <bool is_noted>
std::uint32_t Filling<is_noted>::offer(std::uint32_t module, std::uint32_t input, std::uint32_t stream,
                                       bool all) {
    PartIndex* const begin = lists_.data() + headend_.streams[stream].first;
    PartIndex* const end = begin + counts_[stream];
    PartIndex* stays = begin;
    for (const PartIndex* part = begin; part != end; ++part) {
        const PartIndex index = *part;
        *stays = index;
        if ((all || reglas::entraEnRelleno(headend_.parts[index].transcoding, false)) &&
            seat(module, input, index)) {
            placed_.push_back(index);
            no_longer_waits(index);
        } else {
            ++stays;
        }
    }
    const auto number = static_cast<std::uint32_t>(end - stays);
    counts_[stream] -= number;
    left_ -= number;
    loads_.on_input[input] += number;
    if (number != 0)
        note_change(module);
    return number;
}

template <bool is_noted>
std::uint32_t Filling<is_noted>::fill(std::uint32_t module, std::uint32_t input, std::uint32_t stream) {
    const std::uint32_t number = offer(module, input, stream, false);
    if (number == 0)
        return 0;
    seating_.stream_of[input] = stream;
    rank(stream);
    return number;
}

template <bool is_noted> Estado Filling<is_noted>::fill() {
    filled_ = 0;
    if (filled_at_ == changes_)
        return reglas::trasRellenar(filled_, Estado::STATUS_CHECK_EMPTY_INPUT);
    if (ranked_at_ != changes_)
        rank_all();
    for (std::uint32_t module = 0; module < limits_.modules.size() && left_ != 0; ++module) {
        const FlatModules::Module& limits = limits_.modules[module];
        for (std::uint32_t input = limits.first_input; input < limits.last_input; ++input) {
            const char mode =
                reglas::modoDeEntrada(*strategy_, static_cast<std::uint16_t>(input - limits.first_input + 1));
            if (loads_.on_input[input] != 0 || left_ == 0 || mode == reglas::NO_SE_OFRECE)
                continue;
            const std::uint32_t stream = mode == reglas::MODO_MAX ? most_.first() : fewest_.first();
            if (stream != no_index)
                filled_ += static_cast<int>(fill(module, input, stream));
        }
    }
    filled_at_ = filled_ == 0 ? changes_ : never;
    return reglas::trasRellenar(filled_, Estado::STATUS_CHECK_EMPTY_INPUT);
}

template <bool is_noted> bool Filling<is_noted>::has_room(std::uint32_t module) {
    const FlatModules::Module& limits = limits_.modules[module];
    const PassLoads::Module& load = loads_.modules[module];
    const bool are_pids_left = reglas::sobranPIDs(load.pids, limits.pids_max);
    if constexpr (is_noted) {
        if (are_pids_left)
            tests_[module].pids.passed_at(std::uint64_t{load.pids} + 1);
        else
            tests_[module].pids.failed();
    }
    for (std::uint32_t output = limits.first_output; are_pids_left && output != limits.last_output;
         ++output) {
        const std::uint32_t most = limits_.outputs[output].bitrate_max;
        const PassLoads::Output& now = loads_.outputs[output];
        const bool has_room =
            reglas::tieneSitio(now.services, limits_.outputs[output].service_max, now.bitrate, most);
        if constexpr (is_noted)
            if (reglas::cabeOtroServicio(now.services, limits_.outputs[output].service_max)) {
                // Under the margin the rule turns round, and a larger value may have less to spare.
                const std::uint64_t needed = std::uint64_t{now.bitrate} + reglas::MARGEN_BITRATE + 1;
                LimitTests& tests = bitrate_tests(module, output);
                if (most < reglas::MARGEN_BITRATE)
                    tests.failed_under(reglas::MARGEN_BITRATE);
                else if (!has_room)
                    tests.failed_under(needed);
                else
                    tests.passed_at(needed);
            }
        if (has_room)
            return true;
    }
    return false;
}

template <bool is_noted> Estado Filling<is_noted>::check() {
    bool some_has_room = false;
    for (std::uint32_t module = 0; module < limits_.modules.size() && left_ != 0 && !some_has_room; ++module)
        some_has_room = has_room(module);
    const bool is_any_empty =
        std::find(loads_.on_input.begin(), loads_.on_input.end(), 0U) != loads_.on_input.end();
    return reglas::trasComprobar(left_ != 0, some_has_room, is_any_empty, headend_.resource);
}

template <bool is_noted> Estado Filling<is_noted>::complete() {
    Estado next = Estado::STATUS_UNIFY_INPUTS;
    for (std::uint32_t module = 0; module < limits_.modules.size() && left_ != 0; ++module)
        if (has_room(module))
            next = complete(module, next);
    return next;
}

template <bool is_noted> Estado Filling<is_noted>::complete(std::uint32_t module, Estado next) {
    const FlatModules::Module& limits = limits_.modules[module];
    for (std::uint32_t input = limits.first_input; input < limits.last_input && left_ != 0; ++input) {
        const std::uint32_t stream = seating_.stream_of[input];
        if (stream != no_index && headend_.streams[stream].has_number)
            offer(module, input, stream, true);
        else
            next = reglas::trasEntradaLibre(filled_, headend_.resource);
    }
    return next;
}

template class Filling<false>;
template class Filling<true>;

} // namespace zarven::tool
