// Every sentence, in states made by hand.

#include "placement/reasons/reason.h"

#include "Generador.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::reason_test {
namespace {

class ReasonLeftOut : public EngineByHand {
protected:
    std::string reason(std::size_t index = 0) { return whole(index).text; }
    Reason whole(std::size_t index = 0) { return reason_left_out(FinalState(run), *loaded(index)); }
    std::string reason_of_clone() { return reason_waiting(run, *run.clones.at(0)); }
};

TEST_F(ReasonLeftOut, NoInputIsFree) {
    load({1}, {service(1, 10)});
    occupy("A");
    EXPECT_EQ(reason(), "No input is free for stream 1/10: the only input receives another stream.");
    load({2, 1}, {service(1, 10)});
    occupy("A");
    occupy("B");
    EXPECT_EQ(reason(), "No input is free for stream 1/10: all 3 inputs on 2 modules receive other streams.");
    output("A").BitRateActual = 9000;
    EXPECT_EQ(reason(), "No input is free for stream 1/10: all 3 inputs on 2 modules receive other streams.");
    output("B").BitRateActual = 9000;
    EXPECT_EQ(reason(), "No input is free for stream 1/10: all 3 inputs on 2 modules receive other streams; "
                        "no module has room for it, either.");
    load({2}, {service(1, 10)});
    occupy("A");
    EXPECT_EQ(reason(), "No input is free for stream 1/10: all 2 inputs on 1 module receive other streams.");
}

TEST_F(ReasonLeftOut, OneModuleReceivesTheStream) {
    load({2, 1}, {with_pids(service(1, 10), 4)});
    occupy("A");
    occupy("B");
    tune("B", 1, 10);
    module("B").PIDsModulo = 6;
    EXPECT_EQ(reason(),
              "Module B alone receives stream 1/10, and its PIDs are short by 2 (6 of 8 in use, 4 needed).");
    output("B").BitRateActual = 6500;
    EXPECT_EQ(reason(),
              "Module B alone receives stream 1/10, and its output 1 is short by 501 kbit/s (6500 + "
              "4000 must stay below 10000), its PIDs by 2.");
    module("B").PIDsModulo = 4;
    EXPECT_EQ(reason(),
              "Module B alone receives stream 1/10, and its output 1 is short by 501 kbit/s (6500 + "
              "4000 must stay below 10000).");
    output("B").NumServicios = 512;
    EXPECT_EQ(reason(),
              "Module B alone receives stream 1/10, and its output carries as many services as it may.");
    module("B").mapSalidas.emplace(2, tRec_Salida(2, 0));
    EXPECT_EQ(
        reason(),
        "Module B alone receives stream 1/10, and each of its outputs carries as many services as it may.");
    module("B").mapSalidas.clear();
    EXPECT_EQ(reason(), "Module B alone receives stream 1/10, and it has no output.");
}

TEST_F(ReasonLeftOut, NoTranscoderIsLeft) {
    load({1}, {transcoded(service(1, 10))});
    tune("A", 1, 10);
    module("A").SD_Transcoding = 1;
    EXPECT_EQ(reason(), "Module A alone receives stream 1/10, and no transcoder is left (1 of 1 in use).");
}

TEST_F(ReasonLeftOut, OneModuleHasAFreeInput) {
    load({2, 1}, {service(1, 10)});
    occupy("A");
    output("B").BitRateActual = 6000;
    EXPECT_EQ(reason(),
              "Module B alone has a free input for stream 1/10, and its output 1 is short by 1 kbit/s "
              "(6000 + 4000 must stay below 10000).");
}

TEST_F(ReasonLeftOut, OfSeveralModulesTheNearest) {
    load({1, 1, 1}, {with_pids(service(1, 10), 4)});
    for (const char* mac : {"A", "B", "C"}) {
        tune(mac, 1, 10);
        module(mac).PIDsModulo = 8;
    }
    module("B").PIDsModulo = 6;
    output("C").BitRateActual = 6000; // tried before the PIDs, so farther
    EXPECT_EQ(reason(),
              "3 modules receive stream 1/10, none with room; nearest is B: its PIDs are short by 2 (6 "
              "of 8 in use, 4 needed).");
    module("B").PIDsModuloMax = 3; // could never take it
    EXPECT_EQ(reason(),
              "3 modules receive stream 1/10, none with room; nearest is A: its PIDs are short by 4 (8 "
              "of 8 in use, 4 needed).");
    module("C").mapEntradas.at(1).confEntrada(0, 0);
    EXPECT_EQ(reason().substr(0, 70),
              "3 modules receive or have a free input for stream 1/10, none with room");
    module("A").mapEntradas.at(1).confEntrada(0, 0);
    module("B").mapEntradas.at(1).confEntrada(0, 0);
    EXPECT_EQ(reason().substr(0, 60), "3 modules have a free input for stream 1/10, none with room;");
}

TEST_F(ReasonLeftOut, AModuleWithoutInputIsNeverTheNearest) {
    load({1, 1, 1}, {with_pids(service(1, 10), 4)});
    for (const char* mac : {"A", "B"}) {
        tune(mac, 1, 10);
        module(mac).PIDsModulo = 8;
    }
    occupy("C");
    module("C").PIDsModulo = 5;
    EXPECT_EQ(reason(),
              "2 modules receive stream 1/10, none with room; nearest is A: its PIDs are short by 4 (8 "
              "of 8 in use, 4 needed).");
}

TEST_F(ReasonLeftOut, AModuleThatCouldNeverTakeItIsNotTheNearest) {
    load({1, 1}, {with_pids(service(1, 10), 4)});
    for (const char* mac : {"A", "B"})
        tune(mac, 1, 10);
    output("A").BitRateActual = 8000;
    output("B").BitRateActual = 9000;
    module("A").PIDsModuloMax = 4;
    EXPECT_EQ(reason(),
              "2 modules receive stream 1/10, none with room; nearest is A: its output 1 is short by 2001 "
              "kbit/s (8000 + 4000 must stay below 10000).");
    module("A").PIDsModuloMax = 3;
    EXPECT_EQ(reason(),
              "2 modules receive stream 1/10, none with room; nearest is B: its output 1 is short by 3001 "
              "kbit/s (9000 + 4000 must stay below 10000).");
}

TEST_F(ReasonLeftOut, RoomThatWasNotUsed) {
    load({1, 1}, {service(1, 10)});
    occupy("A");
    EXPECT_EQ(reason(), "Module B has a free input and room: the engine's strategies did not use it.");
    tune("B", 1, 10);
    EXPECT_EQ(reason(),
              "Module B receives stream 1/10 and has room: the engine's strategies did not use it.");
}

TEST_F(ReasonLeftOut, AStreamThatIsNotChosen) {
    load({1}, {transcoded(service(1, 10)), service(5, 20), service(0, 30)});
    leave_out(loaded(0));
    leave_out(loaded(1));
    leave_out(loaded(2));
    EXPECT_EQ(reason(0),
              "It needs transcoding: the engine tunes no input to stream 1/10 for that, and no service "
              "without transcoding asks for the stream.");
    EXPECT_EQ(reason(2),
              "Its LCN is 0: the engine tunes no input to stream 1/30 for that while services with "
              "other LCNs are left.");
    occupy("A"); // more inputs would not help
    EXPECT_EQ(reason(0).substr(0, 21), "It needs transcoding:");
}

TEST_F(ReasonLeftOut, AStreamThatOnlyLcn0AsksForWithoutTranscoding) {
    load({1}, {transcoded(service(1, 10)), service(0, 10)});
    leave_out(loaded(0));
    EXPECT_EQ(reason(),
              "It needs transcoding: the engine tunes no input to stream 1/10 for that, and no service "
              "without transcoding asks for the stream.");
    leave_out(loaded(1));
    EXPECT_EQ(reason(),
              "It needs transcoding: the engine tunes no input to stream 1/10 for that, nor for LCN 0 "
              "while services with other LCNs are left; no other service asks for the stream.");
}

TEST_F(ReasonLeftOut, WhereTheStreamIsReceivedFreeInputsDoNotCountForTranscoding) {
    load({1, 1}, {transcoded(service(1, 10))});
    leave_out(loaded(0));
    tune("A", 1, 10);
    module("A").SD_Transcoding = 1;
    EXPECT_EQ(reason(), "Module A alone receives stream 1/10, and no transcoder is left (1 of 1 in use).");
}

TEST_F(ReasonLeftOut, ServicesWithTranscodingWaitForTheToppingUp) {
    Headend headend;
    headend.modules = {{"A", 3, true, 2, {38000}, 8, 1, 1, 0}};
    headend.services = {service(1, 10), transcoded(service(2, 10))};
    run_it(headend);
    EXPECT_EQ(reason(1),
              "It needs transcoding: the engine fills inputs without such services, and tops up modules "
              "with them when no input is free; module A receives stream 1/10 and has room.");
    headend.modules[0].inputs = 1;
    run_it(headend);
    EXPECT_TRUE(left_out_of(run).empty());
    // Without a free input it is no longer that.
    load({1}, {transcoded(service(1, 10))});
    tune("A", 1, 10);
    module("A").mapEntradas.at(1).MapaServicios.emplace(2, loaded(0));
    leave_out(loaded(0));
    EXPECT_EQ(reason(),
              "Module A receives stream 1/10 and has room: the engine's strategies did not use it.");
    run.labels["A"] = "Rack 1";
    EXPECT_EQ(reason(),
              "Module A (Rack 1) receives stream 1/10 and has room: the engine's strategies did not use it.");
}

TEST_F(ReasonLeftOut, NoModuleCouldEverTakeIt) {
    load({1, 1}, {with_pids(service(1, 10), 9), service(2, 10, 10000), transcoded(service(3, 10)),
                  transcoded(with_pids(service(4, 10), 9))});
    EXPECT_EQ(reason(0), "No module could ever take it: it needs 9 PIDs and the largest budget is 8.");
    EXPECT_EQ(reason(1),
              "No module could ever take it: its 10000 kbit/s must stay below the maximum of an output, "
              "and the largest is 10000.");
    module("A").SD_MAX_Transcoding = module("B").SD_MAX_Transcoding = 0;
    EXPECT_EQ(reason(2),
              "No module could ever take it: it needs a transcoder, and the limit for the first one, "
              "that for SD, is 0 everywhere.");
    module("A").HD_MAX_Transcoding = module("B").HD_MAX_Transcoding = 0;
    EXPECT_EQ(reason(2), "No module could ever take it: it needs a transcoder and none has one.");
    // Each module lacks something else.
    output("A").BitRateMax = 4000;
    module("A").PIDsModuloMax = 9;
    module("A").SD_MAX_Transcoding = 1;
    EXPECT_EQ(reason(2),
              "No module could ever take it: not even when empty does one offer the 4000 kbit/s and a "
              "transcoder that it needs.");
    EXPECT_EQ(reason(0),
              "No module could ever take it: not even when empty does one offer the 4000 kbit/s and 9 "
              "PIDs that it needs.");
    EXPECT_EQ(reason(3),
              "No module could ever take it: not even when empty does one offer the 4000 kbit/s, 9 PIDs "
              "and a transcoder that it needs.");
    module("A").mapSalidas.clear();
    module("B").mapSalidas.clear();
    EXPECT_EQ(reason(0), "No module could ever take it: none has an input and an output.");
    load({0}, {service(1, 10)});
    EXPECT_EQ(reason(), "No module could ever take it: none has an input and an output.");
}

TEST_F(ReasonLeftOut, ModulesThatCouldTakeNothingDoNotCountForTheLargest) {
    load({1, 0, 1}, {service(1, 10, 30000), with_pids(service(2, 10), 9)});
    output("B").BitRateMax = 38000;
    module("B").PIDsModuloMax = 40;
    module("C").mapSalidas.clear();
    module("C").PIDsModuloMax = 40;
    EXPECT_EQ(reason(0),
              "No module could ever take it: its 30000 kbit/s must stay below the maximum of an output, "
              "and the largest is 10000.");
    EXPECT_EQ(reason(1), "No module could ever take it: it needs 9 PIDs and the largest budget is 8.");
}

TEST_F(ReasonLeftOut, OnePidIsSingular) {
    load({1}, {with_pids(service(1, 10), 1)});
    module("A").PIDsModuloMax = 0;
    EXPECT_EQ(reason(), "No module could ever take it: it needs 1 PID and the largest budget is 0.");
}

TEST_F(ReasonLeftOut, PlacedAndLeftOutAtOnce) {
    load({1, 1}, {service(1, 10)});
    leave_out(loaded(0));
    module("B").addService(loaded(0), 1, 1);
    EXPECT_EQ(reason(),
              "It is on module B, output 1 all the same: the engine has placed it and left it out.");
}

void expect_cause(const Reason& reason, Cause cause, const std::string& nearest) {
    EXPECT_EQ(reason.cause, cause) << reason.text;
    EXPECT_EQ(reason.nearest, nearest) << reason.text;
}

TEST_F(ReasonLeftOut, TheCauseIsTheFirstThingInTheWayOnTheNearestModule) {
    load({1, 1}, {with_pids(service(1, 10), 4), transcoded(service(2, 10)), with_pids(service(3, 10), 9)});
    expect_cause(whole(), Cause::unused_input, "A");
    expect_cause(whole(2), Cause::impossible, "");
    occupy("A");
    tune("B", 1, 10);
    expect_cause(whole(), Cause::unused_room, "B");
    module("B").PIDsModulo = 5;
    expect_cause(whole(), Cause::pids, "B");
    output("B").BitRateActual = 6000;
    expect_cause(whole(), Cause::bitrate, "B");
    output("B").NumServicios = 512;
    expect_cause(whole(), Cause::places, "B");
    output("B").NumServicios = 0;
    output("B").BitRateActual = 0;
    module("B").SD_Transcoding = 1;
    expect_cause(whole(1), Cause::transcoders, "B");
    input("B", 1).confEntrada(0, 0);
    leave_out(loaded(1));
    expect_cause(whole(1), Cause::stream_not_chosen, "");
    occupy("B");
    expect_cause(whole(), Cause::no_input, "");
    module("B").addService(loaded(0), 1, 1);
    expect_cause(whole(), Cause::contradictory, "");
}

TEST_F(ReasonLeftOut, PlacesInWords) {
    load({1, 1}, {service(1, 10)});
    module("A").mapSalidas.emplace(2, tRec_Salida(2, 512));
    for (const std::uint16_t number : {std::uint16_t{1}, std::uint16_t{2}})
        module("A").addService(loaded(0), 1, number);
    EXPECT_EQ(places_of(FinalState(run).refusals_of(*loaded(0))), "module A, outputs 1 and 2");
    module("B").addService(loaded(0), 1, 1);
    EXPECT_EQ(places_of(FinalState(run).refusals_of(*loaded(0))),
              "module A, outputs 1 and 2 and module B, output 1");
}

// ---- Clones -------------------------------------------------------------------------------------------

TEST_F(ReasonLeftOut, ACloneWhoseParentIsLeftOut) {
    load({1}, {service(1, 10)}, {clone_of(service(1, 10))});
    leave_out(loaded(0));
    EXPECT_EQ(reason_of_clone(), "Its parent, LCN 1 \"S1\", is left out.");
}

TEST_F(ReasonLeftOut, ACloneWithoutAuxTranscoder) {
    load({1}, {service(1, 10)}, {clone_of(service(1, 10), 1)});
    tune("A", 1, 10);
    module("A").addService(loaded(0), 1, 1);
    EXPECT_EQ(reason_of_clone(),
              "Module A carries its parent and would take it now: the engine had passed it by.");
    module("A").AUX_Transcoding = 1;
    EXPECT_EQ(reason_of_clone(),
              "No AUX transcoder is left on module A, which carries its parent (1 of 1 in use).");
    module("A").AUX_MAX_Transcoding = 0;
    EXPECT_EQ(reason_of_clone(), "Module A, which carries its parent, has no AUX transcoder.");
    run.labels["A"] = "Rack 1";
    EXPECT_EQ(reason_of_clone(), "Module A (Rack 1), which carries its parent, has no AUX transcoder.");
    module("A").AUX_MAX_Transcoding = 1;
    EXPECT_EQ(reason_of_clone(),
              "No AUX transcoder is left on module A (Rack 1), which carries its parent (1 of 1 in use).");
    module("A").AUX_Transcoding = 0;
    EXPECT_EQ(reason_of_clone(),
              "Module A (Rack 1) carries its parent and would take it now: the engine had passed it by.");
}

TEST_F(ReasonLeftOut, ACloneWhoseParentIsNotOnBothSides) {
    load({1}, {service(1, 10)}, {clone_of(service(1, 10))});
    const std::string expected =
        "No module carries its parent, LCN 1 \"S1\", both on an input tuned to stream 1/10 "
        "and on an output.";
    EXPECT_EQ(reason_of_clone(), expected);
    module("A").addService(loaded(0), 1, 1);
    EXPECT_EQ(reason_of_clone(), expected);
    tune("A", 1, 10);
    EXPECT_NE(reason_of_clone(), expected);
    module("A").mapSalidas.at(1).MapaServicios.clear();
    EXPECT_EQ(reason_of_clone(), expected);
}

TEST_F(ReasonLeftOut, ACloneWhoseParentHasAnotherOsid) {
    Service renumbered = service(1, 10);
    renumbered.osid = 7;
    load({1}, {renumbered}, {clone_of(renumbered)});
    tune("A", 1, 10);
    module("A").addService(loaded(0), 1, 1);
    EXPECT_EQ(reason_of_clone(),
              "No service of stream 1/10 has the OSID 101, by which the engine looks for its parent.");
}

TEST(ReasonOverRandomHeadends, OnlyClonesThatTheEngineAttachesNowWouldBeTakenNow) {
    const host::Log silence("");
    std::size_t waiting = 0;
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        generador::Parametros p;
        p.semilla = seed;
        p.streams = 3;
        p.modulos = 2;
        p.serviciosPorStream = {1, 4};
        p.porcentajeClones = 60;
        p.porcentajeTranscoding = 40;
        p.transcoders = {0, 2};
        p.holgura = generador::Holgura::ESCASA;
        EngineRun run;
        tRecalculo& engine = run.engine;
        generador::cargar(engine, p);
        engine.Main_Recalculo();
        auto& clones = engine.listaServiciosClonados;
        for (auto clone = clones.begin(); clone != clones.end(); ++clone, ++waiting) {
            const bool would = reason_waiting(run, **clone).find("would take it now") != std::string::npos;
            EXPECT_EQ(engine.Try_to_Insert_Cloned_Service(clone) != 0, would);
        }
    }
    EXPECT_GE(waiting, 100u);
}

} // namespace
} // namespace zarven::tool::reason_test
