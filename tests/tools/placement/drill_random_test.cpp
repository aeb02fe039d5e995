// Drills of small head-ends of every kind: every figure is counted anew, from runs of head-ends that are
// written down here, service by service.

#include "placement/failing/drill.h"

#include <algorithm>
#include <map>

#include <gtest/gtest.h>

#include "base/failure.h"
#include "placement/audit/audit.h"
#include "placement/made_services.h"
#include "placement/random_headend.h"
#include "placement/running/host.h"
#include "tries.h"

namespace zarven::tool::drill_random_test {
namespace {

Headend random_headend(unsigned seed) {
    const ModuleSizes sizes{{1, 4}, {1, 3}, {6000, 26000, 1000}, {4, 16}, {0, 2}, {0, 0}};
    Dice dice(seed);
    Headend headend;
    const unsigned modules = dice.one_of({1, 4});
    for (unsigned module = 0; module < modules; ++module)
        // Not in the order of their MACs.
        headend.modules.push_back(random_module(dice,
                                                letter(modules % 3 == 0 ? module : module * 3 % modules),
                                                module == modules / 2 || dice.once_in(7), sizes));
    const unsigned services = dice.one_of({1, 18});
    for (unsigned number = 0; number < services; ++number) {
        Service made = service(static_cast<std::uint16_t>(1 + number), dice.one_of({10, 70, 10}),
                               dice.one_of({1000, 7000, 500}), dice.up_to(3), dice.once_in(7) ? 1 : 0);
        made.video_format = dice.once_in(3) ? 4 : 0;
        made.must = seed % 2 == 0 && dice.once_in(4);
        made.ask = !dice.once_in(10);
        headend.services.push_back(made);
        if (dice.once_in(10))
            headend.clones.push_back(clone_of(made));
    }
    return headend;
}

/// Module, input and outputs of each service that is placed, by its LCN, which no two share. None where the
/// run does not count.
struct Spot {
    std::string mac;
    int input = 0;
    std::vector<int> outputs;
};
bool operator==(const Spot& one, const Spot& other) {
    return one.mac == other.mac && one.input == other.input && one.outputs == other.outputs;
}
using Spots = std::map<int, std::vector<Spot>>;

std::optional<Spots> spots_of(const Headend& headend) {
    if (headend.modules.empty())
        return {};
    EngineRun run = load_engine(headend, "f");
    try {
        run_engine(run, "f");
    } catch (const Failure&) {
        return {};
    }
    if (has_broken(run))
        return {};
    Spots spots;
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        for (std::size_t index = 0; index < headend.services.size(); ++index) {
            const tRec_Servicio* record = run.services[index];
            Spot spot{mac, 0, {}};
            for (const auto& [number, output] : module.mapSalidas)
                for (const auto& [key, placed] : output.MapaServicios)
                    if (placed.get() == record)
                        spot.outputs.push_back(output.NumSalida);
            for (const auto& [number, input] : module.mapEntradas)
                for (const auto& [key, placed] : input.MapaServicios)
                    if (placed.get() == record && spot.input == 0)
                        spot.input = input.NumEntrada;
            if (record != nullptr && !spot.outputs.empty())
                spots[headend.services[index].lcn].push_back(spot);
        }
    return spots;
}

struct Figures {
    std::vector<int> saved, lost, besides, gained;
    std::size_t moved = 0;
};

std::vector<int> lcns(const std::vector<DrilledService>& services) {
    std::vector<int> numbers;
    for (const DrilledService& one : services)
        numbers.push_back(one.service.lcn);
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

Headend without_module(Headend headend, const std::string& mac) {
    const auto is_it = [&mac](const Module& module) { return module.mac == mac; };
    headend.modules.erase(std::remove_if(headend.modules.begin(), headend.modules.end(), is_it),
                          headend.modules.end());
    // Whichever it is: the test finds the same figures.
    if (!headend.modules.empty())
        headend.modules.back().controller = true;
    return headend;
}

Headend without_input(Headend headend, const std::string& mac) {
    for (Module& module : headend.modules)
        if (module.mac == mac)
            module.inputs = static_cast<std::uint16_t>(module.inputs - 1);
    return headend;
}

Headend without_stream(Headend headend, int tsid) {
    for (Service& service : headend.services)
        if (service.tsid == tsid)
            service.ask = false;
    return headend;
}

template <class IsOff>
Figures figures_of(const Headend& headend, const Spots& before, const std::optional<Spots>& after,
                   IsOff is_off) {
    Figures figures;
    for (const Service& service : headend.services) {
        const int lcn = service.lcn;
        const bool was = before.count(lcn) != 0;
        const bool off = was && is_off(lcn, before.at(lcn));
        const bool is = after && after->count(lcn) != 0;
        if (off)
            (is ? figures.saved : figures.lost).push_back(lcn);
        else if (was && after && !is)
            figures.besides.push_back(lcn);
        else if (!was && is)
            figures.gained.push_back(lcn);
        else if (was && is && !(before.at(lcn) == after->at(lcn)))
            ++figures.moved;
    }
    return figures;
}

/// All single failures, told in the tool's words, that take something off the air.
std::map<std::string, Figures> failures_of(const Headend& headend, const Spots& before, bool has_streams) {
    std::map<std::string, Figures> all;
    const auto add = [&all](const std::string& key, const Figures& figures) {
        if (!figures.saved.empty() || !figures.lost.empty())
            all[key] = figures;
    };
    for (const Module& module : headend.modules) {
        const std::string& mac = module.mac;
        add(mac, figures_of(headend, before, spots_of(without_module(headend, mac)),
                            [&mac](int, const std::vector<Spot>& spots) {
                                return std::all_of(spots.begin(), spots.end(),
                                                   [&mac](const Spot& spot) { return spot.mac == mac; });
                            }));
        for (int number = 1; number <= module.inputs; ++number) {
            std::optional<Spots> after = spots_of(without_input(headend, mac));
            if (after)
                for (auto& [lcn, spots] : *after)
                    for (Spot& spot : spots)
                        if (spot.mac == mac && spot.input >= number)
                            ++spot.input;
            add(mac + std::to_string(number),
                figures_of(headend, before, after, [&mac, number](int, const std::vector<Spot>& spots) {
                    return std::all_of(spots.begin(), spots.end(), [&mac, number](const Spot& spot) {
                        return spot.mac == mac && spot.input == number;
                    });
                }));
        }
    }
    for (int tsid = 10; has_streams && tsid <= 70; tsid += 10)
        add("/" + std::to_string(tsid),
            figures_of(headend, before, spots_of(without_stream(headend, tsid)),
                       [&headend, tsid](int lcn, const std::vector<Spot>&) {
                           return headend.services[static_cast<std::size_t>(lcn - 1)].tsid == tsid;
                       }));
    return all;
}

std::string key_of(const FailedPart& part) {
    return part.kind == PartKind::stream ? "/" + std::to_string(part.stream.tsid)
                                         : part.mac + (part.input == 0 ? "" : std::to_string(part.input));
}

std::size_t count_kept(const Headend& headend, const std::vector<int>& lost, bool are_musts) {
    return static_cast<std::size_t>(std::count_if(lost.begin(), lost.end(), [&](int lcn) {
        return !are_musts || headend.services[static_cast<std::size_t>(lcn - 1)].must;
    }));
}

class RandomDrills : public testing::Test {
protected:
    void expect_failures(const Headend& headend, const Drill& drill, const Spots& before) {
        std::map<std::string, Figures> expected = failures_of(headend, before, true);
        ASSERT_EQ(drill.failures.size(), expected.size());
        std::vector<std::vector<std::size_t>> weights;
        for (const DrilledFailure& failure : drill.failures) {
            const std::string key = key_of(failure.part);
            SCOPED_TRACE(key);
            ASSERT_EQ(expected.count(key), 1u);
            const Figures& figures = expected[key];
            EXPECT_EQ(lcns(failure.saved), figures.saved);
            EXPECT_EQ(lcns(failure.lost), figures.lost);
            EXPECT_EQ(lcns(failure.lost_besides), figures.besides);
            EXPECT_EQ(lcns(failure.gained), figures.gained);
            EXPECT_EQ(failure.moved, figures.moved);
            const std::size_t musts =
                count_kept(headend, figures.lost, true) + count_kept(headend, figures.besides, true);
            EXPECT_EQ(failure.musts_lost(), musts);
            weights.push_back({musts, figures.lost.size() + figures.besides.size(),
                               figures.lost.size() + figures.saved.size(), figures.moved});
            moved_ += figures.moved;
            besides_ += figures.besides.size();
            gained_ += figures.gained.size();
            saved_ += figures.saved.size();
            musts_ += musts;
            unusable_ += failure.run == NewRun::usable ? 0 : 1;
        }
        EXPECT_TRUE(std::is_sorted(weights.rbegin(), weights.rend()));
        if (!drill.failures.empty()) {
            EXPECT_EQ(drill.worst_moved.size(), drill.failures.front().moved);
        }
        std::size_t inputs = 0;
        for (const Module& module : headend.modules)
            inputs += module.inputs;
        EXPECT_EQ(drill.taken_out.modules, headend.modules.size());
        EXPECT_EQ(drill.taken_out.inputs, inputs);
        EXPECT_EQ(drill.harmless.all() + drill.failures.size(), drill.taken_out.all());
    }

    void expect_spare(const Headend& headend, const Module& kind, const Spare& spare, const Spots& before) {
        const bool are_musts = std::any_of(headend.services.begin(), headend.services.end(),
                                           [](const Service& one) { return one.must && one.ask; });
        std::vector<int> kept;
        for (const auto& [lcn, spots] : before)
            if (!are_musts || headend.services[static_cast<std::size_t>(lcn - 1)].must)
                kept.push_back(lcn);
        EXPECT_EQ(spare.kept, kept.size());
        std::size_t tried = 0;
        for (const SpareAttempt& attempt : spare.attempts) {
            SCOPED_TRACE(attempt.number);
            EXPECT_EQ(attempt.number, tried++);
            Headend more = headend;
            for (std::size_t number = 0; number < attempt.number; ++number) {
                more.modules.push_back(kind);
                more.modules.back().mac = "Z" + std::to_string(number);
            }
            const std::optional<Spots> placed = spots_of(more);
            ASSERT_EQ(attempt.is_broken, !placed);
            if (!placed)
                continue;
            std::size_t failing = 0;
            std::size_t worst = 0;
            for (const auto& [key, figures] : failures_of(more, *placed, false)) {
                std::size_t lost = 0;
                for (const int lcn : kept) {
                    const auto has = [lcn](const std::vector<int>& list) {
                        return std::count(list.begin(), list.end(), lcn) != 0;
                    };
                    lost += has(figures.lost) || has(figures.besides) ? 1 : 0;
                }
                failing += lost != 0 ? 1 : 0;
                worst = std::max(worst, lost);
            }
            const auto missing = std::count_if(kept.begin(), kept.end(),
                                               [&placed](int lcn) { return placed->count(lcn) == 0; });
            EXPECT_EQ(attempt.missing, static_cast<std::size_t>(missing));
            EXPECT_EQ(attempt.failures, failing);
            EXPECT_EQ(attempt.worst, worst);
            const bool is_enough = missing == 0 && failing == 0;
            EXPECT_EQ(is_enough, spare.number == attempt.number);
        }
        EXPECT_EQ(spare.attempts.size(), spare.number.value_or(spare.most) + 1);
        found_ += spare.number.value_or(0) > 0 ? 1 : 0;
        not_found_ += spare.number ? 0 : 1;
    }

    host::Log no_log{""};
    std::size_t moved_ = 0, besides_ = 0, gained_ = 0, saved_ = 0, musts_ = 0, unusable_ = 0;
    std::size_t found_ = 0, not_found_ = 0, broken_ = 0;
};

TEST_F(RandomDrills, AreWhatRunsGive) {
    for (unsigned seed = 0; seed < tries(150) && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const Headend headend = random_headend(seed);
        const std::optional<Spots> before = spots_of(headend);
        DrillOptions options;
        options.has_streams = true;
        options.most = 3;
        options.jobs = 1 + seed % 2;
        Module kind = headend.modules.front();
        kind.controller = false;
        options.spare = kind;
        std::size_t runs_done = 0;
        std::size_t runs_planned = 0;
        options.progress = [&](std::size_t done, std::size_t planned) {
            EXPECT_LE(done, planned);
            runs_done = done;
            runs_planned = planned;
        };
        const Drill drill = drill_headend(headend, "f", options);
        EXPECT_EQ(runs_done, runs_planned);
        EXPECT_EQ(broken_among(drill.findings).all() == 0, before.has_value());
        EXPECT_EQ(drill.spare->attempts[0].is_broken, !before);
        if (!before) {
            ++broken_;
            continue;
        }
        expect_failures(headend, drill, *before);
        expect_spare(headend, kind, *drill.spare, *before);
        EXPECT_FALSE(drill.is_partial);
        EXPECT_EQ(drill.now.placed, before->size());
    }
    EXPECT_GT(moved_, met(100));
    EXPECT_GT(besides_, met(10));
    EXPECT_GT(gained_, met(10));
    EXPECT_GT(saved_, met(100));
    EXPECT_GT(musts_, met(10));
    EXPECT_GT(unusable_, met(5));
    EXPECT_GT(found_, met(10));
    EXPECT_GT(not_found_, met(3));
    EXPECT_GE(broken_, met(1));
}

} // namespace
} // namespace zarven::tool::drill_random_test
