// Each strategy gets an engine loaded anew: engines share nothing, while copies of the modules of one engine
// share their services.

#include "placement/strategies.h"

#include <algorithm>
#include <utility>

#include "Reglas.h"
#include "base/workers.h"
#include "placement/running/bounded_run.h"

namespace zarven::tool {

namespace {

/// What one strategy comes to.
struct Trial {
    EngineRun run;
    Strategy strategy;
    /// For each loaded service, whether it is on some output.
    std::vector<bool> is_placed;
};

std::vector<bool> placement_of(const tRecalculo& engine) {
    std::vector<const tRec_Servicio*> placed;
    for (const auto& [mac, module] : engine.Mapa_ModulosCabecera_Final)
        for (const auto& [number, output] : module.mapSalidas)
            for (const auto& [key, service] : output.MapaServicios)
                placed.push_back(service.get());
    std::sort(placed.begin(), placed.end());
    std::vector<bool> is_placed;
    for (const auto& service : engine.listaServicios)
        is_placed.push_back(std::binary_search(placed.begin(), placed.end(), service.get()));
    return is_placed;
}

Trial try_strategy(const Headend& headend, const std::string& file, std::size_t index) {
    Trial trial;
    trial.run = load_engine(headend, file);
    const EngineRun& run = trial.run;
    trial.strategy = run_strategy(trial.run, index, file);

    const Result result = result_of(run, "", Reasons::omitted);
    trial.is_placed = placement_of(run.engine);
    Strategy& strategy = trial.strategy;
    strategy.placed = result.counts.placed;
    strategy.left_out = result.counts.left_out;
    strategy.neither = result.counts.neither;
    strategy.findings = result.findings.size();
    strategy.broken = broken_in(result).all();
    strategy.inputs_used = inputs_of(result).used;
    strategy.inputs = inputs_of(result).all;
    return trial;
}

Verdict verdict_of(reglas::Comparacion comparison) {
    switch (comparison) {
    case reglas::Comparacion::mejor:
        return Verdict::kept;
    case reglas::Comparacion::igual:
        return Verdict::tie;
    case reglas::Comparacion::peor:
        break;
    }
    return Verdict::worse;
}

std::vector<Contested> contested_by(const std::array<Trial, strategy_count>& trials) {
    // In all engines the services are loaded in the same order.
    const auto& loaded = trials.front().run.engine.listaServicios;
    std::vector<Contested> contested;
    for (std::size_t index = 0; index < loaded.size(); ++index) {
        Contested one;
        for (std::size_t strategy = 0; strategy < strategy_count; ++strategy)
            one.is_placed_by[strategy] = trials[strategy].is_placed[index];
        const auto times = std::count(one.is_placed_by.begin(), one.is_placed_by.end(), true);
        if (times == 0 || times == static_cast<std::ptrdiff_t>(strategy_count))
            continue;
        one.service = describe(*loaded[index], false);
        contested.push_back(std::move(one));
    }
    return contested;
}

} // namespace

Strategy run_strategy(EngineRun& run, std::size_t index, const std::string& file) {
    tRecalculo& engine = run.engine;
    reglas::prepararPasada(engine);
    run_bounded(run, file, [&] {
        engine.RecalculationAlgorithm(reglas::ESTRATEGIAS[index].opcion, engine.GetRecursoCabecera());
    });
    Strategy strategy;
    strategy.name = strategy_names[index];
    strategy.left_out_counted = engine.num_servicios_procesado();
    strategy.places_everything = reglas::colocaTodo(engine.Mapa_ONIDs);
    reglas::guardarPasada(engine);
    return strategy;
}

std::size_t index_of_kept(const std::array<Strategy, strategy_count>& list) {
    const auto kept = std::find_if(list.begin(), list.end(),
                                   [](const Strategy& one) { return one.verdict == Verdict::kept; });
    return static_cast<std::size_t>(kept - list.begin());
}

void judge(std::array<Strategy, strategy_count>& list) {
    std::size_t best = 0;
    for (std::size_t index = 0; index < strategy_count; ++index) {
        Strategy& strategy = list[index];
        const Strategy& rival = list[best];
        strategy.rival = best;
        if (index == 0)
            strategy.verdict = Verdict::kept;
        else if (rival.places_everything)
            strategy.verdict = Verdict::not_tried;
        else
            strategy.verdict =
                verdict_of(reglas::comparar(strategy.left_out_counted, rival.left_out_counted));
        if (index != 0 && strategy.verdict == Verdict::kept) {
            strategy.rival = index;
            list[best].verdict = Verdict::surpassed;
            list[best].rival = index;
            best = index;
        }
    }
}

Strategies strategies_of(const Headend& headend, const std::string& file) {
    std::array<Trial, strategy_count> trials;
    in_parallel(strategy_count, cores(),
                [&](std::size_t index) { trials[index] = try_strategy(headend, file, index); });
    Strategies strategies;
    for (std::size_t index = 0; index < strategy_count; ++index)
        strategies.list[index] = trials[index].strategy;
    judge(strategies.list);
    strategies.contested = contested_by(trials);
    const std::size_t kept = index_of_kept(strategies.list);
    std::stable_partition(strategies.contested.begin(), strategies.contested.end(),
                          [kept](const Contested& one) { return !one.is_placed_by[kept]; });
    return strategies;
}

} // namespace zarven::tool
