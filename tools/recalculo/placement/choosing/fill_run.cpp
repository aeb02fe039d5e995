#include "placement/choosing/fill_run.h"

#include <algorithm>

namespace zarven::tool {

using reglas::Estado;
using reglas::Estrategia;

FillRun::FillRun(const FillModel& model)
    : model_(model), outputs_(model.outputs.size()), modules_(model.modules.size()),
      streams_(model.inputs.size()), output_of_(model.parts.size()), input_of_(model.parts.size()),
      most_(Preference::most, model.streams.size()), fewest_(Preference::fewest, model.streams.size()) {}

void FillRun::reset(const AskedParts& asked) {
    lists_ = asked.lists();
    counts_ = asked.counts();
    with_positive_key_ = asked.with_positive_key();
    with_transcoding_ = asked.with_transcoding();
    placed_ = 0;
    left_ = asked.count();
    swept_ = 0;
    std::fill(outputs_.begin(), outputs_.end(), OutputLoad{});
    std::fill(modules_.begin(), modules_.end(), ModuleLoad{});
    std::fill(streams_.begin(), streams_.end(), no_index);
    std::fill(output_of_.begin(), output_of_.end(), no_index);
}

void FillRun::run(const AskedParts& asked, const Estrategia& strategy) {
    reset(asked);
    const char modes[] = {strategy.primera, strategy.segunda, strategy.otras};
    ranks_most_ = std::count(std::begin(modes), std::end(modes), reglas::MODO_MAX) != 0;
    ranks_fewest_ = std::count(std::begin(modes), std::end(modes), reglas::MODO_MIN) != 0;
    criterion_.soloClavesPositivas = with_positive_key_ != 0;
    criterion_.soloDeSuClase = with_transcoding_ != 0;
    rank_all([&](std::uint32_t stream) { return asked.counting(stream, criterion_); });
    Estado state = reglas::estadoDeRelleno(model_.resource);
    for (;;) {
        switch (state) {
        case Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING:
            state = sweep(strategy);
            break;
        case Estado::STATUS_CHECK_EMPTY_INPUT:
            state = check();
            break;
        case Estado::STATUS_UNCOMPLETE_MODULES:
            state = top_up();
            break;
        default:
            return;
        }
    }
}

bool FillRun::counts(const FillPart& part) const {
    return reglas::cuentaParaElegir(part.key, part.transcoding, criterion_);
}

template <class Count> void FillRun::rank_all(const Count& count) {
    if (ranks_most_)
        most_.assign(counts_.size(), count);
    if (ranks_fewest_)
        fewest_.assign(counts_.size(), count);
}

/// Of what is left of the stream.
std::uint32_t FillRun::counting(std::uint32_t stream) const {
    const PartIndex* part = lists_.data() + model_.streams[stream].first;
    std::uint32_t number = 0;
    for (const PartIndex* end = part + counts_[stream]; part != end; ++part)
        number += counts(model_.parts[*part]);
    return number;
}

/// What counts depends on what is left: with the last service of its kind a rule falls away.
void FillRun::rank(std::uint32_t changed) {
    const reglas::Criterio criterion{with_positive_key_ != 0, with_transcoding_ != 0, false};
    if (criterion.soloClavesPositivas != criterion_.soloClavesPositivas ||
        criterion.soloDeSuClase != criterion_.soloDeSuClase) {
        criterion_ = criterion;
        rank_all([this](std::uint32_t stream) { return counting(stream); });
        return;
    }
    const std::uint32_t number = counting(changed);
    if (ranks_most_)
        most_.set(changed, number);
    if (ranks_fewest_)
        fewest_.set(changed, number);
}

std::uint32_t FillRun::chosen(char mode) const {
    return mode == reglas::MODO_MAX ? most_.first() : fewest_.first();
}

Estado FillRun::sweep(const Estrategia& strategy) {
    swept_ = 0;
    for (std::uint32_t module = 0; module < modules_.size(); ++module)
        for (std::uint32_t input = model_.modules[module].first_input;
             input < model_.modules[module].last_input; ++input) {
            const char mode = reglas::modoDeEntrada(strategy, model_.inputs[input]);
            if (streams_[input] != no_index || left_ == 0 || mode == reglas::NO_SE_OFRECE)
                continue;
            const std::uint32_t stream = chosen(mode);
            if (stream != no_index)
                swept_ += static_cast<int>(fill(module, input, stream));
        }
    return reglas::trasRellenar(swept_, Estado::STATUS_CHECK_EMPTY_INPUT);
}

std::uint32_t FillRun::fill(std::uint32_t module, std::uint32_t input, std::uint32_t stream) {
    const std::uint32_t number = offer(module, input, stream, false);
    if (number == 0)
        return 0;
    streams_[input] = stream;
    rank(stream);
    return number;
}

/// Those that do not fit stay in the list.
std::uint32_t FillRun::offer(std::uint32_t module, std::uint32_t input, std::uint32_t stream, bool all) {
    PartIndex* const begin = lists_.data() + model_.streams[stream].first;
    PartIndex* const end = begin + counts_[stream];
    PartIndex* stays = begin;
    for (const PartIndex* part = begin; part != end; ++part) {
        *stays = *part;
        const bool is_tried = all || model_.parts[*part].enters_fill;
        stays += is_tried && place(module, input, *part) ? 0 : 1;
    }
    const auto number = static_cast<std::uint32_t>(end - stays);
    counts_[stream] -= number;
    placed_ += number;
    left_ -= number;
    return number;
}

bool FillRun::place(std::uint32_t module, std::uint32_t input, PartIndex index) {
    const FillPart& part = model_.parts[index];
    const FillModule& limits = model_.modules[module];
    ModuleLoad& load = modules_[module];
    const bool pids_fit = reglas::cabenPIDs(load.pids, part.pids, limits.pids_max);
    if (!pids_fit)
        return false; // on no output
    std::uint32_t output = limits.first_output;
    for (; output != limits.last_output; ++output) {
        const FillOutput& ceiling = model_.outputs[output];
        if (reglas::cabe(reglas::cabeOtroServicio(outputs_[output].services, ceiling.services_max),
                         reglas::cabeBitrate(outputs_[output].bitrate, part.bitrate, ceiling.bitrate_max),
                         pids_fit))
            break;
    }
    if (output == limits.last_output)
        return false;
    if (part.takes_transcoder) {
        if (!reglas::quedaTranscoder(load.sd, load.hd, limits.sd_max, limits.hd_max))
            return false;
        ++(part.is_hd ? load.hd : load.sd);
    }
    outputs_[output].bitrate += part.bitrate;
    ++outputs_[output].services;
    load.pids = static_cast<std::uint16_t>(load.pids + part.pids);
    output_of_[index] = output;
    input_of_[index] = input;
    with_positive_key_ -= reglas::esClavePositiva(part.key);
    with_transcoding_ -= reglas::necesitaTranscoding(part.transcoding);
    return true;
}

bool FillRun::has_room(std::uint32_t module) const {
    const FillModule& limits = model_.modules[module];
    if (!reglas::sobranPIDs(modules_[module].pids, limits.pids_max))
        return false;
    for (std::uint32_t output = limits.first_output; output != limits.last_output; ++output)
        if (reglas::tieneSitio(outputs_[output].services, model_.outputs[output].services_max,
                               outputs_[output].bitrate, model_.outputs[output].bitrate_max))
            return true;
    return false;
}

bool FillRun::has_empty_input() const {
    return std::find(streams_.begin(), streams_.end(), no_index) != streams_.end();
}

Estado FillRun::check() const {
    bool some_has_room = false;
    for (std::uint32_t module = 0; module < modules_.size() && !some_has_room; ++module)
        some_has_room = has_room(module);
    return reglas::trasComprobar(left_ != 0, some_has_room, has_empty_input(), model_.resource);
}

Estado FillRun::top_up() {
    Estado next = Estado::STATUS_UNIFY_INPUTS;
    for (std::uint32_t module = 0; module < modules_.size() && left_ != 0; ++module)
        if (has_room(module))
            next = top_up(module, next);
    return next;
}

Estado FillRun::top_up(std::uint32_t module, Estado next) {
    for (std::uint32_t input = model_.modules[module].first_input;
         input < model_.modules[module].last_input && left_ != 0; ++input) {
        const std::uint32_t stream = streams_[input];
        if (stream != no_index && model_.streams[stream].has_number)
            offer(module, input, stream, true);
        else
            next = reglas::trasEntradaLibre(swept_, model_.resource);
    }
    return next;
}

} // namespace zarven::tool
