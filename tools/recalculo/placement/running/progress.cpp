// The engine says in which state it enters, and which option it begins and ends.

#include "placement/running/progress.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "Reglas.h"
#include "placement/strategy_names.h"

namespace zarven::tool {

namespace {

struct Sign {
    std::string_view beginning;
    Phase phase;
};
constexpr std::string_view search_sign = "soy el servicio nº";
constexpr std::array<Sign, 9> signs = {{
    {" RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_", Phase::fill},
    {" RecalculationAlgorithm ---> STATUS_CHECK_EMPTY_INPUT", Phase::check},
    {" RecalculationAlgorithm ---> STATUS_UNCOMPLETE_MODULES", Phase::complete},
    {" RecalculationAlgorithm ---> STATUS_UNIFY_INPUTS", Phase::unify},
    {" RecalculationAlgorithm ---> STATUS_OPTIMIZE", Phase::optimize},
    {"END OPTION ", Phase::compare},
    {"Mapa_Servicios_Procesado NOT EMPTY", Phase::compare},
    {"Una vez que hemos terminado de reordenar todo", Phase::clones},
    {"**************** END Service Recalculation", Phase::done},
}};

bool begins_with(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

/// The strategy that the line announces, from 1; else 0.
std::size_t strategy_in(std::string_view line) {
    for (std::size_t index = 0; index < strategy_count; ++index)
        if (reglas::anuncia(line, reglas::ESTRATEGIAS[index]))
            return index + 1;
    return 0;
}

std::string_view word_for(Phase phase) {
    switch (phase) {
    case Phase::prepare:
        return "prepare";
    case Phase::fill:
        return "fill";
    case Phase::check:
        return "check";
    case Phase::complete:
        return "complete";
    case Phase::unify:
        return "unify";
    case Phase::optimize:
        return "optimize";
    case Phase::compare:
        return "compare";
    case Phase::clones:
        return "attach clones";
    case Phase::done:
        return "done";
    }
    return "";
}

} // namespace

void take_note(Progress& progress, std::string_view line) {
    if (begins_with(line, reglas::INICIO_ROTULO)) {
        if (const std::size_t strategy = strategy_in(line); strategy != 0)
            progress = {strategy, Phase::fill};
        return;
    }
    if (begins_with(line, search_sign)) {
        ++progress.searched;
        return;
    }
    const auto sign = std::find_if(signs.begin(), signs.end(),
                                   [line](const Sign& known) { return begins_with(line, known.beginning); });
    if (sign == signs.end())
        return;
    progress.phase = sign->phase;
    progress.searched = 0;
    if (progress.phase == Phase::optimize)
        ++progress.optimization;
}

bool is_placing(const Progress& progress) {
    return progress.phase >= Phase::fill && progress.phase <= Phase::optimize;
}

std::size_t services_left(const tRecalculo& engine) {
    std::size_t left = 0;
    for (const auto& [onid, network] : engine.Mapa_ONIDs)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs)
            left += stream.MapRec_Services.size();
    return left;
}

std::string to_string(const Progress& progress) {
    std::string words;
    if (progress.strategy != 0 && progress.phase < Phase::clones)
        words = fmt::format("strategy {} of {}, {}: ", progress.strategy, strategy_count,
                            strategy_names[progress.strategy - 1]);
    words += word_for(progress.phase);
    if (progress.phase == Phase::optimize)
        words += fmt::format(" {}", progress.optimization);
    if (progress.searched != 0)
        words += fmt::format(", service {}", progress.searched);
    return words;
}

} // namespace zarven::tool
