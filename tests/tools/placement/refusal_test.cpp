// Each limit just failing and just passing; and over random head-ends, that they are the engine's.

#include "placement/reasons/refusal.h"

#include <map>

#include "Generador.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::refusal_test {
namespace {

class Refusal : public EngineByHand {
protected:
    ModuleRefusal refusal(const std::string& mac = "A", std::size_t index = 0) {
        for (const ModuleRefusal& refusal : FinalState(run).refusals_of(*loaded(index)))
            if (refusal.mac == mac)
                return refusal;
        ADD_FAILURE() << "no module " << mac;
        return {};
    }
};

using Inputs = std::vector<std::uint16_t>;

TEST_F(Refusal, AFreeInputAndRoomAreInNobodysWay) {
    load({2}, {service(1, 10)});
    EXPECT_EQ(refusal().limit, Limit::none);
    EXPECT_EQ(refusal().inputs, 2u);
    EXPECT_EQ(refusal().inputs_free, (Inputs{1, 2}));
    EXPECT_EQ(refusal().inputs_receiving, Inputs{});
}

TEST_F(Refusal, NoInput) {
    load({2}, {service(1, 10)});
    occupy("A");
    EXPECT_EQ(refusal().limit, Limit::no_input);
    EXPECT_EQ(refusal().room.limit, Limit::none);
    EXPECT_EQ(refusal().inputs_free, Inputs{});
}

TEST_F(Refusal, AModuleWithoutInputs) {
    load({0}, {service(1, 10)});
    EXPECT_EQ(refusal().limit, Limit::no_input);
    EXPECT_EQ(refusal().inputs, 0u);
}

TEST_F(Refusal, AnInputThatReceivesTheStream) {
    load({2}, {service(1, 10)});
    occupy("A");
    tune("A", 2, 10);
    EXPECT_EQ(refusal().limit, Limit::none);
    EXPECT_EQ(refusal().inputs_receiving, Inputs{2});
}

TEST_F(Refusal, AnInputThatIsTunedAndCarriesNothingIsFree) {
    load({1}, {service(1, 10)});
    tune("A", 1, 20);
    EXPECT_EQ(refusal().limit, Limit::none);
    EXPECT_EQ(refusal().inputs_free, Inputs{1});
}

TEST_F(Refusal, AStreamWithoutNumbersIsNotReceivedByUntunedInputs) {
    Service without = service(1, 0);
    without.onid = 0;
    load({2}, {without});
    EXPECT_EQ(refusal().inputs_receiving, Inputs{});
    module("A").mapEntradas.at(2).addServicioALaEntrada(loaded(0));
    EXPECT_EQ(refusal().inputs_receiving, Inputs{2});
    EXPECT_EQ(refusal().inputs_free, Inputs{1});
}

TEST_F(Refusal, NoOutput) {
    load({1}, {service(1, 10)});
    module("A").mapSalidas.clear();
    EXPECT_EQ(refusal().limit, Limit::no_output);
    EXPECT_EQ(refusal().room.outputs, 0u);
}

TEST_F(Refusal, BitrateMustStayBelow) {
    load({1}, {service(1, 10)});
    output("A").BitRateActual = 5999;
    EXPECT_EQ(refusal().limit, Limit::none);
    EXPECT_EQ(refusal().room.output.short_by, 0u);
    output("A").BitRateActual = 6000;
    EXPECT_EQ(refusal().limit, Limit::bitrate);
    EXPECT_EQ(refusal().room.short_by(), 1u);
    EXPECT_TRUE(refusal().room.can_be_freed(0));
    output("A").BitRateActual = 9000;
    EXPECT_EQ(refusal().room.short_by(), 3001u);
}

TEST_F(Refusal, ABitrateAsLargeAsTheOutputCanNeverBeFreed) {
    load({1}, {service(1, 10, 9999), service(2, 10, 10000)});
    output("A").BitRateActual = 1;
    EXPECT_EQ(refusal("A", 0).room.short_by(), 1u);
    EXPECT_TRUE(refusal("A", 0).room.can_be_freed(0));
    EXPECT_EQ(refusal("A", 1).room.short_by(), 2u);
    EXPECT_FALSE(refusal("A", 1).room.can_be_freed(0));
}

TEST_F(Refusal, BitratesWrapAroundLikeTheEngines) {
    load({1}, {service(1, 10)});
    output("A").BitRateActual = 4294967296u - 4000;
    EXPECT_EQ(refusal().limit, Limit::none);
    output("A").BitRateActual = 4294967296u - 4001;
    EXPECT_EQ(refusal().limit, Limit::bitrate);
    EXPECT_EQ(refusal().room.short_by(), 4294967295u - 10000 + 1);
}

TEST_F(Refusal, AnOutputWithoutBitrate) {
    load({1}, {service(1, 10, 0)});
    output("A").BitRateMax = 0;
    EXPECT_EQ(refusal().limit, Limit::bitrate);
    EXPECT_FALSE(refusal().room.can_be_freed(0));
}

TEST_F(Refusal, TheNumberOfServices) {
    load({1}, {service(1, 10)});
    output("A").NumServicios = 511;
    EXPECT_EQ(refusal().limit, Limit::none);
    output("A").NumServicios = 512;
    EXPECT_EQ(refusal().limit, Limit::service_count);
    EXPECT_EQ(refusal().room.outputs_full, 1u);
}

TEST_F(Refusal, TheNearestOutputIsOneThatIsNotFullByNumber) {
    load({1}, {service(1, 10)});
    tRec_Modulo& modulo = module("A");
    for (unsigned short number = 2; number <= 4; ++number) {
        modulo.mapSalidas.emplace(number, tRec_Salida(number, 512));
        modulo.mapSalidas.at(number).BitRateMax = 10000;
    }
    modulo.mapSalidas.at(1).NumServicios = 512;
    modulo.mapSalidas.at(2).BitRateActual = 9000;
    modulo.mapSalidas.at(3).BitRateActual = 7000;
    modulo.mapSalidas.at(4).BitRateActual = 0;
    modulo.mapSalidas.at(4).BitRateMax = 4000; // short by 1 only, but too small
    EXPECT_EQ(refusal().limit, Limit::bitrate);
    EXPECT_EQ(refusal().room.output.number, 3u);
    EXPECT_EQ(refusal().room.short_by(), 1001u);
    EXPECT_EQ(refusal().room.outputs, 4u);
    EXPECT_EQ(refusal().room.outputs_full, 1u);
    modulo.mapSalidas.at(4).BitRateMax = 4001;
    EXPECT_EQ(refusal().limit, Limit::none);
    EXPECT_EQ(refusal().room.output.number, 4u);
}

TEST_F(Refusal, OfSeveralOutputsWithRoomTheFirstIsTaken) {
    load({1}, {service(1, 10)});
    module("A").mapSalidas.emplace(2, tRec_Salida(2, 512));
    module("A").mapSalidas.at(2).BitRateMax = 20000;
    EXPECT_EQ(refusal().room.output.number, 1u);
}

TEST_F(Refusal, PidsMayReachTheirBudget) {
    load({1}, {with_pids(service(1, 10), 3)});
    module("A").PIDsModulo = 5;
    EXPECT_EQ(refusal().limit, Limit::none);
    EXPECT_EQ(refusal().room.pids_short_by, 0u);
    module("A").PIDsModulo = 7;
    EXPECT_EQ(refusal().limit, Limit::pids);
    EXPECT_EQ(refusal().room.short_by(), 2u);
    EXPECT_TRUE(refusal().room.can_be_freed(8));
    EXPECT_FALSE(refusal().room.can_be_freed(9));
}

TEST_F(Refusal, PidsDoNotWrapAround) {
    load({1}, {with_pids(service(1, 10), 65535)});
    module("A").PIDsModulo = 2;
    module("A").PIDsModuloMax = 65535;
    EXPECT_EQ(refusal().room.short_by(), 2u);
}

TEST_F(Refusal, BitrateComesBeforePidsAndPidsBeforeTranscoders) {
    load({1}, {transcoded(with_pids(service(1, 10), 9))});
    tune("A", 1, 10);
    module("A").SD_MAX_Transcoding = 0;
    output("A").BitRateActual = 6000;
    EXPECT_EQ(refusal().limit, Limit::bitrate);
    output("A").BitRateActual = 0;
    EXPECT_EQ(refusal().limit, Limit::pids);
    module("A").PIDsModuloMax = 9;
    EXPECT_EQ(refusal().limit, Limit::transcoders);
    module("A").SD_MAX_Transcoding = 1;
    EXPECT_EQ(refusal().limit, Limit::none);
}

TEST_F(Refusal, TranscodersShareAPoolWhoseLimitDependsOnItsUse) {
    load({1}, {transcoded(service(1, 10))}); // 1 SD, 2 HD
    tune("A", 1, 10);
    EXPECT_EQ(refusal().limit, Limit::none);
    module("A").SD_Transcoding = 1;
    EXPECT_EQ(refusal().limit, Limit::transcoders);
    EXPECT_EQ(refusal().room.transcoders_used, 1u);
    EXPECT_EQ(refusal().room.transcoders_max, 1u);
    EXPECT_EQ(refusal().room.short_by(), 1u);
    module("A").SD_Transcoding = 0;
    module("A").HD_Transcoding = 1;
    EXPECT_EQ(refusal().limit, Limit::none);
    module("A").SD_Transcoding = 1;
    EXPECT_EQ(refusal().limit, Limit::transcoders);
    EXPECT_EQ(refusal().room.transcoders_used, 2u);
    EXPECT_EQ(refusal().room.transcoders_max, 2u);
}

TEST_F(Refusal, OnlyTranscoding1NeedsATranscoder) {
    load({1}, {transcoded(service(1, 10), 2), service(2, 10)});
    tune("A", 1, 10);
    module("A").SD_MAX_Transcoding = 0;
    EXPECT_EQ(refusal("A", 0).limit, Limit::none);
    EXPECT_EQ(refusal("A", 1).limit, Limit::none);
}

TEST_F(Refusal, AStreamIsNotChosenByTranscodedServices) {
    for (const std::uint16_t transcoding : {std::uint16_t{1}, std::uint16_t{2}}) {
        load({1}, {transcoded(service(1, 10), transcoding), service(2, 10)});
        leave_out(loaded(0));
        EXPECT_EQ(refusal("A", 0).limit, Limit::stream_not_chosen);
        EXPECT_EQ(refusal("A", 1).limit, Limit::none);
        leave_out(loaded(1));
        EXPECT_EQ(refusal("A", 0).limit, Limit::none) << "rides along";
    }
}

TEST_F(Refusal, AStreamIsNotChosenByLcn0WhileOthersWait) {
    load({1}, {service(0, 10), service(5, 20)});
    leave_out(loaded(0));
    EXPECT_EQ(refusal().limit, Limit::none);
    leave_out(loaded(1));
    EXPECT_EQ(refusal().limit, Limit::stream_not_chosen);
    tune("A", 1, 10);
    EXPECT_EQ(refusal().limit, Limit::none);
}

TEST_F(Refusal, TheEngineDoesNotTuneAnInputForTranscodedServices) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 2, {10000}, 8, 9, 9, 0});
    headend.services = {transcoded(service(1, 10), 1), transcoded(service(2, 20), 2)};
    run_it(headend);
    EXPECT_EQ(refusal("A", 0).limit, Limit::stream_not_chosen);
    EXPECT_EQ(refusal("A", 1).limit, Limit::stream_not_chosen);
    EXPECT_EQ(run.engine.Mapa_ONIDs_Final.at(1).MapRec_TSIDs.size(), 2u);
}

TEST_F(Refusal, TheEngineDoesNotTuneAnInputForLcn0WhileOthersWait) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 2, {10000}, 8, 0, 0, 0});
    headend.services = {service(0, 10), service(5, 20, 10000)};
    run_it(headend);
    EXPECT_EQ(refusal("A", 0).limit, Limit::stream_not_chosen);
    EXPECT_EQ(refusal("A", 1).limit, Limit::bitrate);
    EXPECT_EQ(run.engine.Mapa_ONIDs_Final.at(1).MapRec_TSIDs.size(), 2u);
}

TEST_F(Refusal, WhereAServiceIsCarried) {
    load({1, 1}, {service(1, 10)});
    module("B").addService(loaded(0), 1, 1);
    EXPECT_TRUE(refusal("A").carried_on.empty());
    EXPECT_EQ(refusal("B").carried_on, std::vector<std::uint32_t>{1});
}

TEST_F(Refusal, WhenEmptyOneModuleIsEnough) {
    load({1, 1}, {with_pids(service(1, 10, 9999), 8)});
    output("A").BitRateActual = output("B").BitRateActual = 5000;
    module("A").PIDsModulo = module("B").PIDsModulo = 8;
    module("A").PIDsModuloMax = 7;
    EXPECT_EQ(FinalState(run).why_never(*loaded(0)), "");
    output("B").BitRateMax = 9999;
    EXPECT_EQ(FinalState(run).why_never(*loaded(0)),
              "not even when empty does one offer the 9999 kbit/s and 8 PIDs that it needs");
}

TEST_F(Refusal, WhenEmptyTranscodersAreFree) {
    load({1}, {transcoded(service(1, 10))});
    module("A").HD_Transcoding = 2;
    EXPECT_EQ(FinalState(run).why_never(*loaded(0)), "");
    module("A").SD_MAX_Transcoding = 0;
    EXPECT_NE(FinalState(run).why_never(*loaded(0)), "");
}

TEST_F(Refusal, WhenEmptyAnInputIsNeeded) {
    load({0}, {service(1, 10)});
    EXPECT_EQ(FinalState(run).why_never(*loaded(0)), "none has an input and an output");
}

// ---- Over random head-ends ----------------------------------------------------------------------------

/// The engine's own answer, on a whole copy of the module.
bool engine_takes(tRec_Modulo module, const std::shared_ptr<tRec_Servicio>& service) {
    tRec_Entrada input(1);
    tMapaServicios services{{service->idService, service}};
    return tRecalculo().Try_to_Insert_Service_Input_Output(module, input, services.begin()) != 0;
}

/// So much must be freed, and not one unit less.
void expect_exact(tRec_Modulo module, const ModuleRefusal& refusal,
                  const std::shared_ptr<tRec_Servicio>& service) {
    const Room& room = refusal.room;
    if (!room.can_be_freed(service->number_PIDs_CA))
        return;
    const auto short_by = static_cast<std::uint32_t>(room.short_by());
    if (room.limit == Limit::bitrate) {
        // The limits that come later do not matter here.
        module.PIDsModulo = 0;
        module.PIDsModuloMax = 65535;
        module.SD_MAX_Transcoding = module.HD_MAX_Transcoding = 65535;
        tRec_Salida& output = module.mapSalidas.at(room.output.number);
        output.BitRateActual -= short_by - 1;
        EXPECT_FALSE(engine_takes(module, service));
        output.BitRateActual -= 1;
        EXPECT_TRUE(engine_takes(module, service));
    } else if (room.limit == Limit::pids) {
        module.SD_MAX_Transcoding = module.HD_MAX_Transcoding = 65535;
        module.PIDsModulo = static_cast<unsigned short>(module.PIDsModulo - short_by + 1);
        EXPECT_FALSE(engine_takes(module, service));
        --module.PIDsModulo;
        EXPECT_TRUE(engine_takes(module, service));
    }
}

TEST(RefusalOverRandomHeadends, OurLimitsAreTheEngines) {
    const host::Log silence("");
    std::map<Limit, std::size_t> met;
    for (std::uint32_t seed = 1; seed <= 1000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        EngineRun run;
        generador::cargar(run.engine, generador::escasa(seed));
        run.engine.Main_Recalculo();
        const FinalState state(run);
        for (const auto& service : run.engine.listaServicios)
            for (const ModuleRefusal& refusal : state.refusals_of(*service)) {
                const tRec_Modulo& module =
                    run.engine.Mapa_ModulosCabecera_Final.at(std::string(refusal.mac));
                const bool takes = engine_takes(module, service);
                EXPECT_EQ(takes, refusal.room.limit == Limit::none);
                expect_exact(module, refusal, service);
                ++met[refusal.room.limit];
                if (refusal.limit == Limit::no_input || refusal.limit == Limit::stream_not_chosen)
                    ++met[refusal.limit];
            }
    }
    // That the generator does not go stale.
    for (const Limit limit : {Limit::no_input, Limit::no_output, Limit::bitrate, Limit::pids,
                              Limit::transcoders, Limit::stream_not_chosen, Limit::none})
        EXPECT_GE(met[limit], 100u) << static_cast<int>(limit);
}

} // namespace
} // namespace zarven::tool::refusal_test
