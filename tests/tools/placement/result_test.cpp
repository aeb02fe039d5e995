// The result of real runs, and of engines brought by hand into states that the exchange rules can leave
// behind.

#include "placement/result.h"

#include <gtest/gtest.h>

namespace zarven::tool {
namespace {

/// A head-end of two modules: two inputs and two outputs each, the first with an AUX transcoder.
Headend two_modules() {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 2, {10000, 10000}, 8, 1, 2, 1});
    headend.modules.push_back({"B", 3, false, 2, {10000, 10000}, 8, 0, 0, 0});
    return headend;
}

Service service(std::uint16_t lcn, std::uint16_t tsid, std::uint32_t bitrate = 4000) {
    Service made;
    made.lcn = lcn;
    made.name = "S" + std::to_string(lcn);
    made.output_name = made.name;
    made.onid = 1;
    made.tsid = tsid;
    made.sid = static_cast<std::uint16_t>(100 + lcn);
    made.osid = made.sid;
    made.bitrate = bitrate;
    return made;
}

Clone clone_of(const Service& parent, std::uint16_t transcoding = 0) {
    Clone made;
    static_cast<Programme&>(made) = parent;
    made.output_name = "copy";
    made.transcoding = transcoding;
    return made;
}

/// A loaded engine whose result is empty: the loaded modules, nothing placed, nothing left out.
class ResultOfHand : public testing::Test {
protected:
    void load(const Headend& headend) {
        run = load_engine(headend, "f");
        run.engine.Mapa_ModulosCabecera_Final = run.engine.Mapa_ModulosCabecera_Inicial;
    }

    std::shared_ptr<tRec_Servicio> loaded(std::size_t index) { return run.engine.listaServicios.at(index); }
    tRec_Modulo& module(const std::string& mac) { return run.engine.Mapa_ModulosCabecera_Final.at(mac); }

    /// Puts a service on an input, which is tuned to its stream, and on an output.
    void place(const std::string& mac, const std::shared_ptr<tRec_Servicio>& placed, unsigned short input,
               unsigned short output) {
        module(mac).mapEntradas.at(input).confEntrada(placed->TSID, placed->ONID);
        module(mac).addService(placed, input, output);
    }

    void leave_out(const std::shared_ptr<tRec_Servicio>& left) {
        run.engine.Mapa_ONIDs_Final[left->ONID].MapRec_TSIDs[left->TSID].MapRec_Services.emplace(
            left->idService, left);
    }

    EngineRun run;
};

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
    EXPECT_TRUE(result.warnings.empty()) << result.warnings[0];

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

TEST_F(ResultOfHand, AServiceThatIsNowhere) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), service(2, 10)};
    load(headend);
    leave_out(loaded(1));
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 0u);
    EXPECT_EQ(result.counts.left_out, 1u);
    EXPECT_EQ(result.warnings,
              (std::vector<std::string>{"0 placed and 1 left out do not make 2 loaded",
                                        "LCN 1 \"S1\" of stream 1/10: neither placed nor left out"}));
}

TEST_F(ResultOfHand, AServiceThatIsPlacedAndLeftOut) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    place("A", loaded(0), 1, 1);
    leave_out(loaded(0));
    EXPECT_EQ(result_of(run, "").warnings,
              (std::vector<std::string>{"1 placed and 1 left out do not make 1 loaded",
                                        "LCN 1 \"S1\" of stream 1/10: placed and left out at once"}));
}

TEST_F(ResultOfHand, AServiceOnTwoModulesCountsOnce) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    place("A", loaded(0), 1, 1);
    place("B", loaded(0), 1, 2);
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 1u);
    EXPECT_EQ(result.warnings, std::vector<std::string>{"LCN 1 \"S1\" of stream 1/10: 2 times on outputs"});
}

TEST_F(ResultOfHand, AServiceOnAnOutputButOnNoInput) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    module("A").mapSalidas.at(2).addServicioALaSalida(loaded(0));
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.placed, 1u);
    ASSERT_EQ(result.modules.at(0).without_input.size(), 1u);
    EXPECT_EQ(result.modules[0].without_input[0].outputs, std::vector<std::uint32_t>{2});
    EXPECT_EQ(result.warnings,
              std::vector<std::string>{
                  "LCN 1 \"S1\" of stream 1/10: on an output of a module that has it on no input"});
}

TEST_F(ResultOfHand, AServiceOnAnInputOfAnotherStream) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    load(headend);
    module("A").mapEntradas.at(1).confEntrada(20, 1);
    module("A").addService(loaded(0), 1, 1);
    EXPECT_EQ(
        result_of(run, "").warnings,
        std::vector<std::string>{"LCN 1 \"S1\" of stream 1/10: on an input that is tuned to another stream"});
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
    EXPECT_EQ(result.warnings.size(), 2u);
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
    place("A", run.clones.at(0), 1, 1);
    run.engine.listaServiciosClonados.clear();
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.loaded, 1u);
    EXPECT_EQ(result.counts.placed, 1u);
    EXPECT_EQ(result.counts.clones_attached, 1u);
    EXPECT_EQ(result.counts.clones_waiting, 0u);
    EXPECT_TRUE(result.warnings.empty());
    EXPECT_FALSE(result.modules.at(0).outputs.at(0).services.at(0).is_clone);
    EXPECT_TRUE(result.modules[0].outputs[0].services.at(1).is_clone);
}

} // namespace
} // namespace zarven::tool
