// Each caution by itself: a result made by hand, first with numbers of their own, then with one that stands
// twice; and real runs, whose cautions are found again in another way.

#include "placement/audit/caution.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "placement/audit/caution_fields.h"
#include "placement/made_services.h"
#include "placement/result.h"
#include "placement/running/host.h"

namespace zarven::tool::caution_test {
namespace {

using Numbers = std::vector<std::uint16_t>;

ServiceResult placed(std::uint16_t lcn, std::uint16_t sid, const std::string& name) {
    ServiceResult made;
    made.stream = {1, static_cast<std::uint16_t>(1000 + sid)};
    made.lcn = lcn;
    made.sid = sid;
    made.name = "in " + name;
    made.output_name = name;
    made.bitrate = 1000;
    return made;
}

/// Module A with a label and two outputs, and module B with one; a service on each.
Result three_outputs() {
    Result result;
    result.modules.resize(2);
    result.modules[0].mac = "A";
    result.modules[0].label = "Rack 1";
    result.modules[0].outputs = {{1, 1000, 10000, 1, 512, {placed(1, 11, "one")}},
                                 {2, 1000, 10000, 1, 512, {placed(2, 12, "two")}}};
    result.modules[1].mac = "B";
    result.modules[1].outputs = {{1, 1000, 10000, 1, 512, {placed(3, 13, "three")}}};
    return result;
}

std::vector<ServiceResult>& services(Result& result, std::size_t module, std::size_t output) {
    return result.modules.at(module).outputs.at(output).services;
}

using Told = std::vector<std::string>;

Told told(const Result& result) {
    Told texts;
    for (const Caution& caution : cautions_of(result)) {
        EXPECT_FALSE(caution.is_broken);
        texts.push_back(std::string(Words<CautionKind>::of(caution.kind)) + ": " + text_of(caution));
    }
    return texts;
}

TEST(Cautions, NumbersAndNamesOfTheirOwnGiveNone) {
    EXPECT_EQ(told(Result()), Told{});
    EXPECT_EQ(told(three_outputs()), Told{});
}

TEST(Cautions, AnOutputWithoutRoomForTables) {
    Result result = three_outputs();
    result.modules[0].outputs[1].reserve = 9000;
    EXPECT_EQ(told(result), Told{});
    result.modules[0].outputs[1].reserve = 9001;
    EXPECT_EQ(
        told(result),
        Told{
            "no_room_for_tables: module A (Rack 1): no room for tables on output 2: its services take 1000 of "
            "10000 kbit/s and 9001 are to stay free, which is 1 too much"});
    EXPECT_EQ(cautions_of(result).at(0).macs, std::vector<std::string>{"A"});
}

TEST(Cautions, AnLcnTwiceOnAnOutput) {
    Result result = three_outputs();
    services(result, 0, 0).push_back(placed(1, 20, "twin"));
    EXPECT_EQ(told(result),
              Told{"lcn_on_output: LCN 1: 2 services on output 1 of module A (Rack 1) have it: LCN 1 "
                   "\"in one\" of stream 1/1011 and LCN 1 \"in twin\" of stream 1/1020"});
    services(result, 0, 0).back().lcn = 4;
    EXPECT_EQ(told(result), Told{});
}

TEST(Cautions, AnLcnOnTwoOutputs) {
    Result result = three_outputs();
    services(result, 1, 0)[0].lcn = 1;
    EXPECT_EQ(
        told(result),
        Told{
            "lcn_in_network: LCN 1: 2 services on different outputs have it: LCN 1 \"in one\" of stream 1/1011 "
            "on output 1 of module A (Rack 1) and LCN 1 \"in three\" of stream 1/1013 on output 1 of module "
            "B"});
    EXPECT_EQ(cautions_of(result).at(0).macs, (std::vector<std::string>{"A", "B"}));
}

TEST(Cautions, ANameTwice) {
    Result result = three_outputs();
    services(result, 0, 1)[0].output_name = "one";
    services(result, 0, 1)[0].name = "received so";
    EXPECT_EQ(told(result),
              Told{"name_in_network: output name \"one\": 2 services on different outputs have it: LCN "
                   "1 \"in one\" of stream 1/1011 on output 1 of module A (Rack 1) and LCN 2 \"received "
                   "so\" of stream 1/1012 on output 2 of module A (Rack 1)"});
    result = three_outputs();
    services(result, 0, 0).push_back(placed(4, 20, "one"));
    EXPECT_EQ(told(result),
              Told{"name_on_output: output name \"one\": 2 services on output 1 of module A (Rack 1) "
                   "have it: LCN 1 \"in one\" of stream 1/1011 and LCN 4 \"in one\" of stream 1/1020"});
    // Nobody sees the name as received, and a name is what it is to the letter.
    result = three_outputs();
    services(result, 0, 1)[0].name = services(result, 0, 0)[0].name;
    services(result, 1, 0)[0].output_name = "One";
    EXPECT_EQ(told(result), Told{});
}

TEST(Cautions, ASidOnTwoOutputs) {
    Result result = three_outputs();
    services(result, 1, 0)[0].sid = 11;
    EXPECT_EQ(
        told(result),
        Told{
            "sid_in_network: SID 11: 2 services on different outputs have it: LCN 1 \"in one\" of stream 1/1011 "
            "on output 1 of module A (Rack 1) and LCN 3 \"in three\" of stream 1/1013 on output 1 of module "
            "B"});
    // On one output it is broken, which the audit tells.
    result = three_outputs();
    services(result, 0, 0).push_back(placed(4, 11, "other"));
    EXPECT_EQ(told(result), Told{});
}

TEST(Cautions, WhatIsTwiceOnOneOutputAndOnAnotherIsBoth) {
    Result result = three_outputs();
    services(result, 0, 0).push_back(placed(1, 20, "twin"));
    services(result, 1, 0)[0].lcn = 1;
    ASSERT_EQ(told(result).size(), 2u);
    EXPECT_EQ(told(result)[0].find("lcn_on_output: LCN 1: 2 services on output 1"), 0u);
    EXPECT_EQ(told(result)[1].find("lcn_in_network: LCN 1: 3 services on different outputs"), 0u);
}

TEST(Cautions, NoLcnAndNoNameAreNotShared) {
    Result result = three_outputs();
    services(result, 0, 0).push_back(placed(0, 20, ""));
    services(result, 0, 0).push_back(placed(0, 21, ""));
    services(result, 1, 0).push_back(placed(0, 22, ""));
    EXPECT_EQ(told(result), Told{});
}

TEST(Cautions, ClonesAreNotLookedAt) {
    Result result = three_outputs();
    ServiceResult clone = placed(1, 11, "one");
    clone.is_clone = true;
    services(result, 0, 0).push_back(clone);
    services(result, 1, 0).push_back(clone);
    EXPECT_EQ(told(result), Told{});
}

TEST(Cautions, AServiceThatIsPlacedTwiceIsOne) {
    Result result = three_outputs();
    const ServiceResult twice = services(result, 0, 0)[0];
    services(result, 0, 0).push_back(twice);
    services(result, 1, 0).push_back(twice);
    EXPECT_EQ(told(result), Told{});
    // The other that has its LCN stands beside it in one of its places, and apart from it in the other.
    services(result, 1, 0)[0].lcn = 1;
    ASSERT_EQ(told(result).size(), 2u);
    EXPECT_EQ(told(result)[0].find("lcn_on_output: LCN 1: 2 services on output 1 of module B have it"), 0u);
    EXPECT_EQ(told(result)[1].find("lcn_in_network: LCN 1: 2 services on different outputs have it"), 0u);
}

TEST(Cautions, ASentenceNamesThreeServices) {
    Result result = three_outputs();
    for (const std::uint16_t sid : Numbers{20, 21})
        services(result, 0, 0).push_back(placed(1, sid, std::to_string(sid)));
    const std::string begin =
        "lcn_on_output: LCN 1: 3 services on output 1 of module A (Rack 1) have it: LCN 1 "
        "\"in one\" of stream 1/1011, LCN 1 \"in 20\" of stream 1/1020";
    EXPECT_EQ(told(result), Told{begin + " and LCN 1 \"in 21\" of stream 1/1021"});
    for (const std::uint16_t sid : Numbers{22, 23}) {
        services(result, 0, 0).push_back(placed(1, sid, std::to_string(sid)));
        const std::size_t others = services(result, 0, 0).size() - 3;
        const std::string of = "LCN 1: " + std::to_string(others + 3);
        EXPECT_EQ(told(result).size(), 1u);
        EXPECT_NE(told(result)[0].find(of), std::string::npos) << told(result)[0];
        EXPECT_NE(told(result)[0].find(", LCN 1 \"in 21\" of stream 1/1021 and " +
                                       (others == 1 ? "1 other" : std::to_string(others) + " others")),
                  std::string::npos)
            << told(result)[0];
    }
}

TEST(Cautions, ComeByKindThenByPlaceThenByNumber) {
    Result result = three_outputs();
    for (const std::uint16_t number : Numbers{7, 5})
        for (std::size_t module = 0; module < 2; ++module) {
            ServiceResult made =
                placed(number, static_cast<std::uint16_t>(50 + number), "x" + std::to_string(number));
            made.stream.tsid = static_cast<std::uint16_t>(1 + module);
            services(result, module, 0).push_back(made);
        }
    result.modules[1].outputs[0].reserve = 10000;
    std::vector<std::string> kinds_and_subjects;
    for (const Caution& caution : cautions_of(result))
        kinds_and_subjects.push_back(std::string(Words<CautionKind>::of(caution.kind)) + " " +
                                     caution.subject);
    EXPECT_EQ(kinds_and_subjects,
              (std::vector<std::string>{"no_room_for_tables module B", "sid_in_network SID 55",
                                        "sid_in_network SID 57", "lcn_in_network LCN 5",
                                        "lcn_in_network LCN 7", "name_in_network output name \"x5\"",
                                        "name_in_network output name \"x7\""}));
}

// ---- Real runs
// ----------------------------------------------------------------------------------------------

/// Services that share LCNs, SIDs and names, on modules that are too small for all of them.
Headend random_headend(unsigned seed) {
    std::mt19937 random(seed);
    const auto up_to = [&random](unsigned most) { return static_cast<std::uint16_t>(random() % (most + 1)); };
    Headend headend;
    for (const char* mac : {"A", "B", "C"}) {
        headend.modules.push_back({mac, 3, *mac == 'A', static_cast<std::uint16_t>(1 + up_to(2)), {}, 0});
        for (unsigned output = 0; output <= up_to(2); ++output)
            headend.modules.back().outputs.push_back(8000u + 1000u * up_to(8));
    }
    for (unsigned number = 0; number < 24; ++number) {
        Service made = service(static_cast<std::uint16_t>(1 + up_to(30)),
                               static_cast<std::uint16_t>(1 + up_to(7)), 500u + 100u * up_to(20));
        made.sid = made.osid = static_cast<std::uint16_t>(1 + up_to(40));
        made.output_name = "N" + std::to_string(up_to(40));
        headend.services.push_back(made);
    }
    for (std::uint16_t tsid = 1; tsid <= 8; ++tsid)
        if (tsid % 3 != 0)
            headend.streams.push_back({1, tsid, 11000000, "H", "", 22000000, 20000u + tsid});
    return headend;
}

/// What stands on an input or an output; a second service of one stream and LCN is a clone, too.
template <class Map> std::vector<const tRec_Servicio*> without_clones(const Map& map, const EngineRun& run) {
    std::vector<const tRec_Servicio*> services;
    for (const auto& [key, service] : map)
        if (std::find(run.clones.begin(), run.clones.end(), service) == run.clones.end())
            services.push_back(service.get());
    return services;
}

/// How many of what services have are on an output with another service that has it, each output by itself;
/// and how many are on several outputs with different services.
template <class Of> std::pair<std::size_t, std::size_t> twins(const EngineRun& run, const Of& of) {
    using Value = decltype(of(tRec_Servicio()));
    std::size_t on_outputs = 0;
    std::map<Value, std::set<const tRec_Servicio*>> services_with;
    std::map<Value, std::set<const tRec_Salida*>> outputs_with;
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        for (const auto& [number, output] : module.mapSalidas) {
            std::map<Value, std::size_t> here;
            for (const tRec_Servicio* service : without_clones(output.MapaServicios, run)) {
                ++here[of(*service)];
                services_with[of(*service)].insert(service);
                outputs_with[of(*service)].insert(&output);
            }
            for (const auto& [value, times] : here)
                on_outputs += times > 1;
        }
    std::size_t in_network = 0;
    for (const auto& [value, services] : services_with)
        in_network += services.size() > 1 && outputs_with[value].size() > 1;
    return {on_outputs, in_network};
}

TEST(Cautions, AreThoseOfTheEngineAndSoIsTheFillOfInputs) {
    host::Log no_log("");
    std::map<CautionKind, std::size_t> seen;
    std::size_t filled = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        const Headend headend = random_headend(seed);
        EngineRun run = load_engine(headend, "f");
        run_engine(run, "f");
        const Result result = result_of(run, "", Reasons::omitted);
        if (has_broken(result))
            continue;
        std::map<CautionKind, std::size_t> found;
        for (const Caution& caution : cautions_of(result)) {
            ++found[caution.kind];
            ++seen[caution.kind];
        }
        const auto lcns = twins(run, [](const tRec_Servicio& service) { return service.LCN; });
        const auto sids = twins(run, [](const tRec_Servicio& service) { return service.SID; });
        const auto names = twins(run, [](const tRec_Servicio& service) { return service.NombreSalida; });
        EXPECT_EQ(found[CautionKind::lcn_on_output], lcns.first);
        EXPECT_EQ(found[CautionKind::lcn_in_network], lcns.second);
        EXPECT_EQ(found[CautionKind::name_on_output], names.first);
        EXPECT_EQ(found[CautionKind::name_in_network], names.second);
        EXPECT_EQ(sids.first, 0u) << "it would be broken";
        EXPECT_EQ(found[CautionKind::sid_in_network], sids.second);

        std::size_t without_room = 0;
        std::size_t index = 0;
        for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final) {
            const ModuleResult& told = result.modules.at(index++);
            for (const auto& [number, output] : module.mapSalidas) {
                std::uint32_t taken = 0;
                for (const tRec_Servicio* service : without_clones(output.MapaServicios, run))
                    taken += service->peakBitRate;
                // 2.5 % of it, in thousandths.
                without_room += taken != 0 && taken * 1000 > output.BitRateMax * 975;
            }
            std::size_t place = 0;
            for (const auto& [number, input] : module.mapEntradas) {
                std::uint64_t carried = 0;
                for (const tRec_Servicio* service : without_clones(input.MapaServicios, run))
                    carried += service->peakBitRate;
                const InputResult& received = told.inputs.at(place++);
                EXPECT_EQ(carried_from(received), carried);
                filled += carried != 0;
                EXPECT_EQ(received.net_rate,
                          input.TSID == 0 || input.TSID % 3 == 0 ? 0u : 20000u + received.stream.tsid);
            }
        }
        EXPECT_EQ(found[CautionKind::no_room_for_tables], without_room);
    }
    EXPECT_EQ(seen.size(), 6u) << "every kind is met";
    EXPECT_GT(filled, 60u);
}

} // namespace
} // namespace zarven::tool::caution_test
