// Services are told apart by their place in the head-end, so that two with the same numbers stay two.

#include "placement/choosing/choice.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "headend/number_in_stream.h"
#include "placement/audit/audit.h"
#include "placement/one_of.h"
#include "placement/reasons/reason.h"
#include "placement/reasons/refusal.h"
#include "placement/running/bounded_run.h"
#include "placement/running/capacity.h"
#include "placement/running/host.h"
#include "placement/services.h"

namespace zarven::tool {

namespace {

/// A run of a head-end, and where its services stand.
class ChosenRun {
public:
    ChosenRun(const Headend& headend, const std::string& file)
        : headend_(headend), run_(load_engine(headend, file)), capacities_(capacities_of(run_)) {
        run_engine(run_, file);
        for (const auto& [mac, module] : run_.engine.Mapa_ModulosCabecera_Final)
            note_places(mac, module);
    }

    /// As the first, but for a run that does not end within its limits: that one places nothing.
    static ChosenRun or_stopped(const Headend& headend, const std::string& file) {
        try {
            return ChosenRun(headend, file);
        } catch (const EngineStopped&) {
            return not_run(headend, file);
        }
    }

    /// Loaded and not run: it places nothing.
    static ChosenRun not_run(const Headend& headend, const std::string& file) {
        return ChosenRun(headend, load_engine(headend, file));
    }

    bool is_stopped() const { return is_stopped_; }
    const EngineRun& run() const { return run_; }
    const tRec_Servicio* record(std::size_t service) const { return run_.services[service]; }
    bool is_placed(std::size_t service) const { return places_.count(record(service)) != 0; }
    const std::vector<Place>& places(std::size_t service) const { return places_.at(record(service)); }
    bool is_impossible(std::size_t service) const {
        return !why_none_could_take(capacities_, *record(service)).empty();
    }

    ChoiceSide side(Reserve reserve = {}) const {
        if (is_stopped_) {
            ChoiceSide side;
            side.counts.loaded = run_.engine.listaServicios.size();
            side.counts.not_asked_for = run_.not_asked_for;
            side.is_stopped = true;
            return side;
        }
        Result result = result_of(run_, headend_.name, Reasons::omitted);
        set_reserve(result, reserve);
        ChoiceSide side{result.counts, result.findings};
        side.cautions = cautions_of(result);
        for (std::size_t service = 0; service < headend_.services.size(); ++service)
            if (is_placed(service)) {
                side.musts += headend_.services[service].must ? 1 : 0;
                side.value += headend_.services[service].value;
            }
        return side;
    }

    /// Of a service that is loaded.
    ServiceResult described(std::size_t service) const {
        const auto is_this = [this, service](const auto& clone) { return clone.get() == record(service); };
        return describe(*record(service), std::any_of(run_.clones.begin(), run_.clones.end(), is_this));
    }

    /// Of a service that is not placed.
    std::string reason(std::size_t service) {
        if (!state_) {
            state_.emplace(run_);
            left_out_ = set_of(left_out_of(run_));
        }
        return left_out_.count(record(service)) != 0 ? reason_left_out(*state_, *record(service)).text
                                                     : reason_neither(run_, *record(service));
    }

private:
    ChosenRun(const Headend& headend, EngineRun stopped)
        : headend_(headend), run_(std::move(stopped)), capacities_(capacities_of(run_)), is_stopped_(true) {}

    void note_places(const std::string& mac, const tRec_Modulo& module) {
        std::map<const tRec_Servicio*, Place> here;
        for (const auto& [number, output] : module.mapSalidas)
            for (const auto& [key, service] : output.MapaServicios) {
                here[service.get()].mac = mac;
                here[service.get()].outputs.push_back(output.NumSalida);
            }
        for (const auto& [number, input] : module.mapEntradas)
            for (const auto& [key, service] : input.MapaServicios) {
                const auto found = here.find(service.get());
                if (found != here.end() && found->second.input == 0)
                    found->second.input = input.NumEntrada;
            }
        for (auto& [service, place] : here)
            places_[service].push_back(std::move(place));
    }

    const Headend& headend_;
    EngineRun run_;
    std::vector<ModuleCapacity> capacities_;
    std::map<const tRec_Servicio*, std::vector<Place>> places_;
    std::optional<FinalState> state_;
    ServiceSet left_out_;
    bool is_stopped_ = false;
};

class Reporting {
public:
    Reporting(const Headend& headend, const Choice& choice, const std::string& file)
        : headend_(headend), file_(file), chosen_headend_(with_choice(headend, choice)),
          all_(ChosenRun::or_stopped(headend, file)), chosen_(chosen_headend_, file) {}

    ChoiceReport report(const Choice& choice, const Result* kept, Reserve reserve) && {
        report_.name = headend_.name;
        for (const Module& module : headend_.modules)
            if (!module.label.empty())
                report_.labels.emplace(module.mac, module.label);
        report_.all = all_.side(reserve);
        report_.chosen = chosen_.side(reserve);
        report_.musts = reach_of_musts(headend_, file_);
        report_.value = reach_of_value(headend_, file_);
        note_groups();
        report_.states = choice.states;
        report_.engine_runs = choice.engine_runs;
        report_.is_given_back = choice.is_given_back;
        for (std::size_t service = 0; service < headend_.services.size(); ++service)
            if (headend_.services[service].ask)
                sort_in(service);
        add_missed();
        if (kept != nullptr)
            add_moves(*kept);
        return std::move(report_);
    }

private:
    /// What stands for each service of a one-of group with everything asked for, and in the choice: the
    /// variant that is asked for.
    void note_groups() {
        all_variant_.resize(headend_.services.size());
        std::iota(all_variant_.begin(), all_variant_.end(), std::size_t{0});
        chosen_variant_ = best_variant_ = all_variant_;
        for (const OneOf& group : one_of_groups(headend_.services)) {
            const auto asked_in = [&group](const ChosenRun& run) {
                const auto found =
                    std::find_if(group.variants.begin(), group.variants.end(),
                                 [&run](std::size_t variant) { return run.record(variant) != nullptr; });
                return static_cast<std::size_t>(found - group.variants.begin());
            };
            const std::size_t chosen = asked_in(chosen_);
            for (const std::size_t variant : group.variants) {
                best_variant_[variant] = group.variants.front();
                all_variant_[variant] = group.variants[asked_in(all_)];
                if (chosen != group.variants.size())
                    chosen_variant_[variant] = group.variants[chosen];
            }
            if (chosen == group.variants.size())
                continue;
            report_.exchanged_variants += asked_in(all_) != chosen ? 1 : 0;
            const std::size_t service = group.variants[chosen];
            report_.variants.push_back({group.name, described(service), chosen_.is_placed(service),
                                        chosen + 1, group.variants.size()});
        }
    }

    /// With the choice, another of its group is asked for.
    bool gives_way(std::size_t service) const { return chosen_variant_[service] != service; }
    bool is_withheld(std::size_t service) const { return chosen_.record(service) == nullptr; }
    bool is_in_choice(std::size_t service) const {
        return !is_withheld(service) && chosen_.is_placed(service);
    }

    ServiceResult described(std::size_t service) const {
        return (all_.record(service) != nullptr ? all_ : chosen_).described(service);
    }

    ValuedService valued(std::size_t service) const {
        return {described(service), headend_.services[service].value, headend_.services[service].must};
    }

    void sort_in(std::size_t service) {
        report_.has_values = report_.has_values || headend_.services[service].value != 1;
        // Of a group the best variant, which is a must if any is.
        if (headend_.services[service].must && best_variant_[service] == service &&
            !(is_in_choice(chosen_variant_[service]) && headend_.services[chosen_variant_[service]].must))
            missed_.push_back(service);
        // A group is told of by what is asked for of it.
        if (all_.record(service) == nullptr && chosen_.record(service) == nullptr)
            return;
        const bool was = all_.is_placed(all_variant_[service]);
        const bool is = is_in_choice(chosen_variant_[service]);
        if (gives_way(service))
            return;
        if (is_withheld(service))
            report_.withheld.push_back(valued(service));
        if (is && !was)
            report_.gained.push_back({valued(service), chosen_.places(service), false});
        if (was && !is)
            report_.lost.push_back(
                {valued(all_variant_[service]), all_.places(all_variant_[service]), is_withheld(service)});
    }

    /// All of them together have the time of one run.
    void add_missed() {
        const host::TimeOfOneRun time;
        for (const std::size_t service : missed_)
            report_.missed.push_back(is_withheld(service) ? missed_and_withheld(service, time)
                                                          : missed_and_left_out(service));
    }

    MissedMust missed_and_left_out(std::size_t service) {
        MissedMust missed{described(service), false, chosen_.is_impossible(service)};
        missed.service.reason = chosen_.reason(service);
        return missed;
    }

    /// It is asked for once more: the engine then tells why it is left out, or places it at a price.
    MissedMust missed_and_withheld(std::size_t service, const host::TimeOfOneRun& time) const {
        Headend with_it = chosen_headend_;
        with_it.services[service].ask = true;
        const bool is_over = time.is_over();
        ChosenRun asked =
            is_over ? ChosenRun::not_run(with_it, file_) : ChosenRun::or_stopped(with_it, file_);
        MissedMust missed{asked.described(service), true, asked.is_impossible(service)};
        missed.service.reason = is_over ? "It is withheld."
                                : asked.is_stopped()
                                    ? "It is withheld: asked for, the engine does not end within its limits."
                                : asked.is_placed(service) ? price_of(asked)
                                                           : asked.reason(service);
        return missed;
    }

    std::string price_of(const ChosenRun& asked) const {
        const ChoiceSide side = asked.side();
        if (broken_among(side.findings).all() != 0)
            return "It is withheld: asked for, it is placed, and something else is broken.";
        return fmt::format(
            "It is withheld: asked for, it is placed, and with it {} of {} musts and a value of {}.",
            side.musts, report_.musts.wanted, side.value);
    }

    void add_moves(const Result& kept) {
        const std::vector<PlacedService> before = placed_services(kept);
        const std::vector<PlacedService> after =
            placed_services(result_of(chosen_.run(), headend_.name, Reasons::omitted));
        const Matches matches = match(before, after);
        MovesAgainstKept moves;
        for (const auto& [from, to] : matches.pairs) {
            const PlacedService& was = before[from];
            const PlacedService& is = after[to];
            if (was.places.empty())
                continue;
            if (is.places.empty())
                ++moves.gone;
            else if (is_moved(was.places, is.places))
                moves.moved.push_back({is.service, was.places, is.places, was.absence, is.absence});
            else
                ++moves.unmoved;
        }
        for (const std::size_t index : matches.only_before)
            moves.gone += before[index].places.empty() ? 0 : 1;
        report_.moves = std::move(moves);
    }

    const Headend& headend_;
    const std::string& file_;
    const Headend chosen_headend_;
    ChosenRun all_;
    ChosenRun chosen_;
    std::vector<std::size_t> missed_;
    std::vector<std::size_t> best_variant_;
    std::vector<std::size_t> all_variant_;
    std::vector<std::size_t> chosen_variant_;
    ChoiceReport report_;
};

} // namespace

bool is_sound(const ChoiceSide& side) {
    return !side.is_stopped && broken_among(side.findings).all() == 0;
}

std::size_t never_asked_for(const ChoiceReport& report) {
    return static_cast<std::size_t>(
        std::count_if(report.withheld.begin(), report.withheld.end(),
                      [](const ValuedService& service) { return service.value == 0 && !service.must; }));
}

bool is_to_be_given_back(const ChoiceReport& report) {
    return !report.is_given_back && report.withheld.size() > never_asked_for(report);
}

bool is_less_than_all(const ChoiceReport& report) {
    const auto reached = [](const ChoiceSide& side) {
        return std::make_tuple(is_sound(side), side.musts, side.value);
    };
    return is_sound(report.all) && reached(report.all) > reached(report.chosen) &&
           never_asked_for(report) != 0;
}

StaysPut stays_put(const Headend& headend, const Result& kept) {
    std::vector<PlacedService> wanted;
    for (const Service& service : headend.services) {
        PlacedService made;
        made.service.stream = stream_of(service);
        made.service.lcn = service.lcn;
        made.service.sid = service.sid;
        made.service.name = service.name;
        wanted.push_back(std::move(made));
    }
    const std::vector<PlacedService> placed = placed_services(kept);
    StaysPut stays;
    stays.module.resize(wanted.size());
    stays.output.resize(wanted.size());
    stays.input.resize(wanted.size());
    stays.asked.resize(wanted.size());
    for (const auto& [from, to] : match(placed, wanted).pairs) {
        stays.asked[to] = true;
        if (!placed[from].places.empty()) {
            stays.module[to] = placed[from].places.front().mac;
            stays.output[to] = placed[from].places.front().outputs.front();
            stays.input[to] = placed[from].places.front().input;
        }
    }
    // The later services of a key are clones to the engine, and stand in the result as such.
    std::set<NumberInStream> keys;
    for (std::size_t service = 0; service < wanted.size(); ++service)
        if (stays.asked[service])
            keys.insert(lcn_in_stream_of(headend.services[service]));
    for (std::size_t service = 0; service < wanted.size(); ++service)
        stays.asked[service] = keys.count(lcn_in_stream_of(headend.services[service])) != 0;
    return stays;
}

Headend with_choice(Headend headend, const Choice& choice) {
    for (std::size_t service = 0; service < headend.services.size(); ++service) {
        Service& chosen = headend.services[service];
        chosen.ask = choice.asked[service];
        chosen.yields = false;
        // What is worth nothing but by the command line stands for its group all the same.
        if (chosen.ask && !may_be_asked_for(chosen))
            chosen.one_of.clear();
    }
    return headend;
}

ChoiceReport report_of(const Headend& headend, const Choice& choice, const Result* kept,
                       const std::string& file, Reserve reserve) {
    return Reporting(headend, choice, file).report(choice, kept, reserve);
}

} // namespace zarven::tool
