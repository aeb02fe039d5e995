// The result of real runs, and of engines placed by hand.

#include "placement/result.h"

#include <gtest/gtest.h>

#include "placement/audit/audit.h"
#include "placement/engine_by_hand.h"
#include "placement/reasons/reason.h"
#include "placement/result_json.h"

namespace zarven::tool::result_test {
namespace {

using ResultOfHand = EngineByHand;

TEST(ResultOf, ServicesTellTheirGroupAndWhatWasMeasured) {
    Headend headend = two_modules();
    headend.services = {service(1, 10, 1000), service(2, 10, 1000), service(3, 10, 1000),
                        service(4, 20, 12000)};
    headend.services[1].group = "News";
    headend.services[2].measured = true;
    headend.services[3].measured = true;
    headend.services[3].mean_bitrate = 2890;
    headend.services[3].group = "Cinema";
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    const Result result = read_result("f", result_json(result_of(run, "Casa")));

    const std::vector<ServiceResult>& placed = result.modules.at(0).outputs.at(0).services;
    ASSERT_EQ(placed.size(), 3u);
    EXPECT_EQ(placed[0].group, "");
    EXPECT_EQ(placed[1].group, "News");
    EXPECT_FALSE(placed[1].is_measured);
    EXPECT_TRUE(placed[2].is_measured);
    EXPECT_EQ(placed[2].mean_bitrate, 0u);
    const ServiceResult& left_out = result.left_out.at(0).services.at(0);
    EXPECT_TRUE(left_out.is_measured);
    EXPECT_EQ(left_out.mean_bitrate, 2890u);
    EXPECT_EQ(left_out.group, "Cinema");
}

TEST(ResultOf, ARealRun) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), service(2, 10), service(3, 20), service(4, 20, 12000)};
    headend.clones = {clone_of(headend.services[0], 1), clone_of(headend.services[0], 1)};
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    const Result result = result_of(run, "Casa");

    EXPECT_EQ(result.name, "Casa");
    EXPECT_EQ(result.counts.loaded, 4u);
    EXPECT_EQ(result.counts.placed, 3u);
    EXPECT_EQ(result.counts.left_out, 1u);
    EXPECT_EQ(result.counts.clones_attached, 1u);
    EXPECT_EQ(result.counts.clones_waiting, 1u);
    EXPECT_EQ(texts_of(result.findings), std::vector<std::string>{});

    ASSERT_EQ(result.modules.size(), 2u);
    const ModuleResult& first = result.modules[0];
    EXPECT_EQ(first.mac, "A");
    EXPECT_EQ(first.aux_transcoders.used, 1);
    EXPECT_EQ(first.aux_transcoders.max, 1);
    EXPECT_EQ(first.sd_transcoders.max, 1);
    EXPECT_EQ(first.hd_transcoders.max, 2);
    ASSERT_EQ(result.left_out.size(), 1u);
    EXPECT_EQ(to_string(result.left_out[0].stream), "1/20");
    ASSERT_EQ(result.left_out[0].services.size(), 1u);
    EXPECT_EQ(result.left_out[0].services[0].lcn, 4);
    EXPECT_TRUE(result.left_out[0].services[0].outputs.empty());
    EXPECT_EQ(
        result.left_out[0].services[0].reason,
        "No module could ever take it: its 12000 kbit/s must stay below the maximum of an output, and the "
        "largest is 10000.");
    ASSERT_EQ(result.clones_waiting.size(), 1u);
    EXPECT_TRUE(result.clones_waiting[0].is_clone);
    EXPECT_EQ(result.clones_waiting[0].parent_sid, 101);
    EXPECT_EQ(result.clones_waiting[0].reason,
              "No AUX transcoder is left on module A, which carries its parent (1 of 1 in use).");
    EXPECT_EQ(first.outputs.at(0).services.at(0).reason, "");

    const Result without_reasons = result_of(run, "Casa", Reasons::omitted);
    EXPECT_EQ(without_reasons.counts.left_out, 1u);
    EXPECT_EQ(without_reasons.left_out.at(0).services.at(0).reason, "");
    EXPECT_EQ(without_reasons.clones_waiting.at(0).reason, "");
}

TEST_F(ResultOfHand, AnInputAndItsOutputs) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    headend.services[0].video_format = 4;
    headend.services[0].descramble = 1;
    headend.services[0].ca_pids = 3;
    load(headend);
    place("A", loaded(0), 2, 2);
    const ModuleResult result = result_of(run, "").modules.at(0);

    EXPECT_FALSE(result.inputs.at(0).is_tuned);
    const InputResult& input = result.inputs.at(1);
    EXPECT_TRUE(input.is_tuned);
    EXPECT_EQ(to_string(input.stream), "1/10");
    ASSERT_EQ(input.services.size(), 1u);
    EXPECT_EQ(input.services[0].outputs, std::vector<std::uint32_t>{2});
    EXPECT_TRUE(input.services[0].is_hd);
    EXPECT_TRUE(input.services[0].is_scrambled);
    EXPECT_EQ(result.pids, 3u);
    EXPECT_EQ(result.pids_counted, 3u);
    EXPECT_EQ(result.pids_max, 8u);
    EXPECT_EQ(result.outputs.at(1).bitrate, 4000u);
    EXPECT_EQ(result.outputs.at(1).bitrate_max, 10000u);
    EXPECT_EQ(result.outputs.at(1).service_max, 512u);
    EXPECT_TRUE(result.outputs.at(0).services.empty());
}

TEST_F(ResultOfHand, PidsInUseAreThoseOfTheServicesWhateverTheEngineCounts) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    headend.services[0].ca_pids = 3;
    load(headend);
    place("A", loaded(0), 1, 1);
    module("A").PIDsModulo = 7;
    const Result result = result_of(run, "");
    EXPECT_EQ(result.modules.at(0).pids, 3u);
    EXPECT_EQ(result.modules.at(0).pids_counted, 7u);
}

TEST_F(ResultOfHand, AServiceTwiceOnAnOutputTellsTheOutputOnce) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    place("A", loaded(0), 1, 1);
    put_on_output("A", loaded(0), 1);
    put_on_output("A", loaded(0), 2);
    EXPECT_EQ(result_of(run, "").modules.at(0).inputs.at(0).services.at(0).outputs,
              (std::vector<std::uint32_t>{1, 2}));
}

TEST_F(ResultOfHand, AnInputIsInUseIfItCarriesAService) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    tune("A", 2, 30);
    EXPECT_EQ(inputs_of(result_of(run, "")).used, 0u);
    place("A", loaded(0), 1, 1);
    EXPECT_EQ(inputs_of(result_of(run, "")).used, 1u);
    EXPECT_EQ(inputs_of(result_of(run, "")).all, 4u);
    // As explanations have it.
    EXPECT_EQ(FinalState(run).refusals_of(*loaded(0)).at(0).inputs_free, std::vector<std::uint16_t>{2});
}

TEST_F(ResultOfHand, AServiceThatIsNowhereIsNeither) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), service(2, 10)};
    headend.clones = {clone_of(headend.services[1])};
    load(headend);
    leave_out(loaded(1));
    run.engine.listaServiciosClonados.clear();
    const Result result = result_of(run, "");
    ASSERT_EQ(result.neither.size(), 2u);
    EXPECT_EQ(result.neither[0].lcn, 1);
    EXPECT_EQ(result.neither[0].reason,
              "It is neither placed nor left out: the engine's exchanges have lost it.");
    EXPECT_TRUE(result.neither[1].is_clone);
    EXPECT_EQ(result.counts.neither, 1u);
    EXPECT_EQ(result.counts.clones_attached, 0u);
    EXPECT_EQ(result.counts.clones_waiting, 0u);
    EXPECT_EQ(result.counts.loaded, 2u);
    EXPECT_EQ(result.counts.placed, 0u);
    EXPECT_EQ(result.counts.left_out, 1u);
}

TEST_F(ResultOfHand, AServiceThatIsPlacedAndLeftOutCountsAsBoth) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    place("A", loaded(0), 1, 1);
    leave_out(loaded(0));
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 1u);
    EXPECT_EQ(result.counts.left_out, 1u);
}

/// The pool of a module with these transcoders in use and as maxima.
TranscoderPool pool_of(Usage sd, Usage hd) {
    ModuleResult module;
    module.sd_transcoders = sd;
    module.hd_transcoders = hd;
    return transcoder_pool(module);
}

TEST(TranscoderPoolOf, TheLimitIsThatForSdUntilAnHdOneIsInUse) {
    const TranscoderPool sd_only = pool_of({1, 4}, {0, 2});
    EXPECT_EQ(sd_only.used, 1u);
    EXPECT_EQ(sd_only.max, 4u);
    EXPECT_EQ(sd_only.note, "limit 2 with HD");
    const TranscoderPool with_hd = pool_of({1, 4}, {1, 2});
    EXPECT_EQ(with_hd.used, 2u);
    EXPECT_EQ(with_hd.max, 2u);
    EXPECT_EQ(with_hd.note, "1 SD, 1 HD");
    EXPECT_EQ(pool_of({1, 2}, {0, 2}).note, "");
    EXPECT_EQ(pool_of({65535, 65535}, {65535, 65535}).used, 131070u);
}

TEST_F(ResultOfHand, TheWarningsAreWhatTheAuditFinds) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    EXPECT_EQ(audit(run).size(), 2u);
    EXPECT_EQ(texts_of(result_of(run, "").findings), texts_of(audit(run)));
}

TEST_F(ResultOfHand, AServiceOnTwoModulesCountsOnce) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    place("A", loaded(0), 1, 1);
    place("B", loaded(0), 1, 2);
    EXPECT_EQ(result_of(run, "").counts.placed, 1u);
}

TEST_F(ResultOfHand, AServiceOnAnOutputButOnNoInput) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    put_on_output("A", loaded(0), 2);
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 0u);
    EXPECT_EQ(result.counts.neither, 1u);
    ASSERT_EQ(result.neither.size(), 1u);
    EXPECT_EQ(result.neither[0].reason,
              "It is on output 2 of module A after the engine's exchanges, and on no "
              "input there that receives stream 1/10.");
    ASSERT_EQ(result.modules.at(0).without_input.size(), 1u);
    EXPECT_EQ(result.modules[0].without_input[0].outputs, std::vector<std::uint32_t>{2});
}

TEST_F(ResultOfHand, AServiceOnAnInputOfAnotherStreamIsNotPlaced) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    place("A", loaded(0), 1, 1);
    EXPECT_EQ(result_of(run, "").counts.placed, 1u);
    tune("A", 1, 20);
    EXPECT_EQ(result_of(run, "").counts.placed, 0u);
    EXPECT_EQ(result_of(run, "").counts.neither, 1u);
    // On another module it is received.
    place("B", loaded(0), 2, 1);
    EXPECT_EQ(result_of(run, "").counts.placed, 1u);
    EXPECT_EQ(result_of(run, "").counts.neither, 0u);
}

TEST_F(ResultOfHand, ALeftOutServiceThatNoInputReceivesIsLeftOutAlone) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    put_on_output("A", loaded(0), 2);
    leave_out(loaded(0));
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 0u);
    EXPECT_EQ(result.counts.neither, 0u);
    EXPECT_EQ(result.counts.left_out, 1u);
}

TEST_F(ResultOfHand, AServiceOnAnInputAloneIsNotPlaced) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    module("A").mapEntradas.at(1).confEntrada(10, 1);
    module("A").mapEntradas.at(1).addServicioALaEntrada(loaded(0));
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 0u);
    EXPECT_TRUE(result.modules.at(0).inputs.at(0).is_tuned);
    EXPECT_TRUE(result.modules[0].inputs[0].services.at(0).outputs.empty());
}

TEST_F(ResultOfHand, ServicesWithTheSameNumbersAreToldApart) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), service(1, 20)};
    load(headend);
    place("A", loaded(0), 1, 1);
    place("A", loaded(1), 2, 2);
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 2u);
    EXPECT_EQ(result.modules.at(0).inputs.at(0).services.at(0).outputs, std::vector<std::uint32_t>{1});
    EXPECT_EQ(result.modules[0].inputs.at(1).services.at(0).outputs, std::vector<std::uint32_t>{2});
}

TEST_F(ResultOfHand, AttachedClonesAreNoPlacedServices) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    headend.clones = {clone_of(headend.services[0])};
    load(headend);
    place("A", loaded(0), 1, 1);
    attach("A", 0, 1, 1);
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.loaded, 1u);
    EXPECT_EQ(result.counts.placed, 1u);
    EXPECT_EQ(result.counts.clones_attached, 1u);
    EXPECT_EQ(result.counts.clones_waiting, 0u);
    EXPECT_TRUE(result.findings.empty());
    EXPECT_FALSE(result.modules.at(0).outputs.at(0).services.at(0).is_clone);
    EXPECT_TRUE(result.modules[0].outputs[0].services.at(1).is_clone);
}

/// What an input tuned to stream 1/10 carries, with one service on it that is changed.
std::uint64_t carried_with(void (*change)(ServiceResult&)) {
    InputResult input{1, true, {1, 10}, {}};
    for (const std::uint16_t lcn : {std::uint16_t{1}, std::uint16_t{2}}) {
        ServiceResult made;
        made.stream = {1, 10};
        made.lcn = lcn;
        made.bitrate = lcn * 1000u;
        made.outputs = {1};
        input.services.push_back(made);
    }
    change(input.services.back());
    return carried_from(input);
}

TEST(CarriedFrom, CountsTheServicesOfTheStreamThatStandOnAnOutput) {
    EXPECT_EQ(carried_from({}), 0u);
    EXPECT_EQ(carried_with([](ServiceResult&) {}), 3000u);
    EXPECT_EQ(carried_with([](ServiceResult& service) { service.outputs = {1, 2}; }), 3000u) << "once";
    EXPECT_EQ(carried_with([](ServiceResult& service) { service.outputs = {}; }), 1000u);
    EXPECT_EQ(carried_with([](ServiceResult& service) { service.is_clone = true; }), 1000u);
    EXPECT_EQ(carried_with([](ServiceResult& service) { service.stream.tsid = 11; }), 1000u);
    EXPECT_EQ(carried_with([](ServiceResult& service) { service.bitrate = 4294967295; }), 4294968295u);
    // The same service again; another one with the same LCN.
    EXPECT_EQ(carried_with([](ServiceResult& service) { service.lcn = 1; }), 1000u);
    EXPECT_EQ(carried_with([](ServiceResult& service) {
                  service.lcn = 1;
                  service.sid = 7;
              }),
              3000u);
}

} // namespace
} // namespace zarven::tool::result_test
